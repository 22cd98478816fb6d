#include "host/fenster/dialog/Dialoglauf.h"

#include <QDir>
#include <QJsonArray>

#include "dialogs/assignment/clsDialoge.h"
#include "host/betrieb/Hochkomma.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgang/Wurzelgrenze.h"
#include "host/fenster/Anmeldefenster.h"
#include "host/fenster/dialog/Bildschirm.h"
#include "host/fenster/dialog/Entfernungsfrage.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Moves the collection's cursor to the picture "name.ext" or "Ordner\name.ext"; false when the record does not have
/// it.
bool waehle_Bild(clsBildZuordnungen& store, const QString& angabe) {
  const QString gesucht = text::UCase(QString(angabe).replace(u'/', u'\\'));
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    const QString datei = text::UCase(store.Bild_Bildname() + u'.' + store.Bild_BildExt());
    if (gesucht == datei || gesucht == text::UCase(store.Bild_Pfad()) + u'\\' + datei) return true;
  }
  return false;
}

/// A dialog that tells nothing but that it ran to its end.
Dialogantwort gezeigt(bool gelungen, const QString& text) {
  if (gelungen) return {Ausgang::Erledigt, text, {}, true};
  return {Ausgang::Teilweise, u"Der Dialog endete mit einem Fehler."_s, {}, true};
}

}  // namespace

void Dialoglauf::oeffne_Datenbank() {
  if (platz_.erster_Start())
    throw Abbruch(Ausgang::Aufruf,
        u"Es ist keine Datenbank genannt und keine gemerkt; „--verbindung“ nennt sie, oder ein Start von "
        "„bildzuordnung“ richtet den Datenordner ein."_s);
  if (platz_.braucht_Kennwort() && !bildschirm::hat_Benutzer())
    throw Abbruch(Ausgang::Datenbank,
        u"Der Datenbank fehlt das Kennwort; KVOBILD_KENNWORT oder „--kennwort-von-stdin“ nennt es."_s);
  oeffne_mit_Anmeldung(platz_, nullptr);
}

void Dialoglauf::verlange_Wurzel(const QString& folge) {
  if (const auto grund = platz_.wurzel_fehlt()) throw Abbruch(Ausgang::Datei, *grund + u"\r\n\r\n"_s + folge);
}

std::shared_ptr<clsBildZuordnungen> Dialoglauf::lies_zum_Bearbeiten() const {
  const Zuordnungsweg::Lesung lesung = Zuordnungsweg(platz_.anwendungsobjekt(), platz_.wurzel()).lies(auftrag_.vorgang);
  if (!lesung.bilder) throw Abbruch(Ausgang::Datenbank, lesung.grund);
  hochkomma::pruefe_Zeilen(*lesung.bilder);
  return lesung.bilder;
}

/// The road has told the user why; he may have said No himself.
Dialogantwort Dialoglauf::nicht_geoeffnet(const Zuordnungsweg::Ergebnis& ergebnis) const {
  Dialogantwort antwort = dialogantwort::aus_Weg(ergebnis);
  antwort.text = mitschrift_.letzte();
  if (platz_.wurzel_leer()) antwort.ausgang = Ausgang::Datei;
  if (mitschrift_.kritisch()) antwort.ausgang = Ausgang::Datenbank;
  if (antwort.ausgang == Ausgang::Erledigt) antwort.text = ergebnis.text();
  return antwort;
}

Dialogantwort Dialoglauf::zuordnung() {
  oeffne_Datenbank();
  verlange_Wurzel(u"Der Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s);
  if (!auftrag_.nur_Anzeige) lies_zum_Bearbeiten();
  const Zuordnungsweg::Ergebnis ergebnis =
      Zuordnungsweg(platz_.anwendungsobjekt(), platz_.wurzel(), entfernungsfrage::hinter({}))
          .gehe(auftrag_.vorgang, auftrag_.nur_Anzeige, auftrag_.nur_Anhang);
  return ergebnis.geoeffnet ? dialogantwort::aus_Weg(ergebnis) : nicht_geoeffnet(ergebnis);
}

Dialogantwort Dialoglauf::suche() {
  QString beginn = platz_.wurzel_fehlt() ? namen::tabellenpfad(QDir::homePath()) : platz_.wurzel();
  if (!auftrag_.beginn.isEmpty()) beginn = namen::tabellenpfad(auftrag_.beginn);
  if (!FileSystemObject().FolderExists(beginn + u'\\'))
    throw Abbruch(Ausgang::Datei, u"Den Ordner „%1“ gibt es nicht."_s.arg(auftrag_.beginn));
  auto funde = std::make_shared<XArrayDBObject>();
  funde->ReDim(0, 0, 0, 10);
  const bool genommen = clsDialoge().Fkt_Aufruf_Dialog_BilderSuchen(nullptr, beginn + u'\\', funde, !auftrag_.eines);
  QStringList pfade;
  // The last row is empty.
  const std::int32_t anzahl = genommen ? funde->UpperBound(XArrayDBObject::Dimension::Zeilen) : 0;
  for (std::int32_t i = 0; i < anzahl; ++i) pfade.append(namen::angezeigt(mit_Leertext(funde->Value(i, 0))));
  const QString text = pfade.isEmpty() ? u"Bilder suchen: nichts gewählt."_s
                                       : u"Bilder suchen: %1 gewählt – %2"_s.arg(pfade.size()).arg(pfade.join(u", "_s));
  return {Ausgang::Erledigt, text, {{u"gewaehlt"_s, QJsonArray::fromStringList(pfade)}}, true};
}

Dialogantwort Dialoglauf::alle_Zuordnungen() {
  oeffne_Datenbank();
  // A missing root shows as missing files only; the assignments are there all the same.
  static_cast<void>(platz_.wurzel_fehlt());
  const auto sammlung = lies_zum_Bearbeiten();
  clsBildZuordnungen& store = *sammlung;
  if (!waehle_Bild(store, auftrag_.bild))
    throw Abbruch(Ausgang::Teilweise, u"Das Bild „%1“ ist dem Vorgang nicht zugeordnet."_s.arg(auftrag_.bild));
  wurzelgrenze::pruefe_Bild(*platz_.verbindung(), store.Bild_Bildname(), store.Bild_BildExt());
  const QString datei = store.Bild_Bildname() + u'.' + store.Bild_BildExt();
  bool eigene = false;
  Dialogantwort antwort =
      gezeigt(clsDialoge().Fkt_Aufruf_Dialog_AlleZuordnungen(platz_.anwendungsobjekt(), platz_.wurzel(),
                  auftrag_.vorgang.Bildpfad, store.Bild_Key1(), store.Bild_Key2(), store.Bild_Key3(), store.Bild_Key4(),
                  store.Bild_Bildname(), store.Bild_BildExt(), store.Bild_Typ1(), store.Bild_Typ2(),
                  store.cGL_jmtVerarbeitungsdatum, auftrag_.vorgang.Infozeile, eigene),
          u"Die Zuordnungen von „%1“ sind gezeigt."_s.arg(datei));
  bool entfernt = false;
  if (eigene) store.Bild_Delete(true);
  if (eigene && !entfernungsfrage::bejaht(*platz_.verbindung(), store)) {
    antwort.text = u"Die Zuordnung von „%1“ zu diesem Vorgang bleibt."_s.arg(datei);
  } else if (eigene) {
    const Zuordnungsweg::Ergebnis weg =
        Zuordnungsweg(platz_.anwendungsobjekt(), platz_.wurzel()).speichere(sammlung, auftrag_.vorgang);
    entfernt = weg.vollstaendig() && weg.geprueft;
    antwort.text = u"Die Zuordnung von „%1“ zu diesem Vorgang ist %2."_s.arg(
        datei, entfernt ? u"entfernt"_s : u"NICHT entfernt"_s);
    if (!entfernt) antwort.ausgang = Ausgang::Datenbank;
  }
  antwort.angaben = {{u"bild"_s, datei}, {u"eigene_entfernen"_s, eigene}, {u"eigene_entfernt"_s, entfernt}};
  return antwort;
}

Dialogantwort Dialoglauf::weitere() {
  oeffne_Datenbank();
  verlange_Wurzel(u"Ohne sie ist nichts zuzuordnen."_s);
  const auto sammlung = lies_zum_Bearbeiten();
  wurzelgrenze::pruefe_Zeilen(*sammlung);
  const Zuordnungsweg::Vorgang& vorgang = auftrag_.vorgang;
  return gezeigt(clsDialoge().Fkt_Aufruf_Dialog_WeitereZuordnungen(platz_.anwendungsobjekt(), sammlung, platz_.wurzel(),
                     vorgang.Bildpfad, vorgang.Key1, vorgang.Key2, vorgang.Key3, vorgang.Key4, vorgang.Typ1,
                     vorgang.Typ2, sammlung->cGL_jmtVerarbeitungsdatum, vorgang.Infozeile),
      u"Die weiteren Zuordnungen sind bearbeitet."_s);
}

Dialogantwort Dialoglauf::eigenschaften() {
  const QString pfad = namen::tabellenpfad(auftrag_.bild);
  // The reader would make a missing file.
  if (!FileSystemObject().FileExists(pfad))
    throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es nicht."_s.arg(auftrag_.bild));
  Dialogantwort antwort = gezeigt(clsDialoge().Fkt_Aufruf_Dialog_BildInfo(pfad, {}, true),
      u"Die Eigenschaften von „%1“ sind gezeigt."_s.arg(auftrag_.bild));
  antwort.angaben = {{u"bild"_s, namen::angezeigt(pfad)}};
  return antwort;
}
