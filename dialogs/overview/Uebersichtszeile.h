#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "store/clsBildZuordnungen.h"

/// The row layout that both overview dialogs share: one assignment with its picture, of which most columns are hidden
/// and carry the record.
namespace uebersicht {

enum Spalte : std::int32_t {
  Marke = 0,
  Datei,
  Root,
  Pfad,
  Dateiname,
  Ext,
  Beschreibung,
  Drucken,
  DruckGesamteSeite,
  NeueSeite,
  AlsAnhang,
  Key1,
  Key2,
  Key3,
  Key4,
  Typ1,
  Typ2,
  AktBild,  ///< unused, as Info, DblName, Exif and ExifText are
  Info,
  Geaendert,
  Fehlt,
  Loeschen,
  DblName,
  Exif,
  ExifText,
  Zuordnung  ///< only in the list of all assignments
};

struct Spaltenentwurf {
  const char16_t* Caption;
  double Width;  ///< twips
};

/// Captions and widths of the columns 1 to 24; column 0 has another caption in each dialog.
inline constexpr std::array<Spaltenentwurf, 25> Entwurf{{{u"", 400}, {u"Datei", 1500}, {u"Root", 1500}, {u"Pfad", 1500},
    {u"Dateiname", 2000}, {u"Ext", 900}, {u"Beschreibung", 2500}, {u"Druck", 500}, {u"GSeite", 1500}, {u"NSeite", 1500},
    {u"Anhang", 1500}, {u"Referenz 1", 1500}, {u"Referenz 2", 1500}, {u"Referenz 3", 1500}, {u"Referenz 4", 1500},
    {u"Art 1", 800}, {u"Art 2", 800}, {u"AktBild", 1500}, {u"Info", 1500}, {u"Changed", 1500}, {u"NotFound", 1500},
    {u"Delete", 1500}, {u"DblName", 1500}, {u"Exif", 1500}, {u"ExifText", 1500}}};

/// A hidden and locked column of the grids as both dialogs draw it: heading in the middle on a button's face, white.
Gitterspalte entworfen(const QString& caption, double breite);
/// The column of that number.
Gitterspalte entworfen(Spalte spalte);

/// Gives a grid its columns, which `spalten` adds, and its rows; it is hidden meanwhile.
void baue(TDBGrid& gitter, const std::shared_ptr<XArrayDBObject>& zeilen, const std::function<void()>& spalten);

/// Fills a row for each record, and asks whether its file is there; the cursor of the collection moves. `nach` runs
/// after each row. Without a record the table keeps its blank row.
void fuelle(XArrayDBObject& tabelle, clsBildZuordnungen& bilder, const QString& root,
    const std::function<void(std::int32_t zeile)>& nach = {});

}  // namespace uebersicht
