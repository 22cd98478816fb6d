#include "host/fenster/dialog/Dialogprogramm.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <functional>
#include <new>
#include <optional>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Dialogauftrag.h"
#include "host/betrieb/befehl/Dialogbefehle.h"
#include "host/fenster/dialog/Abschied.h"
#include "host/fenster/dialog/Bildschirm.h"
#include "host/fenster/dialog/Dialoglauf.h"
#include "host/fenster/dialog/Dialograhmen.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

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

QList<Befehl> befehle(Vorstellung& vorstellung) {
  QList<Befehl> liste;
  const auto dazu = [&](Befehl befehl, Dialogauftrag (*lies)(const Aufruf&), Dialogantwort (Dialoglauf::*zeige)(),
                        const QJsonObject& nichts) {
    const Dialog dialog{befehl.name, lies, zeige, nichts};
    befehl.fuehre_aus = [&vorstellung, dialog](const Aufruf& aufruf) { return vorstellung.gib(dialog, aufruf); };
    liste.append(befehl);
  };
  dazu(dialogbefehle::zuordnung(), &fuer_Vorgang, &Dialoglauf::zuordnung,
      dialogantwort::aus_Weg(Zuordnungsweg::Ergebnis()).angaben);
  dazu(dialogbefehle::suche(), &fuer_Suche, &Dialoglauf::suche, {{u"gewaehlt"_s, QJsonArray()}});
  dazu(dialogbefehle::alle_Zuordnungen(), &fuer_Vorgang, &Dialoglauf::alle_Zuordnungen,
      {{u"eigene_entfernen"_s, false}, {u"eigene_entfernt"_s, false}});
  dazu(dialogbefehle::weitere(), &fuer_Vorgang, &Dialoglauf::weitere, {});
  dazu(dialogbefehle::eigenschaften(), &dialogauftrag::lies, &Dialoglauf::eigenschaften, {});
  return liste;
}

}  // namespace

int dialogprogramm::laufe(int& argc, char** argv, const QStringList& argumente) {
  ausgabe::programm(u"bildzuordnung"_s);
  try {
    Vorstellung vorstellung(argc, argv);
    const Ausgang ausgang = befehlszeile::fuehre_aus(dialogbefehle::programm(), befehle(vorstellung), argumente);
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
