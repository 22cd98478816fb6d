#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "component/Zuordnungsweg.h"
#include "component/weg/Pruefung.h"
#include "store/Dialogspur.h"

namespace weg {

/// One picture of a save: what is wanted of it, and how far it has come.
struct Posten {
  /// `Hinweis`: nothing is to be written, something is to be said. `Ohne_Datei`: waits for its copy and is in no
  /// collection. `Offen` waits for the table. `Aufgegeben` can't be written, which is told.
  enum class Zustand { Hinweis, Ohne_Datei, Offen, Erledigt, Aufgegeben };

  Wunsch wunsch;
  Zustand zustand = Zustand::Offen;
  std::shared_ptr<clsBilderSpeicher> satz;
  /// What the dialog left of it, or none; belongs to the collection.
  const Bildspur* spur = nullptr;
  /// Written for its place alone.
  bool nachgefuehrt = false;
  /// Rows of its identity stand more than once in the record: no statement tells them apart, so they are written
  /// together.
  bool in_Gruppe = false;
  /// The new row is in the table, but not yet with all its values.
  bool vorhanden = false;
  /// The table was told the name that the file has.
  bool Name_nachgefuehrt = false;
  /// To be said once the row is stored.
  QString nachtrag;
  /// Its text file is still to be written; why it is not.
  bool text_fehlt = false;
  QString textgrund;
  /// Whether the table took it could not be asked.
  bool ungewiss = false;
  /// Its last statement was answered with a failure, or not at all.
  bool abgelehnt = false;
  /// Why it waits.
  QString grund;
  /// What is to be said of it, and whether the user has to act on it.
  QStringList hinweise;
  bool sagen = false;

  QString name() const;
  /// The table is asked whether it holds this row, as it should or should not.
  bool wird_geprueft() const noexcept { return zustand == Zustand::Offen || zustand == Zustand::Erledigt; }
  bool wartet() const noexcept { return zustand == Zustand::Offen || zustand == Zustand::Ohne_Datei || text_fehlt; }
  void sage(const QString& hinweis) {
    hinweise.append(hinweis);
    sagen = true;
  }
};

/// What a save is told.
struct Auftrag {
  QString wurzel;
  /// With all its parts.
  Zuordnungsweg::Vorgang vorgang;
  /// Records whose files were missing before the dialog opened.
  std::vector<const clsBilderSpeicher*> fehlten;
  /// Questions are asked and messages shown, and rows that are written only for their place are written too.
  bool mit_Benutzer = true;
};

/// Brings the collection into the form in which it is written, and lists what is to be written of it. Afterwards only
/// the rows that FKT_SpeichernBilder is to write are flagged.
std::vector<Posten> bereite_vor(clsBildZuordnungen& bilder, const Auftrag& auftrag);

}  // namespace weg
