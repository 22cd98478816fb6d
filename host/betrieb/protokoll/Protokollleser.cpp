#include "host/betrieb/protokoll/Protokollleser.h"

#include <QJsonDocument>
#include <QStringList>

#include "host/betrieb/protokoll/Protokoll.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray lies_wenn_da(const QString& datei) {
  return FileSystemObject().FileExists(datei) ? dateien::lies_alles(datei) : QByteArray();
}

/// A file that changed places while it was read would be missing, or be there twice.
QByteArray lies_beide(const QString& ordner) {
  const QString datei = Protokoll::datei(ordner);
  const auto inode = [&] { return FileSystemObject().FileExists(datei) ? dateien::kennung(datei).inode : 0; };
  constexpr int Versuche = 5;
  QByteArray alles;
  for (int versuch = 0; versuch < Versuche; ++versuch) {
    const auto vorher = inode();
    alles = lies_wenn_da(Protokoll::vorige(ordner)) + lies_wenn_da(datei);
    if (inode() == vorher) break;
  }
  return alles;
}

bool meint(const QString& pfad, const QString& gesucht) {
  const auto gleich = [&](const QString& teil) { return teil.compare(gesucht, Qt::CaseInsensitive) == 0; };
  const QString einheitlich = QString(pfad).replace(u'/', u'\\');
  return gleich(einheitlich) || gleich(einheitlich.mid(einheitlich.lastIndexOf(u'\\') + 1));
}

bool passt(const QJsonObject& zeile, const QDateTime& zeit, const protokollleser::Auswahl& auswahl) {
  if (auswahl.seit && zeit < *auswahl.seit) return false;
  if (auswahl.bild.isEmpty()) return true;
  const QString gesucht = QString(auswahl.bild).replace(u'/', u'\\');
  return meint(zeile[u"bild"_s].toString(), gesucht) || meint(zeile[u"neu"_s].toString(), gesucht);
}

QString vorgang(const QJsonObject& satz) {
  QStringList teile;
  for (const QString& name : {u"typ1"_s, u"typ2"_s, u"key1"_s, u"key2"_s, u"key3"_s, u"key4"_s})
    if (satz.contains(name)) teile.append(satz[name].toString());
  return teile.join(u' ');
}

}  // namespace

protokollleser::Inhalt protokollleser::lies(const QString& ordner, const Auswahl& auswahl) {
  Inhalt inhalt;
  for (const QByteArray& bytes : lies_beide(ordner).split('\n')) {
    if (bytes.isEmpty()) continue;
    const QJsonObject zeile = QJsonDocument::fromJson(bytes).object();
    const QDateTime zeit = QDateTime::fromString(zeile[u"zeit"_s].toString(), Qt::ISODateWithMs);
    if (!zeit.isValid())
      ++inhalt.beschaedigte;
    else if (passt(zeile, zeit, auswahl))
      inhalt.zeilen.append(zeile);
  }
  return inhalt;
}

QString protokollleser::worte(const QJsonObject& zeile) {
  const QDateTime zeit = QDateTime::fromString(zeile[u"zeit"_s].toString(), Qt::ISODateWithMs).toLocalTime();
  QString text = u"%1  %2@%3  %4: %5"_s.arg(zeit.toString(u"yyyy-MM-dd HH:mm:ss"_s), zeile[u"benutzer"_s].toString(),
      zeile[u"platz"_s].toString(), Protokoll::worte(zeile[u"tat"_s].toString()), zeile[u"bild"_s].toString());
  if (zeile.contains(u"neu"_s)) text += u" → "_s + zeile[u"neu"_s].toString();
  if (const QString satz = vorgang(zeile[u"vorgang"_s].toObject()); !satz.isEmpty()) text += u"  ("_s + satz + u')';
  if (zeile.contains(u"lauf"_s)) text += u"  ["_s + zeile[u"lauf"_s].toString() + u']';
  if (zeile[u"ergebnis"_s] != u"erledigt"_s) text += u"  GESCHEITERT"_s;
  return text;
}
