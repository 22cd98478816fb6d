#include <gtest/gtest.h>

#include <QFileInfo>

#include "platform/adodb/Connection.h"
#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "platform/files/Pfadkarte.h"
#include "tests/support/Fehler.h"
#include "tests/support/Pruefdatenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class SqliteTreiber : public ::testing::Test {
 protected:
  QString quelle(const QString& name = u"a.db"_s) const {
    return u"Provider=SQLite;Data Source="_s + ordner.pfad(name);
  }
  void oeffne_neu() { verbindung.Open(quelle() + u";Mode=ReadWriteCreate"_s); }
  std::shared_ptr<adodb::Recordset> fuehre_aus(const QString& text) { return verbindung.Execute(text); }
  std::int32_t nummer(const QString& text) {
    return Fehlernummer_von([&] { fuehre_aus(text); });
  }
  QString einzelwert(const QString& text) { return fuehre_aus(text)->Text(0); }
  /// Opens and gives the words of the failure, or an empty text.
  static QString worte_beim_Oeffnen(const QString& zeichenfolge) {
    try {
      adodb::Connection().Open(zeichenfolge);
    } catch (const Laufzeitfehler& fehler) {
      EXPECT_EQ(fehler.Nummer(), fehlernummer::Verbindung);
      return fehler.Beschreibung();
    }
    return {};
  }

  Testordner ordner;
  adodb::Connection verbindung;
};

}  // namespace

TEST_F(SqliteTreiber, AMissingFileIsNoDatabaseAndIsNotMade) {
  for (const QString& modus : {QString(), u";Mode=ReadWrite"_s, u";mode=readonly"_s}) {
    const QString worte = worte_beim_Oeffnen(quelle() + modus);
    EXPECT_TRUE(worte.contains(u"gibt es nicht"_s)) << worte.toStdString();
    EXPECT_TRUE(worte.contains(ordner.pfad(u"a.db"_s)));
    EXPECT_FALSE(ordner.vorhanden(u"a.db"_s));
  }
}

TEST_F(SqliteTreiber, ReadWriteCreateMakesTheFile) {
  oeffne_neu();
  fuehre_aus(u"create table t (a)"_s);
  verbindung.Close();
  EXPECT_TRUE(ordner.vorhanden(u"a.db"_s));
  verbindung.Open(quelle());
  EXPECT_EQ(nummer(u"insert into t values (1)"_s), 0);
}

TEST_F(SqliteTreiber, ReadOnlyReadsAndRefusesToWrite) {
  oeffne_neu();
  fuehre_aus(u"create table t (a)"_s);
  verbindung.Close();
  verbindung.Open(quelle() + u";Mode=ReadOnly"_s);
  EXPECT_TRUE(fuehre_aus(u"select * from t"_s)->Eof());
  EXPECT_EQ(nummer(u"insert into t values (1)"_s), fehlernummer::Anweisung);
}

TEST_F(SqliteTreiber, AFileThatIsNoDatabaseFailsAtOpen) {
  ordner.schreibe(u"a.db"_s, QByteArray(5000, 'x'));
  EXPECT_TRUE(worte_beim_Oeffnen(quelle()).contains(u"keine SQLite-Datenbank"_s));
  EXPECT_EQ(ordner.lies(u"a.db"_s), QByteArray(5000, 'x'));
}

TEST_F(SqliteTreiber, AFolderOrAMissingFolderFailsAtOpen) {
  EXPECT_FALSE(worte_beim_Oeffnen(u"Provider=SQLite;Data Source="_s + ordner.pfad()).isEmpty());
  EXPECT_FALSE(worte_beim_Oeffnen(quelle(u"fehlt/a.db"_s) + u";Mode=ReadWriteCreate"_s).isEmpty());
  EXPECT_FALSE(worte_beim_Oeffnen(u"Provider=SQLite"_s).isEmpty());
}

TEST_F(SqliteTreiber, NamesThatSqliteWouldReadOtherwiseAreFiles) {
  for (const QString& name : {u":memory:"_s, u"file:a.db?mode=memory"_s})
    EXPECT_TRUE(worte_beim_Oeffnen(u"Provider=SQLite;Data Source='"_s + name + u"'"_s).contains(u"gibt es nicht"_s));
}

TEST_F(SqliteTreiber, UnknownModesKeywordsAndLoginsAreRefusedInWords) {
  const QString mit_Anlegen = quelle() + u";Mode=ReadWriteCreate"_s;
  EXPECT_TRUE(worte_beim_Oeffnen(quelle() + u";Mode=Share Deny None"_s).contains(u"Mode"_s));
  EXPECT_TRUE(worte_beim_Oeffnen(mit_Anlegen + u";Initial Catalog=x"_s).contains(u"Schlüsselwort"_s));
  EXPECT_TRUE(worte_beim_Oeffnen(mit_Anlegen + u";User ID=sa"_s).contains(u"keine Anmeldung"_s));
  EXPECT_TRUE(worte_beim_Oeffnen(mit_Anlegen + u";Password=geheim"_s).contains(u"keine Anmeldung"_s));
  EXPECT_FALSE(ordner.vorhanden(u"a.db"_s));
  EXPECT_EQ(worte_beim_Oeffnen(mit_Anlegen + u";User ID=;Password=''"_s), QString());
}

TEST_F(SqliteTreiber, APasswordIsInNoText) {
  for (const QString& text :
      {quelle() + u";Password=geheim"_s, quelle() + u" Password=geheim"_s, quelle() + u";Mode=x;Password=geheim"_s,
          quelle() + u";Mode=ReadOnly Password=geheim"_s, quelle() + u";Password=ge;geheim=1"_s})
    EXPECT_FALSE(worte_beim_Oeffnen(text).contains(u"geheim"_s));
  try {
    verbindung.Open(quelle(), u"sa"_s, u"geheim"_s);
    ADD_FAILURE();
  } catch (const Laufzeitfehler& fehler) {
    EXPECT_FALSE(fehler.Beschreibung().contains(u"geheim"_s));
  }
}

TEST_F(SqliteTreiber, ADataSourceMayBeAPathOfTheTable) {
  Pfadkarte::aktuell().setze(u"Q:"_s, ordner.pfad());
  verbindung.Open(u"Provider=SQLite;Data Source=Q:\\Daten.db;Mode=ReadWriteCreate"_s);
  fuehre_aus(u"create table t (a)"_s);
  EXPECT_TRUE(ordner.vorhanden(u"Daten.db"_s));
  Pfadkarte::aktuell().entferne(u"Q:"_s);
  EXPECT_FALSE(worte_beim_Oeffnen(u"Provider=SQLite;Data Source=Q:\\Daten.db"_s).isEmpty());
}

TEST_F(SqliteTreiber, TheMainDatabaseIsCalledDbo) {
  oeffne_neu();
  fuehre_aus(u"create table dbo.t (a)"_s);
  fuehre_aus(u"insert into t values (1)"_s);
  EXPECT_EQ(einzelwert(u"SELECT TOP 100 PERCENT dbo.t.a FROM dbo.t"_s), u"1"_s);
}

TEST_F(SqliteTreiber, TheFileIsKeptInWriteAheadModeWithFullSynchronisation) {
  oeffne_neu();
  EXPECT_EQ(einzelwert(u"PRAGMA journal_mode"_s), u"wal"_s);
  EXPECT_EQ(einzelwert(u"PRAGMA synchronous"_s), u"2"_s);
}

TEST_F(SqliteTreiber, DoubleQuotesNeverMakeAText) {
  oeffne_neu();
  EXPECT_EQ(nummer(u"select \"a\""_s), fehlernummer::Anweisung);
}

TEST_F(SqliteTreiber, ValuesKeepTheirKinds) {
  oeffne_neu();
  const auto satz = fuehre_aus(u"select 5000000000 a, 7 b, 1.5 c, 'Größe €' d, NULL e, x'80e4' f, '' g"_s);
  EXPECT_EQ(satz->Value(0), Variant(5e9));
  EXPECT_EQ(satz->Value(1), Variant(std::int32_t{7}));
  EXPECT_EQ(satz->Value(2), Variant(1.5));
  EXPECT_EQ(satz->Value(3), Variant(u"Größe €"_s));
  EXPECT_EQ(satz->Value(4), Variant(Null{}));
  EXPECT_EQ(satz->Value(5), Variant(u"€ä"_s));
  EXPECT_EQ(satz->Value(6), Variant(u""_s));
}

TEST_F(SqliteTreiber, EqualAndNearlyEqualTextsOfFollowingRowsStayTheirOwn) {
  oeffne_neu();
  const auto satz = fuehre_aus(
      u"select 'ab' union all select 'ab' union all select 'aB' union all select 'Ã¤' union all "
      "select 'ä' union all select NULL union all select 'ä' union all select '' union all "
      "select 12"_s);
  QStringList texte;
  for (; !satz->Eof(); satz->MoveNext()) texte.append(satz->Text(0));
  EXPECT_EQ(texte, QStringList({u"ab"_s, u"ab"_s, u"aB"_s, u"Ã¤"_s, u"ä"_s, u""_s, u"ä"_s, u""_s, u"12"_s}));
}

TEST_F(SqliteTreiber, ARecordsetStandsAloneAfterItsConnection) {
  oeffne_neu();
  const auto satz = fuehre_aus(u"select 'a' union all select 'b'"_s);
  verbindung.Close();
  satz->MoveNext();
  EXPECT_EQ(satz->Text(0), u"b"_s);
}

TEST_F(SqliteTreiber, AFailedStatementTellsTheDatabasesWords) {
  oeffne_neu();
  try {
    fuehre_aus(u"Select * from Gibtsnicht"_s);
    ADD_FAILURE();
  } catch (const adodb::Datenbankfehler& fehler) {
    EXPECT_EQ(fehler.Nummer(), fehlernummer::Anweisung);
    EXPECT_TRUE(fehler.Beschreibung().startsWith(u"Die Anweisung ist fehlgeschlagen: "_s));
    EXPECT_TRUE(fehler.Beschreibung().contains(u"no such table: Gibtsnicht"_s));
    EXPECT_EQ(fehler.Sqlstate(), u"42000"_s);
    EXPECT_EQ(fehler.NativeNummer(), 1);
  }
}

TEST_F(SqliteTreiber, AnythingBehindTheFirstStatementFailsBeforeItRuns) {
  oeffne_neu();
  fuehre_aus(u"create table t (a)"_s);
  fuehre_aus(u"insert into t values (1)"_s);
  for (const QString& rest : {u"; select 1"_s, u";x"_s, u"; /* */ '"_s, u";;delete from t"_s, u"; -- \n 1"_s})
    EXPECT_EQ(nummer(u"delete from t"_s + rest), fehlernummer::Anweisung) << rest.toStdString();
  EXPECT_EQ(nummer(u"delete from t"_s + QChar(u'\0') + u" where a = 2"_s), fehlernummer::Anweisung);
  EXPECT_EQ(einzelwert(u"select count(*) from t"_s), u"1"_s);
}

TEST_F(SqliteTreiber, BlanksCommentsAndSemicolonsMayFollow) {
  oeffne_neu();
  for (const QString& rest : {u";"_s, u" ;; \t\n"_s, u"; -- Ende; delete"_s, u"; /* Ende; */ ;"_s})
    EXPECT_EQ(nummer(u"select 1"_s + rest), 0) << rest.toStdString();
  EXPECT_EQ(nummer(u";; select 1"_s), 0);
}

TEST_F(SqliteTreiber, AnEmptyTextOrOneWithParametersFails) {
  oeffne_neu();
  for (const QString& text : {QString(), u" ; "_s, u"-- nichts"_s, u"select ?"_s, u"select :a"_s, u"select @a"_s})
    EXPECT_EQ(nummer(text), fehlernummer::Anweisung) << text.toStdString();
}

TEST(Anweisungstexte, AnApostropheInAKeyBreaksTheStatementAndNeverWidensADelete) {
  Pruefdatenbank datenbank;
  for (const QString& key : {u"Bob''s"_s, u"A"_s, u"-"_s})
    datenbank.fuehre_aus(u"insert into Bild_Zuordnungen (Key1) values ('"_s + key + u"')"_s);
  for (const QString& key : {u"Bob's"_s, u"'; Delete from Bild_Zuordnungen --"_s, u"';"_s, u"A' 'B"_s, u"'"_s})
    for (const QString& anfang : {u"Delete from Bild_Zuordnungen "_s, u"Select * from Bild_Zuordnungen "_s})
      EXPECT_EQ(
          Fehlernummer_von([&] { datenbank.verbindung()->Execute(anfang + u" where Key1 = '"_s + key + u"'"_s); }),
          fehlernummer::Anweisung)
          << key.toStdString();
  EXPECT_EQ(datenbank.anzahl(), 3);
}

TEST(Anweisungstexte, TheBareJoinWithOrderByWorks) {
  Pruefdatenbank datenbank;
  datenbank.fuehre_aus(u"insert into Bild_Zuordnungen (Key1, SortIndex) values ('A', 2)"_s);
  datenbank.fuehre_aus(u"insert into Bild_Zuordnungen (Key1, SortIndex) values ('A', 0)"_s);
  EXPECT_EQ(
      datenbank.zeilen(u"Select SortIndex from Bild_Zuordnungen  where Key1 = 'A'order by SortIndex"_s).size(), 2U);
  EXPECT_EQ(
      datenbank.zeilen(u"Select SortIndex from Bild_Zuordnungen  where SortIndex = 0order by SortIndex"_s).size(), 1U);
  EXPECT_EQ(datenbank.zeilen(u"Select Top 1 Key1 from Bild_Zuordnungen "_s).size(), 1U);
}
