#include "platform/forms/steuerelemente/Steuerelement.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Farbwert.h"

namespace {

int pausen = 0;
/// Controls whose Visible was set in a pause; none where one has gone since.
std::deque<Steuerelement*> wartende;

}  // namespace

Sichtbarkeitspause::Sichtbarkeitspause() noexcept {
  ++pausen;
}

// What the events of a control do to another one is done at once, and may end one that waits.
Sichtbarkeitspause::~Sichtbarkeitspause() {
  if (--pausen > 0) return;
  while (!wartende.empty()) {
    Steuerelement* const element = wartende.front();
    wartende.pop_front();
    if (!element) continue;
    element->wartet_ = false;
    element->widget_.setVisible(element->sichtbar_);
  }
}

Steuerelement::Steuerelement(QWidget& widget, const QString& name, Farbrollen rollen)
    : widget_(widget), ist_Feld_(rollen == Farbrollen::Feld) {
  widget.setObjectName(name);
}

Steuerelement::~Steuerelement() {
  if (wartet_) std::replace(wartende.begin(), wartende.end(), this, static_cast<Steuerelement*>(nullptr));
}

void Steuerelement::Move(double links, double oben, double breite, double hoehe) {
  if (breite < 0 || hoehe < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  const bool andere_Groesse = breite != breite_ || hoehe != hoehe_;
  links_ = links;
  oben_ = oben;
  breite_ = breite;
  hoehe_ = hoehe;
  widget_.setGeometry(twips::pixel(links), twips::pixel(oben), twips::pixel(breite), twips::pixel(hoehe));
  if (andere_Groesse) nach_Groesse();
}

void Steuerelement::Visible(bool wert) {
  sichtbar_ = wert;
  if (pausen == 0) return widget_.setVisible(wert);
  if (!std::exchange(wartet_, true)) wartende.push_back(this);
}

void Steuerelement::Enabled(bool wert) {
  freigegeben_ = wert;
  widget_.setEnabled(wert);
}

void Steuerelement::BackColor(Farbe wert) {
  setze_Farbe(hintergrund(), wert);
  widget_.setAutoFillBackground(true);
}

Farbe Steuerelement::farbe(QPalette::ColorRole rolle) const {
  return farben::von_Qt(widget_.palette().color(QPalette::Active, rolle));
}

void Steuerelement::setze_Farbe(QPalette::ColorRole rolle, Farbe wert) {
  if (farbe(rolle) == wert) return;
  QPalette palette = widget_.palette();
  palette.setColor(rolle, farben::qt(wert));
  widget_.setPalette(palette);
}
