#include <gtest/gtest.h>

#include <QDir>
#include <QTest>

#include "platform/files/Laufwerke.h"
#include "platform/files/Pfadkarte.h"
#include "platform/forms/steuerelemente/Auswahlfelder.h"
#include "platform/forms/steuerelemente/DirListBox.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/ListView.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke_Zeile;
using eingaben::taste;

namespace {

QIcon farbfleck(const QColor& farbe) {
  QPixmap blatt(16, 16);
  blatt.fill(farbe);
  return QIcon(blatt);
}

QColor farbe_von(const QIcon& icon) {
  return icon.pixmap(16).toImage().pixelColor(8, 8);
}

/// A list of five items in a window that shows.
class ListViewTest : public ::testing::Test {
 protected:
  ListViewTest() {
    fenster.resize(600, 400);
    liste.Move(0, 0, 8000, 5000);
    liste.setze_Bildseite(32);
    liste.MultiSelect(true);
    liste.ItemClick = [this](int i) { gewaehlt.append(i); };
    liste.DblClick = [this] { ++doppelt; };
    for (int i = 1; i <= 5; ++i) liste.Add(QString::number(i), u"tag%1"_s.arg(i));
    fenster.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&fenster));
  }
  QList<int> markiert() {
    QList<int> alle;
    for (int i = 1; i <= liste.Count(); ++i)
      if (liste.Selected(i)) alle.append(i);
    return alle;
  }
  QWidget fenster;
  ListView liste{&fenster, u"lvw_Probe"_s};
  QList<int> gewaehlt;
  int doppelt = 0;
};

}  // namespace

TEST(ImageListTest, ImagesAreFoundByTheirKeyFromTheFirstOn) {
  ImageList bilder;
  bilder.Add(u"a"_s, farbfleck(Qt::red));
  bilder.Add(u"b"_s, farbfleck(Qt::green));
  bilder.Add(u"a"_s, farbfleck(Qt::blue));
  bilder.Add({}, farbfleck(Qt::black));
  EXPECT_EQ(bilder.Count(), 4);
  EXPECT_EQ(bilder.Suche(u"a"_s), 1);
  EXPECT_EQ(bilder.Suche(u"A"_s), 0) << "exact";
  EXPECT_EQ(bilder.Suche({}), 4);
  bilder.Remove(1);
  EXPECT_EQ(bilder.Suche(u"a"_s), 2);
  EXPECT_EQ(farbe_von(bilder.Image(2)), QColor(Qt::blue));
  EXPECT_EQ(bilder.Key(1), u"b"_s);
  bilder.Remove(3);
  bilder.Remove(2);
  EXPECT_EQ(bilder.Suche(u"a"_s), 0);
  EXPECT_EQ(bilder.Suche(u"b"_s), 1);
  bilder.Clear();
  EXPECT_EQ(bilder.Count(), 0);
  EXPECT_EQ(bilder.Suche(u"b"_s), 0);
}

TEST(ImageListTest, TheLastOfTwoEqualKeysGoesWithoutTheFirst) {
  ImageList bilder;
  bilder.Add(u"a"_s, farbfleck(Qt::red));
  bilder.Add(u"a"_s, farbfleck(Qt::blue));
  bilder.Remove(2);
  EXPECT_EQ(bilder.Suche(u"a"_s), 1);
}

TEST(ImageListTest, AnIndexOutsideRaises9) {
  ImageList bilder;
  bilder.Add(u"a"_s, {});
  for (const int i : {0, 2, -1}) {
    EXPECT_EQ(Fehlernummer_von([&] { bilder.Key(i); }), 9) << i;
    EXPECT_EQ(Fehlernummer_von([&] { bilder.Image(i); }), 9) << i;
    EXPECT_EQ(Fehlernummer_von([&] { bilder.Remove(i); }), 9) << i;
  }
  EXPECT_EQ(bilder.Count(), 1);
}

TEST_F(ListViewTest, AClickChoosesAnItemAndTellsIt) {
  klicke_Zeile(liste, 2);
  EXPECT_EQ(gewaehlt, QList<int>{3});
  EXPECT_EQ(liste.SelectedItem(), 3);
  klicke_Zeile(liste, 2);
  EXPECT_EQ(gewaehlt, (QList<int>{3, 3})) << "told again";
  EXPECT_EQ(markiert(), QList<int>{3});
}

TEST_F(ListViewTest, TheKeysChooseToo) {
  klicke_Zeile(liste, 0);
  taste(fenster, Qt::Key_Right);
  taste(fenster, Qt::Key_End);
  EXPECT_EQ(gewaehlt, (QList<int>{1, 2, 5}));
  EXPECT_EQ(liste.SelectedItem(), 5);
}

TEST_F(ListViewTest, TheFocusAloneChoosesNothingAndTheBlankTheCurrentItem) {
  fenster.activateWindow();
  liste.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(gewaehlt, QList<int>());
  EXPECT_EQ(liste.SelectedItem(), 0);
  taste(fenster, Qt::Key_Space);
  EXPECT_EQ(gewaehlt, QList<int>{1});
  EXPECT_EQ(markiert(), QList<int>{1});
}

TEST_F(ListViewTest, SeveralItemsOrOneCanBeSelected) {
  klicke_Zeile(liste, 0);
  klicke_Zeile(liste, 3, Qt::ControlModifier);
  EXPECT_EQ(markiert(), (QList<int>{1, 4}));
  liste.MultiSelect(false);
  klicke_Zeile(liste, 0);
  klicke_Zeile(liste, 3, Qt::ControlModifier);
  EXPECT_EQ(markiert(), QList<int>{4});
  EXPECT_FALSE(liste.MultiSelect());
}

TEST_F(ListViewTest, SelectionsByCodeTellNothing) {
  liste.Selected(2, true);
  EXPECT_EQ(markiert(), QList<int>{2});
  EXPECT_EQ(liste.SelectedItem(), 2);
  liste.Selected(2, false);
  EXPECT_EQ(liste.SelectedItem(), 0);
  liste.Clear();
  EXPECT_EQ(liste.Count(), 0);
  EXPECT_EQ(gewaehlt, QList<int>());
}

TEST_F(ListViewTest, OnlyADoubleClickOnAnItemIsOne) {
  eingaben::doppelklicke_Zeile(liste, 1);
  EXPECT_EQ(doppelt, 1);
  eingaben::doppelklicke(liste, liste.rect().bottomRight() - QPoint(5, 5));
  EXPECT_EQ(doppelt, 1);
}

TEST_F(ListViewTest, AHiddenListCatchesUpWhenItIsShown) {
  liste.Visible(false);
  liste.Clear();
  for (int i = 0; i < 3; ++i) liste.Add(u"neu"_s, {});
  EXPECT_EQ(liste.Count(), 3);
  EXPECT_EQ(liste.model()->rowCount(), 0);
  EXPECT_FALSE(liste.Selected(2));
  liste.Visible(true);
  EXPECT_EQ(liste.model()->rowCount(), 3);
}

TEST_F(ListViewTest, ItemsShowTheImagesOfTheListThatIsAttached) {
  ImageList bilder;
  bilder.Add(u"a"_s, farbfleck(Qt::red));
  liste.Icon(2, 1);
  const auto gezeigt = [&](int i) { return liste.model()->index(i - 1, 0).data(Qt::DecorationRole); };
  EXPECT_FALSE(gezeigt(2).isValid());
  liste.Icons(&bilder);
  EXPECT_EQ(farbe_von(gezeigt(2).value<QIcon>()), QColor(Qt::red));
  EXPECT_FALSE(gezeigt(1).isValid());
  bilder.Clear();
  EXPECT_FALSE(gezeigt(2).isValid()) << "an index that the list no longer has";
  liste.Icons(nullptr);
  EXPECT_EQ(liste.Icon(2), 1);
}

TEST_F(ListViewTest, TextAndTagBelongToTheItemAndAnIndexOutsideRaises9) {
  liste.Text(1, u"anders"_s);
  EXPECT_EQ(liste.Text(1), u"anders"_s);
  EXPECT_EQ(liste.model()->index(0, 0).data().toString(), u"anders"_s);
  EXPECT_EQ(liste.ItemTag(5), u"tag5"_s);
  for (const int i : {0, 6}) {
    EXPECT_EQ(Fehlernummer_von([&] { liste.Text(i); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { liste.ItemTag(i); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { liste.Icon(i); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { liste.Selected(i); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { liste.Selected(i, true); }), 9);
  }
}

// ── Drop-down lists ─────────────────────────────────────────────────────────────────────────────────────────────────

TEST(ComboBoxTest, AChoiceByCodeOrByTheUserIsTold) {
  QWidget fenster;
  ComboBox feld(&fenster, u"cbo_Probe"_s);
  QList<int> gewaehlt;
  feld.Click = [&] { gewaehlt.append(feld.ListIndex()); };
  for (const auto& text : {u"a"_s, u"b"_s, u"c"_s}) feld.AddItem(text);
  EXPECT_EQ(feld.ListIndex(), -1) << "the first entry does not choose itself";
  feld.ListIndex(1);
  fenster.show();
  feld.setFocus();
  taste(fenster, Qt::Key_Down);
  EXPECT_EQ(gewaehlt, (QList<int>{1, 2}));
  EXPECT_EQ(Fehlernummer_von([&] { feld.ListIndex(3); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { feld.ListIndex(-2); }), 380);
}

TEST(ImageComboTest, OnlyTheUsersChoiceIsTold) {
  QWidget fenster;
  ImageCombo feld(&fenster, u"icb_Probe"_s);
  int gewaehlt = 0;
  feld.Click = [&] { ++gewaehlt; };
  feld.Add(u"A:\\"_s, u"(A:)"_s, 12, farbfleck(Qt::red));
  feld.Add(u"C:\\"_s, u"(C:)"_s, 14, farbfleck(Qt::blue));
  EXPECT_EQ(Fehlernummer_von([&] { feld.gewaehlter_Text(); }), 91);
  feld.waehle(u"C:\\"_s);
  EXPECT_EQ(gewaehlt, 0);
  EXPECT_EQ(feld.gewaehlter_Text(), u"(C:)"_s);
  fenster.show();
  feld.setFocus();
  taste(fenster, Qt::Key_Up);
  EXPECT_EQ(gewaehlt, 1);
  EXPECT_EQ(feld.gewaehlter_Text(), u"(A:)"_s);
}

TEST(ImageComboTest, ItemsAreKnownByTheirNumberAndTheirKey) {
  ImageCombo feld(nullptr, u"icb_Probe"_s);
  feld.Add(u"A:\\"_s, u"(A:)"_s, 12, {});
  EXPECT_EQ(feld.Text(1) + feld.Key(1), u"(A:)A:\\"_s);
  EXPECT_EQ(feld.Image(1), 12);
  EXPECT_EQ(Fehlernummer_von([&] { feld.Add(u"A:\\"_s, {}, 1, {}); }), 457);
  EXPECT_EQ(Fehlernummer_von([&] { feld.waehle(u"a:\\"_s); }), 35601) << "keys are exact";
  EXPECT_EQ(Fehlernummer_von([&] { feld.Text(2); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { feld.Key(0); }), 9);
  feld.Clear();
  EXPECT_EQ(feld.Count(), 0);
}

// ── The bar ─────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST(FlutTest, APanelIsFloodedFromTheLeft) {
  QWidget fenster;
  fenster.resize(200, 40);
  SSPanel feld(&fenster, u"SSP_Probe"_s);
  feld.Move(0, 0, 3000, 600);
  feld.FloodPercent(50);
  const QColor flut = feld.palette().color(QPalette::Highlight);
  const QImage gemalt = feld.grab().toImage();
  EXPECT_EQ(gemalt.pixelColor(20, 20), flut);
  EXPECT_EQ(gemalt.pixelColor(90, 20), flut);
  EXPECT_NE(gemalt.pixelColor(110, 20), flut);
  feld.FloodPercent(0);
  EXPECT_NE(feld.grab().toImage().pixelColor(10, 20), flut);
}

TEST(FlutTest, OnlyPercentsAreTaken) {
  SSPanel feld(nullptr, u"SSP_Probe"_s);
  feld.FloodPercent(100);
  for (const double wert : {-0.1, 100.1, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(Fehlernummer_von([&] { feld.FloodPercent(wert); }), 380) << wert;
  EXPECT_EQ(feld.FloodPercent(), 100);
}

// ── Folders ─────────────────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Heimdoppel final : public laufwerke::Anbieter {
 public:
  std::int32_t GetDriveType(const QString&) override { return laufwerke::Fest; }
  bool GetVolumeInformation(const QString&, QString&) override { return false; }
  std::int32_t WNetGetConnection(const QString&, QString&) override { return 1; }
  QString aktuelles_Verzeichnis() override { return hier; }
  QString hier = u"P:\\Heim"_s;
};

class DirListBoxTest : public ::testing::Test {
 protected:
  DirListBoxTest() : anbieter_vorher_(laufwerke::setze(anbieter)) {
    for (const auto& name : {u"Heim/eins"_s, u"Heim/.versteckt"_s, u"Heim/Zwei/drei"_s, u"leer"_s})
      EXPECT_TRUE(QDir().mkpath(ordner.pfad(name)));
    Pfadkarte::aktuell().setze(u"P:"_s, ordner.pfad());
    Pfadkarte::aktuell().setze(u"\\\\server\\share"_s, ordner.pfad(u"Heim"_s));
    fenster.resize(300, 300);
  }
  ~DirListBoxTest() override {
    laufwerke::setze(anbieter_vorher_);
    Pfadkarte::aktuell().entferne(u"P:"_s);
    Pfadkarte::aktuell().entferne(u"\\\\server\\share"_s);
  }
  DirListBox& liste() {
    if (!liste_) {
      liste_ = std::make_unique<DirListBox>(&fenster, u"Dir_Probe"_s);
      liste_->Move(0, 0, 4000, 4000);
      liste_->Change = [this] { gewechselt.append(liste_->Path()); };
    }
    return *liste_;
  }
  QStringList texte() {
    QStringList alle;
    for (int i = 0; i < liste().model()->rowCount(); ++i) alle.append(liste().model()->index(i, 0).data().toString());
    return alle;
  }
  QString nach(const QString& pfad) {
    liste().Path(pfad);
    return liste().Path();
  }

  Testordner ordner;
  std::shared_ptr<Heimdoppel> anbieter = std::make_shared<Heimdoppel>();
  QWidget fenster;
  QStringList gewechselt;

 private:
  std::shared_ptr<laufwerke::Anbieter> anbieter_vorher_;
  std::unique_ptr<DirListBox> liste_;
};

}  // namespace

TEST_F(DirListBoxTest, ItStartsAtTheCurrentDirectoryWithItsPathFromTheRootDown) {
  EXPECT_EQ(liste().Path(), u"P:\\Heim"_s);
  EXPECT_EQ(texte(), (QStringList{u"P:\\"_s, u"Heim"_s, u"eins"_s, u"Zwei"_s}));
  EXPECT_EQ(liste().currentIndex().row(), 1);
}

TEST_F(DirListBoxTest, ACurrentDirectoryThatHasGoneLeavesItEmpty) {
  anbieter->hier = u"P:\\weg"_s;
  EXPECT_EQ(liste().Path(), QString());
  EXPECT_EQ(texte(), QStringList());
  EXPECT_EQ(nach(u"P:\\leer"_s), u"P:\\leer"_s);
}

TEST_F(DirListBoxTest, OnlyARealChangeIsTold) {
  for (const auto& pfad : {u"P:\\Heim"_s, u"p:/heim/"_s, u"P:"_s, u"P:\\\\Heim"_s}) liste().Path(pfad);
  EXPECT_EQ(gewechselt, QStringList());
  for (const auto& pfad : {u"P:\\"_s, u"P:/Heim//Zwei/"_s, u"P:\\Heim\\Zwei"_s}) liste().Path(pfad);
  EXPECT_EQ(gewechselt, (QStringList{u"P:\\"_s, u"P:\\Heim\\Zwei"_s}));
}

TEST_F(DirListBoxTest, ADriveAloneIsItsCurrentDirectoryAndPathsWithoutOneStartThere) {
  Pfadkarte::aktuell().setze(u"Q:"_s, ordner.pfad());
  liste().Path(u"P:\\leer"_s);
  EXPECT_EQ(nach(u"p:"_s), u"P:\\Heim"_s);
  EXPECT_EQ(nach(u"Q:"_s), u"Q:\\"_s);
  EXPECT_EQ(nach(u"P:Zwei"_s), u"P:\\Heim\\Zwei"_s);
  EXPECT_EQ(nach(u"\\leer"_s), u"P:\\leer"_s);
  EXPECT_EQ(nach(u"Zwei\\drei"_s), u"P:\\Heim\\Zwei\\drei"_s);
  Pfadkarte::aktuell().entferne(u"Q:"_s);
}

TEST_F(DirListBoxTest, AShareIsARootOfItsOwn) {
  EXPECT_EQ(nach(u"\\\\server\\share\\Zwei"_s), u"\\\\server\\share\\Zwei"_s);
  EXPECT_EQ(texte(), (QStringList{u"\\\\server\\share"_s, u"Zwei"_s, u"drei"_s}));
  fenster.show();
  eingaben::doppelklicke_Zeile(liste(), 0);
  EXPECT_EQ(liste().Path(), u"\\\\server\\share"_s);
}

TEST_F(DirListBoxTest, AFolderThatIsMissingRaisesAndChangesNothing) {
  EXPECT_EQ(Fehlernummer_von([&] { liste().Path(u"P:\\weg"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([&] { liste().Path(u"Y:"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([&] { liste().Path({}); }), 76);
  EXPECT_EQ(liste().Path(), u"P:\\Heim"_s);
  EXPECT_EQ(gewechselt, QStringList());
}

TEST_F(DirListBoxTest, ADoubleClickAndEnterOpenASingleClickDoesNot) {
  liste();
  fenster.show();
  klicke_Zeile(liste(), 3);
  EXPECT_EQ(liste().Path(), u"P:\\Heim"_s);
  taste(fenster, Qt::Key_Return);
  EXPECT_EQ(liste().Path(), u"P:\\Heim\\Zwei"_s);
  eingaben::doppelklicke_Zeile(liste(), 1);
  EXPECT_EQ(liste().Path(), u"P:\\Heim"_s);
  klicke_Zeile(liste(), 0);
  taste(fenster, Qt::Key_Enter);
  EXPECT_EQ(liste().Path(), u"P:\\"_s);
}

TEST_F(DirListBoxTest, ADoubleClickOnAFolderThatHasGoneIsHarmless) {
  liste();
  fenster.show();
  ASSERT_TRUE(QDir(ordner.pfad(u"Heim/eins"_s)).removeRecursively());
  eingaben::doppelklicke_Zeile(liste(), 2);
  EXPECT_EQ(liste().Path(), u"P:\\Heim"_s);
}
