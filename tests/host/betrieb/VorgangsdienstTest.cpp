// The questions beside the window: the newest one counts, and what hangs holds nobody up.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <condition_variable>
#include <mutex>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgang/Vorgangsdienst.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the drivers of a test wait for; outlives them all.
struct Tor {
  std::mutex schloss;
  std::condition_variable wecker;
  bool offen = false;
  int wartende = 0;
  int aufgegeben = 0;

  void oeffne() {
    const std::lock_guard wache(schloss);
    offen = true;
    wecker.notify_all();
  }
  int wartet() {
    const std::lock_guard wache(schloss);
    return wartende;
  }
};

/// A database that answers a question only when its gate is open, or when it is given up; or one whose login hangs.
class Haenger final : public adodb::Treiber {
 public:
  Haenger(std::shared_ptr<Tor> tor, bool beim_Oeffnen) : tor_(std::move(tor)), beim_Oeffnen_(beim_Oeffnen) {}
  void oeffne(const QString&) override {
    if (beim_Oeffnen_) warte(false);
    offen_ = true;
  }
  void schliesse() noexcept override { offen_ = false; }
  bool ist_offen() const noexcept override { return offen_; }
  adodb::Ergebnis fuehre_aus(const QString&) override {
    if (!beim_Oeffnen_) warte(true);
    return {{u"1"_s}, {}};
  }
  adodb::Ergebnis fuehre_aus(const QString& text, const std::vector<adodb::Wert>&) override { return fuehre_aus(text); }
  void gib_auf() noexcept override {
    const std::lock_guard wache(tor_->schloss);
    if (tor_->wartende == 0) return;
    aufgeben_ = true;
    tor_->wecker.notify_all();
  }

 private:
  void warte(bool laesst_sich_aufgeben) {
    std::unique_lock wache(tor_->schloss);
    ++tor_->wartende;
    tor_->wecker.wait(wache, [&] { return tor_->offen || (laesst_sich_aufgeben && aufgeben_); });
    --tor_->wartende;
    if (!aufgeben_) return;
    aufgeben_ = false;
    ++tor_->aufgegeben;
    throw Laufzeitfehler(fehlernummer::Anweisung, u"aufgegeben"_s);
  }

  std::shared_ptr<Tor> tor_;
  bool beim_Oeffnen_;
  bool offen_ = false;
  bool aufgeben_ = false;
};

std::shared_ptr<Tor> haengt(const QString& name, bool beim_Oeffnen) {
  auto tor = std::make_shared<Tor>();
  adodb::registriere_treiber(name, [tor, beim_Oeffnen] { return std::make_unique<Haenger>(tor, beim_Oeffnen); });
  return tor;
}

vorgangsquelle::Frage frage(const QString& worte) {
  vorgangsquelle::Frage eine;
  eine.filter = Vorgangsfilter::lies(worte);
  return eine;
}

class Dienst : public ::testing::Test {
 protected:
  void horche(Vorgangsdienst& dienst) {
    dienst.bei_Antwort = [this](const Vorgangsdienst::Antwort& antwort) { antworten_.append(antwort); };
    dienst.bei_Zahl = [this](std::int64_t zahl) { zahlen_.append(zahl); };
  }
  QString richte_ein(const QString& name) {
    const QString verbindung = verbindung_zur_Datei(ordner_.pfad(name));
    adodb::Connection neue;
    neue.Open(u"Mode=ReadWriteCreate;"_s + verbindung);
    schema::richte_Betrieb_ein(neue);
    neue.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Key2) VALUES ('BEL', 'AB', '1'), ('BEL', 'RE', '2')"_s);
    return verbindung;
  }
  Testordner ordner_;
  QList<Vorgangsdienst::Antwort> antworten_;
  QList<std::int64_t> zahlen_;
};

}  // namespace

TEST_F(Dienst, AQuestionGetsItsAnswerAndThenItsNumber) {
  Vorgangsdienst dienst;
  horche(dienst);
  dienst.verbinde(richte_ein(u"a.db"_s));
  dienst.frage(frage(u"re"_s));
  EXPECT_TRUE(dienst.fragt());
  ASSERT_TRUE(QTest::qWaitFor([&] { return zahlen_.size() == 1; }));
  ASSERT_EQ(antworten_.size(), 1);
  EXPECT_EQ(antworten_[0].vorgaenge.value(0).nummer, u"RE 2"_s);
  EXPECT_FALSE(antworten_[0].vielleicht_mehr);
  EXPECT_EQ(zahlen_, QList<std::int64_t>{1});
  EXPECT_TRUE(QTest::qWaitFor([&] { return dienst.ruht(); }));
}

TEST_F(Dienst, ANewQuestionGivesTheRunningOneUpAndOnlyTheNewestIsAnswered) {
  const auto tor = haengt(u"Haenger1"_s, false);
  Vorgangsdienst dienst;
  horche(dienst);
  dienst.verbinde(u"Provider=Haenger1"_s);
  dienst.frage(frage(u"a"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return tor->wartet() == 1; }));
  dienst.verbinde(richte_ein(u"a.db"_s));
  for (const QString& worte : {u"ab"_s, u"x"_s, u"re"_s}) dienst.frage(frage(worte));
  ASSERT_TRUE(QTest::qWaitFor([&] { return zahlen_.size() == 1; }));
  EXPECT_EQ(antworten_.size(), 1);
  EXPECT_EQ(antworten_[0].vorgaenge.value(0).nummer, u"RE 2"_s);
  EXPECT_EQ(tor->aufgegeben, 1);
}

TEST_F(Dienst, ALoginThatHangsKeepsNobodyFromEnding) {
  const auto tor = haengt(u"Haenger2"_s, true);
  QElapsedTimer uhr;
  {
    Vorgangsdienst dienst;
    dienst.verbinde(u"Provider=Haenger2"_s);
    dienst.frage(frage({}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return tor->wartet() == 1; }));
    for (int i = 0; i < 5; ++i) dienst.frage(frage(u"a"_s));
    uhr.start();
  }
  EXPECT_LT(uhr.elapsed(), 5000);
  EXPECT_TRUE(Vorgangsdienst::einer_zurueckgelassen());
  EXPECT_EQ(tor->wartet(), 1);
  tor->oeffne();
  EXPECT_TRUE(QTest::qWaitFor([&] { return tor->wartet() == 0; }));
}

TEST_F(Dienst, AFailureIsAnAnswerAndTheNextQuestionComesThrough) {
  const QString verbindung = richte_ein(u"a.db"_s);
  Vorgangsdienst dienst;
  horche(dienst);
  dienst.verbinde(verbindung_zur_Datei(ordner_.pfad(u"weg.db"_s)));
  dienst.frage(frage({}));
  ASSERT_TRUE(QTest::qWaitFor([&] { return antworten_.size() == 1; }));
  ASSERT_TRUE(antworten_[0].ausfall);
  EXPECT_EQ(antworten_[0].ausfall->grund, Datenbankgrund::Unerreichbar);
  EXPECT_TRUE(zahlen_.isEmpty());
  dienst.verbinde(verbindung);
  dienst.frage(frage({}));
  ASSERT_TRUE(QTest::qWaitFor([&] { return antworten_.size() == 2; }));
  EXPECT_EQ(antworten_[1].vorgaenge.size(), 2);
}

TEST_F(Dienst, ARecordMadeAtAnotherDeskIsFoundByTheNextQuestion) {
  const QString verbindung = richte_ein(u"a.db"_s);
  Vorgangsdienst dienst;
  horche(dienst);
  dienst.verbinde(verbindung);
  dienst.frage(frage(u"neu"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return antworten_.size() == 1; }));
  EXPECT_TRUE(antworten_[0].vorgaenge.isEmpty());
  adodb::Connection anderer;
  anderer.Open(verbindung);
  anderer.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Text) VALUES ('ART', 'X', 'Neuer Artikel')"_s);
  dienst.frage(frage(u"neu"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return antworten_.size() == 2; }));
  EXPECT_EQ(antworten_[1].vorgaenge.size(), 1);
}
