#include "host/betrieb/vorgang/Bildsammlung.h"

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

Zuordnungsweg::Vorgang als_Zuordnungsvorgang(const Vorgang& vorgang) {
  const Datensatz& satz = vorgang.satz;
  return {satz.key1, satz.key2, satz.key3, satz.key4, satz.typ1, satz.typ2, vorgang::bildordner(vorgang),
      vorgang::infozeile(vorgang)};
}

std::shared_ptr<clsBildZuordnungen> lies_Bildsammlung(const Arbeitsplatz& platz, const Vorgang& vorgang) {
  if (!platz.verbindung())
    throw Abbruch(
        Ausgang::Datenbank, u"Die Zuordnungen sind nicht zu lesen: "_s + u"Die Datenbank ist nicht geöffnet."_s);
  const Zuordnungsweg::Lesung lesung =
      Zuordnungsweg(platz.anwendungsobjekt(), platz.wurzel()).lies(als_Zuordnungsvorgang(vorgang));
  if (!lesung.bilder) throw Abbruch(Ausgang::Datenbank, lesung.grund);
  return lesung.bilder;
}

QString entferne_Zeile(
    const Arbeitsplatz& platz, const std::shared_ptr<clsBildZuordnungen>& sammlung, const Vorgang& vorgang) {
  sammlung->Bild_Delete(true);
  const Zuordnungsweg::Ergebnis ergebnis =
      Zuordnungsweg(platz.anwendungsobjekt(), platz.wurzel()).speichere(sammlung, als_Zuordnungsvorgang(vorgang));
  if (ergebnis.vollstaendig() && ergebnis.geprueft) return {};
  return ergebnis.bilder.empty() ? u"Die Datenbank ist nicht zu fragen."_s : ergebnis.bilder.front().hinweis;
}
