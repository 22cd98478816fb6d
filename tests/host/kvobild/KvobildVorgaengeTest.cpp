#include <QFile>

#include "platform/adodb/Connection.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray Zwei =
    "Typ1;Key1;Key2;Kundennummer;Kundenname;Text\nBEL;AB;24-1;10;Müller;\"Kessel; neu\"\nART;WP;;;;Pumpe\n";
const QByteArray Eine_falsche = "Typ1;Key1;Key2;Text\nBEL;AB;24-1;gut\nBEL;AB;;schlecht\nBEL;AB;a'b;schlecht\n";

class KvobildVorgaenge : public Betrieb {
 protected:
  Lauf einlesen(const QByteArray& liste, const QStringList& dazu = {}, const QString& name = u"liste.csv"_s) const {
    return kvobild(
        QStringList{u"vorgaenge"_s, u"einlesen"_s, u"--verbindung"_s, datenbank(), ordner_.schreibe(name, liste)} +
        dazu);
  }
  Lauf liste(const QString& form) const {
    return kvobild({u"vorgaenge"_s, u"liste"_s, form, u"--verbindung"_s, datenbank()});
  }
};

}  // namespace

TEST_F(KvobildVorgaenge, AListIsTakenInAndGivenOutTheSame) {
  const Lauf lauf = einlesen(Zwei);
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.ausgabe, u"Neu: 2, geändert: 0, gleich: 0, falsch: 0\nKunden neu: 1, geändert: 0\n"_s);
  const QString csv = liste(u"--csv"_s).ausgabe;
  EXPECT_TRUE(
      csv.startsWith(u"Typ1;Key1;Key2;Key3;Kundennummer;Kundenname;Ort;Projektnummer;Text;Ordner;Stand\r\n"
                     "BEL;AB;24-1;;10;Müller;\"\";;\"Kessel; neu\";;"_s))
      << csv.toStdString();
  // A spreadsheet knows UTF-8 by its mark.
  kvobild({u"vorgaenge"_s, u"liste"_s, u"--csv"_s, u"--verbindung"_s, datenbank()}, ordner_.pfad(u"aus.csv"_s));
  EXPECT_TRUE(ordner_.lies(u"aus.csv"_s).startsWith("\xEF\xBB\xBFTyp1;"));
  EXPECT_EQ(einlesen(ordner_.lies(u"aus.csv"_s)).ausgabe, u"Neu: 0, geändert: 0, gleich: 2, falsch: 0\n"_s);
  const Lauf json = liste(u"--json"_s);
  EXPECT_EQ(json.code, 0);
  ASSERT_EQ(json.objekte().size(), 2);
  EXPECT_EQ(json.objekte().first()[u"text"_s].toString(), u"Kessel; neu"_s);
  EXPECT_TRUE(json.objekte().first()[u"projektnummer"_s].isNull());
  EXPECT_EQ(einlesen(json.ausgabe.toUtf8(), {}, u"l.json"_s).ausgabe, u"Neu: 0, geändert: 0, gleich: 2, falsch: 0\n"_s);
}

TEST_F(KvobildVorgaenge, OneWrongLineKeepsAllOut) {
  const Lauf lauf = einlesen(Eine_falsche);
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(lauf.ausgabe, u"Neu: 1, geändert: 0, gleich: 0, falsch: 2\n"_s);
  EXPECT_EQ(lauf.meldungen,
      u"kvobild: Zeile 3: Belegnummer fehlt\nkvobild: Zeile 4: Belegnummer enthält ein Hochkomma; damit ist keine "
      "Anweisung an die Datenbank möglich\nkvobild: Es ist nichts übernommen; „--fehlerhafte-auslassen“ nimmt die "
      "anderen Zeilen.\n"_s);
  EXPECT_EQ(liste(u"--json"_s).objekte().size(), 0);
}

TEST_F(KvobildVorgaenge, WrongLinesAreLeftOutOnDemand) {
  const Lauf lauf = einlesen(Eine_falsche, {u"--fehlerhafte-auslassen"_s, u"--json"_s});
  EXPECT_EQ(lauf.code, 1);
  const auto objekte = lauf.objekte();
  ASSERT_EQ(objekte.size(), 3);
  EXPECT_EQ(objekte[0][u"zeile"_s].toInt(), 3);
  EXPECT_EQ(objekte[0][u"grund"_s].toString(), u"Belegnummer fehlt"_s);
  EXPECT_EQ(objekte[2][u"neu"_s].toInt(), 1);
  EXPECT_TRUE(objekte[2][u"uebernommen"_s].toBool());
  EXPECT_EQ(liste(u"--json"_s).objekte().size(), 1);
}

TEST_F(KvobildVorgaenge, ATrialWritesNothing) {
  const Lauf lauf = einlesen(Zwei, {u"--probe"_s});
  EXPECT_EQ(lauf.code, 0);
  EXPECT_EQ(lauf.ausgabe, u"Neu: 2, geändert: 0, gleich: 0, falsch: 0\nKunden neu: 1, geändert: 0\n"_s);
  EXPECT_EQ(liste(u"--csv"_s).code, 1);
}

TEST_F(KvobildVorgaenge, ColumnsAndKindCanBeNamed) {
  EXPECT_EQ(einlesen("Nr.;unnütz;Was\nWP-1;x;Pumpe\n",
                {u"--spalten"_s, u"Key1,,Text"_s, u"--typ1"_s, u"art"_s, u"--kopfzeile"_s, u"ja"_s})
                .code,
      0);
  const QJsonObject eins = liste(u"--json"_s).objekte().value(0);
  EXPECT_EQ(eins[u"typ1"_s].toString(), u"ART"_s);
  EXPECT_EQ(eins[u"key1"_s].toString(), u"WP-1"_s);
  EXPECT_EQ(eins[u"text"_s].toString(), u"Pumpe"_s);
}

TEST_F(KvobildVorgaenge, AWrongCallIsToldBeforeAnythingIsDone) {
  EXPECT_EQ(einlesen(Zwei, {u"--spalten"_s, u"Key1,Farbe"_s}).code, 2);
  EXPECT_EQ(einlesen("a;b\n1;2\n", {u"--spalten"_s, u"Text"_s}).code, 2);
  EXPECT_EQ(einlesen(Zwei, {u"--typ1"_s, u"A/B"_s}).code, 2);
  EXPECT_EQ(liste(u"--xml"_s).code, 2);
  EXPECT_EQ(kvobild({u"vorgaenge"_s, u"liste"_s, u"--verbindung"_s, datenbank()}).code, 2);
  EXPECT_EQ(
      kvobild({u"vorgaenge"_s, u"einlesen"_s, u"--verbindung"_s, datenbank(), ordner_.pfad(u"fehlt.csv"_s)}).code, 4);
  EXPECT_EQ(liste(u"--csv"_s).code, 1);
}

TEST_F(KvobildVorgaenge, ADatabaseWithoutTheTablesIsNoPlaceForRecords) {
  sql(u"DROP VIEW Bild_Vorgaenge"_s);
  sql(u"DROP TABLE Vorgaenge_Ruhe"_s);
  const Lauf lauf = einlesen(Zwei);
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"hat keine eigenen Vorgänge"_s)) << lauf.meldungen.toStdString();
}

TEST_F(KvobildVorgaenge, AnOutputThatIsNotTakenIsAFailure) {
  ASSERT_EQ(einlesen(Zwei).code, 0);
  const Lauf lauf = kvobild({u"vorgaenge"_s, u"liste"_s, u"--csv"_s, u"--verbindung"_s, datenbank()}, u"/dev/full"_s);
  EXPECT_EQ(lauf.code, 4);
}
