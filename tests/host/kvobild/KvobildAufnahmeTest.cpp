// Phone pictures and newer formats on the command line.
#include "tests/host/kvobild/Kvobild.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Heifbild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildAufnahme : public Betrieb {
 protected:
  /// The one picture of the record.
  QByteArray kopie() const {
    const QStringList namen = dateien();
    EXPECT_EQ(namen.size(), 1);
    return namen.size() == 1 ? ordner_.lies(u"bild.ablage/Belege/1/"_s + namen[0]) : QByteArray();
  }
  const QByteArray liegend_ = handyfoto::foto({61, 45}, 8, exifschreiber::Bytefolge::Gross);
};

TEST_F(KvobildAufnahme, APhonePictureStandsUprightAndItsSourceStays) {
  const QString quelle = ordner_.schreibe(u"eingang.neu/foto.jpg"_s, liegend_);
  const Lauf lauf = zuordnen({quelle});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.meldungen, QString());
  EXPECT_TRUE(handyfoto::steht_aufrecht(kopie(), liegend_));
  EXPECT_EQ(ordner_.lies(u"eingang.neu/foto.jpg"_s), liegend_);
}

TEST_F(KvobildAufnahme, AsTakenItIsTheSourceByteByByte) {
  const QString quelle = ordner_.schreibe(u"eingang.neu/foto.jpg"_s, liegend_);
  ASSERT_EQ(zuordnen({u"--wie-aufgenommen"_s, quelle}).code, 0);
  EXPECT_EQ(kopie(), liegend_);
}

TEST_F(KvobildAufnahme, WhatCanNotBeTurnedIsAssignedAsItCameAndTold) {
  QByteArray kaputt = liegend_;
  kaputt.truncate(kaputt.indexOf("\xFF\xC0") + 6);
  const Lauf lauf = zuordnen({ordner_.schreibe(u"eingang.neu/foto.jpg"_s, kaputt)});
  EXPECT_EQ(lauf.code, 0);
  EXPECT_TRUE(lauf.meldungen.contains(u"steht nicht aufrecht"_s)) << lauf.meldungen.toStdString();
  EXPECT_EQ(kopie(), kaputt);
}

TEST_F(KvobildAufnahme, AHeicBecomesAJpeg) {
  const QByteArray heic = heifbild::schreibe(handyfoto::motiv({128, 96}), heifbild::Art::Heic);
  if (heic.isEmpty()) GTEST_SKIP() << "libheif has no encoder here";
  const Lauf lauf = zuordnen({ordner_.schreibe(u"eingang.neu/IMG.HEIC"_s, heic)});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  ASSERT_EQ(lauf.zeilen().size(), 1);
  EXPECT_TRUE(lauf.zeilen()[0].endsWith(u".jpg"_s));
  EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(kopie(), false), handyfoto::motiv({128, 96})), 24);
}

TEST_F(KvobildAufnahme, ABrokenHeicStopsAllAndLeavesNothing) {
  const QString gut = bild(u"gut.jpg"_s);
  const QString kaputt = ordner_.schreibe(u"eingang.neu/IMG.HEIC"_s,
      QByteArray("\0\0\0\x18"
                 "ftypheic\0\0\0\0mif1heic",
          24));
  const QString vorher = stand();
  const Lauf lauf = zuordnen({gut, kaputt});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"IMG.HEIC“: "_s) && lauf.meldungen.contains(u"Nichts ist zugeordnet."_s))
      << lauf.meldungen.toStdString();
  EXPECT_EQ(stand(), vorher);
}
