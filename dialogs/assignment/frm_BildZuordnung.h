#pragma once

#include <QHash>
#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

#include "dialogs/Auftrag.h"
#include "dialogs/assignment/Arbeitstabelle.h"
#include "dialogs/assignment/clsDialoge.h"
#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/Steuerelementfeld.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "platform/forms/steuerelemente/SSSplitter.h"
#include "platform/forms/steuerelemente/Textfelder.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "platform/host/KVOCore.h"
#include "store/Dialogspur.h"

/// The dialog in which the user sees and edits the pictures of one business record. It works on a table of its own,
/// BildTabelle; saving moves that into the collection and carries the changes of files out. It never touches the
/// database but for the renaming of stored pictures.
///
/// Usual road: Load, set the public members, Lade_Zuordnung, AnzeigeSteuern, Show, Unload.
class frm_BildZuordnung : public Form, public Auftrag {
 public:
  frm_BildZuordnung();

  // ── Set by the entry point between Load and Lade_Zuordnung ────────────────────────────────────────────────────────
  // The task too; saving sets its root to the root of the row written last.
  bool pNurAnzeige = false;
  bool pNurAnhang = false;
  std::shared_ptr<clsBildZuordnungen> pBildObj;

  // ── State ─────────────────────────────────────────────────────────────────────────────────────────────────────────
  static constexpr std::int32_t KeineZeile = -1000;
  std::shared_ptr<Arbeitstabelle> BildTabelle;
  std::shared_ptr<Arbeitstabelle> SortTabelle;  ///< the same table, while it is being sorted
  std::int32_t AktZeile = 0;
  std::int32_t AktThumb = 1;  ///< never below 1
  std::int32_t ErsteZeile = 0;
  bool DatenGeaendert = false;
  bool AnzeigeAufbau = false;
  bool LayoutSperre = false;
  std::int32_t StreifenHoehe = 0;
  std::int32_t ThumbZaehler = 0;
  std::int32_t ThumbSchritt = 0;
  std::int32_t ThumbBreite = 0;  ///< pixels
  std::int32_t ThumbHoehe = 0;   ///< pixels
  std::int32_t SichtbareThumbs = 0;
  bool DragAktiv = false;
  std::int32_t DragQuelle = 0;
  std::int32_t DragZiel = 0;

  // ── Loading and state ─────────────────────────────────────────────────────────────────────────────────────────────
  /// Fills BildTabelle from pBildObj. A failure is reported; the rows read until then stay.
  void Lade_Zuordnung();
  void AnzeigeSteuern();
  void Init_ThumbNailArray() { Tabelle().leere(); }
  void EingabenFreigeben(bool pWert);
  /// Does nothing while a row is being copied into the controls.
  void SetzeDatenGeaendert(bool pWert);
  /// Marks the selected row; also while it is merely shown. Meant so: rows that were looked at are written back.
  void SetzeZeileGeaendert(bool pWert) { Zeile(AktZeile).ZeileGeaendert = pWert; }
  /// What becomes of unsaved changes before something else goes on. `pWeiter` is False only after "Abbrechen".
  void Pruefe_Speichern(bool pOhneFrage, bool& pWeiter);
  void Pruefe_Exif(const QString& pDatei, QString& pKennung, bool& pVorhanden) const;

  // ── Strip ─────────────────────────────────────────────────────────────────────────────────────────────────────────
  /// Rebuilds the strip from a row on; clamps the row for the caller. Draws neither stripes nor crosses.
  void Create_ThumbNails(std::int32_t& pStart);
  void Neuer_Thumb();
  void Loesche_Thumbs();
  /// Fits a picture into a box of pBreite by pHoehe pixels and paints it into `pZiel`, which takes its size.
  void Bild_Einpassen(std::int32_t pBreite, std::int32_t pHoehe, Bildfeld& pQuelle, Bildfeld& pZiel);
  void Markiere_Auswahl();
  void Markiere_Ziel(std::int32_t pIndex);
  void Pruefe_Scroll();
  void Zeichne_Status();
  void Zeichne_Entfernt(bool pNichtNeu);
  /// Brings a row into view; `pZeile` is a control index afterwards.
  void Zeige_Zeile(std::int32_t& pZeile, bool pScrollen, bool& pErgebnis);
  void Bild_Verschieben();
  /// Selects the row that the control shows.
  void Pic_Thumb_Click(std::int32_t index);
  void Zeige_Bild();

  // ── Picture actions ───────────────────────────────────────────────────────────────────────────────────────────────
  /// Appends a picture that the search found, `zeile` being its row there; the table then ends with a blank row.
  void haenge_Fund_an(const XArrayDBObject& funde, std::int32_t zeile);
  void Pruefe_NameVorhanden(const QString& pName, const QString& pExt, bool& pErgebnis);
  void NameWarnung(bool pWert);
  void NameGeaendertAnzeige(bool pWert);
  /// Turns the selected picture's file: "JpgTransformRotate90", "…Rotate180", "…Rotate270", "…FlipHorizontal" or
  /// "…FlipVertical". Saves what is pending without a question.
  void Bild_Drehen(const QString& pTransformation);

  // ── Saving ────────────────────────────────────────────────────────────────────────────────────────────────────────
  /// Moves the changed rows into the collection and carries the changes of files out. A failure is reported; rows done
  /// until then stay done.
  void Zuordnung_Speichern();
  /// First row whose name collides and that is not to be removed, or -1.
  void Suche_NameDoppelt(std::int32_t& pZeile) { pZeile = Tabelle().erste_Doppelte(); }
  void Pruefe_NameGeaendert(bool& pErgebnis);
  void Pruefe_NameGeaendertAlle(bool& pErgebnis);
  /// Takes back the rename of a row, or for -1 of the first renamed one, and of that one only.
  void Namen_Zuruecksetzen(std::int32_t pZeile);
  /// Renames stored pictures with all their assignments. Failures are passed over.
  void Namen_Aendern();
  /// Lets the user choose a root directory; ready for the host.
  void ShowVerzeichnisDialog(QString& pErgebnis);

  /// A row of the table; one that is not there reads as a blank one and keeps nothing.
  Arbeitszeile& Zeile(std::int32_t nummer) const;
  /// The same, once its picture was asked for Exif data.
  const Arbeitszeile& mit_Exif(std::int32_t nummer) const;
  std::int32_t LetzteZeile() const { return BildTabelle ? BildTabelle->LetzteZeile() : -1; }
  /// The table has no row, or only the blank placeholder.
  bool KeineBilder() const { return !BildTabelle || BildTabelle->KeineBilder(); }

  // ── Controls; a container stands before what it holds ─────────────────────────────────────────────────────────────
  SSSplitter SSS_BildZuordnung{this, QStringLiteral("SSS_BildZuordnung")};
  Steuerelementfeld<SSPanel> SSP_Panel{
      [this](int i) { return std::make_unique<SSPanel>(&SSS_BildZuordnung, QStringLiteral("SSP_Panel(%1)").arg(i)); }};
  Steuerelementfeld<SSPanel> SSP_Anzahl{
      [this](int i) { return std::make_unique<SSPanel>(&SSP_Panel(0), QStringLiteral("SSP_Anzahl(%1)").arg(i)); }};
  SSCommand SSC_Bildbearbeitung{&SSP_Panel.entwirf(0), QStringLiteral("SSC_Bildbearbeitung")};
  SSCommand SSC_Drehen90{&SSP_Panel(0), QStringLiteral("SSC_Drehen90")};
  SSCommand SSC_Drehen270{&SSP_Panel(0), QStringLiteral("SSC_Drehen270")};
  SSCommand SSC_Drehen180{&SSP_Panel(0), QStringLiteral("SSC_Drehen180")};
  SSCommand SSC_Aktualisieren{&SSP_Panel(0), QStringLiteral("SSC_Aktualisieren")};
  SSCommand SSC_ExifInfo{&SSP_Panel(0), QStringLiteral("SSC_ExifInfo")};
  SSPanel SSP_NameChanged{&SSP_Panel.entwirf(1), QStringLiteral("SSP_NameChanged")};
  Steuerelementfeld<Label> lbl_Anzeige{[this](int i) {
    return std::make_unique<Label>(i == 0 ? &SSP_NameChanged : &SSP_Panel(1), QStringLiteral("lbl_Anzeige(%1)").arg(i));
  }};
  SSCommand cmd_OriginalName{&SSP_NameChanged, QStringLiteral("cmd_OriginalName")};
  Label SSP_WarnungName{&SSP_NameChanged, QStringLiteral("SSP_WarnungName")};
  TextBox txt_BildName{&SSP_NameChanged, QStringLiteral("txt_BildName")};
  TextBox txt_BildExt{&SSP_NameChanged, QStringLiteral("txt_BildExt")};
  CheckBox chk_Drucken{&SSP_Panel(1), QStringLiteral("chk_Drucken")};
  CheckBox chk_GesamteSeite{&SSP_Panel(1), QStringLiteral("chk_GesamteSeite")};
  CheckBox chk_NeueSeite{&SSP_Panel(1), QStringLiteral("chk_NeueSeite")};
  CheckBox chk_AlsAnhang{&SSP_Panel(1), QStringLiteral("chk_AlsAnhang")};
  CheckBox chk_Delete{&SSP_Panel(1), QStringLiteral("chk_Delete")};
  Textblock txt_BildText{&SSP_Panel(1), QStringLiteral("txt_BildText")};
  Bildfeld Pic_Bearbeitung{&SSP_Panel.entwirf(2), QStringLiteral("Pic_Bearbeitung")};
  Bildfeld Pic_Dummy{&SSP_Panel(2), QStringLiteral("Pic_Dummy")};
  Bildfeld Pic_Dummy0{&SSP_Panel(2), QStringLiteral("Pic_Dummy0")};
  Bildfeld Pic_Blank{&SSP_Panel(2), QStringLiteral("Pic_Blank")};
  Label lbl_Beschreibung{&SSP_Panel(2), QStringLiteral("lbl_Beschreibung")};
  Textblock txt_BildInfo{&SSP_Panel(2), QStringLiteral("txt_BildInfo")};
  Steuerelementfeld<Bildfeld> Pic_Thumb{[this](int i) { return neues_Pic_Thumb(i); }};
  SSCommand SSC_Scroll_Left{&SSP_Panel.entwirf(3), QStringLiteral("SSC_Scroll_Left")};
  SSCommand SSC_Scroll_Right{&SSP_Panel(3), QStringLiteral("SSC_Scroll_Right")};
  Shape Shp_Thump{&SSP_Panel(3), QStringLiteral("Shp_Thump")};
  Shape Shp_Sort{&SSP_Panel(3), QStringLiteral("Shp_Sort")};
  SSCommand SSC_BilderLaden{this, QStringLiteral("SSC_BilderLaden")};
  SSCommand SSC_AlleZuordnungen{this, QStringLiteral("SSC_AlleZuordnungen")};
  SSCommand SSC_WeitereZuordnungen{this, QStringLiteral("SSC_WeitereZuordnungen")};
  SSRibbon SSR_Sortierung{this, QStringLiteral("SSR_Sortierung")};
  SSCommand SSC_ZuordnungSpeichern{this, QStringLiteral("SSC_ZuordnungSpeichern")};
  SSCommand cmd_Abbruch{this, QStringLiteral("cmd_Abbruch")};

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_Activate() override;
  void Form_QueryUnload(bool& Cancel) override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t KeyCode, std::int16_t Shift) override;
  void Form_KeyPress(std::int16_t KeyAscii) override;
  void Form_KeyUp(std::int16_t KeyCode, std::int16_t Shift) override;
  void Form_DragEnde() override;

 private:
  // Design time
  void entwirf_Kopf();
  void entwirf_Felder();
  void entwirf_Bild();
  void entwirf_Streifen();
  void entwirf_Fussleiste();
  void entwirf_Reihenfolge();
  void verbinde_Ereignisse();
  void verbinde_Schalter(CheckBox& schalter, bool Arbeitszeile::*feld);
  void verbinde_Text(Textblock& text, QString Arbeitszeile::*feld);
  std::unique_ptr<Bildfeld> neues_Pic_Thumb(int index);
  /// Tells the threads below which pictures will be painted.
  void sage_Bilder_an();

  Arbeitstabelle& Tabelle();
  /// The collection; without one it raises 91.
  clsBildZuordnungen& Sammlung() const;
  QString ordner_von(const Arbeitszeile& zeile) const { return pRootpath + u'\\' + zeile.Pfad; }
  void lade_Zeilen(const std::vector<Bildspur>& vorige);
  void lade_Text(Arbeitszeile& zeile);
  void lade_Anwesenheit(Arbeitszeile& zeile);
  bool laesst_sich_auflisten(const QString& ordner);
  bool nimm_Stand_auf();
  void zeige_Auswahl();
  void lade_grosses_Bild();
  void fuelle_Eingaben();
  void sperre_Fehlende();
  void erzwinge_Anhang();
  void stelle_Thumbnail_dar(std::int32_t zeile, std::int32_t index);
  void scrolle(std::int32_t schritte);
  void baue_Streifen_neu();
  void schalte_Sortierung(bool an);
  void setze_Ziehart(int art, const QString& hinweis);
  void ziehe_ueber_Thumb(std::int32_t index);
  void ziehe_ueber_Scroll_Right();
  void lasse_fallen(std::int32_t index);
  void zeige_im_Programm(const QString& datei);
  void mit_Meldung(const char16_t* prozedur, const std::function<void()>& arbeit);
  void suche_Bilder();
  void bearbeite_Bild();
  void zeige_Exif();
  void zeige_AlleZuordnungen();
  void zeige_WeitereZuordnungen();
  void aendere_Namen();
  void aktualisiere();
  void lies_neu();
  void zeichne_neu();
  void zeichne_Streifen();
  bool melde_Doppelte();
  void speichere_und_schliesse();
  bool frage_nach_Namen(bool& erledigt);
  void speichere_Zeilen();
  void speichere_Zeile(Arbeitszeile& zeile, bool namen_erledigt);
  bool ordne_Satz_zu(Arbeitszeile& zeile, bool namen_erledigt);
  void pruefe_Fehlende(Arbeitszeile& zeile);

  // Files of the rows
  void benenne_mit_allen_um(Arbeitszeile& zeile);
  void benenne_gespeicherte_um(Arbeitszeile& zeile);
  bool lege_neue_an(Arbeitszeile& zeile);
  QString kopiere(const QString& quelle, Arbeitszeile& zeile, const QString& endung);
  void merke_ohne_Datei(Arbeitszeile& zeile, const QString& name, const QString& endung);
  void schreibe_Textdatei(Arbeitszeile& zeile);

  // What ties the rows to their records, and what is left of it
  void ordne_Sammlung();
  void zeige_Anzahl(bool geaendert);
  template <class Arbeit>
  void fuer_jeden_Satz(Arbeit&& arbeit);
  void bestaetige_Vormerkungen();
  void verlasse();
  void hinterlasse_Spur();
  QString Standardordner() const { return pRootpath + u'\\' + pStandardBildPfad; }
  void ordne_Splitter(std::int32_t pane);
  void ordne_Kopf();
  void ordne_Felder();
  void ordne_Streifen();
  void ordne_Bild();
  void keyhandler_KeyDown(std::int16_t KeyCode, std::int16_t Shift);
  void naechstes_Bild();
  void voriges_Bild();

  std::shared_ptr<KeyHandler> keyhandler;
  std::shared_ptr<clsDialoge> DialogObj;
  /// Folders that were asked whether they can be listed, since the table was read.
  QHash<QString, bool> auflistbar_;
  /// Opened again with what the last dialog over the collection left unsaved.
  bool wiederaufgenommen_ = false;
  bildvorlauf::Vorlauf vorlauf_;
  /// The user refused to save.
  bool abgelehnt_ = false;
  Farbe NameRueckfarbe = 0;
  Farbe NameTextfarbe = 0;
  /// The selected row as it was when it was selected.
  QString AktDatei, AktName, AktExt, AktPfad, AktKey1, AktKey2, AktKey3, AktKey4, AktTyp1, AktTyp2;
};
