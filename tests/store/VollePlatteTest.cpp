// What a full disk and an unwilling file system do. The program puts calls of its own in front of the C library's,
// which answer "no space left" once a budget is used up, or whatever failure a test asks for; no file system of its own
// is needed.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDir>
#include <atomic>
#include <cerrno>

#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "tests/store/Datenbanktest.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr long Unbegrenzt = -1;
std::atomic<long> budget{Unbegrenzt};

/// Bytes that may still be written of `wunsch`; -1 when the disk is full.
long zuteilung(std::size_t wunsch) {
  if (budget == Unbegrenzt) return static_cast<long>(wunsch);
  const long bytes = std::min(budget.load(), static_cast<long>(wunsch));
  if (bytes == 0) {
    errno = ENOSPC;
    return -1;
  }
  budget -= bytes;
  return bytes;
}

/// The failure (errno) that the next calls of that kind answer, and how many of them; 0 calls none.
struct Antwort {
  int fehler = 0;
  int anzahl = 0;
  bool trifft() {
    if (anzahl == 0) return false;
    --anzahl;
    errno = fehler;
    return true;
  }
};
Antwort beim_Umbenennen;
Antwort beim_Loeschen;
Antwort beim_Ordner;

}  // namespace

// Visible, so that the libraries find these too. Their declarations name the parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility push(default)
extern "C" {

ssize_t write(int deskriptor, const void* puffer, std::size_t anzahl) {
  if (deskriptor <= 2) return ::syscall(SYS_write, deskriptor, puffer, anzahl);
  const long bytes = anzahl == 0 ? 0 : zuteilung(anzahl);
  return bytes < 0 ? -1 : ::syscall(SYS_write, deskriptor, puffer, static_cast<std::size_t>(bytes));
}

ssize_t pwrite64(int deskriptor, const void* puffer, std::size_t anzahl, off64_t stelle) {
  const long bytes = anzahl == 0 ? 0 : zuteilung(anzahl);
  return bytes < 0 ? -1 : ::syscall(SYS_pwrite64, deskriptor, puffer, static_cast<std::size_t>(bytes), stelle);
}

ssize_t pwrite(int deskriptor, const void* puffer, std::size_t anzahl, off_t stelle) {
  return pwrite64(deskriptor, puffer, anzahl, stelle);
}

int renameat2(int von_Ordner, const char* von, int nach_Ordner, const char* nach, unsigned art) noexcept {
  if (beim_Umbenennen.trifft()) return -1;
  return static_cast<int>(::syscall(SYS_renameat2, von_Ordner, von, nach_Ordner, nach, art));
}

int unlink(const char* name) noexcept {
  if (beim_Loeschen.trifft()) return -1;
  return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, name, 0));
}

int mkdir(const char* name, mode_t rechte) noexcept {
  if (beim_Ordner.trifft()) return -1;
  return static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, name, rechte));
}

}  // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

/// The disk has room for that many bytes, for as long as this object lives.
class VollePlatte {
 public:
  explicit VollePlatte(long platz) { budget = platz; }
  ~VollePlatte() { budget = Unbegrenzt; }
  VollePlatte(const VollePlatte&) = delete;
  VollePlatte& operator=(const VollePlatte&) = delete;
};

class AufVollerPlatte : public Datenbanktest {
 protected:
  QStringList inhalt() { return QDir(wurzel.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  Bildwurzel wurzel;
  FileSystemObject fso;
};

}  // namespace

TEST_F(AufVollerPlatte, ACopyFailsWholeAndLeavesTheFormerTarget) {
  wurzel.schreibe(u"a.jpg"_s, QByteArray(200'000, 'n'));
  wurzel.schreibe(u"b.jpg"_s, "alt");
  {
    const VollePlatte voll(70'000);
    EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }), 61);
    EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\c.jpg"_s); }), 61);
  }
  EXPECT_EQ(inhalt(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "alt");
}

TEST_F(AufVollerPlatte, ATextFileKeepsItsFormerText) {
  wurzel.schreibe(u"ajpg.txt"_s, "alter Text");
  {
    const VollePlatte voll(3);
    EXPECT_FALSE(store.Fkt_WriteFile(u"P:\\ajpg.txt"_s, u"neuer Text"_s));
    EXPECT_FALSE(store.Fkt_WriteFile(u"P:\\bjpg.txt"_s, u"neuer Text"_s));
  }
  EXPECT_EQ(inhalt(), QStringList{u"ajpg.txt"_s});
  EXPECT_EQ(wurzel.lies(u"ajpg.txt"_s), "alter Text");
}

TEST_F(AufVollerPlatte, APictureCopyIsFalseWithoutAWord) {
  wurzel.schreibe(u"a.jpg"_s, QByteArray(200'000, 'n'));
  QString ziel = u"P:\\o"_s;
  const VollePlatte voll(0);
  EXPECT_FALSE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel));
  EXPECT_TRUE(QDir(wurzel.pfad(u"o"_s)).isEmpty());
}

TEST_F(AufVollerPlatte, ASaveKeepsItsFlagsAndIsCompletedWhenThereIsRoomAgain) {
  for (const QString& name : {u"a"_s, u"b"_s}) {
    ASSERT_TRUE(store.FKT_NeuesBild(u"A"_s, {}, {}, {}, name, u"jpg"_s, u"Bel"_s, {}));
    store.Bild_Pfad(QString(200, u'p'));
  }
  // The writing connection is there before the disk fills up.
  ASSERT_TRUE(store.FKT_DeleteBilder(u"nichts"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  {
    const VollePlatte voll(0);
    EXPECT_TRUE(store.FKT_SpeichernBilder());
  }
  EXPECT_EQ(berichte_von(u"CmdSql"_s), 2);
  EXPECT_EQ(db.anzahl(), 0);
  EXPECT_TRUE(store.Bild_Changeflag() && store.Bild_Neu());
  EXPECT_TRUE(store.FKT_SpeichernBilder());
  EXPECT_EQ(db.anzahl(), 2);
  EXPECT_FALSE(store.Bild_Changeflag());
}

using UnwilligesDateisystem = AufVollerPlatte;

TEST_F(UnwilligesDateisystem, AcrossFileSystemsAMoveCopiesAndThenDeletes) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  beim_Umbenennen = {EXDEV, 1};
  fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s);
  EXPECT_EQ(beim_Umbenennen.anzahl, 0);
  EXPECT_EQ(inhalt(), QStringList{u"b.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "1");
}

TEST_F(UnwilligesDateisystem, AMoveAcrossFileSystemsThatCannotDeleteItsSourceLeavesNoCopy) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  beim_Umbenennen = {EXDEV, 1};
  beim_Loeschen = {EACCES, 1};
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }), 70);
  EXPECT_EQ(beim_Loeschen.anzahl, 0);
  EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
}

TEST_F(UnwilligesDateisystem, WithoutACallThatNeverReplacesARenameStillNeverReplaces) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"b.jpg"_s, "2");
  beim_Umbenennen = {EINVAL, 1};
  fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\c.jpg"_s);
  EXPECT_EQ(beim_Umbenennen.anzahl, 0);
  EXPECT_EQ(inhalt(), (QStringList{u"b.jpg"_s, u"c.jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"c.jpg"_s), "1");
}

TEST_F(UnwilligesDateisystem, AFolderThatMayNotBeMadeCountsAsThereButNoSpaceDoesNot) {
  for (const int fehler : {EROFS, EACCES, EPERM}) {
    beim_Ordner = {fehler, 1};
    EXPECT_EQ(Fehlernummer_von([] { dateien::MkDir(u"P:\\neu"_s); }), 75) << fehler;
    beim_Ordner = {fehler, 2};
    EXPECT_TRUE(store.Fkt_MakePath(u"P:\\neu"_s)) << fehler;
    beim_Ordner = {};
  }
  beim_Ordner = {ENOSPC, 1};
  EXPECT_EQ(Fehlernummer_von([] { dateien::MkDir(u"P:\\neu"_s); }), 61);
  beim_Ordner = {ENOSPC, 1};
  EXPECT_FALSE(store.Fkt_MakePath(u"P:\\neu"_s));
  beim_Ordner = {};
  EXPECT_FALSE(wurzel.vorhanden(u"neu"_s));
}
