#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "platform/files/wirt/Namenswechsel.h"
#include "store/Dialogspur.h"
#include "store/clsBildZuordnungen.h"

/// What came of renaming a stored picture with all its assignments.
struct Umbenennung {
  explicit Umbenennung(Namenswechsel w) : wechsel(std::move(w)) {}

  /// For the caller to end: the file still has its old name too, where its folder lets it.
  Namenswechsel wechsel;
  bool datei = false;
  /// The table took the name; false also where the file was not renamed.
  bool tabelle = false;
  /// German words of the failure, of the file first.
  QString grund;
};

/// What the dialog and the road of a host do with a collection beyond its published members. Records are told apart as
/// objects.
class Sammlungszugriff {
 public:
  /// Brings the rows into the order of `folge`, each with its record and its flags. Rows that are not named follow
  /// behind, in their order. The cursor is -1 afterwards.
  static void ordne(clsBildZuordnungen& sammlung, const std::vector<const clsBilderSpeicher*>& folge);
  /// Appends a row for a record that is not in the database yet, changed and new.
  static void haenge_an(clsBildZuordnungen& sammlung, std::shared_ptr<clsBilderSpeicher> satz);
  /// Takes the row of a record out, without a statement. The cursor is -1 afterwards.
  static void entnimm(clsBildZuordnungen& sammlung, const clsBilderSpeicher* satz);
  /// Row of a record, or -1.
  static std::int32_t platz(const clsBildZuordnungen& sammlung, const clsBilderSpeicher* satz);
  /// Stored SortIndex of each row as it was read; 0 for rows that were not, and for values that are no number.
  static std::vector<std::int64_t> gespeicherte_Reihenfolge(const clsBildZuordnungen& sammlung);
  /// What the last dialog over the collection left; none before one.
  static std::shared_ptr<Dialogspur>& spur(clsBildZuordnungen& sammlung);
  /// Lets all rows that point to a file follow it to its new name and folder; False where the table did not take it.
  static bool folge_der_Datei(
      clsBildZuordnungen& sammlung, const Fruehere& alt, const QString& endung, const Fruehere& neu);
  /// Renames a picture's file and all rows that point to it, and tells what came of it. Never raises.
  static Umbenennung benenne_um(clsBildZuordnungen& sammlung, const QString& wurzel, const QString& pfad,
      const QString& alter_Name, const QString& endung, const QString& neuer_Name);
};
