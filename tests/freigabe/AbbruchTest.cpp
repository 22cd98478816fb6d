// Kills at drawn moments on a file system of this machine. KVO_ABBRUECHE and KVO_ABBRUECHE_SAAT set number and seed.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QFile>
#include <QTest>
#include <cstdio>

#include "platform/adodb/Connection.h"
#include "tests/freigabe/Abbruch.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The file system holds files without a name.
bool kennt_namenlose(const QString& ordner) {
  const int datei = ::open(QFile::encodeName(ordner).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (datei >= 0) ::close(datei);
  return datei >= 0;
}

}  // namespace

TEST(AmAblageordner, WheneverACommandIsKilledEachRowHasItsWholeFileAndTheNextWriteLeavesNoRest) {
  Ablage ablage;
  Abbruch abbruch(ablage, ablage.baum(), abbruchsaat(4711));
  const int anzahl = abbrueche(12);
  while (abbruch.erschlagene() < anzahl && !testing::Test::HasFailure()) abbruch.erschlage_einen();
  EXPECT_TRUE(abbruch.schlechte().isEmpty()) << abbruch.schlechte().join(u"\n"_s).toStdString();
  std::printf("killed: %d\n", abbruch.erschlagene());
  for (const auto& [befehl, reste] : abbruch.reste()) {
    std::printf("  hidden files left by %s: %d\n", qPrintable(befehl), static_cast<int>(reste.size()));
    for (const QString& rest : reste)
      EXPECT_TRUE(!kennt_namenlose(ablage.baum()) || rest.endsWith(u"-f-gedreht.jpg"_s))
          << "only an exchange, at its last step: " << rest.toStdString();
  }
  EXPECT_EQ(ablage.fuehre(ablage.baum(), u"zuordnen"_s, {ablage.wartendes(u"zuletzt.jpg"_s)}), 0)
      << ablage.gesagt().toStdString();
  EXPECT_EQ(ablage.reste(), QStringList());
  ablage.schreibe_freies(u"Belege/1/frei.jpg"_s);
  EXPECT_EQ(ablage.fuehre(ablage.baum(), u"aufraeumen"_s, {u"--ja"_s, u"--schonfrist"_s, u"0"_s}), 0);
  EXPECT_FALSE(ablage.weggelegte().filter(u"Belege/1/frei.jpg"_s).isEmpty());
  EXPECT_EQ(ablage.schlechte(), QStringList());
  std::printf("beside the tree: %d\n", static_cast<int>(ablage.weggelegte().size()));
}

// Another desk holds the table, and the user gives up in the middle.
TEST(AmAblageordner, ARenameKilledWhileItWaitsForTheTableLeavesPictureAndTextUnderTheNameOfTheRow) {
  Ablage ablage;
  ASSERT_EQ(ablage.fuehre(ablage.baum(), u"zuordnen"_s, {ablage.wartendes(u"kessel.jpg"_s)}), 0);
  const QString bild = ablage.zeilen().value(0)[u"bildname"_s].toString();
  const QString ordner = ablage.baum() + u"/Belege/1/"_s;
  adodb::Connection anderer;
  anderer.Open(u"Provider=SQLite;Data Source="_s + ablage.datenbank());
  anderer.Execute(u"BEGIN IMMEDIATE"_s);
  const auto befehl = ablage.beginne(ablage.baum(), u"umbenennen"_s, {bild + u".jpg"_s, u"neu"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(ordner + u"neu.jpg"_s); }, 30'000));
  befehl->kill();
  ASSERT_TRUE(Ablage::endet(*befehl));
  anderer.Execute(u"ROLLBACK"_s);
  EXPECT_EQ(ablage.zeilen().value(0)[u"bildname"_s].toString(), bild);
  EXPECT_EQ(ablage.schlechte(), QStringList());
  EXPECT_TRUE(QFile::exists(ordner + bild + u"jpg.txt"_s));
  EXPECT_EQ(ablage.fuehre(ablage.baum(), u"umbenennen"_s, {bild + u".jpg"_s, u"anders"_s}), 0)
      << ablage.gesagt().toStdString();
  EXPECT_EQ(ablage.zeilen().value(0)[u"bildname"_s].toString(), u"anders"_s);
  EXPECT_EQ(ablage.schlechte(), QStringList());
  EXPECT_EQ(ablage.inhalt(u"Belege/1/anders.jpg"_s), ablage.inhalt(u"Belege/1/neu.jpg"_s));
}
