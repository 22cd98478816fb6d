#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <QWindow>

#include "platform/forms/Form.h"
#include "platform/forms/Steuerelementfeld.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "platform/forms/steuerelemente/Ziehvorgang.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Two panels; in the upper one two boxes that are dragged, in the lower a button that listens to nothing.
class Ziehprobe : public Form {
 public:
  Ziehprobe() : Form(u"frm_Probe"_s) {
    resize(400, 300);
    oben.Move(0, 0, 6000, 2250);
    unten.Move(0, 2250, 6000, 2250);
    knopf.Move(150, 150, 1500, 450);
    oben.DragOver = [this] { ablauf += u"over oben"_s; };
    unten.DragOver = [this] { ablauf += u"over unten"_s; };
    for (Bildfeld* feld : {&eins, &zwei}) {
      const QString name = feld->objectName();
      feld->Move(feld == &eins ? 150 : 3000, 150, 1500, 1500);
      feld->DragMode(1);
      feld->DragOver = [this, name] { ablauf += u"over "_s + name; };
      feld->DragDrop = [this, name] { ablauf += u"drop "_s + name; };
      feld->Click = [this] { ablauf += u"click"_s; };
    }
  }
  static QPoint mitte(const QWidget& w) { return w.mapTo(w.window(), w.rect().center()); }
  void druecke(const QWidget& w) { QTest::mousePress(windowHandle(), Qt::LeftButton, {}, mitte(w)); }
  void bewege(const QWidget& w) {
    QTest::mouseMove(windowHandle(), mitte(w));
    QCoreApplication::processEvents();
  }
  void lass_los(const QWidget& w) { QTest::mouseRelease(windowHandle(), Qt::LeftButton, {}, mitte(w)); }
  void laufe(const std::function<void()>& waehrend) {
    QTimer::singleShot(0, this, [this, waehrend] {
      waehrend();
      Hide();
    });
    Show();
  }
  QStringList ablauf;
  SSPanel oben{this, u"oben"_s};
  SSPanel unten{this, u"unten"_s};
  SSCommand knopf{&unten, u"knopf"_s};
  Bildfeld eins{&oben, u"eins"_s};
  Bildfeld zwei{&oben, u"zwei"_s};

 protected:
  void Form_DragEnde() override { ablauf += u"ende"_s; }
};

}  // namespace

TEST(Ziehvorgang, TheSourceHearsTheFirstDragOverAtThePressAndTheTargetTheDropBeforeTheEnd) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    EXPECT_EQ(f.ablauf, QStringList{u"over eins"_s});
    f.bewege(f.zwei);
    f.lass_los(f.zwei);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"over zwei"_s, u"drop zwei"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, EveryMoveIsTold) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    QTest::mouseMove(f.windowHandle(), QPoint(230, 40));
    QTest::mouseMove(f.windowHandle(), QPoint(231, 40));
    QTest::mouseMove(f.windowHandle(), QPoint(232, 40));
    QCoreApplication::processEvents();
    f.lass_los(f.unten);
    EXPECT_EQ(f.ablauf.filter(u"over zwei"_s).size(), 3);
  });
}

TEST(Ziehvorgang, TheControlUnderThePointerHearsItOrTheNextContainerThatListens) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    f.bewege(f.knopf);
    f.lass_los(f.knopf);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"over unten"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, ADropOnTheSourceItselfIsADropAndNoClick) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    f.lass_los(f.eins);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"drop eins"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, EscapeEndsItWithoutADropAndDoesNotReachTheCancelButton) {
  Ziehprobe f;
  int abbruch = 0;
  f.knopf.Click = [&] { ++abbruch; };
  f.setze_Abbruchknopf(&f.knopf);
  f.laufe([&] {
    f.druecke(f.eins);
    QTest::keyClick(f.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"ende"_s}));
    f.bewege(f.zwei);
    f.lass_los(f.zwei);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"ende"_s}));
    EXPECT_EQ(abbruch, 0);
    QTest::keyClick(f.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(abbruch, 1);
  });
}

TEST(Ziehvorgang, LettingGoOutsideTheWindowEndsIt) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    QTest::mouseRelease(f.windowHandle(), Qt::LeftButton, {}, QPoint(-30, -30));
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, AMoveWithoutTheButtonEndsADragWhoseReleaseGotLost) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    QMouseEvent zug(
        QEvent::MouseMove, QPointF(5, 5), f.zwei.mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(f.windowHandle(), &zug);
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, HidingTheFormEndsIt) {
  Ziehprobe f;
  f.laufe([&] {
    f.druecke(f.eins);
    f.Hide();
    EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, TheSourceMayBeUnloadedWhileItIsDragged) {
  Ziehprobe f;
  Steuerelementfeld<Bildfeld> feld([&](int i) {
    auto neu = std::make_unique<Bildfeld>(&f.unten, u"n%1"_s.arg(i));
    neu->DragOver = [&f, i] { f.ablauf += u"over %1"_s.arg(i); };
    neu->DragDrop = [&f, i] { f.ablauf += u"drop %1"_s.arg(i); };
    return neu;
  });
  feld.entwirf(0).Move(3000, 150, 1500, 1500);
  feld(0).DragMode(1);
  feld.Load(1).Visible(true);
  feld(0).Visible(false);
  f.zwei.DragOver = [&] {
    if (feld.vorhanden(1)) feld.Unload(1);
  };
  f.laufe([&] {
    f.druecke(feld(1));
    f.bewege(f.zwei);
    EXPECT_FALSE(feld.vorhanden(1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    f.bewege(f.eins);
    f.lass_los(f.eins);
    EXPECT_EQ(f.ablauf, (QStringList{u"over 1"_s, u"over eins"_s, u"drop eins"_s, u"ende"_s}));
  });
}

TEST(Ziehvorgang, AFailureOfADropEndsTheShowAndTheDrag) {
  Ziehprobe f;
  f.zwei.DragDrop = [] { throw Laufzeitfehler(9); };
  EXPECT_EQ(Fehlernummer_von([&] {
    f.laufe([&] {
      f.druecke(f.eins);
      f.bewege(f.zwei);
      f.lass_los(f.zwei);
    });
  }),
      9);
  EXPECT_EQ(f.ablauf, (QStringList{u"over eins"_s, u"over zwei"_s, u"ende"_s}));
}

TEST(Ziehvorgang, TheRightButtonDragsNothing) {
  Ziehprobe f;
  f.laufe([&] {
    QTest::mousePress(f.windowHandle(), Qt::RightButton, {}, Ziehprobe::mitte(f.eins));
    f.bewege(f.zwei);
    QTest::mouseRelease(f.windowHandle(), Qt::RightButton, {}, Ziehprobe::mitte(f.zwei));
    EXPECT_TRUE(f.ablauf.isEmpty());
  });
}

TEST(Ziehvorgang, ABoxThatStandsInNoFormIsNotDragged) {
  QWidget fenster;
  Bildfeld feld(&fenster, u"Pic_Probe"_s);
  feld.DragMode(1);
  bool gehoert = false;
  feld.DragOver = [&] { gehoert = true; };
  QTest::mousePress(&feld, Qt::LeftButton);
  QTest::mouseRelease(&feld, Qt::LeftButton);
  EXPECT_FALSE(gehoert);
}
