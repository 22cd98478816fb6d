#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <functional>

#include "tests/platform/gdiplus/miniatur/Ablagetest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// A good entry whose file is then something else. Nothing of it may be served.
class Vergiftet : public Ablage {
 protected:
  Vergiftet() {
    EXPECT_TRUE(merke(256));
    pfad_ = eintrag(u"thumbnails/large"_s);
    gut_ = lies(pfad_);
  }
  bool gibt_etwas() { return !ablage.suche(datei(), Liste).isNull() || ablage.kopf(datei()).has_value(); }
  bool gibt_Pixel() { return !ablage.suche(datei(), Liste).isNull(); }
  void setze_ein(const QByteArray& bytes) { schreibe(pfad_, bytes); }
  void setze_ein(const std::function<void(Stuecke&)>& aendere) {
    Stuecke stuecke = zerlegt(gut_);
    aendere(stuecke);
    setze_ein(zusammen(stuecke));
  }
  static QByteArray text(const QByteArray& schluessel, const QByteArray& wert) { return schluessel + '\0' + wert; }
  static void setze_Text(Stuecke& alle, const QByteArray& schluessel, const QByteArray& wert) {
    const auto b =
        std::find_if(alle.begin(), alle.end(), [&](const auto& s) { return s.second.startsWith(schluessel + '\0'); });
    ASSERT_NE(b, alle.end()) << schluessel.constData();
    b->second = text(schluessel, wert);
  }

  QString pfad_;
  QByteArray gut_;
};

TEST_F(Vergiftet, TheSameChunksPutTogetherAgainAreServed) {
  setze_ein([](Stuecke&) {});
  EXPECT_TRUE(gibt_Pixel());
}

TEST_F(Vergiftet, ATruncatedEntryGivesNoPixels) {
  for (qsizetype laenge = 0; laenge < gut_.size(); laenge += laenge < 1200 ? 1 : 997) {
    setze_ein(gut_.first(laenge));
    EXPECT_FALSE(gibt_Pixel()) << laenge;
  }
  setze_ein(gut_.first(gut_.size() - 1));
  EXPECT_FALSE(gibt_Pixel());
  setze_ein(gut_ + 'x');
  EXPECT_FALSE(gibt_Pixel());
}

TEST_F(Vergiftet, EachByteOfTheHeaderThatIsWrongKeepsItFromBeingServed) {
  const qsizetype pixel_ab = gut_.indexOf("IDAT") - 4;
  for (qsizetype i = 0; i < pixel_ab + 8; ++i) {
    QByteArray falsch = gut_;
    falsch[i] = static_cast<char>(falsch[i] ^ 1);
    setze_ein(falsch);
    EXPECT_FALSE(gibt_Pixel()) << i;
  }
}

TEST_F(Vergiftet, PixelsThatAreWrongAreNotServed) {
  for (qsizetype i = gut_.indexOf("IDAT") + 4; i < gut_.size(); i += 1009) {
    QByteArray falsch = gut_;
    falsch[i] = static_cast<char>(falsch[i] ^ 16);
    setze_ein(falsch);
    EXPECT_FALSE(gibt_Pixel()) << i;
  }
  setze_ein([](Stuecke& s) {
    for (auto& [art, inhalt] : s)
      if (art == "IDAT") inhalt.chop(inhalt.size() / 2);
  });
  EXPECT_FALSE(gibt_Pixel()) << "sound chunks, but half of the pixels";
  setze_ein([](Stuecke& s) { s.removeIf([](const auto& stueck) { return stueck.first == "IDAT"; }); });
  EXPECT_FALSE(gibt_Pixel());
}

TEST_F(Vergiftet, AnotherSizeThanThatOfTheFolderAndTheProportionsIsNotServed) {
  const auto mit_Groesse = [&](const QByteArray& acht_Bytes) {
    setze_ein([&](Stuecke& s) { s[0].second.replace(0, 8, acht_Bytes); });
  };
  for (const QByteArray& groesse : {QByteArray("\0\0\xEA\x60\0\0\xEA\x60", 8), QByteArray("\0\0\0\0\0\0\0\0", 8),
           QByteArray("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 8), QByteArray("\0\0\1\1\0\0\0\xC0", 8),
           QByteArray("\0\0\1\0\0\0\0\xC1", 8), QByteArray("\0\0\0\x80\0\0\0\x60", 8)}) {
    mit_Groesse(groesse);
    EXPECT_FALSE(gibt_etwas()) << groesse.toHex().constData();
  }
  ASSERT_TRUE(merke(512));
  ASSERT_TRUE(QFile::remove(pfad_));
  ASSERT_TRUE(QFile::rename(eintrag(u"thumbnails/x-large"_s), pfad_));
  EXPECT_FALSE(gibt_etwas()) << "an entry of the next size";
}

TEST_F(Vergiftet, OnlyEightBitsThreeColoursAndNoInterlacingAreRead) {
  for (qsizetype i = 8; i < 13; ++i)
    for (const char wert : {'\0', '\1', '\3', '\4', '\6', '\x10'}) {
      if (zerlegt(gut_)[0].second[i] == wert) continue;
      setze_ein([&](Stuecke& s) { s[0].second[i] = wert; });
      EXPECT_FALSE(gibt_etwas()) << i << ' ' << int{wert};
    }
}

TEST_F(Vergiftet, EachTextMustBeThereOnceAndAgree) {
  const QByteArray ort = datei().ort;
  const std::pair<QByteArray, QByteArray> falsche[] = {{"Thumb::URI", "file://" + ort + "x"}, {"Thumb::URI", ort},
      {"Thumb::MTime", "1700000001"}, {"Thumb::MTime", "1699999999"}, {"Thumb::MTime", " 1700000000"},
      {"Thumb::MTime", "1700000000.1"}, {"Thumb::MTime", ""}, {"Thumb::Size", "123457"}, {"Thumb::Size", "123456 "},
      {"Thumb::Size", "99999999999999999999999"}, {"Thumb::Mimetype", "image/webp"}, {"Thumb::Image::Width", "4001000"},
      {"Thumb::Image::Width", "0"}, {"Thumb::Image::Width", "-4000"}, {"Thumb::Image::Height", "2900"},
      {"Thumb::Image::Height", "2147483648"}, {"Software", "Somebody"}, {"Software", "KVOBildZuordnung "},
      {"X-KVO::MTimeNs", "1700000000123456788"}, {"X-KVO::SeenNs", "0"}, {"X-KVO::SeenNs", "-9223372036854775808"},
      {"X-KVO::SeenNs", "1700000002123456788"}, {"X-KVO::Status", "3"}, {"X-KVO::Status", "2"}, {"X-KVO::Header", "1"},
      {"X-KVO::Header", "2"}, {"X-KVO::Header", "3"}, {"X-KVO::Header", "4"}, {"X-KVO::Header", "-1"},
      {"X-KVO::Index", "1"}, {"X-KVO::Index", "-1"}};
  for (const auto& falscher : falsche) {
    setze_ein([&](Stuecke& s) { setze_Text(s, falscher.first, falscher.second); });
    EXPECT_FALSE(gibt_etwas()) << falscher.first.constData() << " = " << falscher.second.constData();
  }
  const Stuecke alle = zerlegt(gut_);
  for (qsizetype i = 0; i < alle.size(); ++i) {
    if (alle[i].first != "tEXt") continue;
    setze_ein([&](Stuecke& s) { s.removeAt(i); });
    EXPECT_FALSE(gibt_etwas()) << "without " << alle[i].second.constData();
    setze_ein([&](Stuecke& s) { s.insert(i, alle[i]); });
    EXPECT_FALSE(gibt_etwas()) << "twice " << alle[i].second.constData();
  }
}

TEST_F(Vergiftet, OtherChunksAndTextsWithoutMeasureAreRefused) {
  const std::pair<QByteArray, QByteArray> weitere[] = {{"zTXt", QByteArray("a\0\0x", 4)}, {"iCCP", "x"},
      {"gAMA", QByteArray("\0\0\0\1", 4)}, {"acTL", QByteArray(8, '\0')}, {"tEXt", "without a separator"},
      {"tEXt", text("", "x")}, {"tEXt", text(QByteArray(80, 'a'), "x")}, {"tEXt", text("a", QByteArray(20000, 'x'))}};
  for (const auto& w : weitere) {
    setze_ein([&](Stuecke& s) { s.insert(1, w); });
    EXPECT_FALSE(gibt_etwas()) << w.first.constData();
    setze_ein([&](Stuecke& s) { s.insert(s.size() - 1, w); });
    EXPECT_FALSE(gibt_Pixel()) << "behind the pixels " << w.first.constData();
  }
  setze_ein([&](Stuecke& s) {
    for (int i = 0; i < 40; ++i) s.insert(1, {"tEXt", text("k" + QByteArray::number(i), "x")});
  });
  EXPECT_FALSE(gibt_etwas());
  setze_ein([&](Stuecke& s) { s.insert(1, {"tEXt", text("X-Somebody", QByteArray(10000, 'x'))}); });
  EXPECT_TRUE(gibt_Pixel()) << "one text more, as long as a path can be, does no harm";
}

TEST_F(Vergiftet, AFileOfManyMegabytesIsNotRead) {
  QFile gross(pfad_);
  ASSERT_TRUE(gross.open(QIODevice::ReadWrite));
  ASSERT_TRUE(gross.resize(9 * 1024 * 1024));
  EXPECT_FALSE(gibt_etwas());
}

TEST_F(Vergiftet, ALinkIsNotFollowedAndGivesWayToANewEntry) {
  const QString woanders = ordner.schreibe(u"woanders.png"_s, gut_);
  ASSERT_TRUE(QFile::remove(pfad_));
  ASSERT_TRUE(QFile::link(woanders, pfad_));
  EXPECT_FALSE(gibt_etwas());
  ASSERT_TRUE(merke(256));
  EXPECT_TRUE(gibt_Pixel());
  EXPECT_EQ(ordner.lies(u"woanders.png"_s), gut_) << "nothing was written through the link";
  EXPECT_FALSE(QFileInfo(pfad_).isSymLink());
}

TEST_F(Vergiftet, APipeOrAFolderInTheEntrysPlaceHoldsNobodyUp) {
  ASSERT_TRUE(QFile::remove(pfad_));
  ASSERT_EQ(::mkfifo(QFile::encodeName(pfad_).constData(), 0600), 0);
  EXPECT_FALSE(gibt_etwas());
  ablage.vergiss(datei().ort);
  ASSERT_TRUE(QFile::remove(pfad_));
  ASSERT_TRUE(QDir().mkpath(pfad_));
  EXPECT_FALSE(gibt_etwas());
  EXPECT_FALSE(merke(256)) << "a folder does not give way";
}

// The scripts run the tests as root, so that it is tried wherever they run.
TEST_F(Vergiftet, SomebodyElsesFileIsNotRead) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file to somebody else";
  ASSERT_EQ(::chown(QFile::encodeName(pfad_).constData(), 65534, 65534), 0);
  EXPECT_FALSE(gibt_etwas());
}

TEST_F(Vergiftet, AnEntryWithoutReadRightIsNone) {
  const Ohne_Vorrechte niemand(ordner.pfad());
  ASSERT_TRUE(gibt_Pixel());
  ASSERT_EQ(::chmod(QFile::encodeName(pfad_).constData(), 0), 0);
  EXPECT_FALSE(gibt_etwas());
}

TEST_F(Vergiftet, AFailureEntryMustAgreeLikeAnyOther) {
  ASSERT_TRUE(QFile::remove(pfad_));
  ASSERT_TRUE(ablage.merke_Fehlschlag(datei(), 13, {}));
  pfad_ = eintrag(u"thumbnails/fail/kvobildzuordnung-1"_s);
  gut_ = lies(pfad_);
  ASSERT_TRUE(gibt_etwas());
  for (const auto& falscher : {std::pair<QByteArray, QByteArray>{"X-KVO::Status", "12"}, {"X-KVO::Status", "0"},
           {"X-KVO::Header", "0"}, {"Thumb::MTime", "1700000001"}, {"Thumb::Size", "1"},
           {"Thumb::Mimetype", "image/png"}, {"Software", "Somebody"}}) {
    setze_ein([&](Stuecke& s) { setze_Text(s, falscher.first, falscher.second); });
    EXPECT_FALSE(gibt_etwas()) << falscher.first.constData() << " = " << falscher.second.constData();
  }
}

}  // namespace
