#include "tests/ende/Bestand.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>

#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A connection that can only read.
class Leser {
 public:
  explicit Leser(const QString& datei) {
    if (sqlite3_open_v2(datei.toUtf8().constData(), &datenbank_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
      throw std::runtime_error("the database can't be opened: " + datei.toStdString());
    sqlite3_busy_timeout(datenbank_, 10'000);
  }
  ~Leser() { sqlite3_close(datenbank_); }
  Leser(const Leser&) = delete;
  Leser& operator=(const Leser&) = delete;

  /// Each row with its columns joined by "|".
  QStringList zeilen(const QString& abfrage) const {
    sqlite3_stmt* anweisung = nullptr;
    if (sqlite3_prepare_v2(datenbank_, abfrage.toUtf8().constData(), -1, &anweisung, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(datenbank_));
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> wache(anweisung, &sqlite3_finalize);
    QStringList liste;
    int stand = sqlite3_step(anweisung);
    for (; stand == SQLITE_ROW; stand = sqlite3_step(anweisung)) liste.append(zeile(anweisung));
    if (stand != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(datenbank_));
    return liste;
  }

 private:
  static QString zeile(sqlite3_stmt* anweisung) {
    QStringList werte;
    for (int i = 0; i < sqlite3_column_count(anweisung); ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(anweisung, i));
      QString wert = text ? QString::fromUtf8(text) : u"<NULL>"_s;
      while (wert.endsWith(u' ')) wert.chop(1);
      werte.append(wert);
    }
    return werte.join(u'|');
  }

  sqlite3* datenbank_ = nullptr;
};

/// What a query gives, each row with its columns joined by "|".
using Abfrage = std::function<QStringList(const QString&)>;

QString als_Text(const QJsonValue& wert) {
  QString text = wert.isNull() ? u"<NULL>"_s : wert.toVariant().toString();
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

/// The query runs in the database behind the server, beside the protocol.
QStringList zeilen_am_Server(Tdsserver& server, const QString& abfrage) {
  QStringList liste;
  const QJsonArray zeilen = QJsonDocument::fromJson(server.steuere(u"sql "_s + abfrage).toUtf8()).array();
  for (const auto& zeile : zeilen) {
    QStringList werte;
    for (const auto& wert : zeile.toArray()) werte.append(als_Text(wert));
    liste.append(werte.join(u'|'));
  }
  return liste;
}

QByteArray inhalt(const QString& pfad) {
  QFile datei(pfad);
  if (!datei.open(QIODevice::ReadOnly)) return "not to be read";
  const QByteArray bytes = datei.readAll();
  return pfad.endsWith(".txt"_L1) ? bytes : QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

QStringList was_fehlt(const QStringList& von, const QStringList& in, const QString& vorsatz) {
  QStringList rest = in;
  QStringList liste;
  for (const QString& zeile : von)
    if (!rest.removeOne(zeile)) liste.append(vorsatz + zeile);
  return liste;
}

QStringList als_Zeilen(const QMap<QString, QByteArray>& dateien) {
  QStringList zeilen;
  for (auto i = dateien.cbegin(); i != dateien.cend(); ++i)
    zeilen.append(i.key() + u" = "_s + QString::fromLatin1(i.value()));
  return zeilen;
}

}  // namespace

Bestand Bestand::lies(const QString& ordner, Tdsserver* server) {
  Bestand bestand;
  const Leser leser(ordner + u"/betrieb.db"_s);
  const Abfrage zeilen = [&](const QString& abfrage) {
    return server ? zeilen_am_Server(*server, abfrage) : leser.zeilen(abfrage);
  };
  const QString tabelle = u"Bild_Zuordnungen"_s;
  bestand.zuordnungen = zeilen(u"SELECT * FROM %1 ORDER BY rowid"_s.arg(tabelle));
  // The search index of the records is made from them.
  for (const QString& name :
      zeilen(u"SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT GLOB 'Vorgaenge_*' ORDER BY rowid"_s)) {
    if (name == tabelle) continue;
    for (const QString& zeile : zeilen(u"SELECT * FROM \"%1\" ORDER BY rowid"_s.arg(name)))
      bestand.uebrige.append(name + u": "_s + zeile);
  }
  for (QDirIterator dateien(ordner, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
       dateien.hasNext();) {
    const QString pfad = dateien.next();
    const QString name = pfad.mid(ordner.size() + 1);
    // Of the journal each line has the time in it.
    if (!name.startsWith("betrieb.db"_L1) && name != "protokoll.jsonl"_L1) bestand.dateien.insert(name, inhalt(pfad));
  }
  return bestand;
}

QStringList unterschied(const Bestand& ist, const Bestand& soll) {
  QStringList liste;
  const auto vergleiche = [&](const QStringList& links, const QStringList& rechts, const QString& was) {
    const QStringList anders = was_fehlt(links, rechts, u"+ "_s) + was_fehlt(rechts, links, u"- "_s);
    if (anders.isEmpty() && links != rechts) liste.append(was + u": the order differs"_s);
    liste += anders;
  };
  vergleiche(ist.zuordnungen, soll.zuordnungen, u"Bild_Zuordnungen"_s);
  vergleiche(ist.uebrige, soll.uebrige, u"other tables"_s);
  vergleiche(als_Zeilen(ist.dateien), als_Zeilen(soll.dateien), u"files"_s);
  return liste;
}
