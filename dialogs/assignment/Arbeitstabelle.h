#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/basic/Text.h"
#include "store/Bilddatei.h"
#include "store/Dialogspur.h"

/// One picture of the assignment dialog, as the user edits it. A row without a path is the placeholder of an empty
/// table.
struct Arbeitszeile {
  /// The row stands in the collection.
  bool Gespeichert = false;
  QString VollerPfad;
  QString Root;
  /// Below the root; of a new row the picture's present directory.
  QString Pfad;
  /// As edited.
  QString Bildname;
  QString BildExt;
  QString Beschreibung;
  bool Drucken = false;
  bool DruckGesamteSeite = false;
  bool NeueSeite = false;
  bool AlsAnhang = false;
  QString Key1, Key2, Key3, Key4;
  QString Typ1, Typ2;
  bool Aktuell = false;
  /// Content of the picture's text file.
  QString BildInfo;
  /// To be written back on saving.
  bool ZeileGeaendert = false;
  bool DateiFehlt = false;
  bool Entfernen = false;
  bool NameDoppelt = false;
  /// Nothing until somebody asks.
  std::optional<bool> HatExif;
  QString ExifKennung;
  /// The name before the first edit; empty until then.
  QString OriginalName;
  bool NameGeaendert = false;
  bool NeuAusSuche = false;
  std::int32_t SortIndex = 0;
  /// What ties the row to its record, and what came of it on the disk.
  Bildspur Spur;

  bool operator==(const Arbeitszeile&) const = default;

  bool ist_leer() const { return text::Trim(VollerPfad).isEmpty(); }
  /// Name and extension, without the blanks around them.
  QString Dateiname() const { return Bilddatei{text::Trim(Bildname), text::Trim(BildExt)}.datei(); }

  /// Fills a blank row from its record.
  void lies(const clsBilderSpeicher& satz, const QString& root);
  /// Writes the edited values into a record. A text that is too long for it is kept beside the row.
  void uebernimm_in(clsBilderSpeicher& satz);
  /// The record says what the row says, and so does the text file beside the record's picture.
  bool gleicht(const clsBilderSpeicher& satz) const;

  /// The name that the user typed. True where that is the original one again, whatever the case of its letters: then
  /// the row has that one.
  bool nenne(const QString& name);
  void setze_Namen_zurueck() { Bildname = OriginalName; }
  /// The picture's file has another name or folder now. The record follows at once: a failure before the row is saved
  /// must not leave it under a name that no file has.
  void merke_Namen(const QString& name, const QString& pfad);
  /// The name could not be had: with it the row would take another picture's place, or none.
  void lehne_Namen_ab(const QString& grund);

  /// A stored picture that stays gets another name.
  bool ist_umbenannt() const { return NameGeaendert && !NeuAusSuche && !Entfernen; }
  /// Saving renames its file with all its assignments.
  bool ist_umzubenennen() const { return ZeileGeaendert && Gespeichert && NameGeaendert && !Entfernen; }
  bool ist_zu_speichern() const { return ZeileGeaendert && !ist_leer(); }
};

/// The assignment dialog's table: one row a picture, in the order of the strip. Numbers start at 0.
class Arbeitstabelle {
 public:
  /// A new picture that no save has put into the collection, with its place among the rows that stay.
  using Ungespeicherte = std::vector<std::pair<std::int32_t, Arbeitszeile>>;

  /// Leaves only the placeholder.
  void leere() { zeilen_.assign(1, {}); }
  /// -1 for a table without a row.
  std::int32_t LetzteZeile() const { return static_cast<std::int32_t>(zeilen_.size()) - 1; }
  /// No row, or only the placeholder.
  bool KeineBilder() const;
  /// A row that is not there reads as a blank one and keeps nothing.
  Arbeitszeile& Zeile(std::int32_t nummer);
  auto begin() { return zeilen_.begin(); }
  auto end() { return zeilen_.end(); }
  auto begin() const { return zeilen_.begin(); }
  auto end() const { return zeilen_.end(); }

  Arbeitszeile& haenge_an() { return zeilen_.emplace_back(); }
  /// The last row if it is blank, as the placeholder is, or else a new one behind it.
  Arbeitszeile& freie_Zeile();
  /// Raises 9 where there is no such row.
  void entferne(std::int32_t nummer);
  /// Takes a row to another place. All rows get their numbers and are to be saved. Raises 9, and moves nothing, where
  /// one of the two is not there.
  void verschiebe(std::int32_t quelle, std::int32_t ziel);
  /// The rows are numbered in their order; none is marked for that.
  void nummeriere();

  /// The first row of that name decides, whatever its extension. The row that is being edited still has its old name
  /// and counts only when that is the very text; others collide in any case of their letters, as files on a share do.
  bool ist_vergeben(const QString& name, const QString& endung, std::int32_t in_Arbeit) const;
  /// First row whose name collides and that is not to be removed, or -1.
  std::int32_t erste_Doppelte() const;
  /// First row with another name than it had, or one behind the last.
  std::int32_t erste_Umbenannte() const;
  /// The name under which a new picture is copied: the first stamped one that no other row has, that shares no text
  /// file with one, and that `nimmt` takes.
  QString gestempelter_Name(const Arbeitszeile& eigene, const QString& endung, const QString& stempel,
      const std::function<bool(const QString&)>& nimmt) const;
  /// A stored picture whose name was emptied keeps the one that it has: no file can be called so.
  void halte_leere_Namen();

  /// The records of the rows in the order of the strip.
  std::vector<const clsBilderSpeicher*> Folge() const;
  /// One for each picture.
  std::vector<Bildspur> Spuren() const;
  /// New pictures; those that are marked for removal are not among them and go.
  Ungespeicherte ungespeicherte() const;
  void stelle_zurueck(const Ungespeicherte& zeilen);

 private:
  bool gibt_es(std::int32_t nummer) const { return nummer >= 0 && nummer <= LetzteZeile(); }
  void verlange(std::int32_t nummer) const;

  std::vector<Arbeitszeile> zeilen_;
  Arbeitszeile keine_;
};
