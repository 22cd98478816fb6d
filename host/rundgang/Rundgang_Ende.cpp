// How the tour leaves the dialog: questions, saving, display only, leaving without saving.
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QPlainTextEdit>

#include "host/betrieb/beispiel/Datenordner.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Umbenannt = u"Belege\\24-2003\\Gästebad_06"_s;
const QString Zweites = u"Belege\\24-2003\\Bad_0620240305_093000"_s;

}  // namespace

void Rundgang::plane_Fragen() {
  schritt(
      u"Klick auf „Zurück“: Der Dialog fragt nach den Änderungen."_s,
      [this] { hand_.klicke(element(u"cmd_Abbruch"_s)); }, [this] { return meldung_offen(u"Achtung"_s); },
      [this] { bild(u"frage_beim_verlassen"_s); });
  schritt(
      u"Escape heißt „Abbrechen“: Der Dialog bleibt mit allem, was geschrieben war."_s,
      [this] { hand_.taste(Qt::Key_Escape); }, [this] { return dialog_offen(); },
      [this] {
    folge_.erwarte(u"Name"_s, text(u"txt_BildName"_s), u"Gästebad_06"_s);
    folge_.erwarte(u"noch ist nichts geschrieben"_s, zeilen(u"RE"_s, u"24-2003"_s) == vorher_);
      });
}

void Rundgang::plane_Speichern() {
  schritt(
      u"Klick auf „Zuordnung speichern“: Der Dialog fragt nach dem umbenannten Bild."_s,
      [this] { hand_.klicke(element(u"SSC_ZuordnungSpeichern"_s)); },
      [this] { return meldung_offen(u"Dateinamen wurden verändert"_s); }, [this] { bild(u"frage_umbenennen"_s); });
  schritt(
      u"Klick auf „Ja“: Der Dialog ist zu, das Programm nennt die geschriebenen Zeilen."_s,
      [this] { klicke_Antwort(u"Ja"_s); },
      [this] { return zurueck_mit(u"Beleg RE 24-2003: 4 Zeilen geschrieben: 2 geändert, 2 entfernt."_s); },
      [this] {
    folge_.erwarte(u"Zahl der Bilder"_s, text(u"lbl_Anzahl"_s), u"2 Bilder"_s);
    bild(u"gespeichert"_s);
      });
}

void Rundgang::plane_Anzeigen() {
  schritt(
      u"Klick auf „Nur anzeigen …“: Der Dialog hat keinen Knopf zum Speichern."_s,
      [this] { hand_.klicke(element(u"cmd_Anzeigen"_s)); },
      [this] { return dialog_bereit(u"Beleg RE 24-2003 – Familie Öztürk, Kirchzarten · Projekt P-24-11"_s, 2); },
      [this] {
    folge_.erwarte(u"„Zuordnung speichern“ ist nicht da"_s, !zu_sehen(u"SSC_ZuordnungSpeichern"_s));
    folge_.erwarte(u"„Drucken“ ist gesperrt"_s, !element(u"chk_Drucken"_s).isEnabled());
    bild(u"nur_anzeigen"_s);
      });
  schritt(
      u"Getipptes bleibt ohne Wirkung, Escape verlässt den Dialog ohne Frage."_s,
      [this] {
    hand_.tippe(u"nichts"_s);
    for (const QString& feld : {u"txt_BildName"_s, u"txt_BildText"_s, u"txt_BildInfo"_s})
      folge_.erwarte(feld + u" bleibt"_s, !text(feld).contains(u"nichts"_s));
    hand_.taste(Qt::Key_Escape);
      },
      [this] { return zurueck_mit(u"Beleg RE 24-2003: Nur angezeigt; nichts ist geschrieben."_s); });
}

void Rundgang::plane_Verwerfen() {
  schritt(
      u"Doppelklick auf AB 24-1001: Der Dialog zeigt seine Bilder."_s,
      [this] { klicke_Vorgang(u"AB 24-1001"_s, true); },
      [this] { return dialog_bereit(u"Beleg AB 24-1001 – Bäckerei Huber, Freiburg · Projekt P-24-07"_s, 4); },
      [this] {
    folge_.erwarte(u"„Zuordnung speichern“ ist gesperrt"_s, !element(u"SSC_ZuordnungSpeichern"_s).isEnabled());
      });
  schritt(
      u"Die Taste „Bild auf“ geht zum nächsten Bild, sein Text wird überschrieben."_s,
      [this] {
    hand_.taste(Qt::Key_PageUp);
    ueberschreibe(u"txt_BildText"_s, u"wird verworfen"_s);
      },
      [this] { return text(u"SSP_Anzahl(1)"_s) == "2"_L1 && element(u"SSC_ZuordnungSpeichern"_s).isEnabled(); },
      [this] { bild(u"anderer_vorgang"_s); });
  schritt(
      u"Das Fenster am Rahmen geschlossen: Der Dialog fragt."_s,
      [] {
    QCloseEvent schliessen;
    QCoreApplication::sendEvent(Hand::fenster_vorn()->windowHandle(), &schliessen);
      },
      [this] { return meldung_offen(u"Achtung"_s); });
  schritt(
      u"Klick auf „Nein“: Nichts ist geschrieben."_s, [this] { klicke_Antwort(u"Nein"_s); },
      [this] { return zurueck_mit(u"Beleg AB 24-1001: Nichts geändert."_s); },
      [this] {
    folge_.erwarte(u"Zeilen zu AB 24-1001"_s, zeilen(u"AB"_s, u"24-1001"_s).join(u'\n'), anderer_vorher_.join(u'\n'));
      });
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
