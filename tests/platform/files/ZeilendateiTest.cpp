// A file of lines to which several processes append: whole lines, in one piece, within a bound.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <csignal>
#include <functional>
#include <random>
#include <thread>
#include <vector>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/wirt/Zeilendatei.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int64_t Viel = 1'000'000'000;

class Zeilendatei : public ::testing::Test {
 protected:
  QString pfad(const QString& name) const { return u"C:"_s + ordner_.pfad(name).replace(u'/', u'\\'); }
  void haenge_an(const QByteArray& zeilen, std::int64_t grenze = Viel) const {
    zeilendatei::haenge_an(pfad(u"p.jsonl"_s), zeilen, pfad(u"p.1.jsonl"_s), grenze);
  }
  int nummer(const QByteArray& zeilen) const {
    try {
      haenge_an(zeilen);
      return 0;
    } catch (const Laufzeitfehler& fehler) {
      return fehler.Nummer();
    }
  }
  QByteArray inhalt() const { return ordner_.lies(u"p.jsonl"_s); }
  /// A line of a process: long enough to be torn by a write that is not one.
  static QByteArray zeile(int prozess, int nummer) {
    return QByteArray::number(prozess) + ' ' + QByteArray::number(nummer) + ' ' +
        QByteArray(2000 + nummer % 500, static_cast<char>('a' + prozess)) + '\n';
  }
  /// It is one that `zeile` made, without its line end.
  static bool ist_ganz(const QByteArray& eine) {
    const QList<QByteArray> teile = eine.split(' ');
    return teile.size() == 3 && eine + '\n' == zeile(teile[0].toInt(), teile[1].toInt());
  }
  static pid_t beginne(const std::function<void()>& arbeit) {
    const pid_t kind = ::fork();
    if (kind != 0) return kind;
    arbeit();
    ::_exit(0);
  }

  Testordner ordner_;
};

}  // namespace

TEST_F(Zeilendatei, LinesFollowEachOtherAndATornLastOneGoes) {
  haenge_an("eins\n");
  haenge_an("zwei\ndrei\n");
  EXPECT_EQ(inhalt(), "eins\nzwei\ndrei\n");
  ordner_.schreibe(u"p.jsonl"_s, "eins\nzerris");
  haenge_an("zwei\n");
  EXPECT_EQ(inhalt(), "eins\nzwei\n");
  ordner_.schreibe(u"p.jsonl"_s, "eins\n" + QByteArray(10'000, 'x'));
  haenge_an("zwei\n");
  EXPECT_EQ(inhalt(), "eins\nzwei\n");
  ordner_.schreibe(u"p.jsonl"_s, "zerris");
  haenge_an("eins\n");
  EXPECT_EQ(inhalt(), "eins\n");
}

TEST_F(Zeilendatei, AtItsBoundItBecomesTheFormerOneAndThatGoes) {
  for (int i = 0; i < 7; ++i) haenge_an("0123456789" + QByteArray::number(i) + "\n", 30);
  EXPECT_EQ(inhalt(), "01234567896\n");
  EXPECT_EQ(ordner_.lies(u"p.1.jsonl"_s), "01234567894\n01234567895\n");
  EXPECT_EQ(QDir(ordner_.pfad()).entryList(QDir::Files | QDir::Hidden).size(), 2);
  haenge_an(QByteArray(100, 'x') + '\n', 30);
  EXPECT_EQ(inhalt().size(), 101) << "a line that is longer than the bound has a file of its own";
}

TEST_F(Zeilendatei, SeveralProcessesAppendAtOnceAndNoLineIsMixedOrLost) {
  constexpr int Prozesse = 4;
  constexpr int Zeilen = 300;
  std::vector<pid_t> kinder;
  for (int p = 0; p < Prozesse; ++p)
    kinder.push_back(beginne([&, p] {
      for (int i = 0; i < Zeilen; ++i) haenge_an(zeile(p, i), 1'500'000);
    }));
  for (const pid_t kind : kinder) {
    int ende = -1;
    ASSERT_EQ(::waitpid(kind, &ende, 0), kind);
    EXPECT_EQ(ende, 0);
  }
  QSet<QByteArray> gefunden;
  for (const QByteArray& eine : (ordner_.lies(u"p.1.jsonl"_s) + inhalt()).split('\n')) {
    if (eine.isEmpty()) continue;
    EXPECT_TRUE(ist_ganz(eine)) << eine.left(30).toStdString();
    EXPECT_FALSE(gefunden.contains(eine));
    gefunden.insert(eine);
  }
  EXPECT_EQ(gefunden.size(), Prozesse * Zeilen);
}

TEST_F(Zeilendatei, KilledProcessesLeaveWholeLinesAndNobodyWaitsForThem) {
  std::mt19937 zufall(20'240'301);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same moments each time
  for (int lauf = 0; lauf < 40; ++lauf) {
    std::vector<pid_t> kinder;
    for (int p = 0; p < 2; ++p)
      kinder.push_back(beginne([&, p] {
        for (int i = 0; i < 100'000; ++i) haenge_an(zeile(p, i), 60'000);
      }));
    const qint64 bis = static_cast<qint64>(zufall() % 40'000);
    while (QFile(ordner_.pfad(u"p.jsonl"_s)).size() < bis % 50'000 + 1) std::this_thread::yield();
    for (const pid_t kind : kinder) {
      ::kill(kind, SIGKILL);
      ASSERT_EQ(::waitpid(kind, nullptr, 0), kind);
    }
    haenge_an(zeile(7, lauf));
    const QList<QByteArray> zeilen =
        (QByteArray(ordner_.vorhanden(u"p.1.jsonl"_s) ? ordner_.lies(u"p.1.jsonl"_s) : "") + inhalt()).split('\n');
    for (const QByteArray& eine : zeilen) ASSERT_TRUE(eine.isEmpty() || ist_ganz(eine)) << eine.left(30).toStdString();
    EXPECT_EQ(zeilen.value(zeilen.size() - 2) + '\n', zeile(7, lauf));
    QFile::remove(ordner_.pfad(u"p.jsonl"_s));
  }
}

TEST_F(Zeilendatei, ADiskThatTakesNoMoreKeepsThePartOut) {
  haenge_an("eins\n");
  struct rlimit vorher {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &vorher), 0);
  const auto alter = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit enge = vorher;
  enge.rlim_cur = 20;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &enge), 0);
  const int halb = nummer("eine Zeile, die nur zum Teil Platz hat\n");
  const int ganz = nummer("kurz\n");
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &vorher), 0);
  std::signal(SIGXFSZ, alter);
  EXPECT_EQ(halb, fehlernummer::DatentraegerVoll);
  EXPECT_EQ(ganz, 0);
  EXPECT_EQ(inhalt(), "eins\nkurz\n");
}

TEST_F(Zeilendatei, AProcessThatHoldsItForLongIsNotWaitedForWithoutEnd) {
  haenge_an("eins\n");
  const int halter = ::open(QFile::encodeName(ordner_.pfad(u"p.jsonl"_s)).constData(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(halter, 0);
  ASSERT_EQ(::flock(halter, LOCK_EX), 0);
  EXPECT_EQ(nummer("zwei\n"), fehlernummer::ZugriffVerweigert);
  ::close(halter);
  EXPECT_EQ(nummer("zwei\n"), 0);
  EXPECT_EQ(inhalt(), "eins\nzwei\n");
}
