#include <gtest/gtest.h>

#include <QFile>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ExifLaden : public testing::Test {
 protected:
  Ladeergebnis lade_Bytes(const QByteArray& bytes) { return lade(ordner_.schreibe(u"bild.jpg"_s, bytes)); }

  /// A small valid file of one directory with the entry 256.
  static ExifBauer klein(Folge folge = Folge::Intel, std::uint32_t wert = 7) {
    return ExifBauer(folge).verzeichnis().zahl(256, 4, 1, wert);
  }

  Testordner ordner_;
};

void erwarte_kein_Exif(const Ladeergebnis& ergebnis) {
  EXPECT_EQ(ergebnis, Ladeergebnis());
}

TEST_F(ExifLaden, ANewObjectHasNothingLoadedAndItsListWasNeverSized) {
  const clsExifInfo info;
  EXPECT_FALSE(info.Is_Loaded());
  EXPECT_TRUE(info.Entries().empty());
  EXPECT_EQ(info.Anzahl_Entries(), std::nullopt);
}

TEST_F(ExifLaden, WithoutAnyNameLoadIsFalseAndTouchesNoFile) {
  clsExifInfo info;
  EXPECT_FALSE(info.Load(QString()));
  EXPECT_FALSE(info.Is_Loaded());
}

TEST_F(ExifLaden, TheArgumentIsTakenWhereNoNameWasSet) {
  clsExifInfo info;
  EXPECT_TRUE(info.Load(ordner_.schreibe(u"a.jpg"_s, klein().jpeg())));
  EXPECT_TRUE(info.Is_Loaded());
  EXPECT_EQ(info.Anzahl_Entries(), 1);
}

TEST_F(ExifLaden, ANameThatWasSetBeforeWinsOverTheArgument) {
  const QString eines = ordner_.schreibe(u"eines.jpg"_s, klein(Folge::Intel, 1).jpeg());
  const QString anderes = ordner_.schreibe(u"anderes.jpg"_s, klein(Folge::Intel, 2).jpeg());
  clsExifInfo info;
  info.picFile(eines);
  EXPECT_TRUE(info.Load(anderes));
  EXPECT_EQ(info.Entries().at(0).Value, Variant(1));
  EXPECT_TRUE(info.Load(anderes));
  EXPECT_EQ(info.Entries().at(1).Value, Variant(1));
}

TEST_F(ExifLaden, SettingTheNameResetsNothing) {
  clsExifInfo info;
  ASSERT_TRUE(info.Load(ordner_.schreibe(u"a.jpg"_s, klein().jpeg())));
  info.picFile(ordner_.pfad(u"b.jpg"_s));
  EXPECT_TRUE(info.Is_Loaded());
  EXPECT_EQ(info.Anzahl_Entries(), 1);
}

TEST_F(ExifLaden, ASecondLoadAppendsASecondSetOfEntriesBehindTheFirst) {
  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, klein(Folge::Intel, 1).jpeg()));
  ASSERT_TRUE(info.Load({}));
  info.picFile(ordner_.schreibe(u"b.jpg"_s, klein(Folge::Motorola, 2).jpeg()));
  ASSERT_TRUE(info.Load({}));
  ASSERT_EQ(info.Anzahl_Entries(), 2);
  EXPECT_EQ(info.Entries()[0].Value, Variant(1));
  EXPECT_EQ(info.Entries()[1].Value, Variant(2));
}

TEST_F(ExifLaden, AFileWithoutExifAfterOneWithItLeavesTheEntriesAndIsNotLoaded) {
  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, klein().jpeg("davor"_ba)));
  ASSERT_TRUE(info.Load({}));
  info.picFile(ordner_.schreibe(u"b.jpg"_s, "\xFF\xD8 kein Exif \xFF\xD9"_ba));
  EXPECT_FALSE(info.Load({}));
  EXPECT_FALSE(info.Is_Loaded());
  EXPECT_EQ(info.Anzahl_Entries(), 1);
}

TEST_F(ExifLaden, InASecondLoadThePositionsFoundByTheFirstStillHoldWhereNothingReplacesThem) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 0).zeiger();
  b.unterverzeichnis().zahl(2, 4, 1, 0);
  ExifBauer ohne_Zeiger(Folge::Intel);
  ohne_Zeiger.verzeichnis().zahl(3, 4, 1, 0).zahl(4, 4, 1, 0);
  ohne_Zeiger.unterverzeichnis().zahl(5, 4, 1, 0);
  QByteArray ohne_Marke = ohne_Zeiger.jpeg("davor"_ba);
  ohne_Marke.replace("\xFF\xE1"_ba, "\xFF\xE2"_ba);

  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, b.jpeg("davor"_ba)));
  ASSERT_TRUE(info.Load({}));
  info.picFile(ordner_.schreibe(u"b.jpg"_s, ohne_Marke));
  ASSERT_TRUE(info.Load({}));
  ASSERT_EQ(info.Anzahl_Entries(), 6);
  EXPECT_EQ(info.Entries()[5].Tag_Id, 5);
}

TEST_F(ExifLaden, AJfifSegmentInFrontOfApp1DoesNotMatter) {
  const QByteArray jfif("\xFF\xE0\x00\x10JFIF\0\1\1\0\0\1\0\1\0\0", 18);
  const Ladeergebnis ergebnis = lade_Bytes(klein().jpeg(jfif));
  EXPECT_TRUE(ergebnis.load);
  ASSERT_EQ(ergebnis.entries.size(), 1U);
  EXPECT_EQ(ergebnis.entries[0].Value, Variant(7));
}

TEST_F(ExifLaden, AMarkerPairInImageDataWithoutExifBehindItIsNoExif) {
  erwarte_kein_Exif(lade_Bytes("\xFF\xD8 Bilddaten \xFF\xE1 weitere Bilddaten"_ba));
}

TEST_F(ExifLaden, AMarkerPairInImageDataWithExifFourBytesBehindItIsRead) {
  const Ladeergebnis ergebnis = lade_Bytes("\xFF\xD8\xFF\xDA Bilddaten"_ba + ExifBauer::segment(klein().tiff()));
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.entries.size(), 1U);
}

TEST_F(ExifLaden, AnXmpSegmentInFrontOfTheExifSegmentHidesIt) {
  const QByteArray xmp("\xFF\xE1\x00\x20http://ns.adobe.com/xap/1.0/\0", 33);
  erwarte_kein_Exif(lade_Bytes(klein().jpeg(xmp)));
}

TEST_F(ExifLaden, OneRightByteOfTheFirstTwoIsEnough) {
  const QByteArray rest = klein().jpeg().mid(2);
  EXPECT_TRUE(lade_Bytes(QByteArray("\xFF\0", 2) + rest).load);
  EXPECT_TRUE(lade_Bytes(QByteArray("\0\xD8", 2) + rest).load);
  erwarte_kein_Exif(lade_Bytes(QByteArray("\0\0", 2) + rest));
}

TEST_F(ExifLaden, TheMarkerSearchBeginsAtTheThirdByte) {
  erwarte_kein_Exif(lade_Bytes("\xFF"_ba + ExifBauer::segment(klein().tiff())));
  EXPECT_TRUE(lade_Bytes("\xFF\xFF"_ba + ExifBauer::segment(klein().tiff())).load);
}

TEST_F(ExifLaden, AFileWithoutAMarkerWhoseBytes4To7SpellExifIsRead) {
  const QByteArray block = ExifBauer::segment(klein().tiff()).mid(2);
  const Ladeergebnis ergebnis = lade_Bytes("\xFF\xD8"_ba + block);
  EXPECT_TRUE(ergebnis.load);
  ASSERT_EQ(ergebnis.entries.size(), 1U);
  EXPECT_EQ(ergebnis.entries[0].Tag_Id, 256);
}

TEST_F(ExifLaden, AnEmptyFileIsNoExif) {
  erwarte_kein_Exif(lade_Bytes({}));
}

TEST_F(ExifLaden, FilesTooShortForTheCheckAreNoExif) {
  for (const QByteArray& bytes : {"\xFF"_ba, "\xFF\xD8"_ba, "\xFF\xD8\xFF"_ba, "\xFF\xD8\xFF\xE1"_ba,
           "\xFF\xD8\xFF\xE1\x20\x20"_ba, "\xFF\xD8\xFF\xE1\x20\x20\x45xi"_ba})
    erwarte_kein_Exif(lade_Bytes(bytes));
}

TEST_F(ExifLaden, APathThatDoesNotExistIsCreatedAsAnEmptyFileAndIsNoExif) {
  erwarte_kein_Exif(lade(ordner_.pfad(u"neu.jpg"_s)));
  ASSERT_TRUE(ordner_.vorhanden(u"neu.jpg"_s));
  EXPECT_EQ(ordner_.lies(u"neu.jpg"_s), QByteArray());
}

TEST_F(ExifLaden, APathOfTheTableIsReadThroughThePathMap) {
  const Bildwurzel wurzel;
  wurzel.schreibe(u"Artikel/Allg/Foto.jpg"_s, klein().jpeg());
  EXPECT_TRUE(lade(u"P:\\Artikel\\Allg\\foto.JPG"_s).load);
}

TEST_F(ExifLaden, AReadOnlyFileIsRead) {
  const QString pfad = ordner_.schreibe(u"a.jpg"_s, klein().jpeg());
  ASSERT_TRUE(QFile::setPermissions(pfad, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther));
  EXPECT_TRUE(lade(pfad).load);
}

TEST_F(ExifLaden, TheFileIsLeftAsItWasAndClosed) {
  const QByteArray bytes = klein().jpeg();
  clsExifInfo info;
  const QString pfad = ordner_.schreibe(u"a.jpg"_s, bytes);
  ASSERT_TRUE(info.Load(pfad));
  EXPECT_EQ(ordner_.lies(u"a.jpg"_s), bytes);
  for (int nummer = 3; nummer < 256; ++nummer) EXPECT_NE(QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(nummer)), pfad);
}

TEST_F(ExifLaden, AFolderReachesTheCallerAsAFailure) {
  Ladeergebnis erwartet;
  erwartet.fehler = fehlernummer::PfadZugriff;
  EXPECT_EQ(lade(ordner_.pfad()), erwartet);
}

TEST_F(ExifLaden, AFileWithoutReadRightReachesTheCallerAsAFailure) {
  const QString pfad = ordner_.schreibe(u"a.jpg"_s, klein().jpeg());
  ASSERT_TRUE(QFile::setPermissions(pfad, QFileDevice::WriteOwner));
  Ladeergebnis erwartet;
  erwartet.fehler = fehlernummer::ZugriffVerweigert;
  EXPECT_EQ(lade(pfad), erwartet);
}

TEST_F(ExifLaden, AFileInAMissingFolderReachesTheCallerAsAFailure) {
  Ladeergebnis erwartet;
  erwartet.fehler = fehlernummer::PfadNichtGefunden;
  EXPECT_EQ(lade(ordner_.pfad(u"fehlt/a.jpg"_s)), erwartet);
}

TEST_F(ExifLaden, AFileOf2GbIsAnOverflowThatReachesTheCaller) {
  const QString pfad = ordner_.schreibe(u"gross.jpg"_s, klein().jpeg());
  ASSERT_TRUE(QFile::resize(pfad, 0x80000000LL));
  Ladeergebnis erwartet;
  erwartet.fehler = fehlernummer::Ueberlauf;
  EXPECT_EQ(lade(pfad), erwartet);
}

TEST_F(ExifLaden, AFileOfOneByteLessThan2GbIsRead) {
  const QString pfad = ordner_.schreibe(u"gross.jpg"_s, klein().jpeg());
  ASSERT_TRUE(QFile::resize(pfad, 0x7FFFFFFFLL));
  EXPECT_TRUE(lade(pfad).load);
}

TEST_F(ExifLaden, AFileThatEndsBeforeTheOffsetOfTheFirstDirectoryIsAFailureAndIsLoadedStays) {
  const QByteArray ganz = klein().jpeg();
  // Bytes 12 to 15 are the TIFF header up to the offset; one zero byte more than the file can be read.
  for (qsizetype laenge = 10; laenge < 19; ++laenge) {
    const Ladeergebnis ergebnis = lade_Bytes(ganz.left(laenge));
    EXPECT_EQ(ergebnis.fehler, fehlernummer::IndexAusserhalb) << laenge;
    EXPECT_FALSE(ergebnis.is_loaded) << laenge;
  }
  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, ganz));
  ASSERT_TRUE(info.Load({}));
  info.picFile(ordner_.schreibe(u"b.jpg"_s, ganz.left(18)));
  EXPECT_EQ(Fehlernummer_von([&] { info.Load({}); }), fehlernummer::IndexAusserhalb);
  EXPECT_TRUE(info.Is_Loaded());
  EXPECT_EQ(info.Anzahl_Entries(), 1);
}

TEST_F(ExifLaden, AnOffsetOfTheFirstDirectoryWithItsHighestBitSetIsAnOverflow) {
  QByteArray motorola = klein(Folge::Motorola).jpeg();
  motorola[16] = '\x80';
  QByteArray intel = klein().jpeg();
  intel[19] = '\x80';
  for (const QByteArray& bytes : {motorola, intel}) {
    const Ladeergebnis ergebnis = lade_Bytes(bytes);
    EXPECT_EQ(ergebnis.fehler, fehlernummer::Ueberlauf);
    EXPECT_FALSE(ergebnis.is_loaded);
  }
}

TEST_F(ExifLaden, AnOffsetThatOverflowsWithTheHeadersPositionFailsWhenIsLoadedIsTrue) {
  QByteArray bytes = klein(Folge::Motorola).jpeg();
  bytes.replace(16, 4, "\x7F\xFF\xFF\xFF");
  const Ladeergebnis ergebnis = lade_Bytes(bytes);
  EXPECT_EQ(ergebnis.fehler, fehlernummer::Ueberlauf);
  EXPECT_TRUE(ergebnis.is_loaded);
}

TEST_F(ExifLaden, AFirstDirectoryWhoseCountLiesBeyondTheFileFailsWhenIsLoadedIsTrue) {
  const QByteArray ganz = klein().jpeg();
  // The header ends with byte 19; at 20 the zero byte behind the file can be read, at 21 nothing.
  const Ladeergebnis kurz = lade_Bytes(ganz.left(20));
  EXPECT_EQ(kurz.fehler, fehlernummer::IndexAusserhalb);
  EXPECT_TRUE(kurz.is_loaded);
  EXPECT_TRUE(kurz.entries.empty());
  EXPECT_EQ(lade_Bytes(ganz.left(21)).fehler, 0);
}

TEST_F(ExifLaden, OnlyTheOneByteDecidesTheByteOrder) {
  QByteArray intel = klein().jpeg();
  intel[13] = 'M';
  EXPECT_EQ(lade_Bytes(intel).entries.at(0).Value, Variant(7));
  QByteArray motorola = klein(Folge::Motorola).jpeg();
  motorola[12] = 'x';
  EXPECT_EQ(lade_Bytes(motorola).entries.at(0).Value, Variant(7));
}

TEST_F(ExifLaden, TheTiffMagicAndTheTwoBytesBehindExifAreNotLookedAt) {
  QByteArray bytes = klein().jpeg();
  bytes.replace(10, 2, "xy").replace(14, 2, "zz");
  EXPECT_EQ(lade_Bytes(bytes).entries.at(0).Value, Variant(7));
}

TEST_F(ExifLaden, AMarkerAcrossTheEdgeOfAnyBlockIsFound) {
  const QByteArray segment = ExifBauer::segment(klein().tiff());
  for (const char fuellung : {'\xFF', '\xE1', 'x'}) {
    for (const qsizetype kante : {16384, 32768, 81920, 147456}) {
      for (qsizetype davor = kante - 9; davor <= kante + 1; ++davor) {
        const Ladeergebnis ergebnis = lade_Bytes("\xFF\xD8"_ba + QByteArray(davor - 2, fuellung) + segment);
        EXPECT_TRUE(ergebnis.load) << davor;
        EXPECT_EQ(ergebnis.entries.size(), 1U) << davor;
      }
    }
  }
}

}  // namespace
