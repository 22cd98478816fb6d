#include <QApplication>
#include <QImage>
#include <QTimer>
#include <algorithm>

#include "dialogs/search/frm_BilderSuchen.h"
#include "exif/frm_BildInfo.h"
#include "platform/shell/Programme.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class Aktionen : public Dialogtest {
 protected:
  Aktionen() { mod_BilderSuchen::pLetzterOrdner = u"P:\\Neu"_s; }
  ~Aktionen() override { mod_BilderSuchen::pLetzterOrdner.clear(); }

  /// Clicks "Bilder suchen"; `waehrend` runs once the search has read its folder.
  void suche(const std::function<void(frm_BilderSuchen&)>& waehrend) {
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
      auto* dialog = dynamic_cast<frm_BilderSuchen*>(QApplication::activeModalWidget());
      if (!dialog || fenster.pumpt || dialog->SSP_Anzahl.Caption().isEmpty()) return;
      takt.stop();
      waehrend(*dialog);
    });
    takt.start(0);
    klicke(form().SSC_BilderLaden);
  }
  /// Chooses all files of the search's folder.
  void suche_alle() {
    suche([](frm_BilderSuchen& dialog) {
      for (int i = 1; i <= dialog.lvwContent.Count(); ++i) dialog.lvwContent.Selected(i, true);
      klicke(dialog.cmd_Uebernehmen);
    });
  }
  QImage datei(const QString& name) { return QImage(wurzel.pfad(u"Belege/1/"_s + name)); }
};

}  // namespace

TEST_F(Aktionen, PicturesOfTheSearchAreAppendedWithARedStripeAndNothingIsCopied) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  lege_Bild(u"y.jpg"_s, {60, 40}, Qt::green, u"Neu"_s);
  wurzel.schreibe(u"Neu/xjpg.txt"_s, " von der Baustelle ");
  zeige([&] {
    suche_alle();
    EXPECT_EQ(spalte_von(spalte::Bildname), (QStringList{u"a"_s, u"x"_s, u"y"_s}));
    EXPECT_EQ(form().Text(1, spalte::VollerPfad), u"P:\\Neu\\x.jpg"_s);
    EXPECT_EQ(form().Text(1, spalte::Pfad), u"P:\\Neu\\"_s);
    EXPECT_EQ(form().Text(1, spalte::BildInfo), u"von der Baustelle"_s);
    EXPECT_EQ(form().Text(1, spalte::ExifKennung), QString());
    EXPECT_FALSE(form().Ja(1, spalte::Gespeichert));
    EXPECT_TRUE(form().Ja(1, spalte::NeuAusSuche));
    EXPECT_TRUE(form().Ja(1, spalte::ZeileGeaendert));
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"3"_s);
    const QImage& bild = form().Pic_Thumb(2).Image();
    EXPECT_EQ(bild.pixelColor(bild.width() / 2, bild.height() - 1), QColor(0xFF, 0xC0, 0xC0));
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/x.jpg"_s));
  });
}

TEST_F(Aktionen, AnEmptyRecordGetsItsFirstPicturesInPlaceOfThePlaceholder) {
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche_alle();
    EXPECT_EQ(spalte_von(spalte::Bildname), QStringList{u"x"_s});
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().txt_BildName.Text(), u"x"_s);
    EXPECT_TRUE(form().txt_BildText.Enabled());
    EXPECT_TRUE(form().DatenGeaendert);
  });
}

TEST_F(Aktionen, LeavingTheSearchChangesNothing) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche([](frm_BilderSuchen& dialog) { klicke(dialog.cmd_Abbruch); });
    EXPECT_EQ(spalte_von(spalte::Bildname), QStringList{u"a"_s});
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Aktionen, APictureOfANameThatStandsThereIsKeptMarkedAndStopsTheSaving) {
  fuege_Bilder_ein(1);
  lege_Bild(u"A.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche_alle();
    EXPECT_FALSE(form().Ja(0, spalte::NameDoppelt));
    EXPECT_TRUE(form().Ja(1, spalte::NameDoppelt));
    meldungen.erwarte({u"Datei mit gleichem Namen schon vohanden!"_s, u"Doppelte Datei"_s, Symbol::Information});
    klicke(form().SSC_ZuordnungSpeichern);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(store->AnzahlPos(), 1);
  });
}

TEST_F(Aktionen, TurningChangesTheFileAtOnceAndSavesWhatWasPending) {
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

TEST_F(Aktionen, TurningWhatIsNoJpegIsToldAndLeavesTheFile) {
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

TEST_F(Aktionen, TurningAReadOnlyPictureIsToldAndLeavesIt) {
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

TEST_F(Aktionen, WithoutAPictureTurningStopsAndTheEditorAsksForOne) {
  zeige([&] {
    klicke(form().SSC_Drehen90);
    meldungen.erwarte({u"Bitte wählen Sie zuerst ein Bild aus!"_s, {}});
    klicke(form().SSC_Bildbearbeitung);
  });
}

TEST_F(Aktionen, ThePropertiesOfThePictureOpenAndClose) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().SSC_ExifInfo.Enabled(true);
    bool gesehen = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = dynamic_cast<frm_BildInfo*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      gesehen = true;
      klicke(dialog->cmd_OK);
    });
    klicke(form().SSC_ExifInfo);
    EXPECT_TRUE(gesehen);
    EXPECT_TRUE(form().isVisible());
  });
}
