#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "platform/basic/Twips.h"
#include "platform/forms/Form.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/SSSplitter.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double Balken = SSSplitter::Balken;
constexpr double Mindest = SSSplitter::Mindestmass;

/// A splitter of 9000 by 6000 twips with a panel in each pane: header 900, left 3000, strip 1500.
struct Teiler {
  Teiler() {
    behaelter.resize(600, 400);
    for (int i = 0; i < SSSplitter::Anzahl; ++i) {
      panel[static_cast<std::size_t>(i)] = std::make_unique<SSPanel>(&teiler, u"P%1"_s.arg(i));
      teiler.setze_Inhalt(i, *panel[static_cast<std::size_t>(i)]);
    }
    teiler.PaneHeight(0, 900);
    teiler.PaneWidth(1, 3000);
    teiler.PaneHeight(3, 1500);
    teiler.Move(0, 0, 9000, 6000);
    behaelter.show();
    teiler.Resize = [this](int pane) { ereignisse.append(pane); };
  }
  const SSPanel& p(std::size_t i) const { return *panel[i]; }
  QWidget& balken(int nummer) { return *teiler.findChild<QWidget*>(u"SSS_Probe_Balken%1"_s.arg(nummer)); }
  void ziehe(int nummer, QPoint weg) {
    QWidget& b = balken(nummer);
    const QPoint von = b.rect().center();
    const QPointF global = b.mapToGlobal(von);
    QTest::mousePress(&b, Qt::LeftButton, {}, von);
    QMouseEvent zug(QEvent::MouseMove, von + weg, global + weg, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&b, &zug);
    QMouseEvent los(QEvent::MouseButtonRelease, QPointF(von), global + weg, Qt::LeftButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&b, &los);
  }
  QWidget behaelter;
  SSSplitter teiler{&behaelter, u"SSS_Probe"_s};
  std::array<std::unique_ptr<SSPanel>, 4> panel;
  QList<int> ereignisse;
};

}  // namespace

TEST(SSSplitter, FourPanesStandAroundThreeBarsAndTheContentsFillThem) {
  Teiler t;
  const double mitte = 6000 - 900 - 1500 - 2 * Balken;
  EXPECT_EQ(t.teiler.PaneHeight(0), 900);
  EXPECT_EQ(t.teiler.PaneWidth(0), 9000);
  EXPECT_EQ(t.teiler.PaneWidth(1), 3000);
  EXPECT_EQ(t.teiler.PaneHeight(1), mitte);
  EXPECT_EQ(t.teiler.PaneWidth(2), 9000 - 3000 - Balken);
  EXPECT_EQ(t.teiler.PaneHeight(2), mitte);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
  EXPECT_EQ(t.p(1).Top(), 900 + Balken);
  EXPECT_EQ(t.p(2).Left(), 3000 + Balken);
  EXPECT_EQ(t.p(2).Top(), 900 + Balken);
  EXPECT_EQ(t.p(3).Top(), 6000 - 1500);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(t.p(i).Width(), t.teiler.PaneWidth(static_cast<int>(i)));
    EXPECT_EQ(t.p(i).Height(), t.teiler.PaneHeight(static_cast<int>(i)));
  }
  EXPECT_EQ(t.balken(1).geometry(), QRect(0, 60, 600, 5));
  EXPECT_EQ(t.balken(2).geometry(), QRect(200, 65, 5, twips::pixel(mitte)));
  EXPECT_EQ(t.balken(3).geometry(), QRect(0, 295, 600, 5));
}

TEST(SSSplitter, GrowingGoesToTheLargePaneAloneAndRaisesOneEvent) {
  Teiler t;
  t.teiler.Move(0, 0, 12000, 8000);
  EXPECT_EQ(t.teiler.PaneHeight(0), 900);
  EXPECT_EQ(t.teiler.PaneWidth(1), 3000);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
  EXPECT_EQ(t.teiler.PaneWidth(2), 12000 - 3000 - Balken);
  EXPECT_EQ(t.teiler.PaneHeight(2), 8000 - 900 - 1500 - 2 * Balken);
  EXPECT_EQ(t.ereignisse.size(), 1);
}

TEST(SSSplitter, SettingAMeasureAgainOrMovingTheSplitterRaisesNothing) {
  Teiler t;
  t.teiler.PaneHeight(3, 1500);
  t.teiler.PaneWidth(1, 3000);
  t.teiler.Left(30);
  t.teiler.Move(15, 15, 9000, 6000);
  EXPECT_TRUE(t.ereignisse.isEmpty());
  t.teiler.PaneHeight(3, 1501);
  EXPECT_EQ(t.ereignisse.size(), 1);
}

TEST(SSSplitter, MeasuresAreKeptExactly) {
  Teiler t;
  t.teiler.PaneHeight(3, 1500.25);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500.25);
  EXPECT_EQ(t.p(3).Height(), 1500.25);
  t.teiler.PaneWidth(1, 3001);
  EXPECT_EQ(t.p(1).Width(), 3001);
}

TEST(SSSplitter, TheEventTellsTheLowestPaneThatChangedAndAllStandThenAtTheirPlaces) {
  Teiler t;
  double beim_Ereignis = 0;
  t.teiler.Resize = [&](int pane) {
    t.ereignisse.append(pane);
    beim_Ereignis = t.p(3).Height();
  };
  t.teiler.PaneHeight(3, 2000);
  EXPECT_EQ(t.ereignisse, QList<int>{1});
  EXPECT_EQ(beim_Ereignis, 2000);
  t.teiler.PaneHeight(0, 600);
  EXPECT_EQ(t.ereignisse, (QList<int>{1, 0}));
}

TEST(SSSplitter, AnEventThatSetsAPaneIsRaisedForThatAgain) {
  Teiler t;
  t.teiler.Resize = [&](int) {
    t.ereignisse.append(static_cast<int>(t.teiler.PaneHeight(3)));
    t.teiler.PaneHeight(3, std::nearbyint(t.teiler.PaneHeight(3)));
  };
  t.teiler.PaneHeight(3, 1999.6);
  EXPECT_EQ(t.ereignisse, (QList<int>{1999, 2000}));
}

TEST(SSSplitter, OnlyThreeMeasuresCanBeSetAndNoneBelowZero) {
  Teiler t;
  for (const int pane : {1, 2, 4, -1}) EXPECT_EQ(Fehlernummer_von([&] { t.teiler.PaneHeight(pane, 500); }), 5);
  for (const int pane : {0, 2, 3}) EXPECT_EQ(Fehlernummer_von([&] { t.teiler.PaneWidth(pane, 500); }), 5);
  EXPECT_EQ(Fehlernummer_von([&] { t.teiler.PaneHeight(3, -1); }), 380);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
  EXPECT_EQ(Fehlernummer_von([&] { (void)t.teiler.PaneHeight(4); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { (void)t.teiler.PaneWidth(-1); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { t.teiler.setze_Inhalt(4, *t.panel[0]); }), 9);
}

TEST(SSSplitter, WhereThereIsNoRoomPanesStaySmallerAndComeBack) {
  Teiler t;
  for (const double seite : {0.0, 15.0, 100.0, 500.0, 1000.0, 2000.0}) {
    t.teiler.Move(0, 0, seite, seite);
    double hoehe = 0;
    for (int i = 0; i < SSSplitter::Anzahl; ++i) {
      EXPECT_GE(t.teiler.PaneHeight(i), 0) << seite << '/' << i;
      EXPECT_GE(t.teiler.PaneWidth(i), 0) << seite << '/' << i;
      if (i != 2) hoehe += t.teiler.PaneHeight(i);
    }
    EXPECT_LE(hoehe, seite);
  }
  t.teiler.Move(0, 0, 9000, 6000);
  EXPECT_EQ(t.teiler.PaneHeight(0), 900);
  EXPECT_EQ(t.teiler.PaneWidth(1), 3000);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
}

TEST(SSSplitter, EachBarIsDraggedByTheMouseAndThePanesFollowWhenItIsLetGo) {
  Teiler t;
  t.ziehe(1, {0, 20});
  EXPECT_EQ(t.teiler.PaneHeight(0), 900 + 300);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
  t.ziehe(2, {-40, 3});
  EXPECT_EQ(t.teiler.PaneWidth(1), 3000 - 600);
  t.ziehe(3, {0, -10});
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500 + 150);
  EXPECT_EQ(t.teiler.PaneHeight(0), 900 + 300);
  EXPECT_EQ(t.ereignisse.size(), 3);
}

TEST(SSSplitter, WhileABarIsDraggedOnlyTheBarMoves) {
  Teiler t;
  QWidget& b = t.balken(3);
  QTest::mousePress(&b, Qt::LeftButton);
  const QPointF global = b.mapToGlobal(b.rect().center());
  QMouseEvent zug(QEvent::MouseMove, QPointF(5, -30), global + QPointF(0, -30), Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&b, &zug);
  EXPECT_EQ(b.y(), 265);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500);
  EXPECT_TRUE(t.ereignisse.isEmpty());
  QTest::mouseRelease(&b, Qt::LeftButton);
  EXPECT_EQ(t.teiler.PaneHeight(3), 1500 + 450);
}

TEST(SSSplitter, APaneDraggedShutKeepsALittle) {
  Teiler t;
  t.ziehe(3, {0, 1000});
  EXPECT_EQ(t.teiler.PaneHeight(3), Mindest);
  t.ziehe(3, {0, -1000});
  EXPECT_EQ(t.teiler.PaneHeight(1), Mindest);
  t.ziehe(2, {-1000, 0});
  EXPECT_EQ(t.teiler.PaneWidth(1), Mindest);
  t.ziehe(2, {1000, 0});
  EXPECT_EQ(t.teiler.PaneWidth(2), Mindest);
}

TEST(SSSplitter, AClickOnABarWithoutAMoveAndTheRightButtonChangeNothing) {
  Teiler t;
  for (int i = 1; i <= 3; ++i) {
    t.ziehe(i, {0, 0});
    QTest::mousePress(&t.balken(i), Qt::RightButton);
    QTest::mouseRelease(&t.balken(i), Qt::RightButton);
  }
  EXPECT_TRUE(t.ereignisse.isEmpty());
}

TEST(SSSplitter, ABarCanBeGrippedInASplitterThinnerThanItself) {
  Teiler t;
  t.teiler.Move(0, 0, 30, 30);
  for (int i = 1; i <= 3; ++i) t.ziehe(i, {7, 7});
  for (int i = 0; i < SSSplitter::Anzahl; ++i) EXPECT_GE(t.teiler.PaneHeight(i), 0);
}

TEST(SSSplitter, AFailureOfAnEventThatADragRaisedEndsTheShowOfItsForm) {
  Form form(u"frm_Probe"_s);
  form.resize(600, 400);
  SSSplitter teiler(&form, u"SSS_Probe"_s);
  teiler.Move(0, 0, 9000, 6000);
  bool erstes = true;
  teiler.Resize = [&](int) {
    if (!std::exchange(erstes, false)) throw Laufzeitfehler(13);
  };
  QTimer::singleShot(0, &form, [&] {
    QWidget& b = *teiler.findChild<QWidget*>(u"SSS_Probe_Balken3"_s);
    QTest::mousePress(&b, Qt::LeftButton);
    const QPointF global = b.mapToGlobal(QPoint(5, -30));
    QMouseEvent zug(QEvent::MouseMove, QPointF(5, -30), global, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&b, &zug);
    QTest::mouseRelease(&b, Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    form.Hide();
  });
  EXPECT_EQ(Fehlernummer_von([&] { form.Show(); }), 13);
}

TEST(SSSplitter, TheFirstShowingRaisesAnEventThoughNoSizeChanged) {
  Teiler t;
  t.teiler.zum_ersten_Mal_gezeigt();
  EXPECT_EQ(t.ereignisse, QList<int>{0});
}
