// What the tour does in the assignment dialog until it is left.
#include <QCheckBox>
#include <QWidget>

#include "host/rundgang/Rundgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"Beleg RE 24-2003 – Familie Öztürk, Kirchzarten · Projekt P-24-11"_s;
const QString Zweites = u"Bad_0620240305_093000"_s;
const QString Erstes = u"Bad_0520240305_091500"_s;

}  // namespace

void Rundgang::plane_Oeffnen() {
  schritt(
      u"Klick auf „Bilder zuordnen …“: Der Dialog geht auf; er kann speichern, weil eine Datei fehlt."_s,
      [this] { hand_.klicke(element(u"cmd_Zuordnen"_s)); }, [this] { return dialog_bereit(Kopf, 4); },
      [this] {
    startgroesse_ = Hand::fenster_vorn()->size();
    folge_.erwarte(u"Nummer des Bildes"_s, text(u"SSP_Anzahl(1)"_s), u"1"_s);
    folge_.erwarte(u"Name"_s, text(u"txt_BildName"_s), Erstes);
    folge_.erwarte(u"„Zuordnung speichern“ ist frei"_s, element(u"SSC_ZuordnungSpeichern"_s).isEnabled());
    bild(u"dialog_geoeffnet"_s);
      });
  schritt(
      u"Klick auf das vierte Bild: Seine Datei fehlt, es ist zum Entfernen vorgemerkt."_s,
      [this] { hand_.klicke(element(u"Pic_Thumb(4)"_s)); }, [this] { return text(u"SSP_Anzahl(1)"_s) == "4"_L1; },
      [this] {
    folge_.erwarte(u"Vormerkung"_s, element<QCheckBox>(u"chk_Delete"_s).isChecked());
    folge_.erwarte(u"Vormerkung ist gesperrt"_s, !element(u"chk_Delete"_s).isEnabled());
    bild(u"datei_fehlt"_s);
      });
  schritt(
      u"Klick auf das zweite Bild: Es steht groß da, mit Namen und Texten."_s,
      [this] { hand_.klicke(element(u"Pic_Thumb(2)"_s)); }, [this] { return text(u"SSP_Anzahl(1)"_s) == "2"_L1; },
      [this] {
    folge_.erwarte(u"Name"_s, text(u"txt_BildName"_s), Zweites);
    folge_.erwarte(u"Drucktext"_s, text(u"txt_BildText"_s), u"Nach der Sanierung"_s);
    folge_.erwarte(u"Bild-Info"_s, text(u"txt_BildInfo"_s), u"Abnahme mit der Kundin: keine Mängel."_s);
    bild(u"zweites_bild"_s);
      });
}

void Rundgang::plane_Felder() {
  schritt(
      u"Der Drucktext wird neu geschrieben, mit Umlauten und in zwei Zeilen."_s,
      [this] {
    ueberschreibe(u"txt_BildText"_s, u"Übergabe an Frau Öztürk:"_s);
    hand_.taste(Qt::Key_Return);
    hand_.tippe(u"schön geworden, „weiß“ passt"_s);
      },
      [this] { return text(u"txt_BildText"_s) == u"Übergabe an Frau Öztürk:\nschön geworden, „weiß“ passt"_s; });
  schritt(
      u"Ein Klick hinter die Bild-Info und weiter geschrieben."_s,
      [this] {
    hand_.klicke(element(u"txt_BildInfo"_s));
    hand_.taste(Qt::Key_End, Qt::ControlModifier);
    hand_.tippe(u" Maße geprüft."_s);
      },
      [this] { return text(u"txt_BildInfo"_s).endsWith(u"keine Mängel. Maße geprüft."_s); });
  schritt(
      u"„Drucken“ aus-, „Neue Seite“ eingeschaltet, das zweite mit der Leertaste."_s,
      [this] {
    hand_.klicke(element(u"chk_Drucken"_s), QPoint(10, element(u"chk_Drucken"_s).height() / 2));
    element(u"chk_NeueSeite"_s).setFocus(Qt::TabFocusReason);
    hand_.taste(Qt::Key_Space);
      },
      [this] { return element<QCheckBox>(u"chk_NeueSeite"_s).isChecked(); }, [this] { bild(u"texte_geschrieben"_s); });
}

void Rundgang::plane_Namen() {
  schritt(
      u"Ein Buchstabe an den Namen getippt: Er ist als geändert gekennzeichnet."_s,
      [this] {
    hand_.klicke(element(u"txt_BildName"_s));
    hand_.taste(Qt::Key_End);
    hand_.tippe(u"ä"_s);
      },
      [this] { return text(u"txt_BildName"_s) == Zweites + u'ä'; },
      [this] {
    folge_.erwarte(u"der alte Name ist zu haben"_s, element(u"cmd_OriginalName"_s).isEnabled());
    folge_.erwarte(u"keine Warnung"_s, !zu_sehen(u"SSP_WarnungName"_s));
    bild(u"name_geaendert"_s);
  });
  schritt(
      u"Den Namen des ersten Bildes eingetippt: Der Dialog warnt."_s,
      [this] { ueberschreibe(u"txt_BildName"_s, Erstes); }, [this] { return zu_sehen(u"SSP_WarnungName"_s); },
      [this] {
    folge_.erwarte(u"Warnung"_s, text(u"SSP_WarnungName"_s), u"Dateiname schon vorhanden!"_s);
    bild(u"name_schon_vorhanden"_s);
      });
  schritt(
      u"Klick auf „Zuordnung speichern“: So wird nicht gespeichert."_s,
      [this] { hand_.klicke(element(u"SSC_ZuordnungSpeichern"_s)); },
      [this] { return meldung_offen(u"Doppelte Datei"_s); }, [this] { bild(u"meldung_doppelte_datei"_s); });
  schritt(
      u"Eingabetaste: Die Meldung ist fort, der Dialog noch da."_s, [this] { hand_.taste(Qt::Key_Return); },
      [this] { return dialog_offen(); });
  schritt(
      u"Klick auf „Auf Original-Namen zurücksetzen“: Der alte Name steht wieder da."_s,
      [this] { hand_.klicke(element(u"cmd_OriginalName"_s)); },
      [this] { return text(u"txt_BildName"_s) == Zweites && !zu_sehen(u"SSP_WarnungName"_s); },
      [this] {
    folge_.erwarte(u"kein anderer Name mehr"_s, !element(u"cmd_OriginalName"_s).isEnabled());
    bild(u"name_zurueck"_s);
      });
  schritt(
      u"Ein neuer Name: „Gästebad_06“."_s, [this] { ueberschreibe(u"txt_BildName"_s, u"Gästebad_06"_s); },
      [this] { return text(u"txt_BildName"_s) == u"Gästebad_06"_s; });
}

void Rundgang::plane_Entfernen() {
  schritt(
      u"Klick auf das dritte Bild."_s, [this] { hand_.klicke(element(u"Pic_Thumb(3)"_s)); },
      [this] { return text(u"SSP_Anzahl(1)"_s) == "3"_L1; });
  schritt(
      u"„Aus Zuordnung entfernen“ angekreuzt: Das Bild ist durchgestrichen."_s,
      [this] { hand_.klicke(element(u"chk_Delete"_s), QPoint(10, element(u"chk_Delete"_s).height() / 2)); },
      [this] { return element<QCheckBox>(u"chk_Delete"_s).isChecked(); }, [this] { bild(u"zum_entfernen"_s); });
}

void Rundgang::plane_Sortieren() {
  schritt(
      u"Klick auf „Sortieren“, dann das zweite Bild gefasst und auf das erste gezogen."_s,
      [this] {
    hand_.klicke(element(u"SSR_Sortierung"_s));
    auto& zweites = element(u"Pic_Thumb(2)"_s);
    const QPoint weg = element(u"Pic_Thumb(1)"_s).geometry().center() - zweites.geometry().center();
    hand_.druecke(zweites, zweites.rect().center());
    hand_.ziehe(weg);
      },
      [this] { return zu_sehen(u"Shp_Sort"_s); }, [this] { bild(u"sortieren_gezogen"_s); });
  schritt(
      u"Losgelassen: Das Bild steht vorn."_s, [this] { hand_.lasse_los(); },
      [this] { return !zu_sehen(u"Shp_Sort"_s) && bilder_im_Streifen() == 4; },
      [this] { bild(u"sortieren_losgelassen"_s); });
  schritt(
      u"„Sortieren“ ausgeschaltet und auf das erste Bild geklickt: Es ist „Gästebad_06“."_s,
      [this] {
    hand_.klicke(element(u"SSR_Sortierung"_s));
    hand_.klicke(element(u"Pic_Thumb(1)"_s));
      },
      [this] { return text(u"SSP_Anzahl(1)"_s) == "1"_L1 && text(u"txt_BildName"_s) == u"Gästebad_06"_s; });
}

void Rundgang::plane_Groessen() {
  schritt(
      u"Der Balken über dem Streifen wird nach oben gezogen: Der Streifen ist höher, seine Bilder größer."_s,
      [this] {
    streifenhoehe_ = element(u"SSP_Panel(3)"_s).height();
    auto& balken = element(u"SSS_BildZuordnung_Balken3"_s);
    hand_.druecke(balken, balken.rect().center());
    hand_.ziehe(QPoint(0, -80));
    hand_.lasse_los();
      },
      [this] { return element(u"SSP_Panel(3)"_s).height() == streifenhoehe_ + 80 && bilder_im_Streifen() == 4; },
      [this] {
    folge_.erwarte(u"der Streifen lässt sich rollen"_s, element(u"SSC_Scroll_Right"_s).isEnabled());
    bild(u"balken_gezogen"_s);
  });
  schritt(
      u"Klick auf den rechten Rollknopf: Der Streifen rückt um ein Bild."_s,
      [this] { hand_.klicke(element(u"SSC_Scroll_Right"_s)); }, [this] { return bilder_im_Streifen() == 3; },
      [this] { bild(u"streifen_gerollt"_s); });
  schritt(
      u"Klick auf den linken Rollknopf: Er ist wieder am Anfang."_s,
      [this] { hand_.klicke(element(u"SSC_Scroll_Left"_s)); }, [this] { return bilder_im_Streifen() == 4; });
  schritt(
      u"Das Fenster so klein es geht."_s, [this] { groesse(QSize(800, 480)); },
      [this] { return Hand::fenster_vorn()->size() == QSize(800, 480); }, [this] { bild(u"dialog_klein"_s); });
  schritt(
      u"Das Fenster groß."_s, [this] { groesse(QSize(1500, 1000)); },
      [this] { return Hand::fenster_vorn()->size() == QSize(1500, 1000); }, [this] { bild(u"dialog_gross"_s); });
  schritt(
      u"Das Fenster wie am Anfang."_s, [this] { groesse(startgroesse_); },
      [this] { return Hand::fenster_vorn()->size() == startgroesse_; });
}
