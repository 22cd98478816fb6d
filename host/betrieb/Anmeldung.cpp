#include "host/betrieb/Anmeldung.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Paare = QList<adodb::Verbindungszeichenfolge::Paar>;

const QStringList Serverworte{
    u"datasource"_s, u"server"_s, u"address"_s, u"addr"_s, u"networkaddress"_s, u"servername"_s, u"dsn"_s};
const QStringList Datenbankworte{u"initialcatalog"_s, u"database"_s};
const QStringList Benutzerworte{u"userid"_s, u"uid"_s, u"user"_s, u"username"_s};
const QStringList Kennwortworte{u"password"_s, u"pwd"_s};

/// The keyword as the drivers compare it: case, blanks and underscores do not count.
QString vereinfacht(QString wort) {
  return wort.remove(u' ').remove(u'_').toLower();
}

Paare paare(const QString& verbindung) {
  Paare liste;
  gelingt([&] { liste = adodb::Verbindungszeichenfolge(verbindung).paare(); });
  return liste;
}

/// The last of several counts, and an empty value is none.
QString wert(const Paare& liste, const QStringList& worte) {
  QString letzter;
  for (const auto& paar : liste)
    if (!paar.wert.isEmpty() && worte.contains(vereinfacht(paar.wort))) letzter = paar.wert;
  return letzter;
}

const QRegularExpression& kennwort_beginnt() {
  static const QRegularExpression Muster(u"(p[ _]*w[ _]*d|p[ _]*a[ _]*s[ _]*s[ _]*w[ _]*o[ _]*r[ _]*d)[ _]*="_s,
      QRegularExpression::CaseInsensitiveOption);
  return Muster;
}

QString zu_zeigen(const QString& wert) {
  return wert.contains(u'=') ? QString() : wert;
}

}  // namespace

namespace anmeldung {

Worte worte(const QString& verbindung) {
  const Paare liste = paare(verbindung);
  return {zu_zeigen(wert(liste, Serverworte)), zu_zeigen(wert(liste, Datenbankworte)),
      zu_zeigen(wert(liste, Benutzerworte))};
}

bool fehlt_Kennwort(const QString& verbindung) {
  const Paare liste = paare(verbindung);
  const bool ist_Server = vereinfacht(wert(liste, {u"provider"_s})) != "sqlite"_L1;
  // One behind a forgotten semicolon is in another value; the opening says what is wrong there.
  const bool steht_da = std::any_of(liste.begin(), liste.end(), [](const auto& paar) {
    return Kennwortworte.contains(vereinfacht(paar.wort)) || paar.wert.contains(kennwort_beginnt());
  });
  return ist_Server && !steht_da && !wert(liste, Benutzerworte).isEmpty();
}

QString mit_Kennwort(const QString& verbindung, const QString& kennwort) {
  return verbindung + u";Password="_s + adodb::Verbindungszeichenfolge::als_wert(kennwort);
}

QString mit_Kennwort_der_Umgebung(const QString& verbindung) {
  const QString kennwort = qEnvironmentVariable("KVOBILD_KENNWORT");
  return kennwort.isEmpty() || !fehlt_Kennwort(verbindung) ? verbindung : mit_Kennwort(verbindung, kennwort);
}

QString zum_Merken(const QString& verbindung) {
  const Paare liste = paare(verbindung);
  const bool ist_Datei = vereinfacht(wert(liste, {u"provider"_s})) == "sqlite"_L1;
  QStringList teile;
  for (const auto& paar : liste) {
    const QString wort = vereinfacht(paar.wort);
    // An empty password is no secret, and without it the user would be asked for one.
    if (Kennwortworte.contains(wort) && !paar.wert.isEmpty()) continue;
    if (paar.wert.contains(kennwort_beginnt())) return {};
    const QString inhalt = ist_Datei && wort == "datasource"_L1 ? namen::ganzer_Pfad(paar.wert) : paar.wert;
    teile.append(paar.wort + u'=' + adodb::Verbindungszeichenfolge::als_wert(inhalt));
  }
  return teile.join(u';');
}

QString ohne_Geheimnis(const QString& text) {
  const qsizetype stelle = text.indexOf(kennwort_beginnt());
  return stelle < 0 ? text : text.left(stelle) + u'…';
}

}  // namespace anmeldung
