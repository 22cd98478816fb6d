#include "platform/adodb/sqlite/SqliteTreiber.h"

#include <sqlite3.h>

#include <cerrno>
#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Parameter.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/sqlite/SqliteDialekt.h"
#include "platform/adodb/sqlite/SqliteKollation.h"
#include "platform/adodb/sqlite/SqliteSuche.h"
#include "platform/basic/Nachschlagen.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

bool ist_gesperrt(int ergebnis) {
  return (ergebnis & 0xFF) == SQLITE_BUSY || (ergebnis & 0xFF) == SQLITE_LOCKED;
}

QString sqlstate(int ergebnis) {
  constexpr std::pair<int, QStringView> Zustaende[] = {{SQLITE_CONSTRAINT, u"23000"}, {SQLITE_ERROR, u"42000"},
      {SQLITE_READONLY, u"25006"}, {SQLITE_BUSY, u"HYT00"}, {SQLITE_LOCKED, u"HYT00"}, {SQLITE_FULL, u"53100"}};
  return nachgeschlagen<int, QStringView>(Zustaende, ergebnis & 0xFF, u"HY000").toString();
}

[[noreturn]] void keine_Verbindung(const QString& worte, int ergebnis = SQLITE_CANTOPEN) {
  throw Datenbankfehler(
      fehlernummer::Verbindung, u"Die Verbindung zur Datenbank ist fehlgeschlagen: "_s + worte, u"08001"_s, ergebnis);
}

void pruefe_Schluesselworte(const Verbindungszeichenfolge& folge) {
  for (const QString& wort : folge.schluesselworte()) {
    const auto ist = [&wort](QStringView name) { return wort.compare(name, Qt::CaseInsensitive) == 0; };
    if (ist(u"Provider") || ist(u"Data Source") || ist(u"Mode")) continue;
    if (!ist(u"User ID") && !ist(u"Password"))
      keine_Verbindung(
          u"die Verbindungszeichenfolge hat ein Schlüsselwort, das SQLite nicht kennt (bekannt sind Data "
          "Source und Mode)"_s);
    if (!folge.wert(wort)->isEmpty())
      keine_Verbindung(u"SQLite kennt keine Anmeldung, User ID und Password müssen leer sein"_s);
  }
}

int schalter(const Verbindungszeichenfolge& folge) {
  const QString modus = folge.wert(u"Mode"_s).value_or(QString());
  const auto ist = [&modus](QStringView name) { return modus.compare(name, Qt::CaseInsensitive) == 0; };
  if (modus.isEmpty() || ist(u"ReadWrite")) return SQLITE_OPEN_READWRITE;
  if (ist(u"ReadOnly")) return SQLITE_OPEN_READONLY;
  if (ist(u"ReadWriteCreate")) return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  keine_Verbindung(u"unbekannter Mode (bekannt sind ReadWrite, ReadOnly und ReadWriteCreate)"_s);
}

/// The machine's own path, never one that SQLite would take for a URI or for a database in memory.
QByteArray dateipfad(const QString& quelle) {
  if (quelle.isEmpty()) keine_Verbindung(u"die Verbindungszeichenfolge nennt keine Datei als Data Source"_s);
  const bool tabellenpfad = quelle.contains(u'\\') || (quelle.size() > 1 && quelle.at(1) == u':');
  QByteArray pfad;
  try {
    pfad = tabellenpfad ? Pfadkarte::aktuell().maschinenpfad(quelle) : quelle.toUtf8();
  } catch (const Laufzeitfehler& fehler) {
    keine_Verbindung(u"die Datei"_s + Verbindungszeichenfolge::genannt(quelle) + u" ist nicht erreichbar: "_s +
        fehler.Beschreibung());
  }
  if (pfad.contains('\0')) keine_Verbindung(u"der Name der Datei enthält ein Nullzeichen"_s);
  return pfad.startsWith('/') ? pfad : "./" + pfad;
}

}  // namespace

SqliteTreiber::SqliteTreiber(std::chrono::milliseconds wartegrenze)
    : wartegrenze_(wartegrenze), sperre_(wartegrenze, aufgabe_) {}

void SqliteTreiber::oeffne(const QString& verbindungszeichenfolge) {
  if (datenbank_) throw adofehler(adErrObjectOpen);
  const Verbindungszeichenfolge folge(verbindungszeichenfolge);
  pruefe_Schluesselworte(folge);
  const int art = schalter(folge);
  const QString quelle = folge.wert(u"Data Source"_s).value_or(QString());
  const QByteArray pfad = dateipfad(quelle);
  try {
    oeffne_Datei(pfad, art);
  } catch (const Datenbankfehler& fehler) {
    schliesse();
    throw Datenbankfehler(fehler.Nummer(),
        fehler.Beschreibung() + u" (Datei"_s + Verbindungszeichenfolge::genannt(quelle) + u")"_s, fehler.Sqlstate(),
        fehler.NativeNummer());
  } catch (...) {
    schliesse();
    throw;
  }
}

void SqliteTreiber::oeffne_Datei(const QByteArray& pfad, int art) {
  // One thread at a time uses a connection, so SQLite's own lock around each call is left out.
  constexpr int Immer = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
  const int ergebnis = sqlite3_open_v2(pfad.constData(), &datenbank_, art | Immer, nullptr);
  if (!datenbank_) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  if (ergebnis != SQLITE_OK) {
    const bool fehlt = (ergebnis & 0xFF) == SQLITE_CANTOPEN && sqlite3_system_errno(datenbank_) == ENOENT;
    if (fehlt && (art & SQLITE_OPEN_CREATE) == 0) keine_Verbindung(u"die Datenbankdatei gibt es nicht"_s, ergebnis);
    wirf_Verbindung(ergebnis);
  }
  aufgabe_.betreue(datenbank_);
  sperre_.betreue(datenbank_);
  richte_ein();
  try {
    fuehre_aus(u"PRAGMA schema_version"_s);
    if (sqlite3_db_readonly(datenbank_, nullptr) == 0) fuehre_aus(u"PRAGMA journal_mode=WAL"_s);
    fuehre_aus(u"PRAGMA synchronous=FULL"_s);
  } catch (const Datenbankfehler& fehler) {
    wirf_Verbindung(fehler.NativeNummer());
  }
}

void SqliteTreiber::richte_ein() {
  const int geklappt[] = {sqlite3_extended_result_codes(datenbank_, 1),
      sqlite3_db_config(datenbank_, SQLITE_DBCONFIG_MAINDBNAME, "dbo"),
      sqlite3_db_config(datenbank_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr),
      sqlite3_db_config(datenbank_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr), richte_Servertext_ein(datenbank_),
      richte_Suche_ein(datenbank_)};
  for (const int ergebnis : geklappt)
    if (ergebnis != SQLITE_OK) wirf_Verbindung(ergebnis);
}

void SqliteTreiber::schliesse() noexcept {
  vorrat_.leere();
  sperre_.verlasse();
  aufgabe_.verlasse();
  sqlite3_close_v2(std::exchange(datenbank_, nullptr));
}

Ergebnis SqliteTreiber::fuehre_aus(const QString& text) {
  pruefe_Text(text);
  const SqliteAufgabe::Lauf lauf(aufgabe_);
  sperre_.beginne_Anweisung();
  const SqliteAnweisung anweisung = bereite_vor(text);
  pruefe_Marken(anweisung.get(), 0);
  return lies(anweisung.get());
}

Ergebnis SqliteTreiber::fuehre_aus(const QString& text, const std::vector<Wert>& werte) {
  if (werte.empty()) return fuehre_aus(text);
  pruefe_Text(text);
  pruefe_Werte(werte);
  const SqliteAufgabe::Lauf lauf(aufgabe_);
  sperre_.beginne_Anweisung();
  std::vector<QByteArray> texte;
  SqliteAnweisung anweisung = vorrat_.nimm(text);
  if (!anweisung) anweisung = bereite_vor(text);
  pruefe_Marken(anweisung.get(), werte.size());
  texte = binde(anweisung.get(), werte);
  Ergebnis ergebnis = lies(anweisung.get());
  // One that failed is not kept.
  vorrat_.lege_zurueck(text, std::move(anweisung));
  return ergebnis;
}

void SqliteTreiber::gib_auf() noexcept {
  aufgabe_.gib_auf();
}

void SqliteTreiber::pruefe_Text(const QString& text) const {
  if (!datenbank_) throw adofehler(adErrObjectClosed);
  // SQLite would take a zero character for the end of the text and run what stands before it.
  if (text.contains(QChar(u'\0'))) keine_Anweisung(u"der Text enthält ein Nullzeichen"_s);
}

/// Prepares the one statement of a text; whatever would not be that statement fails before anything ran.
SqliteAnweisung SqliteTreiber::bereite_vor(const QString& text) {
  const QByteArray utf8 = sqlite_Dialekt(text).toUtf8();
  sqlite3_stmt* vorbereitete = nullptr;
  const char* rest = nullptr;
  int ergebnis = SQLITE_OK;
  do {
    ergebnis = sqlite3_prepare_v2(datenbank_, utf8.constData(), -1, &vorbereitete, &rest);
  } while (ist_gesperrt(ergebnis) && sperre_.warte_nach(ergebnis));
  if (ergebnis != SQLITE_OK) wirf_Anweisung(ergebnis);
  SqliteAnweisung anweisung(vorbereitete);
  if (!anweisung) keine_Anweisung(u"der Text ist leer"_s);
  if (*rest != '\0' && !ist_leere_Anweisung(QString::fromUtf8(rest)))
    keine_Anweisung(u"hinter der ersten Anweisung steht noch weiterer Text"_s);
  return anweisung;
}

/// Runs a prepared statement to its end.
Ergebnis SqliteTreiber::lies(sqlite3_stmt* anweisung) {
  int schritt = fuehre_Schritt(anweisung);
  // The columns are those of the first step, before which SQLite may have prepared the statement anew.
  Ergebnis ergebnis = lies_Zeilen(anweisung, schritt);
  if (schritt != SQLITE_DONE) wirf_Anweisung(schritt);
  return ergebnis;
}

/// The first step. As long as it changed and read nothing it may be tried again after a lock.
int SqliteTreiber::fuehre_Schritt(sqlite3_stmt* anweisung) {
  int ergebnis = sqlite3_step(anweisung);
  while (ist_gesperrt(ergebnis) && sperre_.warte_nach(ergebnis)) {
    sqlite3_reset(anweisung);
    ergebnis = sqlite3_step(anweisung);
  }
  return ergebnis;
}

void SqliteTreiber::wirf_Anweisung(int ergebnis) const {
  if (aufgabe_.gewuenscht() && ((ergebnis & 0xFF) == SQLITE_INTERRUPT || ist_gesperrt(ergebnis)))
    throw aufgegebene_Anweisung(ergebnis);
  QString worte = QString::fromUtf8(sqlite3_errmsg(datenbank_));
  if (sperre_.Grenze_erreicht())
    worte =
        u"die Datenbank ist gesperrt, eine offene Transaktion desselben Programmfadens wurde in %1 Sekunden nicht "
        "beendet ("_s.arg(static_cast<double>(wartegrenze_.count()) / 1000.0) +
        worte + u')';
  throw Datenbankfehler(
      fehlernummer::Anweisung, u"Die Anweisung ist fehlgeschlagen: "_s + worte, sqlstate(ergebnis), ergebnis);
}

void SqliteTreiber::wirf_Verbindung(int ergebnis) const {
  QString worte = QString::fromUtf8(sqlite3_errmsg(datenbank_));
  if ((ergebnis & 0xFF) == SQLITE_NOTADB) worte = u"die Datei ist keine SQLite-Datenbank ("_s + worte + u')';
  keine_Verbindung(worte, ergebnis);
}

}  // namespace adodb
