// Where everything stands. Measures are twips; a logical pixel has 15.
#include <QPointer>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Layout : public Dialogtest {
 protected:
  static constexpr double Breite = 15000;
  static constexpr double Hoehe = 10500;

  static double rechts(const Steuerelement& s) { return s.Left() + s.Width(); }
  static double unten(const Steuerelement& s) { return s.Top() + s.Height(); }
  /// The form in a window of a given inner size.
  void zeige_gross(int anzahl, const std::function<void()>& waehrend) {
    if (anzahl > 0) fuege_Bilder_ein(anzahl);
    form().setze_Innengroesse(Breite, Hoehe);
    zeige(waehrend);
  }
  QWidget& balken(int nummer) {
    return *form().SSS_BildZuordnung.findChild<QWidget*>(u"SSS_BildZuordnung_Balken%1"_s.arg(nummer));
  }
  /// Drags a bar with the real mouse.
  void ziehe_Balken(int nummer, QPoint weg) {
    const QPoint von = balken(nummer).mapTo(&form(), balken(nummer).rect().center());
    QTest::mousePress(form().windowHandle(), Qt::LeftButton, {}, von);
    QTest::mouseMove(form().windowHandle(), von + weg);
    QCoreApplication::processEvents();
    QTest::mouseRelease(form().windowHandle(), Qt::LeftButton, {}, von + weg);
  }
  QList<Bildfeld*> thumbnails() {
    QList<Bildfeld*> alle;
    for (int i = 1; i <= form().Pic_Thumb.UBound(); ++i) alle.append(&form().Pic_Thumb(i));
    return alle;
  }
  static double ganz(double wert) { return std::nearbyint(wert); }
  /// The picture pane's rules for the sizes that hold now.
  void pruefe_Bildbereich() {
    frm_BildZuordnung& f = form();
    const double breite = f.SSP_Panel(2).Width();
    const double hoehe = f.SSP_Panel(2).Height();
    EXPECT_EQ(unten(f.txt_BildInfo), hoehe - 40);
    EXPECT_EQ(f.lbl_Beschreibung.Top(), f.txt_BildInfo.Top());
    EXPECT_EQ(f.txt_BildInfo.Left(), rechts(f.lbl_Beschreibung) + 40);
    EXPECT_EQ(f.txt_BildInfo.Width(), breite - (f.txt_BildInfo.Left() + 80));
    EXPECT_EQ(f.Pic_Bearbeitung.Top(), 0);
    EXPECT_EQ(f.Pic_Bearbeitung.Left(), (breite - f.Pic_Bearbeitung.Width()) / 2);
    for (const Steuerelement* s :
        std::initializer_list<const Steuerelement*>{&f.Pic_Bearbeitung, &f.txt_BildInfo, &f.lbl_Beschreibung})
      EXPECT_TRUE(s->Visible());
  }
};

}  // namespace

// ── Each place ──────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Layout, TheSplitterFillsTheWindowDownToTheButtonsAtItsFoot) {
  zeige_gross(2, [&] {
    frm_BildZuordnung& f = form();
    EXPECT_EQ(f.SSS_BildZuordnung.Top(), 0);
    EXPECT_EQ(f.SSS_BildZuordnung.Left(), 0);
    EXPECT_EQ(f.SSS_BildZuordnung.Width(), Breite);
    EXPECT_EQ(f.SSS_BildZuordnung.Height(), Hoehe - 580);
    for (const Steuerelement* s :
        std::initializer_list<const Steuerelement*>{&f.SSC_BilderLaden, &f.SSC_ZuordnungSpeichern, &f.cmd_Abbruch,
            &f.SSC_AlleZuordnungen, &f.SSC_WeitereZuordnungen, &f.SSR_Sortierung})
      EXPECT_EQ(s->Top(), Hoehe - 560);
    EXPECT_EQ(f.SSC_BilderLaden.Left(), 40);
    EXPECT_EQ(f.SSC_AlleZuordnungen.Left(), rechts(f.SSC_BilderLaden) + 40);
    EXPECT_EQ(f.SSC_WeitereZuordnungen.Left(), rechts(f.SSC_AlleZuordnungen) + 40);
    EXPECT_EQ(f.SSR_Sortierung.Left(), rechts(f.SSC_WeitereZuordnungen) + 40);
    EXPECT_EQ(rechts(f.cmd_Abbruch), Breite - 20);
    EXPECT_EQ(rechts(f.SSC_ZuordnungSpeichern), f.cmd_Abbruch.Left() - 40);
  });
}

TEST_F(Layout, TheHeadersNumbersAndButtonsStandFromRightToLeft) {
  zeige_gross(2, [&] {
    frm_BildZuordnung& f = form();
    EXPECT_EQ(f.SSP_Panel(0).Width(), Breite);
    EXPECT_EQ(rechts(f.SSP_Anzahl(3)), Breite - 20);
    for (int i = 2; i >= 0; --i) EXPECT_EQ(rechts(f.SSP_Anzahl(i)), f.SSP_Anzahl(i + 1).Left()) << i;
    EXPECT_EQ(rechts(f.SSC_ExifInfo), f.SSP_Anzahl(0).Left() - 100);
    EXPECT_EQ(rechts(f.SSC_Aktualisieren), f.SSC_ExifInfo.Left() - 40);
    EXPECT_EQ(rechts(f.SSC_Drehen180), f.SSC_Aktualisieren.Left() - 40);
    EXPECT_EQ(rechts(f.SSC_Drehen270), f.SSC_Aktualisieren.Left() - 40);
    EXPECT_EQ(f.SSC_Drehen270.Top(), unten(f.SSC_Drehen180) - 10);
    EXPECT_EQ(rechts(f.SSC_Drehen90), f.SSC_Drehen270.Left());
    EXPECT_EQ(rechts(f.SSC_Bildbearbeitung), f.SSC_Drehen90.Left() - 40);
    for (const SSCommand* s :
        {&f.SSC_ExifInfo, &f.SSC_Aktualisieren, &f.SSC_Drehen180, &f.SSC_Drehen90, &f.SSC_Bildbearbeitung})
      EXPECT_EQ(s->Top(), 30) << s->objectName().toStdString();
  });
}

TEST_F(Layout, ALongInfoLineEndsInFrontOfTheFirstButtonInAnyWindow) {
  fuege_Bilder_ein(1);
  form().pInfoZeile = u"Rechnung 4711 an "_s + QString(300, u'W');
  zeige([&] {
    for (const int breite : {800, 1000, 1600}) {
      form().resize(breite, 600);
      QCoreApplication::processEvents();
      const SSPanel& kopf = form().SSP_Panel(0);
      const QString gezeigt = kopf.gezeigter_Text();
      EXPECT_TRUE(gezeigt.startsWith(u"   Rechnung"_s) && gezeigt.endsWith(u'…')) << gezeigt.toStdString();
      EXPECT_LT(kopf.fontMetrics().horizontalAdvance(gezeigt), form().SSC_Bildbearbeitung.x());
      EXPECT_GT(kopf.fontMetrics().horizontalAdvance(gezeigt), form().SSC_Bildbearbeitung.x() - 50);
      EXPECT_EQ(kopf.toolTip(), form().pInfoZeile);
    }
  });
}

TEST_F(Layout, TheEditingFieldsTakeTheirPanelsWidthAndTheTextItsHeight) {
  zeige_gross(2, [&] {
    frm_BildZuordnung& f = form();
    const double breite = f.SSP_Panel(1).Width();
    EXPECT_EQ(breite, f.SSS_BildZuordnung.PaneWidth(1));
    EXPECT_EQ(f.SSP_NameChanged.Top(), 40);
    EXPECT_EQ(f.SSP_NameChanged.Left(), 20);
    EXPECT_EQ(f.SSP_NameChanged.Width(), breite - 40);
    EXPECT_EQ(f.txt_BildName.Width(), breite - (f.txt_BildName.Left() + 80 + f.txt_BildExt.Width() + 20));
    EXPECT_EQ(f.txt_BildExt.Left(), rechts(f.txt_BildName) + 20);
    EXPECT_EQ(f.txt_BildText.Left(), 40);
    EXPECT_EQ(f.lbl_Anzeige(1).Top(), unten(f.chk_Delete) + 160);
    EXPECT_EQ(f.txt_BildText.Top(), unten(f.lbl_Anzeige(1)));
    EXPECT_EQ(f.txt_BildText.Width(), breite - (40 + 80));
    EXPECT_EQ(unten(f.txt_BildText), f.SSP_Panel(1).Height() - 40);
  });
}

TEST_F(Layout, TheStripsButtonsAndTemplateFollowTheHeightOfItsPanel) {
  zeige_gross(2, [&] {
    frm_BildZuordnung& f = form();
    const double hoehe = f.SSP_Panel(3).Height();
    EXPECT_EQ(hoehe, 2100);
    for (const SSCommand* s : {&f.SSC_Scroll_Left, &f.SSC_Scroll_Right}) {
      EXPECT_EQ(s->Top(), 0);
      EXPECT_EQ(s->Height(), hoehe);
    }
    EXPECT_EQ(f.SSC_Scroll_Left.Left(), 0);
    EXPECT_EQ(rechts(f.SSC_Scroll_Right), Breite);
    EXPECT_EQ(f.Pic_Thumb(0).Top(), 90);
    EXPECT_EQ(f.Pic_Thumb(0).Height(), hoehe - 200);
    EXPECT_EQ(f.Pic_Thumb(0).Width(), (hoehe - 200) * 1.5);
    EXPECT_EQ(f.Pic_Thumb(0).Left(), f.SSC_Scroll_Left.Width() + 20 - f.Pic_Thumb(0).Width());
    EXPECT_EQ(f.Pic_Thumb(1).Left(), rechts(f.SSC_Scroll_Left) + 120);
    EXPECT_EQ(f.ThumbHoehe, 127);   // 1900 / 15 = 126.67
    EXPECT_EQ(f.ThumbBreite, 190);  // 2850 / 15
  });
}

TEST_F(Layout, ThePicturePaneHoldsTheTextBelowAndThePictureCentredAbove) {
  zeige_gross(2, [&] {
    pruefe_Bildbereich();
    frm_BildZuordnung& f = form();
    // The text field's height goes off both measures of the box.
    const double a = ganz((f.SSP_Panel(2).Width() - (f.txt_BildInfo.Height() + 100)) / 15);
    const double b = ganz((f.SSP_Panel(2).Height() - (f.txt_BildInfo.Height() + 100)) / 15);
    // The pictures are 120 by 80.
    const double faktor = 120 * (b / 80) <= a ? b / 80 : a / 120;
    EXPECT_EQ(f.Pic_Bearbeitung.Width(), ganz(120 * faktor) * 15);
    EXPECT_EQ(f.Pic_Bearbeitung.Height(), ganz(80 * faktor) * 15);
  });
}

TEST_F(Layout, EverythingFollowsTheWindowsSize) {
  zeige_gross(2, [&] {
    frm_BildZuordnung& f = form();
    f.setze_Innengroesse(18000, 12000);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.SSS_BildZuordnung.Width(), 18000);
    EXPECT_EQ(f.SSS_BildZuordnung.Height(), 12000 - 580);
    EXPECT_EQ(rechts(f.cmd_Abbruch), 18000 - 20);
    EXPECT_EQ(rechts(f.SSP_Anzahl(3)), 18000 - 20);
    EXPECT_EQ(rechts(f.SSC_Scroll_Right), 18000);
    EXPECT_EQ(unten(f.txt_BildText), f.SSP_Panel(1).Height() - 40);
    pruefe_Bildbereich();
  });
}

TEST_F(Layout, WithOnlyThePlaceholderThePicturePaneIsLaidOutToo) {
  zeige_gross(0, [&] {
    frm_BildZuordnung& f = form();
    EXPECT_EQ(f.Pic_Bearbeitung.Width(), f.SSP_Panel(2).Width());
    EXPECT_EQ(f.Pic_Bearbeitung.Height(), f.SSP_Panel(2).Height() - (f.txt_BildInfo.Height() + 80));
    pruefe_Bildbereich();
  });
}

TEST_F(Layout, ThePointerIsBackAfterALayout) {
  zeige_gross(2, [&] {
    form().SSS_BildZuordnung.Resize(0);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
}

// ── The strip's height ──────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Layout, AFirstLayoutThatFindsExactlyTheHeightOfTheStartBuildsNoStrip) {
  fuege_Bilder_ein(3);
  form().SSS_BildZuordnung.PaneHeight(3, 1750);
  zeige([&] {
    EXPECT_EQ(form().StreifenHoehe, 1750);
    EXPECT_EQ(form().Pic_Thumb.Count(), 1);
    EXPECT_EQ(form().AktZeile, frm_BildZuordnung::KeineZeile);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    form().SSS_BildZuordnung.PaneHeight(3, 1751);
    EXPECT_EQ(form().Pic_Thumb.Count(), 4);
    EXPECT_EQ(form().AktZeile, 0);
  });
}

TEST_F(Layout, ThePaneIsSetToAWholeNumber) {
  fuege_Bilder_ein(2);
  form().SSS_BildZuordnung.PaneHeight(3, 2000.4);
  zeige([&] {
    EXPECT_EQ(form().StreifenHoehe, 2000);
    EXPECT_EQ(form().SSS_BildZuordnung.PaneHeight(3), 2000);
    EXPECT_EQ(form().SSP_Panel(3).Height(), 2000);
    EXPECT_EQ(form().Pic_Thumb(0).Height(), 1800);
  });
}

TEST_F(Layout, AnEventForAPaneBehindTheLastNeverRebuildsTheStrip) {
  zeige_gross(2, [&] {
    const auto vorher = thumbnails();
    form().StreifenHoehe = 1;
    form().SSS_BildZuordnung.Resize(4);
    EXPECT_EQ(thumbnails(), vorher);
    EXPECT_EQ(form().StreifenHoehe, 1);
    form().SSS_BildZuordnung.Resize(3);
    EXPECT_NE(thumbnails(), vorher);
    EXPECT_EQ(form().StreifenHoehe, 2100);
  });
}

// ── Bars ────────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Layout, DraggingTheBarAboveTheStripRebuildsTheThumbnailsAtTheNewHeight) {
  zeige_gross(4, [&] {
    frm_BildZuordnung& f = form();
    klicke(f.Pic_Thumb(2));
    const auto vorher = thumbnails();
    ziehe_Balken(3, {0, -40});
    EXPECT_EQ(f.StreifenHoehe, 2100 + 600);
    EXPECT_EQ(f.SSP_Panel(3).Height(), 2700);
    EXPECT_EQ(f.Pic_Thumb(0).Height(), 2500);
    EXPECT_EQ(f.Pic_Thumb(0).Width(), 3750);
    EXPECT_EQ(f.ThumbHoehe, 167);
    EXPECT_EQ(f.ThumbBreite, 250);
    for (Bildfeld* neu : thumbnails()) EXPECT_FALSE(vorher.contains(neu));
    EXPECT_EQ(f.Pic_Thumb(1).Width(), 250 * 15);
    EXPECT_EQ(f.AktZeile, 1);
    EXPECT_EQ(f.Shp_Thump.Left(), f.Pic_Thumb(2).Left() - 32);
    EXPECT_TRUE(f.SSP_Panel(3).Visible());
    EXPECT_EQ(f.Pic_Thumb(1).Image().pixel(1, f.Pic_Thumb(1).Image().height() - 2), qRgb(0xC0, 0xFF, 0xC0));
    pruefe_Bildbereich();
  });
}

TEST_F(Layout, TheStripKeepsItsFirstRowWhenItsHeightChanges) {
  zeige_gross(9, [&] {
    klicke(form().SSC_Scroll_Right);
    klicke(form().SSC_Scroll_Right);
    ziehe_Balken(3, {0, 20});
    EXPECT_EQ(form().ErsteZeile, 2);
    EXPECT_EQ(form().Pic_Thumb(1).Tag, u"P:\\Belege\\1\\c.jpg"_s);
  });
}

TEST_F(Layout, DraggingTheOtherBarsRefitsThePictureAndLeavesTheStripAlone) {
  zeige_gross(4, [&] {
    frm_BildZuordnung& f = form();
    const auto vorher = thumbnails();
    double breite = f.Pic_Bearbeitung.Width();
    ziehe_Balken(1, {0, 60});
    EXPECT_EQ(f.SSP_Panel(0).Height(), 810 + 900);
    EXPECT_NE(f.Pic_Bearbeitung.Width(), breite);
    EXPECT_EQ(thumbnails(), vorher);
    pruefe_Bildbereich();
    breite = f.Pic_Bearbeitung.Width();
    const double felder = f.SSP_Panel(1).Width();
    ziehe_Balken(2, {300, 0});
    EXPECT_EQ(f.SSP_Panel(1).Width(), felder + 4500);
    EXPECT_NE(f.Pic_Bearbeitung.Width(), breite);
    EXPECT_EQ(f.txt_BildText.Width(), felder + 4500 - 120);
    EXPECT_EQ(thumbnails(), vorher);
    pruefe_Bildbereich();
  });
}

TEST_F(Layout, AWiderOrHigherWindowLeavesTheStripAlone) {
  zeige_gross(3, [&] {
    const auto vorher = thumbnails();
    form().setze_Innengroesse(20000, 14000);
    QCoreApplication::processEvents();
    EXPECT_EQ(thumbnails(), vorher);
    EXPECT_EQ(form().StreifenHoehe, 2100);
  });
}

// ── Locks, limits and what goes on meanwhile ────────────────────────────────────────────────────────────────────────

TEST_F(Layout, WhileThePlacementIsRestoredNeitherHandlerChangesAControl) {
  fuege_Bilder_ein(2);
  fenster.lage = Fensterlage{QRect(10, 10, 900, 640), false};
  int gefragt = 0;
  fenster.beim_Wiederherstellen = [&] {
    ++gefragt;
    frm_BildZuordnung& f = form();
    EXPECT_TRUE(f.LayoutSperre);
    EXPECT_EQ(f.ScaleWidth(), 900 * 15);
    EXPECT_EQ(f.SSS_BildZuordnung.Width(), 0) << "the window's resize was let pass";
    const double links = f.cmd_Abbruch.Left();
    f.SSS_BildZuordnung.Resize(0);
    EXPECT_EQ(f.cmd_Abbruch.Left(), links);
    EXPECT_EQ(f.ThumbHoehe, 0);
    EXPECT_EQ(f.StreifenHoehe, 1750);
    EXPECT_TRUE(f.txt_BildInfo.Visible());
  };
  zeige([&] {
    EXPECT_EQ(gefragt, 1);
    EXPECT_FALSE(form().LayoutSperre);
    EXPECT_EQ(fenster.wiederhergestellt, u"KVZunft_Gesamt 2000/frm_BildZuordnung"_s);
    EXPECT_EQ(form().SSS_BildZuordnung.Width(), 900 * 15);
    EXPECT_EQ(form().Pic_Thumb.Count(), 3);
  });
}

TEST_F(Layout, WithTheLockSetAShownWindowIsNotLaidOutAgain) {
  zeige_gross(2, [&] {
    form().LayoutSperre = true;
    const double links = form().cmd_Abbruch.Left();
    form().setze_Innengroesse(18000, 12000);
    QCoreApplication::processEvents();
    form().SSS_BildZuordnung.Resize(3);
    EXPECT_EQ(form().cmd_Abbruch.Left(), links);
    EXPECT_EQ(form().SSS_BildZuordnung.Width(), Breite);
    form().LayoutSperre = false;
    form().setze_Innengroesse(18015, 12000);
    QCoreApplication::processEvents();
    EXPECT_EQ(form().SSS_BildZuordnung.Width(), 18015);
  });
}

TEST_F(Layout, ATinyWindowCrashesNothingAndRefusedSizesKeepTheOldOnes) {
  zeige_gross(3, [&] {
    frm_BildZuordnung& f = form();
    f.setMinimumSize(1, 1);
    const double hoehe = f.SSS_BildZuordnung.Height();
    f.resize(20, 20);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.SSS_BildZuordnung.Height(), hoehe);
    EXPECT_EQ(f.SSS_BildZuordnung.Width(), f.ScaleWidth());
    for (const QSize& groesse : {QSize(1, 1), QSize(60, 45), QSize(200, 39), QSize(30, 500), QSize(500, 100)}) {
      f.resize(groesse);
      QCoreApplication::processEvents();
      for (const auto& [i, t] : f.Pic_Thumb) {
        EXPECT_GE(t->Width(), 0) << i;
        EXPECT_GE(t->Height(), 0) << i;
      }
      EXPECT_GE(f.ThumbHoehe, 0);
      EXPECT_GE(f.txt_BildText.Width(), 0);
    }
    EXPECT_TRUE(core.hole().isEmpty());
    f.setze_Innengroesse(Breite, Hoehe);
    QCoreApplication::processEvents();
    EXPECT_EQ(rechts(f.cmd_Abbruch), Breite - 20);
    EXPECT_EQ(f.txt_BildText.Width(), f.SSP_Panel(1).Width() - 120);
    pruefe_Bildbereich();
    EXPECT_EQ(f.Pic_Thumb.Count(), 4);
  });
}

TEST_F(Layout, AStripThatIsDraggedShutStillWorks) {
  zeige_gross(3, [&] {
    ziehe_Balken(3, {0, 130});
    EXPECT_EQ(form().SSP_Panel(3).Height(), SSSplitter::Mindestmass);
    EXPECT_EQ(form().Pic_Thumb(0).Height(), SSSplitter::Mindestmass - 200);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 1);
    ziehe_Balken(3, {0, -100});
    EXPECT_EQ(form().SSP_Panel(3).Height(), SSSplitter::Mindestmass + 1500);
  });
}

TEST_F(Layout, WhoIsTypingGoesOnTypingThroughALayout) {
  zeige_gross(3, [&] {
    for (QWidget* feld : std::initializer_list<QWidget*>{&form().txt_BildInfo, &form().txt_BildText,
             &form().txt_BildName, &form().chk_Drucken, &form().cmd_Abbruch}) {
      feld->setFocus();
      ASSERT_TRUE(feld->hasFocus()) << feld->objectName().toStdString();
      form().setze_Innengroesse(form().ScaleWidth() + 150, Hoehe);
      QCoreApplication::processEvents();
      EXPECT_TRUE(feld->hasFocus()) << feld->objectName().toStdString();
      form().SSS_BildZuordnung.PaneHeight(3, form().SSS_BildZuordnung.PaneHeight(3) + 15);
      EXPECT_TRUE(feld->hasFocus()) << feld->objectName().toStdString();
    }
  });
}

TEST_F(Layout, AScrollButtonKeepsTheFocusWhileTheStripIsRebuilt) {
  zeige_gross(9, [&] {
    form().SSC_Scroll_Right.setFocus();
    ziehe_Balken(3, {0, -10});
    EXPECT_TRUE(form().SSC_Scroll_Right.hasFocus());
  });
}

TEST_F(Layout, AResizeThatComesInDuringALayoutIsLaidOut) {
  struct Pumpe final : oberflaeche::Ereignispumpe {
    explicit Pumpe(frm_BildZuordnung& f) : form(f) {}
    void verarbeite_anstehende() override {
      if (std::exchange(offen, false)) form.setze_Innengroesse(18000, 12000);
      QCoreApplication::processEvents();
    }
    frm_BildZuordnung& form;
    bool offen = true;
  };
  zeige_gross(3, [&] {
    const auto vorher = oberflaeche::setze(std::make_shared<Pumpe>(form()));
    ziehe_Balken(3, {0, -40});
    oberflaeche::setze(vorher);
    EXPECT_EQ(form().SSS_BildZuordnung.Width(), 18000);
    EXPECT_EQ(rechts(form().SSC_Scroll_Right), 18000);
    EXPECT_EQ(form().Pic_Thumb.Count(), 4);
    EXPECT_EQ(form().StreifenHoehe, 2700);
    EXPECT_EQ(form().Pic_Thumb(1).ScaleHeight(), form().ThumbHoehe);
    pruefe_Bildbereich();
  });
}

TEST_F(Layout, AFormThatIsHiddenDuringALayoutEndsItsShow) {
  struct Pumpe final : oberflaeche::Ereignispumpe {
    explicit Pumpe(frm_BildZuordnung& f) : form(f) {}
    void verarbeite_anstehende() override { form.Hide(); }
    frm_BildZuordnung& form;
  };
  fuege_Bilder_ein(2);
  const auto vorher = oberflaeche::setze(std::make_shared<Pumpe>(form()));
  form().Show();
  oberflaeche::setze(vorher);
  EXPECT_FALSE(form().isVisible());
}
