#include "host/kvobild/pruefung/Datenpruefung.h"

#include <QJsonObject>
#include <algorithm>

#include "host/betrieb/befehl/Ausgabe.h"
#include "platform/files/FileSystemObject.h"
#include "store/Bilddatei.h"
#include "store/Felder.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The columns that tell a row, its types in front: that is the order of what is found.
const QStringList Identitaet = [] {
  QStringList namen;
  for (const felder::Feld& feld : felder::Kennung) namen.append(feld.Spalte.toString());
  std::rotate(namen.begin(), namen.end() - 2, namen.end());
  return namen;
}();

Befund leere_Teile(adodb::Connection& verbindung) {
  QStringList bedingungen;
  for (const QString& spalte : Identitaet) bedingungen.append(u"%1 IS NULL OR %1 = ''"_s.arg(spalte));
  const QStringList spalten = Identitaet + QStringList{u"BildPfad"_s};
  Befund befund = befund::lies(verbindung, u"leerer_schluessel"_s, spalten,
      u"SELECT TOP %1 %2, COUNT(*) OVER () AS Anzahl FROM Bild_Zuordnungen WHERE %3 ORDER BY %4"_s.arg(
          QString::number(befund::Genannte_Zeilen), spalten.join(u", "_s), bedingungen.join(u" OR "_s),
          Identitaet.join(u", "_s)));
  befund.text =
      u"Zeilen mit einem leeren Teil des Schlüssels (statt „-“): %1. Eine Änderung kann sie verfehlen, und wer eine "
      u"davon "
      "löscht, löscht vielleicht auch andere."_s.arg(befund.anzahl);
  return befund;
}

/// The texts of a row that a statement can't carry: all but the description, whose apostrophes it doubles.
Befund mit_Hochkomma(adodb::Connection& verbindung) {
  QStringList bedingungen;
  for (const felder::Feld& feld : felder::Texte)
    if (feld.besonderes != felder::Besonderheit::Verdoppelt)
      bedingungen.append(u"REPLACE(%1, '''', '') <> %1"_s.arg(feld.Spalte));
  const QStringList spalten = Identitaet + QStringList{u"BildPfad"_s};
  Befund befund = befund::lies(verbindung, u"zeile_hochkomma"_s, spalten,
      u"SELECT TOP %1 %2, COUNT(*) OVER () AS Anzahl FROM Bild_Zuordnungen WHERE %3 ORDER BY %4"_s.arg(
          QString::number(befund::Genannte_Zeilen), spalten.join(u", "_s), bedingungen.join(u" OR "_s),
          Identitaet.join(u", "_s)));
  befund.text =
      u"Zeilen mit einem Hochkomma: %1. Die Programme ändern und entfernen nichts, wovon sie betroffen wären."_s.arg(
          befund.anzahl);
  return befund;
}

bool liegt_unter_Wurzel(const adodb::Recordset& zeile) {
  clsBilderSpeicher satz;
  satz.Bild_Bildname = zeile.Text(6);
  satz.Bild_BildExt = zeile.Text(7);
  satz.Bild_Pfad = zeile.Text(8);
  return Bilddatei::liegt_unter_Wurzel(satz);
}

/// The database gives all that could lead out; the rule itself is the program's.
Befund ausserhalb(adodb::Connection& verbindung) {
  const QStringList spalten = Identitaet + QStringList{u"BildPfad"_s};
  Befund befund;
  befund.kennung = u"bild_ausserhalb"_s;
  const auto satz = verbindung.Execute(
      u"SELECT %1 FROM Bild_Zuordnungen WHERE SUBSTRING(BildPfad, 1, 1) IN ('\\', '/') "
      "OR SUBSTRING(BildPfad, 2, 1) = ':' OR REPLACE(BildPfad, '..', '') <> BildPfad "
      "OR REPLACE(REPLACE(Bildname, '\\', ''), '/', '') <> Bildname "
      "OR REPLACE(REPLACE(BildExt, '\\', ''), '/', '') <> BildExt ORDER BY %2"_s.arg(
          spalten.join(u", "_s), Identitaet.join(u", "_s)));
  for (; !satz->Eof(); satz->MoveNext()) {
    if (liegt_unter_Wurzel(*satz)) continue;
    ++befund.anzahl;
    if (befund.anzahl <= befund::Genannte_Zeilen) befund.zeilen.append(befund::als_Objekt(*satz, spalten));
  }
  befund.text =
      u"Zeilen, deren Ordner die Bildablage verlässt: %1. Ihre Bilder gelten als fehlend; dort wird nichts geöffnet."_s
          .arg(befund.anzahl);
  return befund;
}

Befund doppelte(adodb::Connection& verbindung) {
  const QString liste = Identitaet.join(u", "_s);
  const QStringList spalten = Identitaet + QStringList{u"Zeilen"_s};
  Befund befund = befund::lies(verbindung, u"doppelt"_s, spalten,
      u"SELECT TOP %1 %2, COUNT(*) AS Zeilen, COUNT(*) OVER () AS Anzahl FROM Bild_Zuordnungen GROUP BY %2 "
      "HAVING COUNT(*) > 1 ORDER BY %2"_s.arg(QString::number(befund::Genannte_Zeilen), liste));
  befund.text = u"Zuordnungen, die mehrfach dastehen: %1. Ändern und Löschen trifft immer alle gleichen Zeilen."_s.arg(
      befund.anzahl);
  return befund;
}

/// Rows come in the order of their files, so that each file is looked for once, and none in a folder that is missing.
class Dateisuche {
 public:
  explicit Dateisuche(QString wurzel) : wurzel_(std::move(wurzel)) {}

  bool ist_da(const QString& ordner, const QString& datei) {
    if (ordner_ != ordner) {
      ordner_ = ordner;
      ordner_da_ = dateien_.FolderExists(wurzel_ + u'\\' + ordner);
      datei_.reset();
    }
    if (datei_ != datei) {
      datei_ = datei;
      datei_da_ = ordner_da_ && dateien_.FileExists(wurzel_ + u'\\' + ordner + u'\\' + datei);
    }
    return datei_da_;
  }

 private:
  FileSystemObject dateien_;
  const QString wurzel_;
  std::optional<QString> ordner_;
  bool ordner_da_ = false;
  std::optional<QString> datei_;
  bool datei_da_ = false;
};

Befund fehlende_Bilder(adodb::Connection& verbindung, const QString& wurzel) {
  const QStringList spalten = Identitaet + QStringList{u"BildPfad"_s};
  Befund befund;
  befund.kennung = u"bild_fehlt"_s;
  Dateisuche suche(wurzel);
  const auto satz = verbindung.Execute(
      u"SELECT %1 FROM Bild_Zuordnungen ORDER BY BildPfad, Bildname, BildExt"_s.arg(spalten.join(u", "_s)));
  ausgabe::Fortschritt balken(u"Zeilen"_s);
  for (std::size_t zeile = 0; !satz->Eof(); satz->MoveNext()) {
    balken.zeige(zeile++, static_cast<std::size_t>(satz->RecordCount()));
    // Those that lead out of the root are a finding of their own; nothing is looked for there.
    if (!liegt_unter_Wurzel(*satz) || suche.ist_da(satz->Text(8), satz->Text(6) + u'.' + satz->Text(7))) continue;
    ++befund.anzahl;
    if (befund.anzahl <= befund::Genannte_Zeilen) befund.zeilen.append(befund::als_Objekt(*satz, spalten));
  }
  befund.text = u"Zeilen, deren Bild in der Ablage fehlt: %1."_s.arg(befund.anzahl);
  return befund;
}

}  // namespace

Datenlage pruefe_Daten(adodb::Connection& verbindung, const std::optional<QString>& wurzel) {
  Datenlage lage;
  lage.zeilen = verbindung.Execute(u"SELECT COUNT(*) AS Anzahl FROM Bild_Zuordnungen"_s)->Text(0).toLongLong();
  const auto nimm = [&](const Befund& befund) {
    if (befund.anzahl > 0) lage.befunde.append(befund);
  };
  nimm(leere_Teile(verbindung));
  nimm(doppelte(verbindung));
  nimm(mit_Hochkomma(verbindung));
  nimm(ausserhalb(verbindung));
  if (wurzel) nimm(fehlende_Bilder(verbindung, *wurzel));
  return lage;
}
