// What the tour does with pictures: finding, attaching and turning them, their Exif properties, clearing the tree.
#include <QApplication>
#include <QListView>

#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"Beleg AN 24-3005 – Gemeinde Sankt Märgen, Sankt Märgen · Projekt P-24-12"_s;
const QString Thermostat = u"Thermostat_1620240305_120000.jpg"_s;
const QString Waschtisch = u"Waschtisch_1720240305_121500.jpg"_s;
const QString Waermepumpe = u"Wärmepumpe_1420240305_113000.jpg"_s;
const QString Pumpe = u"bilder\\Artikel\\Allg\\"_s + Waermepumpe;
const QString Entfernt = u"Belege\\24-2003\\Dusche_0720240305_094500.jpg"_s;
const QString Behalten = u"Belege\\24-2003\\Gästebad_06.jpg"_s;

QModelIndex eintrag(const QListView& liste, const QString& text) {
  const QAbstractItemModel& modell = *liste.model();
  // The list of folders may have a folder of the same name above; the lower one is meant.
  for (int zeile = modell.rowCount() - 1; zeile >= 0; --zeile)
    if (const QModelIndex stelle = modell.index(zeile, 0); stelle.data().toString() == text) return stelle;
  throw std::runtime_error("Die Liste zeigt nicht " + text.toStdString());
}

}  // namespace

bool Rundgang::fenster_offen(const QString& name) const {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->objectName() == name && modal->isVisible();
}

bool Rundgang::suche_zeigt(int dateien) const {
  return fenster_offen(u"frm_BilderSuchen"_s) && zu_sehen(u"lvwContent"_s) &&
      text(u"SSP_Anzahl"_s) == u"%1 Objekt(e)"_s.arg(dateien);
}

void Rundgang::klicke_Eintrag(const QString& liste, const QString& name, bool doppelt, Qt::KeyboardModifiers dazu) {
  auto& feld = element<QListView>(liste);
  const QModelIndex stelle = eintrag(feld, name);
  feld.scrollTo(stelle);
  const QPoint ort = feld.visualRect(stelle).center();
  if (doppelt)
    hand_.doppelklicke(*feld.viewport(), ort);
  else
    hand_.klicke(*feld.viewport(), ort, dazu);
}

QSize Rundgang::groesse_von(const QString& datei) const {
  return QImage::fromData(dateien::lies_alles(daten_ + u'\\' + datei)).size();
}

QString Rundgang::erste_Datei() const {
  return u"bilder\\"_s + zeilen(u"AN"_s, u"24-3005"_s).value(0).section(u' ', 1, 1);
}

void Rundgang::plane_Suchen() {
  schritt(
      u"Klick auf „Bilder suchen …“: Die Suche beginnt in der Bildablage."_s,
      [this] { hand_.klicke(element(u"cmd_Suchen"_s)); }, [this] { return suche_zeigt(0); });
  schritt(
      u"Doppelklick auf „Artikel“ und dann auf „Allg“: Die fünf Bilder erscheinen."_s,
      [this] {
    klicke_Eintrag(u"Dir1"_s, u"Artikel"_s, true);
    klicke_Eintrag(u"Dir1"_s, u"Allg"_s, true);
      },
      [this] { return suche_zeigt(5); }, [this] { bild(u"bilder_suchen"_s); });
  schritt(
      u"Klick auf den Thermostat: Der Text daneben ist zu lesen."_s,
      [this] { klicke_Eintrag(u"lvwContent"_s, Thermostat); },
      [this] { return text(u"txt_Info"_s) == u"Auslaufartikel, Nachfolger TH-0110."_s; },
      [this] { bild(u"suche_mit_text"_s); });
  schritt(
      u"Klick auf die Wärmepumpe und auf den Drehknopf: Das Bild steht hochkant."_s,
      [this] {
    gedreht_ = groesse_von(Pumpe).transposed();
    klicke_Eintrag(u"lvwContent"_s, Waermepumpe);
    hand_.klicke(element(u"SSC_Drehen"_s));
      },
      [this] { return suche_zeigt(5) && groesse_von(Pumpe) == gedreht_; }, [this] { bild(u"suche_gedreht"_s); });
  schritt(
      u"Zwei Bilder gewählt und übernommen: Das Programm nennt sie."_s,
      [this] {
    klicke_Eintrag(u"lvwContent"_s, Thermostat);
    hand_.taste(Qt::Key_Right, Qt::ShiftModifier);
    hand_.klicke(element(u"cmd_Uebernehmen"_s));
      },
      [this] {
    return zurueck_mit(
        u"Bilder suchen: 2 gewählt – P:\\Artikel\\Allg\\"_s + Thermostat + u", P:\\Artikel\\Allg\\"_s + Waschtisch);
  });
}

void Rundgang::plane_Anhaengen() {
  schritt(
      u"Doppelklick auf AN 24-3005: Der Dialog ist leer."_s, [this] { klicke_Vorgang(u"AN 24-3005"_s, true); },
      [this] { return dialog_offen(); }, [this] { bild(u"dialog_leer"_s); });
  schritt(
      u"Klick auf „Bilder suchen“: Die Suche steht noch im selben Ordner."_s,
      [this] { hand_.klicke(element(u"SSC_BilderLaden"_s)); }, [this] { return suche_zeigt(5); });
  schritt(
      u"Thermostat und Wärmepumpe übernommen: Der Dialog zeigt sie als neu."_s,
      [this] {
    klicke_Eintrag(u"lvwContent"_s, Thermostat);
    klicke_Eintrag(u"lvwContent"_s, Waermepumpe, false, Qt::ControlModifier);
    hand_.klicke(element(u"cmd_Uebernehmen"_s));
      },
      [this] { return dialog_bereit(Kopf, 2); },
      [this] {
    folge_.erwarte(u"Name"_s, text(u"txt_BildName"_s), u"Thermostat_1620240305_120000"_s);
    folge_.erwarte(u"der Text kam mit"_s, text(u"txt_BildInfo"_s), u"Auslaufartikel, Nachfolger TH-0110."_s);
    folge_.erwarte(u"noch ist nichts geschrieben"_s, zeilen(u"AN"_s, u"24-3005"_s).isEmpty());
    bild(u"bilder_angehaengt"_s);
  });
  schritt(
      u"Klick auf „Zuordnung speichern“: Zwei Zeilen sind neu."_s,
      [this] { hand_.klicke(element(u"SSC_ZuordnungSpeichern"_s)); },
      [this] { return zurueck_mit(u"Beleg AN 24-3005: 2 Zeilen geschrieben: 2 neu."_s); },
      [this] { folge_.erwarte(u"Zahl der Bilder"_s, text(u"lbl_Anzahl"_s), u"2 Bilder"_s); });
}

void Rundgang::plane_Drehen() {
  schritt(
      u"Klick auf „Bilder zuordnen …“: Der Dialog zeigt beide."_s, [this] { hand_.klicke(element(u"cmd_Zuordnen"_s)); },
      [this] { return dialog_bereit(Kopf, 2); });
  schritt(
      u"Klick auf „90° nach rechts“: Das erste Bild ist gedreht."_s,
      [this] {
    gedreht_ = groesse_von(erste_Datei()).transposed();
    hand_.klicke(element(u"SSC_Drehen90"_s));
      },
      [this] { return dialog_bereit(Kopf, 2) && groesse_von(erste_Datei()) == gedreht_; },
      [this] { bild(u"bild_gedreht"_s); });
  schritt(
      u"Klick auf den Exif-Knopf: Die Eigenschaften des Bildes erscheinen."_s,
      [this] { hand_.klicke(element(u"SSC_ExifInfo"_s)); }, [this] { return fenster_offen(u"frm_BildInfo"_s); },
      [this] { bild(u"eigenschaften"_s); });
  schritt(
      u"Escape verlässt die Eigenschaften, ein zweites den Dialog."_s, [this] { hand_.taste(Qt::Key_Escape); },
      [this] { return dialog_offen(); }, [this] { hand_.taste(Qt::Key_Escape); });
}

void Rundgang::plane_Exif() {
  schritt(
      u"Ein Bild in der Übersicht gewählt und „Exif …“ geklickt: Seine Eigenschaften erscheinen."_s,
      [this] {
    hand_.klicke(*element<QListView>(u"lst_Bilder"_s).viewport(), QPoint(60, 60));
    hand_.klicke(element(u"cmd_Exif"_s));
      },
      [this] { return fenster_offen(u"frm_BildInfo"_s); });
  schritt(
      u"Klick auf „OK“: Das Programm ist wieder vorn."_s, [this] { hand_.klicke(element(u"cmd_OK"_s)); },
      [this] { return !QApplication::activeModalWidget(); });
}

void Rundgang::plane_Aufraeumen() {
  schritt(
      u"Klick auf „Bilderbaum aufräumen …“: Das Programm zeigt, was ginge, und fragt."_s,
      [this] { hand_.klicke(element(u"cmd_Aufraeumen"_s)); }, [this] { return fenster_offen(u"Aufraeumfenster"_s); },
      [this] {
    folge_.erwarte(u"die entfernte Datei liegt noch in der Ablage"_s, datei_da(Entfernt));
    bild(u"aufraeumen_frage"_s);
      });
  schritt(
      u"Escape: Nichts ist gelöscht."_s, [this] { hand_.taste(Qt::Key_Escape); },
      [this] { return zurueck_mit(u"Nichts ist gelöscht."_s); },
      [this] { folge_.erwarte(u"die entfernte Datei ist noch da"_s, datei_da(Entfernt)); });
  schritt(
      u"Noch einmal, und mit „löschen“ bestätigt: Was niemand benutzt, ist fort."_s,
      [this] { hand_.klicke(element(u"cmd_Aufraeumen"_s)); }, [this] { return fenster_offen(u"Aufraeumfenster"_s); },
      [this] { hand_.klicke(element(u"cmd_Loeschen"_s)); });
  schritt(
      u"Die zugeordneten Bilder sind alle noch da."_s, {},
      [this] { return !QApplication::activeModalWidget() && !datei_da(Entfernt); },
      [this] {
    folge_.erwarte(u"ein zugeordnetes Bild ist da"_s, datei_da(Behalten));
    bild(u"aufgeraeumt"_s);
      });
}
