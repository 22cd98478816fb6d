#include "store/clsBilderSpeicher.h"

#include <utility>

bool clsBilderSpeicher::Fkt_Clone(const clsBilderSpeicher& pObjAlt, std::int16_t pMontageNr) {
  clsBilderSpeicher neu = pObjAlt;
  neu.Bild_Druckkennzeichen = Bild_Druckkennzeichen;
  neu.Bild_SortIndex = Bild_SortIndex;
  if (pMontageNr != -1) neu.Bild_Key3 = QString::number(pMontageNr);
  *this = std::move(neu);
  return true;
}
