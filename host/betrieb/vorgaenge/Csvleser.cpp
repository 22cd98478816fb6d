#include "host/betrieb/vorgaenge/Csvleser.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/basic/Text.h"
#include "platform/basic/Windows1252.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Lines that are looked at to find the separator.
constexpr int Probezeilen = 20;

struct Trennerwort {
  QChar zeichen;
  QLatin1StringView name;
};
/// The first of two that fit equally well counts.
constexpr std::array Trenner{
    Trennerwort{u';', "Semikolon"_L1}, Trennerwort{u'\t', "Tabulator"_L1}, Trennerwort{u',', "Komma"_L1}};

/// Splits one record, line by line.
class Zerleger {
 public:
  explicit Zerleger(QChar trenner) : trenner_(trenner) {}

  enum class Lage { Fertig, Offen, Kaputt };
  /// Takes a line; `Offen` wants the next one.
  Lage nimm(QStringView zeile) {
    for (const QChar zeichen : zeile)
      if (!nimm(zeichen)) return Lage::Kaputt;
    return lage_ == Wo::Darin ? Lage::Offen : Lage::Fertig;
  }
  /// The values, once it is `Fertig`.
  QList<Listenwert> werte() {
    schliesse_ab();
    return std::move(werte_);
  }

 private:
  /// At a value's beginning, in one without quotes, within quotes, behind a quote that may close.
  enum class Wo { Anfang, Frei, Darin, Dahinter };

  bool nimm(QChar zeichen) {
    if (lage_ == Wo::Darin) {
      if (zeichen == u'"')
        lage_ = Wo::Dahinter;
      else
        wert_ += zeichen;
      return true;
    }
    if (zeichen == trenner_) {
      schliesse_ab();
      return true;
    }
    if (zeichen == u'\n' || zeichen == u'\r') return true;
    if (lage_ == Wo::Dahinter) return nimm_dahinter(zeichen);
    if (zeichen == u'"' && lage_ == Wo::Anfang) {
      wert_.clear();
      lage_ = Wo::Darin;
      in_Zeichen_ = true;
      return true;
    }
    wert_ += zeichen;
    if (zeichen != u' ') lage_ = Wo::Frei;
    return true;
  }

  bool nimm_dahinter(QChar zeichen) {
    if (zeichen == u'"') {
      wert_ += zeichen;
      lage_ = Wo::Darin;
    }
    return zeichen == u'"' || zeichen == u' ';
  }

  void schliesse_ab() {
    const QString text = in_Zeichen_ ? wert_ : text::Trim(wert_);
    werte_.append({true, !in_Zeichen_ && text.isEmpty(), text});
    wert_.clear();
    lage_ = Wo::Anfang;
    in_Zeichen_ = false;
  }

  QChar trenner_;
  Wo lage_ = Wo::Anfang;
  bool in_Zeichen_ = false;
  QString wert_;
  QList<Listenwert> werte_;
};

bool ist_leer(const QList<Listenwert>& werte) {
  return std::all_of(werte.begin(), werte.end(), [](const Listenwert& wert) { return wert.null; });
}

/// How often each separator stands outside quotes in a record, over the lines that it takes.
class Trennerzaehler {
 public:
  /// True when a record ended with this line.
  bool nimm(const QByteArray& zeile) {
    for (const char c : zeile) {
      if (c == '"') darin_ = !darin_;
      for (std::size_t t = 0; t < Trenner.size(); ++t)
        if (!darin_ && Trenner.at(t).zeichen.toLatin1() == c) ++anzahlen_.at(t);
    }
    return !darin_;
  }
  std::array<qsizetype, Trenner.size()> hole() { return std::exchange(anzahlen_, {}); }

 private:
  bool darin_ = false;
  std::array<qsizetype, Trenner.size()> anzahlen_{};
};

}  // namespace

Csvleser::Csvleser(const QString& datei)
    : zeichensatz_(erkenne_Zeichensatz(datei)), quelle_(datei), trenner_(erkenne_Trenner()) {}

/// The separator stands in every record, and as often as possible.
QChar Csvleser::erkenne_Trenner() {
  std::array<qsizetype, Trenner.size()> wenigste{};
  Trennerzaehler zaehler;
  Rohzeile zeile;
  bool erster = true;
  for (int i = 0; i < Probezeilen && quelle_.naechste(zeile); ++i) {
    if (zeile.bytes.trimmed().isEmpty() || zeile.zu_lang || !zaehler.nimm(zeile.bytes)) continue;
    const auto anzahlen = zaehler.hole();
    for (std::size_t t = 0; t < Trenner.size(); ++t)
      wenigste.at(t) = erster ? anzahlen.at(t) : std::min(wenigste.at(t), anzahlen.at(t));
    erster = false;
  }
  if (erster) wenigste = zaehler.hole();
  quelle_.von_vorn();
  const auto* const meiste = std::max_element(wenigste.begin(), wenigste.end());
  return Trenner.at(static_cast<std::size_t>(meiste - wenigste.begin())).zeichen;
}

QString Csvleser::form() const {
  const auto* const wort =
      std::find_if(Trenner.begin(), Trenner.end(), [this](const Trennerwort& t) { return t.zeichen == trenner_; });
  return u"CSV mit %1, %2"_s.arg(wort->name, zeichensatz_ == Zeichensatz::Utf8 ? u"UTF-8"_s : u"Windows-1252"_s);
}

/// The characters of a line, or why there are none.
QString Csvleser::entziffert(const Rohzeile& roh, QString& fehler) const {
  if (roh.zu_lang)
    fehler = u"die Zeile ist länger als %1 KB"_s.arg(Groesste_Zeile / 1024);
  else if (roh.bytes.contains('\0'))
    fehler = u"die Zeile enthält ein Nullzeichen"_s;
  if (!fehler.isEmpty()) return {};
  if (zeichensatz_ == Zeichensatz::Windows1252) return windows1252::decode(roh.bytes);
  QStringDecoder leser(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = leser(roh.bytes);
  if (leser.hasError()) fehler = u"die Zeile ist kein gültiges UTF-8"_s;
  return text;
}

bool Csvleser::naechste(Listenzeile& zeile) {
  for (Rohzeile roh; quelle_.naechste(roh);) {
    zeile = {roh.nummer, {}, {}};
    lies_Satz(roh, zeile);
    if (!zeile.fehler.isEmpty() || !ist_leer(zeile.werte)) return true;
  }
  return false;
}

void Csvleser::lies_Satz(const Rohzeile& erste, Listenzeile& zeile) {
  Zerleger zerleger(trenner_);
  QString text = entziffert(erste, zeile.fehler);
  if (!zeile.fehler.isEmpty()) return;
  std::deque<Rohzeile> weitere;
  qsizetype laenge = erste.bytes.size();
  auto lage = zerleger.nimm(text);
  while (lage == Zerleger::Lage::Offen) {
    Rohzeile roh;
    QString fehler;
    if (laenge > Groesste_Zeile || !quelle_.naechste(roh)) break;
    laenge += roh.bytes.size();
    weitere.push_back(roh);
    text = entziffert(roh, fehler);
    lage = fehler.isEmpty() ? zerleger.nimm(text) : Zerleger::Lage::Kaputt;
  }
  if (lage == Zerleger::Lage::Fertig) {
    zeile.werte = zerleger.werte();
    return;
  }
  zeile.fehler = u"die Anführungszeichen gehen nicht auf"_s;
  quelle_.gib_zurueck(weitere);
}
