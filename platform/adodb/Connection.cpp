#include "platform/adodb/Connection.h"

#include <utility>

#include "platform/adodb/Adofehler.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// The last value of a repeated keyword counts, so what is appended replaces what stood there.
QString mit_Anmeldung(QString zeichenfolge, const QString& benutzer, const QString& kennwort) {
  if (!benutzer.isEmpty()) zeichenfolge += u";User ID="_s + Verbindungszeichenfolge::als_wert(benutzer);
  if (!kennwort.isEmpty()) zeichenfolge += u";Password="_s + Verbindungszeichenfolge::als_wert(kennwort);
  return zeichenfolge;
}

std::shared_ptr<Recordset> als_Satz(Ergebnis ergebnis) {
  if (ergebnis.spalten.isEmpty()) return std::make_shared<Recordset>();
  return std::make_shared<Recordset>(std::move(ergebnis));
}

}  // namespace

Connection::Connection() = default;

Connection::Connection(std::unique_ptr<Treiber> treiber) : treiber_(std::move(treiber)), eigener_Treiber_(true) {}

Connection::~Connection() = default;

void Connection::ConnectionString(const QString& wert) {
  if (State() == adStateOpen) throw adofehler(adErrObjectOpen);
  verbindungszeichenfolge_ = wert;
}

std::int32_t Connection::State() const noexcept {
  return treiber_ && treiber_->ist_offen() ? adStateOpen : adStateClosed;
}

Leitungsschutz Connection::Schutz() const noexcept {
  return State() == adStateOpen ? treiber_->leitungsschutz() : Leitungsschutz();
}

void Connection::Open(
    const QString& verbindungszeichenfolge, const QString& benutzer, const QString& kennwort, std::int32_t options) {
  Q_UNUSED(options);
  if (State() == adStateOpen) throw adofehler(adErrObjectOpen);
  if (!verbindungszeichenfolge.isEmpty()) verbindungszeichenfolge_ = verbindungszeichenfolge;
  const QString ganze = mit_Anmeldung(verbindungszeichenfolge_, benutzer, kennwort);
  if (eigener_Treiber_) {
    if (!treiber_) throw adofehler(adErrProviderNotFound);
    treiber_->oeffne(ganze);
    return;
  }
  // A driver that could not open is not kept: the next Open may name another one.
  std::unique_ptr<Treiber> neuer = treiber_fuer(ganze);
  neuer->oeffne(ganze);
  treiber_ = std::move(neuer);
}

void Connection::Close() {
  if (State() != adStateOpen) throw adofehler(adErrObjectClosed);
  treiber_->schliesse();
  if (!eigener_Treiber_) treiber_.reset();
}

std::shared_ptr<Recordset> Connection::Execute(const QString& text, std::int32_t options) {
  Q_UNUSED(options);
  if (State() != adStateOpen) throw adofehler(adErrObjectClosed);
  return als_Satz(treiber_->fuehre_aus(text));
}

std::shared_ptr<Recordset> Connection::Execute(const QString& text, const std::vector<Wert>& werte) {
  if (State() != adStateOpen) throw adofehler(adErrObjectClosed);
  return als_Satz(treiber_->fuehre_aus(text, werte));
}

void Connection::Cancel() noexcept {
  if (treiber_) treiber_->gib_auf();
}

}  // namespace adodb
