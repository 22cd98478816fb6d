#include <gtest/gtest.h>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

// The whole table of properties, written out once more.

namespace {

struct Soll {
  std::int32_t zeile;
  bool zeigen;
  std::int32_t tag;
  QStringView name;
  QStringView beschriftung;
};

constexpr Soll Tabelle[]{
    {0, true, 306, u"DateTime", u"Datum/Zeit"},
    {1, true, 270, u"ImageDescription", u"Beschreibung"},
    {2, true, 271, u"Make", u"Hersteller"},
    {3, true, 272, u"Model", u"Modell"},
    {4, true, 274, u"Orientation", u"Bildlage"},
    {5, true, 282, u"XResolution", u"Hor.Auflösung"},
    {6, true, 283, u"YResolution", u"Vert.Auflösung"},
    {7, false, 296, u"ResolutionUnit", u"Auflösung"},
    {8, true, 305, u"Software", u"Software"},
    {9, true, 318, u"WhitePoint", u"Weisspunkt"},
    {10, true, 319, u"PrimaryChromaticities", u"FarbTempWerte"},
    {11, true, 529, u"YCbCrCoefficients", u"YCbCrCoefficients"},
    {12, true, 531, u"YCbCrPositioning", u"YCbCrPositioning"},
    {13, true, 532, u"ReferenceBlackWhite", u"ReferenceBlackWhite"},
    {14, true, 33432, u"Copyright", u"Copyright"},
    {15, true, 34665, u"ExifOffset", u"ExifOffset"},
    {16, true, 33434, u"ExposureTime", u"Belichtungszeit"},
    {17, true, 33437, u"FNumber", u"Blende"},
    {18, true, 34850, u"ExposureProgram", u"Belichtungsprog."},
    {19, true, 34855, u"ISOSpeedRatings", u"Lichtempfindlichkeit"},
    {20, true, 36864, u"ExifVersion", u"ExifVersion"},
    {21, false, 36867, u"DateTimeOriginal", u"DateTimeOriginal"},
    {22, false, 36868, u"DateTimeDigitized", u"DateTimeDigitized"},
    {23, true, 37121, u"ComponentsConfiguration", u"ComponentsConfiguration"},
    {24, true, 37122, u"CompressedBitsPerPixel", u"CompressedBitsPerPixel"},
    {25, true, 37377, u"ShutterSpeedValue", u"ShutterSpeedValue"},
    {26, true, 37378, u"ApertureValue", u"ApertureValue"},
    {27, true, 37379, u"BrightnessValue", u"BrightnessValue"},
    {28, true, 37380, u"ExposureBiasValue", u"ExposureBiasValue"},
    {29, true, 37381, u"MaxApertureValue", u"MaxApertureValue"},
    {30, true, 37382, u"SubjectDistance", u"SubjectDistance"},
    {31, true, 37383, u"MeteringMode", u"LichtMessMode"},
    {32, true, 37384, u"LightSource", u"Beleuchtungsart"},
    {33, true, 37385, u"Flash", u"Blitz"},
    {34, true, 37386, u"FocalLength", u"FocalLength"},
    {35, true, 37500, u"MakerNote", u"MakerNote"},
    {36, true, 37510, u"UserComment", u"UserComment"},
    {37, true, 37520, u"SubsecTime", u"SubsecTime"},
    {38, true, 37521, u"SubsecTimeOriginal", u"SubsecTimeOriginal"},
    {39, true, 37522, u"SubsecTimeDigitized", u"SubsecTimeDigitized"},
    {40, true, 40960, u"FlashPixVersion", u"FlashPixVersion"},
    {41, true, 40961, u"ColorSpace", u"ColorSpace"},
    {42, true, 40962, u"ExifImageWidth", u"ExifImageWidth"},
    {43, true, 40963, u"ExifImageHeight", u"ExifImageHeight"},
    {44, true, 40964, u"RelatedSoundFile", u"RelatedSoundFile"},
    {45, true, 40965, u"ExifInteroperabilityOffset", u"ExifInteroperabilityOffset"},
    {46, true, 41486, u"FocalPlaneXResolution", u"FocalPlaneXResolution"},
    {47, true, 41487, u"FocalPlaneYResolution", u"FocalPlaneYResolution"},
    {48, true, 41488, u"FocalPlaneResolutionUnit", u"FocalPlaneResolutionUnit"},
    {49, true, 41493, u"ExposureIndex", u"ExposureIndex"},
    {50, true, 41495, u"SensingMethod", u"SensingMethod"},
    {51, true, 41728, u"FileSource", u"FileSource"},
    {52, true, 41729, u"SceneType", u"SceneType"},
    {53, true, 41730, u"CFAPattern", u"CFAPattern"},
    {54, true, 1, u"InteroperabilityIndex", u"InteroperabilityIndex"},
    {55, true, 2, u"InteroperabilityVersion", u"InteroperabilityVersion"},
    {56, true, 4096, u"RelatedImageFileFormat", u"RelatedImageFileFormat"},
    {57, true, 4097, u"RelatedImageWidth", u"RelatedImageWidth"},
    {58, true, 4098, u"RelatedImageLength", u"RelatedImageLength"},
    {59, true, 256, u"ImageWidth", u"ImageWidth"},
    {60, true, 257, u"ImageHeight", u"ImageHeight"},
    {61, true, 258, u"BitsPerSample", u"BitsPerSample"},
    {62, true, 259, u"Compression", u"Compression"},
    {63, true, 262, u"PhotometricInterpretation", u"PhotometricInterpretation"},
    {64, true, 273, u"StripOffsets", u"StripOffsets"},
    {65, true, 277, u"SamplePerPixel", u"SamplePerPixel"},
    {66, true, 278, u"RowsPerStrip", u"RowsPerStrip"},
    {67, true, 279, u"StripByteCounts", u"StripByteCounts"},
    {68, false, 282, u"XResolution2", u"XResolution2"},
    {69, false, 283, u"YResolution2", u"YResolution2"},
    {70, true, 284, u"PlanarConfiguration", u"PlanarConfiguration"},
    {71, false, 296, u"ResolutionUnit2", u"ResolutionUnit2"},
    {72, true, 513, u"JPEGInterchangeFormat", u"JPEGInterchangeFormat"},
    {73, true, 514, u"JPEGInterchangeFormatLength", u"JPEGInterchangeFormatLength"},
    {74, true, 529, u"YCbCrCoeffecients", u"YCbCrCoeffecients"},
    {75, true, 530, u"YCbCrSubSampling", u"YCbCrSubSampling"},
    {76, true, 531, u"YCbCrPositioning2", u"YCbCrPositioning2"},
    {77, true, 532, u"ReferenceBlackWhite2", u"ReferenceBlackWhite2"},
    {78, true, 254, u"NewSubfileType", u"NewSubfileType"},
    {79, true, 255, u"SubfileType", u"SubfileType"},
    {80, true, 301, u"TransferFunction", u"TransferFunction"},
    {81, true, 315, u"Artist", u"Artist"},
    {82, true, 317, u"Predictor", u"Predictor"},
    {83, true, 322, u"TileWidth", u"TileWidth"},
    {84, true, 323, u"TileLength", u"TileLength"},
    {85, true, 324, u"TileOffsets", u"TileOffsets"},
    {86, true, 325, u"TileByteCounts", u"TileByteCounts"},
    {87, true, 330, u"SubIFDs", u"SubIFDs"},
    {88, true, 347, u"JPEGTables", u"JPEGTables"},
    {89, true, 33421, u"CFARepeatPatternDim", u"CFARepeatPatternDim"},
    {90, true, 33422, u"CFAPattern2", u"CFAPattern2"},
    {91, true, 33423, u"BatteryLevel", u"BatteryLevel"},
    {92, true, 33723, u"IPTC_NAA", u"IPTC_NAA"},
    {93, true, 34675, u"InterColorProfile", u"InterColorProfile"},
    {94, true, 34852, u"SpectralSensitivity", u"SpectralSensitivity"},
    {95, true, 34853, u"GPSInfo", u"GPSInfo"},
    {96, true, 34856, u"OECF", u"OECF"},
    {97, true, 34857, u"Interlace", u"Interlace"},
    {98, true, 34858, u"TimeZoneOffset", u"TimeZoneOffset"},
    {99, true, 34859, u"SelfTimerMode", u"SelfTimerMode"},
    {100, true, 37387, u"FlashEnergy", u"FlashEnergy"},
    {101, true, 37388, u"SpatialFrequencyResponse", u"SpatialFrequencyResponse"},
    {102, true, 37389, u"Noise", u"Noise"},
    {103, true, 37393, u"ImageNumber", u"ImageNumber"},
    {104, true, 37394, u"SecurityClassification", u"SecurityClassification"},
    {105, true, 37395, u"ImageHistory", u"ImageHistory"},
    {106, true, 37396, u"SubjectLocation", u"SubjectLocation"},
    {107, true, 37397, u"ExposureIndex2", u"ExposureIndex2"},
    {108, true, 37398, u"TIFFEPStandardID", u"TIFFEPStandardID"},
    {109, true, 41483, u"FlashEnergy2", u"FlashEnergy2"},
    {110, true, 41484, u"SpatialFrequencyResponse2", u"SpatialFrequencyResponse2"},
    {111, true, 41492, u"SubjectLocation2", u"SubjectLocation2"},
};

using Spalte = clsExifInfo::Spalte;
using Dimension = XArrayDBObject::Dimension;

const Variant& zelle(const XArrayDBObject& tabelle, std::int32_t zeile, Spalte spalte) {
  return tabelle.Value(zeile, static_cast<std::int32_t>(spalte));
}

Variant t(const char* text) {
  return QString::fromUtf8(text);
}

class ExifTabelle : public testing::Test {
 protected:
  QString lege(const ExifBauer& bauer) { return ordner_.schreibe(u"a.jpg"_s, bauer.jpeg()); }
  /// The text that the table shows in a row.
  QString wert(std::int32_t zeile) {
    const auto tabelle = info_.Get_ExifInfo();
    EXPECT_NE(tabelle, nullptr);
    return tabelle ? CStr(zelle(*tabelle, zeile, Spalte::Wert)) : QString();
  }

  Testordner ordner_;
  clsExifInfo info_;
};

TEST_F(ExifTabelle, HasAllRowsWithTheirNamesNumbersLabelsAndShowFlags) {
  ASSERT_TRUE(info_.Load(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel))));
  const auto tabelle = info_.Get_ExifInfo();
  ASSERT_NE(tabelle, nullptr);
  std::int32_t zeile = 0;
  for (const Soll& soll : Tabelle) {
    SCOPED_TRACE(soll.zeile);
    ASSERT_EQ(soll.zeile, zeile++);
    EXPECT_EQ(zelle(*tabelle, soll.zeile, Spalte::Zeigen), soll.zeigen ? Variant(true) : t(""));
    EXPECT_EQ(zelle(*tabelle, soll.zeile, Spalte::Tag), Variant(soll.tag));
    EXPECT_EQ(zelle(*tabelle, soll.zeile, Spalte::Name), Variant(soll.name.toString()));
    EXPECT_EQ(zelle(*tabelle, soll.zeile, Spalte::Beschriftung), Variant(soll.beschriftung.toString()));
    EXPECT_EQ(zelle(*tabelle, soll.zeile, Spalte::Wert), Variant(CStr(info_.Tag(soll.tag))));
  }
  EXPECT_EQ(zeile, 112);
}

TEST_F(ExifTabelle, HasRows0To150AndColumns0To4OfWhichTheLastRowsAreEmpty) {
  ASSERT_TRUE(info_.Load(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel))));
  const auto tabelle = info_.Get_ExifInfo();
  ASSERT_NE(tabelle, nullptr);
  for (const Dimension d : {Dimension::Zeilen, Dimension::Spalten}) EXPECT_EQ(tabelle->LowerBound(d), 0);
  EXPECT_EQ(tabelle->UpperBound(Dimension::Zeilen), 150);
  EXPECT_EQ(tabelle->UpperBound(Dimension::Spalten), 4);
  for (std::int32_t zeile = 112; zeile <= 150; ++zeile) {
    for (const Spalte s : {Spalte::Zeigen, Spalte::Tag, Spalte::Name})
      EXPECT_EQ(zelle(*tabelle, zeile, s), Variant(Empty{}));
    for (const Spalte s : {Spalte::Beschriftung, Spalte::Wert}) EXPECT_EQ(zelle(*tabelle, zeile, s), t(""));
  }
}

TEST_F(ExifTabelle, ShowsTheValuesAsTheyWereDecoded) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(282, 5, 2, b.bruch(144, 2) + b.bruch(1, 1)).daten(258, 3, 3, "\x08\x01\x08\x02\x08\x03"_ba);
  b.feld(274, 3, 1, b.w16(6)).daten(306, 2, 20, QByteArray("2024:05:17 08:30:00\0", 20)).feld(41728, 1, 1, "\x03");
  b.feld(305, 12, 1, "abcd");
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(wert(5), u"144/2"_s) << "not reduced, and only the first of several";
  EXPECT_EQ(wert(61), u"818"_s) << "the decimal numbers of the bytes, run together";
  EXPECT_EQ(wert(4), u"6"_s);
  EXPECT_EQ(wert(0), QString::fromLatin1("2024:05:17 08:30:00\0", 20)) << "a big-endian text keeps its zero";
  EXPECT_EQ(wert(51), u"03000000"_s);
  EXPECT_EQ(wert(8), QString()) << "format 12 has no value";
}

TEST_F(ExifTabelle, TakesTheValueOfTheFirstDirectoryForBothRowsOfANumber) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().daten(282, 5, 1, b.bruch(72, 1));
  b.verzeichnis().daten(282, 5, 1, b.bruch(180, 1));
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(wert(5), u"72/1"_s);
  EXPECT_EQ(wert(68), u"72/1"_s);
}

TEST_F(ExifTabelle, ShowsWhatOnlyTheThumbnailDirectoryHas) {
  ASSERT_TRUE(info_.Load(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel))));
  EXPECT_EQ(wert(62), u"6"_s) << "Compression";
  EXPECT_EQ(wert(72), u"4000"_s) << "JPEGInterchangeFormat";
}

TEST_F(ExifTabelle, IsBuiltAgainFromTheSameEntries) {
  ASSERT_TRUE(info_.Load(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel))));
  const auto anzahl = info_.Anzahl_Entries();
  const auto erste = info_.Get_ExifInfo();
  const auto zweite = info_.Get_ExifInfo();
  ASSERT_NE(erste, nullptr);
  ASSERT_NE(zweite, nullptr);
  EXPECT_NE(erste, zweite);
  EXPECT_EQ(info_.Anzahl_Entries(), anzahl);
  for (std::int32_t zeile = 0; zeile <= 150; ++zeile)
    for (std::int32_t spalte = 0; spalte <= 4; ++spalte)
      EXPECT_EQ(erste->Value(zeile, spalte), zweite->Value(zeile, spalte)) << zeile << '/' << spalte;
}

TEST_F(ExifTabelle, LoadsTheFileOfThePropertyByItself) {
  info_.picFile(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Motorola)));
  EXPECT_EQ(wert(2), u"Kamerawerke A"_s);
  EXPECT_TRUE(info_.Is_Loaded());
}

TEST_F(ExifTabelle, IsNoneWithoutAListOfEntries) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis();
  ASSERT_TRUE(info_.Load(lege(b))) << "a directory of no entries";
  EXPECT_EQ(info_.Get_ExifInfo(), nullptr);
  clsExifInfo ohne_Exif;
  ASSERT_FALSE(ohne_Exif.Load(ordner_.schreibe(u"b.jpg"_s, "\xFF\xD8\xFF\xD9"_ba)));
  EXPECT_EQ(ohne_Exif.Get_ExifInfo(), nullptr);
  clsExifInfo ohne_Datei;
  ohne_Datei.picFile(ordner_.pfad());
  EXPECT_EQ(ohne_Datei.Get_ExifInfo(), nullptr) << "a folder can't be read";
}

TEST_F(ExifTabelle, OfAnObjectWithoutAFileHasNoValues) {
  const auto tabelle = info_.Get_ExifInfo();
  ASSERT_NE(tabelle, nullptr);
  for (std::int32_t zeile = 0; zeile <= 150; ++zeile) EXPECT_EQ(zelle(*tabelle, zeile, Spalte::Wert), t(""));
  EXPECT_EQ(zelle(*tabelle, 33, Spalte::Beschriftung), t("Blitz"));
}

}  // namespace
