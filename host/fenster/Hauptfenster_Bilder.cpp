// What the window does with pictures beside the assignment: Exif properties, the search, clearing the picture tree.
#include <QScopedValueRollback>

#include "dialogs/assignment/clsDialoge.h"
#include "host/betrieb/Aufraeumen.h"
#include "host/betrieb/Ausgang.h"
#include "host/fenster/Aufraeumfenster.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Meldungszeilen.h"
#include "host/fenster/Vorgangsansicht.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bildzuordnung"_s;
const QString Nichts = u"\r\n\r\nNichts ist gelöscht."_s;

/// Runs a part of the clearing under its window, which is gone afterwards.
auto mit_Fortschritt(QWidget* ueber, auto&& arbeit) {
  Aufraeumfortschritt fenster(ueber);
  return arbeit([&](Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von) {
    return fenster.zeige(schritt, getan, von);
  });
}

/// What went and what did not, where the user has stopped it on the way.
void zeige_Angehaltenes(
    const Aufraeumen& aufraeumen, const Aufraeumen::Ergebnis& ergebnis, const Aufraeumliste& liste) {
  QStringList weg;
  QStringList da = ergebnis.geblieben;
  for (std::size_t i = 0; i < liste.Posten.size(); ++i) {
    const QString pfad = aufraeumen.angezeigt(liste.Posten[i]);
    if (i >= ergebnis.getan)
      da.append(pfad);
    else if (!ergebnis.geblieben.contains(pfad))
      weg.append(pfad);
  }
  MsgBox(u"Das Aufräumen ist angehalten.\r\n\r\nGelöscht sind:\r\n%1\r\n\r\nNoch da sind:\r\n%2"_s.arg(
             meldungszeilen(weg), meldungszeilen(da)),
      Knoepfe::OK, Symbol::Information, Titel);
}

/// Shows what would go, asks, and clears after a yes; gives what is to be told in the end.
QString raeume_nach_Frage(Aufraeumen& aufraeumen, QWidget* ueber) {
  const Aufraeumliste liste = mit_Fortschritt(ueber, [&](const auto& f) { return aufraeumen.liste(f); });
  if (liste.Posten.empty()) {
    const QString nichts_zu_tun = u"Es gibt nichts aufzuräumen."_s;
    const QStringList saetze = QStringList{nichts_zu_tun} + aufraeumen.warnungen(liste);
    MsgBox(saetze.join(u"\r\n\r\n"_s), Knoepfe::OK, Symbol::Information, Titel);
    return nichts_zu_tun;
  }
  if (!darf_aufraeumen(aufraeumen, liste, ueber)) return u"Nichts ist gelöscht."_s;
  const auto ergebnis = mit_Fortschritt(ueber, [&](const auto& f) { return aufraeumen.fuehre_aus(liste, f); });
  const QString angehalten = aufraeumen.angehalten(ergebnis, liste);
  if (ergebnis.getan > 0 && !angehalten.isEmpty()) zeige_Angehaltenes(aufraeumen, ergebnis, liste);
  if (!angehalten.isEmpty()) return u"Bilderbaum: "_s + angehalten;
  const QStringList& geblieben = ergebnis.geblieben;
  return geblieben.isEmpty() ? u"Bilderbaum aufgeräumt: %1 gelöscht."_s.arg(liste.Posten.size())
                             : u"Bilderbaum: NICHT gelöscht sind %1."_s.arg(geblieben.join(u", "_s));
}

}  // namespace

void Hauptfenster::zeige_Exif() {
  if (dialog_offen_) return;
  const Vorschaubild* bild = ansicht_->lst_Bilder->gewaehltes();
  if (!bild) return melde(u"Exif: Wählen Sie zuerst ein Bild des Vorgangs aus."_s);
  const QString pfad = platz_.wurzel() + u'\\' + bild->ordner + u'\\' + bild->datei;
  // The reader would make a missing file; what a row names out of the root counts as missing.
  if (bild->ausserhalb || !FileSystemObject().FileExists(pfad)) {
    MsgBox(u"Die Datei „%1\\%2“ fehlt in der Bildablage."_s.arg(bild->ordner, bild->datei), Knoepfe::OK,
        Symbol::Ausrufezeichen, Titel);
    return;
  }
  const QScopedValueRollback offen(dialog_offen_, true);
  clsDialoge().Fkt_Aufruf_Dialog_BildInfo(pfad, {}, true);
}

void Hauptfenster::suche_Bilder() {
  if (dialog_offen_) return;
  static_cast<void>(platz_.wurzel_fehlt());
  auto funde = std::make_shared<XArrayDBObject>();
  funde->ReDim(0, 0, 0, 10);
  const QScopedValueRollback offen(dialog_offen_, true);
  const bool genommen =
      clsDialoge().Fkt_Aufruf_Dialog_BilderSuchen(platz_.anwendungsobjekt(), platz_.wurzel() + u'\\', funde);
  // The search can turn pictures of the record too.
  zeige_gewaehlten();
  if (!genommen) return melde(u"Bilder suchen: nichts gewählt."_s);
  // The last row is empty.
  const std::int32_t anzahl = funde->UpperBound(XArrayDBObject::Dimension::Zeilen);
  QStringList namen;
  for (std::int32_t i = 0; i < anzahl; ++i) namen.append(mit_Leertext(funde->Value(i, 0)));
  melde(anzahl == 0 ? u"Bilder suchen: nichts gewählt."_s
                    : u"Bilder suchen: %1 gewählt – %2"_s.arg(anzahl).arg(namen.join(u", "_s)));
}

void Hauptfenster::raeume_auf() {
  if (dialog_offen_) return;
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund + Nichts, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
    return;
  }
  const QScopedValueRollback offen(dialog_offen_, true);
  try {
    clsBildZuordnungen store;
    if (!platz_.verbindung()) platz_.oeffne();
    store.Init(platz_.verbindungszeichenfolge(), platz_.verbindung(), {});
    Aufraeumen aufraeumen(store, platz_.verbindung(), platz_.wurzel(), platz_.wurzel());
    melde(raeume_nach_Frage(aufraeumen, this));
  } catch (const Abbruch& abbruch) {
    // The user knows why; what changed meanwhile is told with these words already.
    const bool gewollt = abbruch.text() == Aufraeumen::abgebrochen();
    if (gewollt) melde(u"Bilderbaum: "_s + abbruch.text());
    const bool gesagt = abbruch.ausgang() == Ausgang::Teilweise;
    if (!gewollt) MsgBox(abbruch.text() + (gesagt ? QString() : Nichts), Knoepfe::OK, Symbol::Kritisch, Titel);
  } catch (const Laufzeitfehler& fehler) {
    MsgBox(fehler.Beschreibung() + Nichts, Knoepfe::OK, Symbol::Kritisch, Titel);
  }
  zeige_gewaehlten();
}
