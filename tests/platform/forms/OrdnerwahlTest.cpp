#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "platform/files/Pfadkarte.h"
#include "platform/forms/Fensterdienste_Ordnerwahl.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The folder choice over a tree of the test's own, which the map knows as drive Q:.
class OrdnerwahlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // The toolkit keeps what its folder dialog last showed; not in the configuration of whoever runs the tests.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ordner.pfad(u"konfiguration"_s));
    ordner.schreibe(u"Bilder/Artikel/Allg/foto.jpg"_s, "x");
    Pfadkarte::aktuell().setze(u"Q:"_s, ordner.pfad(u"Bilder"_s));
  }
  void TearDown() override {
    Pfadkarte::aktuell().entferne(u"Q:"_s);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
  }

  /// Asks for a folder and does something with the dialog once it is up; what it leaves open Escape closes.
  static QString waehle(const std::function<void(QFileDialog&)>& waehrend) {
    QTimer::singleShot(0, qApp, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      if (QTest::qWaitForWindowActive(dialog))
        waehrend(*dialog);
      else
        ADD_FAILURE() << "the dialog never became the active window";
      if (dialog->isVisible()) QTest::keyClick(dialog, Qt::Key_Escape);
    });
    return Ordnerwahl().SelectFolder(u"Root-Verzeichnis suchen"_s);
  }
  static void gib_ein(QFileDialog& dialog, const QString& pfad) {
    auto* feld = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    ASSERT_NE(feld, nullptr);
    QTest::mouseClick(feld, Qt::LeftButton);
    ASSERT_TRUE(feld->hasFocus());
    QTest::keyClick(feld, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(feld, pfad);
    QTest::keyClick(feld, Qt::Key_Return);
  }

  Testordner ordner;
};

}  // namespace

TEST_F(OrdnerwahlTest, AFolderIsGivenAsTheTableWritesIt) {
  const QString pfad = ordner.pfad(u"Bilder/Artikel/Allg"_s);
  EXPECT_EQ(waehle([&](QFileDialog& dialog) { gib_ein(dialog, pfad); }), u"Q:\\Artikel\\Allg"_s);
}

TEST_F(OrdnerwahlTest, AFolderOutsideAllDrivesOfTheMapLiesOnC) {
  const QString erwartet = Pfadkarte::aktuell().tabellenpfad(ordner.pfad());
  ASSERT_TRUE(erwartet.startsWith(u"C:\\"_s));
  EXPECT_EQ(waehle([&](QFileDialog& dialog) { gib_ein(dialog, ordner.pfad()); }), erwartet);
}

TEST_F(OrdnerwahlTest, CancelGivesNothing) {
  EXPECT_EQ(waehle([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), u""_s);
  EXPECT_EQ(waehle([](QFileDialog& dialog) {
    auto* abbrechen = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel);
    ASSERT_NE(abbrechen, nullptr);
    QTest::mouseClick(abbrechen, Qt::LeftButton);
  }),
      u""_s);
}

TEST_F(OrdnerwahlTest, AFolderThatIsMissingIsNotTaken) {
  EXPECT_EQ(waehle([&](QFileDialog& dialog) {
    QTimer::singleShot(0, qApp, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      QTest::keyClick(box, Qt::Key_Escape);
    });
    gib_ein(dialog, ordner.pfad(u"Bilder/fehlt"_s));
    EXPECT_TRUE(dialog.isVisible());
  }),
      u""_s);
}

TEST_F(OrdnerwahlTest, TitleAndLabelsAreGerman) {
  waehle([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Root-Verzeichnis suchen"_s);
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    const auto* knoepfe = dialog.findChild<QDialogButtonBox*>();
    QStringList texte;
    for (const auto* knopf : knoepfe->buttons()) texte += knopf->text();
    for (const auto* schild : dialog.findChildren<QLabel*>())
      if (schild->isVisible()) texte += schild->text();
    texte.sort();
    EXPECT_EQ(texte, (QStringList{u"Abbrechen"_s, u"Art:"_s, u"Auswählen"_s, u"Ordner:"_s, u"Suchen in:"_s}));
  });
}

TEST_F(OrdnerwahlTest, TheDrivesOfTheMapStandAtTheSide) {
  waehle([&](QFileDialog& dialog) {
    EXPECT_TRUE(dialog.sidebarUrls().contains(QUrl::fromLocalFile(ordner.pfad(u"Bilder"_s))));
    EXPECT_EQ(dialog.sidebarUrls().constFirst(),
        QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::HomeLocation)));
  });
}
