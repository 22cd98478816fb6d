#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

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

}  // namespace
