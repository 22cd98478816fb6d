#pragma once

#include <QString>
#include <memory>

#include "platform/basic/XArrayDBObject.h"
#include "platform/basic/kvo_export.h"
#include "platform/host/Anwendungsobjekt.h"
#include "store/clsBildZuordnungen.h"

/// Opens the dialogs. Each call makes a form of its own, shows it modally and destroys it; nothing survives from one
/// call to the next. Needs a QApplication; used on the GUI thread.
///
/// The results say only that a dialog ran to its end. A failure goes to KVOCore::FehlerMelden, and the result is False.
class KVO_EXPORT clsDialoge {
 public:
  /// The user sees and edits the pictures of one record. `pBildObj` is initialised and read; the dialog changes it and
  /// the files, never the table: FKT_SpeichernBilder is the host's. `pRootpath` has no closing backslash,
  /// `pStandardBildPfad` is the record's folder below it, where new pictures are copied to. `pInfoZeile` stands in the
  /// header. With `pNurAnzeige` nothing can be changed; with `pNurAnhang` every picture shown becomes an attachment.
  bool Fkt_Aufruf_Dialog_Zuordnung(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
      const QString& pStandardBildPfad, const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
      const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige = false, bool pNurAnhang = false);

  /// The user sees all assignments of a picture, which is told by its name and extension, and can delete some of them.
  /// Deleting writes at once, whatever the host saves later. The assignment from which the dialog was opened, told by
  /// keys and types, is never deleted here: `pDeleteFlagAktBild` tells that the user wants it gone. What it held before
  /// is lost.
  bool Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
      const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2, const QString& pKey3,
      const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
      const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile,
      bool& pDeleteFlagAktBild);
  /// The same for a caller that does not ask about its own assignment.
  bool Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
      const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2, const QString& pKey3,
      const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
      const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile);

  /// The user attaches pictures of `pBildObj` to articles: the files are copied into the articles' folders and the rows
  /// are written before the call returns. The records of `pBildObj` stay as they are; its cursor moves. Articles come
  /// from the host's components (platform/host/Artikel.h, Auskunft.h), the setting "MitArtikelstammZF" from
  /// Anwendungsobjekt::Settings.
  bool Fkt_Aufruf_Dialog_WeitereZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
      const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& pRootpath, const QString& pStandardBildPfad,
      const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4, const QString& PTyp1,
      const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile);

  /// The user finds picture files on any drive. Each chosen one fills the last row of `pFindArray` (0 whole name,
  /// 1 folder with its closing backslash, 2 name, 3 extension) and appends an empty row behind it. After cancel
  /// `pFindArray` is null and the result False. `pRootpath` is where to start on the first opening in a process; later
  /// ones start where the last one ended.
  bool Fkt_Aufruf_Dialog_BilderSuchen(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
      std::shared_ptr<XArrayDBObject>& pFindArray, bool MultiSelect = true);

  /// The user sees the Exif properties of a picture. With `pLoadFlag` they are read from the file `pBildNameMitPfad`, a
  /// path of the table; without it the list stays empty, whatever `pExifInfoText` says. When the one of the two texts
  /// that counts is blank, nothing is shown, and the result is True all the same.
  bool Fkt_Aufruf_Dialog_BildInfo(const QString& pBildNameMitPfad, const QString& pExifInfoText, bool pLoadFlag);
};
