#include "platform/adodb/sqlite/SqliteDialekt.h"

#include <algorithm>
#include <vector>

#include "platform/adodb/SqlZerleger.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

using Art = Sqlstueck::Art;

/// One change of the text: `laenge` characters from `stelle` on give way to `ersatz`.
struct Aenderung {
  qsizetype stelle = 0;
  qsizetype laenge = 0;
  QString ersatz;
};

bool ist_Wort(QStringView text, const Sqlstueck& stueck, QStringView wort) {
  return stueck.art == Art::Wort &&
      text.sliced(stueck.beginn, stueck.ende - stueck.beginn).compare(wort, Qt::CaseInsensitive) == 0;
}

/// Finds each TOP of a text and what it becomes.
class Topsuche {
 public:
  Topsuche(QStringView text, std::vector<Aenderung>& aenderungen) : text_(text), aenderungen_(aenderungen) {
    SqlZerleger zerleger(text);
    while (const auto stueck = zerleger.naechstes())
      if (stueck->art != Art::Leer && stueck->art != Art::Kommentar) stuecke_.push_back(*stueck);
  }

  void suche() {
    ebenen_.emplace_back();
    for (std::size_t i = 0; i < stuecke_.size(); ++i) {
      if (ist_Zeichen(i, u'(')) {
        ebenen_.emplace_back();
      } else if (ist_Zeichen(i, u')')) {
        schliesse_Ebene(i);
        if (ebenen_.size() > 1) ebenen_.pop_back();
      } else if (ist_Zeichen(i, u';') && ebenen_.size() == 1) {
        schliesse_Ebene(i);
        ebenen_.back() = Ebene();
      } else {
        i = sieh_an(i);
      }
    }
    if (ebenen_.size() == 1) schliesse_Ebene(stuecke_.size());
  }

 private:
  /// What is known of the select at one depth of brackets.
  struct Ebene {
    bool hinter_SELECT = false;
    bool verbunden = false;
    QString grenze;
    Aenderung wegfall;
  };
  struct Top {
    QString anzahl;
    bool prozent = false;
    std::size_t letztes = 0;
  };

  bool ist_Zeichen(std::size_t i, QChar zeichen) const {
    return i < stuecke_.size() && stuecke_[i].art == Art::Zeichen && text_[stuecke_[i].beginn] == zeichen;
  }
  bool ist(std::size_t i, QStringView wort) const { return i < stuecke_.size() && ist_Wort(text_, stuecke_[i], wort); }

  /// Looks at a piece that is neither bracket nor semicolon; gives the number of the last piece that it used up.
  std::size_t sieh_an(std::size_t i) {
    Ebene& ebene = ebenen_.back();
    if (ist(i, u"SELECT")) {
      ebene.hinter_SELECT = true;
    } else if (ist(i, u"UNION") || ist(i, u"EXCEPT") || ist(i, u"INTERSECT")) {
      ebene.verbunden = true;
      ebene.hinter_SELECT = false;
    } else if (ebene.hinter_SELECT && ist(i, u"TOP")) {
      ebene.hinter_SELECT = false;
      return nimm_top(i, ebene);
    } else if (!ist(i, u"ALL") && !ist(i, u"DISTINCT")) {
      ebene.hinter_SELECT = false;
    }
    return i;
  }

  std::size_t nimm_top(std::size_t i, Ebene& ebene) {
    const Top top = lies_top(i);
    if (top.anzahl.isEmpty() || (ist(top.letztes + 1, u"WITH") && ist(top.letztes + 2, u"TIES"))) return i;
    if (top.prozent && top.anzahl != u"100"_s) return i;
    if (top.prozent) {
      aenderungen_.push_back(wegfall(i, top.letztes));
    } else if (ebene.grenze.isEmpty()) {
      ebene.grenze = top.anzahl;
      ebene.wegfall = wegfall(i, top.letztes);
    } else {
      ebene.verbunden = true;
    }
    return top.letztes;
  }

  /// The number behind TOP, bare or in brackets; empty when there is none.
  Top lies_top(std::size_t i) const {
    const bool klammer = ist_Zeichen(i + 1, u'(');
    const std::size_t zahl = i + (klammer ? 2 : 1);
    if (zahl >= stuecke_.size() || stuecke_[zahl].art != Art::Zahl) return {};
    if (klammer && !ist_Zeichen(zahl + 1, u')')) return {};
    const QStringView ziffern = text_.sliced(stuecke_[zahl].beginn, stuecke_[zahl].ende - stuecke_[zahl].beginn);
    if (!std::all_of(ziffern.begin(), ziffern.end(), [](QChar z) { return z >= u'0' && z <= u'9'; })) return {};
    Top top{ziffern.toString(), false, klammer ? zahl + 1 : zahl};
    if (ist(top.letztes + 1, u"PERCENT")) {
      top.prozent = true;
      ++top.letztes;
    }
    return top;
  }

  /// Takes out the pieces from `erstes` to `letztes` and the blanks behind them.
  Aenderung wegfall(std::size_t erstes, std::size_t letztes) const {
    qsizetype ende = stuecke_[letztes].ende;
    while (ende < text_.size() && text_[ende] == u' ') ++ende;
    return {stuecke_[erstes].beginn, ende - stuecke_[erstes].beginn, {}};
  }

  /// Puts the limit of the innermost depth behind the last piece before `i`.
  void schliesse_Ebene(std::size_t i) {
    const Ebene& ebene = ebenen_.back();
    if (ebene.grenze.isEmpty() || ebene.verbunden || i == 0) return;
    aenderungen_.push_back(ebene.wegfall);
    aenderungen_.push_back({stuecke_[i - 1].ende, 0, u" LIMIT "_s + ebene.grenze});
  }

  QStringView text_;
  std::vector<Aenderung>& aenderungen_;
  std::vector<Sqlstueck> stuecke_;
  std::vector<Ebene> ebenen_;
};

/// Notes the numbers with a word directly behind; tells whether the word TOP stands anywhere.
bool suche_klebende_Zahlen(QStringView text, std::vector<Aenderung>& aenderungen) {
  bool top = false;
  bool hinter_Zahl = false;
  SqlZerleger zerleger(text);
  while (const auto stueck = zerleger.naechstes()) {
    if (stueck->art == Art::Wort) {
      if (hinter_Zahl) aenderungen.push_back({stueck->beginn, 0, u" "_s});
      top = top || ist_Wort(text, *stueck, u"TOP");
    }
    hinter_Zahl = stueck->art == Art::Zahl;
  }
  return top;
}

QString wende_an(const QString& text, std::vector<Aenderung>& aenderungen) {
  std::stable_sort(aenderungen.begin(), aenderungen.end(),
      [](const Aenderung& a, const Aenderung& b) { return a.stelle < b.stelle; });
  QString neu;
  neu.reserve(text.size() + 16);
  qsizetype bis = 0;
  for (const Aenderung& aenderung : aenderungen) {
    if (aenderung.stelle < bis) continue;
    neu += QStringView(text).sliced(bis, aenderung.stelle - bis);
    neu += aenderung.ersatz;
    bis = aenderung.stelle + aenderung.laenge;
  }
  return neu += QStringView(text).sliced(bis);
}

}  // namespace

QString sqlite_Dialekt(const QString& text) {
  std::vector<Aenderung> aenderungen;
  if (suche_klebende_Zahlen(text, aenderungen)) Topsuche(text, aenderungen).suche();
  return aenderungen.empty() ? text : wende_an(text, aenderungen);
}

}  // namespace adodb
