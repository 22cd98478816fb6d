#include "bench/freigabe/Durchgang.h"

using namespace Qt::Literals::StringLiterals;

Durchgang::Durchgang(const QString& ziel) : zaehlerdatei_(heim_.filePath(u"zaehler"_s)), eingehaengt_(ziel) {}

void Durchgang::starte(const QString& quelle, int mikrosekunden) {
  dienst_.emplace(QStringLiteral(KVO_DURCHGANG),
      QStringList{quelle, eingehaengt_.ordner(), zaehlerdatei_, QString::number(mikrosekunden)}, heim_.path());
  dienst_->warte_bis(
      "the pass-through does not mount", [this] { return Einhaengepunkt::ist_eingehaengt(eingehaengt_.ordner()); });
}
