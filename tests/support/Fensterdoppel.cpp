#include "tests/support/Fensterdoppel.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

class Fensterdoppel::Core final : public KVOCore {
 public:
  Core(Fensterdoppel& doppel, std::shared_ptr<KVOCore>& darunter) : doppel_(doppel), darunter_(darunter) {}
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override {
    darunter_->FehlerMelden(modul, prozedur, nummer, beschreibung, mitMeldung);
  }
  void FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster) override {
    doppel_.wiederhergestellt = anwendung + u'/' + fenster.Fenstername();
    if (doppel_.lage) fenster.Lage(*doppel_.lage);
    if (doppel_.beim_Wiederherstellen) doppel_.beim_Wiederherstellen();
  }
  void FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster) override {
    doppel_.gespeichert = anwendung + u'/' + fenster.Fenstername();
    doppel_.gespeicherte_Lage = fenster.Lage();
  }

 private:
  Fensterdoppel& doppel_;
  std::shared_ptr<KVOCore>& darunter_;
};

class Fensterdoppel::Pumpe final : public oberflaeche::Ereignispumpe {
 public:
  explicit Pumpe(Fensterdoppel& doppel) : doppel_(doppel) {}
  void verarbeite_anstehende() override {
    const QScopedValueRollback pumpt(doppel_.pumpt, true);
    QCoreApplication::processEvents();
  }

 private:
  Fensterdoppel& doppel_;
};

Fensterdoppel::Fensterdoppel() : pumpe_vorher_(oberflaeche::setze(std::make_shared<Pumpe>(*this))) {
  vorher_ = KVOCore::setze(std::make_shared<Core>(*this, vorher_));
}

Fensterdoppel::~Fensterdoppel() {
  KVOCore::setze(vorher_);
  oberflaeche::setze(pumpe_vorher_);
}
