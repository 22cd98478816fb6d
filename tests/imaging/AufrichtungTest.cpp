// Pictures that stand upright by their mark: the pixels, the mark, the thumbnail, and what is not touched.
#include <sys/stat.h>

#include <QDir>
#include <QFileInfo>
#include <QTransform>
#include <QtEndian>
#include <random>

#include "imaging/Dateiaufrichtung.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Sitzungsdauer.h"
#include "platform/gdiplus/jpeg/Exifmarke.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using aufrichtung::Befund;
using exifschreiber::Bytefolge;
using handyfoto::foto;
using handyfoto::gelesen;

namespace {

struct Fall {
  int marke = 1;
  Bytefolge folge = Bytefolge::Klein;
  QSize groesse;
};

void PrintTo(const Fall& fall, std::ostream* os) {
  *os << "mark " << fall.marke << (fall.folge == Bytefolge::Klein ? " II " : " MM ") << fall.groesse.width() << 'x'
      << fall.groesse.height();
}

QList<Fall> faelle() {
  QList<Fall> alle;
  // Whole blocks, and partial ones at one side and at both.
  for (const QSize groesse : {QSize(64, 48), QSize(61, 48), QSize(64, 45), QSize(61, 45), QSize(23, 17)})
    for (const Bytefolge folge : {Bytefolge::Klein, Bytefolge::Gross})
      for (int marke = 2; marke <= 8; ++marke) alle.append({marke, folge, groesse});
  return alle;
}

class AufrichtungJeMarke : public ::testing::TestWithParam<Fall> {};

/// An Exif block that a phone might write: directory, mark, a second directory with a thumbnail.
QByteArray mit_Vorschau(const QByteArray& jpeg, int marke, const QByteArray& vorschau, int fuellung = 0) {
  const auto u16 = [](quint16 zahl) {
    QByteArray bytes(2, '\0');
    qToBigEndian(zahl, bytes.data());
    return bytes;
  };
  const auto u32 = [](quint32 zahl) {
    QByteArray bytes(4, '\0');
    qToBigEndian(zahl, bytes.data());
    return bytes;
  };
  const auto feld = [&](quint16 tag, quint16 typ, quint32 wert) {
    return u16(tag) + u16(typ) + u32(1) + (typ == 3 ? u16(static_cast<quint16>(wert)) + u16(0) : u32(wert));
  };
  const QByteArray erstes = u16(1) + feld(274, 3, static_cast<quint32>(marke)) + u32(8 + 18);
  const quint32 ort = 8 + 18 + 2 + 3 * 12 + 4;
  const QByteArray zweites = u16(3) + feld(274, 3, static_cast<quint32>(marke)) + feld(513, 4, ort) +
      feld(514, 4, static_cast<quint32>(vorschau.size())) + u32(0);
  const QByteArray inhalt =
      QByteArray("Exif\0\0", 6) + "MM" + u16(42) + u32(8) + erstes + zweites + vorschau + QByteArray(fuellung, 'x');
  return jpeg.left(2) + "\xFF\xE1" + u16(static_cast<quint16>(inhalt.size() + 2)) + inhalt + jpeg.mid(2);
}

/// The thumbnail of such a block, found the way a viewer does; nothing where the block names none.
QByteArray vorschau_von(const QByteArray& jpeg) {
  const qsizetype tiff = jpeg.indexOf(QByteArray("Exif\0\0", 6)) + 6;
  const auto u32 = [&](qsizetype ort) { return qFromBigEndian<quint32>(jpeg.constData() + tiff + ort); };
  const quint32 zweites = u32(8 + 14);
  if (zweites == 0) return {};
  EXPECT_EQ(qFromBigEndian<quint16>(jpeg.constData() + tiff + zweites + 10), 1) << "the thumbnail's own mark";
  return jpeg.mid(tiff + u32(zweites + 2 + 12 + 8), u32(zweites + 2 + 24 + 8));
}

QByteArray gross_und_bunt() {
  std::mt19937 zufall(7);
  QImage bild(160, 120, QImage::Format_RGB32);
  for (int y = 0; y < 120; ++y)
    for (int x = 0; x < 160; ++x) bild.setPixel(x, y, static_cast<QRgb>(zufall()) | 0xff000000U);
  return handyfoto::jpeg(bild, 100);
}

}  // namespace

TEST_P(AufrichtungJeMarke, ThePixelsAreTurnedAndTheMarkSaysUpright) {
  const Fall& fall = GetParam();
  const QByteArray quelle = foto(fall.groesse, fall.marke, fall.folge);
  const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(quelle);
  ASSERT_EQ(ergebnis.befund, Befund::Gedreht);
  EXPECT_EQ(exifmarke::lies(ergebnis.bytes), 1);
  EXPECT_TRUE(handyfoto::steht_aufrecht(ergebnis.bytes, quelle));
  EXPECT_EQ(exifmarke::notierte_Groesse(ergebnis.bytes), gelesen(ergebnis.bytes, false).size());
  EXPECT_EQ(aufrichtung::richte_auf(ergebnis.bytes).befund, Befund::Unveraendert) << "once is enough";
}

INSTANTIATE_TEST_SUITE_P(Alle, AufrichtungJeMarke, ::testing::ValuesIn(faelle()));

TEST(Aufrichtung, WholeBlocksLoseNothing) {
  for (int marke = 2; marke <= 8; ++marke) {
    const QByteArray quelle = foto({64, 48}, marke);
    const auto drehung = exifmarke::drehung(marke);
    ASSERT_TRUE(drehung);
    // Turned back: the quarter turns are each other's way back, all others their own.
    const auto zurueck = exifmarke::drehung(marke == 6 ? 8 : marke == 8 ? 6 : marke);
    QByteArray wieder;
    ASSERT_EQ(jpegdrehung::drehe(aufrichtung::richte_auf(quelle).bytes, *zurueck, wieder), 0);
    EXPECT_EQ(gelesen(wieder, false), gelesen(quelle, false)) << marke;
  }
}

TEST(Aufrichtung, UprightPicturesAndThoseWithoutAMarkStayAsTheyAre) {
  const QByteArray ohne = handyfoto::jpeg(handyfoto::motiv({64, 48}));
  QByteArray png;
  QBuffer puffer(&png);
  ASSERT_TRUE(handyfoto::motiv({64, 48}).save(&puffer, "png"));
  for (const QByteArray& bytes :
      {ohne, foto({64, 48}, 1), foto({64, 48}, 9), foto({64, 48}, 0), png, QByteArray("x"), QByteArray()}) {
    const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(bytes);
    EXPECT_EQ(ergebnis.befund, Befund::Unveraendert);
    EXPECT_TRUE(ergebnis.bytes.isEmpty());
  }
}

TEST(Aufrichtung, AllOtherSegmentsStay) {
  const QByteArray quelle = foto({64, 48}, 6);
  const QByteArray neu = aufrichtung::richte_auf(quelle).bytes;
  EXPECT_TRUE(neu.contains("Fernsprech"));
  EXPECT_TRUE(neu.contains("2024:05:17 09:30:00"));
}

TEST(Aufrichtung, TheThumbnailIsTurnedToo) {
  const QByteArray vorschau = handyfoto::jpeg(handyfoto::motiv({32, 24}));
  // With bytes behind it, so that a larger one has to find another place.
  for (const int fuellung : {0, 64}) {
    const QByteArray quelle = mit_Vorschau(handyfoto::jpeg(handyfoto::motiv({64, 48})), 6, vorschau, fuellung);
    const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(quelle);
    ASSERT_EQ(ergebnis.befund, Befund::Gedreht);
    const QImage soll = gelesen(vorschau, false).transformed(QTransform().rotate(90));
    EXPECT_LE(handyfoto::abstand(gelesen(vorschau_von(ergebnis.bytes), false), soll), 12);
    EXPECT_TRUE(handyfoto::steht_aufrecht(ergebnis.bytes, quelle));
  }
}

TEST(Aufrichtung, AThumbnailThatCanNotBeTurnedGoes) {
  const QByteArray bild = handyfoto::jpeg(handyfoto::motiv({64, 48}));
  const QByteArray kein_Jpeg(600, 'p');
  EXPECT_EQ(vorschau_von(aufrichtung::richte_auf(mit_Vorschau(bild, 6, kein_Jpeg)).bytes), QByteArray());
  // So large that the segment has no room for it once it is coded anew.
  const QByteArray volle = gross_und_bunt();
  const auto fuellung = static_cast<int>(65533 - 200 - volle.size());
  ASSERT_GT(fuellung, 0);
  QByteArray gedreht;
  ASSERT_EQ(jpegdrehung::drehe(volle, *exifmarke::drehung(6), gedreht), 0);
  const QByteArray neu = aufrichtung::richte_auf(mit_Vorschau(bild, 6, volle, fuellung)).bytes;
  const QByteArray darin = vorschau_von(neu);
  EXPECT_TRUE(darin.isEmpty() || gelesen(darin, false).size() == QSize(120, 160)) << "never one on its side";
  EXPECT_EQ(darin.isEmpty(), gedreht.size() > volle.size());
}

TEST(Aufrichtung, TheMarkInXmpFollows) {
  const QByteArray bild = foto({64, 48}, 6);
  for (const QByteArray& worte : {QByteArray("<x tiff:Orientation=\"6\"/>"), QByteArray("<x tiff:Orientation='6'/>"),
           QByteArray("<tiff:Orientation>6</tiff:Orientation>")}) {
    const QByteArray inhalt = QByteArray("http://ns.adobe.com/xap/1.0/\0", 29) + worte;
    QByteArray kopf("\xFF\xE1\0\0", 4);
    qToBigEndian(static_cast<quint16>(inhalt.size() + 2), kopf.data() + 2);
    const QByteArray neu = aufrichtung::richte_auf(bild.left(2) + kopf + inhalt + bild.mid(2)).bytes;
    EXPECT_TRUE(neu.contains(QByteArray(worte).replace('6', '1'))) << worte.toStdString();
  }
}

TEST(Aufrichtung, WhatTheUserHasTurnedHimselfIsNotTurnedOnceMore) {
  const gdiplus::Sitzungsdauer sitzung;
  const Testordner ordner;
  for (const int dreh : {13, 14, 15}) {
    const QString datei = ordner.schreibe(u"a.jpg"_s, foto({64, 48}, 3));
    ASSERT_TRUE(mod_GrafikKonvert::Fkt_Bild_Drehen(datei, dreh));
    const QByteArray bytes = ordner.lies(u"a.jpg"_s);
    EXPECT_EQ(exifmarke::lies(bytes), 3) << "turning leaves the mark";
    const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(bytes, datei);
    EXPECT_EQ(ergebnis.befund, Befund::Nur_Marke);
    EXPECT_EQ(gelesen(ergebnis.bytes, true), gelesen(bytes, false)) << "as he saw it";
    EXPECT_EQ(exifmarke::lies(ergebnis.bytes), 1);
  }
  // Written anew by somebody, it is another picture.
  const QString datei = ordner.schreibe(u"a.jpg"_s, foto({80, 48}, 3));
  EXPECT_EQ(aufrichtung::richte_auf(ordner.lies(u"a.jpg"_s), datei).befund, Befund::Gedreht);
}

TEST(Aufrichtung, AQuarterTurnOfEarlierIsSeenByTheNotedSize) {
  QByteArray gedreht;
  ASSERT_EQ(jpegdrehung::drehe(foto({64, 48}, 6), *exifmarke::drehung(6), gedreht), 0);
  ASSERT_EQ(exifmarke::lies(gedreht), 6);
  const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(gedreht);
  EXPECT_EQ(ergebnis.befund, Befund::Nur_Marke);
  EXPECT_EQ(gelesen(ergebnis.bytes, true), gelesen(gedreht, false));
  EXPECT_EQ(exifmarke::notierte_Groesse(ergebnis.bytes), QSize(48, 64));
}

TEST(Aufrichtung, APictureThatCanNotBeReadIsToldAndLeftAlone) {
  QByteArray kaputt = foto({64, 48}, 6);
  kaputt.truncate(kaputt.indexOf("\xFF\xC0") + 6);
  const Testordner ordner;
  const QString datei = ordner.schreibe(u"a.jpg"_s, kaputt);
  const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_Datei_auf(datei, {});
  EXPECT_EQ(ergebnis.befund, Befund::Gescheitert);
  EXPECT_FALSE(ergebnis.grund.isEmpty());
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), kaputt);
  EXPECT_EQ(aufrichtung::richte_Datei_auf(ordner.pfad(u"fehlt.jpg"_s), {}).befund, Befund::Gescheitert);
}

TEST(Aufrichtung, AFileKeepsItsTimeAndItsRightsAndNothingIsLeftBesideIt) {
  const Testordner ordner;
  const QByteArray quelle = foto({61, 45}, 8);
  const QString datei = ordner.schreibe(u"a.jpg"_s, quelle);
  const QDateTime zeit(QDate(2023, 3, 4), QTime(5, 6, 7));
  {
    QFile offen(datei);
    ASSERT_TRUE(offen.open(QIODevice::ReadWrite));
    ASSERT_TRUE(offen.setFileTime(zeit, QFileDevice::FileModificationTime));
  }
  ASSERT_EQ(::chmod(QFile::encodeName(datei).constData(), 0444), 0);
  EXPECT_EQ(aufrichtung::richte_Datei_auf(datei, {}).befund, Befund::Gedreht);
  EXPECT_TRUE(handyfoto::steht_aufrecht(ordner.lies(u"a.jpg"_s), quelle));
  EXPECT_EQ(QFileInfo(datei).lastModified(), zeit);
  struct stat info {};
  ASSERT_EQ(::stat(QFile::encodeName(datei).constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0444U);
  EXPECT_EQ(QDir(ordner.pfad()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.jpg"_s});
}

TEST(Aufrichtung, NoByteOfABlockLeadsOutOfIt) {
  std::mt19937 zufall(20240517);
  const QByteArray vorschau = handyfoto::jpeg(handyfoto::motiv({16, 16}));
  const QByteArray heil = mit_Vorschau(handyfoto::jpeg(handyfoto::motiv({32, 24})), 6, vorschau);
  const qsizetype block = heil.indexOf("Exif");
  for (int i = 0; i < 3000; ++i) {
    QByteArray bytes = heil;
    for (int n = 0; n < 4; ++n)
      bytes[block + 6 + static_cast<qsizetype>(zufall() % 70)] = static_cast<char>(zufall() % 2 ? 0xff : zufall());
    const aufrichtung::Ergebnis ergebnis = aufrichtung::richte_auf(bytes);
    if (ergebnis.bytes.isEmpty()) continue;
    EXPECT_EQ(exifmarke::lies(ergebnis.bytes), 1);
    EXPECT_FALSE(gelesen(ergebnis.bytes, false).isNull());
  }
}
