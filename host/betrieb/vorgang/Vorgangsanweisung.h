#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

#include "host/betrieb/vorgang/Vorgang.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "platform/adodb/Connection.h"

/// A statement's text and the values of its markers, put together piece by piece in the order of the text.
struct Vorgangsanweisung {
  QString text;
  std::vector<adodb::Wert> werte;

  Vorgangsanweisung& operator+=(const QString& stueck) {
    text += stueck;
    return *this;
  }
  /// A piece with markers and their values.
  Vorgangsanweisung& haenge_an(const QString& stueck, const QStringList& neue) {
    text += stueck;
    werte.insert(werte.end(), neue.begin(), neue.end());
    return *this;
  }
  Vorgangsanweisung& haenge_an(const Vorgangsanweisung& andere) {
    text += andere.text;
    werte.insert(werte.end(), andere.werte.begin(), andere.werte.end());
    return *this;
  }
};

namespace vorgangsquelle {

/// The statement around `innen`, which gives the wanted records, so many at most: counts the pictures of each. The
/// bound stands here once more, so that a database doesn't count before it has chosen.
Vorgangsanweisung mit_Bildern(const Vorgangsanweisung& innen, const QString& ordnung, int hoechstens);
/// What `mit_Bildern` gives.
QList<Vorgang> lies_Vorgaenge(adodb::Connection& verbindung, const Vorgangsanweisung& anweisung);

/// The same for tables of our own with their index.
QList<Vorgang> lies_Eigene(adodb::Connection& verbindung, const Frage& frage);
std::int64_t zaehle_Eigene(adodb::Connection& verbindung, const Frage& frage);

}  // namespace vorgangsquelle
