#include "store/clsBilderSpeicher.h"

bool clsBilderSpeicher::Fkt_Clone(const clsBilderSpeicher& pObjAlt, std::int16_t pMontageNr) {
  Bild_Key1 = pObjAlt.Bild_Key1;
  Bild_Key2 = pObjAlt.Bild_Key2;
  Bild_Key3 = pMontageNr == -1 ? pObjAlt.Bild_Key3 : QString::number(pMontageNr);
  Bild_Key4 = pObjAlt.Bild_Key4;
  Bild_Bildname = pObjAlt.Bild_Bildname;
  Bild_BildExt = pObjAlt.Bild_BildExt;
  Bild_Typ1 = pObjAlt.Bild_Typ1;
  Bild_Typ2 = pObjAlt.Bild_Typ2;
  Bild_Pfad = pObjAlt.Bild_Pfad;
  Bild_Beschreibung = pObjAlt.Bild_Beschreibung;
  Bild_NeueSeite = pObjAlt.Bild_NeueSeite;
  Bild_AlsAnhang = pObjAlt.Bild_AlsAnhang;
  Bild_DruckGesamteSeite = pObjAlt.Bild_DruckGesamteSeite;
  Bild_Drucken = pObjAlt.Bild_Drucken;
  Bild_GrafikAnbNr = pObjAlt.Bild_GrafikAnbNr;
  Bild_Grafik_Ursprung = pObjAlt.Bild_Grafik_Ursprung;
  return true;
}
