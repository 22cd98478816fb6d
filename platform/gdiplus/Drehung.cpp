#include "platform/gdiplus/Drehung.h"

using namespace gdiplus;

namespace {

constexpr Drehung Drehungen[] = {
    {Um90, u"JpgTransformRotate90", true, true, false},
    {Um180, u"JpgTransformRotate180", false, true, true},
    {Um270, u"JpgTransformRotate270", true, false, true},
    {Waagerecht, u"JpgTransformFlipHorizontal", false, true, false},
    {Senkrecht, u"JpgTransformFlipVertical", false, false, true},
};

}  // namespace

std::optional<Drehung> Drehung::von(std::int32_t nummer) noexcept {
  for (const Drehung& eine : Drehungen)
    if (eine.art == nummer) return eine;
  return std::nullopt;
}

std::optional<Drehung> Drehung::mit_Namen(QStringView name) noexcept {
  for (const Drehung& eine : Drehungen)
    if (eine.name == name) return eine;
  return std::nullopt;
}
