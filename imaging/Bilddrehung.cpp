#include "imaging/Bilddrehung.h"

#include "platform/gdiplus/gdiplus.h"

namespace bilddrehung {
namespace {

/// A session for the length of a call.
class Sitzung {
 public:
  Sitzung() : status_(gdiplus::GdiplusStartup(marke_, 1)) {}
  ~Sitzung() {
    if (status_ == gdiplus::Ok) gdiplus::GdiplusShutdown(marke_);
  }
  Sitzung(const Sitzung&) = delete;
  Sitzung& operator=(const Sitzung&) = delete;

 private:
  std::int32_t marke_ = 0;
  std::int32_t status_;
};

}  // namespace

std::int32_t drehe(const QString& quelle, const QString& ziel, std::int32_t transform) {
  const Sitzung sitzung;
  gdiplus::Image image;
  if (const std::int32_t status = gdiplus::GdipLoadImageFromFile(quelle, image); status != gdiplus::Ok) return status;
  const gdiplus::EncoderParameter parameter{
      gdiplus::EncoderTransformation, 1, gdiplus::EncoderParameterValueTypeLong, transform};
  return gdiplus::GdipSaveImageToFile(image, ziel, gdiplus::JpegEncoder, {1, parameter});
}

}  // namespace bilddrehung
