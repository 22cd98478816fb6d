#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>

#include "dialogs/assignment/clsDialoge.h"
#include "exif/frm_BildInfo.h"
#include "tests/exif/ExifBauer.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Pictures on drive P:, the form over them, and the entry point that opens it.
class BildInfo : public ::testing::Test {
 protected:
  QString lege(const QByteArray& inhalt) {
    wurzel.schreibe(u"a.jpg"_s, inhalt);
    return u"P:\\a.jpg"_s;
  }
  QString lege(const ExifBauer& bauer) { return lege(bauer.jpeg()); }

  /// The list as "Feld|Wert|Info".
  static QStringList liste(const frm_BildInfo& form) {
    QStringList alle;
    const SftTree& tree = form.Sft_Eigenschaften;
    for (std::int32_t i = 0; i < tree.ItemCount(); ++i)
      alle.append(QStringList{tree.CellText(i, 0), tree.CellText(i, 1), tree.CellText(i, 2)}.join(u'|'));
    return alle;
  }

  /// The list of a form that has loaded the picture.
  QStringList geladen(const QString& pfad) {
    frm_BildInfo form;
    form.m_Bild = pfad;
    form.Load_Exif();
    return liste(form);
  }

  /// Calls the entry point; `waehrend` runs with the form that it shows. A form left open is closed.
  bool oeffne(
      const QString& bild, const QString& text, bool laden, const std::function<void(frm_BildInfo&)>& waehrend = {}) {
    gezeigt = false;
    // A form that never comes up leaves the timer running: it ends with this call.
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      auto* form = dynamic_cast<frm_BildInfo*>(QApplication::activeModalWidget());
      if (!form) return;
      takt.stop();
      gezeigt = true;
      if (waehrend) waehrend(*form);
      form->Hide();
    });
    takt.start(0);
    return dialoge.Fkt_Aufruf_Dialog_BildInfo(bild, text, laden);
  }

  static void taste(QWidget& ziel, Qt::Key key) { QTest::keyClick(ziel.window()->windowHandle(), key); }
  static void klicke(QWidget& ziel) {
    QTest::mouseClick(
        ziel.window()->windowHandle(), Qt::LeftButton, {}, ziel.mapTo(ziel.window(), ziel.rect().center()));
  }

  Bildwurzel wurzel;
  CoreDoppel core;
  MeldungsDoppel meldungen;
  clsDialoge dialoge;
  bool gezeigt = false;
};

}  // namespace

TEST_F(BildInfo, TheListShowsLabelsAndValuesInTheOrderOfTheTable) {
  EXPECT_EQ(geladen(lege(kamerabild(Folge::Motorola))).first(7),
      (QStringList{u"Datum/Zeit|2024:05:17 08:30:00\u0000|"_s, u"Hersteller|Kamerawerke A|"_s,
          u"Modell|Modell 7\u0000|"_s, u"Bildlage|1|"_s, u"Hor.Auflösung|72/1|"_s, u"Vert.Auflösung|72/1|"_s,
          u"Software|Firmware 1.2|"_s}));
}

TEST_F(BildInfo, RowsThatAreNotShownAndTagsThatAreMissingAreLeftOut) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().feld(296, 3, 1, b.w16(2)).daten(282, 5, 1, b.bruch(72, 1)).daten(283, 5, 1, b.bruch(300, 4));
  b.daten(36867, 2, 4, "2024").feld(36868, 2, 4, "2025").feld(274, 12, 1, "abcd");
  EXPECT_EQ(geladen(lege(b)), (QStringList{u"Hor.Auflösung|72/1|"_s, u"Vert.Auflösung|300/4|"_s}));
}

TEST_F(BildInfo, AValueOfBlanksOnlyIsNotListedAndBlanksAroundAValueAreCut) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis()
      .daten(271, 2, 6, "      ")
      .daten(272, 2, 6, " Mo 7 ")
      .daten(305, 2, 6, "~~~~~~")
      .feld(270, 2, 4, "\t   ");
  EXPECT_EQ(geladen(lege(b)), (QStringList{u"Beschreibung|\t|"_s, u"Modell|Mo 7|"_s})) << "only blanks count";
}

TEST_F(BildInfo, MakerNoteAndUserCommentAreOneRowEachWithTheirBytesAsCharacters) {
  ExifBauer b(Folge::Motorola);
  b.verzeichnis().daten(37500, 7, 6,
      "a\0\xFC"
      "b\n1"_ba);
  b.daten(37510, 7, 8, "ASCII\0\0x"_ba);
  EXPECT_EQ(geladen(lege(b)), (QStringList{u"MakerNote|a\u0000üb\n1|"_s, u"UserComment|ASCII\u0000\u0000x|"_s}));
}

TEST_F(BildInfo, APictureWhoseWalkStoppedListsWhatWasReadUntilThen) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6)).zahl(700, 4, 1, 0x80000000).daten(272, 2, 6, "Modell");
  EXPECT_EQ(geladen(lege(b)), QStringList{u"Bildlage|6|"_s});
}

TEST_F(BildInfo, APictureWithoutExifDataOpensAnEmptyDialogWithoutAWord) {
  const QString bild = lege("\xFF\xD8\xFF\xD9"_ba);
  EXPECT_TRUE(oeffne(bild, {}, true, [](frm_BildInfo& form) {
    EXPECT_EQ(liste(form), QStringList());
    EXPECT_EQ(form.Sft_Eigenschaften.Columns(), 3);
  }));
  EXPECT_TRUE(gezeigt);
}

TEST_F(BildInfo, ADirectoryOfNoEntriesOpensAnEmptyDialog) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis();
  EXPECT_TRUE(oeffne(lege(b), {}, true, [](frm_BildInfo& form) { EXPECT_EQ(liste(form), QStringList()); }));
  EXPECT_TRUE(gezeigt);
}

TEST_F(BildInfo, TheEntryPointSetsTheMembersAndShowsTheFilledForm) {
  ExifBauer b(Folge::Intel);
  b.verzeichnis().feld(274, 3, 1, b.w16(6));
  const QString bild = lege(b);
  EXPECT_TRUE(oeffne(bild, u"Text"_s, true, [&](frm_BildInfo& form) {
    EXPECT_EQ(form.m_Bild, bild);
    EXPECT_EQ(form.m_ExifText, u"Text"_s);
    EXPECT_TRUE(form.m_LoadFlag);
    EXPECT_EQ(form.Caption(), u"Eigenschaften"_s);
    EXPECT_TRUE(form.isModal());
    EXPECT_EQ(form.parentWidget(), nullptr);
    EXPECT_EQ(liste(form), QStringList{u"Bildlage|6|"_s});
  }));
  EXPECT_TRUE(gezeigt);
}

TEST_F(BildInfo, WithABlankNameNothingIsShownAndTheResultIsTrue) {
  EXPECT_TRUE(oeffne(u"   "_s, u"Text"_s, true));
  EXPECT_FALSE(gezeigt);
  EXPECT_TRUE(oeffne({}, {}, true));
  EXPECT_FALSE(gezeigt);
}

TEST_F(BildInfo, WithoutLoadingABlankTextShowsNothingAndTheResultIsTrue) {
  EXPECT_TRUE(oeffne(lege(kamerabild(Folge::Intel)), u"  "_s, false));
  EXPECT_FALSE(gezeigt);
}

TEST_F(BildInfo, WithoutLoadingATextShowsAnEmptyList) {
  EXPECT_TRUE(oeffne(lege(kamerabild(Folge::Intel)), u"Text"_s, false,
      [](frm_BildInfo& form) { EXPECT_EQ(liste(form), QStringList()); }));
  EXPECT_TRUE(gezeigt);
}

TEST_F(BildInfo, AFailureOfReadingIsReportedAndNothingIsShown) {
  EXPECT_FALSE(oeffne(u"P:\\"_s, {}, true));
  EXPECT_FALSE(gezeigt);
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"clsDialoge"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Fkt_Aufruf_Dialog_BildInfo"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::PfadZugriff);
  EXPECT_TRUE(berichte[0].MitMeldung);
}

TEST_F(BildInfo, OkEnterEscapeAndTheFrameCloseTheDialog) {
  const QString bild = lege(kamerabild(Folge::Intel));
  const std::vector<std::function<void(frm_BildInfo&)>> wege{
      [](frm_BildInfo& form) { klicke(form.cmd_OK); }, [](frm_BildInfo& form) { taste(form, Qt::Key_Return); },
      [](frm_BildInfo& form) { taste(form, Qt::Key_Enter); }, [](frm_BildInfo& form) { taste(form, Qt::Key_Escape); },
      [](frm_BildInfo& form) {
    klicke(*form.Sft_Eigenschaften.viewport());
    taste(form, Qt::Key_Down);
    EXPECT_EQ(form.Sft_Eigenschaften.selectedItems().size(), 1);
    taste(form, Qt::Key_Return);
      },
      [](frm_BildInfo& form) {
    klicke(*form.Sft_Eigenschaften.viewport());
    taste(form, Qt::Key_Escape);
  },
      [](frm_BildInfo& form) { form.close(); }};
  for (std::size_t i = 0; i < wege.size(); ++i)
    EXPECT_TRUE(oeffne(bild, {}, true, [&](frm_BildInfo& form) {
      wege[i](form);
      EXPECT_FALSE(form.isVisible()) << "way " << i;
    }));
}

TEST_F(BildInfo, TheDialogStartsWithItsColumnsInSightAndTheButtonBelowTheList) {
  EXPECT_TRUE(oeffne(lege(kamerabild(Folge::Intel)), {}, true, [](frm_BildInfo& form) {
    const SftTree& tree = form.Sft_Eigenschaften;
    const QStringList titel{tree.ColumnTitle(0), tree.ColumnTitle(1), tree.ColumnTitle(2)};
    EXPECT_EQ(titel, (QStringList{u"Feld"_s, u"Wert"_s, u"Info"_s}));
    for (const auto [spalte, pixel] : {std::pair{0, 167}, {1, 67}, {2, 133}})
      EXPECT_EQ(tree.columnWidth(spalte), pixel) << "2500, 1000 and 2000 twips";
    EXPECT_GE(tree.viewport()->width(), tree.header()->length());
    EXPECT_EQ(tree.frameShape(), QFrame::NoFrame);
    EXPECT_EQ(tree.Left(), 0);
    EXPECT_EQ(tree.Top(), 80);
    EXPECT_EQ(tree.Width(), form.ScaleWidth());
    EXPECT_LE(tree.Top() + tree.Height(), form.cmd_OK.Top());
    EXPECT_GE(tree.Top() + tree.Height(), form.cmd_OK.Top() - 200);
    EXPECT_EQ(form.cmd_OK.Top(), form.ScaleHeight() - form.cmd_OK.Height() - 40);
    EXPECT_EQ(form.cmd_OK.Left() + form.cmd_OK.Width() / 2, form.ScaleWidth() / 2);
  }));
}

TEST_F(BildInfo, TheFrameCannotBeResized) {
  frm_BildInfo form;
  QTimer::singleShot(0, &form, [&] {
    const QSize groesse = form.size();
    const QRect liste = form.Sft_Eigenschaften.geometry();
    EXPECT_EQ(form.minimumSize(), groesse);
    EXPECT_EQ(form.maximumSize(), groesse);
    EXPECT_FALSE(form.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_FALSE(form.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_TRUE(form.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    // Larger and then small would leave a strip of the list.
    for (const QSize andere : {QSize(500, 900), QSize(300, 200)}) {
      form.resize(andere);
      QCoreApplication::processEvents();
      EXPECT_EQ(form.size(), groesse);
      EXPECT_EQ(form.Sft_Eigenschaften.geometry(), liste);
    }
    form.Hide();
  });
  form.Show();
}

// The frame keeps its size; a program that lays the form out anew comes upon the rule.
TEST_F(BildInfo, AResizeComputesTheListFromTheButtonsOldPlace) {
  frm_BildInfo form;
  QTimer::singleShot(0, &form, [&] {
    const double hoehe = form.Sft_Eigenschaften.Height();
    const double knopf = form.cmd_OK.Height();
    form.setFixedSize(500, form.height() + 2);
    EXPECT_EQ(form.Sft_Eigenschaften.Height(), hoehe) << "the refused height leaves the old one";
    EXPECT_EQ(form.Sft_Eigenschaften.Width(), 7500);
    EXPECT_EQ(form.cmd_OK.Top(), form.ScaleHeight() - knopf - 40);
    EXPECT_EQ(form.cmd_OK.Left(), 3750 - form.cmd_OK.Width() / 2);
    const double oben = form.cmd_OK.Top();
    form.setFixedSize(500, form.height() + 100);
    EXPECT_EQ(form.Sft_Eigenschaften.Height(), form.ScaleHeight() - (oben + knopf + 80));
    form.setFixedSize(300, form.height() - 200);
    EXPECT_EQ(form.Sft_Eigenschaften.Height(), 1500 - 40) << "refused again";
    EXPECT_EQ(form.cmd_OK.Top(), form.ScaleHeight() - knopf - 40);
    form.Hide();
  });
  form.Show();
}

TEST_F(BildInfo, TitlesAndTheSelectedRowAreDarkBlueOnTheListsOwnColours) {
  frm_BildInfo form;
  form.Create_List();
  const SftTree& tree = form.Sft_Eigenschaften;
  for (std::int32_t i = 0; i < 3; ++i) EXPECT_EQ(tree.ColumnForeColor(i), 0x800000U);
  EXPECT_EQ(tree.headerItem()->foreground(0).color(), QColor(0, 0, 0x80));
  EXPECT_EQ(tree.SelectBackColor(), tree.BackColor());
  EXPECT_EQ(tree.SelectForeColor(), 0x800000U);
  EXPECT_EQ(tree.BackColor(), 0xFFFFFFU);
  EXPECT_EQ(tree.ForeColor(), 0U);
}

TEST_F(BildInfo, FillingTwiceListsOnce) {
  frm_BildInfo form;
  form.m_Bild = lege(kamerabild(Folge::Intel));
  form.Load_Exif();
  const QStringList einmal = liste(form);
  form.Create_List();
  EXPECT_EQ(liste(form), einmal);
  EXPECT_TRUE(form.Sft_Eigenschaften.updatesEnabled()) << "drawing goes on";
}

TEST_F(BildInfo, UnloadReleasesTheTable) {
  frm_BildInfo form;
  form.m_Bild = lege(kamerabild(Folge::Intel));
  form.Load();
  form.Load_Exif();
  form.Unload();
  form.Create_List();
  EXPECT_EQ(liste(form), QStringList());
}

TEST_F(BildInfo, AHighlightedRowIsMarkedAsAReferenceAndASpacerIsARowOfItsOwn) {
  SftTree tree(nullptr, u"Sft"_s);
  tree.Columns(3);
  std::int32_t Zeile = 0;
  frm_BildInfo::Fkt_Zeile_Einfuegen(Zeile, tree, u"Feld"_s, u"Wert"_s, u"Info"_s, 0, false);
  EXPECT_EQ(Zeile, 1);
  frm_BildInfo::Fkt_Zeile_Einfuegen(Zeile, tree, u"Feld"_s, u"Wert"_s, u"Info"_s, 4, true);
  EXPECT_EQ(Zeile, 3);
  ASSERT_EQ(tree.ItemCount(), 3);
  EXPECT_EQ(tree.CellText(0, 0), u"Feld"_s);
  EXPECT_EQ(tree.CellText(0, 2), u"Info"_s);
  EXPECT_EQ(tree.CellText(1, 0), u"Feld (Verweiß auf ->)"_s);
  EXPECT_EQ(tree.CellText(1, 1), u"Wert"_s);
  for (const int zelle : {0, 1}) EXPECT_EQ(tree.CellBackColor(1, zelle), 0xFFC0C0U);
  EXPECT_NE(tree.CellBackColor(1, 2), 0xFFC0C0U);
  EXPECT_EQ(tree.topLevelItem(1)->background(0).color(), QColor(0xC0, 0xC0, 0xFF)) << "a light blue";
  for (const int zelle : {0, 1, 2}) {
    EXPECT_EQ(tree.CellText(2, zelle), QString());
    EXPECT_EQ(tree.CellFontSize(2, zelle), 4);
  }
  for (const int i : {0, 1, 2}) EXPECT_EQ(tree.ItemLevel(i), 1);
}

TEST_F(BildInfo, ControlsHaveNamesForScreenReadersAndToolTips) {
  const frm_BildInfo form;
  EXPECT_FALSE(form.Sft_Eigenschaften.accessibleName().isEmpty());
  EXPECT_FALSE(form.Sft_Eigenschaften.toolTip().isEmpty());
  EXPECT_EQ(form.cmd_OK.accessibleName(), u"OK"_s);
  EXPECT_EQ(form.cmd_OK.Caption(), u"OK"_s);
  EXPECT_FALSE(form.cmd_OK.toolTip().isEmpty());
}
