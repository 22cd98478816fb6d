#include <sys/stat.h>
#include <utime.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/miniatur/Eintragsort.h"
#include "tests/platform/gdiplus/miniatur/Ablagetest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Miniatur = Ablage;

mode_t rechte(const QString& pfad) {
  struct stat s {};
  EXPECT_EQ(::stat(QFile::encodeName(pfad).constData(), &s), 0) << qUtf8Printable(pfad);
  return s.st_mode & 07777U;
}

TEST(Miniaturname, IsThatOfThePublishedExample) {
  EXPECT_EQ(miniatur::eintragsname("file:///home/jens/photos/me.png"), "c6ee772d9e49320e97ec29a7eb5b1697.png");
}

TEST(Miniaturname, AddressesLeaveStandWhatAPathMayHoldAndCodeAllOtherBytes) {
  EXPECT_EQ(miniatur::adresse("/a/!$&'()*+,-./09:=@AZ_az~"), "file:///a/!$&'()*+,-./09:=@AZ_az~");
  EXPECT_EQ(miniatur::adresse("/B\xC3\xA4"
                              "d; #1%?[x].jpg\xFF"),
      "file:///B%C3%A4d%3B%20%231%25%3F%5Bx%5D.jpg%FF");
}

TEST(Miniaturname, TheCacheFolderComesFromTheEnvironmentWhereThatIsAbsolute) {
  const auto heim = [](const QByteArray& cache, const QByteArray& home) {
    const QByteArray c = qgetenv("XDG_CACHE_HOME");
    const QByteArray h = qgetenv("HOME");
    cache.isNull() ? qunsetenv("XDG_CACHE_HOME") : qputenv("XDG_CACHE_HOME", cache);
    home.isNull() ? qunsetenv("HOME") : qputenv("HOME", home);
    const QByteArray ergebnis = miniatur::cacheheim_der_Umgebung();
    qputenv("XDG_CACHE_HOME", c);
    qputenv("HOME", h);
    return ergebnis;
  };
  EXPECT_EQ(heim("/srv/cache", "/home/a"), "/srv/cache");
  EXPECT_EQ(heim("cache", "/home/a"), "/home/a/.cache");
  EXPECT_EQ(heim({}, "/home/a"), "/home/a/.cache");
  EXPECT_EQ(heim({}, {}), "");
  EXPECT_EQ(heim("cache", "a"), "");
}

TEST_F(Miniatur, AnEntryHoldsWhatTheStandardAsksForAndAnotherReaderReadsIt) {
  ASSERT_TRUE(merke(256));
  const QImage fremd(eintrag(u"thumbnails/large"_s), "png");
  EXPECT_EQ(fremd.size(), QSize(256, 192));
  EXPECT_EQ(fremd.format(), QImage::Format_RGB32) << "8 bits, three colours";
  EXPECT_EQ(fremd.text(u"Thumb::URI"_s), u"file://"_s + ordner.pfad(u"bild.jpg"_s));
  EXPECT_EQ(fremd.text(u"Thumb::MTime"_s), u"1700000000"_s);
  EXPECT_EQ(fremd.text(u"Thumb::Size"_s), u"123456"_s);
  EXPECT_EQ(fremd.text(u"Thumb::Mimetype"_s), u"image/jpeg"_s);
  EXPECT_EQ(fremd.text(u"Thumb::Image::Width"_s), u"4000"_s);
  EXPECT_EQ(fremd.text(u"Thumb::Image::Height"_s), u"3000"_s);
  EXPECT_EQ(fremd.text(u"Software"_s), u"KVOBildZuordnung"_s);
  EXPECT_EQ(fremd, pixel(256)) << "the pixels came as large as the entry";
  EXPECT_EQ(ablage.suche(datei(), {64, 48}).size(), QSize(256, 192));
}

TEST_F(Miniatur, FilesAndFoldersAreForTheirOwnerAlone) {
  const mode_t vorher = ::umask(0);
  const bool gut = merke(128) && merke(256, true) && ablage.merke_Fehlschlag(datei(), 13, {});
  ::umask(vorher);
  ASSERT_TRUE(gut);
  int dateien = 0;
  for (QDirIterator i(
           cacheheim(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
       i.hasNext();) {
    const QString pfad = i.next();
    const bool ist_Datei = QFileInfo(pfad).isFile();
    EXPECT_EQ(rechte(pfad), ist_Datei ? 0600U : 0700U) << qUtf8Printable(pfad);
    dateien += ist_Datei ? 1 : 0;
  }
  EXPECT_EQ(dateien, 3) << "and no file under a name of its own is left";
}

TEST_F(Miniatur, EachEdgeHasItsFolder) {
  const std::pair<int, QString> alle[] = {
      {128, u"normal"_s}, {256, u"large"_s}, {512, u"x-large"_s}, {1024, u"xx-large"_s}};
  for (const auto& [kante, name] : alle) {
    EXPECT_TRUE(merke(kante));
    EXPECT_EQ(QImage(eintrag(u"thumbnails/"_s + name)).width(), kante);
  }
  EXPECT_FALSE(merke(300));
}

TEST_F(Miniatur, WhatFileManagersWouldShowInAnotherWayGoesToOurOwnFolder) {
  ASSERT_TRUE(merke(256, true));
  EXPECT_FALSE(QFileInfo::exists(eintrag(u"thumbnails/large"_s)));
  EXPECT_TRUE(QFileInfo::exists(eintrag(u"kvobildzuordnung/thumbnails/large"_s)));
  EXPECT_FALSE(ablage.suche(datei(), Liste).isNull());
  const Bildkopf png = kopf(Original, Bildformat::Png);
  ASSERT_TRUE(ablage.merke(datei(), png, pixel(512), 512, false)) << "may be transparent";
  EXPECT_FALSE(QFileInfo::exists(eintrag(u"thumbnails/x-large"_s)));
}

TEST_F(Miniatur, AnEntryIsNeverAsLargeAsItsOriginalNorMadeFromFewerPixels) {
  EXPECT_FALSE(ablage.merke(datei(), kopf({256, 192}), pixel(256), 256, false));
  EXPECT_TRUE(ablage.merke(datei(), kopf({257, 193}), pixel(256), 256, false));
  EXPECT_FALSE(ablage.merke(datei(), kopf(), vorlagen::foto({255, 192}), 256, false));
  EXPECT_FALSE(ablage.merke(datei(), kopf(), QImage(), 256, false));
  EXPECT_FALSE(ablage.merke(datei(), kopf(), vorlagen::foto({400, 400}), 256, false)) << "not its proportions";
  EXPECT_FALSE(ablage.merke(datei(), bildkopf::defekt(Bildformat::Jpeg), pixel(256), 256, false));
}

TEST_F(Miniatur, NeverForFilesInsideTheCacheByWhateverLinks) {
  ASSERT_TRUE(merke(256));
  const QString innen = eintrag(u"thumbnails/large"_s);
  ASSERT_TRUE(QFile::link(QFileInfo(innen).path(), ordner.pfad(u"verweis"_s)));
  ASSERT_TRUE(QFile::link(innen, ordner.pfad(u"eintrag.png"_s)));
  const QString ueber_Ordner = ordner.pfad(u"verweis/"_s + QFileInfo(innen).fileName());
  for (const QString& pfad : {innen, ueber_Ordner, ordner.pfad(u"eintrag.png"_s)}) {
    Miniaturablage::Datei d = datei();
    d.ort = QFile::encodeName(pfad);
    EXPECT_FALSE(ablage.merke(d, kopf(), pixel(256), 256, false)) << qUtf8Printable(pfad);
    EXPECT_FALSE(ablage.merke_Fehlschlag(d, 13, {})) << qUtf8Printable(pfad);
  }
  EXPECT_FALSE(ablage.merke(datei(u"fehlt.jpg"_s), kopf(), pixel(256), 256, false)) << "nobody knows where it lies";
}

TEST_F(Miniatur, AFileThatChangedWithinTwoSecondsIsNotKept) {
  Miniaturablage::Datei d = datei();
  d.gesehen_ns = Geaendert + 2 * Sekunde - 1;
  EXPECT_FALSE(ablage.merke(d, kopf(), pixel(256), 256, false));
  EXPECT_FALSE(ablage.merke_Fehlschlag(d, 13, {}));
  d.gesehen_ns = Geaendert - 3600 * Sekunde;
  EXPECT_FALSE(ablage.merke(d, kopf(), pixel(256), 256, false)) << "its clock is ahead";
  d.gesehen_ns = Geaendert + 2 * Sekunde;
  EXPECT_TRUE(ablage.merke(d, kopf(), pixel(256), 256, false));
  EXPECT_FALSE(ablage.suche(datei(), Liste).isNull());
}

TEST_F(Miniatur, OnlyTheSameStateOfTheFileIsServed) {
  ASSERT_TRUE(merke(256));
  ASSERT_TRUE(ablage.merke_Fehlschlag(datei(), gdiplus::InvalidParameter, kopf())) << "a later entry of the same state";
  const auto anders = [&](auto aendere) {
    Miniaturablage::Datei d = datei();
    aendere(d);
    EXPECT_TRUE(ablage.suche(d, Liste).isNull());
    EXPECT_FALSE(ablage.kopf(d));
  };
  anders([](auto& d) { d.geaendert_ns += Sekunde; });
  anders([](auto& d) { d.geaendert_ns -= 1; });
  anders([](auto& d) { d.laenge += 1; });
  anders([](auto& d) { d.ort += "x"; });
  anders([](auto& d) { d.ort = d.ort.mid(1); });
}

TEST_F(Miniatur, TheSmallestEntryThatReachesIsServedAndNeverOneThatIsTooSmall) {
  ASSERT_TRUE(merke(128) && merke(256) && merke(1024));
  const auto groesse = [&](QSize ziel) { return ablage.suche(datei(), ziel).size(); };
  // At 1/8 the original is decoded at 500 x 375, which is what an entry that is much larger comes reduced to.
  EXPECT_EQ(groesse({64, 48}), QSize(128, 96));
  EXPECT_EQ(groesse({65, 48}), QSize(256, 192));
  EXPECT_EQ(groesse(Liste), QSize(256, 192));
  EXPECT_EQ(groesse({128, 128}), QSize(256, 192));
  EXPECT_EQ(groesse({129, 129}), QSize(500, 375)) << "from the largest, as large as it would be decoded";
  EXPECT_EQ(groesse({600, 450}), QSize(1024, 768));
  EXPECT_EQ(groesse({819, 614}), QSize(1024, 768));
  EXPECT_TRUE(groesse({820, 614}).isEmpty());
  EXPECT_TRUE(groesse({}).isEmpty());
}

TEST_F(Miniatur, TheEdgeForWhatIsShownGoesByTheProportionsAndPaysOnlyForLargeOriginals) {
  const auto kante = [](QSize ziel, QSize groesse) { return Miniaturablage::kante_fuer(ziel, groesse); };
  EXPECT_EQ(kante(Liste, {4032, 3024}), 256);
  EXPECT_EQ(kante(Liste, {3024, 4032}), 256);
  EXPECT_EQ(kante(Liste, {4000, 2250}), 256) << "16:9";
  EXPECT_EQ(kante(Liste, {8000, 2000}), 1024) << "4:1: 512 would be 128 high";
  EXPECT_EQ(kante(Liste, {12000, 1000}), 0);
  EXPECT_EQ(kante({60, 45}, {4032, 3024}), 128);
  EXPECT_EQ(kante({700, 525}, {4032, 3024}), 1024);
  EXPECT_EQ(kante({900, 675}, {4032, 3024}), 0);
  EXPECT_EQ(kante(Liste, {768, 576}), 256);
  EXPECT_EQ(kante(Liste, {767, 576}), 0) << "hardly larger than its entry";
  EXPECT_EQ(kante({}, {4032, 3024}), 0);
  EXPECT_EQ(kante(Liste, {}), 0);
}

TEST_F(Miniatur, TheHeaderComesFromAnyEntry) {
  EXPECT_FALSE(ablage.kopf(datei()));
  ASSERT_TRUE(merke(1024, true));
  const auto bekannt = ablage.kopf(datei());
  ASSERT_TRUE(bekannt);
  EXPECT_EQ(bekannt->kopf.groesse, Original);
  EXPECT_EQ(bekannt->kopf.format, Bildformat::Jpeg);
  EXPECT_EQ(bekannt->kopf.befund, Kopfbefund::Ok);
  EXPECT_EQ(bekannt->status, 0);
  EXPECT_FALSE(bekannt->fehlschlag);
  Bildkopf ico = kopf(Original, Bildformat::Ico);
  ico.nummer = 3;
  ordner.schreibe(u"a.ico"_s, "x");
  ASSERT_TRUE(ablage.merke(datei(u"a.ico"_s), ico, pixel(256), 256, false));
  EXPECT_EQ(ablage.kopf(datei(u"a.ico"_s)).value_or(Miniaturablage::Auskunft()).kopf.nummer, 3);
}

TEST_F(Miniatur, AFailureIsKeptWithItsStatusAndGivesNoPixels) {
  struct Fall {
    Bildkopf kopf;
    std::int32_t status;
    bool erlaubt;
  };
  const Bildkopf zu_gross{Bildformat::Png, Kopfbefund::ZuGross, {100000, 100000}, 0};
  const Fall alle[] = {{{}, gdiplus::UnknownImageFormat, true},
      {bildkopf::defekt(Bildformat::Tiff), gdiplus::InvalidParameter, true}, {zu_gross, gdiplus::OutOfMemory, true},
      {kopf(), gdiplus::InvalidParameter, true}, {kopf(), gdiplus::Ok, true},
      // What tells of the way to the file may be over the next time.
      {{}, gdiplus::FileNotFound, false}, {{}, gdiplus::AccessDenied, false}, {{}, gdiplus::OutOfMemory, false},
      {{}, gdiplus::Win32Error, false}, {kopf(), gdiplus::OutOfMemory, false}, {zu_gross, gdiplus::Ok, false}};
  for (const Fall& fall : alle) {
    ablage.vergiss(datei().ort);
    ablage.uhr([] { return Geaendert + 7200 * Sekunde; });
    EXPECT_EQ(ablage.merke_Fehlschlag(datei(), fall.status, fall.kopf), fall.erlaubt) << fall.status;
    const auto bekannt = ablage.kopf(datei());
    ASSERT_EQ(bekannt.has_value(), fall.erlaubt) << fall.status;
    EXPECT_TRUE(ablage.suche(datei(), {1, 1}).isNull());
    ablage.uhr([] { return Geaendert + 3600 * Sekunde; });
    if (!bekannt) continue;
    EXPECT_EQ(bekannt->status, fall.status);
    EXPECT_TRUE(bekannt->fehlschlag);
    EXPECT_EQ(bekannt->kopf.format, fall.kopf.format);
    EXPECT_EQ(bekannt->kopf.befund, fall.kopf.befund);
    EXPECT_EQ(bekannt->kopf.groesse, fall.kopf.groesse);
  }
  EXPECT_EQ(QDir(cacheheim() + u"/thumbnails/fail"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
      QStringList(u"kvobildzuordnung-1"_s));
}

TEST_F(Miniatur, ForgettingTakesAllOursAndLeavesWhatIsOfOthers) {
  ordner.schreibe(u"anderes.jpg"_s, "x");
  ASSERT_TRUE(ablage.merke(datei(u"anderes.jpg"_s), kopf(), pixel(256), 256, false));
  for (const int kante : {128, 256, 512, 1024}) ASSERT_TRUE(merke(kante) && merke(kante, true));
  ASSERT_TRUE(ablage.merke_Fehlschlag(datei(), 0, kopf()));
  Stuecke fremd = zerlegt(lies(eintrag(u"thumbnails/large"_s)));
  for (auto& [art, inhalt] : fremd)
    if (inhalt.startsWith("Software")) inhalt = QByteArray("Software\0Somebody", 17);
  schreibe(eintrag(u"thumbnails/large"_s), zusammen(fremd));
  ablage.vergiss(datei().ort);
  QStringList uebrig;
  for (QDirIterator i(cacheheim(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); i.hasNext();)
    uebrig += i.next();
  uebrig.sort();
  QStringList erwartet{eintrag(u"thumbnails/large"_s), eintrag(u"thumbnails/large"_s, u"anderes.jpg"_s)};
  erwartet.sort();
  EXPECT_EQ(uebrig, erwartet);
}

TEST_F(Miniatur, WhatWasSeenBeforeAFileWasForgottenIsNotWrittenAfterIt) {
  Miniaturablage::Datei d = datei();
  d.gesehen_ns = ablage.jetzt();
  ablage.vergiss(d.ort);
  EXPECT_FALSE(ablage.merke(d, kopf(), pixel(256), 256, false)) << "pixels of the picture before it was turned";
  EXPECT_FALSE(QFileInfo::exists(eintrag(u"thumbnails/large"_s)));
  EXPECT_TRUE(
      QDir(cacheheim() + u"/thumbnails/large"_s).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  ++d.gesehen_ns;
  EXPECT_TRUE(ablage.merke(d, kopf(), pixel(256), 256, false));
}

TEST_F(Miniatur, OurOwnFolderIsKeptWithinBoundsAndTheOldestGoFirst) {
  const QByteArray eigen = miniatur::ordner_in(QFile::encodeName(cacheheim())).eigen;
  for (int i = 0; i < 8; ++i) {
    const QString name = QString::number(i) + u".jpg"_s;
    ordner.schreibe(name, "x");
    ASSERT_TRUE(ablage.merke(datei(name), kopf(), pixel(i % 2 == 0 ? 128 : 256), i % 2 == 0 ? 128 : 256, true));
    const QString pfad = eintrag(u"kvobildzuordnung/thumbnails/"_s + (i % 2 == 0 ? u"normal"_s : u"large"_s), name);
    const utimbuf zeit{1000 + i, 1000 + i};
    ASSERT_EQ(::utime(QFile::encodeName(pfad).constData(), &zeit), 0);
    schreibe(pfad, QByteArray(1000, 'x'));
    ASSERT_EQ(::utime(QFile::encodeName(pfad).constData(), &zeit), 0);
  }
  const auto uebrig = [&] {
    QStringList namen;
    for (int i = 0; i < 8; ++i) {
      const QString name = QString::number(i) + u".jpg"_s;
      for (const QString& art : {u"normal"_s, u"large"_s})
        if (QFileInfo::exists(eintrag(u"kvobildzuordnung/thumbnails/"_s + art, name))) namen += QString::number(i);
    }
    return namen.join(u' ');
  };
  miniatur::kuerze(eigen, 8000);
  EXPECT_EQ(uebrig(), u"0 1 2 3 4 5 6 7"_s);
  miniatur::kuerze(eigen, 4000);
  EXPECT_EQ(uebrig(), u"5 6 7"_s);
}

// Each size that is shown, from each entry that reaches for it, beside what is shown without.
TEST_F(Miniatur, WhatIsShownFromAnEntryIsLikeTheOriginalInEveryShape) {
  for (const QSize groesse : {QSize(2000, 1500), QSize(1500, 2000), QSize(2000, 500), QSize(500, 2000)}) {
    const QByteArray bytes = vorlagen::jpeg(vorlagen::foto(groesse));
    ablage.vergiss(datei().ort);
    ablage.uhr([] { return Geaendert + 7200 * Sekunde; });
    for (const int kante : {128, 256, 512}) {
      const QImage reduziert = jpegdekoder::dekodiere(bytes, Miniaturablage::groesse_des_Eintrags(groesse, kante));
      ASSERT_TRUE(ablage.merke(datei(), kopf(groesse), reduziert, kante, false));
    }
    int gezeigte = 0;
    for (const QSize& platz : {QSize(40, 40), Liste, QSize(120, 90), QSize(200, 150), QSize(300, 300)}) {
      for (const QSize& ziel : {platz, groesse.scaled(platz, Qt::KeepAspectRatio)}) {
        const QImage gefunden = ablage.suche(datei(), ziel);
        if (gefunden.isNull()) continue;
        const QImage ohne = bilddekoder::auf_Groesse(jpegdekoder::dekodiere(bytes, ziel), ziel);
        EXPECT_GE(vorlagen::psnr(bilddekoder::auf_Groesse(gefunden, ziel), ohne), 35)
            << ziel.width() << 'x' << ziel.height() << " of " << groesse.width() << 'x' << groesse.height();
        ++gezeigte;
      }
    }
    EXPECT_GE(gezeigte, 6);
    ablage.uhr([] { return Geaendert + 3600 * Sekunde; });
  }
}

}  // namespace
