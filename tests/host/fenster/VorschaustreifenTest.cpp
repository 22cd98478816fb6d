// The previews of a record's pictures: when they are loaded, and which come first.
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTest>

#include "host/fenster/Vorschaustreifen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class VorschaustreifenTest : public ::testing::Test {
 protected:
  static constexpr int Viele = 60;

  VorschaustreifenTest() {
    streifen_.Ladeweg([this](const Vorschaubild& bild, QSize groesse) {
      geladene_.append(bild.datei);
      if (bei_Laden_) bei_Laden_();
      QImage pixel(groesse, QImage::Format_RGB32);
      pixel.fill(Qt::green);
      return pixel;
    });
    streifen_.resize(420, 400);
    streifen_.setze(vorgang(u"a"_s));
    streifen_.show();
  }
  static QList<Vorschaubild> vorgang(const QString& name) {
    QList<Vorschaubild> bilder;
    for (int i = 0; i < Viele; ++i) bilder.append({u"Belege"_s, name + QString::number(i), {}, false});
    return bilder;
  }
  static QStringList namen(const QList<Vorschaubild>& bilder) {
    QStringList namen;
    for (const Vorschaubild& bild : bilder) namen.append(bild.datei);
    return namen;
  }
  /// Until so many were loaded; true when they were.
  bool warte(qsizetype anzahl) {
    return QTest::qWaitFor([&] { return geladene_.size() >= anzahl; });
  }
  /// Lets everything come that is to come.
  void warte_alle() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !geladene_.isEmpty() && streifen_.kommende().isEmpty(); }));
    QCoreApplication::processEvents();
  }

  Vorschaustreifen streifen_;
  QStringList geladene_;
  std::function<void()> bei_Laden_;
};

/// Notes how many previews were there when the strip was painted for the first time.
class Malzeuge final : public QObject {
 public:
  Malzeuge(QWidget& flaeche, const QStringList& geladene) : geladene_(geladene) { flaeche.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* ereignis) override {
    if (ereignis->type() == QEvent::Paint && beim_Malen < 0) beim_Malen = geladene_.size();
    return false;
  }
  qsizetype beim_Malen = -1;

 private:
  const QStringList& geladene_;
};

TEST_F(VorschaustreifenTest, ItIsPaintedBeforeTheFirstPreviewAndThenLoadsWhatIsInSightOneByOne) {
  const Malzeuge zeuge(*streifen_.viewport(), geladene_);
  ASSERT_TRUE(warte(1));
  EXPECT_EQ(zeuge.beim_Malen, 0);
  const QStringList rest = namen(streifen_.kommende());
  ASSERT_FALSE(rest.isEmpty());
  EXPECT_LT(rest.size(), Viele / 2) << "only what is in sight";
  warte_alle();
  EXPECT_EQ(geladene_, QStringList(u"a0"_s) + rest);
  EXPECT_EQ(streifen_.geladene(), geladene_.size());
}

TEST_F(VorschaustreifenTest, OtherPicturesArePaintedAtOnceAndWhatWasToComeIsGivenUp) {
  ASSERT_TRUE(warte(1));
  geladene_.clear();
  streifen_.setze(vorgang(u"b"_s));
  EXPECT_TRUE(streifen_.kommende().isEmpty());
  const Malzeuge zeuge(*streifen_.viewport(), geladene_);
  warte_alle();
  EXPECT_EQ(zeuge.beim_Malen, 0);
  ASSERT_GT(geladene_.size(), 1);
  for (const QString& name : geladene_) EXPECT_TRUE(name.startsWith(u'b')) << name.toStdString();
}

TEST_F(VorschaustreifenTest, WhatHasLeftTheSightIsGivenUpForWhatHasComeIntoIt) {
  bei_Laden_ = [this] {
    bei_Laden_ = {};
    streifen_.verticalScrollBar()->setValue(streifen_.verticalScrollBar()->maximum());
  };
  warte_alle();
  ASSERT_GT(geladene_.size(), 2);
  EXPECT_EQ(geladene_.value(0), u"a0"_s);
  for (const QString& name : geladene_.mid(1)) EXPECT_GT(name.mid(1).toInt(), Viele / 2) << name.toStdString();
  EXPECT_TRUE(geladene_.contains(u"a%1"_s.arg(Viele - 1)));
  streifen_.verticalScrollBar()->setValue(0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return geladene_.contains(u"a1"_s); }));
}

}  // namespace
