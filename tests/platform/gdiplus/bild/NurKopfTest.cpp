#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QtEndian>
#include <optional>
#include <thread>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;
using bildlader::NurKopf;

namespace {

struct Geoeffnet {
  std::int32_t status = -1;
  QSize groesse;
  friend bool operator==(const Geoeffnet&, const Geoeffnet&) = default;
};

void PrintTo(const Geoeffnet& g, std::ostream* os) {
  *os << "status " << g.status << ", " << g.groesse.width() << " x " << g.groesse.height();
}

Geoeffnet geoeffnet(const QString& pfad) {
  Bitmap bild;
  const std::int32_t status = GdipCreateBitmapFromFile(pfad, bild);
  return {status, bild ? bild->groesse() : QSize()};
}

Geoeffnet nur_mit_Kopf(const QString& pfad) {
  Bildspeicher::aktuell().leere();
  const NurKopf nur_Kopf;
  return geoeffnet(pfad);
}

qint64 bisher_gelesen() {
  QFile zaehler(u"/proc/self/io"_s);
  if (!zaehler.open(QIODevice::ReadOnly)) return -1;
  return zaehler.readLine().split(' ').last().trimmed().toLongLong();
}

// Segments of an application in front of the header: it then ends behind `anzahl` bytes.
QByteArray mit_spaetem_Kopf(const QByteArray& jpeg, qsizetype anzahl) {
  QByteArray fuellung;
  while (fuellung.size() < anzahl) fuellung += QByteArray("\xff\xef\xff\xf0", 4) + QByteArray(0xffee, 'x');
  return QByteArray(jpeg).insert(2, fuellung);
}

QByteArray ohne_Hoehe(QByteArray jpeg, int hoehe_am_Ende) {
  const qsizetype sof = jpeg.indexOf(QByteArray("\xff\xc0\0\x11", 4));
  jpeg[sof + 5] = jpeg[sof + 6] = 0;
  const char dnl[] = {'\xff', '\xdc', 0, 4, static_cast<char>(hoehe_am_Ende >> 8), static_cast<char>(hoehe_am_Ende)};
  return jpeg.insert(jpeg.size() - 2, QByteArrayView(dnl, sizeof dnl));
}

// Two pictures, the second of them larger and behind `abstand` bytes.
QByteArray icon_mit_fernem_Bild(qsizetype abstand) {
  const QByteArray klein = vorlagen::kodiert(vorlagen::foto({16, 16}), "ico").sliced(22);
  const QByteArray gross = vorlagen::kodiert(vorlagen::foto({40, 30}), "ico").sliced(22);
  QByteArray bytes("\0\0\1\0\2\0", 6);
  const auto verzeichne = [&](qsizetype laenge, qsizetype stelle) {
    QByteArray eintrag(16, 0);
    qToLittleEndian(static_cast<quint32>(laenge), eintrag.data() + 8);
    qToLittleEndian(static_cast<quint32>(stelle), eintrag.data() + 12);
    bytes += eintrag;
  };
  verzeichne(klein.size(), 38);
  verzeichne(gross.size(), 38 + klein.size() + abstand);
  return bytes + klein + QByteArray(abstand, 0) + gross;
}

class NurKopfTest : public Bilder {
 protected:
  static Bitmap oeffne_Kopf(const QString& pfad) {
    const NurKopf nur_Kopf;
    return oeffne(pfad);
  }
  static QByteArray einfarbig(QRgb farbe, QSize groesse = {200, 160}) {
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(farbe);
    return vorlagen::kodiert(bild, "bmp");
  }
  // The file system's clock moves in steps: writes until the file's state can be told from the one before.
  void aendere(const QString& name, const QByteArray& inhalt) const {
    const dateien::Kennung vorher = dateien::kennung(ordner.pfad(name));
    do {
      ordner.schreibe(name, inhalt);
    } while (dateien::kennung(ordner.pfad(name)).zustand_ns == vorher.zustand_ns);
  }
  void vergleiche(const QByteArray& inhalt, const char* was) const {
    const QString pfad = ordner.schreibe(u"vergleich"_s, inhalt);
    Bildspeicher::aktuell().leere();
    const Geoeffnet ganz = geoeffnet(pfad);
    EXPECT_EQ(nur_mit_Kopf(pfad), ganz) << was << ", " << inhalt.size() << " bytes";
  }
  static constexpr QRgb Rot = qRgb(255, 0, 0);
  static constexpr QRgb Blau = qRgb(0, 0, 255);
  static constexpr QRgb Schwarz = qRgb(0, 0, 0);
  static constexpr QSize Klein{50, 40};
};

TEST_F(NurKopfTest, StatusAndSizeAreTheSameForAllTestPictures) {
  BRAUCHT_TESTDATEN();
  int anzahl = 0;
  for (QDirIterator i(testdaten(u"bilder"_s), QDir::Files, QDirIterator::Subdirectories); i.hasNext(); ++anzahl) {
    const QString pfad = i.next();
    Bildspeicher::aktuell().leere();
    const Geoeffnet ganz = geoeffnet(pfad);
    EXPECT_EQ(nur_mit_Kopf(pfad), ganz) << qPrintable(pfad);
  }
  EXPECT_GT(anzahl, 150);
}

TEST_F(NurKopfTest, StatusAndSizeAreTheSameForTruncatedFiles) {
  const QImage bild = vorlagen::foto({300, 200});
  for (const QByteArray& inhalt :
      {vorlagen::jpeg(bild), vorlagen::jpeg(bild, {.progressiv = true}), vorlagen::kodiert(bild, "png"),
          vorlagen::kodiert(bild, "bmp"), vorlagen::kodiert(bild, "tiff"), vorlagen::kodiert(bild, "ico"),
          vorlagen::gif({300, 200}, 20), vorlagen::jpeg_Cmyk({30, 20}, 0x11223344, true)}) {
    const qsizetype kopf = std::min<qsizetype>(700, inhalt.size());
    for (qsizetype i = 0; i < kopf; i += i < 64 ? 1 : 7) vergleiche(inhalt.first(i), "cut in the header");
    for (qsizetype i = kopf; i < inhalt.size(); i += inhalt.size() / 5) vergleiche(inhalt.first(i), "cut behind it");
  }
}

TEST_F(NurKopfTest, StatusAndSizeAreTheSameForALateHeader) {
  const QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({300, 200}));
  for (const qsizetype stelle : {60'000, 65'000, 65'300, 130'000, 262'000, 1'100'000}) {
    const QByteArray inhalt = mit_spaetem_Kopf(jpeg, stelle);
    vergleiche(inhalt, "late header");
    const qsizetype scan = inhalt.lastIndexOf("\xff\xda");
    for (const qsizetype rest : {-200, -1, 0, 3, 13, 14, 500}) vergleiche(inhalt.first(scan + rest), "cut");
    const qsizetype tafel = inhalt.lastIndexOf(QByteArray("\xff\xc4"), scan);
    vergleiche(QByteArray(inhalt).replace(tafel + 5, 16, QByteArray(16, '\xff')), "impossible table");
  }
}

// The marker of the first scan wanders over the end of the first piece that is read.
TEST_F(NurKopfTest, StatusAndSizeAreTheSameWhereTheFirstPieceEndsInTheMiddleOfTheHeader) {
  const QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({300, 200}));
  const qsizetype scan = jpeg.indexOf("\xff\xda");
  for (qsizetype hinter = -20; hinter <= 700; hinter += hinter < 30 ? 1 : 13) {
    const qsizetype laenge = 65536 - scan + hinter - 2;
    ASSERT_GT(laenge, 4);
    QByteArray segment("\xff\xef", 2);
    segment.append(static_cast<char>(laenge >> 8)).append(static_cast<char>(laenge)).append(laenge - 2, 'x');
    vergleiche(QByteArray(jpeg).insert(2, segment), "header over the border");
  }
}

TEST_F(NurKopfTest, StatusAndSizeAreTheSameForLargeFilesOfAllFormats) {
  const QImage bild = vorlagen::foto({400, 300});
  for (const char* format : {"png", "bmp", "tiff"}) {
    const QByteArray inhalt = vorlagen::kodiert(bild, format);
    ASSERT_GT(inhalt.size(), 65536);
    vergleiche(inhalt, format);
    vergleiche(inhalt.first(inhalt.size() - 100), format);
    vergleiche(inhalt.first(65536), format);
    vergleiche(inhalt.first(65537), format);
    vergleiche(QByteArray(inhalt).replace(16, 4, QByteArray(4, '\x7f')), format);
    vergleiche(QByteArray(inhalt).replace(8, 8, QByteArray(8, '\x01')), format);
  }
  QByteArray jpeg = vorlagen::jpeg(bild) + QByteArray(200'000, 'x');
  vergleiche(jpeg, "jpeg");
  jpeg.replace(jpeg.indexOf(QByteArray("\xff\xc4", 2)) + 5, 16, QByteArray(16, '\xff'));
  vergleiche(jpeg, "jpeg with an impossible table");
  EXPECT_EQ(nur_mit_Kopf(ordner.schreibe(u"j"_s, jpeg)).status, InvalidParameter);
  vergleiche(vorlagen::gif({400, 300}, 20), "gif");
  vergleiche(icon_mit_fernem_Bild(100'000), "ico");
  vergleiche(icon_mit_fernem_Bild(100'000).first(90'000), "ico, cut");
  vergleiche(QByteArray(200'000, 'x'), "no picture");
  EXPECT_EQ(nur_mit_Kopf(ordner.schreibe(u"i"_s, icon_mit_fernem_Bild(100'000))).groesse, QSize(40, 30));
}

// A directory of many entries behind many bytes; classic and big, in both byte orders.
QByteArray tiff_mit_fernem_Verzeichnis(bool gross, bool hoch, quint64 stelle, int eintraege, qsizetype pixel) {
  const auto u = [hoch](quint64 wert, qsizetype breite) {
    QByteArray b(breite, 0);
    for (qsizetype i = 0; i < breite; ++i) b[hoch ? breite - 1 - i : i] = static_cast<char>(wert >> 8 * i);
    return b;
  };
  const auto eintrag = [&](quint64 marke, quint64 wert) {
    return u(marke, 2) + u(3, 2) + u(1, gross ? 8 : 4) + u(wert, 2) + u(0, gross ? 6 : 2);
  };
  QByteArray bytes = hoch ? "MM" : "II";
  bytes += gross ? u(43, 2) + u(8, 2) + u(0, 2) + u(stelle, 8) : u(42, 2) + u(stelle, 4);
  bytes += QByteArray(pixel - bytes.size(), 'x') + u(static_cast<quint64>(eintraege), gross ? 8 : 2);
  for (int i = 2; i < eintraege; ++i) bytes += eintrag(1, 7);
  return bytes + eintrag(256, 321) + eintrag(257, 123);
}

TEST_F(NurKopfTest, OfATiffOnlyTheDirectoryIsReadWhereverItStands) {
  constexpr qsizetype Pixel = 1'000'000;
  for (const bool gross : {false, true})
    for (const bool hoch : {false, true}) {
      for (const int eintraege : {2, 20, 9000}) {
        const QByteArray inhalt = tiff_mit_fernem_Verzeichnis(gross, hoch, Pixel, eintraege, Pixel);
        vergleiche(inhalt, "tiff");
        vergleiche(inhalt.chopped(1), "tiff, cut in the last entry");
        vergleiche(inhalt.chopped(13), "tiff, cut in the last entry but one");
        EXPECT_EQ(nur_mit_Kopf(ordner.schreibe(u"t"_s, inhalt)).groesse, QSize(321, 123)) << gross << hoch << eintraege;
      }
      for (const quint64 stelle : {quint64{0}, quint64{7}, quint64{Pixel + 100'000}, ~quint64{0}, ~quint64{0} >> 1})
        vergleiche(tiff_mit_fernem_Verzeichnis(gross, hoch, stelle, 2, Pixel), "tiff, directory elsewhere");
    }
  const QString pfad = ordner.schreibe(u"t"_s, tiff_mit_fernem_Verzeichnis(false, false, Pixel, 20, Pixel));
  const qint64 vorher = bisher_gelesen();
  EXPECT_EQ(oeffne_Kopf(pfad)->groesse(), QSize(321, 123));
  EXPECT_LT(bisher_gelesen() - vorher, 80'000);
}

TEST_F(NurKopfTest, AHeightBehindTheScanIsFoundHoweverFarAwayItStands) {
  for (const QSize groesse : {QSize(40, 30), QSize(900, 700)}) {
    const QByteArray jpeg = vorlagen::jpeg(vorlagen::foto(groesse), {.qualitaet = 98});
    const QByteArray am_Ende = ohne_Hoehe(jpeg, groesse.height());
    vergleiche(am_Ende, "height behind the scan");
    const Bitmap b = oeffne_Kopf(ordner.schreibe(u"h.jpg"_s, am_Ende));
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->groesse(), groesse);
    EXPECT_EQ(b->bild(), lade(u"g.jpg"_s, jpeg)->bild());
  }
}

TEST_F(NurKopfTest, MissingAndUnreadableFilesHaveTheSameStatus) {
  const QString geheim = ordner.schreibe(u"geheim.jpg"_s, vorlagen::jpeg(vorlagen::foto({20, 20})));
  ASSERT_TRUE(QFile::setPermissions(geheim, QFileDevice::WriteOwner));
  for (const QString& pfad : {ordner.pfad(u"fehlt.jpg"_s), ordner.pfad(), QString(), u"Q:\\bild.jpg"_s, geheim})
    EXPECT_EQ(nur_mit_Kopf(pfad), geoeffnet(pfad)) << qPrintable(pfad);
  EXPECT_EQ(nur_mit_Kopf(geheim).status, AccessDenied);
}

RC_GTEST_PROP(NurKopfZufall, ChangedBytesGiveTheSameStatus, ()) {
  static const QByteArray Jpeg = vorlagen::jpeg(vorlagen::foto({48, 33}));
  static const QByteArray Progressiv = vorlagen::jpeg(vorlagen::foto({48, 33}), {.progressiv = true});
  const QByteArray original = *rc::gen::arbitrary<bool>() ? Jpeg : Progressiv;
  const qsizetype davor = *rc::gen::inRange<qsizetype>(0, 2) * 65536;
  QByteArray inhalt = mit_spaetem_Kopf(original, davor);
  const qsizetype anfang = inhalt.size() - original.size() + 2;
  const int anzahl = *rc::gen::inRange(1, 6);
  for (int i = 0; i < anzahl; ++i) inhalt[anfang + *rc::gen::inRange<qsizetype>(0, 620)] = *rc::gen::arbitrary<char>();
  const Testordner ordner;
  std::int32_t marke = 0;
  GdiplusStartup(marke, 1);
  const QString pfad = ordner.schreibe(u"a"_s, inhalt);
  const Geoeffnet ganz = geoeffnet(pfad);
  const Geoeffnet kopf = nur_mit_Kopf(pfad);
  GdiplusShutdown(marke);
  RC_ASSERT(kopf == ganz);
}

TEST_F(NurKopfTest, WhatIsThereInTwiceTheSizeIsScaledDownAndNotReadAgain) {
  const QSize groesse(800, 600);
  const QByteArray inhalt = vorlagen::jpeg(vorlagen::foto(groesse)) + QByteArray(3'000'000, 'x');
  const QString pfad = ordner.schreibe(u"doppelt.jpg"_s, inhalt);
  const QImage eigenes = oeffne_Kopf(pfad)->bild({100, 75});
  Bildspeicher::aktuell().leere();
  const Bitmap b = oeffne_Kopf(pfad);
  b->bild({200, 150});
  const qint64 vorher = bisher_gelesen();
  const QImage verkleinert = b->bild({100, 75});
  EXPECT_LT(bisher_gelesen() - vorher, 2'000);
  EXPECT_EQ(verkleinert.size(), QSize(100, 75));
  EXPECT_GT(vorlagen::psnr(verkleinert, eigenes), 30);
  // One pixel less than twice as large does not serve.
  const qint64 vor_dem_groesseren = bisher_gelesen();
  b->bild({101, 75});
  EXPECT_GT(bisher_gelesen() - vor_dem_groesseren, 3'000'000);
}

TEST_F(NurKopfTest, OpeningReadsOnlyTheBeginningAndTheSecondTimeNothing) {
  const QByteArray inhalt = vorlagen::jpeg(vorlagen::foto({300, 200}));
  const QString pfad = ordner.schreibe(u"gross.jpg"_s, inhalt + QByteArray(3'000'000, 'x'));
  const qint64 vor_dem_ersten = bisher_gelesen();
  EXPECT_EQ(oeffne_Kopf(pfad)->groesse(), QSize(300, 200));
  const qint64 vor_dem_zweiten = bisher_gelesen();
  EXPECT_LT(vor_dem_zweiten - vor_dem_ersten, 70'000);
  EXPECT_EQ(oeffne_Kopf(pfad)->groesse(), QSize(300, 200));
  EXPECT_LT(bisher_gelesen() - vor_dem_zweiten, 2'000);
}

TEST_F(NurKopfTest, ThePixelsAreTheSameAsOtherwise) {
  const QImage bild = vorlagen::foto({300, 200});
  for (const QByteArray& inhalt : {vorlagen::jpeg(bild), vorlagen::kodiert(bild, "png"), vorlagen::gif({60, 40}, 33)}) {
    const QString pfad = ordner.schreibe(u"a"_s, inhalt);
    Bildspeicher::aktuell().leere();
    const Bitmap kopf = oeffne_Kopf(pfad);
    const QImage ganz = kopf->bild();
    const QImage klein = kopf->bild(Klein);
    Bildspeicher::aktuell().leere();
    EXPECT_EQ(oeffne(pfad)->bild(), ganz);
    EXPECT_EQ(oeffne(pfad)->bild(Klein), klein);
  }
}

TEST_F(NurKopfTest, ScaledDownPixelsAreRememberedAndShownAgainWithoutTheFile) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const QImage erst = oeffne_Kopf(pfad)->bild(Klein);
  const Bitmap dann = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_EQ(dann->bild(Klein).constBits(), erst.constBits()) << "the pixels were made anew";
}

TEST_F(NurKopfTest, BytesAreNotKeptAfterPainting) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const Bitmap b = oeffne_Kopf(pfad);
  EXPECT_EQ(b->bild().pixel(100, 80), Rot);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_EQ(b->bild().pixel(100, 80), Schwarz);
}

TEST_F(NurKopfTest, AVanishedFileShowsTheLargestRememberedPixelsOrElseBlack) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const QString anderer = ordner.schreibe(u"b.bmp"_s, einfarbig(Rot));
  const Bitmap gemalt = oeffne_Kopf(pfad);
  const Bitmap ungemalt = oeffne_Kopf(anderer);
  gemalt->bild(Klein);
  ASSERT_TRUE(QFile::remove(pfad) && QFile::remove(anderer));
  EXPECT_EQ(gemalt->bild({70, 60}).size(), QSize(70, 60));
  EXPECT_EQ(gemalt->bild({70, 60}).pixel(35, 30), Rot);
  EXPECT_EQ(ungemalt->bild({70, 60}).size(), QSize(70, 60));
  EXPECT_EQ(ungemalt->bild({70, 60}).pixel(35, 30), Schwarz);
  EXPECT_EQ(ungemalt->bild().size(), QSize(200, 160));
}

TEST_F(NurKopfTest, WhatIsNoPictureAnyMoreShowsBlackInTheSizeAskedFor) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const Bitmap b = oeffne_Kopf(pfad);
  aendere(u"a.bmp"_s, "Kein Bild, nur Text.");
  EXPECT_EQ(b->bild(Klein).size(), Klein);
  EXPECT_EQ(b->bild(Klein).pixel(5, 5), Schwarz);
  aendere(u"a.bmp"_s, QByteArray());
  EXPECT_EQ(b->bild(Klein).pixel(5, 5), Schwarz);
}

TEST_F(NurKopfTest, AChangedFileShowsItsNewPictureAndIsNotRemembered) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const Bitmap b = oeffne_Kopf(pfad);
  aendere(u"a.bmp"_s, vorlagen::kodiert(vorlagen::foto({90, 70}), "png"));
  const qint64 vorher = Bildspeicher::aktuell().belegt();
  const QImage neu = b->bild(Klein);
  EXPECT_EQ(neu, lade(u"b.png"_s, vorlagen::kodiert(vorlagen::foto({90, 70}), "png"))->bild(Klein));
  Bildspeicher::aktuell().leere();
  b->bild(Klein);
  EXPECT_EQ(b->groesse(), QSize(200, 160));
  EXPECT_EQ(vorher, Bildspeicher::Kopfgewicht);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 0);
  EXPECT_EQ(oeffne_Kopf(pfad)->groesse(), QSize(90, 70));
}

TEST_F(NurKopfTest, AFileChangedJustNowIsNotRemembered) {
  Bildspeicher::aktuell().uhr(nullptr);
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  EXPECT_EQ(oeffne_Kopf(pfad)->bild(Klein).pixel(5, 5), Rot);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 0);
}

TEST_F(NurKopfTest, WithoutItAPictureOutlivesItsFileEvenIfItsHeaderIsKnown) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  oeffne_Kopf(pfad);
  const Bitmap b = oeffne(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_EQ(b->bild(), QImage::fromData(einfarbig(Rot)).convertToFormat(QImage::Format_RGB32));
}

TEST_F(NurKopfTest, ItHoldsUntilTheEndOfTheOutermostAndOnlyInItsOwnThread) {
  EXPECT_FALSE(NurKopf::gilt());
  {
    const NurKopf aussen;
    { const NurKopf innen; }
    EXPECT_TRUE(NurKopf::gilt());
    bool anderswo = true;
    std::thread([&] { anderswo = NurKopf::gilt(); }).join();
    EXPECT_FALSE(anderswo);
  }
  EXPECT_FALSE(NurKopf::gilt());
}

TEST_F(NurKopfTest, AnotherBackgroundHoldsForAnUnreadPictureToo) {
  QImage leer(20, 20, QImage::Format_ARGB32);
  leer.fill(Qt::transparent);
  const Bitmap b = oeffne_Kopf(ordner.schreibe(u"a.png"_s, vorlagen::kodiert(leer, "png")));
  Bitmap gruen;
  ASSERT_EQ(GdipCreateHBITMAPFromBitmap(b, gruen, 0x00ff00), Ok);
  EXPECT_EQ(gruen->bild({10, 10}).pixel(5, 5), qRgb(0, 255, 0));
  EXPECT_EQ(b->bild({10, 10}).pixel(5, 5), Schwarz);
}

TEST_F(NurKopfTest, HeadersWithoutPixelsCountWithAFixedWeightAndGiveWayAtTheLimit) {
  Bildspeicher::aktuell().grenze(5 * Bildspeicher::Kopfgewicht);
  QStringList pfade;
  for (int i = 0; i < 8; ++i) {
    pfade.append(ordner.schreibe(QString::number(i), einfarbig(Rot)));
    oeffne_Kopf(pfade.last());
    oeffne_Kopf(pfade.last());
    EXPECT_EQ(Bildspeicher::aktuell().belegt(), std::min(i + 1, 5) * Bildspeicher::Kopfgewicht);
  }
  const auto bekannt = [](const QString& pfad) {
    return Bildspeicher::aktuell().suche(*Bildspeicher::aktuell().schluessel(pfad)).has_value();
  };
  EXPECT_FALSE(bekannt(pfade[2]));
  EXPECT_TRUE(bekannt(pfade[3]));
  Bildspeicher::aktuell().grenze(Bildspeicher::Grenze);
  oeffne_Kopf(pfade[7])->bild(Klein);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 4 * Bildspeicher::Kopfgewicht + 50 * 40 * 4);
}

}  // namespace
