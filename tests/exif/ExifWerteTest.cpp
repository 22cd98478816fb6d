#include <gtest/gtest.h>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// One entry and what it must give in both byte orders.
struct Fall {
  const char* name;
  int format;
  std::uint32_t anzahl;
  /// The bytes as they stand in the file: in the field up to four, outside of it otherwise.
  QByteArray bytes;
  bool im_Feld;
  Variant motorola;
  Variant intel;
};

void PrintTo(const Fall& fall, std::ostream* os) {
  *os << fall.name;
}

Variant t(const char* text) {
  return QString::fromLatin1(text);
}
Variant t(QStringView text) {
  return text.toString();
}

std::string name_des_falls(const testing::TestParamInfo<Fall>& info) {
  return info.param.name;
}

class ExifWert : public testing::TestWithParam<Fall> {
 protected:
  Exif_Entry lies(Folge folge) {
    const Fall& fall = GetParam();
    ExifBauer b(folge);
    b.verzeichnis();
    if (fall.im_Feld)
      b.feld(700, fall.format, fall.anzahl, fall.bytes);
    else
      b.daten(700, fall.format, fall.anzahl, fall.bytes);
    b.zahl(701, 4, 1, 11);
    // What stands behind the value must not be read.
    const Ladeergebnis ergebnis = lade(ordner_.schreibe(u"a.jpg"_s, b.jpeg({}, "behind"_ba)));
    EXPECT_TRUE(ergebnis.load);
    if (ergebnis.entries.size() != 2) {
      ADD_FAILURE() << "two entries are expected";
      return {};
    }
    EXPECT_EQ(ergebnis.entries[1].Value, Variant(11)) << "the walk goes on";
    return ergebnis.entries[0];
  }

  void pruefe(const Exif_Entry& entry, const Variant& wert) {
    Exif_Entry erwartet;
    erwartet.Tag_Id = 700;
    erwartet.Format_Code = GetParam().format;
    erwartet.Item_Count = static_cast<std::int32_t>(GetParam().anzahl);
    erwartet.Data_Offset = GetParam().im_Feld ? 0 : 8 + 2 + 2 * 12 + 4;
    erwartet.Value = wert;
    EXPECT_EQ(entry, erwartet);
  }

  Testordner ordner_;
};

TEST_P(ExifWert, IsDecodedByItsFormatFromABigEndianFile) {
  pruefe(lies(Folge::Motorola), GetParam().motorola);
}

TEST_P(ExifWert, IsDecodedByItsFormatFromALittleEndianFile) {
  pruefe(lies(Folge::Intel), GetParam().intel);
}

const Fall Inline_Faelle[] = {
    {"byte_one", 1, 1, "\x0A"_ba, true, t("0A000000"), t("0000000A")},
    {"byte_four", 1, 4, "\x01\x2B\xFF\x00"_ba, true, t("012BFF00"), t("00FF2B01")},
    {"byte_none", 1, 0, "\x01\x02\x03\x04"_ba, true, t("01020304"), t("04030201")},
    {"sbyte", 6, 2, "\xFE\x7F"_ba, true, t("FE7F0000"), t("00007FFE")},
    {"ascii_four", 2, 4, "abcd"_ba, true, t("abcd"), t("dcba")},
    {"ascii_one_gives_four_all_the_same", 2, 1, "Wxyz"_ba, true, t("Wxyz"), t("zyxW")},
    {"ascii_two_with_zeros", 2, 2, "N"_ba, true, t(QStringView(u"N\0\0\0", 4)), t(QStringView(u"\0\0\0N", 4))},
    {"ascii_code_page", 2, 4, "\x80\xE4\x81\xFF"_ba, true, t(u"\u20AC\u00E4\u0081\u00FF"),
        t(u"\u00FF\u0081\u00E4\u20AC")},
    {"undefined_four", 7, 4, "0100"_ba, true, t("0100"), t("0010")},
    {"short_none", 3, 0, QByteArray("\1\2\3\4", 4), true, 0x0102 + 0x0304, 0x0201 + 0x0403},
    {"short_one", 3, 1, QByteArray("\1\2\0\0", 4), true, 0x0102, 0x0201},
    {"short_two_are_added_up", 3, 2, QByteArray("\0\x64\0\x17", 4), true, 100 + 23, 0x6400 + 0x1700},
    {"short_largest_sum", 3, 2, "\xFF\xFF\xFF\xFF"_ba, true, 131070, 131070},
    {"sshort_is_not_signed", 8, 1, QByteArray("\xFF\xFE\0\0", 4), true, 0xFFFE, 0xFEFF},
    {"long_one", 4, 1, "\x01\x02\x03\x04"_ba, true, 0x01020304, 0x04030201},
    {"long_largest", 4, 1, "\x7F\xFF\xFF\x7F"_ba, true, 0x7FFFFF7F, 0x7FFFFF7F},
    {"slong_positive", 9, 1, QByteArray("\x12\0\0\x34", 4), true, 0x12000034, 0x34000012},
};

const Fall Faelle_draussen[] = {
    {"byte_five", 1, 5, QByteArray("\0\x07\x63\x64\xFF", 5), false, t("0799100255"), t("0799100255")},
    {"sbyte_five", 6, 5, QByteArray("\xFF\0\1\x80\x0A", 5), false, t("2550112810"), t("2550112810")},
    {"ascii_five_letters_and_the_zero", 2, 6, QByteArray("abcde\0", 6), false, t(QStringView(u"abcde\0", 6)),
        t("abcde")},
    {"ascii_without_closing_zero", 2, 5, "abcde"_ba, false, t("abcde"), t("abcd")},
    {"ascii_code_page_draussen", 2, 5, "\xDC\x8D\x9F\x41\x42"_ba, false, t(u"\u00DC\u008D\u0178AB"),
        t(u"\u00DC\u008D\u0178A")},
    {"undefined_six", 7, 6, QByteArray("\0\1\2AB\3", 6), false, t(QStringView(u"\0\1\2AB\3", 6)),
        t(QStringView(u"\0\1\2AB", 5))},
    {"short_three_read_three_bytes", 3, 3, QByteArray("\x08\0\x08\0\x08\0", 6), false, t("808"), t("808")},
    {"short_bytes_run_backwards_in_big_endian", 3, 3, QByteArray("\0\x08\0\x08\0\x08", 6), false, t("080"), t("080")},
    {"short_order_shows", 3, 4, QByteArray("\1\2\3\4\5\6\7\x08", 8), false, t("4321"), t("1234")},
    {"sshort_four", 8, 4, QByteArray("\x0A\x14\x1E\xC8\0\0\0\0", 8), false, t("200302010"), t("102030200")},
    {"long_two_read_two_bytes", 4, 2, QByteArray("\x0B\x16\x21\x2C\1\1\1\1", 8), false, t("1122"), t("1122")},
    {"slong_two", 9, 2, QByteArray("\xFF\x00\1\1\1\1\1\1", 8), false, t("2550"), t("2550")},
    {"rational_first_of_two", 5, 2, QByteArray("\0\0\0\x48\0\0\0\1\0\0\0\5\0\0\0\6", 16), false, t("72/1"),
        t("1207959552/16777216")},
    {"rational_not_reduced", 5, 1, QByteArray("\0\0\0\0\0\0\0\0", 8), false, t("0/0"), t("0/0")},
    {"rational_of_count_zero_uses_its_offset", 5, 0, QByteArray("\0\0\0\6\0\0\0\4", 8), false, t("6/4"),
        t("100663296/67108864")},
    {"rational_of_a_huge_count_uses_its_offset", 5, 0x7FFFFFFF, QByteArray("\0\0\0\6\0\0\0\4", 8), false, t("6/4"),
        t("100663296/67108864")},
    {"srational_positive", 10, 1, QByteArray("\x7F\xFF\xFF\x7F\0\0\0\0", 8), false, t("2147483519/0"),
        t("2147483519/0")},
};

const Fall Andere_Faelle[] = {
    {"format_0", 0, 1, "\1\2\3\4"_ba, true, Empty{}, Empty{}},
    {"format_11", 11, 1, "\1\2\3\4"_ba, true, Empty{}, Empty{}},
    {"format_12", 12, 1, "\xFF\xFF\xFF\xFF"_ba, true, Empty{}, Empty{}},
    {"format_13_of_a_huge_count", 13, 0x7FFFFFFF, "\xFF\xFF\xFF\xFF"_ba, true, Empty{}, Empty{}},
    {"format_65535", 65535, 1, "\1\2\3\4"_ba, true, Empty{}, Empty{}},
};

INSTANTIATE_TEST_SUITE_P(Inline, ExifWert, testing::ValuesIn(Inline_Faelle), name_des_falls);
INSTANTIATE_TEST_SUITE_P(Outside, ExifWert, testing::ValuesIn(Faelle_draussen), name_des_falls);
INSTANTIATE_TEST_SUITE_P(Unknown, ExifWert, testing::ValuesIn(Andere_Faelle), name_des_falls);

class ExifWerte : public testing::TestWithParam<Folge> {
 protected:
  std::vector<Exif_Entry> lies(const ExifBauer& b) {
    const Ladeergebnis ergebnis = lade(ordner_.schreibe(u"a.jpg"_s, b.jpeg()));
    EXPECT_TRUE(ergebnis.load);
    return ergebnis.entries;
  }
  Testordner ordner_;
};

TEST_P(ExifWerte, ExifVersionReadsTheSameInBothOrdersAndFlashpixVersionDoesNot) {
  ExifBauer b(GetParam());
  b.verzeichnis().feld(36864, 7, 4, "0220").feld(40960, 7, 4, "0100");
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Value, t("0220"));
  EXPECT_EQ(entries.at(1).Value, GetParam() == Folge::Motorola ? t("0100") : t("0010"));
}

TEST_P(ExifWerte, AnEntryOfFormat12IsKeptWithAnEmptyValueAndTheWalkGoesOn) {
  ExifBauer b(GetParam());
  b.verzeichnis().daten(700, 12, 1, "12345678").zahl(701, 4, 1, 5);
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Tag_Id, 700);
  EXPECT_EQ(entries.at(0).Value, Variant(Empty{}));
  EXPECT_EQ(entries.at(0).Data_Offset, 0);
  EXPECT_EQ(entries.at(1).Value, Variant(5));
}

TEST_P(ExifWerte, ANegativeExposureBiasEndsTheWalkAtThatEntry) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(256, 4, 1, 1).zeiger();
  b.unterverzeichnis().zahl(34850, 4, 1, 2).daten(37380, 10, 1, b.bruch(0xFFFFFFFF, 3)).zahl(40962, 4, 1, 4);
  const auto entries = lies(b);
  ASSERT_EQ(entries.size(), 5U);
  EXPECT_EQ(entries[0].Value, Variant(1));
  EXPECT_EQ(entries[2].Value, Variant(2));
  EXPECT_EQ(entries[3].Tag_Id, 37380);
  EXPECT_EQ(entries[3].Item_Count, 1);
  EXPECT_NE(entries[3].Data_Offset, 0);
  EXPECT_EQ(entries[3].Value, Variant(Empty{}));
  EXPECT_EQ(entries[4], Exif_Entry());
}

TEST_P(ExifWerte, ANegativeDenominatorLeavesTheValueEmptyAndEndsTheWalk) {
  ExifBauer b(GetParam());
  b.verzeichnis().daten(37380, 10, 1, b.bruch(1, 0xFFFFFFFD)).zahl(40962, 4, 1, 4);
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Value, Variant(Empty{}));
  EXPECT_EQ(entries.at(1), Exif_Entry());
}

TEST_P(ExifWerte, AnInlineLongWithItsHighestBitSetEndsTheWalk) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(700, 9, 1, 0xFFFFFFFF).zahl(701, 4, 1, 5);
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Tag_Id, 700);
  EXPECT_EQ(entries.at(0).Value, Variant(Empty{}));
  EXPECT_EQ(entries.at(1), Exif_Entry());
}

TEST_P(ExifWerte, ACountWithItsHighestBitSetEndsTheWalkBehindTagAndFormat) {
  ExifBauer b(GetParam());
  b.verzeichnis().feld(700, 2, 0x80000000, "abcd").zahl(701, 4, 1, 5);
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Tag_Id, 700);
  EXPECT_EQ(entries.at(0).Format_Code, 2);
  EXPECT_EQ(entries.at(0).Item_Count, 0);
  EXPECT_EQ(entries.at(1), Exif_Entry());
}

TEST_P(ExifWerte, AValueOffsetWithItsHighestBitSetEndsTheWalk) {
  for (const int format : {1, 2, 3, 4, 5}) {
    ExifBauer b(GetParam());
    b.verzeichnis().zahl(700, format, 8, 0x80000000).zahl(701, 4, 1, 5);
    const auto entries = lies(b);
    EXPECT_EQ(entries.at(0).Item_Count, 8) << format;
    EXPECT_EQ(entries.at(0).Data_Offset, 0) << format;
    EXPECT_EQ(entries.at(0).Value, Variant(Empty{})) << format;
    EXPECT_EQ(entries.at(1), Exif_Entry()) << format;
  }
}

TEST_P(ExifWerte, ACountTimesSizeThatOverflowsEndsTheWalkBeforeTheOffset) {
  for (const int format : {3, 4, 8, 9}) {
    ExifBauer b(GetParam());
    b.verzeichnis().zahl(700, format, 0x40000000, 8).zahl(701, 4, 1, 5);
    const auto entries = lies(b);
    EXPECT_EQ(entries.at(0).Item_Count, 0x40000000) << format;
    EXPECT_EQ(entries.at(0).Data_Offset, 0) << format;
    EXPECT_EQ(entries.at(1), Exif_Entry()) << format;
  }
}

TEST_P(ExifWerte, ATextThatRunsPastTheFileKeepsWhatWasAppendedAndEndsTheWalk) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(271, 2, 100, 38).zahl(256, 4, 1, 5);
  ASSERT_EQ(b.tiff().size(), 38);
  const QByteArray bytes = "\xFF\xD8"_ba + ExifBauer::segment(b.tiff()) + "Ende"_ba;
  const Ladeergebnis ergebnis = lade(ordner_.schreibe(u"a.jpg"_s, bytes));
  EXPECT_TRUE(ergebnis.load);
  // The list of bytes is one zero byte longer than the file.
  EXPECT_EQ(ergebnis.entries.at(0).Value, t(QStringView(u"Ende\0", 5)));
  EXPECT_EQ(ergebnis.entries.at(1), Exif_Entry());
}

TEST_P(ExifWerte, NumbersThatRunPastTheFileKeepWhatWasAppendedButBackwardsThatIsNothing) {
  const bool motorola = GetParam() == Folge::Motorola;
  for (const int format : {1, 3, 4}) {
    ExifBauer b(GetParam());
    b.verzeichnis().zahl(271, format, 100, 26);
    const QByteArray bytes = "\xFF\xD8"_ba + ExifBauer::segment(b.tiff()) + "\x0C\x22"_ba;
    const Ladeergebnis ergebnis = lade(ordner_.schreibe(u"a.jpg"_s, bytes));
    EXPECT_TRUE(ergebnis.load);
    EXPECT_EQ(ergebnis.entries.at(0).Value, format == 3 && motorola ? Variant(Empty{}) : t("12340")) << format;
  }
}

TEST_P(ExifWerte, ATextThatBeginsBeyondTheFileLeavesTheValueEmpty) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(271, 2, 100, 0x7FFFFFFF).zahl(256, 4, 1, 5);
  const auto entries = lies(b);
  EXPECT_EQ(entries.at(0).Data_Offset, 0x7FFFFFFF);
  EXPECT_EQ(entries.at(0).Value, Variant(Empty{}));
  EXPECT_EQ(entries.at(1), Exif_Entry());
}

TEST_P(ExifWerte, ALongTextIsReadWholeAcrossBlocks) {
  QByteArray lang(70000, '\0');
  for (qsizetype i = 0; i < lang.size(); ++i) lang[i] = static_cast<char>('a' + i % 23);
  ExifBauer b(GetParam());
  b.verzeichnis().daten(37500, 7, 70000, lang);
  const bool motorola = GetParam() == Folge::Motorola;
  EXPECT_EQ(lies(b).at(0).Value, Variant(QString::fromLatin1(motorola ? lang : lang.chopped(1))));
}

INSTANTIATE_TEST_SUITE_P(BothOrders, ExifWerte, testing::Values(Folge::Motorola, Folge::Intel),
    [](const auto& fall) { return fall.param == Folge::Motorola ? "big" : "little"; });

}  // namespace
