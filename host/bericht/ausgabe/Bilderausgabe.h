#pragma once

#include <QString>
#include <vector>

#include "host/bericht/ausgabe/Ausgabebild.h"
#include "host/bericht/ausgabe/Bildleser.h"
#include "store/clsBildZuordnungen.h"

/// What became of pictures that were to be handed out.
struct Ausgabeergebnis {
  /// Folder or file of this machine.
  QString ziel;
  /// So many were written.
  int bilder = 0;
  std::vector<Ausgelassenes> ausgelassene;
  /// The user stopped it: nothing is left of it.
  bool angehalten = false;

  bool vollstaendig() const noexcept { return ausgelassene.empty() && !angehalten; }
  /// In one line; those that were left out stand beside it.
  QString text() const;
};

/// Hands out the pictures of a record as they came, in the order of the strip: "01_Bad.jpg", "02_Keller.jpg" and so on
/// in a folder or a ZIP file. Nothing that is there already is replaced.
class Bilderausgabe {
 public:
  /// The record's pictures, and their root without a closing backslash.
  Bilderausgabe(clsBildZuordnungen& store, QString wurzel, const Ausgabewahl& wahl)
      : store_(store), wurzel_(std::move(wurzel)), wahl_(wahl) {}

  /// To a path of the table: a ZIP file where it ends so, a folder otherwise, which is made where it is missing. A
  /// picture that can't be read is left out. Where a name is taken, nothing is written; what fails otherwise, or is
  /// stopped, is taken back. A failure ends with Abbruch, Ausgang::Datei, and without a picture with
  /// Ausgang::Teilweise.
  Ausgabeergebnis gib_aus(const QString& angabe, const Bildleser::Fortschritt& fortschritt = {});

 private:
  template <class Ziel>
  void schreibe(Ziel& ziel, const std::vector<Ausgabebild>& bilder, Bildleser& leser);

  clsBildZuordnungen& store_;
  QString wurzel_;
  Ausgabewahl wahl_;
};
