#include "platform/adodb/odbc/OdbcFehler.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/adodb/Verbindungszeichenfolge.h"
using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

constexpr SQLSMALLINT Hoechstens = 64;

/// "[maker][driver][data source]words", as ODBC prescribes it; a server's own words may begin with a bracket too, so
/// only a third group that names the data source is taken off.
QString ohne_Absender(const QString& text) {
  qsizetype anfang = 0;
  for (int gruppe = 0; gruppe < 3 && anfang < text.size() && text.at(anfang) == u'['; ++gruppe) {
    const qsizetype ende = text.indexOf(u']', anfang);
    if (ende < 0) break;
    if (gruppe == 2 && text.sliced(anfang, ende + 1 - anfang) != u"[SQL Server]"_s) break;
    anfang = ende + 1;
  }
  return text.sliced(anfang).trimmed();
}

/// FreeTDS gives its own failures, numbered 20000 to 20999, a warning's SQLSTATE.
bool ist_Warnung(const OdbcMeldung& meldung) {
  if (meldung.nummer >= 20000 && meldung.nummer < 21000) return false;
  return meldung.sqlstate.startsWith("01"_L1) || meldung.sqlstate.startsWith("00"_L1);
}

/// The failures alone, where there are any: a server sends messages and warnings of the same batch with them.
QList<OdbcMeldung> fehler_darin(const QList<OdbcMeldung>& meldungen) {
  QList<OdbcMeldung> fehler;
  for (const OdbcMeldung& meldung : meldungen)
    if (!ist_Warnung(meldung)) fehler.append(meldung);
  return fehler.isEmpty() ? meldungen : fehler;
}

OdbcMeldung fuehrende(const QList<OdbcMeldung>& fehler) {
  for (const OdbcMeldung& meldung : fehler)
    if (meldung.nummer != 0) return meldung;
  return fehler.value(0, OdbcMeldung{u"HY000"_s, 0, {}});
}

QString worte_von(const QList<OdbcMeldung>& fehler) {
  QStringList teile;
  for (const OdbcMeldung& meldung : fehler)
    if (!meldung.worte.isEmpty() && !teile.contains(meldung.worte)) teile.append(meldung.worte);
  if (teile.isEmpty()) return u"der Treiber nennt keinen Grund"_s;
  return teile.join(u"; "_s);
}

QString kennung(const OdbcMeldung& meldung) {
  const QString zustand = u" (SQLSTATE "_s + meldung.sqlstate;
  return meldung.nummer == 0 ? zustand + u')' : zustand + u", Fehler "_s + QString::number(meldung.nummer) + u')';
}

QString ohne_Kennwort(QString worte, const QString& kennwort) {
  if (kennwort.isEmpty()) return worte;
  QString verdoppelt = kennwort;
  verdoppelt.replace(u"}"_s, u"}}"_s);
  return worte.replace(verdoppelt, u"***"_s).replace(kennwort, u"***"_s);
}

/// FreeTDS reports a time-out by its own number 20003, whatever the SQLSTATE.
bool ist_Zeit_um(const QList<OdbcMeldung>& fehler) {
  return std::any_of(fehler.begin(), fehler.end(), [](const OdbcMeldung& m) {
    return m.sqlstate.startsWith("HYT"_L1) || (m.nummer == 20003 && m.worte.contains("timed out"_L1));
  });
}

bool ist_Anmeldung(const QList<OdbcMeldung>& fehler) {
  return std::any_of(
      fehler.begin(), fehler.end(), [](const OdbcMeldung& m) { return m.sqlstate == "28000"_L1 || m.nummer == 18456; });
}

/// The driver manager's own failure to load the driver, which it tells as a warning.
bool ist_Ladefehler(const QList<OdbcMeldung>& fehler) {
  return std::any_of(fehler.begin(), fehler.end(),
      [](const OdbcMeldung& m) { return m.sqlstate.startsWith("IM"_L1) || m.worte.startsWith("Can't open lib"_L1); });
}

QString umstand(const QList<OdbcMeldung>& fehler, const OdbcVersuch& versuch) {
  if (ist_Ladefehler(fehler)) return u"der ODBC-Treiber ist nicht zu laden: "_s;
  if (ist_Anmeldung(fehler))
    return u"der Server"_s + Verbindungszeichenfolge::genannt(versuch.ziel) + u" hat die Anmeldung abgelehnt: "_s;
  if (ist_Zeit_um(fehler))
    return u"der Server"_s + Verbindungszeichenfolge::genannt(versuch.ziel) +
        u" hat in %1 Sekunden nicht geantwortet: "_s.arg(versuch.zeitgrenze);
  // FreeTDS has the same words for all of these.
  return u"der Server"_s + Verbindungszeichenfolge::genannt(versuch.ziel) +
      (versuch.verschluesselt
              ? u" ist nicht zu erreichen, verschlüsselt die Verbindung nicht oder zeigt ein Zertifikat, "
                "das der Prüfung nicht standhält: "_s
              : u" ist nicht zu erreichen oder nimmt die Verbindung nicht an: "_s);
}

}  // namespace

void odbc_unerfuellbar(const QString& worte) {
  throw Datenbankfehler(
      fehlernummer::Verbindung, u"Die Verbindung zur Datenbank ist fehlgeschlagen: "_s + worte, u"01S00"_s, 0);
}

QList<OdbcMeldung> odbc_Meldungen(OdbcSchicht& odbc, SQLSMALLINT art, SQLHANDLE griff) {
  QList<OdbcMeldung> meldungen;
  std::vector<char16_t> text(1024);
  for (SQLSMALLINT satz = 1; satz <= Hoechstens; ++satz) {
    std::array<char16_t, 6> sqlstate{};
    SQLINTEGER nummer = 0;
    SQLSMALLINT laenge = 0;
    const auto lies = [&] {
      return odbc.GetDiagRec(
          art, griff, satz, sqlstate.data(), &nummer, text.data(), static_cast<SQLSMALLINT>(text.size()), &laenge);
    };
    SQLRETURN ergebnis = lies();
    if (SQL_SUCCEEDED(ergebnis) && static_cast<std::size_t>(std::max<SQLSMALLINT>(laenge, 0)) >= text.size()) {
      text.resize(std::min<std::size_t>(static_cast<std::size_t>(laenge) + 1, 32767));
      ergebnis = lies();
    }
    if (!SQL_SUCCEEDED(ergebnis)) break;
    const auto zeichen = std::clamp<qsizetype>(laenge, 0, static_cast<qsizetype>(text.size()) - 1);
    meldungen.append(
        {QString::fromUtf16(sqlstate.data(), 5), nummer, ohne_Absender(QString::fromUtf16(text.data(), zeichen))});
  }
  return meldungen;
}

Datenbankfehler odbc_Anweisungsfehler(const QList<OdbcMeldung>& meldungen, bool abgerissen) {
  const QList<OdbcMeldung> fehler = fehler_darin(meldungen);
  OdbcMeldung erste = fuehrende(fehler);
  if (abgerissen && !erste.sqlstate.startsWith("08"_L1)) erste.sqlstate = u"08S01"_s;
  const QString umstand = abgerissen ? u"die Verbindung zum Server ist abgerissen: "_s : QString();
  return Datenbankfehler(fehlernummer::Anweisung,
      u"Die Anweisung ist fehlgeschlagen: "_s + umstand + worte_von(fehler) + kennung(erste), erste.sqlstate,
      erste.nummer);
}

Datenbankfehler odbc_Verbindungsfehler(const QList<OdbcMeldung>& meldungen, const OdbcVersuch& versuch) {
  const QList<OdbcMeldung> fehler = fehler_darin(meldungen);
  const OdbcMeldung erste = fuehrende(fehler);
  return Datenbankfehler(fehlernummer::Verbindung,
      u"Die Verbindung zur Datenbank ist fehlgeschlagen: "_s + umstand(fehler, versuch) +
          ohne_Kennwort(worte_von(fehler), versuch.kennwort) + kennung(erste),
      erste.sqlstate, erste.nummer);
}

}  // namespace adodb
