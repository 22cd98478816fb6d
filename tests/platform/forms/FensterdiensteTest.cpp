#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/forms/Fensterdienste.h"
#include "platform/host/Oberflaeche.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class Fensterdienste : public ::testing::Test {
 protected:
  void SetUp() override { fensterdienste::richte_ein(); }
  void TearDown() override {
    setze(std::shared_ptr<Meldungsfenster>());
    setze(std::shared_ptr<Mauszeiger>());
    setze(std::shared_ptr<Ereignispumpe>());
  }

  /// Shows a box and does something with it once it is up; gives the answer.
  static Antwort zeige(Knoepfe knoepfe, const std::function<void(QMessageBox&)>& waehrend,
                       const QString& titel = u"Achtung"_s) {
    QTimer::singleShot(0, qApp, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      waehrend(*box);
      if (box->isVisible()) QTest::keyClick(box, Qt::Key_Escape);
    });
    return MsgBox(u"Wollen <b>Sie</b>?"_s, knoepfe, Symbol::Frage, titel);
  }
  static QStringList beschriftungen(const QMessageBox& box) {
    QStringList texte;
    for (const auto* knopf : box.buttons()) texte += knopf->text();
    texte.sort();
    return texte;
  }
  static void klicke(const QMessageBox& box, const QString& text) {
    for (auto* knopf : box.buttons())
      if (knopf->text() == text) return QTest::mouseClick(knopf, Qt::LeftButton);
    ADD_FAILURE() << "no button " << text.toStdString();
  }
};

}  // namespace

TEST_F(Fensterdienste, ABoxHasGermanButtonsItsTitleItsIconAndItsTextAsItStands) {
  zeige(Knoepfe::JaNeinAbbrechen, [](QMessageBox& box) {
    EXPECT_EQ(beschriftungen(box), (QStringList{u"Abbrechen"_s, u"Ja"_s, u"Nein"_s}));
    EXPECT_EQ(box.windowTitle(), u"Achtung"_s);
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.text(), u"Wollen <b>Sie</b>?"_s);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
  });
  zeige(Knoepfe::OK, [](QMessageBox& box) { EXPECT_EQ(beschriftungen(box), QStringList{u"OK"_s}); });
}

TEST_F(Fensterdienste, EachButtonGivesItsAnswer) {
  EXPECT_EQ(zeige(Knoepfe::JaNein, [](QMessageBox& box) { klicke(box, u"Ja"_s); }), Antwort::Ja);
  EXPECT_EQ(zeige(Knoepfe::JaNein, [](QMessageBox& box) { klicke(box, u"Nein"_s); }), Antwort::Nein);
  EXPECT_EQ(zeige(Knoepfe::JaNeinAbbrechen, [](QMessageBox& box) { klicke(box, u"Ja"_s); }), Antwort::Ja);
  EXPECT_EQ(zeige(Knoepfe::JaNeinAbbrechen, [](QMessageBox& box) { klicke(box, u"Nein"_s); }), Antwort::Nein);
  EXPECT_EQ(zeige(Knoepfe::JaNeinAbbrechen, [](QMessageBox& box) { klicke(box, u"Abbrechen"_s); }), Antwort::Abbrechen);
  EXPECT_EQ(zeige(Knoepfe::OK, [](QMessageBox& box) { klicke(box, u"OK"_s); }), Antwort::OK);
}

TEST_F(Fensterdienste, EscapeIsTheAnswerThatChangesNothing) {
  EXPECT_EQ(zeige(Knoepfe::JaNeinAbbrechen, [](QMessageBox&) {}), Antwort::Abbrechen);
  EXPECT_EQ(zeige(Knoepfe::JaNein, [](QMessageBox&) {}), Antwort::Nein);
  EXPECT_EQ(zeige(Knoepfe::OK, [](QMessageBox&) {}), Antwort::OK);
}

TEST_F(Fensterdienste, ThePointerIsOneValueAndNoStack) {
  mauszeiger().form(Zeigerform::Sanduhr);
  mauszeiger().form(Zeigerform::Sanduhr);
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  mauszeiger().form(Zeigerform::Standard);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
}

TEST_F(Fensterdienste, ThePumpRunsWhatIsPending) {
  bool gelaufen = false;
  QTimer::singleShot(0, qApp, [&] { gelaufen = true; });
  ereignispumpe().verarbeite_anstehende();
  EXPECT_TRUE(gelaufen);
}
