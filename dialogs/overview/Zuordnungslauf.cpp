#include "dialogs/overview/Zuordnungslauf.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/Dateien.h"
#include "store/Bildnamen.h"
#include "store/mod_BilderSuchen.h"

namespace {

/// As the table compares: the case of letters and blanks at the end say nothing.
bool gleicher_Text(QStringView a, QStringView b) {
  while (a.endsWith(u' ')) a.chop(1);
  while (b.endsWith(u' ')) b.chop(1);
  return text::UCase(a) == text::UCase(b);
}

}  // namespace

bool Zuordnungslauf::sind_gleich(const QString& eine, const QString& andere) {
  return fehler::still_enden([&] {
    return dateien::FileLen(eine) == dateien::FileLen(andere) &&
           dateien::lies_alles(eine) == dateien::lies_alles(andere);
  });
}

std::optional<QString> Zuordnungslauf::Name_fuer(const QString& artikel, const Bild& bild,
                                                 const std::function<bool(const QString&)>& vergeben) const {
  const auto hat = [&](const Eintrag& e, const QString& name) {
    return gleicher_Text(e.Artikel, artikel) && gleicher_Text(e.Quelle.Endung, bild.Endung) &&
           (gleicher_Text(e.Name, name) || gleicher_Text(e.Quelle.Name, name));
  };
  const auto schon = [&](const QString& name) {
    for (const Eintrag& e : m_Eintraege)
      if (hat(e, name)) return true;
    return false;
  };
  if (!schon(bild.Name)) return bild.Name;
  if (!mod_BilderSuchen::Fkt_FileExists(bild.Datei)) return std::nullopt;
  for (const Eintrag& e : m_Eintraege)
    if (hat(e, bild.Name) && (e.Quelle.Zeile == bild.Zeile || sind_gleich(e.Quelle.Datei, bild.Datei)))
      return std::nullopt;
  for (int nummer = 2;; ++nummer) {
    QString name = bildnamen::gestempelt(bild.Name, {}, nummer);
    if (!schon(name) && !vergeben(name)) return name;
  }
}

void Zuordnungslauf::merke(const QString& artikel, const Bild& bild, const QString& name) {
  m_Eintraege.push_back({artikel, bild, name});
}
