// Records in tables of our own: few hits are sorted, many are met soon enough on a walk from the newest record on.
#include <QList>
#include <utility>

#include "host/betrieb/vorgang/Vorgangsanweisung.h"

using namespace Qt::Literals::StringLiterals;

namespace vorgangsquelle {
namespace {

const QString Neueste = u"Stand DESC, Suchnummer"_s;
/// The newest records that are looked at one by one before the index is asked for all hits.
constexpr int Gang = 20000;

/// Each word as a phrase of the full-text index.
QString als_Suche(const QStringList& worte) {
  QStringList phrasen;
  for (QString wort : worte) phrasen.append(u'"' + wort.replace(u'"', u"\"\""_s) + u'"');
  return phrasen.join(u' ');
}

/// A full-text table that finds the records of some of the words.
struct Index {
  QString tabelle;
  QStringList worte;
  bool leer() const { return worte.isEmpty(); }
  QString bedingung() const { return tabelle + u" MATCH (?)"_s; }
};

class Suche {
 public:
  Suche(adodb::Connection& verbindung, const Frage& frage)
      : verbindung_(verbindung),
        frage_(frage),
        lange_{u"Vorgaenge_Text"_s, frage.filter.lange},
        kurze_{u"Vorgaenge_Anfang"_s, frage.filter.kurze} {}

  QList<Vorgang> lies() {
    if (frage_.filter.leer()) return hole(alle(), {}, frage_.hoechstens);
    if (const Index* index = seltener()) return hole(alle(), aus_Index(*index), frage_.hoechstens);
    QList<Vorgang> treffer = lies_vordere();
    const int rest = frage_.hoechstens - static_cast<int>(treffer.size());
    if (rest > 0) treffer += lies_haeufige(ohne_vordere(enthaelt_alle()), rest);
    return treffer;
  }

  std::int64_t zaehle() {
    if (frage_.filter.leer()) return zahl(u"SELECT COUNT(*) FROM Vorgaenge"_s, {});
    if (const Index* index = seltener()) {
      Vorgangsanweisung anzahl;
      anzahl += u"SELECT COUNT(*) FROM Vorgaenge WHERE "_s;
      anzahl.haenge_an(aus_Index(*index));
      return zahl(anzahl.text, anzahl.werte);
    }
    const bool gezaehlt = (lange_.leer() || kurze_.leer()) && frage_.filter.zeichen.isEmpty();
    if (gezaehlt) return Zaehlgrenze + 1;
    Vorgangsanweisung anzahl;
    anzahl += u"SELECT COUNT(*) FROM (SELECT 1 FROM Vorgaenge WHERE "_s;
    anzahl.haenge_an(aus_beiden()) += u" LIMIT %1)"_s.arg(Zaehlgrenze + 1);
    return zahl(anzahl.text, anzahl.werte);
  }

 private:
  std::int64_t zahl(const QString& text, const std::vector<adodb::Wert>& werte) {
    return verbindung_.Execute(text, werte)->Text(0).toLongLong();
  }

  std::int64_t begrenzte_Zahl(const QString& tabelle, const QString& bedingung, const QStringList& werte) {
    return zahl(
        u"SELECT COUNT(*) FROM (SELECT 1 FROM %1 WHERE %2 LIMIT %3)"_s.arg(tabelle, bedingung).arg(Zaehlgrenze + 1),
        std::vector<adodb::Wert>(werte.begin(), werte.end()));
  }

  /// An index with so few hits that all of them can be sorted, or none.
  const Index* seltener() {
    for (const Index* index : {&lange_, &kurze_})
      if (!index->leer() &&
          begrenzte_Zahl(index->tabelle, index->bedingung(), {als_Suche(index->worte)}) <= Zaehlgrenze)
        return index;
    return nullptr;
  }

  static QString alle() { return u"Vorgaenge"_s; }
  static QString neueste() { return u"(SELECT * FROM Vorgaenge ORDER BY %1 LIMIT %2)"_s.arg(Neueste).arg(Gang); }

  Vorgangsanweisung enthaelt(const QStringList& lange, const QStringList& kurze) const {
    Vorgangsanweisung glieder;
    glieder += u"1"_s;
    for (const QString& wort : lange + frage_.filter.zeichen)
      glieder.haenge_an(u" AND instr(Suchtext, ?) > 0"_s, {wort});
    for (const QString& wort : kurze) glieder.haenge_an(u" AND instr(Wortanfaenge, ?) > 0"_s, {u' ' + wort + u' '});
    return glieder;
  }
  Vorgangsanweisung enthaelt_alle() const { return enthaelt(lange_.worte, kurze_.worte); }

  /// The hits of the indexes, all of them together.
  static Vorgangsanweisung ist_in(const QList<const Index*>& indexe) {
    Vorgangsanweisung glied;
    QString wort = u"Nr IN ("_s;
    for (const Index* index : indexe)
      glied.haenge_an(std::exchange(wort, u" INTERSECT "_s) +
              u"SELECT rowid FROM %1 WHERE %2"_s.arg(index->tabelle, index->bedingung()),
          {als_Suche(index->worte)});
    return glied += u")"_s;
  }

  /// The hits of one index that have the words of the other.
  Vorgangsanweisung aus_Index(const Index& index) const {
    Vorgangsanweisung glieder = ist_in({&index});
    glieder += u" AND "_s;
    const bool lang = &index == &lange_;
    return glieder.haenge_an(enthaelt(lang ? QStringList() : lange_.worte, lang ? kurze_.worte : QStringList()));
  }

  Vorgangsanweisung aus_beiden() const {
    QList<const Index*> indexe{&lange_, &kurze_};
    indexe.removeIf([](const Index* index) { return index->leer(); });
    Vorgangsanweisung glieder = enthaelt({}, {});
    if (!indexe.isEmpty()) (glieder += u" AND "_s).haenge_an(ist_in(indexe));
    return glieder;
  }

  /// The number begins with what was typed, with its first part or without.
  Vorgangsanweisung beginnt() const {
    const QString ende = frage_.filter.ganz + QString::fromUcs4(U"\U0010FFFF", 1);
    Vorgangsanweisung glied;
    return glied.haenge_an(
        u"((Suchnummer >= ? AND Suchnummer < ?) OR (Suchnummer2 <> '' AND Suchnummer2 >= ? AND "
        "Suchnummer2 < ?))"_s,
        {frage_.filter.ganz, ende, frage_.filter.ganz, ende});
  }

  Vorgangsanweisung ohne_vordere(Vorgangsanweisung bedingung) const {
    bedingung += u" AND NOT "_s;
    return bedingung.haenge_an(beginnt());
  }

  QList<Vorgang> lies_vordere() {
    const Vorgangsanweisung anfang = beginnt();
    Vorgangsanweisung anzahl;
    anzahl += u"SELECT COUNT(*) FROM (SELECT 1 FROM Vorgaenge WHERE "_s;
    anzahl.haenge_an(anfang) += u" LIMIT %1)"_s.arg(Zaehlgrenze + 1);
    if (zahl(anzahl.text, anzahl.werte) <= Zaehlgrenze) return hole(alle(), anfang, frage_.hoechstens);
    const QList<Vorgang> gefunden = hole(neueste(), anfang, frage_.hoechstens);
    return gefunden.size() < frage_.hoechstens ? hole(alle(), anfang, frage_.hoechstens) : gefunden;
  }

  QList<Vorgang> lies_haeufige(const Vorgangsanweisung& bedingung, int hoechstens) {
    const QList<Vorgang> gefunden = hole(neueste(), bedingung, hoechstens);
    if (gefunden.size() == hoechstens) return gefunden;
    return hole(alle(), ohne_vordere(aus_beiden()), hoechstens);
  }

  /// Records of a table expression. The walk is in its order already and ends with the last one that is wanted.
  QList<Vorgang> hole(const QString& woraus, const Vorgangsanweisung& bedingung, int hoechstens) {
    Vorgangsanweisung innen;
    innen += u"SELECT Typ1, Key1, Key2, Key3, Bezeichnung, Ordner, Stand, Suchnummer, "_s;
    const bool mit_Filter = !frage_.filter.leer();
    if (mit_Filter)
      innen.haenge_an(beginnt());
    else
      innen += u"0"_s;
    innen += u" AS Vorn FROM %1"_s.arg(woraus);
    if (!bedingung.text.isEmpty()) (innen += u" WHERE "_s).haenge_an(bedingung);
    if (woraus == alle()) innen += mit_Filter ? u" ORDER BY Vorn DESC, "_s + Neueste : u" ORDER BY "_s + Neueste;
    innen += u" LIMIT %1"_s.arg(hoechstens);
    return lies_Vorgaenge(verbindung_, mit_Bildern(innen, u"t.Vorn DESC, t.Stand DESC, t.Suchnummer"_s, hoechstens));
  }

  adodb::Connection& verbindung_;
  const Frage& frage_;
  Index lange_;
  Index kurze_;
};

}  // namespace

QList<Vorgang> lies_Eigene(adodb::Connection& verbindung, const Frage& frage) {
  return Suche(verbindung, frage).lies();
}

std::int64_t zaehle_Eigene(adodb::Connection& verbindung, const Frage& frage) {
  return Suche(verbindung, frage).zaehle();
}

}  // namespace vorgangsquelle
