#include "dialogs/assignment/Dialogmeldung.h"
#include "dialogs/assignment/clsDialoge.h"
#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"

bool clsDialoge::Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
    const QString& pRootpath, const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2,
    const QString& pKey3, const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile,
    bool& pDeleteFlagAktBild) {
  const auto melden = [](const Laufzeitfehler& f) { dialogmeldung::melde(u"Fkt_Aufruf_Dialog_AlleZuordnungen", f); };
  std::unique_ptr<frm_AlleZuordnungen> form;
  const bool gelaufen = fehler::melden_und_enden(melden, [&] {
    form = std::make_unique<frm_AlleZuordnungen>();
    form->Load();
    form->pAppObj = pAppObj;
    form->pGL_jmtVerarbeitungsdatum = pGL_jmtVerarbeitungsdatum;
    form->pRootpath = pRootpath;
    form->pStandardBildPfad = pStandardBildPfad;
    form->pBildname = pBildname;
    form->pBildExt = pBildExt;
    form->pKey1 = pKey1;
    form->pKey2 = pKey2;
    form->pKey3 = pKey3;
    form->pKey4 = pKey4;
    form->PTyp1 = PTyp1;
    form->pTyp2 = pTyp2;
    form->pInfoZeile = pInfoZeile;
    form->Lade_AlleZuordnungen();
    form->Show();
    return true;
  });
  // After a failure the form is not unloaded, only let go.
  if (!gelaufen) return false;
  pDeleteFlagAktBild = form->pDeleteFlagAktBild;
  form->Unload();
  return true;
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
  const auto melden = [](const Laufzeitfehler& f) { dialogmeldung::melde(u"Fkt_Aufruf_Dialog_WeitereZuordnungen", f); };
  std::unique_ptr<frm_AnzeigeZuordnung> form;
  const bool gelaufen = fehler::melden_und_enden(melden, [&] {
    form = std::make_unique<frm_AnzeigeZuordnung>();
    form->Load();
    form->pAppObj = pAppObj;
    form->pGL_jmtVerarbeitungsdatum = pGL_jmtVerarbeitungsdatum;
    form->pRootpath = pRootpath;
    form->pStandardBildPfad = pStandardBildPfad;
    form->pBildObj = pBildObj;
    form->pKey1 = pKey1;
    form->pKey2 = pKey2;
    form->pKey3 = pKey3;
    form->pKey4 = pKey4;
    form->PTyp1 = PTyp1;
    form->pTyp2 = pTyp2;
    form->pInfoZeile = pInfoZeile;
    form->Lade_Zuordnungen();
    form->Show();
    return true;
  });
  if (gelaufen) form->Unload();
  return gelaufen;
}
