#include <gtest/gtest.h>

#include <QTest>

#include "platform/forms/steuerelemente/Textfelder.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Textfelder, ALineTellsARealChangeByTheUserOrByCodeAtOnce) {
  QWidget behaelter;
  TextBox feld(&behaelter, u"txt_Probe"_s);
  QStringList texte;
  feld.Change = [&] { texte += feld.Text(); };
  feld.Text(QString());
  feld.Text(u"a"_s);
  feld.Text(u"a"_s);
  QTest::keyClicks(&feld, u"bc"_s);
  EXPECT_EQ(texte, (QStringList{u"a"_s, u"ab"_s, u"abc"_s}));
  feld.Locked(true);
  QTest::keyClicks(&feld, u"d"_s);
  EXPECT_EQ(feld.Text(), u"abc"_s);
}

TEST(Textfelder, ABlockGivesBackWhatWasAssignedCharacterForCharacter) {
  QWidget behaelter;
  Textblock feld(&behaelter, u"txt_Probe"_s);
  int aenderungen = 0;
  feld.Change = [&] { ++aenderungen; };
  for (const QString& text : {u"eins\r\nzwei"_s, u"eins\nzwei"_s, u"hart\u00A0leer\t\r"_s, u"a\u2028b\u2029c"_s}) {
    feld.Text(text);
    EXPECT_EQ(feld.Text(), text);
  }
  EXPECT_EQ(aenderungen, 4);
  feld.Text(feld.Text());
  EXPECT_EQ(aenderungen, 4);
}

TEST(Textfelder, WhatTheUserTypesIntoABlockGetsCarriageReturnAndLineFeed) {
  QWidget behaelter;
  Textblock feld(&behaelter, u"txt_Probe"_s);
  feld.Text(u"hart\u00A0leer\nneu"_s);
  QStringList texte;
  feld.Change = [&] { texte += feld.Text(); };
  feld.moveCursor(QTextCursor::End);
  QTest::keyClick(&feld, Qt::Key_Return);
  QTest::keyClicks(&feld, u"x"_s);
  QTest::keyClick(&feld, Qt::Key_Return, Qt::ShiftModifier);
  ASSERT_EQ(texte.size(), 3);
  EXPECT_EQ(texte.last(), u"hart\u00A0leer\r\nneu\r\nx\r\n"_s);
}

TEST(Textfelder, AChangeOfTheFormAloneIsNoChangeOfABlock) {
  QWidget behaelter;
  Textblock feld(&behaelter, u"txt_Probe"_s);
  feld.Text(u"eins\nzwei"_s);
  int aenderungen = 0;
  feld.Change = [&] { ++aenderungen; };
  QTextCursor zeiger(feld.document());
  zeiger.select(QTextCursor::Document);
  QTextCharFormat fett;
  fett.setFontWeight(QFont::Bold);
  zeiger.mergeCharFormat(fett);
  EXPECT_EQ(aenderungen, 0);
  EXPECT_EQ(feld.Text(), u"eins\nzwei"_s);
}
