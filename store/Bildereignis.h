#pragma once

#include <QString>
#include <functional>

#include "platform/basic/kvo_export.h"
#include "store/clsBilderSpeicher.h"

/// What has become of a picture file or of one of its assignments, for a host that keeps a record of it. Texts of the
/// user are no part of it.
struct Bildereignis {
  enum class Tat { Zuordnen, Entfernen, Umbenennen, Drehen };
  Tat tat = Tat::Zuordnen;
  bool gelungen = false;
  /// Keys and types of the record; all empty where it is about the file.
  QString Key1, Key2, Key3, Key4, Typ1, Typ2;
  /// Folder and name of the file, below the root. Of a turned one the whole path.
  QString Bild;
  /// The same after a rename; empty otherwise.
  QString neues_Bild = {};

  /// About the assignment that a record stands for.
  static Bildereignis von(const clsBilderSpeicher& satz, Tat tat, bool gelungen);
};

/// The way from the component to the host. Used on the GUI thread.
namespace bildereignis {

using Hoerer = std::function<void(const Bildereignis&)>;

/// From now on this one hears what is done; gives the one before. None at first.
KVO_EXPORT Hoerer setze(Hoerer hoerer);
/// What flies from the listener is dropped: the work goes on.
void melde(const Bildereignis& ereignis) noexcept;

/// While one lives nothing is told: what is done is only a means.
class Ruhe {
 public:
  Ruhe() : hoerer_(setze({})) {}
  ~Ruhe() { setze(std::move(hoerer_)); }
  Q_DISABLE_COPY_MOVE(Ruhe)

 private:
  Hoerer hoerer_;
};

}  // namespace bildereignis
