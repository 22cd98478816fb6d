#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include "host/bericht/pdf/Jpegbytes.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray jpeg(QImage::Format format = QImage::Format_RGB32) {
  QImage bild(40, 24, format);
  bild.fill(Qt::gray);
  QBuffer puffer;
  bild.save(&puffer, "jpeg", 90);
  return puffer.data();
}

QByteArray abschnitt(char marke, const QByteArray& inhalt) {
  const auto laenge = inhalt.size() + 2;
  return QByteArray("\xff") + marke + static_cast<char>(laenge >> 8) + static_cast<char>(laenge & 0xff) + inhalt;
}

QByteArray mit(const QByteArray& stueck) {
  QByteArray bytes = jpeg();
  return bytes.insert(2, stueck);
}

TEST(Jpegbytes, TheHeaderTellsSizeAndColours) {
  const auto farbig = jpegbytes::lies_Kopf(jpeg());
  ASSERT_TRUE(farbig);
  EXPECT_EQ(farbig->groesse, QSize(40, 24));
  EXPECT_EQ(farbig->farben, 3);
  const auto grau = jpegbytes::lies_Kopf(jpeg(QImage::Format_Grayscale8));
  ASSERT_TRUE(grau);
  EXPECT_EQ(grau->farben, 1);
}

TEST(Jpegbytes, WhatAPdfCantShowIsRefused) {
  EXPECT_FALSE(jpegbytes::lies_Kopf("GIF89a"));
  EXPECT_FALSE(jpegbytes::lies_Kopf({}));
  const QByteArray gut = jpeg();
  const qsizetype sof = gut.indexOf("\xff\xc0");
  ASSERT_GT(sof, 0);
  // Arithmetic coding, twelve bits, four components.
  for (const auto& [ort, wert] : {std::pair(sof + 1, '\xc9'), std::pair(sof + 4, '\x0c'), std::pair(sof + 9, '\x04')}) {
    QByteArray anders = gut;
    anders[ort] = wert;
    EXPECT_FALSE(jpegbytes::lies_Kopf(anders)) << ort - sof;
  }
}

TEST(Jpegbytes, ColoursThatOnlyNamesTellAreRefused) {
  QByteArray bytes = jpeg();
  const qsizetype sof = bytes.indexOf("\xff\xc0");
  for (const auto& [komponente, name] : {std::pair(0, 'R'), std::pair(1, 'G'), std::pair(2, 'B')})
    bytes[sof + 10 + 3 * komponente] = name;
  // With its JFIF marker the names count for nothing.
  EXPECT_TRUE(jpegbytes::lies_Kopf(bytes));
  const qsizetype app0 = bytes.indexOf("\xff\xe0");
  bytes.remove(app0, 18);
  EXPECT_FALSE(jpegbytes::lies_Kopf(bytes));
}

TEST(Jpegbytes, OnlyThePictureItselfStays) {
  const QByteArray exif = abschnitt('\xe1', "Exif\0\0Freiburg, 47.99 Nord"_ba);
  const QByteArray xmp = abschnitt('\xe1', "http://ns.adobe.com/xap/1.0/ GPSLatitude"_ba);
  const QByteArray worte = abschnitt('\xfe', "bei Huber"_ba);
  const QByteArray adobe = abschnitt('\xee', QByteArray("Adobe\0\x64\0\0\0\0\1", 12));
  const QByteArray rein = jpegbytes::ohne_Beiwerk(mit(exif + xmp + worte + adobe) + "was dahinter steht");
  EXPECT_EQ(rein, mit(adobe));
  EXPECT_EQ(jpegbytes::ohne_Beiwerk(jpeg()), jpeg());
}

TEST(Jpegbytes, APictureThatIsCutShortIsGivenAnEnd) {
  const QByteArray ganz = jpeg();
  const QByteArray rein = jpegbytes::ohne_Beiwerk(ganz.chopped(20));
  EXPECT_EQ(rein, ganz.chopped(20) + "\xff\xd9");
}

TEST(Jpegbytes, NoCutAndNoByteLeadsOutOfTheFile) {
  const QByteArray ganz = mit(abschnitt('\xe1', "Exif\0\0ein Ort"_ba));
  for (qsizetype i = 0; i < ganz.size(); ++i) {
    static_cast<void>(jpegbytes::lies_Kopf(ganz.first(i)));
    EXPECT_LE(jpegbytes::ohne_Beiwerk(ganz.first(i)).size(), i + 2);
    EXPECT_FALSE(jpegbytes::ohne_Beiwerk(ganz.first(i)).contains("ein Ort"));
    QByteArray anders = ganz;
    anders[i] = '\xff';
    EXPECT_LE(jpegbytes::ohne_Beiwerk(anders).size(), ganz.size() + 2);
  }
}

}  // namespace
