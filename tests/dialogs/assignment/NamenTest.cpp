#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "platform/basic/Text.h"
#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Meldungstexte.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

class Namen : public Dialogtest {
 protected:
  /// The user replaces the name by another one, letter by letter.
  void tippe_Namen(const QString& name) {
    klicke(form().txt_BildName);
    QTest::keyClick(form().windowHandle(), Qt::Key_A, Qt::ControlModifier);
    tippe(form().txt_BildName, name);
  }
  /// The last letter is deleted.
  void loesche_Buchstaben() {
    form().txt_BildName.setFocus();
    taste(form(), Qt::Key_End);
    taste(form(), Qt::Key_Backspace);
  }
  Farbe knopfflaeche() {
    const QColor c = form().palette().color(QPalette::Active, QPalette::Button);
    return static_cast<Farbe>(c.red() | c.green() << 8 | c.blue() << 16);
  }
};

TEST_F(Namen, AnEditedNameIsKeptWithItsOriginalAndMarked) {
  fuege_Bilder_ein(2);
  zeige([&] {
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
    EXPECT_EQ(form().SSP_NameChanged.BackColor(), knopfflaeche());
    form().SetzeZeileGeaendert(false);
    tippe(form().txt_BildName, u"x"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"ax"_s);
    EXPECT_EQ(form().Zeile(0).OriginalName, u"a"_s);
    EXPECT_TRUE(form().Zeile(0).NameGeaendert);
    EXPECT_TRUE(form().Zeile(0).ZeileGeaendert);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_TRUE(form().cmd_OriginalName.Enabled());
    EXPECT_EQ(form().SSP_NameChanged.BackColor(), 0xC0C0C0U);
    EXPECT_EQ(form().lbl_Anzeige(0).BackColor(), 0xC0C0C0U);
    EXPECT_EQ(form().SSP_WarnungName.BackColor(), 0xC0C0C0U);
    EXPECT_EQ(form().Zeile(0).VollerPfad, u"P:\\Belege\\1\\a.jpg"_s);
    EXPECT_EQ(form().Zeile(1).Bildname, u"b"_s);
  });
}

TEST_F(Namen, TheOriginalIsTheNameBeforeTheFirstEdit) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe(form().txt_BildName, u"x"_s);
    klicke(form().Pic_Thumb(2));
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().txt_BildName.Tag, u"ax"_s);
    tippe(form().txt_BildName, u"y"_s);
    EXPECT_EQ(form().Zeile(0).OriginalName, u"a"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"axy"_s);
  });
}

TEST_F(Namen, TypingTheOriginalNameBackClearsTheMark) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildName, u"x"_s);
    loesche_Buchstaben();
    EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
    EXPECT_EQ(form().SSP_NameChanged.BackColor(), knopfflaeche());
    EXPECT_EQ(form().lbl_Anzeige(0).BackColor(), knopfflaeche());
    EXPECT_TRUE(form().DatenGeaendert);
  });
}

TEST_F(Namen, ChangingOnlyTheCaseCountsAsGoingBackToTheOriginal) {
  fuege_Bild_ein(u"Haus"_s);
  zeige([&] {
    tippe_Namen(u"hAUS"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"Haus"_s);
    EXPECT_EQ(form().txt_BildName.Text(), u"hAUS"_s);
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
  });
}

TEST_F(Namen, BlanksAroundTheOriginalCountAsGoingBackToo) {
  fuege_Bild_ein(u"Haus"_s);
  zeige([&] {
    form().txt_BildName.Text(u"anders"_s);
    form().txt_BildName.Text(u"  Haus "_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"Haus"_s);
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
  });
}

// The row still has its old name while it is looked for; only with blanks around it the same text comes twice.
TEST_F(Namen, ARowHitsItselfOnlyWhenItsOldNameIsTheNewText) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildName, u" "_s);
    EXPECT_TRUE(form().Zeile(0).NameDoppelt);
    EXPECT_TRUE(form().SSP_WarnungName.Visible());
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
    form().txt_BildName.Text(u"ab"_s);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
    form().txt_BildName.Text(u"a"_s);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
  });
}

TEST_F(Namen, TheButtonBringsTheOriginalBack) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildName, u"xyz"_s);
    klicke(form().cmd_OriginalName);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
  });
}

TEST_F(Namen, TheMarkShowsAgainWheneverTheRenamedPictureIsSelected) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe(form().txt_BildName, u"x"_s);
    klicke(form().Pic_Thumb(2));
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
    EXPECT_EQ(form().SSP_NameChanged.BackColor(), knopfflaeche());
    klicke(form().Pic_Thumb(1));
    EXPECT_TRUE(form().cmd_OriginalName.Enabled());
    EXPECT_EQ(form().SSP_NameChanged.BackColor(), 0xC0C0C0U);
    EXPECT_EQ(form().txt_BildName.Text(), u"ax"_s);
  });
}

TEST_F(Namen, LookingAtAPictureIsNoEditingOfItsName) {
  fuege_Bilder_ein(2);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(spalte_von(&Arbeitszeile::OriginalName), (QStringList{QString(), QString()}));
    EXPECT_EQ(spalte_von(&Arbeitszeile::NameGeaendert), (QStringList{u"False"_s, u"False"_s}));
  });
}

TEST_F(Namen, ANameThatAnotherRowHasIsWarnedOf) {
  fuege_Bilder_ein(2);
  zeige([&] {
    const Farbe ruhe = form().txt_BildName.BackColor();
    const Farbe text = form().txt_BildName.ForeColor();
    tippe_Namen(u"b"_s);
    EXPECT_TRUE(form().SSP_WarnungName.Visible());
    EXPECT_EQ(form().SSP_WarnungName.Caption(), u"Dateiname schon vorhanden!"_s);
    EXPECT_TRUE(form().Zeile(0).NameDoppelt);
    EXPECT_FALSE(form().Zeile(1).NameDoppelt);
    for (const TextBox* feld : {&form().txt_BildName, &form().txt_BildExt}) {
      EXPECT_EQ(feld->BackColor(), 0x0000FFU);
      EXPECT_EQ(feld->ForeColor(), 0xFFFFFFU);
    }
    tippe(form().txt_BildName, u"c"_s);
    EXPECT_FALSE(form().SSP_WarnungName.Visible());
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
    for (const TextBox* feld : {&form().txt_BildName, &form().txt_BildExt}) {
      EXPECT_EQ(feld->BackColor(), ruhe);
      EXPECT_EQ(feld->ForeColor(), text);
    }
  });
}

TEST_F(Namen, TheCollisionDisregardsTheCaseOfAnotherRowsNameAndExtension) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"Küche"_s, u"JPG"_s);
  zeige([&] {
    form().txt_BildName.Text(u" kÜCHE "_s);
    EXPECT_TRUE(form().Zeile(0).NameDoppelt);
  });
}

TEST_F(Namen, TheSameNameWithAnotherExtensionIsNoCollision) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s);
  fuege_Bild_ein(u"b"_s, u"png"_s);
  zeige([&] {
    tippe_Namen(u"b"_s);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
    EXPECT_FALSE(form().SSP_WarnungName.Visible());
  });
}

TEST_F(Namen, OnlyTheFirstRowOfANameDecidesAboutTheCollision) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s);
  fuege_Bild_ein(u"b"_s, u"png"_s);
  fuege_Bild_ein(u"b"_s, u"jpg"_s);
  zeige([&] {
    bool ergebnis = false;
    form().Pruefe_NameVorhanden(u"b"_s, u" PNG "_s, ergebnis);
    EXPECT_TRUE(ergebnis);
    form().Pruefe_NameVorhanden(u"gibtesnicht"_s, u"jpg"_s, ergebnis);
    EXPECT_FALSE(ergebnis);
    tippe_Namen(u"b"_s);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
  });
}

TEST_F(Namen, FilesThatNoRowNamesAreNoCollision) {
  fuege_Bilder_ein(1);
  lege_Bild(u"b.jpg"_s);
  zeige([&] {
    tippe_Namen(u"b"_s);
    EXPECT_FALSE(form().Zeile(0).NameDoppelt);
  });
}

TEST_F(Namen, TheWarningShowsAgainWheneverTheCollidingPictureIsSelected) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe_Namen(u"b"_s);
    klicke(form().Pic_Thumb(2));
    EXPECT_FALSE(form().SSP_WarnungName.Visible());
    EXPECT_NE(form().txt_BildName.BackColor(), 0x0000FFU);
    for (int mal = 0; mal < 2; ++mal) {
      klicke(form().Pic_Thumb(1));
      EXPECT_TRUE(form().SSP_WarnungName.Visible());
      EXPECT_EQ(form().txt_BildName.BackColor(), 0x0000FFU);
      klicke(form().Pic_Thumb(2));
    }
  });
}

TEST_F(Namen, TheExtensionIsNeverEdited) {
  fuege_Bilder_ein(1);
  zeige([&] {
    klicke(form().txt_BildExt);
    tippe(form().txt_BildExt, u"x"_s);
    EXPECT_EQ(form().txt_BildExt.Text(), u"jpg"_s);
    EXPECT_EQ(form().Zeile(0).BildExt, u"jpg"_s);
  });
}

TEST_F(Namen, ARowWithoutANameShowsNumberZeroAndLocksItsFields) {
  fuege_Bilder_ein(2);
  zeige([&] {
    loesche_Buchstaben();
    EXPECT_EQ(form().Zeile(0).Bildname, QString());
    klicke(form().Pic_Thumb(2));
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    EXPECT_FALSE(form().txt_BildName.Enabled());
    EXPECT_FALSE(form().chk_Delete.Enabled());
    EXPECT_TRUE(form().cmd_OriginalName.Enabled());
    klicke(form().cmd_OriginalName);
    EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
  });
}

TEST_F(Namen, UmlautsAndDotsAreTakenAsTyped) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe_Namen(u"Mü’ß.Ö"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"Mü’ß.Ö"_s);
    EXPECT_EQ(form().Zeile(0).OriginalName, u"a"_s);
  });
}

TEST_F(Namen, CharactersThatNoDeskCouldStoreOrThatBreakAStatementAreNotTyped) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().txt_BildName.setFocus();
    form().txt_BildName.end(false);
    for (const QChar zeichen : u"\\/:*?\"<>|'"_s) {
      tippe(form().txt_BildName, QString(zeichen));
      EXPECT_EQ(form().txt_BildName.Text(), u"a"_s) << QString(zeichen).toStdString();
    }
    EXPECT_FALSE(form().DatenGeaendert) << "a refused key changes nothing";
    EXPECT_FALSE(form().Zeile(0).NameGeaendert);
    EXPECT_TRUE(form().txt_BildName.toolTip().contains(u"\\ / : * ? \" < > | '"_s));
  });
}

TEST_F(Namen, PastingLeavesThemOutAndTakesTheRest) {
  fuege_Bilder_ein(1);
  zeige([&] {
    QApplication::clipboard()->setText(u"Bad: \"Müller's\" 1/2\t?"_s);
    form().txt_BildName.selectAll();
    form().txt_BildName.paste();
    EXPECT_EQ(form().Zeile(0).Bildname, u"Bad Müllers 12"_s);
    EXPECT_TRUE(form().Zeile(0).NameGeaendert);
  });
}

TEST_F(Namen, NoMoreIsTypedThanTheTableKeeps) {
  fuege_Bilder_ein(1);
  zeige([&] {
    QApplication::clipboard()->setText(QString(49, u'n') + u"😀"_s);
    form().txt_BildName.selectAll();
    form().txt_BildName.paste();
    EXPECT_EQ(form().Zeile(0).Bildname, QString(49, u'n')) << "no half of a pair";
    tippe(form().txt_BildName, u"xy"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, QString(49, u'n') + u'x');
  });
}

TEST_F(Namen, AStoredNameWithSuchCharactersIsShownAsItIs) {
  fuege_Bild_ein(u"x"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Bildname(u"a:b"_s); });
  zeige([&] {
    EXPECT_EQ(form().txt_BildName.Text(), u"a:b"_s);
    EXPECT_EQ(form().Zeile(0).Bildname, u"a:b"_s);
  });
}

// ── Reading the assignment again ────────────────────────────────────────────────────────────────────────────────────

class Aktualisieren : public Namen {};

TEST_F(Aktualisieren, PendingChangesAreSavedWithoutAQuestion) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"Text"_s);
    klicke(form().SSC_Aktualisieren);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().txt_BildText.Text(), u"Text"_s);
    EXPECT_FALSE(form().DatenGeaendert);
    store->AktInd(1);
    EXPECT_EQ(store->Bild_Beschreibung(), u"Text"_s);
    EXPECT_TRUE(store->Bild_Changeflag());
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
}

TEST_F(Aktualisieren, TheStripStartsFromTheFirstRowAgain) {
  fuege_Bilder_ein(12);
  zeige([&] {
    klicke(form().SSC_Scroll_Right);
    klicke(form().SSC_Scroll_Right);
    klicke(form().Pic_Thumb(1));
    ASSERT_EQ(form().AktZeile, 2);
    klicke(form().SSC_Aktualisieren);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(form().Pic_Thumb.Count(), 13);
    EXPECT_EQ(form().AktZeile, 2);
    EXPECT_EQ(form().txt_BildName.Text(), u"c"_s);
  });
}

TEST_F(Aktualisieren, WhatAnotherProgramChangedShows) {
  fuege_Bilder_ein(1);
  zeige([&] {
    EXPECT_EQ(form().Pic_Dummy.ScaleWidth(), 120);
    lege_Bild(u"a.jpg"_s, QSize(300, 60), Qt::red);
    klicke(form().SSC_Aktualisieren);
    EXPECT_EQ(form().Pic_Dummy.ScaleWidth(), 300);
    EXPECT_GT(qRed(form().Pic_Bearbeitung.Image().pixel(5, 5)), 200);
  });
}

TEST_F(Aktualisieren, AFileThatVanishedIsMarkedForRemoval) {
  fuege_Bilder_ein(2);
  zeige([&] {
    ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/a.jpg"_s)));
    klicke(form().SSC_Aktualisieren);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(form().chk_Delete.Value(), 1);
    EXPECT_FALSE(form().chk_Delete.Enabled());
  });
}

TEST_F(Aktualisieren, AVanishedFileMarksNothingWhereNothingCanBeChanged) {
  nur_Anzeige = true;
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  zeige([&] {
    klicke(form().SSC_Aktualisieren);
    EXPECT_FALSE(form().DatenGeaendert);
    klicke(form().SSC_Aktualisieren);
    store->AktInd(0);
    EXPECT_FALSE(store->Bild_Delete());
    EXPECT_FALSE(store->Bild_Changeflag());
  });
}

TEST_F(Aktualisieren, WithNothingSelectedItDoesNothing) {
  zeige([&] {
    form().SetzeDatenGeaendert(true);
    klicke(form().SSC_Aktualisieren);
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(form().AktZeile, -1000);
  });
}

// The collision stops the saving; reading anew would lose what was typed.
TEST_F(Aktualisieren, ACollisionIsToldAndNothingIsReadAnew) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe_Namen(u"b"_s);
    meldungen.erwarte(meldung::doppelte_Datei());
    klicke(form().SSC_Aktualisieren);
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"b"_s, u"b"_s}));
    EXPECT_TRUE(form().DatenGeaendert);
    store->AktInd(0);
    EXPECT_FALSE(store->Bild_Changeflag());
  });
}

TEST_F(Aktualisieren, TheQuestionAboutRenamedFilesIsStillAsked) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe(form().txt_BildName, u"x"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    klicke(form().SSC_Aktualisieren);
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/ax.jpg"_s));
    EXPECT_FALSE(wurzel.vorhanden(u"Belege/1/a.jpg"_s));
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"ax"_s, u"b"_s}));
    EXPECT_EQ(spalte_von(&Arbeitszeile::DateiFehlt), (QStringList{u"False"_s, u"False"_s}));
    EXPECT_FALSE(form().cmd_OriginalName.Enabled());
  });
}

TEST_F(Aktualisieren, CancellingThatQuestionKeepsWhatWasTyped) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe(form().txt_BildName, u"x"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    klicke(form().SSC_Aktualisieren);
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/a.jpg"_s));
    EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"ax"_s, u"b"_s}));
    EXPECT_EQ(form().txt_BildName.Text(), u"ax"_s);
    EXPECT_TRUE(form().DatenGeaendert);
  });
}

TEST_F(Aktualisieren, AFailureIsToldAndThePointerIsSetBack) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().pBildObj.reset();
    meldungen.erwarte({u"Fehler beim aktualisieren der Anzeige"_s, {}});
    klicke(form().SSC_Aktualisieren);
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
    EXPECT_TRUE(form().isVisible());
  });
}
