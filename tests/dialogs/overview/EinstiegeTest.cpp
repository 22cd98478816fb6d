#include <QTimer>

#include "dialogs/assignment/clsDialoge.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "tests/dialogs/overview/WeitereTest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;
using oberflaeche::Knoepfe;
using oberflaeche::Symbol;

namespace {

template <class Fenster>
int Formen() {
  int anzahl = 0;
  for (QWidget* fenster : QApplication::topLevelWidgets())
    if (dynamic_cast<Fenster*>(fenster)) ++anzahl;
  return anzahl;
}

}  // namespace

/// Both dialogs through the entry points, as hosts open them.
class Einstiege : public WeitereTest {
 protected:
  bool oeffne_Alle(bool& eigene, const std::function<void(frm_AlleZuordnungen&)>& waehrend) {
    return rufe<frm_AlleZuordnungen>(waehrend, [&] {
      return clsDialoge().Fkt_Aufruf_Dialog_AlleZuordnungen(wirt, u"P:"_s, u"Belege\\1"_s, u"RE"_s, u"1"_s, u"-"_s,
          u"-"_s, u"a"_s, u"jpg"_s, u"BEL"_s, u"-"_s, u"2026-03-04"_s, u"Rechnung 1"_s, eigene);
    });
  }
  bool oeffne_Weitere(const std::function<void(frm_AnzeigeZuordnung&)>& waehrend) {
    lies();
    return rufe<frm_AnzeigeZuordnung>(waehrend, [&] {
      return clsDialoge().Fkt_Aufruf_Dialog_WeitereZuordnungen(wirt, store, u"P:"_s, u"Belege\\1"_s, u"RE"_s, u"1"_s,
          u"k3"_s, u"k4"_s, u"BEL"_s, u"t2"_s, u"2026-03-04"_s, u"Rechnung 1"_s);
    });
  }
  void loesche_eigene(frm_AlleZuordnungen& form) {
    klicke(form.TDBG_Zuordnungen, 0, uebersicht::Zuordnung);
    meldungen.erwarte(
        {u"Sollen wirklich ALLE Zuordnungen gelöscht werden?"_s, u"Achtung"_s, Symbol::Frage, Knoepfe::JaNein},
        Antwort::Ja);
    eingaben::klicke(form.cmd_Loeschen);
  }
};

TEST_F(Einstiege, AlleZuordnungenSetsEveryMemberAndGivesTrue) {
  fuege_Bilder_ein(1);
  bool eigene = false;
  EXPECT_TRUE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) {
    EXPECT_EQ(form.pAppObj, wirt);
    EXPECT_EQ(
        (QStringList{form.pGL_jmtVerarbeitungsdatum, form.pRootpath, form.pStandardBildPfad, form.pBildname,
            form.pBildExt, form.pKey1, form.pKey2, form.pKey3, form.pKey4, form.PTyp1, form.pTyp2, form.pInfoZeile}),
        (QStringList{u"2026-03-04"_s, u"P:"_s, u"Belege\\1"_s, u"a"_s, u"jpg"_s, u"RE"_s, u"1"_s, u"-"_s, u"-"_s,
            u"BEL"_s, u"-"_s, u"Rechnung 1"_s}));
    EXPECT_TRUE(form.isModal());
    EXPECT_EQ(form.parentWidget(), nullptr);
    EXPECT_EQ(gezeigt(form.TDBG_Zuordnungen, 0, uebersicht::Zuordnung), u"Beleg: RE / 1"_s);
  }));
  EXPECT_EQ(Formen<frm_AlleZuordnungen>(), 0);
  EXPECT_EQ(wirt.use_count(), 1);
}

TEST_F(Einstiege, TheDeleteFlagIsTheFormsWhateverTheCallerPassedIn) {
  fuege_Bilder_ein(1);
  for (const bool vorher : {true, false}) {
    bool eigene = vorher;
    EXPECT_TRUE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) {
      EXPECT_FALSE(form.pDeleteFlagAktBild);
      eingaben::klicke(form.cmd_Abbrechen);
    }));
    EXPECT_FALSE(eigene);
    eigene = vorher;
    EXPECT_TRUE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) { loesche_eigene(form); }));
    EXPECT_TRUE(eigene);
  }
}

TEST_F(Einstiege, TheDeleteFlagIsReadAfterEveryWayOut) {
  fuege_Bilder_ein(1);
  const std::function<void(frm_AlleZuordnungen&)> wege[]{[](frm_AlleZuordnungen& f) { eingaben::schliesse_Rahmen(f); },
      [](frm_AlleZuordnungen& f) { eingaben::taste(f, Qt::Key_Escape); }, [](frm_AlleZuordnungen& f) { f.Hide(); }};
  for (const auto& weg : wege) {
    bool eigene = false;
    EXPECT_TRUE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) {
      loesche_eigene(form);
      weg(form);
      EXPECT_FALSE(form.isVisible());
      EXPECT_EQ(Formen<frm_AlleZuordnungen>(), 1);
    }));
    EXPECT_TRUE(eigene);
    EXPECT_EQ(Formen<frm_AlleZuordnungen>(), 0);
  }
}

TEST_F(Einstiege, TheDeleteFlagMayBeLeftOut) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(rufe<frm_AlleZuordnungen>([](frm_AlleZuordnungen& form) { eingaben::klicke(form.cmd_Abbrechen); },
      [&] {
    return clsDialoge().Fkt_Aufruf_Dialog_AlleZuordnungen(
        wirt, u"P:"_s, {}, u"RE"_s, u"1"_s, {}, {}, u"a"_s, u"jpg"_s, u"BEL"_s, {}, {}, {});
  }));
}

TEST_F(Einstiege, AListThatCannotBeReadIsReportedAndShownEmpty) {
  fuege_Bilder_ein(1);
  wirt->fehler = fehlernummer::Verbindung;
  bool eigene = true;
  EXPECT_TRUE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) {
    EXPECT_EQ(form.TDBG_Zuordnungen.ColumnCount(), 0);
    eingaben::klicke(form.cmd_AlleLoeschen);
    eingaben::taste(form, Qt::Key_Escape);
  }));
  EXPECT_FALSE(eigene);
  erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Lade_AlleZuordnungen"_s, fehlernummer::Verbindung);
}

TEST_F(Einstiege, AFailureWhileAlleZuordnungenShowsGivesFalseAndLeavesTheFlag) {
  fuege_Bilder_ein(1);
  bool eigene = true;
  EXPECT_FALSE(oeffne_Alle(eigene, [&](frm_AlleZuordnungen& form) {
    form.cmd_Abbrechen.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
    eingaben::klicke(form.cmd_Abbrechen);
    EXPECT_FALSE(form.isVisible());
  }));
  EXPECT_TRUE(eigene);
  erwarte_Bericht(u"clsDialoge"_s, u"Fkt_Aufruf_Dialog_AlleZuordnungen"_s, fehlernummer::Ueberlauf);
  EXPECT_EQ(Formen<frm_AlleZuordnungen>(), 0);
}

TEST_F(Einstiege, WeitereZuordnungenSetsEveryMemberAndGivesTrue) {
  fuege_Bilder_ein(1);
  EXPECT_TRUE(oeffne_Weitere([&](frm_AnzeigeZuordnung& form) {
    EXPECT_EQ(form.pAppObj, wirt);
    EXPECT_EQ(form.pBildObj, store);
    EXPECT_EQ((QStringList{form.pGL_jmtVerarbeitungsdatum, form.pRootpath, form.pStandardBildPfad, form.pKey1,
                  form.pKey2, form.pKey3, form.pKey4, form.PTyp1, form.pTyp2, form.pInfoZeile}),
        (QStringList{u"2026-03-04"_s, u"P:"_s, u"Belege\\1"_s, u"RE"_s, u"1"_s, u"k3"_s, u"k4"_s, u"BEL"_s, u"t2"_s,
            u"Rechnung 1"_s}));
    EXPECT_TRUE(form.isModal());
    EXPECT_EQ(form.parentWidget(), nullptr);
    eingaben::klicke(form.cmd_Abbrechen);
  }));
  EXPECT_EQ(Formen<frm_AnzeigeZuordnung>(), 0);
  EXPECT_EQ(wirt.use_count(), 1);
  EXPECT_EQ(store.use_count(), 1);
}

TEST_F(Einstiege, WeitereZuordnungenClosesByEscapeByTheFrameAndByTheHost) {
  fuege_Bilder_ein(1);
  const std::function<void(frm_AnzeigeZuordnung&)> wege[]{
      [](frm_AnzeigeZuordnung& f) { eingaben::schliesse_Rahmen(f); },
      [](frm_AnzeigeZuordnung& f) { eingaben::taste(f, Qt::Key_Escape); }, [](frm_AnzeigeZuordnung& f) { f.Hide(); }};
  for (const auto& weg : wege) {
    EXPECT_TRUE(oeffne_Weitere([&](frm_AnzeigeZuordnung& form) {
      klicke(form.TDBG_WeitereZuordnungen, 0, artikel::Kurztext1);
      weg(form);
      EXPECT_FALSE(form.isVisible());
      EXPECT_EQ(Formen<frm_AnzeigeZuordnung>(), 1);
    }));
    EXPECT_EQ(Formen<frm_AnzeigeZuordnung>(), 0);
  }
}

TEST_F(Einstiege, AFailureWhileWeitereZuordnungenShowsGivesFalse) {
  fuege_Bilder_ein(1);
  EXPECT_FALSE(oeffne_Weitere([&](frm_AnzeigeZuordnung& form) {
    form.cmd_Abbrechen.Click = [] { throw std::bad_alloc(); };
    eingaben::klicke(form.cmd_Abbrechen);
  }));
  erwarte_Bericht(u"clsDialoge"_s, u"Fkt_Aufruf_Dialog_WeitereZuordnungen"_s, fehlernummer::SpeicherErschoepft);
  EXPECT_EQ(Formen<frm_AnzeigeZuordnung>(), 0);
  EXPECT_TRUE(oeffne_Weitere([](frm_AnzeigeZuordnung&) {}));
}

/// The two buttons of the assignment dialog.
class KnoepfeDesVorgangs : public Einstiege {
 protected:
  ~KnoepfeDesVorgangs() override {
    if (vorgang_) vorgang_->Unload();
  }
  frm_BildZuordnung& vorgang() {
    if (vorgang_) return *vorgang_;
    lies();
    vorgang_ = std::make_unique<frm_BildZuordnung>();
    vorgang_->Load();
    vorgang_->pAppObj = wirt;
    vorgang_->pBildObj = store;
    vorgang_->pRootpath = u"P:"_s;
    vorgang_->pStandardBildPfad = u"Belege\\1"_s;
    vorgang_->PTyp1 = typ1;
    vorgang_->pInfoZeile = u"Rechnung 1"_s;
    vorgang_->pGL_jmtVerarbeitungsdatum = u"2026-03-04"_s;
    vorgang_->Lade_Zuordnung();
    vorgang_->AnzeigeSteuern();
    return *vorgang_;
  }
  void zeige_Vorgang(const std::function<void()>& waehrend) {
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &vorgang(), [&] {
      // Not in the middle of the first layout, which lets events in.
      if (fenster.pumpt) return;
      takt.stop();
      waehrend();
      vorgang().Hide();
    });
    takt.start(0);
    vorgang().Show();
  }
  template <class Fenster>
  void druecke(QWidget& knopf, const std::function<void(Fenster&)>& waehrend) {
    EXPECT_TRUE(rufe<Fenster>(waehrend, [&] {
      eingaben::klicke(knopf);
      return true;
    }));
  }

 private:
  std::unique_ptr<frm_BildZuordnung> vorgang_;
};

TEST_F(KnoepfeDesVorgangs, AlleZuordnungenGetsTheSelectionAsItWasBeforeTheEdit) {
  fuege_Bilder_ein(2);
  zeige_Vorgang([&] {
    eingaben::klicke(vorgang().Pic_Thumb(2));
    eingaben::tippe(vorgang().txt_BildName, u"neu"_s);
    druecke<frm_AlleZuordnungen>(vorgang().SSC_AlleZuordnungen, [&](frm_AlleZuordnungen& form) {
      EXPECT_EQ(form.pAppObj, wirt);
      EXPECT_EQ(
          (QStringList{form.pBildname, form.pBildExt, form.pKey1, form.pKey2, form.pKey3, form.pKey4, form.PTyp1,
              form.pTyp2, form.pRootpath, form.pStandardBildPfad, form.pGL_jmtVerarbeitungsdatum, form.pInfoZeile}),
          (QStringList{u"b"_s, u"jpg"_s, u"RE"_s, u"1"_s, u"-"_s, u"-"_s, u"BEL"_s, u"-"_s, u"P:"_s, u"Belege\\1"_s,
              u"2026-03-04"_s, u"Rechnung 1"_s}));
    });
  });
}

TEST_F(KnoepfeDesVorgangs, TheOwnAssignmentIsMarkedForRemovalAndNotMoreThanThat) {
  fuege_Bilder_ein(2);
  zeige_Vorgang([&] {
    druecke<frm_AlleZuordnungen>(vorgang().SSC_AlleZuordnungen, [&](frm_AlleZuordnungen& form) {
      EXPECT_EQ(vorgang().chk_Delete.Value(), 0);
      loesche_eigene(form);
      eingaben::klicke(form.cmd_Abbrechen);
    });
    EXPECT_TRUE(vorgang().Zeile(0).Entfernen);
    EXPECT_TRUE(vorgang().Zeile(0).ZeileGeaendert);
    EXPECT_EQ(vorgang().chk_Delete.Value(), 1);
    EXPECT_FALSE(vorgang().Zeile(1).Entfernen);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
    EXPECT_EQ(db.anzahl(), 2);
    vorgang().SetzeDatenGeaendert(false);
  });
}

TEST_F(KnoepfeDesVorgangs, WithoutTheOwnAssignmentNothingIsMarked) {
  fuege_Bilder_ein(1);
  fuege_ein({.typ1 = u"ART"_s, .key1 = u"A1"_s});
  zeige_Vorgang([&] {
    druecke<frm_AlleZuordnungen>(vorgang().SSC_AlleZuordnungen, [&](frm_AlleZuordnungen& form) {
      klicke(form.TDBG_Zuordnungen, 1, uebersicht::Zuordnung);
      meldungen.erwarte({u"Sollen die ausgewählten Zuordnungen wirklich gelöscht werden?"_s, u"Achtung"_s,
                            Symbol::Frage, Knoepfe::JaNein},
          Antwort::Ja);
      eingaben::klicke(form.cmd_Loeschen);
    });
    EXPECT_FALSE(vorgang().Zeile(0).Entfernen);
    EXPECT_EQ(vorgang().chk_Delete.Value(), 0);
    EXPECT_FALSE(vorgang().DatenGeaendert);
  });
  EXPECT_EQ(db.anzahl(), 1);
}

TEST_F(KnoepfeDesVorgangs, AFailureAfterAlleZuordnungenIsReportedUnderTheButton) {
  fuege_Bilder_ein(1);
  zeige_Vorgang([&] {
    druecke<frm_AlleZuordnungen>(vorgang().SSC_AlleZuordnungen, [&](frm_AlleZuordnungen& form) {
      loesche_eigene(form);
      vorgang().chk_Delete.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
    });
    EXPECT_TRUE(vorgang().isVisible());
  });
  erwarte_Bericht(u"frm_BildZuordnung"_s, u"SSC_AlleZuordnungen_Click"_s, fehlernummer::Ueberlauf);
  EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
}

TEST_F(KnoepfeDesVorgangs, AFailureAfterWeitereZuordnungenIsReportedUnderTheButton) {
  class Zeiger final : public oberflaeche::Mauszeiger {
   public:
    oberflaeche::Zeigerform form() const override { return oberflaeche::Zeigerform::Standard; }
    void form(oberflaeche::Zeigerform) override {
      if (std::exchange(scheitert, false)) throw Laufzeitfehler(fehlernummer::Ueberlauf);
    }
    bool scheitert = false;
  };
  const auto zeiger = std::make_shared<Zeiger>();
  const auto vorher = oberflaeche::setze(zeiger);
  typ1 = u"ART"_s;
  lege_Bild(u"a.jpg"_s);
  fuege_ein({.typ1 = u"ART"_s});
  zeige_Vorgang([&] {
    druecke<frm_AnzeigeZuordnung>(
        vorgang().SSC_WeitereZuordnungen, [&](frm_AnzeigeZuordnung&) { zeiger->scheitert = true; });
  });
  oberflaeche::setze(vorher);
  erwarte_Bericht(u"frm_BildZuordnung"_s, u"SSC_WeitereZuordnungen_Click"_s, fehlernummer::Ueberlauf);
}

TEST_F(KnoepfeDesVorgangs, ABlankNameOpensNothing) {
  fuege_Bilder_ein(1);
  zeige_Vorgang([&] {
    vorgang().Zeile(0).Bildname = u"  "_s;
    eingaben::klicke(vorgang().Pic_Thumb(1));
    vorgang().SSC_AlleZuordnungen.Enabled(true);
    eingaben::klicke(vorgang().SSC_AlleZuordnungen);
    EXPECT_EQ(Formen<frm_AlleZuordnungen>(), 0);
  });
}

TEST_F(KnoepfeDesVorgangs, WeitereZuordnungenGetsTheCollectionAndTheSelectedKeys) {
  typ1 = u"ART"_s;
  lege_Bild(u"a.jpg"_s);
  fuege_ein({.typ1 = u"ART"_s, .key3 = u"k3"_s, .key4 = u"k4"_s, .typ2 = u"t2"_s});
  zeige_Vorgang([&] {
    druecke<frm_AnzeigeZuordnung>(vorgang().SSC_WeitereZuordnungen, [&](frm_AnzeigeZuordnung& form) {
      EXPECT_EQ(form.pAppObj, wirt);
      EXPECT_EQ(form.pBildObj, store);
      EXPECT_EQ((QStringList{form.pKey1, form.pKey2, form.pKey3, form.pKey4, form.PTyp1, form.pTyp2, form.pRootpath,
                    form.pStandardBildPfad, form.pGL_jmtVerarbeitungsdatum, form.pInfoZeile}),
          (QStringList{u"RE"_s, u"1"_s, u"k3"_s, u"k4"_s, u"ART"_s, u"t2"_s, u"P:"_s, u"Belege\\1"_s, u"2026-03-04"_s,
              u"Rechnung 1"_s}));
    });
    EXPECT_FALSE(vorgang().DatenGeaendert);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
}
