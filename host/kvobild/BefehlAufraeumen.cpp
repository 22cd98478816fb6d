#include <QFile>
#include <algorithm>
#include <optional>

#include "host/betrieb/Aufraeumen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Haltewunsch.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void zeige(const Aufraeumen& aufraeumen, const Aufraeumliste& liste, bool als_Json) {
  for (const Aufraeumposten& p : liste.Posten) {
    if (als_Json)
      ausgabe::json({{u"pfad"_s, aufraeumen.angezeigt(p)}, {u"art"_s, p.ist_Ordner() ? u"ordner"_s : u"datei"_s},
          {u"grund"_s, Aufraeumen::kennung(p.Warum)}});
    else
      ausgabe::zeile(aufraeumen.angezeigt(p));
  }
}

bool ist_bestaetigt(const Aufraeumliste& liste) {
  const auto ordner =
      std::count_if(liste.Posten.begin(), liste.Posten.end(), [](const auto& p) { return p.ist_Ordner(); });
  ausgabe::meldung(u"Endgültig löschen (Dateien: %1, Ordner: %2)? Mit „ja“ bestätigen:"_s.arg(
      QString::number(std::ssize(liste.Posten) - ordner), QString::number(ordner)));
  QFile eingabe;
  if (!eingabe.open(stdin, QIODevice::ReadOnly)) return false;
  const QString antwort = QString::fromUtf8(eingabe.readLine()).trimmed().toLower();
  return antwort == "ja"_L1 || antwort == "j"_L1;
}

/// Shows how far the work is; a signal stops it.
class Anzeige {
 public:
  Aufraeumen::Fortgang fortgang() {
    return [this](Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von) {
      if (!balken_ || schritt != schritt_) balken_.emplace(worte(schritt));
      schritt_ = schritt;
      balken_->zeige(getan, von);
      return !halt_.ist_da();
    };
  }

 private:
  static QString worte(Aufraeumen::Schritt schritt) {
    if (schritt == Aufraeumen::Schritt::Lesen) return u"Lesen"_s;
    return schritt == Aufraeumen::Schritt::Pruefen ? u"Prüfen"_s : u"Löschen"_s;
  }

  Haltewunsch halt_;
  Aufraeumen::Schritt schritt_ = Aufraeumen::Schritt::Lesen;
  std::optional<ausgabe::Fortschritt> balken_;
};

Ausgang loesche(Aufraeumen& aufraeumen, const Aufraeumliste& liste) {
  Anzeige anzeige;
  const Aufraeumen::Ergebnis ergebnis = aufraeumen.fuehre_aus(liste, anzeige.fortgang());
  for (const QString& pfad : ergebnis.geblieben) ausgabe::meldung(u"„%1“ ließ sich nicht löschen."_s.arg(pfad));
  const QString angehalten = aufraeumen.angehalten(ergebnis, liste);
  if (!angehalten.isEmpty()) ausgabe::meldung(angehalten);
  const bool alles = ergebnis.geblieben.isEmpty() && angehalten.isEmpty() && ist_True(liste.Ergebnis);
  return alles ? Ausgang::Erledigt : Ausgang::Teilweise;
}

Ausgang raeume_auf(const Aufruf& aufruf) {
  const bool probe = aufruf.gesetzt(u"probe"_s);
  const bool ja = aufruf.gesetzt(u"ja"_s);
  if (probe && ja) throw Abbruch(Ausgang::Aufruf, u"„--probe“ und „--ja“ schließen sich aus."_s);
  const std::optional<QString> unter = aufruf.wert(u"ordner"_s);
  const QString ordner = unter ? u'\\' + namen::ordner(*unter) : QString();
  const QString wurzel = bildwurzel(aufruf);
  Befehlssitzung sitzung(aufruf);
  Aufraeumen aufraeumen(sitzung.store(), sitzung.verbindung(), wurzel, wurzel + ordner);
  const Aufraeumliste liste = aufraeumen.liste(Anzeige().fortgang());
  zeige(aufraeumen, liste, aufruf.gesetzt(u"json"_s));
  for (const QString& satz : aufraeumen.warnungen(liste)) ausgabe::meldung(u"Achtung: "_s + satz);
  if (liste.Posten.empty()) ausgabe::meldung(u"Es gibt nichts aufzuräumen."_s);
  if (probe || liste.Posten.empty()) return ist_True(liste.Ergebnis) ? Ausgang::Erledigt : Ausgang::Teilweise;
  if (ja || ist_bestaetigt(liste)) return loesche(aufraeumen, liste);
  ausgabe::meldung(u"Nichts ist gelöscht."_s);
  return Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::aufraeumen() {
  return {u"aufraeumen"_s, u"löscht aus der Ablage, worauf keine Zuordnung zeigt"_s, {},
      uR"(Zeigt die Dateien und Ordner, die gehen, in der Folge des Löschens, fragt und löscht: Bilder, auf die
keine Zuordnung zeigt, Textdateien ohne ihr Bild und Ordner, die dann leer sind. Ein Name ohne Punkt
bleibt; ein Name mit mehreren zählt nur bis vor den zweiten; eine Textdatei gehört zu einem Bild mit
dreistelliger Endung, alle anderen gehen. Was unmittelbar in der Bildablage liegt, geht immer: Mit
--ordner beginnt das Aufräumen tiefer. Mit --json steht je Zeile „pfad“, „art“ (datei, ordner) und
„grund“ (ohne_zuordnung, text_ohne_bild, leerer_ordner).)"_s,
      {{u"probe"_s, {}, u"zeigt nur, was ginge"_s}, {u"ja"_s, {}, u"löscht ohne Frage"_s},
          {u"ordner"_s, u"PFAD"_s, u"Ordner unter der Bildablage, in dem das Aufräumen beginnt"_s},
          befehlszeile::bilder_Option(), befehlszeile::verbindung_Option(), befehlszeile::json_Option()},
      0, 0, raeume_auf};
}
