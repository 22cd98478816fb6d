// What the window does with the assignments of a record beside its dialog: all of a picture's, and further ones.
#include <QScopedValueRollback>

#include "dialogs/assignment/clsDialoge.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Hochkomma.h"
#include "host/betrieb/vorgang/Bildsammlung.h"
#include "host/betrieb/vorgang/Wurzelgrenze.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/dialog/Entfernungsfrage.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bildzuordnung"_s;

/// Moves the collection's cursor to a picture; false when the record does not have it any more.
bool waehle_Bild(clsBildZuordnungen& store, const Vorschaubild& bild) {
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (store.Bild_Pfad() == bild.ordner && store.Bild_Bildname() + u'.' + store.Bild_BildExt() == bild.datei)
      return true;
  }
  return false;
}

/// The record's assignments for a dialog that puts them into statements; ends with Abbruch where one can't be.
std::shared_ptr<clsBildZuordnungen> lies_zum_Bearbeiten(const Arbeitsplatz& platz, const Vorgang& vorgang) {
  const auto sammlung = lies_Bildsammlung(platz, vorgang);
  hochkomma::pruefe_Zeilen(*sammlung);
  return sammlung;
}

}  // namespace

bool Hauptfenster::erlaubt_Bearbeiten(const Vorgang& vorgang) {
  std::shared_ptr<clsBildZuordnungen> sammlung;
  // What keeps the record from being read is told by the road itself.
  if (!gelingt([&] { sammlung = lies_Bildsammlung(platz_, vorgang); })) return true;
  try {
    hochkomma::pruefe_Zeilen(*sammlung);
    return true;
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
    melde(abbruch.text());
    return false;
  }
}

void Hauptfenster::zeige_AlleZuordnungen() {
  const Vorschaubild* gewaehltes = ansicht_->lst_Bilder->gewaehltes();
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehltes || !gewaehlt || dialog_offen_) return;
  const Vorschaubild bild = *gewaehltes;
  const Vorgang vorgang = *gewaehlt;
  const QScopedValueRollback offen(dialog_offen_, true);
  QString ergebnis = u"Die Zuordnungen von „%1“ sind gezeigt."_s.arg(bild.datei);
  try {
    // A missing root shows as missing files only; the assignments are there all the same.
    static_cast<void>(platz_.wurzel_fehlt());
    const auto sammlung = lies_zum_Bearbeiten(platz_, vorgang);
    clsBildZuordnungen& store = *sammlung;
    if (!waehle_Bild(store, bild))
      throw Abbruch(Ausgang::Datenbank, u"Das Bild ist dem Vorgang nicht mehr zugeordnet."_s);
    wurzelgrenze::pruefe_Bild(*platz_.verbindung(), store.Bild_Bildname(), store.Bild_BildExt());
    bool eigene = false;
    clsDialoge().Fkt_Aufruf_Dialog_AlleZuordnungen(platz_.anwendungsobjekt(), platz_.wurzel(),
        vorgang::bildordner(vorgang), store.Bild_Key1(), store.Bild_Key2(), store.Bild_Key3(), store.Bild_Key4(),
        store.Bild_Bildname(), store.Bild_BildExt(), store.Bild_Typ1(), store.Bild_Typ2(),
        store.cGL_jmtVerarbeitungsdatum, vorgang::infozeile(vorgang), eigene);
    if (eigene) store.Bild_Delete(true);
    if (eigene && !entfernungsfrage::bejaht(*platz_.verbindung(), store)) {
      ergebnis = u"Die Zuordnung von „%1“ zu diesem Vorgang bleibt."_s.arg(bild.datei);
    } else if (eigene) {
      const QString grund = entferne_Zeile(platz_, sammlung, vorgang);
      ergebnis = u"Die Zuordnung von „%1“ zu diesem Vorgang ist entfernt."_s.arg(bild.datei);
      if (!grund.isEmpty()) ergebnis = u"Die Zuordnung von „%1“ ist NICHT entfernt: %2"_s.arg(bild.datei, grund);
    }
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
    ergebnis = abbruch.text();
  }
  aktualisiere();
  melde(ergebnis);
}

void Hauptfenster::zeige_WeitereZuordnungen() {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_) return;
  const Vorgang vorgang = *gewaehlt;
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund + u"\r\n\r\nOhne sie ist nichts zuzuordnen."_s, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
    return;
  }
  const QScopedValueRollback offen(dialog_offen_, true);
  try {
    const auto sammlung = lies_zum_Bearbeiten(platz_, vorgang);
    wurzelgrenze::pruefe_Zeilen(*sammlung);
    clsDialoge().Fkt_Aufruf_Dialog_WeitereZuordnungen(platz_.anwendungsobjekt(), sammlung, platz_.wurzel(),
        vorgang::bildordner(vorgang), vorgang.satz.key1, vorgang.satz.key2, vorgang.satz.key3, vorgang.satz.key4,
        vorgang.satz.typ1, vorgang.satz.typ2, sammlung->cGL_jmtVerarbeitungsdatum, vorgang::infozeile(vorgang));
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
  }
  aktualisiere();
}
