#include <gtest/gtest.h>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ExifGang : public testing::TestWithParam<Folge> {
 protected:
  Ladeergebnis lade_Bytes(const QByteArray& bytes) { return lade(ordner_.schreibe(u"a.jpg"_s, bytes)); }
  /// The tags in the order of reading; the walk must have ended as usual.
  QList<int> tags(const ExifBauer& b) {
    const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
    EXPECT_TRUE(ergebnis.load);
    EXPECT_EQ(ergebnis.fehler, 0);
    QList<int> gelesen;
    for (const Exif_Entry& entry : ergebnis.entries) gelesen.append(entry.Tag_Id);
    return gelesen;
  }
  Testordner ordner_;
};

TEST_P(ExifGang, ReadsFirstDirectoryThenTheChainThenTheExifSubDirectory) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(1, 4, 1, 0).zeiger().zahl(2, 4, 1, 0);
  b.verzeichnis().zahl(3, 4, 1, 0);
  b.verzeichnis().zahl(4, 4, 1, 0);
  b.unterverzeichnis().zahl(5, 4, 1, 0).zahl(6, 4, 1, 0);
  EXPECT_EQ(tags(b), (QList<int>{1, 34665, 2, 3, 4, 5, 6}));
}

TEST_P(ExifGang, IgnoresTheChainOfTheExifSubDirectory) {
  ExifBauer b(GetParam());
  b.verzeichnis().zeiger();
  b.unterverzeichnis().zahl(5, 4, 1, 0).kette(b.offset(2));
  b.verzeichnis().zahl(6, 4, 1, 0);
  EXPECT_EQ(tags(b), (QList<int>{34665, 5}));
}

TEST_P(ExifGang, DoesNotNeedAChainFieldBehindTheExifSubDirectory) {
  ExifBauer b(GetParam());
  b.verzeichnis().zeiger();
  b.unterverzeichnis().zahl(5, 4, 1, 9);
  QByteArray bytes = "\xFF\xD8"_ba + ExifBauer::segment(b.tiff());
  bytes.chop(4);
  EXPECT_EQ(lade_Bytes(bytes).entries.at(1).Value, Variant(9));
}

TEST_P(ExifGang, StoresGpsAndInteroperabilityPointersWithoutFollowingThem) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(34853, 4, 1, 8).zahl(40965, 4, 1, 8);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  ASSERT_EQ(ergebnis.entries.size(), 2U);
  EXPECT_EQ(ergebnis.entries[0].Value, Variant(8));
  EXPECT_EQ(ergebnis.entries[1].Value, Variant(8));
}

TEST_P(ExifGang, TakesTheLastOfSeveralExifPointers) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(34665, 4, 1, 99999).zahl(1, 4, 1, 0);
  b.verzeichnis().zeiger();
  b.unterverzeichnis().zahl(5, 4, 1, 0);
  EXPECT_EQ(tags(b), (QList<int>{34665, 1, 34665, 5}));
}

TEST_P(ExifGang, AnExifPointerOfEightDigitsIsADecimalNumber) {
  // An inline byte value: in hexadecimal 0x00000044, as a text "00000044", as a number forty-four.
  ExifBauer b(GetParam());
  const QByteArray feld = GetParam() == Folge::Motorola ? QByteArray("\0\0\0\x44", 4) : QByteArray("\x44\0\0\0", 4);
  b.verzeichnis().feld(34665, 1, 1, feld).zahl(1, 4, 1, 0);
  b.unterverzeichnis().zahl(5, 4, 1, 0);
  ASSERT_EQ(b.offset(1), 38U);
  QByteArray tiff = b.tiff();
  tiff.insert(38, QByteArray(6, '\0'));
  const Ladeergebnis ergebnis = lade_Bytes("\xFF\xD8"_ba + ExifBauer::segment(tiff));
  ASSERT_EQ(ergebnis.entries.size(), 3U);
  EXPECT_EQ(ergebnis.entries[0].Value, Variant(u"00000044"_s));
  EXPECT_EQ(ergebnis.entries[2].Tag_Id, 5);
}

TEST_P(ExifGang, AnExifPointerThatIsNoNumberEndsTheWalkBehindItsValue) {
  for (const QByteArray& feld : {"\xAB\xCD\xEF\xFF"_ba, "\x1E\x01\x01\x1E"_ba}) {
    ExifBauer b(GetParam());
    b.verzeichnis().feld(34665, 1, 1, feld).zahl(1, 4, 1, 3);
    const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
    EXPECT_TRUE(ergebnis.load);
    ASSERT_EQ(ergebnis.entries.size(), 2U);
    EXPECT_EQ(ergebnis.entries[0].Tag_Id, 34665);
    EXPECT_TRUE(std::holds_alternative<QString>(ergebnis.entries[0].Value));
    EXPECT_EQ(ergebnis.entries[1], Exif_Entry());
  }
}

TEST_P(ExifGang, ExifPointersWithBlanksSignsExponentsOrAFractionEndTheWalk) {
  for (const QByteArray& feld : {"  44"_ba, "+044"_ba, "-044"_ba, "44  "_ba, "4e01"_ba, "1e04"_ba, "44.0"_ba}) {
    ExifBauer b(GetParam());
    b.verzeichnis().feld(34665, 2, 4, feld).zahl(1, 4, 1, 3);
    EXPECT_EQ(lade_Bytes(b.jpeg()).entries.at(1), Exif_Entry()) << feld.toStdString();
  }
  ExifBauer b(GetParam());
  b.verzeichnis().daten(34665, 5, 1, b.bruch(8, 1)).zahl(1, 4, 1, 3);
  EXPECT_EQ(lade_Bytes(b.jpeg()).entries.at(1), Exif_Entry());
}

TEST_P(ExifGang, AnExifPointerOfTooManyDigitsEndsTheWalk) {
  const QByteArray ziffern = "2147483648x"_ba;
  ExifBauer b(GetParam());
  b.verzeichnis().daten(34665, 2, GetParam() == Folge::Intel ? 11 : 10, ziffern).zahl(1, 4, 1, 3);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  EXPECT_EQ(ergebnis.entries.at(0).Value, Variant(u"2147483648"_s));
  EXPECT_EQ(ergebnis.entries.at(1), Exif_Entry());
}

TEST_P(ExifGang, AnExifPointerOfAnUnknownFormatCountsAsNone) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(34665, 12, 1, 8).zahl(1, 4, 1, 3);
  EXPECT_EQ(tags(b), (QList<int>{34665, 1}));
}

TEST_P(ExifGang, AnEmptyFirstDirectoryEndsTheWalkWhileTheListWasNeverSized) {
  ExifBauer b(GetParam());
  b.verzeichnis();
  b.verzeichnis().zahl(1, 4, 1, 3);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  EXPECT_TRUE(ergebnis.load);
  EXPECT_TRUE(ergebnis.is_loaded);
  EXPECT_TRUE(ergebnis.entries.empty());
}

TEST_P(ExifGang, AnEmptyDirectoryBehindOthersIsPassed) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(1, 4, 1, 3);
  b.verzeichnis();
  b.verzeichnis().zahl(2, 4, 1, 3);
  EXPECT_EQ(tags(b), (QList<int>{1, 2}));
}

TEST_P(ExifGang, AChainBeyondTheFileEndsTheWalkBeforeTheExifSubDirectory) {
  for (const std::uint32_t ziel : {100000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    ExifBauer b(GetParam());
    b.verzeichnis().zahl(1, 4, 1, 3).zeiger().kette(ziel);
    b.unterverzeichnis().zahl(5, 4, 1, 0);
    EXPECT_EQ(tags(b), (QList<int>{1, 34665})) << ziel;
  }
}

TEST_P(ExifGang, AFileThatEndsInsideADirectoryLeavesEmptyEntriesUpToItsSize) {
  ExifBauer b(GetParam());
  b.verzeichnis().zahl(1, 4, 1, 3).zahl(2, 4, 1, 4).zahl(3, 4, 1, 5);
  const QByteArray ganz = b.jpeg();
  // Behind the second entry's format code: its count can't be read.
  const Ladeergebnis ergebnis = lade_Bytes(ganz.left(12 + 8 + 2 + 12 + 5));
  EXPECT_TRUE(ergebnis.load);
  ASSERT_EQ(ergebnis.entries.size(), 3U);
  EXPECT_EQ(ergebnis.entries[0].Value, Variant(3));
  EXPECT_EQ(ergebnis.entries[1].Tag_Id, 2);
  EXPECT_EQ(ergebnis.entries[1].Format_Code, 4);
  EXPECT_EQ(ergebnis.entries[1].Item_Count, 0);
  EXPECT_EQ(ergebnis.entries[2], Exif_Entry());
}

TEST_P(ExifGang, OneZeroByteCanBeReadBehindTheFile) {
  ExifBauer b(GetParam());
  b.verzeichnis().feld(1, 2, 4, "abcd");
  // The field's last byte is the zero byte; the chain behind it can't be read, which ends the walk.
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg().left(12 + 8 + 2 + 11));
  const bool motorola = GetParam() == Folge::Motorola;
  EXPECT_EQ(ergebnis.entries.at(0).Value, Variant(QStringView(motorola ? u"abc\0" : u"\0cba", 4).toString()));
  EXPECT_EQ(lade_Bytes(b.jpeg().left(12 + 8 + 2 + 10)).entries.at(0).Value, Variant(Empty{}));
}

TEST_P(ExifGang, TheMakerNoteIsOneTextAndIsNotWalked) {
  ExifBauer notiz(GetParam());
  notiz.verzeichnis().zahl(9, 4, 1, 1);
  ExifBauer b(GetParam());
  const QByteArray bytes = notiz.tiff();
  b.verzeichnis().daten(37500, 7, static_cast<std::uint32_t>(bytes.size()), bytes);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  ASSERT_EQ(ergebnis.entries.size(), 1U);
  EXPECT_FALSE(ergebnis.entries[0].Is_MakerNote);
  EXPECT_EQ(std::get<QString>(ergebnis.entries[0].Value).size(), bytes.size() - (GetParam() == Folge::Intel ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(BothOrders, ExifGang, testing::Values(Folge::Motorola, Folge::Intel),
    [](const auto& fall) { return fall.param == Folge::Motorola ? "big" : "little"; });

}  // namespace
