#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

#include "platform/adodb/Connection.h"
#include "platform/basic/Variant.h"
#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Bild.h"
#include "store/Aufraeumliste.h"
#include "store/clsBilderSpeicher.h"

class Bildbaum;
struct Dialogspur;

/// The assignments that are loaded at the moment, with a cursor on one of them, flags per row, and all operations on
/// the table Bild_Zuordnungen and on the picture files.
///
/// Usual road: Init, FKT_LeseBilder, changes (each followed by Bild_Changeflag), FKT_SpeichernBilder. Used on one
/// thread. Unless a member says otherwise it catches every failure and tells it through KVOCore::FehlerMelden, and its
/// result is then False. Paths have backslashes; see Pfadkarte for what they mean on this machine.
class KVO_EXPORT clsBildZuordnungen {
 public:
  clsBildZuordnungen();
  ~clsBildZuordnungen();
  clsBildZuordnungen(const clsBildZuordnungen&) = delete;
  clsBildZuordnungen& operator=(const clsBildZuordnungen&) = delete;

  /// A processing date of the host, kept to be handed on.
  QString cGL_jmtVerarbeitungsdatum;
  /// The record under the cursor, the same object as in the row; none without a current row.
  std::shared_ptr<clsBilderSpeicher> AktBildObj;
  /// While True, this class tells no failure of its own.
  bool ohneMeldungen = false;
  /// Name, width, height and picture of the last FKT_LoadPicture that succeeded. Width and height are in the unit in
  /// force for that load: pixels, or twips.
  QString AktLoadPicture;
  double AktLoadPicture_Breite = 0;
  double AktLoadPicture_Hoehe = 0;
  std::shared_ptr<const Bild> AktLoadPicture_Picture;

  // ── Cursor, rows and flags ────────────────────────────────────────────────────────────────────────────────────────
  /// Row under the cursor, -1 for none, or whatever number was set last.
  std::int32_t AktInd() const noexcept { return mAktInd; }
  /// Moves the cursor. A number outside the table is kept, with no current record. Never fails.
  void AktInd(std::int32_t wert) noexcept;
  /// Number of rows; a single blank row counts as none. Raises 91 before Init or FKT_Neu.
  std::int32_t AnzahlPos() const;

  /// Flags of the current row. Reading raises 9 (91 before Init) without one; setting then does nothing.
  bool Bild_Changeflag() const { return zeile(mAktInd).Bild_Changeflag; }
  void Bild_Changeflag(bool wert) noexcept { setze_Kennzeichen(&Zeile::Bild_Changeflag, wert); }
  bool Bild_Neu() const { return zeile(mAktInd).Bild_Neu; }
  void Bild_Neu(bool wert) noexcept { setze_Kennzeichen(&Zeile::Bild_Neu, wert); }
  bool Bild_Delete() const { return zeile(mAktInd).Bild_Delete; }
  void Bild_Delete(bool wert) noexcept { setze_Kennzeichen(&Zeile::Bild_Delete, wert); }

  // Fields of the current record. Reading without one gives "", False or 0; setting raises 91. Setting never touches
  // Bild_Changeflag.
  QString Bild_Key1() const { return gelesen(&clsBilderSpeicher::Bild_Key1); }
  void Bild_Key1(const QString& wert) { aktueller_Satz().Bild_Key1 = wert; }
  QString Bild_Key2() const { return gelesen(&clsBilderSpeicher::Bild_Key2); }
  void Bild_Key2(const QString& wert) { aktueller_Satz().Bild_Key2 = wert; }
  QString Bild_Key3() const { return gelesen(&clsBilderSpeicher::Bild_Key3); }
  void Bild_Key3(const QString& wert) { aktueller_Satz().Bild_Key3 = wert; }
  QString Bild_Key4() const { return gelesen(&clsBilderSpeicher::Bild_Key4); }
  void Bild_Key4(const QString& wert) { aktueller_Satz().Bild_Key4 = wert; }
  QString Bild_Bildname() const { return gelesen(&clsBilderSpeicher::Bild_Bildname); }
  void Bild_Bildname(const QString& wert) { aktueller_Satz().Bild_Bildname = wert; }
  QString Bild_BildExt() const { return gelesen(&clsBilderSpeicher::Bild_BildExt); }
  void Bild_BildExt(const QString& wert) { aktueller_Satz().Bild_BildExt = wert; }
  QString Bild_Typ1() const { return gelesen(&clsBilderSpeicher::Bild_Typ1); }
  void Bild_Typ1(const QString& wert) { aktueller_Satz().Bild_Typ1 = wert; }
  QString Bild_Typ2() const { return gelesen(&clsBilderSpeicher::Bild_Typ2); }
  void Bild_Typ2(const QString& wert) { aktueller_Satz().Bild_Typ2 = wert; }
  QString Bild_Pfad() const { return gelesen(&clsBilderSpeicher::Bild_Pfad); }
  void Bild_Pfad(const QString& wert) { aktueller_Satz().Bild_Pfad = wert; }
  QString Bild_Beschreibung() const { return gelesen(&clsBilderSpeicher::Bild_Beschreibung); }
  void Bild_Beschreibung(const QString& wert) { aktueller_Satz().Bild_Beschreibung = wert; }
  QString Bild_GrafikAnbNr() const { return gelesen(&clsBilderSpeicher::Bild_GrafikAnbNr); }
  void Bild_GrafikAnbNr(const QString& wert) { aktueller_Satz().Bild_GrafikAnbNr = wert; }
  QString Bild_Grafik_Ursprung() const { return gelesen(&clsBilderSpeicher::Bild_Grafik_Ursprung); }
  void Bild_Grafik_Ursprung(const QString& wert) { aktueller_Satz().Bild_Grafik_Ursprung = wert; }
  bool Bild_NeueSeite() const { return gelesen(&clsBilderSpeicher::Bild_NeueSeite); }
  void Bild_NeueSeite(bool wert) { aktueller_Satz().Bild_NeueSeite = wert; }
  bool Bild_AlsAnhang() const { return gelesen(&clsBilderSpeicher::Bild_AlsAnhang); }
  void Bild_AlsAnhang(bool wert) { aktueller_Satz().Bild_AlsAnhang = wert; }
  bool Bild_DruckGesamteSeite() const { return gelesen(&clsBilderSpeicher::Bild_DruckGesamteSeite); }
  void Bild_DruckGesamteSeite(bool wert) { aktueller_Satz().Bild_DruckGesamteSeite = wert; }
  bool Bild_Drucken() const { return gelesen(&clsBilderSpeicher::Bild_Drucken); }
  void Bild_Drucken(bool wert) { aktueller_Satz().Bild_Drucken = wert; }
  std::int16_t Bild_SortIndex() const { return gelesen(&clsBilderSpeicher::Bild_SortIndex); }
  /// A number outside -32768 to 32767 raises 6.
  void Bild_SortIndex(int wert);

  /// Empties the collection.
  bool FKT_Neu();
  /// Appends a new, changed row and moves the cursor to it. The record prints by default; its folder is set afterwards
  /// through Bild_Pfad.
  bool FKT_NeuesBild(const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4,
      const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2);
  /// Makes this collection a copy of another, all rows new and changed. The other's cursor stays on its last row.
  /// `pBnrerhalten` is accepted and not looked at. The result is always False and says nothing; failures are passed
  /// over.
  bool Fkt_Clone(clsBildZuordnungen& pBildAlt, std::int16_t pMontageNr, bool pBnrerhalten = false);

  // ── Reading ───────────────────────────────────────────────────────────────────────────────────────────────────────
  /// Binds the store to the database and empties it. The connection is borrowed; without one (null) the store opens its
  /// own from the connect string, silently. Writing always goes over the thread's own connection from the connect
  /// string.
  bool Init(const QString& pConnectstring, std::shared_ptr<adodb::Connection> pconnection,
      const QString& pGL_jmtVerarbeitungsdatum);
  /// Fills the collection with the rows that match; an empty argument adds no condition, `pWhere` is a free condition.
  /// True when at least one row was read. What was loaded before is gone in any case.
  bool FKT_LeseBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4,
      const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
      const QString& pWhere, bool MitSortorder = true);
  /// Fills the collection with one row for each document or works order with pictures of a customer, or of a project;
  /// an empty number lists all.
  bool FKT_LeseBilder_FuerKunde_Projekt(const QString& pKdnr_Prj, bool pFuerProjekt);
  /// A row that matches exists. The collection stays as it is.
  bool FKT_BilderVorhanden(const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4,
      const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
      const QString& pWhere);
  /// Set Bild_Key1 or Bild_Key2 of all records; no flag changes. A failure ends it silently with False.
  bool fkt_Korr_Key1(const QString& pKey1);
  bool fkt_Korr_Key2(const QString& pKey2);
  /// Pieces of an assignment in a statement: of a text, of a number held as text (NULL raises 94), of a flag (1 for
  /// True, which is -1). No quote is doubled. These three pass failures on.
  QString UPrN(const QString& pWert) const;
  QString UPSTR(const Variant& pWert) const;
  QString UChkB(const Variant& pWert) const;

  // ── Writing ───────────────────────────────────────────────────────────────────────────────────────────────────────
  /// Writes the changed rows in order, then deletes the marked ones from the last to the first. Single statements may
  /// fail: they are told, the flags of their rows stay set, and the result is True all the same. Cursor on row 0.
  bool FKT_SpeichernBilder();
  /// Deletes all rows that match, independent of the collection. Without any condition nothing is sent and the result
  /// is True. Values stand in the text as they are, here and in every other statement: one like A' or '1'='1 widens the
  /// delete to other records, so a host must refuse an apostrophe before it gets here.
  bool FKT_DeleteBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4,
      const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
      const QString& pWhereAllg);
  /// Puts "1" or "0" at position `ppos` (from 1) of `pFeld`; outside it nothing changes. The result means nothing.
  bool SetzeString_TrueFalse(bool pWert, QString& pFeld, std::int32_t ppos);

  // ── Files; see mod_BilderSuchen, to which these forward ───────────────────────────────────────────────────────────
  bool Fkt_MakePath(const QString& sPath, const Variant& ShowMsg = Empty{});
  QString Fkt_SplitFileName(const QString& pString, std::int16_t pRueckgabeTyp);
  QString Fkt_ReadFile(const QString& pPath);
  bool Fkt_WriteFile(const QString& pPath, const QString& pText);
  bool Fkt_DirExists(const QString& pPath);
  bool Fkt_FileExists(const QString& pPath);
  bool Fkt_FileCopy(const QString& pSource, QString& pDestinationPath, bool pMsg = false, bool pIfNotExist = false,
      const std::optional<QString>& pNewName = std::nullopt, bool pMitTextCopy = false);
  bool Fkt_FileCopyAll(const QString& pSource, QString& pDestinationPath, const QString& pPattern = QStringLiteral("."),
      bool DelFile = false);
  bool Fkt_FileReName(const QString& pOldName, const QString& pNewName);
  bool Fkt_File_Txt_Copy(const QString& OrgFileName, QString& CopyTo, bool mMitMeldung, bool mIfNotExist,
      QString& mNewName, bool& mCreateNew, const QString& mInfoText = {});
  bool Fkt_File_Txt_Copy(
      const QString& OrgFileName, QString& CopyTo, bool mMitMeldung = false, bool mIfNotExist = false);
  bool Fkt_FileDelete(const QString& pFileName);

  // ── Maintenance ───────────────────────────────────────────────────────────────────────────────────────────────────
  /// Clears the tree from the folder `pAbPfad` on, depth first, without asking: files that no row of Bild_Zuordnungen
  /// names, text files without their picture, folders that hold nothing then. `pBasisBildPfad` is the picture root
  /// without a closing backslash; files directly in it are never found in the table and always go. `pAbPfad` has no
  /// closing backslash either: with one no question meets a row, and every file of the tree goes. True when done,
  /// False when a subfolder could not be cleared (the folders above it then stay as they are), Empty when the folder
  /// itself can't be read; nobody is told.
  ///
  /// Where the table can't be asked, files are deleted: only to be called on a working connection, and after the user
  /// has seen FKT_Liste_Bild_Ohne_Zuordnung.
  Variant FKT_Loesche_Bild_Ohne_Zuordnung(const QString& pAbPfad, const QString& pBasisBildPfad);
  /// What FKT_Loesche_Bild_Ohne_Zuordnung would delete at this moment, file by file; deletes nothing. Asks the table
  /// the same questions. Never raises. `weiter` is asked before each file, with the number of those before it, and must
  /// not raise; where it gives false the listing ends, and what it gives is only a part.
  Aufraeumliste FKT_Liste_Bild_Ohne_Zuordnung(
      const QString& pAbPfad, const QString& pBasisBildPfad, const std::function<bool(std::size_t)>& weiter = {});
  /// Renames a picture file and all rows that point to it. The result is always False and says nothing; the text file
  /// keeps its name, which is the caller's business.
  bool Verarbeite_Dateinamen_Aenderung(const QString& pRoot, const QString& pPfad, const QString& pOldName,
      const QString& pExt, const QString& pNewName);

  // ── Print sizing; all four end silently ───────────────────────────────────────────────────────────────────────────
  /// Loads the file pPfad\BName unless BName, by its name alone, is loaded already.
  bool FKT_LoadPicture(const QString& BName, const QString& pPfad, bool pTwips);
  /// Height for the width pBreite of a picture of pBildB by pBildH; pHoehe when a side is 0.
  double Fkt_GetHoehe_Picture(double pBildB, double pBildH, double pHoehe, double pBreite);
  /// Width for the height pHoehe; pBreite when a side is 0.
  double Fkt_GetBreite_Picture(double pBildB, double pBildH, double pHoehe, double pBreite);
  /// A row behind `abInd` is an attachment that prints on a new page.
  bool Pruefe_naechstes_Bild_neueSeite(std::int32_t abInd);

 private:
  /// The dialog and the road of a host, which need more of a collection than other hosts.
  friend class Sammlungszugriff;

  struct Zeile {
    bool Bild_Changeflag = false;
    QString Zeile_Bildname;
    QString Zeile_BildExt;
    std::shared_ptr<clsBilderSpeicher> Zeile_Objekt;
    bool Bild_Neu = false;
    bool Bild_Delete = false;
    Variant Zeile_SortIndex;
  };
  using Zeilen = std::vector<Zeile>;
  /// The eight values that tell a row, in the table's order: Key1 to Key4, Bildname, BildExt, Typ1, Typ2.
  using Kennung = std::array<const QString*, 8>;

  Zeilen& zeilen() const;
  Zeile& zeile(std::int32_t nummer) const;
  clsBilderSpeicher& aktueller_Satz() const;
  template <class Wert>
  Wert gelesen(Wert clsBilderSpeicher::*feld) const {
    return AktBildObj ? (*AktBildObj).*feld : Wert();
  }
  void setze_Kennzeichen(bool Zeile::*kennzeichen, bool wert) noexcept;
  void neue_Tabelle();
  std::int32_t haenge_Zeile_an();
  std::int32_t haenge_an(std::shared_ptr<clsBilderSpeicher> satz);
  std::int32_t letzte_Zeile() const;
  void Init_Zeile(std::int32_t nummer);
  bool Init_AktBildObj(clsBilderSpeicher& satz, const Kennung& kennung);
  bool Pruefe_Verbindung();
  adodb::Connection& lesende_Verbindung() const;
  void schreibe_geaenderte_Zeilen();
  void loesche_markierte_Zeilen();
  QString Aufbau_Key_Where(const Kennung& kennung, const QString& pWhere);
  Variant raeume_auf(const QString& pAbPfad, const QString& pBasisBildPfad, Bildbaum& baum);
  void Loesche_Ordner_Ohne_Zuordnung(const QString& pPfad, const QString& pBasisBildPfad, Bildbaum& baum);
  void loesche_Bilder_ohne_Zuordnung(const QString& pPfad, const QString& pBasisBildPfad, Bildbaum& baum);
  void loesche_Texte_ohne_Bild(const QString& pPfad, Bildbaum& baum);
  bool Fkt_Update_Insert(bool pNeu);
  QString insert_Anweisung();
  QString update_Anweisung() const;
  QString UPrN_Insert(const QString& s) const;
  QString Fkt_LeerAlsStrich(const QString& s) const;
  bool korrigiere_alle(QString clsBilderSpeicher::*feld, const QString& wert);
  bool lese_Saetze(const QString& anweisung, bool ganze);
  /// Report and end: runs `rumpf`; a failure in it is told as one of `prozedur` unless ohneMeldungen is set.
  template <class Rumpf>
  std::invoke_result_t<Rumpf> gemeldet(QStringView prozedur, Rumpf&& rumpf) const;

  std::shared_ptr<adodb::Connection> mConnection;
  QString mConnectstring;
  std::int32_t mAktInd = 0;
  std::unique_ptr<Zeilen> mBilder;
  std::shared_ptr<Dialogspur> mSpur;
};
