#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

namespace {

class Speicher : public Bilder {
 protected:
  static QByteArray einfarbig(QRgb farbe, QSize groesse = {200, 160}) {
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(farbe);
    return vorlagen::kodiert(bild, "bmp");  // always of the same length
  }
  // The file system's clock moves in steps: writes until the file's state can be told from the one before. (In real use
  // a file changed so recently is not kept at all.)
  void aendere(const QString& name, const QByteArray& inhalt) const {
    const dateien::Kennung vorher = dateien::kennung(ordner.pfad(name));
    do {
      ordner.schreibe(name, inhalt);
    } while (dateien::kennung(ordner.pfad(name)).zustand_ns == vorher.zustand_ns);
  }
  static constexpr QRgb Rot = qRgb(255, 0, 0);
  static constexpr QRgb Blau = qRgb(0, 0, 255);
  static constexpr QSize Klein{50, 40};
};

TEST_F(Speicher, AnUnchangedFileGivesTheSamePixelsAgain) {
  const QString pfad = ordner.schreibe(u"a.jpg"_s, vorlagen::jpeg(vorlagen::foto({400, 300})));
  const QImage erst = oeffne(pfad)->bild(Klein);
  const QImage dann = oeffne(pfad)->bild(Klein);
  EXPECT_EQ(erst, dann);
  EXPECT_EQ(erst.constBits(), dann.constBits()) << "the pixels were made anew";
}

TEST_F(Speicher, ForKnownPixelsTheBytesOfTheFileAreNotRead) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  oeffne(pfad)->bild(Klein);
  struct stat vorher {};
  ASSERT_EQ(::stat(QFile::encodeName(pfad).constData(), &vorher), 0);
  const auto gelesen = [] {
    QFile zaehler(u"/proc/self/io"_s);
    if (!zaehler.open(QIODevice::ReadOnly)) return qint64{-1};
    return zaehler.readLine().split(' ').last().trimmed().toLongLong();
  };
  const qint64 anfang = gelesen();
  const Bitmap b = oeffne(pfad);
  EXPECT_EQ(b->groesse(), QSize(200, 160));
  b->bild(Klein);
  EXPECT_LT(gelesen() - anfang, 5000) << "the file has 96054 bytes";
}

TEST_F(Speicher, AChangedFileGivesTheNewPicture) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Rot);
  aendere(u"a.bmp"_s, einfarbig(Blau));
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Blau);
}

TEST_F(Speicher, AReplacedFileWithAnOldTimeStampGivesTheNewPicture) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  const QString neu = ordner.schreibe(u"b.bmp"_s, einfarbig(Blau));
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Rot);
  struct stat alt {};
  ASSERT_EQ(::stat(QFile::encodeName(pfad).constData(), &alt), 0);
  const timespec zeiten[2] = {alt.st_atim, alt.st_mtim};
  ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(neu).constData(), zeiten, 0), 0);
  ASSERT_EQ(::rename(QFile::encodeName(neu).constData(), QFile::encodeName(pfad).constData()), 0);
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Blau);
}

TEST_F(Speicher, AFileChangedInPlaceWithAnOldTimeStampGivesTheNewPicture) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  struct stat alt {};
  ASSERT_EQ(::stat(QFile::encodeName(pfad).constData(), &alt), 0);
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Rot);
  aendere(u"a.bmp"_s, einfarbig(Blau));
  const timespec zeiten[2] = {alt.st_atim, alt.st_mtim};
  ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(pfad).constData(), zeiten, 0), 0);
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Blau);
}

TEST_F(Speicher, AFileChangedJustNowIsNotRemembered) {
  Bildspeicher::aktuell().uhr(nullptr);
  oeffne(ordner.schreibe(u"a.bmp"_s, einfarbig(Rot)))->bild(Klein);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 0);
}

TEST_F(Speicher, WholePicturesAreNeverRemembered) {
  const Bitmap b = lade(u"a.bmp"_s, einfarbig(Rot));
  b->bild();
  b->bild({200, 160});
  b->bild({400, 320});
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 0);
  b->bild(Klein);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 50 * 40 * 4);
}

TEST_F(Speicher, APictureFromTheCacheReadsAgainForOtherSizes) {
  const QString pfad = ordner.schreibe(u"a.png"_s, vorlagen::kodiert(vorlagen::foto({120, 90}), "png"));
  oeffne(pfad)->bild(Klein);
  const Bitmap b = oeffne(pfad);
  EXPECT_EQ(b->bild(), vorlagen::foto({120, 90}));
  EXPECT_EQ(b->bild(Klein).size(), Klein);
}

TEST_F(Speicher, APictureFromTheCacheNeverShowsALaterFile) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  oeffne(pfad)->bild(Klein);
  const Bitmap alt = oeffne(pfad);
  aendere(u"a.bmp"_s, einfarbig(Blau, {100, 80}));
  EXPECT_EQ(alt->groesse(), QSize(200, 160));
  EXPECT_EQ(alt->bild(Klein).pixel(5, 5), Rot);
  EXPECT_EQ(alt->bild().size(), QSize(200, 160));
  EXPECT_EQ(alt->bild().pixel(100, 80), Rot);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_EQ(alt->bild({30, 20}).pixel(10, 10), Rot);
}

TEST_F(Speicher, ALoadedPictureShowsItsOldFileInEverySize) {
  const QString pfad = ordner.schreibe(u"a.png"_s, vorlagen::kodiert(vorlagen::foto({120, 90}), "png"));
  const Bitmap alt = oeffne(pfad);
  aendere(u"a.png"_s, einfarbig(Blau));
  oeffne(pfad)->bild(Klein);
  EXPECT_EQ(alt->bild(), vorlagen::foto({120, 90}));
  EXPECT_NE(alt->bild(Klein).pixel(5, 5), Blau);
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Blau);
}

TEST_F(Speicher, WhoeverChangesPixelsDoesNotChangeTheCache) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, einfarbig(Rot));
  QImage bild = oeffne(pfad)->bild(Klein);
  bild.fill(Qt::green);
  EXPECT_EQ(oeffne(pfad)->bild(Klein).pixel(5, 5), Rot);
}

TEST_F(Speicher, TheLimitHoldsAndWhatWasUnusedLongestGoesFirst) {
  constexpr qint64 Ein_Bild = 50 * 40 * 4;
  Bildspeicher::aktuell().grenze(5 * Ein_Bild);
  QStringList pfade;
  for (int i = 0; i < 8; ++i) {
    pfade.append(ordner.schreibe(QString::number(i), einfarbig(Rot)));
    oeffne(pfade.last())->bild(Klein);
    oeffne(pfade.first())->bild(Klein);
    EXPECT_LE(Bildspeicher::aktuell().belegt(), 5 * Ein_Bild);
  }
  const auto bekannt = [](const QString& pfad) {
    return Bildspeicher::aktuell().suche(*Bildspeicher::aktuell().schluessel(pfad)).has_value();
  };
  EXPECT_TRUE(bekannt(pfade[0]));
  EXPECT_FALSE(bekannt(pfade[1]));
  EXPECT_TRUE(bekannt(pfade[7]));
  Bildspeicher::aktuell().grenze(Bildspeicher::Grenze);
}

TEST_F(Speicher, OfOneFileAtMostFourSizesStay) {
  const Bitmap b = lade(u"a.bmp"_s, einfarbig(Rot));
  for (int i = 1; i <= 9; ++i) b->bild({i, 1});
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 4 * (6 + 7 + 8 + 9));
}

TEST_F(Speicher, APictureOfMoreThanAQuarterOfTheLimitIsNotRemembered) {
  Bildspeicher::aktuell().grenze(4 * 50 * 40 * 4 - 4);
  lade(u"a.bmp"_s, einfarbig(Rot))->bild(Klein);
  EXPECT_EQ(Bildspeicher::aktuell().belegt(), 0);
  Bildspeicher::aktuell().grenze(Bildspeicher::Grenze);
}

}  // namespace
