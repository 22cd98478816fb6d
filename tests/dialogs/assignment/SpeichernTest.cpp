#include <QDir>
#include <QTest>

#include "platform/basic/Uhr.h"
#include "platform/host/Komponenten.h"
#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Meldungstexte.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

const QString Stempel = u"20260304_050607"_s;

QDateTime feste_Zeit() {
  return {QDate(2026, 3, 4), QTime(5, 6, 7)};
}

}  // namespace

class Speichern : public Dialogtest {
 protected:
  Speichern() : uhr_vorher_(uhr::setze(feste_Zeit)) {}
  ~Speichern() override { uhr::setze(uhr_vorher_); }

  /// What the search does once it has appended its rows.
  void zeige_Streifen() {
    std::int32_t anfang = 0;
    form().Create_ThumbNails(anfang);
    form().Zeichne_Status();
  }
  /// A picture from another folder of the tree joins the record.
  void nimm_auf(const QString& name, const QString& ordner = u"P:\\Neu"_s) {
    lege_Bild(name + u".jpg"_s, QSize(60, 40), Qt::green, u"Neu"_s);
    haenge_neue_Zeile_an(ordner, name);
    zeige_Streifen();
  }
  void speichere() { klicke(form().SSC_ZuordnungSpeichern); }
  /// Renames a row as the user does.
  void benenne(int thumbnail, const QString& name) {
    klicke(form().Pic_Thumb(thumbnail));
    form().txt_BildName.Text(name);
  }
  QStringList dateien(const QString& ordner = u"Belege/1"_s) {
    return QDir(wurzel.pfad(ordner)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  /// "Bildname|Pfad|Changeflag|Neu|Delete" of every record of the collection.
  QStringList sammlung() {
    QStringList alle;
    for (std::int32_t i = 0; i < store->AnzahlPos(); ++i) {
      store->AktInd(i);
      const auto j = [](bool wert) { return wert ? u"1"_s : u"0"_s; };
      alle.append(QStringList{store->Bild_Bildname(), store->Bild_Pfad(), j(store->Bild_Changeflag()),
                              j(store->Bild_Neu()), j(store->Bild_Delete())}
                      .join(u'|'));
    }
    return alle;
  }
  /// What the host does after the dialog: new rows get the record's keys, and all is written.
  void wirt_schreibt() {
    EXPECT_TRUE(store->fkt_Korr_Key1(u"RE"_s));
    EXPECT_TRUE(store->fkt_Korr_Key2(u"1"_s));
    EXPECT_TRUE(store->FKT_SpeichernBilder());
    lies();
  }

 private:
  uhr::Zeitgeber uhr_vorher_;
};

// ── Into the collection ─────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, AChangedRowGoesToItsRecordAndTheDialogEnds) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    form().SetzeZeileGeaendert(false);
    form().Zelle(0, spalte::ZeileGeaendert, false);
    tippe(form().txt_BildText, u"neu"_s);
    for (CheckBox* schalter :
         {&form().chk_Drucken, &form().chk_GesamteSeite, &form().chk_NeueSeite, &form().chk_AlsAnhang})
      klicke(*schalter, QPoint(8, 8));
    db.mitschrift().hole();
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(spalte_von(spalte::ZeileGeaendert), (QStringList{u"False"_s, u"False"_s, u"False"_s}));
  });
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"b|Belege\\1|1|0|0"_s, u"c|Belege\\1|0|0|0"_s}));
  store->AktInd(1);
  EXPECT_EQ(store->Bild_Beschreibung(), u"neu"_s);
  EXPECT_FALSE(store->Bild_Drucken());
  EXPECT_TRUE(store->Bild_DruckGesamteSeite());
  EXPECT_TRUE(store->Bild_NeueSeite());
  EXPECT_TRUE(store->Bild_AlsAnhang());
  EXPECT_EQ(store->Bild_SortIndex(), 1);
  EXPECT_EQ(db.mitschrift().hole(), QStringList());
}

TEST_F(Speichern, ThePositionsAreThoseOfTheRowsAndMarkNone) {
  fuege_Bilder_ein(4);
  zeige([&] {
    klicke(form().Pic_Thumb(3));
    tippe(form().txt_BildText, u"x"_s);
    speichere();
    EXPECT_EQ(spalte_von(spalte::SortIndex), (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}));
  });
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, u"b|1|<NULL>"_s, u"c|2|x"_s, u"d|3|<NULL>"_s}));
}

TEST_F(Speichern, ARowThatWasOnlyLookedAtIsWrittenBackToo) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"x"_s);
    speichere();
  });
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s, u"c|Belege\\1|0|0|0"_s}));
}

TEST_F(Speichern, ARemovedRowIsOnlyMarkedAndKeepsItsFile) {
  fuege_Bilder_ein(2);
  zeige([&] {
    klicke(form().chk_Delete, QPoint(8, 8));
    speichere();
  });
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|1"_s, u"b|Belege\\1|0|0|0"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
}

TEST_F(Speichern, ARemovedRowIsNotRenamedAndGetsItsOldNameBack) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"ax"_s);
    klicke(form().chk_Delete, QPoint(8, 8));
    speichere();
    EXPECT_EQ(form().Text(0, spalte::Bildname), u"a"_s);
  });
  EXPECT_EQ(sammlung().first(), u"a|Belege\\1|1|0|1"_s);
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), QStringList{u"b|1|<NULL>"_s});
}

TEST_F(Speichern, ARemovedRowIsNotRenamedWithTheOthers) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"ax"_s);
    klicke(form().chk_Delete, QPoint(8, 8));
    benenne(2, u"bx"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"bx.jpg"_s}));
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|1"_s, u"bx|Belege\\1|1|0|0"_s}));
}

TEST_F(Speichern, ALostPictureIsRemovedByTheNextSave) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false);
  fuege_Bild_ein(u"b"_s);
  zeige([&] { speichere(); });
  wirt_schreibt();
  EXPECT_EQ(gespeichert().size(), 1);
}

TEST_F(Speichern, TheRowWithoutAPictureIsNotSaved) {
  zeige([&] {
    form().Zelle(0, spalte::ZeileGeaendert, true);
    form().SetzeDatenGeaendert(true);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(store->AnzahlPos(), 0);
}

TEST_F(Speichern, ASecondSaveIsWithoutEffect) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    nimm_auf(u"neu"_s);
    form().Zuordnung_Speichern();
    const QStringList vorher = sammlung();
    form().Zuordnung_Speichern();
    EXPECT_EQ(sammlung(), vorher);
    EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"neu"_s + Stempel + u".jpg"_s}));
  });
}

TEST_F(Speichern, TheRootBecomesThatOfTheRowWrittenLast) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    form().Zelle(0, spalte::Root, u"p:"_s);
    speichere();
    EXPECT_EQ(form().pRootpath, u"p:"_s);
  });
}

// ── Collisions ──────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, ACollisionKeepsTheDialogOpenAtTheRowsName) {
  fuege_Bilder_ein(3);
  zeige([&] {
    benenne(2, u"a"_s);
    klicke(form().Pic_Thumb(3));
    form().SSC_ZuordnungSpeichern.setFocus();
    meldungen.erwarte(meldung::doppelte_Datei());
    speichere();
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().AktThumb, 2);
    EXPECT_EQ(form().focusWidget(), &form().txt_BildName);
    EXPECT_TRUE(form().DatenGeaendert);
  });
  for (const QString& satz : sammlung()) EXPECT_TRUE(satz.contains(u"|0|0|0"_s)) << satz.toStdString();
}

TEST_F(Speichern, ACollisionOutsideTheStripIsBroughtIntoIt) {
  fuege_Bilder_ein(14);
  zeige([&] {
    form().Zelle(12, spalte::NameDoppelt, true);
    form().SetzeDatenGeaendert(true);
    meldungen.erwarte(meldung::doppelte_Datei());
    speichere();
    EXPECT_EQ(form().AktZeile, 12);
    EXPECT_GT(form().ErsteZeile, 0);
    EXPECT_EQ(form().AktThumb, 12 - form().ErsteZeile + 1);
  });
}

TEST_F(Speichern, ACollisionLeftOfTheStripIsBroughtIntoIt) {
  fuege_Bilder_ein(14);
  zeige([&] {
    for (int i = 0; i < 5; ++i) klicke(form().SSC_Scroll_Right);
    form().Zelle(2, spalte::NameDoppelt, true);
    form().SetzeDatenGeaendert(true);
    meldungen.erwarte(meldung::doppelte_Datei());
    speichere();
    EXPECT_EQ(form().ErsteZeile, 2);
    EXPECT_EQ(form().AktZeile, 2);
  });
}

TEST_F(Speichern, TheFirstOfSeveralCollisionsIsShown) {
  fuege_Bilder_ein(4);
  zeige([&] {
    form().Zelle(3, spalte::NameDoppelt, true);
    form().Zelle(1, spalte::NameDoppelt, true);
    form().SetzeDatenGeaendert(true);
    meldungen.erwarte(meldung::doppelte_Datei());
    speichere();
    EXPECT_EQ(form().AktZeile, 1);
  });
}

TEST_F(Speichern, ACollisionOfARemovedRowDoesNotStopTheSaving) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"b"_s);
    klicke(form().chk_Delete, QPoint(8, 8));
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(sammlung().first(), u"a|Belege\\1|1|0|1"_s);
}

TEST_F(Speichern, WithoutTheStandardFolderCollisionsAreNotLookedFor) {
  fuege_Bilder_ein(2);
  zeige([&] {
    form().pStandardBildPfad = u"Belege\\neu"_s;
    form().Zelle(0, spalte::NameDoppelt, true);
    tippe(form().txt_BildText, u"x"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_TRUE(sammlung().first().contains(u"|1|0|0"_s));
}

// ── Renaming stored pictures ────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, YesRenamesTheFileAndAllAssignmentsOfThePicture) {
  fuege_Bilder_ein(2);
  db.fuehre_aus(
      u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Druckkennzeichen, SortIndex) values ('X','9','-','-','a','jpg','ART','-','Belege\\1','0001',0)"_s);
  zeige([&] {
    benenne(1, u"neu"_s);
    tippe(form().txt_BildText, u"Text"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(dateien(), (QStringList{u"b.jpg"_s, u"neu.jpg"_s}));
  EXPECT_EQ(db.anzahl(u"Bildname = 'neu'"_s), 2);
  EXPECT_EQ(sammlung(), (QStringList{u"neu|Belege\\1|1|0|0"_s, u"b|Belege\\1|0|0|0"_s}));
  wirt_schreibt();
  EXPECT_EQ(db.zeilen(u"select Beschreibung from Bild_Zuordnungen where Key1 = 'RE' and Bildname = 'neu'"_s),
            std::vector<QStringList>{QStringList{u"Text"_s}});
}

TEST_F(Speichern, YesRenamesInThePicturesOwnFolder) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\2"_s); });
  lege_Bild(u"a.jpg"_s, QSize(60, 40), Qt::red, u"Belege/2"_s);
  zeige([&] {
    benenne(1, u"neu"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(u"Belege/2"_s), QStringList{u"neu.jpg"_s});
  EXPECT_EQ(sammlung(), QStringList{u"neu|Belege\\2|1|0|0"_s});
}

// Whether the renaming succeeded is not asked: the record gets the new name, the file and the table keep the old one.
TEST_F(Speichern, ARenamingThatFailsAfterYesIsNotTold) {
  fuege_Bilder_ein(1);
  lege_Bild(u"da.jpg"_s);
  zeige([&] {
    benenne(1, u"da"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"da.jpg"_s}));
  EXPECT_EQ(sammlung(), QStringList{u"da|Belege\\1|1|0|0"_s});
  EXPECT_EQ(db.anzahl(u"Bildname = 'a'"_s), 1);
}

TEST_F(Speichern, NoTakesTheRenamingBackAndGoesOnSaving) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"neu"_s);
    tippe(form().txt_BildText, u"Text"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(form().Text(0, spalte::Bildname), u"a"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|Text"_s, u"b|1|<NULL>"_s}));
}

TEST_F(Speichern, NoTakesBackTheFirstRenamedRowOnlyAndTheSecondIsRenamed) {
  fuege_Bilder_ein(3);
  zeige([&] {
    benenne(2, u"bx"_s);
    benenne(3, u"cx"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"cx.jpg"_s}));
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s, u"cx|Belege\\1|1|0|0"_s}));
}

TEST_F(Speichern, ThatSecondRowMovesIntoTheStandardFolderWithItsPath) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"b"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\2"_s); });
  lege_Bild(u"b.jpg"_s, QSize(60, 40), Qt::red, u"Belege/2"_s);
  zeige([&] {
    benenne(1, u"ax"_s);
    benenne(2, u"bx"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    speichere();
    EXPECT_EQ(form().Text(1, spalte::Pfad), u"Belege\\1"_s);
    EXPECT_EQ(form().Text(1, spalte::VollerPfad), u"P:\\Belege\\2\\b.jpg"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"bx.jpg"_s}));
  EXPECT_EQ(dateien(u"Belege/2"_s), QStringList());
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"bx|Belege\\1|1|0|0"_s}));
}

TEST_F(Speichern, ARenamingThatFailsIsToldAndTheRowKeepsItsOldName) {
  fuege_Bilder_ein(2);
  lege_Bild(u"da.jpg"_s);
  zeige([&] {
    benenne(1, u"ax"_s);
    benenne(2, u"da"_s);
    tippe(form().txt_BildText, u"Text"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    meldungen.erwarte(meldung::nicht_umbenannt(u"P:\\Belege\\1\\b.jpg"_s));
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(form().Text(1, spalte::Bildname), u"b"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"da.jpg"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, u"b|1|Text"_s}));
}

TEST_F(Speichern, CancelLeavesTableFilesAndFlagsAndEndsTheDialog) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"neu"_s);
    nimm_auf(u"foto"_s);
    std::vector<QStringList> vorher;
    for (std::int32_t s = 0; s <= spalte::Letzte; ++s) vorher.push_back(spalte_von(static_cast<spalte::Spalte>(s)));
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_TRUE(form().DatenGeaendert);
    for (std::int32_t s = 0; s <= spalte::Letzte; ++s)
      EXPECT_EQ(spalte_von(static_cast<spalte::Spalte>(s)), vorher[static_cast<std::size_t>(s)]) << s;
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"b|Belege\\1|0|0|0"_s}));
}

TEST_F(Speichern, ANameBackAtItsOriginalIsNotAskedAbout) {
  fuege_Bilder_ein(1);
  zeige([&] {
    benenne(1, u"neu"_s);
    klicke(form().cmd_OriginalName);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
}

TEST_F(Speichern, OnlyStoredRowsThatStayCountAsRenamed) {
  fuege_Bilder_ein(2);
  form().Zelle(1, spalte::NameGeaendert, true);
  bool einer = false;
  bool alle = false;
  const auto frage = [&] {
    form().Pruefe_NameGeaendert(einer);
    form().Pruefe_NameGeaendertAlle(alle);
  };
  frage();
  EXPECT_TRUE(einer && alle);
  form().Zelle(1, spalte::NeuAusSuche, true);
  frage();
  EXPECT_FALSE(einer);
  EXPECT_TRUE(alle);
  form().Zelle(1, spalte::Entfernen, true);
  frage();
  EXPECT_FALSE(alle);
}

TEST_F(Speichern, ARenamingIsTakenBackOfTheGivenRow) {
  fuege_Bilder_ein(3);
  for (const std::int32_t i : {1, 2}) {
    form().Zelle(i, spalte::OriginalName, form().Text(i, spalte::Bildname));
    form().Zelle(i, spalte::Bildname, u"x"_s);
    form().Zelle(i, spalte::NameGeaendert, true);
  }
  form().Namen_Zuruecksetzen(2);
  EXPECT_EQ(spalte_von(spalte::Bildname), (QStringList{u"a"_s, u"x"_s, u"c"_s}));
  form().Namen_Zuruecksetzen(-1);
  EXPECT_EQ(spalte_von(spalte::Bildname), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

// ── New pictures ────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, ANewPictureIsCopiedUnderAStampedNameAndItsSourceStays) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    speichere();
    EXPECT_TRUE(form().Ja(1, spalte::Gespeichert));
    EXPECT_EQ(form().Text(1, spalte::Pfad), u"Belege\\1"_s);
    EXPECT_EQ(form().Text(1, spalte::VollerPfad), u"P:\\Neu\\foto.jpg"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(dateien(u"Neu"_s), QStringList{u"foto.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto"_s + Stempel + u".jpg"_s), wurzel.lies(u"Neu/foto.jpg"_s));
  EXPECT_EQ(sammlung().last(), u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s);
  store->AktInd(1);
  EXPECT_EQ(store->Bild_Key1() + store->Bild_Key2() + store->Bild_Key3() + store->Bild_Key4(), QString());
  EXPECT_EQ(store->Bild_Typ1(), u"BEL"_s);
  EXPECT_EQ(store->Bild_BildExt(), u"jpg"_s);
  EXPECT_FALSE(store->Bild_Drucken());
  EXPECT_EQ(store->Bild_SortIndex(), 1);
}

TEST_F(Speichern, TheStripeOfANewPictureTurnsGreen) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    const auto streifen = [&] {
      const QImage& bild = form().Pic_Thumb(2).Image();
      return bild.pixelColor(bild.width() / 2, bild.height() - 1).rgb();
    };
    EXPECT_EQ(streifen(), qRgb(255, 0xC0, 0xC0));
    form().Zuordnung_Speichern();
    EXPECT_EQ(streifen(), qRgb(0xC0, 255, 0xC0));
  });
}

// Told by the folder alone: the file keeps its name, the record gets the stamped one.
TEST_F(Speichern, ANewPictureOfTheStandardFolderIsNotCopied) {
  lege_Bild(u"foto.jpg"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\Belege\\1"_s, u"foto"_s);
    zeige_Streifen();
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{u"foto.jpg"_s});
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|P:\\Belege\\1|1|1|0"_s});
}

TEST_F(Speichern, TheStandardFolderInOtherLettersIsAnotherFolder) {
  lege_Bild(u"foto.jpg"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\belege\\1"_s, u"foto"_s);
    zeige_Streifen();
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"foto.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(Speichern, ANewPictureRenamedBeforeGetsTheStampBehindTheEditedName) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    benenne(2, u"Haus"_s);
    ASSERT_TRUE(form().Ja(1, spalte::NameGeaendert));
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"Haus"_s + Stempel + u".jpg"_s, u"a.jpg"_s}));
  EXPECT_EQ(dateien(u"Neu"_s), QStringList{u"foto.jpg"_s});
}

TEST_F(Speichern, BlanksAroundANewNameAreCutButForTheTable) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zelle(0, spalte::Bildname, u" Haus "_s);
    form().SetzeDatenGeaendert(true);
    speichere();
    EXPECT_EQ(form().Text(0, spalte::Bildname), u" Haus "_s + Stempel);
  });
  EXPECT_EQ(dateien(), QStringList{u"Haus "_s + Stempel + u".jpg"_s});
}

TEST_F(Speichern, AMissingStandardFolderIsMadeWithItsParents) {
  zeige([&] {
    form().pStandardBildPfad = u"Belege\\2026\\März"_s;
    nimm_auf(u"foto"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(u"Belege/2026/März"_s), QStringList{u"foto"_s + Stempel + u".jpg"_s});
}

TEST_F(Speichern, ACopyThatFailsIsNotToldAndTheRowPointsToNoFile) {
  wurzel.schreibe(u"Belege/1"_s, "a file where the folder should be");
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zelle(0, spalte::BildInfo, u"Info"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().DatenGeaendert);
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1"_s), "a file where the folder should be");
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(Speichern, AMissingDriveIsNoFailureOfTheSaving) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().Zelle(0, spalte::Root, u"Z:"_s);
    tippe(form().txt_BildInfo, u"Info"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_TRUE(sammlung().first().contains(u"|1|0|0"_s));
}

TEST_F(Speichern, ALongNameIsCutBeforeTheStampSoThatTheTableFindsTheFile) {
  const QString lang(60, u'n');
  zeige([&] {
    nimm_auf(lang);
    nimm_auf(lang + u"2"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  wirt_schreibt();
  ASSERT_EQ(store->AnzahlPos(), 2);
  QStringList namen;
  for (std::int32_t i = 0; i < 2; ++i) {
    store->AktInd(i);
    EXPECT_EQ(store->Bild_Bildname().size(), 50);
    EXPECT_TRUE(store->Bild_Bildname().endsWith(Stempel));
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/"_s + store->Bild_Bildname() + u".jpg"_s));
    namen.append(store->Bild_Bildname());
  }
  EXPECT_NE(namen[0], namen[1]);
}

TEST_F(Speichern, ANameOfThirtyFiveLettersKeepsThemAll) {
  const QString name(35, u'n');
  zeige([&] {
    nimm_auf(name);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{name + Stempel + u".jpg"_s});
}

TEST_F(Speichern, PicturesOfTheSameSecondAndNameShareTheStampedName) {
  lege_Bild(u"foto.jpg"_s, QSize(10, 10), Qt::red, u"Anders"_s);
  zeige([&] {
    nimm_auf(u"foto"_s);
    haenge_neue_Zeile_an(u"P:\\Anders"_s, u"foto"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{u"foto"_s + Stempel + u".jpg"_s});
  EXPECT_EQ(store->AnzahlPos(), 2);
}

TEST_F(Speichern, UmlautsApostrophesAndDotsSurviveInNames) {
  const QString name = u"Müller's ß v1.2"_s;
  zeige([&] {
    nimm_auf(name);
    form().Zelle(0, spalte::BildInfo, u"Info"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{name + Stempel + u".jpg"_s, name + Stempel + u"jpg.txt"_s}));
  EXPECT_EQ(sammlung(), QStringList{name + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(Speichern, ANewPictureRemovedAgainIsNewAndMarked) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zelle(0, spalte::Entfernen, true);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|1"_s});
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 0);
}

// ── Text files ──────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, TheTextGoesToTheStandardFolderWithoutADotAndWithoutOuterBlanks) {
  fuege_Bilder_ein(1);
  zeige([&] {
    klicke(form().txt_BildInfo);
    tippe(form().txt_BildInfo, u"  Müll"_s);
    taste(form(), Qt::Key_Return);
    tippe(form().txt_BildInfo, u"zwei "_s);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), "M\xFCll\r\nzwei");
}

TEST_F(Speichern, ATextThatNobodyEditedKeepsItsBytes) {
  fuege_Bilder_ein(1);
  const QByteArray inhalt = "eins\nzwei\r\ndrei\xA0vier\tf\xFCnf\r";
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, inhalt);
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    speichere();
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), inhalt);
}

TEST_F(Speichern, AnEmptiedTextLeavesTheFile) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "alt");
  zeige([&] {
    form().txt_BildInfo.Text(u"   "_s);
    speichere();
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), "alt");
}

TEST_F(Speichern, TheTextOfAPictureElsewhereGoesToTheStandardFolder) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\2"_s); });
  lege_Bild(u"a.jpg"_s, QSize(60, 40), Qt::red, u"Belege/2"_s);
  lege_Bild(u"anderes.jpg"_s);
  wurzel.schreibe(u"Belege/2/ajpg.txt"_s, "Info");
  zeige([&] {
    tippe(form().txt_BildText, u"x"_s);
    speichere();
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), "Info");
  EXPECT_EQ(wurzel.lies(u"Belege/2/ajpg.txt"_s), "Info");
}

TEST_F(Speichern, TheTextOfARenamedPictureGetsTheNewNameAndTheOldFileStays) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "Info");
  zeige([&] {
    benenne(1, u"neu"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"ajpg.txt"_s, u"neu.jpg"_s, u"neujpg.txt"_s}));
}

// A failed rename is the only failure of a file that the user is told.
TEST_F(Speichern, ATextThatCannotBeWrittenIsNotToldAndTheRowIsSaved) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt/im Weg"_s, "x");
  zeige([&] {
    tippe(form().txt_BildInfo, u"Info"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().Ja(0, spalte::ZeileGeaendert));
  });
  EXPECT_EQ(sammlung(), QStringList{u"a|Belege\\1|1|0|0"_s});
}

// ── Out of step ─────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, AfterADropTheValuesGoToTheRecordAtTheirPlace) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = 3;
    form().DragZiel = 1;
    form().Bild_Verschieben();
    form().Zelle(0, spalte::Beschreibung, u"von c"_s);
    speichere();
  });
  EXPECT_EQ(sammlung(), (QStringList{u"c|Belege\\1|1|0|0"_s, u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s}));
  for (std::int32_t i = 0; i < 3; ++i) {
    store->AktInd(i);
    EXPECT_EQ(store->Bild_SortIndex(), i);
  }
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"c|0|von c"_s, u"a|1|<NULL>"_s, u"b|2|<NULL>"_s}));
}

TEST_F(Speichern, ARecordThatTheCollectionDoesNotHaveIsReportedAndPassedOver) {
  fuege_Bilder_ein(2);
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = 3;
    form().DragZiel = 1;
    form().Bild_Verschieben();
    form().Zelle(0, spalte::ZeileGeaendert, false);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(spalte_von(spalte::ZeileGeaendert), (QStringList{u"False"_s, u"False"_s, u"True"_s}));
  });
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Zuordnung_Speichern"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::IndexAusserhalb);
  EXPECT_TRUE(berichte[0].MitMeldung);
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"a|Belege\\1|1|0|0"_s}));
}

// The record that was just appended stands at the place of the last stored row, which is written over it: the new
// picture has its file and no row.
TEST_F(Speichern, ANewPictureDroppedInFrontOfStoredOnesLosesItsRecord) {
  fuege_Bilder_ein(2);
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = 3;
    form().DragZiel = 1;
    form().Bild_Verschieben();
    speichere();
  });
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
}

// ── Failures ────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, AFailureInTheMiddleIsReportedAndTheDialogEndsAllTheSame) {
  fuege_Bilder_ein(3);
  lege_Bild(u"da.jpg"_s);
  zeige([&] {
    benenne(1, u"ax"_s);
    benenne(2, u"da"_s);
    klicke(form().Pic_Thumb(3));
    tippe(form().txt_BildText, u"x"_s);
    oberflaeche::mauszeiger().form(oberflaeche::Zeigerform::Sanduhr);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    meldungen.erwarte(meldung::nicht_umbenannt(u"P:\\Belege\\1\\b.jpg"_s), Antwort::OK,
                      [&] { form().pBildObj.reset(); });
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(spalte_von(spalte::ZeileGeaendert), (QStringList{u"False"_s, u"True"_s, u"True"_s}));
    EXPECT_EQ(oberflaeche::mauszeiger().form(), oberflaeche::Zeigerform::Standard);
  });
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Zuordnung_Speichern"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::ObjektNichtGesetzt);
  EXPECT_FALSE(berichte[0].Beschreibung.isEmpty());
  EXPECT_TRUE(berichte[0].MitMeldung);
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|0|0|0"_s, u"c|Belege\\1|0|0|0"_s}));
}

// ── The whole road ──────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, DialogHostAndTableComeOutTheSame) {
  fuege_Bilder_ein(3);
  zeige([&] {
    tippe(form().txt_BildText, u"Vorn"_s);
    klicke(form().Pic_Thumb(2));
    klicke(form().chk_Delete, QPoint(8, 8));
    benenne(3, u"Küche"_s);
    nimm_auf(u"foto"_s);
    klicke(form().Pic_Thumb(4));
    tippe(form().txt_BildText, u"Bob's"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  wirt_schreibt();
  const QString neu = u"foto"_s + Stempel;
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|Vorn"_s, u"Küche|2|<NULL>"_s, neu + u"|3|Bob's"_s}));
  EXPECT_EQ(
      db.zeilen(
          u"select Key1, Key2, Key3, Key4, Typ1, Typ2, BildPfad from Bild_Zuordnungen where Bildname like 'foto%'"_s),
      (std::vector<QStringList>{{u"RE"_s, u"1"_s, u"-"_s, u"-"_s, u"BEL"_s, u"-"_s, u"Belege\\1"_s}}));
  form().Lade_Zuordnung();
  EXPECT_EQ(spalte_von(spalte::Bildname), (QStringList{u"a"_s, u"Küche"_s, neu}));
  EXPECT_EQ(spalte_von(spalte::DateiFehlt), (QStringList{u"False"_s, u"False"_s, u"False"_s}));
}

// ── Folder choice ───────────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Ordnerwahl final : public KVFileFunctions {
 public:
  QString SelectFolder(const QString& Titel) override { return u"P:\\gewählt unter "_s + Titel; }
};

}  // namespace

TEST_F(Speichern, TheRootDirectoryIsAskedForThroughTheCore) {
  const auto vorher =
      komponenten::registriere(u"KVOCore.KVFileFunctions"_s, [] { return std::make_shared<Ordnerwahl>(); });
  QString ordner;
  form().ShowVerzeichnisDialog(ordner);
  EXPECT_EQ(ordner, u"P:\\gewählt unter Root-Verzeichnis suchen"_s);
  komponenten::registriere(u"KVOCore.KVFileFunctions"_s, {});
  EXPECT_EQ(Fehlernummer_von([&] { form().ShowVerzeichnisDialog(ordner); }), 429);
  komponenten::registriere(u"KVOCore.KVFileFunctions"_s, vorher);
}
