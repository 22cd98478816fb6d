#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/adodb/Command.h"
#include "platform/adodb/Connection.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a driver of the test was asked, and what it is to do.
struct Protokoll {
  QStringList geoeffnet;
  QStringList texte;
  std::int32_t scheitert_mit = 0;
  adodb::Ergebnis ergebnis;
  int aufgegeben = 0;
};

class Testtreiber final : public adodb::Treiber {
 public:
  explicit Testtreiber(Protokoll& protokoll) : protokoll_(protokoll) {}
  void oeffne(const QString& text) override {
    protokoll_.geoeffnet.append(text);
    if (protokoll_.scheitert_mit != 0) throw Laufzeitfehler(protokoll_.scheitert_mit);
    offen_ = true;
  }
  void schliesse() noexcept override { offen_ = false; }
  bool ist_offen() const noexcept override { return offen_; }
  void gib_auf() noexcept override { ++protokoll_.aufgegeben; }
  using adodb::Treiber::fuehre_aus;
  adodb::Ergebnis fuehre_aus(const QString& text) override {
    protokoll_.texte.append(text);
    if (protokoll_.scheitert_mit == 51) throw std::runtime_error("fremd");
    if (protokoll_.scheitert_mit != 0) throw Laufzeitfehler(protokoll_.scheitert_mit);
    return protokoll_.ergebnis;
  }

 private:
  Protokoll& protokoll_;
  bool offen_ = false;
};

std::shared_ptr<adodb::Connection> verbindung_ueber(Protokoll& protokoll) {
  return std::make_shared<adodb::Connection>(std::make_unique<Testtreiber>(protokoll));
}

QString worte_von(const std::function<void()>& anweisung) {
  try {
    anweisung();
  } catch (const Laufzeitfehler& fehler) {
    return fehler.Beschreibung();
  }
  return {};
}

}  // namespace

TEST(Connection, IsClosedUntilOpened) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  EXPECT_EQ(verbindung->State(), adodb::adStateClosed);
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Execute(u"Select 1"_s); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Close(); }), 3704);
  verbindung->ConnectionString(u"a=b"_s);
  verbindung->Open({}, {}, {}, -1);
  EXPECT_EQ(verbindung->State(), adodb::adStateOpen);
  EXPECT_EQ(protokoll.geoeffnet, QStringList(u"a=b"_s));
  verbindung->Close();
  EXPECT_EQ(verbindung->State(), adodb::adStateClosed);
  verbindung->Open();
  EXPECT_EQ(verbindung->State(), adodb::adStateOpen);
}

TEST(Connection, ADriverThatKnowsNoParametersSaysSoAndRunsATextWithoutValues) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  const std::vector<adodb::Wert> werte = {u"a"_s};
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Execute(u"Select ?"_s, werte); }), 3704);
  verbindung->Open(u"a=b"_s);
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Execute(u"Select ?"_s, werte); }), 3251);
  EXPECT_TRUE(worte_von([&] { verbindung->Execute(u"Select ?"_s, werte); }).contains(u"keine Parameter"_s));
  EXPECT_TRUE(protokoll.texte.isEmpty());
  EXPECT_EQ(verbindung->Execute(u"Select 1"_s, std::vector<adodb::Wert>())->State(), adodb::adStateClosed);
  EXPECT_EQ(protokoll.texte, QStringList(u"Select 1"_s));
}

TEST(Connection, CancelReachesTheDriverAndIsHarmlessWithoutOne) {
  adodb::Connection leere;
  leere.Cancel();
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  verbindung->Open(u"a=b"_s);
  verbindung->Cancel();
  EXPECT_EQ(protokoll.aufgegeben, 1);
}

TEST(Connection, AnOpenOneRefusesAnotherConnectString) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  verbindung->Open(u"a=b"_s);
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->ConnectionString(u"c=d"_s); }), 3705);
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Open(); }), 3705);
  EXPECT_EQ(verbindung->ConnectionString(), u"a=b"_s);
}

TEST(Connection, UserAndPasswordOfOpenReplaceThoseOfTheConnectString) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  verbindung->Open(u"User ID=alt;Password=alt"_s, u"neu"_s, u"ge;\"heim"_s);
  EXPECT_EQ(protokoll.geoeffnet.value(0), u"User ID=alt;Password=alt;User ID=\"neu\";Password=\"ge;\"\"heim\""_s);
  EXPECT_FALSE(verbindung->ConnectionString().contains(u"heim"_s));
}

TEST(Connection, AFailureOfTheDriverReachesTheCaller) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  protokoll.scheitert_mit = fehlernummer::Verbindung;
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Open(u"a=b"_s); }), fehlernummer::Verbindung);
  EXPECT_EQ(verbindung->State(), adodb::adStateClosed);
  protokoll.scheitert_mit = 0;
  verbindung->Open();
  protokoll.scheitert_mit = fehlernummer::Anweisung;
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Execute(u"x"_s); }), fehlernummer::Anweisung);
  EXPECT_EQ(verbindung->State(), adodb::adStateOpen);
  protokoll.scheitert_mit = 51;
  EXPECT_THROW(verbindung->Execute(u"x"_s), std::exception);
}

TEST(Connection, AStatementWithoutRowsGivesAClosedRecordset) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  verbindung->Open(u"a=b"_s);
  EXPECT_EQ(verbindung->Execute(u"Delete"_s)->State(), adodb::adStateClosed);
  protokoll.ergebnis.spalten = {u"a"_s};
  const auto satz = verbindung->Execute(u"Select"_s);
  EXPECT_EQ(satz->State(), adodb::adStateOpen);
  EXPECT_TRUE(satz->Eof());
  EXPECT_EQ(protokoll.texte, QStringList({u"Delete"_s, u"Select"_s}));
}

TEST(Connection, FindsTheDriverByItsProviderInAnyCase) {
  Protokoll protokoll;
  adodb::registriere_treiber(u"Testtreiber"_s, [&] { return std::make_unique<Testtreiber>(protokoll); });
  adodb::Connection verbindung;
  verbindung.Open(u"Data Source=x; PROVIDER = testTREIBER"_s);
  EXPECT_EQ(verbindung.State(), adodb::adStateOpen);
  EXPECT_EQ(protokoll.geoeffnet.size(), 1);
  adodb::registriere_treiber(u"testtreiber"_s, {});
  adodb::Connection andere;
  EXPECT_EQ(Fehlernummer_von([&] { andere.Open(u"Provider=Testtreiber"_s); }), 3706);
}

TEST(Connection, WithoutAFittingDriverOpenFailsWithoutRepeatingTheConnectString) {
  adodb::Connection verbindung;
  for (const QString& text : {QString(), u"Data Source=geheim"_s, u"Provider=geheim"_s, u"Provider=geheim.1"_s,
           u"Provider=SQLOLEDB Password=geheim"_s}) {
    EXPECT_EQ(Fehlernummer_von([&] { verbindung.Open(text); }), 3706);
    EXPECT_FALSE(worte_von([&] { verbindung.Open(text); }).contains(u"geheim"_s));
  }
  EXPECT_EQ(Fehlernummer_von([&] { verbindung.Open(u"kein Paar"_s); }), fehlernummer::Verbindung);
}

TEST(Command, RunsItsTextOnItsConnection) {
  Protokoll protokoll;
  const auto verbindung = verbindung_ueber(protokoll);
  verbindung->Open(u"a=b"_s);
  adodb::Command befehl;
  befehl.ActiveConnection(verbindung);
  befehl.CommandText(u"Delete from x"_s);
  befehl.CommandType(adodb::adCmdText);
  befehl.CommandTimeout(0);
  EXPECT_EQ(befehl.Execute(-1)->State(), adodb::adStateClosed);
  EXPECT_EQ(protokoll.texte, QStringList(u"Delete from x"_s));
}

TEST(Command, RefusesAConnectionThatIsNotOpen) {
  Protokoll protokoll;
  const auto offen = verbindung_ueber(protokoll);
  offen->Open(u"a=b"_s);
  adodb::Command befehl;
  EXPECT_EQ(Fehlernummer_von([&] { befehl.Execute(); }), 3709);
  befehl.ActiveConnection(offen);
  EXPECT_EQ(Fehlernummer_von([&] { befehl.ActiveConnection(std::make_shared<adodb::Connection>()); }), 3709);
  EXPECT_EQ(befehl.ActiveConnection(), offen);
  offen->Close();
  EXPECT_EQ(Fehlernummer_von([&] { befehl.Execute(); }), 3709);
  befehl.ActiveConnection(nullptr);
  EXPECT_EQ(Fehlernummer_von([&] { befehl.Execute(); }), 3709);
}

TEST(Command, KnowsTextsOnly) {
  adodb::Command befehl;
  EXPECT_EQ(Fehlernummer_von([&] { befehl.CommandType(2); }), 3001);
  EXPECT_EQ(befehl.CommandType(), adodb::adCmdText);
}
