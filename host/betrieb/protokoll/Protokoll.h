#pragma once

#include <QString>
#include <cstdint>

#include "host/betrieb/vorgang/Datensatz.h"
#include "store/Bildereignis.h"

/// One thing that was done, for the journal. No text of the user's and no password has a place in it.
struct Protokolleintrag {
  enum class Tat { Zuordnen, Entfernen, Umbenennen, Drehen, Aufraeumen, Zurueckholen, EndgueltigLoeschen };
  Tat tat = Tat::Zuordnen;
  bool gelungen = false;
  /// Folder and name below the picture root, or a whole path.
  QString bild = {};
  /// Parts that are "-" or empty are left out.
  Datensatz satz = {};
  /// The picture's place after a rename.
  QString neu = {};
  /// The run of the Papierkorb.
  QString lauf = {};
};

/// The journal of what becomes of pictures and their assignments: one line of JSON each in a file of the data folder.
/// It outlives the records. While one lives, what the component and this program do is written; a failure to write
/// never hinders the work and is said once on standard error.
class Protokoll {
 public:
  /// Bytes of the file; then it becomes the former one, and that one goes.
  static constexpr std::int64_t Grenze = 5'000'000;

  /// `ordner` is the data folder, which is made with the first line, or empty for none; `wurzel` the picture root.
  /// Paths of the table.
  Protokoll(QString ordner, QString wurzel);
  ~Protokoll();
  Q_DISABLE_COPY_MOVE(Protokoll)

  /// Writes to the journal that was opened last; without one nothing happens.
  static void schreibe(const Protokolleintrag& eintrag);

  /// The data folder of a connection: the folder of an embedded database, otherwise the program's own, `sonst`.
  static QString ordner(const QString& verbindung, const QString& sonst);
  /// The file of a data folder, and the one before it.
  static QString datei(const QString& ordner) { return ordner + QStringLiteral("\\protokoll.jsonl"); }
  static QString vorige(const QString& ordner) { return ordner + QStringLiteral("\\protokoll.1.jsonl"); }
  /// A file name of the journal.
  static bool ist_Datei(const QString& name);

  /// The word of the line, and the one for people.
  static QString kennung(Protokolleintrag::Tat tat);
  static QString worte(const QString& kennung);

 private:
  void hoere(const Bildereignis& ereignis);
  void haenge_an(const Protokolleintrag& eintrag);
  QString unter_der_Wurzel(const QString& pfad) const;

  QString ordner_;
  QString wurzel_;
  bool ausfall_gesagt_ = false;
};
