#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A surface in four panes with three bars between them that can be dragged: pane 0 across the top, below it pane 1 on
/// the left and pane 2 on the right, and pane 3 across the bottom. Panes 0 and 3 keep their height and pane 1 its width
/// when the splitter grows; pane 2 gets the rest. Measures are twips and kept exactly.
///
/// A pane holds one control, which always fills it.
class SSSplitter : public QWidget, public Steuerelement {
 public:
  static constexpr int Anzahl = 4;
  /// Thickness of a bar, and what a pane keeps as long as there is room.
  static constexpr double Balken = 75;
  static constexpr double Mindestmass = 450;

  explicit SSSplitter(QWidget* behaelter, const QString& name);

  /// Puts a control, whose parent is this splitter, into a pane. A pane of another number raises 9.
  void setze_Inhalt(int nummer, Steuerelement& inhalt);

  /// Measures of a pane as they are at the moment.
  double PaneHeight(int nummer) const { return masse_[platz(nummer)].hoehe; }
  double PaneWidth(int nummer) const { return masse_[platz(nummer)].breite; }
  /// Set the height of pane 0 or 3, the width of pane 1; any other pane raises 5, a negative measure 380. Without
  /// enough room the pane is smaller until there is. Raises Resize when a measure changes.
  void PaneHeight(int nummer, double wert);
  void PaneWidth(int nummer, double wert);

  /// Measures have changed; gets the lowest number of those panes. At the first showing it is raised in any case, for
  /// pane 0.
  std::function<void(int)> Resize;

  void zum_ersten_Mal_gezeigt() override {
    if (Resize) Resize(0);
  }

 protected:
  void nach_Groesse() override { ordne_an(); }

 private:
  class Griff;
  struct Mass {
    double links = 0;
    double oben = 0;
    double breite = 0;
    double hoehe = 0;
    friend bool operator==(const Mass&, const Mass&) = default;
  };
  using Masse = std::array<Mass, Anzahl>;
  static std::size_t platz(int nummer);
  void setze_Wunsch(double& wunsch, double wert);
  Masse berechne() const;
  void ordne_an();
  void ordne_Griffe_an();
  /// The user let go of a bar, moved by that many pixels.
  void verschiebe(const Griff& griff, int pixel);

  double kopf_ = 750;
  double links_ = 3600;
  double streifen_ = 2100;
  Masse masse_{};
  std::array<Steuerelement*, Anzahl> inhalt_{};
  Griff* unter_Kopf_;
  Griff* mitte_;
  Griff* ueber_Streifen_;
};
