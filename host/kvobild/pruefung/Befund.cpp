#include "host/kvobild/pruefung/Befund.h"

#include <QJsonObject>

namespace befund {

QJsonObject als_Objekt(const adodb::Recordset& satz, const QStringList& spalten) {
  QJsonObject objekt;
  for (int i = 0; i < spalten.size(); ++i)
    objekt.insert(
        spalten.at(i).toLower(), std::holds_alternative<Null>(satz.Value(i)) ? QJsonValue() : QJsonValue(satz.Text(i)));
  return objekt;
}

Befund lies(
    adodb::Connection& verbindung, const QString& kennung, const QStringList& spalten, const QString& anweisung) {
  Befund befund;
  befund.kennung = kennung;
  for (const auto satz = verbindung.Execute(anweisung); !satz->Eof(); satz->MoveNext()) {
    const bool gezaehlt = satz->Spalten().size() > spalten.size();
    befund.anzahl = gezaehlt ? satz->Text(static_cast<std::int32_t>(spalten.size())).toLongLong() : befund.anzahl + 1;
    befund.zeilen.append(als_Objekt(*satz, spalten));
  }
  return befund;
}

}  // namespace befund
