#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

#include "platform/files/Dateien.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

class DateienTest : public ::testing::Test {
 protected:
  Bildwurzel wurzel;
};

TEST_F(DateienTest, MakingAFolderTellsApartWhyItCannotBeMade) {
  dateien::MkDir(u"P:\\neu"_s);
  EXPECT_TRUE(dateien::ist_Ordner(u"P:\\neu"_s));
  wurzel.schreibe(u"datei"_s, "x");
  const struct {
    QString pfad;
    int nummer;
  } faelle[] = {
      {u"P:\\neu"_s, 75},
      {u"P:\\NEU"_s, 75},
      {u"P:\\"_s, 75},
      {u"Q:\\x"_s, 76},
      {u"\\\\server"_s, 76},
      {u"\\\\s\\f"_s, 76},
      {u"P:\\fehlt\\x"_s, 76},
      {u"P:\\datei\\x"_s, 76},
      {u"P:\\a*b"_s, 52},
      {u"P:\\a<b"_s, 52},
      {u"P:\\a|b"_s, 52},
      {u"P:\\a\"b"_s, 52},
      {u"P:\\"_s + QString(300, u'x'), 52},
  };
  for (const auto& fall : faelle)
    EXPECT_EQ(Fehlernummer_von([&] { dateien::MkDir(fall.pfad); }), fall.nummer) << fall.pfad.toStdString();
}

TEST_F(DateienTest, ListingsTakeWildcardsWithoutRegardToCase) {
  for (const auto& name : {u"b.JPG"_s, u"A.jpg"_s, u"ohne"_s, u"c.jpeg"_s, u".versteckt"_s, u"o/x.jpg"_s})
    wurzel.schreibe(name, "x");
  ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(u"b.JPG"_s)).constData(), 0444), 0);
  EXPECT_EQ(dateien::Dir(u"P:\\*.jpg"_s), (QStringList{u"A.jpg"_s, u"b.JPG"_s}));
  EXPECT_EQ(dateien::Dir(u"P:\\*.*"_s), (QStringList{u".versteckt"_s, u"A.jpg"_s, u"b.JPG"_s, u"c.jpeg"_s, u"ohne"_s}));
  EXPECT_EQ(dateien::Dir(u"P:\\?.jp*"_s), (QStringList{u"A.jpg"_s, u"b.JPG"_s, u"c.jpeg"_s}));
  EXPECT_EQ(dateien::Dir(u"P:\\."_s), QStringList());
  EXPECT_EQ(dateien::Dir(u"P:\\fehlt\\*.*"_s), QStringList());
}

TEST_F(DateienTest, AFifoNeitherHangsAListingNorARead) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(wurzel.pfad(u"fifo"_s)).constData(), 0666), 0);
  EXPECT_EQ(dateien::Dir(u"P:\\*.*"_s), QStringList());
  EXPECT_EQ(Fehlernummer_von([] { dateien::lies_alles(u"P:\\fifo"_s); }), 75);
  EXPECT_EQ(Fehlernummer_von([] { dateien::schreibe_alles(u"P:\\fifo"_s, "x"); }), 75);
}

TEST_F(DateienTest, LengthOfAFolderIs0AndAMissingFileIsAFailure) {
  wurzel.schreibe(u"o/x"_s, "12345");
  EXPECT_EQ(dateien::FileLen(u"P:\\o\\x"_s), 5);
  EXPECT_EQ(dateien::FileLen(u"P:\\o"_s), 0);
  EXPECT_EQ(Fehlernummer_von([] { dateien::FileLen(u"P:\\fehlt"_s); }), 53);
}

TEST_F(DateienTest, WritingReplacesTheContentAndKeepsTheFilesRights) {
  wurzel.schreibe(u"a.txt"_s, "lang und alt");
  ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(u"a.txt"_s)).constData(), 0640), 0);
  dateien::schreibe_alles(u"P:\\a.txt"_s, "neu");
  EXPECT_EQ(wurzel.lies(u"a.txt"_s), "neu");
  struct stat info {};
  ASSERT_EQ(::stat(QFile::encodeName(wurzel.pfad(u"a.txt"_s)).constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0640U);
  dateien::schreibe_alles(u"P:\\b.txt"_s, QByteArray());
  EXPECT_EQ(wurzel.lies(u"b.txt"_s), QByteArray());
}

TEST_F(DateienTest, WritingThroughALinkKeepsTheLink) {
  wurzel.schreibe(u"o/a.txt"_s, "alt");
  ASSERT_TRUE(QFile::link(wurzel.pfad(u"o/a.txt"_s), wurzel.pfad(u"verweis.txt"_s)));
  dateien::schreibe_alles(u"P:\\verweis.txt"_s, "neu");
  EXPECT_TRUE(QFileInfo(wurzel.pfad(u"verweis.txt"_s)).isSymLink());
  EXPECT_EQ(wurzel.lies(u"o/a.txt"_s), "neu");
}

TEST_F(DateienTest, AReadOnlyFileIsNotWrittenWhoeverTheUserIs) {
  wurzel.schreibe(u"a.txt"_s, "alt");
  ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(u"a.txt"_s)).constData(), 0444), 0);
  EXPECT_EQ(Fehlernummer_von([] { dateien::schreibe_alles(u"P:\\a.txt"_s, "neu"); }), 75);
  EXPECT_EQ(wurzel.lies(u"a.txt"_s), "alt");
}

TEST_F(DateienTest, AChangeOfAFileChangesItsMark) {
  wurzel.schreibe(u"a.txt"_s, "1");
  const auto vorher = dateien::kennung(u"P:\\a.txt"_s);
  EXPECT_EQ(vorher, dateien::kennung(u"P:\\A.TXT"_s));
  wurzel.schreibe(u"a.txt"_s, "22");
  EXPECT_NE(vorher, dateien::kennung(u"P:\\a.txt"_s));
}
