#include "dialogs/assignment/Dialogaufruf.h"
#include "dialogs/assignment/clsDialoge.h"
#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"

bool clsDialoge::Fkt_Aufruf_Dialog_AlleZuordnungen(const std::shared_ptr<Anwendungsobjekt>& pAppObj,
    const QString& pRootpath, const QString& pStandardBildPfad, const QString& pKey1, const QString& pKey2,
    const QString& pKey3, const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2, const QString& pGL_jmtVerarbeitungsdatum, const QString& pInfoZeile,
    bool& pDeleteFlagAktBild) {
  const auto zeige = [&](frm_AlleZuordnungen& form) {
    form.Load();
    static_cast<Uebersichtsauftrag&>(form) = {pAppObj, pRootpath, pStandardBildPfad, pKey1, pKey2, pKey3, pKey4, PTyp1,
        pTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile};
    form.pBildname = pBildname;
    form.pBildExt = pBildExt;
    form.Lade_AlleZuordnungen();
    form.Show();
  };
  return dialogaufruf::rufe<frm_AlleZuordnungen>(u"Fkt_Aufruf_Dialog_AlleZuordnungen", zeige,
      [&](const frm_AlleZuordnungen& form) { pDeleteFlagAktBild = form.pDeleteFlagAktBild; });
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
  return dialogaufruf::rufe<frm_AnzeigeZuordnung>(u"Fkt_Aufruf_Dialog_WeitereZuordnungen",
      [&](frm_AnzeigeZuordnung& form) {
    form.Load();
    static_cast<Uebersichtsauftrag&>(form) = {pAppObj, pRootpath, pStandardBildPfad, pKey1, pKey2, pKey3, pKey4, PTyp1,
        pTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile};
    form.pBildObj = pBildObj;
    form.Lade_Zuordnungen();
    form.Show();
  });
}
