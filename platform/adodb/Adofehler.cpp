#include "platform/adodb/Adofehler.h"

#include "platform/basic/Nachschlagen.h"

namespace adodb {

Laufzeitfehler adofehler(std::int32_t nummer) {
  constexpr std::pair<std::int32_t, QStringView> Eigene[] = {
      {adErrInvalidArgument, u"Das Argument hat einen unzulässigen Wert"},
      {adErrFeatureNotAvailable, u"Der Datenbanktreiber kennt keine Parameter"},
      {adErrNoCurrentRecord, u"Es gibt keinen aktuellen Datensatz"},
      {adErrObjectOpen, u"Der Vorgang ist für ein geöffnetes Objekt nicht zugelassen"}};
  return Laufzeitfehler(nummer, nachgeschlagen(Eigene, nummer, QStringView()).toString());
}

}  // namespace adodb
