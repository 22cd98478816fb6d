#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <csignal>

#include "host/bericht/Berichtsdatei.h"
#include "host/bericht/Berichtsinhalt.h"
#include "host/betrieb/Ausgang.h"
#include "platform/files/Pfadkarte.h"
#include "tests/host/bericht/Berichtsbauer.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a program prints; fails the test when it is missing or ends with a failure.
QString ausgabe(const QString& programm, const QStringList& argumente) {
  QProcess prozess;
  prozess.start(programm, argumente);
  EXPECT_TRUE(prozess.waitForStarted()) << programm.toStdString() << " is missing: packages poppler-utils, qpdf";
  EXPECT_TRUE(prozess.waitForFinished(60'000));
  EXPECT_EQ(prozess.exitCode(), 0) << prozess.readAllStandardError().toStdString();
  return QString::fromUtf8(prozess.readAllStandardOutput());
}

QByteArray jpeg(QSize groesse, Qt::GlobalColor farbe) {
  QImage bild(groesse, QImage::Format_RGB32);
  bild.fill(farbe);
  QBuffer puffer;
  bild.save(&puffer, "jpeg", 95);
  return puffer.data();
}

/// A place value in front of the picture's own data, as a camera writes it.
QByteArray mit_Ort(QByteArray bytes) {
  const QByteArray inhalt("Exif\0\0GPS 47.99 Nord", 21);
  return bytes.insert(2, QByteArray("\xff\xe1\x00", 3) + static_cast<char>(inhalt.size() + 2) + inhalt);
}

/// One image of a PDF file, as pdfimages lists it.
struct Bildangabe {
  int seite = 0;
  QSize groesse;
  QString kodierung;
  int objekt = 0;
  int dichte = 0;
};

class BerichtDatei : public ::testing::Test {
 protected:
  BerichtDatei() { Pfadkarte::aktuell().setze(u"P:"_s, ordner_.pfad(u"baum"_s)); }

  void nimm(const QString& name, const QByteArray& bytes, const QString& text = {}, const QString& ordner = u"A"_s) {
    ordner_.schreibe(u"baum/%1/%2"_s.arg(ordner, name), bytes);
    Q_ASSERT(name.contains(u'.'));
    store_.FKT_NeuesBild(
        u"AB"_s, u"1"_s, u"-"_s, u"-"_s, name.section(u'.', 0, -2), name.section(u'.', -1), u"BEL"_s, u"-"_s);
    store_.Bild_Pfad(ordner);
    store_.Bild_Beschreibung(text);
  }
  Bericht bericht(const Berichtswahl& wahl = {}) {
    return berichtsinhalt::lies(store_, u"P:"_s, u"Beleg AB 1 – Bäckerei Öztürk"_s, wahl);
  }
  berichtsdatei::Ergebnis schreibe(const Berichtswahl& wahl = {}) {
    return berichtsdatei::schreibe(ziel_, bericht(wahl), wahl);
  }
  QString text() const { return ausgabe(u"pdftotext"_s, {u"-layout"_s, ziel_, u"-"_s}); }
  QList<Bildangabe> bilder() const {
    QList<Bildangabe> alle;
    for (const QString& zeile : ausgabe(u"pdfimages"_s, {u"-list"_s, ziel_}).split(u'\n').mid(2)) {
      const QStringList worte = zeile.split(u' ', Qt::SkipEmptyParts);
      if (worte.size() < 13) continue;
      alle.append(
          {worte[0].toInt(), {worte[3].toInt(), worte[4].toInt()}, worte[8], worte[10].toInt(), worte[12].toInt()});
    }
    return alle;
  }
  QByteArray datei() const { return ordner_.lies(u"bericht.pdf"_s); }

  Testordner ordner_;
  clsBildZuordnungen store_;
  const QString ziel_ = ordner_.pfad(u"bericht.pdf"_s);

 public:
  void SetUp() override { store_.FKT_Neu(); }
};

TEST_F(BerichtDatei, IsASoundPdfWithItsPagesTextsAndFonts) {
  nimm(u"kessel.jpg"_s, jpeg({1200, 900}, Qt::red), u"Größe des Kessels, naß gemessen"_s);
  nimm(u"bad.jpg"_s, jpeg({900, 1200}, Qt::blue), u"Bad"_s);
  nimm(u"dach.jpg"_s, jpeg({900, 1200}, Qt::green), u"Dach"_s);
  const auto ergebnis = schreibe();
  EXPECT_TRUE(ergebnis.geschrieben);
  EXPECT_EQ(ergebnis.seiten, 2);
  EXPECT_EQ(ergebnis.bilder, 3);
  EXPECT_TRUE(ergebnis.fehlende.isEmpty());
  EXPECT_TRUE(ausgabe(u"qpdf"_s, {u"--check"_s, ziel_}).contains(u"No syntax or stream encoding errors"));
  const QString worte = text();
  for (const QString& wort :
      {u"Bäckerei Öztürk"_s, u"Größe des Kessels, naß gemessen"_s, u"Bild 3"_s, u"Seite 2 von 2"_s})
    EXPECT_TRUE(worte.contains(wort)) << worte.toStdString();
  const QStringList schriften = ausgabe(u"pdffonts"_s, {ziel_}).split(u'\n', Qt::SkipEmptyParts).mid(2);
  EXPECT_FALSE(schriften.isEmpty());
  for (const QString& schrift : schriften)
    EXPECT_TRUE(schrift.contains(QRegularExpression(u"yes +(yes|no) +yes"_s))) << schrift.toStdString();
}

TEST_F(BerichtDatei, IsWrittenAsPdfA1b) {
  nimm(u"kessel.jpg"_s, jpeg({400, 300}, Qt::red), u"Kessel"_s);
  Bericht einer = bericht();
  einer.kopf.zeilen = {u"Müller & Söhne <GmbH>"_s};
  berichtsdatei::schreibe(ziel_, einer, {});
  const QByteArray roh = datei();
  EXPECT_TRUE(roh.startsWith("%PDF-1.4"));
  EXPECT_FALSE(roh.contains("/ObjStm"));
  EXPECT_TRUE(roh.contains("/GTS_PDFA1"));
  EXPECT_FALSE(roh.contains("/Transparency"));
  EXPECT_FALSE(roh.contains("/Interpolate true"));
  EXPECT_FALSE(roh.contains("/Encrypt"));
  static const QRegularExpression Durchsichtig(u"/(SMask (?!/None)|[cC][aA] (?!1))"_s);
  EXPECT_FALSE(QString::fromLatin1(roh).contains(Durchsichtig));
  EXPECT_TRUE(roh.contains("<pdfaid:part>1</pdfaid:part>"));
  EXPECT_TRUE(roh.contains("<pdfaid:conformance>B</pdfaid:conformance>"));
  const QString eigenschaften = ausgabe(u"pdfinfo"_s, {ziel_});
  const QString xmp = QString::fromUtf8(ausgabe(u"pdfinfo"_s, {u"-meta"_s, ziel_}).toUtf8());
  for (const auto& [eigenschaft, worte] :
      {std::pair(u"Title:"_s, u"Bildbericht"_s), std::pair(u"Author:"_s, u"Müller & Söhne <GmbH>"_s),
          std::pair(u"Subject:"_s, u"Beleg AB 1 – Bäckerei Öztürk"_s), std::pair(u"Creator:"_s, u"bildzuordnung"_s),
          std::pair(u"Producer:"_s, u"Qt %1"_s.arg(QString::fromLatin1(qVersion())))}) {
    EXPECT_TRUE(eigenschaften.contains(QRegularExpression(eigenschaft + u" +"_s + QRegularExpression::escape(worte))))
        << eigenschaften.toStdString();
    EXPECT_TRUE(xmp.contains(u'>' + worte.toHtmlEscaped() + u'<')) << worte.toStdString() << xmp.toStdString();
  }
  EXPECT_TRUE(QString::fromLatin1(roh).contains(QRegularExpression(u"D:\\d{14}[+-]\\d\\d'\\d\\d'"_s)));
}

TEST_F(BerichtDatei, PicturesHaveTheChosenDensityAndAreNeverBlownUp) {
  nimm(u"gross.jpg"_s, jpeg({6000, 4000}, Qt::red));
  nimm(u"klein.jpg"_s, jpeg({300, 200}, Qt::blue));
  schreibe();
  QList<Bildangabe> alle = bilder();
  ASSERT_EQ(alle.size(), 2);
  EXPECT_NEAR(alle[0].dichte, 300, 2);
  EXPECT_EQ(alle[0].kodierung, u"jpeg"_s);
  EXPECT_EQ(alle[1].groesse, QSize(300, 200));
  EXPECT_NEAR(alle[1].dichte, 150, 1);
  schreibe({.dichte = Dichte::Mail});
  alle = bilder();
  EXPECT_NEAR(alle[0].dichte, 150, 2);
}

TEST_F(BerichtDatei, AnOriginalGoesAsItIsWithoutItsPlace) {
  const QByteArray rein = jpeg({640, 480}, Qt::red);
  nimm(u"foto.jpg"_s, mit_Ort(rein));
  schreibe({.dichte = Dichte::Original});
  ASSERT_EQ(bilder().size(), 1);
  EXPECT_EQ(bilder()[0].groesse, QSize(640, 480));
  EXPECT_TRUE(datei().contains(rein));
  EXPECT_FALSE(datei().contains("GPS"));
  schreibe({.dichte = Dichte::Original, .mit_Ort = true});
  EXPECT_TRUE(datei().contains(mit_Ort(rein)));
}

TEST_F(BerichtDatei, AnOriginalThatIsNoJpegKeepsEachPixel) {
  QImage bild(90, 60, QImage::Format_RGB32);
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 90; ++x) bild.setPixel(x, y, qRgb(2 * x, 4 * y, (x * y) % 256));
  QBuffer puffer;
  bild.save(&puffer, "png");
  nimm(u"plan.png"_s, puffer.data());
  schreibe({.dichte = Dichte::Original});
  ausgabe(u"pdfimages"_s, {u"-png"_s, ziel_, ordner_.pfad(u"heraus"_s)});
  EXPECT_EQ(QImage(ordner_.pfad(u"heraus-000.png"_s)).convertToFormat(QImage::Format_RGB32), bild);
}

TEST_F(BerichtDatei, AnOriginalThatAPdfCantShowIsCodedAnew) {
  BRAUCHT_TESTDATEN();
  int geprueft = 0;
  for (const QString& name : {u"formate/jpg_cmyk.jpg"_s, u"formate/jpg_cmyk_noadobe.jpg"_s,
           u"formate/jpg_arith_prog.jpg"_s, u"formate/jpg_prog.jpg"_s}) {
    store_.FKT_Neu();
    QFile quelle(testdaten(u"bilder/"_s + name));
    ASSERT_TRUE(quelle.open(QIODevice::ReadOnly)) << name.toStdString();
    const QByteArray bytes = quelle.readAll();
    nimm(u"foto.jpg"_s, bytes);
    ASSERT_TRUE(schreibe({.dichte = Dichte::Original}).geschrieben);
    ASSERT_EQ(bilder().size(), 1) << name.toStdString();
    EXPECT_EQ(bilder()[0].kodierung, u"jpeg"_s);
    EXPECT_EQ(bilder()[0].groesse, QImageReader(quelle.fileName()).size()) << name.toStdString();
    EXPECT_FALSE(datei().contains("/DeviceCMYK"));
    ausgabe(u"pdftoppm"_s, {u"-r"_s, u"20"_s, u"-singlefile"_s, u"-png"_s, ziel_, ordner_.pfad(u"seite"_s)});
    // Decoded by whoever paints the page: the scan data of the progressive one is the file's own.
    EXPECT_EQ(datei().contains(bytes.right(200)), name.endsWith(u"jpg_prog.jpg")) << name.toStdString();
    ++geprueft;
  }
  EXPECT_EQ(geprueft, 4);
}

TEST_F(BerichtDatei, TwoPicturesOfOneNameInTwoFoldersBothAppear) {
  nimm(u"foto.jpg"_s, jpeg({200, 100}, Qt::red), {}, u"A"_s);
  nimm(u"foto.jpg"_s, jpeg({100, 200}, Qt::blue), {}, u"B"_s);
  schreibe({.dichte = Dichte::Original});
  ASSERT_EQ(bilder().size(), 2);
  EXPECT_EQ(bilder()[0].groesse, QSize(200, 100));
  EXPECT_EQ(bilder()[1].groesse, QSize(100, 200));
}

TEST_F(BerichtDatei, TheSamePictureTwiceIsStoredOnceAtItsLargerSize) {
  for (const std::int32_t grosses : {0, 1}) {
    store_.FKT_Neu();
    nimm(u"foto.jpg"_s, jpeg({3000, 2000}, Qt::red));
    nimm(u"foto.jpg"_s, jpeg({3000, 2000}, Qt::red));
    store_.AktInd(grosses);
    store_.Bild_DruckGesamteSeite(true);
    schreibe();
    const QList<Bildangabe> alle = bilder();
    ASSERT_EQ(alle.size(), 2);
    EXPECT_EQ(alle[0].objekt, alle[1].objekt);
    EXPECT_NEAR(alle[grosses].dichte, 300, 3);
    EXPECT_GT(alle[1 - grosses].dichte, 310);
  }
}

TEST_F(BerichtDatei, MissingAndBrokenPicturesAreNamedAndTheReportIsMade) {
  nimm(u"gut.jpg"_s, jpeg({200, 100}, Qt::red));
  nimm(u"fehlt.jpg"_s, "x");
  nimm(u"kaputt.jpg"_s, "kein Bild");
  QFile::remove(ordner_.pfad(u"baum/A/fehlt.jpg"_s));
  const auto ergebnis = schreibe();
  EXPECT_TRUE(ergebnis.geschrieben);
  EXPECT_EQ(ergebnis.bilder, 1);
  EXPECT_EQ(ergebnis.fehlende,
      (QStringList{u"fehlt.jpg: Die Datei fehlt."_s, u"kaputt.jpg: Die Datei ist kein lesbares Bild."_s}));
  EXPECT_TRUE(text().contains(u"Die Datei fehlt."));
  // Asking for its date must not make it.
  static_cast<void>(bericht({.mit_Aufnahmedatum = true}));
  EXPECT_FALSE(ordner_.vorhanden(u"baum/A/fehlt.jpg"_s));
}

TEST_F(BerichtDatei, AMarkThatCantBeReadIsNamed) {
  nimm(u"gut.jpg"_s, jpeg({200, 100}, Qt::red));
  Bericht einer = bericht();
  for (const QString& zeichen : {ordner_.pfad(u"weg.png"_s), ordner_.schreibe(u"kaputt.png"_s, "kein Bild")}) {
    einer.kopf.zeichen = zeichen;
    const auto ergebnis = berichtsdatei::schreibe(ziel_, einer, {});
    EXPECT_TRUE(ergebnis.geschrieben);
    EXPECT_EQ(ergebnis.bilder, 1);
    EXPECT_EQ(ergebnis.fehlende,
        QStringList(QFileInfo(zeichen).fileName() + u": Das Zeichen des Briefkopfs ist nicht zu lesen."_s));
  }
}

TEST_F(BerichtDatei, APictureThatGoesMissingWhileItIsWrittenIsNamed) {
  for (const Dichte dichte : {Dichte::Druck, Dichte::Original}) {
    store_.FKT_Neu();
    nimm(u"erst.jpg"_s, jpeg({200, 100}, Qt::red));
    nimm(u"weg.jpg"_s, jpeg({210, 100}, Qt::red));
    nimm(u"weg.png"_s, jpeg({220, 100}, Qt::red));
    const Berichtswahl wahl{.dichte = dichte};
    const auto ergebnis = berichtsdatei::schreibe(ziel_, bericht(wahl), wahl, [&](std::size_t, std::size_t) {
      QFile::remove(ordner_.pfad(u"baum/A/weg.jpg"_s));
      QFile::remove(ordner_.pfad(u"baum/A/weg.png"_s));
      return true;
    });
    EXPECT_TRUE(ergebnis.geschrieben);
    EXPECT_EQ(ergebnis.fehlende.size(), 2);
    EXPECT_TRUE(ausgabe(u"qpdf"_s, {u"--check"_s, ziel_}).contains(u"No syntax or stream encoding errors"));
    ausgabe(u"pdftoppm"_s, {u"-r"_s, u"20"_s, ziel_, ordner_.pfad(u"seite"_s)});
  }
}

TEST_F(BerichtDatei, StoppedItLeavesTheOldFile) {
  ordner_.schreibe(u"bericht.pdf"_s, "alt");
  for (int i = 0; i < 3; ++i) nimm(u"b%1.jpg"_s.arg(i), jpeg({200, 100}, Qt::red));
  const Bericht einer = bericht();
  std::vector<std::size_t> gezaehlt;
  const auto ergebnis = berichtsdatei::schreibe(ziel_, einer, {}, [&](std::size_t getan, std::size_t von) {
    EXPECT_EQ(von, 3U);
    gezaehlt.push_back(getan);
    return getan < 1;
  });
  EXPECT_FALSE(ergebnis.geschrieben);
  EXPECT_EQ(gezaehlt, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(datei(), "alt");
  EXPECT_EQ(QDir(ordner_.pfad()).entryList(QDir::Files | QDir::Hidden), QStringList(u"bericht.pdf"_s));
}

TEST_F(BerichtDatei, AFullDiskLeavesTheOldFile) {
  ordner_.schreibe(u"bericht.pdf"_s, "alt");
  nimm(u"foto.jpg"_s, jpeg({2000, 1000}, Qt::red));
  const Bericht einer = bericht();
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit vorher{};
  getrlimit(RLIMIT_FSIZE, &vorher);
  const rlimit wenig{20'000, vorher.rlim_max};
  setrlimit(RLIMIT_FSIZE, &wenig);
  QString grund;
  try {
    berichtsdatei::schreibe(ziel_, einer, {});
  } catch (const Abbruch& abbruch) {
    grund = abbruch.text();
  }
  setrlimit(RLIMIT_FSIZE, &vorher);
  EXPECT_TRUE(grund.endsWith(u"Der Datenträger ist voll oder nicht mehr zu erreichen.")) << grund.toStdString();
  EXPECT_EQ(datei(), "alt");
  EXPECT_EQ(QDir(ordner_.pfad()).entryList(QDir::Files | QDir::Hidden), QStringList(u"bericht.pdf"_s));
}

TEST_F(BerichtDatei, OnlyAWholeReportReplacesAnOldOne) {
  ordner_.schreibe(u"bericht.pdf"_s, "alt");
  nimm(u"foto.jpg"_s, jpeg({200, 100}, Qt::red));
  schreibe();
  EXPECT_TRUE(datei().startsWith("%PDF"));
}

struct Zielfall {
  QString ziel;
  QString grund;
};

TEST_F(BerichtDatei, TargetsThatCantBeWrittenAreToldInWords) {
  nimm(u"foto.jpg"_s, jpeg({200, 100}, Qt::red));
  const Bericht einer = bericht();
  QDir(ordner_.pfad()).mkdir(u"ordner.pdf"_s);
  for (const auto& [ziel, grund] : {Zielfall{ordner_.pfad(u"ordner.pdf"_s), u"Das ist ein Ordner."_s},
           Zielfall{ordner_.pfad(u"gibt/es/nicht.pdf"_s), u"Den Ordner gibt es nicht."_s},
           Zielfall{ordner_.pfad(u"baum/A/foto.jpg"_s), u"muss auf „.pdf“ enden"_s},
           Zielfall{u"/proc/bericht.pdf"_s, u"Das Recht dazu fehlt"_s}}) {
    try {
      berichtsdatei::schreibe(ziel, einer, {});
      ADD_FAILURE() << ziel.toStdString();
    } catch (const Abbruch& abbruch) {
      EXPECT_TRUE(abbruch.text().contains(grund)) << abbruch.text().toStdString();
    }
  }
  EXPECT_EQ(ordner_.lies(u"baum/A/foto.jpg"_s), jpeg({200, 100}, Qt::red));
}

TEST_F(BerichtDatei, LandscapePagesLieOnTheirSide) {
  nimm(u"quer.jpg"_s, jpeg({4000, 3000}, Qt::red));
  store_.Bild_DruckGesamteSeite(true);
  nimm(u"hoch.jpg"_s, jpeg({3000, 4000}, Qt::red));
  schreibe();
  const QString groessen = ausgabe(u"pdfinfo"_s, {u"-f"_s, u"1"_s, u"-l"_s, u"2"_s, ziel_});
  EXPECT_TRUE(groessen.contains(QRegularExpression(u"Page +1 size: +842 x 595 pts"_s))) << groessen.toStdString();
  EXPECT_TRUE(groessen.contains(QRegularExpression(u"Page +2 size: +595 x 842 pts"_s))) << groessen.toStdString();
}

}  // namespace
