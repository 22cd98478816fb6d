#include <QDir>
#include <QFile>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/files/Pfadkarte.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::taste;
using mod_BilderSuchen::pLetzterOrdner;

namespace {

class Ordner : public Suchtest {
 protected:
  Ordner() {
    lege_Bild(u"Bilder/a.jpg"_s);
    lege_Bild(u"Bilder/Sommer/s.jpg"_s);
    ordner.schreibe(u"p/Bilder/notiz.dat"_s, "n");
  }
  /// Texts of the folder list, from the root down.
  QStringList ordnerliste() {
    QStringList alle;
    const QAbstractItemModel* modell = form().Dir1.model();
    for (int i = 0; i < modell->rowCount(); ++i) alle.append(modell->index(i, 0).data().toString());
    return alle;
  }
  /// The user chooses a drive by the keys.
  void waehle_Laufwerk(int stelle) {
    form().ImageCombo1.setFocus();
    form().ImageCombo1.showPopup();
    eingaben::klicke_Zeile(*form().ImageCombo1.view(), stelle - 1);
  }
};

}  // namespace

TEST_F(Ordner, TheFirstOpeningStartsAtTheRootPathAndReadsIt) {
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder"_s);
    EXPECT_EQ(pLetzterOrdner, u"P:\\Bilder"_s);
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
    EXPECT_EQ(form().Caption(), u"Bilder suchen"_s);
    EXPECT_FALSE(form().pLaedt);
  });
}

TEST_F(Ordner, TheFolderInWhichTheProcessStandsIsShownTooAndReadOnce) {
  ordner.schreibe(u"c/Heim/h.jpg"_s, bild());
  for (const bool gemerkt : {false, true}) {
    pLetzterOrdner = gemerkt ? u"C:\\Heim"_s : QString();
    rootpath = u"c:\\heim\\"_s;
    int pumpen = 0;
    beim_Pumpen([&](int mal) { pumpen = mal; });
    zeige([&] {
      EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
      EXPECT_EQ(eintraege(), QStringList{u"h.jpg"_s});
      EXPECT_EQ(form().SSP_Anzahl.Caption(), u"1 Objekt(e)"_s);
      EXPECT_EQ(pLetzterOrdner, u"C:\\Heim"_s);
      EXPECT_EQ(pumpen, 4) << "the painting, the bar, and the two files of the folder";
      ordner.schreibe(u"c/Heim/neu.jpg"_s, bild());
      QEvent wieder(QEvent::WindowActivate);
      QCoreApplication::sendEvent(&form(), &wieder);
      EXPECT_EQ(eintraege(), QStringList{u"h.jpg"_s}) << "a later activation";
    });
    beim_Pumpen({});
    entlade();
    ASSERT_TRUE(QFile::remove(ordner.pfad(u"c/Heim/neu.jpg"_s)));
  }
}

TEST_F(Ordner, LoadingChangesNoFolderAndReadsNothing) {
  ordner.schreibe(u"c/Heim/h.jpg"_s, bild());
  form();
  EXPECT_TRUE(form().pLaedt);
  EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
  EXPECT_TRUE(pLetzterOrdner.isEmpty());
  EXPECT_EQ(form().lvwContent.Count(), 0);
  EXPECT_EQ(form().SSP_Anzahl.Caption(), QString());
  form().cbo_BildTypen.ListIndex(0);
  EXPECT_EQ(form().SSP_Anzahl.Caption(), QString()) << "stores the pattern only";
  EXPECT_EQ(form().pDateifilter, u"*.*"_s);
  form().cbo_BildTypen.ListIndex(1);
  EXPECT_EQ(form().pDateifilter, u"*.BMP|*.JPG|*.GIF|*.TIF"_s);
  EXPECT_EQ(form().cbo_BildTypen.ListIndex(), 1);
}

TEST_F(Ordner, TheSecondOpeningShowsTheLastFolderWhateverTheRootPath) {
  zeige([] {});
  entlade();
  rootpath = u"P:\\Bilder\\Sommer"_s;
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder"_s);
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
  });
}

TEST_F(Ordner, WithoutRootPathAndLastFolderTheDialogLandsOnC) {
  rootpath = u"  "_s;
  zeige([&] { EXPECT_EQ(form().Dir1.Path(), u"C:\\"_s); });
}

TEST_F(Ordner, ARootPathThatIsMissingLeavesTheDialogAsItStands) {
  rootpath = u"P:\\weg"_s;
  zeige([&] {
    EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
    EXPECT_EQ(form().lvwContent.Count(), 0);
    EXPECT_FALSE(form().pLaedt);
  });
}

TEST_F(Ordner, ALastFolderThatHasGoneIsPassedOver) {
  pLetzterOrdner = u"P:\\weg"_s;
  zeige([&] { EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s) << "the root path does not step in"; });
}

TEST_F(Ordner, TheFilterSelectsItsPatternAndEachChangeReadsTheFolderAgain) {
  zeige([&] {
    const QStringList muster{u"*.*"_s, u"*.BMP|*.JPG|*.GIF|*.TIF"_s, u"*.BMP"_s, u"*.JPG"_s, u"*.GIF"_s, u"*.TIF"_s};
    const QStringList texte{u"Alle Dateien (*.*)"_s, u"Alle Bild-Dateien (*.bmp; *.jpg; *.gif; *.tif)"_s,
        u"Windows Bitmap (*.bmp)"_s, u"JPEG-Dateien (*.jpg)"_s, u"CompuServe Bitmap (*.gif)"_s,
        u"Tagged Image File Format (*.tif)"_s};
    ASSERT_EQ(form().cbo_BildTypen.count(), 6);
    for (int i = 0; i < 6; ++i) {
      waehle_Filter(form(), i);
      EXPECT_EQ(form().cbo_BildTypen.ListIndex(), i);
      EXPECT_EQ(form().cbo_BildTypen.itemText(i), texte[i]);
      EXPECT_EQ(form().pDateifilter, muster[i]);
      const qsizetype gelesen = i == 0 ? 2 : i == 1 || i == 3 ? 1 : 0;
      EXPECT_EQ(eintraege().size(), gelesen) << i;
    }
  });
}

TEST_F(Ordner, ADoubleClickOpensAFolderAndTheListShowsThePathFromTheRootDown) {
  zeige([&] {
    EXPECT_EQ(ordnerliste(), (QStringList{u"P:\\"_s, u"Bilder"_s, u"Sommer"_s}));
    eingaben::doppelklicke_Zeile(form().Dir1, 2);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder\\Sommer"_s);
    EXPECT_EQ(eintraege(), QStringList{u"s.jpg"_s});
    EXPECT_EQ(pLetzterOrdner, u"P:\\Bilder\\Sommer"_s);
    eingaben::doppelklicke_Zeile(form().Dir1, 0);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\"_s);
  });
}

TEST_F(Ordner, EnterOpensTheFolderThatTheKeysWentTo) {
  zeige([&] {
    form().Dir1.setFocus();
    taste(form(), Qt::Key_Down);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder"_s) << "choosing is not opening";
    taste(form(), Qt::Key_Return);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder\\Sommer"_s);
    EXPECT_TRUE(form().isVisible());
  });
}

TEST_F(Ordner, AFolderThatHasGoneLeavesBothListsAsTheyAre) {
  zeige([&] {
    ASSERT_TRUE(QDir(ordner.pfad(u"p/Bilder/Sommer"_s)).removeRecursively());
    eingaben::doppelklicke_Zeile(form().Dir1, 2);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder"_s);
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
    EXPECT_EQ(pLetzterOrdner, u"P:\\Bilder"_s);
  });
}

TEST_F(Ordner, ChoosingADriveGoesToItsCurrentDirectory) {
  zeige([&] {
    waehle_Laufwerk(1);
    EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s) << "the process's own on its drive";
    waehle_Laufwerk(2);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\"_s) << "the root on any other";
  });
}

TEST_F(Ordner, ADriveThatIsNotReadyLeavesTheDialogAsItStands) {
  laufwerke_->laufwerke[u'E'] = {laufwerke::Wechsel};
  zeige([&] {
    waehle_Laufwerk(2);
    EXPECT_EQ(form().ImageCombo1.gewaehlter_Text(), u"Wechseldatenträger (E:)"_s);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder"_s);
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
  });
}

TEST_F(Ordner, ALabelWithAColonYieldsAWrongDriveAndNothingHappens) {
  laufwerke_->laufwerke[u'P'].marke = u"TEIL:2"_s;
  zeige([&] {
    waehle_Laufwerk(1);
    waehle_Laufwerk(2);
    EXPECT_EQ(form().ImageCombo1.gewaehlter_Text(), u"Teil:2 (P:)"_s);
    EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
  });
}

TEST_F(Ordner, ALaterActivationDoesNotReadAgain) {
  zeige([&] {
    lege_Bild(u"Bilder/neu.jpg"_s);
    QEvent wieder(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&form(), &wieder);
    QCoreApplication::sendEvent(&form(), &wieder);
    EXPECT_EQ(eintraege(), QStringList{u"a.jpg"_s});
  });
}

TEST_F(Ordner, TenThousandFoldersAreListed) {
  for (int i = 0; i < 10'000; ++i) ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"p/viele/o%1"_s.arg(i, 5, 10, QChar(u'0')))));
  rootpath = u"P:\\viele"_s;
  zeige([&] {
    EXPECT_EQ(form().Dir1.model()->rowCount(), 10'002);
    form().Dir1.setFocus();
    taste(form(), Qt::Key_End);
    taste(form(), Qt::Key_Return);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\viele\\o09999"_s);
  });
}

TEST_F(Ordner, ASessionRunsFromLoadingToTheEndAndOnlyOneIsEnded) {
  using gdiplus::bildersitzung::laeuft;
  ASSERT_FALSE(laeuft());
  // The caller's own session must outlive the dialog, however that ends.
  mod_GrafikKonvert::Fkt_GdiStartup(1);
  for (const bool rahmen : {false, true}) {
    rufe_auf([&](frm_BilderSuchen& f) {
      EXPECT_TRUE(mod_GrafikKonvert::m_GdiAktiv);
      rahmen ? eingaben::schliesse_Rahmen(f) : eingaben::klicke(f.cmd_Uebernehmen);
    });
    EXPECT_TRUE(laeuft()) << rahmen;
  }
  mod_GrafikKonvert::Fkt_GdiShutdown();
  EXPECT_FALSE(laeuft());
}

TEST_F(Ordner, WithoutASessionTheDialogSaysSoAndGoesOnWithThePlainLoader) {
  ordner.schreibe(u"p/Bilder/b.tif"_s, bild(QSize(40, 30), Qt::red, "TIFF"));
  gdiplus::bildersitzung::naechster_Start(18);
  meldungen.erwarte({u"GDI+ not inizialized."_s, u"GDI Error"_s});
  zeige([&] {
    EXPECT_FALSE(mod_GrafikKonvert::m_GdiAktiv);
    EXPECT_EQ(mod_GrafikKonvert::m_GdiStatus, 18);
    ASSERT_EQ(eintraege(), (QStringList{u"a.jpg"_s, u"b.tif"_s}));
    EXPECT_NE(bild_von(1), ersatz());
    EXPECT_EQ(bild_von(2), ersatz()) << "the plain loader reads no TIFF";
  });
}

TEST_F(Ordner, ClosingTheFrameEmptiesTheImageListAndTheResult) {
  zeige([&] {
    eingaben::schliesse_Rahmen(form());
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(form().pFindArray, nullptr);
    EXPECT_EQ(form().ilsImages.Count(), 0);
    EXPECT_EQ(form().lvwContent.Icons(), nullptr);
  });
}

TEST_F(Ordner, TheFirstKeysGoToTheFolders) {
  zeige([&] {
    EXPECT_TRUE(form().Dir1.hasFocus());
    taste(form(), Qt::Key_Down);
    taste(form(), Qt::Key_Return);
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Bilder\\Sommer"_s);
  });
}

TEST_F(Ordner, TheTabOrderIsThatOfTheControls) {
  zeige([&] {
    const QStringList reihe{u"SSC_Drehen"_s, u"SSC_Bildbearbeitung"_s, u"cmd_EinlesenAbrrechen"_s,
        u"cmd_TextSpeichern"_s, u"txt_Info"_s, u"cmd_Abbruch"_s, u"cmd_Uebernehmen"_s, u"cbo_BildTypen"_s, u"Dir1"_s,
        u"lvwContent"_s, u"ImageCombo1"_s, u"SSC_Drehen"_s};
    form().SSC_Drehen.setFocus();
    for (const QString& name : reihe) {
      EXPECT_EQ(form().focusWidget()->objectName(), name);
      taste(form(), Qt::Key_Tab);
    }
    form().SSC_Drehen.setFocus();
    const QStringList rueckwaerts(reihe.crbegin(), reihe.crend());
    for (const QString& name : rueckwaerts) {
      EXPECT_EQ(form().focusWidget()->objectName(), name) << "backwards";
      taste(form(), Qt::Key_Backtab, Qt::ShiftModifier);
    }
  });
}
