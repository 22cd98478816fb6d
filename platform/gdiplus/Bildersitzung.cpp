#include "platform/gdiplus/Bildersitzung.h"

#include <utility>

#include "platform/gdiplus/gdiplus.h"

namespace gdiplus {
namespace {

std::int32_t sitzungen = 0;
std::int32_t letzte_Marke = 0;
std::int32_t befohlener_Status = Ok;

}  // namespace

std::int32_t GdiplusStartup(std::int32_t& token, std::int32_t version) {
  if (const std::int32_t status = std::exchange(befohlener_Status, Ok); status != Ok) return status;
  if (version != 1) return UnsupportedGdiplusVersion;
  ++sitzungen;
  letzte_Marke = letzte_Marke == 0x7fffffff ? 1 : letzte_Marke + 1;
  token = letzte_Marke;
  return Ok;
}

std::int32_t GdiplusShutdown(std::int32_t /*token*/) {
  if (sitzungen > 0) --sitzungen;
  return Ok;
}

bool bildersitzung::laeuft() noexcept {
  return sitzungen > 0;
}

void bildersitzung::naechster_Start(std::int32_t status) noexcept {
  befohlener_Status = status;
}

}  // namespace gdiplus
