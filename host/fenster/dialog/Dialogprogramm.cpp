#include "host/fenster/dialog/Dialogprogramm.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <functional>
#include <new>
#include <optional>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Dialogauftrag.h"
#include "host/fenster/dialog/Abschied.h"
#include "host/fenster/dialog/Bildschirm.h"
#include "host/fenster/dialog/Dialoglauf.h"
#include "host/fenster/dialog/Dialograhmen.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const Befehlsprogramm Selbst{u"bildzuordnung dialog"_s,
    u"bildzuordnung dialog öffnet einen der Dialoge für sich, ohne das Hauptfenster, und sagt danach, was\n"
    "geschehen ist: für Programme, die die Komponente nicht selbst einbinden.\n"_s,
    u"Eine Zeile mit dem Ergebnis steht auf der Standardausgabe, Meldungen auf der Fehlerausgabe.\n"
    "Ohne --verbindung gilt KVOBILD_VERBINDUNG, dann die Datenbank, die „bildzuordnung“ zuletzt geöffnet\n"
    "hat, dann die im Datenordner. Nennt die Verbindung einen Benutzer ohne Kennwort, gilt\n"
    "--kennwort-von-stdin, dann KVOBILD_KENNWORT, dann fragt ein Fenster. Ein Kennwort im Aufruf sehen\n"
    "andere auf diesem Rechner."_s};

/// How a call becomes an order, and what is done with it.
struct Dialog {
  QString name;
  std::function<Dialogauftrag(const Aufruf&)> lies;
  Dialogantwort (Dialoglauf::*zeige)() = nullptr;
  /// What the line of JSON holds where the dialog did not open: callers need not ask for each name.
  QJsonObject nichts;
};

class Vorstellung {
 public:
  Vorstellung(int& argc, char** argv) : argc_(argc), argv_(argv) {}

  Ausgang gib(const Dialog& dialog, const Aufruf& aufruf) {
    const Dialogauftrag auftrag = dialog.lies(aufruf);
    bildschirm::pruefe();
    // What stands in the call is read by us alone.
    argc_ = 1;
    const QApplication programm(argc_, argv_);
    QApplication::setApplicationName(u"bildzuordnung"_s);
    QApplication::setApplicationDisplayName(u"Bildzuordnung"_s);
    fensterdienste::richte_ein();
    const Abschied abschied;
    const Dialograhmen rahmen(auftrag.titel, auftrag.ueber);
    Dialogantwort antwort;
    const std::optional<Abbruch> abbruch = versuche_zu_zeigen(auftrag, dialog, antwort);
    if (abbruch && abbruch->ausgang() == Ausgang::Aufruf) throw Abbruch(*abbruch);
    if (abschied.verlangt()) unterbrochen(antwort);
    if (auftrag.json) ausgabe::json(dialogantwort::als_Json(dialog.name, antwort));
    if (abbruch) throw Abbruch(*abbruch);
    if (!auftrag.json) ausgabe::zeile(antwort.text);
    return antwort.ausgang;
  }

 private:
  /// What keeps the dialog from opening is told to the user, who waits for it, as well as to the caller.
  static std::optional<Abbruch> versuche_zu_zeigen(
      const Dialogauftrag& auftrag, const Dialog& dialog, Dialogantwort& antwort) {
    std::optional<Abbruch> abbruch;
    try {
      Dialoglauf lauf(auftrag);
      const auto fehler = versuche([&] { antwort = (lauf.*dialog.zeige)(); });
      if (!fehler) return std::nullopt;
      abbruch.emplace(ausgang_von(*fehler), fehler->Beschreibung());
    } catch (const Abbruch& gemeldet) {
      abbruch.emplace(gemeldet);
    }
    antwort = {abbruch->ausgang(), abbruch->text().simplified(), dialog.nichts, false};
    if (abbruch->ausgang() != Ausgang::Aufruf && bildschirm::hat_Benutzer())
      oberflaeche::MsgBox(abbruch->text(), oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Kritisch, u"Bildzuordnung"_s);
    return abbruch;
  }
  static void unterbrochen(Dialogantwort& antwort) {
    antwort.angaben.insert(u"abgebrochen"_s, true);
    antwort.text = u"Von außen beendet. "_s + antwort.text;
    if (antwort.ausgang == Ausgang::Erledigt) antwort.ausgang = Ausgang::Teilweise;
  }

  int& argc_;
  char** argv_;
};

Dialogauftrag fuer_Vorgang(const Aufruf& aufruf) {
  Dialogauftrag auftrag = dialogauftrag::mit_Vorgang(aufruf);
  dialogauftrag::lies_Datenbank(aufruf, auftrag);
  return auftrag;
}

Dialogauftrag fuer_Suche(const Aufruf& aufruf) {
  Dialogauftrag auftrag = dialogauftrag::lies(aufruf);
  dialogauftrag::lies_Datenbank(aufruf, auftrag);
  auftrag.beginn = aufruf.wert(u"ordner"_s).value_or(QString());
  return auftrag;
}

Befehl befehl_der_Zuordnung() {
  const QList<Option> eigene{{u"nur-anzeigen"_s, {}, u"nichts lässt sich ändern"_s},
      {u"nur-anhang"_s, {}, u"jedes gezeigte Bild wird als Anhang gekennzeichnet"_s}};
  return {u"zuordnung"_s, u"Bilder eines Vorgangs zeigen und bearbeiten"_s, {},
      uR"(Zeigt die Bilder eines Vorgangs; was der Benutzer speichert, wird geschrieben und nachgeprüft. Die
Zeile JSON nennt: geoeffnet, nur_anzeige, gespeichert, vollstaendig, geprueft; die Zahlen neu,
geaendert, entfernt, nachgefuehrt, nicht_geschrieben, ungewiss; text; und bilder, jedes mit name,
verbleib (neu, geaendert, entfernt, nachgefuehrt, unveraendert, nicht_geschrieben, nicht_kopiert,
nicht_gespeichert, ungewiss) und hinweis.)"_s,
      dialogauftrag::vorgang_Optionen() + eigene + dialogauftrag::datenbank_Optionen() +
          dialogauftrag::fenster_Optionen(),
      0, 0, {}};
}

Befehl befehl_der_Suche() {
  return {u"suche"_s, u"Bilddateien auf diesem Rechner suchen"_s, {},
      u"Lässt den Benutzer Bilddateien wählen; zugeordnet wird nichts. Die Zeile JSON nennt unter gewaehlt ihre\n"
      "Pfade."_s,
      QList<Option>{{u"ordner"_s, u"ORDNER"_s, u"wo die Suche beginnt; sonst in der Bildablage"_s},
          {u"eines"_s, {}, u"höchstens ein Bild"_s}, {u"titel"_s, u"TEXT"_s, u"steht im Titel des Fensters"_s}} +
          dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(),
      0, 0, {}};
}

Befehl befehl_der_Uebersicht() {
  return {u"alle-zuordnungen"_s, u"alle Zuordnungen eines Bildes"_s, u"BILD"_s,
      uR"(Zeigt, wozu ein Bild des Vorgangs gehört, und löscht, was der Benutzer davon nicht mehr will. BILD ist
sein Name mit Endung, wenn nötig mit dem Ordner unter der Bildablage davor. eigene_entfernen sagt, ob
der Benutzer die Zuordnung zu diesem Vorgang entfernt haben wollte, eigene_entfernt, ob sie es ist.)"_s,
      dialogauftrag::vorgang_Optionen() + dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(), 1, 1,
      {}};
}

Befehl befehl_der_weiteren() {
  return {u"weitere"_s, u"Bilder eines Vorgangs auch Artikeln zuordnen"_s, {},
      u"Lässt den Benutzer Bilder des Vorgangs auch Artikeln zuordnen. Kopiert und geschrieben wird im Dialog\n"
      "selbst; danach ist nichts mehr zu tun."_s,
      dialogauftrag::vorgang_Optionen() + dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(), 0, 0,
      {}};
}

Befehl befehl_der_Eigenschaften() {
  return {u"eigenschaften"_s, u"Exif-Eigenschaften einer Bilddatei"_s, u"BILD"_s,
      u"Zeigt die Exif-Eigenschaften einer Bilddatei. BILD ist ihr Pfad auf diesem Rechner; die Datenbank ist\n"
      "dazu nicht nötig."_s,
      QList<Option>{{u"titel"_s, u"TEXT"_s, u"steht im Titel des Fensters"_s}} + dialogauftrag::fenster_Optionen(), 1,
      1, {}};
}

QList<Befehl> befehle(Vorstellung& vorstellung) {
  QList<Befehl> liste;
  const auto dazu = [&](Befehl befehl, Dialogauftrag (*lies)(const Aufruf&), Dialogantwort (Dialoglauf::*zeige)(),
                        const QJsonObject& nichts) {
    const Dialog dialog{befehl.name, lies, zeige, nichts};
    befehl.fuehre_aus = [&vorstellung, dialog](const Aufruf& aufruf) { return vorstellung.gib(dialog, aufruf); };
    liste.append(befehl);
  };
  dazu(befehl_der_Zuordnung(), &fuer_Vorgang, &Dialoglauf::zuordnung,
      dialogantwort::aus_Weg(Zuordnungsweg::Ergebnis()).angaben);
  dazu(befehl_der_Suche(), &fuer_Suche, &Dialoglauf::suche, {{u"gewaehlt"_s, QJsonArray()}});
  dazu(befehl_der_Uebersicht(), &fuer_Vorgang, &Dialoglauf::alle_Zuordnungen,
      {{u"eigene_entfernen"_s, false}, {u"eigene_entfernt"_s, false}});
  dazu(befehl_der_weiteren(), &fuer_Vorgang, &Dialoglauf::weitere, {});
  dazu(befehl_der_Eigenschaften(), &dialogauftrag::lies, &Dialoglauf::eigenschaften, {});
  return liste;
}

}  // namespace

int dialogprogramm::laufe(int& argc, char** argv, const QStringList& argumente) {
  ausgabe::programm(u"bildzuordnung"_s);
  try {
    Vorstellung vorstellung(argc, argv);
    const Ausgang ausgang = befehlszeile::fuehre_aus(Selbst, befehle(vorstellung), argumente);
    if (ausgabe::abgeschlossen()) return static_cast<int>(ausgang);
    throw Abbruch(Ausgang::Datei, u"Die Ausgabe ist nicht vollständig zu schreiben."_s);
  } catch (const Abbruch& abbruch) {
    ausgabe::meldung(abbruch.text().simplified());
    return static_cast<int>(abbruch.ausgang());
  } catch (const std::bad_alloc&) {
    ausgabe::meldung(u"Der Speicher reicht nicht."_s);
    return static_cast<int>(Ausgang::Datei);
  }
}
