#include "host/fenster/dialog/Mitschrift.h"

using namespace oberflaeche;

class Mitschrift::Fenster final : public Meldungsfenster {
 public:
  std::shared_ptr<Meldungsfenster> eigentliches;
  Meldung letzte;

  Antwort zeige(const Meldung& meldung) override {
    letzte = meldung;
    return eigentliches->zeige(meldung);
  }
};

Mitschrift::Mitschrift() : fenster_(std::make_shared<Fenster>()) {
  vorher_ = setze(std::shared_ptr<Meldungsfenster>(fenster_));
  fenster_->eigentliches = vorher_;
}

Mitschrift::~Mitschrift() {
  setze(vorher_);
}

QString Mitschrift::letzte() const {
  return fenster_->letzte.Text.simplified();
}

bool Mitschrift::kritisch() const {
  return fenster_->letzte.Bild == Symbol::Kritisch;
}
