#include "host/betrieb/aufnahme/Bildstatus.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

QString bildstatus::worte(std::int32_t status) {
  static const QHash<std::int32_t, QString> Worte{{2, u"Der Kopf des Bildes ist beschädigt."_s},
      {3, u"Der Speicher reicht nicht."_s}, {7, u"Der Datenträger ist voll oder gestört."_s},
      {10, u"Die Datei oder der Ordner des Ziels fehlt."_s}, {12, u"Das Recht zum Lesen oder Schreiben fehlt."_s},
      {13, u"Das ist kein Bild eines bekannten Formats."_s}};
  return Worte.value(status, u"Das Bild ist nicht zu lesen, oder Quelle und Ziel sind dieselbe Datei."_s);
}
