#include "platform/adodb/Recordset.h"

#include <limits>
#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Connection.h"

namespace adodb {

namespace {

Variant als_variant(const Wert& wert) {
  if (const auto* text = std::get_if<QString>(&wert)) return *text;
  if (const auto* zahl = std::get_if<double>(&wert)) return *zahl;
  const auto* ganz = std::get_if<std::int64_t>(&wert);
  if (!ganz) return Null{};
  if (*ganz < std::numeric_limits<std::int32_t>::min() || *ganz > std::numeric_limits<std::int32_t>::max())
    return static_cast<double>(*ganz);
  return static_cast<std::int32_t>(*ganz);
}

}  // namespace

const QString& Field::Name() const {
  return satz_->Spalten().at(spalte_);
}

Variant Field::Value() const {
  return satz_->Value(spalte_);
}

QString Field::Text() const {
  return satz_->Text(spalte_);
}

Recordset::Recordset(Ergebnis ergebnis) : ergebnis_(std::move(ergebnis)), offen_(true) {}

std::int32_t Recordset::State() const noexcept {
  return offen_ ? adStateOpen : adStateClosed;
}

void Recordset::pruefe_offen() const {
  if (!offen_) throw adofehler(adErrObjectClosed);
}

bool Recordset::Eof() const {
  pruefe_offen();
  return zeile_ >= ergebnis_.zeilen();
}

void Recordset::MoveNext() {
  if (Eof()) throw adofehler(adErrNoCurrentRecord);
  ++zeile_;
}

void Recordset::Close() {
  pruefe_offen();
  ergebnis_ = Ergebnis();
  zeile_ = 0;
  offen_ = false;
}

Field Recordset::Fields(const QString& name) const {
  return Field(*this, Spalte(name));
}

std::int32_t Recordset::Spalte(const QString& name) const {
  pruefe_offen();
  for (qsizetype i = 0; i < ergebnis_.spalten.size(); ++i)
    if (ergebnis_.spalten.at(i).compare(name, Qt::CaseInsensitive) == 0) return static_cast<std::int32_t>(i);
  throw adofehler(adErrItemNotFound);
}

const QStringList& Recordset::Spalten() const {
  pruefe_offen();
  return ergebnis_.spalten;
}

const Wert& Recordset::zelle(std::int32_t spalte) const {
  pruefe_offen();
  const auto breite = static_cast<std::size_t>(ergebnis_.spalten.size());
  if (spalte < 0 || static_cast<std::size_t>(spalte) >= breite) throw adofehler(adErrItemNotFound);
  const std::size_t stelle = zeile_ * breite + static_cast<std::size_t>(spalte);
  if (stelle >= ergebnis_.werte.size()) throw adofehler(adErrNoCurrentRecord);
  return ergebnis_.werte[stelle];
}

QString Recordset::Text(std::int32_t spalte) const {
  const Wert& wert = zelle(spalte);
  if (const auto* text = std::get_if<QString>(&wert)) return *text;
  return mit_Leertext(als_variant(wert));
}

Variant Recordset::Value(std::int32_t spalte) const {
  return als_variant(zelle(spalte));
}

}  // namespace adodb
