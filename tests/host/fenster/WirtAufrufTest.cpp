#include <gtest/gtest.h>

#include <QProcess>
#include <QTest>

#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The program in surroundings without a display.
void starte(QProcess& prozess, const QStringList& argumente, const QString& heim = {}) {
  QProcessEnvironment umgebung;
  umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
  if (!heim.isEmpty()) {
    umgebung.insert(u"HOME"_s, heim);
    umgebung.insert(u"XDG_DATA_HOME"_s, heim + u"/daten"_s);
  }
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS"})
    if (qEnvironmentVariableIsSet(name)) umgebung.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
  prozess.setProcessEnvironment(umgebung);
  prozess.start(QStringLiteral(BILDZUORDNUNG_PROGRAMM), argumente);
  ASSERT_TRUE(prozess.waitForStarted());
}

}  // namespace

TEST(WirtAufruf, TheHelpComesWithoutAWindowAndWithoutAScreen) {
  QProcess prozess;
  starte(prozess, {u"--hilfe"_s});
  ASSERT_TRUE(prozess.waitForFinished());
  EXPECT_EQ(prozess.exitCode(), 0);
  EXPECT_TRUE(QString::fromUtf8(prozess.readAllStandardOutput()).contains(u"--datenordner ORDNER"_s));
  EXPECT_EQ(prozess.readAllStandardError(), QByteArray());
}

TEST(WirtAufruf, AWrongOptionEndsWith2AndWords) {
  QProcess prozess;
  starte(prozess, {u"--bidler"_s, u"x"_s});
  ASSERT_TRUE(prozess.waitForFinished());
  EXPECT_EQ(prozess.exitCode(), 2);
  EXPECT_EQ(QString::fromUtf8(prozess.readAllStandardError()),
      u"bildzuordnung: Die Option „bidler“ gibt es nicht. Hilfe gibt „bildzuordnung --hilfe“.\n"_s);
}

TEST(WirtAufruf, WithoutAScreenTheProgramRunsAndMakesItsDataFolder) {
  const Testordner heim;
  QProcess prozess;
  starte(prozess, {}, heim.pfad());
  EXPECT_TRUE(QTest::qWaitFor([&] { return heim.vorhanden(u"daten/kvobildzuordnung/betrieb.db"_s); }, 60'000));
  EXPECT_EQ(prozess.state(), QProcess::Running);
  prozess.kill();
  ASSERT_TRUE(prozess.waitForFinished());
}
