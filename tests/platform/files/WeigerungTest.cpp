// What a share refuses, and what a server that fails answers. The program puts calls of its own in front of the C
// library's, which answer as a test asks for.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <functional>
#include <vector>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/Ersatzdatei.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/wirt/Namenswechsel.h"
#include "tests/support/Bildwurzel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

enum Aufruf : std::size_t {
  OhneNamen,
  NeuerName,
  NameGeben,
  ZweiterName,
  Umbenennen,
  Ersetzen,
  Rechte,
  Besitzer,
  Zeit,
  Attribut,
  Sichern,
  OrdnerSichern,
  Schliessen,
  Lesen,
  Schreiben,
  Aufrufe
};

/// errno that each kind of call answers; 0 lets it through.
std::array<int, Aufrufe> weigerung{};
/// Reading ends early, as if the file did.
bool bricht_ab = false;
/// A share that takes names without regard to case: both are the same file, and a rename from one to the other deletes
/// it.
QByteArray eine_Schreibung;
QByteArray andere_Schreibung;
/// Everything looks as if it had not been touched for that long.
time_t aelter_um = 0;
/// No rename reaches that name: the server fails.
QByteArray unerreichbar;
/// Somebody else's file of that name comes into being before the system takes the name.
QByteArray kommt_dazwischen;

bool weigert(Aufruf aufruf) {
  if (weigerung[aufruf] != 0) errno = weigerung[aufruf];
  return weigerung[aufruf] != 0;
}

void lass_jemanden_vor(const char* name) {
  if (kommt_dazwischen != name) return;
  kommt_dazwischen.clear();
  const int fremde =
      static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
  if (::syscall(SYS_write, fremde, "fremd", 5) != 5) ::abort();
  ::syscall(SYS_close, fremde);
}

/// A file that is open for writing.
bool wird_geschrieben(int deskriptor) {
  struct stat info {};
  return ::fstat(deskriptor, &info) == 0 && S_ISREG(info.st_mode) &&
      (::fcntl(deskriptor, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

}  // namespace

// Visible, so that the libraries find these too. Their declarations name the parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp)
#pragma GCC visibility push(default)
extern "C" {

int open(const char* name, int art, ...) {
  va_list weitere;
  va_start(weitere, art);
  const mode_t rechte = (art & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(weitere, mode_t) : 0;
  va_end(weitere);
  if ((art & O_TMPFILE) == O_TMPFILE && weigert(OhneNamen)) return -1;
  if ((art & O_EXCL) != 0 && weigert(NeuerName)) return -1;
  if ((art & O_EXCL) != 0) lass_jemanden_vor(name);
  return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, art, rechte));
}
int linkat(int von_Ordner, const char* von, int nach_Ordner, const char* nach, int art) noexcept {
  if (weigert(NameGeben)) return -1;
  lass_jemanden_vor(nach);
  return static_cast<int>(::syscall(SYS_linkat, von_Ordner, von, nach_Ordner, nach, art));
}
int link(const char* von, const char* nach) noexcept {
  if (weigert(ZweiterName)) return -1;
  lass_jemanden_vor(nach);
  return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, von, AT_FDCWD, nach, 0));
}
int renameat2(int von_Ordner, const char* von, int nach_Ordner, const char* nach, unsigned art) noexcept {
  if (weigert(Umbenennen)) return -1;
  if (andere_Schreibung == nach && eine_Schreibung == von) return errno = EEXIST, -1;
  lass_jemanden_vor(nach);
  return static_cast<int>(::syscall(SYS_renameat2, von_Ordner, von, nach_Ordner, nach, art));
}
int rename(const char* von, const char* nach) noexcept {
  if (weigert(Ersetzen)) return -1;
  if (unerreichbar == nach) return errno = EIO, -1;
  if (andere_Schreibung == nach && eine_Schreibung == von) return ::unlink(von), errno = ENOENT, -1;
  return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, von, AT_FDCWD, nach, 0));
}
int fstatat(int ordner, const char* name, struct stat* info, int art) noexcept {
  const int ergebnis = static_cast<int>(::syscall(SYS_newfstatat, ordner, name, info, art));
  info->st_mtim.tv_sec -= aelter_um;
  info->st_ctim.tv_sec -= aelter_um;
  return ergebnis;
}
int fchmod(int deskriptor, mode_t rechte) noexcept {
  return weigert(Rechte) ? -1 : static_cast<int>(::syscall(SYS_fchmod, deskriptor, rechte));
}
int fchown(int deskriptor, uid_t besitzer, gid_t gruppe) noexcept {
  return weigert(Besitzer) ? -1 : static_cast<int>(::syscall(SYS_fchown, deskriptor, besitzer, gruppe));
}
int futimens(int deskriptor, const struct timespec zeiten[2]) noexcept {
  return weigert(Zeit) ? -1 : static_cast<int>(::syscall(SYS_utimensat, deskriptor, nullptr, zeiten, 0));
}
int fsetxattr(int deskriptor, const char* name, const void* wert, size_t laenge, int art) noexcept {
  return weigert(Attribut) ? -1 : static_cast<int>(::syscall(SYS_fsetxattr, deskriptor, name, wert, laenge, art));
}
int fsync(int deskriptor) {
  struct stat info {};
  ::fstat(deskriptor, &info);
  if (weigert(S_ISDIR(info.st_mode) ? OrdnerSichern : Sichern)) return -1;
  return static_cast<int>(::syscall(SYS_fsync, deskriptor));
}
int close(int deskriptor) {
  const bool weigert_sich = weigerung[Schliessen] != 0 && wird_geschrieben(deskriptor);
  const int ergebnis = static_cast<int>(::syscall(SYS_close, deskriptor));
  return weigert_sich && weigert(Schliessen) ? -1 : ergebnis;
}
ssize_t read(int deskriptor, void* puffer, std::size_t anzahl) {
  struct stat info {};
  const bool datei = (weigerung[Lesen] != 0 || bricht_ab) && ::fstat(deskriptor, &info) == 0 && info.st_size > 0;
  if (datei && weigert(Lesen)) return -1;
  if (datei && bricht_ab) return 0;
  return ::syscall(SYS_read, deskriptor, puffer, anzahl);
}
ssize_t pread(int deskriptor, void* puffer, std::size_t anzahl, off_t stelle) {
  if (weigert(Lesen)) return -1;
  return bricht_ab ? 0 : ::syscall(SYS_pread64, deskriptor, puffer, anzahl, stelle);
}
ssize_t pread64(int deskriptor, void* puffer, std::size_t anzahl, off64_t stelle) {
  return pread(deskriptor, puffer, anzahl, stelle);
}
ssize_t write(int deskriptor, const void* puffer, std::size_t anzahl) {
  if (deskriptor > 2 && weigert(Schreiben)) return -1;
  return ::syscall(SYS_write, deskriptor, puffer, anzahl);
}

}  // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp)

namespace {

/// Something that the product does to the files a.jpg ("neu") and b.jpg ("alt" where it is there).
struct Tat {
  const char* name;
  bool ersetzt;    ///< b.jpg is there before
  bool verlaesst;  ///< a.jpg has gone afterwards
  bool liest;
  std::function<void()> tu;
};

const std::vector<Tat>& taten() {
  static const std::vector<Tat> Alle{
      {"copy", false, false, true, [] { FileSystemObject().CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s, false); }},
      {"copy over", true, false, true, [] { FileSystemObject().CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s, true); }},
      {"text", false, false, false, [] { dateien::schreibe_alles(u"P:\\b.jpg"_s, "neu"); }},
      {"text over", true, false, false, [] { dateien::schreibe_alles(u"P:\\b.jpg"_s, "neu"); }},
      {"new file", false, false, false, [] { dateien::schreibe_neu(u"P:\\b.jpg"_s, "neu", u"P:\\a.jpg"_s); }},
      {"exchange", true, false, false,
          [] {
    Ersatzdatei neue(u"P:\\b.jpg"_s);
    neue.schreibe("neu", Ersatzdatei::Zeit::Behalten);
    neue.tausche();
       }},
      {"rename", false, true, false, [] { FileSystemObject().MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }},
      };
  return Alle;
}

class Weigerung : public ::testing::Test {
 protected:
  ~Weigerung() override { lass_alles_zu(); }

  static void lass_alles_zu() {
    weigerung = {};
    bricht_ab = false;
    kommt_dazwischen.clear();
    aelter_um = 0;
    eine_Schreibung.clear();
    andere_Schreibung.clear();
    unerreichbar.clear();
  }
  static std::vector<std::vector<Aufruf>> arten_von_Dateisystemen() {
    return {{}, {OhneNamen}, {NameGeben}, {OhneNamen, Umbenennen}, {OhneNamen, Umbenennen, ZweiterName}};
  }
  QStringList inhalt() const { return QDir(wurzel.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  void stelle_her(const Tat& tat) {
    for (const QString& name : inhalt()) QFile::remove(wurzel.pfad(name));
    wurzel.schreibe(u"a.jpg"_s, "neu");
    if (tat.ersetzt) wurzel.schreibe(u"b.jpg"_s, "alt");
  }
  /// Number of the failure, 0 for none; its words are those that users read.
  static int fehler_von(const Tat& tat) {
    int nummer = 0;
    fehler::melden_und_enden(
        [&](const Laufzeitfehler& f) {
      nummer = f.Nummer();
      EXPECT_FALSE(f.Beschreibung().isEmpty() || f.Beschreibung().startsWith(u"Anwendungs"_s)) << nummer;
        },
        [&] { tat.tu(); });
    lass_alles_zu();
    return nummer;
  }
  void erwarte_getan(const Tat& tat) const {
    EXPECT_EQ(inhalt(), tat.verlaesst ? QStringList{u"b.jpg"_s} : (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
    EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "neu");
  }
  void erwarte_unberuehrt(const Tat& tat) const {
    EXPECT_EQ(inhalt(), tat.ersetzt ? (QStringList{u"a.jpg"_s, u"b.jpg"_s}) : QStringList{u"a.jpg"_s});
    EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "neu");
    if (tat.ersetzt) {
      EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "alt");
    }
  }

  Bildwurzel wurzel;
};

TEST_F(Weigerung, RightsOwnersTimesAndAttributesThatCannotBeSetAreLeftInSilence) {
  for (const Tat& tat : taten())
    for (const int fehler : {EPERM, EACCES, EOPNOTSUPP, ENOSYS, EINVAL, EDQUOT})
      for (const auto& art : arten_von_Dateisystemen()) {
        SCOPED_TRACE(tat.name + std::to_string(fehler));
        stelle_her(tat);
        for (const Aufruf aufruf : art) weigerung[aufruf] = EOPNOTSUPP;
        for (const Aufruf aufruf : {Rechte, Besitzer, Zeit, Attribut}) weigerung[aufruf] = fehler;
        EXPECT_EQ(fehler_von(tat), 0);
        erwarte_getan(tat);
      }
}

TEST_F(Weigerung, EachCallThatAFileSystemDoesNotKnowHasAnotherWay) {
  for (const Tat& tat : taten())
    for (const int fehler : {EINVAL, ENOSYS, EOPNOTSUPP, EPERM})
      for (const auto& art : arten_von_Dateisystemen()) {
        SCOPED_TRACE(tat.name + std::to_string(fehler));
        stelle_her(tat);
        for (const Aufruf aufruf : art) weigerung[aufruf] = fehler;
        weigerung[OrdnerSichern] = fehler;
        if (fehler != EPERM) weigerung[Sichern] = fehler;
        EXPECT_EQ(fehler_von(tat), 0);
        erwarte_getan(tat);
      }
}

TEST_F(Weigerung, NoWayOverwritesAFileThatComesBetween) {
  for (const Tat& tat : taten()) {
    if (tat.ersetzt || tat.name == std::string("text")) continue;
    for (const auto& art : arten_von_Dateisystemen()) {
      SCOPED_TRACE(tat.name + std::to_string(art.size()));
      stelle_her(tat);
      for (const Aufruf aufruf : art) weigerung[aufruf] = EOPNOTSUPP;
      kommt_dazwischen = QFile::encodeName(wurzel.pfad(u"b.jpg"_s));
      EXPECT_EQ(fehler_von(tat), 58);
      EXPECT_EQ(inhalt(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
      EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "neu");
      EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "fremd");
    }
  }
}

TEST_F(Weigerung, WhatFailsInTheMiddleLeavesTheSourceWholeAndTheTargetAsItWas) {
  const struct {
    int fehler;
    int nummer;
  } ausfaelle[] = {{EIO, 57}, {ESTALE, 57}, {EHOSTDOWN, 57}, {ETIMEDOUT, 57}, {ENOSPC, 61}, {EDQUOT, 61}};
  for (const Tat& tat : taten())
    for (const Aufruf aufruf : {Schreiben, Sichern, Schliessen, Lesen})
      for (const auto& [fehler, nummer] : ausfaelle)
        for (const bool ohne_Namen : {false, true}) {
          if (tat.verlaesst || (aufruf == Lesen && !tat.liest)) continue;
          SCOPED_TRACE(tat.name + std::to_string(aufruf) + '/' + std::to_string(fehler));
          stelle_her(tat);
          weigerung[aufruf] = fehler;
          if (ohne_Namen) weigerung[OhneNamen] = EOPNOTSUPP;
          EXPECT_EQ(fehler_von(tat), nummer);
          erwarte_unberuehrt(tat);
        }
}

TEST_F(Weigerung, AServerThatIsGoneWhenTheNameIsToBeTakenLeavesEverythingAsItWas) {
  for (const Tat& tat : taten())
    for (const int fehler : {EIO, ESTALE, EHOSTDOWN}) {
      SCOPED_TRACE(tat.name + std::to_string(fehler));
      stelle_her(tat);
      weigerung[OhneNamen] = EOPNOTSUPP;
      weigerung[Umbenennen] = weigerung[Ersetzen] = fehler;
      EXPECT_EQ(fehler_von(tat), 57);
      erwarte_unberuehrt(tat);
    }
}

TEST_F(Weigerung, AReadThatEndsTooEarlyIsNoShorterFile) {
  for (const Tat& tat : taten()) {
    if (!tat.liest) continue;
    stelle_her(tat);
    bricht_ab = true;
    EXPECT_EQ(fehler_von(tat), 57);
    erwarte_unberuehrt(tat);
  }
  bricht_ab = true;
  EXPECT_EQ(fehler_von({"", false, false, true, [] { dateien::lies_alles(u"P:\\a.jpg"_s); }}), 57);
}

TEST_F(Weigerung, AnInterruptionWhileClosingIsNoFailure) {
  for (const Tat& tat : taten()) {
    stelle_her(tat);
    weigerung[Schliessen] = EINTR;
    EXPECT_EQ(fehler_von(tat), 0);
    erwarte_getan(tat);
  }
}

TEST_F(Weigerung, WhatAnotherDeskLeftGoesAfterADay) {
  const QString rest = u".kvo-empfang-0123abcd-17-89abcdef4711-3-e-a.jpg"_s;
  for (const auto& [alter, bleibt] : {std::pair{23 * 3600, true}, std::pair{25 * 3600, false}}) {
    wurzel.schreibe(rest, "halb");
    aelter_um = alter;
    dateien::raeume_Reste(u"P:\\"_s);
    EXPECT_EQ(inhalt(), bleibt ? QStringList{rest} : QStringList());
  }
}

TEST_F(Weigerung, OnAShareWithoutRegardToCaseAnotherSpellingNeverCostsTheFile) {
  wurzel.schreibe(u"a.jpg"_s, "neu");
  eine_Schreibung = QFile::encodeName(wurzel.pfad(u"a.jpg"_s));
  andere_Schreibung = QFile::encodeName(wurzel.pfad(u"A.jpg"_s));
  FileSystemObject().MoveFile(u"P:\\a.jpg"_s, u"P:\\A.jpg"_s);
  EXPECT_EQ(inhalt(), QStringList{u"A.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"A.jpg"_s), "neu");
}

TEST_F(Weigerung, ASpellingThatCannotBeTakenLeavesTheOldOne) {
  wurzel.schreibe(u"a.jpg"_s, "neu");
  eine_Schreibung = QFile::encodeName(wurzel.pfad(u"a.jpg"_s));
  andere_Schreibung = unerreichbar = QFile::encodeName(wurzel.pfad(u"A.jpg"_s));
  EXPECT_EQ(
      fehler_von({"", false, false, false, [] { FileSystemObject().MoveFile(u"P:\\a.jpg"_s, u"P:\\A.jpg"_s); }}), 57);
  EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "neu");
}

TEST_F(Weigerung, ANameThatWasKeptFreeGoesWithTheRenameThatFails) {
  for (const Tat& tat : taten()) {
    if (tat.ersetzt) continue;
    stelle_her(tat);
    for (const Aufruf aufruf : {OhneNamen, Umbenennen, ZweiterName}) weigerung[aufruf] = EOPNOTSUPP;
    unerreichbar = QFile::encodeName(wurzel.pfad(u"b.jpg"_s));
    SCOPED_TRACE(tat.name);
    EXPECT_EQ(fehler_von(tat), 57);
    erwarte_unberuehrt(tat);
  }
}

TEST_F(Weigerung, InAFolderThatTakesNoNewFileATextIsWrittenWhereItStands) {
  const auto schreibe = [this](const QString& name) {
    weigerung[OhneNamen] = weigerung[NeuerName] = EACCES;
    return fehler_von({"", false, false, false, [&] { dateien::schreibe_alles(u"P:\\"_s + name, "neu"); }});
  };
  wurzel.schreibe(u"b.txt"_s, "viel länger");
  EXPECT_EQ(schreibe(u"b.txt"_s), 0);
  EXPECT_EQ(wurzel.lies(u"b.txt"_s), "neu");
  EXPECT_EQ(schreibe(u"c.txt"_s), 70);
  EXPECT_EQ(inhalt(), QStringList{u"b.txt"_s});
}

TEST_F(Weigerung, AFolderIsRenamedWithoutTheCallsAndNeverOntoAnotherOne) {
  wurzel.schreibe(u"o/x"_s, "1");
  wurzel.schreibe(u"n/y"_s, "2");
  weigerung[Umbenennen] = EINVAL;
  FileSystemObject().MoveFolder(u"P:\\o"_s, u"P:\\m"_s);
  EXPECT_EQ(wurzel.lies(u"m/x"_s), "1");
  EXPECT_EQ(fehler_von({"", false, false, false,
                [] {
    weigerung[Umbenennen] = EINVAL;
    FileSystemObject().MoveFolder(u"P:\\m"_s, u"P:\\n"_s);
                        }}),
      58);
  EXPECT_EQ(wurzel.lies(u"n/y"_s), "2");
}

}  // namespace

TEST_F(Weigerung, WhereAFileHasOneNameOnlyItIsRenamedWhenItsNewOneIsNeeded) {
  for (const int fehler : {EINVAL, ENOSYS, EOPNOTSUPP, EPERM, EACCES, EMLINK, EXDEV}) {
    SCOPED_TRACE(fehler);
    stelle_her(taten().front());
    weigerung[ZweiterName] = fehler;
    Namenswechsel wechsel(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s);
    EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
    wechsel.benenne();
    EXPECT_EQ(inhalt(), QStringList{u"b.jpg"_s});
    wechsel.nimm_zurueck();
    EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
    wechsel.vollende();
    EXPECT_EQ(inhalt(), QStringList{u"b.jpg"_s});
    EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "neu");
  }
}
