#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/wirt/Umzug.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString tabellenform(QString pfad) {
  return u"C:"_s + pfad.replace(u'/', u'\\');
}

int nummer(const std::function<void()>& anweisung) {
  try {
    anweisung();
    return 0;
  } catch (const Laufzeitfehler& fehler) {
    return fehler.Nummer();
  }
}

}  // namespace

TEST(Umzug, ThePlaceBesideAFolderIsThatOfItsNameWithAnEnding) {
  const Testordner ordner;
  EXPECT_EQ(umzug::neben(tabellenform(ordner.pfad(u"Ablage"_s)), u".x"_s), tabellenform(ordner.pfad(u"Ablage.x"_s)));
  EXPECT_EQ(umzug::neben(u"C:\\"_s, u".x"_s), std::nullopt);
}

TEST(Umzug, ARenameReachesAFolderOfTheSameMountAndNoOther) {
  const Testordner ordner;
  ordner.schreibe(u"datei"_s, "x");
  const QString hier = tabellenform(ordner.pfad());
  EXPECT_TRUE(umzug::geht_durch_Umbenennen(hier, hier + u"\\neu"_s));
  EXPECT_FALSE(QFile::exists(ordner.pfad(u"neu"_s))) << "a question leaves nothing";
  EXPECT_TRUE(umzug::geht_durch_Umbenennen(hier, hier));
  EXPECT_FALSE(umzug::geht_durch_Umbenennen(hier, hier + u"\\fehlt\\neu"_s));
  EXPECT_FALSE(umzug::geht_durch_Umbenennen(hier, hier + u"\\datei"_s)) << "a file is in the way";
  EXPECT_FALSE(umzug::geht_durch_Umbenennen(u"C:\\proc"_s, u"C:\\proc.x"_s)) << "the folder is a mount of its own";
}

TEST(Umzug, AFileMovesWithNothingInItsWayAndReplacesNone) {
  const Testordner ordner;
  ordner.schreibe(u"a.jpg"_s, "a");
  ordner.schreibe(u"b.jpg"_s, "b");
  const QString hier = tabellenform(ordner.pfad()) + u'\\';
  EXPECT_EQ(nummer([&] { umzug::verschiebe(hier + u"a.jpg"_s, hier + u"b.jpg"_s); }), fehlernummer::DateiVorhanden);
  EXPECT_EQ(nummer([&] { umzug::verschiebe(hier + u"c.jpg"_s, hier + u"d.jpg"_s); }), fehlernummer::DateiNichtGefunden);
  umzug::verschiebe(hier + u"a.jpg"_s, hier + u"B.JPG"_s);
  EXPECT_EQ(ordner.lies(u"B.JPG"_s), "a") << "another case is another name";
  EXPECT_EQ(ordner.lies(u"b.jpg"_s), "b");
}

TEST(Umzug, FoldersAreMadeWithAllLevels) {
  const Testordner ordner;
  const QString tief = tabellenform(ordner.pfad()) + u"\\a\\b?\\c"_s;
  umzug::lege_an(tief);
  umzug::lege_an(tief);
  EXPECT_TRUE(QFileInfo(ordner.pfad(u"a/b?/c"_s)).isDir());
}

TEST(Umzug, AFileCameWhenItsEntryLastChangedWhateverItsTimeStampSays) {
  const Testordner ordner;
  QFile datei(ordner.schreibe(u"a.jpg"_s, "a"));
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
  for (const int jahr : {2001, 2090}) {
    ASSERT_TRUE(datei.setFileTime(QDateTime(QDate(jahr, 1, 1), QTime(8, 0)), QFile::FileModificationTime));
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(datei.fileName()).constData(), &info), 0);
    EXPECT_EQ(umzug::gekommen_ns(tabellenform(datei.fileName())),
        info.st_ctim.tv_sec * 1'000'000'000LL + info.st_ctim.tv_nsec);
  }
  EXPECT_EQ(
      nummer([&] { umzug::gekommen_ns(tabellenform(ordner.pfad(u"fehlt"_s))); }), fehlernummer::DateiNichtGefunden);
}

TEST(Umzug, TimeCountsByTheClockThatTheFolderKeeps) {
  const Testordner ordner;
  const auto kam = [&](const QString& name) {
    ordner.schreibe(name, "x");
    return umzug::gekommen_ns(tabellenform(ordner.pfad(name)));
  };
  const auto vorher = kam(u"a"_s);
  const auto jetzt = umzug::jetzt_ns(tabellenform(ordner.pfad()));
  EXPECT_LE(vorher, jetzt);
  EXPECT_LE(jetzt, kam(u"b"_s));
  EXPECT_EQ(QDir(ordner.pfad()).entryList(QDir::Files | QDir::Hidden), (QStringList{u"a"_s, u"b"_s}));
  // Nothing can be made there.
  EXPECT_GE(umzug::jetzt_ns(tabellenform(ordner.pfad(u"fehlt"_s))), jetzt);
}
