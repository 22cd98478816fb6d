// What the tour does in the program's window.
#include <QListView>
#include <QTreeView>

#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

void Rundgang::plane_Fenster() {
  schritt(
      u"Das Programm startet zum ersten Mal: Es legt die Beispieldaten an und zeigt die Vorgänge."_s, {},
      [this] { return zu_sehen(u"lbl_Ueberschrift"_s) && text(u"lbl_Ueberschrift"_s) == u"Kein Vorgang gewählt"_s; },
      [this] {
    folge_.erwarte(
        u"Arten in der Liste"_s, QString::number(element<QTreeView>(u"tree_Vorgaenge"_s).model()->rowCount()), u"4"_s);
    folge_.erwarte(u"ohne Vorgang ist „Bilder zuordnen …“ nicht zu sehen"_s, !zu_sehen(u"cmd_Zuordnen"_s));
    vorher_ = zeilen(u"RE"_s, u"24-2003"_s);
    anderer_vorher_ = zeilen(u"AB"_s, u"24-1001"_s);
    folge_.erwarte(u"Zeilen zu RE 24-2003"_s, QString::number(vorher_.size()), u"4"_s);
    bild(u"fenster_leer"_s);
      });
  schritt(
      u"Klick auf AB 24-1001: Rechts stehen seine Bilder."_s, [this] { klicke_Vorgang(u"AB 24-1001"_s); },
      [this] { return text(u"lbl_Nummer"_s) == "AB 24-1001"_L1; },
      [this] {
    folge_.erwarte(u"Zahl der Bilder"_s, text(u"lbl_Anzahl"_s), u"4 Bilder"_s);
    bild(u"vorgang_gewaehlt"_s);
      });
  schritt(
      u"Klick auf AN 24-3005: Er hat noch keine Bilder."_s, [this] { klicke_Vorgang(u"AN 24-3005"_s); },
      [this] { return text(u"lbl_Nummer"_s) == "AN 24-3005"_L1 && zu_sehen(u"lbl_KeineBilder"_s); },
      [this] { bild(u"vorgang_ohne_bilder"_s); });
}

void Rundgang::plane_Waehlen() {
  schritt(
      u"„öztürk“ in den Filter getippt: Es bleiben der Beleg und die Anlagen der Familie."_s,
      [this] { ueberschreibe(u"txt_Filter"_s, u"öztürk"_s); },
      [this] { return element<QTreeView>(u"tree_Vorgaenge"_s).model()->rowCount() == 2; },
      [this] { bild(u"filter"_s); });
  schritt(
      u"„Zeppelin“ in den Filter getippt: Kein Vorgang passt."_s,
      [this] { ueberschreibe(u"txt_Filter"_s, u"Zeppelin"_s); }, [this] { return zu_sehen(u"lbl_Leer"_s); },
      [this] {
    folge_.erwarte(u"Hinweis"_s, text(u"lbl_Leer"_s), u"Kein Vorgang enthält „Zeppelin“."_s);
    bild(u"filter_ohne_treffer"_s);
      });
  schritt(
      u"Klick auf „Filter leeren“: Alle Vorgänge sind wieder da."_s,
      [this] { hand_.klicke(element(u"cmd_FilterLeeren"_s)); },
      [this] { return element<QTreeView>(u"tree_Vorgaenge"_s).model()->rowCount() == 4; });
  schritt(
      u"Klick auf RE 24-2003: Eine der vier Dateien fehlt."_s, [this] { klicke_Vorgang(u"RE 24-2003"_s); },
      [this] { return text(u"lbl_Nummer"_s) == "RE 24-2003"_L1; },
      [this] {
    folge_.erwarte(u"Zahl der Bilder"_s, text(u"lbl_Anzahl"_s), u"4 Bilder, 1 Datei fehlt"_s);
    bild(u"vorgang_mit_fehlender_datei"_s);
      });
}

/// Nobody may see every row marked for removal only because a drive is gone.
void Rundgang::plane_Bildablage() {
  const QString hier = datenordner::bilder(daten_);
  const QString weg = hier + u"-weg"_s;
  schritt(
      u"Die Bildablage ist nicht zu erreichen: Statt des Dialogs kommt eine Meldung."_s,
      [=, this] {
    // What is not read yet could not be read any more.
    fenster_->ansicht()->lst_Bilder->lade_Sichtbare();
    FileSystemObject().MoveFolder(hier, weg);
    hand_.klicke(element(u"cmd_Zuordnen"_s));
      },
      [this] { return meldung_offen(u"Bildzuordnung"_s); }, [this] { bild(u"bildablage_fehlt"_s); });
  schritt(
      u"Eingabetaste: Die Meldung ist fort, nichts ist geöffnet."_s, [this] { hand_.taste(Qt::Key_Return); },
      [this] { return zurueck_mit(u"Beleg AB 24-1001: Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s); },
      [=, this] {
    FileSystemObject().MoveFolder(weg, hier);
    folge_.erwarte(u"Zeilen zu AB 24-1001"_s, zeilen(u"AB"_s, u"24-1001"_s).join(u'\n'), anderer_vorher_.join(u'\n'));
      });
}
