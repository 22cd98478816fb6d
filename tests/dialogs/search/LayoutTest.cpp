// Where the controls stand, at any size of the window.
#include "platform/basic/Twips.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Suchlayout : public Suchtest {
 protected:
  Suchlayout() { lege_Bild(u"Bilder/a.jpg"_s); }
  static double unten(const Steuerelement& s) { return s.Top() + s.Height(); }
  static double rechts(const Steuerelement& s) { return s.Left() + s.Width(); }
  /// Runs in windows of several sizes, in pixels.
  void in_jeder_Groesse(const std::function<void(double breite, double hoehe)>& pruefe) {
    zeige([&] {
      for (const QSize groesse : {QSize(640, 480), QSize(900, 620), QSize(1600, 1000)}) {
        form().resize(groesse);
        QCoreApplication::processEvents();
        SCOPED_TRACE(groesse.width());
        pruefe(twips::aus_Pixel(groesse.width()), twips::aus_Pixel(groesse.height()));
      }
    });
  }
  /// Twips are laid out in whole pixels.
  static constexpr double Pixel = 15;
};

}  // namespace

TEST_F(Suchlayout, TheCommandsStandAtTheTopRight) {
  in_jeder_Groesse([&](double breite, double) {
    EXPECT_EQ(form().SSC_Drehen.Top(), 30);
    EXPECT_EQ(form().SSC_Bildbearbeitung.Top(), 30);
    EXPECT_NEAR(breite - rechts(form().SSC_Bildbearbeitung), 40, Pixel);
    EXPECT_NEAR(form().SSC_Bildbearbeitung.Left() - rechts(form().SSC_Drehen), 20, Pixel);
  });
}

TEST_F(Suchlayout, CountAndProgressStandOnTheBottomEdgeSideBySide) {
  in_jeder_Groesse([&](double, double hoehe) {
    EXPECT_NEAR(unten(form().SSP_Anzahl), hoehe, Pixel);
    EXPECT_NEAR(unten(form().SSP_Fortschritt), hoehe, Pixel);
    EXPECT_NEAR(form().SSP_Fortschritt.Left() - rechts(form().SSP_Anzahl), 20, Pixel);
  });
}

TEST_F(Suchlayout, TheButtonsStandInARowAboveThemAndTheTextAboveTheButtons) {
  in_jeder_Groesse([&](double breite, double) {
    const double zeile = form().cmd_Abbruch.Top();
    for (const SSCommand* knopf : {&form().cmd_EinlesenAbrrechen, &form().cmd_TextSpeichern, &form().cmd_Uebernehmen}) {
      EXPECT_EQ(knopf->Top(), zeile);
      EXPECT_LE(rechts(*knopf), breite);
    }
    EXPECT_LE(unten(form().cmd_Abbruch), form().SSP_Anzahl.Top());
    EXPECT_LE(rechts(form().cmd_TextSpeichern), form().cmd_Uebernehmen.Left());
    EXPECT_LE(unten(form().txt_Info), zeile);
    EXPECT_LE(unten(form().SSP_Info), form().txt_Info.Top() + Pixel);
  });
}

TEST_F(Suchlayout, TheListFillsTheSpaceBesideTheFoldersAndItsStandInLiesExactlyOnIt) {
  in_jeder_Groesse([&](double breite, double) {
    EXPECT_NEAR(form().SSP_Info.Top() - unten(form().lvwContent), 700, Pixel);
    EXPECT_NEAR(form().lvwContent.Left() - rechts(form().Dir1), 150, Pixel);
    EXPECT_NEAR(rechts(form().lvwContent), breite - 40, Pixel);
    EXPECT_EQ(form().SSP_Liste.geometry(), form().lvwContent.geometry());
    EXPECT_GT(form().lvwContent.Height(), 0);
  });
}
