#include "platform/adodb/Adofehler.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {

Laufzeitfehler adofehler(std::int32_t nummer) {
  switch (nummer) {
    case adErrInvalidArgument:
      return Laufzeitfehler(nummer, u"Das Argument hat einen unzulässigen Wert"_s);
    case adErrNoCurrentRecord:
      return Laufzeitfehler(nummer, u"Es gibt keinen aktuellen Datensatz"_s);
    case adErrObjectOpen:
      return Laufzeitfehler(nummer, u"Der Vorgang ist für ein geöffnetes Objekt nicht zugelassen"_s);
    default:
      return Laufzeitfehler(nummer);
  }
}

}  // namespace adodb
