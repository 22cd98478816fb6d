#pragma once

#include <QImage>
#include <QSize>
#include <memory>

#include "host/bericht/Bericht.h"
#include "host/betrieb/vorgang/Vorschaulader.h"
#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"

/// Loads a report's pictures through the component, as the strip shows them. Tells the user nothing: what is wrong with
/// a picture stands in the report.
class Bildladung {
 public:
  /// The picture, or none where it is missing or unreadable. It stands alone.
  std::shared_ptr<const Bild> lade(const Berichtsbild& bild);
  /// Reads the header alone: sets the size, or the reason why there is none.
  void miss(Berichtsbild& bild);
  /// Pixels of the picture at most that large, in its own proportions and never enlarged; null when it can't be read.
  QImage pixel(const Berichtsbild& bild, QSize hoechstens);

  /// Such a call of `pixel` will come: it is made ready beside what is done meanwhile.
  void kuendige_an(const Berichtsbild& bild, QSize hoechstens);
  /// The picture will be loaded and asked for pixels of exactly that size.
  void kuendige_genau_an(const Berichtsbild& bild, QSize groesse);
  /// What was announced will not come after all.
  void widerrufe() { vorlauf_.gib_auf(); }

 private:
  Vorschaulader lader_;
  bildvorlauf::Vorlauf vorlauf_;
};
