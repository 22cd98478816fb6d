#include <QCoreApplication>
#include <QFile>
#include <QHelpEvent>
#include <QToolTip>

#include "dialogs/search/Vorschaubild.h"
#include "tests/dialogs/overview/WeitereTest.h"

using namespace Qt::Literals::StringLiterals;

class WeitereLaden : public WeitereTest {
 protected:
  QColor farbe_der_Vorschau() {
    const QImage bild = form().pic_Anzeige.Image();
    return bild.pixelColor(bild.rect().center());
  }
};

TEST_F(WeitereLaden, TheUpperGridShowsMarkNameExtensionAndDescription) {
  fuege_Bilder_ein(1);
  QStringList sichtbar;
  ASSERT_EQ(bilder().ColumnCount(), 25);
  for (int i = 0; i < 25; ++i) {
    const Gitterspalte& spalte = bilder().Column(i);
    if (spalte.Visible) sichtbar += spalte.Caption + u' ' + QString::number(spalte.Width);
    EXPECT_EQ(spalte.Locked, i != 0) << i;
    EXPECT_EQ(spalte.HeadAlignment, Ausrichtung::Zentriert) << i;
  }
  EXPECT_EQ(sichtbar, (QStringList{u"Zu 400"_s, u"Dateiname 2000"_s, u"Ext 900"_s, u"Beschreibung 2500"_s}));
}

TEST_F(WeitereLaden, TheLowerGridTakesArticleNumbersWithAButton) {
  fuege_Bilder_ein(1);
  const QStringList soll{u"Artikel-Nr 2500 1 0"_s, u"Kurztext 1 2000 1 1"_s, u"Kurztext 2 2000 1 1"_s,
      u"Referenz 3 2000 0 1"_s, u"Referenz 4 2000 0 1"_s};
  QStringList ist;
  form();
  for (int i = 0; i < artikel().ColumnCount(); ++i) {
    const Gitterspalte& s = artikel().Column(i);
    ist += u"%1 %2 %3 %4"_s.arg(s.Caption).arg(s.Width).arg(s.Visible).arg(s.Locked);
    EXPECT_EQ(s.Button, i == 0);
  }
  EXPECT_EQ(ist, soll);
  EXPECT_FALSE(artikel().Column(0).ButtonPicture.isNull());
  EXPECT_EQ(form().pArtikelArray()->Count(Zeilen), 0);
  EXPECT_EQ(form().pArtikelArray()->Count(XArrayDBObject::Dimension::Spalten), 11);
}

TEST_F(WeitereLaden, EveryPictureOfTheCollectionIsListedAndMarked) {
  fuege_Bilder_ein(2);
  fuege_ein({.name = u"fort"_s, .beschreibung = u"Ansicht"_s, .druck = u"1111"_s});
  form();
  const XArrayDBObject& tabelle = *form().pZuordnungArray();
  ASSERT_EQ(tabelle.Count(Zeilen), 3);
  EXPECT_EQ(tabelle.Count(XArrayDBObject::Dimension::Spalten), 25);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(ist_True(tabelle.Value(i, uebersicht::Marke)));
    EXPECT_EQ(bilder().model()->index(i, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(ist_True(tabelle.Value(i, uebersicht::Fehlt)), i == 2);
    EXPECT_EQ(ist_True(tabelle.Value(i, uebersicht::Loeschen)), i == 2);
    EXPECT_TRUE(std::holds_alternative<Empty>(tabelle.Value(i, uebersicht::Info)));
  }
  EXPECT_EQ(gezeigt(bilder(), 2, uebersicht::Dateiname), u"fort"_s);
  EXPECT_EQ(CStr(tabelle.Value(2, uebersicht::Datei)), u"P:\\Belege\\1\\fort.jpg"_s);
  EXPECT_EQ(CStr(tabelle.Value(2, uebersicht::AlsAnhang)), u"True"_s);
}

TEST_F(WeitereLaden, ARecordWithoutPicturesHasOneEmptyRowWithoutAMark) {
  form();
  EXPECT_EQ(form().pZuordnungArray()->Count(Zeilen), 1);
  zeige([&] {
    EXPECT_EQ(bilder().model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
  });
}

TEST_F(WeitereLaden, ALongTextOfTheHostEndsWithAnEllipsisAndItsToolTipShowsAllOfIt) {
  form().SSP_Info.Caption(u"   "_s + QString(300, u'W') + u" Ende"_s);
  zeige([&] {
    for (const int breite : {560, 900}) {
      form().resize(breite, 500);
      QCoreApplication::processEvents();
      EXPECT_TRUE(form().SSP_Info.gezeigter_Text().endsWith(u"W…"_s));
      EXPECT_LT(
          form().SSP_Info.fontMetrics().horizontalAdvance(form().SSP_Info.gezeigter_Text()), form().SSP_Info.width());
      QToolTip::showText({}, u"nichts"_s);
      QHelpEvent rast(QEvent::ToolTip, QPoint(9, 9), form().SSP_Info.mapToGlobal(QPoint(9, 9)));
      QCoreApplication::sendEvent(&form().SSP_Info, &rast);
      EXPECT_TRUE(QToolTip::text().contains(u"Ende"_s));
    }
  });
}

TEST_F(WeitereLaden, TheTextOfTheHostComesAfterThreeBlanks) {
  fuege_Bilder_ein(1);
  EXPECT_EQ(form().SSP_Info.Caption(), u"   Rechnung 1"_s);
  EXPECT_EQ(form().SSP_WeitereZuordnungen.Caption(), u"   Weitere Zuordnungen für:"_s);
  EXPECT_EQ(form().SSC_ZuordnungSpeichern.Caption(), u"Zuordnung speichern  "_s);
  EXPECT_EQ(form().cmd_Abbrechen.Caption(), u"&Zurück"_s);
  EXPECT_EQ(form().Caption(), u"Anzeige der Zuordnungen"_s);
}

TEST_F(WeitereLaden, OnlyTheValueOneSelectsTheSecondArticleComponent) {
  fuege_Bilder_ein(1);
  form();
  EXPECT_EQ(wirt->einstellungen->gefragt, QStringList{u"Firmendaten|MitArtikelstammZF|Standard|Standard|0"_s});
  EXPECT_FALSE(form().pMitArtikelstammZF);
  for (const auto& [wert, zf] : {std::pair{u"1"_s, true}, {u"0"_s, false}, {u""_s, false}, {u"True"_s, false},
           {u" 1"_s, false}, {u"11"_s, false}}) {
    wirt->einstellungen->wert = wert;
    form().Lade_Zuordnungen();
    EXPECT_EQ(form().pMitArtikelstammZF, zf) << wert.toStdString();
    EXPECT_TRUE(form().pArtikelArray());
    stamm.rufe.clear();
    QString nummer = u"x"_s;
    form().Lese_Artikel(nummer, 0, false);
    EXPECT_TRUE(stamm.rufe.value(0).startsWith(zf ? u"ZF: Init 0 1 1"_s : u"SQL: Init 0 1 1"_s));
  }
}

TEST_F(WeitereLaden, AFailureIsReportedUnderTheNameWithOneLetterMore) {
  fuege_Bilder_ein(1);
  wirt->einstellungen->fehler = fehlernummer::Verbindung;
  form();
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"Lade_Zuordnungen"_s, fehlernummer::Verbindung);
  wirt->einstellungen->fehler = 0;
  form().pBildObj = nullptr;
  form().Lade_Zuordnungen();
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"Lade_Zuordnungen"_s, fehlernummer::ObjektNichtGesetzt);
}

TEST_F(WeitereLaden, TheFirstPictureIsPreviewedAtOnceAndThenTheCurrentRow) {
  lege_Bild(u"a.jpg"_s, QSize(120, 80), Qt::blue);
  lege_Bild(u"b.jpg"_s, QSize(120, 80), Qt::red);
  fuege_ein({.name = u"a"_s});
  fuege_ein({.name = u"b"_s});
  zeige([&] {
    EXPECT_TRUE(form().pic_Anzeige.isVisible());
    EXPECT_GT(farbe_der_Vorschau().blue(), 200);
    klicke(bilder(), 1, uebersicht::Dateiname);
    EXPECT_GT(farbe_der_Vorschau().red(), 200);
    eingaben::taste(form(), Qt::Key_Up);
    EXPECT_GT(farbe_der_Vorschau().blue(), 200);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
}

TEST_F(WeitereLaden, ASmallPictureIsEnlargedToTheFrameAndKeepsItsProportions) {
  lege_Bild(u"a.jpg"_s, QSize(30, 10));
  fuege_ein({});
  zeige([&] {
    const double rahmen = form().SSP_Anzeige.Width();
    EXPECT_NEAR(form().pic_Anzeige.Width(), rahmen, 15);
    EXPECT_NEAR(form().pic_Anzeige.Height(), rahmen / 3, 15);
    EXPECT_NEAR(form().pic_Anzeige.Top(), (form().SSP_Anzeige.Height() - rahmen / 3) / 2, 15);
  });
}

TEST_F(WeitereLaden, TheUpperHalfIsForThePicturesWithTheirPreviewAndTheLowerForTheArticles) {
  fuege_Bilder_ein(1);
  zeige([&] {
    for (const QSize groesse : {form().size(), QSize(900, 700)}) {
      form().resize(groesse);
      QCoreApplication::processEvents();
      EXPECT_NEAR(bilder().Height(), artikel().Height(), 15);
      EXPECT_NEAR(form().SSP_Anzeige.Top(), bilder().Top(), 15);
      EXPECT_NEAR(form().SSP_Anzeige.Height(), bilder().Height(), 15);
      EXPECT_GE(form().SSP_Anzeige.Left(), bilder().Left() + bilder().Width());
      EXPECT_GE(artikel().Top(), bilder().Top() + bilder().Height());
      EXPECT_NEAR(artikel().Width(), form().SSP_Anzeige.Left() + form().SSP_Anzeige.Width() - bilder().Left(), 15);
      EXPECT_LE(artikel().Top() + artikel().Height(), form().cmd_Abbrechen.Top() + 15);
    }
  });
}

TEST_F(WeitereLaden, AHighPictureIsBoundByTheHeightAndStandsInTheMiddle) {
  lege_Bild(u"a.jpg"_s, QSize(300, 3000));
  fuege_ein({});
  zeige([&] {
    for (const QSize groesse : {QSize(800, 600), QSize(600, 440), QSize(1400, 1000)}) {
      form().resize(groesse);
      QCoreApplication::processEvents();
      EXPECT_NEAR(form().pic_Anzeige.Height(), form().SSP_Anzeige.Height(), 15);
      EXPECT_NEAR(form().pic_Anzeige.Left(), (form().SSP_Anzeige.Width() - form().pic_Anzeige.Width()) / 2, 15);
    }
  });
}

TEST_F(WeitereLaden, AMissingFileShowsTheSubstitute) {
  fuege_ein({});
  EXPECT_EQ(form().Pic_Dummy.Picture(), form().Pic_Blank.Picture());
  EXPECT_EQ(form().Pic_Dummy.Picture(), vorschaubild::ersatzbild());
}

TEST_F(WeitereLaden, AFileOfAnotherTypeShowsTheIconOfItsType) {
  wurzel.schreibe(u"Belege/1/a.pdf"_s, "%PDF");
  fuege_ein({.ext = u"pdf"_s});
  form();
  ASSERT_TRUE(form().Pic_Dummy.Picture());
  EXPECT_EQ(store->AktLoadPicture, u""_s);
  EXPECT_LE(form().Pic_Dummy.Picture()->groesse().width(), 64);
}

TEST_F(WeitereLaden, APictureThatCannotBeLoadedLeavesTheOneBefore) {
  lege_Bild(u"a.jpg"_s);
  lege_Bild(u"b.jpg"_s);
  fuege_ein({.name = u"a"_s});
  fuege_ein({.name = u"b"_s});
  form();
  const auto vorher = form().Pic_Dummy.Picture();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/b.jpg"_s)));
  form().Bild_Vorschau(1);
  EXPECT_EQ(form().Pic_Dummy.Picture(), vorher);
  EXPECT_EQ(store->AktLoadPicture, u"a.jpg"_s);
}

TEST_F(WeitereLaden, AFileThatIsNoPictureIsToldAndLeavesAnEmptyPreview) {
  wurzel.schreibe(u"Belege/1/a.jpg"_s, "kein Bild");
  fuege_ein({});
  meldungen.erwarte({u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s});
  form();
  EXPECT_EQ(form().Pic_Dummy.Picture(), nullptr);
}

TEST_F(WeitereLaden, NoRowHasNoPreviewAndNoHourglass) {
  fuege_Bilder_ein(1);
  const auto vorher = form().Pic_Dummy.Picture();
  form().Bild_Vorschau(-1);
  EXPECT_EQ(form().Pic_Dummy.Picture(), vorher);
}

TEST_F(WeitereLaden, FailuresOfThePreviewAreReportedWithTheirProcedure) {
  fuege_Bilder_ein(1);
  form();
  form().Bild_Vorschau(7);
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"Bild_Vorschau"_s, fehlernummer::IndexAusserhalb);
  EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  form().VorschauBild_Einpassen(7);
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"VorschauBild_Einpassen"_s, fehlernummer::IndexAusserhalb);
  form().StretchPicture(form().Pic_Dummy, form().pic_Anzeige, -10, -10);
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"StretchPicture"_s, fehlernummer::UngueltigerEigenschaftswert);
}

TEST_F(WeitereLaden, TheCallersRecordsAreOnlyRead) {
  fuege_Bilder_ein(2);
  form();
  for (int i = 0; i < 2; ++i) {
    store->AktInd(i);
    EXPECT_FALSE(store->Bild_Changeflag());
    EXPECT_FALSE(store->Bild_Delete());
  }
}
