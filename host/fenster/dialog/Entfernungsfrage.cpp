#include "host/fenster/dialog/Entfernungsfrage.h"

#include <utility>

#include "dialogs/assignment/clsDialoge.h"
#include "host/betrieb/vorgang/Verwendung.h"
#include "host/fenster/Meldungszeilen.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

void behalte_alle(clsBildZuordnungen& bilder) {
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    bilder.AktInd(i);
    bilder.Bild_Delete(false);
  }
}

}  // namespace

bool entfernungsfrage::bejaht(adodb::Connection& verbindung, clsBildZuordnungen& bilder) {
  const QStringList saetze = verwendung::saetze(verbindung, bilder);
  if (saetze.isEmpty()) return true;
  return MsgBox(meldungszeilen(saetze) +
                 u"\r\n\r\nEntfernt wird nur die Zuordnung zu diesem Vorgang; die anderen behalten ihre. Entfernen?"_s,
             Knoepfe::JaNein, Symbol::Frage, u"Bildzuordnung"_s) == Antwort::Ja;
}

Zuordnungsdialog entfernungsfrage::hinter(Zuordnungsdialog dialog) {
  if (!dialog) dialog = [](const auto&... argumente) { return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(argumente...); };
  return [dialog = std::move(dialog)](const std::shared_ptr<Anwendungsobjekt>& anwendung, const QString& wurzel,
             const QString& pfad, const std::shared_ptr<clsBildZuordnungen>& bilder, const QString& typ1,
             const QString& typ2, const QString& infozeile, bool nur_Anzeige, bool nur_Anhang) {
    const bool ergebnis = dialog(anwendung, wurzel, pfad, bilder, typ1, typ2, infozeile, nur_Anzeige, nur_Anhang);
    const auto verbindung = anwendung->ConnectionDB();
    if (!nur_Anzeige && verbindung && !bejaht(*verbindung, *bilder)) behalte_alle(*bilder);
    return ergebnis;
  };
}
