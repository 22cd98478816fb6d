#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>
#include <QTimer>

#include "platform/forms/Form.h"
#include "platform/forms/Steuerelementfeld.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Feld {
  Feld() {
    fenster.resize(300, 200);
    feld.entwirf(0).Move(15, 30, 150, 300);
  }
  QWidget fenster;
  Steuerelementfeld<Bildfeld> feld{
      [this](int i) { return std::make_unique<Bildfeld>(&fenster, u"Pic_Probe(%1)"_s.arg(i)); }};
};

}  // namespace

TEST(Steuerelementfeld, ALoadedControlIsAHiddenCopyOfTheTemplate) {
  Feld f;
  f.feld(0).DragMode(1);
  f.feld(0).ToolTipText(u"Tipp"_s);
  const Bildfeld& neu = f.feld.Load(3);
  EXPECT_EQ(neu.objectName(), u"Pic_Probe(3)"_s);
  EXPECT_EQ(neu.Left(), 15);
  EXPECT_EQ(neu.Height(), 300);
  EXPECT_EQ(neu.DragMode(), 1);
  EXPECT_EQ(neu.toolTip(), u"Tipp"_s);
  EXPECT_FALSE(neu.Visible());
  EXPECT_TRUE(f.feld(0).Visible());
  EXPECT_EQ(f.feld.UBound(), 3);
  EXPECT_EQ(f.feld.Count(), 2);
}

TEST(Steuerelementfeld, AMissingIndexATakenOneAndTheTemplateEachRaiseTheirFailure) {
  Feld f;
  EXPECT_EQ(Fehlernummer_von([&] { (void)f.feld(1); }), 340);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.Unload(1); }), 340);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.Unload(0); }), 362);
  f.feld.Load(1);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.Load(1); }), 360);
  EXPECT_EQ(Fehlernummer_von([&] { f.feld.entwirf(0); }), 360);
  EXPECT_EQ(f.feld.Count(), 2);
}

TEST(Steuerelementfeld, WithoutATemplateNothingIsLoaded) {
  Steuerelementfeld<Bildfeld> leer([](int) { return std::unique_ptr<Bildfeld>(); });
  EXPECT_EQ(leer.UBound(), -1);
  EXPECT_EQ(leer.Count(), 0);
  EXPECT_EQ(Fehlernummer_von([&] { leer.Load(1); }), 340);
}

TEST(Steuerelementfeld, UnloadingFreesTheIndexAtOnceAndTheControlLater) {
  Feld f;
  f.fenster.show();
  const QPointer<Bildfeld> alt = &f.feld.Load(1);
  alt->Visible(true);
  f.feld.Unload(1);
  EXPECT_FALSE(f.feld.vorhanden(1));
  EXPECT_FALSE(alt->isVisible());
  EXPECT_NE(&f.feld.Load(1), alt.data());
  ASSERT_FALSE(alt.isNull());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alt.isNull());
  EXPECT_TRUE(f.feld.vorhanden(1));
}

TEST(Steuerelementfeld, AControlMayBeUnloadedInsideItsOwnClickAndItsIndexLoadedAgain) {
  Form form(u"frm_Probe"_s);
  form.resize(300, 200);
  Steuerelementfeld<Bildfeld> feld([&](int i) { return std::make_unique<Bildfeld>(&form, u"Pic_Probe(%1)"_s.arg(i)); });
  feld.entwirf(0).Move(0, 0, 1500, 1500);
  QStringList ereignisse;
  std::function<void()> lade = [&] {
    Bildfeld& neu = feld.Load(1);
    neu.Visible(true);
    neu.Click = [&] {
      feld.Unload(1);
      lade();
      ereignisse += u"Click"_s;
    };
    neu.DblClick = [&] {
      feld.Unload(1);
      lade();
      ereignisse += u"DblClick"_s;
    };
  };
  lade();
  QTimer::singleShot(0, &form, [&] {
    QTest::mouseDClick(form.windowHandle(), Qt::LeftButton, {}, QPoint(50, 50));
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, {}, QPoint(50, 50));
    form.Hide();
  });
  form.Show();
  EXPECT_EQ(ereignisse, (QStringList{u"Click"_s, u"DblClick"_s, u"Click"_s}));
}
