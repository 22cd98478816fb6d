#include <QTest>

#include "store/Sammlungszugriff.h"
#include "tests/dialogs/assignment/Speichertest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

using Umbenennen = Speichertest;

TEST_F(Umbenennen, YesRenamesTheFileAndAllAssignmentsOfThePicture) {
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

TEST_F(Umbenennen, YesRenamesInThePicturesOwnFolder) {
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

// The folder has the name already: file, table, text and record keep the old one, and the other picture keeps its text.
TEST_F(Umbenennen, ARenamingThatFailsAfterYesIsNotToldHereAndKeepsTheOldName) {
  fuege_Bilder_ein(1);
  lege_Bild(u"da.jpg"_s);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "Info von a");
  wurzel.schreibe(u"Belege/1/dajpg.txt"_s, "Info von da");
  zeige([&] {
    benenne(1, u"da"_s);
    tippe(form().txt_BildText, u"x"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Ja);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s, u"da.jpg"_s, u"dajpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), "Info von a");
  EXPECT_EQ(wurzel.lies(u"Belege/1/dajpg.txt"_s), "Info von da");
  EXPECT_EQ(sammlung(), QStringList{u"a|Belege\\1|1|0|0"_s});
  const Bildspur& bild = Sammlungszugriff::spur(*store)->bilder.front();
  EXPECT_EQ(bild.abgelehnter_Name, u"da"_s);
  EXPECT_TRUE(bild.umbenennung.gescheitert());
  EXPECT_FALSE(bild.umbenennung.grund.isEmpty());
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), QStringList{u"a|0|x"_s});
}

TEST_F(Umbenennen, NoTakesTheRenamingBackAndGoesOnSaving) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"neu"_s);
    tippe(form().txt_BildText, u"Text"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_EQ(form().Zeile(0).Bildname, u"a"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|Text"_s, u"b|1|<NULL>"_s}));
}

TEST_F(Umbenennen, NoTakesBackTheFirstRenamedRowOnlyAndTheSecondIsRenamed) {
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

TEST_F(Umbenennen, ThatSecondRowMovesIntoTheStandardFolderWithItsPath) {
  fuege_Bild_ein(u"a"_s);
  fuege_Bild_ein(u"b"_s, u"jpg"_s, false, [](clsBildZuordnungen& b) { b.Bild_Pfad(u"Belege\\2"_s); });
  lege_Bild(u"b.jpg"_s, QSize(60, 40), Qt::red, u"Belege/2"_s);
  zeige([&] {
    benenne(1, u"ax"_s);
    benenne(2, u"bx"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    speichere();
    EXPECT_EQ(form().Zeile(1).Pfad, u"Belege\\1"_s);
    EXPECT_EQ(form().Zeile(1).VollerPfad, u"P:\\Belege\\2\\b.jpg"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"bx.jpg"_s}));
  EXPECT_EQ(dateien(u"Belege/2"_s), QStringList());
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"bx|Belege\\1|1|0|0"_s}));
}

TEST_F(Umbenennen, ARenamingThatFailsIsToldAndTheRowKeepsItsOldName) {
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
    EXPECT_EQ(form().Zeile(1).Bildname, u"b"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"da.jpg"_s}));
  wirt_schreibt();
  EXPECT_EQ(gespeichert(), (QStringList{u"a|0|<NULL>"_s, u"b|1|Text"_s}));
}

// Whoever ends while the statement runs: picture and text are there by the name of the row, whichever it has.
TEST_F(Umbenennen, PictureAndTextHaveBothNamesWhileTheRowsAreChanged) {
  const auto dateien_waehrend = [&](Antwort antwort) {
    QStringList dabei;
    db.mitschrift().bei_jedem([&](const QString& anweisung) {
      if (dabei.isEmpty() && anweisung.startsWith(u"update"_s, Qt::CaseInsensitive)) dabei = dateien();
    });
    zeige([&] {
      benenne(1, u"ax"_s);
      benenne(2, u"bx"_s);
      meldungen.erwarte(meldung::umbenannt(), antwort);
      speichere();
    });
    db.mitschrift().bei_jedem({});
    return dabei;
  };
  fuege_Bilder_ein(2);
  for (const QString& name : {u"a"_s, u"b"_s}) wurzel.schreibe(u"Belege/1/"_s + name + u"jpg.txt"_s, "Info");
  // The first of both takes its name back.
  EXPECT_EQ(dateien_waehrend(Antwort::Nein),
      (QStringList{u"a.jpg"_s, u"ajpg.txt"_s, u"b.jpg"_s, u"bjpg.txt"_s, u"bx.jpg"_s, u"bxjpg.txt"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s, u"bx.jpg"_s, u"bxjpg.txt"_s}));
  wirt_schreibt();
  schliesse();
  EXPECT_EQ(dateien_waehrend(Antwort::Ja),
      (QStringList{u"a.jpg"_s, u"ajpg.txt"_s, u"ax.jpg"_s, u"axjpg.txt"_s, u"bx.jpg"_s, u"bxjpg.txt"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"ax.jpg"_s, u"axjpg.txt"_s, u"bx.jpg"_s, u"bxjpg.txt"_s}));
}

TEST_F(Umbenennen, WhereTheTableDoesNotTakeTheNamePictureAndTextKeepTheOldOne) {
  fuege_Bilder_ein(2);
  for (const QString& name : {u"a"_s, u"b"_s}) wurzel.schreibe(u"Belege/1/"_s + name + u"jpg.txt"_s, "Info");
  const QStringList vorher = dateien();
  db.mitschrift().scheitere_bei_Beginn(u"update bild_zuordnungen set bildname"_s);
  zeige([&] {
    benenne(1, u"ax"_s);
    benenne(2, u"bx"_s);
    meldungen.erwarte(meldung::umbenannt(), Antwort::Nein);
    meldungen.erwarte(meldung::nicht_umbenannt(u"P:\\Belege\\1\\b.jpg"_s));
    speichere();
  });
  EXPECT_EQ(dateien(), vorher);
  db.mitschrift().heile();
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|1|0|0"_s, u"b|Belege\\1|1|0|0"_s}));
}

TEST_F(Umbenennen, CancelLeavesTableFilesAndFlagsAndEndsTheDialog) {
  fuege_Bilder_ein(2);
  zeige([&] {
    benenne(1, u"neu"_s);
    nimm_auf(u"foto"_s);
    const Arbeitstabelle vorher = *form().BildTabelle;
    meldungen.erwarte(meldung::umbenannt(), Antwort::Abbrechen);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_TRUE(std::equal(vorher.begin(), vorher.end(), form().BildTabelle->begin(), form().BildTabelle->end()));
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(sammlung(), (QStringList{u"a|Belege\\1|0|0|0"_s, u"b|Belege\\1|0|0|0"_s}));
}

TEST_F(Umbenennen, ANameBackAtItsOriginalIsNotAskedAbout) {
  fuege_Bilder_ein(1);
  zeige([&] {
    benenne(1, u"neu"_s);
    klicke(form().cmd_OriginalName);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
}

TEST_F(Umbenennen, OnlyStoredRowsThatStayCountAsRenamed) {
  fuege_Bilder_ein(2);
  form().Zeile(1).NameGeaendert = true;
  bool einer = false;
  bool alle = false;
  const auto frage = [&] {
    form().Pruefe_NameGeaendert(einer);
    form().Pruefe_NameGeaendertAlle(alle);
  };
  frage();
  EXPECT_TRUE(einer && alle);
  form().Zeile(1).NeuAusSuche = true;
  frage();
  EXPECT_FALSE(einer);
  EXPECT_TRUE(alle);
  form().Zeile(1).Entfernen = true;
  frage();
  EXPECT_FALSE(alle);
}

TEST_F(Umbenennen, ARenamingIsTakenBackOfTheGivenRow) {
  fuege_Bilder_ein(3);
  for (const std::int32_t i : {1, 2}) {
    form().Zeile(i).OriginalName = form().Zeile(i).Bildname;
    form().Zeile(i).Bildname = u"x"_s;
    form().Zeile(i).NameGeaendert = true;
  }
  form().Namen_Zuruecksetzen(2);
  EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"x"_s, u"c"_s}));
  form().Namen_Zuruecksetzen(-1);
  EXPECT_EQ(spalte_von(&Arbeitszeile::Bildname), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}
