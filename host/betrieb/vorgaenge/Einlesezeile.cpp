#include "host/betrieb/vorgaenge/Einlesezeile.h"

#include "host/betrieb/vorgaenge/Vorgangspruefung.h"
#include "host/betrieb/vorgaenge/Zeitangabe.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;
using vorgangspruefung::Umbruch;

namespace {

constexpr std::array Nummer{Vorgangsspalte::Key1, Vorgangsspalte::Key2, Vorgangsspalte::Key3};

QString ohne_Leerzeichen_am_Ende(QString text) {
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

class Wandler {
 public:
  explicit Wandler(const Spaltenwahl& wahl) : wahl_(wahl) {}

  Einlesezeile wandle(const Listenzeile& zeile) {
    neu_.nummer = zeile.nummer;
    neu_.fehler = zeile.fehler;
    if (neu_.fehler.isEmpty()) nimm_Werte(zeile.werte);
    if (neu_.fehler.isEmpty()) ergaenze_Schluessel();
    if (neu_.fehler.isEmpty()) pruefe();
    return std::move(neu_);
  }

 private:
  std::optional<QString>& wert(Vorgangsspalte spalte) { return neu_.werte.at(vorgangsspalten::platz(spalte)); }

  void nimm_Werte(const QList<Listenwert>& werte) {
    for (qsizetype i = 0; i < werte.size(); ++i) {
      const Listenwert& einer = werte.at(i);
      if (!einer.genannt) continue;
      if (i >= wahl_.spalten.size()) {
        if (!einer.null)
          neu_.fehler =
              u"die Zeile hat mehr Werte als Spalten (%1 statt %2)"_s.arg(werte.size()).arg(wahl_.spalten.size());
        continue;
      }
      if (const auto spalte = wahl_.spalten.at(i)) nimm_Wert(*spalte, einer);
    }
  }

  void nimm_Wert(Vorgangsspalte spalte, const Listenwert& einer) {
    const auto& eigenschaft = vorgangsspalten::eigenschaft(spalte);
    neu_.genannte |= bit(spalte);
    if (!einer.null)
      wert(spalte) = einer.text;
    else if (!eigenschaft.nullbar)
      wert(spalte) = QString();
  }

  void ergaenze_Schluessel() {
    if (!wahl_.typ1.isEmpty() && text::Trim(wert(Vorgangsspalte::Typ1).value_or(QString())).isEmpty())
      wert(Vorgangsspalte::Typ1) = wahl_.typ1;
    QString typ = wert(Vorgangsspalte::Typ1).value_or(QString());
    if (vorgang::rang(typ) < vorgang::bekannte_Arten().size()) typ = vorgang::art_von(typ).typ1;
    wert(Vorgangsspalte::Typ1) = ohne_Leerzeichen_am_Ende(typ);
    // The database looks at no blanks at the end either.
    for (const Vorgangsspalte spalte : Nummer)
      wert(spalte) = ohne_Leerzeichen_am_Ende(wert(spalte).value_or(QString()));
    neu_.kennung = *wert(Vorgangsspalte::Typ1);
    for (const Vorgangsspalte spalte : Nummer) neu_.kennung += u'\x1f' + *wert(spalte);
    if (wert(Vorgangsspalte::Typ1)->isEmpty()) neu_.fehler = u"Die Art fehlt"_s;
    if (wert(Vorgangsspalte::Key1)->isEmpty()) neu_.fehler = u"Key1 fehlt"_s;
  }

  /// What would not fit the table, or no statement could hold, is wrong in any line.
  void pruefe() {
    for (const Vorgangsspalte spalte : vorgangsspalten::alle()) {
      const auto& eigenschaft = vorgangsspalten::eigenschaft(spalte);
      const auto& einer = wert(spalte);
      if (!einer || eigenschaft.laenge == 0) continue;
      const Umbruch umbruch = spalte == Vorgangsspalte::Text ? Umbruch::Erlaubt : Umbruch::Verboten;
      neu_.fehler = vorgangspruefung::pruefe_Text(eigenschaft.name, *einer, eigenschaft.laenge, umbruch);
      if (!neu_.fehler.isEmpty()) return;
    }
    const auto kunde = wert(Vorgangsspalte::Kundennummer);
    const bool ohne_Kunde = text::Trim(kunde.value_or(QString())).isEmpty();
    if (ohne_Kunde && (wert(Vorgangsspalte::Kundenname) || wert(Vorgangsspalte::Ort)))
      neu_.fehler = u"Kundenname oder Ort steht ohne Kundennummer"_s;
    neu_.fehler_neu = vorgangspruefung::pruefe_Schluessel(*wert(Vorgangsspalte::Typ1),
        {*wert(Vorgangsspalte::Key1), *wert(Vorgangsspalte::Key2), *wert(Vorgangsspalte::Key3)});
    neu_.fehler_anders = vorgangspruefung::pruefe_Ordner(wert(Vorgangsspalte::Ordner).value_or(QString()));
    pruefe_Stand();
  }

  void pruefe_Stand() {
    std::optional<QString>& stand = wert(Vorgangsspalte::Stand);
    if (!stand) return;
    if (const auto gelesen = als_Stand(*stand))
      stand = gelesen;
    else if (neu_.fehler_anders.isEmpty())
      neu_.fehler_anders = u"Stand ist „%1“ und kein Datum"_s.arg(stand->left(40));
  }

  const Spaltenwahl& wahl_;
  Einlesezeile neu_;
};

}  // namespace

Einlesezeile als_Einlesezeile(const Listenzeile& zeile, const Spaltenwahl& wahl) {
  return Wandler(wahl).wandle(zeile);
}
