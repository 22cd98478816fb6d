#include "tests/support/Doppel.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/Umgebung.h"

class CoreDoppel::Core final : public KVOCore {
 public:
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override {
    berichte.append({modul, prozedur, nummer, beschreibung, mitMeldung});
  }
  QList<Bericht> berichte;
};

CoreDoppel::CoreDoppel() : core_(std::make_shared<Core>()), vorher_(KVOCore::setze(core_)) {}

CoreDoppel::~CoreDoppel() {
  for (const Bericht& b : std::as_const(core_->berichte))
    ADD_FAILURE() << "unexpected report: " << b.Modul.toStdString() << "." << b.Prozedur.toStdString() << " "
                  << b.Nummer << " " << b.Beschreibung.toStdString();
  KVOCore::setze(vorher_);
}

QList<CoreDoppel::Bericht> CoreDoppel::hole() {
  return std::exchange(core_->berichte, {});
}

class MeldungsDoppel::Fenster final : public oberflaeche::Meldungsfenster {
 public:
  struct Erwartung {
    oberflaeche::Meldung meldung;
    oberflaeche::Antwort antwort;
    std::function<void()> dabei;
  };
  oberflaeche::Antwort zeige(const oberflaeche::Meldung& meldung) override {
    if (erwartet.isEmpty()) {
      ADD_FAILURE() << "unexpected box: " << meldung.Titel.toStdString() << ": " << meldung.Text.toStdString();
      return meldung.Auswahl == oberflaeche::Knoepfe::OK ? oberflaeche::Antwort::OK : oberflaeche::Antwort::Nein;
    }
    const Erwartung erwartung = erwartet.takeFirst();
    EXPECT_EQ(meldung.Text, erwartung.meldung.Text);
    EXPECT_EQ(meldung.Titel, erwartung.meldung.Titel);
    EXPECT_EQ(meldung.Bild, erwartung.meldung.Bild);
    EXPECT_EQ(meldung.Auswahl, erwartung.meldung.Auswahl);
    if (erwartung.dabei) erwartung.dabei();
    return erwartung.antwort;
  }
  QList<Erwartung> erwartet;
};

MeldungsDoppel::MeldungsDoppel() : fenster_(std::make_shared<Fenster>()), vorher_(oberflaeche::setze(fenster_)) {}

MeldungsDoppel::~MeldungsDoppel() {
  for (const auto& e : std::as_const(fenster_->erwartet))
    ADD_FAILURE() << "box never came: " << e.meldung.Text.toStdString();
  oberflaeche::setze(vorher_);
}

void MeldungsDoppel::erwarte(
    const oberflaeche::Meldung& meldung, oberflaeche::Antwort antwort, std::function<void()> dabei) {
  fenster_->erwartet.append({meldung, antwort, std::move(dabei)});
}
