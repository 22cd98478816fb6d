#include "platform/basic/XArrayDBObject.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"

namespace {

/// Nothing tells the two apart, also no sign of a zero and no missing text.
bool ist_derselbe(const Variant& a, const Variant& b) {
  if (a.index() != b.index() || std::holds_alternative<Objekt>(a)) return false;
  if (const auto* zahl = std::get_if<double>(&a))
    return std::bit_cast<std::int64_t>(*zahl) == std::bit_cast<std::int64_t>(std::get<double>(b));
  if (const auto* text = std::get_if<QString>(&a))
    return *text == std::get<QString>(b) && text->isNull() == std::get<QString>(b).isNull();
  return a == b;
}

}  // namespace

const Variant& XArrayDBObject::Spalte::operator[](qsizetype zeile) const {
  static const Variant Leer;
  if (zeile < gleiche_) return erster_;
  return zeile - gleiche_ < weitere_.size() ? weitere_.at(zeile - gleiche_) : Leer;
}

void XArrayDBObject::Spalte::setze(qsizetype zeile, Variant wert) {
  if (zeile == gleiche_ && weitere_.isEmpty() && (gleiche_ == 0 || ist_derselbe(wert, erster_))) {
    if (gleiche_ == 0) erster_ = std::move(wert);
    ++gleiche_;
    return;
  }
  if (zeile < gleiche_) {
    if (ist_derselbe(wert, erster_)) return;
    breite_aus(gleiche_ + weitere_.size());
  }
  if (zeile - gleiche_ >= weitere_.size()) weitere_.resize(zeile - gleiche_ + 1);
  weitere_[zeile - gleiche_] = std::move(wert);
}

void XArrayDBObject::Spalte::breite_aus(qsizetype zeilen) {
  if (gleiche_ == 0 && weitere_.size() == zeilen && weitere_.isDetached() && weitere_.capacity() > zeilen) return;
  QList<Variant> alle;
  alle.reserve(std::max(zeilen + 1, 2 * weitere_.size()));
  for (qsizetype i = 0; i < zeilen; ++i) alle.append((*this)[i]);
  weitere_.swap(alle);
  gleiche_ = 0;
}

void XArrayDBObject::Spalte::fuege_ein(qsizetype zeile) {
  weitere_.resize(weitere_.size() + 1);
  std::move_backward(weitere_.begin() + zeile, weitere_.end() - 1, weitere_.end());
  weitere_[zeile] = Empty{};
}

void XArrayDBObject::Spalte::entferne(qsizetype zeile) {
  if (zeile < gleiche_)
    --gleiche_;
  else if (zeile - gleiche_ < weitere_.size())
    weitere_.removeAt(zeile - gleiche_);
}

XArrayDBObject::~XArrayDBObject() = default;

void XArrayDBObject::ReDim(
    std::int32_t zeile_von, std::int32_t zeile_bis, std::int32_t spalte_von, std::int32_t spalte_bis) {
  const std::int64_t zeilen = std::int64_t{zeile_bis} - zeile_von + 1;
  const std::int64_t spalten = std::int64_t{spalte_bis} - spalte_von + 1;
  if (zeilen < 0 || spalten < 0) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  spalten_ = std::vector<Spalte>(static_cast<std::size_t>(spalten));
  zeilen_ = zeilen;
  zeile_von_ = zeile_von;
  spalte_von_ = spalte_von;
}

qsizetype XArrayDBObject::zeilenindex(std::int32_t zeile, qsizetype anzahl) const {
  const qsizetype index = qsizetype{zeile} - zeile_von_;
  if (index < 0 || index >= anzahl) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return index;
}

std::size_t XArrayDBObject::spaltenindex(std::int32_t spalte) const {
  const std::int64_t index = std::int64_t{spalte} - spalte_von_;
  if (index < 0 || static_cast<std::size_t>(index) >= spalten_.size())
    throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return static_cast<std::size_t>(index);
}

const Variant& XArrayDBObject::Value(std::int32_t zeile, std::int32_t spalte) const {
  const qsizetype index = zeilenindex(zeile, zeilen_);
  return spalten_[spaltenindex(spalte)][index];
}

void XArrayDBObject::Value(std::int32_t zeile, std::int32_t spalte, Variant wert) {
  const qsizetype index = zeilenindex(zeile, zeilen_);
  spalten_[spaltenindex(spalte)].setze(index, std::move(wert));
}

std::int32_t XArrayDBObject::Count(Dimension dimension) const noexcept {
  return static_cast<std::int32_t>(dimension == Dimension::Zeilen ? zeilen_ : std::ssize(spalten_));
}

std::int32_t XArrayDBObject::LowerBound(Dimension dimension) const noexcept {
  return dimension == Dimension::Zeilen ? zeile_von_ : spalte_von_;
}

std::int32_t XArrayDBObject::UpperBound(Dimension dimension) const noexcept {
  return LowerBound(dimension) + Count(dimension) - 1;
}

void XArrayDBObject::AppendRows(std::int32_t anzahl) {
  if (anzahl < 0) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  zeilen_ += anzahl;
}

// Here and below every column first gets what it needs, so that none fails where another one has changed already.
void XArrayDBObject::InsertRows(std::int32_t zeile) {
  const qsizetype index = zeilenindex(zeile, zeilen_ + 1);
  for (Spalte& spalte : spalten_) spalte.breite_aus(zeilen_);
  for (Spalte& spalte : spalten_) spalte.fuege_ein(index);
  ++zeilen_;
}

void XArrayDBObject::DeleteRows(std::int32_t zeile) {
  const qsizetype index = zeilenindex(zeile, zeilen_);
  for (Spalte& spalte : spalten_) spalte.trenne();
  for (Spalte& spalte : spalten_) spalte.entferne(index);
  --zeilen_;
}
