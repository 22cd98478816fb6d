#include "imaging/frmPic.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "store/clsBildZuordnungen.h"

bool clsBildZuordnungen::FKT_LoadPicture(const QString& BName, const QString& pPfad, bool pTwips) {
  return fehler::still_enden([&] {
    // The name alone decides: the same name in another folder counts as loaded.
    if (BName == AktLoadPicture) return true;
    frmPic& formular = frmPic::Instanz();
    if (pTwips) formular.picPicture.Scale(ScaleMode::Twips);
    const bool geladen = formular.FKT_LoadPicture(pPfad + u'\\' + BName);
    if (geladen) {
      AktLoadPicture = BName;
      AktLoadPicture_Breite = formular.picBreite;
      AktLoadPicture_Hoehe = formular.PicHoehe;
      AktLoadPicture_Picture = formular.picPicture.Picture();
    }
    frmPic::Entladen();
    return geladen;
  });
}

double clsBildZuordnungen::Fkt_GetHoehe_Picture(double pBildB, double pBildH, double pHoehe, double pBreite) {
  return pBreite != 0 && pBildB != 0 && pBildH != 0 ? pBildH * pBreite / pBildB : pHoehe;
}

double clsBildZuordnungen::Fkt_GetBreite_Picture(double pBildB, double pBildH, double pHoehe, double pBreite) {
  return pHoehe != 0 && pBildB != 0 && pBildH != 0 ? pBildB * pHoehe / pBildH : pBreite;
}

bool clsBildZuordnungen::Pruefe_naechstes_Bild_neueSeite(std::int32_t abInd) {
  return fehler::still_enden([&] {
    const std::int32_t anzahl = AnzahlPos();
    if (abInd >= anzahl) return false;
    for (std::int32_t i = abInd + 1; i < anzahl; ++i) {
      const auto& satz = zeile(i).Zeile_Objekt;
      if (satz && satz->Bild_AlsAnhang && satz->Bild_Drucken && satz->Bild_NeueSeite) return true;
    }
    return false;
  });
}
