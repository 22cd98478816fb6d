#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDirIterator>
#include <QFile>

#include "tests/exif/ExifBauer.h"
#include "tests/exif/Referenz.h"
#include "tests/exif/Speicherdatei.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

// The reader and the plain one over the whole file must agree on every input, failures included.

namespace {

QByteArray als_Bytes(const std::vector<std::uint8_t>& bytes) {
  return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

bool stimmen_ueberein(const QByteArray& bytes) {
  const Speicherdatei datei;
  return lade(datei.fuelle(bytes)) == referenz(bytes);
}

/// A file of every shape of value, small enough to be changed at each of its bytes.
QByteArray vielerlei(Folge folge) {
  ExifBauer b(folge);
  b.verzeichnis().daten(271, 2, 7, "Kamera").feld(274, 3, 1, b.w16(1)).daten(282, 5, 1, b.bruch(72, 1)).zeiger();
  b.verzeichnis().daten(258, 3, 3, "\x08\x01\x08\x02\x08\x03"_ba).zahl(513, 4, 1, 400);
  b.unterverzeichnis().feld(36864, 7, 4, "0220").daten(37500, 7, 9, "Notizen 1").feld(41728, 1, 1, "\x03");
  b.daten(37380, 10, 1, b.bruch(3, 2)).daten(41985, 4, 3, "abcdefghijkl").daten(37121, 1, 6, "\1\2\3\4\5\6");
  return b.jpeg();
}

TEST(ExifVergleich, TheSamplesAreReadToTheirEnd) {
  for (const Folge folge : {Folge::Intel, Folge::Motorola}) {
    const Ladeergebnis ergebnis = referenz(vielerlei(folge));
    EXPECT_TRUE(ergebnis.load);
    ASSERT_EQ(ergebnis.entries.size(), 12U);
    EXPECT_FALSE(std::holds_alternative<Empty>(ergebnis.entries.back().Value));
  }
}

TEST(ExifVergleich, AFileCutShortAtAnyByteGivesTheSame) {
  const Speicherdatei datei;
  for (const QByteArray& ganz : {vielerlei(Folge::Intel), vielerlei(Folge::Motorola), kamerabild(Folge::Intel)}) {
    for (qsizetype laenge = 0; laenge < ganz.size(); ++laenge) {
      const QByteArray bytes = ganz.left(laenge);
      ASSERT_EQ(lade(datei.fuelle(bytes)), referenz(bytes)) << "cut at " << laenge;
    }
  }
}

TEST(ExifVergleich, AnyByteSetToAValueThatHurtsGivesTheSame) {
  const Speicherdatei datei;
  for (const QByteArray& ganz : {vielerlei(Folge::Intel), vielerlei(Folge::Motorola)}) {
    for (qsizetype i = 0; i < ganz.size(); ++i) {
      for (const char wert : {'\0', '\1', '\x0C', '\x7F', '\x80', '\xFF'}) {
        QByteArray bytes = ganz;
        bytes[i] = wert;
        ASSERT_EQ(lade(datei.fuelle(bytes)), referenz(bytes)) << "byte " << i << " = " << int{wert};
      }
    }
  }
}

RC_GTEST_PROP(ExifVergleich, AnyBytesGiveTheSame, (const std::vector<std::uint8_t>& bytes)) {
  RC_ASSERT(stimmen_ueberein(als_Bytes(bytes)));
}

RC_GTEST_PROP(ExifVergleich, AnyTiffStructureGivesTheSame, (const std::vector<std::uint8_t>& bytes, bool intel)) {
  const QByteArray kopf = intel ? QByteArray("II*\0\x08\0\0\0", 8) : QByteArray("MM\0*\0\0\0\x08", 8);
  RC_ASSERT(stimmen_ueberein("\xFF\xD8"_ba + ExifBauer::segment(kopf + als_Bytes(bytes))));
}

RC_GTEST_PROP(ExifVergleich, AValidFileWithChangedBytesGivesTheSame, ()) {
  const bool intel = *rc::gen::arbitrary<bool>();
  QByteArray bytes = kamerabild(intel ? Folge::Intel : Folge::Motorola);
  const int anzahl = *rc::gen::inRange(1, 20);
  for (int i = 0; i < anzahl; ++i)
    bytes[*rc::gen::inRange<qsizetype>(0, bytes.size())] = static_cast<char>(*rc::gen::arbitrary<std::uint8_t>());
  if (*rc::gen::inRange(0, 4) == 0) bytes.truncate(*rc::gen::inRange<qsizetype>(0, bytes.size()));
  RC_ASSERT(stimmen_ueberein(bytes));
}

void vergleiche_Ordner(const QString& quelle) {
  const Speicherdatei kopie;
  int gelesen = 0;
  QDirIterator dateien(quelle, QDir::Files);
  while (dateien.hasNext()) {
    const QString pfad = dateien.next();
    QFile datei(pfad);
    ASSERT_TRUE(datei.open(QIODevice::ReadOnly)) << pfad.toStdString();
    const QByteArray bytes = datei.readAll();
    EXPECT_EQ(lade(kopie.fuelle(bytes)), referenz(bytes)) << pfad.toStdString();
    ++gelesen;
  }
  EXPECT_GT(gelesen, 0);
}

TEST(ExifVergleich, PicturesOfRealCamerasGiveTheSame) {
  BRAUCHT_TESTDATEN();
  vergleiche_Ordner(testdaten(u"bilder/kameras"_s));
}

TEST(ExifVergleich, PicturesOfSpecialCodingsGiveTheSame) {
  BRAUCHT_TESTDATEN();
  vergleiche_Ordner(testdaten(u"bilder/sonderfaelle"_s));
}

}  // namespace
