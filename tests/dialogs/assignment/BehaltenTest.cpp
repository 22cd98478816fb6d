// What turning, reading again and leaving must not lose: new pictures, marks, the order, typed work.
#include <QDir>
#include <QFile>
#include <QTest>

#include "store/Sammlungszugriff.h"
#include "tests/dialogs/assignment/Speichertest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

class Behalten : public Speichertest {
 protected:
  void frische_auf() { klicke(form().SSC_Aktualisieren); }
  void merke_vor(int thumbnail) {
    klicke(form().Pic_Thumb(thumbnail));
    klicke(form().chk_Delete, QPoint(8, 8));
  }
  void verschiebe(int von, int nach) {
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = von;
    form().DragZiel = nach;
    form().Bild_Verschieben();
  }
  /// "Zurück", with that answer to the question whether to save.
  void verlasse(Antwort antwort) {
    meldungen.erwarte(meldung::speichern(), antwort);
    klicke(form().cmd_Abbruch);
    EXPECT_FALSE(form().isVisible());
  }
  void loesche(const QString& name) { EXPECT_TRUE(QFile::remove(wurzel.pfad(name))) << name.toStdString(); }
  QString namen() { return spalte_von(&Arbeitszeile::Bildname).join(u' '); }
  QString neu(const QString& name) const { return name + Stempel; }
};

}  // namespace

// ── New pictures ────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Behalten, ANewPictureStaysNewHoweverOftenTheDialogSaves) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    frische_auf();
    EXPECT_TRUE(form().Zeile(1).Gespeichert);
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"x"_s);
    frische_auf();
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"y"_s);
    speichere();
  });
  EXPECT_EQ(sammlung().last(), neu(u"foto"_s) + u"|Belege\\1|1|1|0"_s);
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, neu(u"foto"_s) + u"|1|xy"_s}));
}

TEST_F(Behalten, ANewPictureThatIsTurnedAfterItsCopyIsNotHeldAgainstItsSource) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().SetzeDatenGeaendert(true);
    klicke(form().Pic_Thumb(1));
    form().Bild_Drehen(u"JpgTransformRotate90"_s);
    klicke(form().SSC_Drehen90);
    EXPECT_EQ(namen(), neu(u"foto"_s));
    tippe(form().txt_BildText, u"x"_s);
    speichere();
  });
  EXPECT_EQ(Sammlungszugriff::spur(*store)->bilder.front().groesse, -1);
  EXPECT_EQ(sammlung(), QStringList{neu(u"foto"_s) + u"|Belege\\1|1|1|0"_s});
}

TEST_F(Behalten, TheOrderOfTheStripStandsAfterReadingAgain) {
  fuege_Bilder_ein(3);
  zeige([&] {
    nimm_auf(u"foto"_s);
    verschiebe(4, 1);
    verschiebe(4, 2);
    EXPECT_EQ(namen(), u"foto c a b"_s);
    frische_auf();
    EXPECT_EQ(namen(), neu(u"foto"_s) + u" c a b"_s);
    klicke(form().Pic_Thumb(1));
    tippe(form().txt_BildText, u"x"_s);
    speichere();
  });
  wirt_schreibt();
  EXPECT_EQ(
      gespeichert(), (QStringList{neu(u"foto"_s) + u"|0|x"_s, u"c|1|<NULL>"_s, u"a|2|<NULL>"_s, u"b|3|<NULL>"_s}));
}

TEST_F(Behalten, ANewPictureWhoseCopyFailedStaysNewWhereItStandsAndIsCopiedByALaterSave) {
  fuege_Bilder_ein(2);
  zeige([&] {
    nimm_auf(u"foto"_s);
    verschiebe(3, 2);
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"Text"_s);
    const QByteArray inhalt = wurzel.lies(u"Neu/foto.jpg"_s);
    loesche(u"Neu/foto.jpg"_s);
    frische_auf();
    EXPECT_EQ(namen(), u"a foto b"_s);
    EXPECT_FALSE(form().Zeile(1).Gespeichert);
    EXPECT_EQ(form().Zeile(1).Pfad, u"P:\\Neu"_s);
    EXPECT_EQ(form().Zeile(1).Beschreibung, u"Text"_s);
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"3"_s);
    EXPECT_EQ(sammlung().size(), 2);
    wurzel.schreibe(u"Neu/foto.jpg"_s, inhalt);
    speichere();
  });
  EXPECT_EQ(sammlung(),
      (QStringList{u"a|Belege\\1|1|0|0"_s, neu(u"foto"_s) + u"|Belege\\1|1|1|0"_s, u"b|Belege\\1|1|0|0"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, neu(u"foto"_s) + u"|1|Text"_s, u"b|2|<NULL>"_s}));
}

TEST_F(Behalten, TheOnlyPictureWhoseCopyFailedStaysNewToo) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().SetzeDatenGeaendert(true);
    klicke(form().Pic_Thumb(1));
    loesche(u"Neu/foto.jpg"_s);
    frische_auf();
    EXPECT_EQ(namen(), u"foto"_s);
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(store->AnzahlPos(), 0);
  });
}

TEST_F(Behalten, ANewPictureMarkedForRemovalGoesWhenTheRecordIsReadAgain) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    merke_vor(2);
    klicke(form().Pic_Thumb(1));
    frische_auf();
    EXPECT_EQ(namen(), u"a"_s);
    EXPECT_FALSE(form().DatenGeaendert);
  });
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(sammlung().size(), 1);
}

TEST_F(Behalten, ACopyNeverOverwritesWhatTheFolderHasOfThatName) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/"_s + neu(u"foto"_s) + u".jpg"_s, "another desk's");
  wurzel.schreibe(u"Belege/1/"_s + neu(u"foto_2"_s) + u"jpg.txt"_s, "another picture's text");
  zeige([&] {
    nimm_auf(u"foto"_s);
    speichere();
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1/"_s + neu(u"foto"_s) + u".jpg"_s), "another desk's");
  EXPECT_EQ(sammlung().last(), neu(u"foto_3"_s) + u"|Belege\\1|1|1|0"_s);
}

TEST_F(Behalten, TheStampNeverSplitsASurrogatePair) {
  const QString name = QString(34, u'n') + u"😀ende"_s;
  zeige([&] {
    nimm_auf(name);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{neu(QString(34, u'n')) + u".jpg"_s});
}

TEST_F(Behalten, CharactersThatNoDeskCouldStoreAreReplacedOneByOneInNewNames) {
  wurzel.schreibe(u"Neu/a*b?c's \"x\"|y.j'g"_s, lege_Bild(u"vorlage.jpg"_s, QSize(20, 20), Qt::red, u"V"_s));
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\Neu"_s, u"a*b?c's \"x\"|y"_s, u"j'g"_s);
    zeige_Streifen();
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  ASSERT_EQ(dateien(), QStringList{neu(u"a_b_c’s _x__y"_s) + u".j’g"_s});
  EXPECT_EQ(wurzel.lies(u"Belege/1/"_s + dateien().first()), wurzel.lies(u"V/vorlage.jpg"_s));
}

TEST_F(Behalten, WhereAllAreAttachmentsANewPictureIsOneThoughNobodySelectedIt) {
  nur_Anhang = true;
  fuege_Bilder_ein(1);
  lege_Bild(u"x.jpg"_s, QSize(10, 10), Qt::red, u"Neu"_s);
  zeige([&] {
    XArrayDBObject funde;
    funde.ReDim(0, 0, 0, 10);
    const QStringList werte{u"P:\\Neu\\x.jpg"_s, u"P:\\Neu"_s, u"x"_s, u"jpg"_s};
    for (std::int32_t s = 0; s < 4; ++s) funde.Value(0, s, werte[s]);
    form().haenge_Fund_an(funde, 0);
    EXPECT_TRUE(form().Zeile(1).AlsAnhang);
  });
}

// ── Removal marks ───────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Behalten, AMarkOfTheUsersSurvivesReadingAgainAndTheSaveTakesItOut) {
  fuege_Bilder_ein(2);
  zeige([&] {
    merke_vor(1);
    frische_auf();
    EXPECT_TRUE(form().Zeile(0).Entfernen);
    EXPECT_EQ(form().chk_Delete.Value(), 1);
    EXPECT_TRUE(form().DatenGeaendert);
    speichere();
  });
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), QStringList{u"b|1|<NULL>"_s});
}

TEST_F(Behalten, AMarkThatOnlyAMissingFileMadeGoesWhenTheFileIsBack) {
  fuege_Bilder_ein(2);
  const QByteArray inhalt = wurzel.lies(u"Belege/1/a.jpg"_s);
  loesche(u"Belege/1/a.jpg"_s);
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    frische_auf();
    EXPECT_TRUE(form().Zeile(0).Entfernen);
    wurzel.schreibe(u"Belege/1/a.jpg"_s, inhalt);
    frische_auf();
    EXPECT_FALSE(form().Zeile(0).Entfernen);
    EXPECT_TRUE(form().chk_Delete.Enabled());
  });
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|x"_s, u"b|1|<NULL>"_s}));
}

TEST_F(Behalten, AFileThatIsBackAtTheSaveStaysAssigned) {
  fuege_Bilder_ein(1);
  const QByteArray inhalt = wurzel.lies(u"Belege/1/a.jpg"_s);
  loesche(u"Belege/1/a.jpg"_s);
  lege_Bild(u"noch eins.jpg"_s);
  zeige([&] {
    ASSERT_TRUE(form().Zeile(0).Entfernen);
    wurzel.schreibe(u"Belege/1/a.jpg"_s, inhalt);
    speichere();
  });
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 1);
}

TEST_F(Behalten, NoRowIsRemovedForAMissingFileWhileTheRootIsAway) {
  fuege_Bilder_ein(2);
  loesche(u"Belege/1/a.jpg"_s);
  zeige([&] {
    ASSERT_TRUE(form().Zeile(0).Entfernen);
    Pfadkarte::aktuell().setze(u"P:"_s, wurzel.pfad(u"gibt es nicht"_s));
    speichere();
  });
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 2);
}

TEST_F(Behalten, LeavingWithNoTakesBackAMarkThatOnlyAnUnaskedSaveHadSet) {
  fuege_Bilder_ein(2);
  zeige([&] {
    merke_vor(1);
    frische_auf();
    verlasse(Antwort::Nein);
  });
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 2);
}

TEST_F(Behalten, LeavingWithYesConfirmsTheMark) {
  fuege_Bilder_ein(2);
  zeige([&] {
    merke_vor(1);
    frische_auf();
    verlasse(Antwort::Ja);
  });
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), QStringList{u"b|1|<NULL>"_s});
}

TEST_F(Behalten, LeavingWithNoKeepsAMarkThatTheUserTookBackBeforeAnUnaskedSave) {
  fuege_Bilder_ein(2);
  zeige([&] {
    merke_vor(1);
    frische_auf();
    merke_vor(1);
    ASSERT_FALSE(form().Zeile(0).Entfernen);
    verlasse(Antwort::Nein);
  });
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 2);
}

TEST_F(Behalten, AMarkThatAnEarlierDialogLeftIsShown) {
  fuege_Bilder_ein(2);
  lies();
  store->AktInd(1);
  store->Bild_Delete(true);
  frm_BildZuordnung zweite;
  zweite.Load();
  zweite.pBildObj = store;
  zweite.pRootpath = u"P:"_s;
  zweite.pStandardBildPfad = u"Belege\\1"_s;
  zweite.Lade_Zuordnung();
  EXPECT_FALSE(zweite.Zeile(0).Entfernen);
  EXPECT_TRUE(zweite.Zeile(1).Entfernen);
}

// ── Work that could not be saved ────────────────────────────────────────────────────────────────────────────────────

TEST_F(Behalten, TurningWhileANameCollidesKeepsTheNewPicturesAndShowsTheTurnedOne) {
  fuege_Bilder_ein(1);
  loesche(u"Belege/1/a.jpg"_s);
  lege_Bild(u"a.jpg"_s, QSize(64, 32));
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zeile(1).NameDoppelt = true;
    klicke(form().Pic_Thumb(1));
    meldungen.erwarte(meldung::doppelte_Datei(), Antwort::OK, [&] { klicke(form().Pic_Thumb(1)); });
    form().AktZeile = 0;
    form().Bild_Drehen(u"JpgTransformRotate90"_s);
    EXPECT_EQ(namen(), u"a foto"_s);
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_FALSE(form().Zeile(1).Gespeichert);
    const QImage& klein = form().Pic_Thumb(1).Image();
    EXPECT_LT(klein.width(), klein.height()) << "the turned picture is drawn anew";
  });
}

TEST_F(Behalten, CancellingTheQuestionOfARenameKeepsTypedTexts) {
  fuege_Bilder_ein(2);
  zeige([&] {
    tippe(form().txt_BildText, u"getippt"_s);
    benenne(2, u"b2"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    frische_auf();
    EXPECT_EQ(spalte_von(&Arbeitszeile::Beschreibung), (QStringList{u"getippt"_s, QString()}));
    EXPECT_EQ(namen(), u"a b2"_s);
  });
}

TEST_F(Behalten, AStoredNameThatWasEmptiedStaysAndNobodyIsAsked) {
  fuege_Bilder_ein(1);
  zeige([&] {
    benenne(1, u"   "_s);
    speichere();
    EXPECT_EQ(namen(), u"a"_s);
  });
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(sammlung(), QStringList{u"a|Belege\\1|1|0|0"_s});
}

TEST_F(Behalten, ANameOfBlanksCountsAsNoneInTheSelection) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"  "_s);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"2"_s);
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
    EXPECT_FALSE(form().txt_BildInfo.Enabled());
  });
}

TEST_F(Behalten, ABlankEndedNameIsSavedWithoutItsBlanks) {
  fuege_Bilder_ein(1);
  zeige([&] {
    benenne(1, u" neu "_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{u"neu.jpg"_s});
  EXPECT_EQ(sammlung(), QStringList{u"neu|Belege\\1|1|0|0"_s});
}

TEST_F(Behalten, ALongDrucktextIsCutSoThatItsDoubledQuotesFit) {
  fuege_Bilder_ein(1);
  const QString text = QString(248, u'x') + u"''''"_s;
  zeige([&] {
    form().txt_BildText.Text(text);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(Sammlungszugriff::spur(*store)->bilder.front().ungekuerzter_Drucktext, text);
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), QStringList{u"a|0|"_s + QString(248, u'x') + u'\''});
}

TEST_F(Behalten, ADrucktextThatWasCutBeforeReadingAgainIsStillKnownToBeCut) {
  fuege_Bilder_ein(2);
  const QString text = QString(248, u'x') + u"''''"_s;
  zeige([&] {
    form().txt_BildText.Text(text);
    form().SetzeDatenGeaendert(true);
    frische_auf();
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"y"_s);
    speichere();
  });
  EXPECT_EQ(Sammlungszugriff::spur(*store)->bilder[0].ungekuerzter_Drucktext, text);
  EXPECT_EQ(Sammlungszugriff::spur(*store)->bilder[1].ungekuerzter_Drucktext, QString());
}

TEST_F(Behalten, ATextThatCouldNotBeWrittenStandsThereAfterReadingAgainAndIsWrittenLater) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt/im Weg"_s, "x");
  zeige([&] {
    tippe(form().txt_BildInfo, u"Maße"_s);
    frische_auf();
    const Dateischritt& schritt = Sammlungszugriff::spur(*store)->bilder.front().text;
    EXPECT_TRUE(schritt.gescheitert());
    EXPECT_FALSE(schritt.grund.isEmpty());
    EXPECT_EQ(form().txt_BildInfo.Text(), u"Maße"_s);
    ASSERT_TRUE(QDir(wurzel.pfad(u"Belege/1/ajpg.txt"_s)).removeRecursively());
    tippe(form().txt_BildText, u"y"_s);
    speichere();
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s),
      "Ma\xDF"
      "e");
}

TEST_F(Behalten, ARenamingThatTheTableRefusesLeavesTheFileItsName) {
  fuege_Bilder_ein(1);
  zeige([&] {
    benenne(1, u"neu"_s);
    db.verbindung()->Execute(
        u"create trigger sperre before update on Bild_Zuordnungen begin select raise(abort, "
        "'gesperrt'); end"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
    db.verbindung()->Execute(u"drop trigger sperre"_s);
  });
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(sammlung(), QStringList{u"a|Belege\\1|1|0|0"_s});
  EXPECT_TRUE(Sammlungszugriff::spur(*store)->bilder.front().umbenennung.grund.contains(u"gesperrt"_s));
}

// ── Opening again with what was not saved ───────────────────────────────────────────────────────────────────────────

TEST_F(Behalten, WhatWasNotSavedOpensTheDialogAgainAsItWas) {
  fuege_Bilder_ein(2);
  zeige([&] {
    nimm_auf(u"foto"_s);
    verschiebe(3, 1);
    benenne(2, u"ax"_s);
    klicke(form().Pic_Thumb(3));
    tippe(form().txt_BildText, u"getippt"_s);
    merke_vor(3);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  ASSERT_TRUE(Sammlungszugriff::spur(*store)->ungespeichert);
  EXPECT_EQ(Sammlungszugriff::spur(*store)->stand->betroffene, (QStringList{u"foto.jpg"_s, u"ax.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"b|Belege\\1|0|0|0"_s}));
  schliesse();
  zeige([&] {
    EXPECT_EQ(namen(), u"foto ax b"_s);
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(spalte_von(&Arbeitszeile::Beschreibung), (QStringList{QString(), QString(), u"getippt"_s}));
    EXPECT_TRUE(form().Zeile(2).Entfernen);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{neu(u"foto"_s) + u"|0|<NULL>"_s, u"ax|1|<NULL>"_s}));
}

TEST_F(Behalten, APictureThatWasOnlyLookedAtIsNotCalledUnsaved) {
  fuege_Bilder_ein(3);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, " Info ");
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildInfo, u"neu"_s);
    benenne(3, u"cx"_s);
    klicke(form().Pic_Thumb(1));
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    speichere();
  });
  EXPECT_EQ(Sammlungszugriff::spur(*store)->stand->betroffene, (QStringList{u"b.jpg"_s, u"cx.jpg"_s}));
}

TEST_F(Behalten, ARefusedSaveLeavesNothingToOpenAgain) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    verlasse(Antwort::Nein);
  });
  EXPECT_FALSE(Sammlungszugriff::spur(*store)->ungespeichert);
}
