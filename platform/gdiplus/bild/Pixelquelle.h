#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>
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

  /// The picture at exactly `ziel` pixels (see bilddekoder::lies); null where nothing of it can be had.
  virtual QImage bild(QSize ziel, QRgb hintergrund) = 0;

 protected:
  Pixelquelle(QString pfad, Schluessel schluessel, const Bildkopf& kopf);

  /// Only what is smaller than the picture itself, and on black, is worth keeping.
  bool ist_zu_merken(QSize ziel, QRgb hintergrund) const noexcept;
  /// The reduced pixels that the cache has of this state.
  QList<QImage> gemerkte() const;

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
