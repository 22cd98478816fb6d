// What the tour does to hand pictures out.
#include "host/betrieb/Namen.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

void Rundgang::plane_Ausgeben() {
  const QString zip = ordner_ + u"\\daten\\AB 24-1001.zip"_s;
  const Tat raeume_weg = [=, this] {
    const FileSystemObject dateien;
    folge_.erwarte(u"die ZIP-Datei ist da"_s, dateien.FileExists(zip));
    if (dateien.FileExists(zip)) dateien.DeleteFile(zip);
  };
  schritt(u"Strg+Umschalt+S: Das Fenster zum Ausgeben der Bilder von AB 24-1001 öffnet sich."_s,
      {taste(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier)},
      beide(fenster_offen(u"Ausgabefenster"_s), zeigt(u"lbl_Meldung"_s, u"4 Bilder im Ordner"_s)));
  schritt(u"Eine ZIP-Datei auf dem Stick genannt und „Texte beilegen“ angekreuzt."_s,
      {ueberschreibe(u"txt_Ziel"_s, u"/media/stick/AB 24-1001.zip"_s), kreuze_an(u"chk_Texte"_s)},
      beide(zeigt(u"lbl_Meldung"_s, u"4 Bilder in einer ZIP-Datei"_s), angekreuzt(u"chk_Texte"_s)),
      {bild(u"bilder_ausgeben"_s)});
  schritt(u"Doch lieber neben die Beispieldaten; Klick auf „Ausgeben“: Die Bilder stehen in der Datei."_s,
      {ueberschreibe(u"txt_Ziel"_s, namen::angezeigt(ordner_) + u"/daten/AB 24-1001.zip"_s), klick(u"cmd_Ausgeben"_s)},
      beide(zurueck(), [this] { return text(u"lbl_Status"_s).contains(u": 4 Bilder ausgegeben nach „"_s); }),
      {raeume_weg, pruefe_anderen_Vorgang()});
}
