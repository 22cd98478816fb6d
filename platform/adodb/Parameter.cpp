#include "platform/adodb/Parameter.h"

#include <cmath>

#include "platform/adodb/SqlZerleger.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// Where a name in square brackets ends on the server, on which a doubled closing bracket stands for itself. `ende` is
/// where SqlZerleger, which follows SQLite there, ends it.
qsizetype ende_des_Namens(QStringView text, qsizetype ende) {
  while (ende < text.size() && text[ende] == u']') {
    const qsizetype schluss = text.indexOf(u']', ende + 1);
    ende = schluss < 0 ? text.size() : schluss + 1;
  }
  return ende;
}

}  // namespace

std::size_t zaehle_Marken(QStringView text) {
  std::size_t anzahl = 0;
  SqlZerleger zerleger(text);
  while (const auto stueck = zerleger.naechstes()) {
    const QChar erstes = text[stueck->beginn];
    if (stueck->art == Sqlstueck::Art::Zeichen && erstes == u'?') ++anzahl;
    if (stueck->art != Sqlstueck::Art::Name || erstes != u'[') continue;
    const qsizetype ende = ende_des_Namens(text, stueck->ende);
    if (ende > stueck->ende) return anzahl + zaehle_Marken(text.sliced(ende));
  }
  return anzahl;
}

void pruefe_Anzahl(std::size_t marken, std::size_t werte) {
  if (marken != werte)
    keine_Anweisung(u"der Text hat %1 Parameter, dazu gibt es %2 Werte"_s.arg(marken).arg(werte), u"07002"_s);
}

void pruefe_Werte(const std::vector<Wert>& werte) {
  for (const Wert& wert : werte) {
    const auto* text = std::get_if<QString>(&wert);
    if (text && text->contains(QChar(u'\0'))) keine_Anweisung(u"ein Wert enthält ein Nullzeichen"_s);
    const auto* zahl = std::get_if<double>(&wert);
    if (zahl && !std::isfinite(*zahl)) keine_Anweisung(u"ein Wert ist keine Zahl"_s);
  }
}

void keine_Anweisung(const QString& worte, const QString& sqlstate) {
  throw Datenbankfehler(fehlernummer::Anweisung, u"Die Anweisung ist fehlgeschlagen: "_s + worte, sqlstate, 0);
}

Datenbankfehler aufgegebene_Anweisung(std::int32_t native_Nummer) {
  return Datenbankfehler(
      fehlernummer::Anweisung, u"Die Anweisung ist fehlgeschlagen: sie wurde aufgegeben"_s, u"HY008"_s, native_Nummer);
}

}  // namespace adodb
