// HEIC, AVIF and WebP, which become JPEG.
#include <malloc.h>

#include <QColorSpace>
#include <QImageReader>
#include <QtEndian>

#include "host/betrieb/aufnahme/Heifleser.h"
#include "host/betrieb/aufnahme/Umwandlung.h"
#include "imaging/Aufrichtung.h"
#include "tests/host/aufnahme/Aufnahmetest.h"
#include "tests/support/Heifbild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The TIFF structure of an Exif block with that mark.
QByteArray tiff(QSize groesse, int marke) {
  const QByteArray jpeg = handyfoto::foto(groesse, marke);
  const qsizetype anfang = jpeg.indexOf("Exif") + 6;
  const auto laenge = qFromBigEndian<quint16>(jpeg.constData() + 4);
  return jpeg.mid(anfang, laenge - 8);
}

QByteArray webp(const QImage& bild, const QByteArray& exif = {}) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  if (!bild.save(&puffer, "webp", 100)) return {};
  if (exif.isEmpty()) return bytes;
  const auto u32 = [](quint32 zahl) {
    QByteArray vier(4, '\0');
    qToLittleEndian(zahl, vier.data());
    return vier;
  };
  const auto u24 = [&](int zahl) { return u32(static_cast<quint32>(zahl)).left(3); };
  // The extended form: a header that announces the block, the picture, the block.
  const QByteArray kopf = QByteArray("VP8X") + u32(10) + u32(0x08) + u24(bild.width() - 1) + u24(bild.height() - 1);
  QByteArray block = QByteArray("EXIF") + u32(static_cast<quint32>(exif.size())) + exif;
  if (exif.size() % 2 == 1) block.append('\0');
  const QByteArray inhalt = "WEBP" + kopf + bytes.mid(12) + block;
  return "RIFF" + u32(static_cast<quint32>(inhalt.size())) + inhalt;
}

class Umwandeln : public Aufnahmetest {
 protected:
  /// Takes one file in and gives its copy.
  QByteArray kopie_von(const QString& name, const QByteArray& bytes, bool aufrecht = true) {
    const Aufnahmeergebnis ergebnis = nimm_auf({eingang(name, bytes)}, {aufrecht, {}, {}});
    EXPECT_EQ(ergebnis.probleme, QStringList());
    if (ergebnis.bilder.empty()) return {};
    EXPECT_TRUE(ergebnis.bilder[0].bild.datei().endsWith(u".jpg"_s));
    EXPECT_EQ(eingang_.lies(name), bytes) << "the source stays";
    return datei(ergebnis.bilder[0].bild.datei());
  }
};

}  // namespace

TEST_F(Umwandeln, AHeicThatTheContainerTurnsStandsUprightAndIsTurnedOnce) {
  for (const auto art : {heifbild::Art::Heic, heifbild::Art::Avif}) {
    const QImage sensor = handyfoto::motiv({128, 96});
    // Phones write the mark as well, which counts for nobody then.
    const QByteArray bytes = heifbild::schreibe(sensor, art, 6, tiff({128, 96}, 6));
    if (bytes.isEmpty()) GTEST_SKIP() << "libheif has no encoder here";
    const QByteArray jpeg = handyfoto::jpeg(sensor);
    for (const bool aufrecht : {true, false}) {
      const QByteArray kopie = kopie_von(art == heifbild::Art::Heic ? u"IMG.HEIC"_s : u"IMG.avif"_s, bytes, aufrecht);
      const QImage soll = sensor.transformed(QTransform().rotate(90));
      EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(kopie, false), soll), 24);
      EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(kopie, true), soll), 24);
      EXPECT_TRUE(kopie.contains("Fernsprech")) << "the Exif block comes along";
    }
  }
}

TEST_F(Umwandeln, AWebpStandsUprightByItsMarkAndStaysAsTakenWhereThatIsWanted) {
  const QImage sensor = handyfoto::motiv({64, 48});
  const QByteArray bytes = webp(sensor, tiff({64, 48}, 6));
  ASSERT_FALSE(bytes.isEmpty()) << "no WebP here: package qt6-image-formats-plugins";
  const QImage aufrecht = sensor.transformed(QTransform().rotate(90));
  const QByteArray kopie = kopie_von(u"bild.webp"_s, bytes);
  EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(kopie, false), aufrecht), 24);
  EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(kopie, true), aufrecht), 24);
  const QByteArray liegend = kopie_von(u"bild2.webp"_s, bytes, false);
  EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(liegend, false), sensor), 24);
  EXPECT_LE(handyfoto::abstand(handyfoto::gelesen(liegend, true), aufrecht), 24) << "its mark stays";
}

TEST_F(Umwandeln, ATextBesideItComesAlongUnderTheNewName) {
  eingang(u"bildwebp.txt"_s, "Kessel");
  kopie_von(u"bild.webp"_s, webp(handyfoto::motiv({16, 16})));
  const QStringList beide = dateien();
  ASSERT_EQ(beide.size(), 2);
  EXPECT_TRUE(beide[1].endsWith(u"jpg.txt"_s)) << beide[1].toStdString();
}

TEST_F(Umwandeln, TransparencyBecomesWhite) {
  QImage glas(16, 16, QImage::Format_ARGB32);
  glas.fill(Qt::transparent);
  const QImage bild = handyfoto::gelesen(kopie_von(u"glas.webp"_s, webp(glas)), false);
  EXPECT_GT(qGreen(bild.pixel(8, 8)), 245);
}

TEST_F(Umwandeln, BrokenOnesAreNamedAndLeaveNothing) {
  const QByteArray heic = heifbild::schreibe(handyfoto::motiv({128, 96}), heifbild::Art::Heic);
  QStringList namen{eingang(u"kaputt.webp"_s, webp(handyfoto::motiv({64, 48})).left(40)),
      eingang(u"kopf.heic"_s,
          QByteArray("\0\0\0\x18"
                     "ftypheic\0\0\0\0mif1heic",
              24))};
  if (!heic.isEmpty()) namen.append(eingang(u"halb.heic"_s, heic.left(heic.size() / 2)));
  const Aufnahmeergebnis ergebnis = nimm_auf(namen);
  ASSERT_EQ(ergebnis.probleme.size(), namen.size());
  for (qsizetype i = 0; i < namen.size(); ++i)
    EXPECT_TRUE(ergebnis.probleme[i].startsWith(u"„%1“: "_s.arg(namen[i]))) << ergebnis.probleme[i].toStdString();
  EXPECT_FALSE(hat_Ordner());
}

TEST(Umwandlung, AColourProfileWithUnknownNumbersIsPassedOverAndLeavesNothingInMemory) {
  QByteArray avif = heifbild::schreibe(handyfoto::motiv({16, 16}), heifbild::Art::Avif);
  const qsizetype profil = avif.indexOf("colrnclx");
  if (profil < 0) GTEST_SKIP() << "libheif has no encoder here";
  avif.replace(profil + 8, 2, "\x77\x77");  // the primaries; Display P3 would be 12
  constexpr int Laeufe = 1000;
  const auto lies = [&](int laeufe) {
    for (int i = 0; i < laeufe; ++i) EXPECT_FALSE(heifleser::lies(avif).pixel.colorSpace().isValid());
    return ::mallinfo2().uordblks;
  };
  const std::size_t vorher = lies(100);
  EXPECT_LT(lies(Laeufe), vorher + Laeufe * 16) << "bytes of each are left";
}

TEST(Umwandlung, FormatsAreToldByTheirContent) {
  using umwandlung::Format;
  const auto ftyp = [](const QByteArray& marken) {
    QByteArray laenge(4, '\0');
    qToBigEndian(static_cast<quint32>(8 + marken.size()), laenge.data());
    return laenge + "ftyp" + marken;
  };
  const QByteArray version(4, '\0');
  EXPECT_EQ(umwandlung::erkenne(ftyp("heic" + version + "mif1")), Format::Heif);
  EXPECT_EQ(umwandlung::erkenne(ftyp("avif" + version)), Format::Heif);
  EXPECT_EQ(umwandlung::erkenne(ftyp("mif1" + version + "miafavif")), Format::Heif);
  EXPECT_EQ(umwandlung::erkenne(ftyp("isom" + version + "mp42")), Format::Keines) << "a film";
  EXPECT_EQ(umwandlung::erkenne(ftyp("qt  heic")), Format::Keines) << "a version is no brand";
  EXPECT_EQ(umwandlung::erkenne("RIFF\1\2\3\4WEBPVP8 "), Format::Webp);
  EXPECT_EQ(umwandlung::erkenne("RIFF\1\2\3\4WAVEfmt "), Format::Keines);
  for (const QByteArray& kurz : {QByteArray(), QByteArray("RIFF"),
           QByteArray("\0\0\0\x18"
                      "ftyp",
               8),
           QByteArray("\xFF\xD8")})
    EXPECT_EQ(umwandlung::erkenne(kurz), Format::Keines);
}
