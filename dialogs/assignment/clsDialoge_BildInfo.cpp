#include "dialogs/assignment/Dialogmeldung.h"
#include "dialogs/assignment/clsDialoge.h"
#include "exif/frm_BildInfo.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

bool clsDialoge::Fkt_Aufruf_Dialog_BildInfo(
    const QString& pBildNameMitPfad, const QString& pExifInfoText, bool pLoadFlag) {
  const auto melden = [](const Laufzeitfehler& f) { dialogmeldung::melde(u"Fkt_Aufruf_Dialog_BildInfo", f); };
  std::unique_ptr<frm_BildInfo> form;
  const bool gelaufen = fehler::melden_und_enden(melden, [&] {
    form = std::make_unique<frm_BildInfo>();
    form->m_Bild = pBildNameMitPfad;
    form->m_ExifText = pExifInfoText;
    form->m_LoadFlag = pLoadFlag;
    if (text::Trim(pLoadFlag ? pBildNameMitPfad : pExifInfoText).isEmpty()) return true;
    if (pLoadFlag)
      form->Load_Exif();
    else
      form->Create_List();
    form->Show();
    return true;
  });
  // After a failure the form is not unloaded, only let go.
  if (gelaufen) form->Unload();
  return gelaufen;
}
