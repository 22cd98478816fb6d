#include "host/Aufraeumen.h"

#include <algorithm>
#include <utility>

#include "host/Ausgang.h"
#include "host/Namen.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Grund = Aufraeumposten::Grund;

struct Begruendung {
  QStringView kennung;
  QStringView worte;
};

Begruendung begruendung(Grund grund) {
  switch (grund) {
    case Grund::OhneZuordnung:
      return {u"ohne_zuordnung", u"keine Zuordnung"};
    case Grund::AbfrageGescheitert:
      return {u"abfrage_gescheitert", u"nicht zu prüfen, geht auch mit Zuordnung"};
    case Grund::TextOhneBild:
      return {u"text_ohne_bild", u"Text ohne Bild"};
    case Grund::LeererOrdner:
      break;
  }
  return {u"leerer_ordner", u"leerer Ordner"};
}

template <class Bedingung>
qsizetype zaehle(const Aufraeumliste& liste, Bedingung bedingung) {
  return static_cast<qsizetype>(std::count_if(liste.Posten.begin(), liste.Posten.end(), bedingung));
}

/// A question that the table refused though nothing in the file's path could have broken it.
bool ohne_Anlass_gescheitert(const Aufraeumposten& posten) {
  return posten.Warum == Grund::AbfrageGescheitert && !posten.Pfad.contains(u'\'');
}

bool gleich(const Aufraeumliste& a, const Aufraeumliste& b) {
  return a.Ergebnis == b.Ergebnis &&
         std::equal(a.Posten.begin(), a.Posten.end(), b.Posten.begin(), b.Posten.end(),
                    [](const auto& x, const auto& y) { return x.Pfad == y.Pfad && x.Warum == y.Warum; });
}

}  // namespace

Aufraeumen::Aufraeumen(clsBildZuordnungen& store, std::shared_ptr<adodb::Connection> verbindung, QString wurzel,
                       QString start)
    : store_(store), verbindung_(std::move(verbindung)), wurzel_(std::move(wurzel)), start_(std::move(start)) {}

bool Aufraeumen::hat_Zeilen() const {
  bool zeilen = false;
  if (const auto grund =
          versuche([&] { zeilen = !verbindung_->Execute(u"select Top 1 Key1 from Bild_Zuordnungen"_s)->Eof(); }))
    throw Abbruch(Ausgang::Datenbank,
                  u"Die Tabelle Bild_Zuordnungen ist nicht zu lesen, und ohne sie gälte jedes Bild als frei: "_s +
                      grund->Beschreibung());
  return zeilen;
}

Aufraeumliste Aufraeumen::liste() {
  const FileSystemObject dateien;
  for (const QString& ordner : {wurzel_, start_})
    if (!dateien.FolderExists(ordner))
      throw Abbruch(Ausgang::Datei, u"Den Ordner „%1“ gibt es nicht."_s.arg(namen::angezeigt(ordner)));
  if (hat_Zeilen() && dateien.GetFolder(wurzel_).Anzahl_Eintraege() == 0)
    throw Abbruch(Ausgang::Datei,
                  u"Die Bildablage „%1“ ist leer, obwohl es Zuordnungen gibt. Ist sie eingehängt?"_s.arg(
                      namen::angezeigt(wurzel_)));
  Aufraeumliste liste = store_.FKT_Liste_Bild_Ohne_Zuordnung(start_, wurzel_);
  // A connection that broke in between would have made every picture a free one.
  hat_Zeilen();
  if (const auto anzahl = zaehle(liste, ohne_Anlass_gescheitert))
    throw Abbruch(
        Ausgang::Datenbank,
        u"Die Tabelle Bild_Zuordnungen hat die Antwort verweigert (Dateien: %1); nichts ist gelöscht."_s.arg(anzahl));
  return liste;
}

QStringList Aufraeumen::fuehre_aus(const Aufraeumliste& gezeigt) {
  if (!gleich(liste(), gezeigt))
    throw Abbruch(Ausgang::Teilweise,
                  u"Die Ablage oder die Tabelle hat sich inzwischen geändert; nichts ist gelöscht."_s);
  // Not the component's own clearing: it would ask the table again, and take a connection that breaks right now for a
  // table that names no picture.
  QStringList geblieben;
  const FileSystemObject dateien;
  for (const Aufraeumposten& p : gezeigt.Posten) {
    const auto grund =
        versuche([&] { p.ist_Ordner() ? dateien.DeleteFolder(p.Pfad, true) : dateien.DeleteFile(p.Pfad, true); });
    // What somebody else has deleted meanwhile is gone as well.
    if (grund && (p.ist_Ordner() ? dateien.FolderExists(p.Pfad) : dateien.FileExists(p.Pfad)))
      geblieben.append(angezeigt(p));
  }
  return geblieben;
}

QString Aufraeumen::angezeigt(const Aufraeumposten& posten) const {
  if (posten.Pfad == wurzel_) return u"."_s;
  return posten.Pfad.mid(wurzel_.size() + 1) + (posten.ist_Ordner() ? u"\\"_s : QString());
}

QStringList Aufraeumen::warnungen(const Aufraeumliste& liste) const {
  QStringList saetze;
  if (const auto anzahl = zaehle(liste, [&](const auto& p) { return liegt_in_der_Wurzel(p); }))
    saetze.append(
        u"Dateien unmittelbar in der Bildablage: %1. Dort geht jede, ob zugeordnet oder nicht."_s.arg(anzahl));
  if (const auto anzahl = zaehle(liste, [](const auto& p) { return p.Warum == Grund::AbfrageGescheitert; }))
    saetze.append(
        u"Dateien, nach denen sich die Tabelle nicht fragen ließ, etwa wegen eines Hochkommas: %1. Sie gehen, "
        "auch wenn sie zugeordnet sind."_s.arg(anzahl));
  if (!ist_True(liste.Ergebnis))
    saetze.append(u"Ein Ordner ist nicht zu lesen: Ab dort, und in den Ordnern über ihm, bleibt alles stehen."_s);
  return saetze;
}

QString Aufraeumen::kennung(Grund grund) {
  return begruendung(grund).kennung.toString();
}

QString Aufraeumen::worte(Grund grund) {
  return begruendung(grund).worte.toString();
}

bool Aufraeumen::liegt_in_der_Wurzel(const Aufraeumposten& posten) const {
  return !posten.ist_Ordner() && posten.Pfad.lastIndexOf(u'\\') == wurzel_.size();
}
