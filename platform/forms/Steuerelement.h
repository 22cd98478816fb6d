#pragma once

#include <QWidget>

#include "platform/basic/kvo_export.h"

/// What every control has in common: place and size in twips, and whether it shows and can be used. The measures are
/// kept exactly as they were set; the pixels derive from them. Used on the GUI thread.
class KVO_EXPORT Steuerelement {
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
  bool Visible() const;
  void Visible(bool wert);
  bool Enabled() const noexcept { return freigegeben_; }
  void Enabled(bool wert);
  void ToolTipText(const QString& text);

  QWidget& widget() const noexcept { return widget_; }

 protected:
  /// `widget` is the control itself and lives as long as this object.
  explicit Steuerelement(QWidget& widget);
  /// Takes over a size that a container gave in pixels.
  void uebernimm_Groesse(QSize pixel);

 private:
  void setze_Geometrie();

  QWidget& widget_;
  double links_ = 0;
  double oben_ = 0;
  double breite_ = 0;
  double hoehe_ = 0;
  bool freigegeben_ = true;
};
