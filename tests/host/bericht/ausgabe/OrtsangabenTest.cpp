// Place data taken out of picture files: all of it, nothing else, and no byte trusted.
#include <QBuffer>
#include <QDirIterator>
#include <QFile>
#include <QImage>

#include "host/bericht/ausgabe/Ortsangaben.h"
#include "tests/host/bericht/ausgabe/Ortsbild.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Heifbild.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace ortsbild;
using ortsangaben::Befund;

namespace {

const QByteArray Jpeg = handyfoto::jpeg(handyfoto::motiv({48, 32}));

/// Without its place, of the same length; fails the test where it tells one still.
QByteArray ohne_Ort(const QByteArray& datei) {
  EXPECT_TRUE(nennt_Ort(datei)) << "nothing to take out";
  QByteArray bytes = datei;
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  EXPECT_EQ(bytes.size(), datei.size());
  EXPECT_FALSE(nennt_Ort(bytes));
  return bytes;
}

void erwarte_unveraendert(const QByteArray& datei) {
  QByteArray bytes = datei;
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Keine);
  EXPECT_EQ(bytes, datei);
}

QImage pixel(const QByteArray& datei) {
  const QImage bild = QImage::fromData(datei).convertToFormat(QImage::Format_RGB32);
  EXPECT_FALSE(bild.isNull());
  return bild;
}

QByteArray als(const char* format) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  EXPECT_TRUE(handyfoto::motiv({20, 10}).save(&puffer, format));
  return bytes;
}

quint32 pruefsumme(const QByteArray& bytes) {
  quint32 summe = ~0U;
  for (const char byte : bytes) {
    summe ^= static_cast<quint8>(byte);
    for (int i = 0; i < 8; ++i) summe = summe & 1U ? summe >> 1U ^ 0xedb88320U : summe >> 1U;
  }
  return ~summe;
}

QByteArray chunk(const QByteArray& art, const QByteArray& daten) {
  return zahl(static_cast<quint32>(daten.size()), 4, Folge::Gross) + art + daten +
      zahl(pruefsumme(art + daten), 4, Folge::Gross);
}

/// A PNG with a chunk behind its header.
QByteArray png_mit(const QByteArray& dazu) {
  const QByteArray png = als("png");
  return png.left(33) + dazu + png.mid(33);
}

/// The check sum of each chunk is right.
void erwarte_heiles_Png(const QByteArray& png) {
  qsizetype ort = 8;
  while (ort < png.size()) {
    const auto laenge = static_cast<qsizetype>(qFromBigEndian<quint32>(png.constData() + ort));
    const QByteArray gesichert = png.mid(ort + 4, laenge + 4);
    EXPECT_EQ(zahl(pruefsumme(gesichert), 4, Folge::Gross), png.mid(ort + 8 + laenge, 4)) << gesichert.left(4).data();
    ort += laenge + 12;
  }
  EXPECT_EQ(pixel(png), pixel(als("png")));
}

QByteArray gepackt(const QByteArray& text) {
  return qCompress(text).mid(4);
}

QByteArray webp_mit(const QByteArray& art, const QByteArray& daten) {
  const QByteArray inhalt = "WEBP" + als("webp").mid(12) + art +
      zahl(static_cast<quint32>(daten.size()), 4, Folge::Klein) + daten + QByteArray(daten.size() % 2, '\0');
  return "RIFF" + zahl(static_cast<quint32>(inhalt.size()), 4, Folge::Klein) + inhalt;
}

}  // namespace

class OrtJeFolge : public ::testing::TestWithParam<Folge> {};
INSTANTIATE_TEST_SUITE_P(BeideFolgen, OrtJeFolge, ::testing::Values(Folge::Klein, Folge::Gross),
    [](const auto& was) { return was.param == Folge::Klein ? "Klein" : "Gross"; });

TEST_P(OrtJeFolge, TheEntriesBehindMoveUpAndAllOthersKeepTheirValues) {
  const QByteArray vorher = tiff(GetParam());
  const QByteArray jpeg = ohne_Ort(mit(Jpeg, exif_Segment(vorher)));
  const auto soll = gelesen(vorher);
  const auto ist = gelesen(jpeg.mid(12, vorher.size()));
  ASSERT_EQ(ist.size(), 2);
  EXPECT_EQ(ist[0].keys(), (QList<quint16>{0x010f, 0x0112, 0x8769, 0xc4a5}));
  for (const quint16 tag : ist[0].keys()) EXPECT_EQ(ist[0][tag], soll[0][tag]) << tag;
  EXPECT_EQ(ist[1], soll[1]) << "the position of the second directory moves up too";
  EXPECT_TRUE(jpeg.contains("2019:01:02 03:04:05"));
  // Nothing of the directory of places is left, its short values neither.
  const qsizetype ort = vorher.indexOf(zahl(6, 2, GetParam()) + zahl(0, 2, GetParam()) + zahl(1, 2, GetParam()));
  ASSERT_GT(ort, 0);
  const qsizetype laenge = ortsverzeichnis(0, GetParam()).size();
  EXPECT_EQ(jpeg.mid(12 + ort, laenge), QByteArray(laenge, '\0'));
  EXPECT_EQ(jpeg.mid(12 + vorher.size()), Jpeg.mid(2)) << "nothing else is touched";
}

TEST_P(OrtJeFolge, CutOffAnywhereNothingOfThePlaceIsLeft) {
  const QByteArray ganz = mit(Jpeg, exif_Segment(tiff(GetParam())));
  for (qsizetype laenge = 0; laenge <= 12 + tiff(GetParam()).size() + 20; ++laenge) {
    QByteArray bytes = ganz.left(laenge);
    ortsangaben::entferne(bytes);
    EXPECT_EQ(bytes.size(), laenge);
    EXPECT_FALSE(nennt_Ort(bytes)) << laenge;
  }
}

TEST_P(OrtJeFolge, AWrongByteAnywhereHarmsNoPixel) {
  const QByteArray block = tiff(GetParam());
  const QByteArray ganz = mit(Jpeg, exif_Segment(block));
  for (qsizetype ort = 12; ort < 12 + block.size(); ++ort)
    for (const char muster : {'\xff', '\x01', '\x80'}) {
      QByteArray bytes = ganz;
      bytes[ort] = static_cast<char>(bytes[ort] ^ muster);
      ortsangaben::entferne(bytes);
      ASSERT_EQ(bytes.mid(12 + block.size()), Jpeg.mid(2)) << ort;
    }
}

TEST_P(OrtJeFolge, ATiffIsSuchAStructureItself) {
  const QByteArray vorher = tiff(GetParam());
  EXPECT_EQ(gelesen(ohne_Ort(vorher))[0].size(), 4);
  for (qsizetype laenge = 0; laenge < vorher.size(); ++laenge) {
    QByteArray bytes = vorher.left(laenge);
    ortsangaben::entferne(bytes);
    EXPECT_FALSE(nennt_Ort(bytes)) << laenge;
  }
}

TEST(Ortsangaben, FilesWithoutAPlaceStayAsTheyAre) {
  for (const Folge folge : {Folge::Klein, Folge::Gross}) {
    erwarte_unveraendert(mit(Jpeg, exif_Segment(tiff(folge, false))));
    erwarte_unveraendert(tiff(folge, false));
    erwarte_unveraendert(png_mit(chunk("eXIf", tiff(folge, false))));
  }
  erwarte_unveraendert(
      mit(Jpeg, segment('\xe1', QByteArray("http://ns.adobe.com/xap/1.0/\0", 29) + xmp("xmp:Rating=\"4\""))));
  for (const char* format : {"png", "bmp", "tiff", "webp"}) erwarte_unveraendert(als(format));
  erwarte_unveraendert({});
  erwarte_unveraendert("kein Bild");
}

TEST(Ortsangaben, EachBlockOfAJpegCountsThoseBehindItsEndToo) {
  const QByteArray zweites = mit(Jpeg, exif_Segment(tiff(Folge::Gross)));
  const QByteArray datei =
      mit(Jpeg, exif_Segment(tiff(Folge::Klein)) + exif_Segment(tiff(Folge::Gross))) + "Anhang" + zweites;
  EXPECT_EQ(pixel(ohne_Ort(datei)), pixel(Jpeg));
}

TEST(Ortsangaben, ABlockInAPrivateSegmentIsFoundByItsHeader) {
  const QByteArray block = tiff(Folge::Klein);
  ohne_Ort(mit(Jpeg,
      segment('\xed',
          QByteArray("Photoshop 3.0\0"
                     "8BIM\x04\x22\0\0",
              22) +
              zahl(static_cast<quint32>(block.size()), 4, Folge::Gross) + block)));
}

TEST_P(OrtJeFolge, APlaceIsFoundThroughEachDirectory) {
  const Folge folge = GetParam();
  const QByteArray kopf = tiff(folge).left(8);
  const auto zeiger = [&](quint32 wert) { return zahl(wert, 4, folge); };
  const auto zweites = [&](quint32 ort) {
    return verzeichnis({{0x8825, 4, 1, zeiger(ort + 18)}}, ort, 0, folge) + ortsverzeichnis(ort + 18, folge);
  };
  for (const quint16 tag : QList<quint16>{0x8769, 0xa005, 0x014a})
    EXPECT_EQ(gelesen(ohne_Ort(kopf + verzeichnis({{tag, 4, 1, zeiger(26)}}, 8, 0, folge) + zweites(26))).size(), 1);
  // The next one of the chain, and one of several.
  ohne_Ort(kopf + verzeichnis({{0x0112, 3, 1, zahl(6, 2, folge)}}, 8, 26, folge) + zweites(26));
  ohne_Ort(kopf + verzeichnis({{0x014a, 4, 2, zeiger(0) + zeiger(34)}}, 8, 0, folge) + zweites(34));
}

TEST(Ortsangaben, APointerOutOfTheBlockIsNone) {
  QByteArray block = tiff(Folge::Klein);
  const qsizetype feld = block.indexOf(QByteArray("\x25\x88\x04\0\1\0\0\0", 8));
  ASSERT_GT(feld, 0);
  // Into the pixels.
  block.replace(feld + 8, 4, zahl(static_cast<quint32>(block.size()) + 300, 4, Folge::Klein));
  const QByteArray datei = mit(Jpeg, exif_Segment(block));
  QByteArray bytes = datei;
  ortsangaben::entferne(bytes);
  EXPECT_EQ(bytes.mid(12 + block.size()), Jpeg.mid(2));
}

TEST(Ortsangaben, WhereABlockEndsWhereTheFileDoesOnlyADirectoryOfPlacesIsOverwritten) {
  QByteArray datei = tiff(Folge::Klein);
  const qsizetype feld = datei.indexOf(QByteArray("\x25\x88\x04\0\1\0\0\0", 8));
  const QByteArray punkte(400, '\x07');
  datei.replace(feld + 8, 4, zahl(static_cast<quint32>(datei.size()), 4, Folge::Klein));
  QByteArray bytes = datei + punkte;
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  EXPECT_TRUE(bytes.endsWith(punkte));
}

TEST(Ortsangaben, RawFormatsOfCamerasAreSuchStructuresUnderOtherSigns) {
  for (const QByteArray& zeichen : {QByteArray("IIU\0", 4), QByteArray("IIRO"), QByteArray("IIRS")})
    ohne_Ort(zeichen + tiff(Folge::Klein).mid(4));
  ohne_Ort("MMOR" + tiff(Folge::Gross).mid(4));
}

TEST(Ortsangaben, APointerToTheDirectoryItselfTakesNothingElseAway) {
  QByteArray block = tiff(Folge::Klein, true);
  const qsizetype feld = block.indexOf(QByteArray("\x25\x88\x04\0\1\0\0\0", 8));
  block.replace(feld + 8, 4, zahl(8, 4, Folge::Klein));
  QByteArray bytes = mit(Jpeg, exif_Segment(block));
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  const auto ist = gelesen(bytes.mid(12, block.size()));
  EXPECT_EQ(ist[0][0x010f], QByteArray("Fernsprech\0", 11));
  EXPECT_EQ(ist[0].size(), 4);
}

TEST(Ortsangaben, APacketThatTellsAPlaceIsEmptiedAndItsWrappingStays) {
  const QByteArray kopf("http://ns.adobe.com/xap/1.0/\0", 29);
  for (const QByteArray& eigenschaft : {Ortseigenschaft, QByteArray("photoshop:City=\"Freiburg\""),
           QByteArray("drone:RelativeAltitude=\"3\" drone:Latitude=\"48\""),
           QByteArray("Iptc4xmpCore:CountryCode=\"DE\"")}) {
    const QByteArray datei =
        mit(Jpeg, segment('\xe1', kopf + xmp(eigenschaft)) + exif_Segment(tiff(Folge::Klein, false)));
    QByteArray bytes = datei;
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt) << eigenschaft.data();
    EXPECT_EQ(bytes.size(), datei.size());
    EXPECT_FALSE(bytes.contains(eigenschaft));
    EXPECT_TRUE(bytes.contains("</x:xmpmeta><?xpacket end=\"w\"?>"));
    EXPECT_TRUE(bytes.contains("Fernsprech"));
    EXPECT_EQ(pixel(bytes), pixel(Jpeg));
  }
}

TEST(Ortsangaben, APacketOverSeveralSegmentsIsEmptiedInAll) {
  const QByteArray kopf =
      QByteArray("http://ns.adobe.com/xmp/extension/\0", 35) + QByteArray(32, 'A') + QByteArray(8, '\0');
  const QByteArray paket = xmp(Ortseigenschaft);
  // The word that tells it lies on the border.
  const qsizetype mitte = paket.indexOf("GPSLat") + 3;
  const QByteArray datei =
      mit(Jpeg, segment('\xe1', kopf + paket.left(mitte)) + segment('\xe1', kopf + paket.mid(mitte)));
  QByteArray bytes = datei;
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  EXPECT_FALSE(bytes.contains("48,8"));
  EXPECT_FALSE(bytes.contains("rdf:"));
  EXPECT_EQ(pixel(bytes), pixel(Jpeg));
}

TEST(Ortsangaben, APacketThatWasCutOffIsEmptiedToItsEnd) {
  const QByteArray paket = xmp(Ortseigenschaft);
  QByteArray bytes =
      mit(Jpeg, segment('\xe1', QByteArray("http://ns.adobe.com/xap/1.0/\0", 29) + paket.left(paket.indexOf("11,34"))));
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  EXPECT_FALSE(bytes.contains("48,8"));
  EXPECT_TRUE(bytes.endsWith(Jpeg.mid(2)));
}

TEST(Ortsangaben, APngKeepsItsCheckSumsRight) {
  for (const Folge folge : {Folge::Klein, Folge::Gross})
    erwarte_heiles_Png(ohne_Ort(png_mit(chunk("eXIf", tiff(folge)))));
  const QByteArray text = xmp(Ortseigenschaft);
  const QByteArray wort = QByteArray("XML:com.adobe.xmp\0", 18);
  for (const QByteArray& eines : {chunk("iTXt", wort + QByteArray("\0\0\0\0", 4) + text),
           chunk("iTXt", wort + QByteArray("\1\0\0\0", 4) + gepackt(text)),
           chunk("tEXt", QByteArray("exif:GPSLatitude\0", 17) + "48/1, 8/1")}) {
    QByteArray bytes = png_mit(eines);
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
    EXPECT_FALSE(bytes.contains("48"));
    EXPECT_FALSE(bytes.contains(gepackt(text)));
    erwarte_heiles_Png(bytes);
  }
  erwarte_unveraendert(png_mit(chunk("zTXt", QByteArray("Comment\0\0", 9) + gepackt("Sonne"))));
}

TEST(Ortsangaben, AnExifBlockWrittenAsTextOfAPngIsTakenOut) {
  const auto profil = [](bool mit_Ort) {
    const QByteArray block = QByteArray("Exif\0\0", 6) + tiff(Folge::Gross, mit_Ort);
    return QByteArray("\nexif\n") + QByteArray::number(block.size()) + '\n' + block.toHex() + '\n';
  };
  const QByteArray wort("Raw profile type exif\0", 22);
  for (const QByteArray& eines :
      {chunk("zTXt", wort + '\0' + gepackt(profil(true))), chunk("tEXt", wort + profil(true))}) {
    QByteArray bytes = png_mit(eines);
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
    EXPECT_FALSE(bytes.contains("Raw profile"));
    erwarte_heiles_Png(bytes);
  }
  erwarte_unveraendert(png_mit(chunk("tEXt", wort + profil(false))));
}

TEST(Ortsangaben, ABrokenPngHarmsNothing) {
  const QByteArray ganz =
      png_mit(chunk("zTXt", QByteArray("Raw profile type exif\0\0", 23) + gepackt("\nexif\n4\n00")) +
          chunk("iTXt", QByteArray("XML:com.adobe.xmp\0\1\0\0\0", 22) + gepackt(xmp(Ortseigenschaft))) +
          chunk("eXIf", tiff(Folge::Klein)));
  for (qsizetype laenge = 0; laenge < ganz.size(); ++laenge) {
    QByteArray bytes = ganz.left(laenge);
    ortsangaben::entferne(bytes);
    ASSERT_EQ(bytes.size(), laenge);
    ASSERT_FALSE(nennt_Ort(bytes)) << laenge;
  }
}

TEST(Ortsangaben, AWebpIsCleanedWithAndWithoutTheWordInFront) {
  const QByteArray block = tiff(Folge::Klein);
  for (const QByteArray& inhalt : {block, QByteArray("Exif\0\0", 6) + block})
    EXPECT_EQ(pixel(ohne_Ort(webp_mit("EXIF", inhalt))), pixel(als("webp")));
  QByteArray bytes = webp_mit("XMP ", xmp(Ortseigenschaft));
  EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
  EXPECT_FALSE(bytes.contains("48,8"));
}

TEST(Ortsangaben, AHeicIsCleanedInPlace) {
  const QByteArray heic = heifbild::schreibe(handyfoto::motiv({64, 48}), heifbild::Art::Heic, 1, tiff(Folge::Gross));
  ASSERT_FALSE(heic.isEmpty()) << "libheif1 of Debian codes HEIC; here it does not";
  const QByteArray ohne = ohne_Ort(heic);
  EXPECT_TRUE(ohne.contains("Fernsprech"));
  erwarte_unveraendert(
      heifbild::schreibe(handyfoto::motiv({64, 48}), heifbild::Art::Heic, 1, tiff(Folge::Gross, false)));
}

TEST(Ortsangaben, AContainerThatOnlySpeaksOfExifHoldsNoPlace) {
  erwarte_unveraendert(
      zahl(24, 4, Folge::Gross) + "ftypavif" + QByteArray(12, '\0') + xmp("exif:ExifVersion=\"0230\""));
}

TEST(Ortsangaben, TheFilmBehindAMovingPictureLosesItsPlace) {
  const QByteArray film = zahl(16, 4, Folge::Gross) + "ftypmp42" + QByteArray(4, '\0') + "mdat" + "+1-2/" +
      zahl(30, 4, Folge::Gross) + "\xa9xyz" + QByteArray("\0\x12\x15\xc7", 4) + "+48.1374+011.5755/";
  for (const qsizetype abgeschnitten : {0, 3}) {
    const QByteArray datei = Jpeg + film.chopped(abgeschnitten);
    QByteArray bytes = datei;
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Entfernt);
    EXPECT_EQ(bytes.size(), datei.size());
    EXPECT_FALSE(bytes.contains("48.1374"));
    EXPECT_TRUE(bytes.startsWith(Jpeg + film.first(film.indexOf("\xa9xyz"))));
  }
}

TEST(Ortsangaben, RealPicturesKeepTheirPixelsAndHaveNothingLeftTheSecondTime) {
  BRAUCHT_TESTDATEN();
  int alle = 0;
  int mit_Ort = 0;
  for (QDirIterator lauf(testdaten(u"bilder"_s), QDir::Files, QDirIterator::Subdirectories); lauf.hasNext(); ++alle) {
    QFile datei(lauf.next());
    ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
    const QByteArray vorher = datei.readAll();
    QByteArray bytes = vorher;
    const Befund befund = ortsangaben::entferne(bytes);
    EXPECT_NE(befund, Befund::Nicht_zu_entfernen) << datei.fileName().toStdString();
    EXPECT_EQ(bytes.size(), vorher.size());
    EXPECT_EQ(befund == Befund::Keine, bytes == vorher) << datei.fileName().toStdString();
    if (befund != Befund::Entfernt) continue;
    ++mit_Ort;
    EXPECT_EQ(QImage::fromData(bytes), QImage::fromData(vorher)) << datei.fileName().toStdString();
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Keine) << datei.fileName().toStdString();
  }
  EXPECT_GT(alle, 20);
  EXPECT_GT(mit_Ort, 0);
}

TEST(Ortsangaben, WhatCannotBeReadButLooksLikeAPlaceIsTold) {
  const QByteArray kasten = zahl(24, 4, Folge::Gross) + "ftypheic" + QByteArray(12, '\0') + "infe";
  const QByteArray klein("II+\0\x08\0\0\0", 8);
  const QByteArray gross("MM\0+\0\x08\0\0", 8);
  for (const QByteArray& datei : {kasten + QByteArray(8, '\0') + "Exif", kasten + QByteArray(10, '\0') + "Exif",
           zahl(12, 4, Folge::Gross) + "JXL " + "brobExif", klein + QByteArray("\x25\x88\x0d\0\1\0\0\0\0\0\0\0", 12),
           gross + QByteArray("\x88\x25\0\x12\0\0\0\0\0\0\0\1", 12), Jpeg + "exif:GPSLatitude",
           Jpeg + QByteArray("G\0P\0S\0L\0a\0t\0i\0", 14)}) {
    QByteArray bytes = datei;
    EXPECT_EQ(ortsangaben::entferne(bytes), Befund::Nicht_zu_entfernen) << datei.mid(0, 40).toHex().data();
  }
}
