#include "tests/support/Pruefziel.h"

#include <QCoreApplication>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

std::unique_ptr<Tdsserver>& der_eine() {
  static std::unique_ptr<Tdsserver> server;
  return server;
}

Tdsserver::Maschine maschine() {
  return pruefziel() == Pruefziel::TdsH2 ? Tdsserver::Maschine::H2 : Tdsserver::Maschine::Sqlite;
}

Pruefziel gewaehltes() {
  const QString wahl = qEnvironmentVariable("KVO_PRUEFDATENBANK");
  if (wahl.isEmpty() || wahl == "sqlite"_L1) return Pruefziel::Sqlite;
  if (wahl == "tds-sqlite"_L1) return Pruefziel::TdsSqlite;
  if (wahl == "tds-h2"_L1) return Pruefziel::TdsH2;
  qFatal("KVO_PRUEFDATENBANK is none of sqlite, tds-sqlite and tds-h2: %s", qUtf8Printable(wahl));
}

}  // namespace

Pruefziel pruefziel() {
  static const Pruefziel Ziel = gewaehltes();
  return Ziel;
}

QString pruefziel_Hindernis() {
  return pruefziel() == Pruefziel::Sqlite ? QString() : Tdsserver::hindernis(maschine());
}

Tdsserver& pruefserver() {
  if (pruefziel() == Pruefziel::Sqlite) qFatal("SQLite has no server");
  if (!der_eine()) {
    // A process of the application object's must not outlive it.
    static const bool Einmal = (qAddPostRoutine(verwirf_Pruefserver), true);
    Q_UNUSED(Einmal);
    der_eine() = std::make_unique<Tdsserver>(u"pruefer"_s, pruefserver_Kennwort(), maschine());
    if (!der_eine()->laeuft()) qFatal("the TDS server does not start");
  }
  return *der_eine();
}

void verwirf_Pruefserver() {
  der_eine().reset();
}

QString pruefserver_Angaben() {
  return u"Data Source=127.0.0.1,%1;Initial Catalog=bilder;User ID=pruefer;Driver=FreeTDS;Password=\"%2\""_s
      .arg(pruefserver().port())
      .arg(pruefserver_Kennwort());
}

QString pruefserver_Kennwort() {
  return u"Ge;he}im'ä€"_s;
}
