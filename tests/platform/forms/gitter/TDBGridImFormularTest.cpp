#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "platform/forms/Form.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A form with a grid of one row to enter into, and a button that Escape clicks.
class Formular final : public Form {
 public:
  Formular() : Form(u"frm_Probe"_s) {
    setze_Innengroesse(9000, 6000);
    gitter.Move(0, 0, 9000, 4500);
    knopf.Move(0, 5000, 1500, 500);
    gitter.AddColumn({});
    gitter.AllowAddNew(true);
    array->ReDim(0, 0, 0, 0);
    gitter.Array(array);
    gitter.ReBind();
    knopf.Click = [this] { Hide(); };
    setze_Abbruchknopf(&knopf);
  }
  /// Shows the form modally; `waehrend` runs once it is up.
  void zeige(const std::function<void()>& waehrend) {
    QTimer::singleShot(0, this, [this, waehrend] {
      gitter.setFocus();
      waehrend();
    });
    Show();
  }
  void taste(Qt::Key wert) { eingaben::taste(*this, wert); }

  std::shared_ptr<XArrayDBObject> array = std::make_shared<XArrayDBObject>();
  TDBGrid gitter{this, u"TDBG_Probe"_s};
  SSCommand knopf{this, u"cmd_Abbrechen"_s};
};

}  // namespace

TEST(TDBGridImFormular, EscapeLeavesTheEditFirstAndThenTheForm) {
  Formular form;
  form.zeige([&] {
    form.taste(Qt::Key_X);
    EXPECT_EQ(form.gitter.Text(), u"x"_s);
    form.taste(Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    form.taste(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(mit_Leertext(form.array->Value(0, 0)), QString());
}

TEST(TDBGridImFormular, EnterInAnEditClicksNoButtonOfTheForm) {
  Formular form;
  form.zeige([&] {
    form.taste(Qt::Key_X);
    form.taste(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    form.Hide();
  });
  EXPECT_EQ(form.array->Value(0, 0), Variant(u"x"_s));
}

TEST(TDBGridImFormular, AFailureOfTheEditEventEndsTheShow) {
  Formular form;
  form.gitter.AfterColEdit = [](std::int32_t) { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  EXPECT_EQ(Fehlernummer_von([&] {
    form.zeige([&] {
      form.taste(Qt::Key_X);
      form.taste(Qt::Key_Return);
    });
  }),
      6);
  EXPECT_FALSE(form.isVisible());
}

TEST(TDBGridImFormular, AnOpenEditWhoseCommitFailsWhileTheFormGoesIsNoSecondFailure) {
  Formular form;
  form.gitter.AfterColEdit = [](std::int32_t) { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  form.knopf.Click = [] { throw Laufzeitfehler(fehlernummer::DateiNichtGefunden); };
  EXPECT_EQ(Fehlernummer_von([&] {
    form.zeige([&] {
      form.taste(Qt::Key_X);
      form.knopf.click();
    });
  }),
      53)
      << "the first one is the cause";
}

TEST(TDBGridImFormular, TheFrameClosesTheFormWithAnOpenEdit) {
  Formular form;
  form.zeige([&] {
    form.taste(Qt::Key_X);
    eingaben::schliesse_Rahmen(form);
  });
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(form.gitter.Row(), 0);
}
