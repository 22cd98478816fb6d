#include "platform/adodb/odbc/OdbcTreiberwahl.h"

#include <QRegularExpression>
#include <QStringList>

#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/odbc/FreetdsDatei.h"
#include "platform/adodb/odbc/OdbcFehler.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// The driver's library. `attribute` are pairs "Schlüssel=Wert" with a zero character behind each.
QString bibliothek_aus(const QString& attribute) {
  for (const QString& attribut : attribute.split(QChar(u'\0'), Qt::SkipEmptyParts))
    if (attribut.startsWith("Driver="_L1, Qt::CaseInsensitive)) return attribut.sliced(7);
  return {};
}

/// The number in "ODBC Driver 18 for SQL Server", 0 for another name.
int fassung(const QString& name) {
  static const QRegularExpression Muster(
      u"^ODBC Driver (\\d+) for SQL Server$"_s, QRegularExpression::CaseInsensitiveOption);
  return Muster.match(name).captured(1).toInt();
}

QString installierte(const OdbcUmgebung& umgebung) {
  QStringList namen;
  for (const OdbcInstallierter& treiber : umgebung.treiber) namen.append(treiber.name);
  return namen.isEmpty() ? u"es ist keiner installiert"_s : u"installiert: "_s + namen.join(u", "_s);
}

}  // namespace

OdbcArt odbc_Art(const QString& name, const QString& bibliothek) {
  const auto eines_enthaelt = [&](QLatin1StringView wort) {
    return name.contains(wort, Qt::CaseInsensitive) || bibliothek.contains(wort, Qt::CaseInsensitive);
  };
  if (eines_enthaelt("freetds"_L1) || eines_enthaelt("tdsodbc"_L1)) return OdbcArt::FreeTds;
  if (eines_enthaelt("msodbcsql"_L1) || eines_enthaelt("sqlncli"_L1) || fassung(name) > 0) return OdbcArt::Hersteller;
  return OdbcArt::Unbekannt;
}

OdbcUmgebung lies_Odbc_Umgebung(OdbcSchicht& odbc, SQLHENV umgebung) {
  OdbcUmgebung gelesen;
  QString name;
  QString zweiter;
  SQLUSMALLINT richtung = SQL_FETCH_FIRST;
  for (; SQL_SUCCEEDED(odbc.Drivers(umgebung, richtung, &name, &zweiter)); richtung = SQL_FETCH_NEXT)
    gelesen.treiber.append({name, odbc_Art(name, bibliothek_aus(zweiter))});
  richtung = SQL_FETCH_FIRST;
  for (; SQL_SUCCEEDED(odbc.DataSources(umgebung, richtung, &name, &zweiter)); richtung = SQL_FETCH_NEXT)
    gelesen.datenquellen.append(
        {name, zweiter, odbc.Quellenwert(name, u"Servername"_s), odbc.Quellenwert(name, u"Encryption"_s)});
  gelesen.freetds = lies_Freetds_Dateien();
  gelesen.tdsver = qEnvironmentVariable("TDSVER");
  return gelesen;
}

bool verschluesselt_von_selbst(const OdbcInstallierter& treiber) {
  return fassung(treiber.name) >= 18;
}

const OdbcDatenquelle* finde_Datenquelle(const OdbcUmgebung& umgebung, const QString& name) {
  for (const OdbcDatenquelle& quelle : umgebung.datenquellen)
    if (quelle.name.compare(name, Qt::CaseInsensitive) == 0) return &quelle;
  return nullptr;
}

OdbcInstallierter waehle_Odbc_Treiber(const OdbcUmgebung& umgebung) {
  const OdbcInstallierter* bester = nullptr;
  const auto rang = [](const OdbcInstallierter& t) {
    if (t.art == OdbcArt::Hersteller) return 2 + fassung(t.name);
    return t.art == OdbcArt::FreeTds ? 1 : 0;
  };
  for (const OdbcInstallierter& treiber : umgebung.treiber)
    if (rang(treiber) > (bester ? rang(*bester) : 0)) bester = &treiber;
  if (!bester)
    odbc_unerfuellbar(
        u"es ist kein ODBC-Treiber für Microsoft SQL Server installiert (das Paket tdsodbc oder der Treiber des "
        "Herstellers)"_s);
  return *bester;
}

OdbcInstallierter finde_Odbc_Treiber(const OdbcUmgebung& umgebung, const QString& name) {
  const bool lesbar = !name.contains(u'{') && !name.contains(u'}');
  if (name.contains(u'/') && lesbar) return {name, odbc_Art({}, name)};
  for (const OdbcInstallierter& treiber : umgebung.treiber)
    if (treiber.name.compare(name, Qt::CaseInsensitive) == 0) return treiber;
  odbc_unerfuellbar(u"den ODBC-Treiber"_s + Verbindungszeichenfolge::genannt(name) + u" gibt es hier nicht ("_s +
      installierte(umgebung) + u')');
}

OdbcInstallierter treiber_der_Datenquelle(const OdbcUmgebung& umgebung, const QString& name) {
  const OdbcDatenquelle* quelle = finde_Datenquelle(umgebung, name);
  if (!quelle)
    odbc_unerfuellbar(
        u"die Datenquelle"_s + Verbindungszeichenfolge::genannt(name) + u" ist in unixODBC nicht eingerichtet"_s);
  if (quelle->treiber.contains(u'/')) return {quelle->treiber, odbc_Art({}, quelle->treiber)};
  for (const OdbcInstallierter& treiber : umgebung.treiber)
    if (treiber.name.compare(quelle->treiber, Qt::CaseInsensitive) == 0) return treiber;
  return {quelle->treiber, odbc_Art(quelle->treiber, {})};
}

}  // namespace adodb
