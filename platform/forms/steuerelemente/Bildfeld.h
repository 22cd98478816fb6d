#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <memory>
#include <vector>

#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Steuerelement.h"
#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"

/// A picture box. It holds a picture, as a stage for others, and a persistent image that is drawn on.
///
/// What is drawn is kept and becomes pixels only when somebody looks: when the box is painted on the screen or asked
/// for its image. A picture in a part of the window that nobody sees costs nothing but its header, and the pixels are
/// those of the screen, whatever its scaling. Measures of drawing are pixels (15 twips). A picture that can't be
/// decoded leaves what could be.
class Bildfeld : public QWidget, public Steuerelement {
 public:
  explicit Bildfeld(QWidget* behaelter, const QString& name) : QWidget(behaelter), Steuerelement(*this, name) {}

  /// The picture on stage; none empties it. With AutoSize the box takes its size, and keeps the last one when emptied.
  const std::shared_ptr<const Bild>& Picture() const noexcept { return bild_; }
  void Picture(std::shared_ptr<const Bild> wert);
  bool AutoSize = false;
  /// Inner size in pixels; not rounded.
  double ScaleWidth() const noexcept { return Width() / twips::JePixel; }
  double ScaleHeight() const noexcept { return Height() / twips::JePixel; }

  /// Empties the persistent image.
  void Cls();
  /// Draws a picture scaled to that rectangle.
  void PaintPicture(const std::shared_ptr<const Bild>& bild, const QRectF& ziel);
  /// Draws a line of one pixel between two points, both included.
  void Linie(QPointF von, QPointF bis, Farbe farbe);
  /// Draws a filled box; both corners are inside.
  void Kasten(QPointF von, QPointF bis, Farbe farbe);
  /// The persistent image, at the screen's pixels. Draws what is still to be drawn.
  const QImage& Image() const;
  /// Nothing of what was drawn waits for its pixels.
  bool ist_gezeichnet() const noexcept { return offen_.empty(); }

  /// The pictures that wait for their pixels, at the size at which they will be painted.
  QList<bildvorlauf::Vorlauf::Wunsch> offene_Bilder() const;

  /// 0: the box gets clicks. 1: pressing the mouse button on it begins to drag it, and no click comes.
  int DragMode() const noexcept { return ziehart_; }
  void DragMode(int wert);

  /// Becomes a copy of another box: place, size, drag mode, tool tip and colours. It is hidden.
  void uebernimm(const Bildfeld& vorlage);

  /// A double click is a click and a double click.
  std::function<void()> Click;
  std::function<void()> DblClick;

 protected:
  void paintEvent(QPaintEvent* ereignis) override;
  void mousePressEvent(QMouseEvent* ereignis) override;
  void mouseReleaseEvent(QMouseEvent* ereignis) override;
  void mouseDoubleClickEvent(QMouseEvent* ereignis) override;

 private:
  struct Zeichnung {
    std::function<void(QPainter& maler)> male;
    std::shared_ptr<const Bild> bild;  ///< none for what is no picture
    QRectF ziel;
  };
  void zeichne(Zeichnung zeichnung);
  QSize punkte(const QRectF& ziel) const;

  std::shared_ptr<const Bild> bild_;
  mutable std::vector<Zeichnung> offen_;
  mutable QImage pixel_;
  int ziehart_ = 0;
  bool gedrueckt_ = false;
};
