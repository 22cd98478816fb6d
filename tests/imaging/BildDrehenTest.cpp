// Turning in place: the exchange of the old content for the new one, whatever happens meanwhile.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QSet>
#include <chrono>
#include <random>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

oberflaeche::Meldung gdi_Fehler(const QString& text) {
  return {text, u"GDI Error"_s, oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
}

QByteArray verlauf(QSize groesse, const char* format) {
  QImage bild(groesse, QImage::Format_RGB32);
  for (int y = 0; y < groesse.height(); ++y)
    for (int x = 0; x < groesse.width(); ++x) bild.setPixel(x, y, qRgb(x % 256, y % 256, (x * y / 7) % 256));
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  bild.save(&puffer, format, 90);
  return bytes;
}

QByteArray gedreht(const QByteArray& bytes, int transform) {
  QByteArray ergebnis;
  EXPECT_EQ(jpegdrehung::drehe(bytes, *Drehung::von(transform), ergebnis), 0);
  return ergebnis;
}

class BildDrehen : public ::testing::Test {
 protected:
  BildDrehen() { Fkt_GdiStartup(1); }
  ~BildDrehen() override { Fkt_GdiShutdown(); }
  QStringList inhalt() const { return QDir(ordner.pfad()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  QByteArray pfad_in_Bytes() const { return QFile::encodeName(bild); }

  MeldungsDoppel meldungen;
  Testordner ordner;
  const QByteArray jpg = verlauf({320, 240}, "jpg");
  const QString bild = ordner.schreibe(u"a.jpg"_s, jpg);
};

TEST_F(BildDrehen, TheNewContentStandsUnderTheOldNameAndNothingBesideIt) {
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), gedreht(jpg, 13));
  EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
}

TEST_F(BildDrehen, FilesWithAnUnderscoreBeforeTheNameStayAsTheyAre) {
  ordner.schreibe(u"_a.jpg"_s, "von jemandem");
  ordner.schreibe(u"__a.jpg"_s, "auch");
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 15));
  EXPECT_EQ(inhalt(), (QStringList{u"__a.jpg"_s, u"_a.jpg"_s, u"a.jpg"_s}));
  EXPECT_EQ(ordner.lies(u"_a.jpg"_s), "von jemandem");
  EXPECT_EQ(ordner.lies(u"__a.jpg"_s), "auch");
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), gedreht(jpg, 15));
}

TEST_F(BildDrehen, ANameOfTheGreatestLengthIsTurnedAsAnyOther) {
  const QString name = QString(251, u'x') + u".jpg"_s;
  EXPECT_TRUE(Fkt_Bild_Drehen(ordner.schreibe(name, jpg), 14));
  EXPECT_EQ(ordner.lies(name), gedreht(jpg, 14));
  EXPECT_EQ(inhalt().size(), 2);
}

TEST_F(BildDrehen, AWriteProtectedPictureIsNotReplacedAndTheFailureReported) {
  ASSERT_TRUE(QFile::setPermissions(bild, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
  EXPECT_EQ(Fehlernummer_von([&] { Fkt_Bild_Drehen(bild, 13); }), 70);
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), jpg);
  EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s}) << "the new content goes";
}

TEST_F(BildDrehen, OwnerAndRightsStay) {
  const bool root = ::geteuid() == 0;
  if (root) {
    ASSERT_EQ(::chown(pfad_in_Bytes().constData(), 1234, 4321), 0);
  }
  ASSERT_EQ(::chmod(pfad_in_Bytes().constData(), 0640), 0);
  struct stat vorher {};
  struct stat nachher {};
  ASSERT_EQ(::stat(pfad_in_Bytes().constData(), &vorher), 0);
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
  ASSERT_EQ(::stat(pfad_in_Bytes().constData(), &nachher), 0);
  EXPECT_EQ(nachher.st_mode, vorher.st_mode);
  EXPECT_EQ(nachher.st_uid, vorher.st_uid);
  EXPECT_EQ(nachher.st_gid, vorher.st_gid);
  EXPECT_NE(nachher.st_ino, vorher.st_ino);
}

TEST_F(BildDrehen, TheExtendedAttributesStay) {
  const QByteArray wert("drei\0Worte und mehr", 19);
  if (::setxattr(pfad_in_Bytes().constData(), "user.kvo.eins", wert.constData(), 19, 0) != 0)
    GTEST_SKIP() << "this file system holds no extended attributes";
  ASSERT_EQ(::setxattr(pfad_in_Bytes().constData(), "user.leer", "", 0, 0), 0);
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
  QByteArray gelesen(100, '?');
  ASSERT_EQ(::getxattr(pfad_in_Bytes().constData(), "user.kvo.eins", gelesen.data(), 100), 19);
  EXPECT_EQ(gelesen.first(19), wert);
  EXPECT_EQ(::getxattr(pfad_in_Bytes().constData(), "user.leer", gelesen.data(), 100), 0);
}

TEST_F(BildDrehen, BehindALinkTheFileItselfIsTurned) {
  const QString verweis = ordner.pfad(u"verweis.jpg"_s);
  ASSERT_TRUE(QFile::link(bild, verweis));
  EXPECT_TRUE(Fkt_Bild_Drehen(verweis, 13));
  EXPECT_TRUE(QFileInfo(verweis).isSymLink());
  EXPECT_EQ(ordner.lies(u"a.jpg"_s), gedreht(jpg, 13));
}

TEST_F(BildDrehen, AnIntactPictureOfAnotherFormatStaysAndIsFalseWithoutAMessage) {
  for (const char* format : {"png", "bmp", "tiff"}) {
    const QByteArray anderes = verlauf({32, 16}, format);
    EXPECT_FALSE(Fkt_Bild_Drehen(ordner.schreibe(u"b.jpg"_s, anderes), 13)) << format;
    EXPECT_EQ(ordner.lies(u"b.jpg"_s), anderes);
  }
  EXPECT_EQ(inhalt().size(), 2);
}

TEST_F(BildDrehen, ContentWithoutAFormatReports13AndAMissingFile10) {
  meldungen.erwarte(gdi_Fehler(u"Unknown Image Format. GDI+ Error:13"_s));
  EXPECT_FALSE(Fkt_Bild_Drehen(ordner.schreibe(u"b.jpg"_s, "Text"), 13));
  meldungen.erwarte(gdi_Fehler(u"File Not Found. GDI+ Error:10"_s));
  EXPECT_FALSE(Fkt_Bild_Drehen(ordner.pfad(u"fehlt.jpg"_s), 13));
  EXPECT_EQ(ordner.lies(u"b.jpg"_s), "Text");
  EXPECT_EQ(inhalt().size(), 2);
}

// The child turns again and again until the alarm ends it, at a moment that nobody knows.
[[noreturn]] void drehe_bis_zum_Ende(const QString& bild, int mikrosekunden) {
  const struct itimerval frist {
    {0, 0}, { 0, mikrosekunden }
  };
  ::setitimer(ITIMER_REAL, &frist, nullptr);
  for (;;) {
    if (!Fkt_Bild_Drehen(bild, 13)) ::_exit(1);
  }
}

int mikrosekunden_je_Drehung(const QString& bild) {
  const auto beginn = std::chrono::steady_clock::now();
  EXPECT_TRUE(Fkt_Bild_Drehen(bild, 13));
  return static_cast<int>(
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - beginn).count());
}

TEST_F(BildDrehen, WheneverTheProcessDiesThePictureIsWholeOldOrNew) {
  QSet<QByteArray> ganze{jpg};
  for (QByteArray b = jpg; ganze.size() < 9;) {
    b = gedreht(b, 13);
    if (ganze.contains(b)) break;
    ganze.insert(b);
  }
  ordner.schreibe(u"_a.jpg"_s, "von jemandem");
  std::mt19937 zufall(4711);
  std::uniform_int_distribution<int> frist(200, 200 + 5 * mikrosekunden_je_Drehung(bild));
  int gewechselt = 0;
  for (int i = 0; i < 200; ++i) {
    const QByteArray vorher = ordner.lies(u"a.jpg"_s);
    const int mikrosekunden = frist(zufall);
    const pid_t kind = ::fork();
    ASSERT_GE(kind, 0);
    if (kind == 0) drehe_bis_zum_Ende(bild, mikrosekunden);
    int ende = 0;
    ASSERT_EQ(::waitpid(kind, &ende, 0), kind);
    ASSERT_TRUE(WIFSIGNALED(ende) && WTERMSIG(ende) == SIGALRM) << "the child ends by the alarm alone";
    const QByteArray nachher = ordner.lies(u"a.jpg"_s);
    ASSERT_TRUE(ganze.contains(nachher)) << "not whole after " << mikrosekunden << " microseconds";
    ASSERT_EQ(ordner.lies(u"_a.jpg"_s), "von jemandem");
    gewechselt += nachher != vorher ? 1 : 0;
  }
  for (const QString& name : inhalt())
    EXPECT_TRUE(name == u"a.jpg"_s || name == u"_a.jpg"_s || name.startsWith(u".kvo-"_s)) << name.toStdString();
  dateien::raeume_Reste(ordner.pfad());
  EXPECT_EQ(inhalt(), (QStringList{u"_a.jpg"_s, u"a.jpg"_s}));
  EXPECT_GT(gewechselt, 20);
}

}  // namespace
