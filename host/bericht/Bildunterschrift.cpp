#include "host/bericht/Bildunterschrift.h"

#include <algorithm>

#include "host/bericht/Textsatz.h"

using namespace Qt::Literals::StringLiterals;

namespace seitenplan {
namespace {

constexpr double Abstand_der_Nummer = 140;

void fuege_an(const QString& text, Schrift art, double breite, std::vector<Satzzeile>& zeilen) {
  for (const QString& zeile : textsatz::umbruch(text, art, breite)) zeilen.push_back({zeile, art});
}

}  // namespace

Bildunterschrift::Bildunterschrift(QString nummer, const Berichtsbild& bild, double breite)
    : nummer_(std::move(nummer)), einzug_(textsatz::breite(nummer_, Schrift::Nummer) + Abstand_der_Nummer) {
  const double frei = breite - einzug_;
  fuege_an(bild.drucktext, Schrift::Text, frei, zeilen_);
  fuege_an(bild.info, Schrift::Info, frei, zeilen_);
  fuege_an(bild.kleingedrucktes, Schrift::Klein, frei, zeilen_);
}

double Bildunterschrift::hoehe() const {
  double summe = 0;
  for (const Satzzeile& zeile : zeilen_) summe += textsatz::zeilenhoehe(zeile.schrift);
  return std::max(summe, textsatz::zeilenhoehe(Schrift::Nummer));
}

Bildunterschrift Bildunterschrift::entnimm(double hoehe) {
  Bildunterschrift vorn = *this;
  if (this->hoehe() <= hoehe) {
    zeilen_.clear();
    return vorn;
  }
  double frei = hoehe - textsatz::zeilenhoehe(Schrift::Klein);
  std::size_t anzahl = 0;
  while (anzahl < zeilen_.size() && (anzahl == 0 || textsatz::zeilenhoehe(zeilen_[anzahl].schrift) <= frei))
    frei -= textsatz::zeilenhoehe(zeilen_[anzahl++].schrift);
  const auto schnitt = static_cast<std::ptrdiff_t>(anzahl);
  vorn.zeilen_.assign(zeilen_.begin(), zeilen_.begin() + schnitt);
  zeilen_.erase(zeilen_.begin(), zeilen_.begin() + schnitt);
  if (!zeilen_.empty()) vorn.zeilen_.push_back({u"Fortsetzung auf der nächsten Seite"_s, Schrift::Klein});
  return vorn;
}

void Bildunterschrift::setze(QPointF ort, std::vector<Textzeile>& texte) const {
  texte.push_back({ort + QPointF(0, textsatz::oberlaenge(Schrift::Nummer)), nummer_, Schrift::Nummer});
  double oben = ort.y();
  for (const Satzzeile& zeile : zeilen_) {
    const QPointF anfang(ort.x() + einzug_, oben + textsatz::oberlaenge(zeile.schrift));
    if (!zeile.text.isEmpty()) texte.push_back({anfang, zeile.text, zeile.schrift});
    oben += textsatz::zeilenhoehe(zeile.schrift);
  }
}

}  // namespace seitenplan
