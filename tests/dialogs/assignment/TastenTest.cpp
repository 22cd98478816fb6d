// The keys that move the selection.
#include <QTest>
#include <QTextCursor>
#include <QWindow>

#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Tastenpaar {
  int vor;
  int zurueck;
  const char* name;
};

class Tasten : public Dialogtest {
 protected:
  QList<QWidget*> felder() {
    frm_BildZuordnung& f = form();
    return {&f.txt_BildName, &f.chk_Drucken, &f.chk_GesamteSeite, &f.chk_NeueSeite, &f.chk_AlsAnhang, &f.chk_Delete,
        &f.txt_BildText, &f.txt_BildInfo, &f.SSR_Sortierung, &f.cmd_Abbruch, &f.SSC_Aktualisieren};
  }
};

/// Writes down what the form hands in, and lets it pass.
class Mithoerer final : public KeyHandler {
 public:
  void KeyDown(std::int16_t KeyCode, std::int16_t Shift) override {
    tasten += u"down %1"_s.arg(KeyCode);
    KeyHandler::KeyDown(KeyCode, Shift);
  }
  void KeyPress(std::int16_t KeyAscii) override {
    tasten += u"press %1"_s.arg(KeyAscii);
    KeyHandler::KeyPress(KeyAscii);
  }
  void KeyUp(std::int16_t KeyCode, std::int16_t Shift) override {
    tasten += u"up %1"_s.arg(KeyCode);
    KeyHandler::KeyUp(KeyCode, Shift);
  }
  QStringList tasten;
};

/// A core whose windows get that handler.
class Tastencore final : public KVOCore {
 public:
  void FehlerMelden(const QString& /*modul*/, const QString& prozedur, std::int32_t /*nummer*/,
      const QString& beschreibung, bool /*mitMeldung*/) override {
    ADD_FAILURE() << prozedur.toStdString() << ": " << beschreibung.toStdString();
  }
  std::shared_ptr<KeyHandler> NeuerKeyHandler() override { return mithoerer; }
  std::shared_ptr<Mithoerer> mithoerer = std::make_shared<Mithoerer>();
};

class Tastenpaare : public Tasten, public ::testing::WithParamInterface<Tastenpaar> {};

}  // namespace

TEST_P(Tastenpaare, MoveTheSelectionFromEveryField) {
  fuege_Bilder_ein(3);
  zeige([&] {
    for (QWidget* feld : felder()) {
      feld->setFocus();
      ASSERT_TRUE(feld->hasFocus()) << feld->objectName().toStdString();
      taste(form(), GetParam().vor);
      EXPECT_EQ(form().AktZeile, 1) << feld->objectName().toStdString();
      EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
      EXPECT_TRUE(feld->hasFocus()) << feld->objectName().toStdString();
      taste(form(), GetParam().zurueck);
      EXPECT_EQ(form().AktZeile, 0) << feld->objectName().toStdString();
    }
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_P(Tastenpaare, StayAtBothEnds) {
  fuege_Bilder_ein(2);
  zeige([&] {
    taste(form(), GetParam().zurueck);
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().AktThumb, 1);
    taste(form(), GetParam().vor);
    taste(form(), GetParam().vor);
    taste(form(), GetParam().vor);
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().AktThumb, 2);
    EXPECT_EQ(form().ErsteZeile, 0);
    taste(form(), GetParam().zurueck);
    EXPECT_EQ(form().AktZeile, 0);
  });
}

TEST_P(Tastenpaare, ScrollTheStripAndMeetEveryPictureInItsOrder) {
  fuege_Bilder_ein(12);
  zeige([&] {
    for (int zeile = 0; zeile < 12; ++zeile) {
      ASSERT_EQ(form().AktZeile, zeile);
      EXPECT_EQ(form().SSP_Anzahl(1).Caption(), QString::number(zeile + 1));
      const Bildfeld& gewaehlt = form().Pic_Thumb(form().AktThumb);
      EXPECT_EQ(gewaehlt.Tag, form().Zeile(zeile).VollerPfad);
      EXPECT_TRUE(form().Shp_Thump.Visible());
      EXPECT_EQ(form().Shp_Thump.Left(), gewaehlt.Left() - 32);
      EXPECT_LT(gewaehlt.Left(), form().SSC_Scroll_Right.Left()) << "it stands in view";
      EXPECT_FALSE(form().AnzeigeAufbau);
      taste(form(), GetParam().vor);
    }
    EXPECT_GT(form().ErsteZeile, 0);
    for (int i = 0; i < 3; ++i) taste(form(), GetParam().vor);
    EXPECT_EQ(form().AktZeile, 11);
    for (int zeile = 11; zeile >= 0; --zeile) {
      ASSERT_EQ(form().AktZeile, zeile);
      taste(form(), GetParam().zurueck);
    }
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().ErsteZeile, 0);
  });
}

INSTANTIATE_TEST_SUITE_P(Tasten, Tastenpaare,
    ::testing::Values(Tastenpaar{Qt::Key_PageUp, Qt::Key_PageDown, "PageUpForwards"},
        Tastenpaar{Qt::Key_F8, Qt::Key_F7, "F8Forwards"}),
    [](const auto& fall) { return fall.param.name; });

TEST_F(Tasten, AllOtherKeysLeaveTheSelection) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    form().txt_BildInfo.setFocus();
    for (const int andere : {Qt::Key_F6, Qt::Key_F9, Qt::Key_F1, Qt::Key_Home, Qt::Key_End, Qt::Key_Up, Qt::Key_Down,
             Qt::Key_Left, Qt::Key_Right, Qt::Key_Insert, Qt::Key_A, Qt::Key_Tab})
      taste(form(), andere);
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().AktThumb, 2);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
}

TEST_F(Tasten, TheControlStillGetsItsKey) {
  fuege_Bild_ein(
      u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& neu) { neu.Bild_Beschreibung(u"x\r\n"_s.repeated(60)); });
  zeige([&] {
    form().txt_BildText.setFocus();
    ASSERT_EQ(form().txt_BildText.textCursor().position(), 0);
    taste(form(), Qt::Key_PageDown);
    EXPECT_GT(form().txt_BildText.textCursor().position(), 0);
    EXPECT_EQ(form().AktZeile, 0);
  });
}

TEST_F(Tasten, AKeyThatIsHeldDownMovesOnWithEachRepeat) {
  fuege_Bilder_ein(4);
  zeige([&] {
    form().cmd_Abbruch.setFocus();
    for (int i = 0; i < 2; ++i) {
      QKeyEvent wiederholung(QEvent::KeyPress, Qt::Key_F8, Qt::NoModifier, QString(), true);
      QCoreApplication::sendEvent(&form().cmd_Abbruch, &wiederholung);
    }
    EXPECT_EQ(form().AktZeile, 2);
  });
}

TEST_F(Tasten, WithOnlyThePlaceholderTheKeysSelectNothing) {
  zeige([&] {
    for (const int t : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_F7, Qt::Key_F8}) taste(form(), t);
    EXPECT_EQ(form().AktZeile, frm_BildZuordnung::KeineZeile);
    EXPECT_EQ(form().AktThumb, 1);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().Zeile(0).ZeileGeaendert);
  });
}

// The keys go by the control, not by the row: after a scroll by the buttons they go on from the control's place.
TEST_F(Tasten, AfterAScrollByTheButtonsTheyGoOnFromTheControl) {
  fuege_Bilder_ein(10);
  zeige([&] {
    klicke(form().Pic_Thumb(1));
    klicke(form().SSC_Scroll_Right);
    klicke(form().SSC_Scroll_Right);
    ASSERT_EQ(form().AktZeile, 0);
    taste(form(), Qt::Key_F8);
    EXPECT_EQ(form().AktThumb, 2);
    EXPECT_EQ(form().AktZeile, 3);
  });
}

TEST_F(Tasten, PreviousInTheFirstRowDoesNotScrollThoughTheStripStandsFurther) {
  fuege_Bilder_ein(10);
  zeige([&] {
    klicke(form().SSC_Scroll_Right);
    ASSERT_EQ(form().AktZeile, 0);
    taste(form(), Qt::Key_F7);
    EXPECT_EQ(form().ErsteZeile, 1);
    EXPECT_EQ(form().AktZeile, 1);
    taste(form(), Qt::Key_F7);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(form().AktZeile, 0);
  });
}

TEST_F(Tasten, AStripOfOnePlaceGoesOnOneByOne) {
  fuege_Bilder_ein(4);
  zeige([&] {
    form().SichtbareThumbs = 1;
    taste(form(), Qt::Key_F8);
    EXPECT_EQ(form().AktThumb, 1);
    EXPECT_EQ(form().ErsteZeile, 1);
    EXPECT_EQ(form().AktZeile, 1);
  });
}

TEST_F(Tasten, TheyWorkForDisplayOnlyToo) {
  nur_Anzeige = true;
  fuege_Bilder_ein(2);
  zeige([&] {
    taste(form(), Qt::Key_PageUp);
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Tasten, PressAndReleaseReachTheHostsHandlerToo) {
  fuege_Bilder_ein(2);
  const auto tastencore = std::make_shared<Tastencore>();
  const std::shared_ptr<KVOCore> vorher = KVOCore::setze(tastencore);
  zeige([&] {
    form().chk_Drucken.setFocus();
    taste(form(), Qt::Key_F9);
    tippe(form().chk_Drucken, u"x"_s);
    EXPECT_EQ(tastencore->mithoerer->tasten,
        (QStringList{u"down 120"_s, u"up 120"_s, u"down 88"_s, u"press 120"_s, u"up 88"_s}));
    EXPECT_EQ(form().AktZeile, 0);
  });
  KVOCore::setze(vorher);
}
