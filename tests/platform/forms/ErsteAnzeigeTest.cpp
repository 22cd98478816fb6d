// What a form does when it shows for the first time, and its place on the screen.
#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/Form.h"
#include "platform/forms/steuerelemente/SSSplitter.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Notes its events; each may be told to fail or to do something else.
class Probe : public Form {
 public:
  Probe() : Form(u"frm_Probe"_s) {
    setze_Innengroesse(6000, 4500);
    teiler.Resize = [this](int) { geschieht(u"Splitter"_s); };
  }
  void geschieht(const QString& was) {
    ablauf += was;
    if (bei == was && tue) tue();
  }
  QStringList ablauf;
  QString bei;
  std::function<void()> tue;
  SSSplitter teiler{this, u"SSS_Probe"_s};

 protected:
  void Form_Resize() override { geschieht(u"Resize"_s); }
  void Form_Activate() override { geschieht(u"Activate"_s); }
};

void zeige(Form& form, const std::function<void()>& waehrend = {}) {
  QTimer::singleShot(0, &form, [&form, waehrend] {
    if (waehrend) waehrend();
    form.Hide();
  });
  form.Show();
}

/// Whether a show entered its event loop. A form that does is hidden again, so that the test goes on.
class Schleifenwache {
 public:
  explicit Schleifenwache(Form& form) {
    QTimer::singleShot(0, &form, [this, &form] {
      betreten_ = true;
      form.Hide();
    });
  }
  bool betreten() const { return betreten_; }

 private:
  bool betreten_ = false;
};

}  // namespace

TEST(ErsteAnzeige, ResizeComesFirstThenTheSplitterThoughNoSizeChangedThenActivate) {
  Probe form;
  QStringList beim_Aufgehen;
  zeige(form, [&] { beim_Aufgehen = form.ablauf; });
  EXPECT_EQ(beim_Aufgehen, (QStringList{u"Resize"_s, u"Splitter"_s, u"Activate"_s}));
}

TEST(ErsteAnzeige, ASplitterThatTheResizeChangesTellsBoth) {
  Probe form;
  form.bei = u"Resize"_s;
  form.tue = [&] { form.teiler.Move(0, 0, form.ScaleWidth(), form.ScaleHeight()); };
  QStringList beim_Aufgehen;
  zeige(form, [&] { beim_Aufgehen = form.ablauf; });
  EXPECT_EQ(beim_Aufgehen, (QStringList{u"Resize"_s, u"Splitter"_s, u"Splitter"_s, u"Activate"_s}));
}

TEST(ErsteAnzeige, TheFirstActivationComesOnceWhoeverRaisesItAndLaterOnesComeAgain) {
  Probe form;
  zeige(form, [&] {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    EXPECT_EQ(form.ablauf.count(u"Activate"_s), 1);
    QEvent wieder(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&form, &wieder);
    EXPECT_EQ(form.ablauf.count(u"Activate"_s), 2);
  });
}

TEST(ErsteAnzeige, ASecondShowingRaisesNoFirstEventsAgain) {
  Probe form;
  zeige(form);
  form.ablauf.clear();
  zeige(form);
  EXPECT_FALSE(form.ablauf.contains(u"Splitter"_s)) << form.ablauf.join(u' ').toStdString();
  EXPECT_FALSE(form.ablauf.contains(u"Resize"_s));
}

TEST(ErsteAnzeige, AFailureInAnyOfTheFirstEventsEndsShowAndIsThrownWithoutHanging) {
  for (const QString& wo : {u"Resize"_s, u"Splitter"_s, u"Activate"_s}) {
    Probe form;
    form.bei = wo;
    form.tue = [] { throw Laufzeitfehler(9); };
    const Schleifenwache schleife(form);
    EXPECT_EQ(Fehlernummer_von([&] { form.Show(); }), 9) << wo.toStdString();
    EXPECT_FALSE(schleife.betreten());
    EXPECT_FALSE(form.isVisible());
  }
}

TEST(ErsteAnzeige, OfTwoFailuresTheFirstIsThrown) {
  Probe form;
  form.bei = u"Resize"_s;
  form.tue = [&] {
    form.bei = u"Splitter"_s;
    form.tue = [] { throw Laufzeitfehler(13); };
    throw Laufzeitfehler(9);
  };
  const Schleifenwache schleife(form);
  EXPECT_EQ(Fehlernummer_von([&] { form.Show(); }), 9);
}

TEST(ErsteAnzeige, AFormThatItsFirstEventsHideEndsItsShow) {
  for (const QString& wo : {u"Resize"_s, u"Splitter"_s, u"Activate"_s}) {
    Probe form;
    form.bei = wo;
    form.tue = [&] { form.Hide(); };
    const Schleifenwache schleife(form);
    form.Show();
    EXPECT_FALSE(schleife.betreten()) << wo.toStdString();
    EXPECT_FALSE(form.isVisible()) << wo.toStdString();
  }
}

TEST(ErsteAnzeige, AFirstEventMayDeleteOtherControls) {
  Probe form;
  auto anderer = std::make_unique<SSSplitter>(&form, u"SSS_Anderer"_s);
  bool gehoert = false;
  anderer->Resize = [&](int) { gehoert = true; };
  form.bei = u"Splitter"_s;
  form.tue = [&] { anderer.reset(); };
  zeige(form);
  EXPECT_FALSE(gehoert);
}

TEST(ErsteAnzeige, ThePlaceThatIsSetIsTheOneThatIsTold) {
  Probe form;
  const Fensterlage lage{QRect(40, 50, 500, 400), false};
  form.Lage(lage);
  EXPECT_EQ(form.Lage(), lage);
  EXPECT_EQ(form.Fenstername(), u"frm_Probe"_s);
  zeige(form, [&] { EXPECT_EQ(form.Lage().Rechteck.size(), QSize(500, 400)); });
}

TEST(ErsteAnzeige, TakingAPlaceHasRaisedItsResizeOnReturn) {
  Probe form;
  double breite = 0;
  form.bei = u"Resize"_s;
  form.tue = [&] { breite = form.ScaleWidth(); };
  form.Lage({QRect(40, 50, 500, 400), false});
  EXPECT_EQ(form.ablauf, QStringList{u"Resize"_s});
  EXPECT_EQ(breite, 7500);
  zeige(form, [&] {
    form.ablauf.clear();
    form.Lage({QRect(40, 50, 520, 400), false});
    EXPECT_EQ(breite, 7800);
    EXPECT_EQ(form.ablauf, QStringList{u"Resize"_s});
  });
}

TEST(ErsteAnzeige, AMaximizedWindowTellsThePlaceItGoesBackTo) {
  Probe form;
  form.Lage({QRect(40, 50, 500, 400), true});
  zeige(form, [&] {
    EXPECT_TRUE(form.isMaximized());
    EXPECT_TRUE(form.Lage().Maximiert);
    EXPECT_EQ(form.Lage().Rechteck.size(), QSize(500, 400));
  });
}
