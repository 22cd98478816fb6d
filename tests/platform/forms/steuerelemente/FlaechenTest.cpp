#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
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

namespace {

/// What a surface says where the mouse rests on it; "nichts" where it says nothing.
QString hinweis(QWidget& flaeche) {
  // A tool tip takes its time to go.
  QToolTip::showText({}, u"nichts"_s);
  QHelpEvent rast(QEvent::ToolTip, flaeche.rect().center(), flaeche.mapToGlobal(flaeche.rect().center()));
  QCoreApplication::sendEvent(&flaeche, &rast);
  return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

/// The last column of pixels of the surface itself, without what lies on it, that is not background; 2 pixels for the
/// frame are left out.
int letzte_Textspalte(QWidget& flaeche) {
  QImage bild(flaeche.size(), QImage::Format_RGB32);
  bild.fill(Qt::white);
  flaeche.render(&bild, QPoint(), QRegion(), {});
  for (int x = bild.width() - 3; x > 2; --x)
    for (int y = 3; y < bild.height() - 3; ++y)
      if (bild.pixel(x, y) != qRgb(255, 255, 255)) return x;
  return 0;
}

class Infozeile : public ::testing::Test {
 protected:
  Infozeile() {
    fenster.resize(300, 40);
    panel.Move(0, 0, 4500, 600);
    knopf.Move(3000, 30, 600, 540);
    zweiter.Move(3900, 30, 600, 540);
    panel.Caption(u"   Rechnung 4711 an Müller & <b>Söhne</b>, Musterstadt, Baustelle Nord"_s);
    fenster.show();
  }
  QWidget fenster;
  SSPanel panel{&fenster, u"SSP_Probe"_s};
  SSCommand knopf{&panel, u"SSC_Probe"_s};
  SSCommand zweiter{&panel, u"SSC_Zweiter"_s};
};

}  // namespace

TEST_F(Infozeile, ALongOneEndsWithAnEllipsisInFrontOfWhatLiesOnIt) {
  EXPECT_TRUE(panel.gezeigter_Text().startsWith(u"   Rechnung 4711"_s));
  EXPECT_TRUE(panel.gezeigter_Text().endsWith(u'…'));
  const int spalte = letzte_Textspalte(panel);
  EXPECT_GT(spalte, 150);
  EXPECT_LT(spalte, 200) << "the first button begins at 200";
  EXPECT_EQ(panel.Caption(), u"   Rechnung 4711 an Müller & <b>Söhne</b>, Musterstadt, Baustelle Nord"_s);
}

TEST_F(Infozeile, ItFollowsWhatLiesOnIt) {
  const QString eng = panel.gezeigter_Text();
  knopf.Left(1500);
  EXPECT_LT(panel.gezeigter_Text().size(), eng.size());
  EXPECT_LT(letzte_Textspalte(panel), 100);
  for (SSCommand* weg : {&knopf, &zweiter}) weg->Visible(false);
  EXPECT_GT(panel.gezeigter_Text().size(), eng.size());
  EXPECT_GT(letzte_Textspalte(panel), 250);
  EXPECT_LT(letzte_Textspalte(panel), 300);
}

TEST_F(Infozeile, AButtonThatMovesMakesItDrawAnew) {
  struct Zaehler final : QObject {
    bool eventFilter(QObject*, QEvent* ereignis) override {
      if (const auto* malen = dynamic_cast<QPaintEvent*>(ereignis)) bereich += malen->region();
      return false;
    }
    QRegion bereich;
  } gemalt;
  QCoreApplication::processEvents();
  panel.installEventFilter(&gemalt);
  knopf.Left(1500);
  QCoreApplication::processEvents();
  EXPECT_TRUE(gemalt.bereich.contains(QPoint(40, 20))) << "far from the button's old place and its new one";
}

TEST_F(Infozeile, TheToolTipShowsTheWholeOfItLetterByLetter) {
  EXPECT_EQ(hinweis(panel), panel.Caption().trimmed());
  panel.Caption(u"   Rechnung"_s);
  EXPECT_EQ(panel.gezeigter_Text(), u"   Rechnung"_s);
  EXPECT_EQ(hinweis(panel), u"nichts"_s) << "nothing is missing";
  panel.Caption(QString(200, u'W'));
  panel.ToolTipText(u"eigener"_s);
  EXPECT_EQ(hinweis(panel), u"eigener"_s);
}

TEST_F(Infozeile, ALineOfTextOfTooLittleRoomEndsWithAnEllipsisToo) {
  Label zeile(&fenster, u"lbl_Probe"_s);
  zeile.Move(0, 0, 900, 300);
  zeile.Caption(u"Dateiname schon vorhanden!"_s);
  EXPECT_TRUE(zeile.gezeigter_Text().endsWith(u'…')) << zeile.gezeigter_Text().toStdString();
  zeile.Width(4500);
  EXPECT_EQ(zeile.gezeigter_Text(), zeile.Caption());
  zeile.Width(0);
  EXPECT_LE(zeile.gezeigter_Text().size(), 1);
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
