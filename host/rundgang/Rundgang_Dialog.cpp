// What the tour does in the assignment dialog until it is left.
#include <QCheckBox>

#include "host/rundgang/Rundgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"Beleg RE 24-2003 – Familie Öztürk, Kirchzarten · Projekt P-24-11"_s;
const QString Zweites = u"Bad_0620240305_093000"_s;
const QString Erstes = u"Bad_0520240305_091500"_s;

}  // namespace

void Rundgang::plane_Oeffnen() {
  schritt(u"Klick auf „Bilder zuordnen …“: Der Dialog geht auf; er kann speichern, weil eine Datei fehlt."_s,
      {klick(u"cmd_Zuordnen"_s)}, dialog_bereit(Kopf, 4),
      {[this] { startgroesse_ = Hand::fenster_vorn()->size(); },
          pruefe(u"Nummer des Bildes"_s, u"SSP_Anzahl(1)"_s, u"1"_s), pruefe(u"Name"_s, u"txt_BildName"_s, Erstes),
          pruefe(u"„Zuordnung speichern“ ist frei"_s, frei(u"SSC_ZuordnungSpeichern"_s)), bild(u"dialog_geoeffnet"_s)});
  schritt(u"Klick auf das vierte Bild: Seine Datei fehlt, es ist zum Entfernen vorgemerkt."_s,
      {klick(u"Pic_Thumb(4)"_s)}, am_Bild(4),
      {pruefe(u"Vormerkung"_s, angekreuzt(u"chk_Delete"_s)),
          pruefe(u"Vormerkung ist gesperrt"_s, nicht(frei(u"chk_Delete"_s))), bild(u"datei_fehlt"_s)});
  schritt(u"Klick auf das zweite Bild: Es steht groß da, mit Namen und Texten."_s, {klick(u"Pic_Thumb(2)"_s)},
      am_Bild(2),
      {pruefe(u"Name"_s, u"txt_BildName"_s, Zweites),
          pruefe(u"Drucktext"_s, u"txt_BildText"_s, u"Nach der Sanierung"_s),
          pruefe(u"Bild-Info"_s, u"txt_BildInfo"_s, u"Abnahme mit der Kundin: keine Mängel."_s),
          bild(u"zweites_bild"_s)});
}

void Rundgang::plane_Felder() {
  schritt(u"Der Drucktext wird neu geschrieben, mit Umlauten und in zwei Zeilen."_s,
      {ueberschreibe(u"txt_BildText"_s, u"Übergabe an Frau Öztürk:"_s), taste(Qt::Key_Return),
          tippe(u"schön geworden, „weiß“ passt"_s)},
      zeigt(u"txt_BildText"_s, u"Übergabe an Frau Öztürk:\nschön geworden, „weiß“ passt"_s));
  schritt(u"Ein Klick hinter die Bild-Info und weiter geschrieben."_s,
      {klick(u"txt_BildInfo"_s), taste(Qt::Key_End, Qt::ControlModifier), tippe(u" Maße geprüft."_s)},
      [this] { return text(u"txt_BildInfo"_s).endsWith(u"keine Mängel. Maße geprüft."_s); });
  schritt(u"„Drucken“ aus-, „Neue Seite“ eingeschaltet, das zweite mit der Leertaste."_s,
      {kreuze_an(u"chk_Drucken"_s), [this] { element(u"chk_NeueSeite"_s).setFocus(Qt::TabFocusReason); },
          taste(Qt::Key_Space)},
      angekreuzt(u"chk_NeueSeite"_s), {bild(u"texte_geschrieben"_s)});
}

void Rundgang::plane_Namen() {
  schritt(u"Ein Buchstabe an den Namen getippt: Er ist als geändert gekennzeichnet."_s,
      {klick(u"txt_BildName"_s), taste(Qt::Key_End), tippe(u"ä"_s)}, zeigt(u"txt_BildName"_s, Zweites + u'ä'),
      {pruefe(u"der alte Name ist zu haben"_s, frei(u"cmd_OriginalName"_s)),
          pruefe(u"keine Warnung"_s, nicht(sichtbar(u"SSP_WarnungName"_s))), bild(u"name_geaendert"_s)});
  schritt(u"Den Namen des ersten Bildes eingetippt: Der Dialog warnt."_s, {ueberschreibe(u"txt_BildName"_s, Erstes)},
      sichtbar(u"SSP_WarnungName"_s),
      {pruefe(u"Warnung"_s, u"SSP_WarnungName"_s, u"Dateiname schon vorhanden!"_s), bild(u"name_schon_vorhanden"_s)});
  schritt(u"Klick auf „Zuordnung speichern“: So wird nicht gespeichert."_s, {klick(u"SSC_ZuordnungSpeichern"_s)},
      meldung_offen(u"Doppelte Datei"_s), {bild(u"meldung_doppelte_datei"_s)});
  schritt(u"Eingabetaste: Die Meldung ist fort, der Dialog noch da."_s, {taste(Qt::Key_Return)}, dialog_offen());
  schritt(u"Klick auf „Auf Original-Namen zurücksetzen“: Der alte Name steht wieder da."_s,
      {klick(u"cmd_OriginalName"_s)}, beide(zeigt(u"txt_BildName"_s, Zweites), nicht(sichtbar(u"SSP_WarnungName"_s))),
      {pruefe(u"kein anderer Name mehr"_s, nicht(frei(u"cmd_OriginalName"_s))), bild(u"name_zurueck"_s)});
  schritt(u"Ein neuer Name: „Gästebad_06“."_s, {ueberschreibe(u"txt_BildName"_s, u"Gästebad_06"_s)},
      zeigt(u"txt_BildName"_s, u"Gästebad_06"_s));
}

void Rundgang::plane_Streifen() {
  schritt(u"Klick auf das dritte Bild."_s, {klick(u"Pic_Thumb(3)"_s)}, am_Bild(3));
  schritt(u"„Aus Zuordnung entfernen“ angekreuzt: Das Bild ist durchgestrichen."_s, {kreuze_an(u"chk_Delete"_s)},
      angekreuzt(u"chk_Delete"_s), {bild(u"zum_entfernen"_s)});
  const Tat fasse_und_ziehe = [this] {
    auto& zweites = element(u"Pic_Thumb(2)"_s);
    const QPoint weg = element(u"Pic_Thumb(1)"_s).geometry().center() - zweites.geometry().center();
    hand_.druecke(zweites, zweites.rect().center());
    hand_.ziehe(weg);
  };
  schritt(u"Klick auf „Sortieren“, dann das zweite Bild gefasst und auf das erste gezogen."_s,
      {klick(u"SSR_Sortierung"_s), fasse_und_ziehe}, sichtbar(u"Shp_Sort"_s), {bild(u"sortieren_gezogen"_s)});
  schritt(u"Losgelassen: Das Bild steht vorn."_s, {[this] { hand_.lasse_los(); }},
      beide(nicht(sichtbar(u"Shp_Sort"_s)), im_Streifen(4)), {bild(u"sortieren_losgelassen"_s)});
  schritt(u"„Sortieren“ ausgeschaltet und auf das erste Bild geklickt: Es ist „Gästebad_06“."_s,
      {klick(u"SSR_Sortierung"_s), klick(u"Pic_Thumb(1)"_s)},
      beide(am_Bild(1), zeigt(u"txt_BildName"_s, u"Gästebad_06"_s)));
}

void Rundgang::plane_Groessen() {
  const Tat ziehe_Balken = [this] {
    streifenhoehe_ = element(u"SSP_Panel(3)"_s).height();
    auto& balken = element(u"SSS_BildZuordnung_Balken3"_s);
    hand_.druecke(balken, balken.rect().center());
    hand_.ziehe(QPoint(0, -80));
    hand_.lasse_los();
  };
  const Sicht ist_hoeher = [this] { return element(u"SSP_Panel(3)"_s).height() == streifenhoehe_ + 80; };
  schritt(u"Der Balken über dem Streifen wird nach oben gezogen: Der Streifen ist höher, seine Bilder größer."_s,
      {ziehe_Balken}, beide(ist_hoeher, im_Streifen(4)),
      {pruefe(u"der Streifen lässt sich rollen"_s, frei(u"SSC_Scroll_Right"_s)), bild(u"balken_gezogen"_s)});
  schritt(u"Klick auf den rechten Rollknopf: Der Streifen rückt um ein Bild."_s, {klick(u"SSC_Scroll_Right"_s)},
      im_Streifen(3), {bild(u"streifen_gerollt"_s)});
  schritt(u"Klick auf den linken Rollknopf: Er ist wieder am Anfang."_s, {klick(u"SSC_Scroll_Left"_s)}, im_Streifen(4));
  const auto groesse = [this](const QString& worte, const QSize& neue, const QList<Tat>& danach) {
    schritt(
        worte, {[&neue] { Hand::fenster_vorn()->windowHandle()->resize(neue); }},
        [&neue] { return Hand::fenster_vorn()->size() == neue; }, danach);
  };
  static constexpr QSize Klein(800, 480);
  static constexpr QSize Gross(1500, 1000);
  groesse(u"Das Fenster so klein es geht."_s, Klein, {bild(u"dialog_klein"_s)});
  groesse(u"Das Fenster groß."_s, Gross, {bild(u"dialog_gross"_s)});
  // Its size is known only when the dialog has opened.
  groesse(u"Das Fenster wie am Anfang."_s, startgroesse_, {});
}
