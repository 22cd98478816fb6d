#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <functional>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/wirt/Namenswechsel.h"
#include "tests/support/Bildwurzel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Namenstest : public ::testing::Test {
 protected:
  Namenstest() { wurzel.schreibe(u"Alt.jpg"_s, "Bild"); }
  QStringList namen() const { return QDir(wurzel.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  static Namenswechsel wechsel(const QString& neu = u"neu.jpg"_s) { return {u"P:\\Alt.jpg"_s, u"P:\\"_s + neu}; }
  static int nummer(const std::function<void()>& anweisung) {
    try {
      anweisung();
      return 0;
    } catch (const Laufzeitfehler& fehler) {
      return fehler.Nummer();
    }
  }
  Bildwurzel wurzel;
};

const QStringList Beide{u"Alt.jpg"_s, u"neu.jpg"_s};

}  // namespace

TEST_F(Namenstest, TheFileHasBothNamesUntilItIsSaidWhichOneStays) {
  Namenswechsel vollendeter = wechsel();
  EXPECT_EQ(namen(), Beide);
  vollendeter.benenne();
  EXPECT_EQ(namen(), Beide);
  vollendeter.vollende();
  EXPECT_EQ(namen(), QStringList{u"neu.jpg"_s});
  vollendeter.vollende();
  vollendeter.nimm_zurueck();
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s}) << "also after everything followed";
  Namenswechsel anderer = wechsel();
  anderer.nimm_zurueck();
  anderer.nimm_zurueck();
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"Alt.jpg"_s), "Bild");
}

TEST_F(Namenstest, ANameThatIsThereIsRefusedAndNeverTouched) {
  for (const QString& da : {u"neu.jpg"_s, u"NEU.JPG"_s}) {
    wurzel.schreibe(da, "fremd");
    Namenswechsel einer = wechsel();
    EXPECT_FALSE(einer.hat_beide());
    EXPECT_EQ(nummer([&] { einer.benenne(); }), fehlernummer::DateiVorhanden);
    EXPECT_EQ(nummer([&] { einer.vollende(); }), fehlernummer::DateiVorhanden);
    einer.nimm_zurueck();
    EXPECT_EQ(wurzel.lies(da), "fremd");
    EXPECT_EQ(wurzel.lies(u"Alt.jpg"_s), "Bild");
    QFile::remove(wurzel.pfad(da));
  }
}

TEST_F(Namenstest, ANameThatDiffersInCaseAloneIsTakenAtOnce) {
  Namenswechsel einer = wechsel(u"ALT.jpg"_s);
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s});
  einer.benenne();
  EXPECT_EQ(namen(), QStringList{u"ALT.jpg"_s});
  einer.nimm_zurueck();
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s});
}

TEST_F(Namenstest, AMissingFileOrFolderIsToldByTheRename) {
  Namenswechsel ohne_Datei(u"P:\\fehlt.jpg"_s, u"P:\\neu.jpg"_s);
  EXPECT_EQ(nummer([&] { ohne_Datei.benenne(); }), fehlernummer::DateiNichtGefunden);
  Namenswechsel ohne_Ordner = wechsel(u"fehlt\\neu.jpg"_s);
  EXPECT_EQ(nummer([&] { ohne_Ordner.benenne(); }), fehlernummer::PfadNichtGefunden);
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s});
}

// Another desk turns the picture under its old name, or takes one of the names away.
TEST_F(Namenstest, WhatSomebodyElsePutsThereMeanwhileStays) {
  Namenswechsel gedreht = wechsel();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Alt.jpg"_s)));
  wurzel.schreibe(u"Alt.jpg"_s, "gedreht");
  gedreht.vollende();
  EXPECT_EQ(namen(), Beide);
  EXPECT_EQ(wurzel.lies(u"Alt.jpg"_s), "gedreht");
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"neu.jpg"_s)));
  Namenswechsel weg = wechsel();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Alt.jpg"_s)));
  weg.nimm_zurueck();
  EXPECT_EQ(namen(), QStringList{u"neu.jpg"_s}) << "the only name a picture has is never taken";
}

// In such a folder a name given to another's file could not be taken away again.
TEST_F(Namenstest, WhereTheOldNameMayNotGoNothingBegins) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives a file to somebody else";
  const QByteArray ordner = QFile::encodeName(wurzel.pfad());
  const QByteArray bild = ordner + "/Alt.jpg";
  constexpr uid_t Anna = 1000;
  constexpr uid_t Bert = 1001;
  ASSERT_EQ(::chmod(ordner.constData(), 01777), 0);
  ASSERT_EQ(::chown(bild.constData(), Anna, Anna), 0);
  ASSERT_EQ(::chmod(bild.constData(), 0666), 0);
  ASSERT_EQ(::seteuid(Bert), 0);
  Namenswechsel einer = wechsel();
  const bool beide = einer.hat_beide();
  const int grund = nummer([&] { einer.benenne(); });
  ASSERT_EQ(::seteuid(0), 0);
  EXPECT_FALSE(beide);
  EXPECT_NE(grund, 0);
  EXPECT_EQ(namen(), QStringList{u"Alt.jpg"_s});
}
