#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <QFile>
#include <QTest>
#include <cerrno>

#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Meldungstexte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file that is there and cannot be read: file permissions would not stop the superuser. Empty for none.
QString unlesbare_Datei;

}  // namespace

// In front of the C library's, for this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" ssize_t pread(int datei, void* ziel, size_t anzahl, off_t position) {
  if (!unlesbare_Datei.isEmpty() &&
      QFile::symLinkTarget(u"/proc/self/fd/"_s + QString::number(datei)) == unlesbare_Datei) {
    errno = EIO;
    return -1;
  }
  return ::syscall(SYS_pread64, datei, ziel, anzahl, position);
}

namespace {

/// A JPEG with an Exif segment of one entry (Make "KVO"), or with one that is cut in the middle.
QByteArray mit_Exif(const QByteArray& jpeg, bool heil = true) {
  QByteArray tiff("II*\0\x08\0\0\0", 8);
  tiff += QByteArray("\x01\0\x0F\x01\x02\0\x04\0\0\0KVO\0\0\0\0\0", 18);
  QByteArray inhalt = QByteArray("Exif\0\0", 6) + (heil ? tiff : tiff.left(9));
  const auto laenge = static_cast<unsigned>(inhalt.size() + 2);
  const QByteArray kopf{"\xFF\xD8\xFF\xE1"};
  return kopf + static_cast<char>(laenge >> 8) + static_cast<char>(laenge & 0xFF) + inhalt + jpeg.mid(2);
}

}  // namespace

class Laden : public Dialogtest {
 protected:
  /// A picture's text file as it lies on the disk.
  void lege_Text(const QString& bildname, const QByteArray& inhalt, const QString& ext = u"jpg"_s) {
    wurzel.schreibe(u"Belege/1/"_s + bildname + ext + u".txt"_s, inhalt);
  }
  /// The window becomes the active one once more.
  void aktiviere_erneut() {
    QEvent ereignis(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&form(), &ereignis);
  }
};

// ── Form_Load and Form_Activate ─────────────────────────────────────────────────────────────────────────────────────

TEST_F(Laden, LoadingTheFormSetsTheStartValues) {
  frm_BildZuordnung f;
  f.Load();
  EXPECT_EQ(f.Caption(), u"Bildzuordnung"_s);
  EXPECT_EQ(f.AktZeile, -1000);
  EXPECT_EQ(f.SSP_Panel(0).Caption(), QString());
  EXPECT_FALSE(f.SSP_WarnungName.Visible());
  EXPECT_FALSE(f.SSC_AlleZuordnungen.Enabled());
  EXPECT_FALSE(f.SSC_WeitereZuordnungen.Enabled());
  EXPECT_EQ(f.StreifenHoehe, 1750);
  EXPECT_EQ(f.LetzteZeile(), 0);
  EXPECT_TRUE(f.KeineBilder());
  EXPECT_FALSE(f.Pic_Thumb(0).Visible());
  EXPECT_EQ(f.Shp_Thump.BorderColor(), 255U);
  EXPECT_EQ(f.Shp_Sort.BorderColor(), 65280U);
  EXPECT_FALSE(f.Shp_Thump.Visible());
  EXPECT_FALSE(f.Shp_Sort.Visible());
  EXPECT_EQ(f.ErsteZeile, 0);
  EXPECT_FALSE(f.DatenGeaendert);
  EXPECT_FALSE(f.SSC_ZuordnungSpeichern.Enabled());
  EXPECT_FALSE(f.LayoutSperre);
  EXPECT_EQ(f.SSP_Anzahl(0).Caption(), u"Bild:"_s);
  EXPECT_EQ(f.SSP_Anzahl(1).Caption(), u"0"_s);
  EXPECT_EQ(fenster.wiederhergestellt, u"KVZunft_Gesamt 2000/frm_BildZuordnung"_s);
  for (const Steuerelement* feld : std::initializer_list<const Steuerelement*>{&f.txt_BildName, &f.txt_BildText,
           &f.txt_BildInfo, &f.chk_Delete, &f.chk_Drucken, &f.chk_AlsAnhang, &f.chk_NeueSeite, &f.chk_GesamteSeite})
    EXPECT_FALSE(feld->Enabled());
}

TEST_F(Laden, TheRestoredPlacementIsTakenWithoutALayout) {
  frm_BildZuordnung f;
  const double vorher = f.SSS_BildZuordnung.Width();
  bool gesperrt = false;
  fenster.lage = Fensterlage{QRect(10, 20, 1100, 700), false};
  fenster.beim_Wiederherstellen = [&] { gesperrt = f.LayoutSperre; };
  f.Load();
  EXPECT_TRUE(gesperrt);
  EXPECT_EQ(f.ScaleWidth(), 1100 * 15);
  EXPECT_EQ(f.SSS_BildZuordnung.Width(), vorher);
}

TEST_F(Laden, TheHeaderShowsTheInfoLineBehindThreeBlanks) {
  fuege_Bilder_ein(1);
  EXPECT_EQ(form().SSP_Panel(0).Caption(), QString());
  zeige([&] { EXPECT_EQ(form().SSP_Panel(0).Caption(), u"   Rechnung 1"_s); });
}

TEST_F(Laden, EveryActivationShowsTheInfoLineAnew) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().pInfoZeile = u"Rechnung 2"_s;
    form().PTyp1 = u"ART"_s;
    aktiviere_erneut();
    EXPECT_EQ(form().SSP_Panel(0).Caption(), u"   Rechnung 2"_s);
    EXPECT_TRUE(form().SSC_WeitereZuordnungen.Visible());
  });
}

struct Artikelfall {
  QString typ1;
  bool nur_Anzeige;
  bool sichtbar;
};

class LadenArtikel : public Laden, public ::testing::WithParamInterface<Artikelfall> {};

TEST_P(LadenArtikel, FurtherAssignmentsAreForArticlesThatCanBeChanged) {
  typ1 = GetParam().typ1;
  nur_Anzeige = GetParam().nur_Anzeige;
  fuege_Bilder_ein(1);
  zeige([&] { EXPECT_EQ(form().SSC_WeitereZuordnungen.Visible(), GetParam().sichtbar); });
}

INSTANTIATE_TEST_SUITE_P(Typen, LadenArtikel,
    ::testing::Values(Artikelfall{u"ART"_s, false, true}, Artikelfall{u"art"_s, false, true},
        Artikelfall{u"ArT"_s, false, true}, Artikelfall{u"ART"_s, true, false}, Artikelfall{u"BEL"_s, false, false},
        Artikelfall{u"ARTI"_s, false, false}));

// ── Lade_Zuordnung ──────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Laden, EveryColumnIsFilledFromTheRecord) {
  fuege_Bild_ein(u"haus"_s, u"jpg"_s, true, [](clsBildZuordnungen& b) {
    b.Bild_Key2(u"K2"_s);
    b.Bild_Key3(u"K3"_s);
    b.Bild_Key4(u"K4"_s);
    b.Bild_Typ2(u"T2"_s);
    b.Bild_Beschreibung(u"Vorderseite"_s);
    b.Bild_Drucken(false);
    b.Bild_DruckGesamteSeite(true);
    b.Bild_NeueSeite(true);
    b.Bild_AlsAnhang(true);
  });
  lege_Text(u"haus"_s, "Info");
  db.fuehre_aus(u"update Bild_Zuordnungen set Key2 = '1'"_s);
  form();
  store->Bild_SortIndex(7);
  form().Lade_Zuordnung();
  const frm_BildZuordnung& f = form();
  ASSERT_EQ(f.LetzteZeile(), 0);
  EXPECT_TRUE(f.Zeile(0).Gespeichert);
  EXPECT_EQ(f.Zeile(0).VollerPfad, u"P:\\Belege\\1\\haus.jpg"_s);
  EXPECT_EQ(f.Zeile(0).Root, u"P:"_s);
  EXPECT_EQ(f.Zeile(0).Pfad, u"Belege\\1"_s);
  EXPECT_EQ(f.Zeile(0).Bildname, u"haus"_s);
  EXPECT_EQ(f.Zeile(0).BildExt, u"jpg"_s);
  EXPECT_EQ(f.Zeile(0).Beschreibung, u"Vorderseite"_s);
  EXPECT_FALSE(f.Zeile(0).Drucken);
  EXPECT_TRUE(f.Zeile(0).DruckGesamteSeite);
  EXPECT_TRUE(f.Zeile(0).NeueSeite);
  EXPECT_TRUE(f.Zeile(0).AlsAnhang);
  EXPECT_EQ(f.Zeile(0).Key1, u"RE"_s);
  EXPECT_EQ(f.Zeile(0).Key2, u"1"_s);
  EXPECT_EQ(f.Zeile(0).Key3, u"K3"_s);
  EXPECT_EQ(f.Zeile(0).Key4, u"K4"_s);
  EXPECT_EQ(f.Zeile(0).Typ1, u"BEL"_s);
  EXPECT_EQ(f.Zeile(0).Typ2, u"T2"_s);
  EXPECT_FALSE(f.Zeile(0).Aktuell);
  EXPECT_EQ(f.Zeile(0).BildInfo, u"Info"_s);
  for (const auto feld : {&Arbeitszeile::ZeileGeaendert, &Arbeitszeile::DateiFehlt, &Arbeitszeile::Entfernen,
           &Arbeitszeile::NameDoppelt, &Arbeitszeile::NameGeaendert, &Arbeitszeile::NeuAusSuche})
    EXPECT_FALSE(f.Zeile(0).*feld);
  EXPECT_EQ(f.mit_Exif(0).HatExif, false);
  EXPECT_EQ(f.Zeile(0).ExifKennung, QString());
  EXPECT_EQ(f.Zeile(0).OriginalName, QString());
  EXPECT_EQ(f.Zeile(0).SortIndex, 7);
}

TEST_F(Laden, TheRowsKeepTheOrderOfTheCollection) {
  fuege_Bilder_ein(4);
  db.fuehre_aus(u"update Bild_Zuordnungen set SortIndex = 9 where Bildname = 'b'"_s);
  EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"c"_s, u"d"_s, u"b"_s}));
  // The stored position is not read: it shows in the order of the rows only.
  EXPECT_EQ(spalte_von(&Arbeitszeile::SortIndex), (QStringList{u"0"_s, u"0"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"4"_s);
  EXPECT_TRUE(form().SSC_AlleZuordnungen.Enabled());
  EXPECT_TRUE(form().SSC_WeitereZuordnungen.Enabled());
}

TEST_F(Laden, FillingTheTableFillsNoControls) {
  fuege_Bilder_ein(2);
  EXPECT_EQ(form().Pic_Thumb.Count(), 1);
  EXPECT_EQ(form().AktZeile, -1000);
  EXPECT_EQ(form().txt_BildName.Text(), QString());
}

TEST_F(Laden, TheTextFileIsTrimmedOfBlanksAndOfNothingElse) {
  fuege_Bilder_ein(1);
  lege_Text(u"a"_s, "  \tzwei\r\nZeilen\xA0 und \xFC\n ");
  EXPECT_EQ(spalte_von(&Arbeitszeile::BildInfo), QStringList{u"\tzwei\r\nZeilen\u00A0 und ü\n"_s});
}

TEST_F(Laden, ATextFileWithADotBeforeTheExtensionIsNotThePictures) {
  fuege_Bilder_ein(1);
  lege_Text(u"a."_s, "falsch");
  EXPECT_EQ(spalte_von(&Arbeitszeile::BildInfo), QStringList{QString()});
}

TEST_F(Laden, AMissingFileComesUpMarkedForRemovalWithoutExif) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  fuege_Bild_ein(u"b"_s);
  EXPECT_EQ(spalte_von(&Arbeitszeile::DateiFehlt), (QStringList{u"True"_s, u"False"_s}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::Entfernen), (QStringList{u"True"_s, u"False"_s}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::HatExif), (QStringList{u"False"_s, u"False"_s}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::ExifKennung), (QStringList{QString(), QString()}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), (QStringList{u"False"_s, u"False"_s}));
  EXPECT_TRUE(form().DatenGeaendert);
}

TEST_F(Laden, ARecordWithALostPictureOffersSavingAtOnce) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  fuege_Bild_ein(u"b"_s);
  zeige([&] {
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(form().chk_Delete.Value(), 1);
    EXPECT_FALSE(form().chk_Delete.Enabled());
    EXPECT_EQ(form().Pic_Dummy.Picture(), form().Pic_Blank.Picture());
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().chk_Delete.Value(), 0);
    EXPECT_TRUE(form().chk_Delete.Enabled());
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().chk_Delete.Value(), 1);
    EXPECT_FALSE(form().chk_Delete.Enabled());
  });
}

TEST_F(Laden, ALostPictureThatIsNotTheFirstIsOfferedForRemovalToo) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"b"_s, u"jpg"_s, false);
  zeige([&] {
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_TRUE(form().chk_Delete.Enabled());
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().chk_Delete.Value(), 1);
  });
}

TEST_F(Laden, AMissingPictureRootMarksNoRow) {
  fuege_Bilder_ein(2);
  Pfadkarte::aktuell().setze(u"P:"_s, wurzel.pfad(u"gibt es nicht"_s));
  EXPECT_EQ(spalte_von(&Arbeitszeile::DateiFehlt), (QStringList{u"True"_s, u"True"_s}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::Entfernen), (QStringList{u"False"_s, u"False"_s}));
  EXPECT_FALSE(form().DatenGeaendert);
}

TEST_F(Laden, AMissingFolderOfTheRecordMarksNoRowAndTheUserStillCan) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\fort"_s); });
  fuege_Bild_ein(u"b"_s);
  zeige([&] {
    EXPECT_EQ(spalte_von(&Arbeitszeile::Entfernen), (QStringList{u"False"_s, u"False"_s}));
    EXPECT_EQ(form().Pic_Dummy.Picture(), form().Pic_Blank.Picture());
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_TRUE(form().chk_Delete.Enabled());
    klicke(form().chk_Delete, QPoint(8, 8));
    EXPECT_TRUE(form().Zeile(0).Entfernen);
  });
}

TEST_F(Laden, WithNothingToShowThePlaceholderStaysAndTheFieldsAreLocked) {
  zeige([&] {
    EXPECT_EQ(form().LetzteZeile(), 0);
    EXPECT_TRUE(form().KeineBilder());
    EXPECT_EQ(form().AktZeile, -1000);
    EXPECT_EQ(form().Pic_Thumb.Count(), 1);
    EXPECT_FALSE(form().SSC_AlleZuordnungen.Enabled());
    EXPECT_FALSE(form().SSC_WeitereZuordnungen.Enabled());
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    for (const Steuerelement* feld : std::initializer_list<const Steuerelement*>{&form().txt_BildName,
             &form().txt_BildText, &form().txt_BildInfo, &form().chk_Delete, &form().chk_Drucken, &form().chk_AlsAnhang,
             &form().chk_NeueSeite, &form().chk_GesamteSeite})
      EXPECT_FALSE(feld->Enabled());
  });
}

TEST_F(Laden, ReadingAgainStartsFromAnEmptyTable) {
  fuege_Bilder_ein(3);
  form().Zeile(2).Beschreibung = u"alt"_s;
  store->FKT_Neu();
  form().Lade_Zuordnung();
  EXPECT_EQ(form().LetzteZeile(), 0);
  EXPECT_TRUE(form().KeineBilder());
}

TEST_F(Laden, AMissingTableIsMade) {
  fuege_Bilder_ein(2);
  form().BildTabelle.reset();
  form().Lade_Zuordnung();
  EXPECT_EQ(form().LetzteZeile(), 1);
}

TEST_F(Laden, AnUninitialisedCollectionIsReportedAndTheDialogOpensEmpty) {
  form().pBildObj = std::make_shared<clsBildZuordnungen>();
  form().SSC_AlleZuordnungen.Enabled(false);
  form().Lade_Zuordnung();
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Lade_Zuordnung"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::ObjektNichtGesetzt);
  EXPECT_FALSE(berichte[0].Beschreibung.isEmpty());
  EXPECT_TRUE(berichte[0].MitMeldung);
  EXPECT_TRUE(form().KeineBilder());
  EXPECT_FALSE(form().SSC_AlleZuordnungen.Enabled());
}

TEST_F(Laden, AMissingCollectionIsReported) {
  form().pBildObj.reset();
  form().Lade_Zuordnung();
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Prozedur, u"Lade_Zuordnung"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::ObjektNichtGesetzt);
}

TEST_F(Laden, AFailureInTheMiddleKeepsTheRowsReadSoFar) {
  fuege_Bilder_ein(3);
  lege_Text(u"a"_s, "eins");
  lege_Text(u"b"_s, "zwei");
  unlesbare_Datei = wurzel.pfad(u"Belege/1/bjpg.txt"_s);
  form();
  unlesbare_Datei.clear();
  EXPECT_EQ(form().Zeile(0).BildInfo, u"eins"_s);
  EXPECT_EQ(form().LetzteZeile(), 1);
  EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
  EXPECT_EQ(form().Zeile(1).Bildname, u"b"_s);
  EXPECT_FALSE(form().SSC_AlleZuordnungen.Enabled());
  EXPECT_FALSE(form().SSC_WeitereZuordnungen.Enabled());
  EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"0"_s);
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Lade_Zuordnung"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::EinAusgabeFehler);
  EXPECT_TRUE(berichte[0].MitMeldung);
}

TEST_F(Laden, NamesWithUmlautsApostrophesAndDotsAreFound) {
  lege_Bild(u"Müller's Haus v1.2.jpg"_s, QSize(90, 60));
  fuege_Bild_ein(u"x"_s);
  db.fuehre_aus(u"update Bild_Zuordnungen set Bildname = 'Müller''s Haus v1.2'"_s);
  zeige([&] {
    EXPECT_FALSE(form().Zeile(0).DateiFehlt);
    EXPECT_EQ(form().txt_BildName.Text(), u"Müller's Haus v1.2"_s);
  });
}

// ── Exif ────────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Laden, APictureWithExifDataOffersTheirDisplay) {
  fuege_Bilder_ein(2);
  wurzel.schreibe(u"Belege/1/b.jpg"_s, mit_Exif(lege_Bild(u"b.jpg"_s)));
  EXPECT_EQ(spalte_von(&Arbeitszeile::HatExif), (QStringList{u"False"_s, u"True"_s}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::ExifKennung), (QStringList{QString(), u"True"_s}));
  zeige([&] {
    EXPECT_FALSE(form().SSC_ExifInfo.Enabled());
    klicke(form().Pic_Thumb(2));
    EXPECT_TRUE(form().SSC_ExifInfo.Enabled());
    klicke(form().Pic_Thumb(1));
    EXPECT_FALSE(form().SSC_ExifInfo.Enabled());
  });
}

TEST_F(Laden, ExifDataThatCannotBeReadNeverEndTheLoading) {
  fuege_Bilder_ein(3);
  wurzel.schreibe(u"Belege/1/a.jpg"_s, mit_Exif(lege_Bild(u"a.jpg"_s), false));
  wurzel.schreibe(u"Belege/1/b.jpg"_s, QByteArray());
  EXPECT_EQ(form().LetzteZeile(), 2);
  EXPECT_EQ(form().mit_Exif(1).HatExif, false);
  EXPECT_EQ(form().mit_Exif(2).HatExif, false);
}

// ── Modes ───────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Laden, WithAttachmentsOnlyEveryPictureShownBecomesOne) {
  nur_Anhang = true;
  fuege_Bilder_ein(3);
  zeige([&] {
    EXPECT_EQ(spalte_von(&Arbeitszeile::AlsAnhang), (QStringList{u"True"_s, u"False"_s, u"False"_s}));
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().chk_AlsAnhang.Value(), 1);
    EXPECT_FALSE(form().chk_AlsAnhang.Enabled());
    EXPECT_EQ(spalte_von(&Arbeitszeile::AlsAnhang), (QStringList{u"True"_s, u"True"_s, u"False"_s}));
    EXPECT_TRUE(form().chk_Drucken.Enabled());
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Laden, WithAttachmentsOnlyTheBoxStaysCheckedInDisplayModeToo) {
  nur_Anhang = true;
  nur_Anzeige = true;
  fuege_Bilder_ein(2);
  zeige([&] {
    EXPECT_EQ(form().chk_AlsAnhang.Value(), 1);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().chk_AlsAnhang.Value(), 1);
    EXPECT_FALSE(form().chk_AlsAnhang.Enabled());
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Laden, InDisplayModeTheFourButtonsStayHiddenAfterAnActivationToo) {
  nur_Anzeige = true;
  typ1 = u"ART"_s;
  fuege_Bilder_ein(1);
  zeige([&] {
    aktiviere_erneut();
    for (const SSCommand* knopf : {&form().SSC_BilderLaden, &form().SSC_AlleZuordnungen, &form().SSC_WeitereZuordnungen,
             &form().SSC_ZuordnungSpeichern})
      EXPECT_FALSE(knopf->Visible()) << knopf->Caption().toStdString();
  });
}

TEST_F(Laden, InDisplayModeNothingCanBeChanged) {
  nur_Anzeige = true;
  fuege_Bilder_ein(2);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    EXPECT_FALSE(form().txt_BildName.Enabled());
    EXPECT_TRUE(form().txt_BildText.Locked());
    EXPECT_TRUE(form().txt_BildInfo.Locked());
    for (CheckBox* schalter : {&form().chk_Drucken, &form().chk_GesamteSeite, &form().chk_AlsAnhang, &form().chk_Delete,
             &form().chk_NeueSeite}) {
      const int vorher = schalter->Value();
      klicke(*schalter, QPoint(8, 8));
      EXPECT_EQ(schalter->Value(), vorher);
    }
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Laden, OutsideDisplayModeTheButtonsShowAndTheTextsAreOpen) {
  fuege_Bilder_ein(1);
  zeige([&] {
    EXPECT_TRUE(form().SSC_BilderLaden.Visible());
    EXPECT_TRUE(form().SSC_AlleZuordnungen.Visible());
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Visible());
    EXPECT_FALSE(form().txt_BildName.Locked());
    EXPECT_FALSE(form().txt_BildText.Locked());
    EXPECT_FALSE(form().txt_BildInfo.Locked());
    EXPECT_TRUE(form().txt_BildName.Enabled());
  });
}

TEST_F(Laden, ALostPictureOffersNothingWhereNothingCanBeChanged) {
  nur_Anzeige = true;
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  zeige([&] {
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
  });
}
