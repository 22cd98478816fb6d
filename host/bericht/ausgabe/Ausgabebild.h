#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

/// What the user chooses of the pictures that are handed out.
struct Ausgabewahl {
  /// Each picture's texts as a file beside it.
  bool texte = false;
  /// Only those that are marked to be printed.
  bool nur_gekennzeichnete = false;
  /// Place data (GPS) goes with them.
  bool ort = false;
};

/// A picture of a record as it is to be handed out, with the text beside it.
struct Ausgabebild {
  /// As the user knows it: its folder below the picture root and its name.
  QString genannt;
  /// Path of the table; empty where the row leads out of the picture root.
  QString quelle;
  /// Name in the target, as "01_Bad.jpg".
  QString name;
  /// Empty where there is no text.
  QString textname;
  /// In UTF-8, its lines ending as on other systems.
  QByteArray text;
};

/// A picture that was not handed out, and why in German words.
struct Ausgelassenes {
  QString name;
  QString grund;
};

class clsBildZuordnungen;

namespace ausgabebilder {

/// The pictures of a record in its order, numbered by it. The texts are read here; one that can't be read ends with
/// Abbruch, Ausgang::Datei. `wurzel` is the picture root without a closing backslash.
std::vector<Ausgabebild> waehle(clsBildZuordnungen& store, const QString& wurzel, const Ausgabewahl& wahl);
/// How many of the record's pictures would be handed out.
int anzahl(clsBildZuordnungen& store, const Ausgabewahl& wahl);

}  // namespace ausgabebilder
