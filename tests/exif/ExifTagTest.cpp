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

TEST_F(ExifTag, gives_a_found_number_as_text) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6));
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(274), Variant(u"6"_s));
}

TEST_F(ExifTag, gives_empty_text_for_an_entry_without_a_value_and_empty_for_a_missing_one) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 12, 1, "abcd");
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(274), Variant(QString()));
  EXPECT_EQ(info_.Tag(275), Variant(Empty{}));
  EXPECT_EQ(info_.Tag(-274), Variant(Empty{}));
}

TEST_F(ExifTag, takes_the_first_entry_of_the_number_in_the_order_of_reading) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().zahl(700, 4, 1, 1).zahl(700, 4, 1, 2).zeiger();
  b.verzeichnis().zahl(700, 4, 1, 3).zahl(701, 4, 1, 4);
  b.unterverzeichnis().zahl(701, 4, 1, 5).zahl(702, 4, 1, 6);
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(701), Variant(u"4"_s)) << "the thumbnail's directory stands in front of the Exif one";
  EXPECT_EQ(info_.Tag(702), Variant(u"6"_s));
}

TEST_F(ExifTag, puts_a_blank_for_each_tilde) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(271, 2, 6, "a~~b~c");
  ASSERT_TRUE(info_.Load(lege(b)));
  EXPECT_EQ(info_.Tag(271), Variant(u"a  b c"_s));
  EXPECT_EQ(info_.Entries()[0].Value, Variant(u"a~~b~c"_s)) << "the entry itself stays";
}

TEST_F(ExifTag, number_0_gives_the_number_of_entries_with_those_not_reached) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6)).zahl(700, 4, 1, 0x80000000).zahl(701, 4, 1, 1);
  ASSERT_TRUE(info_.Load(lege(b))) << "the walk stops at the second entry";
  EXPECT_EQ(info_.Tag(0), Variant(3));
  EXPECT_EQ(info_.Tag(274), Variant(u"6"_s));
  EXPECT_EQ(info_.Tag(701), Variant(Empty{}));
}

TEST_F(ExifTag, number_0_is_empty_while_the_list_was_never_sized) {
  info_.picFile(lege_ohne_Exif());
  EXPECT_EQ(info_.Tag(0), Variant(Empty{}));
}

TEST_F(ExifTag, fails_for_any_other_number_while_the_list_was_never_sized) {
  EXPECT_FALSE(info_.Load(lege_ohne_Exif()));
  EXPECT_EQ(Fehlernummer_von([&] { info_.Tag(274); }), fehlernummer::IndexAusserhalb);
  ExifBauer b(Folge::Intel);
  b.verzeichnis();
  clsExifInfo leeres_Verzeichnis;
  EXPECT_TRUE(leeres_Verzeichnis.Load(lege(b)));
  EXPECT_EQ(leeres_Verzeichnis.Tag(0), Variant(Empty{}));
  EXPECT_EQ(Fehlernummer_von([&] { leeres_Verzeichnis.Tag(274); }), fehlernummer::IndexAusserhalb);
}

TEST_F(ExifTag, is_empty_without_a_file) {
  EXPECT_EQ(info_.Tag(274), Variant(Empty{}));
  EXPECT_EQ(info_.Tag(0), Variant(Empty{}));
}

TEST_F(ExifTag, loads_the_file_of_the_property_once) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(700, 4, 1, 1);
  info_.picFile(lege(b));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(700), Variant(u"1"_s));
  EXPECT_EQ(info_.Tag(0), Variant(1)) << "a second load would have appended";
}

TEST_F(ExifTag, hands_a_failure_of_loading_to_the_caller) {
  info_.picFile(ordner_.pfad());
  EXPECT_EQ(Fehlernummer_von([&] { info_.Tag(274); }), fehlernummer::PfadZugriff);
}

TEST_F(ExifTag, of_a_maker_note_is_always_empty_after_a_load) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6)).daten(37500, 7, 12, QByteArray(12, 'x'));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{})) << "nothing is loaded by itself";
  info_.picFile(lege(b));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{}));
  EXPECT_FALSE(info_.Is_Loaded());
  ASSERT_TRUE(info_.Load({}));
  EXPECT_EQ(info_.MakerNoteTag(274), Variant(Empty{}));
}

TEST_F(ExifTag, of_a_maker_note_keeps_the_tilde) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(271, 2, 6, "a~~b~c");
  const QString pfad = lege(b);
  ASSERT_TRUE(info_.Load(pfad));
  ExifInfoPruefer::lies(info_, pfad, 12 + 8);
  EXPECT_EQ(info_.MakerNoteTag(271), Variant(u"a~~b~c"_s));
  EXPECT_EQ(info_.Tag(271), Variant(u"a  b c"_s));
}

}  // namespace
