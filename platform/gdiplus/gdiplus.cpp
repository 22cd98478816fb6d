#include "platform/gdiplus/gdiplus.h"

#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/Bildlader.h"
#include "platform/gdiplus/Sitzung.h"

namespace gdiplus {
namespace {

std::int32_t sitzungen = 0;
std::int32_t letzte_marke = 0;
std::int32_t befohlener_status = Ok;

}  // namespace

bool sitzung::laeuft() noexcept {
  return sitzungen > 0;
}

void sitzung::naechster_Start(std::int32_t status) noexcept {
  befohlener_status = status;
}

std::int32_t GdiplusStartup(std::int32_t& token, std::int32_t version) {
  if (const std::int32_t status = std::exchange(befohlener_status, Ok); status != Ok) return status;
  if (version != 1) return UnsupportedGdiplusVersion;
  ++sitzungen;
  letzte_marke = letzte_marke == 0x7fffffff ? 1 : letzte_marke + 1;
  token = letzte_marke;
  return Ok;
}

// The token is not looked at: nested users share one variable for it, so that the outer one ends with the inner one's
// token. Each end takes one start back.
std::int32_t GdiplusShutdown(std::int32_t /*token*/) {
  if (sitzungen > 0) --sitzungen;
  return Ok;
}

std::int32_t GdipCreateBitmapFromFile(const QString& pfad, Bitmap& bitmap) {
  bitmap.reset();
  if (!sitzung::laeuft()) return GdiplusNotInitialized;
  bildlader::Ergebnis ergebnis = bildlader::oeffne(pfad);
  bitmap = std::move(ergebnis.bild);
  return ergebnis.status;
}

std::int32_t GdipCreateHBITMAPFromBitmap(const Bitmap& bitmap, Bitmap& handle, std::int32_t hintergrund) {
  handle.reset();
  if (!sitzung::laeuft()) return GdiplusNotInitialized;
  if (!bitmap) return InvalidParameter;
  handle = bildlader::mit_Hintergrund(bitmap, static_cast<QRgb>(hintergrund));
  return Ok;
}

std::int32_t GdipDisposeImage(Bitmap& bitmap) {
  if (!sitzung::laeuft()) return GdiplusNotInitialized;
  if (!bitmap) return InvalidParameter;
  bitmap.reset();
  return Ok;
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
