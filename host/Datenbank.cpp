#include "host/Datenbank.h"

#include "host/Ausgang.h"
#include "host/Namen.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

using namespace Qt::Literals::StringLiterals;

QString verbindung_aus_angabe(const QString& angabe) {
  if (angabe.contains(u'=')) return angabe;
  return u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(angabe);
}

std::optional<QString> datenbankdatei(const QString& verbindung) {
  const adodb::Verbindungszeichenfolge teile(verbindung);
  if (teile.wert(u"Provider"_s).value_or(QString()).compare("SQLite"_L1, Qt::CaseInsensitive) != 0) return std::nullopt;
  const std::optional<QString> datei = teile.wert(u"Data Source"_s);
  return datei ? std::optional(namen::tabellenpfad(*datei)) : std::nullopt;
}

std::shared_ptr<adodb::Connection> oeffne(const QString& verbindung) {
  auto offene = std::make_shared<adodb::Connection>();
  offene->CursorLocation(adodb::adUseClient);
  if (const auto grund = versuche([&] { offene->Open(verbindung); }))
    throw Abbruch(Ausgang::Datenbank, u"Die Datenbank ist nicht zu erreichen: "_s + grund->Beschreibung());
  return offene;
}

QString literal(QString text) {
  return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}
