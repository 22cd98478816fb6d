#include <gtest/gtest.h>

#include "tests/exif/ExifBauer.h"
#include "tests/exif/ExifInfoPruefer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int32_t Erstes_Verzeichnis = 12 + 8;

TEST(ExifMakerNote, ReadsOneDirectoryWithItsEntriesMarkedAndFollowsNothing) {
  const Testordner ordner;
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 70).zeiger().feld(37500, 7, 4, "abcd");
  b.verzeichnis().zahl(2, 4, 1, 71);
  b.unterverzeichnis().zahl(3, 4, 1, 72);
  clsExifInfo info;
  ExifInfoPruefer::lies(info, ordner.schreibe(u"a.jpg"_s, b.jpeg()), Erstes_Verzeichnis);
  ASSERT_EQ(info.Entries().size(), 3U);
  for (const Exif_Entry& entry : info.Entries()) EXPECT_TRUE(entry.Is_MakerNote);
  EXPECT_EQ(info.Entries()[0].Value, Variant(70));
  EXPECT_EQ(info.Entries()[2].Value, Variant(u"dcba"_s));
}

TEST(ExifMakerNote, DoesNotConvertAnExifPointer) {
  const Testordner ordner;
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().feld(34665, 2, 4, "Text").zahl(2, 4, 1, 71);
  clsExifInfo info;
  ExifInfoPruefer::lies(info, ordner.schreibe(u"a.jpg"_s, b.jpeg()), Erstes_Verzeichnis);
  EXPECT_EQ(info.Entries().at(1).Value, Variant(71));
}

TEST(ExifMakerNote, AFailureReachesTheCallerAndWhatWasReadStays) {
  const Testordner ordner;
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().zahl(1, 4, 1, 70).zahl(2, 4, 1, 0x80000000);
  const QString pfad = ordner.schreibe(u"a.jpg"_s, b.jpeg());
  clsExifInfo info;
  EXPECT_EQ(Fehlernummer_von([&] { ExifInfoPruefer::lies(info, pfad, Erstes_Verzeichnis); }), fehlernummer::Ueberlauf);
  EXPECT_EQ(info.Entries().at(0).Value, Variant(70));
  EXPECT_EQ(Fehlernummer_von([&] { ExifInfoPruefer::lies(info, pfad, 100000); }), fehlernummer::IndexAusserhalb);
  EXPECT_EQ(Fehlernummer_von([&] { ExifInfoPruefer::lies(info, pfad, -1); }), fehlernummer::IndexAusserhalb);
}

TEST(ExifMakerNote, ATextIsFilledUpInFrontAndNeverCut) {
  EXPECT_EQ(ExifInfoPruefer::Pad_Left(u"A"_s, 2, u'0'), u"0A"_s);
  EXPECT_EQ(ExifInfoPruefer::Pad_Left(u""_s, 3, u'-'), u"---"_s);
  EXPECT_EQ(ExifInfoPruefer::Pad_Left(u"AB"_s, 2, u'0'), u"AB"_s);
  EXPECT_EQ(ExifInfoPruefer::Pad_Left(u"ABC"_s, 2, u'0'), u"ABC"_s);
}

}  // namespace
