#include <QApplication>
#include <QFile>
#include <QTimer>
#include <algorithm>

#include "dialogs/search/frm_BilderSuchen.h"
#include "exif/frm_BildInfo.h"
#include "platform/shell/Programme.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Starterdoppel.h"

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
};

}  // namespace

TEST_F(Aktionen, PicturesOfTheSearchAreAppendedWithARedStripeAndNothingIsCopied) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  lege_Bild(u"y.jpg"_s, {60, 40}, Qt::green, u"Neu"_s);
  wurzel.schreibe(u"Neu/xjpg.txt"_s, " von der Baustelle ");
  zeige([&] {
    suche_alle();
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"x"_s, u"y"_s}));
    EXPECT_EQ(form().Zeile(1).VollerPfad, u"P:\\Neu\\x.jpg"_s);
    EXPECT_EQ(form().Zeile(1).Pfad, u"P:\\Neu\\"_s);
    EXPECT_EQ(form().Zeile(1).BildInfo, u"von der Baustelle"_s);
    EXPECT_EQ(form().mit_Exif(1).ExifKennung, QString());
    EXPECT_FALSE(form().Zeile(1).Gespeichert);
    EXPECT_TRUE(form().Zeile(1).NeuAusSuche);
    EXPECT_TRUE(form().Zeile(1).ZeileGeaendert);
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
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), QStringList{u"x"_s});
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
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), QStringList{u"a"_s});
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Aktionen, APictureOfANameThatStandsThereIsKeptMarkedAndStopsTheSaving) {
  fuege_Bilder_ein(1);
  lege_Bild(u"A.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche_alle();
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
    EXPECT_TRUE(form().Zeile(1).NameDoppelt);
    meldungen.erwarte({u"Datei mit gleichem Namen schon vohanden!"_s, u"Doppelte Datei"_s, Symbol::Information});
    klicke(form().SSC_ZuordnungSpeichern);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(store->AnzahlPos(), 1);
  });
}

TEST_F(Aktionen, ARowOfTheSearchHoldsWhatTheStepsTell) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.JPG"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche_alle();
    const Arbeitszeile& zeile = form().Zeile(1);
    EXPECT_EQ(zeile.Root, u"P:"_s);
    EXPECT_EQ(zeile.BildExt, u"JPG"_s);
    EXPECT_FALSE(zeile.AlsAnhang || zeile.Drucken || zeile.DruckGesamteSeite || zeile.NeueSeite);
    EXPECT_EQ(zeile.Beschreibung + zeile.Key1 + zeile.Key2 + zeile.Key3 + zeile.Key4 + zeile.Typ1 + zeile.Typ2 +
            zeile.BildInfo + zeile.OriginalName,
        QString());
    EXPECT_FALSE(form().Zeile(1).NameDoppelt);
    EXPECT_FALSE(form().mit_Exif(1).HatExif.value_or(false));
    EXPECT_FALSE(form().Zeile(1).NameGeaendert);
  });
}

TEST_F(Aktionen, AnAddedPictureWithExifDataIsMarkedWithoutTheTextOfTheMark) {
  fuege_Bilder_ein(1);
  // An Exif segment with an empty first directory, before the picture's own segments.
  const QByteArray segment = QByteArray::fromHex("ffe1001645786966000049492a0008000000000000000000");
  QByteArray inhalt = lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  wurzel.schreibe(u"Neu/x.jpg"_s, inhalt.insert(2, segment));
  zeige([&] {
    suche_alle();
    EXPECT_TRUE(form().mit_Exif(1).HatExif.value_or(false));
    EXPECT_EQ(form().mit_Exif(1).ExifKennung, QString());
    klicke(form().Pic_Thumb(2));
    EXPECT_TRUE(form().SSC_ExifInfo.Enabled());
  });
}

// The row of a picture without a folder is no placeholder: it has its whole name.
TEST_F(Aktionen, AStoredPictureWithoutAFolderKeepsItsRow) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(QString()); });
  lege_Bild(u"a.jpg"_s, {60, 40}, Qt::blue, u"."_s);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    ASSERT_EQ(form().Zeile(0).Pfad, QString());
    suche_alle();
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"x"_s}));
    EXPECT_TRUE(form().Zeile(0).Gespeichert);
  });
}

TEST_F(Aktionen, TheSelectionStaysWhereItWasAndTheStripStartsFromItsFirstRow) {
  fuege_Bilder_ein(3);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    form().ErsteZeile = 1;
    suche_alle();
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(form().Pic_Thumb.Count() - 1, 4);
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
  });
}

TEST_F(Aktionen, NothingChosenIsAChangeAllTheSame) {
  fuege_Bilder_ein(2);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche([](frm_BilderSuchen& dialog) { klicke(dialog.cmd_Uebernehmen); });
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"2"_s);
    EXPECT_TRUE(form().DatenGeaendert);
  });
}

// The last row is blank and goes, which leaves a table without any.
TEST_F(Aktionen, NothingChosenForAnEmptyRecordTakesThePlaceholderAndTheNextSearchStillWorks) {
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    for (int i = 0; i < 2; ++i) {
      suche([](frm_BilderSuchen& dialog) { klicke(dialog.cmd_Uebernehmen); });
      EXPECT_EQ(form().LetzteZeile(), -1);
      EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"0"_s);
      EXPECT_FALSE(form().txt_BildName.Enabled());
    }
    klicke(form().SSC_Drehen90);
    form().Zuordnung_Speichern();
    EXPECT_EQ(store->AnzahlPos(), 0);
    suche_alle();
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), QStringList{u"x"_s});
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_TRUE(form().txt_BildName.Enabled());
    EXPECT_TRUE(form().SSC_AlleZuordnungen.Enabled());
    EXPECT_TRUE(form().SSC_WeitereZuordnungen.Enabled());
  });
}

TEST_F(Aktionen, OfTwoPicturesOfOneNameInOneChoiceTheSecondIsMarked) {
  fuege_Bilder_ein(1);
  for (const auto& name : {u"X.jpg"_s, u"x.jpg"_s, u"y.JPG"_s, u"y.gif"_s})
    lege_Bild(name, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche_alle();
    ASSERT_EQ(form().LetzteZeile(), 4);
    EXPECT_FALSE(form().Zeile(1).NameDoppelt);
    EXPECT_TRUE(form().Zeile(2).NameDoppelt);
    EXPECT_FALSE(form().Zeile(3).NameDoppelt);
    EXPECT_FALSE(form().Zeile(4).NameDoppelt) << "another extension";
  });
}

TEST_F(Aktionen, OneSearchOffersSeveralPicturesAndBeginsAtTheRoot) {
  mod_BilderSuchen::pLetzterOrdner.clear();
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  zeige([&] {
    suche([](frm_BilderSuchen& dialog) {
      EXPECT_TRUE(dialog.MultiSelect);
      EXPECT_EQ(dialog.pRootpath, u"P:"_s);
      EXPECT_EQ(dialog.Dir1.Path(), u"P:\\"_s);
      EXPECT_EQ(dialog.pFindArray->UpperBound(XArrayDBObject::Dimension::Spalten), 10);
      EXPECT_EQ(dialog.pFindArray->Count(XArrayDBObject::Dimension::Zeilen), 1);
      klicke(dialog.cmd_Abbruch);
    });
  });
}

TEST_F(Aktionen, TheEditorGetsTheWholeNameAndNothingIsReadAgain) {
  class Wahl final : public shell::Programmwahl {
   public:
    QStringList waehle(const QString& datei, const QList<shell::Programm>&, QString&) override {
      gefragt.append(datei);
      return {};
    }
    QStringList gefragt;
  };
  const auto wahl = std::make_shared<Wahl>();
  const auto vorher = shell::setze(wahl);
  fuege_Bilder_ein(2);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"Text"_s);
    klicke(form().SSC_Bildbearbeitung);
    EXPECT_EQ(wahl->gefragt, QStringList{wurzel.pfad(u"Belege/1/b.jpg"_s)});
    EXPECT_TRUE(form().DatenGeaendert) << "nothing was saved for it";
    EXPECT_EQ(form().AktZeile, 1);
    form().SetzeDatenGeaendert(false);
  });
  shell::setze(vorher);
}

// The search gives the folder with its closing separator, which makes it another one.
TEST_F(Aktionen, APictureChosenFromTheRecordsOwnFolderIsCopiedAllTheSame) {
  mod_BilderSuchen::pLetzterOrdner = u"P:\\Belege\\1"_s;
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red);
  zeige([&] {
    suche_alle();
    form().Zuordnung_Speichern();
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/x.jpg"_s));
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/"_s + form().Zeile(0).Bildname + u".jpg"_s));
    EXPECT_EQ(form().Zeile(0).Pfad, u"Belege\\1"_s);
  });
}

TEST_F(Aktionen, AnAddedPictureOpensInItsProgramWhereItLies) {
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, {60, 40}, Qt::red, u"Neu"_s);
  const Starterdoppel starter;
  zeige([&] {
    suche_alle();
    doppelklicke(form().Pic_Thumb(2));
    doppelklicke(form().Pic_Bearbeitung);
    EXPECT_EQ(starter.geoeffnet(), (QStringList{wurzel.pfad(u"Neu/x.jpg"_s), wurzel.pfad(u"Neu/x.jpg"_s)}));
  });
}

TEST_F(Aktionen, ATextThatCannotBeReadIsReportedAndTheRowsUntilThenStay) {
  fuege_Bilder_ein(1);
  for (const auto& name : {u"x.jpg"_s, u"y.jpg"_s}) lege_Bild(name, {60, 40}, Qt::red, u"Neu"_s);
  const QString text = wurzel.schreibe(u"Neu/yjpg.txt"_s, "Text");
  ASSERT_TRUE(QFile::setPermissions(text, {}));
  zeige([&] {
    suche_alle();
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
    EXPECT_EQ(berichte[0].Prozedur, u"SSC_BilderLaden_Click"_s);
    EXPECT_TRUE(berichte[0].MitMeldung);
    EXPECT_EQ(form().Zeile(1).Bildname, u"x"_s);
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Aktionen, WithoutAPictureThePropertiesShowNothing) {
  zeige([&] {
    form().SSC_ExifInfo.Enabled(true);
    QTimer::singleShot(0, qApp, [] {
      auto* dialog = dynamic_cast<frm_BildInfo*>(QApplication::activeModalWidget());
      if (!dialog) return;
      ADD_FAILURE() << "the properties came up";
      dialog->Hide();
    });
    klicke(form().SSC_ExifInfo);
    QCoreApplication::processEvents();
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

TEST_F(Aktionen, AFailureOfThePropertiesIsReportedUnderTheNameOfTheSearchButton) {
  struct Ablehnend final : KVOCore {
    void FehlerMelden(
        const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& text, bool zeigen) override {
      if (modul == u"clsDialoge"_s) throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
      vorher->FehlerMelden(modul, prozedur, nummer, text, zeigen);
    }
    std::shared_ptr<KVOCore> vorher;
  };
  fuege_Bilder_ein(1);
  zeige([&] {
    form().SSC_ExifInfo.Enabled(true);
    // No file can be read there, and the host does not take the report of that.
    const QString pfad = std::exchange(form().Zeile(0).VollerPfad, u"P:\\"_s);
    mauszeiger().form(Zeigerform::Sanduhr);
    const auto ablehnend = std::make_shared<Ablehnend>();
    ablehnend->vorher = KVOCore::setze(ablehnend);
    klicke(form().SSC_ExifInfo);
    KVOCore::setze(ablehnend->vorher);
    form().Zeile(0).VollerPfad = pfad;
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
    EXPECT_EQ(berichte[0].Prozedur, u"SSC_BilderLaden_Click"_s);
    EXPECT_EQ(berichte[0].Nummer, 13);
    EXPECT_TRUE(berichte[0].MitMeldung);
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
  });
}
