#include <QLineEdit>

#include "tests/platform/forms/gitter/Gitterprobe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class TDBGridEingabeTest : public Gitterprobe {
 protected:
  /// A grid of marks beside a text that is locked.
  void zeige_Marken(int zeilen) {
    gitter.AddColumn({.Caption = u"Zu"_s, .Width = 400, .Alignment = Ausrichtung::Zentriert, .CheckBox = true});
    gitter.AddColumn({.Caption = u"Datei"_s, .Locked = true});
    fuelle(zeilen, 2);
    for (int z = 0; z < zeilen; ++z) array->Value(z, 0, true);
    zeige();
  }
  QLineEdit* editor() {
    const auto alle = gitter.viewport()->findChildren<QLineEdit*>();
    for (QLineEdit* e : alle)
      if (e->isVisible()) return e;
    return nullptr;
  }
  void klicke_Knopf(int zeile) {
    const QRect zelle = ort(zeile, 0);
    eingaben::klicke(*gitter.viewport(), {zelle.right() - 5, zelle.center().y()});
  }
};

}  // namespace

TEST_F(TDBGridEingabeTest, TypingReplacesACellAndEnterCommitsIt) {
  zeige_Eingabe(2);
  tippe("4711");
  EXPECT_EQ(gitter.Text(), u"4711"_s);
  EXPECT_EQ(im_Array(0, 0), u"0.0"_s) << "not before it is committed";
  taste(Qt::Key_Return);
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 4711"_s, u"geschrieben"_s, u"zeile 0>1"_s}));
  EXPECT_EQ(im_Array(0, 0), u"4711"_s);
  EXPECT_EQ(gezeigt(0, 0), u"4711"_s);
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(TDBGridEingabeTest, TheEditEventComesBeforeTheArrayIsWrittenAndStillInItsRow) {
  zeige_Eingabe(2);
  QStringList gesehen;
  gitter.AfterColEdit = [&](std::int32_t) { gesehen += im_Array(0, 0) + QString::number(gitter.Row()); };
  gitter.AfterUpdate = [&] { gesehen += im_Array(0, 0) + QString::number(gitter.Row()); };
  tippe("x");
  klicke(1, 1);
  EXPECT_EQ(gesehen, (QStringList{u"0.00"_s, u"x0"_s}));
}

TEST_F(TDBGridEingabeTest, LeavingTheCellCommits) {
  zeige_Eingabe(3);
  QLineEdit anderes(&fenster);
  anderes.setGeometry(610, 10, 80, 20);
  anderes.show();
  const std::vector<std::function<void()>> wege{
      [&] { klicke(2, 1); },
      [&] { klicke_Waehler(2); },
      [&] { taste(Qt::Key_Down); },
      [&] { taste(Qt::Key_Tab); },
      [&] { eingaben::klicke(anderes); },
      [&] { gitter.Row(2); },
  };
  for (std::size_t i = 0; i < wege.size(); ++i) {
    gitter.Row(0);
    gitter.Col(0);
    gitter.setFocus();
    array->Value(0, 0, u"alt"_s);
    gitter.Refresh();
    ereignisse.clear();
    tippe("neu");
    wege[i]();
    EXPECT_EQ(im_Array(0, 0), u"neu"_s) << i;
    EXPECT_EQ(ereignisse.filter(u"eingabe"_s).size(), 1) << i;
    EXPECT_EQ(editor(), nullptr) << i;
  }
}

TEST_F(TDBGridEingabeTest, EscapeDropsTheEdit) {
  zeige_Eingabe(2);
  tippe("weg");
  ASSERT_NE(editor(), nullptr);
  QTest::keyClick(editor(), Qt::Key_Escape);
  EXPECT_EQ(gitter.Text(), u"0.0"_s);
  gitter.Update();
  EXPECT_EQ(im_Array(0, 0), u"0.0"_s);
  EXPECT_EQ(hole(), QStringList());
}

TEST_F(TDBGridEingabeTest, AnEditThatChangesNothingIsNone) {
  zeige_Eingabe(2);
  taste(Qt::Key_F2);
  ASSERT_NE(editor(), nullptr);
  taste(Qt::Key_Return);
  gitter.Row(2);
  ereignisse.clear();
  tippe("x");
  taste(Qt::Key_Backspace);
  taste(Qt::Key_Up);
  EXPECT_EQ(hole(), QStringList{u"zeile 2>1"_s});
  EXPECT_EQ(array->Count(Zeilen), 2) << "no row for it either";
}

TEST_F(TDBGridEingabeTest, ASecondClickIntoACellEditsIt) {
  zeige_Eingabe(3);
  klicke(1, 0);
  EXPECT_EQ(editor(), nullptr);
  klicke(1, 0);
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), u"1.0"_s);
}

TEST_F(TDBGridEingabeTest, ALockedColumnCannotBeEdited) {
  zeige_Eingabe(2);
  klicke(1, 1);
  klicke(1, 1);
  tippe("x");
  taste(Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(im_Array(1, 1), u"1.1"_s);
}

TEST_F(TDBGridEingabeTest, AGridThatMayNotBeUpdatedCannotBeEdited) {
  zeige_Eingabe(2);
  gitter.AllowUpdate(false);
  tippe("x");
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(TDBGridEingabeTest, UpdateCommitsWhatIsTypedAndTellsItOnce) {
  zeige_Eingabe(2);
  tippe("47");
  gitter.Update();
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 47"_s, u"geschrieben"_s}));
  klicke(1, 1);
  gitter.Update();
  EXPECT_EQ(hole(), (QStringList{u"zeile 0>1"_s, u"klick"_s})) << "nothing is left to commit";
}

TEST_F(TDBGridEingabeTest, TextByCodeWaitsForUpdate) {
  zeige_Eingabe(2);
  gitter.Text(u"4711"_s);
  EXPECT_EQ(gitter.Text(), u"4711"_s);
  EXPECT_EQ(gezeigt(0, 0), u"4711"_s);
  EXPECT_EQ(im_Array(0, 0), u"0.0"_s);
  EXPECT_EQ(hole(), QStringList());
  gitter.Update();
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 4711"_s, u"geschrieben"_s}));
  EXPECT_EQ(im_Array(0, 0), u"4711"_s);
  gitter.Update();
  EXPECT_EQ(hole(), QStringList());
}

TEST_F(TDBGridEingabeTest, TextByCodeIsCommittedWhenTheUserLeavesTheCell) {
  zeige_Eingabe(2);
  gitter.Text(u"4711"_s);
  klicke(1, 1);
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 4711"_s, u"geschrieben"_s, u"zeile 0>1"_s, u"klick"_s}));
}

TEST_F(TDBGridEingabeTest, TheHandlerMayCommitItselfAndTheEventIsRaisedOnce) {
  zeige_Eingabe(2);
  int gemeldet = 0;
  gitter.AfterColEdit = [&](std::int32_t) {
    ++gemeldet;
    gitter.Update();
    EXPECT_EQ(im_Array(0, 0), u"neu"_s);
    gitter.Update();
  };
  tippe("neu");
  taste(Qt::Key_Return);
  EXPECT_EQ(gemeldet, 1);
  EXPECT_EQ(hole(), (QStringList{u"geschrieben"_s, u"zeile 0>1"_s}));
}

TEST_F(TDBGridEingabeTest, TheHandlerMayReplaceWhatWasEntered) {
  zeige_Eingabe(2);
  int gemeldet = 0;
  gitter.AfterColEdit = [&](std::int32_t) {
    ++gemeldet;
    gitter.Text(u"ersetzt"_s);
  };
  tippe("neu");
  taste(Qt::Key_Return);
  EXPECT_EQ(gemeldet, 1);
  EXPECT_EQ(im_Array(0, 0), u"ersetzt"_s);
}

TEST_F(TDBGridEingabeTest, AHandlerThatCommitsAndEntersAgainIsNotAskedAgain) {
  zeige_Eingabe(2);
  int gemeldet = 0;
  gitter.AfterColEdit = [&](std::int32_t) {
    if (++gemeldet > 1) return;
    gitter.Update();
    gitter.Text(u"zweiter"_s);
    gitter.Update();
  };
  gitter.AfterUpdate = [&] {
    ereignisse += u"geschrieben "_s + im_Array(0, 0);
    gitter.Update();
  };
  tippe("neu");
  taste(Qt::Key_Return);
  EXPECT_EQ(gemeldet, 1);
  EXPECT_EQ(hole(), (QStringList{u"geschrieben neu"_s, u"geschrieben zweiter"_s, u"zeile 0>1"_s}));
}

TEST_F(TDBGridEingabeTest, RefreshInTheHandlerKeepsWhatWasEntered) {
  zeige_Eingabe(2);
  gitter.AfterColEdit = [&](std::int32_t) {
    array->Value(0, 1, u"Kessel"_s);
    gitter.Refresh();
    EXPECT_EQ(gitter.Text(), u"47"_s);
  };
  tippe("47");
  taste(Qt::Key_Return);
  EXPECT_EQ(gezeigt(0, 1), u"Kessel"_s);
  EXPECT_EQ(gezeigt(0, 0), u"47"_s);
  EXPECT_EQ(im_Array(0, 0), u"47"_s);
}

TEST_F(TDBGridEingabeTest, RefreshWhileTheUserTypesKeepsTheEditorsText) {
  zeige_Eingabe(2);
  tippe("47");
  gitter.Refresh();
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), u"47"_s);
}

TEST_F(TDBGridEingabeTest, BindingDropsAnOpenEdit) {
  zeige_Eingabe(2);
  tippe("47");
  binde();
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(gitter.Text(), u"0.0"_s);
  gitter.Text(u"48"_s);
  binde();
  gitter.Update();
  EXPECT_EQ(im_Array(0, 0), u"0.0"_s);
  EXPECT_EQ(hole(), (QStringList{u"zeile -1>0"_s, u"zeile -1>0"_s}));
}

TEST_F(TDBGridEingabeTest, AFailureOfTheHandlerEndsTheCommit) {
  zeige_Eingabe(2);
  gitter.AfterColEdit = [](std::int32_t) { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  tippe("neu");
  taste(Qt::Key_Return);
  EXPECT_EQ(fenster.fehler, QList<std::int32_t>{6});
  EXPECT_EQ(im_Array(0, 0), u"0.0"_s);
  EXPECT_EQ(gezeigt(0, 0), u"0.0"_s);
  gitter.Row(0);
  gitter.Text(u"nochmal"_s);
  EXPECT_EQ(Fehlernummer_von([&] { gitter.Update(); }), 6) << "of whoever commits";
  gitter.AfterColEdit = nullptr;
  gitter.Text(u"gut"_s);
  gitter.Update();
  EXPECT_EQ(im_Array(0, 0), u"gut"_s);
}

TEST_F(TDBGridEingabeTest, AnEditInARowThatTheArrayLacksRaises9) {
  zeige_Eingabe(3);
  array->ReDim(0, 0, 0, 2);
  gitter.Row(2);
  tippe("x");
  taste(Qt::Key_Return);
  EXPECT_EQ(fenster.fehler, QList<std::int32_t>{9});
  EXPECT_EQ(gezeigt(2, 0), u"2.0"_s);
  gitter.Row(3);
  fenster.fehler.clear();
  tippe("x");
  taste(Qt::Key_Return);
  EXPECT_EQ(fenster.fehler, QList<std::int32_t>{9});
  EXPECT_EQ(array->Count(Zeilen), 1);
}

TEST_F(TDBGridEingabeTest, TheArrayHasTheNewRowBeforeTheEditEventAndTheHandlerMayFillIt) {
  zeige_Eingabe(1);
  klicke(1, 0);
  ereignisse.clear();
  gitter.AfterColEdit = [&](std::int32_t) {
    ASSERT_EQ(array->Count(Zeilen), 2);
    EXPECT_EQ(gitter.Row(), 1);
    array->Value(1, 1, u"Kessel"_s);
    gitter.Refresh();
  };
  tippe("4711");
  EXPECT_EQ(array->Count(Zeilen), 1);
  taste(Qt::Key_Return);
  EXPECT_EQ(im_Array(1, 0), u"4711"_s);
  EXPECT_EQ(gezeigt(1, 1), u"Kessel"_s);
  EXPECT_EQ(marke(1), QString());
  EXPECT_EQ(marke(2), u"*"_s) << "the next line for a new row";
  EXPECT_EQ(gitter.Row(), 2);
  EXPECT_EQ(gitter.model()->rowCount(), 3);
}

TEST_F(TDBGridEingabeTest, AnArrayWithoutRowsGrowsLineByLine) {
  zeige_Eingabe(0);
  EXPECT_EQ(gitter.Row(), 0);
  for (const char* nummer : {"1", "2", "3"}) {
    tippe(nummer);
    taste(Qt::Key_Return);
  }
  ASSERT_EQ(array->Count(Zeilen), 3);
  EXPECT_EQ(im_Array(0, 0) + im_Array(1, 0) + im_Array(2, 0), u"123"_s);
}

TEST_F(TDBGridEingabeTest, ARowThatTheArrayGotStaysWhenTheHandlerFails) {
  zeige_Eingabe(1);
  gitter.Row(1);
  gitter.AfterColEdit = [](std::int32_t) { throw Laufzeitfehler(fehlernummer::Ueberlauf); };
  tippe("x");
  taste(Qt::Key_Return);
  EXPECT_EQ(array->Count(Zeilen), 2);
  EXPECT_EQ(im_Array(1, 0), QString());
  EXPECT_EQ(gitter.model()->rowCount(), 3);
}

TEST_F(TDBGridEingabeTest, OneClickTurnsACheckBoxOverAndCommitsIt) {
  zeige_Marken(3);
  klicke(1, 0);
  EXPECT_EQ(hole(), (QStringList{u"zeile 0>1"_s, u"eingabe 0 False"_s, u"geschrieben"_s, u"klick"_s}));
  EXPECT_EQ(array->Value(1, 0), Variant(false));
  EXPECT_EQ(gitter.model()->index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  klicke(1, 0);
  EXPECT_EQ(array->Value(1, 0), Variant(true));
  EXPECT_EQ(gezeigt(1, 0), QString()) << "no text beside it";
}

TEST_F(TDBGridEingabeTest, ADoubleClickTurnsACheckBoxOverTwice) {
  zeige_Marken(3);
  QTest::mouseDClick(
      fenster.windowHandle(), Qt::LeftButton, {}, eingaben::im_Fenster(*gitter.viewport(), ort(1, 0).center()));
  EXPECT_EQ(ereignisse.filter(u"eingabe"_s), (QStringList{u"eingabe 0 False"_s, u"eingabe 0 True"_s}));
}

TEST_F(TDBGridEingabeTest, TheSpaceKeyTurnsACheckBoxOver) {
  zeige_Marken(3);
  taste(Qt::Key_Space);
  EXPECT_EQ(array->Value(0, 0), Variant(false));
  taste(Qt::Key_Down);
  taste(Qt::Key_Space);
  EXPECT_EQ(array->Value(1, 0), Variant(false));
}

TEST_F(TDBGridEingabeTest, AClickThatLeavesTheCheckBoxBeforeItsEndTurnsNothingOver) {
  zeige_Marken(3);
  ziehe(*gitter.viewport(), ort(0, 0).center(), ort(2, 0).center());
  EXPECT_EQ(gitter.Row(), 0) << "nor does it move";
  klicke(1, 1);
  EXPECT_TRUE(ereignisse.filter(u"eingabe"_s).isEmpty());
}

TEST_F(TDBGridEingabeTest, ALockedCheckBoxStays) {
  zeige_Marken(3);
  Gitterspalte spalte = gitter.Column(0);
  spalte.Locked = true;
  gitter.Column(0, spalte);
  klicke(1, 0);
  EXPECT_EQ(array->Value(1, 0), Variant(true));
  taste(Qt::Key_Space);
  EXPECT_EQ(array->Value(1, 0), Variant(true));
}

TEST_F(TDBGridEingabeTest, ACheckBoxShowsItsStateAsAPicture) {
  zeige_Marken(2);
  array->Value(1, 0, false);
  gitter.Refresh();
  gitter.Row(0);
  gitter.clearFocus();
  const QImage bild = gitter.viewport()->grab().toImage();
  EXPECT_NE(bild.copy(ort(0, 0)), bild.copy(ort(1, 0)));
}

TEST_F(TDBGridEingabeTest, ACheckBoxTakesATextByCode) {
  zeige_Marken(2);
  gitter.Text(u"False"_s);
  gitter.Update();
  EXPECT_EQ(array->Value(0, 0), Variant(false));
  EXPECT_EQ(Fehlernummer_von([&] { gitter.Text(u"vielleicht"_s); }), 13);
}

TEST_F(TDBGridEingabeTest, TheButtonIsClickedInItsCellAndTheHandlerEntersItsValue) {
  zeige_Eingabe(2);
  gitter.ButtonClick = [this](std::int32_t spalte) {
    ereignisse += u"knopf %1"_s.arg(spalte);
    gitter.Text(u"4711"_s);
    gitter.Update();
  };
  klicke_Knopf(1);
  EXPECT_EQ(hole(), (QStringList{u"zeile 0>1"_s, u"knopf 0"_s, u"eingabe 0 4711"_s, u"geschrieben"_s, u"klick"_s}));
  EXPECT_EQ(im_Array(1, 0), u"4711"_s);
  klicke(0, 0);
  klicke(0, 1);
  EXPECT_FALSE(ereignisse.contains(u"knopf 0"_s)) << "only the button itself";
}

TEST_F(TDBGridEingabeTest, TheButtonWorksInTheLineForANewRow) {
  zeige_Eingabe(1);
  gitter.ButtonClick = [this](std::int32_t) {
    EXPECT_EQ(array->Count(Zeilen), 1);
    gitter.Text(u"4711"_s);
    gitter.Update();
  };
  klicke_Knopf(1);
  ASSERT_EQ(array->Count(Zeilen), 2);
  EXPECT_EQ(im_Array(1, 0), u"4711"_s);
  EXPECT_EQ(gitter.Row(), 1);
}

TEST_F(TDBGridEingabeTest, TheKeyboardClicksTheButtonToo) {
  zeige_Eingabe(2);
  gitter.ButtonClick = [this](std::int32_t spalte) { ereignisse += u"knopf %1"_s.arg(spalte); };
  taste(Qt::Key_F4);
  taste(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(hole(), (QStringList{u"knopf 0"_s, u"knopf 0"_s}));
  tippe("47");
  taste(Qt::Key_F4);
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 47"_s, u"geschrieben"_s, u"knopf 0"_s})) << "what was typed first";
  klicke(0, 1);
  ereignisse.clear();
  taste(Qt::Key_F4);
  EXPECT_EQ(hole(), QStringList()) << "a column without a button";
}

TEST_F(TDBGridEingabeTest, TheButtonStaysBesideTheEditorAndEndsTheEdit) {
  zeige_Eingabe(2);
  gitter.ButtonClick = [this](std::int32_t spalte) { ereignisse += u"knopf %1"_s.arg(spalte); };
  tippe("47");
  ASSERT_NE(editor(), nullptr);
  EXPECT_LT(editor()->geometry().right(), ort(0, 0).right() - 10);
  klicke_Knopf(0);
  EXPECT_EQ(hole(), (QStringList{u"eingabe 0 47"_s, u"geschrieben"_s, u"knopf 0"_s, u"klick"_s}));
}

TEST_F(TDBGridEingabeTest, TheButtonShowsItsPictureInEveryRow) {
  zeige_Eingabe(2);
  QPixmap rot(12, 12);
  rot.fill(Qt::red);
  Gitterspalte spalte = gitter.Column(0);
  spalte.ButtonPicture = rot;
  gitter.Column(0, spalte);
  const QImage bild = gitter.viewport()->grab().toImage();
  for (const int zeile : {0, 1, 2}) {
    const QRect zelle = ort(zeile, 0);
    EXPECT_EQ(bild.pixelColor(zelle.right() - zelle.height() / 2, zelle.center().y()), QColor(Qt::red)) << zeile;
  }
}
