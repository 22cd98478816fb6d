#include <QPaintEvent>
#include <QStyledItemDelegate>
#include <cstdlib>

#include "tests/platform/forms/gitter/Gitterprobe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class TDBGridAuswahlTest : public Gitterprobe {
 protected:
  bool hervorgehoben(int zeile) {
    // The frame of the current cell tints what lies below it.
    const QColor farbe = gitter.palette().color(QPalette::Active, QPalette::Highlight);
    const QColor stelle = gitter.viewport()->grab().toImage().pixelColor(ort(zeile, 1).bottomRight() - QPoint(3, 3));
    return std::abs(stelle.red() - farbe.red()) < 8 && std::abs(stelle.blue() - farbe.blue()) < 8;
  }
};

/// Counts what the view asks of its painter.
class Zaehler final : public QStyledItemDelegate {
 public:
  void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override { ++gemalt; }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++gemessen;
    return QStyledItemDelegate::sizeHint(option, index);
  }
  mutable int gemalt = 0;
  mutable int gemessen = 0;
};

/// Counts what a model tells its views.
struct Modellzaehler {
  explicit Modellzaehler(const QAbstractItemModel& modell) {
    const auto zaehle = [this] { ++meldungen; };
    QObject::connect(&modell, &QAbstractItemModel::modelReset, &wacht, [this] { ++neu; });
    QObject::connect(&modell, &QAbstractItemModel::dataChanged, &wacht, zaehle);
    QObject::connect(&modell, &QAbstractItemModel::rowsInserted, &wacht, zaehle);
    QObject::connect(&modell, &QAbstractItemModel::rowsRemoved, &wacht, zaehle);
    QObject::connect(&modell, &QAbstractItemModel::layoutChanged, &wacht, zaehle);
  }
  QObject wacht;
  int neu = 0;
  int meldungen = 0;
};

/// Counts how often a widget paints.
class Malzaehler final : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* ereignis) override {
    if (ereignis->type() == QEvent::Paint) ++gemalt;
    return false;
  }
  int gemalt = 0;
};

}  // namespace

TEST_F(TDBGridAuswahlTest, AClickSelectsTheRowTellsItAndThenTheClick) {
  zeige_Liste(5);
  klicke(2, 1);
  EXPECT_EQ(hole(), (QStringList{u"zeile 0>2"_s, u"auswahl 2"_s, u"klick"_s}));
  klicke(2, 1);
  EXPECT_EQ(hole(), QStringList{u"klick"_s}) << "nothing changed";
  EXPECT_TRUE(hervorgehoben(2));
  EXPECT_FALSE(hervorgehoben(1));
}

TEST_F(TDBGridAuswahlTest, ControlAddsARowAndTakesItOutAgain) {
  zeige_Liste(5);
  klicke(3, 1);
  klicke(1, 1, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"3,1"_s);
  ereignisse.clear();
  klicke(3, 1, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"1"_s);
  klicke(1, 1, Qt::ControlModifier);
  EXPECT_EQ(
      hole(), (QStringList{u"zeile 1>3"_s, u"auswahl 1"_s, u"klick"_s, u"zeile 3>1"_s, u"auswahl "_s, u"klick"_s}));
}

TEST_F(TDBGridAuswahlTest, ShiftSelectsFromTheLastChoiceToTheRow) {
  zeige_Liste(6);
  klicke(2, 1);
  klicke(4, 1, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"2,3,4"_s);
  klicke(1, 1, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"1,2"_s) << "from the same beginning";
}

TEST_F(TDBGridAuswahlTest, ControlAndShiftAddARange) {
  zeige_Liste(8);
  klicke(0, 1);
  klicke(3, 1, Qt::ControlModifier);
  klicke(5, 1, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"0,3,4,5"_s);
}

TEST_F(TDBGridAuswahlTest, ADragSelectsTheRowsItPasses) {
  zeige_Liste(8);
  ziehe(*gitter.viewport(), ort(1, 1).center(), ort(5, 1).center());
  EXPECT_EQ(auswahl(), u"1,2,3,4,5"_s);
  EXPECT_EQ(hole().filter(u"auswahl"_s), (QStringList{u"auswahl 1"_s, u"auswahl 1,2,3"_s, u"auswahl 1,2,3,4,5"_s}));
}

TEST_F(TDBGridAuswahlTest, TheRowSelectorSelectsWithAllKeysAndByDragging) {
  zeige_Liste(8);
  klicke_Waehler(2);
  EXPECT_EQ(hole(), (QStringList{u"zeile 0>2"_s, u"auswahl 2"_s, u"klick"_s}));
  klicke_Waehler(4, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"2,4"_s);
  klicke_Waehler(6, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"4,5,6"_s);
  ziehe(*gitter.verticalHeader()->viewport(), ort_des_Waehlers(0), ort_des_Waehlers(2));
  EXPECT_EQ(auswahl(), u"0,1,2"_s);
}

TEST_F(TDBGridAuswahlTest, TheOtherMouseButtonSelectsNothing) {
  zeige_Liste(5);
  QTest::mouseClick(
      fenster.windowHandle(), Qt::RightButton, {}, eingaben::im_Fenster(*gitter.viewport(), ort(2, 1).center()));
  EXPECT_EQ(auswahl(), QString());
  EXPECT_FALSE(ereignisse.contains(u"klick"_s));
}

TEST_F(TDBGridAuswahlTest, TheKeysMoveTheSelectionAndShiftExtendsIt) {
  zeige_Liste(9);
  taste(Qt::Key_Space);
  EXPECT_EQ(auswahl(), u"0"_s);
  taste(Qt::Key_Down);
  EXPECT_EQ(auswahl(), u"1"_s);
  taste(Qt::Key_Down, Qt::ShiftModifier);
  taste(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"1,2,3"_s);
  taste(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"1,2"_s);
  taste(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"1,2,3,4,5,6,7,8"_s);
  taste(Qt::Key_Home);
  EXPECT_EQ(auswahl(), u"0"_s);
  taste(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"0"_s) << "control alone only moves";
  EXPECT_EQ(gitter.Row(), 1);
  taste(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"0,1"_s);
}

TEST_F(TDBGridAuswahlTest, TheUserSelectsAllRowsWithOneEvent) {
  zeige_Liste(4);
  taste(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(hole(), QStringList{u"auswahl 0,1,2,3"_s});
}

TEST_F(TDBGridAuswahlTest, ASelectionByCodeShowsAndRaisesNoEvent) {
  zeige_Liste(5);
  gitter.SelBookmarks().Add(3);
  gitter.SelBookmarks().Add(1);
  QCoreApplication::processEvents();
  EXPECT_TRUE(hervorgehoben(3));
  EXPECT_TRUE(hervorgehoben(1));
  gitter.SelBookmarks().Remove(0);
  EXPECT_FALSE(hervorgehoben(3));
  gitter.SelBookmarks().Clear();
  EXPECT_FALSE(hervorgehoben(1));
  EXPECT_EQ(hole(), QStringList());
}

TEST_F(TDBGridAuswahlTest, TheUserGoesOnFromASelectionByCode) {
  zeige_Liste(4);
  for (int z = 0; z < 4; ++z) gitter.SelBookmarks().Add(z);
  klicke(2, 1, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"0,1,3"_s);
  gitter.SelBookmarks().Clear();
  gitter.Row(0);
  klicke(3, 1, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"0,1,2,3"_s) << "from the current row: the choice before no longer counts";
}

TEST_F(TDBGridAuswahlTest, TheHandlerMaySelectByCodeItself) {
  zeige_Liste(4);
  gitter.SelChange = [this] { gitter.SelBookmarks().Clear(); };
  klicke(2, 1);
  EXPECT_EQ(auswahl(), QString());
}

TEST_F(TDBGridAuswahlTest, AGridThatCanBeEditedSelectsByTheRowSelectorAlone) {
  zeige_Eingabe(4);
  klicke(2, 1);
  EXPECT_EQ(auswahl(), QString());
  klicke_Waehler(1);
  klicke_Waehler(2, Qt::ShiftModifier);
  EXPECT_EQ(auswahl(), u"1,2"_s);
  ereignisse.clear();
  klicke(3, 1);
  EXPECT_EQ(hole(), (QStringList{u"zeile 2>3"_s, u"auswahl "_s, u"klick"_s})) << "a cell ends the selection";
}

TEST_F(TDBGridAuswahlTest, TheLineForANewRowIsNeverSelected) {
  zeige_Eingabe(2);
  klicke_Waehler(2);
  EXPECT_EQ(auswahl(), QString());
  taste(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(auswahl(), u"0,1"_s);
  gitter.SelBookmarks().Add(2);
  EXPECT_TRUE(hervorgehoben(1));
  EXPECT_FALSE(hervorgehoben(2)) << "a bookmark without a row shows nothing";
}

TEST_F(TDBGridAuswahlTest, AGridThatMayNotBeUpdatedSelectsByItsCells) {
  gitter.AddColumn({});
  gitter.AllowUpdate(false);
  fuelle(3, 1);
  zeige();
  klicke(1, 0);
  EXPECT_EQ(auswahl(), u"1"_s);
}

TEST_F(TDBGridAuswahlTest, TwentyThousandRowsCostNoMoreThanWhatShows) {
  constexpr int Viele = 20'000;
  Zaehler zaehler;
  gitter.setItemDelegate(&zaehler);
  const Modellzaehler modell(*gitter.model());
  zeige_Liste(Viele);
  EXPECT_EQ(modell.neu, 1) << "one snapshot";
  EXPECT_LE(modell.meldungen, 1) << "one refresh";
  const int sichtbar = gitter.viewport()->height() / gitter.rowHeight(0) + 2;
  QCoreApplication::processEvents();
  EXPECT_LE(zaehler.gemalt, 3 * sichtbar);
  EXPECT_EQ(zaehler.gemessen, 0) << "no row is measured";
  zaehler.gemalt = 0;
  taste(Qt::Key_End);
  QCoreApplication::processEvents();
  EXPECT_EQ(gitter.Row(), Viele - 1);
  EXPECT_LE(zaehler.gemalt, 3 * sichtbar);
  EXPECT_EQ(zaehler.gemessen, 0);
}

TEST_F(TDBGridAuswahlTest, SelectingTwentyThousandRowsTellsTheViewNothingRowByRow) {
  constexpr int Viele = 20'000;
  zeige_Liste(Viele);
  QCoreApplication::processEvents();
  const Modellzaehler modell(*gitter.model());
  int auswahlen = 0;
  QObject::connect(gitter.selectionModel(), &QItemSelectionModel::selectionChanged, &fenster, [&] { ++auswahlen; });
  Malzaehler malt;
  gitter.viewport()->installEventFilter(&malt);
  for (int z = 0; z < Viele; ++z) gitter.SelBookmarks().Add(z);
  QCoreApplication::processEvents();
  EXPECT_EQ(gitter.SelBookmarks().Count(), Viele);
  EXPECT_EQ(malt.gemalt, 1) << "shown once";
  while (gitter.SelBookmarks().Count() > 0) gitter.SelBookmarks().Remove(0);
  QCoreApplication::processEvents();
  EXPECT_EQ(malt.gemalt, 2);
  taste(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(ereignisse.size(), 1);
  EXPECT_EQ(gitter.SelBookmarks().Count(), Viele);
  EXPECT_EQ(auswahlen + modell.neu + modell.meldungen, 0);
}
