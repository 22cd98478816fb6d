#pragma once

#include <QString>
#include <QStringList>

/// What a data folder holds that is made now.
enum class Anfangsbestand { Fragen, Beispiele, Leer };

/// What the program was called with.
struct Wirtsoptionen {
  /// Connect string, or empty for the database in the data folder.
  QString verbindung;
  /// Picture root as the user gave it, or empty.
  QString bilder;
  /// The program's own folder as the user gave it; the one below the user's data home unless told otherwise.
  QString datenordner;
  /// The record that is chosen at the start, by its number, or empty.
  QString vorgang;
  /// Folder for the pictures of a tour in place of the program's usual run, or empty.
  QString rundgang;
  /// What the first start makes.
  Anfangsbestand anfang = Anfangsbestand::Beispiele;
  bool hilfe = false;
  /// The database of the data folder, whatever was opened last.
  bool eingebettet = false;
  /// The call itself names the data folder.
  bool datenordner_genannt = false;
  /// The connection is kept for the next start.
  bool merken = false;
  /// Minutes that what came into the picture tree is safe from a clearing. No call names them: a tour and tests clear
  /// what they have just made.
  int schonfrist = 60;
};

namespace wirtsoptionen {

/// Reads the arguments, without the program's own name. A wrong call ends with Abbruch, Ausgang::Aufruf.
Wirtsoptionen lies(const QStringList& argumente);
QString hilfetext();
/// The data folder where the call names none, as a path of this machine.
QString ueblicher_Datenordner();

}  // namespace wirtsoptionen
