#include "platform/gdiplus/bild/NurKopf.h"

namespace bildlader {
namespace {

thread_local int nur_kopf = 0;

}  // namespace

NurKopf::NurKopf() noexcept {
  ++nur_kopf;
}

NurKopf::~NurKopf() {
  --nur_kopf;
}

bool NurKopf::gilt() noexcept {
  return nur_kopf > 0;
}

}  // namespace bildlader
