// What the window does with pictures beside the assignment: Exif properties, the search, clearing the picture tree.
#include <QScopedValueRollback>

#include "dialogs/assignment/clsDialoge.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufraeumen/Aufraeumen.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Meldungszeilen.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/aufraeumen/Aufraeumfenster.h"
#include "host/fenster/aufraeumen/Aufraeumfortschritt.h"
#include "host/fenster/aufraeumen/Papierkorbfenster.h"
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

QString gross(QString satz) {
  satz[0] = satz[0].toUpper();
  return satz;
}

/// What went and what did not, where the user has stopped it on the way.
void zeige_Angehaltenes(const Aufraeumen& aufraeumen, const Aufraeumen::Ergebnis& ergebnis, const Aufraeumplan& liste) {
  QStringList weg;
  QStringList da = ergebnis.geblieben;
  for (std::size_t i = 0; i < liste.Posten.size(); ++i) {
    const QString pfad = aufraeumen.angezeigt(liste.Posten[i]);
    if (i >= ergebnis.getan)
      da.append(pfad);
    else if (!ergebnis.geblieben.contains(pfad))
      weg.append(pfad);
  }
  MsgBox(u"Das Aufräumen ist angehalten.\r\n\r\n%1:\r\n%2\r\n\r\nNoch da:\r\n%3"_s.arg(
             gross(Aufraeumen::worte(ergebnis)), meldungszeilen(weg), meldungszeilen(da)),
      Knoepfe::OK, Symbol::Information, Titel);
}

/// Nothing goes; what stays although it looks free is named.
QString sage_nichts_zu_tun(const Aufraeumen& aufraeumen, const Aufraeumplan& plan) {
  const QString nichts_zu_tun = u"Es gibt nichts aufzuräumen."_s;
  QStringList saetze = QStringList{nichts_zu_tun} + aufraeumen.warnungen(plan);
  QStringList bleibt;
  for (const Bleibendes& b : plan.Bleibend)
    bleibt.append(u"„%1“ bleibt: %2."_s.arg(aufraeumen.angezeigt(b), Aufraeumen::worte(b.Warum)));
  if (!bleibt.isEmpty()) saetze.append(meldungszeilen(bleibt));
  MsgBox(saetze.join(u"\r\n\r\n"_s), Knoepfe::OK, Symbol::Information, Titel);
  return nichts_zu_tun;
}

/// Shows what would go, asks, and clears after a yes; gives what is to be told in the end.
QString raeume_nach_Frage(Aufraeumen& aufraeumen, QWidget* ueber) {
  const Aufraeumplan liste = mit_Fortschritt(ueber, [&](const auto& f) { return aufraeumen.liste(f); });
  if (liste.Posten.empty()) return sage_nichts_zu_tun(aufraeumen, liste);
  Aufraeumfenster fenster(aufraeumen, liste, ueber);
  if (fenster.exec() != QDialog::Accepted) return u"Nichts ist gelöscht."_s;
  const QSet<QString> ausgenommen = fenster.ausgenommen();
  const Aufraeumplan plan = Aufraeumen::ohne(liste, ausgenommen);
  const auto ergebnis = mit_Fortschritt(
      ueber, [&](const auto& f) { return aufraeumen.fuehre_aus(liste, f, ausgenommen, fenster.ist_endgueltig()); });
  const QString angehalten = aufraeumen.angehalten(ergebnis, plan);
  if (ergebnis.getan > 0 && !angehalten.isEmpty()) zeige_Angehaltenes(aufraeumen, ergebnis, plan);
  if (!angehalten.isEmpty()) return u"Bilderbaum: "_s + angehalten;
  const QStringList& geblieben = ergebnis.geblieben;
  const QString womit = fenster.ist_endgueltig() ? u"gelöscht"_s : u"in den Papierkorb verschoben"_s;
  return geblieben.isEmpty() ? u"Bilderbaum aufgeräumt: %1 %2."_s.arg(QString::number(plan.Posten.size()), womit)
                             : u"Bilderbaum: NICHT %1 sind %2."_s.arg(womit, geblieben.join(u", "_s));
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
    Aufraeumen aufraeumen(store, platz_.verbindung(), platz_.wurzel(), platz_.wurzel(),
        {std::chrono::minutes(platz_.optionen().schonfrist)});
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

void Hauptfenster::zeige_Papierkorb() {
  if (dialog_offen_) return;
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
    return;
  }
  {
    const QScopedValueRollback offen(dialog_offen_, true);
    const Papierkorb korb(platz_.wurzel());
    Papierkorbfenster(korb, this).exec();
  }
  zeige_gewaehlten();
}
