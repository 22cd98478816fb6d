#include <cstdio>
#include <cstdlib>

#include "tests/exif/Referenz.h"
#include "tests/exif/Speicherdatei.h"

// Any bytes as a file: the reader must neither crash nor differ from the plain one over the whole content.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  static const Speicherdatei Speicher;
  const QByteArray bytes(reinterpret_cast<const char*>(daten), static_cast<qsizetype>(laenge));
  const Ladeergebnis gelesen = lade(Speicher.fuelle(bytes));
  const Ladeergebnis erwartet = referenz(bytes);
  if (gelesen == erwartet) return 0;
  std::fputs("the reader differs from the plain one\n", stderr);
  std::abort();
}
