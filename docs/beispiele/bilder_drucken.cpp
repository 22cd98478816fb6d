#include <QPagedPaintDevice>
#include <QPainter>

#include "store/clsBildZuordnungen.h"

// Druckt die gekennzeichneten Bilder, jedes auf ein eigenes Blatt und so groß, wie es darauf passt. `bilder` ist
// gelesen (FKT_LeseBilder), `wurzel` die Bildablage. Gibt die Zahl der gedruckten.
int drucke_Bilder(clsBildZuordnungen& bilder, const QString& wurzel, QPagedPaintDevice& drucker) {
  QPainter maler(&drucker);
  const QSizeF blatt = maler.viewport().size();
  int gedruckte = 0;
  for (std::int32_t zeile = 0; zeile < bilder.AnzahlPos(); ++zeile) {
    bilder.AktInd(zeile);
    // Ein gleicher Name in einem anderen Ordner gälte sonst als geladen.
    bilder.AktLoadPicture.clear();
    const QString datei = bilder.Bild_Bildname() + u'.' + bilder.Bild_BildExt();
    if (!bilder.Bild_Drucken() || !bilder.FKT_LoadPicture(datei, wurzel + u'\\' + bilder.Bild_Pfad(), false)) continue;
    if (!bilder.AktLoadPicture_Picture) continue;  // da, aber kein lesbares Bild
    const double eigene_Breite = bilder.AktLoadPicture_Breite;
    const double eigene_Hoehe = bilder.AktLoadPicture_Hoehe;
    // Die Breite füllt das Blatt; wo die Höhe dann nicht reicht, füllt die Höhe es.
    QSizeF groesse(
        blatt.width(), bilder.Fkt_GetHoehe_Picture(eigene_Breite, eigene_Hoehe, blatt.height(), blatt.width()));
    if (groesse.height() > blatt.height())
      groesse = {
          bilder.Fkt_GetBreite_Picture(eigene_Breite, eigene_Hoehe, blatt.height(), blatt.width()), blatt.height()};
    if (gedruckte++ > 0) drucker.newPage();
    maler.drawImage(QRectF(QPointF(), groesse), bilder.AktLoadPicture_Picture->bild(groesse.toSize()));
  }
  return gedruckte;
}
