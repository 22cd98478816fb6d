#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Steuerelement.h"
#include "platform/forms/steuerelemente/Textfelder.h"
#include "tests/support/Fehler.h"

namespace {

class Kasten : public QWidget, public Steuerelement {
 public:
  explicit Kasten(QWidget* eltern) : QWidget(eltern), Steuerelement(*this, QStringLiteral("Kasten")) {}
  int gezeigt = 0;
  int verborgen = 0;

 protected:
  void showEvent(QShowEvent* /*ereignis*/) override { ++gezeigt; }
  void hideEvent(QHideEvent* /*ereignis*/) override { ++verborgen; }
};

}  // namespace

TEST(Twips, FifteenMakeAPixelAndHalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(twips::pixel(15), 1);
  EXPECT_EQ(twips::pixel(7.5), 0);
  EXPECT_EQ(twips::pixel(22.5), 2);
  EXPECT_EQ(twips::pixel(37.5), 2);
  EXPECT_EQ(twips::pixel(-22.5), -2);
  EXPECT_EQ(twips::pixel(1e300), 1 << 24);
  EXPECT_EQ(twips::aus_Pixel(3), 45);
}

TEST(Steuerelement, MeasuresAreKeptExactlyAndPixelsDeriveFromThem) {
  QWidget eltern;
  Kasten kasten(&eltern);
  kasten.Steuerelement::Left(40);
  kasten.Steuerelement::Top(7);
  kasten.Steuerelement::Width(2501);
  kasten.Steuerelement::Height(560);
  EXPECT_EQ(kasten.Left(), 40);
  EXPECT_EQ(kasten.Top(), 7);
  EXPECT_EQ(kasten.Width(), 2501);
  EXPECT_EQ(kasten.Height(), 560);
  EXPECT_EQ(kasten.geometry(), QRect(3, 0, 167, 37));
}

TEST(Steuerelement, ANegativeSizeIsRefusedAndTheOldOneStays) {
  QWidget eltern;
  Kasten kasten(&eltern);
  kasten.Move(15, 15, 150, 300);
  EXPECT_EQ(Fehlernummer_von([&] { kasten.Width(-1); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { kasten.Height(-0.5); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { kasten.Move(0, 0, 10, -10); }), 380);
  EXPECT_EQ(kasten.Left(), 15);
  EXPECT_EQ(kasten.Width(), 150);
  EXPECT_EQ(kasten.Height(), 300);
  EXPECT_EQ(kasten.geometry(), QRect(1, 1, 10, 20));
}

TEST(Steuerelement, VisibleAndEnabledAreTheControlsOwnProperties) {
  QWidget eltern;
  Kasten kasten(&eltern);
  EXPECT_TRUE(kasten.Visible());
  kasten.Visible(false);
  EXPECT_FALSE(kasten.Visible());
  kasten.Visible(true);
  EXPECT_TRUE(kasten.Visible());
  eltern.setEnabled(false);
  EXPECT_TRUE(kasten.Enabled());
  kasten.Enabled(false);
  eltern.setEnabled(true);
  EXPECT_FALSE(kasten.Enabled());
}

TEST(Steuerelement, VisibleIsThePropertyWhileItsContainerIsHidden) {
  QWidget fenster;
  Kasten aussen(&fenster);
  Kasten innen(&aussen);
  fenster.show();
  aussen.Visible(false);
  EXPECT_TRUE(innen.Visible());
  innen.Visible(false);
  aussen.Visible(true);
  EXPECT_FALSE(innen.isVisible());
}

TEST(Steuerelement, PixelsOfPlaceAndSizeAreRoundedEachOnItsOwnHalvesToEven) {
  QWidget eltern;
  Kasten kasten(&eltern);
  kasten.Move(7.5, 22.5, 37.5, 52.5);
  EXPECT_EQ(kasten.geometry(), QRect(0, 2, 2, 4));
  EXPECT_EQ(kasten.Left(), 7.5);
  EXPECT_EQ(kasten.Height(), 52.5);
  kasten.Steuerelement::Left(-22.5);
  EXPECT_EQ(kasten.x(), -2);
}

TEST(Steuerelement, ColoursAreReadAsTheyWereSetAndTheSystemsBefore) {
  QWidget eltern;
  Kasten kasten(&eltern);
  const QColor system = kasten.palette().color(kasten.backgroundRole());
  EXPECT_EQ(kasten.BackColor(), static_cast<Farbe>(system.red() | system.green() << 8 | system.blue() << 16));
  kasten.BackColor(0x102030);
  kasten.ForeColor(0x405060);
  EXPECT_EQ(kasten.BackColor(), 0x102030u);
  EXPECT_EQ(kasten.ForeColor(), 0x405060u);
  kasten.resize(10, 10);
  EXPECT_EQ(kasten.grab().toImage().pixel(5, 5), qRgb(0x30, 0x20, 0x10));
}

TEST(Steuerelement, ATextFieldsColoursAreThoseOfItsPaperAndItsLetters) {
  QWidget eltern;
  TextBox feld(&eltern, QStringLiteral("txt_Probe"));
  feld.BackColor(0x0000FF);
  feld.ForeColor(0x00FF00);
  EXPECT_EQ(feld.palette().color(QPalette::Base), QColor(255, 0, 0));
  EXPECT_EQ(feld.palette().color(QPalette::Text), QColor(0, 255, 0));
  EXPECT_EQ(feld.BackColor(), 0x0000FFu);
}

TEST(Sichtbarkeitspause, OnlyWhatWasSetLastReachesTheScreen) {
  QWidget eltern;
  Kasten bleibt(&eltern);
  Kasten geht(&eltern);
  eltern.show();
  auto kommt = std::make_unique<Kasten>(&eltern);
  {
    const Sichtbarkeitspause pause;
    for (const bool wert : {false, true}) bleibt.Visible(wert);
    for (const bool wert : {true, false}) geht.Visible(wert);
    for (const bool wert : {false, true, false, true}) kommt->Visible(wert);
    EXPECT_TRUE(kommt->Visible());
    EXPECT_FALSE(kommt->isVisible());
    EXPECT_TRUE(geht.isVisible());
  }
  EXPECT_TRUE(kommt->isVisible());
  EXPECT_FALSE(geht.isVisible());
  EXPECT_EQ(std::pair(bleibt.gezeigt, bleibt.verborgen), std::pair(1, 0));
  EXPECT_EQ(std::pair(geht.gezeigt, geht.verborgen), std::pair(1, 1));
  EXPECT_EQ(std::pair(kommt->gezeigt, kommt->verborgen), std::pair(1, 0));
  geht.Visible(true);
  EXPECT_TRUE(geht.isVisible());
}

TEST(Sichtbarkeitspause, TheOuterOneOfTwoEndsIt) {
  QWidget eltern;
  Kasten kasten(&eltern);
  eltern.show();
  {
    const Sichtbarkeitspause aussen;
    {
      const Sichtbarkeitspause innen;
      kasten.Visible(false);
    }
    EXPECT_TRUE(kasten.isVisible());
  }
  EXPECT_FALSE(kasten.isVisible());
}

TEST(Sichtbarkeitspause, AControlMayGoMeanwhile) {
  QWidget eltern;
  Kasten bleibt(&eltern);
  eltern.show();
  {
    const Sichtbarkeitspause pause;
    auto geht = std::make_unique<Kasten>(&eltern);
    geht->Visible(true);
    bleibt.Visible(false);
    geht.reset();
  }
  EXPECT_FALSE(bleibt.isVisible());
}
