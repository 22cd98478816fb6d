#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <atomic>
#include <thread>
#include <vector>

#include "platform/gdiplus/miniatur/Miniaturen.h"
#include "tests/platform/gdiplus/miniatur/Ablagetest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Schalter = Ablage;

TEST_F(Schalter, SwitchedOffNothingIsReadOrWritten) {
  ASSERT_TRUE(merke(256));
  ASSERT_TRUE(ablage.ist_an());
  ablage.an(false);
  EXPECT_FALSE(ablage.ist_an());
  EXPECT_FALSE(merke(512));
  EXPECT_FALSE(ablage.merke_Fehlschlag(datei(), 13, {}));
  EXPECT_TRUE(ablage.suche(datei(), Liste).isNull());
  EXPECT_FALSE(ablage.kopf(datei()));
  EXPECT_TRUE(QFileInfo::exists(eintrag(u"thumbnails/large"_s))) << "what lies there stays";
  ablage.an(true);
  EXPECT_FALSE(ablage.suche(datei(), Liste).isNull());
}

TEST_F(Schalter, ForgettingWorksWhileItIsSwitchedOff) {
  ASSERT_TRUE(merke(256));
  ablage.an(false);
  ablage.vergiss(datei().ort);
  EXPECT_FALSE(QFileInfo::exists(eintrag(u"thumbnails/large"_s)));
}

TEST_F(Schalter, AHostsSwitchIsThatOfTheProcess) {
  ASSERT_TRUE(miniaturen::ist_an());
  miniaturen::an(false);
  EXPECT_FALSE(Miniaturablage::aktuell().ist_an());
  EXPECT_FALSE(miniaturen::ist_an());
  miniaturen::an(true);
  EXPECT_TRUE(miniaturen::ist_an());
}

TEST_F(Schalter, WithoutACacheFolderItIsOff) {
  ablage.cacheheim({});
  EXPECT_FALSE(ablage.ist_an());
  EXPECT_FALSE(merke(256));
  ablage.vergiss(datei().ort);
}

TEST_F(Schalter, AFolderThatCantBeMadeSwitchesItOff) {
  ordner.schreibe(u"datei"_s, "x");
  ablage.cacheheim(QFile::encodeName(ordner.pfad(u"datei"_s)));
  EXPECT_FALSE(ablage.ist_an());
  ablage.cacheheim("/proc/kvo");
  EXPECT_FALSE(ablage.ist_an());
  ablage.cacheheim(QFile::encodeName(ordner.pfad(u"a/b/c"_s)));
  EXPECT_TRUE(ablage.ist_an());
}

// The scripts run the tests as root, so that it is tried wherever they run.
TEST_F(Schalter, SomebodyElsesFolderSwitchesItOff) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a folder to somebody else";
  ASSERT_TRUE(QDir().mkpath(cacheheim() + u"/thumbnails"_s));
  ASSERT_EQ(::chown(QFile::encodeName(cacheheim() + u"/thumbnails"_s).constData(), 65534, 65534), 0);
  EXPECT_FALSE(ablage.ist_an());
}

TEST_F(Schalter, AFolderWithoutWriteRightSwitchesItOff) {
  const Ohne_Vorrechte niemand(ordner.pfad());
  ASSERT_TRUE(QDir().mkpath(cacheheim() + u"/thumbnails"_s));
  ASSERT_EQ(::chmod(QFile::encodeName(cacheheim() + u"/thumbnails"_s).constData(), 0500), 0);
  EXPECT_FALSE(ablage.ist_an());
  EXPECT_FALSE(merke(256));
}

TEST_F(Schalter, AFolderThatWentIsMadeAgainAndThreeFailuresInARowEndIt) {
  ASSERT_TRUE(merke(256));
  ASSERT_TRUE(QDir(cacheheim()).removeRecursively());
  EXPECT_TRUE(merke(256));
  ASSERT_TRUE(QDir(cacheheim()).removeRecursively());
  schreibe(cacheheim(), "a file in its place");
  EXPECT_FALSE(merke(256));
  EXPECT_FALSE(merke(256));
  EXPECT_TRUE(ablage.ist_an());
  EXPECT_FALSE(merke(256));
  EXPECT_FALSE(ablage.ist_an());
}

// The clock goes on by so much at each look.
std::int64_t schritt_ns = 0;
std::int64_t zeit_ns = 0;
std::int64_t langsame_Stoppuhr() {
  return zeit_ns += schritt_ns;
}

TEST_F(Schalter, AskingASlowDiskEndsIt) {
  ablage.stoppuhr(langsame_Stoppuhr);
  // Asking for the list's size opens the entries of three edges in two folders.
  schritt_ns = 4'000'000;
  for (int i = 0; i < 100; ++i) ablage.suche(datei(), Liste);
  EXPECT_TRUE(ablage.ist_an()) << "24 ms each";
  schritt_ns = 5'000'000;
  for (int i = 0; i < 8; ++i) ablage.suche(datei(), Liste);
  EXPECT_FALSE(ablage.ist_an()) << "30 ms each";
  ablage.an(true);
  EXPECT_FALSE(ablage.ist_an()) << "a host's switch does not make the disk faster";
}

TEST_F(Schalter, ASingleSlowAskingIsADiskThatWakesUp) {
  ablage.stoppuhr(langsame_Stoppuhr);
  schritt_ns = 3 * Sekunde;
  ablage.kopf(datei());
  EXPECT_TRUE(ablage.ist_an());
  ablage.kopf(datei());
  EXPECT_FALSE(ablage.ist_an());
}

TEST_F(Schalter, ManyThreadsWriteReadAndForgetAndNoEntryIsEverTorn) {
  const QImage hell = pixel(512);
  QImage dunkel = hell;
  dunkel.invertPixels();
  std::atomic<int> gelesene = 0;
  const auto schreibe_oft = [&](const QImage& bild) {
    for (int i = 0; i < 40; ++i) ablage.merke(datei(), kopf(), bild, 256, i % 2 == 0);
  };
  const auto lies_oft = [&] {
    for (int i = 0; i < 200; ++i) {
      const QImage gefunden = ablage.suche(datei(), Liste);
      if (gefunden.isNull()) continue;
      ++gelesene;
      EXPECT_EQ(gefunden.size(), QSize(256, 192));
    }
  };
  ASSERT_TRUE(merke(256));
  std::vector<std::thread> faeden;
  faeden.emplace_back(schreibe_oft, hell);
  faeden.emplace_back(schreibe_oft, dunkel);
  faeden.emplace_back(lies_oft);
  faeden.emplace_back([&] {
    for (int i = 0; i < 100; ++i) {
      ablage.kopf(datei());
      ablage.ist_an();
    }
  });
  for (std::thread& faden : faeden) faden.join();
  EXPECT_EQ(gelesene, 200) << "a reader sees the one or the other, always whole";
  ablage.vergiss(datei().ort);
  for (QDirIterator i(cacheheim(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); i.hasNext();)
    ADD_FAILURE() << "left behind: " << qUtf8Printable(i.next());
}

}  // namespace
