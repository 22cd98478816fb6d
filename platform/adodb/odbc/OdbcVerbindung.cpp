#include "platform/adodb/odbc/OdbcVerbindung.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/adodb/Verbindungsworte.h"
#include "platform/adodb/odbc/OdbcFehler.h"
#include "platform/adodb/odbc/OdbcSchutz.h"
#include "platform/adodb/odbc/OdbcServer.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

bool ist_ja(const QString& wert) {
  return steht_in(Ja, wert) || wert.compare("sspi"_L1, Qt::CaseInsensitive) == 0;
}

/// One translation from its beginning to its end.
class Uebersetzer {
 public:
  Uebersetzer(const Verbindungszeichenfolge& folge, const OdbcUmgebung& umgebung) : umgebung_(umgebung) {
    for (qsizetype i = 0; i < folge.paare().size(); ++i) nimm(folge.paare().at(i), i);
  }

  OdbcAufruf uebersetze() {
    waehle_Treiber();
    schreibe_Server();
    schreibe_Anmeldung();
    schreibe_Verschluesselung();
    schreibe_uebriges();
    aufruf_.anmeldezeit = zahl(Wortsinn::Anmeldezeit, 0, 86400).value_or(aufruf_.anmeldezeit);
    aufruf_.paketgroesse = zahl(Wortsinn::Paketgroesse, 512, 32767);
    // The text's length goes to the driver manager in 16 bits.
    if (aufruf_.zeichenfolge.size() > 4096) odbc_unerfuellbar(u"die Verbindungszeichenfolge ist zu lang"_s);
    return aufruf_;
  }

 private:
  void nimm(const Verbindungszeichenfolge::Paar& paar, qsizetype stelle) {
    const Verbindungswort* wort = verbindungswort(paar.wort);
    if (!wort) unbekannt(stelle);
    if (paar.wert.contains(QChar(u'\0'))) odbc_unerfuellbar(u"in der Verbindungszeichenfolge steht ein Nullzeichen"_s);
    if (!paar.wert.isEmpty() && !wort->nur.isEmpty() && !steht_in(wort->nur, paar.wert))
      unerlaubt(paar.wort, wort->nur);
    werte_[wort->sinn] = paar.wert;
    worte_[wort->sinn] = paar.wort;
  }

  /// The keyword is not repeated: behind a password that holds a semicolon it would be the password's rest.
  [[noreturn]] void unbekannt(qsizetype stelle) const {
    odbc_unerfuellbar(
        u"das %1. Schlüsselwort der Verbindungszeichenfolge ist unbekannt (ein Wert mit einem Semikolon "
        "gehört in Anführungszeichen)"_s.arg(stelle + 1));
  }

  [[noreturn]] static void unerlaubt(const QString& wort, QStringView nur) {
    const QString werte = nur == u"|" ? u"keiner"_s : nur.toString().replace(u"|"_s, u", "_s);
    odbc_unerfuellbar(u"der Wert von „%1“ ist nicht zu erfüllen (möglich: %2)"_s.arg(wort, werte));
  }

  QString wert(Wortsinn sinn) const {
    const auto gefunden = werte_.find(sinn);
    return gefunden == werte_.end() ? QString() : gefunden->second;
  }
  bool hat(Wortsinn sinn) const { return !wert(sinn).isEmpty(); }
  bool ist_Freetds() const { return aufruf_.art == OdbcArt::FreeTds; }

  [[noreturn]] void kann_Treiber_nicht(Wortsinn sinn) const {
    odbc_unerfuellbar(u"der ODBC-Treiber"_s + Verbindungszeichenfolge::genannt(treiber_.name) +
        u" kann „%1“ nicht"_s.arg(worte_.at(sinn)));
  }

  /// `name=value;` as the driver reads it.
  void schreibe(QLatin1StringView name, const QString& wert) {
    aufruf_.zeichenfolge += name + u'=' + (ist_Freetds() ? fuer_Freetds(wert) : fuer_Hersteller(wert)) + u';';
  }
  void schreibe_wenn(Wortsinn sinn, QLatin1StringView name) {
    if (hat(sinn)) schreibe(name, wert(sinn));
  }

  /// ODBC's own rule: braces around what holds one of its special characters, a closing brace within them doubled.
  static QString fuer_Hersteller(const QString& wert) {
    constexpr QStringView Besondere = u"[]{}();?*=!@";
    const bool geklammert =
        wert != wert.trimmed() || std::any_of(wert.begin(), wert.end(), [&](QChar z) { return Besondere.contains(z); });
    if (!geklammert) return wert;
    QString innen = wert;
    return u'{' + innen.replace(u"}"_s, u"}}"_s) + u'}';
  }

  /// FreeTDS takes a value as it stands up to the semicolon, and one in braces as it stands up to the first brace with
  /// a semicolon behind it: it knows no doubling.
  static QString fuer_Freetds(const QString& wert) {
    if (!wert.contains(u';') && !wert.startsWith(u'{')) return wert;
    // The driver manager ends the value at its first brace; what it takes for pairs behind that must name nothing.
    const bool mehrdeutig = wert.contains(u'}') && wert.contains(u'=');
    if (mehrdeutig || wert.contains(u"};"_s))
      odbc_unerfuellbar(u"FreeTDS kann einen Wert nicht annehmen, in dem neben „;“ und „}“ auch „=“ oder „};“ steht"_s);
    return u'{' + wert + u'}';
  }

  void waehle_Treiber();
  void schreibe_Server();
  void schreibe_Anmeldung();
  void schreibe_Verschluesselung();
  Verschluesselung verschluesselung() const;
  Schutzwunsch schutzwunsch(Verschluesselung stufe) const;
  void verschluessele_Freetds(Verschluesselung stufe);
  void verschluessele_Hersteller(Verschluesselung stufe);
  void schreibe_uebriges();
  std::optional<std::uint32_t> zahl(Wortsinn sinn, std::uint32_t von, std::uint32_t bis) const;
  bool ist_MSDASQL() const { return wert(Wortsinn::Anbieter).startsWith("MSDASQL"_L1, Qt::CaseInsensitive); }
  /// Server and login may stand in unixODBC's or FreeTDS's own files.
  bool woanders_beschrieben() const { return hat(Wortsinn::Datenquelle) || hat(Wortsinn::Abschnitt); }

  const OdbcUmgebung& umgebung_;
  std::map<Wortsinn, QString> werte_;
  std::map<Wortsinn, QString> worte_;
  OdbcInstallierter treiber_;
  OdbcAufruf aufruf_;
};

void Uebersetzer::waehle_Treiber() {
  // With the provider for ODBC the OLE DB keyword names a data source.
  if (ist_MSDASQL() && schlichtes_Wort(worte_[Wortsinn::Server]) == "datasource"_L1)
    werte_[Wortsinn::Datenquelle] = std::exchange(werte_[Wortsinn::Server], QString());
  if (hat(Wortsinn::Treiber) && hat(Wortsinn::Datenquelle))
    odbc_unerfuellbar(
        u"die Verbindungszeichenfolge nennt einen Treiber und eine Datenquelle; nur eines von beiden geht"_s);
  if (hat(Wortsinn::Datenquelle)) {
    treiber_ = treiber_der_Datenquelle(umgebung_, wert(Wortsinn::Datenquelle));
  } else if (hat(Wortsinn::Treiber)) {
    treiber_ = finde_Odbc_Treiber(umgebung_, wert(Wortsinn::Treiber));
  } else {
    treiber_ = waehle_Odbc_Treiber(umgebung_);
  }
  aufruf_.art = treiber_.art;
  if (hat(Wortsinn::Datenquelle))
    schreibe("DSN"_L1, wert(Wortsinn::Datenquelle));
  else
    aufruf_.zeichenfolge = u"DRIVER={"_s + treiber_.name + u"};"_s;
}

void Uebersetzer::schreibe_Server() {
  const int genannte = hat(Wortsinn::Server) + hat(Wortsinn::Abschnitt) + hat(Wortsinn::Datenquelle);
  if (genannte == 0) odbc_unerfuellbar(u"die Verbindungszeichenfolge nennt keinen Server"_s);
  if (genannte > 1)
    odbc_unerfuellbar(
        u"die Verbindungszeichenfolge nennt den Server mehrfach (als Server, Servername oder Datenquelle)"_s);
  if (hat(Wortsinn::Abschnitt) && !ist_Freetds()) kann_Treiber_nicht(Wortsinn::Abschnitt);
  schreibe_wenn(Wortsinn::Abschnitt, "SERVERNAME"_L1);
  aufruf_.ziel = wert(Wortsinn::Server) + wert(Wortsinn::Abschnitt) + wert(Wortsinn::Datenquelle);
  if (hat(Wortsinn::Port) && !hat(Wortsinn::Server)) odbc_unerfuellbar(u"zu „Port“ fehlt „Server“"_s);
  if (!hat(Wortsinn::Server)) return;
  Serverangabe angabe = lies_Serverangabe(wert(Wortsinn::Server));
  if (hat(Wortsinn::Port)) {
    const int port = lies_Port(wert(Wortsinn::Port));
    if (angabe.port != 0 && angabe.port != port) odbc_unerfuellbar(u"die Verbindungszeichenfolge nennt zwei Ports"_s);
    angabe.port = port;
    angabe.instanz.clear();
  }
  const QString name = angabe.instanz.isEmpty() ? angabe.rechner : angabe.rechner + u'\\' + angabe.instanz;
  const QString port = QString::number(angabe.port);
  schreibe("SERVER"_L1, angabe.port == 0 || ist_Freetds() ? name : name + u',' + port);
  if (angabe.port != 0 && ist_Freetds()) schreibe("PORT"_L1, port);
}

void Uebersetzer::schreibe_Anmeldung() {
  schreibe_wenn(Wortsinn::Datenbank, "DATABASE"_L1);
  const bool vertraut = ist_ja(wert(Wortsinn::Vertraut));
  const bool benannt = hat(Wortsinn::Benutzer);
  if (vertraut && benannt)
    odbc_unerfuellbar(
        u"die Verbindungszeichenfolge nennt einen Benutzer und verlangt zugleich die Anmeldung des Systems "
        "(Integrated Security oder Trusted_Connection)"_s);
  if (!vertraut && !benannt && !woanders_beschrieben())
    odbc_unerfuellbar(u"die Verbindungszeichenfolge nennt keine Anmeldung (User ID oder Integrated Security)"_s);
  aufruf_.kennwort = wert(Wortsinn::Kennwort);
  if (vertraut) {
    schreibe("Trusted_Connection"_L1, u"yes"_s);
    return;
  }
  schreibe_wenn(Wortsinn::Benutzer, "UID"_L1);
  if (benannt || hat(Wortsinn::Kennwort)) schreibe("PWD"_L1, aufruf_.kennwort);
}

Verschluesselung Uebersetzer::verschluesselung() const {
  const QString eigene = wert(Wortsinn::FreeTdsVerschluesselung).toLower();
  const QString allgemeine = wert(Wortsinn::Verschluesselung);
  if (!eigene.isEmpty() && !allgemeine.isEmpty())
    odbc_unerfuellbar(u"„Encrypt“ und „Encryption“ gehen nicht zusammen"_s);
  if (eigene == "off"_L1) return Verschluesselung::Aus;
  if (eigene == "request"_L1) return Verschluesselung::NurAnmeldung;
  if (eigene == "require"_L1) return Verschluesselung::Ganz;
  if (allgemeine.isEmpty()) return Verschluesselung::KeineAngabe;
  if (allgemeine.compare("strict"_L1, Qt::CaseInsensitive) == 0) return Verschluesselung::Streng;
  return steht_in(u"yes|true|1|mandatory", allgemeine) ? Verschluesselung::Ganz : Verschluesselung::NurAnmeldung;
}

Schutzwunsch Uebersetzer::schutzwunsch(Verschluesselung stufe) const {
  Schutzwunsch wunsch{stufe, std::nullopt, false, wert(Wortsinn::Abschnitt), wert(Wortsinn::Datenquelle)};
  if (hat(Wortsinn::Vertrauen)) wunsch.traut = ist_ja(wert(Wortsinn::Vertrauen));
  // FreeTDS's own keyword asks for no check by itself.
  const bool fragt = hat(Wortsinn::Verschluesselung) || wunsch.traut.has_value();
  wunsch.verlangt_Pruefung = stufe == Verschluesselung::Ganz && fragt && !wunsch.traut.value_or(false);
  return wunsch;
}

void Uebersetzer::schreibe_Verschluesselung() {
  const Verschluesselung stufe = verschluesselung();
  if (ist_Freetds())
    verschluessele_Freetds(stufe);
  else
    verschluessele_Hersteller(stufe);
}

void Uebersetzer::verschluessele_Freetds(Verschluesselung stufe) {
  if (stufe == Verschluesselung::Streng) kann_Treiber_nicht(Wortsinn::Verschluesselung);
  for (const Wortsinn sinn : {Wortsinn::Zertifikatsname, Wortsinn::Zertifikat})
    if (hat(sinn)) kann_Treiber_nicht(sinn);
  aufruf_.schutz = schutz_bei_Freetds(schutzwunsch(stufe), umgebung_, wert(Wortsinn::Protokoll));
  if (stufe == Verschluesselung::Aus) schreibe("Encryption"_L1, u"off"_s);
  if (stufe == Verschluesselung::NurAnmeldung) schreibe("Encryption"_L1, u"request"_s);
  if (stufe == Verschluesselung::Ganz) schreibe("Encryption"_L1, u"require"_s);
}

void Uebersetzer::verschluessele_Hersteller(Verschluesselung stufe) {
  const QString eigene = wert(Wortsinn::FreeTdsVerschluesselung);
  if (!eigene.isEmpty() && stufe != Verschluesselung::Ganz) kann_Treiber_nicht(Wortsinn::FreeTdsVerschluesselung);
  aufruf_.schutz = schutz_beim_Hersteller(schutzwunsch(stufe), treiber_);
  if (stufe == Verschluesselung::NurAnmeldung) schreibe("Encrypt"_L1, u"no"_s);
  if (stufe == Verschluesselung::Ganz) schreibe("Encrypt"_L1, u"yes"_s);
  if (stufe == Verschluesselung::Streng) schreibe("Encrypt"_L1, u"strict"_s);
  if (hat(Wortsinn::Vertrauen))
    schreibe("TrustServerCertificate"_L1, ist_ja(wert(Wortsinn::Vertrauen)) ? u"yes"_s : u"no"_s);
  schreibe_wenn(Wortsinn::Zertifikatsname, "HostnameInCertificate"_L1);
  schreibe_wenn(Wortsinn::Zertifikat, "ServerCertificate"_L1);
}

void Uebersetzer::schreibe_uebriges() {
  if (hat(Wortsinn::Protokolldatei))
    odbc_unerfuellbar(
        u"eine Mitschrift des Treibers (DumpFile, DebugFlags) ist nicht erlaubt, sie enthielte Anmeldung und Daten"_s);
  schreibe_wenn(Wortsinn::Programm, "APP"_L1);
  schreibe_wenn(Wortsinn::Arbeitsplatz, "WSID"_L1);
  schreibe_wenn(Wortsinn::Sprache, "Language"_L1);
  schreibe_wenn(Wortsinn::Absicht, "ApplicationIntent"_L1);
  schreibe_wenn(Wortsinn::Dienstname, "ServerSPN"_L1);
  const bool netze = ist_ja(wert(Wortsinn::Netze));
  if (netze && ist_Freetds()) kann_Treiber_nicht(Wortsinn::Netze);
  if (netze) schreibe("MultiSubnetFailover"_L1, u"yes"_s);
  if (!ist_Freetds()) {
    for (const Wortsinn sinn : {Wortsinn::Protokoll, Wortsinn::Bereich, Wortsinn::Ntlm2})
      if (hat(sinn)) kann_Treiber_nicht(sinn);
    return;
  }
  schreibe_wenn(Wortsinn::Bereich, "REALM"_L1);
  if (hat(Wortsinn::Ntlm2)) schreibe("UseNTLMv2"_L1, ist_ja(wert(Wortsinn::Ntlm2)) ? u"yes"_s : u"no"_s);
  // Left to itself FreeTDS tries one version after the other, each with a login of its own; the older ones send it
  // unencrypted whatever is demanded, so nothing that may stand in a file counts then.
  if (hat(Wortsinn::Protokoll))
    schreibe("TDS_Version"_L1, wert(Wortsinn::Protokoll).toLower());
  else if (!woanders_beschrieben() || aufruf_.schutz.umfang == Leitungsschutz::Umfang::Ganz)
    schreibe("TDS_Version"_L1, u"7.4"_s);
}

std::optional<std::uint32_t> Uebersetzer::zahl(Wortsinn sinn, std::uint32_t von, std::uint32_t bis) const {
  if (!hat(sinn)) return std::nullopt;
  bool ist_Zahl = false;
  const std::uint32_t zahl = wert(sinn).toUInt(&ist_Zahl);
  if (!ist_Zahl || zahl < von || zahl > bis)
    odbc_unerfuellbar(u"der Wert von „%1“ ist keine Zahl von %2 bis %3"_s.arg(worte_.at(sinn)).arg(von).arg(bis));
  return zahl;
}

}  // namespace

bool ist_Odbc_Form(const Verbindungszeichenfolge& folge) {
  const auto& paare = folge.paare();
  return std::any_of(paare.begin(), paare.end(), [](const Verbindungszeichenfolge::Paar& paar) {
    return steht_in(u"driver|dsn|server|servername|initialcatalog|database", schlichtes_Wort(paar.wort));
  });
}

OdbcAufruf uebersetze_Odbc(const Verbindungszeichenfolge& folge, const OdbcUmgebung& umgebung) {
  return Uebersetzer(folge, umgebung).uebersetze();
}

}  // namespace adodb
