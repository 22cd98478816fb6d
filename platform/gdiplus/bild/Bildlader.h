#pragma once

#include <QImage>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/bild/Bildspeicher.h"

/// Makes picture objects.
namespace bildlader {

struct Ergebnis {
  std::int32_t status = 0;  ///< a gdiplus::Status
  Bildformat format = Bildformat::Unbekannt;
  std::shared_ptr<const Bild> bild;  ///< only with status Ok
};

/// Opens a picture file; the status comes from signature and header alone. The picture outlives its file, unless a
/// NurKopf lives on this thread.
Ergebnis oeffne(const QString& pfad);

/// The same picture on another background; null for none. A picture that is no file's is opaque and stays as it is.
std::shared_ptr<const Bild> mit_Hintergrund(const std::shared_ptr<const Bild>& bild, QRgb hintergrund);

/// The same picture with another one to show, in its middle on white, where nothing of its file can be decoded; null
/// for none. A picture that is no file's stays as it is.
std::shared_ptr<const Bild> mit_Ersatz(const std::shared_ptr<const Bild>& bild, std::shared_ptr<const Bild> ersatz);

/// As the picture's own bild(), but null where nothing of its file can be decoded, whatever it then shows.
QImage eigene_Pixel(const Bild& bild, QSize ziel);

/// Which state of which file a picture stands for, and its content where the picture holds it (null otherwise).
struct Herkunft {
  Bildspeicher::Schluessel schluessel;
  Bildkopf kopf;
  QByteArray bytes;
};
/// None for a picture that is no file's, one on another background than black, and a file whose state can't be told
/// from its next one.
std::optional<Herkunft> herkunft(const Bild& bild);

/// A picture object of pixels; transparency comes out black. Null for a null image.
std::shared_ptr<const Bild> aus_Pixeln(const QImage& pixel);

}  // namespace bildlader
