#include <qtestspontaneevent.h>

#include <QApplication>
#include <QDir>
#include <QFile>

#include "dialogs/search/Vorschaubild.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/shell/Programmstart.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke;
using oberflaeche::mauszeiger;
using oberflaeche::Zeigerform;

namespace {

bool ist_rot(const QColor& farbe) {
  return farbe.red() > 200 && farbe.green() < 50 && farbe.blue() < 50;
}

class Liste : public Suchtest {
 protected:
  /// Nothing runs and nothing is hidden any more.
  void ist_in_Ruhe() {
    EXPECT_FALSE(form().SSP_Fortschritt.Visible());
    EXPECT_FALSE(form().SSP_Liste.Visible());
    EXPECT_TRUE(form().lvwContent.Visible());
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
  }
  QString anzahl() { return form().SSP_Anzahl.Caption(); }
  QString schluessel(int eintrag) { return form().ilsImages.Key(form().lvwContent.Icon(eintrag)); }
  void lies() { form().Show_Folder_Content(form().Dir1.Path(), u"*.*"_s); }
  void schreibe(const QString& name, const QByteArray& inhalt = "x") { ordner.schreibe(u"p/Bilder/"_s + name, inhalt); }
  /// Largest percentage that the bar showed while `tu` ran.
  double hoechster_Stand(const std::function<void()>& tu) {
    double stand = 0;
    beim_Pumpen([&](int) { stand = std::max(stand, form().SSP_Fortschritt.FloodPercent()); });
    tu();
    beim_Pumpen({});
    return std::max(stand, form().SSP_Fortschritt.FloodPercent());
  }
};

}  // namespace

TEST_F(Liste, AnEmptyFolderShowsTheCountAndNoProgress) {
  ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"p/Bilder"_s)));
  beim_Pumpen([&](int) { EXPECT_FALSE(form_da() && form().SSP_Fortschritt.Visible()); });
  zeige([&] {
    EXPECT_EQ(anzahl(), u"0 Objekt(e)"_s);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, FilesStandInTheOrderOfTheListingWithNameAndWholeName) {
  for (const auto& name : {u"b.jpg"_s, u"A.jpg"_s, u"c.gif"_s}) schreibe(name, bild());
  zeige([&] {
    EXPECT_EQ(eintraege(), (QStringList{u"A.jpg"_s, u"b.jpg"_s, u"c.gif"_s}));
    EXPECT_EQ(form().lvwContent.ItemTag(2), u"P:\\Bilder\\b.jpg"_s);
    EXPECT_EQ(form().lvwContent.Tag, u"P:\\Bilder\\"_s);
    EXPECT_EQ(anzahl(), u"3 Objekt(e)"_s);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, FoldersHiddenFilesAndFilesOfOtherTypesStayOut) {
  for (const auto& name :
      {u"a.jpg"_s, u".versteckt.jpg"_s, u"b.jpeg"_s, u"c.tiff"_s, u"d.png"_s, u"Ordner.jpg/x.dat"_s})
    schreibe(name, bild());
  zeige([&] {
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
    EXPECT_EQ(form().Zaehle_Dateien(u"P:\\Bilder"_s, u"*.*"_s), 1);
    waehle_Filter(form(), 0);
    EXPECT_EQ(eintraege(), (QStringList{u"a.jpg"_s, u"b.jpeg"_s, u"c.tiff"_s, u"d.png"_s}));
    EXPECT_EQ(form().Zaehle_Dateien(u"P:\\Bilder\\"_s, u"*.*"_s), 4);
  });
}

TEST_F(Liste, APartOfThePatternIsEnoughToPassTheFilter) {
  for (const auto& name : {u"a.if"_s, u"b.p"_s, u"c."_s, u"d.jpgx"_s, u"JPG"_s, u"e.gi"_s}) schreibe(name);
  zeige([&] {
    EXPECT_EQ(eintraege(), (QStringList{u"a.if"_s, u"b.p"_s, u"c."_s, u"e.gi"_s, u"JPG"_s}));
    waehle_Filter(form(), 2);
    EXPECT_EQ(eintraege(), (QStringList{u"b.p"_s, u"c."_s})) << "*.BMP";
  });
}

TEST_F(Liste, NumericTypesGetAKeyOfTheirOwnAndShareTheirPicture) {
  for (const auto& name : {u"a.001"_s, u"b.002"_s, u"c.001"_s, u"d.dat"_s, u"e.DAT"_s}) schreibe(name);
  zeige([&] {
    waehle_Filter(form(), 0);
    ASSERT_EQ(eintraege().size(), 5);
    EXPECT_EQ(schluessel(1), u"001K"_s);
    EXPECT_EQ(schluessel(2), u"002K"_s);
    EXPECT_EQ(form().lvwContent.Icon(3), form().lvwContent.Icon(1));
    EXPECT_EQ(schluessel(4), u"dat"_s);
    EXPECT_EQ(form().lvwContent.Icon(5), form().lvwContent.Icon(4));
    EXPECT_EQ(form().ilsImages.Count(), 3);
    EXPECT_NE(bild_von(1), bild_von(4));
  });
}

TEST_F(Liste, TypeIconsStayAndThumbnailsGoWithEachRead) {
  schreibe(u"a.jpg"_s, bild());
  schreibe(u"b.dat"_s);
  zeige([&] {
    waehle_Filter(form(), 0);
    const QImage symbol = bild_von(2);
    ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"p/Anders"_s)));
    ordner.schreibe(u"p/Anders/x.jpg"_s, bild(QSize(40, 30), Qt::red));
    ordner.schreibe(u"p/Anders/y.dat"_s, "y");
    form().Dir1.Path(u"P:\\Anders"_s);
    QStringList alle;
    for (int i = 1; i <= form().ilsImages.Count(); ++i) alle.append(form().ilsImages.Key(i));
    EXPECT_EQ(alle, (QStringList{u"dat"_s, u"x.jpg"_s}));
    EXPECT_EQ(form().lvwContent.Icon(2), 1) << "the icon that was there";
    EXPECT_EQ(bild_von(2), symbol);
  });
}

TEST_F(Liste, TheBarGoesByThePicturesMadeAndOnePictureNeverMovesIt) {
  schreibe(u"a.jpg"_s, bild());
  EXPECT_EQ(hoechster_Stand([&] { zeige([] {}); }), 0);
  entlade();
  mod_BilderSuchen::pLetzterOrdner.clear();
  for (const auto& name : {u"b.jpg"_s, u"c.jpg"_s, u"d.jpg"_s, u"e.jpg"_s}) schreibe(name, bild());
  QList<double> staende;
  beim_Pumpen([&](int) {
    if (form_da() && form().SSP_Fortschritt.Visible()) staende.append(form().SSP_Fortschritt.FloodPercent());
  });
  zeige([&] { beim_Pumpen({}); });
  EXPECT_EQ(staende, (QList<double>{0, 0, 0, 25, 50, 75}));
  EXPECT_EQ(form().SSP_Fortschritt.FloodPercent(), 100);
}

TEST_F(Liste, FilesWithAKnownIconDoNotMoveTheBar) {
  for (const auto& name : {u"a.dat"_s, u"b.dat"_s, u"c.dat"_s}) schreibe(name);
  zeige([&] { EXPECT_EQ(hoechster_Stand([&] { waehle_Filter(form(), 0); }), 0); });
}

TEST_F(Liste, ANumericTypeMovesTheBarByOneStepOnly) {
  for (const auto& name : {u"a.jpg"_s, u"b.001"_s, u"c.jpg"_s, u"d.jpg"_s, u"e.jpg"_s}) schreibe(name, bild());
  zeige([&] {
    QList<double> staende;
    beim_Pumpen([&](int) { staende.append(form().SSP_Fortschritt.FloodPercent()); });
    waehle_Filter(form(), 0);
    beim_Pumpen({});
    EXPECT_EQ(staende, (QList<double>{0, 0, 0, 25, 50, 75})) << "before the read and before each file";
    EXPECT_EQ(form().SSP_Fortschritt.FloodPercent(), 100);
  });
}

TEST_F(Liste, TheListIsHiddenWhileItIsRead) {
  lege_Bilder(3);
  int gesehen = 0;
  beim_Pumpen([&](int) {
    if (!form_da() || form().lvwContent.Count() == 0) return;
    ++gesehen;
    EXPECT_FALSE(form().lvwContent.isVisible());
    EXPECT_TRUE(form().SSP_Liste.isVisible());
    EXPECT_EQ(form().SSP_Liste.geometry(), form().lvwContent.geometry());
    EXPECT_EQ(form().SSP_Liste.Count(), 0);
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Sanduhr);
  });
  zeige([&] {
    EXPECT_EQ(gesehen, 2);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, WhatIsNoPictureShowsTheSubstituteAndNoBoxComes) {
  schreibe(u"a.jpg"_s, "kein Bild");
  schreibe(u"b.bmp"_s, {});
  schreibe(u"c.gif"_s, "GIF89a");
  schreibe(u"d.tif"_s, "II*");
  schreibe(u"e.jpg"_s, bild());
  schreibe(u"jpg"_s, "x");
  schreibe(u"f.jpg"_s, bild());
  ASSERT_TRUE(QFile::setPermissions(ordner.pfad(u"p/Bilder/f.jpg"_s), {}));
  zeige([&] {
    ASSERT_EQ(
        eintraege(), (QStringList{u"a.jpg"_s, u"b.bmp"_s, u"c.gif"_s, u"d.tif"_s, u"e.jpg"_s, u"f.jpg"_s, u"jpg"_s}));
    for (const int kaputt : {1, 2, 3, 4, 7}) EXPECT_EQ(bild_von(kaputt), ersatz()) << kaputt;
    EXPECT_NE(bild_von(5), ersatz());
    EXPECT_EQ(anzahl(), u"7 Objekt(e)"_s);
  });
  ASSERT_TRUE(QFile::setPermissions(ordner.pfad(u"p/Bilder/f.jpg"_s), QFile::ReadOwner | QFile::WriteOwner));
}

TEST_F(Liste, ATruncatedPictureShowsWhatThereIsOfIt) {
  const QByteArray ganz = bild(QSize(640, 480), Qt::red);
  schreibe(u"a.jpg"_s, ganz.left(ganz.size() / 2));
  zeige([&] {
    ASSERT_EQ(eintraege(), QStringList{u"a.jpg"_s});
    const QImage blatt = bild_von(1);
    EXPECT_TRUE(ist_rot(blatt.pixelColor(50, 12))) << "the rows that are there";
    EXPECT_FALSE(ist_rot(blatt.pixelColor(50, 96))) << "and those that are not";
    EXPECT_NE(blatt.pixelColor(50, 96), QColor(Qt::white)) << "the sheet is covered all the same";
  });
}

TEST_F(Liste, ABrokenBodyBehindASoundHeaderShowsTheSubstitute) {
  const QByteArray jpeg = bild(QSize(640, 480), Qt::red);
  const QByteArray kopf = jpeg.left(jpeg.indexOf("\xff\xda"_ba) + 14);
  QByteArray wirr;
  for (std::uint32_t i = 0, zahl = 1; i < 4000; ++i)
    wirr += static_cast<char>((zahl = zahl * 1664525 + 1013904223) >> 24);
  schreibe(u"a.jpg"_s, kopf);
  schreibe(u"b.jpg"_s, kopf + wirr);
  schreibe(u"c.jpg"_s, kopf + "\xff\xd9"_ba);
  schreibe(u"d.bmp"_s, bild(QSize(640, 480), Qt::red, "BMP").left(54));
  schreibe(u"e.jpg"_s, bild(QSize(640, 480), Qt::red, "PNG").left(60));
  schreibe(u"f.bmp"_s, bild(QSize(640, 480), Qt::black, "BMP"));
  zeige([&] {
    ASSERT_EQ(eintraege().size(), 6);
    for (const int kaputt : {1, 2, 3, 4, 5}) EXPECT_EQ(bild_von(kaputt), ersatz()) << kaputt;
    EXPECT_EQ(bild_von(6).pixelColor(50, 50), QColor(Qt::black)) << "a black picture is no broken one";
  });
}

TEST(Vorschaubild, ASmallPictureStandsInTheMiddleInItsOwnSize) {
  QImage rot(40, 20, QImage::Format_RGB32);
  rot.fill(Qt::red);
  const QImage blatt = vorschaubild::zeichne(bildlader::aus_Pixeln(rot), 1500, 1500);
  ASSERT_EQ(blatt.size(), QSize(101, 101));
  const QRect bild(30, 40, 40, 20);
  for (int y = 0; y < 101; ++y)
    for (int x = 0; x < 101; ++x)
      ASSERT_EQ(blatt.pixelColor(x, y), bild.contains(x, y) ? QColor(Qt::red) : QColor(Qt::white)) << x << ' ' << y;
}

TEST(Vorschaubild, APictureAsLargeAsTheSquareIsNotStretchedButAWiderOneIs) {
  const auto eckpixel = [](QSize groesse) {
    QImage rot(groesse, QImage::Format_RGB32);
    rot.fill(Qt::red);
    const QImage blatt = vorschaubild::zeichne(bildlader::aus_Pixeln(rot), 1500, 1500);
    return std::pair(blatt.pixelColor(1, 1) == QColor(Qt::red), blatt.pixelColor(99, 99) == QColor(Qt::red));
  };
  EXPECT_EQ(eckpixel({100, 100}), std::pair(true, true));
  EXPECT_EQ(eckpixel({100, 20}), std::pair(false, false));
  EXPECT_EQ(eckpixel({101, 20}), std::pair(true, true)) << "distorted into the square";
  EXPECT_EQ(eckpixel({20, 101}), std::pair(true, true));
}

TEST(Vorschaubild, AStretchedPictureKeepsTheUpperAndLeftEdgeFree) {
  QImage rot(400, 100, QImage::Format_RGB32);
  rot.fill(Qt::red);
  const QImage blatt = vorschaubild::zeichne(bildlader::aus_Pixeln(rot), 1500, 1500);
  EXPECT_EQ(blatt.pixelColor(0, 50), QColor(Qt::white));
  EXPECT_EQ(blatt.pixelColor(50, 0), QColor(Qt::white));
  EXPECT_EQ(blatt.pixelColor(100, 100), QColor(Qt::white));
}

TEST(Vorschaubild, AnIconIsNeverStretched) {
  QImage rot(200, 200, QImage::Format_RGB32);
  rot.fill(Qt::red);
  const QImage blatt = vorschaubild::zeichne(bildlader::aus_Pixeln(rot), 1500, 1500, true);
  EXPECT_EQ(blatt.pixelColor(0, 0), QColor(Qt::red));
  EXPECT_EQ(vorschaubild::zeichne(nullptr, 1500, 1500).pixelColor(50, 50), QColor(Qt::white));
  EXPECT_EQ(vorschaubild::zeichne(bildlader::aus_Pixeln(rot), 1500, 1500, true, 2).size(), QSize(201, 201));
}

// ── Interrupting and leaving ────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Liste, TheButtonStopsARunningReadAndTheNextOneIsNotStopped) {
  lege_Bilder(10);
  beim_Pumpen([&](int) {
    if (form().lvwContent.Count() == 4) klicke(form().cmd_EinlesenAbrrechen);
  });
  zeige([&] {
    beim_Pumpen({});
    EXPECT_EQ(eintraege().size(), 4);
    EXPECT_EQ(anzahl(), u"4 Objekt(e)"_s);
    EXPECT_FALSE(form().pEinlesenAbbrechen);
    ist_in_Ruhe();
    lies();
    EXPECT_EQ(eintraege().size(), 10);
  });
}

TEST_F(Liste, TheButtonPressedWhileNothingIsReadStopsTheNextRead) {
  lege_Bilder(3);
  zeige([&] {
    klicke(form().cmd_EinlesenAbrrechen);
    lies();
    EXPECT_EQ(anzahl(), u"0 Objekt(e)"_s);
    lies();
    EXPECT_EQ(anzahl(), u"3 Objekt(e)"_s);
  });
}

TEST_F(Liste, TheDialogCanBeLeftAtAnyMomentOfARead) {
  lege_Bilder(6);
  using Weg = std::function<void(frm_BilderSuchen&)>;
  const QList<Weg> wege{[](frm_BilderSuchen& f) { klicke(f.cmd_Abbruch); },
      [](frm_BilderSuchen& f) { eingaben::taste(f, Qt::Key_Escape); },
      [](frm_BilderSuchen& f) { eingaben::schliesse_Rahmen(f); }};
  for (const Weg& weg : wege) {
    for (int moment = 1; moment <= 8; ++moment) {
      mod_BilderSuchen::pLetzterOrdner.clear();
      bool gegangen = false;
      beim_Pumpen([&](int mal) {
        if (mal != moment) return;
        gegangen = true;
        weg(form());
      });
      zeige([] { FAIL() << "the dialog was still there"; });
      beim_Pumpen({});
      EXPECT_TRUE(gegangen) << moment;
      EXPECT_EQ(form().pFindArray, nullptr);
      EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
      EXPECT_LE(form().lvwContent.Count(), moment);
      entlade();
    }
  }
}

TEST_F(Liste, TakingOverInTheMiddleOfAReadGivesTheTableAsItWas) {
  lege_Bilder(6);
  beim_Pumpen([&](int mal) {
    if (mal == 5) klicke(form().cmd_Uebernehmen);
  });
  zeige([] { FAIL() << "the dialog was still there"; });
  EXPECT_EQ(form().pFindArray, feld);
  EXPECT_EQ(feld->Count(XArrayDBObject::Dimension::Zeilen), 1);
}

TEST_F(Liste, AnIconifiedWindowGoesOnReading) {
  lege_Bilder(6);
  beim_Pumpen([&](int mal) {
    if (mal != 4) return;
    QHideEvent weg;
    QSpontaneKeyEvent::setSpontaneous(&weg);
    qApp->notify(&form(), &weg);  // sendEvent would make it one of the program's own
  });
  zeige([&] {
    EXPECT_EQ(anzahl(), u"6 Objekt(e)"_s);
    ist_in_Ruhe();
  });
}

// ── A second read inside a running one ──────────────────────────────────────────────────────────────────────────────

TEST_F(Liste, AFolderOpenedInTheMiddleOfAReadTakesItsPlace) {
  lege_Bilder(8);
  lege_Bilder(3, u"Bilder/unten"_s);
  beim_Pumpen([&](int mal) {
    if (mal == 5) eingaben::doppelklicke_Zeile(form().Dir1, 2);
  });
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder\\unten"_s);
    EXPECT_EQ(eintraege().size(), 3);
    EXPECT_EQ(form().ilsImages.Count(), 3);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(schluessel(i), form().lvwContent.Text(i));
    EXPECT_EQ(anzahl(), u"3 Objekt(e)"_s);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, AnEmptyFolderOpenedInTheMiddleOfAReadShowsItsEmptyList) {
  lege_Bilder(8);
  ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"p/Bilder/leer"_s)));
  beim_Pumpen([&](int mal) {
    if (mal == 5) eingaben::doppelklicke_Zeile(form().Dir1, 2);
  });
  zeige([&] {
    EXPECT_EQ(anzahl(), u"0 Objekt(e)"_s);
    EXPECT_EQ(form().lvwContent.Count(), 0);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, AFilterChangedInTheMiddleOfAReadReadsAnew) {
  lege_Bilder(5);
  schreibe(u"x.dat"_s);
  schreibe(u"y.001"_s);
  beim_Pumpen([&](int mal) {
    if (mal != 4) return;
    // Loading has ended, but not the first activation: until then a filter only stores its pattern.
    form().pLaedt = false;
    form().cbo_BildTypen.setFocus();
    eingaben::taste(form(), Qt::Key_Home);
  });
  zeige([&] {
    EXPECT_EQ(anzahl(), u"7 Objekt(e)"_s);
    EXPECT_EQ(eintraege().size(), 7);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, ADriveChosenInTheMiddleOfAReadTakesItsPlace) {
  lege_Bilder(5);
  ordner.schreibe(u"c/Heim/h.jpg"_s, bild());
  beim_Pumpen([&](int mal) {
    if (mal != 4) return;
    form().ImageCombo1.waehle(u"P:\\"_s);
    form().ImageCombo1.setFocus();
    eingaben::taste(form(), Qt::Key_Home);
  });
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
    EXPECT_EQ(eintraege(), QStringList{u"h.jpg"_s});
    ist_in_Ruhe();
  });
}

TEST_F(Liste, ReadsWithinReadsWithinReadsEndWithTheNewest) {
  lege_Bilder(4);
  lege_Bilder(4, u"Bilder/1"_s);
  lege_Bilder(4, u"Bilder/1/2"_s);
  lege_Bilder(2, u"Bilder/1/2/3"_s);
  int tiefe = 0;
  beim_Pumpen([&](int) {
    if (form().lvwContent.Count() != 2 || tiefe == 3) return;
    ++tiefe;
    form().Dir1.Path(form().Dir1.Path() + u'\\' + QString::number(tiefe));
  });
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder\\1\\2\\3"_s);
    EXPECT_EQ(eintraege().size(), 2);
    EXPECT_EQ(form().ilsImages.Count(), 2);
    ist_in_Ruhe();
  });
}

TEST_F(Liste, AFolderOfTwoThousandPicturesIsReadInterruptedAndRead) {
  lege_Bilder(2000);
  zeige([&] {
    EXPECT_EQ(anzahl(), u"2000 Objekt(e)"_s);
    EXPECT_EQ(form().ilsImages.Count(), 2000);
    beim_Pumpen([&](int mal) {
      if (mal == 1000) klicke(form().cmd_EinlesenAbrrechen);
    });
    lies();
    EXPECT_EQ(form().ilsImages.Count(), form().lvwContent.Count());
    EXPECT_LT(form().lvwContent.Count(), 1000);
    ist_in_Ruhe();
    beim_Pumpen([&](int mal) {
      if (mal == 1000) eingaben::schliesse_Rahmen(form());
    });
    lies();
    EXPECT_FALSE(form().isVisible());
  });
}

// ── Showing a file ──────────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Starterdoppel final : public shell::Programmstarter {
 public:
  bool oeffne(const QString& pfad) override {
    geoeffnet.append(pfad);
    return true;
  }
  QStringList geoeffnet;
};

}  // namespace

TEST_F(Liste, ADoubleClickShowsTheFile) {
  lege_Bilder(2);
  const auto starter = std::make_shared<Starterdoppel>();
  const auto vorher = shell::setze(starter);
  zeige([&] {
    eingaben::klicke_Zeile(form().lvwContent, 1);
    eingaben::doppelklicke_Zeile(form().lvwContent, 1);
    EXPECT_EQ(starter->geoeffnet, QStringList{ordner.pfad(u"p/Bilder/b00001.jpg"_s)});
    eingaben::doppelklicke(form().lvwContent, form().lvwContent.rect().bottomRight() - QPoint(20, 20));
    EXPECT_EQ(starter->geoeffnet.size(), 1) << "beside every item";
  });
  shell::setze(vorher);
}
