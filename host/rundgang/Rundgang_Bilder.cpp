// What the tour does with pictures: finding, attaching and turning them, their Exif properties, clearing the tree.
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"Beleg AN 24-3005 – Gemeinde Sankt Märgen, Sankt Märgen · Projekt P-24-12"_s;
const QString Ordner = u"Dir1"_s;
const QString Funde = u"lvwContent"_s;
const QString Thermostat = u"Thermostat_1620240305_120000.jpg"_s;
const QString Waschtisch = u"Waschtisch_1720240305_121500.jpg"_s;
const QString Waermepumpe = u"Wärmepumpe_1420240305_113000.jpg"_s;
const QString Pumpe = u"bilder\\Artikel\\Allg\\"_s + Waermepumpe;
const QString Entfernt = u"Belege\\24-2003\\Dusche_0720240305_094500.jpg"_s;
const QString Behalten = u"Belege\\24-2003\\Gästebad_06.jpg"_s;

}  // namespace

QSize Rundgang::groesse_von(const QString& datei) const {
  return QImage::fromData(dateien::lies_alles(daten_ + u'\\' + datei)).size();
}

QString Rundgang::erste_Datei() const {
  return u"bilder\\"_s + zeilen(u"AN"_s, u"24-3005"_s).value(0).section(u' ', 1, 1);
}

void Rundgang::plane_Suchen() {
  schritt(
      u"Klick auf „Bilder suchen …“: Die Suche beginnt in der Bildablage."_s, {klick(u"cmd_Suchen"_s)}, suche_zeigt(0));
  schritt(u"Doppelklick auf „Artikel“ und dann auf „Allg“: Die fünf Bilder erscheinen."_s,
      {klick_Eintrag(Ordner, u"Artikel"_s, true), klick_Eintrag(Ordner, u"Allg"_s, true)}, suche_zeigt(5),
      {bild(u"bilder_suchen"_s)});
  schritt(u"Klick auf den Thermostat: Der Text daneben ist zu lesen."_s, {klick_Eintrag(Funde, Thermostat)},
      zeigt(u"txt_Info"_s, u"Auslaufartikel, Nachfolger TH-0110."_s), {bild(u"suche_mit_text"_s)});
  schritt(u"Klick auf die Wärmepumpe und auf den Drehknopf: Das Bild steht hochkant."_s,
      {[this] { gedreht_ = groesse_von(Pumpe).transposed(); }, klick_Eintrag(Funde, Waermepumpe),
          klick(u"SSC_Drehen"_s)},
      beide(suche_zeigt(5), [this] { return groesse_von(Pumpe) == gedreht_; }), {bild(u"suche_gedreht"_s)});
  schritt(u"Zwei Bilder gewählt und übernommen: Das Programm nennt sie."_s,
      {klick_Eintrag(Funde, Thermostat), taste(Qt::Key_Right, Qt::ShiftModifier), klick(u"cmd_Uebernehmen"_s)},
      zurueck_mit(
          u"Bilder suchen: 2 gewählt – P:\\Artikel\\Allg\\"_s + Thermostat + u", P:\\Artikel\\Allg\\"_s + Waschtisch));
}

void Rundgang::plane_Anhaengen() {
  schritt(u"Doppelklick auf AN 24-3005: Der Dialog ist leer."_s, {klick_Vorgang(u"AN 24-3005"_s, true)}, dialog_offen(),
      {bild(u"dialog_leer"_s)});
  schritt(u"Klick auf „Bilder suchen“: Die Suche steht noch im selben Ordner."_s, {klick(u"SSC_BilderLaden"_s)},
      suche_zeigt(5));
  schritt(u"Thermostat und Wärmepumpe übernommen: Der Dialog zeigt sie als neu."_s,
      {klick_Eintrag(Funde, Thermostat), klick_Eintrag(Funde, Waermepumpe, false, Qt::ControlModifier),
          klick(u"cmd_Uebernehmen"_s)},
      dialog_bereit(Kopf, 2),
      {pruefe(u"Name"_s, u"txt_BildName"_s, u"Thermostat_1620240305_120000"_s),
          pruefe(u"der Text kam mit"_s, u"txt_BildInfo"_s, u"Auslaufartikel, Nachfolger TH-0110."_s),
          pruefe(u"noch ist nichts geschrieben"_s, [this] { return zeilen(u"AN"_s, u"24-3005"_s).isEmpty(); }),
          bild(u"bilder_angehaengt"_s)});
  schritt(u"Klick auf „Zuordnung speichern“: Zwei Zeilen sind neu."_s, {klick(u"SSC_ZuordnungSpeichern"_s)},
      zurueck_mit(u"Beleg AN 24-3005: 2 Zeilen geschrieben: 2 neu."_s),
      {pruefe(u"Zahl der Bilder"_s, u"lbl_Anzahl"_s, u"2 Bilder"_s)});
}

void Rundgang::plane_Drehen() {
  schritt(
      u"Klick auf „Bilder zuordnen …“: Der Dialog zeigt beide."_s, {klick(u"cmd_Zuordnen"_s)}, dialog_bereit(Kopf, 2));
  schritt(u"Klick auf „90° nach rechts“: Das erste Bild ist gedreht."_s,
      {[this] { gedreht_ = groesse_von(erste_Datei()).transposed(); }, klick(u"SSC_Drehen90"_s)},
      beide(dialog_bereit(Kopf, 2), [this] { return groesse_von(erste_Datei()) == gedreht_; }),
      {bild(u"bild_gedreht"_s)});
}

void Rundgang::plane_Exif() {
  schritt(u"Klick auf den Exif-Knopf: Die Eigenschaften des Bildes erscheinen."_s, {klick(u"SSC_ExifInfo"_s)},
      fenster_offen(u"frm_BildInfo"_s), {bild(u"eigenschaften"_s)});
  schritt(u"Escape verlässt die Eigenschaften, ein zweites den Dialog."_s, {taste(Qt::Key_Escape)}, dialog_offen(),
      {taste(Qt::Key_Escape)});
  schritt(u"Ein Bild in der Übersicht gewählt und „Exif …“ geklickt: Seine Eigenschaften erscheinen."_s,
      {klick_erste_Vorschau(), klick(u"cmd_Exif"_s)}, fenster_offen(u"frm_BildInfo"_s));
  schritt(u"Klick auf „OK“: Das Programm ist wieder vorn."_s, {klick(u"cmd_OK"_s)}, zurueck());
}

void Rundgang::plane_Aufraeumen() {
  const auto ist_da = [this](const QString& datei) { return [=, this] { return datei_da(datei); }; };
  schritt(u"Klick auf „Bilderbaum aufräumen …“: Das Programm zeigt, was ginge, und fragt."_s,
      {klick(u"cmd_Aufraeumen"_s)}, fenster_offen(u"Aufraeumfenster"_s),
      {pruefe(u"die entfernte Datei liegt noch in der Ablage"_s, ist_da(Entfernt)), bild(u"aufraeumen_frage"_s)});
  schritt(u"Escape: Nichts ist gelöscht."_s, {taste(Qt::Key_Escape)}, zurueck_mit(u"Nichts ist gelöscht."_s),
      {pruefe(u"die entfernte Datei ist noch da"_s, ist_da(Entfernt))});
  schritt(u"Noch einmal, und mit „in den Papierkorb verschieben“ bestätigt: Was niemand benutzt, ist fort."_s,
      {klick(u"cmd_Aufraeumen"_s)}, fenster_offen(u"Aufraeumfenster"_s), {klick(u"cmd_Loeschen"_s)});
  schritt(u"Die zugeordneten Bilder sind alle noch da."_s, {}, beide(zurueck(), nicht(ist_da(Entfernt))),
      {pruefe(u"ein zugeordnetes Bild ist da"_s, ist_da(Behalten)), bild(u"aufgeraeumt"_s)});
  schritt(u"Klick auf „Papierkorb …“: Das Aufgeräumte steht da."_s, {klick(u"cmd_Papierkorb"_s)},
      fenster_offen(u"Papierkorbfenster"_s), {bild(u"papierkorb"_s)});
  schritt(u"Klick auf „Zurückholen …“: Das Fenster fragt."_s, {klick(u"cmd_Zurueckholen"_s)},
      meldung_offen(u"Papierkorb"_s));
  schritt(u"Klick auf „Ja“: Die Datei ist wieder da."_s, {antworte(u"Ja"_s)},
      beide(fenster_offen(u"Papierkorbfenster"_s), ist_da(Entfernt)));
  schritt(u"Escape: Das Programm ist wieder vorn."_s, {taste(Qt::Key_Escape)}, zurueck());
}
