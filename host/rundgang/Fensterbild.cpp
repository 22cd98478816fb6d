#include "host/rundgang/Fensterbild.h"

#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace {

QRect platz_ueber(const QWidget& darunter, const QWidget& fenster) {
  QRect platz(fenster.mapToGlobal(QPoint(0, 0)) - darunter.mapToGlobal(QPoint(0, 0)), fenster.size());
  // A screen too small for the window below pushes the box out of it.
  if (!darunter.rect().contains(platz)) platz.moveCenter(darunter.rect().center());
  return platz;
}

void male_Rahmen(QPainter& maler, const QRect& platz, const QWidget& fenster) {
  QFont schrift = fenster.font();
  schrift.setBold(true);
  const int hoehe = QFontMetrics(schrift).height() + 12;
  const QRect titel(platz.left(), platz.top() - hoehe, platz.width(), hoehe);
  maler.fillRect(titel, fenster.palette().color(QPalette::Dark));
  maler.setPen(fenster.palette().color(QPalette::Shadow));
  maler.drawRect(titel.united(platz).adjusted(-1, -1, 0, 0));
  maler.setFont(schrift);
  maler.setPen(Qt::white);
  maler.drawText(titel.adjusted(10, 0, -10, 0), Qt::AlignLeft | Qt::AlignVCenter, fenster.windowTitle());
}

}  // namespace

QImage fensterbild::nimm_auf(QWidget& fenster) {
  QWidget* const darunter = fenster.parentWidget() ? fenster.parentWidget()->window() : nullptr;
  const bool passt = darunter && fenster.width() < darunter->width() && fenster.height() < darunter->height();
  if (!passt || !darunter->isVisible()) return fenster.grab().toImage();
  QImage bild = darunter->grab().toImage();
  const QRect platz = platz_ueber(*darunter, fenster);
  QPainter maler(&bild);
  male_Rahmen(maler, platz, fenster);
  maler.drawPixmap(platz.topLeft(), fenster.grab());
  return bild;
}
