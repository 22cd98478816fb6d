#include <QStringList>

#include "component/Zuordnungsweg.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString zahl(int anzahl, const QString& eines, const QString& mehrere) {
  return QString::number(anzahl) + u' ' + (anzahl == 1 ? eines : mehrere);
}

QString geschriebene(const Zuordnungsweg::Ergebnis& ergebnis) {
  QStringList teile;
  const auto dazu = [&](int anzahl, const QString& wort) {
    if (anzahl > 0) teile.append(u"%1 %2"_s.arg(anzahl).arg(wort));
  };
  dazu(ergebnis.neu, u"neu"_s);
  dazu(ergebnis.geaendert, u"geändert"_s);
  dazu(ergebnis.entfernt, u"entfernt"_s);
  dazu(ergebnis.nachgefuehrt, u"nur in der Reihenfolge"_s);
  return u"%1 geschrieben: %2."_s.arg(zahl(ergebnis.geschrieben(), u"Zeile"_s, u"Zeilen"_s), teile.join(u", "_s));
}

}  // namespace

QString Zuordnungsweg::Ergebnis::text() const {
  if (!geoeffnet) return u"Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s;
  const QString draussen = ausserhalb == 0
      ? QString()
      : u" Außerhalb der Bildablage und darum nicht geöffnet: %1."_s.arg(zahl(ausserhalb, u"Bild"_s, u"Bilder"_s));
  if (nur_Anzeige) return u"Nur angezeigt; nichts ist geschrieben."_s + draussen;
  QStringList saetze;
  if (geschrieben() > 0) saetze.append(geschriebene(*this));
  if (nicht_geschrieben > 0)
    saetze.append(u"NICHT gespeichert: %1; diese Änderungen sind verloren."_s.arg(
        zahl(nicht_geschrieben, u"Bild"_s, u"Bilder"_s)));
  if (ungewiss > 0)
    saetze.append(u"UNGEWISS: %1; die Datenbank ist nicht zu fragen."_s.arg(zahl(ungewiss, u"Bild"_s, u"Bilder"_s)));
  if (saetze.isEmpty()) saetze.append(u"Nichts geändert."_s);
  if (geschrieben() > 0 && !geprueft) saetze.append(u"Nicht nachgeprüft."_s);
  if (dialog_gescheitert) saetze.append(u"Der Dialog endete mit einem Fehler."_s);
  return saetze.join(u' ') + draussen;
}
