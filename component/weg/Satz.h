#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

#include "component/Zuordnungsweg.h"
#include "store/clsBilderSpeicher.h"

namespace weg {

/// A row as the table holds it, or is to hold it.
struct Stand {
  clsBilderSpeicher satz;
  std::int64_t platz = 0;
};

/// What the table keeps of a record that is written to it: "-" for an empty part of the identity, long values cut.
Stand wie_gespeichert(const clsBilderSpeicher& satz);
/// The eight columns that tell a row, in the form in which the table compares them.
QString kennung(const clsBilderSpeicher& satz);
/// None of the eight is empty: a statement on this row meets no other one.
bool hat_ganze_Kennung(const clsBilderSpeicher& satz);
/// What differs, in German words for the user; empty where nothing does. The two have one identity.
QStringList abweichungen(const Stand& soll, const Stand& ist);

/// Keys and types of a record.
template <class Vorgang>
auto teile(Vorgang& vorgang) {
  return std::array{&vorgang.Key1, &vorgang.Key2, &vorgang.Key3, &vorgang.Key4, &vorgang.Typ1, &vorgang.Typ2};
}
/// "-" for each empty part.
Zuordnungsweg::Vorgang mit_Strichen(Zuordnungsweg::Vorgang vorgang);

}  // namespace weg
