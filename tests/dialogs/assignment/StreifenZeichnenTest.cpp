// The strip of thumbnails: building and drawing.
#include <QFile>

#include "dialogs/search/Vorschaubild.h"
#include "tests/dialogs/assignment/Streifentest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Knoepfe;
using oberflaeche::Symbol;
using oberflaeche::Zeigerform;

// ── Building ────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Streifen, TheStripHasOneControlARowFromTheFirstRowShownOn) {
  fuege_Bilder_ein(4);
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb.Count(), 5);
    baue(2);
    EXPECT_EQ(form().Pic_Thumb.Count(), 3);
    EXPECT_EQ(form().ThumbZaehler, 2);
    EXPECT_EQ(form().ThumbSchritt, 1);
    EXPECT_EQ(tag(1), u"P:\\Belege\\1\\c.jpg"_s);
    EXPECT_EQ(tag(2), u"P:\\Belege\\1\\d.jpg"_s);
    EXPECT_TRUE(form().Pic_Thumb(1).Visible());
    EXPECT_FALSE(form().Pic_Thumb(0).Visible());
  });
}

TEST_F(Streifen, TheFirstRowIsClampedForTheCaller) {
  fuege_Bilder_ein(3);
  zeige([&] {
    std::int32_t ab = -3;
    form().Create_ThumbNails(ab);
    EXPECT_EQ(ab, 0);
    EXPECT_EQ(form().ThumbZaehler, 3);
    ab = 99;
    form().Create_ThumbNails(ab);
    EXPECT_EQ(ab, 2);
    EXPECT_EQ(form().ThumbZaehler, 1);
    EXPECT_EQ(tag(1), u"P:\\Belege\\1\\c.jpg"_s);
  });
}

TEST_F(Streifen, ATableWithoutRowsLeavesTheTemplateAloneAndTheCallersRow) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().BildTabelle->entferne(0);
    form().BildTabelle->entferne(0);
    std::int32_t ab = 77;
    form().Create_ThumbNails(ab);
    EXPECT_EQ(ab, 77);
    EXPECT_EQ(form().Pic_Thumb.Count(), 1);
    EXPECT_EQ(form().ThumbZaehler, 0);
    EXPECT_EQ(form().ThumbSchritt, 0);
    form().Zeichne_Status();
    form().Zeichne_Entfernt(false);
    form().Markiere_Auswahl();
    form().Pruefe_Scroll();
    EXPECT_FALSE(form().SSC_Scroll_Left.Enabled());
    EXPECT_FALSE(form().SSC_Scroll_Right.Enabled());
  });
}

TEST_F(Streifen, WithOnlyThePlaceholderNoControlIsLoadedAndNothingIsSelected) {
  zeige([&] {
    EXPECT_TRUE(form().KeineBilder());
    EXPECT_EQ(form().Pic_Thumb.Count(), 1);
    EXPECT_EQ(form().AktZeile, frm_BildZuordnung::KeineZeile);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    EXPECT_FALSE(form().Shp_Thump.Visible());
    EXPECT_FALSE(form().txt_BildName.Enabled());
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Streifen, AttachmentsOnlyIsShownEvenWithOnlyThePlaceholder) {
  nur_Anhang = true;
  zeige([&] {
    EXPECT_EQ(form().chk_AlsAnhang.Value(), 1);
    EXPECT_FALSE(form().chk_AlsAnhang.Enabled());
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
  });
}

TEST_F(Streifen, ThumbnailsStandAHundredTwipsApartWhateverTheirWidth) {
  fuege_ein(u"a"_s, {300, 100});
  fuege_ein(u"b"_s, {50, 200});
  fuege_ein(u"c"_s, {100, 100});
  zeige([&] {
    const auto& thumb = form().Pic_Thumb;
    EXPECT_EQ(thumb(1).Left(), form().SSC_Scroll_Left.Width() + 120);
    for (int i = 1; i <= 3; ++i) {
      EXPECT_EQ(thumb(i).Left(), thumb(i - 1).Left() + thumb(i - 1).Width() + 100) << i;
      EXPECT_EQ(thumb(i).Top(), thumb(0).Top());
    }
    EXPECT_NE(thumb(1).Width(), thumb(2).Width());
  });
}

TEST_F(Streifen, PicturesAreFittedIntoTheBoxWithTheirProportionsAndSmallOnesAreEnlarged) {
  fuege_ein(u"a"_s, {600, 100});
  fuege_ein(u"b"_s, {100, 600});
  fuege_ein(u"c"_s, {6, 4});
  fuege_ein(u"d"_s, {300, 200});
  zeige([&] {
    const int B = form().ThumbBreite;
    const int H = form().ThumbHoehe;
    ASSERT_GT(H, 50);
    EXPECT_NEAR(B, H * 1.5, 1);
    const auto pixel = [&](int i) {
      return QSizeF(form().Pic_Thumb(i).ScaleWidth(), form().Pic_Thumb(i).ScaleHeight());
    };
    EXPECT_EQ(pixel(1), QSizeF(B, std::nearbyint(B / 6.0)));
    EXPECT_EQ(pixel(2), QSizeF(std::nearbyint(H / 6.0), H));
    // 6 by 4 fits by its height only when the box is not narrower than that.
    const QSizeF drei = H * 1.5 <= B ? QSizeF(std::nearbyint(H * 1.5), H) : QSizeF(B, std::nearbyint(B / 1.5));
    EXPECT_EQ(pixel(3), drei);
    EXPECT_EQ(pixel(4), drei);
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(form().Pic_Thumb(i).Image().size(), pixel(i).toSize());
  });
}

TEST_F(Streifen, FittingTakesTheHeightWhenTheWidthThenFitsAndElseTheWidth) {
  fuege_Bilder_ein(1);
  zeige([&] {
    Bildfeld quelle(&form().SSP_Panel(2), u"quelle"_s);
    Bildfeld ziel(&form().SSP_Panel(2), u"ziel"_s);
    struct Fall {
      double b, h;
      std::int32_t kasten_b, kasten_h;
      double erg_b, erg_h;
    };
    for (const Fall& fall :
        {Fall{300, 200, 150, 100, 150, 100}, Fall{300, 200, 149, 100, 149, 99}, Fall{300, 200, 151, 100, 150, 100},
            Fall{1, 1, 30, 20, 20, 20}, Fall{1000, 1, 100, 100, 100, 0}, Fall{7, 3, 50, 50, 50, 21}}) {
      quelle.Move(0, 0, fall.b * 15, fall.h * 15);
      ziel.Move(0, 0, 15, 15);
      form().Bild_Einpassen(fall.kasten_b, fall.kasten_h, quelle, ziel);
      EXPECT_EQ(ziel.ScaleWidth(), fall.erg_b) << fall.b << 'x' << fall.h;
      EXPECT_EQ(ziel.ScaleHeight(), fall.erg_h) << fall.b << 'x' << fall.h;
    }
  });
}

TEST_F(Streifen, ASourceOrABoxOfSizeZeroPaintsNothingAndLeavesTheTarget) {
  fuege_Bilder_ein(1);
  zeige([&] {
    Bildfeld quelle(&form().SSP_Panel(2), u"quelle"_s);
    Bildfeld ziel(&form().SSP_Panel(2), u"ziel"_s);
    ziel.Move(0, 0, 300, 150);
    form().Bild_Einpassen(100, 100, quelle, ziel);
    quelle.Move(0, 0, 1500, 1500);
    for (const auto& [b, h] : {std::pair{0, 100}, std::pair{100, 0}, std::pair{-5, 100}, std::pair{100, -5}})
      form().Bild_Einpassen(b, h, quelle, ziel);
    EXPECT_EQ(ziel.Width(), 300);
    EXPECT_EQ(ziel.Height(), 150);
    EXPECT_TRUE(ziel.ist_gezeichnet());
  });
}

TEST_F(Streifen, AFileOfAnotherTypeShowsItsTypesIconScaledLikeAPicture) {
  for (const QString& ext : {u"png"_s, u"pdf"_s, u"jpeg"_s}) fuege_ein(u"bild"_s + ext, {300, 100}, Qt::blue, ext);
  fuege_ein(u"gross"_s, {300, 100}, Qt::blue, u"JPG"_s);
  zeige([&] {
    for (int i = 1; i <= 3; ++i) {
      EXPECT_EQ(form().Pic_Thumb(i).ScaleWidth(), form().ThumbHoehe) << i;
      EXPECT_EQ(form().Pic_Thumb(i).ScaleHeight(), form().ThumbHoehe) << i;
      const QImage& bild = form().Pic_Thumb(i).Image();
      EXPECT_TRUE(aehnlich(bild.pixel(bild.width() / 2, bild.height() / 8), QColor(250, 250, 247))) << i;
    }
    // The case of the extension does not matter.
    EXPECT_EQ(form().Pic_Thumb(4).ScaleWidth(), form().ThumbBreite);
    EXPECT_TRUE(aehnlich(mitte(4), Qt::blue));
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().Pic_Dummy.ScaleWidth(), 32);
    EXPECT_EQ(form().Pic_Bearbeitung.Width(), form().Pic_Bearbeitung.Height());
    EXPECT_TRUE(form().chk_Delete.Enabled());
  });
}

TEST_F(Streifen, TheFourPictureTypesAreLoadedAsPictures) {
  const auto schreibe = [&](const QString& name, const char* format) {
    QImage bild(30, 10, QImage::Format_RGB32);
    bild.fill(Qt::green);
    ASSERT_TRUE(bild.save(wurzel.pfad(u"Belege/1/"_s + name), format));
  };
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"b"_s, u"bmp"_s, false);
  schreibe(u"b.bmp"_s, "BMP");
  fuege_Bild_ein(u"c"_s, u"tif"_s, false);
  schreibe(u"c.tif"_s, "TIFF");
  fuege_Bild_ein(u"d"_s, u"gif"_s, false);
  wurzel.schreibe(u"Belege/1/d.gif"_s,
      QByteArray::fromHex("47494638396103000100800100"
                          "00ff00ffffff2c000000000300010000020284510 03b"_ba.replace(' ', "")));
  zeige([&] {
    for (int i = 2; i <= 4; ++i) {
      EXPECT_EQ(form().Pic_Thumb(i).ScaleWidth(), form().ThumbBreite) << i;
      EXPECT_TRUE(aehnlich(mitte(i), Qt::green)) << i;
    }
  });
}

TEST_F(Streifen, AMissingFileShowsThePlaceholderPictureAndCannotBeKept) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"weg"_s, u"jpg"_s, false);
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb(2).ScaleHeight(), form().ThumbHoehe);
    EXPECT_NEAR(form().Pic_Thumb(2).ScaleWidth(), form().ThumbHoehe * 4 / 3.0, 0.5);
    const QImage& bild = form().Pic_Thumb(2).Image();
    const QImage vorlage = form().Pic_Blank.Picture()->bild(bild.size());
    EXPECT_EQ(bild.pixel(bild.width() / 2, 4), vorlage.pixel(bild.width() / 2, 4));
    EXPECT_EQ(bild.pixel(bild.width() - 4, bild.height() / 2), vorlage.pixel(bild.width() - 4, bild.height() / 2));
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().Pic_Dummy.Picture(), form().Pic_Blank.Picture());
    EXPECT_FALSE(form().chk_Delete.Enabled());
    EXPECT_EQ(form().chk_Delete.Value(), 1);
    form().EingabenFreigeben(true);
    EXPECT_FALSE(form().chk_Delete.Enabled());
    klicke(form().Pic_Thumb(1));
    EXPECT_TRUE(form().chk_Delete.Enabled());
    EXPECT_EQ(form().chk_Delete.Value(), 0);
  });
}

TEST_F(Streifen, AMissingFileOfAnotherTypeShowsThePlaceholderToo) {
  fuege_Bild_ein(u"weg"_s, u"pdf"_s, false);
  zeige([&] { EXPECT_EQ(form().Pic_Dummy0.Picture(), form().Pic_Blank.Picture()); });
}

TEST_F(Streifen, APictureThatCannotBeLoadedKeepsTheOneBefore) {
  fuege_ein(u"a"_s, {300, 100}, Qt::green);
  fuege_ein(u"b"_s, {100, 100}, Qt::red);
  fuege_ein(u"c"_s, {100, 300}, Qt::blue);
  (void)form();
  // Gone after the row was read: no missing file, and nothing to load.
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/b.jpg"_s)));
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb.Count(), 4);
    EXPECT_TRUE(aehnlich(mitte(2), Qt::green));
    EXPECT_EQ(form().Pic_Thumb(2).Width(), form().Pic_Thumb(1).Width());
    EXPECT_TRUE(aehnlich(mitte(3), Qt::blue));
    klicke(form().Pic_Thumb(3));
    const auto vorher = form().Pic_Dummy.Picture();
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().Pic_Dummy.Picture(), vorher);
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
  });
}

TEST_F(Streifen, AFirstPictureThatCannotBeLoadedLeavesItsBoxEmptyAndTheStripGoesOn) {
  fuege_ein(u"a"_s, {300, 100});
  fuege_ein(u"b"_s, {100, 300}, Qt::blue);
  (void)form();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/a.jpg"_s)));
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb.Count(), 3);
    EXPECT_TRUE(form().Pic_Thumb(1).Visible());
    EXPECT_TRUE(aehnlich(mitte(2), Qt::blue));
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_GT(form().Pic_Thumb(1).Width(), 0);
  });
}

// The loader has told it and gives an empty picture: that is no failure.
TEST_F(Streifen, ABrokenPictureIsToldAtEachLoadAndItsBoxIsEmptyInTheLastSize) {
  fuege_ein(u"a"_s, {300, 100}, Qt::green);
  fuege_Bild_ein(u"b"_s, u"jpg"_s, false);
  wurzel.schreibe(u"Belege/1/b.jpg"_s, "kein Bild");
  fuege_ein(u"c"_s, {100, 300}, Qt::blue);
  const oberflaeche::Meldung meldung{
      u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s, Symbol::Keins, Knoepfe::OK};
  // The strip is built twice at the opening, and the picture is selected once.
  for (int i = 0; i < 3; ++i) meldungen.erwarte(meldung);
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb.Count(), 4);
    EXPECT_EQ(form().Pic_Thumb(2).Width(), form().Pic_Thumb(1).Width());
    EXPECT_FALSE(aehnlich(mitte(2), Qt::green));
    EXPECT_TRUE(aehnlich(mitte(3), Qt::blue));
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().Pic_Dummy.Picture(), nullptr);
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
    EXPECT_TRUE(form().Pic_Bearbeitung.Visible());
  });
}

TEST_F(Streifen, APictureOfWhichNothingButTheHeaderIsSoundShowsTheDrawingOfTheUnreadable) {
  fuege_ein(u"a"_s, {300, 200}, Qt::red);
  const QByteArray ganz = wurzel.lies(u"Belege/1/a.jpg"_s);
  wurzel.schreibe(u"Belege/1/a.jpg"_s, ganz.left(ganz.indexOf("\xff\xda"_ba) + 14));
  zeige([&] {
    const QImage& bild = form().Pic_Thumb(1).Image();
    EXPECT_EQ(bild.pixelColor(2, 2), QColor(Qt::white));
    const QImage zeichnung = vorschaubild::ersatzbild()->bild({96, 96}).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(bild.copy((bild.width() - 96) / 2, (bild.height() - 96) / 2, 96, 80), zeichnung.copy(0, 0, 96, 80));
  });
}

TEST_F(Streifen, ThePointerWaitsWhileTheStripIsBuiltAndNoLonger) {
  fuege_Bilder_ein(2);
  zeige([&] {
    oberflaeche::mauszeiger().form(Zeigerform::Sanduhr);
    baue(0);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), Zeigerform::Standard);
  });
}

TEST_F(Streifen, TheFirstBuildingSelectsAndLaterOnesDoNot) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(3));
    baue(0);
    EXPECT_EQ(form().AktZeile, 2);
    form().AktZeile = frm_BildZuordnung::KeineZeile;
    form().DatenGeaendert = true;
    baue(1);
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
  });
}

TEST_F(Streifen, ALostPictureOffersSavingAfterTheFirstBuildingButNotForDisplayOnly) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"weg"_s, u"jpg"_s, false);
  zeige([&] {
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    form().pNurAnzeige = true;
    form().AktZeile = frm_BildZuordnung::KeineZeile;
    baue(0);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Streifen, LoadingWithAnotherStepUnloadsTheNextControlInstead) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().ThumbZaehler = 4;
    form().ThumbSchritt = -1;
    form().Neuer_Thumb();
    EXPECT_EQ(form().ThumbZaehler, 3);
    EXPECT_FALSE(form().Pic_Thumb.vorhanden(3));
    form().Loesche_Thumbs();
    EXPECT_EQ(form().Pic_Thumb.Count(), 1);
    EXPECT_EQ(form().ThumbZaehler, 0);
    EXPECT_EQ(form().ThumbSchritt, 0);
  });
}

// ── Drawing ─────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Streifen, AThreePixelStripeAlongTheLowerEdgeIsGreenForAStoredPicture) {
  fuege_Bilder_ein(1);
  zeige([&] {
    const QImage& bild = form().Pic_Thumb(1).Image();
    for (int x = 0; x < bild.width(); ++x)
      for (int y = bild.height() - 3; y < bild.height(); ++y) ASSERT_EQ(bild.pixel(x, y), Stapelgruen) << x << ',' << y;
    for (int x = 0; x < bild.width(); ++x) ASSERT_TRUE(aehnlich(bild.pixel(x, bild.height() - 4), Qt::blue)) << x;
  });
}

TEST_F(Streifen, ANewPictureHasARedStripeUntilItIsSavedThenAGreenOne) {
  fuege_Bilder_ein(1);
  lege_Bild(u"neu.jpg"_s, {120, 80}, Qt::blue, u"Eingang"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\Eingang"_s, u"neu"_s);
    baue(0);
    form().Zeichne_Status();
    EXPECT_EQ(stapel(1), Stapelgruen);
    EXPECT_EQ(stapel(2), Stapelrot);
    form().Zuordnung_Speichern();
    baue(0);
    form().Zeichne_Status();
    EXPECT_EQ(stapel(2), Stapelgruen);
  });
}

TEST_F(Streifen, StripesStandForTheRowsThatAreShown) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Zeile(2).Gespeichert = false;
    baue(1);
    form().Zeichne_Status();
    EXPECT_EQ(stapel(1), Stapelgruen);
    EXPECT_EQ(stapel(2), Stapelrot);
  });
}

TEST_F(Streifen, BuildingAloneDrawsNeitherStripesNorCrosses) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().Zeile(0).Entfernen = true;
    baue(0);
    EXPECT_TRUE(aehnlich(stapel(1), Qt::blue));
    EXPECT_FALSE(durchgestrichen(1));
  });
}

TEST_F(Streifen, MarkingForRemovalCrossesThePictureOutWithoutARebuildAndUnmarkingRebuildsTheStrip) {
  fuege_Bilder_ein(2);
  zeige([&] {
    const Bildfeld* vorher = &form().Pic_Thumb(1);
    EXPECT_FALSE(durchgestrichen(1));
    klicke(form().chk_Delete, QPoint(8, form().chk_Delete.height() / 2));
    ASSERT_EQ(form().chk_Delete.Value(), 1);
    EXPECT_TRUE(form().Zeile(0).Entfernen);
    EXPECT_EQ(&form().Pic_Thumb(1), vorher);
    EXPECT_TRUE(durchgestrichen(1));
    EXPECT_FALSE(durchgestrichen(2));
    const QImage& bild = form().Pic_Thumb(1).Image();
    EXPECT_EQ(bild.pixel(0, 0), Kreuzrot);
    klicke(form().chk_Delete, QPoint(8, form().chk_Delete.height() / 2));
    ASSERT_EQ(form().chk_Delete.Value(), 0);
    EXPECT_NE(&form().Pic_Thumb(1), vorher);
    EXPECT_FALSE(durchgestrichen(1));
    EXPECT_EQ(stapel(1), Stapelgruen);
  });
}

TEST_F(Streifen, SelectingAnUnmarkedPictureAfterAMarkedOneRebuildsTheStripInsideTheClick) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"weg"_s, u"jpg"_s, false);
  zeige([&] {
    EXPECT_TRUE(durchgestrichen(2));
    klicke(form().Pic_Thumb(2));
    const Bildfeld* vorher = &form().Pic_Thumb(1);
    klicke(form().Pic_Thumb(1));
    EXPECT_NE(&form().Pic_Thumb(1), vorher);
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_TRUE(durchgestrichen(2));
    EXPECT_FALSE(durchgestrichen(1));
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(1).Left() - 32);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 1);
  });
}
