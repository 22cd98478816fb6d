#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/Form.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Notes what happens to it; single events can be told what to do.
class Probe : public Form {
 public:
  Probe() : Form(u"frm_Probe"_s) {}
  QStringList ablauf;
  std::function<void(bool&)> beim_Schliessen = [](bool&) {};
  std::function<void(std::int16_t)> bei_Taste = [](std::int16_t) {};
  bool Groessen_notieren = false;

 protected:
  void Form_Load() override { ablauf += u"Load"_s; }
  void Form_Resize() override {
    if (Groessen_notieren) ablauf += u"Resize %1x%2"_s.arg(ScaleWidth()).arg(ScaleHeight());
  }
  void Form_QueryUnload(bool& Cancel) override {
    ablauf += u"QueryUnload"_s;
    beim_Schliessen(Cancel);
  }
  void Form_Unload() override { ablauf += u"Unload"_s; }
  void Form_KeyDown(std::int16_t KeyCode, std::int16_t Shift) override {
    ablauf += u"KeyDown %1/%2"_s.arg(KeyCode).arg(Shift);
    bei_Taste(KeyCode);
  }
  void Form_KeyPress(std::int16_t KeyAscii) override { ablauf += u"KeyPress %1"_s.arg(KeyAscii); }
  void Form_KeyUp(std::int16_t KeyCode, std::int16_t Shift) override {
    ablauf += u"KeyUp %1/%2"_s.arg(KeyCode).arg(Shift);
  }
};

/// Shows the form modally; `waehrend` runs once it is up.
void zeige(Form& form, const std::function<void()>& waehrend) {
  QTimer::singleShot(0, &form, waehrend);
  form.Show();
}

}  // namespace

TEST(Form, LoadRunsOnceAndShowLoads) {
  Probe form;
  form.Load();
  form.Load();
  zeige(form, [&] { form.Hide(); });
  EXPECT_EQ(form.ablauf, QStringList{u"Load"_s});
}

TEST(Form, HidingEndsTheModalShowAndKeepsTheObject) {
  Probe form;
  bool danach = false;
  zeige(form, [&] {
    EXPECT_TRUE(form.isVisible());
    form.Hide();
  });
  danach = true;
  EXPECT_TRUE(danach);
  EXPECT_FALSE(form.isVisible());
  zeige(form, [&] { form.Hide(); });
}

TEST(Form, TheFrameAsksAndARefusalKeepsTheFormOpen) {
  Probe form;
  form.beim_Schliessen = [](bool& Cancel) { Cancel = true; };
  zeige(form, [&] {
    EXPECT_FALSE(form.close());
    EXPECT_TRUE(form.isVisible());
    form.beim_Schliessen = [](bool&) {};
    EXPECT_TRUE(form.close());
  });
  EXPECT_EQ(form.ablauf, (QStringList{u"Load"_s, u"QueryUnload"_s, u"QueryUnload"_s}));
}

TEST(Form, UnloadingTwiceIsHarmlessAndEndsAShow) {
  Probe form;
  zeige(form, [&] { form.Unload(); });
  form.Unload();
  EXPECT_EQ(form.ablauf, (QStringList{u"Load"_s, u"Unload"_s}));
}

TEST(Form, AFormThatWasNeverLoadedHasNothingToUnload) {
  Probe form;
  form.Unload();
  EXPECT_TRUE(form.ablauf.isEmpty());
}

TEST(Form, EscapeClicksTheCancelButtonAndDoesNothingWithoutOne) {
  Probe form;
  QPushButton knopf(&form);
  QSignalSpy klicks(&knopf, &QPushButton::clicked);
  zeige(form, [&] {
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(klicks.count(), 0);
    form.setze_Abbruchknopf(&knopf);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_EQ(klicks.count(), 1);
    form.Hide();
  });
}

TEST(Form, AFailureOfAnEventEndsTheShowWhichThrowsIt) {
  Probe form;
  form.bei_Taste = [](std::int16_t) { throw Laufzeitfehler(9); };
  EXPECT_EQ(Fehlernummer_von([&] { zeige(form, [&] { QTest::keyClick(&form, Qt::Key_A); }); }), 9);
  EXPECT_FALSE(form.isVisible());
  form.bei_Taste = [](std::int16_t) {};
  EXPECT_EQ(Fehlernummer_von([&] { zeige(form, [&] { form.Hide(); }); }), 0);
}

TEST(Form, AFailureInsideARunningHandlerBelongsToTheStatementThatCausedIt) {
  Probe form;
  int beim_Aufrufer = 0;
  zeige(form, [&] {
    form.bewacht([&] { beim_Aufrufer = Fehlernummer_von([&] { form.bewacht([] { throw Laufzeitfehler(13); }); }); });
    EXPECT_TRUE(form.isVisible());
    form.Hide();
  });
  EXPECT_EQ(beim_Aufrufer, 13);
}

TEST(Form, KeysAreSeenBeforeTheControlWhichStillGetsThem) {
  Probe form;
  QLineEdit feld(&form);
  form.bei_Taste = [&](std::int16_t code) {
    if (code == 65) {
      EXPECT_EQ(feld.text(), QString());
    }
  };
  zeige(form, [&] {
    feld.setFocus();
    QTest::keyClick(&feld, Qt::Key_A, Qt::ShiftModifier);
    QTest::keyClick(&feld, Qt::Key_PageUp);
    form.Hide();
  });
  EXPECT_EQ(form.ablauf.mid(1),
      (QStringList{u"KeyDown 16/1"_s, u"KeyDown 65/1"_s, u"KeyPress 97"_s, u"KeyUp 65/1"_s, u"KeyUp 16/0"_s,
          u"KeyDown 33/0"_s, u"KeyUp 33/0"_s}));
  EXPECT_EQ(feld.text(), u"a"_s);
}

TEST(Form, KeyCodesAreTheOnesTheFormsKnow) {
  EXPECT_EQ(tasten::code(Qt::Key_PageUp), 33);
  EXPECT_EQ(tasten::code(Qt::Key_PageDown), 34);
  EXPECT_EQ(tasten::code(Qt::Key_F7), 118);
  EXPECT_EQ(tasten::code(Qt::Key_F8), 119);
  EXPECT_EQ(tasten::code(Qt::Key_Escape), 27);
  EXPECT_EQ(tasten::code(Qt::Key_Z), 90);
  EXPECT_EQ(tasten::code(Qt::Key_Udiaeresis), 0);
  EXPECT_EQ(tasten::shift(Qt::ControlModifier | Qt::AltModifier), 6);
}

TEST(Form, AResizeTellsTheInnerSizeInTwips) {
  Probe form;
  form.Groessen_notieren = true;
  form.setze_Innengroesse(12000, 9000);
  zeige(form, [&] { form.Hide(); });
  EXPECT_TRUE(form.ablauf.contains(u"Resize 12000x9000"_s)) << form.ablauf.join(u' ').toStdString();
}
