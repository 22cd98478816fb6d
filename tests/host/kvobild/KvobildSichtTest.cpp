// The check of a firm's records, and when a database gets a place for them.
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>

#include "platform/adodb/Connection.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A firm's database: its own tables, ours for the assignments, and a view of its records over a table that takes
/// anything.
class KvobildSicht : public Betrieb {
 protected:
  KvobildSicht() {
    QFile::remove(datenbank());
    adodb::Connection neue;
    neue.Open(u"Provider=SQLite;Mode=ReadWriteCreate;Data Source="_s + datenbank());
    neue.Execute(u"create table Kunden (Nr text)"_s);
    neue.Execute(u"create table Auftraege (Art, Nr1, Nr2, Nr3, Wort, Ablage, Zeit)"_s);
    neue.Close();
    angelegt_ = kvobild({u"datenbank"_s, u"anlegen"_s, u"--beispieltabellen"_s, u"--verbindung"_s, datenbank()});
    EXPECT_EQ(angelegt_.code, 0) << angelegt_.meldungen.toStdString();
  }
  void mache_Sicht(const QString& spalten =
                       u"Art AS Typ1, Nr1 AS Key1, Nr2 AS Key2, Nr3 AS Key3, Wort AS Bezeichnung, Ablage AS Ordner, "
                       "Zeit AS Stand"_s) const {
    sql(u"create view Bild_Vorgaenge as select %1 from Auftraege"_s.arg(spalten));
  }
  void nimm(const QString& werte) const { sql(u"insert into Auftraege values (%1)"_s.arg(werte)); }
  void ersetze(const QString& werte) const {
    sql(u"delete from Auftraege"_s);
    nimm(werte);
  }
  Lauf pruefe(const QStringList& argumente = {}) const {
    return kvobild(QStringList{u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, datenbank()} + argumente);
  }
  Lauf pruefe_Json() const { return pruefe({u"--json"_s}); }

  Lauf angelegt_;
};

/// Seven values of a record, one of them replaced.
QString mit(int stelle, const QString& wert) {
  QStringList werte{u"'BEL'"_s, u"'AB'"_s, u"'1'"_s, u"''"_s, u"'Huber'"_s, u"NULL"_s, u"NULL"_s};
  werte[stelle] = wert;
  return werte.join(u", "_s);
}

QString lang(int zeichen) {
  return u'\'' + QString(zeichen, u'ä') + u'\'';
}

}  // namespace

TEST_F(KvobildSicht, WithoutTheViewThereIsANoteAndNoFinding) {
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.endsWith(
      u"Hinweis: Ohne die Sicht Bild_Vorgaenge zeigt bildzuordnung nur Vorgänge, die Bilder haben.\n"
      "Ergebnis:         kein Befund\n"_s))
      << lauf.ausgabe.toStdString();
  EXPECT_EQ(kennungen(pruefe_Json()), QStringList());
  EXPECT_EQ(kennungen(pruefe_Json(), u"hinweis"_s), QStringList{u"sicht_fehlt"_s});
}

TEST_F(KvobildSicht, AGoodViewHasNoFinding) {
  mache_Sicht();
  nimm(u"'BEL', 'AB', '24-1', '', 'Huber', 'Belege\\24-1', '2026-11-22 09:15:00'"_s);
  nimm(u"'mon', 'AB', '24-1', '2', NULL, '', '2024-02-29T23:59:59.123'"_s);
  nimm(u"'ART  ', %1 || '    ', '  ', '', %2, %2, '2026-11-22'"_s.arg(lang(50), lang(250)));
  nimm(u"'ANL', '1', '2', '3', '', '.verborgen\\a..b', '2026-12-31 00:00'"_s);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"Bild_Vorgaenge:   7 von 7 Spalten; SELECT ja\nVorgänge:         4\n"_s))
      << lauf.ausgabe.toStdString();
  EXPECT_FALSE(lauf.ausgabe.contains(u"Hinweis"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.endsWith(u"Ergebnis:         kein Befund\n"_s));
}

TEST_F(KvobildSicht, EachFaultOfARecordIsFoundByItself) {
  mache_Sicht();
  QList<std::pair<QString, QString>> faelle{{mit(0, u"NULL"_s), u"vorgang_leer"_s},
      {mit(0, u"' '"_s), u"vorgang_leer"_s}, {mit(1, u"NULL"_s), u"vorgang_leer"_s},
      {mit(1, u"''"_s), u"vorgang_leer"_s}, {mit(2, u"NULL"_s), u"vorgang_null"_s},
      {mit(3, u"NULL"_s), u"vorgang_null"_s}};
  for (int teil = 0; teil < 4; ++teil) {
    faelle.append({mit(teil, u"'- '"_s), u"vorgang_strich"_s});
    faelle.append({mit(teil, lang(51)), u"vorgang_lang"_s});
    faelle.append({mit(teil, u"'O''Neil'"_s), u"vorgang_hochkomma"_s});
    faelle.append({mit(teil, u"7"_s), u"vorgang_zahl"_s});
  }
  for (const QString& ordner : {u"..\\x"_s, u"a\\..\\..\\x"_s, u"C:\\x"_s, u"\\\\srv\\x"_s, u"\\x"_s, u"a\\\\b"_s,
           u"a/../x"_s, u"x\\"_s, u"a?b"_s})
    faelle.append({mit(5, u'\'' + ordner + u'\''), u"ordner_verlaesst"_s});
  faelle.append({mit(5, lang(251)), u"ordner_lang"_s});
  for (const QString& stand : {u"'gestern'"_s, u"'22.11.2026'"_s, u"'2026-13-01'"_s, u"'2026-00-01'"_s,
           u"'2026-02-30 08:00:00'"_s, u"'2026-02-31'"_s, u"'2026-04-31'"_s, u"'2026-06-31'"_s, u"'2026-09-31'"_s,
           u"'2026-11-31'"_s, u"'2026-11-32'"_s, u"'2026-11-22 24:00:00'"_s, u"'2026-11-22 09:60:00'"_s,
           u"'2026-11-22 09:15:60'"_s, u"'2026-11-22 09:15:'"_s, u"'2026-11-22-09:15:00'"_s, u"'2026-11-22 9:15'"_s,
           u"'x026-11-22'"_s, u"''"_s, u"1700000000"_s, u"45000.5"_s})
    faelle.append({mit(6, stand), u"stand_kein_datum"_s});
  const QString gute = u"2026-11-22 09:15:00"_s;
  for (int i = 0; i < gute.size(); ++i)
    faelle.append({mit(6, u'\'' + gute.left(i) + u'x' + gute.mid(i + 1) + u'\''), u"stand_kein_datum"_s});
  for (const auto& [werte, kennung] : faelle) {
    ersetze(werte);
    const Lauf lauf = pruefe_Json();
    EXPECT_EQ(lauf.code, 1) << werte.toStdString();
    EXPECT_EQ(kennungen(lauf), QStringList{kennung}) << werte.toStdString() << lauf.ausgabe.toStdString();
    EXPECT_EQ(befund(lauf, kennung)[u"anzahl"_s].toInt(), 1) << werte.toStdString();
    EXPECT_EQ(befund(lauf, kennung)[u"zeilen"_s].toArray().size(), 1) << werte.toStdString();
  }
}

TEST_F(KvobildSicht, AFindingNamesItsFirstTwentyRecordsAndAllOfThemByNumber) {
  mache_Sicht();
  for (int i = 0; i < 25; ++i) nimm(u"'BEL', 'AB', '%1', NULL, 'x', NULL, NULL"_s.arg(i, 2, 10, QChar(u'0')));
  const QJsonObject einer = befund(pruefe_Json(), u"vorgang_null"_s);
  EXPECT_EQ(einer[u"anzahl"_s].toInt(), 25);
  ASSERT_EQ(einer[u"zeilen"_s].toArray().size(), 20);
  EXPECT_EQ(einer[u"zeilen"_s].toArray().at(0).toObject()[u"key2"_s].toString(), u"00"_s);
  EXPECT_TRUE(einer[u"zeilen"_s].toArray().at(0).toObject()[u"key3"_s].isNull());
  const QString text = pruefe().ausgabe;
  EXPECT_TRUE(text.contains(
      u"Befund: Vorgänge mit NULL in Key2 oder Key3 (statt ''): 25. Unter „Zuletzt bearbeitet“ fehlen sie.\n"
      "  BEL AB 00 NULL\n"_s))
      << text.toStdString();
  EXPECT_TRUE(text.contains(u"  BEL AB 19 NULL\n  … und weitere\n"_s)) << text.toStdString();
}

TEST_F(KvobildSicht, KeysAreTheSameWhereTheAssignmentsTakeThemForTheSame) {
  mache_Sicht();
  nimm(u"'BEL', 'AB', 'Ä1', '', 'x', NULL, NULL"_s);
  nimm(u"'bel', 'ab  ', 'ä1', '', 'y', NULL, NULL"_s);
  nimm(u"'BEL', 'AB', 'Ä2', '', 'x', NULL, NULL"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(kennungen(lauf), QStringList{u"vorgang_doppelt"_s});
  EXPECT_EQ(befund(lauf, u"vorgang_doppelt"_s)[u"anzahl"_s].toInt(), 1);
  EXPECT_TRUE(pruefe().ausgabe.contains(u" (2-mal)\n"_s));
}

TEST_F(KvobildSicht, KindsWithoutANameAndLongTextsAreNotes) {
  mache_Sicht();
  nimm(u"'bel', '1', '', '', 'x', NULL, NULL"_s);
  for (const QString& art : {u"Wartung"_s, u"WARTUNG"_s, u"Angebot"_s})
    nimm(u"'%1', '%1', '', '', 'x', NULL, NULL"_s.arg(art).replace(u"'WARTUNG', ''"_s, u"'W2', ''"_s));
  nimm(u"'ART', '4', '', '', %1, NULL, NULL"_s.arg(lang(4000)));
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString();
  EXPECT_EQ(kennungen(lauf, u"hinweis"_s), (QStringList{u"bezeichnung_lang"_s, u"art_unbekannt"_s}));
  EXPECT_EQ(befund(lauf, u"art_unbekannt"_s)[u"anzahl"_s].toInt(), 2);
  const QString text = pruefe().ausgabe;
  EXPECT_TRUE(text.contains(u"Hinweis: Arten, die keinen eigenen Namen haben: 2."_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"  Angebot (1-mal)\n"_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"  ART 4 '' '' (4000 Zeichen)\n"_s)) << text.toStdString();
  EXPECT_TRUE(text.endsWith(u"Ergebnis:         kein Befund\n"_s));
}

TEST_F(KvobildSicht, ALineStaysALineWhateverAValueHolds) {
  mache_Sicht();
  nimm(mit(1, lang(4000)));
  nimm(mit(5, u"'..\\' || "_s + lang(4000)));
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 1);
  for (const QString& zeile : lauf.zeilen()) EXPECT_LT(zeile.size(), 250) << zeile.toStdString();
  EXPECT_EQ(
      befund(pruefe_Json(), u"vorgang_lang"_s)[u"zeilen"_s].toArray().at(0).toObject()[u"key1"_s].toString().size(),
      4000);
}

TEST_F(KvobildSicht, AMissingColumnIsExitCode3AndIsNamed) {
  mache_Sicht(u"Art AS Typ1, Nr1 AS Key1, Nr2 AS Key2, Nr3 AS Nummer3, Wort AS Bezeichnung, Ablage AS Ordner"_s);
  nimm(mit(0, u"NULL"_s));
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_EQ(kennungen(lauf), (QStringList{u"spalte_fehlt"_s, u"spalte_fehlt"_s}));
  const QString text = pruefe().ausgabe;
  EXPECT_TRUE(text.contains(u"Bild_Vorgaenge:   5 von 7 Spalten; SELECT ja\n"_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"Die Spalte Bild_Vorgaenge.Key3 fehlt; erwartet ist ein Text."_s));
  EXPECT_TRUE(text.contains(u"Die Spalte Bild_Vorgaenge.Stand fehlt; erwartet ist ein Datum mit Zeit."_s));
}

TEST_F(KvobildSicht, AMoreColumnOfTheFirmDoesNoHarm) {
  mache_Sicht(
      u"Zeit AS Stand, Art AS TYP1, Nr1 AS Key1, Nr2 AS Key2, Nr3 AS Key3, Wort AS Bezeichnung, Ablage AS "
      "Ordner, 5 AS Eigenes"_s);
  nimm(mit(0, u"'BEL'"_s));
  EXPECT_EQ(pruefe().code, 0) << pruefe().ausgabe.toStdString();
}

TEST_F(KvobildSicht, AColumnThatIsNoTextIsNamed) {
  sql(u"create table Bild_Vorgaenge (Typ1 TEXT, Key1 INTEGER, Key2 VARCHAR(50), Key3 TEXT, Bezeichnung TEXT, Ordner "
      u"BLOB, "
      "Stand DATETIME)"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(kennungen(lauf), (QStringList{u"spalte_typ"_s, u"spalte_typ"_s}));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Die Spalte Bild_Vorgaenge.Key1 ist „integer“; erwartet ist ein Text."_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Bild_Vorgaenge.Ordner ist „blob“"_s));
}

TEST_F(KvobildSicht, AViewWhoseTableIsGoneIsBrokenAndNotMissing) {
  mache_Sicht();
  sql(u"drop table Auftraege"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 3) << lauf.ausgabe.toStdString();
  EXPECT_EQ(kennungen(lauf), QStringList{u"recht_fehlt"_s});
  EXPECT_EQ(kennungen(lauf, u"hinweis"_s), QStringList());
  EXPECT_TRUE(lauf.ausgabe.contains(u"SELECT auf Bild_Vorgaenge ist nicht erlaubt oder geht nicht"_s));
  EXPECT_TRUE(pruefe().ausgabe.contains(u"Bild_Vorgaenge:   0 von 7 Spalten; SELECT NEIN\n"_s));
}

TEST_F(KvobildSicht, AViewThatFailsAtARowIsExitCode3) {
  mache_Sicht(
      u"Art AS Typ1, Nr1 AS Key1, Nr2 AS Key2, Nr3 AS Key3, Wort AS Bezeichnung, Ablage AS Ordner, "
      "abs(Zeit) AS Stand"_s);
  EXPECT_EQ(pruefe().code, 0) << pruefe().ausgabe.toStdString();
  nimm(mit(6, u"-9223372036854775808"_s));
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_EQ(kennungen(lauf), QStringList{u"sicht_antwortet_nicht"_s}) << lauf.ausgabe.toStdString();
}

TEST_F(KvobildSicht, TheNumberOfStatementsDoesNotGrowWithTheRecords) {
  mache_Sicht();
  sql(u"with recursive n(i) as (select 0 union all select i + 1 from n where i < 49999) insert into Auftraege "
      "select case i % 2 when 0 then 'BEL' else 'ART' end, 'AB', printf('%06d', i / 2), '', 'Kunde ' || i, "
      "'Belege\\' || i, '2026-11-22 09:15:00' from n"_s);
  QElapsedTimer uhr;
  uhr.start();
  const Lauf lauf = pruefe();
  // Half a second; work for each record at the database takes minutes.
  EXPECT_LT(uhr.elapsed(), 30'000);
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"Vorgänge:         50000\n"_s));
}

/// Tables of our own behind the view.
class KvobildEigeneVorgaenge : public Betrieb {
 protected:
  KvobildEigeneVorgaenge() {
    EXPECT_EQ(kvobild({u"anlegen"_s, u"--beispieltabellen"_s, u"--verbindung"_s, datenbank()}).code, 0);
    sql(u"insert into Vorgaenge (Typ1, Key1, Text) values ('BEL', '1', 'Heizkessel'), ('ART', '2', 'Rohr')"_s);
  }
  Lauf pruefe_Json(const QString& verbindung) const {
    return kvobild({u"datenbank"_s, u"pruefen"_s, u"--json"_s, u"--verbindung"_s, verbindung});
  }
};

TEST_F(KvobildEigeneVorgaenge, ASearchIndexThatIsNotInStepIsFound) {
  EXPECT_EQ(pruefe_Json(datenbank()).code, 0) << pruefe_Json(datenbank()).ausgabe.toStdString();
  for (const auto& [tabelle, spalte] :
      {std::pair(u"Vorgaenge_Text"_s, u"Suchtext"_s), {u"Vorgaenge_Anfang"_s, u"Wortanfaenge"_s}}) {
    sql(u"insert into %1 (rowid, %2) values (77, 'keiner')"_s.arg(tabelle, spalte));
    const Lauf lauf = pruefe_Json(datenbank());
    EXPECT_EQ(lauf.code, 1);
    EXPECT_EQ(kennungen(lauf), QStringList{u"suchindex"_s}) << lauf.ausgabe.toStdString();
    EXPECT_TRUE(lauf.ausgabe.contains(u"Der Suchindex %1 passt nicht"_s.arg(tabelle)));
    sql(u"insert into %1 (%1) values ('rebuild')"_s.arg(tabelle));
    EXPECT_EQ(pruefe_Json(datenbank()).code, 0);
  }
}

TEST_F(KvobildEigeneVorgaenge, TheIndexIsNotCheckedWhereNothingCanBeWritten) {
  const Lauf lauf = pruefe_Json(u"Provider=SQLite;Mode=ReadOnly;Data Source="_s + datenbank());
  EXPECT_EQ(kennungen(lauf), (QStringList{u"recht_fehlt"_s, u"recht_fehlt"_s, u"recht_fehlt"_s}));
  EXPECT_EQ(kennungen(lauf, u"hinweis"_s), (QStringList{u"suchindex_ungeprueft"_s, u"suchindex_ungeprueft"_s}))
      << lauf.ausgabe.toStdString();
}

TEST_F(KvobildEigeneVorgaenge, ADataFolderHasNoFinding) {
  const QString beispiel = ordner_.pfad(u"beispiel"_s);
  ASSERT_EQ(kvobild({u"beispieldaten"_s, beispiel}).code, 0);
  const Lauf lauf = kvobild({u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, beispiel + u"/betrieb.db"_s,
      u"--bilder"_s, beispiel + u"/bilder"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString() << lauf.meldungen.toStdString();
  EXPECT_FALSE(lauf.ausgabe.contains(u"Hinweis"_s)) << lauf.ausgabe.toStdString();
}

TEST_F(KvobildEigeneVorgaenge, ADatabaseThatHasAssignmentsGetsNoRecordsThatWouldHideThem) {
  const QString alte = ordner_.pfad(u"alte.db"_s);
  const QStringList aufruf{u"datenbank"_s, u"anlegen"_s, u"--verbindung"_s, alte};
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Mode=ReadWriteCreate;Data Source="_s + alte);
  verbindung.Execute(u"create table Bild_Zuordnungen (Key1 TEXT COLLATE SERVERTEXT)"_s);
  const Lauf lauf = kvobild(aufruf);
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"Spalte ergänzt: Bild_Zuordnungen.Key2\n"_s));
  EXPECT_FALSE(lauf.ausgabe.contains(u"Bild_Vorgaenge"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(
      verbindung.Execute(u"select 1 from sqlite_master where name in ('Bild_Vorgaenge', 'Vorgaenge')"_s)->Eof());
  EXPECT_TRUE(kvobild(aufruf).ausgabe.isEmpty());
}

TEST_F(KvobildSicht, WhereANameIsTakenTheTablesOfTheFirmStayAndNothingIsSaidOfTheView) {
  EXPECT_TRUE(angelegt_.ausgabe.startsWith(u"Tabelle angelegt: Bild_Zuordnungen\n"_s))
      << angelegt_.ausgabe.toStdString();
  EXPECT_FALSE(angelegt_.ausgabe.contains(u"Bild_Vorgaenge"_s)) << angelegt_.ausgabe.toStdString();
  EXPECT_TRUE(angelegt_.meldungen.isEmpty()) << angelegt_.meldungen.toStdString();
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank());
  EXPECT_EQ(verbindung.Execute(u"select group_concat(name) from pragma_table_info('Kunden')"_s)->Text(0), u"Nr"_s);
  EXPECT_TRUE(verbindung.Execute(u"select 1 from sqlite_master where name like '%Vorgaenge%'"_s)->Eof());
  const Lauf zweiter = kvobild({u"datenbank"_s, u"anlegen"_s, u"--verbindung"_s, datenbank()});
  EXPECT_EQ(zweiter.code, 0);
  EXPECT_TRUE(zweiter.ausgabe.isEmpty());
}
