#include "host/betrieb/Anmeldung.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Namen.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using adodb::Verbindungszeichenfolge;
using adodb::Wortsinn;

const QRegularExpression& kennwort_beginnt() {
  static const QRegularExpression Muster(u"(p[ _]*w[ _]*d|p[ _]*a[ _]*s[ _]*s[ _]*w[ _]*o[ _]*r[ _]*d)[ _]*="_s,
      QRegularExpression::CaseInsensitiveOption);
  return Muster;
}

}  // namespace

namespace anmeldung {

Worte worte(const QString& verbindung) {
  const Verbindungszeichenfolge folge = gelesene_Verbindung(verbindung);
  const auto wert = [&](std::initializer_list<Wortsinn> sinne) {
    return Verbindungszeichenfolge::zeigbar(folge.wert_zu(sinne));
  };
  return {wert({Wortsinn::Server, Wortsinn::Abschnitt, Wortsinn::Datenquelle}), wert({Wortsinn::Datenbank}),
      wert({Wortsinn::Benutzer})};
}

bool nennt_Kennwort(const QString& verbindung) {
  const Verbindungszeichenfolge folge = gelesene_Verbindung(verbindung);
  // Behind a forgotten semicolon a password is part of another value; opening the connection then says what is wrong.
  return std::any_of(folge.paare().begin(), folge.paare().end(), [](const auto& paar) {
    return Verbindungszeichenfolge::sinn(paar.wort) == Wortsinn::Kennwort || paar.wert.contains(kennwort_beginnt());
  });
}

bool fehlt_Kennwort(const QString& verbindung) {
  const Verbindungszeichenfolge folge = gelesene_Verbindung(verbindung);
  return !Datenbankart::von(folge).ist_Datei && !nennt_Kennwort(verbindung) &&
      !folge.wert_zu({Wortsinn::Benutzer}).isEmpty();
}

QString mit_Kennwort(const QString& verbindung, const QString& kennwort) {
  return verbindung + u";Password="_s + Verbindungszeichenfolge::als_wert(kennwort);
}

QString mit_Kennwort_der_Umgebung(const QString& verbindung) {
  const QString kennwort = qEnvironmentVariable("KVOBILD_KENNWORT");
  return kennwort.isEmpty() || !fehlt_Kennwort(verbindung) ? verbindung : mit_Kennwort(verbindung, kennwort);
}

QString zum_Merken(const QString& verbindung) {
  const Verbindungszeichenfolge folge = gelesene_Verbindung(verbindung);
  const bool ist_Datei = Datenbankart::von(folge).ist_Datei;
  QStringList teile;
  for (const auto& paar : folge.paare()) {
    const Wortsinn sinn = Verbindungszeichenfolge::sinn(paar.wort);
    // An empty password is no secret, and without it the user would be asked for one.
    if (sinn == Wortsinn::Kennwort && !paar.wert.isEmpty()) continue;
    if (paar.wert.contains(kennwort_beginnt())) return {};
    const QString inhalt = ist_Datei && sinn == Wortsinn::Server ? namen::ganzer_Pfad(paar.wert) : paar.wert;
    teile.append(paar.wort + u'=' + Verbindungszeichenfolge::als_wert(inhalt));
  }
  return teile.join(u';');
}

QString ohne_Geheimnis(const QString& text) {
  const qsizetype stelle = text.indexOf(kennwort_beginnt());
  return stelle < 0 ? text : text.left(stelle) + u'…';
}

}  // namespace anmeldung
