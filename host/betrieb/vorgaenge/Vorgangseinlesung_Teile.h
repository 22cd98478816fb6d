#pragma once

#include <QScopeGuard>
#include <QStringList>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"

/// What the sources of Vorgangseinlesung share.
namespace einlesung {

/// The temporary tables.
extern const QStringList Tabellen;

/// A failure of the database ends with Abbruch and words.
template <class Anweisung>
void geschuetzt(Anweisung&& anweisung) {
  if (const auto ausfall = versuche_Datenbank(anweisung))
    throw Abbruch(Ausgang::Datenbank, QStringLiteral("Die Vorgänge sind nicht einzulesen: ") + ausfall->worte);
}

}  // namespace einlesung
