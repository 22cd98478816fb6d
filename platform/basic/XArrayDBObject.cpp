#include "platform/basic/XArrayDBObject.h"

#include "platform/basic/Laufzeitfehler.h"

XArrayDBObject::~XArrayDBObject() = default;

void XArrayDBObject::ReDim(
    std::int32_t zeile_von, std::int32_t zeile_bis, std::int32_t spalte_von, std::int32_t spalte_bis) {
  const std::int64_t zeilen = std::int64_t{zeile_bis} - zeile_von + 1;
  const std::int64_t spalten = std::int64_t{spalte_bis} - spalte_von + 1;
  if (zeilen < 0 || spalten < 0) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  std::vector<Zeile> neu(static_cast<std::size_t>(zeilen), Zeile(static_cast<std::size_t>(spalten)));
  zeilen_ = std::move(neu);
  zeile_von_ = zeile_von;
  spalte_von_ = spalte_von;
  spalten_ = static_cast<std::size_t>(spalten);
}

std::size_t XArrayDBObject::zeilenindex(std::int32_t zeile, std::size_t anzahl) const {
  const std::int64_t index = std::int64_t{zeile} - zeile_von_;
  if (index < 0 || static_cast<std::size_t>(index) >= anzahl) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return static_cast<std::size_t>(index);
}

std::size_t XArrayDBObject::spaltenindex(std::int32_t spalte) const {
  const std::int64_t index = std::int64_t{spalte} - spalte_von_;
  if (index < 0 || static_cast<std::size_t>(index) >= spalten_) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return static_cast<std::size_t>(index);
}

const Variant& XArrayDBObject::Value(std::int32_t zeile, std::int32_t spalte) const {
  return zeilen_[zeilenindex(zeile, zeilen_.size())][spaltenindex(spalte)];
}

void XArrayDBObject::Value(std::int32_t zeile, std::int32_t spalte, Variant wert) {
  zeilen_[zeilenindex(zeile, zeilen_.size())][spaltenindex(spalte)] = std::move(wert);
}

std::int32_t XArrayDBObject::Count(Dimension dimension) const noexcept {
  return static_cast<std::int32_t>(dimension == Dimension::Zeilen ? zeilen_.size() : spalten_);
}

std::int32_t XArrayDBObject::LowerBound(Dimension dimension) const noexcept {
  return dimension == Dimension::Zeilen ? zeile_von_ : spalte_von_;
}

std::int32_t XArrayDBObject::UpperBound(Dimension dimension) const noexcept {
  return LowerBound(dimension) + Count(dimension) - 1;
}

void XArrayDBObject::AppendRows(std::int32_t anzahl) {
  if (anzahl < 0) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  zeilen_.insert(zeilen_.end(), static_cast<std::size_t>(anzahl), Zeile(spalten_));
}

void XArrayDBObject::InsertRows(std::int32_t zeile) {
  const auto index = static_cast<std::ptrdiff_t>(zeilenindex(zeile, zeilen_.size() + 1));
  zeilen_.insert(zeilen_.begin() + index, Zeile(spalten_));
}

void XArrayDBObject::DeleteRows(std::int32_t zeile) {
  const auto index = static_cast<std::ptrdiff_t>(zeilenindex(zeile, zeilen_.size()));
  zeilen_.erase(zeilen_.begin() + index);
}
