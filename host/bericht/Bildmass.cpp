#include "host/bericht/Bildmass.h"

#include "store/clsBildZuordnungen.h"

namespace seitenplan {

QSizeF eingepasst(QSizeF platz, QSizeF groesse) {
  clsBildZuordnungen store;
  const double hoehe = store.Fkt_GetHoehe_Picture(groesse.width(), groesse.height(), platz.height(), platz.width());
  if (hoehe <= platz.height()) return {platz.width(), hoehe};
  return {
      store.Fkt_GetBreite_Picture(groesse.width(), groesse.height(), platz.height(), platz.width()), platz.height()};
}

QRectF bildort(const QRectF& platz, QSizeF pixel) {
  const QSizeF groesste = pixel * (1440 / Kleinste_Dichte);
  return {platz.topLeft(), eingepasst(platz.size().boundedTo(groesste), pixel)};
}

}  // namespace seitenplan
