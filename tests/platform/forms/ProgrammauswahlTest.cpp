#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "platform/forms/Programmauswahl.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ProgrammauswahlTest : public ::testing::Test {
 protected:
  /// Shows the window; gives the command line chosen and its folder, joined.
  QStringList frage(const std::function<void(Programmauswahl&)>& waehrend) {
    QTimer::singleShot(0, qApp, [&] {
      auto* const fenster = dynamic_cast<Programmauswahl*>(QApplication::activeModalWidget());
      ASSERT_NE(fenster, nullptr);
      waehrend(*fenster);
      if (fenster->isVisible()) {
        ADD_FAILURE() << "the window is still open";
        fenster->reject();
      }
    });
    return Programmwahl_mit_Fenster().waehle(u"/b/f.jpg"_s, programme, verzeichnis);
  }
  static QListWidget& liste(const Programmauswahl& fenster) { return *fenster.findChild<QListWidget*>(); }
  static QPushButton& knopf(const Programmauswahl& fenster, const QString& name) {
    return *fenster.findChild<QPushButton*>(name);
  }

  QList<shell::Programm> programme{
      {u"Ansehen"_s, u"ansehen %f"_s, {}, {}, {}}, {u"Malen"_s, u"malen --neu %f"_s, {}, {}, u"/opt/malen"_s}};
  QString verzeichnis;
};

}  // namespace

TEST_F(ProgrammauswahlTest, TheFirstProgramIsChosenWithEnter) {
  EXPECT_EQ(frage([](Programmauswahl& f) {
    EXPECT_EQ(liste(f).count(), 2);
    eingaben::taste(f, Qt::Key_Return);
  }),
      (QStringList{u"ansehen"_s, u"/b/f.jpg"_s}));
}

TEST_F(ProgrammauswahlTest, ADoubleClickChoosesAndTellsTheFolder) {
  EXPECT_EQ(frage([](Programmauswahl& f) {
    eingaben::klicke_Zeile(liste(f), 1);
    eingaben::doppelklicke_Zeile(liste(f), 1);
  }),
      (QStringList{u"malen"_s, u"--neu"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(verzeichnis, u"/opt/malen"_s);
}

TEST_F(ProgrammauswahlTest, AClickAndTheButtonChoose) {
  EXPECT_EQ(frage([](Programmauswahl& f) {
    eingaben::klicke_Zeile(liste(f), 1);
    eingaben::klicke(knopf(f, u"cmd_Oeffnen"_s));
  }).value(0),
      u"malen"_s);
}

TEST_F(ProgrammauswahlTest, EscapeChoosesNothing) {
  EXPECT_EQ(frage([](Programmauswahl& f) { eingaben::taste(f, Qt::Key_Escape); }), QStringList());
}

TEST_F(ProgrammauswahlTest, WithoutProgramsOnlyAnotherOneCanBeChosen) {
  programme.clear();
  EXPECT_EQ(frage([](Programmauswahl& f) {
    EXPECT_FALSE(knopf(f, u"cmd_Oeffnen"_s).isEnabled());
    EXPECT_FALSE(liste(f).isVisible());
    eingaben::taste(f, Qt::Key_Return);
    EXPECT_TRUE(f.isVisible());
    eingaben::taste(f, Qt::Key_Escape);
  }),
      QStringList());
}

TEST_F(ProgrammauswahlTest, AnyOtherProgramCanBeChosen) {
  const Testordner ordner;
  const QString skript = ordner.schreibe(u"mal 100%.sh"_s, "#!/bin/sh\n");
  ASSERT_TRUE(QFile::setPermissions(skript, QFile::ReadOwner | QFile::ExeOwner));
  EXPECT_EQ(frage([&](Programmauswahl& f) {
    QTimer::singleShot(0, qApp, [&] {
      auto* const wahl = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(wahl, nullptr);
      auto* const feld = wahl->findChild<QLineEdit*>(u"fileNameEdit"_s);
      ASSERT_NE(feld, nullptr);
      feld->setText(skript);
      eingaben::taste(*wahl, Qt::Key_Return);
    });
    eingaben::klicke(knopf(f, u"cmd_Anderes"_s));
  }),
      (QStringList{skript, u"/b/f.jpg"_s}));
}

TEST_F(ProgrammauswahlTest, LeavingTheFileChoiceGoesBackToThePrograms) {
  EXPECT_EQ(frage([&](Programmauswahl& f) {
    QTimer::singleShot(0, qApp, [] { eingaben::taste(*QApplication::activeModalWidget(), Qt::Key_Escape); });
    eingaben::klicke(knopf(f, u"cmd_Anderes"_s));
    EXPECT_TRUE(f.isVisible());
    eingaben::taste(f, Qt::Key_Escape);
  }),
      QStringList());
}
