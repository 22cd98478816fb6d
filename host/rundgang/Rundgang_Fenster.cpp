// What the tour does in the program's window.
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Liste = u"tree_Vorgaenge"_s;

}  // namespace

void Rundgang::plane_Fenster() {
  const Tat sieh_nach = [this] {
    folge_.erwarte(u"Arten in der Liste"_s, QString::number(zeilenzahl(Liste)), u"4"_s);
    folge_.erwarte(u"ohne Vorgang ist „Bilder zuordnen …“ nicht zu sehen"_s, !zu_sehen(u"cmd_Zuordnen"_s));
    vorher_ = zeilen(u"RE"_s, u"24-2003"_s);
    anderer_vorher_ = zeilen(u"AB"_s, u"24-1001"_s);
    folge_.erwarte(u"Zeilen zu RE 24-2003"_s, QString::number(vorher_.size()), u"4"_s);
  };
  schritt(u"Das Programm startet zum ersten Mal: Es legt die Beispieldaten an und zeigt die Vorgänge."_s, {},
      beide(sichtbar(u"lbl_Ueberschrift"_s), zeigt(u"lbl_Ueberschrift"_s, u"Kein Vorgang gewählt"_s)),
      {sieh_nach, bild(u"fenster_leer"_s)});
  schritt(u"Klick auf AB 24-1001: Rechts stehen seine Bilder."_s, {klick_Vorgang(u"AB 24-1001"_s)},
      zeigt(u"lbl_Nummer"_s, u"AB 24-1001"_s),
      {pruefe(u"Zahl der Bilder"_s, u"lbl_Anzahl"_s, u"4 Bilder"_s), bild(u"vorgang_gewaehlt"_s)});
  schritt(u"Klick auf AN 24-3005: Er hat noch keine Bilder."_s, {klick_Vorgang(u"AN 24-3005"_s)},
      beide(zeigt(u"lbl_Nummer"_s, u"AN 24-3005"_s), sichtbar(u"lbl_KeineBilder"_s)), {bild(u"vorgang_ohne_bilder"_s)});
  schritt(u"Klick auf „Über …“: Fassung, Bibliotheken und Treiber."_s, {klick(u"cmd_Ueber"_s)},
      meldung_offen(u"Über Bildzuordnung"_s), {bild(u"ueber"_s)});
  schritt(u"Eingabetaste: Die Angaben sind fort."_s, {taste(Qt::Key_Return)}, sichtbar(u"lbl_KeineBilder"_s));
}

void Rundgang::plane_Waehlen() {
  schritt(u"„öztürk“ in den Filter getippt: Es bleiben der Beleg und die Anlagen der Familie."_s,
      {ueberschreibe(u"txt_Filter"_s, u"öztürk"_s)}, [this] { return zeilenzahl(Liste) == 2; }, {bild(u"filter"_s)});
  schritt(u"„Zeppelin“ in den Filter getippt: Kein Vorgang passt."_s, {ueberschreibe(u"txt_Filter"_s, u"Zeppelin"_s)},
      sichtbar(u"lbl_Leer"_s),
      {pruefe(u"Hinweis"_s, u"lbl_Leer"_s, u"Kein Vorgang enthält „Zeppelin“."_s), bild(u"filter_ohne_treffer"_s)});
  schritt(u"Klick auf „Filter leeren“: Alle Vorgänge sind wieder da."_s, {klick(u"cmd_FilterLeeren"_s)},
      [this] { return zeilenzahl(Liste) == 4; });
  schritt(u"Klick auf RE 24-2003: Eine der vier Dateien fehlt."_s, {klick_Vorgang(u"RE 24-2003"_s)},
      zeigt(u"lbl_Nummer"_s, u"RE 24-2003"_s),
      {pruefe(u"Zahl der Bilder"_s, u"lbl_Anzahl"_s, u"4 Bilder, 1 Datei fehlt"_s),
          bild(u"vorgang_mit_fehlender_datei"_s)});
}

/// Nobody may see every row marked for removal only because a drive is gone.
void Rundgang::plane_Bildablage() {
  const auto verschiebe = [](const QString& von, const QString& nach) {
    return [=] { FileSystemObject().MoveFolder(von, nach); };
  };
  const QString hier = datenordner::bilder(daten_);
  const QString weg = hier + u"-weg"_s;
  // What is not read yet could not be read any more.
  const Tat lade_alle = [this] { fenster_->ansicht()->lst_Bilder->lade_Sichtbare(); };
  schritt(u"Die Bildablage ist nicht zu erreichen: Statt des Dialogs kommt eine Meldung."_s,
      {lade_alle, verschiebe(hier, weg), klick(u"cmd_Zuordnen"_s)}, meldung_offen(u"Bildzuordnung"_s),
      {bild(u"bildablage_fehlt"_s)});
  schritt(u"Eingabetaste: Die Meldung ist fort, nichts ist geöffnet."_s, {taste(Qt::Key_Return)},
      zurueck_mit(u"Beleg AB 24-1001: Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s),
      {verschiebe(weg, hier), pruefe_anderen_Vorgang()});
}
