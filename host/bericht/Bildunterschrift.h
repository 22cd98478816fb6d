#pragma once

#include <QString>
#include <vector>

#include "host/bericht/Bericht.h"
#include "host/bericht/Seitenplan.h"

namespace seitenplan {

struct Satzzeile {
  QString text;
  Schrift schrift = Schrift::Text;
};

/// What stands below a picture: its number, and beside it the lines of its text.
class Bildunterschrift {
 public:
  /// "Bild 3" or "Anlage 1", and the picture's texts in lines for that width.
  Bildunterschrift(QString nummer, const Berichtsbild& bild, double breite);

  const QString& nummer() const noexcept { return nummer_; }
  /// Height of all that is left of it.
  double hoehe() const;
  /// Takes as many lines as that height holds, one at least; where some stay behind, the last one taken says so.
  Bildunterschrift entnimm(double hoehe);
  bool leer() const noexcept { return zeilen_.empty(); }
  /// The lines as they stand with their upper left corner at `ort`.
  void setze(QPointF ort, std::vector<Textzeile>& texte) const;

 private:
  QString nummer_;
  double einzug_ = 0;
  std::vector<Satzzeile> zeilen_;
};

}  // namespace seitenplan
