#include "platform/adodb/odbc/OdbcSchutz.h"

#include "platform/adodb/Verbindungsworte.h"
#include "platform/adodb/odbc/FreetdsDatei.h"
#include "platform/adodb/odbc/OdbcFehler.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

using Umfang = Leitungsschutz::Umfang;
using Pruefung = Leitungsschutz::Pruefung;

/// The forms of the protocol that begin with a word about encryption. In the older ones FreeTDS passes over what is
/// demanded and sends the login as it is.
constexpr QStringView MitVoranmeldung = u"7.1|7.2|7.3|7.4";

[[noreturn]] void ungeprueft(const QString& grund) {
  odbc_unerfuellbar(u"FreeTDS prüft das Zertifikat des Servers "_s + grund +
      u"; ohne diese Prüfung gehört TrustServerCertificate=yes in die Verbindungszeichenfolge"_s);
}

void pruefe_Pruefung(const QString& name, const FreetdsAbschnitt& abschnitt) {
  const QString genannter = Verbindungszeichenfolge::genannt(name);
  if (!abschnitt.gefunden)
    ungeprueft(u"nicht: in seiner freetds.conf gibt es den Abschnitt"_s + genannter + u" nicht"_s);
  if (abschnitt.stellen.isEmpty())
    ungeprueft(u"nicht: im Abschnitt"_s + genannter + u" seiner freetds.conf fehlt „ca file“"_s);
  if (!abschnitt.prueft_Namen)
    ungeprueft(u"nicht ganz: der Abschnitt"_s + genannter +
        u" seiner freetds.conf lässt jeden Namen gelten („check certificate hostname“)"_s);
}

void pruefe_Version(const OdbcUmgebung& umgebung, const QString& version) {
  if (!version.isEmpty() && !steht_in(MitVoranmeldung, version))
    odbc_unerfuellbar(
        u"mit „TDS_Version=auto“ versuchte FreeTDS es auch ohne die verlangte Verschlüsselung (möglich: 7.1 bis 7.4)"_s);
  if (!umgebung.tdsver.isEmpty() && !steht_in(MitVoranmeldung, umgebung.tdsver))
    odbc_unerfuellbar(
        u"die Umgebungsvariable TDSVER stellt FreeTDS auf ein Protokoll ohne die verlangte Verschlüsselung"_s);
}

/// The section of freetds.conf that a wish leads to; empty where it leads to none.
QString abschnitt_zu(const Schutzwunsch& wunsch, const OdbcUmgebung& umgebung) {
  if (wunsch.datenquelle.isEmpty()) return wunsch.abschnitt;
  const OdbcDatenquelle* quelle = finde_Datenquelle(umgebung, wunsch.datenquelle);
  return quelle ? quelle->abschnitt : QString();
}

Umfang umfang_aus(const QString& wort) {
  if (wort.compare("require"_L1, Qt::CaseInsensitive) == 0) return Umfang::Ganz;
  return wort.compare("off"_L1, Qt::CaseInsensitive) == 0 ? Umfang::Keiner : Umfang::Offen;
}

/// What the files say where the connect string says nothing.
Umfang umfang_der_Dateien(const Schutzwunsch& wunsch, const OdbcUmgebung& umgebung, const FreetdsAbschnitt& abschnitt) {
  const OdbcDatenquelle* quelle =
      wunsch.datenquelle.isEmpty() ? nullptr : finde_Datenquelle(umgebung, wunsch.datenquelle);
  return umfang_aus(
      quelle && !quelle->verschluesselung.isEmpty() ? quelle->verschluesselung : abschnitt.verschluesselung);
}

Pruefung pruefung_nach(const FreetdsAbschnitt& abschnitt) {
  if (abschnitt.stellen.isEmpty()) return Pruefung::Keine;
  return abschnitt.prueft_Namen ? Pruefung::Ganz : Pruefung::Ohne_Namen;
}

}  // namespace

Leitungsschutz schutz_bei_Freetds(const Schutzwunsch& wunsch, const OdbcUmgebung& umgebung, const QString& version) {
  const QString name = abschnitt_zu(wunsch, umgebung);
  if (name.isEmpty() && wunsch.verlangt_Pruefung)
    ungeprueft(u"nur nach einem Abschnitt seiner freetds.conf (Servername=…)"_s);
  FreetdsAbschnitt abschnitt;
  if (!name.isEmpty()) abschnitt = freetds_Abschnitt(umgebung.freetds, name);
  if (wunsch.verlangt_Pruefung) pruefe_Pruefung(name, abschnitt);
  Leitungsschutz schutz;
  schutz.pruefung = pruefung_nach(abschnitt);
  switch (wunsch.stufe) {
    case Verschluesselung::Ganz:
    case Verschluesselung::Streng:
      schutz.umfang = Umfang::Ganz;
      break;
    case Verschluesselung::Aus:
      schutz.umfang = Umfang::Keiner;
      break;
    case Verschluesselung::NurAnmeldung:
      break;
    case Verschluesselung::KeineAngabe:
      schutz.umfang = umfang_der_Dateien(wunsch, umgebung, abschnitt);
  }
  if (schutz.umfang == Umfang::Ganz) pruefe_Version(umgebung, version);
  return schutz;
}

Leitungsschutz schutz_beim_Hersteller(const Schutzwunsch& wunsch, const OdbcInstallierter& treiber) {
  Leitungsschutz schutz;
  if (treiber.art != OdbcArt::Hersteller) return schutz;
  const bool woanders = !wunsch.datenquelle.isEmpty();
  const bool von_selbst =
      wunsch.stufe == Verschluesselung::KeineAngabe && !woanders && verschluesselt_von_selbst(treiber);
  if (wunsch.stufe == Verschluesselung::Ganz || wunsch.stufe == Verschluesselung::Streng || von_selbst)
    schutz.umfang = Umfang::Ganz;
  // Strict looks at the certificate whatever else is said.
  const bool streng = wunsch.stufe == Verschluesselung::Streng;
  if (wunsch.traut.value_or(false) && !streng)
    schutz.pruefung = Pruefung::Keine;
  else if (streng || (schutz.umfang == Umfang::Ganz && (wunsch.traut || !woanders)))
    schutz.pruefung = Pruefung::Ganz;
  return schutz;
}

}  // namespace adodb
