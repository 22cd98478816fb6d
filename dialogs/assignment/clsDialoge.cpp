#include "dialogs/assignment/clsDialoge.h"

#include <functional>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "exif/frm_BildInfo.h"
#include "platform/basic/Text.h"
#include "platform/host/Meldeweg.h"

namespace {

/// Makes a form, lets `zeige` fill and show it, `danach` read its result, and unloads it. A failure until it was shown
/// goes to the host as one of the entry point `prozedur`; the form is then not unloaded, only let go. False after it.
template <class Fenster>
bool rufe(QStringView prozedur, const std::function<void(Fenster&)>& zeige,
    const std::function<void(Fenster&)>& danach = {}) {
  std::unique_ptr<Fenster> form;
  const bool gelaufen = fehler::gemeldet(u"clsDialoge", prozedur, [&] {
    form = std::make_unique<Fenster>();
    zeige(*form);
    return true;
  });
  if (!gelaufen) return false;
  if (danach) danach(*form);
  form->Unload();
  return true;
}

}  // namespace

bool clsDialoge::Fkt_Aufruf_Dialog_Zuordnung(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
    const QString& pStandardBildPfad, const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
    const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige, bool pNurAnhang) {
  return rufe<frm_BildZuordnung>(u"Fkt_Aufruf_Dialog_Zuordnung", [&](frm_BildZuordnung& form) {
    if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
    form.Load();
    static_cast<Auftrag&>(form) = {
        pAppObj, pRootpath, pStandardBildPfad, PTyp1, pTyp2, pBildObj->cGL_jmtVerarbeitungsdatum, pInfoZeile};
    form.pBildObj = pBildObj;
    form.pNurAnzeige = pNurAnzeige;
    form.pNurAnhang = pNurAnhang;
    form.Lade_Zuordnung();
    form.AnzeigeSteuern();
    form.Show();
  });
}

bool clsDialoge::Fkt_Aufruf_Dialog_BilderSuchen(const std::shared_ptr<Anwendungsobjekt>& /*pAppObj*/,
    const QString& pRootpath, std::shared_ptr<XArrayDBObject>& pFindArray, bool MultiSelect) {
  const auto zeige = [&](frm_BilderSuchen& form) {
    // Loading already looks at these two.
    form.MultiSelect = MultiSelect;
    form.pRootpath = pRootpath;
    form.Load();
    form.pFindArray = pFindArray;
    form.Show();
  };
  const auto nimm = [&](frm_BilderSuchen& form) {
    pFindArray = form.pFindArray;
    form.raeume_auf();
  };
  return rufe<frm_BilderSuchen>(u"Fkt_Aufruf_Dialog_BilderSuchen", zeige, nimm) && pFindArray;
}

bool clsDialoge::Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
    const QString& pRootpath, const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2,
    const QString& pKey3, const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile,
    bool& pDeleteFlagAktBild) {
  const auto zeige = [&](frm_AlleZuordnungen& form) {
    form.Load();
    static_cast<Uebersichtsauftrag&>(form) = {
        {pAppObj, pRootpath, pStandardBildPfad, PTyp1, pTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile}, pKey1, pKey2,
        pKey3, pKey4};
    form.pBildname = pBildname;
    form.pBildExt = pBildExt;
    form.Lade_AlleZuordnungen();
    form.Show();
  };
  return rufe<frm_AlleZuordnungen>(u"Fkt_Aufruf_Dialog_AlleZuordnungen", zeige,
      [&](frm_AlleZuordnungen& form) { pDeleteFlagAktBild = form.pDeleteFlagAktBild; });
}

bool clsDialoge::Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
    const QString& pRootpath, const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2,
    const QString& pKey3, const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile) {
  bool eigene = false;
  return Fkt_Aufruf_Dialog_AlleZuordnungen(pAppObj, pRootpath, pStandardBildPfad, pKey1, pKey2, pKey3, pKey4, pBildname,
      pBildExt, PTyp1, pTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile, eigene);
}

bool clsDialoge::Fkt_Aufruf_Dialog_WeitereZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
    const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& pRootpath, const QString& pStandardBildPfad,
    const QString& pKey1, const QString& pKey2, const QString& pKey3, const QString& pKey4, const QString& PTyp1,
    const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile) {
  return rufe<frm_AnzeigeZuordnung>(u"Fkt_Aufruf_Dialog_WeitereZuordnungen", [&](frm_AnzeigeZuordnung& form) {
    form.Load();
    static_cast<Uebersichtsauftrag&>(form) = {
        {pAppObj, pRootpath, pStandardBildPfad, PTyp1, pTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile}, pKey1, pKey2,
        pKey3, pKey4};
    form.pBildObj = pBildObj;
    form.Lade_Zuordnungen();
    form.Show();
  });
}

bool clsDialoge::Fkt_Aufruf_Dialog_BildInfo(
    const QString& pBildNameMitPfad, const QString& pExifInfoText, bool pLoadFlag) {
  return rufe<frm_BildInfo>(u"Fkt_Aufruf_Dialog_BildInfo", [&](frm_BildInfo& form) {
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
