#include "host/fenster/bericht/Seitenansicht.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "host/bericht/Seitenmaler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Pixels around the sheets and between them.
constexpr int Rand = 14;
/// A page in its own size on a screen of 96 dpi, and how far the user can go from there.
constexpr double Eigene_Groesse = 96.0 / 1440;
constexpr double Kleinste = 0.1 * Eigene_Groesse;
constexpr double Groesste = 4 * Eigene_Groesse;
constexpr double Stufe = 1.2;
constexpr int Raste = 120;
/// The store counts in kilobytes: its numbers are plain ints on other machines.
constexpr qsizetype Einheit = 1024;
/// More than a screen has; so some pictures side by side find room.
constexpr double Bildpunkte_je_Bild = 3'000'000;
const QString Zeichen = u"*"_s;

qsizetype kosten(const QImage& bild) {
  return bild.sizeInBytes() / Einheit + 1;
}

}  // namespace

Seitenansicht::Seitenansicht(QWidget* oberhalb) : QAbstractScrollArea(oberhalb), vorrat_(Vorrat / Einheit) {
  setAccessibleName(u"Vorschau des Berichts"_s);
  setFocusPolicy(Qt::StrongFocus);
  // A bar that comes and goes would change the width that it depends on.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setMinimumSize(240, 240);
  wecker_.setSingleShot(true);
  connect(&wecker_, &QTimer::timeout, this, [this] { lade_naechstes(); });
}

void Seitenansicht::Ladewege(Bildlader bilder, Zeichenlader zeichen) {
  bildlader_ = std::move(bilder);
  zeichenlader_ = std::move(zeichen);
}

QString Seitenansicht::schluessel(std::size_t bild) const {
  const Berichtsbild& gemeintes = bericht_.bilder.at(bild);
  return gemeintes.ordner + u'\\' + gemeintes.datei;
}

std::size_t Seitenansicht::seite_mit(const QString& gesuchter) const {
  for (std::size_t i = 0; i < plan_.size(); ++i)
    for (const seitenplan::Bildkasten& kasten : plan_[i].bilder)
      if (schluessel(kasten.bild) == gesuchter) return i;
  return plan_.size();
}

void Seitenansicht::zeige(Bericht bericht, Seitenplan plan) {
  const auto vorige = static_cast<std::size_t>(std::max(0, seite() - 1));
  const Anker stelle = anker(viewport()->rect().center());
  QString bild;
  if (vorige < plan_.size() && !plan_[vorige].bilder.empty()) bild = schluessel(plan_[vorige].bilder.front().bild);
  if (bericht.kopf.zeichen != bericht_.kopf.zeichen) vorrat_.remove(Zeichen);
  bericht_ = std::move(bericht);
  plan_ = std::move(plan);
  wuensche_.clear();
  ordne_an();
  const std::size_t neue = bild.isEmpty() ? plan_.size() : seite_mit(bild);
  if (neue < plan_.size() && neue != vorige)
    gehe_zu(static_cast<int>(neue) + 1);
  else
    halte(stelle);
  viewport()->update();
  sage_Blick();
}

int Seitenansicht::seite() const {
  int beste = 0;
  double meistes = -1;
  for (std::size_t i = 0; i < blaetter_.size(); ++i) {
    const QRect ort = blatt(i);
    const double anteil = static_cast<double>((ort & viewport()->rect()).height()) / ort.height();
    if (anteil <= meistes) continue;
    meistes = anteil;
    beste = static_cast<int>(i) + 1;
  }
  return beste;
}

void Seitenansicht::gehe_zu(int seite) {
  if (plan_.empty()) return;
  const auto nummer = static_cast<std::size_t>(std::clamp(seite, 1, seiten())) - 1;
  verticalScrollBar()->setValue(blaetter_[nummer].top() - Rand);
}

void Seitenansicht::mass(Mass wert) {
  mass_ = wert;
  const Anker stelle = anker(viewport()->rect().center());
  const int vorige = seite();
  ordne_an();
  if (mass_ == Mass::Ganze_Seite)
    gehe_zu(vorige);
  else
    halte(stelle);
  viewport()->update();
  sage_Blick();
}

void Seitenansicht::vergroessere(int stufen) {
  setze_Massstab(massstab_ * std::pow(Stufe, stufen), viewport()->rect().center());
}

void Seitenansicht::setze_Massstab(double wert, QPoint punkt) {
  const Anker stelle = anker(punkt);
  mass_ = Mass::Frei;
  massstab_ = std::clamp(wert, Kleinste, Groesste);
  ordne_an();
  halte(stelle);
  viewport()->update();
  sage_Blick();
}

void Seitenansicht::ordne_an() {
  QSizeF groesste(1, 1);
  for (const seitenplan::Seite& seite : plan_) groesste = groesste.expandedTo(seite.groesse());
  const double waagrecht = std::max(1, viewport()->width() - 2 * Rand) / groesste.width();
  const double senkrecht = std::max(1, viewport()->height() - 2 * Rand) / groesste.height();
  if (mass_ == Mass::Seitenbreite) massstab_ = std::clamp(waagrecht, Kleinste, Groesste);
  if (mass_ == Mass::Ganze_Seite) massstab_ = std::clamp(std::min(waagrecht, senkrecht), Kleinste, Groesste);
  blaetter_.clear();
  breite_ = 0;
  int oben = Rand;
  for (const seitenplan::Seite& seite : plan_) {
    const QSize groesse = (seite.groesse() * massstab_).toSize();
    blaetter_.emplace_back(QPoint(0, oben), groesse);
    oben += groesse.height() + Rand;
    breite_ = std::max(breite_, groesse.width() + 2 * Rand);
  }
  richte_Balken_ein();
}

void Seitenansicht::richte_Balken_ein() {
  const int hoehe = blaetter_.empty() ? 0 : blaetter_.back().bottom() + 1 + Rand;
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(24);
  verticalScrollBar()->setRange(0, std::max(0, hoehe - viewport()->height()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(24);
  horizontalScrollBar()->setRange(0, mass_ == Mass::Frei ? std::max(0, breite_ - viewport()->width()) : 0);
}

QRect Seitenansicht::blatt(std::size_t seite) const {
  const QRect& ort = blaetter_.at(seite);
  const int links = (std::max(breite_, viewport()->width()) - ort.width()) / 2;
  return ort.translated(links - horizontalScrollBar()->value(), -verticalScrollBar()->value());
}

Seitenansicht::Anker Seitenansicht::anker(QPoint punkt) const {
  Anker stelle{punkt, 0, {}};
  while (stelle.seite + 1 < blaetter_.size() && blatt(stelle.seite).bottom() + Rand / 2 < punkt.y()) ++stelle.seite;
  if (blaetter_.empty()) return stelle;
  const QRect ort = blatt(stelle.seite);
  stelle.anteil = {static_cast<double>(punkt.x() - ort.left()) / ort.width(),
      static_cast<double>(punkt.y() - ort.top()) / ort.height()};
  return stelle;
}

void Seitenansicht::halte(const Anker& anker) {
  if (blaetter_.empty()) return;
  const QRect ort = blatt(std::min(anker.seite, blaetter_.size() - 1));
  const QPoint ist(
      qRound(ort.left() + anker.anteil.x() * ort.width()), qRound(ort.top() + anker.anteil.y() * ort.height()));
  const QPoint weg = ist - anker.punkt;
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + weg.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() + weg.y());
}

void Seitenansicht::resizeEvent(QResizeEvent* /*ereignis*/) {
  const int vorige = seite();
  const Anker stelle = anker(QPoint(viewport()->width() / 2, 0));
  ordne_an();
  if (mass_ == Mass::Ganze_Seite)
    gehe_zu(vorige);
  else
    halte(stelle);
  sage_Blick();
}

void Seitenansicht::scrollContentsBy(int dx, int dy) {
  viewport()->scroll(dx, dy);
  sage_Blick();
}

void Seitenansicht::sage_Blick() {
  if (bei_Blick) bei_Blick();
}

void Seitenansicht::keyPressEvent(QKeyEvent* ereignis) {
  const bool seitenweise = mass_ == Mass::Ganze_Seite;
  switch (ereignis->key()) {
    case Qt::Key_Home:
      return verticalScrollBar()->setValue(0);
    case Qt::Key_End:
      return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    case Qt::Key_PageUp:
      if (seitenweise) return gehe_zu(seite() - 1);
      break;
    case Qt::Key_PageDown:
      if (seitenweise) return gehe_zu(seite() + 1);
      break;
    default:
      break;
  }
  QAbstractScrollArea::keyPressEvent(ereignis);
}

void Seitenansicht::wheelEvent(QWheelEvent* ereignis) {
  if (!ereignis->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(ereignis);
  raddrehung_ += ereignis->angleDelta().y();
  const int stufen = raddrehung_ / Raste;
  raddrehung_ -= stufen * Raste;
  if (stufen != 0) setze_Massstab(massstab_ * std::pow(Stufe, stufen), ereignis->position().toPoint());
  ereignis->accept();
}

void Seitenansicht::paintEvent(QPaintEvent* ereignis) {
  QPainter maler(viewport());
  const QRect anteil = ereignis->rect();
  maler.fillRect(anteil, palette().color(QPalette::Mid));
  for (std::size_t i = 0; i < plan_.size(); ++i)
    if (blatt(i).adjusted(-1, -1, 1, 1).intersects(anteil)) male_Blatt(maler, i, anteil);
  if (std::exchange(plan_neu_, false)) sage_Plan();
  if (laedt() && !wecker_.isActive()) wecker_.start(0);
}

void Seitenansicht::sage_Plan() {
  if (!bei_Plan) return;
  std::vector<std::pair<const Berichtsbild*, QSize>> naechste;
  naechste.reserve(wuensche_.size());
  for (const Wunsch& w : wuensche_)
    if (w.bild && !zu_sehen(w.schluessel).isEmpty()) naechste.emplace_back(&bericht_.bilder.at(*w.bild), w.groesse);
  bei_Plan(naechste);
}

void Seitenansicht::male_Blatt(QPainter& maler, std::size_t seite, const QRect& anteil) {
  const QRect ort = blatt(seite);
  maler.fillRect(ort, Qt::white);
  maler.save();
  maler.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  maler.translate(ort.topLeft());
  maler.scale(massstab_, massstab_);
  seitenmaler::male(
      maler, plan_[seite],
      [&](QPainter& m, const QRectF& platz, std::size_t bild) {
    male_Bild(m, platz, {schluessel(bild), bild, {}}, anteil);
      },
      [&](QPainter& m, const QRectF& platz) {
    male_Bild(m, platz, {Zeichen, {}, {}}, anteil);
  });
  maler.restore();
  maler.setPen(palette().color(QPalette::Dark));
  maler.setBrush(Qt::NoBrush);
  maler.drawRect(ort.adjusted(-1, -1, 0, 0));
}

void Seitenansicht::male_Bild(QPainter& maler, const QRectF& ort, const Wunsch& wunsch, const QRect& anteil) {
  // A page is painted as a whole, but what does not show is not loaded.
  if (!maler.transform().mapRect(ort).intersects(anteil)) return;
  Wunsch genauer = wunsch;
  const QSizeF groesse = ort.size() * massstab_ * devicePixelRatioF();
  const double zu_viel = groesse.width() * groesse.height() / Bildpunkte_je_Bild;
  genauer.groesse = (zu_viel > 1 ? groesse / std::sqrt(zu_viel) : groesse).toSize().expandedTo({1, 1});
  const QImage* bild = pixel(genauer);
  if (bild && !bild->isNull()) return maler.drawImage(ort, *bild);
  if (wunsch.bild) maler.fillRect(ort, QColor(226, 226, 226));
}

const QImage* Seitenansicht::pixel(const Wunsch& wunsch) {
  const Geladenes* da = vorrat_.object(wunsch.schluessel);
  if (da) {
    const QSize soll = wunsch.groesse;
    const QSize bisher = da->gewuenscht;
    // Smaller than asked for in both directions: these are all the pixels that there are.
    const bool alle = da->pixel.width() < bisher.width() && da->pixel.height() < bisher.height();
    const bool zu_klein = soll.width() > bisher.width() && !alle;
    const bool zu_gross = soll.width() * 2 < bisher.width();
    if (!zu_klein && !zu_gross) return &da->pixel;
  }
  plan_neu_ = true;
  const auto schon = std::find_if(
      wuensche_.begin(), wuensche_.end(), [&](const Wunsch& w) { return w.schluessel == wunsch.schluessel; });
  if (schon == wuensche_.end())
    wuensche_.push_back(wunsch);
  else
    *schon = wunsch;
  return da ? &da->pixel : nullptr;
}

QRegion Seitenansicht::zu_sehen(const QString& gesuchter) const {
  QRegion gebiet;
  const auto nimm = [&](const QRect& auf_dem, const QRectF& platz) {
    const QRectF ort(auf_dem.topLeft() + platz.topLeft() * massstab_, platz.size() * massstab_);
    gebiet += ort.toAlignedRect() & viewport()->rect();
  };
  for (std::size_t i = 0; i < plan_.size(); ++i) {
    const QRect ort = blatt(i);
    if (!ort.intersects(viewport()->rect())) continue;
    for (const seitenplan::Bildkasten& kasten : plan_[i].bilder)
      if (!kasten.leer && schluessel(kasten.bild) == gesuchter) nimm(ort, kasten.ort);
    if (gesuchter == Zeichen && plan_[i].zeichen) nimm(ort, *plan_[i].zeichen);
  }
  return gebiet;
}

void Seitenansicht::lade_naechstes() {
  while (laedt()) {
    const Wunsch wunsch = wuensche_.front();
    wuensche_.erase(wuensche_.begin());
    const QRegion gebiet = zu_sehen(wunsch.schluessel);
    // Scrolled out of sight meanwhile.
    if (gebiet.isEmpty()) continue;
    QImage pixel = wunsch.bild ? bildlader_(bericht_.bilder.at(*wunsch.bild), wunsch.groesse)
                               : zeichenlader_(bericht_.kopf.zeichen, wunsch.groesse);
    ++geladene_;
    const qsizetype preis = kosten(pixel);
    vorrat_.insert(wunsch.schluessel, new Geladenes{std::move(pixel), wunsch.groesse}, preis);
    viewport()->update(gebiet);
    break;
  }
  if (laedt()) wecker_.start(0);
}

qsizetype Seitenansicht::vorratsgroesse() const {
  return vorrat_.totalCost() * Einheit;
}
