#include "platform/gdiplus/Drehung.h"

using namespace gdiplus;

namespace {

constexpr Drehung Drehungen[] = {
    {u"JpgTransformRotate90", Um90, true, true, false},
    {u"JpgTransformRotate180", Um180, false, true, true},
    {u"JpgTransformRotate270", Um270, true, false, true},
    {u"JpgTransformFlipHorizontal", Waagerecht, false, true, false},
    {u"JpgTransformFlipVertical", Senkrecht, false, false, true},
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
