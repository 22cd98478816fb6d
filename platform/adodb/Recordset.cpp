#include "platform/adodb/Recordset.h"

#include <limits>
#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Connection.h"

namespace adodb {
namespace {

Variant als_Variant(const Wert& wert) {
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

Recordset::Recordset(Ergebnis ergebnis)
    : ergebnis_(std::move(ergebnis)), letzte_(static_cast<std::size_t>(ergebnis_.spalten.size())), offen_(true) {}

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

std::int32_t Recordset::RecordCount() const {
  pruefe_offen();
  return static_cast<std::int32_t>(ergebnis_.zeilen());
}

void Recordset::MoveNext() {
  if (Eof()) throw adofehler(adErrNoCurrentRecord);
  ++zeile_;
}

void Recordset::Close() {
  pruefe_offen();
  ergebnis_ = Ergebnis();
  letzte_.clear();
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

/// Place of the current record's value in the result.
std::size_t Recordset::stelle(std::int32_t spalte) const {
  pruefe_offen();
  const auto breite = static_cast<std::size_t>(ergebnis_.spalten.size());
  if (spalte < 0 || static_cast<std::size_t>(spalte) >= breite) throw adofehler(adErrItemNotFound);
  const std::size_t stelle = zeile_ * breite + static_cast<std::size_t>(spalte);
  if (stelle >= ergebnis_.werte.size()) throw adofehler(adErrNoCurrentRecord);
  return stelle;
}

QString Recordset::Text(std::int32_t spalte) const {
  const std::size_t nummer = stelle(spalte);
  if (!ergebnis_.werte.ist_text(nummer)) return mit_Leertext(als_Variant(ergebnis_.werte[nummer]));
  Letzter& letzter = letzte_[static_cast<std::size_t>(spalte)];
  const std::int64_t ort = ergebnis_.werte.ort(nummer);
  const QStringView zeichen = ergebnis_.werte.zeichen(nummer);
  if (letzter.ort != ort || letzter.laenge != zeichen.size()) {
    letzter = {ort, zeichen.size(), QString()};
    return als_Text(zeichen);
  }
  if (letzter.text.isNull()) letzter.text = als_Text(zeichen);
  return letzter.text;
}

Variant Recordset::Value(std::int32_t spalte) const {
  const std::size_t nummer = stelle(spalte);
  if (ergebnis_.werte.ist_text(nummer)) return Text(spalte);
  return als_Variant(ergebnis_.werte[nummer]);
}

}  // namespace adodb
