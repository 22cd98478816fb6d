#include <map>
#include <mutex>
#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Treiber.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/odbc/OdbcTreiber.h"
#include "platform/adodb/odbc/OdbcVerbindung.h"
#include "platform/adodb/sqlite/SqliteTreiber.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

struct Register {
  std::mutex schutz;
  std::map<QString, Treiberfabrik> fabriken;
};

/// The OLE DB providers whose connect strings go to ODBC, in small letters; each also with its version behind it
/// ("SQLOLEDB.1").
constexpr QStringView OdbcProvider[] = {
    u"msdasql", u"sqloledb", u"sqlncli", u"sqlncli10", u"sqlncli11", u"msoledbsql", u"msoledbsql19"};

/// The provider's name without its version. A connect string in ODBC form names none and gets the provider for ODBC.
QString provider_von(const Verbindungszeichenfolge& folge) {
  const QString provider = folge.wert(u"Provider"_s).value_or(QString());
  if (provider.isEmpty()) return ist_Odbc_Form(folge) ? u"MSDASQL"_s : QString();
  for (const QStringView name : OdbcProvider)
    if (provider.compare(name.toString() + u".1"_s, Qt::CaseInsensitive) == 0) return name.toString();
  return provider;
}

/// Never destroyed: a thread's writing connection may outlive the static objects.
Register& das_Register() {
  static Register* const Eines = [] {
    auto* neu = new Register;
    neu->fabriken[u"sqlite"_s] = [] { return std::make_unique<SqliteTreiber>(); };
    for (const QStringView provider : OdbcProvider)
      neu->fabriken[provider.toString()] = [] { return std::make_unique<OdbcTreiber>(); };
    return neu;
  }();
  return *Eines;
}

}  // namespace

void registriere_treiber(const QString& provider, Treiberfabrik fabrik) {
  Register& r = das_Register();
  const std::lock_guard sperre(r.schutz);
  r.fabriken[provider.toCaseFolded()] = std::move(fabrik);
}

std::unique_ptr<Treiber> treiber_fuer(const QString& verbindungszeichenfolge) {
  const QString provider = provider_von(Verbindungszeichenfolge(verbindungszeichenfolge));
  Treiberfabrik fabrik;
  {
    Register& r = das_Register();
    const std::lock_guard sperre(r.schutz);
    const auto gefunden = r.fabriken.find(provider.toCaseFolded());
    if (gefunden != r.fabriken.end()) fabrik = gefunden->second;
  }
  // The value is not repeated: where a semicolon was forgotten it holds the password too.
  if (provider.isEmpty())
    throw Laufzeitfehler(adErrProviderNotFound, u"Die Verbindungszeichenfolge nennt keinen Provider"_s);
  std::unique_ptr<Treiber> treiber = fabrik ? fabrik() : nullptr;
  if (!treiber)
    throw Laufzeitfehler(
        adErrProviderNotFound, u"Für den Provider der Verbindungszeichenfolge gibt es keinen Datenbanktreiber"_s);
  return treiber;
}

}  // namespace adodb
