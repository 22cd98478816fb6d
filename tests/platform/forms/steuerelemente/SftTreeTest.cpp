#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QStyledItemDelegate>
#include <QToolTip>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/SftTree.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class SftTreeTest : public ::testing::Test {
 protected:
  SftTreeTest() { tree.Columns(3); }
  QString gezeigt(int zeile, int spalte) {
    const auto* maler = qobject_cast<QStyledItemDelegate*>(tree.itemDelegate());
    return maler->displayText(tree.topLevelItem(zeile)->text(spalte), QLocale::c());
  }
  SftTree tree{nullptr, u"Sft"_s};
};

}  // namespace

TEST_F(SftTreeTest, ItemsStandInTheOrderOfTheirAddingWithTheirLevels) {
  EXPECT_EQ(tree.AddItem(u"eins"_s), 0);
  EXPECT_EQ(tree.AddItem(u"zwei"_s), 1);
  tree.ItemLevel(1, 1);
  EXPECT_EQ(tree.ItemCount(), 2);
  EXPECT_EQ(tree.ItemLevel(0), 0);
  EXPECT_EQ(tree.ItemLevel(1), 1);
  EXPECT_EQ(tree.CellText(1, 0), u"zwei"_s);
  tree.Clear();
  EXPECT_EQ(tree.ItemCount(), 0);
}

TEST_F(SftTreeTest, ACellKeepsItsTextAndShowsItOnOneLine) {
  const QString text = u"a\nb\u0000c\u2028"_s + QString(600, u'x');
  tree.AddItem({});
  tree.CellText(0, 2, text);
  EXPECT_EQ(tree.CellText(0, 2), text);
  EXPECT_EQ(gezeigt(0, 2), u"a b c "_s + QString(494, u'x') + u'…');
}

TEST_F(SftTreeTest, NumbersOutsideRaise9) {
  tree.AddItem({});
  EXPECT_EQ(Fehlernummer_von([&] { tree.CellText(1, 0); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { tree.CellText(-1, 0, u"x"_s); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { tree.CellText(0, 3); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { tree.ItemLevel(1, 1); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { tree.ColumnWidth(3, 100); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { tree.ColumnTitle(-1); }), 9);
}

TEST_F(SftTreeTest, ValuesThatAreNoneRaise380) {
  tree.AddItem({});
  EXPECT_EQ(Fehlernummer_von([&] { tree.ColumnWidth(0, -1); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { tree.CellFontSize(0, 0, 0); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { tree.ItemLevel(0, -1); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { tree.Columns(-1); }), 380);
  EXPECT_EQ(Fehlernummer_von([&] { tree.Height(-1); }), 380);
}

TEST_F(SftTreeTest, ColoursAreBlueGreenRed) {
  tree.AddItem({});
  tree.BackColor(0xFFFFFF);
  EXPECT_EQ(tree.CellBackColor(0, 0), 0xFFFFFFU) << "a cell without its own colour has the list's";
  tree.CellBackColor(0, 0, 0xFFC0C0);
  EXPECT_EQ(tree.CellBackColor(0, 0), 0xFFC0C0U);
  EXPECT_EQ(tree.topLevelItem(0)->background(0).color(), QColor(0xC0, 0xC0, 0xFF)) << "a light blue";
  tree.ColumnForeColor(1, 0x800000);
  EXPECT_EQ(tree.headerItem()->foreground(1).color(), QColor(0, 0, 128));
  tree.SelectBackColor(0x0000FF);
  tree.SelectForeColor(0x800000);
  EXPECT_EQ(tree.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(Qt::red));
  EXPECT_EQ(tree.SelectBackColor(), 0x0000FFU);
  EXPECT_EQ(tree.SelectForeColor(), 0x800000U);
}

TEST_F(SftTreeTest, ColumnsAreMeasuredInTwips) {
  tree.ColumnWidth(1, 1500);
  EXPECT_EQ(tree.columnWidth(1), 100);
  EXPECT_EQ(tree.ColumnWidth(1), 1500);
}

TEST_F(SftTreeTest, LettersHaveASizeOfTheirOwn) {
  tree.AddItem({});
  tree.CellFontSize(0, 1, 6);
  EXPECT_EQ(tree.CellFontSize(0, 1), 6);
  EXPECT_EQ(tree.topLevelItem(0)->font(1).pointSizeF(), 6);
  EXPECT_EQ(tree.CellFontSize(0, 0), tree.font().pointSizeF());
}

TEST_F(SftTreeTest, ACellTellsItsTextUnderTheMouseAndNeverAsMarkup) {
  tree.Move(0, 0, 6000, 3000);
  tree.AddItem(u"<b>fett</b>"_s);
  tree.show();
  const QRect zelle = tree.visualItemRect(tree.topLevelItem(0));
  QHelpEvent hilfe(QEvent::ToolTip, zelle.topLeft() + QPoint(3, 3), tree.viewport()->mapToGlobal(zelle.topLeft()));
  QCoreApplication::sendEvent(tree.viewport(), &hilfe);
  EXPECT_EQ(QToolTip::text(), u"<p>&lt;b&gt;fett&lt;/b&gt;</p>"_s);
}

TEST_F(SftTreeTest, ALongTextGoesOnOverTheEmptyCellBesideItAndStopsAtAFullOne) {
  tree.resize(400, 120);
  for (int i = 0; i < 3; ++i) tree.ColumnWidth(i, 100 * 15);
  for (int zeile = 0; zeile < 2; ++zeile) {
    tree.AddItem(u"Feld"_s);
    tree.CellText(zeile, 1, QString(60, u'W'));
  }
  tree.CellText(1, 2, u"Info"_s);
  tree.show();
  const QImage bild = tree.viewport()->grab().toImage();
  const auto dunkle = [&](int zeile, int von, int bis) {
    const QRect platz = tree.visualItemRect(tree.topLevelItem(zeile));
    int anzahl = 0;
    for (int y = platz.top() + 2; y < platz.bottom() - 1; ++y)
      for (int x = von; x < bis; ++x) anzahl += qGray(bild.pixel(x, y)) < 128 ? 1 : 0;
    return anzahl;
  };
  EXPECT_GT(dunkle(0, 260, 285), 20);
  EXPECT_EQ(dunkle(1, 260, 295), 0);
  EXPECT_EQ(dunkle(0, 302, 395), 0);
}
