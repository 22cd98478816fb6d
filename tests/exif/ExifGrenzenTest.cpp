#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Files that ask for more than they hold. Each must be left within seconds, also under the sanitizers.
class ExifGrenzen : public testing::Test {
 protected:
  ExifGrenzen() { uhr_.start(); }
  ~ExifGrenzen() override { EXPECT_LT(uhr_.elapsed(), 60'000); }

  Ladeergebnis lade_Bytes(const QByteArray& bytes) { return lade(ordner_.schreibe(u"a.jpg"_s, bytes)); }

  static QByteArray datei(const QByteArray& tiff) { return "\xFF\xD8"_ba + ExifBauer::segment(tiff); }

  static qint64 textlaenge(const Ladeergebnis& ergebnis) {
    qint64 summe = 0;
    for (const Exif_Entry& entry : ergebnis.entries)
      if (const auto* text = std::get_if<QString>(&entry.Value)) summe += text->size();
    return summe;
  }

  Testordner ordner_;
  QElapsedTimer uhr_;
};

TEST_F(ExifGrenzen, ADirectoryChainedToItselfIsReadOnceAndTheExifSubDirectoryIsNotVisited) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 3).zeiger().kette(8);
  b.unterverzeichnis().zahl(5, 4, 1, 0);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.fehler, 0);
  ASSERT_EQ(ergebnis.entries.size(), 2U);
  EXPECT_EQ(ergebnis.entries[0].Value, Variant(3));
}

TEST_F(ExifGrenzen, AChainThatPointsBackEndsAtTheDirectorySeenBefore) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().zahl(1, 4, 1, 3).zeiger();
  b.verzeichnis().zahl(2, 4, 1, 3);
  b.verzeichnis().zahl(3, 4, 1, 3).kette(8 + 2 + 24 + 4);
  b.unterverzeichnis().zahl(5, 4, 1, 0);
  EXPECT_EQ(lade_Bytes(b.jpeg()).entries.size(), 4U);
}

TEST_F(ExifGrenzen, AnExifPointerToADirectorySeenBeforeAddsNothing) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 3).zahl(34665, 4, 1, 8);
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.entries.size(), 2U);
}

TEST_F(ExifGrenzen, ASecondLoadMayWalkTheSamePositionsAgain) {
  clsExifInfo info;
  info.picFile(ordner_.schreibe(u"a.jpg"_s, kamerabild(Folge::Intel)));
  ASSERT_TRUE(info.Load({}));
  const auto anzahl = info.Anzahl_Entries().value();
  ASSERT_TRUE(info.Load({}));
  EXPECT_EQ(info.Anzahl_Entries(), 2 * anzahl);
}

TEST_F(ExifGrenzen, ARingOfEmptyDirectoriesEnds) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().zahl(1, 4, 1, 3);
  b.verzeichnis();
  b.verzeichnis().kette(b.offset(1));
  const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.entries.size(), 1U);
}

TEST_F(ExifGrenzen, DirectoriesOf65535EntriesEndAtAMillionEntries) {
  // Directories that overlap: one begins twelve bytes behind the other, the count of each lies in a field of the one
  // before it that is not read, for format 0 has none.
  constexpr int Verzeichnisse = 20;
  constexpr qsizetype Voll = 65535;
  QByteArray tiff(8 + 2 + 12 * (Voll + Verzeichnisse) + 4, '\0');
  const ExifBauer b(Folge::Intel);
  tiff.replace(0, 8, "II*"_ba + QByteArray(1, '\0') + b.w32(8));
  for (qsizetype k = 0; k < Verzeichnisse; ++k) {
    const qsizetype position = 8 + 12 * k;
    tiff.replace(position, 2, "\xFF\xFF");
    tiff.replace(position + 2 + 12 * Voll, 4, b.w32(static_cast<std::uint32_t>(position + 12)));
  }
  // The Exif sub-directory is known from the first directory on.
  tiff.replace(10 + 100 * 12, 12, b.w16(34665) + b.w16(4) + b.w32(1) + b.w32(4000));
  const Ladeergebnis ergebnis = lade_Bytes(datei(tiff));
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.fehler, 0);
  EXPECT_EQ(ergebnis.entries.size(), 15U * 65535U);
}

TEST_F(ExifGrenzen, ALongChainOfEmptyDirectoriesEndsAtAMillion) {
  QByteArray tiff(8 + 6 * 1'100'000 + 18, '\0');
  const ExifBauer b(Folge::Intel);
  tiff.replace(0, 8, "II*"_ba + QByteArray(1, '\0') + b.w32(8));
  tiff.replace(8, 2, b.w16(1));
  tiff.replace(22, 4, b.w32(26));
  qsizetype p = 26;
  for (; p + 18 < tiff.size(); p += 6) tiff.replace(p + 2, 4, b.w32(static_cast<std::uint32_t>(p + 6)));
  // Far behind the limit a directory with an entry.
  tiff.replace(p, 4, b.w16(1) + b.w16(2));
  const Ladeergebnis ergebnis = lade_Bytes(datei(tiff));
  EXPECT_TRUE(ergebnis.load);
  EXPECT_EQ(ergebnis.entries.size(), 1U);
}

TEST_F(ExifGrenzen, TextEndsAt256MbWithThePartAppendedUntilThen) {
  // 40 entries share 4,000,000 bytes: as 16-bit characters the 34th goes beyond.
  constexpr int Eintraege = 40;
  constexpr qsizetype Laenge = 4'000'000;
  for (const Folge folge : {Folge::Motorola, Folge::Intel}) {
    ExifBauer b(folge);
    b.verzeichnis();
    for (int i = 0; i < Eintraege; ++i) b.zahl(1000 + i, 7, Laenge + (folge == Folge::Intel ? 1 : 0), 600);
    b.zeiger();
    b.unterverzeichnis().zahl(5, 4, 1, 1);
    const Ladeergebnis ergebnis = lade_Bytes(datei(b.tiff()) + QByteArray(Laenge + 600, 'x'));
    EXPECT_TRUE(ergebnis.load);
    EXPECT_EQ(textlaenge(ergebnis), 128LL * 1024 * 1024);
    ASSERT_EQ(ergebnis.entries.size(), Eintraege + 1U);
    EXPECT_EQ(std::get<QString>(ergebnis.entries[32].Value).size(), Laenge);
    EXPECT_EQ(std::get<QString>(ergebnis.entries[33].Value).size(), 128LL * 1024 * 1024 - 33 * Laenge);
    EXPECT_EQ(ergebnis.entries[34], Exif_Entry());
  }
}

TEST_F(ExifGrenzen, DecimalTextEndsAt256MbToo) {
  constexpr qsizetype Laenge = 6'000'000;
  ExifBauer b(Folge::Motorola);
  b.verzeichnis();
  for (int i = 0; i < 10; ++i) b.zahl(1000 + i, i % 2 == 0 ? 3 : 1, Laenge, 400);
  const Ladeergebnis ergebnis = lade_Bytes(datei(b.tiff()) + QByteArray(Laenge + 400, '\xC8'));
  EXPECT_TRUE(ergebnis.load);
  EXPECT_LE(textlaenge(ergebnis), 128LL * 1024 * 1024);
  EXPECT_GT(textlaenge(ergebnis), 128LL * 1024 * 1024 - 3);
  EXPECT_EQ(ergebnis.entries.at(8), Exif_Entry());
}

TEST_F(ExifGrenzen, AHugeCountReadsNoFurtherThanTheFile) {
  for (const int format : {1, 2, 7}) {
    ExifBauer b(Folge::Intel);
    b.verzeichnis().zahl(700, format, 0x7FFFFFFF, 0);
    const Ladeergebnis ergebnis = lade_Bytes(b.jpeg());
    EXPECT_TRUE(ergebnis.load);
    EXPECT_GT(textlaenge(ergebnis), 0);
    EXPECT_EQ(ergebnis, referenz(b.jpeg()));
  }
}

TEST_F(ExifGrenzen, ValuesAllOverALargeFileAreReadRight) {
  // More blocks than are kept at a time, in an order that drives each of them out again.
  constexpr std::uint32_t Abstand = 16 * 1024 * 1024;
  ExifBauer b(Folge::Motorola);
  b.verzeichnis();
  for (std::uint32_t runde = 0; runde < 300; ++runde) b.zahl(1000, 7, 8, 4096 + runde % 3 * Abstand);
  QByteArray bytes = datei(b.tiff()) + QByteArray(3 * Abstand, '-');
  for (qsizetype i = 0; i < 3; ++i) bytes.replace(12 + 4096 + i * Abstand, 8, "Stelle "_ba + QByteArray::number(i));
  const Ladeergebnis ergebnis = lade_Bytes(bytes);
  ASSERT_EQ(ergebnis.entries.size(), 300U);
  for (std::size_t i = 0; i < 300; ++i) EXPECT_EQ(ergebnis.entries[i].Value, Variant(u"Stelle %1"_s.arg(i % 3))) << i;
}

}  // namespace
