#include <gtest/gtest.h>

#include <QRegularExpression>

#include "platform/adodb/SqlZerleger.h"
#include "tests/support/Fehler.h"
#include "tests/support/Pruefdatenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Alle = 14;

class Schema : public ::testing::Test {
 protected:
  std::int32_t nummer(const QString& text) {
    return Fehlernummer_von([&] { datenbank.verbindung()->Execute(text); });
  }
  std::int32_t fuege_ein(const QString& spalte, const QString& wert) {
    return nummer(u"insert into Bild_Zuordnungen ("_s + spalte + u") values ("_s + wert + u")"_s);
  }
  QString plan(const QString& abfrage) {
    QStringList schritte;
    for (const QStringList& zeile : datenbank.zeilen(u"EXPLAIN QUERY PLAN "_s + abfrage)) schritte.append(zeile.last());
    return schritte.join(u'\n');
  }

  Pruefdatenbank datenbank;
};

QString text_von(int laenge) {
  return u"'"_s + QString(laenge, u'ä') + u"'"_s;
}

}  // namespace

TEST_F(Schema, RunsTwiceWithoutHarm) {
  ASSERT_EQ(fuege_ein(u"Key1"_s, u"'A'"_s), 0);
  for (const QString& skript : {u"sql/sqlite/Bild_Zuordnungen.sql"_s, u"sql/sqlite/Wirtstabellen_Beispiel.sql"_s})
    for (const QString& anweisung : adodb::zerlege_skript(projektdatei(skript))) datenbank.fuehre_aus(anweisung);
  EXPECT_EQ(datenbank.anzahl(), 1);
}

TEST_F(Schema, ACloneMayStandBesideItsModel) {
  const QString text =
      u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2) Values "
      "('A','-','-','-','b','jpg','Bel','-')"_s;
  EXPECT_EQ(nummer(text), 0);
  EXPECT_EQ(nummer(text), 0);
  EXPECT_EQ(datenbank.anzahl(), 2);
}

TEST_F(Schema, StringColumnsEnforceTheirLengths) {
  const QList<std::pair<QString, int>> spalten = {{u"Key1"_s, 50}, {u"Key2"_s, 50}, {u"Key3"_s, 50}, {u"Key4"_s, 50},
      {u"Bildname"_s, 50}, {u"BildExt"_s, 200}, {u"Typ1"_s, 200}, {u"Typ2"_s, 200}, {u"BildPfad"_s, 250},
      {u"Beschreibung"_s, 250}, {u"Druckkennzeichen"_s, 50}, {u"Grafik_Ursprung"_s, 250}, {u"GrafikAnbNr"_s, 250}};
  EXPECT_EQ(spalten.size(), Alle - 1);
  for (const auto& [spalte, laenge] : spalten) {
    EXPECT_EQ(fuege_ein(spalte, text_von(laenge)), 0) << spalte.toStdString();
    EXPECT_EQ(fuege_ein(spalte, text_von(laenge + 1)), fehlernummer::Anweisung) << spalte.toStdString();
    EXPECT_EQ(fuege_ein(spalte, u"NULL"_s), 0);
    EXPECT_EQ(fuege_ein(spalte, u"''"_s), 0);
  }
}

TEST_F(Schema, LengthsCount16BitCharactersWithoutTrailingBlanks) {
  const QString paare = QString::fromUcs4(U"\U0001F600").repeated(25);
  EXPECT_EQ(fuege_ein(u"Key1"_s, u"'"_s + paare + u"'"_s), 0);
  EXPECT_EQ(fuege_ein(u"Key1"_s, u"'"_s + paare + u"a'"_s), fehlernummer::Anweisung);
  EXPECT_EQ(fuege_ein(u"Key1"_s, u"'"_s + QString(50, u'a') + u"   '"_s), 0);
  EXPECT_EQ(datenbank.zeilen(u"select LEN('a  '), LEN(''), LEN(NULL), LEN(12)"_s).front(),
      QStringList({u"1"_s, u"0"_s, u"<NULL>"_s, u"2"_s}));
}

TEST_F(Schema, SortIndexIsA16BitNumber) {
  for (const QString& gut : {u"-32768"_s, u"0"_s, u"32767"_s, u"NULL"_s, u"'7'"_s})
    EXPECT_EQ(fuege_ein(u"SortIndex"_s, gut), 0) << gut.toStdString();
  for (const QString& schlecht : {u"-32769"_s, u"32768"_s, u"1.5"_s, u"'x'"_s})
    EXPECT_EQ(fuege_ein(u"SortIndex"_s, schlecht), fehlernummer::Anweisung) << schlecht.toStdString();
}

TEST_F(Schema, EveryStringColumnComparesAsTheServer) {
  for (const QStringList& spalte : datenbank.zeilen(u"select name from pragma_table_info('Bild_Zuordnungen')"_s)) {
    if (spalte.first() == u"SortIndex"_s) continue;
    datenbank.fuehre_aus(u"delete from Bild_Zuordnungen"_s);
    ASSERT_EQ(fuege_ein(spalte.first(), u"'Gebäude '"_s), 0);
    EXPECT_EQ(datenbank.anzahl(spalte.first() + u" = 'GEBÄUDE'"_s), 1) << spalte.first().toStdString();
    EXPECT_EQ(datenbank.anzahl(spalte.first() + u" <> 'gebäude'"_s), 0);
  }
}

TEST_F(Schema, TheHostsTableJoinsWithoutRegardToCase) {
  datenbank.fuehre_aus(u"insert into BelegKopfZunft values ('RE', '4711', 'K1', 'P1')"_s);
  ASSERT_EQ(nummer(u"insert into Bild_Zuordnungen (Key1, Key2, Typ1) values ('re', '4711 ', 'BEL')"_s), 0);
  const QString text =
      u"SELECT TOP 100 PERCENT dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
      "dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 "
      "FROM dbo.Bild_Zuordnungen LEFT OUTER JOIN dbo.BelegKopfZunft "
      "ON dbo.Bild_Zuordnungen.Key1 = dbo.BelegKopfZunft.Belegart AND "
      "dbo.Bild_Zuordnungen.Key2 = dbo.BelegKopfZunft.Belegnummer "
      "WHERE (dbo.Bild_Zuordnungen.Typ1 = 'Mon' OR dbo.Bild_Zuordnungen.Typ1 = 'Bel') "
      "AND BelegKopfZunft.Kundennummer = 'k1'  "
      "GROUP BY dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
      "dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 "
      "ORDER BY dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, dbo.Bild_Zuordnungen.Key3"_s;
  const auto satz = datenbank.verbindung()->Execute(text);
  ASSERT_FALSE(satz->Eof());
  EXPECT_EQ(satz->Spalten(), QStringList({u"Key1"_s, u"Key2"_s, u"Key3"_s, u"Typ1"_s}));
  EXPECT_EQ(satz->Fields(u"Key1"_s).Text(), u"re"_s);
}

TEST_F(Schema, TheReadsUseAnIndex) {
  const QString satz = u"Select * from Bild_Zuordnungen  where Key1 = 'A' and Key2 = 'B'order by SortIndex"_s;
  EXPECT_TRUE(plan(satz).contains(u"USING INDEX Bild_Zuordnungen_Schluessel (Key1=? AND Key2=?)"_s));
  EXPECT_TRUE(
      plan(u"Select Top 1 Key1 from Bild_Zuordnungen where Typ1 = 'Mon'"_s).contains(u"Bild_Zuordnungen_Typ"_s));
  EXPECT_TRUE(
      plan(u"select Top 1 Key1 from Bild_Zuordnungen where Bildname = 'a' and BildExt = 'jpg' and Bildpfad = 'b'"_s)
          .contains(u"Bild_Zuordnungen_Datei (Bildname=? AND BildExt=? AND BildPfad=?)"_s));
  const QString identitaet =
      u" where Key1 = 'A' and Key2 = 'B' and Key3 = 'C' and Key4 = 'D' and Bildname = 'e' and "
      "BildExt = 'f' and Typ1 = 'g' and Typ2 = 'h'"_s;
  EXPECT_TRUE(
      plan(u"Delete from Bild_Zuordnungen "_s + identitaet).contains(u"Bild_Zuordnungen_Schluessel (Key1=? AND"_s));
}

/// What a script says of a database, in one form for both: per table its columns as "Key1 text(50) NULL", per index its
/// table and columns.
struct Beschreibung {
  QStringList tabellen;
  QStringList indexe;
  friend bool operator==(const Beschreibung&, const Beschreibung&) = default;
};

QString alle_Spalten(const QString& rumpf, bool embedded) {
  static const QRegularExpression Embedded(
      u"^  (\\w+) (TEXT COLLATE SERVERTEXT|INTEGER) (NULL|NOT NULL)\\s+CONSTRAINT \"[^\"]*\"\\s+CHECK "
      u"\\((?:LEN\\(\\1\\) <= (\\d+)\\)|\\1 IS NULL OR .* BETWEEN -32768 AND 32767\\)\\))"_s,
      QRegularExpression::MultilineOption);
  static const QRegularExpression Server(
      u"^  (\\w+) (nvarchar|char|smallint)(?:\\((\\d+)\\))? (NULL|NOT NULL)"_s, QRegularExpression::MultilineOption);
  QStringList spalten;
  for (auto lauf = (embedded ? Embedded : Server).globalMatch(rumpf); lauf.hasNext();) {
    const auto treffer = lauf.next();
    const bool ist_Zahl = treffer.captured(2) == (embedded ? u"INTEGER"_s : u"smallint"_s);
    spalten.append(treffer.captured(1) + u' ' +
        (ist_Zahl ? u"zahl"_s : u"text(%1)"_s.arg(treffer.captured(embedded ? 4 : 3))) + u' ' +
        treffer.captured(embedded ? 3 : 4));
  }
  // Each line of a column begins with its name behind two blanks; none may have been passed over.
  static const QRegularExpression Beginn(u"^  \\w"_s, QRegularExpression::MultilineOption);
  EXPECT_EQ(rumpf.count(Beginn), spalten.size()) << rumpf.toStdString();
  return spalten.join(u", "_s);
}

Beschreibung beschreibe(const QString& skript, bool embedded) {
  static const QRegularExpression Tabelle(u"CREATE TABLE (?:IF NOT EXISTS |dbo\\.)(\\w+) \\(\\n(.*?)\\n\\)"_s,
      QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression Index(
      u"CREATE INDEX (?:IF NOT EXISTS )?(\\w+)\\s+ON (?:dbo\\.)?(\\w+) (\\([^)]*\\))"_s);
  Beschreibung ergebnis;
  for (auto lauf = Tabelle.globalMatch(skript); lauf.hasNext();) {
    const auto treffer = lauf.next();
    ergebnis.tabellen.append(treffer.captured(1) + u": "_s + alle_Spalten(treffer.captured(2), embedded));
  }
  for (auto lauf = Index.globalMatch(skript); lauf.hasNext();) {
    const auto treffer = lauf.next();
    ergebnis.indexe.append(treffer.captured(1) + u" on "_s + treffer.captured(2) + u' ' + treffer.captured(3));
  }
  return ergebnis;
}

/// The columns of an index as the script names them.
QStringList schluessel(const QString& index) {
  return index.section(u'(', 1).chopped(1).split(u", "_s);
}

TEST(Schemaskripte, BothDatabasesHaveTheSameTablesColumnsLengthsAndIndexes) {
  for (const auto& [name, indexe] : {std::pair(u"Bild_Zuordnungen.sql"_s, 3), {u"Wirtstabellen_Beispiel.sql"_s, 1}}) {
    const Beschreibung embedded = beschreibe(projektdatei(u"sql/sqlite/"_s + name), true);
    const Beschreibung server = beschreibe(projektdatei(u"sql/mssql/"_s + name), false);
    ASSERT_EQ(embedded.tabellen.size(), 1);
    EXPECT_EQ(embedded.indexe.size(), indexe);
    EXPECT_EQ(embedded.tabellen, server.tabellen);
    EXPECT_EQ(embedded.indexe, server.indexe);
  }
}

TEST(Schemaskripte, EveryKeyFitsAnIndexOfTheServer) {
  const QString skript = projektdatei(u"sql/mssql/Bild_Zuordnungen.sql"_s);
  const Beschreibung server = beschreibe(skript, false);
  const QString spalten = server.tabellen.value(0);
  for (const QString& index : server.indexe) {
    int bytes = 0;
    for (const QString& spalte : schluessel(index)) {
      const QRegularExpression breite(u"\\b"_s + spalte + u" text\\((\\d+)\\)"_s);
      const auto treffer = breite.match(spalten);
      ASSERT_TRUE(treffer.hasMatch()) << spalte.toStdString();
      bytes += 2 * treffer.captured(1).toInt();
    }
    EXPECT_LE(bytes, 1700) << index.toStdString();
  }
}

TEST(Schemaskripte, TheServersScriptAddsEveryColumnOfTheTableWithItsType) {
  const QStringList anweisungen = adodb::zerlege_skript(projektdatei(u"sql/mssql/Bild_Zuordnungen.sql"_s));
  ASSERT_EQ(anweisungen.size(), 1 + Alle + 3);
  for (const QString& anweisung : anweisungen)
    EXPECT_TRUE(anweisung.contains(u"\nIF "_s) || anweisung.startsWith(u"IF "_s)) << anweisung.toStdString();
  static const QRegularExpression Spalte(u"^  (\\w+) (.*) NULL,?$"_s, QRegularExpression::MultilineOption);
  int stelle = 1;
  for (auto lauf = Spalte.globalMatch(anweisungen.first()); lauf.hasNext(); ++stelle) {
    const auto treffer = lauf.next();
    EXPECT_TRUE(anweisungen.at(stelle).endsWith(
        u"IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'%1') IS NULL\nALTER TABLE dbo.Bild_Zuordnungen ADD %1 %2 NULL"_s.arg(
            treffer.captured(1), treffer.captured(2))))
        << anweisungen.at(stelle).toStdString();
  }
  EXPECT_EQ(stelle, 1 + Alle);
}
