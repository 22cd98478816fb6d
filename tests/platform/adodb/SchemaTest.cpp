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

/// Columns and lengths of a script's table, "Key1 50" and so on.
QStringList laengen(const QString& skript, const QString& muster) {
  QStringList gefunden;
  auto treffer = QRegularExpression(muster, QRegularExpression::MultilineOption).globalMatch(skript);
  while (treffer.hasNext()) {
    const auto einer = treffer.next();
    gefunden.append(einer.captured(1) + u' ' + einer.captured(2));
  }
  return gefunden;
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
  const QList<std::pair<QString, int>> spalten = {{u"Key1"_s, 50},
                                                  {u"Key2"_s, 50},
                                                  {u"Key3"_s, 50},
                                                  {u"Key4"_s, 50},
                                                  {u"Bildname"_s, 50},
                                                  {u"BildExt"_s, 200},
                                                  {u"Typ1"_s, 200},
                                                  {u"Typ2"_s, 200},
                                                  {u"BildPfad"_s, 250},
                                                  {u"Beschreibung"_s, 250},
                                                  {u"Druckkennzeichen"_s, 50},
                                                  {u"Grafik_Ursprung"_s, 250},
                                                  {u"GrafikAnbNr"_s, 250}};
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

TEST(Schemaskripte, BothDatabasesHaveTheSameColumnsAndLengths) {
  for (const QString& name : {u"Bild_Zuordnungen.sql"_s, u"Wirtstabellen_Beispiel.sql"_s}) {
    const QStringList embedded =
        laengen(projektdatei(u"sql/sqlite/"_s + name), u"CHECK \\(LEN\\((\\w+)\\) <= (\\d+)\\)"_s);
    const QStringList server = laengen(projektdatei(u"sql/mssql/"_s + name), u"^  (\\w+) n?(?:var)?char\\((\\d+)\\)"_s);
    EXPECT_FALSE(embedded.isEmpty());
    EXPECT_EQ(embedded, server);
  }
}

TEST(Schemaskripte, TheServersScriptIsFourStatementsWhoseKeysFitAnIndex) {
  const QStringList anweisungen = adodb::zerlege_skript(projektdatei(u"sql/mssql/Bild_Zuordnungen.sql"_s));
  ASSERT_EQ(anweisungen.size(), 4);
  for (const QString& anweisung : anweisungen)
    EXPECT_TRUE(anweisung.contains(u"\nIF "_s) || anweisung.startsWith(u"IF "_s));
  const QStringList spalten = laengen(anweisungen.first(), u"  (\\w+) nvarchar\\((\\d+)\\)"_s);
  int bytes = 0;
  for (int i = 0; i < 8; ++i) bytes += 2 * spalten.value(i).section(u' ', 1).toInt();
  EXPECT_LE(bytes, 1700);
}
