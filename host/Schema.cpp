#include "host/Schema.h"

#include "Schematext.h"
#include "host/Ausgang.h"
#include "host/Datenbank.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool steht_da(adodb::Connection& verbindung) {
  return !verbindung
              .Execute(
                  u"SELECT name FROM sqlite_master WHERE type = 'table' "
                  u"AND name = 'Bild_Zuordnungen' COLLATE NOCASE"_s)
              ->Eof();
}

bool fuehre_aus(adodb::Connection& verbindung) {
  const bool vorhanden = steht_da(verbindung);
  for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf16(schema::Bild_Zuordnungen)))
    verbindung.Execute(anweisung);
  return !vorhanden;
}

}  // namespace

namespace schema {

bool lege_an(const QString& verbindung) {
  const std::optional<QString> datei = datenbankdatei(verbindung);
  if (!datei)
    throw Abbruch(Ausgang::Aufruf,
                  u"„anlegen“ kennt nur SQLite; das Schema für einen Server liegt dem Programm als SQL-Skript bei."_s);
  const bool neu = !FileSystemObject().FileExists(*datei);
  const auto offene = oeffne(neu ? verbindung + u";Mode=ReadWriteCreate"_s : verbindung);
  bool angelegt = false;
  if (const auto grund = versuche([&] { angelegt = fuehre_aus(*offene); }))
    throw Abbruch(Ausgang::Datenbank, u"Die Tabelle ist nicht anzulegen: "_s + grund->Beschreibung());
  return angelegt;
}

QStringList wirtstabellen() {
  return adodb::zerlege_skript(QString::fromUtf16(Wirtstabellen_Beispiel));
}

}  // namespace schema
