#include "platform/forms/steuerelemente/SSSplitter.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

/// A bar. It follows the mouse alone; the panes follow when it is let go, since laying out anew takes its time.
class SSSplitter::Griff final : public QWidget {
 public:
  Griff(SSSplitter& splitter, Qt::Orientation richtung, const QString& name)
      : QWidget(&splitter), splitter_(splitter), waagerecht_(richtung == Qt::Horizontal) {
    setObjectName(name);
    setCursor(waagerecht_ ? Qt::SplitVCursor : Qt::SplitHCursor);
    setToolTip(u"Ziehen ändert die Aufteilung"_s);
  }

 protected:
  void paintEvent(QPaintEvent* /*ereignis*/) override {
    QPainter(this).fillRect(rect(), palette().color(ziehend_ ? QPalette::Highlight : QPalette::Mid));
  }
  void mousePressEvent(QMouseEvent* ereignis) override {
    if (ereignis->button() != Qt::LeftButton) return;
    ziehend_ = true;
    anfang_ = ereignis->globalPosition().toPoint();
    platz_ = pos();
    raise();
    update();
  }
  void mouseMoveEvent(QMouseEvent* ereignis) override {
    if (!ziehend_) return;
    const QPoint weg = ereignis->globalPosition().toPoint() - anfang_;
    // In a splitter thinner than the bar there is nowhere to go.
    const int weitestens = std::max(0, waagerecht_ ? splitter_.height() - height() : splitter_.width() - width());
    move(waagerecht_ ? QPoint(platz_.x(), std::clamp(platz_.y() + weg.y(), 0, weitestens))
                     : QPoint(std::clamp(platz_.x() + weg.x(), 0, weitestens), platz_.y()));
  }
  void mouseReleaseEvent(QMouseEvent* ereignis) override {
    if (ereignis->button() != Qt::LeftButton || !ziehend_) return;
    ziehend_ = false;
    update();
    splitter_.verschiebe(*this, waagerecht_ ? y() - platz_.y() : x() - platz_.x());
  }

 private:
  SSSplitter& splitter_;
  const bool waagerecht_;
  bool ziehend_ = false;
  QPoint anfang_;
  QPoint platz_;
};

SSSplitter::SSSplitter(QWidget* behaelter, const QString& name)
    : QWidget(behaelter),
      Steuerelement(*this, name),
      unter_Kopf_(new Griff(*this, Qt::Horizontal, name + u"_Balken1"_s)),
      mitte_(new Griff(*this, Qt::Vertical, name + u"_Balken2"_s)),
      ueber_Streifen_(new Griff(*this, Qt::Horizontal, name + u"_Balken3"_s)) {}

std::size_t SSSplitter::platz(int nummer) {
  if (nummer < 0 || nummer >= Anzahl) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return static_cast<std::size_t>(nummer);
}

void SSSplitter::setze_Inhalt(int nummer, Steuerelement& inhalt) {
  inhalt_[platz(nummer)] = &inhalt;
  const Mass& m = masse_[platz(nummer)];
  inhalt.Move(m.links, m.oben, m.breite, m.hoehe);
}

void SSSplitter::PaneHeight(int nummer, double wert) {
  if (nummer != 0 && nummer != 3) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  setze_Wunsch(nummer == 0 ? kopf_ : streifen_, wert);
}

void SSSplitter::PaneWidth(int nummer, double wert) {
  if (nummer != 1) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  setze_Wunsch(links_, wert);
}

void SSSplitter::setze_Wunsch(double& wunsch, double wert) {
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  wunsch = wert;
  ordne_an();
}

// Where there is no room for all, the middle gives way first, then the strip, then the header.
SSSplitter::Masse SSSplitter::berechne() const {
  const double hoehe = Height();
  const double frei = std::max(0.0, hoehe - 2 * Balken);
  const double kopf = std::min(kopf_, frei);
  const double streifen = std::clamp(streifen_, 0.0, std::max(0.0, frei - kopf - Mindestmass));
  const double mitte = frei - kopf - streifen;
  const double breite = std::max(0.0, Width() - Balken);
  const double links = std::clamp(links_, 0.0, std::max(0.0, breite - Mindestmass));
  const double oben = kopf + Balken;
  return {Mass{0, 0, Width(), kopf}, Mass{0, oben, links, mitte}, Mass{links + Balken, oben, breite - links, mitte},
      Mass{0, oben + mitte + Balken, Width(), streifen}};
}

void SSSplitter::ordne_an() {
  const Masse neu = berechne();
  ordne_Griffe_an();
  if (neu == masse_) return;
  int geaendert = -1;
  for (int i = 0; i < Anzahl; ++i) {
    const auto n = static_cast<std::size_t>(i);
    if (geaendert < 0 && (neu[n].breite != masse_[n].breite || neu[n].hoehe != masse_[n].hoehe)) geaendert = i;
    masse_[n] = neu[n];
    if (inhalt_[n]) inhalt_[n]->Move(neu[n].links, neu[n].oben, neu[n].breite, neu[n].hoehe);
  }
  ordne_Griffe_an();
  if (geaendert >= 0 && Resize) Resize(geaendert);
}

void SSSplitter::ordne_Griffe_an() {
  const auto lege = [](Griff* griff, double links, double oben, double breite, double hoehe) {
    griff->setGeometry(twips::pixel(links), twips::pixel(oben), twips::pixel(breite), twips::pixel(hoehe));
  };
  lege(unter_Kopf_, 0, masse_[0].hoehe, Width(), Balken);
  lege(mitte_, masse_[1].breite, masse_[1].oben, Balken, masse_[1].hoehe);
  lege(ueber_Streifen_, 0, masse_[3].oben - Balken, Width(), Balken);
}

void SSSplitter::verschiebe(const Griff& griff, int pixel) {
  const double weg = twips::aus_Pixel(pixel);
  // A pane that is dragged shut keeps a little, so that its bar is found again.
  const auto setze = [&](double& wunsch, double mass, double zusammen) {
    setze_Wunsch(wunsch, std::clamp(mass, Mindestmass, std::max(Mindestmass, zusammen - Mindestmass)));
  };
  Ereigniswache::melde(*this, [&] {
    const auto& [kopf, links, rechts, streifen] = masse_;
    if (&griff == unter_Kopf_)
      setze(kopf_, kopf.hoehe + weg, kopf.hoehe + links.hoehe);
    else if (&griff == mitte_)
      setze(links_, links.breite + weg, links.breite + rechts.breite);
    else
      setze(streifen_, streifen.hoehe - weg, streifen.hoehe + links.hoehe);
  });
}
