#include "host/betrieb/aufnahme/Ruecknahme.h"

#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufnahme/Inhaltsvergleich.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace ruecknahme {
namespace {

using Verbleib = Zuordnungsweg::Verbleib;

bool ist_Zeile(const clsBildZuordnungen& store, const Aufgenommenes& eines) {
  return store.Bild_Pfad() == eines.pfad && eines.bild.gleich({store.Bild_Bildname(), store.Bild_BildExt()});
}

/// Marks the rows that are still there for removal.
int merke_vor(clsBildZuordnungen& store, const std::vector<Aufgenommenes>& bilder) {
  int anzahl = 0;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    const auto ist_eines = [&](const Aufgenommenes& eines) { return ist_Zeile(store, eines); };
    if (std::none_of(bilder.begin(), bilder.end(), ist_eines)) continue;
    store.Bild_Delete(true);
    ++anzahl;
  }
  return anzahl;
}

/// The table was asked and holds no row of the file, whichever record it belonged to.
bool ist_frei(const Arbeitsplatz& platz, const Aufgenommenes& eines) {
  const auto eine = platz.verbindung()->Execute(
      u"Select Top 1 Key1 from Bild_Zuordnungen where Bildname = '%1' and BildExt = '%2' and BildPfad = '%3'"_s.arg(
          eines.bild.name, eines.bild.ext, eines.pfad));
  return eine->Eof();
}

void entferne_Kopie(const Arbeitsplatz& platz, const Aufgenommenes& eines, Ergebnis& ergebnis) {
  const FileSystemObject dateien;
  const QString ordner = platz.wurzel() + u'\\' + eines.pfad + u'\\';
  const auto bleibt = [&](const QString& datei, const QString& grund) {
    ergebnis.geblieben.append(u"Die Kopie „%1“ bleibt: %2"_s.arg(datei, grund));
  };
  const auto entferne = [&](const QString& datei, const QByteArray& summe) {
    if (summe.isEmpty() || !dateien.FileExists(ordner + datei)) return;
    if (Inhaltsvergleich::summe(dateien::lies_alles(ordner + datei)) != summe)
      return bleibt(datei, u"Sie ist seither geändert."_s);
    dateien.DeleteFile(ordner + datei, true);
  };
  const auto grund = versuche([&] {
    if (!ist_frei(platz, eines)) return bleibt(eines.bild.datei(), u"Das Bild ist noch anderswo zugeordnet."_s);
    entferne(eines.bild.datei(), eines.summe);
    entferne(eines.bild.textdatei(), eines.textsumme);
  });
  if (grund) bleibt(eines.bild.datei(), grund->Beschreibung());
}

void nimm_Zeilen_zurueck(const Arbeitsplatz& platz, const Zuordnungsweg::Vorgang& vorgang,
    const std::vector<Aufgenommenes>& bilder, Ergebnis& ergebnis) {
  const Zuordnungsweg weg(platz.anwendungsobjekt(), platz.wurzel());
  const Zuordnungsweg::Lesung lesung = weg.lies(vorgang);
  if (!lesung.bilder) throw Abbruch(Ausgang::Datenbank, lesung.grund);
  if (merke_vor(*lesung.bilder, bilder) == 0) return;
  const Zuordnungsweg::Ergebnis gespeichert = weg.speichere(lesung.bilder, vorgang);
  ergebnis.entfernte = gespeichert.entfernt;
  for (const Zuordnungsweg::Bild& bild : gespeichert.bilder)
    if (bild.verbleib != Verbleib::Entfernt && bild.verbleib != Verbleib::Unveraendert)
      ergebnis.geblieben.append(u"Die Zuordnung von „%1“ bleibt: %2"_s.arg(bild.name, bild.hinweis));
}

}  // namespace

Ergebnis nimm_zurueck(
    const Arbeitsplatz& platz, const Zuordnungsweg::Vorgang& vorgang, const Aufnahmeergebnis& aufnahme) {
  Ergebnis ergebnis;
  try {
    nimm_Zeilen_zurueck(platz, vorgang, aufnahme.bilder, ergebnis);
    // A row that stays keeps its copy, since the table names it.
    for (const Aufgenommenes& eines : aufnahme.bilder) entferne_Kopie(platz, eines, ergebnis);
    if (aufnahme.Ordner_neu && !aufnahme.bilder.empty())
      gelingt([&] { FileSystemObject().DeleteFolder(platz.wurzel() + u'\\' + aufnahme.bilder.front().pfad); });
  } catch (const Abbruch& abbruch) {
    ergebnis.geblieben.append(abbruch.text());
  }
  return ergebnis;
}

QString Ergebnis::text() const {
  QStringList saetze;
  if (entfernte == 1) saetze.append(u"Rückgängig gemacht: 1 Bild ist nicht mehr zugeordnet."_s);
  if (entfernte > 1 || (entfernte == 0 && geblieben.isEmpty()))
    saetze.append(u"Rückgängig gemacht: %1 Bilder sind nicht mehr zugeordnet."_s.arg(entfernte));
  if (!geblieben.isEmpty()) saetze.append(geblieben.first());
  if (geblieben.size() > 1) saetze.append(u"Weitere Hinweise: %1."_s.arg(geblieben.size() - 1));
  return saetze.join(u' ');
}

}  // namespace ruecknahme
