#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>

#include "host/betrieb/Namen.h"

/// Copies of pictures in the picture tree that are not assigned yet. What is not kept until the end of its life is
/// removed again, so that a failure leaves no file behind that nobody points to.
class Bildkopien {
 public:
  /// Gets a line for the user about each copy that is removed, or that can't be. None is silent.
  using Melder = std::function<void(const QString&)>;

  explicit Bildkopien(Melder melde = {}) : melde_(std::move(melde)) {}
  ~Bildkopien();
  Q_DISABLE_COPY_MOVE(Bildkopien)

  /// Copies a picture, and the text file beside it when there is one, into a folder under a new name. Paths of the
  /// table. Nothing is replaced. A failure ends with Ausgang::Datei. Gives the copy of the text file, or nothing.
  QString kopiere(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu);
  /// The same with another content than the source's; time stamp and rights are the source's. An empty `quelle` stands
  /// for none.
  QString schreibe(const QByteArray& inhalt, const QString& quelle, const QString& ordner, const namen::Bilddatei& neu);
  /// The copies of that name stay.
  void behalte(const namen::Bilddatei& neu);
  /// Removes the copies of that name at once.
  void verwirf(const namen::Bilddatei& neu);

 private:
  struct Kopie {
    namen::Bilddatei bild;
    QString pfad;
  };
  QString kopiere_Text(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu);
  void entferne(const Kopie& kopie) const;

  Melder melde_;
  QList<Kopie> kopien_;
};
