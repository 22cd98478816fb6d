#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

class FileSystem : public ::testing::Test {
 protected:
  void schreibgeschuetzt(const QString& name) {
    ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(name)).constData(), 0444), 0);
  }
  /// Nothing but the named files lies in the root: no copy was left half-way.
  void nur(QStringList namen) {
    namen.sort();
    EXPECT_EQ(QDir(wurzel.pfad()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name), namen);
  }
  Bildwurzel wurzel;
  FileSystemObject fso;
};

TEST_F(FileSystem, FilesAndFoldersAreToldApart) {
  wurzel.schreibe(u"o/a.jpg"_s, "x");
  EXPECT_TRUE(fso.FileExists(u"P:\\o\\a.jpg"_s));
  EXPECT_FALSE(fso.FileExists(u"P:\\o"_s));
  EXPECT_TRUE(fso.FolderExists(u"P:\\o\\"_s));
  EXPECT_FALSE(fso.FolderExists(u"P:\\o\\a.jpg"_s));
  EXPECT_FALSE(fso.FileExists(QString()));
  EXPECT_FALSE(fso.FolderExists(u"Q:\\x"_s));
}

TEST_F(FileSystem, BuildPathPutsExactlyOneBackslash) {
  EXPECT_EQ(fso.BuildPath(u"P:\\a"_s, u"b"_s), u"P:\\a\\b"_s);
  EXPECT_EQ(fso.BuildPath(u"P:\\a\\"_s, u"b"_s), u"P:\\a\\b"_s);
  EXPECT_EQ(fso.BuildPath(u"P:\\a\\"_s, u"\\b"_s), u"P:\\a\\b"_s);
  EXPECT_EQ(fso.BuildPath(QString(), u"b"_s), u"b"_s);
}

TEST_F(FileSystem, AFolderListsRegularFilesAndRealFoldersWithoutRegardToCase) {
  for (const auto& name : {u"b.jpg"_s, u"A.jpg"_s, u"c"_s, u"Unter/x"_s}) wurzel.schreibe(name, "x");
  ASSERT_TRUE(QFile::link(wurzel.pfad(u"Unter"_s), wurzel.pfad(u"verweis"_s)));
  ASSERT_EQ(::mkfifo(QFile::encodeName(wurzel.pfad(u"fifo"_s)).constData(), 0666), 0);
  const Folder ordner = fso.GetFolder(u"P:\\"_s);
  EXPECT_EQ(ordner.Files(), (QStringList{u"A.jpg"_s, u"b.jpg"_s, u"c"_s}));
  EXPECT_EQ(ordner.SubFolders(), QStringList{u"Unter"_s});
  EXPECT_EQ(Fehlernummer_von([&] { fso.GetFolder(u"P:\\fehlt"_s); }), 76);
}

TEST_F(FileSystem, NamesThatNoPathCanMeanAreNotListed) {
  wurzel.schreibe(u"gut.jpg"_s, "x");
  QFile rueckstrich(wurzel.pfad() + u"/a\\b.jpg"_s);
  ASSERT_TRUE(rueckstrich.open(QIODevice::WriteOnly));
  const QByteArray kaputt = QFile::encodeName(wurzel.pfad()) + "/\xFF\xFE.jpg";
  FILE* datei = ::fopen(kaputt.constData(), "w");
  ASSERT_NE(datei, nullptr);
  ::fclose(datei);
  EXPECT_EQ(fso.GetFolder(u"P:\\"_s).Files(), QStringList{u"gut.jpg"_s});
  EXPECT_EQ(::unlink(kaputt.constData()), 0);
}

TEST_F(FileSystem, ACopyKeepsContentAndTimeStamp) {
  wurzel.schreibe(u"a.jpg"_s, QByteArray(3'000'000, 'q'));
  QFile quelle(wurzel.pfad(u"a.jpg"_s));
  ASSERT_TRUE(quelle.open(QIODevice::ReadWrite));
  const QDateTime zeit(QDate(2001, 2, 3), QTime(4, 5, 6));
  ASSERT_TRUE(quelle.setFileTime(zeit, QFileDevice::FileModificationTime));
  quelle.close();
  fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s);
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), QByteArray(3'000'000, 'q'));
  EXPECT_EQ(QFileInfo(wurzel.pfad(u"b.jpg"_s)).lastModified(), zeit);
  nur({u"a.jpg"_s, u"b.jpg"_s});
}

TEST_F(FileSystem, ATargetWithASeparatorIsAFolderThatGetsTheSourcesName) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"o/x"_s, "1");
  fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\o\\"_s, false);
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "1");
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\fehlt\\"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\fehlt\\b.jpg"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\o"_s); }), 70);
}

TEST_F(FileSystem, AnExistingTargetNeedsTheWordToOverwrite) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"b.jpg"_s, "2");
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s, false); }), 58);
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "2");
  fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\B.JPG"_s, true);
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "1");
  nur({u"a.jpg"_s, u"b.jpg"_s});
}

TEST_F(FileSystem, AReadOnlyTargetIsNotOverwrittenWhoeverTheUserIs) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"b.jpg"_s, "2");
  schreibgeschuetzt(u"b.jpg"_s);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }), 70);
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "2");
}

TEST_F(FileSystem, AFileCopiedOntoItselfIsRefusedBeforeAnythingIsOpened) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  ASSERT_EQ(::link(QFile::encodeName(wurzel.pfad(u"a.jpg"_s)).constData(),
                QFile::encodeName(wurzel.pfad(u"zwilling.jpg"_s)).constData()),
      0);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\a.jpg"_s); }), 70);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\A.JPG"_s, false); }), 70);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\a.jpg"_s, u"P:\\zwilling.jpg"_s); }), 70);
  EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "1");
}

TEST_F(FileSystem, AMissingSourceOrAFolderAsSourceIsAMissingFile) {
  wurzel.schreibe(u"o/x"_s, "1");
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\fehlt"_s, u"P:\\b"_s); }), 53);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\o"_s, u"P:\\b"_s); }), 53);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\o"_s, u"P:\\b"_s); }), 53);
  EXPECT_EQ(Fehlernummer_von([&] { fso.DeleteFile(u"P:\\o"_s); }), 53);
}

TEST_F(FileSystem, WildcardsAreLiteralNames) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  EXPECT_EQ(Fehlernummer_von([&] { fso.DeleteFile(u"P:\\*.jpg"_s); }), 53);
  wurzel.schreibe(u"*.jpg"_s, "2");
  fso.DeleteFile(u"P:\\*.jpg"_s);
  nur({u"a.jpg"_s});
}

TEST_F(FileSystem, ARenameNeverReplaces) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"b.jpg"_s, "2");
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\B.jpg"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\a.jpg"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\fehlt\\a.jpg"_s); }), 76);
  fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\c.jpg"_s);
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "2");
  EXPECT_EQ(wurzel.lies(u"c.jpg"_s), "1");
}

TEST_F(FileSystem, AFolderMovesWithAllThatIsInIt) {
  wurzel.schreibe(u"o/p/x"_s, "1");
  fso.MoveFolder(u"P:\\o"_s, u"P:\\n"_s);
  EXPECT_EQ(wurzel.lies(u"n/p/x"_s), "1");
  EXPECT_FALSE(fso.FolderExists(u"P:\\o"_s));
}

TEST_F(FileSystem, AFolderMovesNeverOntoWhatIsThere) {
  wurzel.schreibe(u"o/x"_s, "1");
  wurzel.schreibe(u"n/y"_s, "2");
  wurzel.schreibe(u"a.jpg"_s, "3");
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFolder(u"P:\\o"_s, u"P:\\n"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFolder(u"P:\\o"_s, u"P:\\a.jpg"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFolder(u"P:\\a.jpg"_s, u"P:\\m"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFolder(u"P:\\fehlt"_s, u"P:\\m"_s); }), 76);
  EXPECT_EQ(wurzel.lies(u"o/x"_s), "1");
}

TEST_F(FileSystem, TheSameFileIsRenamedToAnotherCase) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\A.JPG"_s);
  nur({u"A.JPG"_s});
}

TEST_F(FileSystem, ATwinOfTheSourceIsAnExistingTarget) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  ASSERT_EQ(::link(QFile::encodeName(wurzel.pfad(u"a.jpg"_s)).constData(),
                QFile::encodeName(wurzel.pfad(u"b.jpg"_s)).constData()),
      0);
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s); }), 58);
  nur({u"a.jpg"_s, u"b.jpg"_s});
}

TEST_F(FileSystem, AReadOnlyFileIsDeletedOnlyByForce) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  schreibgeschuetzt(u"a.jpg"_s);
  EXPECT_EQ(Fehlernummer_von([&] { fso.DeleteFile(u"P:\\a.jpg"_s); }), 70);
  nur({u"a.jpg"_s});
  fso.DeleteFile(u"P:\\a.jpg"_s, true);
  nur({});
}

TEST_F(FileSystem, AFolderGoesOnlyWhenItIsEmpty) {
  wurzel.schreibe(u"o/x"_s, "1");
  EXPECT_EQ(Fehlernummer_von([&] { fso.DeleteFolder(u"P:\\o"_s, true); }), 70);
  fso.DeleteFile(u"P:\\o\\x"_s);
  fso.DeleteFolder(u"P:\\o"_s, true);
  EXPECT_EQ(Fehlernummer_von([&] { fso.DeleteFolder(u"P:\\o"_s, true); }), 76);
}

TEST_F(FileSystem, EverythingInAFolderIsCountedAlsoWhatItsListsLeaveOut) {
  for (const auto& name : {u"o/a.jpg"_s, u"o/b\\c.jpg"_s, u"o/Unter/x"_s}) wurzel.schreibe(name, "x");
  ASSERT_TRUE(QFile::link(wurzel.pfad(), wurzel.pfad(u"o/verweis"_s)));
  EXPECT_EQ(fso.GetFolder(u"P:\\o"_s).Anzahl_Eintraege(), 4);
  const Folder ordner = fso.GetFolder(u"P:\\o\\Unter"_s);
  fso.DeleteFile(u"P:\\o\\Unter\\x"_s);
  EXPECT_EQ(ordner.Anzahl_Eintraege(), 0);
  fso.DeleteFolder(u"P:\\o\\Unter"_s);
  EXPECT_EQ(Fehlernummer_von([&] { ordner.Anzahl_Eintraege(); }), 76) << "a missing folder is no empty one";
}

TEST_F(FileSystem, WhatMayBeDeletedIsToldBeforehand) {
  wurzel.schreibe(u"o/a.jpg"_s, "1");
  schreibgeschuetzt(u"o/a.jpg"_s);
  EXPECT_TRUE(fso.darf_loeschen(u"P:\\o\\a.jpg"_s)) << "the file's own rights do not count";
  EXPECT_TRUE(fso.darf_loeschen(u"P:\\o"_s));
  EXPECT_FALSE(fso.darf_loeschen(u"P:\\o\\fehlt.jpg"_s));
  EXPECT_FALSE(fso.darf_loeschen(u"Q:\\a.jpg"_s));
}

TEST_F(FileSystem, AFolderThatIsALinkOrThatSomethingIsMountedOnMayNotBeDeletedEvenWhenItIsEmpty) {
  const Testordner anderswo;
  ASSERT_TRUE(QFile::link(anderswo.pfad(), wurzel.pfad(u"verweis"_s)));
  ASSERT_TRUE(QFile::link(wurzel.schreibe(u"a.jpg"_s, "1"), wurzel.pfad(u"b.jpg"_s)));
  EXPECT_FALSE(fso.darf_loeschen(u"P:\\verweis"_s));
  EXPECT_TRUE(fso.darf_loeschen(u"P:\\b.jpg"_s)) << "a link to a file goes, and leaves the file";
  EXPECT_NE(Fehlernummer_von([&] { fso.DeleteFolder(u"P:\\verweis"_s, true); }), 0);
  EXPECT_FALSE(fso.darf_loeschen(u"C:\\proc"_s));
}
