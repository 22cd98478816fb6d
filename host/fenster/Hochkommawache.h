#pragma once

#include <memory>

#include "platform/host/Oberflaeche.h"

/// Stands in front of the program's message boxes for as long as it lives. The component's overviews ask before they
/// write, and then put the values that they show into statements as they are: a number that the user typed, a supplier
/// from the host's tables, the keys of other programs' rows. Where one holds an apostrophe, the user is told so in
/// place of the question, which counts as answered with No: nothing is sent, and the overview stays open.
class Hochkommawache {
 public:
  Hochkommawache();
  ~Hochkommawache();
  Q_DISABLE_COPY_MOVE(Hochkommawache)

 private:
  class Fenster;
  std::shared_ptr<oberflaeche::Meldungsfenster> vorher_;
};
