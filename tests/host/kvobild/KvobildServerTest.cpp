// The command line against the server of tests/tds, once with SQLite behind it and once with H2.
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <map>

#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/host/kvobild/Kvobild.h"
#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Benutzer = u"pruefer"_s;
const QString Kennwort = u"Ge;he}im'ä€"_s;

class KvobildServer : public ::testing::TestWithParam<Tdsserver::Maschine> {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(GetParam()); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    auto& einer = alle()[GetParam()];
    if (!einer)
      einer = std::make_unique<Tdsserver>(
          Benutzer, Kennwort, GetParam(), QStringList{u"--ohne-tabellen"_s, u"--datenbank"_s, u"betrieb"_s});
    ASSERT_TRUE(einer->laeuft());
    server().steuere(u"heile"_s);
    for (const QString& tabelle : {u"Bild_Zuordnungen"_s, u"BelegKopfZunft"_s, u"Bild_Vorgaenge"_s, u"Kunden"_s})
      server().steuere(u"sql drop table if exists "_s + tabelle);
  }
  static void TearDownTestSuite() { alle().clear(); }

  static std::map<Tdsserver::Maschine, std::unique_ptr<Tdsserver>>& alle() {
    static std::map<Tdsserver::Maschine, std::unique_ptr<Tdsserver>> server;
    return server;
  }
  Tdsserver& server() const { return *alle()[GetParam()]; }
  QString verbindung(const QString& kennwort = Kennwort, const QString& datenbank = u"betrieb"_s) const {
    return u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=%2;User ID=%3;Driver=FreeTDS;Password="_s.arg(
               QString::number(server().port()), datenbank, Benutzer) +
        adodb::Verbindungszeichenfolge::als_wert(kennwort);
  }
  Lauf fuehre(const QStringList& worte, const QStringList& weitere = {}) const {
    const Lauf lauf = kvobild(worte + QStringList{u"--verbindung"_s, verbindung()} + weitere);
    EXPECT_FALSE((lauf.ausgabe + lauf.meldungen).contains(Kennwort));
    return lauf;
  }
  Lauf pruefe(const QStringList& weitere = {}) const { return fuehre({u"datenbank"_s, u"pruefen"_s}, weitere); }
  Lauf lege_an() const { return fuehre({u"datenbank"_s, u"anlegen"_s}, {u"--beispieltabellen"_s}); }
  QJsonArray sql(const QString& text) const {
    return QJsonDocument::fromJson(server().steuere(u"sql "_s + text).toUtf8()).array();
  }
  QStringList kennungen(const QString& art = u"befund"_s) const { return ::kennungen(pruefe({u"--json"_s}), art); }
  /// Which question of a check is the first for the records, as the server is told it.
  QString frage_nach_Vorgaengen() const {
    server().steuere(u"protokoll-leeren"_s);
    EXPECT_EQ(pruefe().code, 0);
    int fragen = 0;
    for (const QString& text : server().stapel()) {
      if (text.startsWith(u"SELECT"_s)) ++fragen;
      if (text == u"SELECT 1 FROM Bild_Vorgaenge WHERE 1 = 0"_s) break;
    }
    return u"%1/SELECT"_s.arg(fragen);
  }
  void zeile(const QString& werte) const {
    sql(u"insert into Bild_Zuordnungen (Typ1, Typ2, Key1, Key2, Key3, key4, Bildname, BildExt, BildPfad) values "_s +
        werte);
  }
};

}  // namespace

TEST_P(KvobildServer, CreatingMakesEverythingAndASecondRunNothing) {
  const Lauf erster = lege_an();
  EXPECT_EQ(erster.code, 0) << erster.meldungen.toStdString();
  EXPECT_TRUE(erster.zeilen().contains(u"Tabelle angelegt: Bild_Zuordnungen"_s));
  EXPECT_TRUE(erster.zeilen().contains(u"Tabelle angelegt: BelegKopfZunft"_s));
  EXPECT_TRUE(erster.zeilen().contains(u"Tabelle angelegt: Bild_Vorgaenge"_s));
  EXPECT_EQ(erster.zeilen().size(), 7) << erster.ausgabe.toStdString();
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  const Lauf zweiter = lege_an();
  EXPECT_EQ(zweiter.code, 0) << zweiter.meldungen.toStdString();
  EXPECT_TRUE(zweiter.ausgabe.isEmpty());
  EXPECT_TRUE(zweiter.meldungen.contains(u"bestehen schon"_s));
  EXPECT_EQ(sql(u"select count(*) from Bild_Zuordnungen"_s).at(0).toArray().at(0).toInt(), 1);
}

TEST_P(KvobildServer, TheShortFormDoesTheSame) {
  EXPECT_EQ(fuehre({u"anlegen"_s}).zeilen().size(), 5);
  EXPECT_TRUE(fuehre({u"datenbank"_s, u"anlegen"_s}).meldungen.contains(u"besteht schon"_s));
}

TEST_P(KvobildServer, CheckingSaysWhatIsReachedAndFindsNothing) {
  ASSERT_EQ(lege_an().code, 0);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString() << lauf.meldungen.toStdString();
  for (const QString& text :
      {u"Erreicht:         TDSPRUEFLING\n"_s, u"Microsoft SQL Server 15.0.2000.5, Express Edition\n"_s,
          u"Datenbank:        betrieb\n"_s, u"Benutzer:         pruefer\n"_s, u"Verschlüsselung:  nein\n"_s,
          u"Bild_Zuordnungen: 14 von 14 Spalten; SELECT ja, INSERT ja, UPDATE ja, DELETE ja\n"_s,
          u"BelegKopfZunft:   4 von 4 Spalten; SELECT ja\n"_s, u"Bild_Vorgaenge:   7 von 7 Spalten; SELECT ja\n"_s,
          u"Vorgänge:         0\n"_s, u"Ergebnis:         kein Befund\n"_s})
    EXPECT_TRUE(lauf.ausgabe.contains(text)) << text.toStdString() << lauf.ausgabe.toStdString();
}

TEST_P(KvobildServer, AnEmptyDatabaseIsExitCode3) {
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.contains(u"Die Tabelle Bild_Zuordnungen fehlt; „kvobild datenbank anlegen“"_s));
  const Lauf lesen = fuehre({u"lesen"_s});
  EXPECT_EQ(lesen.code, 3);
  EXPECT_TRUE(lesen.meldungen.contains(u"anlegen"_s));
}

TEST_P(KvobildServer, AnOldTableGetsItsColumnsAndKeepsItsRows) {
  sql(u"create table dbo.Bild_Zuordnungen (Key1 nvarchar(50) NULL, Key2 nvarchar(50) NULL, Key3 nvarchar(50) NULL, "
      "key4 nvarchar(50) NULL, Bildname nvarchar(50) NULL, BildExt nvarchar(200) NULL, Typ1 nvarchar(200) NULL, "
      "Typ2 nvarchar(200) NULL, BildPfad nvarchar(250) NULL, Beschreibung nvarchar(100) NULL, "
      "Druckkennzeichen char(50) NULL, Grafik_Ursprung nvarchar(250) NULL)"_s);
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  const Lauf lauf = lege_an();
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.zeilen().contains(u"Spalte ergänzt: Bild_Zuordnungen.GrafikAnbNr"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.zeilen().contains(u"Spalte ergänzt: Bild_Zuordnungen.SortIndex"_s));
  EXPECT_EQ(
      sql(u"select Key2, SortIndex from Bild_Zuordnungen"_s).at(0).toArray(), (QJsonArray{u"1"_s, QJsonValue::Null}));
  // The narrower column stays, and is told.
  EXPECT_EQ(kennungen(), QStringList{u"spalte_kurz"_s});
  EXPECT_EQ(pruefe().code, 1);
}

TEST_P(KvobildServer, TypeNullabilityAndWidthOfTheColumnsAreChecked) {
  sql(u"create table dbo.Bild_Zuordnungen (Key1 nvarchar(50) NULL, Key2 nvarchar(50) NULL, Key3 nvarchar(50) NULL, "
      "key4 nvarchar(50) NULL, Bildname nchar(50) NULL, BildExt nvarchar(250) NULL, Typ1 nvarchar(200) NULL, "
      "Typ2 varchar(200) NULL, BildPfad nvarchar(250) NOT NULL, Beschreibung nvarchar(250) NULL, "
      "Druckkennzeichen char(50) NULL, Grafik_Ursprung nvarchar(250) NULL, GrafikAnbNr nvarchar(250) NULL, "
      "SortIndex nvarchar(10) NULL)"_s);
  sql(u"create table dbo.BelegKopfZunft (Belegart nvarchar(20) NULL, Belegnummer int NULL, Kundennummer nvarchar(50) "
      "NULL, Projektnummer nvarchar(50) NULL)"_s);
  const QString alles = pruefe().ausgabe;
  EXPECT_TRUE(alles.contains(u"BildPfad nimmt kein NULL"_s)) << alles.toStdString();
  EXPECT_TRUE(alles.contains(u"SortIndex ist „nvarchar“"_s));
  EXPECT_TRUE(alles.contains(u"Belegnummer ist „int“"_s));
  // A host's own numbers may be as short as they are.
  EXPECT_FALSE(alles.contains(u"Belegart"_s)) << alles.toStdString();
  EXPECT_FALSE(alles.contains(u"Typ2"_s)) << alles.toStdString();
}

TEST_P(KvobildServer, AForeignColumnIsAFindingOnlyWhereItPreventsNewRows) {
  const QString anfang = u"create table dbo.Bild_Zuordnungen (Frei int NULL, Vorgabe int NOT NULL DEFAULT 0"_s;
  sql(anfang + u')');
  ASSERT_EQ(lege_an().code, 0);
  EXPECT_EQ(pruefe().code, 0) << pruefe().ausgabe.toStdString();
  sql(u"drop table Bild_Zuordnungen"_s);
  sql(anfang + u", Pflicht nvarchar(5) NOT NULL)"_s);
  ASSERT_EQ(lege_an().code, 0);
  EXPECT_EQ(kennungen(), QStringList{u"spalte_fremd"_s});
  EXPECT_EQ(pruefe().code, 3);
}

TEST_P(KvobildServer, AMissingRightIsNamedAndTheOthersAreTriedToo) {
  ASSERT_EQ(lege_an().code, 0);
  server().steuere(u"fehler */insert 229 14 The INSERT permission was denied on the object 'Bild_Zuordnungen'."_s);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.contains(u"SELECT ja, INSERT NEIN, UPDATE ja, DELETE ja"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"INSERT auf Bild_Zuordnungen ist nicht erlaubt"_s));
}

TEST_P(KvobildServer, WithoutTheRightToItTheEncryptionCannotBeLearned) {
  ASSERT_EQ(lege_an().code, 0);
  server().steuere(u"fehler 2/SELECT 300 14 VIEW SERVER STATE permission was denied on object 'server'."_s);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"nicht festzustellen (dem Benutzer fehlt das Recht VIEW SERVER STATE)"_s))
      << lauf.ausgabe.toStdString();
}

TEST_P(KvobildServer, FindingsInTheRowsAreTheSameAsOnSQLite) {
  ASSERT_EQ(lege_an().code, 0);
  for (int i = 0; i < 2; ++i) zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  zeile(u"('BEL', '-', 'AB', '2', NULL, '', 'ä', 'jpg', 'x')"_s);
  const Testordner ordner;
  ordner.schreibe(u"x/b.jpg"_s, "b");
  const Lauf lauf = pruefe({u"--bilder"_s, ordner.pfad()});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.ausgabe.contains(u"  BEL - AB 2 NULL '': x\\ä.jpg\n"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"  BEL - AB 1 - -: b.jpg (2-mal)\n"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Zeilen, deren Bild in der Ablage fehlt: 1."_s));
}

TEST_P(KvobildServer, RecordsAreCheckedAsOnSQLite) {
  ASSERT_EQ(lege_an().code, 0);
  sql(u"drop table Bild_Vorgaenge"_s);
  EXPECT_EQ(kennungen(), QStringList());
  EXPECT_EQ(kennungen(u"hinweis"_s), QStringList{u"sicht_fehlt"_s});
  EXPECT_EQ(pruefe().code, 0);
  // As a firm's view gives them, without conditions; a date may be a text there.
  sql(u"create table dbo.Bild_Vorgaenge (Typ1 nvarchar(60) NULL, Key1 nvarchar(60) NULL, Key2 nvarchar(60) NULL, "
      "Key3 nvarchar(60) NULL, Bezeichnung nvarchar(4000) NULL, Ordner nvarchar(300) NULL, Stand nvarchar(30) NULL)"_s);
  const auto nimm = [&](const QString& werte) { sql(u"insert into Bild_Vorgaenge values (%1)"_s.arg(werte)); };
  nimm(u"'BEL', 'AB', '1', '', 'Größe', 'Belege\\1', '2026-11-22 09:15:00'"_s);
  nimm(u"'art', '%1', '  ', '', NULL, NULL, NULL"_s.arg(QString(50, u'x')));
  EXPECT_EQ(pruefe().code, 0) << pruefe().ausgabe.toStdString();
  nimm(u"'bel', 'ab', '1', '', NULL, NULL, NULL"_s);
  nimm(u"NULL, 'AB', '2', '', NULL, NULL, NULL"_s);
  nimm(u"'BEL', 'AB', NULL, '', NULL, NULL, NULL"_s);
  nimm(u"'BEL', 'AB', '-', '', NULL, NULL, NULL"_s);
  nimm(u"'BEL', 'AB', '%1', '', NULL, NULL, NULL"_s.arg(QString(51, u'x')));
  nimm(u"'BEL', 'O''Neil', '', '', NULL, NULL, NULL"_s);
  nimm(u"'Wartung', '1', '', '', '%1', NULL, NULL"_s.arg(QString(4000, u'x')));
  nimm(u"'BEL', 'AB', '3', '', NULL, '..\\x', NULL"_s);
  nimm(u"'BEL', 'AB', '4', '', NULL, '%1', NULL"_s.arg(QString(251, u'x')));
  nimm(u"'BEL', 'AB', '5', '', NULL, NULL, '22.11.2026'"_s);
  EXPECT_EQ(kennungen(),
      (QStringList{u"vorgang_leer"_s, u"vorgang_null"_s, u"vorgang_strich"_s, u"vorgang_lang"_s, u"vorgang_hochkomma"_s,
          u"stand_kein_datum"_s, u"vorgang_doppelt"_s, u"ordner_verlaesst"_s, u"ordner_lang"_s}));
  EXPECT_EQ(kennungen(u"hinweis"_s), (QStringList{u"bezeichnung_lang"_s, u"art_unbekannt"_s}));
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 1);
  for (const QString& text : {u"  BEL AB NULL ''\n"_s, u"  BEL AB 5 '': 22.11.2026\n"_s, u"  ..\\x (1-mal)\n"_s,
           u"  Wartung 1 '' '' (4000 Zeichen)\n"_s, u"  Wartung (1-mal)\n"_s, u"1 '' (2-mal)\n"_s})
    EXPECT_TRUE(lauf.ausgabe.contains(text)) << text.toStdString() << lauf.ausgabe.toStdString();
}

TEST_P(KvobildServer, AViewWithAColumnOfAnotherTypeIsNotAskedForItsValues) {
  ASSERT_EQ(lege_an().code, 0);
  sql(u"drop table Bild_Vorgaenge"_s);
  sql(u"create table dbo.Bild_Vorgaenge (Typ1 nvarchar(50) NULL, Key1 int NULL, Key2 nvarchar(50) NULL, "
      "Key3 nchar(50) NULL, Bezeichnung nvarchar(250) NULL, Ordner nvarchar(250) NULL, Stand int NULL)"_s);
  EXPECT_EQ(kennungen(), (QStringList{u"spalte_typ"_s, u"spalte_typ"_s}));
  const QString text = pruefe().ausgabe;
  EXPECT_TRUE(text.contains(u"Die Spalte Bild_Vorgaenge.Key1 ist „int“; erwartet ist ein Text."_s))
      << text.toStdString();
  EXPECT_TRUE(text.contains(u"Die Spalte Bild_Vorgaenge.Stand ist „int“; erwartet ist ein Datum mit Zeit."_s));
  EXPECT_FALSE(text.contains(u"Vorgänge:"_s));
}

TEST_P(KvobildServer, AMissingRightToTheRecordsIsExitCode3) {
  ASSERT_EQ(lege_an().code, 0);
  server().steuere(u"fehler %1 229 14 The SELECT permission was denied on the object 'Bild_Vorgaenge'."_s.arg(
      frage_nach_Vorgaengen()));
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.contains(u"Bild_Vorgaenge:   0 von 7 Spalten; SELECT NEIN\n"_s))
      << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"SELECT auf Bild_Vorgaenge ist nicht erlaubt"_s));
}

TEST_P(KvobildServer, AConnectionThatBreaksAtTheRecordsIsNotTakenForAMissingRight) {
  ASSERT_EQ(lege_an().code, 0);
  server().steuere(u"trenne %1 vor"_s.arg(frage_nach_Vorgaengen()));
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(u"nicht zu Ende zu prüfen"_s)) << lauf.meldungen.toStdString();
  EXPECT_FALSE(lauf.ausgabe.contains(u"nicht erlaubt"_s)) << lauf.ausgabe.toStdString();
}

TEST_P(KvobildServer, WhereANameIsTakenNoTableOfRecordsIsMade) {
  sql(u"create table dbo.Kunden (Nummer nvarchar(10) NULL)"_s);
  const Lauf lauf = lege_an();
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.zeilen().contains(u"Tabelle angelegt: Bild_Zuordnungen"_s));
  EXPECT_FALSE(lauf.ausgabe.contains(u"Bild_Vorgaenge"_s)) << lauf.ausgabe.toStdString();
  EXPECT_EQ(kennungen(u"hinweis"_s), QStringList{u"sicht_fehlt"_s});
}

TEST_P(KvobildServer, CheckingTakesEveryTryBack) {
  ASSERT_EQ(lege_an().code, 0);
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  const QJsonArray vorher = sql(u"select * from Bild_Zuordnungen"_s);
  server().steuere(u"protokoll-leeren"_s);
  ASSERT_EQ(pruefe().code, 0);
  int offen = 0;
  int versuche = 0;
  for (const QString& text : server().stapel()) {
    if (text == u"BEGIN TRANSACTION"_s) ++offen;
    if (text.endsWith(u"ROLLBACK TRANSACTION"_s)) --offen;
    if (!text.startsWith(u"INSERT"_s) && !text.startsWith(u"UPDATE"_s) && !text.startsWith(u"DELETE"_s)) continue;
    ++versuche;
    EXPECT_EQ(offen, 1) << text.toStdString();
    EXPECT_TRUE(text.endsWith(u" WHERE 1 = 0"_s)) << text.toStdString();
  }
  EXPECT_EQ(versuche, 3);
  EXPECT_EQ(offen, 0);
  EXPECT_EQ(sql(u"select * from Bild_Zuordnungen"_s), vorher);
}

TEST_P(KvobildServer, ARefusedLoginIsExitCode3InWords) {
  for (const QString& befehl : {u"pruefen"_s, u"anlegen"_s}) {
    const Lauf falsch = kvobild({u"datenbank"_s, befehl, u"--verbindung"_s, verbindung(u"fal'sch;99"_s)});
    EXPECT_EQ(falsch.code, 3);
    EXPECT_TRUE(falsch.meldungen.contains(u"hat die Anmeldung abgelehnt"_s)) << falsch.meldungen.toStdString();
    EXPECT_FALSE((falsch.meldungen + falsch.ausgabe).contains(u"fal'sch"_s));
    const Lauf andere = kvobild({u"datenbank"_s, befehl, u"--verbindung"_s, verbindung(Kennwort, u"gibtsnicht"_s)});
    EXPECT_EQ(andere.code, 3);
    EXPECT_TRUE(andere.meldungen.contains(u"Benutzer, Kennwort und Name der Datenbank"_s))
        << andere.meldungen.toStdString();
    EXPECT_FALSE((andere.meldungen + andere.ausgabe).contains(Kennwort));
  }
}

TEST_P(KvobildServer, ThePasswordMayStandInTheEnvironment) {
  ASSERT_EQ(lege_an().code, 0);
  const QString ohne = verbindung().section(u";Password="_s, 0, 0);
  const QStringList aufruf{u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, ohne};
  EXPECT_EQ(kvobild(aufruf).code, 3);
  const Lauf lauf = kvobild(aufruf, {}, {}, {{u"KVOBILD_KENNWORT"_s, Kennwort}});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_FALSE((lauf.ausgabe + lauf.meldungen).contains(Kennwort));
  const Lauf nur_Umgebung = kvobild(
      {u"datenbank"_s, u"pruefen"_s}, {}, {}, {{u"KVOBILD_KENNWORT"_s, Kennwort}, {u"KVOBILD_VERBINDUNG"_s, ohne}});
  EXPECT_EQ(nur_Umgebung.code, 0) << nur_Umgebung.meldungen.toStdString();
}

TEST_P(KvobildServer, EveryCommandWorksOnTheServerAsOnSQLite) {
  ASSERT_EQ(lege_an().code, 0);
  const Testordner ordner;
  const QString wurzel = ordner.pfad(u"ablage"_s);
  const QString eines = ordner.schreibe(u"neu/größe.jpg"_s, "a");
  const QString anderes = ordner.schreibe(u"neu/b.jpg"_s, "b");
  ordner.schreibe(u"ablage/Belege/1/frei.jpg"_s, "niemand");
  const QStringList satz{u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--key2"_s, u"1"_s};
  const QStringList bilder{u"--bilder"_s, wurzel};
  const Lauf neu = fuehre({u"zuordnen"_s}, satz + bilder + QStringList{u"--ordner"_s, u"Belege/1"_s, eines, anderes});
  ASSERT_EQ(neu.code, 0) << neu.meldungen.toStdString();
  const QString erstes = neu.zeilen().value(0);
  EXPECT_EQ(fuehre({u"aendern"_s}, satz + QStringList{u"--beschreibung"_s, u"Bob's Größe"_s, erstes}).code, 0);
  const QList<QJsonObject> zeilen = fuehre({u"lesen"_s}, satz + bilder + QStringList{u"--json"_s}).objekte();
  ASSERT_EQ(zeilen.size(), 2);
  EXPECT_EQ(zeilen.at(0)[u"beschreibung"_s].toString(), u"Bob's Größe"_s);
  EXPECT_TRUE(zeilen.at(0)[u"vorhanden"_s].toBool());
  const Lauf um = fuehre({u"umbenennen"_s}, bilder + QStringList{u"--ordner"_s, u"Belege/1"_s, erstes, u"umbenannt"_s});
  EXPECT_EQ(um.code, 0) << um.meldungen.toStdString();
  EXPECT_EQ(fuehre({u"entfernen"_s}, satz + QStringList{neu.zeilen().value(1)}).code, 0);
  const Lauf auf = fuehre({u"aufraeumen"_s}, bilder + QStringList{u"--ja"_s, u"--schonfrist"_s, u"0"_s});
  EXPECT_EQ(auf.code, 0) << auf.meldungen.toStdString();
  EXPECT_EQ(auf.zeilen().size(), 2) << auf.ausgabe.toStdString();
  EXPECT_TRUE(ordner.vorhanden(u"ablage/Belege/1/umbenannt.jpg"_s));
  const Lauf am_Ende = pruefe(bilder);
  EXPECT_EQ(am_Ende.code, 0) << am_Ende.ausgabe.toStdString();
  EXPECT_TRUE(am_Ende.ausgabe.contains(u"Zeilen:           1\n"_s));
}

TEST_P(KvobildServer, AServerThatIsGoneIsExitCode3InWords) {
  server().steuere(u"halt"_s);
  const Lauf lauf = pruefe();
  server().steuere(u"weiter"_s);
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"ist nicht zu erreichen"_s)) << lauf.meldungen.toStdString();
}

TEST_P(KvobildServer, AConnectionThatBreaksWhileCheckingIsExitCode3) {
  ASSERT_EQ(lege_an().code, 0);
  server().steuere(u"trenne 1/UPDATE vor"_s);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(u"nicht zu Ende zu prüfen"_s)) << lauf.meldungen.toStdString();
}

TEST_P(KvobildServer, WhoeverMayCreateNoTableIsTold) {
  server().steuere(u"fehler 1/IF 262 14 CREATE TABLE permission denied in database 'betrieb'."_s);
  const Lauf lauf = lege_an();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"fehlt ein Recht"_s)) << lauf.meldungen.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Hinten, KvobildServer, ::testing::Values(Tdsserver::Maschine::Sqlite, Tdsserver::Maschine::H2),
    [](const auto& eines) { return std::string(eines.param == Tdsserver::Maschine::Sqlite ? "Sqlite" : "H2"); });
