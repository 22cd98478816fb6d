#include <QTest>
#include <QWindow>

#include "tests/dialogs/assignment/Einstieg.h"
#include "tests/dialogs/assignment/Meldungstexte.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

enum class Weg { Zurueck, Escape, Rahmen };

}  // namespace

class Rueckweg : public Einstiegtest {
 protected:
  /// The record's first text in the collection, and whether its row is to be written.
  QString gesichert() {
    store->AktInd(0);
    return store->Bild_Beschreibung() + (store->Bild_Changeflag() ? u"|geändert"_s : u"|"_s);
  }
};

/// Every way on which the user leaves without the save button.
class JederRueckweg : public Rueckweg, public ::testing::WithParamInterface<Weg> {
 protected:
  static void verlasse(frm_BildZuordnung& form) {
    if (GetParam() == Weg::Zurueck) klicke(form.cmd_Abbruch);
    if (GetParam() == Weg::Escape) taste(form, Qt::Key_Escape);
    if (GetParam() == Weg::Rahmen) form.windowHandle()->close();
  }
};

INSTANTIATE_TEST_SUITE_P(Wege, JederRueckweg, ::testing::Values(Weg::Zurueck, Weg::Escape, Weg::Rahmen),
    [](const auto& weg) {
  return std::string(weg.param == Weg::Zurueck ? "Zurueck" : weg.param == Weg::Escape ? "Escape" : "Rahmen");
});

TEST_P(JederRueckweg, WithoutAChangeNothingIsAsked) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.Pic_Thumb(2));
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"|"_s);
}

TEST_P(JederRueckweg, YesSavesAndEndsTheDialog) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    meldungen.erwarte(meldung::speichern(), Antwort::Ja);
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"neu|geändert"_s);
}

TEST_P(JederRueckweg, NoEndsTheDialogWithoutSavingAndAsksOnce) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    meldungen.erwarte(meldung::speichern(), Antwort::Nein);
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"|"_s);
}

TEST_P(JederRueckweg, CancelKeepsTheDialogOpenWithAllChanges) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    for (int mal = 0; mal < 2; ++mal) {
      meldungen.erwarte(meldung::speichern(), Antwort::Abbrechen);
      verlasse(form);
      EXPECT_TRUE(form.isVisible());
    }
    EXPECT_TRUE(form.DatenGeaendert);
    EXPECT_TRUE(form.SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(form.txt_BildText.Text(), u"neu"_s);
    EXPECT_EQ(form.Zeile(0).Beschreibung, u"neu"_s);
    klicke(form.SSC_ZuordnungSpeichern);
  }));
  EXPECT_EQ(gesichert(), u"neu|geändert"_s);
}

TEST_P(JederRueckweg, ACollisionIsToldAndTheDialogEndsUnsaved) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    form.txt_BildName.Text(u"b"_s);
    klicke(form.Pic_Thumb(2));
    meldungen.erwarte(meldung::doppelte_Datei());
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.AktZeile, 0);
  }));
  EXPECT_EQ(gesichert(), u"|"_s);
}

TEST_P(JederRueckweg, ACollisionOfARemovedRowAsksAsUsual) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    form.txt_BildName.Text(u"b"_s);
    klicke(form.chk_Delete, QPoint(8, 8));
    meldungen.erwarte(meldung::speichern(), Antwort::Nein);
    verlasse(form);
  }));
}

TEST_P(JederRueckweg, WithoutTheStandardFolderACollisionIsNotLookedFor) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    form.txt_BildName.Text(u"b"_s);
    form.pStandardBildPfad = u"fehlt"_s;
    meldungen.erwarte(meldung::speichern(), Antwort::Nein);
    verlasse(form);
  }));
}

TEST_P(JederRueckweg, ALostPictureAsksForItsRemoval) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  fuege_Bild_ein(u"b"_s);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    meldungen.erwarte(meldung::speichern(), Antwort::Ja);
    verlasse(form);
  }));
  store->AktInd(0);
  EXPECT_TRUE(store->Bild_Delete());
}

// The question about the names is given up, and with it the saving; leaving goes on.
TEST_P(JederRueckweg, CancellingTheQuestionAboutNamesEndsTheDialogUnsaved) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    form.txt_BildName.Text(u"neu"_s);
    meldungen.erwarte(meldung::speichern(), Antwort::Ja);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"|"_s);
  EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/a.jpg"_s));
}

TEST_P(JederRueckweg, AFailureOfTheSavingIsReportedAndTheDialogEnds) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    meldungen.erwarte(meldung::speichern(), Antwort::Ja, [&] { form.pBildObj.reset(); });
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Prozedur, u"Zuordnung_Speichern"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::ObjektNichtGesetzt);
}

TEST_P(JederRueckweg, AFailureOnTheWayOutEndsTheShowAndIsReported) {
  fuege_Bilder_ein(1);
  EXPECT_FALSE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    meldungen.erwarte(meldung::speichern(), Antwort::Ja, [] { throw Laufzeitfehler(fehlernummer::UngueltigerAufruf); });
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"clsDialoge"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::UngueltigerAufruf);
  EXPECT_EQ(Formen(), 0);
}

TEST_P(JederRueckweg, ADialogWithNothingToShowIsLeftUnasked) {
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
}

TEST_P(JederRueckweg, TheDisplayModeIsLeftUnasked) {
  nur_Anzeige = true;
  nur_Anhang = true;
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  fuege_Bild_ein(u"b"_s);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.Pic_Thumb(2));
    verlasse(form);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"|"_s);
  EXPECT_EQ(Formen(), 0);
}

// ── Single ways ─────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Rueckweg, InDisplayModeZurueckUnloadsTheForm) {
  nur_Anzeige = true;
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.cmd_Abbruch);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.BildTabelle, nullptr);
    EXPECT_EQ(form.pBildObj, nullptr);
    EXPECT_EQ(fenster.gespeichert, u"KVZunft_Gesamt 2000/frm_BildZuordnung"_s);
    fenster.gespeichert.clear();
  }));
  // Unloaded for the second time by the entry point, which does nothing.
  EXPECT_EQ(fenster.gespeichert, QString());
}

TEST_F(Rueckweg, InDisplayModeTheFrameHidesTheFormAndKeepsIt) {
  nur_Anzeige = true;
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    form.windowHandle()->close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_NE(form.BildTabelle, nullptr);
    EXPECT_EQ(fenster.gespeichert, QString());
  }));
  EXPECT_NE(fenster.gespeichert, QString());
}

TEST_F(Rueckweg, OutsideDisplayModeZurueckOnlyHidesTheForm) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.cmd_Abbruch);
    EXPECT_NE(form.BildTabelle, nullptr);
    EXPECT_EQ(fenster.gespeichert, QString());
  }));
}

TEST_F(Rueckweg, AnUnloadedFormTakesEventsWithoutHarm) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().Unload();
    form().Unload();
    taste(form(), Qt::Key_PageUp);
    form().Pic_Thumb_Click(1);
    form().Create_ThumbNails(form().ErsteZeile);
    form().Zeichne_Entfernt(false);
    form().SSC_ZuordnungSpeichern.klicke();
    form().resize(900, 700);
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(store.use_count(), 1);
}

TEST_F(Rueckweg, UnloadingPassesItsFailuresOver) {
  fuege_Bilder_ein(1);
  fuege_Bilder_ein(2);
  struct Versager final : KVOCore {
    void FehlerMelden(const QString&, const QString&, std::int32_t, const QString&, bool) override {
      ADD_FAILURE() << "reported";
    }
    void FensterSpeichern(const QString&, const Fensterplatz&) override {
      throw Laufzeitfehler(fehlernummer::PfadZugriff);
    }
  };
  form();
  const auto vorher = KVOCore::setze(std::make_shared<Versager>());
  form().Unload();
  KVOCore::setze(vorher);
  EXPECT_EQ(form().BildTabelle, nullptr);
  EXPECT_EQ(store.use_count(), 1);
}

TEST_F(Rueckweg, EscapeLeavesFromWithinATextToo) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    for (QWidget* feld : std::initializer_list<QWidget*>{&form.txt_BildInfo, &form.txt_BildName}) {
      tippe(*feld, u"x"_s);
      meldungen.erwarte(meldung::speichern(), Antwort::Abbrechen);
      taste(form, Qt::Key_Escape);
    }
    EXPECT_TRUE(form.isVisible());
  }));
}

TEST_F(Rueckweg, TheAccessKeysLeaveAndSave) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    bool gefragt = false;
    meldungen.erwarte(meldung::speichern(), Antwort::Abbrechen, [&] { gefragt = true; });
    // A button that its key presses shows that for a moment before it clicks.
    QTest::keyClick(form.windowHandle(), Qt::Key_Z, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return gefragt; }));
    EXPECT_TRUE(form.isVisible());
    QTest::keyClick(form.windowHandle(), Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !form.isVisible(); }));
  }));
  EXPECT_EQ(gesichert(), u"neu|geändert"_s);
}

TEST_F(Rueckweg, AfterASaveNothingIsAskedAgain) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    form.Zuordnung_Speichern();
    klicke(form.cmd_Abbruch);
    EXPECT_FALSE(form.isVisible());
  }));
}

TEST_F(Rueckweg, SavingUnaskedBeforeReadingAgainLeavesNothingToAsk) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"neu"_s);
    klicke(form.SSC_Aktualisieren);
    EXPECT_TRUE(form.isVisible());
    klicke(form.cmd_Abbruch);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_EQ(gesichert(), u"neu|geändert"_s);
}

TEST_F(Rueckweg, TheQuestionIsAnsweredByTheCallerWithoutChanges) {
  fuege_Bilder_ein(1);
  bool weiter = false;
  form().Pruefe_Speichern(false, weiter);
  EXPECT_TRUE(weiter);
  form().SetzeDatenGeaendert(true);
  meldungen.erwarte(meldung::speichern(), Antwort::Abbrechen);
  form().Pruefe_Speichern(false, weiter);
  EXPECT_FALSE(weiter);
  form().Pruefe_Speichern(true, weiter);
  EXPECT_TRUE(weiter);
  EXPECT_FALSE(form().DatenGeaendert);
}

TEST_F(Rueckweg, ClosingTheFrameDuringADragEndsTheDrag) {
  fuege_Bilder_ein(3);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.SSR_Sortierung);
    druecke_Maus(form.Pic_Thumb(1));
    EXPECT_TRUE(form.DragAktiv);
    form.windowHandle()->close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(form.DragAktiv);
  }));
}
