#include "host/fenster/Vorschaustreifen.h"

#include <QAbstractListModel>
#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QTimer>
#include <optional>

#include "host/betrieb/vorgang/Vorschaulader.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Logical pixels: the picture's box, and the space around it.
constexpr QSize Kasten{168, 126};
constexpr int Rand = 8;
constexpr int Abstand = 4;

}  // namespace

class Vorschaustreifen::Modell final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& oberhalb = {}) const override {
    return oberhalb.isValid() ? 0 : static_cast<int>(bilder.size());
  }

  QVariant data(const QModelIndex& index, int rolle) const override {
    if (!index.isValid()) return {};
    const Vorschaubild& bild = bilder.at(index.row());
    const QString fehlt = bild.fehlt ? u"Die Datei fehlt in der Bildablage."_s : QString();
    if (rolle == Qt::DisplayRole) return bild.datei;
    if (rolle == Qt::ToolTipRole || rolle == Qt::AccessibleTextRole) {
      QStringList zeilen{bild.ordner + u'\\' + bild.datei, bild.beschreibung, fehlt};
      zeilen.removeAll(QString());
      return zeilen.join(u'\n');
    }
    return {};
  }

  void setze(const QList<Vorschaubild>& neue) {
    beginResetModel();
    bilder = neue;
    pixel.clear();
    gewuenscht.clear();
    vorlauf_.gib_auf();
    endResetModel();
  }

  /// The pixels of a row for that box in device pixels; without them the row is put on the list.
  std::optional<QPixmap> pixel_von(int zeile, QSize groesse) {
    if (groesse != groesse_) {
      pixel.clear();
      groesse_ = groesse;
    }
    const auto treffer = pixel.constFind(zeile);
    if (treffer != pixel.constEnd()) return *treffer;
    if (!gewuenscht.contains(zeile)) wuensche(zeile);
    if (!wecker.isActive()) wecker.start();
    return std::nullopt;
  }

  /// What has left the sight meanwhile is given up; painting asks for it again.
  void lade_naechstes() {
    gewuenscht.removeIf([this](int zeile) { return !in_Sicht(zeile); });
    if (gewuenscht.isEmpty()) return;
    const int zeile = gewuenscht.takeFirst();
    pixel.insert(zeile, lader ? QPixmap::fromImage(lader(bilder.at(zeile), groesse_)) : QPixmap());
    Q_EMIT dataChanged(index(zeile), index(zeile));
    if (!gewuenscht.isEmpty()) wecker.start();
  }

  QList<Vorschaubild> bilder;
  QHash<int, QPixmap> pixel;
  /// The rows whose previews are to come, in their order: the one place that knows them.
  QList<int> gewuenscht;
  std::function<bool(int zeile)> in_Sicht;
  Lader lader;
  QTimer wecker;

 private:
  // The threads below decode what is on the list while the events between are handled.
  void wuensche(int zeile) {
    gewuenscht.append(zeile);
    const Vorschaubild& bild = bilder.at(zeile);
    vorlauf_.datei(bild.ordner + u'\\' + bild.datei,
        [hoechstens = groesse_](QSize groesse) { return Vorschaulader::ziel(groesse, hoechstens); });
  }

  QSize groesse_;
  bildvorlauf::Vorlauf vorlauf_;
};

class Vorschaustreifen::Maler final : public QStyledItemDelegate {
 public:
  Maler(Modell& modell, QObject* besitzer) : QStyledItemDelegate(besitzer), modell_(modell) {}

  QSize sizeHint(const QStyleOptionViewItem& stil, const QModelIndex&) const override {
    return {Kasten.width() + 2 * Rand, Kasten.height() + 2 * Rand + Abstand + 2 * stil.fontMetrics.height()};
  }

  void paint(QPainter* maler, const QStyleOptionViewItem& stil, const QModelIndex& index) const override {
    const Vorschaubild& bild = modell_.bilder.at(index.row());
    const bool gewaehlt = stil.state.testFlag(QStyle::State_Selected);
    maler->save();
    if (gewaehlt) maler->fillRect(stil.rect, stil.palette.highlight());
    const QRect kasten(stil.rect.topLeft() + QPoint(Rand, Rand), Kasten);
    if (bild.fehlt)
      male_Platzhalter(*maler, kasten, stil, u"Datei fehlt"_s);
    else
      male_Bild(*maler, kasten, stil, index.row());
    male_Texte(*maler, stil, bild, kasten, gewaehlt);
    if (stil.state.testFlag(QStyle::State_HasFocus)) {
      maler->setPen(QPen(stil.palette.color(gewaehlt ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine));
      maler->drawRect(stil.rect.adjusted(1, 1, -2, -2));
    }
    maler->restore();
  }

 private:
  void male_Bild(QPainter& maler, const QRect& kasten, const QStyleOptionViewItem& stil, int zeile) const {
    const qreal dichte = maler.device()->devicePixelRatioF();
    std::optional<QPixmap> pixel = modell_.pixel_von(zeile, (QSizeF(Kasten) * dichte).toSize());
    if (!pixel) return male_Flaeche(maler, kasten, stil);
    if (pixel->isNull()) return male_Platzhalter(maler, kasten, stil, u"nicht lesbar"_s);
    pixel->setDevicePixelRatio(dichte);
    QRect ziel(QPoint(), pixel->deviceIndependentSize().toSize());
    ziel.moveCenter(kasten.center());
    maler.drawPixmap(ziel.topLeft(), *pixel);
  }

  static void male_Flaeche(QPainter& maler, const QRect& kasten, const QStyleOptionViewItem& stil) {
    maler.setPen(stil.palette.color(QPalette::Mid));
    maler.setBrush(stil.palette.color(QPalette::AlternateBase));
    maler.drawRect(kasten.adjusted(0, 0, -1, -1));
  }

  static void male_Platzhalter(
      QPainter& maler, const QRect& kasten, const QStyleOptionViewItem& stil, const QString& text) {
    male_Flaeche(maler, kasten, stil);
    // A sheet with a cross: the place of a picture that is not there.
    QRect blatt(0, 0, 44, 34);
    blatt.moveCenter(kasten.center() - QPoint(0, stil.fontMetrics.height() / 2 + 2));
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(QColor(176, 32, 32), 2.5));
    maler.setBrush(Qt::NoBrush);
    maler.drawRoundedRect(blatt, 4, 4);
    const QRect kreuz = blatt.adjusted(14, 9, -14, -9);
    maler.drawLine(kreuz.topLeft(), kreuz.bottomRight());
    maler.drawLine(kreuz.topRight(), kreuz.bottomLeft());
    maler.setPen(stil.palette.color(QPalette::Text));
    maler.drawText(QRect(kasten.left(), blatt.bottom() + 6, kasten.width(), stil.fontMetrics.height()),
        Qt::AlignHCenter | Qt::AlignTop, text);
  }

  static void male_Texte(
      QPainter& maler, const QStyleOptionViewItem& stil, const Vorschaubild& bild, const QRect& kasten, bool gewaehlt) {
    const int hoehe = stil.fontMetrics.height();
    QRect zeile(kasten.left(), kasten.bottom() + 1 + Abstand, kasten.width(), hoehe);
    // A text of several lines becomes one.
    const QString beschreibung = bild.beschreibung.simplified();
    const QString oben = beschreibung.isEmpty() ? bild.datei : beschreibung;
    maler.setPen(stil.palette.color(gewaehlt ? QPalette::HighlightedText : QPalette::Text));
    maler.drawText(
        zeile, Qt::AlignHCenter | Qt::AlignVCenter, stil.fontMetrics.elidedText(oben, Qt::ElideRight, zeile.width()));
    if (beschreibung.isEmpty()) return;
    zeile.translate(0, hoehe);
    if (!gewaehlt) maler.setPen(stil.palette.color(QPalette::PlaceholderText));
    maler.drawText(zeile, Qt::AlignHCenter | Qt::AlignVCenter,
        stil.fontMetrics.elidedText(bild.datei, Qt::ElideMiddle, zeile.width()));
  }

  Modell& modell_;
};

Vorschaustreifen::Vorschaustreifen(QWidget* oberhalb) : QListView(oberhalb), modell_(new Modell(this)) {
  modell_->wecker.setSingleShot(true);
  connect(&modell_->wecker, &QTimer::timeout, this, [this] { modell_->lade_naechstes(); });
  modell_->in_Sicht = [this](int zeile) { return visualRect(modell_->index(zeile)).intersects(viewport()->rect()); };
  setModel(modell_);
  setItemDelegate(new Maler(*modell_, this));
  setViewMode(QListView::IconMode);
  setMovement(QListView::Static);
  setResizeMode(QListView::Adjust);
  setUniformItemSizes(true);
  setSpacing(4);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (bei_Wahl) bei_Wahl();
  });
}

void Vorschaustreifen::Ladeweg(Lader lader) {
  modell_->lader = std::move(lader);
}

// A model that begins anew drops the selection without a word.
void Vorschaustreifen::setze(const QList<Vorschaubild>& bilder) {
  modell_->setze(bilder);
  if (bei_Wahl) bei_Wahl();
}

const Vorschaubild* Vorschaustreifen::gewaehltes() const {
  const QModelIndexList gewaehlte = selectionModel()->selectedIndexes();
  return gewaehlte.isEmpty() ? nullptr : &modell_->bilder.at(gewaehlte.first().row());
}

int Vorschaustreifen::anzahl() const {
  return modell_->rowCount();
}

int Vorschaustreifen::geladene() const {
  return static_cast<int>(modell_->pixel.size());
}

QList<Vorschaubild> Vorschaustreifen::kommende() const {
  QList<Vorschaubild> bilder;
  bilder.reserve(modell_->gewuenscht.size());
  for (const int zeile : modell_->gewuenscht) bilder.append(modell_->bilder.at(zeile));
  return bilder;
}

void Vorschaustreifen::lade_Sichtbare() {
  viewport()->repaint();
  while (!modell_->gewuenscht.isEmpty()) modell_->lade_naechstes();
}
