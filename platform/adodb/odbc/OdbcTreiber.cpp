#include "platform/adodb/odbc/OdbcTreiber.h"

#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Parameter.h"
#include "platform/adodb/odbc/OdbcParameter.h"
#include "platform/adodb/odbc/OdbcVerbindung.h"
#include "platform/adodb/odbc/OdbcWerte.h"
#include "platform/basic/Fehlerbehandlung.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {

/// A statement's handle; giving it back closes what of its result is still open.
class OdbcTreiber::Anweisung {
 public:
  Anweisung(OdbcSchicht& odbc, SQLHDBC verbindung)
      : odbc_(odbc), ergebnis_(odbc.AllocHandle(SQL_HANDLE_STMT, verbindung, &griff_)) {}
  ~Anweisung() {
    if (griff_ != SQL_NULL_HSTMT) odbc_.FreeHandle(SQL_HANDLE_STMT, griff_);
  }
  Q_DISABLE_COPY_MOVE(Anweisung)

  SQLHSTMT griff() const noexcept { return griff_; }
  bool gelungen() const noexcept { return SQL_SUCCEEDED(ergebnis_); }

 private:
  OdbcSchicht& odbc_;
  SQLHSTMT griff_ = SQL_NULL_HSTMT;
  SQLRETURN ergebnis_;
};

/// A statement that runs, from its first call to its last row: as long as it lives a wish to give up counts.
class OdbcTreiber::Lauf {
 public:
  explicit Lauf(OdbcTreiber& treiber) : treiber_(treiber) { setze(true); }
  ~Lauf() {
    setze(false);
    if (treiber_.bote_.joinable()) treiber_.bote_.join();
  }
  Q_DISABLE_COPY_MOVE(Lauf)

 private:
  void setze(bool laeuft) {
    const std::lock_guard sperre(treiber_.schutz_);
    treiber_.laeuft_ = laeuft;
    treiber_.aufgegeben_ = false;
    treiber_.wartende_ = SQL_NULL_HSTMT;
    treiber_.beendet_.notify_all();
  }

  OdbcTreiber& treiber_;
};

namespace {

/// The age from which a call counts as waiting for the server.
constexpr std::chrono::milliseconds Anlauf(100);
/// How long a call that was asked to stop is left alone.
constexpr std::chrono::seconds Nachfrage(1);
/// After which time a thread that did not sleep is looked at again.
constexpr std::chrono::milliseconds Blick(5);

/// A thread of this process sleeps, and so does not stand between two packets. Where the system keeps that to itself,
/// it counts as asleep.
bool schlaeft(pid_t faden) {
  QFile stand(u"/proc/self/task/%1/stat"_s.arg(faden));
  if (!stand.open(QIODevice::ReadOnly)) return true;
  // The name, in brackets, may hold anything.
  const QByteArray zeile = stand.readAll();
  return zeile.mid(zeile.lastIndexOf(')')).startsWith(") S");
}

void pruefe_Text(const QString& text) {
  if (text.trimmed().isEmpty()) keine_Anweisung(u"der Text ist leer"_s);
  // Some drivers end a text at its first zero character and would run what stands before it.
  if (text.contains(QChar(u'\0'))) keine_Anweisung(u"der Text enthält ein Nullzeichen"_s);
  if (text.size() > std::numeric_limits<SQLINTEGER>::max()) keine_Anweisung(u"der Text ist zu lang"_s);
}

}  // namespace

void OdbcTreiber::oeffne(const QString& verbindungszeichenfolge) {
  if (offen_) throw adofehler(adErrObjectOpen);
  const Verbindungszeichenfolge folge(verbindungszeichenfolge);
  try {
    lege_Griffe_an();
    const OdbcAufruf aufruf = uebersetze_Odbc(folge, lies_Odbc_Umgebung(odbc_, umgebung_));
    const bool verschluesselt = aufruf.schutz.umfang == Leitungsschutz::Umfang::Ganz;
    const OdbcVersuch versuch{aufruf.ziel, aufruf.kennwort, aufruf.anmeldezeit, verschluesselt};
    // A driver that has no login time-out connects without one.
    odbc_.SetConnectAttr(verbindung_, SQL_ATTR_LOGIN_TIMEOUT, aufruf.anmeldezeit);
    if (aufruf.paketgroesse &&
        !SQL_SUCCEEDED(odbc_.SetConnectAttr(verbindung_, SQL_ATTR_PACKET_SIZE, *aufruf.paketgroesse)))
      odbc_unerfuellbar(u"der ODBC-Treiber nimmt die Paketgröße (Packet Size) nicht an"_s);
    art_ = aufruf.art;
    verbinde(aufruf.zeichenfolge, versuch);
    if (verschluesselt && art_ == OdbcArt::FreeTds) pruefe_Draht(versuch);
    schutz_der_Leitung_ = aufruf.schutz;
  } catch (...) {
    schliesse();
    throw;
  }
}

void OdbcTreiber::lege_Griffe_an() {
  const bool gelungen = SQL_SUCCEEDED(odbc_.AllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &umgebung_)) &&
      SQL_SUCCEEDED(odbc_.SetEnvAttr(umgebung_, SQL_ATTR_ODBC_VERSION, SQL_OV_ODBC3)) &&
      SQL_SUCCEEDED(odbc_.AllocHandle(SQL_HANDLE_DBC, umgebung_, &verbindung_));
  if (!gelungen) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
}

/// A driver that ignores a part of the connect string only warns. Nobody would see that, so it is a failure here.
void OdbcTreiber::verbinde(const QString& zeichenfolge, const OdbcVersuch& versuch) {
  const SQLRETURN ergebnis = odbc_.DriverConnect(verbindung_, zeichenfolge);
  offen_ = SQL_SUCCEEDED(ergebnis);
  if (ergebnis == SQL_SUCCESS) return;
  const QList<OdbcMeldung> meldungen = odbc_Meldungen(odbc_, SQL_HANDLE_DBC, verbindung_);
  if (!offen_) throw odbc_Verbindungsfehler(meldungen, versuch);
  for (const OdbcMeldung& meldung : meldungen)
    if (meldung.sqlstate == "01S00"_L1 || meldung.sqlstate == "01S02"_L1)
      throw odbc_Verbindungsfehler({meldung}, versuch);
}

/// FreeTDS asks for encryption in a word that crosses the wire in clear. Whoever changes the server's answer to it has
/// FreeTDS encrypt the login and nothing behind it, and nothing tells: so a text that says nothing goes first, and the
/// system's count shows whether it grew on its way as a TLS record does.
void OdbcTreiber::pruefe_Draht(const OdbcVersuch& versuch) {
  static const QString Probe = u"SELECT 1"_s;
  // A TLS record's head and its checksum; every record has both.
  constexpr std::uint64_t Aufschlag = 5 + 16;
  // The packet's head, the headers of a batch, and two bytes for each letter.
  const auto klar = static_cast<std::uint64_t>(8 + 22 + 2 * Probe.size());
  const auto vorher = odbc_.bestaetigte_Bytes(verbindung_);
  fuehre_aus(Probe);
  const auto nachher = odbc_.bestaetigte_Bytes(verbindung_);
  if (!vorher || !nachher || *nachher == *vorher) return;
  if (*nachher - *vorher < klar + Aufschlag)
    throw odbc_Verbindungsfehler(
        {{u"08001"_s, 0, u"die Verbindung ist nicht verschlüsselt, obwohl es verlangt ist"_s}}, versuch);
}

void OdbcTreiber::schliesse() noexcept {
  if (std::exchange(offen_, false)) odbc_.Disconnect(verbindung_);
  if (verbindung_ != SQL_NULL_HDBC) odbc_.FreeHandle(SQL_HANDLE_DBC, std::exchange(verbindung_, nullptr));
  if (umgebung_ != SQL_NULL_HENV) odbc_.FreeHandle(SQL_HANDLE_ENV, std::exchange(umgebung_, nullptr));
}

Ergebnis OdbcTreiber::fuehre_aus(const QString& text, const std::vector<Wert>& werte) {
  if (!offen_) throw adofehler(adErrObjectClosed);
  pruefe_Text(text);
  pruefe_Werte(werte);
  // A driver may pass over values that are too many.
  if (!werte.empty()) pruefe_Anzahl(zaehle_Marken(text), werte.size());
  const bool ganze_Paare = art_ != OdbcArt::Hersteller;
  OdbcParameter parameter(werte, art_, ganze_Paare);
  const Anweisung anweisung(odbc_, verbindung_);
  if (!anweisung.gelungen()) throw odbc_Anweisungsfehler(odbc_Meldungen(odbc_, SQL_HANDLE_DBC, verbindung_), ist_tot());
  const Lauf lauf(*this);
  // Forward-only and read-only cursors are ODBC's defaults, said here because anything else makes FreeTDS wrap the text
  // into a call of its own. A driver that has no scanning of escapes to turn off refuses the attribute, which is as
  // good. Markers are found without it.
  odbc_.SetStmtAttr(anweisung.griff(), SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_FORWARD_ONLY);
  odbc_.SetStmtAttr(anweisung.griff(), SQL_ATTR_CONCURRENCY, SQL_CONCUR_READ_ONLY);
  odbc_.SetStmtAttr(anweisung.griff(), SQL_ATTR_NOSCAN, SQL_NOSCAN_ON);
  if (!parameter.binde(odbc_, anweisung.griff())) wirf_Anweisung(anweisung.griff());
  const QString gesendeter = ganze_Paare ? ohne_halbe_Paare(text) : text;
  const SQLRETURN ergebnis = rufe(anweisung.griff(), [&] { return odbc_.ExecDirect(anweisung.griff(), gesendeter); });
  return lies_Ergebnisse(anweisung.griff(), ergebnis);
}

/// Makes a call that may wait for the server, unless the statement has been given up.
SQLRETURN OdbcTreiber::rufe(SQLHSTMT anweisung, const OdbcWerte::Ruf& ruf) {
  {
    const std::lock_guard sperre(schutz_);
    pruefe_Aufgabe();
    wartende_ = anweisung;
    begonnen_ = std::chrono::steady_clock::now();
    faden_ = ::gettid();
  }
  const SQLRETURN ergebnis = ruf();
  const std::lock_guard sperre(schutz_);
  wartende_ = SQL_NULL_HSTMT;
  beendet_.notify_all();
  return ergebnis;
}

void OdbcTreiber::gib_auf() noexcept {
  const std::lock_guard sperre(schutz_);
  if (!laeuft_) return;
  aufgegeben_ = true;
  if (wartende_ == SQL_NULL_HSTMT || bote_.joinable()) return;
  const bool geschickt =
      fehler::still_enden([&] { return (bote_ = std::thread([this] { sende_Aufgabe(); })).joinable(); });
  if (!geschickt) odbc_.Cancel(wartende_);
}

/// FreeTDS loses the wake-up of a thread that comes back for its next packet while another one sends the wish to stop:
/// it would wait for ever, with the rows at its door. So the wish goes only into a call that is some age and sleeps,
/// which is waiting for the server; rows that stream end their call before, and the next call is not made. Nor does the
/// wish go out twice in short order: the driver manager may be reading the messages that the first one left, and the
/// second one takes them away. One that met a statement not yet sent is passed over, though, so it is said again in the
/// end.
void OdbcTreiber::sende_Aufgabe() {
  std::unique_lock sperre(schutz_);
  const auto vorbei = [this] { return wartende_ == SQL_NULL_HSTMT; };
  auto wann = begonnen_ + Anlauf;
  while (!beendet_.wait_until(sperre, wann, vorbei)) {
    const bool wartet = schlaeft(faden_);
    if (wartet) odbc_.Cancel(wartende_);
    wann = std::chrono::steady_clock::now() + (wartet ? std::chrono::milliseconds(Nachfrage) : Blick);
  }
}

/// SQL_NO_DATA from the execution means that the statement met no row; further results may follow.
Ergebnis OdbcTreiber::lies_Ergebnisse(SQLHSTMT anweisung, SQLRETURN ergebnis) {
  std::optional<Ergebnis> gelesenes;
  std::optional<OdbcWerte> leser;
  const auto naechstes = [&] { return rufe(anweisung, [&] { return odbc_.MoreResults(anweisung); }); };
  if (ergebnis == SQL_NO_DATA) ergebnis = naechstes();
  for (; ergebnis != SQL_NO_DATA; ergebnis = naechstes()) {
    if (!SQL_SUCCEEDED(ergebnis)) wirf_Anweisung(anweisung);
    if (gelesenes) continue;
    SQLSMALLINT spalten = 0;
    if (!SQL_SUCCEEDED(odbc_.NumResultCols(anweisung, &spalten))) wirf_Anweisung(anweisung);
    if (spalten <= 0) continue;
    leser.emplace(
        odbc_, anweisung, [this, anweisung] { wirf_Anweisung(anweisung); },
        [this, anweisung](const OdbcWerte::Ruf& ruf) { return rufe(anweisung, ruf); });
    gelesenes = leser->lies(spalten);
  }
  pruefe_Leitung();
  // A result that was cut off ends as a whole one does.
  pruefe_Aufgabe();
  return gelesenes ? std::move(*gelesenes) : Ergebnis();
}

void OdbcTreiber::pruefe_Aufgabe() const {
  if (aufgegeben_) throw aufgegebene_Anweisung();
}

/// A driver may take a link that is cut between two rows for the end of the result.
void OdbcTreiber::pruefe_Leitung() {
  if (ist_tot()) throw odbc_Anweisungsfehler({}, true);
}

/// Asks the driver, not the server.
bool OdbcTreiber::ist_tot() {
  SQLUINTEGER tot = SQL_CD_FALSE;
  return SQL_SUCCEEDED(odbc_.GetConnectAttr(verbindung_, SQL_ATTR_CONNECTION_DEAD, &tot)) && tot == SQL_CD_TRUE;
}

void OdbcTreiber::wirf_Anweisung(SQLHSTMT anweisung) {
  const QList<OdbcMeldung> meldungen = odbc_Meldungen(odbc_, SQL_HANDLE_STMT, anweisung);
  const bool abgerissen = std::any_of(
      meldungen.begin(), meldungen.end(), [](const OdbcMeldung& m) { return m.sqlstate.startsWith("08"_L1); });
  const bool tot = abgerissen || ist_tot();
  if (!tot) pruefe_Aufgabe();
  throw odbc_Anweisungsfehler(meldungen, tot);
}

}  // namespace adodb
