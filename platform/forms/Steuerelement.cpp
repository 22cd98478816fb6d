#include "platform/forms/Steuerelement.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/Twips.h"

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
  pruefe_Groesse(wert);
  breite_ = wert;
  setze_Geometrie();
}

void Steuerelement::Height(double wert) {
  pruefe_Groesse(wert);
  hoehe_ = wert;
  setze_Geometrie();
}

void Steuerelement::Move(double links, double oben, double breite, double hoehe) {
  pruefe_Groesse(breite);
  pruefe_Groesse(hoehe);
  links_ = links;
  oben_ = oben;
  breite_ = breite;
  hoehe_ = hoehe;
  setze_Geometrie();
}

void Steuerelement::setze_Geometrie() {
  widget_.setGeometry(twips::pixel(links_), twips::pixel(oben_), twips::pixel(breite_), twips::pixel(hoehe_));
}

void Steuerelement::uebernimm_Groesse(QSize pixel) {
  breite_ = twips::aus_Pixel(pixel.width());
  hoehe_ = twips::aus_Pixel(pixel.height());
}

bool Steuerelement::Visible() const {
  return !widget_.isHidden();
}
void Steuerelement::Visible(bool wert) {
  widget_.setVisible(wert);
}
void Steuerelement::Enabled(bool wert) {
  freigegeben_ = wert;
  widget_.setEnabled(wert);
}
void Steuerelement::ToolTipText(const QString& text) {
  widget_.setToolTip(text);
}
