#include "host/betrieb/Datenbank.h"

#include <algorithm>
#include <array>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Namen.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

using namespace Qt::Literals::StringLiterals;

QString verbindung_zur_Datei(const QString& datei) {
  return u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(datei);
}

QString verbindung_aus_Angabe(const QString& angabe) {
  return angabe.contains(u'=') ? angabe : verbindung_zur_Datei(angabe);
}

std::optional<QString> datenbankdatei(const QString& verbindung) {
  const adodb::Verbindungszeichenfolge folge = gelesene_Verbindung(verbindung);
  if (!Datenbankart::von(folge).ist_Datei) return std::nullopt;
  const std::optional<QString> datei = folge.wert(u"Data Source"_s);
  return datei ? std::optional(namen::tabellenpfad(*datei)) : std::nullopt;
}

namespace {

Datenbankgrund grund_der_Verbindung(const adodb::Datenbankfehler& fehler) {
  // The login is refused, may not open the database, or names one that is not there; the password has expired.
  if (fehler.Sqlstate() == "01S00"_L1) return Datenbankgrund::Angaben;
  constexpr std::array Abgelehnte{18456, 18452, 18470, 18486, 18487, 18488, 4060, 4064, 916};
  const bool abgelehnt = std::find(Abgelehnte.begin(), Abgelehnte.end(), fehler.NativeNummer()) != Abgelehnte.end();
  return abgelehnt || fehler.Sqlstate() == "28000"_L1 ? Datenbankgrund::Anmeldung : Datenbankgrund::Unerreichbar;
}

Datenbankgrund grund_der_Anweisung(const adodb::Datenbankfehler& fehler) {
  // A right is missing: on a table or column, to make a table, on the server's own views; or the database is read-only.
  constexpr std::array Verweigerte{229, 230, 262, 297, 300, 3906};
  if (fehler.Sqlstate() == "25006"_L1 ||
      std::find(Verweigerte.begin(), Verweigerte.end(), fehler.NativeNummer()) != Verweigerte.end())
    return Datenbankgrund::Recht_fehlt;
  if (fehler.NativeNummer() == 208 || fehler.Beschreibung().contains("no such table"_L1))
    return Datenbankgrund::Tabelle_fehlt;
  return fehler.Sqlstate().startsWith("08"_L1) ? Datenbankgrund::Unerreichbar : Datenbankgrund::Anderer;
}

QString rat(Datenbankgrund grund) {
  switch (grund) {
    case Datenbankgrund::Anmeldung:
      return u" Zu prüfen sind Benutzer, Kennwort und Name der Datenbank."_s;
    case Datenbankgrund::Tabelle_fehlt:
      return u" Fehlt die Tabelle der Zuordnungen, legt „kvobild datenbank anlegen“ sie an."_s;
    case Datenbankgrund::Recht_fehlt:
      return u" Dem Benutzer der Datenbank fehlt ein Recht; „kvobild datenbank pruefen“ zeigt, welches."_s;
    default:
      return {};
  }
}

/// "KVOB" in ASCII. Files of others have another number or none, and their version is none of ours.
constexpr int Kennzahl = 0x4B564F42;
/// Counts up with each change of the tables that an older program would take amiss.
constexpr int Tabellenfassung = 1;

int zahl(adodb::Connection& verbindung, const QString& pragma) {
  return verbindung.Execute(u"PRAGMA "_s + pragma)->Text(0).toInt();
}

/// Why a file is not to be touched, or none.
std::optional<Datenbankausfall> zu_neu(adodb::Connection& verbindung) {
  if (!Datenbankart::von(verbindung).ist_Datei) return std::nullopt;
  int fassung = 0;
  // What can't be asked fails again at the first question, with its own words.
  static_cast<void>(gelingt([&] {
    if (zahl(verbindung, u"application_id"_s) == Kennzahl) fassung = zahl(verbindung, u"user_version"_s);
  }));
  if (fassung <= Tabellenfassung) return std::nullopt;
  return Datenbankausfall{Datenbankgrund::Neuer,
      u"Die Datenbank stammt von einer neueren Fassung des Programms (Tabellen %1, diese kennt %2). Sie ist nicht "
      "geöffnet und unverändert; installieren Sie die neuere Fassung."_s.arg(
          QString::number(fassung), QString::number(Tabellenfassung))};
}

}  // namespace

void kennzeichne(adodb::Connection& verbindung) {
  if (zahl(verbindung, u"application_id"_s) == Kennzahl) return;
  verbindung.Execute(u"PRAGMA user_version = %1"_s.arg(Tabellenfassung));
  verbindung.Execute(u"PRAGMA application_id = %1"_s.arg(Kennzahl));
}

Datenbankausfall ausfall_von(const Laufzeitfehler& fehler) {
  Datenbankausfall ausfall;
  if (const auto* genauer = dynamic_cast<const adodb::Datenbankfehler*>(&fehler))
    ausfall.grund =
        fehler.Nummer() == fehlernummer::Verbindung ? grund_der_Verbindung(*genauer) : grund_der_Anweisung(*genauer);
  ausfall.worte = fehler.Beschreibung() + rat(ausfall.grund);
  return ausfall;
}

std::optional<Datenbankausfall> versuche_zu_oeffnen(
    const QString& verbindung, std::shared_ptr<adodb::Connection>& offene) {
  auto neue = std::make_shared<adodb::Connection>();
  neue->CursorLocation(adodb::adUseClient);
  auto ausfall = versuche_Datenbank([&] { neue->Open(verbindung); });
  if (!ausfall) ausfall = zu_neu(*neue);
  if (!ausfall) offene = neue;
  // A failure to connect says so itself.
  if (ausfall && ausfall->grund == Datenbankgrund::Anderer)
    ausfall->worte = u"Die Datenbank ist nicht zu öffnen: "_s + ausfall->worte;
  return ausfall;
}

std::shared_ptr<adodb::Connection> oeffne(const QString& verbindung) {
  std::shared_ptr<adodb::Connection> offene;
  if (const auto ausfall = versuche_zu_oeffnen(verbindung, offene)) throw Abbruch(Ausgang::Datenbank, ausfall->worte);
  return offene;
}

QString literal(QString text) {
  return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}
