#include <QDir>
#include <QFile>
#include <QImage>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildThumbnail : public ::testing::Test {
 protected:
  QString lege(const QString& name, QSize groesse) const {
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(Qt::red);
    const QString pfad = ordner_.pfad(name);
    EXPECT_TRUE(bild.save(pfad, "bmp"));
    return pfad;
  }
  QImage zeichne(const QString& quelle, int breite = 100, int hoehe = 100) const {
    const Lauf lauf = kvobild(
        {u"thumbnail"_s, u"--breite"_s, QString::number(breite), u"--hoehe"_s, QString::number(hoehe), quelle, ziel_});
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.ausgabe.isEmpty() && lauf.meldungen.isEmpty()) << lauf.meldungen.toStdString();
    return QImage(ziel_).convertToFormat(QImage::Format_RGB32);
  }
  static QRect rotes(const QImage& blatt) {
    QRect rot;
    for (int y = 0; y < blatt.height(); ++y)
      for (int x = 0; x < blatt.width(); ++x)
        if (blatt.pixelColor(x, y) == QColor(Qt::red)) rot |= QRect(x, y, 1, 1);
    return rot;
  }

  Testordner ordner_;
  const QString ziel_ = ordner_.pfad(u"ziel ä.png"_s);
};

TEST_F(KvobildThumbnail, ALargePictureIsStretchedASmallOneStandsInTheMiddle) {
  const QImage gross = zeichne(lege(u"gross.bmp"_s, {640, 120}));
  EXPECT_EQ(gross.size(), QSize(101, 101));
  EXPECT_EQ(rotes(gross), QRect(1, 1, 99, 99));
  EXPECT_EQ(rotes(zeichne(lege(u"klein.bmp"_s, {21, 11}))), QRect(40, 45, 21, 11));
}

TEST_F(KvobildThumbnail, WidthAndHeightCountEachForItself) {
  const QImage blatt = zeichne(lege(u"gross.bmp"_s, {640, 120}), 200, 50);
  EXPECT_EQ(blatt.size(), QSize(201, 51));
  EXPECT_EQ(rotes(blatt), QRect(1, 1, 199, 49));
}

TEST_F(KvobildThumbnail, ABrokenPictureHasTheSubstituteAndOtherFilesTheIconOfTheirExtension) {
  const QImage kaputt = zeichne(ordner_.schreibe(u"kaputt.jpg"_s, "kein Bild"));
  const QImage text = zeichne(ordner_.schreibe(u"brief.pdf"_s, "Text"));
  EXPECT_EQ(zeichne(ordner_.schreibe(u"auch.TIF"_s, "GIF89a")), kaputt);
  EXPECT_NE(text, kaputt);
  for (const QImage& blatt : {kaputt, text}) {
    EXPECT_EQ(blatt.size(), QSize(101, 101));
    EXPECT_NE(blatt.pixelColor(50, 50), blatt.pixelColor(1, 1));
  }
  // Icons of two types differ by their letters.
  EXPECT_NE(zeichne(ordner_.schreibe(u"brief.doc"_s, "Text")), text);
}

TEST_F(KvobildThumbnail, WhatIsMissingOrDoesNotWorkIsAFailureWithWordsAndWithoutATarget) {
  const QString quelle = lege(u"q.bmp"_s, {10, 10});
  const auto rufe = [&](const QString& breite, const QString& von, const QString& nach) {
    return kvobild({u"thumbnail"_s, u"--breite"_s, breite, u"--hoehe"_s, u"9"_s, von, nach}).code;
  };
  for (const QString& breite : {u"0"_s, u"-1"_s, u"4097"_s, u"x"_s, u"1.5"_s})
    EXPECT_EQ(rufe(breite, quelle, ziel_), 2);
  EXPECT_EQ(kvobild({u"thumbnail"_s, u"--breite"_s, u"9"_s, quelle, ziel_}).code, 2);
  EXPECT_EQ(rufe(u"9"_s, ordner_.pfad(u"fehlt.jpg"_s), ziel_), 4);
  EXPECT_EQ(rufe(u"9"_s, ordner_.pfad(), ziel_), 4);
  EXPECT_EQ(rufe(u"9"_s, quelle, ordner_.pfad()), 4);
  EXPECT_EQ(rufe(u"9"_s, quelle, ordner_.pfad(u"fehlt/ziel.png"_s)), 4);
  const QByteArray vorher = ordner_.lies(u"q.bmp"_s);
  EXPECT_EQ(rufe(u"9"_s, quelle, quelle), 4);
  EXPECT_EQ(ordner_.lies(u"q.bmp"_s), vorher);
  EXPECT_FALSE(ordner_.vorhanden(u"ziel ä.png"_s));
}

TEST_F(KvobildThumbnail, NothingIsLeftInTheUsersCache) {
  const QString cache = QFile::decodeName(qgetenv("XDG_CACHE_HOME"));
  ASSERT_TRUE(QDir(cache).exists());
  zeichne(lege(u"gross.bmp"_s, {1640, 1120}));
  EXPECT_FALSE(QDir(cache + u"/thumbnails"_s).exists());
  EXPECT_FALSE(QDir(cache + u"/kvobildzuordnung"_s).exists());
}
