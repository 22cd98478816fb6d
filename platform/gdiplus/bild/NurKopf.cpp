#include "platform/gdiplus/bild/NurKopf.h"

namespace bildlader {
namespace {

// Here, so that a host counts in the library's own place.
thread_local int lebende = 0;

}  // namespace

NurKopf::NurKopf() noexcept {
  ++lebende;
}

NurKopf::~NurKopf() {
  --lebende;
}

bool NurKopf::gilt() noexcept {
  return lebende > 0;
}

}  // namespace bildlader
