// Turning the selected picture.
#include <QFile>
#include <QImage>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "store/Bildereignis.h"
#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using gdiplus::bildersitzung::laeuft;

namespace {

class BildDrehen : public Dialogtest {
 protected:
  /// No session is left, however a turn ends.
  ~BildDrehen() override { EXPECT_FALSE(laeuft()); }
  QImage datei(const QString& name) { return QImage(wurzel.pfad(u"Belege/1/"_s + name)); }
  QByteArray inhalt(const QString& name) { return wurzel.lies(u"Belege/1/"_s + name); }
  /// A picture whose upper left quarter is black and the rest white.
  void lege_Eckbild(const QString& name, QSize groesse) {
    QImage blatt(groesse, QImage::Format_RGB32);
    blatt.fill(Qt::white);
    for (int y = 0; y < groesse.height() / 2; ++y)
      for (int x = 0; x < groesse.width() / 2; ++x) blatt.setPixelColor(x, y, Qt::black);
    ASSERT_TRUE(blatt.save(wurzel.pfad(u"Belege/1/"_s + name), "JPEG", 95));
  }
  /// The corners that are black, of "lo", "ro", "lu" and "ru".
  QString dunkle_Ecken(const QString& name) {
    const QImage b = datei(name);
    QStringList dunkel;
    const auto sieh = [&](int x, int y, const QString& ecke) {
      if (qGray(b.pixel(x, y)) < 128) dunkel.append(ecke);
    };
    sieh(3, 3, u"lo"_s);
    sieh(b.width() - 4, 3, u"ro"_s);
    sieh(3, b.height() - 4, u"lu"_s);
    sieh(b.width() - 4, b.height() - 4, u"ru"_s);
    return dunkel.join(u' ');
  }
  void erwarte_Misslingen() { meldungen.erwarte({u"Das rotieren der JPG ist fehlgeschlagen."_s, u"Error"_s}); }
};

}  // namespace

TEST_F(BildDrehen, TurningChangesTheFileAtOnceAndSavesWhatWasPending) {
  fuege_Bild_ein(u"a"_s);
  lege_Bild(u"a.jpg"_s, {120, 80}, Qt::blue);
  zeige([&] {
    form().txt_BildText.Text(u"Text"_s);
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(datei(u"a.jpg"_s).size(), QSize(80, 120));
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_EQ(store->Bild_Beschreibung(), u"Text"_s);
    EXPECT_GT(form().Pic_Thumb(1).Height(), form().Pic_Thumb(1).Width());
    klicke(form().SSC_Drehen180);
    EXPECT_EQ(datei(u"a.jpg"_s).size(), QSize(80, 120));
    klicke(form().SSC_Drehen270);
    EXPECT_EQ(datei(u"a.jpg"_s).size(), QSize(120, 80));
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/_a.jpg"_s));
  });
}

TEST_F(BildDrehen, AHostHearsOfEachTurn) {
  fuege_Bild_ein(u"a"_s);
  lege_Bild(u"a.jpg"_s, {120, 80}, Qt::blue);
  QStringList gehoert;
  bildereignis::setze([&](const Bildereignis& e) {
    if (e.tat == Bildereignis::Tat::Drehen) gehoert.append(e.Bild + (e.gelungen ? u" ja"_s : u" nein"_s));
  });
  zeige([&] { klicke(form().SSC_Drehen90); });
  bildereignis::setze({});
  ASSERT_EQ(gehoert.size(), 1);
  EXPECT_TRUE(gehoert[0].endsWith(u"\\Belege\\1\\a.jpg ja"_s)) << gehoert[0].toStdString();
}

TEST_F(BildDrehen, TurningWhatIsNoJpegIsToldAndLeavesTheFile) {
  QImage bild(30, 20, QImage::Format_RGB32);
  bild.fill(Qt::red);
  fuege_Bild_ein(u"a"_s, u"bmp"_s, false);
  ASSERT_TRUE(wurzel.schreibe(u"Belege/1/platz"_s, {}).size() > 0);
  ASSERT_TRUE(bild.save(wurzel.pfad(u"Belege/1/a.bmp"_s), "BMP"));
  const QByteArray vorher = wurzel.lies(u"Belege/1/a.bmp"_s);
  zeige([&] {
    meldungen.erwarte({u"Das rotieren der JPG ist fehlgeschlagen."_s, u"Error"_s});
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(wurzel.lies(u"Belege/1/a.bmp"_s), vorher);
  });
}

TEST_F(BildDrehen, TurningAReadOnlyPictureIsToldAndLeavesIt) {
  fuege_Bilder_ein(1);
  const QString pfad = wurzel.pfad(u"Belege/1/a.jpg"_s);
  const QByteArray vorher = wurzel.lies(u"Belege/1/a.jpg"_s);
  ASSERT_TRUE(QFile::setPermissions(pfad, QFile::ReadOwner));
  zeige([&] {
    meldungen.erwarte({u"Bild konnte nicht bearbeitet werden!"_s, u"Achtung"_s, Symbol::Kritisch});
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(wurzel.lies(u"Belege/1/a.jpg"_s), vorher);
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/_a.jpg"_s));
  });
}

TEST_F(BildDrehen, EachTransformationGoesItsOwnWay) {
  fuege_Bilder_ein(1);
  const struct {
    QString name;
    QString ecke;
    QSize groesse;
  } faelle[] = {{u"JpgTransformRotate90"_s, u"ro"_s, {32, 64}}, {u"JpgTransformRotate180"_s, u"ru"_s, {64, 32}},
      {u"JpgTransformRotate270"_s, u"lu"_s, {32, 64}}, {u"JpgTransformFlipHorizontal"_s, u"ro"_s, {64, 32}},
      {u"JpgTransformFlipVertical"_s, u"lu"_s, {64, 32}}};
  zeige([&] {
    for (const auto& fall : faelle) {
      lege_Eckbild(u"a.jpg"_s, {64, 32});
      form().Bild_Drehen(fall.name);
      EXPECT_EQ(dunkle_Ecken(u"a.jpg"_s), fall.ecke) << fall.name.toStdString();
      EXPECT_EQ(datei(u"a.jpg"_s).size(), fall.groesse) << fall.name.toStdString();
    }
  });
}

TEST_F(BildDrehen, TheButtonsTurnTheirOwnWay) {
  fuege_Bilder_ein(1);
  zeige([&] {
    lege_Eckbild(u"a.jpg"_s, {64, 64});
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(dunkle_Ecken(u"a.jpg"_s), u"ro"_s);
    klicke(form().SSC_Drehen180);
    EXPECT_EQ(dunkle_Ecken(u"a.jpg"_s), u"lu"_s);
    klicke(form().SSC_Drehen270);
    EXPECT_EQ(dunkle_Ecken(u"a.jpg"_s), u"ru"_s);
  });
}

TEST_F(BildDrehen, ContentOfAnotherKnownFormatUnderAJpegsNameIsToldOnceAndLeavesTheFile) {
  fuege_Bilder_ein(1);
  QImage bild(30, 20, QImage::Format_RGB32);
  bild.fill(Qt::red);
  for (const char* format : {"TIFF", "PNG", "BMP"}) {
    ASSERT_TRUE(bild.save(wurzel.pfad(u"Belege/1/a.jpg"_s), format));
    const QByteArray vorher = inhalt(u"a.jpg"_s);
    zeige([&] {
      for (const SSCommand* knopf : {&form().SSC_Drehen90, &form().SSC_Drehen180, &form().SSC_Drehen270}) {
        erwarte_Misslingen();
        klicke(const_cast<SSCommand&>(*knopf));
      }
      EXPECT_EQ(inhalt(u"a.jpg"_s), vorher) << format;
      EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/_a.jpg"_s));
    });
  }
}

TEST_F(BildDrehen, ContentOfNoKnownFormatIsToldTwice) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().txt_BildText.Text(u"Text"_s);
    wurzel.schreibe(u"Belege/1/a.jpg"_s, "kein Bild");
    meldungen.erwarte({u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s});
    erwarte_Misslingen();
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(inhalt(u"a.jpg"_s), "kein Bild");
    EXPECT_TRUE(form().DatenGeaendert) << "a failed turn saves nothing";
    form().SetzeDatenGeaendert(false);
  });
}

TEST_F(BildDrehen, APictureThatHasGoneIsToldTwiceAndIsNotMadeAgain) {
  fuege_Bilder_ein(1);
  zeige([&] {
    ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/a.jpg"_s)));
    meldungen.erwarte({u"File Not Found. GDI+ Error:10"_s, u"GDI Error"_s});
    erwarte_Misslingen();
    klicke(form().SSC_Drehen90);
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/a.jpg"_s));
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/_a.jpg"_s));
  });
}

TEST_F(BildDrehen, FilesOfTheUsersThatBeginWithAnUnderscoreStay) {
  fuege_Bild_ein(u"a"_s);
  wurzel.schreibe(u"Belege/1/_a.jpg"_s, "meins");
  wurzel.schreibe(u"Belege/1/__a.jpg"_s, "auch meins");
  zeige([&] {
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(datei(u"a.jpg"_s).size(), QSize(80, 120));
    EXPECT_EQ(inhalt(u"_a.jpg"_s), "meins");
    EXPECT_EQ(inhalt(u"__a.jpg"_s), "auch meins");
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/___a.jpg"_s));
  });
}

TEST_F(BildDrehen, WithoutASessionNothingIsTurnedOrSaved) {
  fuege_Bilder_ein(1);
  const QByteArray vorher = inhalt(u"a.jpg"_s);
  zeige([&] {
    form().txt_BildText.Text(u"Text"_s);
    gdiplus::bildersitzung::naechster_Start(18);
    meldungen.erwarte({u"GDI+ not inizialized."_s, u"GDI Error"_s});
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(inhalt(u"a.jpg"_s), vorher);
    EXPECT_TRUE(form().DatenGeaendert);
    form().SetzeDatenGeaendert(false);
  });
}

TEST_F(BildDrehen, TheSessionsOfOthersOutliveATurn) {
  fuege_Bilder_ein(1);
  mod_GrafikKonvert::Fkt_GdiStartup(1);
  zeige([&] {
    klicke(form().SSC_Drehen90);
    wurzel.schreibe(u"Belege/1/a.jpg"_s, "kein Bild");
    meldungen.erwarte({u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s});
    erwarte_Misslingen();
    klicke(form().SSC_Drehen90);
    EXPECT_TRUE(laeuft());
  });
  mod_GrafikKonvert::Fkt_GdiShutdown();
}

TEST_F(BildDrehen, OnlyTheSelectedPictureIsTurned) {
  fuege_Bilder_ein(3);
  const QByteArray erstes = inhalt(u"a.jpg"_s);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(inhalt(u"a.jpg"_s), erstes);
    EXPECT_EQ(datei(u"b.jpg"_s).size(), QSize(80, 120));
    EXPECT_EQ(form().AktZeile, 1) << "it stays selected";
    EXPECT_GT(form().Pic_Thumb(2).Height(), form().Pic_Thumb(2).Width());
  });
}

TEST_F(BildDrehen, ANewPictureIsTurnedWhereItLiesAndThenSaved) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {120, 80}, Qt::red, u"Neu"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\Neu"_s, u"x"_s);
    form().ErsteZeile = 0;
    form().Create_ThumbNails(form().ErsteZeile);
    klicke(form().Pic_Thumb(2));
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(QImage(wurzel.pfad(u"Neu/x.jpg"_s)).size(), QSize(80, 120));
    EXPECT_EQ(store->AnzahlPos(), 2) << "pending changes are saved";
    EXPECT_EQ(form().Zeile(1).Pfad, u"Belege\\1"_s);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}
