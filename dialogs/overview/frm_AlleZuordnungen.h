#pragma once

#include <memory>

#include "dialogs/Auftrag.h"
#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/Steuerelementfeld.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "store/clsBildZuordnungen.h"

/// "Alle Zuordnungen": what else a picture is assigned to, and the way to delete these assignments.
///
/// Usual road: set the members, Lade_AlleZuordnungen, Show, read pDeleteFlagAktBild, Unload.
class frm_AlleZuordnungen : public Form, public Uebersichtsauftrag {
 public:
  frm_AlleZuordnungen();

  /// The picture. Loading leaves the name as it was written in the last row.
  QString pBildname, pBildExt;

  /// The user wants the assignment gone from which the dialog was opened; the caller removes it.
  bool pDeleteFlagAktBild = false;
  bool pAlleMarkiert = false;
  std::shared_ptr<clsBildZuordnungen> pBildObj;
  /// Rows as of uebersicht::Spalte; made on first use.
  const std::shared_ptr<XArrayDBObject>& pZuordnungArray();

  /// Reads all assignments of the picture into the grid. A failure is reported.
  void Lade_AlleZuordnungen();
  void Init_ThumbNailArray();
  void Init_Grid();
  /// What a row is assigned to, in words.
  QString Baue_ZuordnungsText(std::int32_t zeile);
  /// Marks the selected rows, and no others, for deletion.
  void Markiere_Auswahl();
  /// Deletes the marked assignments, all but the one from which the dialog was opened, and reads anew. A failure is
  /// reported, and the grid then stays as it is.
  void Zuordnungen_loeschen();

  // Controls, in their tab order
  TDBGrid TDBG_Zuordnungen{this, QStringLiteral("TDBG_Zuordnungen")};
  SSCommand cmd_AlleLoeschen{this, QStringLiteral("cmd_AlleLoeschen")};
  SSCommand cmd_Loeschen{this, QStringLiteral("cmd_Loeschen")};
  SSCommand cmd_Abbrechen{this, QStringLiteral("cmd_Abbrechen")};
  Steuerelementfeld<SSPanel> SSP_Info{
      [this](int i) { return std::make_unique<SSPanel>(this, QStringLiteral("SSP_Info(%1)").arg(i)); }};

 protected:
  void Form_Load() override { cmd_Loeschen.Enabled(false); }
  void Form_Resize() override;
  void Form_Unload() override;

 private:
  void entwirf();
  void lies_Zuordnungen();
  void markiere_alle();
  void nach_Auswahl();
  void frage_und_loesche();
  bool ist_eigene(std::int32_t zeile);

  std::shared_ptr<XArrayDBObject> m_Zuordnungen;
};
