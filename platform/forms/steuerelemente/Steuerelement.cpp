#include "platform/forms/steuerelemente/Steuerelement.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Farbwert.h"

namespace {

void pruefe_Groesse(double wert) {
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
}

}  // namespace

Steuerelement::Steuerelement(QWidget& widget) : widget_(widget) {}

Steuerelement::~Steuerelement() = default;

void Steuerelement::Left(double wert) {
  links_ = wert;
  setze_Geometrie();
}

void Steuerelement::Top(double wert) {
  oben_ = wert;
  setze_Geometrie();
}

void Steuerelement::Width(double wert) {
  setze_Groesse(wert, hoehe_);
}

void Steuerelement::Height(double wert) {
  setze_Groesse(breite_, wert);
}

void Steuerelement::Move(double links, double oben, double breite, double hoehe) {
  pruefe_Groesse(breite);
  pruefe_Groesse(hoehe);
  links_ = links;
  oben_ = oben;
  setze_Groesse(breite, hoehe);
}

void Steuerelement::setze_Groesse(double breite, double hoehe) {
  pruefe_Groesse(breite);
  pruefe_Groesse(hoehe);
  const bool anders = breite != breite_ || hoehe != hoehe_;
  breite_ = breite;
  hoehe_ = hoehe;
  setze_Geometrie();
  if (anders) nach_Groesse();
}

void Steuerelement::setze_Geometrie() {
  widget_.setGeometry(twips::pixel(links_), twips::pixel(oben_), twips::pixel(breite_), twips::pixel(hoehe_));
}

void Steuerelement::Visible(bool wert) {
  sichtbar_ = wert;
  widget_.setVisible(wert);
}
void Steuerelement::Enabled(bool wert) {
  freigegeben_ = wert;
  widget_.setEnabled(wert);
}
void Steuerelement::ToolTipText(const QString& text) {
  widget_.setToolTip(text);
}

Farbe Steuerelement::BackColor() const {
  return farbe(hintergrund());
}
void Steuerelement::BackColor(Farbe wert) {
  setze_Farbe(hintergrund(), wert);
  widget_.setAutoFillBackground(true);
}
Farbe Steuerelement::ForeColor() const {
  return farbe(vordergrund());
}
void Steuerelement::ForeColor(Farbe wert) {
  setze_Farbe(vordergrund(), wert);
}

// The roles are the widget's own: a text field paints on another one than a label does.
QPalette::ColorRole Steuerelement::hintergrund() const {
  return widget_.backgroundRole();
}
QPalette::ColorRole Steuerelement::vordergrund() const {
  return widget_.foregroundRole();
}

Farbe Steuerelement::farbe(QPalette::ColorRole rolle) const {
  const QColor c = widget_.palette().color(QPalette::Active, rolle);
  return static_cast<Farbe>(c.red() | c.green() << 8 | c.blue() << 16);
}

void Steuerelement::setze_Farbe(QPalette::ColorRole rolle, Farbe wert) {
  if (farbe(rolle) == wert) return;
  QPalette palette = widget_.palette();
  palette.setColor(rolle, farben::qt(wert));
  widget_.setPalette(palette);
}
