#include <algorithm>
#include <optional>

#include "host/betrieb/Namen.h"
#include "host/betrieb/aufraeumen/Aufraeumen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Haltewunsch.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/Papierkorbbefehl.h"

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

/// What stays of that which has no row, each with its reason: nobody would look for it otherwise.
void nenne_Bleibendes(const Aufraeumen& aufraeumen, const Aufraeumplan& plan) {
  for (const Bleibendes& b : plan.Bleibend)
    ausgabe::meldung(u"„%1“ bleibt: %2."_s.arg(aufraeumen.angezeigt(b), Aufraeumen::worte(b.Warum)));
}

bool ist_bestaetigt(const Aufraeumen& aufraeumen, const Aufraeumplan& plan, bool endgueltig) {
  const auto ordner =
      std::count_if(plan.Posten.begin(), plan.Posten.end(), [](const auto& p) { return p.ist_Ordner(); });
  const QString wohin = endgueltig
      ? u"Endgültig löschen"_s
      : u"In den Papierkorb „%1“ verschieben"_s.arg(namen::angezeigt(aufraeumen.papierkorb().ordner()));
  return papierkorbbefehl::ist_bestaetigt(u"%1 (Dateien: %2, Ordner: %3, %4)? Mit „ja“ bestätigen:"_s.arg(wohin,
      QString::number(std::ssize(plan.Posten) - ordner), QString::number(ordner),
      papierkorbbefehl::groesse(Aufraeumen::bytes(plan))));
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
    return schritt == Aufraeumen::Schritt::Pruefen ? u"Prüfen"_s : u"Aufräumen"_s;
  }

  Haltewunsch halt_;
  Aufraeumen::Schritt schritt_ = Aufraeumen::Schritt::Lesen;
  std::optional<ausgabe::Fortschritt> balken_;
};

Ausgang loesche(Aufraeumen& aufraeumen, const Aufraeumplan& plan, bool endgueltig) {
  Anzeige anzeige;
  const Aufraeumen::Ergebnis ergebnis = aufraeumen.fuehre_aus(plan, anzeige.fortgang(), {}, endgueltig);
  const QString womit = endgueltig ? u"löschen"_s : u"in den Papierkorb verschieben"_s;
  for (const QString& pfad : ergebnis.geblieben) ausgabe::meldung(u"„%1“ ließ sich nicht %2."_s.arg(pfad, womit));
  const QString angehalten = aufraeumen.angehalten(ergebnis, plan);
  if (!angehalten.isEmpty()) ausgabe::meldung(angehalten);
  if (!ergebnis.lauf.isEmpty())
    ausgabe::meldung(
        u"In den Papierkorb verschoben; zurück holt es „kvobild aufraeumen --zurueckholen %1“."_s.arg(ergebnis.lauf));
  const bool alles = ergebnis.geblieben.isEmpty() && angehalten.isEmpty() && ist_True(plan.Ergebnis);
  return alles ? Ausgang::Erledigt : Ausgang::Teilweise;
}

Schonfrist schonfrist(const Aufruf& aufruf) {
  Schonfrist frist;
  if (const auto minuten = papierkorbbefehl::zahl(aufruf, u"schonfrist"_s, 0))
    frist.dauer = std::chrono::minutes(*minuten);
  return frist;
}

void warne(const Aufraeumen& aufraeumen, const Aufraeumplan& plan, bool endgueltig) {
  QStringList saetze = aufraeumen.warnungen(plan);
  if (endgueltig && !plan.Posten.empty())
    saetze.append(
        u"Neben der Bildablage lässt sich kein Papierkorb anlegen: Was geht, ist endgültig fort. "
        "„--papierkorb ORDNER“ nennt einen anderen Platz."_s);
  for (const QString& satz : saetze) ausgabe::meldung(u"Achtung: "_s + satz);
}

Ausgang raeume_auf(const Aufruf& aufruf) {
  const bool probe = aufruf.gesetzt(u"probe"_s);
  const bool ja = aufruf.gesetzt(u"ja"_s);
  if (probe && ja) throw Abbruch(Ausgang::Aufruf, u"„--probe“ und „--ja“ schließen sich aus."_s);
  if (papierkorbbefehl::ist_gemeint(aufruf)) return papierkorbbefehl::fuehre_aus(aufruf);
  const std::optional<QString> unter = aufruf.wert(u"ordner"_s);
  const QString ordner = unter ? u'\\' + namen::ordner(*unter) : QString();
  const Schonfrist frist = schonfrist(aufruf);
  const QString wurzel = bildwurzel(aufruf);
  const std::optional<QString> anderswo = papierkorbbefehl::anderswo(aufruf);
  Befehlssitzung sitzung(aufruf);
  Aufraeumen aufraeumen(sitzung.store(), sitzung.verbindung(), wurzel, wurzel + ordner, frist);
  if (anderswo) aufraeumen.papierkorb(*anderswo);
  const Aufraeumplan plan = aufraeumen.liste(Anzeige().fortgang());
  const bool endgueltig = aufraeumen.ist_endgueltig();
  zeige(aufraeumen, plan, aufruf.gesetzt(u"json"_s));
  nenne_Bleibendes(aufraeumen, plan);
  warne(aufraeumen, plan, endgueltig);
  if (plan.Posten.empty()) ausgabe::meldung(u"Es gibt nichts aufzuräumen."_s);
  if (probe || plan.Posten.empty()) return ist_True(plan.Ergebnis) ? Ausgang::Erledigt : Ausgang::Teilweise;
  if (ja || ist_bestaetigt(aufraeumen, plan, endgueltig)) return loesche(aufraeumen, plan, endgueltig);
  ausgabe::meldung(u"Nichts ist gelöscht."_s);
  return Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::aufraeumen() {
  return {u"aufraeumen"_s, u"räumt aus der Ablage, worauf keine Zuordnung zeigt, in einen Papierkorb"_s, u"[LAUF]"_s,
      uR"(Zeigt die Dateien und Ordner, die gehen, fragt und verschiebt sie neben die Bildablage, in „ABLAGE.papierkorb“ unter
Datum und Uhrzeit: Bilder, auf die keine Zuordnung zeigt, Textdateien ohne ihr Bild und Ordner, die dann
leer sind. „--zurueckholen“ bringt sie wieder, nie über eine Datei, die inzwischen da ist; „--endgueltig“
leert den Papierkorb. Es bleibt, mit Nennung: ein Bild, das eine Zuordnung mit ganzem Namen nennt, der Text
eines Bildes, das bleibt, und was vor weniger als einer Stunde dazukam. Ein Name ohne Punkt bleibt immer.
Beantwortet die Tabelle eine Frage nicht, bleibt alles. Mit --json steht je Zeile „pfad“, „art“ (datei,
ordner) und „grund“ (ohne_zuordnung, text_ohne_bild, leerer_ordner).)"_s,
      QList<Option>{{u"probe"_s, {}, u"zeigt nur, was ginge"_s}, {u"ja"_s, {}, u"räumt ohne Frage"_s},
          {u"ordner"_s, u"PFAD"_s, u"Ordner unter der Bildablage, in dem das Aufräumen beginnt"_s},
          {u"schonfrist"_s, u"MINUTEN"_s, u"was später dazukam, bleibt; ohne Angabe 60, mit 0 geht alles"_s}} +
          papierkorbbefehl::optionen() +
          QList<Option>{befehlszeile::bilder_Option(), befehlszeile::verbindung_Option(), befehlszeile::json_Option()},
      0, 1, raeume_auf};
}
