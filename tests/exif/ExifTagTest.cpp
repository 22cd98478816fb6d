#include <gtest/gtest.h>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/exif/ExifInfoPruefer.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ExifTag : public testing::Test {
 protected:
  QString lege(const ExifBauer& bauer) { return ordner_.schreibe(u"a.jpg"_s, bauer.jpeg()); }
  QString lege_ohne_Exif() { return ordner_.schreibe(u"b.jpg"_s, "\xFF\xD8\xFF\xD9"_ba); }
  Testordner ordner_;
  clsExifInfo info_;
};

TEST_F(ExifTag, GivesAFoundNumberAsText) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6));
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(274), Variant(u"6"_s));
}

TEST_F(ExifTag, GivesEmptyTextForAnEntryWithoutAValueAndEmptyForAMissingOne) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 12, 1, "abcd");
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(274), Variant(QString()));
  EXPECT_EQ(info_.Tag(275), Variant(Empty{}));
  EXPECT_EQ(info_.Tag(-274), Variant(Empty{}));
}

TEST_F(ExifTag, TakesTheFirstEntryOfTheNumberInTheOrderOfReading) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().zahl(700, 4, 1, 1).zahl(700, 4, 1, 2).zeiger();
  b.verzeichnis().zahl(700, 4, 1, 3).zahl(701, 4, 1, 4);
  b.unterverzeichnis().zahl(701, 4, 1, 5).zahl(702, 4, 1, 6);
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(701), Variant(u"4"_s)) << "the thumbnail's directory stands in front of the Exif one";
  EXPECT_EQ(info_.Tag(702), Variant(u"6"_s));
}

TEST_F(ExifTag, PutsABlankForEachTilde) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(271, 2, 6, "a~~b~c");
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(271), Variant(u"a  b c"_s));
  EXPECT_EQ(info_.Entries()[0].Value, Variant(u"a~~b~c"_s)) << "the entry itself stays";
}

TEST_F(ExifTag, Number0GivesTheNumberOfEntriesWithThoseNotReached) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6)).zahl(700, 4, 1, 0x80000000).zahl(701, 4, 1, 1);
  ASSERT_TRUE(info_.Load(lege(b))) << "the walk stops at the second entry";
  EXPECT_EQ(info_.Tag(0), Variant(3));
  EXPECT_EQ(info_.Tag(274), Variant(u"6"_s));
  EXPECT_EQ(info_.Tag(701), Variant(Empty{}));
}

TEST_F(ExifTag, Number0IsEmptyWhileTheListWasNeverSized) {
  info_.picFile(lege_ohne_Exif());
  EXPECT_EQ(info_.Tag(0), Variant(Empty{}));
}

TEST_F(ExifTag, FailsForAnyOtherNumberWhileTheListWasNeverSized) {
  EXPECT_FALSE(info_.Load(lege_ohne_Exif()));
  EXPECT_EQ(Fehlernummer_von([&] { info_.Tag(274); }), fehlernummer::IndexAusserhalb);
  ExifBauer b(Folge::Intel);
  b.verzeichnis();
  clsExifInfo leeres_Verzeichnis;
  EXPECT_TRUE(leeres_Verzeichnis.Load(lege(b)));
  EXPECT_EQ(leeres_Verzeichnis.Tag(0), Variant(Empty{}));
  EXPECT_EQ(Fehlernummer_von([&] { leeres_Verzeichnis.Tag(274); }), fehlernummer::IndexAusserhalb);
}

TEST_F(ExifTag, IsEmptyWithoutAFile) {
  EXPECT_EQ(info_.Tag(274), Variant(Empty{}));
  EXPECT_EQ(info_.Tag(0), Variant(Empty{}));
}

TEST_F(ExifTag, LoadsTheFileOfThePropertyOnce) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(700, 4, 1, 1);
  info_.picFile(lege(b));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(0), Variant(1)) << "a second load would have appended";
}

TEST_F(ExifTag, HandsAFailureOfLoadingToTheCaller) {
  info_.picFile(ordner_.pfad());
  EXPECT_EQ(Fehlernummer_von([&] { info_.Tag(274); }), fehlernummer::PfadZugriff);
}

TEST_F(ExifTag, OfAMakerNoteIsAlwaysEmptyAfterALoad) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6)).daten(37500, 7, 12, QByteArray(12, 'x'));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{})) << "nothing is loaded by itself";
  info_.picFile(lege(b));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{}));
  EXPECT_FALSE(info_.Is_Loaded());
  ASSERT_TRUE(info_.Load({}));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{}));
}

TEST_F(ExifTag, OfAMakerNoteKeepsTheTilde) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(271, 2, 6, "a~~b~c");
  const QString pfad = lege(b);
  ASSERT_TRUE(info_.Load(pfad));
  ExifInfoPruefer::lies(info_, pfad, 12 + 8);
  EXPECT_EQ(info_.MakerNoteTag(271), Variant(u"a~~b~c"_s));
  EXPECT_EQ(info_.Tag(271), Variant(u"a  b c"_s));
}

}  // namespace
