// Two desks, each a process of its own, at one business record of one database: SQLite, or with KVO_PLAETZE=tds the TDS
// server of tests/tds.
#include <gtest/gtest.h>

#include <QProcess>
#include <csignal>
#include <map>
#include <memory>
#include <optional>

#include "platform/adodb/Connection.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/plaetze/Plan.h"
#include "tests/support/Pruefdatenbank.h"
#include "tests/support/Tdsserver.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Runden = 1000;
constexpr int Frist = 240'000;

/// A desk that runs. Killed with the object where it has not ended.
class Platz {
 public:
  Platz(const QString& verbindung, const QString& name, int runden, const QString& art) : name_(name) {
    prozess_.start(QStringLiteral(SCHREIBTISCH), {verbindung, name, QString::number(runden), art});
    EXPECT_EQ(zeile(), u"bereit"_s);
  }
  ~Platz() {
    prozess_.kill();
    prozess_.waitForFinished();
  }
  Platz(const Platz&) = delete;
  Platz& operator=(const Platz&) = delete;

  void los() {
    prozess_.write("\n");
    prozess_.waitForBytesWritten();
  }
  /// The next thing that it says; empty where it has ended.
  QString zeile() {
    while (!prozess_.canReadLine())
      if (!prozess_.waitForReadyRead(Frist)) return {};
    return QString::fromUtf8(prozess_.readLine().trimmed());
  }
  /// Waits until so many rounds are saved.
  void warte_auf(int runde) {
    while (gesagte_ < runde) {
      const QString wort = zeile();
      ASSERT_FALSE(wort.isEmpty()) << name_.toStdString() << ": " << prozess_.readAllStandardError().toStdString();
      gesagte_ = wort.toInt();
    }
  }
  void warte_auf_Ende() {
    prozess_.waitForFinished(Frist);
    while (prozess_.canReadLine()) gesagte_ = zeile().toInt();
    EXPECT_EQ(prozess_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(prozess_.exitCode(), 0);
    EXPECT_EQ(QString::fromUtf8(prozess_.readAllStandardError()), QString()) << name_.toStdString();
  }
  /// Ends it in the middle of whatever it is at; gives the last round that it said.
  int erschlage() {
    EXPECT_EQ(::kill(static_cast<pid_t>(prozess_.processId()), SIGKILL), 0);
    prozess_.waitForFinished(Frist);
    EXPECT_EQ(prozess_.exitStatus(), QProcess::CrashExit);
    while (prozess_.canReadLine()) gesagte_ = zeile().toInt();
    EXPECT_EQ(QString::fromUtf8(prozess_.readAllStandardError()), QString()) << name_.toStdString();
    return gesagte_;
  }
  const QString& name() const { return name_; }

 private:
  QString name_;
  QProcess prozess_;
  int gesagte_ = 0;
};

class ZweiPlaetze : public testing::Test {
 protected:
  using Zeilen = std::multimap<QString, QString>;

  void SetUp() override {
    if (qEnvironmentVariable("KVO_PLAETZE") != "tds"_L1) {
      richte_Sqlite_ein();
      return;
    }
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    server_.emplace(u"platz"_s, u"Ge;heim"_s);
    ASSERT_TRUE(server_->laeuft());
    verbindung_ =
        u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=bilder;User ID=platz;Password=\"Ge;heim\""_s.arg(
            server_->port());
  }
  void richte_Sqlite_ein() {
    verbindung_ = u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(ordner_.pfad(u"b.db"_s));
    adodb::Connection neue;
    neue.Open(verbindung_ + u";Mode=ReadWriteCreate"_s);
    for (const QString& anweisung : adodb::zerlege_skript(projektdatei(u"sql/sqlite/Bild_Zuordnungen.sql"_s)))
      neue.Execute(anweisung);
  }

  std::unique_ptr<Platz> platz(const QString& name, int runden = Runden, const QString& art = u"frei"_s) const {
    return std::make_unique<Platz>(verbindung_, name, runden, art);
  }
  /// All rows of the table whose name begins so, name and description.
  Zeilen tabelle(const QString& name) const {
    adodb::Connection verbindung;
    verbindung.Open(verbindung_);
    const auto satz = verbindung.Execute(u"Select Bildname, Beschreibung from Bild_Zuordnungen"_s);
    Zeilen zeilen;
    for (; !satz->Eof(); satz->MoveNext())
      if (satz->Text(0).startsWith(name + u'_')) zeilen.emplace(satz->Text(0), satz->Text(1));
    return zeilen;
  }
  void erwarte(const QString& name, int runden) const {
    const auto soll = plan::zeilen(name, runden);
    EXPECT_EQ(tabelle(name), Zeilen(soll.constKeyValueBegin(), soll.constKeyValueEnd())) << name.toStdString();
  }
  std::size_t anzahl() const {
    adodb::Connection verbindung;
    verbindung.Open(verbindung_);
    return static_cast<std::size_t>(verbindung.Execute(u"Select count(*) from Bild_Zuordnungen"_s)->Text(0).toInt());
  }
  /// What was said to be saved stands there; of the round behind it any part may.
  void erwarte_erschlagenen(const QString& name, int gesagte) const {
    const auto vorher = plan::zeilen(name, gesagte);
    const auto nachher = plan::zeilen(name, gesagte + 1);
    const Zeilen ist = tabelle(name);
    for (const auto& [zeile, text] : ist)
      EXPECT_TRUE(vorher.value(zeile) == text || nachher.value(zeile) == text) << zeile.toStdString();
    for (const QString& zeile : vorher.keys())
      EXPECT_EQ(ist.count(zeile), nachher.contains(zeile) ? 1U : std::min<std::size_t>(ist.count(zeile), 1))
          << zeile.toStdString();
  }

  Testordner ordner_;
  std::optional<Tdsserver> server_;
  QString verbindung_;
};

}  // namespace

TEST_F(ZweiPlaetze, SavingAThousandTimesAtOnceLosesNothingAndDoublesNothing) {
  const auto a = platz(u"Huber"_s);
  const auto b = platz(u"Maier"_s);
  a->los();
  b->los();
  a->warte_auf_Ende();
  b->warte_auf_Ende();
  erwarte(u"Huber"_s, Runden);
  erwarte(u"Maier"_s, Runden);
  EXPECT_EQ(anzahl(), static_cast<std::size_t>(2 * plan::zeilen(u"x"_s, Runden).size()));
}

TEST_F(ZweiPlaetze, SavingAThousandTimesInTurnLosesNothingAndDoublesNothing) {
  const auto a = platz(u"Huber"_s, Runden, u"reihum"_s);
  const auto b = platz(u"Maier"_s, Runden, u"reihum"_s);
  for (int runde = 1; runde <= Runden && !HasFatalFailure(); ++runde)
    for (Platz* dran : {a.get(), b.get()}) {
      dran->los();
      dran->warte_auf(runde);
    }
  a->warte_auf_Ende();
  b->warte_auf_Ende();
  erwarte(u"Huber"_s, Runden);
  erwarte(u"Maier"_s, Runden);
  EXPECT_EQ(anzahl(), static_cast<std::size_t>(2 * plan::zeilen(u"x"_s, Runden).size()));
}

TEST_F(ZweiPlaetze, ADeskThatIsKilledWhileItSavesBlocksNobody) {
  const auto bleibender = platz(u"Bleibt"_s, 400);
  bleibender->los();
  for (int i = 0; i < 12; ++i) {
    const auto fallender = platz(u"Faellt%1"_s.arg(i), Runden);
    fallender->los();
    fallender->warte_auf(1 + 3 * i);
    erwarte_erschlagenen(fallender->name(), fallender->erschlage());
  }
  bleibender->warte_auf_Ende();
  erwarte(u"Bleibt"_s, 400);
}

TEST_F(ZweiPlaetze, TheLockOfAKilledDeskGoesWithItsProcess) {
  const auto haltender = platz(u"Haelt_1"_s, 0, u"halte"_s);
  const auto wartender = platz(u"Wartet"_s, 3);
  wartender->los();
  haltender->erschlage();
  wartender->warte_auf_Ende();
  erwarte(u"Wartet"_s, 3);
  EXPECT_TRUE(tabelle(u"Haelt"_s).empty());
}
