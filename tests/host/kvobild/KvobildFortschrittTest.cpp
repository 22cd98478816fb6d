#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>
#include <array>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildFortschritt : public Betrieb {
 protected:
  void SetUp() override {
    // A bare chroot has none, and then the program meets no terminal either.
    if (::openpty(&herr_, &knecht_, nullptr, nullptr, nullptr) != 0)
      GTEST_SKIP() << "this machine has no pseudo terminals";
    ::fcntl(herr_, F_SETFL, O_NONBLOCK);
  }
  void TearDown() override {
    for (const int ende : {herr_, knecht_})
      if (ende >= 0) ::close(ende);
  }
  /// What the command writes on a terminal as its standard error.
  QByteArray am_Terminal(const QStringList& argumente) {
    QProcess prozess;
    prozess.setChildProcessModifier([this] { ::dup2(knecht_, STDERR_FILENO); });
    prozess.start(QStringLiteral(KVOBILD_PROGRAMM), argumente);
    EXPECT_TRUE(prozess.waitForFinished(60'000));
    EXPECT_EQ(prozess.exitCode(), 0);
    QByteArray alles;
    std::array<char, 4096> puffer{};
    for (ssize_t n = 0; (n = ::read(herr_, puffer.data(), puffer.size())) > 0;) alles.append(puffer.data(), n);
    return alles;
  }
  /// Clears, and Ctrl+C is pressed behind that many steps.
  Lauf raeume_auf_bis(const QString& was, int schritte) const {
    return kvobild(aufraeumung(), {}, {},
        {{u"LD_PRELOAD"_s, QStringLiteral(KVO_STRGC)}, {was, QString::number(schritte)},
            {u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s}});
  }
  /// So many pictures that nothing is assigned to.
  void lege_freie(int anzahl) const {
    for (int i = 0; i < anzahl; ++i) ordner_.schreibe(u"bild.ablage/Belege/b%1.jpg"_s.arg(i), "x");
  }
  QStringList uebrige() const { return QDir(wurzel() + u"/Belege"_s).entryList(QDir::Files, QDir::Name); }
  QStringList aufraeumung() const {
    return {
        u"aufraeumen"_s, u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()};
  }
  QStringList zuordnung() const {
    return QStringList{u"zuordnen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel(), u"--ordner"_s, u"B"_s} +
        satz_ + QStringList{bild(u"a.jpg"_s), bild(u"b.jpg"_s)};
  }

  int herr_ = -1;
  int knecht_ = -1;
};

TEST_F(KvobildFortschritt, ABarStandsOnATerminalAndIsGoneInTheEnd) {
  const QByteArray balken = am_Terminal(zuordnung());
  EXPECT_TRUE(balken.startsWith("\r\033[KBilder [..............................] 0 von 2")) << balken.toStdString();
  EXPECT_TRUE(balken.endsWith("\r\033[K")) << balken.toStdString();
}

TEST_F(KvobildFortschritt, ThereIsNoneInAPipe) {
  EXPECT_EQ(kvobild(zuordnung()).meldungen, QString());
}

TEST_F(KvobildFortschritt, AClearingShowsWhatItChecksAndWhatItDeletes) {
  lege_freie(3);
  const QByteArray balken = am_Terminal(aufraeumung());
  const QByteArray leer = " [..............................] 0 von ";
  EXPECT_TRUE(balken.contains("\r\033[KPrüfen" + leer + "3")) << balken.toStdString();
  EXPECT_TRUE(balken.contains("\r\033[KAufräumen" + leer + "4")) << "the folder goes too: " << balken.toStdString();
  EXPECT_TRUE(balken.contains("\r\033[Kkvobild: In den Papierkorb verschoben; ")) << balken.toStdString();
  lege_freie(3);
  const QString meldungen = kvobild(aufraeumung()).meldungen;
  EXPECT_TRUE(meldungen.startsWith(u"kvobild: In den Papierkorb verschoben; "_s)) << meldungen.toStdString();
  EXPECT_EQ(meldungen.count(u'\n'), 1);
}

TEST_F(KvobildFortschritt, CtrlCEndsAClearingBehindAFileAndItSaysHowFarItCame) {
  lege_freie(9);
  const Lauf lauf = raeume_auf_bis(u"KVO_STRGC_LOESCHEN"_s, 4);
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.startsWith(
      u"kvobild: Angehalten: 4 von 10 sind in den Papierkorb verschoben; von „Belege\\b4.jpg“ an steht alles noch da.\n"_s))
      << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen().size(), 10);
  EXPECT_EQ(lauf.zeilen().value(4), u"Belege\\b4.jpg"_s);
  EXPECT_EQ(uebrige(), (QStringList{u"b4.jpg"_s, u"b5.jpg"_s, u"b6.jpg"_s, u"b7.jpg"_s, u"b8.jpg"_s}));
  EXPECT_EQ(kvobild(aufraeumung()).code, 0);
  EXPECT_TRUE(uebrige().isEmpty());
}

TEST_F(KvobildFortschritt, CtrlCBeforeAnythingWentLeavesEverything) {
  lege_freie(9);
  const Lauf lauf = raeume_auf_bis(u"KVO_STRGC_FRAGEN"_s, 4);
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(lauf.ausgabe, QString());
  EXPECT_EQ(lauf.meldungen, u"kvobild: Abgebrochen; nichts ist gelöscht.\n"_s);
  EXPECT_EQ(uebrige().size(), 9);
}

}  // namespace
