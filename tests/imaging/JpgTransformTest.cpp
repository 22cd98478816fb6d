#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QImageReader>

#include "imaging/Bilddrehung.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "platform/gdiplus/gdiplus.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

oberflaeche::Meldung gdi_Fehler(const QString& text) {
  return {text, u"GDI Error"_s, oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
}

/// Four quarters of a colour each: red, green above blue, black.
QImage viertel(QSize groesse) {
  QImage bild(groesse, QImage::Format_RGB32);
  for (int y = 0; y < groesse.height(); ++y)
    for (int x = 0; x < groesse.width(); ++x) {
      const bool links = x < groesse.width() / 2;
      const QRgb oben = links ? qRgb(255, 0, 0) : qRgb(0, 255, 0);
      const QRgb unten = links ? qRgb(0, 0, 255) : qRgb(0, 0, 0);
      bild.setPixel(x, y, y < groesse.height() / 2 ? oben : unten);
    }
  return bild;
}

QByteArray kodiert(const QImage& bild, const char* format) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  bild.save(&puffer, format, 95);
  return bytes;
}

/// The letters of the colours in the four corners' quarters, from the top left in reading order.
QString ecken(const QByteArray& bytes) {
  const QImage bild = QImage::fromData(bytes);
  QString ergebnis;
  for (const int y : {bild.height() / 4, bild.height() * 3 / 4})
    for (const int x : {bild.width() / 4, bild.width() * 3 / 4}) {
      const QRgb farbe = bild.pixel(x, y);
      const int staerkste = std::max({qRed(farbe), qGreen(farbe), qBlue(farbe)});
      ergebnis += staerkste < 60 ? u's' : staerkste == qRed(farbe) ? u'r' : staerkste == qGreen(farbe) ? u'g' : u'b';
    }
  return ergebnis;
}

class JpgTransform : public ::testing::Test {
 protected:
  JpgTransform() { Fkt_GdiStartup(1); }
  ~JpgTransform() override {
    Fkt_GdiShutdown();
    gdiplus::kodierer::liste({});
  }
  QStringList inhalt() const { return QDir(ordner.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

  MeldungsDoppel meldungen;
  Testordner ordner;
  const QByteArray jpg = kodiert(viertel({64, 48}), "jpg");
  const QString quelle = ordner.schreibe(u"a.jpg"_s, jpg);
  const QString ziel = ordner.pfad(u"_a.jpg"_s);
};

TEST_F(JpgTransform, TheFiveNumbersTurnClockwiseAndMirror) {
  for (const auto& [wert, erwartet] : {std::pair{13, u"brsg"_s}, std::pair{14, u"sbgr"_s}, std::pair{15, u"gsrb"_s},
           std::pair{16, u"grsb"_s}, std::pair{17, u"bsrg"_s}}) {
    EXPECT_TRUE(Fkt_JpgTransform(quelle, ziel, wert));
    EXPECT_EQ(ecken(ordner.lies(u"_a.jpg"_s)), erwartet) << wert;
    EXPECT_EQ(QImage(ziel).size(), wert == 13 || wert == 15 ? QSize(48, 64) : QSize(64, 48));
  }
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), jpg) << "the source is not touched";
  EXPECT_EQ(inhalt(), (QStringList{u"_a.jpg"_s, u"a.jpg"_s}));
}

TEST_F(JpgTransform, APictureOfAnotherFormatIsTurnedIntoAJpegUnderTheTargetsName) {
  for (const char* format : {"png", "bmp", "tiff"})
    for (const auto& [wert, erwartet] : {std::pair{13, u"brsg"_s}, std::pair{14, u"sbgr"_s}, std::pair{15, u"gsrb"_s},
             std::pair{16, u"grsb"_s}, std::pair{17, u"bsrg"_s}}) {
      const QString anderes = ordner.schreibe(u"b.jpg"_s, kodiert(viertel({63, 41}), format));
      EXPECT_TRUE(Fkt_JpgTransform(anderes, ziel, wert)) << format;
      EXPECT_EQ(QImageReader::imageFormat(ziel), "jpeg");
      EXPECT_EQ(ecken(ordner.lies(u"_a.jpg"_s)), erwartet) << format << wert;
    }
}

TEST_F(JpgTransform, AMissingSourceReports10AndWritesNothing) {
  meldungen.erwarte(gdi_Fehler(u"File Not Found. GDI+ Error:10"_s));
  EXPECT_FALSE(Fkt_JpgTransform(ordner.pfad(u"fehlt.jpg"_s), ziel, 13));
  EXPECT_FALSE(ordner.vorhanden(u"_a.jpg"_s));
}

TEST_F(JpgTransform, ContentWithoutAKnownFormatReports13) {
  meldungen.erwarte(gdi_Fehler(u"Unknown Image Format. GDI+ Error:13"_s));
  EXPECT_FALSE(Fkt_JpgTransform(ordner.schreibe(u"text.jpg"_s, "kein Bild"), ziel, 13));
}

TEST_F(JpgTransform, ADamagedHeaderIsFalseWithoutAMessage) {
  EXPECT_FALSE(Fkt_JpgTransform(ordner.schreibe(u"b.jpg"_s, "\xff\xd8\xff"), ziel, 13));
  QByteArray zwoelf = jpg;
  zwoelf[zwoelf.indexOf("\xff\xc0") + 4] = 12;
  EXPECT_FALSE(Fkt_JpgTransform(ordner.schreibe(u"c.jpg"_s, zwoelf), ziel, 13)) << "12 bits to a sample";
}

TEST_F(JpgTransform, WithoutASessionItReports18) {
  Fkt_GdiShutdown();
  meldungen.erwarte(gdi_Fehler(u"Gdiplus Not Initialized. GDI+ Error:18"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, 13));
}

TEST_F(JpgTransform, AnotherNumberIsFalseWithoutAMessage) {
  for (const int wert : {0, 12, 18, -1}) EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, wert));
  EXPECT_FALSE(ordner.vorhanden(u"_a.jpg"_s));
}

TEST_F(JpgTransform, WithoutAJpegEncoderTheEncodersMessageComesAndThePictureIsReleased) {
  gdiplus::kodierer::liste(QList<gdiplus::ImageCodecInfo>{{{1}, u"image/png"_s}, {{2}, u"image/bmp"_s}});
  const oberflaeche::Meldung box{u"Konnte keinen passenden Encoder ermitteln."_s, u"Encoder Error"_s,
      oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
  meldungen.erwarte(box);
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, 13));
  // The session ends while the box shows: disposing then tells so, which it would not without being tried.
  meldungen.erwarte(box, oberflaeche::Antwort::OK, [] { Fkt_GdiShutdown(); });
  meldungen.erwarte(gdi_Fehler(u"Gdiplus Not Initialized. GDI+ Error:18"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, 13));
}

TEST_F(JpgTransform, AnEmptyEncoderListIsLikeOneWithoutJpeg) {
  gdiplus::kodierer::liste(QList<gdiplus::ImageCodecInfo>{});
  gdiplus::CLSID clsid{};
  EXPECT_FALSE(Fkt_GetEncoderClsid(u"image/jpeg"_s, clsid));
}

TEST_F(JpgTransform, TheEncoderIsFoundWithoutRegardToCase) {
  gdiplus::CLSID clsid{};
  EXPECT_TRUE(Fkt_GetEncoderClsid(u"IMAGE/Jpeg"_s, clsid));
  EXPECT_EQ(clsid, gdiplus::JpegEncoder);
  EXPECT_FALSE(Fkt_GetEncoderClsid(u"image/png"_s, clsid));
  EXPECT_EQ(clsid, gdiplus::JpegEncoder) << "not touched";
  gdiplus::kodierer::liste(
      QList<gdiplus::ImageCodecInfo>{{{1}, u"image/png"_s}, {{2}, u"image/JPEG"_s}, {{3}, u"image/jpeg"_s}});
  EXPECT_TRUE(Fkt_GetEncoderClsid(u"image/jpeg"_s, clsid));
  EXPECT_EQ(clsid, gdiplus::CLSID{2}) << "the first one counts";
}

TEST_F(JpgTransform, TheSizeOfTheEncoderListIncludesTheTextsBehindTheRecords) {
  std::uint32_t anzahl = 0;
  std::uint32_t groesse = 0;
  EXPECT_EQ(gdiplus::GdipGetImageEncodersSize(anzahl, groesse), gdiplus::Ok);
  EXPECT_EQ(anzahl, 1U);
  EXPECT_EQ(groesse, 76U + 22U);
  std::vector<gdiplus::ImageCodecInfo> saetze(1);
  EXPECT_EQ(gdiplus::GdipGetImageEncoders(anzahl, groesse - 1, saetze), gdiplus::InvalidParameter);
  EXPECT_EQ(gdiplus::GdipGetImageEncoders(anzahl, groesse, {}), gdiplus::InvalidParameter);
  EXPECT_EQ(gdiplus::GdipGetImageEncoders(anzahl, groesse, saetze), gdiplus::Ok);
  Fkt_GdiShutdown();
  EXPECT_EQ(gdiplus::GdipGetImageEncodersSize(anzahl, groesse), gdiplus::GdiplusNotInitialized);
  EXPECT_EQ(groesse, 0U);
}

TEST_F(JpgTransform, AnIdentifierIsReadFromItsText) {
  gdiplus::CLSID clsid{};
  EXPECT_EQ(gdiplus::CLSIDFromString(u"{8D0EB2D1-A58E-4ea8-AA14-108074B7B6F9}"_s, clsid), 0);
  EXPECT_EQ(clsid, gdiplus::EncoderTransformation);
  for (const QString& falsch : {u""_s, u"8D0EB2D1-A58E-4EA8-AA14-108074B7B6F9"_s,
           u"{8D0EB2D1-A58E-4EA8-AA14-108074B7B6FG}"_s, u"{8D0EB2D1}"_s}) {
    EXPECT_NE(gdiplus::CLSIDFromString(falsch, clsid), 0);
    EXPECT_EQ(clsid, gdiplus::CLSID{});
  }
}

TEST_F(JpgTransform, SourceAndTargetMustBeTwoFiles) {
  meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, quelle, 13));
  EXPECT_TRUE(QFile::link(quelle, ziel));
  meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, 13));
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), jpg);
}

TEST_F(JpgTransform, AMissingFolderOfTheTargetReports10AndAFolderAsTarget12) {
  meldungen.erwarte(gdi_Fehler(u"File Not Found. GDI+ Error:10"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ordner.pfad(u"fehlt/a.jpg"_s), 13));
  meldungen.erwarte(gdi_Fehler(u"Access Denied. GDI+ Error:12"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ordner.pfad(), 13));
}

TEST_F(JpgTransform, AWriteProtectedTargetStaysAndReports12) {
  ordner.schreibe(u"_a.jpg"_s, "meins");
  ASSERT_TRUE(QFile::setPermissions(ziel, QFileDevice::ReadOwner));
  meldungen.erwarte(gdi_Fehler(u"Access Denied. GDI+ Error:12"_s));
  EXPECT_FALSE(Fkt_JpgTransform(quelle, ziel, 13));
  EXPECT_EQ(ordner.lies(u"_a.jpg"_s), "meins");
}

TEST_F(JpgTransform, AStreamThatCannotBeReadToItsEndReports1AndWritesNothing) {
  QByteArray kaputt = jpg;
  const qsizetype rahmen = kaputt.indexOf("\xff\xc0");
  kaputt.insert(kaputt.size() - 2, kaputt.sliced(rahmen, 19));  // a second frame behind the scan
  meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s));
  EXPECT_FALSE(Fkt_JpgTransform(ordner.schreibe(u"b.jpg"_s, kaputt), ziel, 13));
  EXPECT_FALSE(ordner.vorhanden(u"_a.jpg"_s));
}

TEST_F(JpgTransform, ATruncatedPictureIsTurned) {
  EXPECT_TRUE(Fkt_JpgTransform(ordner.schreibe(u"b.jpg"_s, jpg.first(jpg.size() - 40)), ziel, 13));
  EXPECT_EQ(QImage(ziel).size(), QSize(48, 64));
}

TEST_F(JpgTransform, TheCallWithoutAWindowHasItsOwnSession) {
  Fkt_GdiShutdown();
  EXPECT_EQ(bilddrehung::drehe(quelle, ziel, 14), gdiplus::Ok);
  EXPECT_EQ(ecken(ordner.lies(u"_a.jpg"_s)), u"sbgr"_s);
  EXPECT_EQ(bilddrehung::drehe(ordner.pfad(u"fehlt"_s), ziel, 14), gdiplus::FileNotFound);
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
}

}  // namespace
