#include "host/fenster/aufnahme/Abwurfziel.h"

#include <QAbstractScrollArea>
#include <QDropEvent>
#include <QPainter>
#include <QScrollBar>

using namespace Qt::Literals::StringLiterals;

namespace {

/// So near its upper or lower edge, in pixels, a list rolls on.
constexpr int Rollrand = 16;

/// Copy or link: moving would let the other program delete its file.
Qt::DropAction handlung(const QDropEvent& ereignis) {
  for (const Qt::DropAction eine : {Qt::CopyAction, Qt::LinkAction})
    if (ereignis.possibleActions().testFlag(eine)) return eine;
  return Qt::IgnoreAction;
}

bool ist_brauchbar(const QDropEvent& ereignis) {
  return handlung(ereignis) != Qt::IgnoreAction && ereignis.mimeData() && abwurf::kann_sein(*ereignis.mimeData());
}

/// A frame and nothing in it, so that what it is about stays to be read, chosen or not.
class Abwurfmarke final : public QWidget {
 public:
  explicit Abwurfmarke(QWidget* oberhalb) : QWidget(oberhalb) {
    setObjectName(u"Abwurfmarke"_s);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent* /*ereignis*/) override {
    QPainter maler(this);
    // Two colours: one of them differs from whatever lies below.
    maler.setPen(QPen(palette().color(QPalette::Base), 5));
    maler.drawRect(rect());
    maler.setPen(QPen(palette().color(QPalette::Text), 2));
    maler.drawRect(rect().adjusted(1, 1, -1, -1));
  }
};

}  // namespace

Abwurfziel::Abwurfziel(QWidget& ziel, Stelle stelle, Annahme annahme)
    : QObject(&ziel), ziel_(ziel), stelle_(std::move(stelle)), annahme_(std::move(annahme)) {
  ziel.setAcceptDrops(true);
  ziel.installEventFilter(this);
}

bool Abwurfziel::eventFilter(QObject* ziel, QEvent* ereignis) {
  if (ereignis->type() == QEvent::DragLeave && marke_) marke_->hide();
  // Entering and moving are kinds of dropping.
  auto* const abwurf = dynamic_cast<QDropEvent*>(ereignis);
  if (!abwurf) return QObject::eventFilter(ziel, ereignis);
  if (abwurf->type() == QEvent::Drop)
    nimm_an(*abwurf);
  else
    pruefe(*abwurf, abwurf->type() == QEvent::DragEnter);
  return true;
}

/// Whoever is refused when the mouse comes in is not asked again when it moves on.
void Abwurfziel::pruefe(QDropEvent& ereignis, bool beim_Eintritt) {
  const QPoint ort = ereignis.position().toPoint();
  const bool brauchbar = ist_brauchbar(ereignis);
  if (brauchbar) rolle(ort);
  const QRect stelle = brauchbar ? stelle_(ort) : QRect();
  if (!marke_) marke_ = new Abwurfmarke(&ziel_);
  marke_->setGeometry(stelle);
  marke_->setVisible(!stelle.isEmpty());
  ereignis.setDropAction(handlung(ereignis));
  ereignis.setAccepted(!stelle.isEmpty() || (beim_Eintritt && brauchbar));
}

void Abwurfziel::nimm_an(QDropEvent& ereignis) {
  if (marke_) marke_->hide();
  const QPoint ort = ereignis.position().toPoint();
  if (!ist_brauchbar(ereignis) || stelle_(ort).isEmpty()) return ereignis.ignore();
  ereignis.setDropAction(handlung(ereignis));
  ereignis.accept();
  annahme_(ort, abwurf::lies(*ereignis.mimeData()));
}

void Abwurfziel::rolle(QPoint ort) {
  auto* liste = qobject_cast<QAbstractScrollArea*>(ziel_.parentWidget());
  if (!liste || liste->viewport() != &ziel_) return;
  if (ort.y() < Rollrand) liste->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
  if (ort.y() > ziel_.height() - Rollrand)
    liste->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
}
