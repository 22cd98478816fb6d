#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/bild/Bildspeicher.h"

/// Where the pixels of a picture file come from once it has been opened. Reduced pixels go through the cache.
class Pixelquelle {
 public:
  using Schluessel = std::optional<Bildspeicher::Schluessel>;

  virtual ~Pixelquelle() = default;
  Q_DISABLE_COPY_MOVE(Pixelquelle)

  const Bildkopf& kopf() const noexcept { return kopf_; }

  /// The state that it stands for; none for a file whose state can't be told from its next one.
  const Schluessel& schluessel() const noexcept { return schluessel_; }
  /// The file's content where it is held, otherwise null.
  virtual QByteArray bytes() { return {}; }

  /// The picture at exactly `ziel` pixels (see bilddekoder::lies); null where nothing of it can be had.
  virtual QImage bild(QSize ziel, QRgb hintergrund) = 0;

 protected:
  Pixelquelle(QString pfad, Schluessel schluessel, const Bildkopf& kopf);

  /// Only what is smaller than the picture itself, and on black, is worth keeping.
  bool ist_zu_merken(QSize ziel, QRgb hintergrund) const noexcept;
  /// The reduced pixels that the cache has of this state.
  QList<QImage> gemerkte() const;

  /// What a file gave for a size, not scaled to it yet.
  struct Neues {
    QImage entpackt;
    Bildkopf kopf;     ///< of the content that it comes from
    QByteArray bytes;  ///< that content; null where it is not that of the key's state
  };
  /// Pixels worth keeping: those of the cache (see reduktion::vorhanden), or those that `mache` gives, which the cache
  /// then has where they are of the key's state. Where another thread is at work on the file its end is awaited.
  QImage gemerkt_oder(QSize ziel, bool auch_aus_Groesserem, const std::function<Neues()>& mache) const;

  const QString pfad_;
  const Schluessel schluessel_;  ///< none for a file whose state can't be told from its next one

 private:
  const Bildkopf kopf_;
};

/// A file whose content is held: its compressed bytes, or, where the cache knew its state, `reduzierte` and nothing
/// more until another size is asked for. Needs one of the two, and with pixels a key.
std::shared_ptr<Pixelquelle> gehaltene_Pixel(
    QString pfad, Pixelquelle::Schluessel schluessel, const Bildkopf& kopf, QByteArray bytes, QList<QImage> reduzierte);

/// A file that is read whenever pixels are asked for (see bildlader::NurKopf).
std::shared_ptr<Pixelquelle> ungelesene_Pixel(QString pfad, Pixelquelle::Schluessel schluessel, const Bildkopf& kopf);
