// The preview's pages: what is painted and loaded, how much of it is kept, where it stands.
#include <gtest/gtest.h>

#include <QImage>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "host/fenster/bericht/Seitenansicht.h"
#include "tests/host/bericht/Berichtsbauer.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor Farbe(20, 120, 220);

class Seitenansichttest : public ::testing::Test {
 protected:
  void zeige(int anzahl, int je_Seite, QSize groesse = {700, 900}) {
    std::vector<Berichtsbild> bilder;
    for (int i = 0; i < anzahl; ++i) {
      bilder.push_back(berichtsbauer::bild());
      bilder.back().datei = u"%1.jpg"_s.arg(i);
    }
    bericht_ = berichtsbauer::bericht(std::move(bilder));
    ansicht_.Ladewege(
        [this](const Berichtsbild& bild, QSize hoechstens) {
      geladen_.append(bild.datei.section(u'.', 0, 0).toInt());
      groessen_.append(hoechstens);
      if (runde_ == letzte_Runde_) ++im_selben_Zug_;
      letzte_Runde_ = runde_;
      QTimer::singleShot(0, &ansicht_, [this] { ++runde_; });
      QImage pixel(QSize(4000, 3000).scaled(hoechstens, Qt::KeepAspectRatio), QImage::Format_RGB32);
      pixel.fill(Farbe);
      return unlesbar_ ? QImage() : pixel;
        },
        [](const QString&, QSize) { return QImage(); });
    ansicht_.resize(groesse);
    ansicht_.zeige(bericht_, seitenplan::plane(bericht_, je_Seite));
    ansicht_.show();
    ansicht_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ansicht_));
    warte();
  }
  void warte() {
    ansicht_.viewport()->repaint();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ansicht_.laedt(); }));
  }
  /// Where a picture of the first page in sight shows.
  QPoint mitte_des_Bildes(std::size_t bild) const {
    const QRectF ort = ansicht_.plan().front().bilder.at(bild).ort;
    const int links = (ansicht_.viewport()->width() - qRound(11900 * ansicht_.massstab())) / 2;
    return QPoint(links, 14) + (ort.center() * ansicht_.massstab()).toPoint();
  }
  void drehe_Rad(int raste, Qt::KeyboardModifiers dazu, QPoint ort) {
    QWheelEvent rad(
        ort, ansicht_.viewport()->mapToGlobal(ort), {}, {0, raste * 120}, {}, dazu, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(ansicht_.viewport(), &rad);
  }

  Bericht bericht_;
  QList<int> geladen_;
  QList<QSize> groessen_;
  int runde_ = 0;
  int letzte_Runde_ = -1;
  int im_selben_Zug_ = 0;
  bool unlesbar_ = false;
  Seitenansicht ansicht_;
};

}  // namespace

TEST_F(Seitenansichttest, OnlyWhatIsInSightIsLoaded) {
  zeige(300, 2);
  EXPECT_EQ(ansicht_.seiten(), 150);
  EXPECT_EQ(geladen_, (QList<int>{0, 1}));
  ansicht_.gehe_zu(100);
  warte();
  EXPECT_EQ(geladen_.mid(2), (QList<int>{198, 199}));
  ansicht_.gehe_zu(1);
  warte();
  EXPECT_EQ(geladen_.size(), 4) << "what was loaded is kept";
}

TEST_F(Seitenansichttest, WhatWasScrolledOutOfSightBeforeItsTurnIsNotLoaded) {
  zeige(300, 2);
  for (int seite = 10; seite <= 50; ++seite) {
    ansicht_.gehe_zu(seite);
    ansicht_.viewport()->repaint();
  }
  EXPECT_EQ(geladen_.size(), 2);
  warte();
  EXPECT_EQ(geladen_.mid(2), (QList<int>{98, 99}));
}

TEST_F(Seitenansichttest, APictureOfThePageThatIsOutOfSightIsNotAskedFor) {
  zeige(2, 2);
  drehe_Rad(8, Qt::ControlModifier, {350, 20});
  warte();
  EXPECT_EQ(geladen_.mid(2), QList<int>{0});
  ansicht_.viewport()->repaint();
  EXPECT_FALSE(ansicht_.laedt());
}

TEST_F(Seitenansichttest, OnePictureIsLoadedBetweenTheEventsAndItsPlaceIsGreyUntilThen) {
  zeige(6, 6);
  EXPECT_EQ(geladen_.size(), 6);
  EXPECT_EQ(im_selben_Zug_, 0);
  EXPECT_EQ(ansicht_.viewport()->grab().toImage().pixelColor(mitte_des_Bildes(0)), Farbe);
  for (Berichtsbild& bild : bericht_.bilder) bild.ordner += u"\\2"_s;
  ansicht_.zeige(bericht_, seitenplan::plane(bericht_, 6));
  const QColor grau = ansicht_.viewport()->grab().toImage().pixelColor(mitte_des_Bildes(0));
  EXPECT_EQ(grau, QColor(226, 226, 226));
  EXPECT_EQ(geladen_.size(), 6) << "painting loads nothing";
  warte();
  EXPECT_EQ(ansicht_.viewport()->grab().toImage().pixelColor(mitte_des_Bildes(5)), Farbe);
}

TEST_F(Seitenansichttest, APictureThatCantBeReadIsNotTriedAgainAndAgain) {
  unlesbar_ = true;
  zeige(2, 2);
  for (int i = 0; i < 3; ++i) warte();
  EXPECT_EQ(geladen_.size(), 2);
}

TEST_F(Seitenansichttest, PixelsAreKeptUpToABoundAndThoseLongestUnseenGoFirst) {
  zeige(120, 1, {1300, 900});
  ansicht_.mass(Seitenansicht::Mass::Seitenbreite);
  warte();
  for (int seite = 1; seite <= 60; ++seite) {
    ansicht_.gehe_zu(seite);
    warte();
    ASSERT_LE(ansicht_.vorratsgroesse(), Seitenansicht::Vorrat);
  }
  EXPECT_GT(ansicht_.vorratsgroesse(), Seitenansicht::Vorrat / 2);
  const qsizetype bisher = geladen_.size();
  ansicht_.gehe_zu(58);
  warte();
  EXPECT_EQ(geladen_.size(), bisher);
  ansicht_.gehe_zu(1);
  warte();
  EXPECT_TRUE(geladen_.mid(bisher).contains(0)) << "the first one was forgotten";
}

TEST_F(Seitenansichttest, LargerPagesGetMorePixelsAndNeverMoreThanTheStoreBears) {
  zeige(2, 2);
  const QSize klein = groessen_.first();
  ansicht_.vergroessere(3);
  warte();
  EXPECT_GT(groessen_.last().width(), klein.width() * 3 / 2);
  ansicht_.vergroessere(30);
  warte();
  const QSize gross = groessen_.last();
  EXPECT_LE(gross.width() * gross.height(), 3'100'000);
  const qsizetype bisher = geladen_.size();
  for (int i = 0; i < 3; ++i) warte();
  EXPECT_EQ(geladen_.size(), bisher);
}

TEST_F(Seitenansichttest, TheWheelWithControlEnlargesWhatLiesBelowThePointer) {
  zeige(20, 2);
  const double vorher = ansicht_.massstab();
  const QPoint ort = mitte_des_Bildes(1);
  drehe_Rad(4, Qt::ControlModifier, ort);
  warte();
  EXPECT_NEAR(ansicht_.massstab(), vorher * 1.2 * 1.2 * 1.2 * 1.2, vorher / 100);
  EXPECT_EQ(ansicht_.mass(), Seitenansicht::Mass::Frei);
  EXPECT_EQ(ansicht_.viewport()->grab().toImage().pixelColor(ort), Farbe);
  EXPECT_GT(ansicht_.verticalScrollBar()->value(), 0);
  drehe_Rad(-4, Qt::ControlModifier, ort);
  EXPECT_NEAR(ansicht_.massstab(), vorher, vorher / 100);
  drehe_Rad(-1, {}, ort);
  EXPECT_NEAR(ansicht_.massstab(), vorher, vorher / 100) << "without the key it scrolls";
  EXPECT_GT(ansicht_.verticalScrollBar()->value(), 0);
}

TEST_F(Seitenansichttest, WholePagesAndPagesOfFullWidthFollowTheWindow) {
  zeige(20, 2, {700, 900});
  const auto hoehe = [this] { return qRound(16840 * ansicht_.massstab()); };
  EXPECT_NEAR(hoehe(), ansicht_.viewport()->height() - 28, 2);
  ansicht_.gehe_zu(5);
  ansicht_.resize(500, 500);
  QCoreApplication::processEvents();
  EXPECT_NEAR(hoehe(), ansicht_.viewport()->height() - 28, 2);
  EXPECT_EQ(ansicht_.seite(), 5);
  ansicht_.mass(Seitenansicht::Mass::Seitenbreite);
  EXPECT_NEAR(11900 * ansicht_.massstab(), ansicht_.viewport()->width() - 28, 2);
  EXPECT_EQ(ansicht_.horizontalScrollBar()->maximum(), 0);
  ansicht_.gehe_zu(5);
  ansicht_.resize(900, 600);
  QCoreApplication::processEvents();
  EXPECT_NEAR(11900 * ansicht_.massstab(), ansicht_.viewport()->width() - 28, 2);
  EXPECT_EQ(ansicht_.seite(), 5);
}

TEST_F(Seitenansichttest, WithoutPagesThereIsNothingToStumbleOver) {
  ansicht_.resize(400, 400);
  ansicht_.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&ansicht_));
  for (const Qt::Key taste : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Down})
    QTest::keyClick(&ansicht_, taste);
  ansicht_.vergroessere(2);
  ansicht_.mass(Seitenansicht::Mass::Seitenbreite);
  EXPECT_EQ(ansicht_.seite(), 0);
  EXPECT_FALSE(ansicht_.grab().isNull());
}
