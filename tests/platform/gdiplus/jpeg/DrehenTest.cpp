#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDir>
#include <QTransform>

#include "platform/gdiplus/gdiplus.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"
#include "tests/platform/gdiplus/Vorlagen.h"
#include "tests/platform/gdiplus/jpeg/Drehvorlagen.h"

using namespace drehvorlagen;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array Alle{13, 14, 15, 16, 17};

std::int32_t status_des_Drehens(const QByteArray& bytes, int transform, QByteArray& ergebnis) {
  return jpegdrehung::drehe(bytes, *Drehung::von(transform), ergebnis);
}

QByteArray drehe(const QByteArray& bytes, int transform) {
  QByteArray ergebnis;
  EXPECT_EQ(status_des_Drehens(bytes, transform, ergebnis), gdiplus::Ok);
  return ergebnis;
}

QImage gedreht(const QImage& bild, int transform) {
  switch (transform) {
    case 13:
      return bild.transformed(QTransform().rotate(90));
    case 14:
      return bild.mirrored(true, true);
    case 15:
      return bild.transformed(QTransform().rotate(270));
    case 16:
      return bild.mirrored(true, false);
    default:
      return bild.mirrored(false, true);
  }
}

/// Every component that can be moved as a whole is; size, sampling, tables, colours and markers are right in any case.
/// Gives whether nothing had to be coded again.
bool pruefe(const QByteArray& alt, const QByteArray& neu, int transform) {
  const Inhalt a = lies(alt);
  const Inhalt b = lies(neu);
  EXPECT_EQ(b.groesse, transform == 13 || transform == 15 ? a.groesse.transposed() : a.groesse);
  EXPECT_EQ(b.raum, a.raum);
  EXPECT_EQ(b.progressiv, a.progressiv);
  EXPECT_FALSE(b.arithmetisch);
  EXPECT_EQ(b.neustart, a.neustart);
  EXPECT_TRUE(b.marken == a.marken) << "markers";
  EXPECT_EQ(neu.sliced(b.ende), alt.sliced(a.ende)) << "bytes behind the end";
  EXPECT_EQ(b.komponenten.size(), a.komponenten.size());
  bool ganz = true;
  for (std::size_t i = 0; i < std::min(a.komponenten.size(), b.komponenten.size()); ++i) {
    Komponente soll = gedreht(a.komponenten[i], transform);
    const bool dieses = bleibt_ganz(a, a.komponenten[i], transform);
    ganz = ganz && dieses;
    if (!dieses) soll.bloecke = b.komponenten[i].bloecke;
    EXPECT_TRUE(b.komponenten[i] == soll) << "component " << i << (dieses ? ", moved" : ", coded again");
  }
  return ganz;
}

/// What comes out of the turn looks as the source does, turned.
double aehnlichkeit(const QByteArray& alt, const QByteArray& neu, int transform) {
  return vorlagen::psnr(vorlagen::libjpeg_Massstab(neu, 8), gedreht(vorlagen::libjpeg_Massstab(alt, 8), transform));
}

struct Fall {
  const char* name;
  Machart art;
  QSize einheit;  ///< sides that are multiples of these are whole
};

const std::vector<Fall>& faelle() {
  const auto ycc = [](Abtastung y, Abtastung cb, Abtastung cr) {
    return Machart{.raum = JCS_YCbCr, .abtastung = {y, cb, cr}};
  };
  static const std::vector<Fall> Faelle{
      {"4:4:4", ycc({1, 1}, {1, 1}, {1, 1}), {8, 8}},
      {"4:2:0", ycc({2, 2}, {1, 1}, {1, 1}), {16, 16}},
      {"4:2:2", ycc({2, 1}, {1, 1}, {1, 1}), {16, 8}},
      {"4:4:0", ycc({1, 2}, {1, 1}, {1, 1}), {8, 16}},
      {"4:1:1", ycc({4, 1}, {1, 1}, {1, 1}), {32, 8}},
      {"1x4", ycc({1, 4}, {1, 1}, {1, 1}), {8, 32}},
      {"3x1", ycc({3, 1}, {1, 1}, {1, 1}), {24, 8}},
      {"4x2", ycc({4, 2}, {1, 1}, {1, 1}), {32, 16}},
      {"2x2 1x2 1x2", ycc({2, 2}, {1, 2}, {1, 2}), {16, 8}},
      {"2x2 2x1 2x1", ycc({2, 2}, {2, 1}, {2, 1}), {8, 16}},
      {"chroma finer than luma", ycc({1, 1}, {2, 2}, {2, 2}), {16, 16}},
      {"3x2 2x1 1x1", ycc({3, 2}, {2, 1}, {1, 1}), {24, 16}},
      {"4x4 2x2 1x1, too much for one MCU", ycc({4, 4}, {2, 2}, {1, 1}), {32, 32}},
      {"grey", {.raum = JCS_GRAYSCALE, .abtastung = {{1, 1}}}, {8, 8}},
      {"grey 2x2", {.raum = JCS_GRAYSCALE, .abtastung = {{2, 2}}}, {8, 8}},
      {"RGB", {.raum = JCS_RGB, .abtastung = {{1, 1}, {1, 1}, {1, 1}}}, {8, 8}},
      {"CMYK", {.raum = JCS_CMYK, .abtastung = {{1, 1}, {1, 1}, {1, 1}, {1, 1}}}, {8, 8}},
      {"CMYK 2x2", {.raum = JCS_CMYK, .abtastung = {{2, 2}, {1, 1}, {1, 1}, {2, 2}}}, {16, 16}},
      {"YCCK 2x2", {.raum = JCS_YCCK, .abtastung = {{2, 2}, {1, 1}, {1, 1}, {2, 2}}}, {16, 16}},
      {"progressive", {.progressiv = true}, {16, 16}},
      {"progressive grey", {.raum = JCS_GRAYSCALE, .abtastung = {{1, 1}}, .progressiv = true}, {8, 8}},
      {"progressive YCCK", {.raum = JCS_YCCK, .abtastung = {{1, 1}, {1, 1}, {1, 1}, {1, 1}}, .progressiv = true},
          {8, 8}},
      {"arithmetic", {.arithmetisch = true}, {16, 16}},
      {"arithmetic progressive", {.progressiv = true, .arithmetisch = true}, {16, 16}},
      {"tables of its own", {.optimiert = true}, {16, 16}},
      {"restart markers", {.neustart = 3}, {16, 16}},
      {"restart markers, progressive", {.progressiv = true, .neustart = 5}, {16, 16}},
      {"tables of 16 bits", {.qualitaet = 3}, {16, 16}},
  };
  return Faelle;
}

TEST(Drehen, WholeSidesLoseNothingInAnySamplingAndCoding) {
  for (const Fall& fall : faelle()) {
    const QByteArray alt = jpeg({fall.einheit.width() * 5, fall.einheit.height() * 3}, fall.art);
    for (const int transform : Alle) {
      SCOPED_TRACE(testing::Message() << fall.name << ", " << transform);
      EXPECT_TRUE(pruefe(alt, drehe(alt, transform), transform));
    }
  }
}

TEST(Drehen, FourQuarterTurnsGiveTheFirstCoefficients) {
  for (const Fall& fall : faelle()) {
    const QByteArray alt = jpeg({fall.einheit.width() * 3, fall.einheit.height() * 4}, fall.art);
    for (const int transform : {13, 15}) {
      QByteArray neu = alt;
      for (int i = 0; i < 4; ++i) neu = drehe(neu, transform);
      EXPECT_TRUE(lies(neu).komponenten == lies(alt).komponenten) << fall.name;
    }
    for (const int transform : {14, 16, 17})
      EXPECT_TRUE(lies(drehe(drehe(alt, transform), transform)).komponenten == lies(alt).komponenten) << fall.name;
  }
}

TEST(Drehen, OnlyTheSidesThatComeToTheFrontCount) {
  const QByteArray breit = jpeg({48, 41});  // the width is whole, the height is not
  const QByteArray hoch = jpeg({41, 48});
  for (const auto& [transform, ganz_breit, ganz_hoch] : {std::tuple{13, false, true}, std::tuple{14, false, false},
           std::tuple{15, true, false}, std::tuple{16, true, false}, std::tuple{17, false, true}}) {
    EXPECT_EQ(pruefe(breit, drehe(breit, transform), transform), ganz_breit) << transform;
    EXPECT_EQ(pruefe(hoch, drehe(hoch, transform), transform), ganz_hoch) << transform;
  }
}

TEST(Drehen, OfAHalfMcuTheBrightnessIsMovedAndOnlyTheColourEncodedAnew) {
  const QByteArray alt = jpeg({40, 40});
  for (const int transform : Alle) {
    const QByteArray neu = drehe(alt, transform);
    EXPECT_FALSE(pruefe(alt, neu, transform));
    EXPECT_TRUE(lies(neu).komponenten[0] == gedreht(lies(alt).komponenten[0], transform)) << transform;
  }
}

TEST(Drehen, OddSidesAreEncodedAnewAndNothingIsCutOff) {
  for (const Fall& fall : faelle()) {
    // libjpeg's own decoder needs whole ratios of the sampling factors and three or one components.
    const QString name = QString::fromLatin1(fall.name);
    const bool zeigbar = !name.contains(u"CMYK"_s) && !name.contains(u"YCCK"_s) && !name.startsWith(u"3x2"_s);
    for (const QSize groesse : {QSize(133, 95), QSize(97, 64), QSize(31, 130)}) {
      const QByteArray alt = jpeg(groesse, fall.art);
      for (const int transform : Alle) {
        SCOPED_TRACE(testing::Message() << fall.name << " " << groesse.width() << ", " << transform);
        const QByteArray neu = drehe(alt, transform);
        pruefe(alt, neu, transform);
        if (zeigbar) {
          EXPECT_GT(aehnlichkeit(alt, neu, transform), fall.art.qualitaet < 10 ? 20 : 28);
        }
      }
    }
  }
}

TEST(Drehen, SidesOfOnePixelGoInEveryDirection) {
  for (const QSize groesse : {QSize(1, 1), QSize(1, 40), QSize(40, 1), QSize(1, 16), QSize(7, 1)})
    for (const Fall& fall : faelle()) {
      const QByteArray alt = jpeg(groesse, fall.art);
      for (const int transform : Alle) {
        SCOPED_TRACE(testing::Message() << fall.name << " " << groesse.width() << ", " << transform);
        pruefe(alt, drehe(alt, transform), transform);
      }
    }
}

TEST(Drehen, APhotoEncodedAnewMatchesTheTurnedOneAndHardlyGrows) {
  const QByteArray alt = vorlagen::jpeg(vorlagen::foto({601, 403}));
  for (const int transform : Alle) {
    const QByteArray neu = drehe(alt, transform);
    EXPECT_GT(aehnlichkeit(alt, neu, transform), 38) << transform;
    EXPECT_LT(neu.size(), alt.size() * 11 / 10) << transform;
  }
}

TEST(Drehen, EncodingAnewMakesHuffmanTablesOfItsOwn) {
  const QByteArray alt = jpeg({133, 95});
  const QByteArray neu = drehe(alt, 14);
  const auto tabelle = [](const QByteArray& b) { return b.sliced(b.indexOf("\xff\xc4"), 24); };
  EXPECT_NE(tabelle(neu), tabelle(alt));
  const QByteArray ganz = jpeg({128, 96});
  EXPECT_EQ(tabelle(drehe(ganz, 14)), tabelle(ganz)) << "the standard's tables stay where nothing is coded again";
}

TEST(Drehen, AllMarkersStayByteByByteInTheirOrder) {
  QByteArray icc("ICC_PROFILE\0\1\2", 14);
  icc.append(QByteArray(65533 - 14 - 2, 'p'));
  QByteArray zweites("ICC_PROFILE\0\2\2", 14);
  QList<QByteArray> segmente{segment(0xe1, QByteArray("Exif\0\0II*\0\x08\0\0\0\0\0\0\0\0\0", 20)),
      segment(0xfe, "erster"), segment(0xe2, icc), segment(0xe2, zweites), segment(0xed, "Photoshop 3.0"),
      segment(0xe1, "http://ns.adobe.com/xap/1.0/"), segment(0xfe, {})};
  for (int i = 3; i < 16; ++i) segmente.append(segment(0xe0 + i, QByteArray::number(i)));
  // More of them behind the tables, and an Adobe marker that is not the first.
  QByteArray alt = mit_Marken(jpeg({48, 32}, {.mit_Jfif = false}), segmente, "Hinter dem Ende\xff\xd8\xff\xd9");
  const qsizetype rahmen = alt.indexOf("\xff\xc0");
  alt.insert(rahmen, segment(0xee, QByteArray("Adobe\0\x64\0\0\0\0\1", 12)) + segment(0xfe, "letzter"));
  ASSERT_EQ(lies(alt).marken.size(), segmente.size() + 2);
  for (const int transform : Alle) {
    EXPECT_TRUE(pruefe(alt, drehe(alt, transform), transform)) << transform;
  }
}

TEST(Drehen, WhatTheSourceLacksIsNotAdded) {
  const QByteArray alt = jpeg({48, 32}, {.mit_Jfif = false});
  EXPECT_TRUE(lies(drehe(alt, 13)).marken.isEmpty());
}

TEST(Drehen, ATruncatedPictureIsTurnedWithWhatItHolds) {
  for (const bool progressiv : {false, true}) {
    const QByteArray ganz = jpeg({320, 240}, {.progressiv = progressiv});
    const QByteArray halb = ganz.first(ganz.size() / 2);
    for (const int transform : Alle) pruefe(halb, drehe(halb, transform), transform);
  }
}

TEST(Drehen, AStreamThatBecomesUnreadableInTheMiddleOfThePictureIs1) {
  QByteArray bytes = jpeg({64, 64}, {.progressiv = true});
  // A second frame header behind the first scan.
  const qsizetype scan = bytes.lastIndexOf("\xff\xda");
  const qsizetype rahmen = bytes.indexOf("\xff\xc2");
  bytes.insert(scan, bytes.sliced(rahmen, 19));
  QByteArray ergebnis("vorher");
  EXPECT_EQ(status_des_Drehens(bytes, 13, ergebnis), gdiplus::GenericError);
  EXPECT_EQ(ergebnis, "vorher");
}

TEST(Drehen, AComponentThatNoScanNamesStaysEmpty) {
  const QByteArray ganz = jpeg({64, 64}, {.abtastung = {{4, 4}, {2, 2}, {1, 1}}});
  const QByteArray ohne = ganz.first(ganz.lastIndexOf("\xff\xda")) + "\xff\xd9";
  const Inhalt alt = lies(ohne);
  const Inhalt neu = lies(drehe(ohne, 13));
  ASSERT_EQ(neu.komponenten.size(), 3U);
  for (const std::size_t i : {0U, 1U}) EXPECT_TRUE(neu.komponenten[i] == gedreht(alt.komponenten[i], 13)) << i;
  EXPECT_EQ(neu.komponenten[2].bloecke, std::vector<Block>(4));
  // Nobody looks at the number of its table either.
  QByteArray wirr = ohne;
  wirr[wirr.indexOf("\xff\xc0") + 10 + 8] = static_cast<char>(0xfd);
  EXPECT_TRUE(lies(drehe(wirr, 13)).komponenten == neu.komponenten);
}

TEST(Drehen, MoreScansThanAPictureEverNeedsAre1) {
  const QByteArray bytes = jpeg({64, 64}, {.progressiv = true});
  const qsizetype letzter = bytes.lastIndexOf("\xff\xda");
  const QByteArray scan = bytes.sliced(letzter, bytes.size() - 2 - letzter);
  QByteArray ergebnis;
  EXPECT_EQ(status_des_Drehens(bytes.first(bytes.size() - 2) + scan.repeated(5000) + "\xff\xd9", 13, ergebnis),
      gdiplus::GenericError);
}

TEST(Drehen, ASmallFileWithALargeClaimIsTurnedWithoutMuchMemory) {
  QByteArray bytes = jpeg({16, 16}, {.raum = JCS_GRAYSCALE, .abtastung = {{1, 1}}});
  const qsizetype rahmen = bytes.indexOf("\xff\xc0");
  bytes.replace(rahmen + 5, 4, QByteArray("\x20\x00\x20\x00", 4));  // 8192 x 8192
  const Inhalt inhalt = lies(drehe(bytes, 15));
  EXPECT_EQ(inhalt.groesse, QSize(8192, 8192));
}

TEST(Drehen, ImpossibleCoefficientsAreLimitedToPossibleOnes) {
  for (const int transform : Alle) {
    std::array<JCOEF, DCTSIZE2> block{};
    std::array<JCOEF, DCTSIZE2> ziel{};
    block[0] = -32768;
    block[1] = 32767;
    block[8] = -1024;
    block[9] = 1023;
    block[63] = -1023;
    blockdrehung::drehe(block.data(), ziel.data(), *Drehung::von(transform));
    EXPECT_EQ(ziel[0], -1024);
    EXPECT_EQ(std::abs(ziel[1]), 1023);
    EXPECT_EQ(std::abs(ziel[8]), 1023);
    EXPECT_EQ(std::abs(ziel[9]), 1023);
    EXPECT_EQ(std::abs(ziel[63]), 1023);
  }
}

TEST(Drehen, OnlyTheFiveNumbersAreTransformations) {
  for (int wert = -2; wert < 30; ++wert) EXPECT_EQ(Drehung::von(wert).has_value(), wert >= 13 && wert <= 17) << wert;
}

TEST(Drehen, EachKindIsFoundByItsNumberAndByItsName) {
  const QStringView namen[] = {u"JpgTransformRotate90", u"JpgTransformRotate180", u"JpgTransformRotate270",
      u"JpgTransformFlipHorizontal", u"JpgTransformFlipVertical"};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(Drehung::von(13 + i)->name, namen[i]);
    EXPECT_EQ(Drehung::mit_Namen(namen[i])->art, 13 + i);
  }
  for (const QStringView falsch : {u"", u"JpgTransformRotate", u"jpgtransformrotate90"})
    EXPECT_FALSE(Drehung::mit_Namen(falsch));
}

Abtastung beliebige_Abtastung() {
  return {*rc::gen::inRange(1, 5), *rc::gen::inRange(1, 5)};
}

RC_GTEST_PROP(DrehenBeliebig, EverySizeAndSamplingKeepsWhatCanBeMoved, ()) {
  const Machart art{.raum = *rc::gen::element(JCS_YCbCr, JCS_RGB),
      .abtastung = {beliebige_Abtastung(), beliebige_Abtastung(), beliebige_Abtastung()},
      .optimiert = *rc::gen::arbitrary<bool>(),
      .neustart = *rc::gen::inRange(0U, 9U),
      .qualitaet = *rc::gen::inRange(5, 101)};
  const QSize groesse(*rc::gen::inRange(1, 150), *rc::gen::inRange(1, 150));
  const QByteArray alt = jpeg(groesse, art);
  const int transform = *rc::gen::elementOf(std::vector<int>(Alle.begin(), Alle.end()));
  const QByteArray neu = drehe(alt, transform);
  const bool ganz = pruefe(alt, neu, transform);
  RC_ASSERT(!testing::Test::HasFailure());
  const int zurueck = transform == 13 ? 15 : transform == 15 ? 13 : transform;
  const QByteArray wieder = drehe(neu, zurueck);
  pruefe(neu, wieder, zurueck);
  RC_ASSERT(!testing::Test::HasFailure());
  RC_ASSERT(!ganz || lies(wieder).komponenten == lies(alt).komponenten);
}

/// All JPEGs among the outside pictures that have a sound header.
TEST(DrehenVorlagen, EveryIntactSampleKeepsCoefficientsAndMarkers) {
  BRAUCHT_TESTDATEN();
  std::int32_t marke = 0;
  gdiplus::GdiplusStartup(marke, 1);
  int geprueft = 0;
  int verlustfrei = 0;
  for (const QString& ordner : {u"bilder/kameras"_s, u"bilder/sonderfaelle"_s, u"bilder/formate"_s}) {
    const QDir verzeichnis(testdaten(ordner));
    for (const QString& name : verzeichnis.entryList(QDir::Files)) {
      gdiplus::Image image;
      if (gdiplus::GdipLoadImageFromFile(verzeichnis.filePath(name), image) != gdiplus::Ok) continue;
      if (gdiplus::format_von(image) != Bildformat::Jpeg) continue;
      QFile datei(verzeichnis.filePath(name));
      ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
      QByteArray alt = datei.readAll();
      if (name.contains(u"claims"_s)) continue;  // would only take long
      trage_Hoehe_ein(alt);                      // libjpeg by itself can't read a height behind the scan
      const bool lesbar = ist_lesbar(alt);
      for (const int transform : Alle) {
        SCOPED_TRACE(testing::Message() << name.toStdString() << ", " << transform);
        QByteArray neu;
        const std::int32_t status = gdiplus::GdipSaveImageToStream(image, neu, gdiplus::JpegEncoder,
            {1, {gdiplus::EncoderTransformation, 1, gdiplus::EncoderParameterValueTypeLong, transform}});
        ASSERT_EQ(status, lesbar ? gdiplus::Ok : gdiplus::GenericError);
        if (!lesbar) continue;
        verlustfrei += pruefe(alt, neu, transform) ? 1 : 0;
        ++geprueft;
      }
    }
  }
  gdiplus::GdiplusShutdown(marke);
  EXPECT_GT(geprueft, 350);
  EXPECT_GT(verlustfrei, 120);
}

}  // namespace
