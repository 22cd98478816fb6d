#pragma once

#include <QSignalBlocker>
#include <QString>
#include <QWidget>
#include <functional>

#include "platform/basic/Farben.h"

/// What every control has in common: place and size in twips, and whether it shows and can be used. The measures are
/// kept exactly as they were set; the pixels derive from them. Used on the GUI thread.
class Steuerelement {
 public:
  virtual ~Steuerelement();
  Q_DISABLE_COPY_MOVE(Steuerelement)

  /// Twips from the upper left corner of the container.
  double Left() const noexcept { return links_; }
  void Left(double wert) { Move(wert, oben_, breite_, hoehe_); }
  double Top() const noexcept { return oben_; }
  void Top(double wert) { Move(links_, wert, breite_, hoehe_); }
  /// Twips. A negative size raises 380 and the old one stays.
  double Width() const noexcept { return breite_; }
  void Width(double wert) { Move(links_, oben_, wert, hoehe_); }
  double Height() const noexcept { return hoehe_; }
  void Height(double wert) { Move(links_, oben_, breite_, wert); }
  /// Sets all four. A negative size raises 380 and nothing changes.
  void Move(double links, double oben, double breite, double hoehe);

  /// The properties, whatever the containers say. While a Sichtbarkeitspause lives, Visible reaches the screen at its
  /// end.
  bool Visible() const noexcept { return sichtbar_; }
  void Visible(bool wert);
  bool Enabled() const noexcept { return freigegeben_; }
  void Enabled(bool wert);
  void ToolTipText(const QString& text) { widget_.setToolTip(text); }
  /// Text colour and background; without one set the system's.
  Farbe BackColor() const { return farbe(hintergrund()); }
  void BackColor(Farbe wert);
  Farbe ForeColor() const { return farbe(vordergrund()); }
  void ForeColor(Farbe wert) { setze_Farbe(vordergrund(), wert); }

  /// A text that the control keeps for its form.
  QString Tag;
  /// A dragged control moves above this one, and is dropped on it. DragOver runs at every move.
  std::function<void()> DragOver;
  std::function<void()> DragDrop;

  QWidget& widget() const noexcept { return widget_; }

  /// Called once when the form shows for the first time, after its own resize.
  virtual void zum_ersten_Mal_gezeigt() {}

 protected:
  /// The parts of the palette that the colours go to: the widget's own, or those of a field for texts.
  enum class Farbrollen { Eigene, Feld };
  /// `widget` is the control itself and lives as long as this object.
  Steuerelement(QWidget& widget, const QString& name, Farbrollen rollen = Farbrollen::Eigene);
  /// The size in twips has changed.
  virtual void nach_Groesse() {}
  Farbe farbe(QPalette::ColorRole rolle) const;
  void setze_Farbe(QPalette::ColorRole rolle, Farbe wert);
  /// Changes the widget without its signals: what code changes, the statement itself tells.
  template <class Anweisung>
  void ohne_Signale(Anweisung&& anweisung) {
    const QSignalBlocker still(widget_);
    anweisung();
  }

 private:
  QPalette::ColorRole hintergrund() const { return ist_Feld_ ? QPalette::Base : widget_.backgroundRole(); }
  QPalette::ColorRole vordergrund() const { return ist_Feld_ ? QPalette::Text : widget_.foregroundRole(); }

  QWidget& widget_;
  const bool ist_Feld_;
  double links_ = 0;
  double oben_ = 0;
  double breite_ = 0;
  double hoehe_ = 0;
  bool freigegeben_ = true;
  bool sichtbar_ = true;
  bool wartet_ = false;
  friend class Sichtbarkeitspause;
};

/// Each change of what is seen costs events, also one that the next statement takes back. Whoever makes, hides and
/// shows many controls in one go lets them change when all is done: what was set last then takes effect, in the order
/// in which the controls were first set. Nests. Whoever lets events in meanwhile (a message in the
/// middle of it) shows the controls as they stood before.
class Sichtbarkeitspause {
 public:
  Sichtbarkeitspause() noexcept;
  ~Sichtbarkeitspause();
  Q_DISABLE_COPY_MOVE(Sichtbarkeitspause)
};
