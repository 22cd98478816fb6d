#include "host/betrieb/aufraeumen/Papierkorb.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <ranges>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/aufraeumen/Aufraeumen.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/wirt/Umzug.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Endung = u".papierkorb"_s;
const QString Zeitform = u"yyyy-MM-dd_HHmmss"_s;

/// Case does not count, as on a share.
bool liegt_in(const QString& pfad, const QString& ordner) {
  const auto ort = [](const QString& p) { return QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(p)) + u'/'; };
  return ort(pfad).startsWith(ort(ordner), Qt::CaseInsensitive);
}

QString letzter_Name(const QString& ordner) {
  return QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(ordner)).section(u'/', -1);
}

QJsonObject als_Json(const Aufraeumposten& posten, const QString& pfad) {
  QJsonObject objekt{{u"pfad"_s, pfad}, {u"art"_s, posten.ist_Ordner() ? u"ordner"_s : u"datei"_s},
      {u"grund"_s, Aufraeumen::kennung(posten.Warum)}};
  if (!posten.ist_Ordner())
    static_cast<void>(gelingt([&] { objekt[u"bytes"_s] = static_cast<qint64>(dateien::FileLen(posten.Pfad)); }));
  return objekt;
}

}  // namespace

Papierkorb::Papierkorb(QString wurzel, const std::optional<QString>& anderswo)
    : wurzel_(std::move(wurzel)), anderswo_(anderswo.has_value()) {
  if (!anderswo) {
    ordner_ = umzug::neben(wurzel_, Endung).value_or(QString());
    return;
  }
  if (liegt_in(*anderswo, wurzel_))
    throw Abbruch(Ausgang::Aufruf, u"Der Papierkorb kann nicht in der Bildablage liegen."_s);
  // Another root's runs may stand there too.
  ordner_ = FileSystemObject().BuildPath(*anderswo, letzter_Name(wurzel_) + Endung);
}

bool Papierkorb::moeglich() const {
  if (anderswo_) return true;
  return !ordner_.isEmpty() && umzug::geht_durch_Umbenennen(wurzel_, ordner_);
}

QStringList Papierkorb::laeufe() const {
  if (ordner_.isEmpty() || !FileSystemObject().FolderExists(ordner_)) return {};
  QStringList namen = FileSystemObject().GetFolder(ordner_).SubFolders();
  namen.removeIf([](const QString& name) { return !zeit(name).isValid(); });
  namen.sort();
  return namen;
}

QDateTime Papierkorb::zeit(const QString& lauf) {
  // A second run of the same second has "_2" behind it.
  const QString rest = lauf.mid(Zeitform.size());
  bool zahl = rest.isEmpty();
  if (rest.startsWith(u'_')) rest.mid(1).toUInt(&zahl);
  return zahl ? QDateTime::fromString(lauf.left(Zeitform.size()), Zeitform) : QDateTime();
}

bool Papierkorb::liegt_in_einem(const QString& pfad) {
  const QStringList stufen = pfad.split(u'\\');
  return std::any_of(stufen.begin(), stufen.end(), [](const QString& s) { return s.endsWith(Endung); });
}

QString Papierkorb::beginne(const Aufraeumplan& plan) const {
  umzug::lege_an(ordner_);
  const QString stempel = QDateTime::currentDateTime().toString(Zeitform);
  QString lauf = stempel;
  const FileSystemObject system;
  for (int nummer = 2; system.FolderExists(im_Lauf(lauf, {})) || system.FileExists(liste_von(lauf)); ++nummer)
    lauf = stempel + u'_' + QString::number(nummer);
  dateien::MkDir(im_Lauf(lauf, {}));
  QJsonArray posten;
  for (const Aufraeumposten& p : plan.Posten) posten.append(als_Json(p, p.Pfad == wurzel_ ? u"."_s : relativ(p.Pfad)));
  const QJsonObject liste{{u"zeit"_s, QDateTime::currentDateTime().toString(Qt::ISODate)},
      {u"bildablage"_s, namen::angezeigt(wurzel_)}, {u"posten"_s, posten}};
  dateien::schreibe_neu(liste_von(lauf), QJsonDocument(liste).toJson());
  return lauf;
}

// The folder goes by its name alone: another desk may have put something into it just now.
void Papierkorb::nimm(const QString& lauf, const Aufraeumposten& posten) const {
  const QString hier = posten.Pfad == wurzel_ ? QString() : relativ(posten.Pfad);
  const QString ziel = im_Lauf(lauf, hier);
  if (!posten.ist_Ordner()) {
    umzug::lege_an(ziel.left(ziel.lastIndexOf(u'\\')));
    return umzug::verschiebe(posten.Pfad, ziel);
  }
  umzug::lege_an(ziel);
  FileSystemObject().DeleteFolder(posten.Pfad, true);
}

void Papierkorb::verwirf_leeren(const QString& lauf) const {
  const Bestand da = bestand(lauf);
  if (da.dateien.isEmpty() && da.ordner.isEmpty()) static_cast<void>(loesche(lauf));
}

Papierkorb::Bestand Papierkorb::bestand(const QString& lauf) const {
  Bestand alles;
  sammle(im_Lauf(lauf, {}), {}, alles);
  return alles;
}

QList<Papierkorb::Gebliebenes> Papierkorb::hole_zurueck(const QString& lauf) const {
  const Bestand da = bestand(lauf);
  const FileSystemObject system;
  // Looked at before the first comes back: two names that differ in case alone are not in each other's way.
  QSet<QString> im_Weg;
  for (const QString& pfad : da.dateien)
    if (system.FileExists(wurzel_ + u'\\' + pfad) || system.FolderExists(wurzel_ + u'\\' + pfad)) im_Weg.insert(pfad);
  QList<Gebliebenes> geblieben;
  for (const QString& pfad : da.ordner)
    if (const auto grund = versuche([&] { umzug::lege_an(wurzel_ + u'\\' + pfad.chopped(1)); }))
      geblieben.append({pfad, grund->Beschreibung()});
  for (const QString& pfad : da.dateien) {
    if (im_Weg.contains(pfad)) {
      geblieben.append({pfad, u"in der Bildablage steht inzwischen eine Datei dieses Namens"_s});
      continue;
    }
    const auto grund = versuche([&] { umzug::verschiebe(im_Lauf(lauf, pfad), wurzel_ + u'\\' + pfad); });
    if (grund) geblieben.append({pfad, grund->Beschreibung()});
    Protokoll::schreibe({Protokolleintrag::Tat::Zurueckholen, !grund, pfad, {}, {}, lauf});
  }
  raeume_leere(lauf, da.ordner);
  return geblieben;
}

QStringList Papierkorb::aeltere(int tage, const QDateTime& jetzt) const {
  QStringList namen = laeufe();
  const QDateTime grenze = jetzt.addDays(-tage);
  namen.removeIf([&](const QString& lauf) { return zeit(lauf) > grenze; });
  return namen;
}

QList<Papierkorb::Gebliebenes> Papierkorb::loesche(const QString& lauf) const {
  const Bestand da = bestand(lauf);
  QList<Gebliebenes> geblieben;
  for (const QString& pfad : da.dateien) {
    const auto grund = versuche([&] { FileSystemObject().DeleteFile(im_Lauf(lauf, pfad), true); });
    if (grund) geblieben.append({pfad, grund->Beschreibung()});
    Protokoll::schreibe({Protokolleintrag::Tat::EndgueltigLoeschen, !grund, pfad, {}, {}, lauf});
  }
  raeume_leere(lauf, da.ordner);
  return geblieben;
}

QString Papierkorb::im_Lauf(const QString& lauf, const QString& relativ) const {
  return ordner_ + u'\\' + lauf + (relativ.isEmpty() ? QString() : u'\\' + relativ);
}

void Papierkorb::sammle(const QString& ordner, const QString& davor, Bestand& bestand) const {
  const Folder inhalt = FileSystemObject().GetFolder(ordner);
  for (const QString& name : inhalt.Files()) {
    bestand.dateien.append(davor + name);
    static_cast<void>(gelingt([&] { bestand.bytes += dateien::FileLen(ordner + u'\\' + name); }));
  }
  for (const QString& name : inhalt.SubFolders()) {
    bestand.ordner.append(davor + name + u'\\');
    sammle(ordner + u'\\' + name, davor + name + u'\\', bestand);
  }
}

// The list stays as long as there is something on it.
void Papierkorb::raeume_leere(const QString& lauf, const QStringList& ordner) const {
  const FileSystemObject system;
  for (const QString& pfad : std::views::reverse(ordner))
    static_cast<void>(gelingt([&] { system.DeleteFolder(im_Lauf(lauf, pfad.chopped(1)), true); }));
  if (!gelingt([&] { system.DeleteFolder(im_Lauf(lauf, {}), true); })) return;
  static_cast<void>(gelingt([&] { system.DeleteFile(liste_von(lauf), true); }));
  static_cast<void>(gelingt([&] { system.DeleteFolder(ordner_, true); }));
}
