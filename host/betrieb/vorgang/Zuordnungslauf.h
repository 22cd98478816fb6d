#pragma once

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/vorgang/Vorgang.h"

/// The dialog of a walk; none is the component's own.
using Zuordnungsdialog = Zuordnungsweg::Dialog;
using Laufergebnis = Zuordnungsweg::Ergebnis;

/// The component's road of an assignment for the records and the picture tree of this program.
class Zuordnungslauf {
 public:
  Zuordnungslauf(Arbeitsplatz& platz, Zuordnungsdialog dialog) : platz_(platz), dialog_(std::move(dialog)) {}

  /// Whether new pictures are set upright; on at first.
  void aufrecht(bool wert) noexcept { aufrecht_ = wert; }
  /// Walks the whole road. With `nur_Anzeige` nothing is written. Every failure has been told when it returns.
  Laufergebnis gehe(const Vorgang& vorgang, bool nur_Anzeige);

 private:
  Arbeitsplatz& platz_;
  Zuordnungsdialog dialog_;
  bool aufrecht_ = true;
};
