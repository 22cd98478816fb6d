#include "platform/gdiplus/gdiplus.h"

#include <optional>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Bildquelle.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"

namespace gdiplus {

std::int32_t GdipCreateBitmapFromFile(const QString& pfad, Bitmap& bitmap) {
  bitmap.reset();
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  bildlader::Ergebnis ergebnis = bildlader::oeffne(pfad);
  bitmap = std::move(ergebnis.bild);
  return ergebnis.status;
}

std::int32_t GdipCreateHBITMAPFromBitmap(const Bitmap& bitmap, Bitmap& handle, std::int32_t hintergrund) {
  handle.reset();
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  if (!bitmap) return InvalidParameter;
  handle = bildlader::mit_Hintergrund(bitmap, static_cast<QRgb>(hintergrund));
  return Ok;
}

std::int32_t GdipLoadImageFromFile(const QString& pfad, Image& image) {
  image.reset();
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  return Bildquelle::oeffne(pfad, image);
}

Bildformat format_von(const Image& image) noexcept {
  return image ? image->kopf().format : Bildformat::Unbekannt;
}

namespace {

std::optional<Drehung> drehung_von(const EncoderParameters& parameter) noexcept {
  const EncoderParameter& p = parameter.Parameter;
  if (parameter.Count != 1 || p.Guid != EncoderTransformation) return std::nullopt;
  if (p.NumberOfValues != 1 || p.Type != EncoderParameterValueTypeLong) return std::nullopt;
  return Drehung::von(p.Value);
}

}  // namespace

std::int32_t GdipSaveImageToStream(
    const Image& image, QByteArray& strom, const CLSID& kodierer, const EncoderParameters& parameter) {
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  const auto drehung = drehung_von(parameter);
  if (!image || !drehung) return InvalidParameter;
  if (kodierer != JpegEncoder) return UnknownImageFormat;
  return image->drehe(*drehung, strom);
}

std::int32_t GdipSaveImageToFile(
    const Image& image, const QString& pfad, const CLSID& kodierer, const EncoderParameters& parameter) {
  if (image && image->ist_Datei(pfad)) return GenericError;
  QByteArray strom;
  std::int32_t status = GdipSaveImageToStream(image, strom, kodierer, parameter);
  if (status != Ok) return status;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { status = status_beim_Schreiben(f.Nummer()); },
      [&] {
    dateien::schreibe_alles(pfad, strom);
    dauerspeicher::vergiss(pfad);
  });
  return status;
}

std::shared_ptr<const Bild> LoadPicture(const QString& pfad) {
  const bildlader::Ergebnis ergebnis = bildlader::oeffne(pfad);
  if (ergebnis.status == FileNotFound) throw Laufzeitfehler(fehlernummer::DateiNichtGefunden);
  if (ergebnis.status == AccessDenied) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  const bool liest_das =
      ergebnis.format == Bildformat::Bmp || ergebnis.format == Bildformat::Gif || ergebnis.format == Bildformat::Jpeg;
  if (!ergebnis.bild || !liest_das) throw Laufzeitfehler(fehlernummer::UngueltigesBild);
  return ergebnis.bild;
}

}  // namespace gdiplus
