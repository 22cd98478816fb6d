#include <QByteArray>
#include <cstdio>
#include <cstdlib>

#include "host/bericht/ausgabe/Ortsangaben.h"

// The input is a picture file: taking its place data out must not crash, never changes the length, and changes nothing
// where it says that there is none.

namespace {

void verlange(bool erfuellt, const char* was) {
  if (erfuellt) return;
  std::fprintf(stderr, "%s\n", was);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  const QByteArray vorher(reinterpret_cast<const char*>(daten), static_cast<qsizetype>(laenge));
  QByteArray bytes = vorher;
  const ortsangaben::Befund befund = ortsangaben::entferne(bytes);
  verlange(bytes.size() == vorher.size(), "length");
  verlange(befund != ortsangaben::Befund::Keine || bytes == vorher, "changed without place data");
  return 0;
}
