#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "tests/exif/Referenz.h"

// Any bytes as a file: the reader must neither crash nor differ from the plain one over the whole content.

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file in memory that every run fills anew.
class Speicherdatei {
 public:
  QString fuelle(const QByteArray& bytes) const {
    if (::ftruncate(deskriptor_, 0) != 0 || ::pwrite(deskriptor_, bytes.constData(), std::size_t(bytes.size()), 0) < 0)
      std::abort();
    return u"/proc/self/fd/"_s + QString::number(deskriptor_);
  }

 private:
  int deskriptor_ = ::memfd_create("exif", MFD_CLOEXEC);
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  static const Speicherdatei datei;
  const QByteArray bytes(reinterpret_cast<const char*>(daten), static_cast<qsizetype>(laenge));
  const Ladeergebnis gelesen = lade(datei.fuelle(bytes));
  const Ladeergebnis erwartet = referenz(bytes);
  if (gelesen == erwartet) return 0;
  std::fputs("the reader differs from the plain one\n", stderr);
  std::abort();
}
