#pragma once

#include <cstdint>

/// Columns of the assignment dialog's working table: one row a picture, in the order of the strip.
namespace spalte {

enum Spalte : std::int32_t {
  Gespeichert = 0,  ///< the row stands in the collection; Empty in rows added from the search
  VollerPfad = 1,
  Root = 2,
  Pfad = 3,      ///< below the root; of a new row the picture's present directory
  Bildname = 4,  ///< as edited
  BildExt = 5,
  Beschreibung = 6,
  Drucken = 7,
  DruckGesamteSeite = 8,
  NeueSeite = 9,
  AlsAnhang = 10,
  Key1 = 11,
  Key2 = 12,
  Key3 = 13,
  Key4 = 14,
  Typ1 = 15,
  Typ2 = 16,
  Aktuell = 17,
  BildInfo = 18,        ///< content of the picture's text file
  ZeileGeaendert = 19,  ///< to be written back on saving
  DateiFehlt = 20,
  Entfernen = 21,
  NameDoppelt = 22,
  HatExif = 23,
  ExifKennung = 24,
  OriginalName = 25,  ///< before the first edit; empty until then
  NameGeaendert = 26,
  NeuAusSuche = 27,
  SortIndex = 28,
  Letzte = SortIndex,
};

}  // namespace spalte
