#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/adodb/Connection.h"
#include "platform/adodb/odbc/OdbcTreiber.h"
#include "tests/platform/adodb/odbc/OdbcDoppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using Schritt = OdbcDoppel::Schritt;

namespace {

const QString Zeichenfolge = u"Server=SRV;UID=u;PWD=geheim"_s;

struct OdbcTreiberTest : testing::Test {
  OdbcDoppel odbc;
  adodb::OdbcTreiber treiber{odbc};

  void oeffne(const QString& zeichenfolge = Zeichenfolge) { treiber.oeffne(zeichenfolge); }

  /// The only value of a result of one column.
  adodb::Wert wert(SQLSMALLINT typ, const OdbcDoppel::Zelle& zelle) {
    odbc.schritte = {Schritt{.spalten = {{u"a"_s, typ}}, .zeilen = {{zelle}}}};
    return treiber.fuehre_aus(u"Select a"_s).werte.at(0);
  }
  QString text(const QString& zelle) { return std::get<QString>(wert(SQL_WVARCHAR, zelle)); }

  adodb::Datenbankfehler fehler(const std::function<void()>& anweisung) {
    try {
      anweisung();
    } catch (const adodb::Datenbankfehler& gefangener) {
      return gefangener;
    }
    ADD_FAILURE() << "kein Fehler";
    return {0, {}, {}, 0};
  }
  adodb::Datenbankfehler anweisungsfehler() {
    return fehler([&] { treiber.fuehre_aus(u"x"_s); });
  }
};

const Schritt Zeilen{.spalten = {{u"a"_s, SQL_WVARCHAR}}, .zeilen = {{u"1"_s}, {u"2"_s}}};
const Schritt Zaehler{};

}  // namespace

TEST_F(OdbcTreiberTest, ReadsEveryKindOfValue) {
  oeffne();
  EXPECT_EQ(wert(SQL_SMALLINT, u"-32768"_s), adodb::Wert(std::int64_t{-32768}));
  EXPECT_EQ(wert(SQL_SMALLINT, u"32767"_s), adodb::Wert(std::int64_t{32767}));
  EXPECT_EQ(wert(SQL_BIT, u"1"_s), adodb::Wert(std::int64_t{1}));
  EXPECT_EQ(wert(SQL_BIGINT, u"9223372036854775807"_s), adodb::Wert(std::int64_t{INT64_MAX}));
  EXPECT_EQ(wert(SQL_DECIMAL, u"1.5"_s), adodb::Wert(1.5));
  for (const SQLSMALLINT typ : std::initializer_list<SQLSMALLINT>{SQL_SMALLINT, SQL_DOUBLE, SQL_CHAR, SQL_WVARCHAR})
    EXPECT_EQ(wert(typ, std::nullopt), adodb::Wert(std::monostate()));
  EXPECT_EQ(wert(SQL_WVARCHAR, u""_s), adodb::Wert(QString()));
  EXPECT_EQ(wert(SQL_CHAR, u"1101"_s + QString(46, u' ')), adodb::Wert(u"1101"_s + QString(46, u' ')));
  EXPECT_EQ(text(u"\ufeff\ufffe"_s).size(), 2);
  EXPECT_EQ(text(u"Größe \U0001F4F7 'a\\b?{c}'"_s), u"Größe \U0001F4F7 'a\\b?{c}'"_s);
}

TEST_F(OdbcTreiberTest, ALongValueIsWholeHoweverItsPiecesFall) {
  oeffne();
  QString lang;
  while (lang.size() < 9000) lang += u"äö\U0001F4F7"_s;
  for (const qsizetype laenge : {2046, 2047, 2048, 2049, 4094, 4095, 6000, 9000})
    for (const auto angabe : {OdbcDoppel::Laenge::Rest, OdbcDoppel::Laenge::Unbekannt})
      for (const bool ganz : {false, true}) {
        SCOPED_TRACE(std::to_string(laenge) + (ganz ? " whole pairs" : "") +
            (angabe == OdbcDoppel::Laenge::Rest ? "" : " unknown"));
        odbc.laenge = angabe;
        odbc.paare_ganz = ganz;
        odbc.stuecke = 0;
        for (const QString& versatz : {QString(), u"x"_s, u"xy"_s, u"xyz"_s})
          EXPECT_EQ(text((versatz + lang).first(laenge)), (versatz + lang).first(laenge));
        EXPECT_GE(odbc.stuecke, laenge / 2048 * 4);
      }
}

TEST_F(OdbcTreiberTest, AZeroCharacterAtAPiecesEndIsKeptWhereLengthsAreTold) {
  oeffne();
  QString lang(5000, u'x');
  lang[2046] = u'\0';
  EXPECT_EQ(text(lang), lang);
}

TEST_F(OdbcTreiberTest, ReadsColumnsAndRowsInOrder) {
  oeffne();
  const QString langer_Name(300, u'n');
  odbc.schritte = {Schritt{.spalten = {{u"Key1"_s, SQL_WVARCHAR}, {langer_Name, SQL_SMALLINT}, {u""_s, SQL_WVARCHAR}},
      .zeilen = {{u"A"_s, u"1"_s, u""_s}, {u"A"_s, std::nullopt, u"B"_s}}}};
  const adodb::Ergebnis ergebnis = treiber.fuehre_aus(u"Select"_s);
  EXPECT_EQ(ergebnis.spalten, QStringList({u"Key1"_s, langer_Name, u""_s}));
  ASSERT_EQ(ergebnis.zeilen(), 2U);
  EXPECT_EQ(ergebnis.werte[1], adodb::Wert(std::int64_t{1}));
  EXPECT_EQ(ergebnis.werte[3], adodb::Wert(u"A"_s));
  EXPECT_EQ(ergebnis.werte[4], adodb::Wert(std::monostate()));
  EXPECT_EQ(ergebnis.werte[5], adodb::Wert(u"B"_s));
}

TEST_F(OdbcTreiberTest, TheTextGoesOutAsItStandsOnAForwardOnlyCursorWithoutScanning) {
  oeffne();
  const QString anweisung = u"Select '{fn x}', '?', 'O''Neil\\' from T  "_s;
  treiber.fuehre_aus(anweisung);
  EXPECT_EQ(odbc.texte, QStringList(anweisung));
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_NOSCAN), SQLULEN{SQL_NOSCAN_ON});
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_CURSOR_TYPE), SQLULEN{SQL_CURSOR_FORWARD_ONLY});
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_CONCURRENCY), SQLULEN{SQL_CONCUR_READ_ONLY});
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_LOGIN_TIMEOUT), 15U);
}

TEST_F(OdbcTreiberTest, HalfOfASurrogatePairGoesOutAsItIsWithTheMakersDriverAlone) {
  const QString halb(QChar(char16_t{0xD83D}));
  const QString anweisung = u"Select '\U0001F4F7%1 x'"_s;
  oeffne();
  treiber.fuehre_aus(anweisung.arg(halb));
  EXPECT_EQ(odbc.texte.takeLast(), anweisung.arg(u"?"_s)) << "FreeTDS would drop what stands behind it";
  treiber.schliesse();
  odbc.treiber = {{u"ODBC Driver 18 for SQL Server"_s, u"Driver=libmsodbcsql-18.so"_s}};
  oeffne();
  treiber.fuehre_aus(anweisung.arg(halb));
  EXPECT_EQ(odbc.texte.takeLast(), anweisung.arg(halb));
}

TEST_F(OdbcTreiberTest, AnAttributeThatTheDriverDoesNotKnowIsDoneWithout) {
  odbc.unbekannte_Attribute = {SQL_ATTR_NOSCAN, SQL_ATTR_LOGIN_TIMEOUT, SQL_ATTR_CURSOR_TYPE, SQL_ATTR_CONCURRENCY};
  odbc.kennt_tot = false;
  odbc.schritte = {Zeilen};
  oeffne();
  EXPECT_EQ(treiber.fuehre_aus(u"x"_s).zeilen(), 2U);
}

TEST_F(OdbcTreiberTest, APacketSizeThatTheDriverDoesNotTakeIsSaid) {
  odbc.unbekannte_Attribute = {SQL_ATTR_PACKET_SIZE};
  EXPECT_EQ(fehler([&] { oeffne(Zeichenfolge + u";Packet Size=4096"_s); }).Nummer(), fehlernummer::Verbindung);
  odbc.unbekannte_Attribute = {};
  oeffne(Zeichenfolge + u";Packet Size=4096"_s);
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_PACKET_SIZE), 4096U);
}

TEST_F(OdbcTreiberTest, AStatementThatMeetsNoRowsIsNoFailure) {
  oeffne();
  for (const SQLRETURN ergebnis : std::initializer_list<SQLRETURN>{SQL_SUCCESS, SQL_NO_DATA}) {
    odbc.schritte = {Schritt{.ergebnis = ergebnis}};
    EXPECT_TRUE(treiber.fuehre_aus(u"Delete"_s).spalten.isEmpty());
  }
  odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR}}}};
  const adodb::Ergebnis leeres = treiber.fuehre_aus(u"Select"_s);
  EXPECT_EQ(leeres.spalten, QStringList(u"a"_s));
  EXPECT_EQ(leeres.zeilen(), 0U);
}

TEST_F(OdbcTreiberTest, MessagesRowCountsAndWarningsBeforeAResultArePassedOver) {
  oeffne();
  const Schritt druck{
      .ergebnis = SQL_SUCCESS_WITH_INFO, .meldungen = {{u"01000"_s, 0, u"[FreeTDS][SQL Server]Hallo"_s}}};
  const Schritt keine_Zeile{.ergebnis = SQL_NO_DATA};
  for (const auto& schritte :
      {std::vector{druck, Zaehler, Zeilen}, std::vector{Zaehler, druck, Zeilen, Zaehler}, std::vector{Zeilen, druck}}) {
    odbc.schritte = schritte;
    EXPECT_EQ(treiber.fuehre_aus(u"x"_s).zeilen(), 2U);
    EXPECT_EQ(odbc.gelesene_Schritte, schritte.size());
  }
  odbc.schritte = {keine_Zeile, Zeilen};
  EXPECT_EQ(treiber.fuehre_aus(u"x"_s).zeilen(), 2U);
}

TEST_F(OdbcTreiberTest, OfSeveralResultsTheFirstIsReadAndAllAreDrawn) {
  oeffne();
  const Schritt zweites{.spalten = {{u"b"_s, SQL_WVARCHAR}}, .zeilen = {{u"3"_s}}};
  odbc.schritte = {Zeilen, zweites, Zaehler};
  EXPECT_EQ(treiber.fuehre_aus(u"x"_s).spalten, QStringList(u"a"_s));
  EXPECT_EQ(odbc.gelesene_Schritte, 3U);
  EXPECT_EQ(odbc.offene_Griffe, 2);
}

TEST_F(OdbcTreiberTest, AFailureAnywhereInABatchIsOneOfTheText) {
  oeffne();
  const Schritt fehler{.ergebnis = SQL_ERROR, .meldungen = {{u"23000"_s, 547, u"[FreeTDS][SQL Server]Conflict"_s}}};
  Schritt mitten = Zeilen;
  mitten.scheitert_bei = 1;
  mitten.meldungen = fehler.meldungen;
  for (const auto& schritte :
      {std::vector{fehler}, std::vector{Zaehler, fehler}, std::vector{Zeilen, fehler}, std::vector{mitten}}) {
    odbc.schritte = schritte;
    const auto gefangener = anweisungsfehler();
    EXPECT_EQ(gefangener.Nummer(), -2147217900);
    EXPECT_EQ(gefangener.Sqlstate(), u"23000"_s);
    EXPECT_EQ(gefangener.NativeNummer(), 547);
    EXPECT_EQ(gefangener.Beschreibung(), u"Die Anweisung ist fehlgeschlagen: Conflict (SQLSTATE 23000, Fehler 547)"_s);
    EXPECT_EQ(odbc.offene_Griffe, 2);
  }
  odbc.schritte = {Zeilen};
  EXPECT_EQ(treiber.fuehre_aus(u"x"_s).zeilen(), 2U);
}

TEST_F(OdbcTreiberTest, AllErrorRecordsAreToldAndWarningsAmongThemAreNot) {
  oeffne();
  odbc.schritte = {Schritt{.ergebnis = SQL_ERROR,
      .meldungen = {{u"01000"_s, 5701, u"[Microsoft][ODBC Driver 18 for SQL Server][SQL Server]Hinweis"_s},
          {u"HY000"_s, 0, u"[unixODBC][Driver Manager]Erstes"_s},
          {u"42S02"_s, 208, u"[FreeTDS][SQL Server][dbo].[T] fehlt"_s},
          {u"42000"_s, 8180, u"[FreeTDS][SQL Server]"_s + QString(3000, u'z')}}}};
  const auto gefangener = anweisungsfehler();
  EXPECT_EQ(gefangener.Sqlstate(), u"42S02"_s);
  EXPECT_EQ(gefangener.NativeNummer(), 208);
  EXPECT_EQ(gefangener.Beschreibung(),
      u"Die Anweisung ist fehlgeschlagen: Erstes; [dbo].[T] fehlt; "_s + QString(3000, u'z') +
          u" (SQLSTATE 42S02, Fehler 208)"_s);
}

TEST_F(OdbcTreiberTest, AFailureWithoutARecordHasWordsToo) {
  oeffne();
  odbc.schritte = {Schritt{.ergebnis = SQL_ERROR}};
  EXPECT_TRUE(anweisungsfehler().Beschreibung().contains(u"nennt keinen Grund"_s));
}

TEST_F(OdbcTreiberTest, ADeadLinkFailsTheStatementInWordsAndTheConnectionStaysOpen) {
  oeffne();
  odbc.schritte = {Schritt{
      .ergebnis = SQL_ERROR, .meldungen = {{u"08S01"_s, 20006, u"[FreeTDS][SQL Server]Write to the server failed"_s}}}};
  const auto gefangener = anweisungsfehler();
  EXPECT_EQ(gefangener.Nummer(), -2147217900);
  EXPECT_EQ(gefangener.Sqlstate(), u"08S01"_s);
  EXPECT_TRUE(gefangener.Beschreibung().contains(u"Verbindung zum Server ist abgerissen"_s));
  EXPECT_TRUE(treiber.ist_offen());
}

TEST_F(OdbcTreiberTest, ADeadLinkUnderAWarningsSqlstateIsADeadLink) {
  oeffne();
  odbc.tot = true;
  odbc.schritte = {Schritt{.ergebnis = SQL_ERROR,
      .meldungen = {{u"01000"_s, 20017, u"[FreeTDS][SQL Server]Unexpected EOF from the server"_s}}}};
  const auto gefangener = anweisungsfehler();
  EXPECT_EQ(gefangener.Sqlstate(), u"08S01"_s);
  EXPECT_EQ(gefangener.NativeNummer(), 20017);
}

TEST_F(OdbcTreiberTest, TheCauseOfAFailedConnectionIsToldUnderAWarningsSqlstateToo) {
  odbc.verbindung = SQL_ERROR;
  odbc.verbindungsmeldungen = {{u"08001"_s, 0, u"[FreeTDS][SQL Server]Unable to connect to data source"_s},
      {u"01000"_s, 20013, u"[FreeTDS][SQL Server]Unknown host machine name."_s}};
  EXPECT_TRUE(fehler([&] { oeffne(); })
                  .Beschreibung()
                  .contains(u"Unable to connect to data source; Unknown host machine name."_s));
}

TEST_F(OdbcTreiberTest, ALinkThatIsCutWithinAResultIsNoShorterResult) {
  oeffne();
  odbc.schritte = {Zeilen};
  odbc.tot = true;
  const auto gefangener = anweisungsfehler();
  EXPECT_EQ(gefangener.Sqlstate(), u"08S01"_s);
  EXPECT_TRUE(gefangener.Beschreibung().contains(u"abgerissen"_s));
}

TEST_F(OdbcTreiberTest, TextsThatCannotBeSentWholeFailBeforeTheyAreSent) {
  oeffne();
  for (const QString& text : {QString(), u"  "_s, u"Delete\0 where"_s})
    EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(text); }), fehlernummer::Anweisung);
  EXPECT_TRUE(odbc.texte.isEmpty());
}

TEST_F(OdbcTreiberTest, AFailedLoginHasTheServersNumberAndNeverThePassword) {
  odbc.verbindung = SQL_ERROR;
  odbc.verbindungsmeldungen = {{u"28000"_s, 18456, u"[FreeTDS][SQL Server]Login failed for 'u' with 'geheim'"_s},
      {u"08001"_s, 0, u"[FreeTDS][SQL Server]Unable to connect to data source"_s}};
  const auto gefangener = fehler([&] { oeffne(); });
  EXPECT_EQ(gefangener.Nummer(), -2147467259);
  EXPECT_EQ(gefangener.Sqlstate(), u"28000"_s);
  EXPECT_EQ(gefangener.NativeNummer(), 18456);
  EXPECT_EQ(gefangener.Beschreibung(),
      u"Die Verbindung zur Datenbank ist fehlgeschlagen: der Server „SRV“ hat die Anmeldung abgelehnt: Login failed "
      "for 'u' with '***'; Unable to connect to data source (SQLSTATE 28000, Fehler 18456)"_s);
  EXPECT_FALSE(treiber.ist_offen());
  EXPECT_EQ(odbc.offene_Griffe, 0);
}

TEST_F(OdbcTreiberTest, AServerThatDoesNotAnswerAndADriverThatIsMissingAreToldApart) {
  odbc.verbindung = SQL_ERROR;
  odbc.verbindungsmeldungen = {{u"HYT00"_s, 0, u"[Microsoft][ODBC Driver 18 for SQL Server]Login timeout expired"_s}};
  EXPECT_TRUE(fehler([&] { oeffne(Zeichenfolge + u";Connect Timeout=7"_s); })
                  .Beschreibung()
                  .contains(u"„SRV“ hat in 7 Sekunden nicht geantwortet"_s));
  odbc.verbindungsmeldungen = {{u"01000"_s, 0, u"[unixODBC][Driver Manager]Can't open lib 'x.so' : file not found"_s}};
  EXPECT_TRUE(fehler([&] { oeffne(); }).Beschreibung().contains(u"Treiber ist nicht zu laden: Can't open lib"_s));
  odbc.verbindungsmeldungen = {{u"08001"_s, 0, u"[FreeTDS][SQL Server]Unable to connect"_s}};
  EXPECT_TRUE(fehler([&] { oeffne(); }).Beschreibung().contains(u"„SRV“ ist nicht zu erreichen"_s));
}

TEST_F(OdbcTreiberTest, MessagesOfASuccessfulLoginAreNoFailureButAPassedOverKeywordIs) {
  odbc.verbindung = SQL_SUCCESS_WITH_INFO;
  odbc.verbindungsmeldungen = {{u"01000"_s, 5701, u"[FreeTDS][SQL Server]Changed database context to 'D'."_s}};
  oeffne();
  EXPECT_TRUE(treiber.ist_offen());
  treiber.schliesse();
  odbc.verbindungsmeldungen.append({u"01S00"_s, 0, u"[Microsoft][ODBC]Invalid connection string attribute"_s});
  EXPECT_EQ(fehler([&] { oeffne(); }).Sqlstate(), u"01S00"_s);
  EXPECT_FALSE(treiber.ist_offen());
  EXPECT_EQ(odbc.getrennt, 2);
  EXPECT_EQ(odbc.offene_Griffe, 0);
}

TEST_F(OdbcTreiberTest, ClosedAndOpenObjectsHaveAdosNumbers) {
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(u"x"_s); }), 3704);
  oeffne();
  EXPECT_EQ(Fehlernummer_von([&] { oeffne(); }), 3705);
  treiber.schliesse();
  treiber.schliesse();
  EXPECT_EQ(odbc.getrennt, 1);
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(u"x"_s); }), 3704);
  oeffne();
  EXPECT_TRUE(treiber.ist_offen());
}

TEST_F(OdbcTreiberTest, WithoutAnInstalledDriverOpenSaysSo) {
  odbc.treiber.clear();
  EXPECT_TRUE(fehler([&] { oeffne(); }).Beschreibung().contains(u"kein ODBC-Treiber"_s));
  odbc.treiber = {{u"Firma"_s, u"Description=x\0Driver=/usr/lib/libtdsodbc.so\0"_s}};
  oeffne();
  EXPECT_EQ(odbc.zeichenfolgen, QStringList(u"DRIVER={Firma};SERVER=SRV;UID=u;PWD=geheim;TDS_Version=7.4;"_s));
}

TEST(OdbcProvider, ConnectStringsOfSqlServerReachTheOdbcDriver) {
  for (const QString& text :
      {u"Provider=SQLOLEDB;Data Source=S"_s, u"Provider=sqloledb.1"_s, u"Provider=SQLNCLI11;Server=S"_s,
          u"Provider=MSOLEDBSQL19.1"_s, u"Provider=MSDASQL"_s, u"Server=S"_s, u"Driver={x};UID=u"_s, u"DSN=x"_s}) {
    const auto treiber = adodb::treiber_fuer(text);
    EXPECT_NE(dynamic_cast<adodb::OdbcTreiber*>(treiber.get()), nullptr) << text.toStdString();
  }
}

RC_GTEST_PROP(OdbcTreiber, AnyTextComesBackWhole, ()) {
  OdbcDoppel odbc;
  odbc.paare_ganz = *rc::gen::arbitrary<bool>();
  adodb::OdbcTreiber treiber(odbc);
  treiber.oeffne(Zeichenfolge);
  const auto zeichen = *rc::gen::container<std::u16string>(
      *rc::gen::inRange<std::size_t>(0, 7000), rc::gen::inRange<char16_t>(1, 0xD800));
  const QString text = QString::fromStdU16String(zeichen);
  odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR}}, .zeilen = {{text}, {text}}}};
  const adodb::Ergebnis ergebnis = treiber.fuehre_aus(u"x"_s);
  RC_ASSERT(ergebnis.werte.at(0) == adodb::Wert(text));
  RC_ASSERT(ergebnis.werte.at(1) == adodb::Wert(text));
}

TEST_F(OdbcTreiberTest, AConnectionThatLostItsDemandedEncryptionIsClosedAgain) {
  const QString verlangt = u"Server=SRV;UID=u;PWD=geheim;Encrypt=yes;TrustServerCertificate=yes"_s;
  // 46 bytes are the text as it stands, with what the protocol puts around it.
  odbc.bestaetigte = {1000, 1046};
  const adodb::Datenbankfehler grund = fehler([&] { oeffne(verlangt); });
  EXPECT_TRUE(grund.Beschreibung().contains(u"nicht verschlüsselt, obwohl es verlangt ist"_s));
  EXPECT_FALSE(treiber.ist_offen());
  EXPECT_EQ(odbc.offene_Griffe, 0);
  EXPECT_EQ(odbc.texte, QStringList(u"SELECT 1"_s)) << "nothing of the user's went out";
  odbc.bestaetigte = {1000, 1075};
  oeffne(verlangt);
  EXPECT_TRUE(treiber.ist_offen());
  EXPECT_EQ(treiber.leitungsschutz().umfang, adodb::Leitungsschutz::Umfang::Ganz);
}

TEST_F(OdbcTreiberTest, NothingGoesOutBesideWhereNoEncryptionIsDemanded) {
  oeffne();
  EXPECT_EQ(odbc.texte, QStringList());
}

TEST_F(OdbcTreiberTest, AFailureWhereEncryptionIsDemandedNamesWhatElseItMayBe) {
  odbc.verbindung = SQL_ERROR;
  odbc.verbindungsmeldungen = {{u"08001"_s, 0, u"[FreeTDS][SQL Server]Unable to connect to data source"_s}};
  EXPECT_TRUE(
      fehler([&] { oeffne(u"Server=SRV;UID=u;PWD=k;Encryption=require"_s); }).Beschreibung().contains(u"Zertifikat"_s));
  EXPECT_FALSE(fehler([&] { oeffne(); }).Beschreibung().contains(u"Zertifikat"_s));
}
