#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <vector>

#include "store/clsBilderSpeicher.h"

/// What came of one step on a file.
struct Dateischritt {
  enum class Stand { Nicht_noetig, Getan, Gescheitert };
  Stand stand = Stand::Nicht_noetig;
  /// German words of the failure.
  QString grund;

  bool operator==(const Dateischritt&) const = default;
  bool gescheitert() const noexcept { return stand == Stand::Gescheitert; }
};

/// Name and folder, below the root, that a picture had before; the table may still hold them.
struct Fruehere {
  QString name;
  QString pfad;
  bool operator==(const Fruehere&) const = default;
};

/// One row of the assignment dialog's strip: what the user wanted of the picture, and what came of it on the disk.
struct Bildspur {
  /// The row's record in the collection; none while the row stands in the dialog alone: a new picture that is not saved
  /// yet, or whose copy failed.
  std::shared_ptr<clsBilderSpeicher> satz;
  /// For a new picture whose copy failed: the record that it gets once the copy succeeds, with name, texts, marks and
  /// place; it is in no collection. None otherwise.
  std::shared_ptr<clsBilderSpeicher> ohne_Datei;

  /// Whole path of the file that a new picture was copied from, and its size in bytes at that time; empty and -1 for
  /// others.
  QString quelle;
  std::int64_t groesse = -1;
  /// The names that a stored picture had in this dialog before its present one, oldest first.
  std::vector<Fruehere> fruehere;
  /// A new name that the user asked for and that the picture did not get; empty where it has what was asked for.
  QString abgelehnter_Name;
  /// The Drucktext as typed, where it had to be cut for the table; empty otherwise.
  QString ungekuerzter_Drucktext;
  /// Content of the text file that the user wanted; empty where none was to be written.
  QString bildinfo;

  Dateischritt kopie;
  Dateischritt umbenennung;
  Dateischritt text;

  /// Name and folder of the picture's file as far as the dialog knows; empty for a new row.
  QString dateiname;
  QString dateipfad;
  /// Its folder could be listed when the file was looked for.
  bool ordner_lesbar = true;

  /// The user marked the picture for removal; a file that is merely missing does not count.
  bool vorgemerkt = false;
  /// The removal mark of the last save that the user asked for.
  bool bestaetigt_vorgemerkt = false;

  bool operator==(const Bildspur&) const = default;
};

/// What opens the dialog with all that was not saved. The dialog keeps its rows in a class of its own.
struct Dialogstand {
  virtual ~Dialogstand() = default;
  /// File names of the pictures that are new or differ from their records; empty where only the order does.
  QStringList betroffene;
};

/// What the assignment dialog leaves beside the collection, for whoever walks the road of a host. It is there after a
/// dialog that could change something.
struct Dialogspur {
  /// One for each row of the strip, in its order.
  std::vector<Bildspur> bilder;
  /// The dialog closed although its changes were not saved and the user did not refuse to save them.
  bool ungespeichert = false;
  /// Then: what opens it again as it was. The next dialog over this collection takes it and opens with it.
  std::shared_ptr<Dialogstand> stand;
};
