#include <QTest>

#include "tests/dialogs/assignment/Einstieg.h"
#include "tests/dialogs/assignment/Meldungstexte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Anwendung final : public Anwendungsobjekt {
 public:
  QString ConnectStringDB() const override { return {}; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return nullptr; }
};

}  // namespace

class Einstieg : public Einstiegtest {
 protected:
  /// The one report that has come is the entry point's own, with that number.
  void erwarte_Bericht(std::int32_t nummer) {
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul, u"clsDialoge"_s);
    EXPECT_EQ(berichte[0].Prozedur, u"Fkt_Aufruf_Dialog_Zuordnung"_s);
    EXPECT_EQ(berichte[0].Nummer, nummer);
    EXPECT_FALSE(berichte[0].Beschreibung.isEmpty());
    EXPECT_TRUE(berichte[0].MitMeldung);
  }
};

TEST_F(Einstieg, LeavingWithoutAChangeGivesTrue) {
  fuege_Bilder_ein(2);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.cmd_Abbruch);
    EXPECT_FALSE(form.isVisible());
  }));
}

TEST_F(Einstieg, SavingGivesTrueAndLeavesTheChangesInTheCollection) {
  fuege_Bilder_ein(2);
  db.mitschrift().hole();
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    db.mitschrift().hole();
    tippe(form.txt_BildText, u"neu"_s);
    klicke(form.SSC_ZuordnungSpeichern);
  }));
  EXPECT_EQ(db.mitschrift().hole(), QStringList());
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, u"b|1|<NULL>"_s}));
  EXPECT_TRUE(store->FKT_SpeichernBilder());
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|neu"_s, u"b|1|<NULL>"_s}));
}

TEST_F(Einstieg, EveryArgumentReachesTheForm) {
  fuege_Bilder_ein(1);
  lies();
  store->cGL_jmtVerarbeitungsdatum = u"2026-03-04"_s;
  const auto app = std::make_shared<Anwendung>();
  EXPECT_TRUE(rufe(
      [&](frm_BildZuordnung& form) {
    EXPECT_EQ(form.pAppObj, app);
    EXPECT_EQ(form.pBildObj, store);
    EXPECT_EQ(form.pGL_jmtVerarbeitungsdatum, u"2026-03-04"_s);
    EXPECT_EQ(form.pRootpath, u"P:"_s);
    EXPECT_EQ(form.pStandardBildPfad, u"Belege\\1"_s);
    EXPECT_EQ(form.PTyp1, u"ART"_s);
    EXPECT_EQ(form.pTyp2, u"T2"_s);
    EXPECT_EQ(form.pInfoZeile, u"Zeile"_s);
    EXPECT_TRUE(form.pNurAnzeige);
    EXPECT_TRUE(form.pNurAnhang);
    EXPECT_EQ(form.SSP_Panel(0).Caption(), u"   Zeile"_s);
      },
      [&] {
    return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(
        app, u"P:"_s, u"Belege\\1"_s, store, u"ART"_s, u"T2"_s, u"Zeile"_s, true, true);
  }));
  EXPECT_EQ(app.use_count(), 1);
  EXPECT_EQ(store.use_count(), 1);
}

TEST_F(Einstieg, WithTheFlagsLeftOutBothAreFalse) {
  fuege_Bilder_ein(1);
  lies();
  EXPECT_TRUE(rufe(
      [&](frm_BildZuordnung& form) {
    EXPECT_FALSE(form.pNurAnzeige);
    EXPECT_FALSE(form.pNurAnhang);
    EXPECT_TRUE(form.SSC_ZuordnungSpeichern.Visible());
    EXPECT_EQ(form.chk_AlsAnhang.Value(), 0);
      },
      [&] { return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(nullptr, u"P:"_s, u"Belege\\1"_s, store, typ1, {}, {}); }));
}

TEST_F(Einstieg, TheFormIsLoadedBeforeItsMembersAreSet) {
  fuege_Bilder_ein(1);
  fenster.beim_Wiederherstellen = [&] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* form = dynamic_cast<frm_BildZuordnung*>(w)) {
        EXPECT_EQ(form->pRootpath, QString());
        EXPECT_EQ(form->pBildObj, nullptr);
        EXPECT_EQ(form->SSP_Panel(0).Caption(), QString());
      }
  };
  EXPECT_TRUE(oeffne([](frm_BildZuordnung&) {}));
}

TEST_F(Einstieg, TheDialogIsModalAndHasNoOwner) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([](frm_BildZuordnung& form) {
    EXPECT_TRUE(form.isModal());
    EXPECT_EQ(form.parentWidget(), nullptr);
  }));
}

TEST_F(Einstieg, TheFormIsUnloadedAndGoneAfterwards) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung&) { EXPECT_EQ(fenster.gespeichert, QString()); }));
  EXPECT_EQ(fenster.gespeichert, u"KVZunft_Gesamt 2000/frm_BildZuordnung"_s);
  EXPECT_EQ(Formen(), 0);
}

TEST_F(Einstieg, NothingSurvivesFromOneCallToTheNext) {
  fuege_Bilder_ein(12);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    klicke(form.SSC_Scroll_Right);
    klicke(form.Pic_Thumb(2));
    tippe(form.txt_BildText, u"weg"_s);
    form.Hide();
  }));
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) {
    EXPECT_EQ(form.ErsteZeile, 0);
    EXPECT_EQ(form.AktZeile, 0);
    EXPECT_FALSE(form.DatenGeaendert);
    EXPECT_EQ(form.Zeile(2).Beschreibung, QString());
  }));
}

TEST_F(Einstieg, WithoutACollectionItReportsAndGivesFalse) {
  erwartet_Fenster = false;
  EXPECT_FALSE(rufe([](frm_BildZuordnung&) { ADD_FAILURE() << "the dialog opened"; },
      [&] {
    return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(nullptr, u"P:"_s, u"Belege\\1"_s, nullptr, typ1, {}, {});
  }));
  erwarte_Bericht(fehlernummer::ObjektNichtGesetzt);
  EXPECT_EQ(Formen(), 0);
}

TEST_F(Einstieg, AFailureOfTheLoadingGivesFalse) {
  fuege_Bilder_ein(1);
  erwartet_Fenster = false;
  fenster.beim_Wiederherstellen = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  EXPECT_FALSE(oeffne([](frm_BildZuordnung&) { ADD_FAILURE() << "the dialog opened"; }));
  erwarte_Bericht(fehlernummer::Ueberlauf);
  EXPECT_EQ(fenster.gespeichert, QString());
  EXPECT_EQ(Formen(), 0);
}

TEST_F(Einstieg, AFailureInAHandlerEndsTheShowAndTheFormIsLetGoUnasked) {
  fuege_Bilder_ein(2);
  EXPECT_FALSE(oeffne([&](frm_BildZuordnung& form) {
    tippe(form.txt_BildText, u"ungespeichert"_s);
    form.chk_Drucken.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf, u"zu viel"_s); };
    klicke(form.chk_Drucken, QPoint(8, 8));
    EXPECT_FALSE(form.isVisible());
  }));
  erwarte_Bericht(fehlernummer::Ueberlauf);
  EXPECT_EQ(fenster.gespeichert, QString());
  EXPECT_EQ(Formen(), 0);
  EXPECT_EQ(store.use_count(), 1);
}

TEST_F(Einstieg, TheFirstOfSeveralFailuresIsTheOneReported) {
  fuege_Bilder_ein(1);
  EXPECT_FALSE(oeffne([&](frm_BildZuordnung& form) {
    form.chk_Drucken.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
    form.chk_NeueSeite.Click = [] { throw Laufzeitfehler(fehlernummer::PfadZugriff); };
    klicke(form.chk_Drucken, QPoint(8, 8));
    form.chk_NeueSeite.click();
  }));
  erwarte_Bericht(fehlernummer::Ueberlauf);
}

TEST_F(Einstieg, AForeignExceptionBecomesAFailure) {
  fuege_Bilder_ein(1);
  EXPECT_FALSE(oeffne([&](frm_BildZuordnung& form) {
    form.chk_Drucken.Click = [] { throw std::bad_alloc(); };
    klicke(form.chk_Drucken, QPoint(8, 8));
  }));
  erwarte_Bericht(fehlernummer::SpeicherErschoepft);
}

TEST_F(Einstieg, ACallAfterAFailureWorks) {
  fuege_Bilder_ein(1);
  EXPECT_FALSE(oeffne([&](frm_BildZuordnung& form) {
    form.chk_Drucken.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
    klicke(form.chk_Drucken, QPoint(8, 8));
  }));
  erwarte_Bericht(fehlernummer::Ueberlauf);
  EXPECT_TRUE(oeffne([&](frm_BildZuordnung& form) { klicke(form.cmd_Abbruch); }));
}

TEST_F(Einstieg, AnUninitialisedCollectionOpensAnEmptyDialog) {
  const auto leer = std::make_shared<clsBildZuordnungen>();
  EXPECT_TRUE(rufe(
      [&](frm_BildZuordnung& form) {
    EXPECT_TRUE(form.KeineBilder());
    EXPECT_FALSE(form.txt_BildName.Enabled());
    klicke(form.cmd_Abbruch);
      },
      [&] { return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(nullptr, u"P:"_s, u"Belege\\1"_s, leer, typ1, {}, {}); }));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Prozedur, u"Lade_Zuordnung"_s);
}
