#include "host/betrieb/protokoll/Protokoll.h"

#include <pwd.h>
#include <unistd.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QList>
#include <QSysInfo>
#include <array>
#include <optional>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "platform/files/wirt/Umzug.h"
#include "platform/files/wirt/Zeilendatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Tat = Protokolleintrag::Tat;

struct Benennung {
  Tat tat;
  QString kennung;
  QString worte;
};

const std::array<Benennung, 7>& benennungen() {
  static const std::array<Benennung, 7> Alle{{{Tat::Zuordnen, u"zuordnen"_s, u"zugeordnet"_s},
      {Tat::Entfernen, u"entfernen"_s, u"Zuordnung entfernt"_s}, {Tat::Umbenennen, u"umbenennen"_s, u"umbenannt"_s},
      {Tat::Drehen, u"drehen"_s, u"gedreht"_s}, {Tat::Aufraeumen, u"aufraeumen"_s, u"aufgeräumt"_s},
      {Tat::Zurueckholen, u"zurueckholen"_s, u"zurückgeholt"_s},
      {Tat::EndgueltigLoeschen, u"endgueltig_loeschen"_s, u"endgültig gelöscht"_s}}};
  return Alle;
}

Tat tat_von(Bildereignis::Tat tat) {
  if (tat == Bildereignis::Tat::Zuordnen) return Tat::Zuordnen;
  if (tat == Bildereignis::Tat::Entfernen) return Tat::Entfernen;
  return tat == Bildereignis::Tat::Umbenennen ? Tat::Umbenennen : Tat::Drehen;
}

/// Asked for once: a firm's list of users may be on another machine.
const QString& benutzer() {
  static const QString Name = [] {
    const passwd* const eintrag = ::getpwuid(::geteuid());
    return eintrag ? QString::fromLocal8Bit(eintrag->pw_name) : QString::number(::geteuid());
  }();
  return Name;
}

QJsonObject als_Json(const Datensatz& satz) {
  QJsonObject objekt;
  const auto dazu = [&](const QString& name, const QString& wert) {
    if (!wert.isEmpty() && wert != "-"_L1) objekt[name] = wert;
  };
  dazu(u"typ1"_s, satz.typ1);
  dazu(u"typ2"_s, satz.typ2);
  dazu(u"key1"_s, satz.key1);
  dazu(u"key2"_s, satz.key2);
  dazu(u"key3"_s, satz.key3);
  dazu(u"key4"_s, satz.key4);
  return objekt;
}

QByteArray zeile(const Protokolleintrag& eintrag) {
  const QDateTime jetzt = QDateTime::currentDateTime();
  QJsonObject objekt{{u"zeit"_s, jetzt.toOffsetFromUtc(jetzt.offsetFromUtc()).toString(Qt::ISODateWithMs)},
      {u"benutzer"_s, benutzer()}, {u"platz"_s, QSysInfo::machineHostName()},
      {u"tat"_s, Protokoll::kennung(eintrag.tat)}, {u"bild"_s, eintrag.bild},
      {u"ergebnis"_s, eintrag.gelungen ? u"erledigt"_s : u"gescheitert"_s}};
  if (const QJsonObject satz = als_Json(eintrag.satz); !satz.isEmpty()) objekt[u"vorgang"_s] = satz;
  if (!eintrag.neu.isEmpty()) objekt[u"neu"_s] = eintrag.neu;
  if (!eintrag.lauf.isEmpty()) objekt[u"lauf"_s] = eintrag.lauf;
  return QJsonDocument(objekt).toJson(QJsonDocument::Compact) + '\n';
}

/// The last one is written to.
QList<Protokoll*>& offene() {
  static QList<Protokoll*> alle;
  return alle;
}

}  // namespace

Protokoll::Protokoll(QString ordner, QString wurzel) : ordner_(std::move(ordner)), wurzel_(std::move(wurzel)) {
  offene().append(this);
  bildereignis::setze([](const Bildereignis& ereignis) { offene().last()->hoere(ereignis); });
}

Protokoll::~Protokoll() {
  offene().removeOne(this);
  if (offene().isEmpty()) bildereignis::setze({});
}

void Protokoll::schreibe(const Protokolleintrag& eintrag) {
  if (!offene().isEmpty()) offene().last()->haenge_an(eintrag);
}

QString Protokoll::ordner(const QString& verbindung, const QString& sonst) {
  std::optional<QString> datei;
  if (!verbindung.isEmpty()) static_cast<void>(gelingt([&] { datei = datenbankdatei(verbindung); }));
  if (!datei) return sonst.isEmpty() ? QString() : namen::tabellenpfad(sonst);
  const QString ganzer = namen::tabellenpfad(namen::ganzer_Pfad(*datei));
  return ganzer.left(ganzer.lastIndexOf(u'\\'));
}

bool Protokoll::ist_Datei(const QString& name) {
  return name == "protokoll.jsonl"_L1 || name == "protokoll.1.jsonl"_L1;
}

QString Protokoll::kennung(Tat tat) {
  for (const Benennung& b : benennungen())
    if (b.tat == tat) return b.kennung;
  return {};
}

QString Protokoll::worte(const QString& kennung) {
  for (const Benennung& b : benennungen())
    if (b.kennung == kennung) return b.worte;
  return kennung;
}

void Protokoll::hoere(const Bildereignis& ereignis) {
  haenge_an({tat_von(ereignis.tat), ereignis.gelungen, unter_der_Wurzel(ereignis.Bild),
      {ereignis.Key1, ereignis.Key2, ereignis.Key3, ereignis.Key4, ereignis.Typ1, ereignis.Typ2},
      unter_der_Wurzel(ereignis.neues_Bild)});
}

// Nobody waits for the disk here: a line that a power failure takes is no reason to slow each save.
void Protokoll::haenge_an(const Protokolleintrag& eintrag) {
  if (ordner_.isEmpty()) return;
  const auto grund = versuche([&] {
    umzug::lege_an(ordner_);
    zeilendatei::haenge_an(datei(ordner_), zeile(eintrag), vorige(ordner_), Grenze);
  });
  if (grund && !std::exchange(ausfall_gesagt_, true))
    ausgabe::meldung(u"Das Protokoll „%1“ ist nicht zu schreiben: %2"_s.arg(
        namen::angezeigt(datei(ordner_)), grund->Beschreibung()));
}

QString Protokoll::unter_der_Wurzel(const QString& pfad) const {
  const QString davor = wurzel_ + u'\\';
  // A picture in the root itself has a separator in front of it.
  const bool oben = pfad.startsWith(u'\\') && !pfad.startsWith("\\\\"_L1);
  return pfad.startsWith(davor) ? pfad.mid(davor.size()) : pfad.mid(oben ? 1 : 0);
}
