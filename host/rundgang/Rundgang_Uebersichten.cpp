// What the tour does in the overviews: assigning pictures to further articles, and all assignments of a picture.
#include "host/rundgang/Rundgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Bilder = u"TDBG_Zuordnungen"_s;
const QString Artikel = u"TDBG_WeitereZuordnungen"_s;
constexpr int Letzte_Spalte = 25;

}  // namespace

void Rundgang::plane_Weitere_Zuordnungen() {
  const Sicht uebersicht = fenster_offen(u"frm_AnzeigeZuordnung"_s);
  schritt(u"Klick auf TH-0100 und auf „Weitere Zuordnungen …“: Das Bild ist angekreuzt, die Artikel fehlen noch."_s,
      {klick_Vorgang(u"TH-0100"_s), klick(u"cmd_WeitereZuordnungen"_s)}, beide(uebersicht, sichtbar(u"pic_Anzeige"_s)),
      {pruefe(u"„Zuordnung speichern“ ist gesperrt"_s, nicht(frei(u"SSC_ZuordnungSpeichern"_s))),
          bild(u"weitere_zuordnungen_leer"_s)});
  schritt(u"„TH-0110“ in die erste Zeile getippt: Der Artikel hat seine Texte."_s,
      {klick_Zelle(Artikel, 0, 0), tippe(u"TH-0110"_s), taste(Qt::Key_Return)},
      hat_Zelle(Artikel, 0, 1, u"Thermostatkopf, neue Ausführung"_s),
      {pruefe(u"„Zuordnung speichern“ ist frei"_s, frei(u"SSC_ZuordnungSpeichern"_s))});
  schritt(u"Klick auf den Knopf der zweiten Zeile: Die Artikelauskunft geht auf."_s, {klick_Zelle(Artikel, 1, 0, true)},
      fenster_offen(u"Artikelauskunft"_s), {tippe(u"wärme"_s), bild(u"artikelauskunft"_s)});
  schritt(u"Eingabetaste: Die Wärmepumpe steht in der zweiten Zeile."_s, {taste(Qt::Key_Return)},
      beide(uebersicht, beide(hat_Zelle(Artikel, 1, 0, u"WP-0900"_s), hat_Zelle(Artikel, 1, 1, u"Wärmepumpe 9 kW"_s))),
      {bild(u"weitere_zuordnungen"_s)});
  schritt(u"Klick auf „Zuordnung speichern“: Das Programm fragt."_s, {klick(u"SSC_ZuordnungSpeichern"_s)},
      meldung_offen(u"Dateien zuordnen"_s), {bild(u"frage_zuordnen"_s)});
  schritt(u"Klick auf „Ja“: Das Bild ist drei Artikeln zugeordnet, seine Datei liegt beim Lieferanten."_s,
      {antworte(u"Ja"_s)}, zurueck(),
      {pruefe_Artikel_des_Bildes(u"TH-0100 TH-0110 WP-0900"_s), pruefe(u"Kopie beim Lieferanten"_s, [this] {
         return datei_da(u"Artikel\\70300\\Thermostat_1620240305_120000.jpg"_s);
       })});
}

void Rundgang::plane_Alle_Zuordnungen() {
  const auto zeigt_Zeilen = [this](int anzahl) {
    return beide(fenster_offen(u"frm_AlleZuordnungen"_s), [=, this] { return zeilenzahl(Bilder) == anzahl; });
  };
  const Tat waehle_Waermepumpe = [this] {
    for (int i = 0; i < zeilenzahl(Bilder); ++i)
      if (zelle(Bilder, i, Letzte_Spalte).contains(u"WP-0900"_s)) return klick_Zelle(Bilder, i, Letzte_Spalte)();
  };
  schritt(u"Das Bild gewählt und „Alle Zuordnungen …“ geklickt: Es steht bei drei Artikeln."_s,
      {klick_erste_Vorschau(), klick(u"cmd_AlleZuordnungen"_s)}, zeigt_Zeilen(3),
      {pruefe(u"„Löschen“ ist gesperrt"_s, nicht(frei(u"cmd_Loeschen"_s))), bild(u"alle_zuordnungen"_s)});
  schritt(u"Klick auf die Wärmepumpe: „Löschen“ ist frei."_s, {waehle_Waermepumpe}, frei(u"cmd_Loeschen"_s),
      {bild(u"zuordnung_gewaehlt"_s)});
  schritt(u"Klick auf „Löschen“: Das Programm fragt."_s, {klick(u"cmd_Loeschen"_s)}, meldung_offen(u"Achtung"_s));
  schritt(u"Klick auf „Ja“: Zwei Zuordnungen bleiben."_s, {antworte(u"Ja"_s)}, zeigt_Zeilen(2));
  schritt(u"Klick auf „Zurück“: Das Programm ist wieder vorn."_s, {klick(u"cmd_Abbrechen"_s)}, zurueck(),
      {pruefe_Artikel_des_Bildes(u"TH-0100 TH-0110"_s)});
}
