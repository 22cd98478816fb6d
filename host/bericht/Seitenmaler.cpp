#include "host/bericht/Seitenmaler.h"

#include <QPen>

#include "host/bericht/Textsatz.h"

namespace seitenmaler {
namespace {

constexpr double Haarlinie = 8;
const QColor Liniengrau(150, 150, 150);

}  // namespace

void male(QPainter& maler, const seitenplan::Seite& seite, const Bildmaler& bild, const Zeichenmaler& zeichen) {
  if (seite.zeichen) zeichen(maler, *seite.zeichen);
  for (const seitenplan::Bildkasten& kasten : seite.bilder)
    if (!kasten.leer) bild(maler, kasten.ort, kasten.bild);
  maler.setBrush(Qt::NoBrush);
  maler.setPen(QPen(Liniengrau, Haarlinie));
  maler.drawLines(QList<QLineF>(seite.linien.begin(), seite.linien.end()));
  for (const seitenplan::Bildkasten& kasten : seite.bilder)
    if (kasten.leer) maler.drawRect(kasten.ort);
  for (const seitenplan::Textzeile& zeile : seite.texte) {
    maler.setFont(textsatz::schrift(zeile.schrift));
    maler.setPen(textsatz::farbe(zeile.schrift));
    maler.drawText(zeile.ort, zeile.text);
  }
}

QSize pixel(QSizeF ort, double dpi) {
  return QSizeF(ort * (dpi / 1440)).toSize().expandedTo({1, 1});
}

}  // namespace seitenmaler
