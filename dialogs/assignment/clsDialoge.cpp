#include "dialogs/assignment/clsDialoge.h"

#include "dialogs/assignment/Dialogaufruf.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/search/frm_BilderSuchen.h"

bool clsDialoge::Fkt_Aufruf_Dialog_Zuordnung(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
    const QString& pStandardBildPfad, const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
    const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige, bool pNurAnhang) {
  return dialogaufruf::rufe<frm_BildZuordnung>(u"Fkt_Aufruf_Dialog_Zuordnung", [&](frm_BildZuordnung& form) {
    if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
    form.Load();
    form.pAppObj = pAppObj;
    form.pBildObj = pBildObj;
    form.pGL_jmtVerarbeitungsdatum = pBildObj->cGL_jmtVerarbeitungsdatum;
    form.pRootpath = pRootpath;
    form.pStandardBildPfad = pStandardBildPfad;
    form.PTyp1 = PTyp1;
    form.pTyp2 = pTyp2;
    form.pInfoZeile = pInfoZeile;
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
  return dialogaufruf::rufe<frm_BilderSuchen>(u"Fkt_Aufruf_Dialog_BilderSuchen", zeige, nimm) && pFindArray;
}
