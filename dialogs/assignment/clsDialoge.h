#pragma once

#include <QString>
#include <memory>

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
                                   const QString& pStandardBildPfad,
                                   const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
                                   const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige = false,
                                   bool pNurAnhang = false);

  /// The user sees the Exif properties of a picture. With `pLoadFlag` they are read from the file `pBildNameMitPfad`, a
  /// path of the table; without it the list stays empty, whatever `pExifInfoText` says. When the one of the two texts
  /// that counts is blank, nothing is shown, and the result is True all the same.
  bool Fkt_Aufruf_Dialog_BildInfo(const QString& pBildNameMitPfad, const QString& pExifInfoText, bool pLoadFlag);
};
