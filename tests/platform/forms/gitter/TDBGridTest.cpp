#include <QLineEdit>
#include <QStyledItemDelegate>

#include "platform/forms/gitter/TDBGrid.h"
#include "tests/platform/forms/gitter/Gitterprobe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class TDBGridTest : public Gitterprobe {};

}  // namespace

TEST_F(TDBGridTest, AColumnHasItsCaptionItsWidthInTwipsAndItsAlignment) {
  gitter.AddColumn({.Caption = u"Datei"_s, .Width = 3000, .HeadAlignment = Ausrichtung::Zentriert});
  gitter.AddColumn({.Caption = u"Art"_s, .Alignment = Ausrichtung::Rechts});
  fuelle(1, 2);
  zeige();
  EXPECT_EQ(gitter.ColumnCount(), 2);
  EXPECT_EQ(gitter.model()->headerData(0, Qt::Horizontal).toString(), u"Datei"_s);
  EXPECT_EQ(gitter.columnWidth(0), 200);
  const auto lage = [](const QVariant& wert) { return Qt::Alignment(wert.toInt()) & Qt::AlignHorizontal_Mask; };
  EXPECT_EQ(lage(gitter.model()->headerData(0, Qt::Horizontal, Qt::TextAlignmentRole)), Qt::AlignHCenter);
  EXPECT_EQ(lage(gitter.model()->index(0, 0).data(Qt::TextAlignmentRole)), Qt::AlignLeft);
  EXPECT_EQ(lage(gitter.model()->index(0, 1).data(Qt::TextAlignmentRole)), Qt::AlignRight);
}

TEST_F(TDBGridTest, TheLastVisibleColumnFillsTheRest) {
  zeige_Liste(3);
  EXPECT_EQ(gitter.columnWidth(1), gitter.viewport()->width());
}

TEST_F(TDBGridTest, ColoursOfCellsAndHeadingAreTheOnesSet) {
  gitter.AddColumn({.BackColor = farben::Hellgruen, .HeadBackColor = farben::Hellrot});
  gitter.AddColumn({});
  fuelle(2, 2);
  zeige();
  const auto farbe = [](const QVariant& wert) { return wert.value<QBrush>().color(); };
  EXPECT_EQ(farbe(gitter.model()->index(0, 0).data(Qt::BackgroundRole)), QColor(0xC0, 0xFF, 0xC0));
  EXPECT_EQ(farbe(gitter.model()->headerData(0, Qt::Horizontal, Qt::BackgroundRole)), QColor(0xFF, 0xC0, 0xC0));
  EXPECT_FALSE(gitter.model()->index(0, 1).data(Qt::BackgroundRole).isValid());
  const QPoint ecke = ort(1, 0).topLeft() + QPoint(2, 2);
  EXPECT_EQ(gitter.viewport()->grab().toImage().pixelColor(ecke), QColor(0xC0, 0xFF, 0xC0)) << "painted";
}

TEST_F(TDBGridTest, AHiddenColumnStaysHiddenWhenTheGridIsBoundAgain) {
  zeige_Liste(3);
  EXPECT_TRUE(gitter.isColumnHidden(0));
  gitter.setColumnWidth(1, 100);
  binde();
  EXPECT_TRUE(gitter.isColumnHidden(0));
}

TEST_F(TDBGridTest, AColumnThatIsChangedShowsSo) {
  zeige_Liste(3);
  Gitterspalte spalte = gitter.Column(0);
  spalte.Visible = true;
  spalte.Width = 900;
  gitter.Column(0, spalte);
  EXPECT_FALSE(gitter.isColumnHidden(0));
  EXPECT_EQ(gitter.columnWidth(0), 60);
}

TEST_F(TDBGridTest, ColumnsAreRemovedAllAndTheRowsStay) {
  zeige_Liste(3);
  gitter.SelBookmarks().Add(1);
  gitter.RemoveColumns();
  EXPECT_EQ(gitter.ColumnCount(), 0);
  gitter.RemoveColumns();
  gitter.AddColumn({.Caption = u"neu"_s});
  EXPECT_EQ(gezeigt(2, 0), u"2.0"_s);
  EXPECT_EQ(auswahl(), u"1"_s);
  EXPECT_EQ(hole(), QStringList());
}

TEST_F(TDBGridTest, NumbersOutsideRaise9AndANegativeWidth380) {
  zeige_Liste(3);
  for (const int spalte : {-1, 2}) {
    EXPECT_EQ(Fehlernummer_von([&] { static_cast<void>(gitter.Column(spalte)); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { gitter.Column(spalte, {}); }), 9);
    EXPECT_EQ(Fehlernummer_von([&] { gitter.Col(spalte); }), 9);
  }
  for (const int zeile : {-1, 3}) EXPECT_EQ(Fehlernummer_von([&] { gitter.Row(zeile); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { gitter.AddColumn({.Width = -1}); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { gitter.Column(0, {.Width = -1}); }), 380);
  EXPECT_EQ(gitter.ColumnCount(), 2);
}

TEST_F(TDBGridTest, BindingMakesTheFirstRowCurrentAndTellsItEachTime) {
  zeige_Liste(3);
  binde();
  EXPECT_EQ(hole(), QStringList{u"zeile -1>0"_s});
  EXPECT_EQ(gitter.Row(), 0);
  EXPECT_EQ(gitter.Col(), 1) << "the first that shows";
  klicke(2, 1);
  EXPECT_EQ(gitter.Row(), 2);
  ereignisse.clear();
  binde();
  EXPECT_EQ(hole(), QStringList{u"zeile -1>0"_s});
}

TEST_F(TDBGridTest, BindingAnArrayWithoutRowsTellsThatThereIsNoCurrentRow) {
  zeige_Liste(3);
  array->ReDim(0, -1, 0, 1);
  binde();
  EXPECT_EQ(hole(), QStringList{u"zeile -1>-1"_s});
  EXPECT_EQ(gitter.Row(), -1);
  gitter.Array(nullptr);
  gitter.ReBind();
  EXPECT_EQ(gitter.model()->rowCount(), 0);
  gitter.Refresh();
  EXPECT_EQ(Fehlernummer_von([&] { gitter.Text({}); }), 5);
}

TEST_F(TDBGridTest, AFailureOfTheHandlerReachesWhoeverBinds) {
  zeige_Liste(3);
  gitter.RowColChange = [](std::int32_t, std::int32_t) { throw Laufzeitfehler(fehlernummer::DateiNichtGefunden); };
  EXPECT_EQ(Fehlernummer_von([&] { gitter.ReBind(); }), 53);
  EXPECT_TRUE(fenster.fehler.isEmpty());
}

TEST_F(TDBGridTest, AFailureOfAHandlerThatTheUserCausedIsKeptByTheWindow) {
  zeige_Liste(3);
  gitter.RowColChange = [](std::int32_t, std::int32_t) { throw Laufzeitfehler(fehlernummer::DateiNichtGefunden); };
  gitter.SelChange = [] { throw Laufzeitfehler(fehlernummer::PfadNichtGefunden); };
  gitter.Click = [] { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  klicke(2, 1);
  EXPECT_EQ(fenster.fehler, (QList<std::int32_t>{53, 76, 6}));
}

TEST_F(TDBGridTest, TheGridKeepsShowingWhatItShowedUntilItIsBoundAgain) {
  zeige_Liste(3);
  gitter.SelBookmarks().Add(2);
  array->ReDim(0, 0, 0, 1);
  fenster.repaint();
  EXPECT_EQ(gitter.model()->rowCount(), 3);
  EXPECT_EQ(gezeigt(2, 1), u"2.1"_s);
  klicke(1, 1);
  EXPECT_EQ(auswahl(), u"1"_s) << "and stays usable";
  EXPECT_TRUE(fenster.fehler.isEmpty());
  binde();
  EXPECT_EQ(gitter.model()->rowCount(), 1);
}

TEST_F(TDBGridTest, ReplacingTheArrayCountsFromTheNextBindingOn) {
  zeige_Liste(3);
  const auto anderes = std::make_shared<XArrayDBObject>();
  anderes->ReDim(0, 0, 0, 1);
  gitter.Array(anderes);
  EXPECT_EQ(gitter.model()->rowCount(), 3);
  gitter.ReBind();
  EXPECT_EQ(gitter.model()->rowCount(), 1);
}

TEST_F(TDBGridTest, BindingClearsTheSelectionWithoutAnEvent) {
  zeige_Liste(3);
  klicke(2, 1);
  ereignisse.clear();
  binde();
  EXPECT_EQ(auswahl(), QString());
  EXPECT_EQ(hole(), QStringList{u"zeile -1>0"_s});
}

TEST_F(TDBGridTest, RefreshTakesInTheArrayAndLeavesSelectionAndCurrentRow) {
  zeige_Liste(3);
  klicke(2, 1);
  ereignisse.clear();
  array->Value(1, 1, u"neu"_s);
  array->AppendRows(2);
  EXPECT_EQ(gezeigt(1, 1), u"1.1"_s);
  gitter.Refresh();
  EXPECT_EQ(gezeigt(1, 1), u"neu"_s);
  EXPECT_EQ(gitter.model()->rowCount(), 5);
  EXPECT_EQ(gitter.Row(), 2);
  EXPECT_EQ(auswahl(), u"2"_s);
  EXPECT_EQ(hole(), QStringList());
}

TEST_F(TDBGridTest, RefreshOfAShorterArrayDropsTheRowsThatAreGoneFromTheSelection) {
  zeige_Liste(4);
  for (const int zeile : {3, 0}) gitter.SelBookmarks().Add(zeile);
  gitter.Row(3);
  ereignisse.clear();
  array->DeleteRows(3);
  array->DeleteRows(2);
  gitter.Refresh();
  EXPECT_EQ(auswahl(), u"0"_s);
  EXPECT_EQ(gitter.model()->rowCount(), 2);
  EXPECT_EQ(hole(), QStringList{u"zeile 3>1"_s});
}

TEST_F(TDBGridTest, WhatIsNoTextShowsAsNothing) {
  zeige_Liste(1);
  const std::vector<Variant> leere{Empty(), Null(), true, false, std::make_shared<int>(1)};
  for (const Variant& wert : leere) {
    array->Value(0, 1, wert);
    gitter.Refresh();
    EXPECT_EQ(gezeigt(0, 1), QString()) << wert.index();
  }
  array->Value(0, 1, 12);
  gitter.Refresh();
  EXPECT_EQ(gezeigt(0, 1), u"12"_s);
}

TEST_F(TDBGridTest, AColumnThatTheArrayLacksShowsNothing) {
  zeige_Liste(1);
  gitter.AddColumn({.Caption = u"mehr"_s});
  binde();
  EXPECT_EQ(gezeigt(0, 2), QString());
}

TEST_F(TDBGridTest, ATextShowsOnOneLineAndIsNoMarkupInTheToolTip) {
  zeige_Liste(1);
  array->Value(0, 1, u"<b>x\r\ny"_s);
  gitter.Refresh();
  const auto* maler = qobject_cast<QStyledItemDelegate*>(gitter.itemDelegate());
  EXPECT_EQ(maler->displayText(gezeigt(0, 1), QLocale::c()), u"<b>x  y"_s);
  EXPECT_EQ(gitter.model()->index(0, 1).data(Qt::ToolTipRole).toString(), u"<p>&lt;b&gt;x  y</p>"_s);
}

TEST_F(TDBGridTest, BookmarksAreTheArraysIndexesWhateverItsLowerBound) {
  gitter.AddColumn({.Locked = true});
  array->ReDim(5, 7, 2, 2);
  array->Value(6, 2, u"sechs"_s);
  zeige();
  EXPECT_EQ(gitter.Row(), 5);
  klicke(1, 0);
  EXPECT_EQ(gezeigt(1, 0), u"sechs"_s);
  EXPECT_EQ(hole(), (QStringList{u"zeile 5>6"_s, u"auswahl 6"_s, u"klick"_s}));
}

TEST_F(TDBGridTest, CodeMovesTheCurrentRowAndTellsIt) {
  zeige_Liste(3);
  gitter.Row(2);
  gitter.Row(2);
  EXPECT_EQ(hole(), QStringList{u"zeile 0>2"_s}) << "once";
  gitter.Col(0);
  EXPECT_EQ(gitter.Col(), 0);
  EXPECT_EQ(hole(), QStringList{u"zeile 2>2"_s}) << "the column counts too";
  EXPECT_EQ(auswahl(), QString());
}

TEST_F(TDBGridTest, TheRowSelectorMarksTheCurrentRowAndTheLineForANewOne) {
  zeige_Eingabe(2);
  EXPECT_EQ(marke(0), u"▸"_s);
  EXPECT_EQ(marke(1), QString());
  EXPECT_EQ(marke(2), u"*"_s);
  klicke(1, 1);
  EXPECT_EQ(marke(0), QString());
  EXPECT_EQ(marke(1), u"▸"_s);
}

TEST_F(TDBGridTest, TheLineForANewRowIsNoRowOfTheArray) {
  zeige_Eingabe(2);
  EXPECT_EQ(gitter.model()->rowCount(), 3);
  klicke(2, 1);
  EXPECT_EQ(gitter.Row(), 2) << "the index that the row will get";
  EXPECT_EQ(array->Count(Zeilen), 2);
  gitter.AllowAddNew(false);
  EXPECT_EQ(gitter.model()->rowCount(), 2);
}

TEST_F(TDBGridTest, TheTabulatorLeavesTheGrid) {
  zeige_Eingabe(2);
  QLineEdit danach(&fenster);
  danach.show();
  QWidget::setTabOrder(&gitter, &danach);
  taste(Qt::Key_Tab);
  EXPECT_TRUE(danach.hasFocus());
}

TEST_F(TDBGridTest, TheEndOfAGridWithAnOpenEditRaisesNoEvent) {
  array->ReDim(0, 1, 0, 0);
  int ereignis = 0;
  {
    TDBGrid kurz(&fenster, u"TDBG_Kurz"_s);
    kurz.Move(0, 0, 5000, 3000);
    kurz.AddColumn({});
    kurz.Array(array);
    kurz.ReBind();
    kurz.RowColChange = [&](std::int32_t, std::int32_t) { ++ereignis; };
    kurz.AfterColEdit = [&](std::int32_t) { ++ereignis; };
    fenster.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&fenster));
    kurz.setFocus();
    tippe("x");
    EXPECT_EQ(kurz.Text(), u"x"_s);
  }
  EXPECT_EQ(ereignis, 0);
  EXPECT_EQ(im_Array(0, 0), QString());
}
