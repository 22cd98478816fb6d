#include "platform/adodb/odbc/OdbcServer.h"

#include "platform/adodb/odbc/OdbcFehler.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

bool beginnt(const QString& text, QLatin1StringView anfang) {
  return text.startsWith(anfang, Qt::CaseInsensitive);
}

QString ohne_weg(const QString& text) {
  for (const auto weg : {"np:"_L1, "lpc:"_L1, "via:"_L1, "admin:"_L1, "(localdb)"_L1, "\\\\"_L1})
    if (beginnt(text, weg))
      odbc_unerfuellbar(u"der Server ist nur über TCP zu erreichen, sein Name verlangt einen anderen Weg"_s);
  return beginnt(text, "tcp:"_L1) ? text.sliced(4).trimmed() : text;
}

QString rechnername(const QString& text) {
  const QString name = text.trimmed();
  const bool dieser = name.isEmpty() || name == "."_L1 || name.compare("(local)"_L1, Qt::CaseInsensitive) == 0;
  return dieser ? u"localhost"_s : name;
}

}  // namespace

int lies_Port(const QString& text) {
  bool ist_Zahl = false;
  const int port = text.trimmed().toInt(&ist_Zahl);
  if (!ist_Zahl || port < 1 || port > 65535)
    odbc_unerfuellbar(u"der Port des Servers ist keine Zahl von 1 bis 65535"_s);
  return port;
}

Serverangabe lies_Serverangabe(const QString& text) {
  QString rest = ohne_weg(text.trimmed());
  Serverangabe angabe;
  if (const qsizetype komma = rest.lastIndexOf(u','); komma >= 0) {
    angabe.port = lies_Port(rest.sliced(komma + 1));
    rest.truncate(komma);
  }
  if (const qsizetype strich = rest.indexOf(u'\\'); strich >= 0) {
    angabe.instanz = rest.sliced(strich + 1).trimmed();
    rest.truncate(strich);
  }
  angabe.rechner = rechnername(rest);
  const bool namenlos = angabe.instanz.compare("MSSQLSERVER"_L1, Qt::CaseInsensitive) == 0;
  if (namenlos || angabe.port != 0) angabe.instanz.clear();
  return angabe;
}

}  // namespace adodb
