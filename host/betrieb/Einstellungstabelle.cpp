#include "host/betrieb/Einstellungstabelle.h"

#include "host/betrieb/Datenbank.h"
#include "platform/basic/Laufzeitfehler.h"

using namespace Qt::Literals::StringLiterals;

void Einstellungstabelle::GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert,
    const QString& pProgramm, const QString& pBenutzer, const QString& pVorgabe) {
  pWert = pVorgabe;
  if (!verbindung_) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  const auto satz = verbindung_->Execute(
      u"Select Wert from Einstellungen where Abschnitt = %1 and Schluessel = %2 and Programm = %3 and Benutzer = %4"_s
          .arg(literal(pAbschnitt), literal(pSchluessel), literal(pProgramm), literal(pBenutzer)));
  if (!satz->Eof()) pWert = satz->Text(0);
}
