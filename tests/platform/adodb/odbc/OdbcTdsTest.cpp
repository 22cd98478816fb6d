// Connection and Recordset over unixODBC and FreeTDS against the TDS server of tests/tds.
#include <gtest/gtest.h>

#include "platform/adodb/Command.h"
#include "tests/platform/adodb/odbc/OdbcTdsFall.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString literal(QString text) {
  return u'\'' + text.replace(u"'"_s, u"''"_s) + u'\'';
}

}  // namespace

TEST_F(OdbcTds, AStatementArrivesLetterByLetterAndWithNoOtherBesideIt) {
  const auto verbindung = offene();
  server().steuere(u"protokoll-leeren"_s);
  const QStringList texte = {
      u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('{fn now()} ? \\ ''x'' Größe', 0)"_s,
      u"Select TOP 100 PERCENT * from dbo.Bild_Zuordnungen  where Key1 = 'A'order by SortIndex "_s,
      u"Delete from Bild_Zuordnungen where Key1 = '?'"_s};
  for (const QString& text : texte) verbindung->Execute(text);
  EXPECT_EQ(server().stapel(), texte);
}

TEST_F(OdbcTds, ValuesComeBackAsTheyWereWritten) {
  const auto verbindung = offene();
  const QStringList beschreibungen = {u""_s, u"Größe"_s, u"C:\\Bilder\\"_s, u"{d '1'} ?"_s, u"O'Neil"_s,
      u"\U0001F4F7 x"_s, QString(250, u'ä'), u" rechts  "_s};
  const QString kennzeichen = u"1101"_s + QString(46, u' ');
  for (const QString& text : beschreibungen)
    verbindung->Execute(
        u"insert into Bild_Zuordnungen (Key1, Beschreibung, Druckkennzeichen, SortIndex) Values ('A', "_s +
        literal(text) + u", '"_s + kennzeichen + u"', -32768)"_s);
  verbindung->Execute(u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('A', 32767)"_s);
  const auto satz =
      verbindung->Execute(u"Select Beschreibung, Druckkennzeichen, SortIndex from Bild_Zuordnungen where Key1 = 'A'"_s);
  for (const QString& text : beschreibungen) {
    ASSERT_FALSE(satz->Eof());
    EXPECT_EQ(satz->Value(0), Variant(text));
    EXPECT_EQ(satz->Value(1), Variant(kennzeichen));
    EXPECT_EQ(satz->Value(2), Variant(-32768));
    satz->MoveNext();
  }
  EXPECT_EQ(satz->Value(0), Variant(Null{}));
  EXPECT_EQ(satz->Value(2), Variant(32767));
}

TEST_F(OdbcTds, AStatementWithoutRowsGivesAClosedRecordset) {
  const auto verbindung = offene();
  EXPECT_EQ(verbindung->Execute(u"Delete from Bild_Zuordnungen where Key1 = 'nie'"_s)->State(), adodb::adStateClosed);
  const auto leer = verbindung->Execute(u"Select Key1 from Bild_Zuordnungen"_s);
  EXPECT_TRUE(leer->Eof());
  EXPECT_EQ(leer->Spalten(), QStringList(u"Key1"_s));
}

TEST_F(OdbcTds, MessagesBeforeAResultAreNoFailure) {
  const auto verbindung = offene();
  server().steuere(u"meldung 1 Hallo"_s);
  EXPECT_FALSE(verbindung->Execute(u"Select 1 as a"_s)->Eof());
}

TEST_F(OdbcTds, AFailedStatementHasTheServersNumberAndTheConnectionGoesOn) {
  const auto verbindung = offene();
  const auto gefangener = fehler([&] { verbindung->Execute(u"Select * from Gibt_Es_Nicht"_s); });
  EXPECT_EQ(gefangener.Nummer(), -2147217900);
  EXPECT_EQ(gefangener.NativeNummer(), 208);
  EXPECT_EQ(gefangener.Sqlstate(), u"42S02"_s);
  EXPECT_FALSE(verbindung->Execute(u"Select 1 as a"_s)->Eof());
}

TEST_F(OdbcTds, ALinkThatIsCutFailsTheStatementAndAllBehindIt) {
  for (const QString& ort : {u"vor"_s, u"nach"_s, u"halb"_s, u"zeile:3"_s}) {
    SCOPED_TRACE(ort.toStdString());
    const auto verbindung = offene();
    verbindung->Execute(
        u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('A', 1), ('B', 2), ('C', 3), ('D', 4)"_s);
    server().steuere(u"trenne 1 "_s + ort);
    const QString text = u"Select Key1 from Bild_Zuordnungen"_s;
    const auto erster = fehler([&] { verbindung->Execute(text); });
    EXPECT_EQ(erster.Nummer(), -2147217900);
    EXPECT_TRUE(erster.Beschreibung().contains(u"abgerissen"_s)) << erster.Beschreibung().toStdString();
    server().steuere(u"heile"_s);
    EXPECT_EQ(fehler([&] { verbindung->Execute(text); }).Nummer(), -2147217900);
    EXPECT_EQ(verbindung->State(), adodb::adStateOpen);
    verbindung->Close();
    verbindung->Open(zeichenfolge());
    EXPECT_FALSE(verbindung->Execute(text)->Eof());
  }
}

TEST_F(OdbcTds, ARefusedLoginIsToldWithoutThePassword) {
  adodb::Connection verbindung;
  const auto gefangener = fehler([&] { verbindung.Open(zeichenfolge(u"falsch"_s)); });
  EXPECT_EQ(gefangener.Nummer(), -2147467259);
  EXPECT_EQ(gefangener.NativeNummer(), 18456);
  EXPECT_TRUE(gefangener.Beschreibung().contains(u"hat die Anmeldung abgelehnt"_s));
  EXPECT_FALSE(gefangener.Beschreibung().contains(u"falsch"_s));
}

TEST_F(OdbcTds, AServerThatIsSilentAtLoginIsGivenUp) {
  server().steuere(u"anmeldung 1 stumm"_s);
  adodb::Connection verbindung;
  const auto gefangener = fehler([&] { verbindung.Open(zeichenfolge(Kennwort, u"Connect Timeout=1"_s)); });
  server().steuere(u"heile"_s);
  EXPECT_EQ(gefangener.Nummer(), -2147467259);
  EXPECT_TRUE(gefangener.Beschreibung().contains(u"in 1 Sekunden nicht geantwortet"_s))
      << gefangener.Beschreibung().toStdString();
}

TEST_F(OdbcTds, AMachineWithoutAServerIsToldByName) {
  adodb::Connection verbindung;
  const auto gefangener = fehler([&] {
    verbindung.Open(
        u"Driver=FreeTDS;Server=127.0.0.1,1;UID=u;PWD="_s + adodb::Verbindungszeichenfolge::als_wert(Kennwort));
  });
  EXPECT_EQ(gefangener.Nummer(), -2147467259);
  EXPECT_TRUE(gefangener.Beschreibung().contains(u"„127.0.0.1,1“ ist nicht zu erreichen"_s))
      << gefangener.Beschreibung().toStdString();
}

TEST_F(OdbcTds, ClosedObjectsHaveAdosNumbers) {
  const auto verbindung = offene();
  verbindung->Close();
  EXPECT_EQ(Fehlernummer_von([&] { verbindung->Execute(u"Select 1"_s); }), 3704);
  adodb::Command befehl;
  EXPECT_EQ(Fehlernummer_von([&] { befehl.ActiveConnection(verbindung); }), 3709);
}
