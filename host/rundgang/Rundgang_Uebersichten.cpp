// What the tour does in the overviews: assigning pictures to further articles, and all assignments of a picture.
#include <QApplication>
#include <QHeaderView>
#include <QListView>
#include <QTableView>

#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Rundgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Bilder = u"TDBG_Zuordnungen"_s;
const QString Artikel = u"TDBG_WeitereZuordnungen"_s;
constexpr int Letzte_Spalte = 25;

}  // namespace

QString Rundgang::zelle(const QString& gitter, int zeile, int spalte) const {
  return element<QTableView>(gitter).model()->index(zeile, spalte).data().toString();
}

int Rundgang::zeilenzahl(const QString& gitter) const {
  return element<QTableView>(gitter).model()->rowCount();
}

void Rundgang::klicke_Zelle(const QString& gitter, int zeile, int spalte, bool auf_Knopf) {
  auto& tabelle = element<QTableView>(gitter);
  const QRect ort = tabelle.visualRect(tabelle.model()->index(zeile, spalte));
  hand_.klicke(
      *tabelle.viewport(), auf_Knopf ? QPoint(ort.right() - ort.height() / 2, ort.center().y()) : ort.center());
}

void Rundgang::plane_Weitere_Zuordnungen() {
  schritt(
      u"Klick auf TH-0100 und auf „Weitere Zuordnungen …“: Das Bild ist angekreuzt, die Artikel fehlen noch."_s,
      [this] {
    klicke_Vorgang(u"TH-0100"_s);
    hand_.klicke(element(u"cmd_WeitereZuordnungen"_s));
      },
      [this] { return fenster_offen(u"frm_AnzeigeZuordnung"_s) && zu_sehen(u"pic_Anzeige"_s); },
      [this] {
    folge_.erwarte(u"„Zuordnung speichern“ ist gesperrt"_s, !element(u"SSC_ZuordnungSpeichern"_s).isEnabled());
    bild(u"weitere_zuordnungen_leer"_s);
  });
  schritt(
      u"„TH-0110“ in die erste Zeile getippt: Der Artikel hat seine Texte."_s,
      [this] {
    klicke_Zelle(Artikel, 0, 0);
    hand_.tippe(u"TH-0110"_s);
    hand_.taste(Qt::Key_Return);
      },
      [this] { return zelle(Artikel, 0, 1) == u"Thermostatkopf, neue Ausführung"_s; },
      [this] {
    folge_.erwarte(u"„Zuordnung speichern“ ist frei"_s, element(u"SSC_ZuordnungSpeichern"_s).isEnabled());
  });
  schritt(
      u"Klick auf den Knopf der zweiten Zeile: Die Artikelauskunft geht auf."_s,
      [this] { klicke_Zelle(Artikel, 1, 0, true); }, [this] { return fenster_offen(u"Artikelauskunft"_s); },
      [this] {
    hand_.tippe(u"wärme"_s);
    bild(u"artikelauskunft"_s);
      });
  schritt(
      u"Eingabetaste: Die Wärmepumpe steht in der zweiten Zeile."_s, [this] { hand_.taste(Qt::Key_Return); },
      [this] {
    return fenster_offen(u"frm_AnzeigeZuordnung"_s) && zelle(Artikel, 1, 0) == "WP-0900"_L1 &&
        zelle(Artikel, 1, 1) == u"Wärmepumpe 9 kW"_s;
      },
      [this] { bild(u"weitere_zuordnungen"_s); });
  schritt(
      u"Klick auf „Zuordnung speichern“: Das Programm fragt."_s,
      [this] { hand_.klicke(element(u"SSC_ZuordnungSpeichern"_s)); },
      [this] { return meldung_offen(u"Dateien zuordnen"_s); }, [this] { bild(u"frage_zuordnen"_s); });
  schritt(
      u"Klick auf „Ja“: Das Bild ist drei Artikeln zugeordnet, seine Datei liegt beim Lieferanten."_s,
      [this] { klicke_Antwort(u"Ja"_s); }, [] { return !QApplication::activeModalWidget(); },
      [this] {
    folge_.erwarte(u"Zeilen des Bildes"_s,
        werte(u"Select Key1 from Bild_Zuordnungen where Typ1 = 'ART' and Bildname like 'Thermostat%' "
              "order by Key1"_s)
            .join(u' '),
        u"TH-0100 TH-0110 WP-0900"_s);
    folge_.erwarte(u"Kopie beim Lieferanten"_s, datei_da(u"Artikel\\70300\\Thermostat_1620240305_120000.jpg"_s));
      });
}

void Rundgang::plane_Alle_Zuordnungen() {
  schritt(
      u"Das Bild gewählt und „Alle Zuordnungen …“ geklickt: Es steht bei drei Artikeln."_s,
      [this] {
    hand_.klicke(*element<QListView>(u"lst_Bilder"_s).viewport(), QPoint(60, 60));
    hand_.klicke(element(u"cmd_AlleZuordnungen"_s));
      },
      [this] { return fenster_offen(u"frm_AlleZuordnungen"_s) && zeilenzahl(Bilder) == 3; },
      [this] {
    folge_.erwarte(u"„Löschen“ ist gesperrt"_s, !element(u"cmd_Loeschen"_s).isEnabled());
    bild(u"alle_zuordnungen"_s);
  });
  schritt(
      u"Klick auf die Wärmepumpe: „Löschen“ ist frei."_s,
      [this] {
    for (int i = 0; i < zeilenzahl(Bilder); ++i)
      if (zelle(Bilder, i, Letzte_Spalte).contains(u"WP-0900"_s)) return klicke_Zelle(Bilder, i, Letzte_Spalte);
      },
      [this] { return element(u"cmd_Loeschen"_s).isEnabled(); }, [this] { bild(u"zuordnung_gewaehlt"_s); });
  schritt(
      u"Klick auf „Löschen“: Das Programm fragt."_s, [this] { hand_.klicke(element(u"cmd_Loeschen"_s)); },
      [this] { return meldung_offen(u"Achtung"_s); });
  schritt(
      u"Klick auf „Ja“: Zwei Zuordnungen bleiben."_s, [this] { klicke_Antwort(u"Ja"_s); },
      [this] { return fenster_offen(u"frm_AlleZuordnungen"_s) && zeilenzahl(Bilder) == 2; });
  schritt(
      u"Klick auf „Zurück“: Das Programm ist wieder vorn."_s, [this] { hand_.klicke(element(u"cmd_Abbrechen"_s)); },
      [] { return !QApplication::activeModalWidget(); },
      [this] {
    folge_.erwarte(u"Zeilen des Bildes"_s,
        werte(u"Select Key1 from Bild_Zuordnungen where Typ1 = 'ART' and Bildname like 'Thermostat%' "
              "order by Key1"_s)
            .join(u' '),
        u"TH-0100 TH-0110"_s);
      });
}
