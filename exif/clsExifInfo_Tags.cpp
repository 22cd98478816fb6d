#include <algorithm>

#include "exif/Tagtabelle.h"
#include "exif/clsExifInfo.h"
#include "platform/basic/Fehlerbehandlung.h"

// The asking side: one tag's value, and the table of all that the properties know.

namespace {

constexpr std::int32_t Letzte_Zeile = 150;
constexpr std::int32_t Letzte_Spalte = 4;
using Spalte = clsExifInfo::Spalte;

void Set_Cell(XArrayDBObject& table, std::int32_t row, Spalte column, Variant value) {
  table.Value(row, static_cast<std::int32_t>(column), std::move(value));
}

void Fill_Names(XArrayDBObject& table) {
  std::int32_t row = 0;
  for (const tagtabelle::Zeile& tag : tagtabelle::Zeilen) {
    Set_Cell(table, row, Spalte::Zeigen, tag.zeigen ? Variant(true) : Variant(QString()));
    Set_Cell(table, row, Spalte::Tag, tag.tag);
    Set_Cell(table, row, Spalte::Name, tag.name.toString());
    ++row;
  }
}

/// Rows without a tag get empty texts.
void Fill_Labels(XArrayDBObject& table) {
  for (std::int32_t row = 0; row <= Letzte_Zeile; ++row) {
    const QString name = CStr(table.Value(row, static_cast<std::int32_t>(Spalte::Name)));
    Set_Cell(table, row, Spalte::Beschriftung, tagtabelle::beschriftung(name).toString());
    Set_Cell(table, row, Spalte::Wert, QString());
  }
}

}  // namespace

const Exif_Entry* clsExifInfo::Find_Entry(std::int32_t tag, bool only_maker_note) const {
  // A list that was never sized can't be searched.
  if (Entries_.empty()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  const auto found = std::find_if(Entries_.begin(), Entries_.end(),
      [&](const Exif_Entry& entry) { return entry.Tag_Id == tag && (entry.Is_MakerNote || !only_maker_note); });
  return found == Entries_.end() ? nullptr : &*found;
}

Variant clsExifInfo::Tag(std::int32_t ExifTag) {
  if (!Is_Loaded_) {
    if (Pic_File.isEmpty()) return Empty{};
    Load(Pic_File);
  }
  if (ExifTag == 0) {
    const auto count = Anzahl_Entries();
    return count ? Variant(*count) : Variant(Empty{});
  }
  const Exif_Entry* entry = Find_Entry(ExifTag, false);
  if (!entry) return Empty{};
  return CStr(entry->Value).replace(u'~', u' ');
}

Variant clsExifInfo::MakerNoteTag(std::int32_t MakerTag) const {
  if (!Is_Loaded_) return Empty{};
  const Exif_Entry* entry = Find_Entry(MakerTag, true);
  return entry ? entry->Value : Variant(Empty{});
}

std::shared_ptr<XArrayDBObject> clsExifInfo::Get_ExifInfo() {
  auto table = std::make_shared<XArrayDBObject>();
  table->ReDim(0, Letzte_Zeile, 0, Letzte_Spalte);
  return fehler::still_enden([&] {
    Fill_Names(*table);
    Fill_Labels(*table);
    std::int32_t row = 0;
    for (const tagtabelle::Zeile& tag : tagtabelle::Zeilen) Set_Cell(*table, row++, Spalte::Wert, CStr(Tag(tag.tag)));
    return table;
  });
}
