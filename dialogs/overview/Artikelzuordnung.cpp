#include "dialogs/overview/Artikelzuordnung.h"

#include <algorithm>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "store/Bilddatei.h"
#include "store/mod_BilderSuchen.h"

namespace {

bool gleicher_Text(const QString& a, const QString& b) {
  return felder::vergleichsform(a) == felder::vergleichsform(b);
}

}  // namespace

bool Artikelzuordnung::sind_gleich(const QString& eine, const QString& andere) {
  return fehler::still_enden([&] {
    return dateien::FileLen(eine) == dateien::FileLen(andere) &&
        dateien::lies_alles(eine) == dateien::lies_alles(andere);
  });
}

bool Artikelzuordnung::heissen_gleich(const Bild& eines, const Bild& anderes) {
  return gleicher_Text(eines.Name, anderes.Name) && gleicher_Text(eines.Endung, anderes.Endung);
}

std::optional<QString> Artikelzuordnung::Name_fuer(
    const QString& artikel, const Bild& bild, bool einziges, const std::function<Platz(const QString&)>& platz) const {
  const auto traegt = [&](const Eintrag& e, const QString& name) {
    return gleicher_Text(e.Artikel, artikel) && gleicher_Text(e.Quelle.Endung, bild.Endung) &&
        gleicher_Text(e.Name, name);
  };
  bool anderes = false;
  for (const Eintrag& e : m_Eintraege) {
    if (!traegt(e, bild.Name) && !(gleicher_Text(e.Artikel, artikel) && heissen_gleich(e.Quelle, bild))) continue;
    if (e.Quelle.Zeile == bild.Zeile || sind_gleich(e.Quelle.Datei, bild.Datei)) return std::nullopt;
    anderes = true;
  }
  const bool vorhanden = mod_BilderSuchen::Fkt_FileExists(bild.Datei);
  if (!anderes && (einziges || !vorhanden)) return bild.Name;
  if (!vorhanden) return std::nullopt;
  for (int nummer = 1;; ++nummer) {
    QString name = nummer == 1 ? bild.Name : Bilddatei{bild.Name, bild.Endung}.gestempelt({}, nummer).name;
    const auto nimmt = [&](const Eintrag& e) { return traegt(e, name); };
    if (std::any_of(m_Eintraege.begin(), m_Eintraege.end(), nimmt)) continue;
    const Platz ort = platz(name);
    if (ort == Platz::Frei) return name;
    if (ort == Platz::Zugeordnet) return std::nullopt;
  }
}

void Artikelzuordnung::merke(const QString& artikel, const Bild& bild, const QString& name) {
  m_Eintraege.push_back({artikel, bild, name});
}
