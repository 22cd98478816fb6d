#include "dialogs/assignment/Dialogaufruf.h"
#include "dialogs/assignment/clsDialoge.h"
#include "exif/frm_BildInfo.h"
#include "platform/basic/Text.h"

bool clsDialoge::Fkt_Aufruf_Dialog_BildInfo(
    const QString& pBildNameMitPfad, const QString& pExifInfoText, bool pLoadFlag) {
  return dialogaufruf::rufe<frm_BildInfo>(u"Fkt_Aufruf_Dialog_BildInfo", [&](frm_BildInfo& form) {
    form.m_Bild = pBildNameMitPfad;
    form.m_ExifText = pExifInfoText;
    form.m_LoadFlag = pLoadFlag;
    if (text::Trim(pLoadFlag ? pBildNameMitPfad : pExifInfoText).isEmpty()) return;
    if (pLoadFlag)
      form.Load_Exif();
    else
      form.Create_List();
    form.Show();
  });
}
