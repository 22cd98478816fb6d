#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the program's reading at a position has done, and where it shall fail.
struct Lesen {
  std::int64_t bytes = 0;
  std::int64_t scheitert_ab = -1;
} lesen;

}  // namespace

/// Stands in for the system's function in this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved ones.
extern "C" ssize_t pread(int deskriptor, void* ziel, size_t anzahl, off_t position) {
  if (lesen.scheitert_ab >= 0 && position + static_cast<off_t>(anzahl) > lesen.scheitert_ab) {
    errno = EIO;
    return -1;
  }
  const ssize_t n = ::syscall(SYS_pread64, deskriptor, ziel, anzahl, position);
  if (n > 0) lesen.bytes += n;
  return n;
}

namespace {

class ExifLesen : public testing::Test {
 protected:
  ExifLesen() { lesen = {}; }
  ~ExifLesen() override { lesen = {}; }
  Testordner ordner_;
};

TEST_F(ExifLesen, OfALargePhotoWithExifInFrontOnlyTheFirstBlocksAreRead) {
  const QString pfad = ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel, 20000, QByteArray(8'000'000, '\x55')));
  EXPECT_TRUE(lade(pfad).load);
  EXPECT_GT(lesen.bytes, 20000);
  EXPECT_LE(lesen.bytes, 3 * 16384);
}

TEST_F(ExifLesen, AFileWithoutAMarkerIsReadOnce) {
  const QByteArray bytes = "\xFF\xD8"_ba + QByteArray(3'000'000, '\xFF');
  EXPECT_FALSE(lade(ordner_.schreibe(u"a.jpg"_s, bytes)).load);
  EXPECT_EQ(lesen.bytes, bytes.size());
}

TEST_F(ExifLesen, AFailureOfTheDiskInTheSearchReachesTheCaller) {
  const QString pfad = ordner_.schreibe(u"a.jpg"_s, "\xFF\xD8"_ba + QByteArray(3'000'000, '\xFF'));
  for (const std::int64_t stelle : {0, 100'000, 2'900'000}) {
    lesen.scheitert_ab = stelle;
    Ladeergebnis erwartet;
    erwartet.fehler = fehlernummer::EinAusgabeFehler;
    EXPECT_EQ(lade(pfad), erwartet) << stelle;
  }
}

TEST_F(ExifLesen, AFailureOfTheDiskInTheWalkReachesTheCallerAndChangesNothing) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 3).zahl(2, 2, 100, 40000).zahl(3, 4, 1, 3);
  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, b.jpeg({}, QByteArray(100'000, 'x'))));
  lesen.scheitert_ab = 32768;
  EXPECT_EQ(Fehlernummer_von([&] { info.Load({}); }), fehlernummer::EinAusgabeFehler);
  EXPECT_FALSE(info.Is_Loaded());
  EXPECT_TRUE(info.Entries().empty());
  lesen.scheitert_ab = -1;
  EXPECT_TRUE(info.Load({}));
  EXPECT_EQ(info.Entries().size(), 3U);
}

}  // namespace
