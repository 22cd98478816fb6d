#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/steuerelemente/Auswahlfelder.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/forms/steuerelemente/DirListBox.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/ImageList.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "platform/forms/steuerelemente/ListView.h"
#include "platform/forms/steuerelemente/Textfelder.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"

/// Columns of the search's result: one row a chosen file, and an empty last one.
namespace fund {
enum Spalte : std::int32_t { VollerName = 0, Pfad = 1, Name = 2, Endung = 3, Letzte = 10 };
}  // namespace fund

/// The dialog in which the user finds picture files on any drive and chooses some of them.
///
/// Usual road: set MultiSelect and pRootpath, Load, set pFindArray, Show; then pFindArray is the result, none after
/// cancel.
class frm_BilderSuchen : public Form {
 public:
  frm_BilderSuchen();

  /// Where to start, as long as no last folder is remembered.
  QString pRootpath;
  /// Owned by the caller; a row is appended for each chosen file. None after cancel.
  std::shared_ptr<XArrayDBObject> pFindArray;
  bool MultiSelect = false;
  /// Pattern in force, upper case.
  QString pDateifilter;
  /// From loading to the end of the first activation: a change of the filter reads nothing.
  bool pLaedt = false;
  /// The user wants the running read to stop.
  bool pEinlesenAbbrechen = false;

  /// Fills the list of drives. Raises 35601 when the current directory lies on none of them.
  void Lade_Laufwerke();
  QString Hole_Volumename(const QString& root);
  QString Hole_Netzname(const QString& root);
  /// Reads a folder into the list, letting events in at each file. A second read inside a running one ends the older.
  void Show_Folder_Content(const QString& pPfad, const QString& pMuster);
  /// Number of files that Show_Folder_Content would list.
  std::int32_t Zaehle_Dateien(const QString& pPfad, const QString& pMuster);
  /// Draws one thumbnail; measures in twips.
  QIcon Create_Picture(const QString& pDatei, double pBreite, double pHoehe);
  /// What the frame does on closing; the entry point runs it after it has read the result. It runs once: later calls do
  /// nothing.
  void raeume_auf();

  // Controls, in their tab order
  SSCommand SSC_Drehen{this, QStringLiteral("SSC_Drehen")};
  SSCommand SSC_Bildbearbeitung{this, QStringLiteral("SSC_Bildbearbeitung")};
  SSCommand cmd_EinlesenAbrrechen{this, QStringLiteral("cmd_EinlesenAbrrechen")};
  Bildfeld Pic_Blank{this, QStringLiteral("Pic_Blank")};
  SSCommand cmd_TextSpeichern{this, QStringLiteral("cmd_TextSpeichern")};
  Textblock txt_Info{this, QStringLiteral("txt_Info")};
  SSCommand cmd_Abbruch{this, QStringLiteral("cmd_Abbruch")};
  SSCommand cmd_Uebernehmen{this, QStringLiteral("cmd_Uebernehmen")};
  SSPanel SSP_Fortschritt{this, QStringLiteral("SSP_Fortschritt")};
  SSPanel SSP_Anzahl{this, QStringLiteral("SSP_Anzahl")};
  ComboBox cbo_BildTypen{this, QStringLiteral("cbo_BildTypen")};
  DirListBox Dir1{this, QStringLiteral("Dir1")};
  ListView lvwContent{this, QStringLiteral("lvwContent")};
  ListView SSP_Liste{this, QStringLiteral("SSP_Liste")};
  SSPanel SSP_Info{this, QStringLiteral("SSP_Info")};
  ImageCombo ImageCombo1{this, QStringLiteral("ImageCombo1")};
  ImageList ilsImages;
  ImageList ImageList1;

 protected:
  void Form_Load() override;
  void hideEvent(QHideEvent* ereignis) override;
  void Form_Resize() override;
  void Form_Activate() override;
  void Form_QueryUnload(bool& Cancel) override;
  void Form_Unload() override { pFindArray.reset(); }

 private:
  void entwirf();
  void verbinde_Ereignisse();
  void ImageCombo1_Click();
  void Dir1_Change();
  void cbo_BildTypen_Click();
  void lies_Ordner(const QString& ordner, const QString& muster);
  /// False when the read ends here.
  bool lies_Dateien(const QString& ordner, const QStringList& namen, std::uint32_t lesung);
  /// Tells the threads below which pictures come next.
  void sage_an(const QString& ordner, const QString& name);
  void fuege_Datei_ein(const QString& ordner, const QString& name);
  void gib_Bild(int eintrag, const QString& pfad, const QString& endung);
  void zeige_Fortschritt();
  bool passt(const QString& endung) const;
  void entferne_Vorschaubilder();
  void lvwContent_ItemClick(int eintrag);
  void speichere_Text();
  void uebernimm();
  void drehe();
  void drehe_Dateien(const QStringList& dateien);
  void bearbeite();
  void melde_GdiFehler();
  bool starte_GdiSitzung();
  /// Ends what sessions this form has started, and nobody else's: they are counted.
  void beende_GdiSitzungen();
  QString Textdatei(const QString& tag) const;

  /// Number of the read that runs or ran last, and whether one runs.
  std::uint32_t m_Lesung = 0;
  /// Of the running read: images made so far, divisor of the progress, failures are tolerated.
  std::int32_t m_Nummer = 0;
  std::int32_t m_Teiler = 0;
  bool m_Duldsam = false;
  bool m_Aufgeraeumt = false;
  int m_Sitzungen = 0;
  bildvorlauf::Vorlauf m_Vorlauf;
};
