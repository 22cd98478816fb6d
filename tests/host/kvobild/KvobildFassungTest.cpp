// What the program says of itself, and of a database that a later one has made.
#include <QFile>

#include "platform/adodb/Connection.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildFassung : public Betrieb {
 protected:
  /// The database of a data folder, marked as of that version.
  QString eigene(const QString& fassung) const {
    const Lauf lauf = kvobild({u"beispieldaten"_s, ordner_.pfad(u"beispiele"_s)});
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
    QString datei = ordner_.pfad(u"beispiele/betrieb.db"_s);
    sql_an(datei, u"PRAGMA user_version = "_s + fassung);
    return datei;
  }
  static void sql_an(const QString& datei, const QString& anweisung) {
    adodb::Connection verbindung;
    verbindung.Open(u"Provider=SQLite;Data Source="_s + datei);
    verbindung.Execute(anweisung);
  }
};

TEST_F(KvobildFassung, NamesItselfItsLibrariesAndTheDrivers) {
  const Lauf lauf = kvobild({u"--version"_s});
  EXPECT_EQ(lauf.code, 0);
  const QStringList zeilen = lauf.zeilen();
  EXPECT_EQ(zeilen.value(0), u"kvobild "_s + QStringLiteral(FASSUNG));
  EXPECT_TRUE(zeilen.contains(u"Qt "_s + QString::fromLatin1(qVersion()))) << lauf.ausgabe.toStdString();
  for (const QString& name : {u"SQLite 3."_s, u"libjpeg-turbo "_s, u"libheif "_s, u"ODBC-Treiber: "_s})
    EXPECT_EQ(zeilen.filter(name).size(), 1) << name.toStdString();
}

TEST_F(KvobildFassung, ADatabaseOfALaterProgramIsToldAndLeftAlone) {
  const QString datei = eigene(u"2"_s);
  QFile vorher(datei);
  ASSERT_TRUE(vorher.open(QIODevice::ReadOnly));
  const QByteArray bytes = vorher.readAll();
  for (const QStringList& befehl : {QStringList{u"lesen"_s}, QStringList{u"anlegen"_s},
           QStringList{u"vorgaenge"_s, u"liste"_s, u"--csv"_s}, QStringList{u"datenbank"_s, u"pruefen"_s}}) {
    const Lauf lauf = kvobild(befehl + QStringList{u"--verbindung"_s, datei});
    EXPECT_EQ(lauf.code, 3) << befehl.join(u' ').toStdString() << lauf.meldungen.toStdString();
    EXPECT_TRUE((lauf.meldungen + lauf.ausgabe).contains(u"stammt von einer neueren Fassung des Programms"_s))
        << befehl.join(u' ').toStdString() << lauf.meldungen.toStdString();
  }
  vorher.seek(0);
  EXPECT_EQ(vorher.readAll(), bytes);
}

TEST_F(KvobildFassung, ItsOwnAndThoseOfOtherProgramsAreOpenedWhateverTheirVersion) {
  EXPECT_EQ(kvobild({u"vorgaenge"_s, u"liste"_s, u"--csv"_s, u"--verbindung"_s, eigene(u"1"_s)}).code, 0);
  sql(u"PRAGMA user_version = 99"_s);
  EXPECT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0) << "a firm's own file counts as it likes";
}

}  // namespace
