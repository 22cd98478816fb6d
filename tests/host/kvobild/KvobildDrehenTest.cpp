#include <QDir>
#include <QImage>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildDrehen : public ::testing::Test {
 protected:
  KvobildDrehen() {
    QImage bild(64, 32, QImage::Format_RGB32);
    bild.fill(Qt::white);
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 32; ++x) bild.setPixel(x, y, qRgb(0, 0, 0));  // black is the top left quarter
    quelle_ = ordner_.pfad(u"a.b'c ä.jpg"_s);
    EXPECT_TRUE(bild.save(quelle_, "jpg", 95));
  }
  Lauf drehe(const QString& um) const { return kvobild({u"drehen"_s, u"--um"_s, um, quelle_, ziel_}); }
  QPoint schwarzes_Viertel() const {
    const QImage bild(ziel_);
    for (const int y : {0, 1})
      for (const int x : {0, 1})
        if (qGray(bild.pixel(bild.width() * (1 + 2 * x) / 4, bild.height() * (1 + 2 * y) / 4)) < 60) return {x, y};
    return {-1, -1};
  }
  QStringList inhalt() const { return QDir(ordner_.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

  Testordner ordner_;
  QString quelle_;
  const QString ziel_ = ordner_.pfad(u"ziel.jpg"_s);
};

TEST_F(KvobildDrehen, EveryKindBringsTheQuarterToItsPlace) {
  const QByteArray vorher = ordner_.lies(u"a.b'c ä.jpg"_s);
  for (const auto& [um, ort, groesse] :
      {std::tuple{u"90"_s, QPoint(1, 0), QSize(32, 64)}, std::tuple{u"180"_s, QPoint(1, 1), QSize(64, 32)},
          std::tuple{u"270"_s, QPoint(0, 1), QSize(32, 64)}, std::tuple{u"waagerecht"_s, QPoint(1, 0), QSize(64, 32)},
          std::tuple{u"senkrecht"_s, QPoint(0, 1), QSize(64, 32)}}) {
    const Lauf lauf = drehe(um);
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.ausgabe.isEmpty() && lauf.meldungen.isEmpty());
    EXPECT_EQ(schwarzes_Viertel(), ort) << um.toStdString();
    EXPECT_EQ(QImage(ziel_).size(), groesse);
  }
  EXPECT_EQ(ordner_.lies(u"a.b'c ä.jpg"_s), vorher);
  EXPECT_EQ(inhalt().size(), 2);
}

TEST_F(KvobildDrehen, AnotherKindOrNoneIsAWrongCall) {
  for (const QString& um : {u"45"_s, u"-90"_s, u"90 "_s, u"0"_s, u"Waagerecht"_s, QString()}) {
    const Lauf lauf = drehe(um);
    EXPECT_EQ(lauf.code, 2) << um.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(u"--um"_s)) << lauf.meldungen.toStdString();
  }
  const QList<QStringList> falsche{{quelle_, ziel_}, {u"--um"_s, u"90"_s, quelle_}, {u"--um"_s, u"90"_s},
      {u"--um"_s, u"90"_s, quelle_, ziel_, ziel_}, {u"--um"_s, u"90"_s, u"--ja"_s, quelle_, ziel_},
      {quelle_, ziel_, u"--um"_s}};
  for (const QStringList& argumente : falsche) {
    const Lauf lauf = kvobild(QStringList{u"drehen"_s} + argumente);
    EXPECT_EQ(lauf.code, 2) << argumente.join(u' ').toStdString();
    EXPECT_FALSE(lauf.meldungen.isEmpty());
  }
  EXPECT_EQ(inhalt().size(), 1);
}

TEST_F(KvobildDrehen, ATargetThatExistsIsReplacedAndStaysWhereTurningFails) {
  ordner_.schreibe(u"ziel.jpg"_s, "alt");
  EXPECT_EQ(kvobild({u"drehen"_s, u"--um"_s, u"90"_s, ordner_.schreibe(u"t.jpg"_s, "Text"), ziel_}).code, 4);
  EXPECT_EQ(ordner_.lies(u"ziel.jpg"_s), "alt");
  EXPECT_EQ(drehe(u"90"_s).code, 0);
  EXPECT_EQ(QImage(ziel_).size(), QSize(32, 64));
}

TEST_F(KvobildDrehen, MissingAndOtherFilesAreExitCode4WithWordsAndWithoutATarget) {
  EXPECT_EQ(kvobild({u"drehen"_s, u"--um"_s, u"90"_s, ordner_.pfad(u"fehlt.jpg"_s), ziel_}).code, 4);
  const Lauf kein_Bild = kvobild({u"drehen"_s, u"--um"_s, u"90"_s, ordner_.schreibe(u"t.jpg"_s, "Text"), ziel_});
  EXPECT_EQ(kein_Bild.code, 4);
  EXPECT_TRUE(kein_Bild.meldungen.contains(u"kein Bild eines bekannten Formats"_s));
  EXPECT_EQ(kvobild({u"drehen"_s, u"--um"_s, u"90"_s, quelle_, quelle_}).code, 4);
  EXPECT_EQ(kvobild({u"drehen"_s, u"--um"_s, u"90"_s, quelle_, ordner_.pfad()}).code, 4);
  EXPECT_EQ(kvobild({u"drehen"_s, u"--um"_s, u"90"_s, quelle_, ordner_.pfad(u"fehlt/b.jpg"_s)}).code, 4);
  EXPECT_EQ(inhalt().size(), 2);
}
