#pragma once

#include <memory>

#include "platform/host/Oberflaeche.h"

/// While one lives, message boxes stay away; a question is answered with what loses nothing. For what the user has not
/// asked for by itself, and where what failed is told at its place.
class Stille {
 public:
  Stille() : vorher_(oberflaeche::setze(std::make_shared<Stumm>())) {}
  ~Stille() { oberflaeche::setze(vorher_); }
  Q_DISABLE_COPY_MOVE(Stille)

 private:
  class Stumm final : public oberflaeche::Meldungsfenster {
   public:
    oberflaeche::Antwort zeige(const oberflaeche::Meldung& meldung) override {
      return meldung.Auswahl == oberflaeche::Knoepfe::OK ? oberflaeche::Antwort::OK : oberflaeche::Antwort::Nein;
    }
  };
  std::shared_ptr<oberflaeche::Meldungsfenster> vorher_;
};
