#include <gtest/gtest.h>

#include <QTest>

#include "platform/forms/Bildfeld.h"
#include "platform/forms/Flaechen.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Flaechen, ACaptionIsPlainTextWhateverItHolds) {
  QWidget behaelter;
  SSPanel panel(&behaelter, u"SSP_Probe"_s);
  Label zeile(&behaelter, u"lbl_Probe"_s);
  for (const QString& text : {u"   Müller & <b>Söhne</b>"_s, u""_s}) {
    panel.Caption(text);
    zeile.Caption(text);
    EXPECT_EQ(panel.Caption(), text);
    EXPECT_EQ(zeile.Caption(), text);
  }
  EXPECT_EQ(panel.textFormat(), Qt::PlainText);
  EXPECT_EQ(zeile.textFormat(), Qt::PlainText);
}

TEST(Flaechen, ALongCaptionDoesNotMakeAPanelLarger) {
  QWidget behaelter;
  SSPanel panel(&behaelter, u"SSP_Probe"_s);
  panel.Caption(QString(500, u'W'));
  panel.Move(0, 0, 150, 75);
  EXPECT_EQ(panel.geometry(), QRect(0, 0, 10, 5));
}

TEST(Flaechen, AFrameIsDrawnAtItsEdgesInItsColourAndIsHollow) {
  QWidget behaelter;
  Shape rahmen(&behaelter, u"Shp_Probe"_s);
  rahmen.Move(0, 0, 20 * 15, 10 * 15);
  rahmen.BorderColor(0x0000FF);
  rahmen.BorderWidth(2);
  EXPECT_EQ(rahmen.BorderColor(), 0x0000FFu);
  EXPECT_EQ(rahmen.BorderWidth(), 2);
  QPixmap flaeche(20, 10);
  flaeche.fill(Qt::white);
  rahmen.render(&flaeche, QPoint(), QRegion(), QWidget::DrawChildren);
  const QImage bild = flaeche.toImage();
  for (int x = 0; x < 20; ++x)
    for (int y = 0; y < 10; ++y) {
      const bool rand = x < 2 || x >= 18 || y < 2 || y >= 8;
      EXPECT_EQ(bild.pixel(x, y), rand ? qRgb(255, 0, 0) : qRgb(255, 255, 255)) << x << ',' << y;
    }
}

TEST(Flaechen, ABorderThinnerThanAPixelIsRefused) {
  QWidget behaelter;
  Shape rahmen(&behaelter, u"Shp_Probe"_s);
  EXPECT_EQ(Fehlernummer_von([&] { rahmen.BorderWidth(0); }), 380);
  EXPECT_EQ(rahmen.BorderWidth(), 1);
}

TEST(Flaechen, AFrameLetsTheMouseThroughToWhatLiesBelow) {
  QWidget fenster;
  fenster.resize(200, 200);
  Bildfeld unten(&fenster, u"Pic_Unten"_s);
  unten.Move(0, 0, 1500, 1500);
  Shape rahmen(&fenster, u"Shp_Probe"_s);
  rahmen.Move(0, 0, 1500, 1500);
  int klicks = 0;
  unten.Click = [&] { ++klicks; };
  fenster.show();
  QTest::mouseClick(fenster.windowHandle(), Qt::LeftButton, {}, QPoint(50, 50));
  EXPECT_EQ(klicks, 1);
}
