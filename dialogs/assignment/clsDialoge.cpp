#include "dialogs/assignment/clsDialoge.h"

#include "dialogs/assignment/Dialogmeldung.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "platform/basic/Fehlerbehandlung.h"

using namespace Qt::Literals::StringLiterals;

void dialogmeldung::melde(const char16_t* prozedur, const Laufzeitfehler& fehler) {
  KVOCore::aktuell().FehlerMelden(
      u"clsDialoge"_s, QString::fromUtf16(prozedur), fehler.Nummer(), fehler.Beschreibung(), true);
}

bool clsDialoge::Fkt_Aufruf_Dialog_Zuordnung(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
    const QString& pStandardBildPfad, const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
    const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige, bool pNurAnhang) {
  std::unique_ptr<frm_BildZuordnung> form;
  const bool gelaufen =
      fehler::melden_und_enden([](const Laufzeitfehler& f) { dialogmeldung::melde(u"Fkt_Aufruf_Dialog_Zuordnung", f); },
          [&] {
    if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
    form = std::make_unique<frm_BildZuordnung>();
    form->Load();
    form->pAppObj = pAppObj;
    form->pBildObj = pBildObj;
    form->pGL_jmtVerarbeitungsdatum = pBildObj->cGL_jmtVerarbeitungsdatum;
    form->pRootpath = pRootpath;
    form->pStandardBildPfad = pStandardBildPfad;
    form->PTyp1 = PTyp1;
    form->pTyp2 = pTyp2;
    form->pInfoZeile = pInfoZeile;
    form->pNurAnzeige = pNurAnzeige;
    form->pNurAnhang = pNurAnhang;
    form->Lade_Zuordnung();
    form->AnzeigeSteuern();
    form->Show();
    return true;
      });
  // After a failure the form is not unloaded, only let go.
  if (gelaufen) form->Unload();
  return gelaufen;
}

bool clsDialoge::Fkt_Aufruf_Dialog_BilderSuchen(const std::shared_ptr<Anwendungsobjekt>& /*pAppObj*/,
    const QString& pRootpath, std::shared_ptr<XArrayDBObject>& pFindArray, bool MultiSelect) {
  std::unique_ptr<frm_BilderSuchen> form;
  const bool gelaufen = fehler::melden_und_enden(
      [](const Laufzeitfehler& f) { dialogmeldung::melde(u"Fkt_Aufruf_Dialog_BilderSuchen", f); },
      [&] {
    form = std::make_unique<frm_BilderSuchen>();
    // Loading already looks at these two.
    form->MultiSelect = MultiSelect;
    form->pRootpath = pRootpath;
    form->Load();
    form->pFindArray = pFindArray;
    form->Show();
    return true;
      });
  if (!gelaufen) return false;
  pFindArray = form->pFindArray;
  form->raeume_auf();
  form->Unload();
  return pFindArray != nullptr;
}
