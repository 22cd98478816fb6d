#include "host/betrieb/befehl/Datensatzangaben.h"

#include <optional>

#include "host/betrieb/Namen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString geprueft(const Aufruf& aufruf, const QString& option, const QString& ohne_Angabe) {
  const std::optional<QString> wert = aufruf.wert(option);
  if (!wert) return ohne_Angabe;
  namen::pruefe_Schluessel(option, *wert);
  return wert->isEmpty() ? u"-"_s : *wert;
}

Datensatz datensatz(const Aufruf& aufruf, const QString& ohne_Angabe) {
  return {geprueft(aufruf, u"key1"_s, ohne_Angabe), geprueft(aufruf, u"key2"_s, ohne_Angabe),
      geprueft(aufruf, u"key3"_s, ohne_Angabe), geprueft(aufruf, u"key4"_s, ohne_Angabe),
      geprueft(aufruf, u"typ1"_s, ohne_Angabe), geprueft(aufruf, u"typ2"_s, ohne_Angabe)};
}

}  // namespace

Datensatz datensatzangaben::genau(const Aufruf& aufruf) {
  aufruf.noetig(u"key1"_s);
  aufruf.noetig(u"typ1"_s);
  return datensatz(aufruf, u"-"_s);
}

Datensatz datensatzangaben::filter(const Aufruf& aufruf) {
  return datensatz(aufruf, {});
}
