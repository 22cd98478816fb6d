#include "platform/forms/steuerelemente/DirListBox.h"

#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Laufwerke.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int StufeRolle = Qt::UserRole;

/// Levels of a path: its drive's root or share, then each folder.
QStringList ebenen_von(const QString& pfad) {
  const bool freigabe = pfad.startsWith(u"\\\\"_s);
  QStringList teile = pfad.split(u'\\', Qt::SkipEmptyParts);
  QStringList ebenen;
  if (freigabe && teile.size() >= 2) {
    ebenen.append(u"\\\\"_s + teile[0] + u'\\' + teile[1]);
    teile = teile.mid(2);
  } else if (!teile.isEmpty()) {
    ebenen.append(teile.takeFirst() + u'\\');
  }
  return ebenen + teile;
}

QString verbunden(const QStringList& ebenen, qsizetype anzahl) {
  QString pfad = ebenen.value(0);
  for (qsizetype i = 1; i < anzahl; ++i) pfad = FileSystemObject().BuildPath(pfad, ebenen[i]);
  return pfad;
}

/// The path in one spelling: backslashes, one between two levels, "X:" alone as that drive's current directory, a path
/// without a drive on that of the process.
QString einheitlich(QString pfad) {
  pfad.replace(u'/', u'\\');
  const auto ist_Laufwerk = [](const QString& p) { return p.size() >= 2 && p[1] == u':'; };
  const QString aktuelles = laufwerke::aktuell().aktuelles_Verzeichnis();
  if (!pfad.isEmpty() && !ist_Laufwerk(pfad) && !pfad.startsWith(u"\\\\"_s))
    pfad = pfad.startsWith(u'\\') ? aktuelles.left(2) + pfad : FileSystemObject().BuildPath(aktuelles, pfad);
  if (ist_Laufwerk(pfad) && (pfad.size() == 2 || pfad[2] != u'\\')) {
    const bool selbes = text::UCase(pfad.left(2)) == text::UCase(aktuelles.left(2));
    const QString anfang = selbes ? aktuelles : pfad.left(2) + u'\\';
    pfad = pfad.size() == 2 ? anfang : FileSystemObject().BuildPath(anfang, pfad.mid(2));
  }
  const QStringList ebenen = ebenen_von(pfad);
  return verbunden(ebenen, ebenen.size());
}

class Einrueckung final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem eingerueckt = option;
    eingerueckt.rect.setLeft(option.rect.left() + 10 * index.data(StufeRolle).toInt());
    QStyledItemDelegate::paint(maler, eingerueckt, index);
  }
};

}  // namespace

class DirListBox::Modell final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;
  int rowCount(const QModelIndex& ueber) const override {
    return ueber.isValid() ? 0 : static_cast<int>(ebenen.size() + ordner.size());
  }
  QVariant data(const QModelIndex& index, int rolle) const override {
    const auto zeile = static_cast<qsizetype>(index.row());
    const bool offen = zeile < ebenen.size();
    switch (rolle) {
      case Qt::DisplayRole:
      case Qt::ToolTipRole:
        return offen ? ebenen[zeile] : ordner.value(zeile - ebenen.size());
      case Qt::DecorationRole:
        return offen ? offener_ : ordner_;
      case StufeRolle:
        return offen ? static_cast<int>(zeile) : static_cast<int>(ebenen.size());
      default:
        return {};
    }
  }
  void setze(QStringList neue_Ebenen, QStringList neue_Ordner) {
    beginResetModel();
    ebenen = std::move(neue_Ebenen);
    ordner = std::move(neue_Ordner);
    endResetModel();
  }
  QStringList ebenen;
  QStringList ordner;

 private:
  const QIcon offener_{u":/kvo/forms/ordner_offen.svg"_s};
  const QIcon ordner_{u":/kvo/forms/ordner.svg"_s};
};

DirListBox::DirListBox(QWidget* behaelter, const QString& name)
    : QListView(behaelter), Steuerelement(*this, name, Farbrollen::Feld), modell_(new Modell(this)) {
  setModel(modell_);
  setItemDelegate(new Einrueckung(this));
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTextElideMode(Qt::ElideMiddle);
  // A current directory that has gone leaves the list empty until a path is set.
  fehler::still_enden([&] { Path(laufwerke::aktuell().aktuelles_Verzeichnis()); });
}

void DirListBox::Path(const QString& wert) {
  const QString neu = einheitlich(wert);
  if (text::UCase(neu) == text::UCase(pfad_)) return;
  QStringList ordner = FileSystemObject().GetFolder(neu).SubFolders();
  ordner.removeIf([](const QString& name) { return name.startsWith(u'.'); });
  pfad_ = neu;
  const QStringList ebenen = ebenen_von(neu);
  modell_->setze(ebenen, std::move(ordner));
  const QModelIndex letzte = modell_->index(static_cast<int>(ebenen.size()) - 1);
  setCurrentIndex(letzte);
  scrollTo(letzte, QAbstractItemView::PositionAtTop);
  if (Change) Change();
}

void DirListBox::oeffne(const QModelIndex& stelle) {
  if (!stelle.isValid()) return;
  const qsizetype zeile = stelle.row();
  const qsizetype offene = modell_->ebenen.size();
  const bool hinauf = zeile < offene;
  Ereigniswache::melde(*this, [&] {
    // A folder that has gone or can't be read leaves the list as it is.
    fehler::still_enden([&] {
      Path(hinauf ? verbunden(modell_->ebenen, zeile + 1)
                  : FileSystemObject().BuildPath(pfad_, modell_->ordner[zeile - offene]));
    });
  });
}

void DirListBox::keyPressEvent(QKeyEvent* ereignis) {
  if (ereignis->key() == Qt::Key_Return || ereignis->key() == Qt::Key_Enter)
    oeffne(currentIndex());
  else
    QListView::keyPressEvent(ereignis);
}

void DirListBox::mouseDoubleClickEvent(QMouseEvent* ereignis) {
  if (ereignis->button() == Qt::LeftButton) oeffne(indexAt(ereignis->position().toPoint()));
}
