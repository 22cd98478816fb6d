#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <array>

#include "platform/files/Binaerdatei.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

class BinaerdateiTest : public ::testing::Test {
 protected:
  Bildwurzel wurzel;
  Binaerdatei datei;
};

TEST_F(BinaerdateiTest, BytesAreReadAtAnyPositionAndFewerOnlyAtTheEnd) {
  wurzel.schreibe(u"a"_s, "0123456789");
  datei.oeffne_Binaer(u"P:\\a"_s);
  EXPECT_EQ(datei.laenge(), 10);
  std::array<std::byte, 4> puffer{};
  EXPECT_EQ(datei.lies(3, puffer), 4U);
  EXPECT_EQ(puffer[0], std::byte{'3'});
  EXPECT_EQ(datei.lies(8, puffer), 2U);
  EXPECT_EQ(datei.lies(99, puffer), 0U);
}

TEST_F(BinaerdateiTest, AMissingFileIsMadeByTheBinaryOpeningOnly) {
  EXPECT_EQ(Fehlernummer_von([&] { datei.oeffne_lesend(u"P:\\neu"_s); }), 53);
  EXPECT_FALSE(wurzel.vorhanden(u"neu"_s));
  datei.oeffne_Binaer(u"P:\\neu"_s);
  EXPECT_EQ(datei.laenge(), 0);
  EXPECT_EQ(wurzel.lies(u"neu"_s), QByteArray());
  EXPECT_EQ(Fehlernummer_von([&] { datei.oeffne_Binaer(u"P:\\fehlt\\neu"_s); }), 76);
}

TEST_F(BinaerdateiTest, AReadOnlyFileIsReadAndItsDateStays) {
  const QString ort = wurzel.schreibe(u"a"_s, "xyz");
  ASSERT_EQ(::chmod(QFile::encodeName(ort).constData(), 0444), 0);
  datei.oeffne_Binaer(u"P:\\a"_s);
  EXPECT_EQ(datei.laenge(), 3);
}

TEST_F(BinaerdateiTest, AFolderAnUnreadableFileAndAFifoAreRefusedAtOnce) {
  wurzel.schreibe(u"o/x"_s, "1");
  const QString ort = wurzel.schreibe(u"geheim"_s, "xyz");
  ASSERT_EQ(::chmod(QFile::encodeName(ort).constData(), 0222), 0);
  ASSERT_EQ(::mkfifo(QFile::encodeName(wurzel.pfad(u"fifo"_s)).constData(), 0666), 0);
  EXPECT_EQ(Fehlernummer_von([&] { datei.oeffne_Binaer(u"P:\\o"_s); }), 75);
  EXPECT_EQ(Fehlernummer_von([&] { datei.oeffne_Binaer(u"P:\\geheim"_s); }), 70);
  EXPECT_EQ(Fehlernummer_von([&] { datei.oeffne_Binaer(u"P:\\fifo"_s); }), 75);
}
