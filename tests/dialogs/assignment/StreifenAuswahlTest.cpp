// The strip of thumbnails: frames and selecting.
#include <QFile>

#include "tests/dialogs/assignment/Starterdoppel.h"
#include "tests/dialogs/assignment/Streifentest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Knoepfe;
using oberflaeche::Symbol;
using oberflaeche::Zeigerform;

// ── Frames ──────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Streifen, TheFrameStandsAroundTheSelectedThumbnail) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Shp_Thump.BorderWidth(3);
    klicke(form().Pic_Thumb(2));
    const Bildfeld& t = form().Pic_Thumb(2);
    EXPECT_TRUE(form().Shp_Thump.Visible());
    EXPECT_EQ(form().Shp_Thump.BorderColor(), 255u);
    EXPECT_EQ(form().Shp_Thump.Left(), t.Left() - 33);
    EXPECT_EQ(form().Shp_Thump.Top(), t.Top() - 33);
    EXPECT_EQ(form().Shp_Thump.Width(), t.Width() + 83);
    EXPECT_EQ(form().Shp_Thump.Height(), t.Height() + 73);
  });
}

TEST_F(Streifen, TheTargetsFrameFollowsTheSameRuleAndANegativeIndexHidesIt) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().Markiere_Ziel(2);
    const Bildfeld& t = form().Pic_Thumb(2);
    const double b = form().Shp_Sort.BorderWidth();
    EXPECT_TRUE(form().Shp_Sort.Visible());
    EXPECT_EQ(form().Shp_Sort.BorderColor(), 65280u);
    EXPECT_EQ(form().Shp_Sort.Left(), t.Left() - (b + 30));
    EXPECT_EQ(form().Shp_Sort.Top(), t.Top() - (b + 30));
    EXPECT_EQ(form().Shp_Sort.Width(), t.Width() + b + 80);
    EXPECT_EQ(form().Shp_Sort.Height(), t.Height() + b + 70);
    form().Markiere_Ziel(-1);
    EXPECT_FALSE(form().Shp_Sort.Visible());
  });
}

TEST_F(Streifen, TheFrameIsHiddenLeftOfTheStripAndStandsAroundTheTemplateJustBeforeIt) {
  fuege_Bilder_ein(4);
  zeige([&] {
    baue(1);
    form().Markiere_Auswahl();
    EXPECT_TRUE(form().Shp_Thump.Visible());
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(0).Left() - 32);
    baue(2);
    form().Markiere_Auswahl();
    EXPECT_FALSE(form().Shp_Thump.Visible());
  });
}

TEST_F(Streifen, ASelectionBehindTheLastControlFramesTheLastControl) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().AktZeile = 40;
    form().Markiere_Auswahl();
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(3).Left() - 32);
  });
}

TEST_F(Streifen, FramingTheSelectionPutsTheFirstRowRight) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().ErsteZeile = -1;
    form().Markiere_Auswahl();
    EXPECT_EQ(form().ErsteZeile, 0);
    form().ErsteZeile = 9;
    form().Markiere_Auswahl();
    EXPECT_EQ(form().ErsteZeile, 2);
  });
}

TEST_F(Streifen, FramesStandAboveTheThumbnailsBelowTheButtonsAndLetTheMouseThrough) {
  fuege_Bilder_ein(2);
  zeige([&] {
    const QObjectList& kinder = form().SSP_Panel(3).children();
    const auto hoehe = [&](QObject& o) { return kinder.indexOf(&o); };
    for (int i = 0; i <= 2; ++i) EXPECT_LT(hoehe(form().Pic_Thumb(i)), hoehe(form().Shp_Thump)) << i;
    for (SSCommand* knopf : {&form().SSC_Scroll_Left, &form().SSC_Scroll_Right})
      for (Shape* rahmen : {&form().Shp_Thump, &form().Shp_Sort}) EXPECT_LT(hoehe(*rahmen), hoehe(*knopf));
    form().Markiere_Ziel(2);
    klicke(form().Pic_Thumb(2), QPoint(0, 0));
    EXPECT_EQ(form().AktZeile, 1);
  });
}

// ── Selecting ───────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Streifen, SelectingShowsTheRowInAllControls) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& neu) { neu.Bild_Drucken(false); });
  fuege_Bild_ein(u"b"_s, u"jpg"_s, true, [](clsBildZuordnungen& neu) {
    neu.Bild_Beschreibung(u"Text\nzwei"_s);
    neu.Bild_Drucken(true);
    neu.Bild_NeueSeite(true);
    neu.Bild_DruckGesamteSeite(true);
    neu.Bild_AlsAnhang(true);
  });
  wurzel.schreibe(u"Belege/1/bjpg.txt"_s, "Info zu b");
  zeige([&] {
    frm_BildZuordnung& f = form();
    EXPECT_EQ(
        f.chk_Drucken.Value() + f.chk_NeueSeite.Value() + f.chk_GesamteSeite.Value() + f.chk_AlsAnhang.Value(), 0);
    klicke(f.Pic_Thumb(2));
    EXPECT_EQ(f.AktZeile, 1);
    EXPECT_EQ(f.AktThumb, 2);
    EXPECT_EQ(f.txt_BildName.Text(), u"b"_s);
    EXPECT_EQ(f.txt_BildName.Tag, u"b"_s);
    EXPECT_EQ(f.txt_BildExt.Text(), u"jpg"_s);
    EXPECT_EQ(f.txt_BildExt.Tag, u"jpg"_s);
    EXPECT_EQ(f.txt_BildText.Text(), u"Text\nzwei"_s);
    EXPECT_EQ(f.txt_BildInfo.Text(), u"Info zu b"_s);
    for (const CheckBox* c : {&f.chk_Drucken, &f.chk_NeueSeite, &f.chk_GesamteSeite, &f.chk_AlsAnhang})
      EXPECT_EQ(c->Value(), 1) << c->objectName().toStdString();
    EXPECT_EQ(f.chk_Delete.Value(), 0);
    EXPECT_FALSE(f.SSC_ExifInfo.Enabled());
    EXPECT_EQ(f.SSP_Anzahl(1).Caption(), u"2"_s);
    EXPECT_EQ(spalte_von(&Arbeitszeile::Aktuell), (QStringList{u"False"_s, u"True"_s}));
    EXPECT_FALSE(f.AnzeigeAufbau);
    EXPECT_FALSE(f.DatenGeaendert);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), Zeigerform::Standard);
  });
}

TEST_F(Streifen, ARowThatWasOnlyLookedAtIsMarkedThoughNothingHasChanged) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    EXPECT_TRUE(form().Zeile(1).ZeileGeaendert);
    EXPECT_FALSE(form().Zeile(2).ZeileGeaendert);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Streifen, TheExifButtonFollowsTheRow) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().Zeile(1).HatExif = true;
    klicke(form().Pic_Thumb(2));
    EXPECT_TRUE(form().SSC_ExifInfo.Enabled());
    klicke(form().Pic_Thumb(1));
    EXPECT_FALSE(form().SSC_ExifInfo.Enabled());
  });
}

TEST_F(Streifen, APictureThatIsGoneWhenItsRowIsSelectedHasNoExifDataAndIsNotMadeAgain) {
  fuege_Bilder_ein(2);
  (void)form();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/b.jpg"_s)));
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_FALSE(form().SSC_ExifInfo.Enabled());
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/b.jpg"_s));
  });
}

TEST_F(Streifen, AnIndexBehindTheLastRowSelectsRowZero) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Pic_Thumb_Click(9);
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().AktThumb, 9);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
  });
}

TEST_F(Streifen, TheSelectedControlIsNeverBelowTheFirst) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Pic_Thumb_Click(0);
    EXPECT_EQ(form().AktThumb, 1);
    EXPECT_EQ(form().AktZeile, 0);
  });
}

TEST_F(Streifen, AControlStandsForTheFirstRowShownPlusItsIndexLessOne) {
  fuege_Bilder_ein(4);
  zeige([&] {
    baue(2);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 3);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"4"_s);
  });
}

TEST_F(Streifen, ARowWithoutANameShowsNumberZeroAndLocksTheFields) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().Zeile(1).Bildname = QString();
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    EXPECT_FALSE(form().chk_Delete.Enabled());
    EXPECT_FALSE(form().txt_BildName.Enabled());
    EXPECT_FALSE(form().txt_BildText.Enabled());
  });
}

TEST_F(Streifen, WarningAndMarkOfANameAreThoseOfTheSelectedRow) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Zeile(1).NameDoppelt = true;
    form().Zeile(1).NameGeaendert = true;
    form().Zeile(1).OriginalName = QString(u"z"_s);
    klicke(form().Pic_Thumb(2));
    EXPECT_TRUE(form().SSP_WarnungName.Visible());
    EXPECT_TRUE(form().cmd_OriginalName.Enabled());
    klicke(form().Pic_Thumb(3));
    EXPECT_FALSE(form().SSP_WarnungName.Visible());
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
  });
}

TEST_F(Streifen, AFailureOfASelectionIsReportedAndThePointerWaitsUntilTheNextOne) {
  fuege_Bilder_ein(2);
  zeige([&] {
    const auto sammlung = std::exchange(form().pBildObj, nullptr);
    klicke(form().Pic_Thumb(2));
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
    EXPECT_EQ(berichte[0].Prozedur, u"Pic_Thumb_Click"_s);
    EXPECT_EQ(berichte[0].Nummer, 91);
    EXPECT_TRUE(berichte[0].MitMeldung);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), Zeigerform::Sanduhr);
    form().pBildObj = sammlung;
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(oberflaeche::mauszeiger().form(), Zeigerform::Standard);
  });
}

TEST_F(Streifen, ADoubleClickOpensTheFileInItsProgram) {
  fuege_Bilder_ein(2);
  const Starterdoppel starter;
  zeige([&] {
    doppelklicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 1);
    doppelklicke(form().Pic_Bearbeitung);
    EXPECT_EQ(starter.geoeffnet(), (QStringList{wurzel.pfad(u"Belege/1/b.jpg"_s), wurzel.pfad(u"Belege/1/b.jpg"_s)}));
  });
}

TEST_F(Streifen, AThumbnailOpensTheNameOfTheLastClickAndTheLargePictureThatOfItsRow) {
  fuege_Bilder_ein(2);
  const Starterdoppel starter;
  zeige([&] {
    klicke(form().Pic_Thumb(1));
    form().Zeile(0).VollerPfad = QString(u"P:\\Belege\\1\\b.jpg"_s);
    form().Pic_Thumb(1).DblClick();
    form().Pic_Bearbeitung.DblClick();
    EXPECT_EQ(starter.geoeffnet(), (QStringList{wurzel.pfad(u"Belege/1/a.jpg"_s), wurzel.pfad(u"Belege/1/b.jpg"_s)}));
  });
}

TEST_F(Streifen, ADoubleClickOpensNothingWhereThereIsNoPicture) {
  const Starterdoppel starter;
  zeige([&] {
    doppelklicke(form().Pic_Bearbeitung);
    EXPECT_TRUE(starter.geoeffnet().isEmpty());
  });
}

TEST_F(Streifen, ADoubleClickOnAMissingFileSaysSo) {
  fuege_Bild_ein(u"weg"_s, u"jpg"_s, false);
  const Starterdoppel starter;
  meldungen.erwarte(
      {u"Die Datei „P:\\Belege\\1\\weg.jpg“ gibt es nicht."_s, u"Achtung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  zeige([&] {
    doppelklicke(form().Pic_Thumb(1));
    EXPECT_TRUE(starter.geoeffnet().isEmpty());
  });
}
