#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "platform/basic/Farben.h"

/// What every control has in common: place and size in twips, and whether it shows and can be used. The measures are
/// kept exactly as they were set; the pixels derive from them. Used on the GUI thread.
class Steuerelement {
 public:
  virtual ~Steuerelement();
  Steuerelement(const Steuerelement&) = delete;
  Steuerelement& operator=(const Steuerelement&) = delete;

  /// Twips from the upper left corner of the container.
  double Left() const noexcept { return links_; }
  void Left(double wert);
  double Top() const noexcept { return oben_; }
  void Top(double wert);
  /// Twips. A negative size raises 380 and the old one stays.
  double Width() const noexcept { return breite_; }
  void Width(double wert);
  double Height() const noexcept { return hoehe_; }
  void Height(double wert);
  /// Sets all four. A negative size raises 380 and nothing changes.
  void Move(double links, double oben, double breite, double hoehe);

  /// The properties, whatever the containers say.
  bool Visible() const noexcept { return sichtbar_; }
  void Visible(bool wert);
  bool Enabled() const noexcept { return freigegeben_; }
  void Enabled(bool wert);
  void ToolTipText(const QString& text);
  /// Text colour and background; without one set the system's.
  Farbe BackColor() const;
  void BackColor(Farbe wert);
  Farbe ForeColor() const;
  void ForeColor(Farbe wert);

  /// A text that the control keeps for its form.
  QString Tag;
  /// A control that is dragged is above this one, told at every move; and it is dropped on this one.
  std::function<void()> DragOver;
  std::function<void()> DragDrop;

  QWidget& widget() const noexcept { return widget_; }

  /// Called once when the form shows for the first time, after its own resize.
  virtual void zum_ersten_Mal_gezeigt() {}

 protected:
  /// `widget` is the control itself and lives as long as this object.
  explicit Steuerelement(QWidget& widget);
  /// The size in twips has changed.
  virtual void nach_Groesse() {}
  /// The parts of the palette that the colours go to.
  virtual QPalette::ColorRole hintergrund() const;
  virtual QPalette::ColorRole vordergrund() const;

 private:
  void setze_Groesse(double breite, double hoehe);
  void setze_Geometrie();
  Farbe farbe(QPalette::ColorRole rolle) const;
  void setze_Farbe(QPalette::ColorRole rolle, Farbe wert);

  QWidget& widget_;
  double links_ = 0;
  double oben_ = 0;
  double breite_ = 0;
  double hoehe_ = 0;
  bool freigegeben_ = true;
  bool sichtbar_ = true;
};
