#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "store/Bilddatei.h"

/// A copy that was taken in, as it was then.
struct Aufgenommenes {
  Bilddatei bild;
  /// Folder below the picture root.
  QString pfad;
  QByteArray summe;
  /// Of the text file beside it; empty for none.
  QByteArray textsumme;
};

/// What became of pictures that were dropped on a record or pasted.
struct Aufnahmeergebnis {
  /// So many were asked for.
  int alle = 0;
  std::vector<Aufgenommenes> bilder;
  /// Pictures that the record had already and that the user did not want again.
  int uebersprungene = 0;
  /// German sentences, one for each file that was not taken in, and why.
  QStringList probleme;
  /// What is to be said of pictures that were taken in.
  QStringList hinweise;
  /// The record's folder was made for them.
  bool Ordner_neu = false;
  /// The user stopped it: the rest was not tried.
  bool angehalten = false;

  /// In one line, for a status bar; the problems in full stand beside it.
  QString text() const;
};
