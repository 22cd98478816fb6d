#include <gtest/gtest.h>

#include <QPainter>
#include <QTest>
#include <QWindow>

#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

std::shared_ptr<const Bild> einfarbig(QSize groesse, const QColor& farbe) {
  QImage bild(groesse, QImage::Format_RGB32);
  bild.fill(farbe);
  return bildlader::aus_Pixeln(bild);
}

/// Counts how often its pixels were asked for, and in which size; may be undecodable.
class Zaehlbild : public Bild {
 public:
  explicit Zaehlbild(bool lesbar = true) : lesbar_(lesbar) {}
  QSize groesse() const override { return {300, 200}; }
  QImage bild(QSize ziel) const override {
    ++gefragt;
    gefragte_Groesse = ziel;
    if (!lesbar_) throw Laufzeitfehler(7);
    QImage pixel(ziel, QImage::Format_RGB32);
    pixel.fill(Qt::green);
    return pixel;
  }
  mutable int gefragt = 0;
  mutable QSize gefragte_Groesse;

 private:
  bool lesbar_;
};

struct Feld {
  Feld() {
    behaelter.resize(400, 300);
    feld.Move(0, 0, 30 * 15, 20 * 15);
  }
  QRgb pixel(int x, int y) const { return feld.Image().pixel(x, y); }
  QWidget behaelter;
  Bildfeld feld{&behaelter, u"Pic_Probe"_s};
};

constexpr QRgb Rot = qRgb(255, 0, 0);
constexpr QRgb Gruen = qRgb(0, 255, 0);
constexpr QRgb Blau = qRgb(0, 0, 255);

}  // namespace

TEST(Bildfeld, AStageTakesItsPicturesSizeAndKeepsTheLastOneWhenEmptied) {
  Feld f;
  f.feld.AutoSize = true;
  f.feld.Picture(einfarbig({120, 80}, Qt::blue));
  EXPECT_EQ(f.feld.Width(), 1800);
  EXPECT_EQ(f.feld.Height(), 1200);
  EXPECT_EQ(f.feld.ScaleWidth(), 120);
  EXPECT_EQ(f.feld.ScaleHeight(), 80);
  f.feld.Picture(nullptr);
  EXPECT_EQ(f.feld.Picture(), nullptr);
  EXPECT_EQ(f.feld.Width(), 1800);
}

TEST(Bildfeld, WithoutAutoSizeThePictureLeavesTheSizeAlone) {
  Feld f;
  f.feld.Picture(einfarbig({120, 80}, Qt::blue));
  EXPECT_EQ(f.feld.Width(), 450);
  EXPECT_EQ(f.feld.Height(), 300);
}

TEST(Bildfeld, TheInnerSizeInPixelsIsNotRounded) {
  Feld f;
  f.feld.Move(0, 0, 100, 50);
  EXPECT_DOUBLE_EQ(f.feld.ScaleWidth(), 100 / 15.0);
  EXPECT_DOUBLE_EQ(f.feld.ScaleHeight(), 50 / 15.0);
}

TEST(Bildfeld, APictureIsPaintedIntoItsRectangleOverWhatWasThere) {
  Feld f;
  f.feld.PaintPicture(einfarbig({10, 10}, Qt::red), QRectF(0, 0, 30, 20));
  f.feld.PaintPicture(einfarbig({10, 10}, Qt::blue), QRectF(10, 5, 5, 5));
  EXPECT_EQ(f.pixel(0, 0), Rot);
  EXPECT_EQ(f.pixel(29, 19), Rot);
  EXPECT_EQ(f.pixel(10, 5), Blau);
  EXPECT_EQ(f.pixel(14, 9), Blau);
  EXPECT_EQ(f.pixel(9, 5), Rot);
  EXPECT_EQ(f.pixel(15, 9), Rot);
}

TEST(Bildfeld, BothCornersOfABoxAndBothEndsOfALineAreInside) {
  Feld f;
  f.feld.PaintPicture(einfarbig({10, 10}, Qt::black), QRectF(0, 0, 30, 20));
  f.feld.Kasten(QPointF(-1, 17), QPointF(30, 20), 0x0000FF);
  f.feld.Linie(QPointF(2, 3), QPointF(6, 7), 0xFF0000);
  EXPECT_EQ(f.pixel(0, 16), qRgb(0, 0, 0));
  for (const QPoint p : {QPoint(0, 17), QPoint(29, 17), QPoint(0, 19), QPoint(29, 19)})
    EXPECT_EQ(f.pixel(p.x(), p.y()), Rot);
  for (int i = 0; i <= 4; ++i) EXPECT_EQ(f.pixel(2 + i, 3 + i), Blau);
  EXPECT_EQ(f.pixel(1, 2), qRgb(0, 0, 0));
  EXPECT_EQ(f.pixel(7, 8), qRgb(0, 0, 0));
}

TEST(Bildfeld, ColoursAreGivenInBlueGreenRedOrder) {
  Feld f;
  f.feld.Kasten(QPointF(0, 0), QPointF(29, 19), 0x102030);
  EXPECT_EQ(f.pixel(5, 5), qRgb(0x30, 0x20, 0x10));
}

TEST(Bildfeld, WhatWasDrawnStaysUntilItIsEmptied) {
  Feld f;
  f.feld.Kasten(QPointF(0, 0), QPointF(29, 19), 0x0000FF);
  EXPECT_EQ(f.pixel(3, 3), Rot);
  f.feld.Linie(QPointF(0, 10), QPointF(29, 10), 0xFF0000);
  EXPECT_EQ(f.pixel(3, 3), Rot);
  EXPECT_EQ(f.pixel(3, 10), Blau);
  f.feld.Cls();
  EXPECT_EQ(f.pixel(3, 3), f.feld.palette().color(f.feld.backgroundRole()).rgb());
}

TEST(Bildfeld, AGrownBoxKeepsWhatWasDrawnAndShowsItsBackgroundInTheRest) {
  Feld f;
  f.feld.Kasten(QPointF(0, 0), QPointF(29, 19), 0x0000FF);
  EXPECT_EQ(f.pixel(3, 3), Rot);
  f.feld.Width(40 * 15);
  EXPECT_EQ(f.feld.Image().size(), QSize(40, 20));
  EXPECT_EQ(f.pixel(3, 3), Rot);
  EXPECT_EQ(f.pixel(35, 3), f.feld.palette().color(f.feld.backgroundRole()).rgb());
}

TEST(Bildfeld, NothingIsDecodedUntilSomebodyLooksAndThenOnce) {
  Feld f;
  const auto bild = std::make_shared<Zaehlbild>();
  f.feld.PaintPicture(bild, QRectF(0, 0, 30, 20));
  EXPECT_EQ(bild->gefragt, 0);
  EXPECT_FALSE(f.feld.ist_gezeichnet());
  EXPECT_EQ(f.pixel(1, 1), Gruen);
  EXPECT_EQ(f.pixel(2, 2), Gruen);
  EXPECT_TRUE(f.feld.ist_gezeichnet());
  EXPECT_EQ(bild->gefragt, 1);
  EXPECT_EQ(bild->gefragte_Groesse, QSize(30, 20));
}

TEST(Bildfeld, APictureThatIsCoveredWholeBeforeAnybodyLookedIsNeverDecoded) {
  Feld f;
  const auto unten = std::make_shared<Zaehlbild>();
  f.feld.PaintPicture(unten, QRectF(0, 0, 30, 20));
  f.feld.PaintPicture(einfarbig({10, 10}, Qt::red), QRectF(0, 0, 30, 20));
  EXPECT_EQ(f.pixel(1, 1), Rot);
  EXPECT_EQ(unten->gefragt, 0);
}

TEST(Bildfeld, APictureThatCannotBeDecodedLeavesWhatWasThereAndIsNotTriedAgain) {
  Feld f;
  const auto kaputt = std::make_shared<Zaehlbild>(false);
  f.feld.Kasten(QPointF(0, 0), QPointF(29, 19), 0x0000FF);
  f.feld.PaintPicture(kaputt, QRectF(0, 0, 20, 20));
  f.feld.Linie(QPointF(0, 10), QPointF(29, 10), 0xFF0000);
  EXPECT_EQ(f.pixel(3, 3), Rot);
  EXPECT_EQ(f.pixel(3, 10), Blau);
  (void)f.feld.Image();
  EXPECT_EQ(kaputt->gefragt, 1);
}

TEST(Bildfeld, ABoxOrRectangleOfSizeZeroPaintsNothing) {
  Feld f;
  const auto bild = std::make_shared<Zaehlbild>();
  f.feld.PaintPicture(bild, QRectF(0, 0, 0, 0));
  (void)f.feld.Image();
  EXPECT_EQ(bild->gefragt, 0);
  f.feld.Move(0, 0, 0, 0);
  f.feld.PaintPicture(bild, QRectF(0, 0, 0, 0));
  EXPECT_TRUE(f.feld.Image().isNull());
  EXPECT_EQ(bild->gefragt, 0);
}

TEST(Bildfeld, AClickIsAPressAndAReleaseOfTheLeftButtonInside) {
  Feld f;
  int klicks = 0;
  f.feld.Click = [&] { ++klicks; };
  QTest::mouseClick(&f.feld, Qt::LeftButton);
  EXPECT_EQ(klicks, 1);
  QTest::mouseClick(&f.feld, Qt::RightButton);
  EXPECT_EQ(klicks, 1);
  QTest::mousePress(&f.feld, Qt::LeftButton);
  QMouseEvent draussen(QEvent::MouseButtonRelease, QPointF(500, 5), QPointF(500, 5), Qt::LeftButton, {}, {});
  QCoreApplication::sendEvent(&f.feld, &draussen);
  EXPECT_EQ(klicks, 1);
}

TEST(Bildfeld, ADoubleClickIsAClickAndADoubleClick) {
  Feld f;
  QStringList ereignisse;
  f.feld.Click = [&] { ereignisse += u"Click"_s; };
  f.feld.DblClick = [&] { ereignisse += u"DblClick"_s; };
  f.behaelter.show();
  QTest::mouseDClick(f.behaelter.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(ereignisse, (QStringList{u"Click"_s, u"DblClick"_s}));
}

TEST(Bildfeld, AutomaticDragModeSuppressesClickAndDoubleClick) {
  Feld f;
  int ereignisse = 0;
  f.feld.Click = [&] { ++ereignisse; };
  f.feld.DblClick = [&] { ++ereignisse; };
  f.feld.DragMode(1);
  QTest::mouseClick(&f.feld, Qt::LeftButton);
  f.behaelter.show();
  QTest::mouseDClick(f.behaelter.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(ereignisse, 0);
  f.feld.DragMode(0);
  QTest::mouseClick(&f.feld, Qt::LeftButton);
  EXPECT_EQ(ereignisse, 1);
}

TEST(Bildfeld, ADragModeOtherThanZeroAndOneIsRefused) {
  Feld f;
  f.feld.DragMode(1);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.DragMode(2); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.DragMode(-1); }), 380);
  EXPECT_EQ(f.feld.DragMode(), 1);
}

TEST(Bildfeld, ACopyTakesPlaceDragModeAndToolTipButNotTheVisibility) {
  Feld f;
  f.feld.Move(7, 8, 450, 300);
  f.feld.DragMode(1);
  f.feld.ToolTipText(u"Tipp"_s);
  f.feld.BackColor(0x123456);
  Bildfeld kopie(&f.behaelter, u"Pic_Kopie"_s);
  kopie.uebernimm(f.feld);
  EXPECT_EQ(kopie.Left(), 7);
  EXPECT_EQ(kopie.Top(), 8);
  EXPECT_EQ(kopie.Width(), 450);
  EXPECT_EQ(kopie.Height(), 300);
  EXPECT_EQ(kopie.DragMode(), 1);
  EXPECT_EQ(kopie.toolTip(), u"Tipp"_s);
  EXPECT_EQ(kopie.BackColor(), 0x123456u);
  EXPECT_FALSE(kopie.Visible());
  EXPECT_TRUE(f.feld.Visible());
}

TEST(Bildfeld, TheScreenShowsThePersistentImage) {
  Feld f;
  f.feld.Kasten(QPointF(0, 0), QPointF(29, 19), 0x0000FF);
  EXPECT_EQ(f.feld.grab().toImage().pixel(10, 10), Rot);
}
