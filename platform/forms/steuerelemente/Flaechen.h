#pragma once

#include <QLabel>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A surface with a caption of plain text. A caption that does not fit ends with an ellipsis, in front of what lies on
/// the surface; its tool tip then shows the whole of it, where the surface has none of its own.
class Textflaeche : public QLabel, public Steuerelement {
 public:
  QString Caption() const { return text(); }
  void Caption(const QString& wert) { setText(wert); }
  /// What is drawn of the caption.
  QString gezeigter_Text() const;

 protected:
  explicit Textflaeche(QWidget* behaelter, const QString& name);
  bool event(QEvent* ereignis) override;
  void childEvent(QChildEvent* ereignis) override;
  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;
  void paintEvent(QPaintEvent* ereignis) override;

 private:
  /// Where the caption stands, up to the first control that lies beside its beginning.
  QRect Textplatz() const;
};

/// A panel: a framed surface with a caption, which can hold other controls, and which can be flooded from the left.
class SSPanel : public Textflaeche {
 public:
  explicit SSPanel(QWidget* behaelter, const QString& name);

  /// Percent of the width that is flooded, 0 to 100; anything else raises 380.
  double FloodPercent() const noexcept { return flut_; }
  void FloodPercent(double wert);

 protected:
  void paintEvent(QPaintEvent* ereignis) override;

 private:
  double flut_ = 0;
};

/// A line of text.
class Label : public Textflaeche {
 public:
  explicit Label(QWidget* behaelter, const QString& name) : Textflaeche(behaelter, name) {}
};

/// A frame in one colour around something else. It lies above its siblings and lets the mouse through.
class Shape : public QWidget, public Steuerelement {
 public:
  explicit Shape(QWidget* behaelter, const QString& name);

  Farbe BorderColor() const noexcept { return randfarbe_; }
  void BorderColor(Farbe wert);
  /// Pixels, at least 1; less raises 380.
  int BorderWidth() const noexcept { return randbreite_; }
  void BorderWidth(int wert);

 protected:
  void paintEvent(QPaintEvent* ereignis) override;

 private:
  Farbe randfarbe_ = 0;
  int randbreite_ = 1;
};
