#pragma once

#include <QList>
#include <QString>

#include "host/betrieb/Namen.h"

/// Copies of pictures in the picture tree that are not assigned yet. What is not kept until the end of its life is
/// removed again, so that a failure leaves no file behind that nobody points to.
class Bildkopien {
 public:
  Bildkopien() = default;
  ~Bildkopien();
  Q_DISABLE_COPY_MOVE(Bildkopien)

  /// Copies a picture, and the text file beside it when there is one, into a folder under a new name. Paths of the
  /// table. Nothing is replaced. A failure ends with Ausgang::Datei.
  void kopiere(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu);
  /// The copies of that name stay.
  void behalte(const namen::Bilddatei& neu);

 private:
  struct Kopie {
    namen::Bilddatei bild;
    QString pfad;
  };
  QList<Kopie> kopien_;
};
