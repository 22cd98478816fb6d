#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QtEndian>

#include "platform/gdiplus/Drehart.h"
#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

namespace {

class Status : public Bilder {
 protected:
  static QByteArray mit(QByteArray bytes, qsizetype stelle, const QByteArray& ersatz) {
    return bytes.replace(stelle, ersatz.size(), ersatz);
  }
  // The frame header of a JPEG, from its marker on.
  static qsizetype rahmen(const QByteArray& jpeg) { return jpeg.indexOf("\xff\xc0"); }

  const QImage bild = vorlagen::foto({40, 30});
  const QByteArray jpeg = vorlagen::jpeg(bild);
  const QByteArray png = vorlagen::kodiert(bild, "png");
  const QByteArray bmp = vorlagen::kodiert(bild, "bmp");
  const QByteArray tiff = vorlagen::kodiert(bild, "tiff");
  const QByteArray ico = vorlagen::kodiert(bild, "ico");
  const QByteArray gif = vorlagen::gif({40, 30}, 64);
};

TEST_F(Status, IntactPicturesAre0AndHaveTheSizeOfTheirHeader) {
  for (const QByteArray& inhalt : {jpeg, png, bmp, tiff, ico, gif})
    EXPECT_EQ(lade(u"bild.xyz"_s, inhalt)->groesse(), QSize(40, 30));
}

TEST_F(Status, TheNameOfAFileNeverCounts) {
  EXPECT_EQ(lade(u"a.jpg"_s, png)->bild(), bild);
  EXPECT_EQ(lade(u"b.txt"_s, bmp)->bild(), bild);
}

TEST_F(Status, AMissingFileIs10) {
  EXPECT_EQ(status_von(ordner.pfad(u"fehlt.jpg"_s)), FileNotFound);
  EXPECT_EQ(status_von(ordner.pfad(u"fehlt/auch.jpg"_s)), FileNotFound);
  EXPECT_EQ(status_von(QString()), FileNotFound);
  EXPECT_EQ(status_von(u"Q:\\bild.jpg"_s), FileNotFound);
}

TEST_F(Status, AFolderAndAFifoAre10AndDoNotBlock) {
  EXPECT_EQ(status_von(ordner.pfad()), FileNotFound);
  ASSERT_EQ(::mkfifo(QFile::encodeName(ordner.pfad(u"schlange.jpg"_s)).constData(), 0600), 0);
  EXPECT_EQ(status_von(ordner.pfad(u"schlange.jpg"_s)), FileNotFound);
}

TEST_F(Status, WithoutTheRightToReadItIs12) {
  const QString pfad = ordner.schreibe(u"geheim.jpg"_s, jpeg);
  ASSERT_TRUE(QFile::setPermissions(pfad, QFileDevice::WriteOwner));
  EXPECT_EQ(status_von(pfad), AccessDenied);
}

TEST_F(Status, ContentWithoutAKnownFormatIs13) {
  for (const QByteArray& inhalt : {QByteArray(), QByteArray("F"), QByteArray("Kein Bild, nur Text."),
           QByteArray("\xff\xd9", 2), QByteArray("RIFF\x10\0\0\0WEBPVP8 ", 16), QByteArray("P6\n1 1\n255\nabc"),
           QByteArray("\0\0\2\0\1\0\x20\x20\0\0", 10), QByteArray("GIF88a\1\0\1\0\0\0\0", 13)})
    EXPECT_EQ(status(inhalt), UnknownImageFormat) << inhalt.toHex().constData();
}

TEST_F(Status, ATruncatedHeaderIs2InEveryFormat) {
  const qsizetype scan = jpeg.indexOf("\xff\xda");
  for (const QByteArray& inhalt :
      {jpeg.first(2), jpeg.first(3), jpeg.first(scan), jpeg.first(scan + 6), png.first(8), png.first(32), bmp.first(2),
          bmp.first(30), tiff.first(4), tiff.first(7), ico.first(4), ico.first(21), gif.first(6), gif.first(12)})
    EXPECT_EQ(status(inhalt), InvalidParameter) << inhalt.first(2).toHex().constData() << " " << inhalt.size();
}

TEST_F(Status, APictureTruncatedBehindItsHeaderIs0) {
  for (const QByteArray& inhalt :
      {jpeg.first(jpeg.indexOf("\xff\xda") + 14), png.first(33), bmp.first(60), gif.first(13)})
    EXPECT_EQ(status(inhalt), Ok) << inhalt.first(2).toHex().constData();
}

TEST_F(Status, AJpegWithoutASideOrThatNobodyDecodesIs2) {
  const qsizetype sof = rahmen(jpeg);
  EXPECT_EQ(status(mit(jpeg, sof + 5, QByteArray(2, 0))), InvalidParameter) << "height 0";
  EXPECT_EQ(status(mit(jpeg, sof + 7, QByteArray(2, 0))), InvalidParameter) << "width 0";
  EXPECT_EQ(status(mit(jpeg, sof + 4, "\x0c")), InvalidParameter) << "12 bits";
  EXPECT_EQ(status(mit(jpeg, sof + 1, "\xc3")), InvalidParameter) << "lossless";
  EXPECT_EQ(status(mit(jpeg, sof + 1, "\xc5")), InvalidParameter) << "hierarchical";
  EXPECT_EQ(status(mit(jpeg, sof + 9, "\x05")), InvalidParameter) << "five components";
  EXPECT_EQ(status(mit(jpeg, sof + 11, "\x52")), InvalidParameter) << "sampling 5x2";
}

TEST_F(Status, AJpegWithGarbageBeforeTheFirstSegmentIs0) {
  EXPECT_EQ(lade(u"a"_s, QByteArray(jpeg).insert(2, QByteArray("\0\xe0Unsinn", 8)))->groesse(), QSize(40, 30));
}

TEST_F(Status, AJpegWithAnImpossibleHuffmanTableIs2) {
  const qsizetype tafel = jpeg.indexOf("\xff\xc4");
  EXPECT_EQ(status(mit(jpeg, tafel + 5, QByteArray(16, '\xff'))), InvalidParameter);
}

TEST_F(Status, APngHeaderThatContradictsItselfIs2) {
  EXPECT_EQ(status(mit(png, 12, "IHDX")), InvalidParameter);
  EXPECT_EQ(status(mit(png, 16, QByteArray(4, 0))), InvalidParameter);
  EXPECT_EQ(status(mit(png, 19, "\x29")), InvalidParameter) << "the check sum tells another width";
}

TEST_F(Status, ABmpHeaderThatContradictsItselfIs2) {
  EXPECT_EQ(status(mit(bmp, 14, "\x29")), InvalidParameter) << "header length 41";
  EXPECT_EQ(status(mit(bmp, 18, QByteArray(4, 0))), InvalidParameter) << "width 0";
  EXPECT_EQ(status(mit(bmp, 18, QByteArray(4, '\xff'))), InvalidParameter) << "width -1";
  EXPECT_EQ(status(mit(bmp, 28, "\x07")), InvalidParameter) << "7 bits";
  EXPECT_EQ(status(mit(bmp, 30, "\x01")), InvalidParameter) << "run lengths with 24 bits";
  EXPECT_EQ(status(mit(bmp, 10, QByteArray(4, '\x7f'))), InvalidParameter) << "pixels behind the end";
}

TEST_F(Status, ATiffWithoutAWidthOrWithADirectoryBehindTheEndIs2) {
  EXPECT_EQ(status(QByteArray("II*\0\x08\0\0\0\1\0\x01\x01\3\0\1\0\0\0\5\0\0\0\0\0\0\0", 26)), InvalidParameter);
  EXPECT_EQ(status(mit(tiff, 4, QByteArray(4, '\x7f'))), InvalidParameter);
}

TEST_F(Status, TiffAndBigTiffOfBothByteOrdersTellTheirSize) {
  const auto eintrag = [](auto u, int marke, int wert, bool gross) {
    return u(marke, 2) + u(3, 2) + u(1, gross ? 8 : 4) + u(wert, 2) + u(0, gross ? 6 : 2);
  };
  for (const bool hoch : {false, true})
    for (const bool gross : {false, true}) {
      const auto u = [hoch](int wert, int breite) {
        QByteArray b(breite, 0);
        b[hoch ? breite - 1 : 0] = static_cast<char>(wert & 0xff);
        if (breite > 1) b[hoch ? breite - 2 : 1] = static_cast<char>(wert >> 8);
        return b;
      };
      const QByteArray kopf = gross ? u(43, 2) + u(8, 2) + u(0, 2) + u(16, 8) + u(2, 8) : u(42, 2) + u(8, 4) + u(2, 2);
      const QByteArray bytes =
          (hoch ? "MM" : "II") + kopf + eintrag(u, 256, 321, gross) + eintrag(u, 257, 123, gross) + QByteArray(8, 0);
      EXPECT_EQ(lade(u"t"_s, bytes)->groesse(), QSize(321, 123)) << hoch << gross;
    }
}

TEST_F(Status, TheLargestSidesCannotBeHeld) {
  EXPECT_FALSE(ist_haltbar({0x7fffffff, 0x7fffffff}));
  EXPECT_FALSE(ist_haltbar({0x7fffffff, 0x40000001}));
  EXPECT_TRUE(ist_haltbar({32767, 16384}));
  EXPECT_FALSE(ist_haltbar({32768, 16384}));
}

TEST_F(Status, ASizeThatNobodyHoldsIs3) {
  EXPECT_EQ(status(mit(jpeg, rahmen(jpeg) + 5, QByteArray(4, '\xff'))), OutOfMemory);
  EXPECT_EQ(status(mit(jpeg, rahmen(jpeg) + 7, "\xff\xff")), OutOfMemory) << "a side over 65500";
  EXPECT_EQ(status(mit(bmp, 18, QByteArray("\x60\xea\0\0\x60\xea\0\0", 8))), OutOfMemory);
  EXPECT_EQ(status(mit(gif, 6, QByteArray(4, '\xff'))), OutOfMemory);
  EXPECT_EQ(status(QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\x10\0\0\0\x10\0\0\x08\2\0\0\0\xc4\x4a\x37\x92", 33)),
      OutOfMemory);
}

// The most memory that this process ever had.
std::int64_t Hochwasser_MB() {
  rusage verbrauch{};
  EXPECT_EQ(::getrusage(RUSAGE_SELF, &verbrauch), 0);
  return verbrauch.ru_maxrss / 1024;
}

TEST_F(Status, ASideThatNoJpegHasCannotBeTurnedAndNoPixelIsMadeBefore) {
  // 48 x 8 388 641, as a file of a few hundred bytes may claim.
  const QString pfad = ordner.schreibe(u"hoch.bmp"_s, mit(bmp, 18, QByteArray("\x30\0\0\0\x21\0\x80\0", 8)));
  Image image;
  ASSERT_EQ(GdipLoadImageFromFile(pfad, image), Ok);
  const std::int64_t vorher = Hochwasser_MB();
  for (const Drehart art : {Um90, Um180, Senkrecht}) {
    QByteArray strom;
    EXPECT_EQ(GdipSaveImageToStream(image, strom, JpegEncoder, transformation(art)), GenericError);
    EXPECT_TRUE(strom.isEmpty());
  }
  EXPECT_LT(Hochwasser_MB() - vorher, 100);
}

TEST_F(Status, OfAnIcoTheLargestPictureCounts) {
  const QByteArray klein = vorlagen::kodiert(vorlagen::foto({16, 16}), "ico").sliced(22);
  const QByteArray gross = ico.sliced(22);
  QByteArray bytes("\0\0\1\0\2\0", 6);
  const auto verzeichne = [&](QSize groesse, qsizetype laenge, qsizetype stelle) {
    QByteArray eintrag(16, 0);
    eintrag[0] = static_cast<char>(groesse.width());
    eintrag[1] = static_cast<char>(groesse.height());
    qToLittleEndian(static_cast<quint32>(laenge), eintrag.data() + 8);
    qToLittleEndian(static_cast<quint32>(stelle), eintrag.data() + 12);
    bytes += eintrag;
  };
  verzeichne({16, 16}, klein.size(), 38);
  verzeichne({40, 30}, gross.size(), 38 + klein.size());
  const Bitmap b = lade(u"zwei.ico"_s, bytes + klein + gross);
  EXPECT_EQ(b->groesse(), QSize(40, 30));
  EXPECT_EQ(b->bild(), bild);
}

TEST_F(Status, NothingOfTheFileStaysOpen) {
  const auto offene = [] { return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size(); };
  const auto vorher = offene();
  const Bitmap b = lade(u"a.jpg"_s, jpeg);
  b->bild({8, 6});
  EXPECT_EQ(offene(), vorher);
}

// Takes the height out of the frame header and puts it into a DNL segment behind the scan, as some cameras do.
QByteArray mit_Hoehe_am_Ende(QByteArray jpeg, int hoehe) {
  for (qsizetype i = 2; i + 8 < jpeg.size();
       i += 2 + static_cast<std::uint8_t>(jpeg[i + 2]) * 256 + static_cast<std::uint8_t>(jpeg[i + 3])) {
    if (jpeg[i + 1] != '\xc0') continue;
    jpeg[i + 5] = 0;
    jpeg[i + 6] = 0;
    break;
  }
  const char dnl[] = {'\xff', '\xdc', 0, 4, static_cast<char>(hoehe >> 8), static_cast<char>(hoehe)};
  return jpeg.insert(jpeg.size() - 2, QByteArrayView(dnl, sizeof dnl));
}

TEST_F(Status, AHeightThatOnlyComesBehindTheScanIsFound) {
  const QByteArray am_Ende = mit_Hoehe_am_Ende(jpeg, 30);
  ASSERT_EQ(lies_Bildkopf(am_Ende).befund, Kopfbefund::Defekt);
  QByteArray eingetragen = am_Ende;
  trage_Hoehe_ein(eingetragen);
  EXPECT_EQ(lies_Bildkopf(eingetragen).groesse, QSize(40, 30));
  QByteArray unveraendert = jpeg;
  trage_Hoehe_ein(unveraendert);
  EXPECT_EQ(unveraendert, jpeg);
  EXPECT_EQ(lade(u"dnl.jpg"_s, am_Ende)->bild(), lade(u"ganz.jpg"_s, jpeg)->bild());
  // Without the segment the header is broken for good.
  EXPECT_EQ(status(am_Ende.left(am_Ende.size() - 8)), InvalidParameter);
}

}  // namespace
