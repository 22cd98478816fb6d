#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <functional>
#include <memory>

#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Bild.h"

/// Work ahead of a loop that will need pictures. The loop says which, in its order, and then does what it does without:
/// what is ready comes out of the cache, for what is being made it waits, and what nobody has begun it makes itself.
/// So the pixels, the statuses and the moments of failures are the same with and without.
///
/// Nothing is made ahead that the cache would not keep: files changed within the last seconds, pictures shown in their
/// own size or larger, files and decodings too large for the room that is set aside (see Rechenwerk).
namespace bildvorlauf {

/// Whether anything is made ahead at all. On at the start; for the whole process.
KVO_EXPORT void an(bool wert) noexcept;
KVO_EXPORT bool ist_an() noexcept;

/// What one loop has said. At the end of its life what nobody has begun is given up; what is begun ends by itself.
/// Belongs to the thread that made it.
class KVO_EXPORT Vorlauf {
 public:
  /// The size in pixels at which a picture of that size will be asked for; an empty one for none. Runs on another
  /// thread: it looks at its argument and its own copies alone.
  using Mass = std::function<QSize(QSize groesse)>;
  struct Wunsch {
    std::shared_ptr<const Bild> bild;
    QSize ziel;
  };

  Vorlauf();
  ~Vorlauf();
  Q_DISABLE_COPY_MOVE(Vorlauf)

  /// A file that will be opened with a NurKopf, by its header alone where `mass` is none. `pfad` is one of the table.
  void datei(const QString& pfad, Mass mass = {});
  /// Pictures that were opened already, in the order in which they will be painted. What was announced so before and
  /// is not among them is given up.
  void bilder(const QList<Wunsch>& wuensche);
  /// Gives up what nobody has begun.
  void gib_auf();

 private:
  struct Zustand;
  std::unique_ptr<Zustand> zustand_;
};

}  // namespace bildvorlauf
