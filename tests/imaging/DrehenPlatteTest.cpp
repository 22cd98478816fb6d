// What a full disk, an unwilling folder and a process that dies in the middle do to a turn. The program puts calls of
// its own in front of the C library's, which answer the failure that a test asks for or end the process.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QList>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Antworten {
  long platz = -1;               ///< bytes that may still be written; -1 without a bound
  int beim_Anlegen = 0;          ///< errno of making a file, 0 for none
  QList<int> beim_Umbenennen{};  ///< errno of the next renames, 0 for none
  bool ohne_namenlose = false;   ///< a file system that holds no file without a name
  bool ohne_Ersetzen = false;    ///< one that renames to free names only
  int noch_Aufrufe = -1;         ///< the process ends at that call that changes anything; -1 for never
};
Antworten antworten;

void zaehle() {
  if (antworten.noch_Aufrufe < 0) return;
  if (antworten.noch_Aufrufe-- == 0) ::_exit(7);
}

bool scheitert(int fehler) {
  if (fehler != 0) errno = fehler;
  return fehler != 0;
}

int oeffne(const char* name, int art, mode_t rechte) {
  if ((art & O_ACCMODE) != O_RDONLY) zaehle();
  if ((art & O_TMPFILE) == O_TMPFILE && antworten.ohne_namenlose) return errno = EOPNOTSUPP, -1;
  if ((art & (O_CREAT | (O_TMPFILE & ~O_DIRECTORY))) != 0 && scheitert(antworten.beim_Anlegen)) return -1;
  return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, art, rechte));
}

}  // namespace

// Visible, so that the libraries find these too. Their declarations name the parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility push(default)
extern "C" {

int open(const char* name, int art, ...) {
  va_list weitere;
  va_start(weitere, art);
  const mode_t rechte = (art & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(weitere, mode_t) : 0;
  va_end(weitere);
  return oeffne(name, art, rechte);
}

ssize_t write(int deskriptor, const void* puffer, std::size_t anzahl) {
  if (deskriptor <= 2) return ::syscall(SYS_write, deskriptor, puffer, anzahl);
  zaehle();
  if (antworten.platz >= 0) anzahl = std::min(anzahl, static_cast<std::size_t>(antworten.platz));
  if (anzahl == 0) return errno = ENOSPC, -1;
  if (antworten.platz >= 0) antworten.platz -= static_cast<long>(anzahl);
  return ::syscall(SYS_write, deskriptor, puffer, anzahl);
}

int fsync(int deskriptor) {
  zaehle();
  return static_cast<int>(::syscall(SYS_fsync, deskriptor));
}

int linkat(int von_Ordner, const char* von, int nach_Ordner, const char* nach, int art) noexcept {
  zaehle();
  return static_cast<int>(::syscall(SYS_linkat, von_Ordner, von, nach_Ordner, nach, art));
}

int rename(const char* von, const char* nach) noexcept {
  zaehle();
  if (!antworten.beim_Umbenennen.isEmpty() && scheitert(antworten.beim_Umbenennen.takeFirst())) return -1;
  struct stat info {};
  if (antworten.ohne_Ersetzen && ::lstat(nach, &info) == 0) return errno = EEXIST, -1;
  return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, von, AT_FDCWD, nach, 0));
}

int unlink(const char* name) noexcept {
  zaehle();
  return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, name, 0));
}

}  // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

oberflaeche::Meldung gdi_Fehler(const QString& text) {
  return {text, u"GDI Error"_s, oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
}

QByteArray farbig() {
  QImage bild(320, 240, QImage::Format_RGB32);
  for (int y = 0; y < 240; ++y)
    for (int x = 0; x < 320; ++x) bild.setPixel(x, y, qRgb(x % 256, y, (x * y / 7) % 256));
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  bild.save(&puffer, "jpg", 90);
  return bytes;
}

class DrehenPlatte : public ::testing::Test {
 protected:
  DrehenPlatte() {
    Fkt_GdiStartup(1);
    EXPECT_EQ(jpegdrehung::drehe(jpg, *Drehung::von(13), neu), 0);
  }
  ~DrehenPlatte() override {
    antworten = {};
    Fkt_GdiShutdown();
  }
  QStringList inhalt() const { return QDir(ordner.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  void bleibt_allein() const {
    EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
    EXPECT_EQ(ordner.lies(u"a.jpg"_s), jpg);
  }

  MeldungsDoppel meldungen;
  Testordner ordner;
  const QByteArray jpg = farbig();
  QByteArray neu;
  const QString bild = ordner.schreibe(u"a.jpg"_s, jpg);
};

TEST_F(DrehenPlatte, AFullDiskReports7AndLeavesNothingBehind) {
  for (const bool ohne_namenlose : {false, true})
    for (const long platz : {0L, 1000L}) {
      antworten = {.platz = platz, .ohne_namenlose = ohne_namenlose};
      meldungen.erwarte(gdi_Fehler(u"Win32 Error. GDI+ Error:7"_s));
      EXPECT_FALSE(Fkt_Bild_Drehen(bild, 13));
      bleibt_allein();
      antworten.platz = platz;
      meldungen.erwarte(gdi_Fehler(u"Win32 Error. GDI+ Error:7"_s));
      EXPECT_FALSE(Fkt_JpgTransform(bild, ordner.pfad(u"b.jpg"_s), 13));
      bleibt_allein();
    }
}

TEST_F(DrehenPlatte, AFolderNobodyMayWriteToReports12) {
  for (const int fehler : {EACCES, EROFS}) {
    antworten.beim_Anlegen = fehler;
    meldungen.erwarte(gdi_Fehler(u"Access Denied. GDI+ Error:12"_s));
    EXPECT_FALSE(Fkt_Bild_Drehen(bild, 13));
    meldungen.erwarte(gdi_Fehler(u"Access Denied. GDI+ Error:12"_s));
    EXPECT_FALSE(Fkt_JpgTransform(bild, ordner.pfad(u"b.jpg"_s), 13));
    antworten = {};
    bleibt_allein();
  }
}

TEST_F(DrehenPlatte, AShareThatVanishesEndsInAMessageAndLeavesTheSource) {
  for (const auto& [fehler, text] : {std::pair{ESTALE, u"Win32 Error. GDI+ Error:7"_s},
           std::pair{EIO, u"Win32 Error. GDI+ Error:7"_s}, std::pair{EHOSTDOWN, u"Win32 Error. GDI+ Error:7"_s},
           std::pair{ENOENT, u"File Not Found. GDI+ Error:10"_s}}) {
    antworten.beim_Anlegen = fehler;
    meldungen.erwarte(gdi_Fehler(text));
    EXPECT_FALSE(Fkt_Bild_Drehen(bild, 13)) << fehler;
    antworten = {};
    bleibt_allein();
  }
  antworten.beim_Umbenennen = {ESTALE};
  EXPECT_EQ(Fehlernummer_von([&] { Fkt_Bild_Drehen(bild, 13); }), 57) << "gone between writing and the exchange";
  bleibt_allein();
}

TEST_F(DrehenPlatte, ASwapThatFailsIsReportedAndLeavesNothingBehind) {
  for (const auto& [fehler, nummer] : {std::pair{EPERM, 70}, std::pair{EBUSY, 70}, std::pair{EIO, 57}}) {
    antworten.beim_Umbenennen = {fehler};
    EXPECT_EQ(Fehlernummer_von([&] { Fkt_Bild_Drehen(bild, 13); }), nummer);
    bleibt_allein();
  }
}

TEST_F(DrehenPlatte, WithoutAReplacingRenameTheOldFileStepsAsideAndThenGoes) {
  for (const bool ohne_namenlose : {false, true}) {
    ordner.schreibe(u"a.jpg"_s, jpg);
    antworten = {.ohne_namenlose = ohne_namenlose, .ohne_Ersetzen = true};
    EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
    EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
    EXPECT_EQ(ordner.lies(u"a.jpg"_s), neu);
  }
}

TEST_F(DrehenPlatte, WhereTheNewContentThenCannotTakeTheNameTheOldOneComesBack) {
  antworten.beim_Umbenennen = {EEXIST, 0, EACCES};
  EXPECT_EQ(Fehlernummer_von([&] { Fkt_Bild_Drehen(bild, 13); }), 70);
  EXPECT_TRUE(antworten.beim_Umbenennen.isEmpty());
  bleibt_allein();
}

TEST_F(DrehenPlatte, WithoutUnnamedFilesNothingStandsBesideThePictureAfterwardsEither) {
  antworten.ohne_namenlose = true;
  ordner.schreibe(u"_a.jpg"_s, "von jemandem");
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
  EXPECT_EQ(inhalt(), (QStringList{u"_a.jpg"_s, u"a.jpg"_s}));
  EXPECT_EQ(ordner.lies(u"_a.jpg"_s), "von jemandem");
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), neu);
}

/// What a process left that ended before its call number `tote`; false when it came through.
bool stirbt(const QString& bild, const Antworten& wie, int tote) {
  const pid_t kind = ::fork();
  EXPECT_GE(kind, 0);
  if (kind == 0) {
    antworten = wie;
    antworten.noch_Aufrufe = tote;
    ::_exit(Fkt_Bild_Drehen(bild, 13) ? 0 : 1);
  }
  int ende = 0;
  EXPECT_EQ(::waitpid(kind, &ende, 0), kind);
  EXPECT_TRUE(WIFEXITED(ende));
  const bool gestorben = WEXITSTATUS(ende) == 7;
  EXPECT_EQ(WEXITSTATUS(ende), gestorben ? 7 : 0);
  return gestorben;
}

// One process for each call that changes anything on the disk; it ends right before that call.
TEST_F(DrehenPlatte, BeforeEveryCallToTheDiskThePictureIsWholeAndNoRestPassesForOne) {
  for (const Antworten& wie : {Antworten{}, Antworten{.ohne_namenlose = true}, Antworten{.ohne_Ersetzen = true},
           Antworten{.ohne_namenlose = true, .ohne_Ersetzen = true}}) {
    int tote = 0;
    for (bool gestorben = true; gestorben; ++tote) {
      ordner.schreibe(u"a.jpg"_s, jpg);
      ordner.schreibe(u"_a.jpg"_s, "von jemandem");
      gestorben = stirbt(bild, wie, tote);
      for (const QString& name : inhalt())
        EXPECT_TRUE(name.startsWith(u".kvo-"_s) || name == u"_a.jpg"_s || name == u"a.jpg"_s) << name.toStdString();
      if (!wie.ohne_Ersetzen) {
        EXPECT_TRUE(ordner.vorhanden(u"a.jpg"_s)) << tote;
      }
      dateien::raeume_Reste(ordner.pfad());
      EXPECT_EQ(inhalt(), (QStringList{u"_a.jpg"_s, u"a.jpg"_s})) << tote;
      const QByteArray bytes = ordner.lies(u"a.jpg"_s);
      EXPECT_TRUE(bytes == neu || (gestorben && bytes == jpg)) << tote;
      EXPECT_EQ(ordner.lies(u"_a.jpg"_s), "von jemandem") << tote;
    }
    EXPECT_GE(tote, 5) << "open, write, fsync, link or not, rename";
  }
}

}  // namespace
