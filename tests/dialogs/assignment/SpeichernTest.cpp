#include <QTest>

#include "platform/host/Komponenten.h"
#include "tests/dialogs/assignment/Speichertest.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

using Speichern = Speichertest;

// ── Into the collection ─────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, AChangedRowGoesToItsRecordAndTheDialogEnds) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    form().SetzeZeileGeaendert(false);
    form().Zeile(0).ZeileGeaendert = false;
    tippe(form().txt_BildText, u"neu"_s);
    for (CheckBox* schalter :
        {&form().chk_Drucken, &form().chk_GesamteSeite, &form().chk_NeueSeite, &form().chk_AlsAnhang})
      klicke(*schalter, QPoint(8, 8));
    db.mitschrift().hole();
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), (QStringList{u"False"_s, u"False"_s, u"False"_s}));
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
    EXPECT_EQ(spalte_von(&Arbeitszeile::SortIndex), (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}));
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
    EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
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
    form().Zeile(0).ZeileGeaendert = true;
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
    form().Zeile(0).Root = u"p:"_s;
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
    form().Zeile(12).NameDoppelt = true;
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
    form().Zeile(2).NameDoppelt = true;
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
    form().Zeile(3).NameDoppelt = true;
    form().Zeile(1).NameDoppelt = true;
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
    form().Zeile(0).NameDoppelt = true;
    tippe(form().txt_BildText, u"x"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_TRUE(sammlung().first().contains(u"|1|0|0"_s));
}

// ── Text files ──────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, TheTextGoesBesideThePictureWithoutADotAndWithoutOuterBlanks) {
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

// In the record's folder nobody would find it again.
TEST_F(Speichern, TheTextOfAPictureElsewhereStaysBesideIt) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\2"_s); });
  lege_Bild(u"a.jpg"_s, QSize(60, 40), Qt::red, u"Belege/2"_s);
  lege_Bild(u"anderes.jpg"_s);
  wurzel.schreibe(u"Belege/2/ajpg.txt"_s, "Info");
  zeige([&] {
    tippe(form().txt_BildInfo, u"Mehr "_s);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{u"anderes.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"Belege/2/ajpg.txt"_s), "Mehr Info");
}

TEST_F(Speichern, TheTextOfARenamedPictureGoesWithIt) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "Info");
  zeige([&] {
    benenne(1, u"neu"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"neu.jpg"_s, u"neujpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"Belege/1/neujpg.txt"_s), "Info");
}

// A failed rename is the only failure of a file that the user is told.
TEST_F(Speichern, ATextThatCannotBeWrittenIsNotToldAndTheRowIsSaved) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt/im Weg"_s, "x");
  zeige([&] {
    tippe(form().txt_BildInfo, u"Info"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().Zeile(0).ZeileGeaendert);
  });
  EXPECT_EQ(sammlung(), QStringList{u"a|Belege\\1|1|0|0"_s});
}

// ── In step ─────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Speichern, AfterADropTheValuesGoToTheRecordAtTheirPlace) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = 3;
    form().DragZiel = 1;
    form().Bild_Verschieben();
    form().Zeile(0).Beschreibung = u"von c"_s;
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

TEST_F(Speichern, ARecordThatTheHostTookOutMeanwhileIsReportedAndTheOthersKeepTheirs) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    tippe(form().txt_BildText, u"b"_s);
    klicke(form().Pic_Thumb(3));
    tippe(form().txt_BildText, u"c"_s);
    store->AktInd(1);
    store->Bild_Delete(true);
    store->FKT_SpeichernBilder();
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), (QStringList{u"False"_s, u"True"_s, u"False"_s}));
  });
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"frm_BildZuordnung"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Zuordnung_Speichern"_s);
  EXPECT_EQ(berichte[0].Nummer, fehlernummer::IndexAusserhalb);
  EXPECT_TRUE(berichte[0].MitMeldung);
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"c|Belege\\1|1|0|0"_s}));
  store->AktInd(1);
  EXPECT_EQ(store->Bild_Beschreibung(), u"c"_s);
}

TEST_F(Speichern, ANewPictureDroppedInFrontOfStoredOnesGetsTheFirstRecordAndTheyKeepTheirs) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& b) {
    b.Bild_GrafikAnbNr(u"17"_s);
    b.Bild_Grafik_Ursprung(u"Kamera"_s);
  });
  fuege_Bild_ein(u"b"_s);
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().SortTabelle = form().BildTabelle;
    form().DragQuelle = 3;
    form().DragZiel = 1;
    form().Bild_Verschieben();
    speichere();
  });
  const QString neu = u"foto"_s + Stempel;
  EXPECT_EQ(sammlung(), (QStringList{neu + u"|Belege\\1|1|1|0"_s, u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, neu + u".jpg"_s}));
  store->AktInd(1);
  EXPECT_EQ(store->Bild_GrafikAnbNr(), u"17"_s);
  EXPECT_EQ(store->Bild_Grafik_Ursprung(), u"Kamera"_s);
  store->AktInd(0);
  EXPECT_EQ(store->Bild_GrafikAnbNr(), QString());
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{neu + u"|0|<NULL>"_s, u"a|1|<NULL>"_s, u"b|2|<NULL>"_s}));
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
    meldungen.erwarte(
        meldung::nicht_umbenannt(u"P:\\Belege\\1\\b.jpg"_s), Antwort::OK, [&] { form().pBildObj.reset(); });
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), (QStringList{u"False"_s, u"True"_s, u"True"_s}));
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
  EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"Küche"_s, neu}));
  EXPECT_EQ(spalte_von(&Arbeitszeile::DateiFehlt), (QStringList{u"False"_s, u"False"_s, u"False"_s}));
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
