// How the tour leaves the dialog: questions, saving, display only, leaving without saving.
#include <QCloseEvent>
#include <QCoreApplication>

#include "host/betrieb/beispiel/Datenordner.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Umbenannt = u"Belege\\24-2003\\Gästebad_06"_s;
const QString Zweites = u"Belege\\24-2003\\Bad_0620240305_093000"_s;

}  // namespace

void Rundgang::plane_Speichern() {
  schritt(u"Klick auf „Zurück“: Der Dialog fragt nach den Änderungen."_s, {klick(u"cmd_Abbruch"_s)},
      meldung_offen(u"Achtung"_s), {bild(u"frage_beim_verlassen"_s)});
  schritt(u"Escape heißt „Abbrechen“: Der Dialog bleibt mit allem, was geschrieben war."_s, {taste(Qt::Key_Escape)},
      dialog_offen(),
      {pruefe(u"Name"_s, u"txt_BildName"_s, u"Gästebad_06"_s),
          pruefe(u"noch ist nichts geschrieben"_s, [this] { return zeilen(u"RE"_s, u"24-2003"_s) == vorher_; })});
  schritt(u"Klick auf „Zuordnung speichern“: Der Dialog fragt nach dem umbenannten Bild."_s,
      {klick(u"SSC_ZuordnungSpeichern"_s)}, meldung_offen(u"Dateinamen wurden verändert"_s),
      {bild(u"frage_umbenennen"_s)});
  schritt(u"Klick auf „Ja“: Der Dialog ist zu, das Programm nennt die geschriebenen Zeilen."_s, {antworte(u"Ja"_s)},
      zurueck_mit(u"Beleg RE 24-2003: 4 Zeilen geschrieben: 2 geändert, 2 entfernt."_s),
      {pruefe(u"Zahl der Bilder"_s, u"lbl_Anzahl"_s, u"2 Bilder"_s), bild(u"gespeichert"_s)});
}

void Rundgang::plane_Anzeigen() {
  schritt(u"Klick auf „Nur anzeigen …“: Der Dialog hat keinen Knopf zum Speichern."_s, {klick(u"cmd_Anzeigen"_s)},
      dialog_bereit(u"Beleg RE 24-2003 – Familie Öztürk, Kirchzarten · Projekt P-24-11"_s, 2),
      {pruefe(u"„Zuordnung speichern“ ist nicht da"_s, nicht(sichtbar(u"SSC_ZuordnungSpeichern"_s))),
          pruefe(u"„Drucken“ ist gesperrt"_s, nicht(frei(u"chk_Drucken"_s))), bild(u"nur_anzeigen"_s)});
  const auto bleibt = [this](const QString& feld) {
    return pruefe(feld + u" bleibt"_s, [=, this] { return !text(feld).contains(u"nichts"_s); });
  };
  schritt(u"Getipptes bleibt ohne Wirkung, Escape verlässt den Dialog ohne Frage."_s,
      {tippe(u"nichts"_s), bleibt(u"txt_BildName"_s), bleibt(u"txt_BildText"_s), bleibt(u"txt_BildInfo"_s),
          taste(Qt::Key_Escape)},
      zurueck_mit(u"Beleg RE 24-2003: Nur angezeigt; nichts ist geschrieben."_s));
}

void Rundgang::plane_Verwerfen() {
  schritt(u"Doppelklick auf AB 24-1001: Der Dialog zeigt seine Bilder."_s, {klick_Vorgang(u"AB 24-1001"_s, true)},
      dialog_bereit(u"Beleg AB 24-1001 – Bäckerei Huber, Freiburg · Projekt P-24-07"_s, 4),
      {pruefe(u"„Zuordnung speichern“ ist gesperrt"_s, nicht(frei(u"SSC_ZuordnungSpeichern"_s)))});
  schritt(u"Die Taste „Bild auf“ geht zum nächsten Bild, sein Text wird überschrieben."_s,
      {taste(Qt::Key_PageUp), ueberschreibe(u"txt_BildText"_s, u"wird verworfen"_s)},
      beide(am_Bild(2), frei(u"SSC_ZuordnungSpeichern"_s)), {bild(u"anderer_vorgang"_s)});
  const Tat schliesse_am_Rahmen = [] {
    QCloseEvent schliessen;
    QCoreApplication::sendEvent(Hand::fenster_vorn()->windowHandle(), &schliessen);
  };
  schritt(
      u"Das Fenster am Rahmen geschlossen: Der Dialog fragt."_s, {schliesse_am_Rahmen}, meldung_offen(u"Achtung"_s));
  schritt(u"Klick auf „Nein“: Nichts ist geschrieben."_s, {antworte(u"Nein"_s)},
      zurueck_mit(u"Beleg AB 24-1001: Nichts geändert."_s), {pruefe_anderen_Vorgang()});
}

void Rundgang::pruefe_Endstand() {
  const QStringList soll{
      u"0 Belege\\24-2003\\Gästebad_06.jpg „Übergabe an Frau Öztürk:\r\nschön geworden, „weiß“ passt“ Druck 1000"_s,
      u"1 Belege\\24-2003\\Bad_0520240305_091500.jpg „Vor der Sanierung“ Druck 0001"_s};
  folge_.erwarte(u"Zeilen am Ende"_s, zeilen(u"RE"_s, u"24-2003"_s).join(u'\n'), soll.join(u'\n'));
  folge_.erwarte(u"die umbenannte Datei ist da"_s, datei_da(Umbenannt + u".jpg"_s));
  folge_.erwarte(u"unter dem alten Namen ist keine mehr da"_s, !datei_da(Zweites + u".jpg"_s));
  const QByteArray info = dateien::lies_alles(datenordner::bilder(daten_) + u'\\' + Umbenannt + u"jpg.txt"_s);
  folge_.erwarte(u"die Textdatei hat den neuen Text"_s,
      info.contains("Ma\xDF"
                    "e gepr\xFC"
                    "ft.") ||
          QString::fromUtf8(info).contains(u"Maße geprüft."_s));
}
