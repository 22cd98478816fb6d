#include <gtest/gtest.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include "platform/forms/FensterCore.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/host/Komponenten.h"
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
    KVOCore::setze(nullptr);
    komponenten::registriere(Dateifunktionen, {});
  }
  const QString Dateifunktionen = u"KVOCore.KVFileFunctions"_s;

  /// Shows a box and does something with it once it is up; gives the answer.
  static Antwort zeige(
      Knoepfe knoepfe, const std::function<void(QMessageBox&)>& waehrend, const QString& titel = u"Achtung"_s) {
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

TEST_F(Fensterdienste, TheCoreComponentTellsItsReportsInABox) {
  QTimer::singleShot(0, qApp, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), u"Fehler"_s);
    EXPECT_EQ(box->icon(), QMessageBox::Critical);
    EXPECT_EQ(box->text(), u"Kein Platz\n\nFehler 61 in frm_A.Lade"_s);
    QTest::keyClick(box, Qt::Key_Return);
  });
  KVOCore::aktuell().FehlerMelden(u"frm_A"_s, u"Lade"_s, 61, u"Kein Platz"_s, true);
  EXPECT_NE(dynamic_cast<FensterCore*>(&KVOCore::aktuell()), nullptr);
  EXPECT_FALSE(KVOCore::aktuell().NeuerKeyHandler()->Eingeschaltet());
}

TEST_F(Fensterdienste, TheFileFunctionsOfTheCoreComponentAreThere) {
  EXPECT_NE(std::dynamic_pointer_cast<KVFileFunctions>(komponenten::CreateObject(Dateifunktionen)), nullptr);
}

TEST_F(Fensterdienste, FileFunctionsThatTheHostRegisteredStay) {
  struct DesWirts final : public KVFileFunctions {
    QString SelectFolder(const QString& Titel) override { return Titel; }
  };
  komponenten::registriere(Dateifunktionen, [] { return std::make_shared<DesWirts>(); });
  fensterdienste::richte_ein();
  EXPECT_NE(std::dynamic_pointer_cast<DesWirts>(komponenten::CreateObject(Dateifunktionen)), nullptr);
}

TEST_F(Fensterdienste, TheToolkitsOwnTextsAreGermanAndLoadedOnce) {
  fensterdienste::richte_ein();
  EXPECT_EQ(qApp->findChildren<QTranslator*>(u"qtbase_de"_s).size(), 1);
  if (!QTranslator().load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    GTEST_SKIP() << "the toolkit's translations are not installed (qt6-translations-l10n)";
  QLineEdit feld;
  const std::unique_ptr<QMenu> menue(feld.createStandardContextMenu());
  QStringList texte;
  for (const QAction* aktion : menue->actions()) texte += aktion->text().section(u'\t', 0, 0);
  EXPECT_TRUE(texte.contains(u"&Kopieren"_s)) << texte.join(u'|').toStdString();
}
