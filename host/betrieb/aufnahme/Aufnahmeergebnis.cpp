#include "host/betrieb/aufnahme/Aufnahmeergebnis.h"

#include <QLocale>

using namespace Qt::Literals::StringLiterals;

namespace {

QString zahl(qsizetype anzahl) {
  return QLocale(QLocale::German).toString(anzahl);
}

QString zugeordnete(qsizetype anzahl, int alle, bool angehalten) {
  if (angehalten) return u"Angehalten: %1 von %2 Bildern zugeordnet."_s.arg(zahl(anzahl), zahl(alle));
  if (anzahl == 0) return u"Nichts zugeordnet."_s;
  return anzahl == 1 ? u"1 Bild zugeordnet."_s : u"%1 Bilder zugeordnet."_s.arg(zahl(anzahl));
}

}  // namespace

QString Aufnahmeergebnis::text() const {
  QStringList saetze{zugeordnete(static_cast<qsizetype>(bilder.size()), alle, angehalten)};
  if (uebersprungene > 0) saetze.append(u"Schon da und übersprungen: %1."_s.arg(zahl(uebersprungene)));
  if (probleme.size() == 1) saetze.append(probleme.first());
  if (probleme.size() > 1) saetze.append(u"NICHT zugeordnet: %1 – %2"_s.arg(zahl(probleme.size()), probleme.first()));
  saetze += hinweise.mid(0, 1);
  if (hinweise.size() > 1) saetze.append(u"%1 weitere Hinweise."_s.arg(zahl(hinweise.size() - 1)));
  return saetze.join(u' ');
}
