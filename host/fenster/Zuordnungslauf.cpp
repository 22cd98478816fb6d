#include "host/fenster/Zuordnungslauf.h"

#include <QSet>
#include <QStringList>
#include <limits>
#include <vector>

#include "host/Ausgang.h"
#include "platform/basic/Text.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bildzuordnung"_s;

void warne(const QString& text) {
  MsgBox(text, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
}

template <class Anweisung>
void je_Zeile(clsBildZuordnungen& store, Anweisung&& anweisung) {
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    anweisung(i);
  }
}

QString bildname(const clsBildZuordnungen& store) {
  return text::UCase(store.Bild_Bildname() + u'.' + store.Bild_BildExt());
}

/// A row that was not read stands in no database yet, whatever the dialog says of it: one that it has put into the
/// collection before it closes, as turning a picture does, counts there as stored as soon as it is changed again.
void kennzeichne_Neue(const Bildsammlung& sammlung) {
  je_Zeile(*sammlung.store, [&](std::int32_t i) {
    if (static_cast<std::size_t>(i) >= sammlung.reihenfolge.size()) sammlung.store->Bild_Neu(true);
  });
}

/// New rows come out of the dialog with blank keys.
void gib_Schluessel(clsBildZuordnungen& store, const Datensatz& satz) {
  store.fkt_Korr_Key1(satz.key1);
  store.fkt_Korr_Key2(satz.key2);
  je_Zeile(store, [&](std::int32_t) {
    if (!store.Bild_Neu() && !store.Bild_Key3().isEmpty()) return;
    store.Bild_Key3(satz.key3);
    store.Bild_Key4(satz.key4);
  });
}

/// The dialog numbers the rows that it saves by their place. A row that it leaves alone keeps its stored number, which
/// differs from its place when rows before it were removed once: such rows are written too, or the order would change.
QSet<const clsBilderSpeicher*> fuehre_Reihenfolge_nach(const Bildsammlung& sammlung) {
  clsBildZuordnungen& store = *sammlung.store;
  QSet<QString> geschriebene;
  je_Zeile(store, [&](std::int32_t) {
    if (store.Bild_Changeflag()) geschriebene.insert(bildname(store));
  });
  QSet<const clsBilderSpeicher*> nachgefuehrt;
  if (geschriebene.isEmpty()) return nachgefuehrt;
  je_Zeile(store, [&](std::int32_t i) {
    const auto platz = static_cast<std::size_t>(i);
    if (store.Bild_Changeflag() || store.Bild_Delete() || platz >= sammlung.reihenfolge.size()) return;
    if (sammlung.reihenfolge[platz] == i || i > std::numeric_limits<std::int16_t>::max()) return;
    if (geschriebene.contains(bildname(store))) return;
    store.Bild_SortIndex(i);
    store.Bild_Changeflag(true);
    nachgefuehrt.insert(store.AktBildObj.get());
  });
  return nachgefuehrt;
}

/// What is to be done with a row, by its flags.
enum class Auftrag { Keiner, Einfuegen, Aendern, Entfernen, Verwerfen };

Auftrag auftrag_von(const clsBildZuordnungen& store) {
  if (store.Bild_Delete()) return store.Bild_Neu() ? Auftrag::Verwerfen : Auftrag::Entfernen;
  if (!store.Bild_Changeflag()) return Auftrag::Keiner;
  return store.Bild_Neu() ? Auftrag::Einfuegen : Auftrag::Aendern;
}

/// The rows that wait to be written, with their texts: writing doubles the quotes in a record's text, so that a second
/// try must start from what it was.
struct Wartender {
  Auftrag auftrag;
  std::shared_ptr<clsBilderSpeicher> satz;
  QString beschreibung;
};

std::vector<Wartender> wartende(clsBildZuordnungen& store) {
  std::vector<Wartender> liste;
  je_Zeile(store, [&](std::int32_t) {
    if (auftrag_von(store) != Auftrag::Keiner)
      liste.push_back({auftrag_von(store), store.AktBildObj, store.Bild_Beschreibung()});
  });
  return liste;
}

QSet<const clsBilderSpeicher*> offene(clsBildZuordnungen& store) {
  QSet<const clsBilderSpeicher*> saetze;
  for (const Wartender& zeile : wartende(store)) saetze.insert(zeile.satz.get());
  return saetze;
}

/// Writes all rows, again for as long as the user wants to. Gives the rows that are still waiting.
QSet<const clsBilderSpeicher*> schreibe(clsBildZuordnungen& store, const std::vector<Wartender>& zeilen) {
  for (;;) {
    const Berichtsfang fang;
    store.FKT_SpeichernBilder();
    const QSet<const clsBilderSpeicher*> rest = offene(store);
    if (rest.isEmpty()) return rest;
    for (const Wartender& zeile : zeilen)
      if (rest.contains(zeile.satz.get())) zeile.satz->Bild_Beschreibung = zeile.beschreibung;
    const QString text =
        u"%1 von %2 Zeilen sind nicht in die Datenbank geschrieben:\r\n%3\r\n\r\nNoch einmal versuchen?"_s
            .arg(rest.size())
            .arg(zeilen.size())
            .arg(fang.erster());
    if (MsgBox(text, Knoepfe::JaNein, Symbol::Ausrufezeichen, Titel) != Antwort::Ja) return rest;
  }
}

void zaehle(const Wartender& zeile, bool nachgefuehrt, Laufergebnis& ergebnis) {
  switch (zeile.auftrag) {
    case Auftrag::Einfuegen:
      ++ergebnis.neu;
      break;
    case Auftrag::Aendern:
      ++(nachgefuehrt ? ergebnis.nachgefuehrt : ergebnis.geaendert);
      break;
    case Auftrag::Entfernen:
      ++ergebnis.entfernt;
      break;
    case Auftrag::Verwerfen:
    case Auftrag::Keiner:
      break;
  }
}

QString zeilen(int anzahl) {
  return anzahl == 1 ? u"1 Zeile"_s : u"%1 Zeilen"_s.arg(anzahl);
}

}  // namespace

QString Laufergebnis::text() const {
  if (!geoeffnet) return u"Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s;
  if (nur_Anzeige) return u"Nur angezeigt; nichts ist geschrieben."_s;
  QStringList teile;
  const auto dazu = [&](int anzahl, const QString& wort) {
    if (anzahl > 0) teile.append(u"%1 %2"_s.arg(anzahl).arg(wort));
  };
  dazu(neu, u"neu"_s);
  dazu(geaendert, u"geändert"_s);
  dazu(entfernt, u"entfernt"_s);
  dazu(nachgefuehrt, u"nur in der Reihenfolge"_s);
  QStringList saetze;
  if (geschrieben() > 0) saetze.append(u"%1 geschrieben: %2."_s.arg(zeilen(geschrieben()), teile.join(u", "_s)));
  if (nicht_geschrieben > 0)
    saetze.append(u"NICHT geschrieben: %1; diese Änderungen sind verloren."_s.arg(zeilen(nicht_geschrieben)));
  if (saetze.isEmpty()) saetze.append(u"Nichts geändert."_s);
  if (dialog_gescheitert) saetze.append(u"Der Dialog endete mit einem Fehler."_s);
  return saetze.join(u' ');
}

/// False when the dialog must not open: it marks every row whose file is missing for removal.
bool Zuordnungslauf::pruefe_Bilder(clsBildZuordnungen& store, bool nur_Anzeige) const {
  int vorhanden = 0;
  je_Zeile(store, [&](std::int32_t) {
    if (store.Fkt_FileExists(platz_.wurzel() + u'\\' + store.Bild_Pfad() + u'\\' + store.Bild_Bildname() + u'.' +
                             store.Bild_BildExt()))
      ++vorhanden;
  });
  if (store.AnzahlPos() == 0 || vorhanden > 0) return true;
  if (platz_.wurzel_leer()) {
    warne(
        u"Die Bildablage ist leer, obwohl dem Vorgang Bilder zugeordnet sind. Ist das Laufwerk verbunden?\r\n\r\n"
        "Der Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s);
    return false;
  }
  if (nur_Anzeige || store.AnzahlPos() < 2) return true;
  return MsgBox(
             u"Keine der %1 Bilddateien dieses Vorgangs liegt in der Bildablage. Der Dialog merkt sie alle zum "
             "Entfernen vor.\r\n\r\nTrotzdem öffnen?"_s.arg(store.AnzahlPos()),
             Knoepfe::JaNein, Symbol::Frage, Titel) == Antwort::Ja;
}

void Zuordnungslauf::speichere(const Bildsammlung& sammlung, const Vorgang& vorgang, Laufergebnis& ergebnis) const {
  kennzeichne_Neue(sammlung);
  gib_Schluessel(*sammlung.store, vorgang.satz);
  const QSet<const clsBilderSpeicher*> nachgefuehrt = fuehre_Reihenfolge_nach(sammlung);
  const std::vector<Wartender> zeilen = wartende(*sammlung.store);
  if (zeilen.empty()) return;
  const QSet<const clsBilderSpeicher*> rest = schreibe(*sammlung.store, zeilen);
  for (const Wartender& zeile : zeilen) {
    if (rest.contains(zeile.satz.get()))
      ++ergebnis.nicht_geschrieben;
    else
      zaehle(zeile, nachgefuehrt.contains(zeile.satz.get()), ergebnis);
  }
}

Laufergebnis Zuordnungslauf::gehe(const Vorgang& vorgang, bool nur_Anzeige) {
  Laufergebnis ergebnis;
  ergebnis.nur_Anzeige = nur_Anzeige;
  if (const auto grund = platz_.wurzel_fehlt()) {
    warne(*grund + u"\r\n\r\nDer Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s);
    return ergebnis;
  }
  Bildsammlung sammlung;
  try {
    sammlung = lies_Bildsammlung(platz_, vorgang);
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
    return ergebnis;
  }
  if (!pruefe_Bilder(*sammlung.store, nur_Anzeige)) return ergebnis;
  ergebnis.geoeffnet = true;
  ergebnis.dialog_gescheitert =
      !dialog_(platz_.anwendungsobjekt(), platz_.wurzel(), vorgang::bildordner(vorgang), sammlung.store,
               vorgang.satz.typ1, vorgang.satz.typ2, vorgang::infozeile(vorgang), nur_Anzeige, false);
  // What the user saved is in the collection and its files are in place, whatever became of the dialog afterwards.
  if (!nur_Anzeige) speichere(sammlung, vorgang, ergebnis);
  return ergebnis;
}
