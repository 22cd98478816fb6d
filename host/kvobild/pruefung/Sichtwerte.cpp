#include "host/kvobild/pruefung/Sichtwerte.h"

#include <QJsonObject>
#include <QStringList>

#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/vorgang/Vorgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList Schluessel{u"Typ1"_s, u"Key1"_s, u"Key2"_s, u"Key3"_s};
/// What a folder may have in Bild_Zuordnungen.
constexpr int Laengster_Ordner = 250;

/// The condition `wie` for any of the columns.
QString einer_von(const QStringList& spalten, const QString& wie) {
  QStringList alle;
  for (const QString& spalte : spalten) alle.append(wie.arg(spalte));
  return alle.join(u" OR "_s);
}

QString stelle(int von, int laenge) {
  return u"SUBSTRING(Stand, %1, %2)"_s.arg(von).arg(laenge);
}
/// Digits stand at these places.
QString sind_Ziffern(std::initializer_list<int> stellen) {
  QStringList alle;
  for (const int eine : stellen) alle.append(stelle(eine, 1) + u" BETWEEN '0' AND '9'"_s);
  return alle.join(u" AND "_s);
}
QString zwischen(int von, const QString& kleinstes, const QString& groesstes) {
  return stelle(von, 2) + u" BETWEEN '%1' AND '%2'"_s.arg(kleinstes, groesstes);
}

/// Stand as a text that begins with year, month and day, so that it sorts, and has nothing or a time behind it. Written
/// with what all databases have in common; one that can't convert a text ends the whole statement.
QString kein_Datum() {
  const QString tag = sind_Ziffern({1, 2, 3, 4, 6, 7, 9, 10}) +
      u" AND %1 = '-' AND %2 = '-' AND "_s.arg(stelle(5, 1), stelle(8, 1)) + zwischen(6, u"01"_s, u"12"_s) +
      u" AND "_s + zwischen(9, u"01"_s, u"31"_s) +
      u" AND %1 NOT IN ('02-30', '02-31', '04-31', '06-31', '09-31', '11-31')"_s.arg(stelle(6, 5));
  const QString minute = u"%1 IN (' ', 'T') AND "_s.arg(stelle(11, 1)) + sind_Ziffern({12, 13, 15, 16}) +
      u" AND %1 = ':' AND "_s.arg(stelle(14, 1)) + zwischen(12, u"00"_s, u"23"_s) + u" AND "_s +
      zwischen(15, u"00"_s, u"59"_s);
  const QString sekunde =
      u"%1 = ':' AND "_s.arg(stelle(17, 1)) + sind_Ziffern({18, 19}) + u" AND "_s + zwischen(18, u"00"_s, u"59"_s);
  return u"Stand IS NOT NULL AND NOT (%1 AND (LEN(Stand) = 10 OR (%2 AND (LEN(Stand) = 16 OR (%3)))))"_s.arg(
      tag, minute, sekunde);
}

/// Something that can be wrong with one record.
struct Frage {
  QString kennung;
  /// With %1 for the number of records.
  QString text;
  QString bedingung;
  /// What is named beside the key: an expression and its name, or nothing.
  QString wert = {};
  QString name = {};
  bool hinweis = false;
};

QList<Frage> fragen(bool mit_Textstand, bool ist_Datei) {
  QList<Frage> alle{
      {u"vorgang_leer"_s, u"Vorgänge ohne Typ1 oder ohne Key1: %1. Bilder lassen sich ihnen nicht zuordnen."_s,
          einer_von({u"Typ1"_s, u"Key1"_s}, u"%1 IS NULL OR LEN(%1) = 0"_s)},
      {u"vorgang_null"_s,
          u"Vorgänge mit NULL in Key2 oder Key3 (statt ''): %1. Unter „Zuletzt bearbeitet“ fehlen sie."_s,
          einer_von({u"Key2"_s, u"Key3"_s}, u"%1 IS NULL"_s)},
      {u"vorgang_strich"_s,
          u"Vorgänge mit „-“ als Teil der Nummer (statt ''): %1. Sie gelten als dieselben wie ohne diesen Teil."_s,
          einer_von(Schluessel, u"RTRIM(%1) = '-'"_s)},
      {u"vorgang_lang"_s,
          u"Vorgänge mit mehr als 50 Zeichen in Typ1 oder einem Teil der Nummer: %1. Ihre Zuordnungen sind nicht zu "
          "schreiben."_s,
          einer_von(Schluessel, u"LEN(%1) > 50"_s)},
      {u"vorgang_hochkomma"_s,
          u"Vorgänge mit einem Hochkomma in Typ1 oder der Nummer: %1. Ihre Bilder sind weder zu zeigen noch "
          "zuzuordnen."_s,
          einer_von(Schluessel, u"%1 LIKE '%''%'"_s)},
      {u"bezeichnung_lang"_s, u"Vorgänge mit mehr als 250 Zeichen in Bezeichnung: %1. Gezeigt wird der Anfang."_s,
          u"LEN(Bezeichnung) > 250"_s, u"LEN(Bezeichnung)"_s, u"Laenge"_s, true}};
  if (mit_Textstand)
    alle.append({u"stand_kein_datum"_s,
        u"Vorgänge, deren Stand kein Datum wie „2026-11-22 09:15:00“ ist: %1. Sie stehen an falscher Stelle."_s,
        kein_Datum(), u"Stand"_s, u"Stand"_s});
  // A calculated column of SQLite can give numbers, which never equal the texts of the assignments.
  if (ist_Datei)
    alle.append({u"vorgang_zahl"_s,
        u"Vorgänge mit einer Zahl statt eines Textes in Typ1 oder der Nummer: %1. Ihre Bilder bleiben unentdeckt."_s,
        einer_von(Schluessel, u"typeof(%1) NOT IN ('text', 'null')"_s)});
  return alle;
}

class Pruefer {
 public:
  explicit Pruefer(adodb::Connection& verbindung)
      : verbindung_(verbindung), ist_Datei_(Datenbankart::von(verbindung).ist_Datei) {}

  Sichtwerte pruefe(bool mit_Textstand) {
    zaehle_und_nenne(fragen(mit_Textstand, ist_Datei_));
    pruefe_doppelte();
    pruefe_Arten();
    pruefe_Ordner();
    return werte_;
  }

 private:
  void nimm(Befund befund, const QString& text, bool hinweis = false) {
    if (befund.anzahl == 0) return;
    befund.text = text.arg(befund.anzahl);
    befund.hinweis = hinweis;
    werte_.befunde.append(befund);
  }

  /// All questions in one walk over the records; rows are looked for where there are some.
  void zaehle_und_nenne(const QList<Frage>& alle) {
    QStringList summen{u"COUNT(*) AS Alle"_s};
    for (const Frage& frage : alle)
      summen.append(u"SUM(CASE WHEN %1 THEN 1 ELSE 0 END) AS %2"_s.arg(frage.bedingung, frage.kennung));
    const auto zahlen = verbindung_.Execute(u"SELECT %1 FROM Bild_Vorgaenge"_s.arg(summen.join(u", "_s)));
    werte_.vorgaenge = zahlen->Text(0).toLongLong();
    for (int i = 0; i < alle.size(); ++i) {
      const qint64 anzahl = zahlen->Text(i + 1).toLongLong();
      if (anzahl == 0) continue;
      Befund befund = nenne(alle.at(i));
      befund.anzahl = anzahl;
      nimm(befund, alle.at(i).text, alle.at(i).hinweis);
    }
  }

  Befund nenne(const Frage& frage) {
    QStringList spalten = Schluessel;
    QString liste = Schluessel.join(u", "_s);
    if (!frage.wert.isEmpty()) {
      spalten.append(frage.name);
      liste += u", %1 AS %2"_s.arg(frage.wert, frage.name);
    }
    return befund::lies(verbindung_, frage.kennung, spalten,
        u"SELECT TOP %1 %2 FROM Bild_Vorgaenge WHERE %3 ORDER BY %4"_s.arg(
            QString::number(befund::Genannte_Zeilen), liste, frage.bedingung, Schluessel.join(u", "_s)));
  }

  /// As the assignments compare: on SQLite a view's columns need not have their collation.
  QString verglichen(const QString& spalte) const { return ist_Datei_ ? spalte + u" COLLATE SERVERTEXT"_s : spalte; }

  void pruefe_doppelte() {
    QStringList gruppe;
    for (const QString& spalte : Schluessel) gruppe.append(verglichen(spalte));
    nimm(befund::lies(verbindung_, u"vorgang_doppelt"_s, Schluessel + QStringList{u"Zeilen"_s},
             u"SELECT TOP %1 %2, COUNT(*) AS Zeilen, COUNT(*) OVER () AS Anzahl FROM Bild_Vorgaenge GROUP BY %3 "
             "HAVING COUNT(*) > 1 ORDER BY %3"_s.arg(
                 QString::number(befund::Genannte_Zeilen), Schluessel.join(u", "_s), gruppe.join(u", "_s))),
        u"Vorgänge, die mehrfach dastehen: %1. Sie haben dieselben Bilder und stehen so oft in der Liste."_s);
  }

  void pruefe_Arten() {
    QStringList bekannte{u"''"_s};
    for (const vorgang::Art& art : vorgang::bekannte_Arten()) bekannte.append(u'\'' + art.typ1 + u'\'');
    nimm(befund::lies(verbindung_, u"art_unbekannt"_s, {u"Typ1"_s, u"Zeilen"_s},
             u"SELECT TOP %1 Typ1, COUNT(*) AS Zeilen, COUNT(*) OVER () AS Anzahl FROM Bild_Vorgaenge "
             "WHERE %2 NOT IN (%3) GROUP BY %2 ORDER BY %2"_s.arg(
                 QString::number(befund::Genannte_Zeilen), verglichen(u"Typ1"_s), bekannte.join(u", "_s))),
        u"Arten, die keinen eigenen Namen haben: %1. Sie stehen unter ihrem Typ1 in der Liste."_s, true);
  }

  /// The rules for a folder are the program's own; the database gives each folder once.
  void pruefe_Ordner() {
    Befund verlassende;
    verlassende.kennung = u"ordner_verlaesst"_s;
    Befund lange;
    lange.kennung = u"ordner_lang"_s;
    const auto satz = verbindung_.Execute(
        u"SELECT Ordner, COUNT(*) AS Zeilen FROM Bild_Vorgaenge WHERE Ordner <> '' GROUP BY Ordner ORDER BY Ordner"_s);
    for (; !satz->Eof(); satz->MoveNext()) {
      const QString ordner = satz->Text(0);
      const auto dazu = [&](Befund& befund) {
        if (++befund.anzahl <= befund::Genannte_Zeilen)
          befund.zeilen.append(befund::als_Objekt(*satz, {u"Ordner"_s, u"Zeilen"_s}));
      };
      if (!vorgang::ordner_bleibt_unten(ordner)) dazu(verlassende);
      if (ordner.size() > Laengster_Ordner) dazu(lange);
    }
    nimm(verlassende,
        u"Ordner, die die Bildablage verlassen oder nicht anzulegen sind: %1. Für diese Vorgänge gilt die Regel des "
        "Programms."_s);
    nimm(lange, u"Ordner mit mehr als 250 Zeichen: %1. Zuordnungen darin sind nicht zu schreiben."_s);
  }

  adodb::Connection& verbindung_;
  const bool ist_Datei_;
  Sichtwerte werte_;
};

}  // namespace

Sichtwerte pruefe_Sichtwerte(adodb::Connection& verbindung, bool mit_Textstand) {
  return Pruefer(verbindung).pruefe(mit_Textstand);
}
