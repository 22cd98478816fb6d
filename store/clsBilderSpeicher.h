#pragma once

#include <QString>
#include <cstdint>

#include "platform/basic/kvo_export.h"

/// One assignment: this picture file belongs to this business record.
///
/// Typ1 (compared without regard to case) says what the keys mean: "BEL" document (Key1 kind, Key2 number), "MON" works
/// order of a document (Key3 its number), "ART" article (Key1 number), "ANL" installation (Key1 to Key3). Any other
/// value is legal. In a stored row "-" stands for a part that has no value.
class KVO_EXPORT clsBilderSpeicher {
 public:
  QString Bild_Key1, Bild_Key2, Bild_Key3, Bild_Key4;
  /// File name without folder and extension.
  QString Bild_Bildname;
  /// Extension without the dot.
  QString Bild_BildExt;
  QString Bild_Typ1, Bild_Typ2;
  /// Folder relative to the picture root, without leading or trailing backslash.
  QString Bild_Pfad;
  QString Bild_Beschreibung;
  /// Kept for the host.
  QString Bild_GrafikAnbNr;
  /// Kept for the host; a new record starts with "-".
  QString Bild_Grafik_Ursprung;
  /// Packed print flags; filled only while the record is being written.
  QString Bild_Druckkennzeichen;
  bool Bild_NeueSeite = false;
  bool Bild_AlsAnhang = false;
  bool Bild_DruckGesamteSeite = false;
  bool Bild_Drucken = false;
  /// Position among the record's pictures.
  std::int16_t Bild_SortIndex = 0;

  /// Copies the other record's fields. A pMontageNr other than -1 becomes Bild_Key3. Bild_Druckkennzeichen and
  /// Bild_SortIndex are left out on purpose: the copy keeps its own. Always True.
  bool Fkt_Clone(const clsBilderSpeicher& pObjAlt, std::int16_t pMontageNr);
};
