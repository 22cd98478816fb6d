#include "imaging/Bilddrehung.h"

#include "platform/gdiplus/Sitzungsdauer.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/gdiplus.h"

std::int32_t bilddrehung::drehe(const QString& quelle, const QString& ziel, std::int32_t transform) {
  const gdiplus::Sitzungsdauer sitzung;
  gdiplus::Image image;
  if (const std::int32_t status = gdiplus::GdipLoadImageFromFile(quelle, image); status != gdiplus::Ok) return status;
  return gdiplus::GdipSaveImageToFile(image, ziel, gdiplus::JpegEncoder, gdiplus::transformation(transform));
}

std::int32_t bilddrehung::pruefe(const QString& datei) {
  const gdiplus::Sitzungsdauer sitzung;
  const bildlader::NurKopf nur_Kopf;
  gdiplus::Bitmap bild;
  return gdiplus::GdipCreateBitmapFromFile(datei, bild);
}
