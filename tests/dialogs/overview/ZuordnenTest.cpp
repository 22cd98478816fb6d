#include <QFile>

#include "tests/dialogs/overview/WeitereTest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

/// Saving: every marked picture for every article of the list.
class Zuordnen : public WeitereTest {
 protected:
  /// The statements that write, of the last save.
  QStringList eingefuegt() { return anweisungen(u"insert"_s); }
  /// "Key1|Bildname|BildPfad" of the articles' rows in the order in which they were written.
  QStringList zugeordnet() {
    QStringList alle;
    for (const QStringList& z :
        db.zeilen(u"select Key1, Bildname, BildPfad from Bild_Zuordnungen where Typ1 = 'Art' order by rowid"_s))
      alle += z.join(u'|');
    return alle;
  }
  /// Shows the form, lists those articles and saves.
  void ordne_zu(const QStringList& nummern, const std::function<void()>& davor = {}) {
    zeige([&] {
      for (int i = 0; i < nummern.size(); ++i) gib_Artikel_ein(i, nummern[i]);
      if (davor) davor();
      db.mitschrift().hole();
      speichere();
      EXPECT_FALSE(form().isVisible());
    });
  }
};

TEST_F(Zuordnen, EveryMarkedPictureGoesToEveryArticleByArticleThenByPicture) {
  fuege_Bilder_ein(3);
  ordne_zu({u"4711"_s, u"500"_s}, [&] { klicke_Marke(1); });
  EXPECT_EQ(zugeordnet(),
      (QStringList{
          u"4711|a|Artikel\\Mayer"_s, u"4711|c|Artikel\\Mayer"_s, u"500|a|Artikel\\Allg"_s, u"500|c|Artikel\\Allg"_s}));
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), (QStringList{u"a.jpg"_s, u"c.jpg"_s}));
  EXPECT_EQ(dateien(u"Artikel/Allg"_s), (QStringList{u"a.jpg"_s, u"c.jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Allg/c.jpg"_s), wurzel.lies(u"Belege/1/c.jpg"_s));
}

TEST_F(Zuordnen, AllRowsAreWrittenAtTheEndInOneGo) {
  fuege_Bilder_ein(2);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    gib_Artikel_ein(1, u"500"_s);
    db.mitschrift().hole();
    speichere();
  });
  QStringList anfaenge;
  for (const QString& text : db.mitschrift().hole()) anfaenge += text.section(u' ', 0, 0).toLower();
  EXPECT_EQ(anfaenge,
      (QStringList{
          u"select"_s, u"select"_s, u"select"_s, u"select"_s, u"insert"_s, u"insert"_s, u"insert"_s, u"insert"_s}));
}

TEST_F(Zuordnen, TheNewRowCarriesTheDescriptionAndThePrintFlags) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({.beschreibung = u"Bob''s Haus"_s, .druck = u"1010"_s});
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    db.mitschrift().hole();
    speichere();
  });
  EXPECT_EQ(eingefuegt(),
      QStringList{u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
                  "Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) Values "
                  "('4711','-','-','-','a','jpg','Art','-','Artikel\\Mayer','Bob''s Haus','1010"_s +
          QString(46, u' ') + u"',NULL,'-', 0)"_s});
}

TEST_F(Zuordnen, TheQuestionComesFirstAndWithoutAYesNothingHappens) {
  fuege_Bilder_ein(1);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    db.mitschrift().hole();
    meldungen.erwarte(frage(), Antwort::Nein);
    eingaben::klicke(form().SSC_ZuordnungSpeichern);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().pNeuObj, nullptr);
    EXPECT_EQ(db.mitschrift().hole(), QStringList());
    EXPECT_FALSE(wurzel.vorhanden(u"Artikel"_s));
  });
}

TEST_F(Zuordnen, ARepeatedRunWritesNothingAndClosesAsUsual) {
  fuege_Bilder_ein(2);
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet().size(), 2);
  db.mitschrift().hole();
  zeige([&] {
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(eingefuegt(), QStringList());
  EXPECT_EQ(zugeordnet().size(), 2);
}

TEST_F(Zuordnen, OnlyTheAssignmentThatExistsIsSkipped) {
  fuege_Bilder_ein(2);
  fuege_ein({.typ1 = u"Art"_s, .key1 = u"4711"_s, .key2 = u"-"_s, .name = u"a"_s, .pfad = u"Artikel\\Mayer"_s});
  ordne_zu({u"4711"_s, u"500"_s});
  EXPECT_EQ(zugeordnet(),
      (QStringList{
          u"4711|a|Artikel\\Mayer"_s, u"4711|b|Artikel\\Mayer"_s, u"500|a|Artikel\\Allg"_s, u"500|b|Artikel\\Allg"_s}));
  // What is skipped is not copied either.
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), QStringList{u"b.jpg"_s});
}

TEST_F(Zuordnen, ArticlesOfOneSupplierShareOneCopy) {
  fuege_Bilder_ein(1);
  ordne_zu({u"4711"_s, u"4712"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a|Artikel\\Mayer"_s, u"4712|a|Artikel\\Mayer"_s}));
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Zuordnen, AFileThatLiesInTheTargetFolderIsSparedAndGetsItsRow) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Artikel/Mayer/a.jpg"_s, "die andere");
  ordne_zu({u"4711"_s});
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a.jpg"_s), "die andere");
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|a|Artikel\\Mayer"_s});
}

TEST_F(Zuordnen, APictureOfTheTargetFolderItselfGetsItsRow) {
  lege_Bild(u"a.jpg"_s, QSize(10, 10), Qt::red, u"Artikel/Mayer"_s);
  fuege_ein({.pfad = u"Artikel\\Mayer"_s});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|a|Artikel\\Mayer"_s});
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Zuordnen, TheTextOfAPictureGoesWithItsCopy) {
  fuege_Bilder_ein(1);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "Ansicht von Osten");
  ordne_zu({u"500"_s});
  EXPECT_EQ(dateien(u"Artikel/Allg"_s), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Allg/ajpg.txt"_s), "Ansicht von Osten");
}

TEST_F(Zuordnen, ATextOfTheRowIsWrittenBesideTheCopy) {
  fuege_Bilder_ein(1);
  ordne_zu({u"500"_s}, [&] { form().pZuordnungArray()->Value(0, uebersicht::Info, u"Maß"_s); });
  EXPECT_EQ(wurzel.lies(u"Artikel/Allg/ajpg.txt"_s), "Ma\xDF");
}

TEST_F(Zuordnen, ABlankSupplierCountsAsNoneAndBlanksAroundOneStay) {
  fuege_Bilder_ein(1);
  stamm.artikel[u"1"_s] = {u"x"_s, u"y"_s, u"  "_s};
  stamm.artikel[u"2"_s] = {u"x"_s, u"y"_s, u"  Otto AG "_s};
  ordne_zu({u"1"_s, u"2"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"1|a|Artikel\\Allg"_s, u"2|a|Artikel\\  Otto AG "_s}));
  // On disk a name ends before its blanks.
  EXPECT_EQ(dateien(u"Artikel/  Otto AG"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Zuordnen, APictureOfAnotherTypeOrAnotherKindOfRecordIsAnotherAssignment) {
  fuege_Bilder_ein(1);
  fuege_ein({.typ1 = u"Art"_s, .key1 = u"4711"_s, .key2 = u"-"_s, .ext = u"gif"_s, .pfad = u"von Hand"_s});
  fuege_ein({.typ1 = u"ANL"_s, .key1 = u"4711"_s, .key2 = u"-"_s, .pfad = u"von Hand"_s});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a|von Hand"_s, u"4711|a|Artikel\\Mayer"_s}));
}

TEST_F(Zuordnen, AnArticleTypedTwiceGetsEachPictureOnce) {
  fuege_Bilder_ein(2);
  ordne_zu({u"4711"_s, u"500"_s, u"4711"_s, u"ab1"_s, u"AB1"_s});
  EXPECT_EQ(zugeordnet(),
      (QStringList{u"4711|a|Artikel\\Mayer"_s, u"4711|b|Artikel\\Mayer"_s, u"500|a|Artikel\\Allg"_s,
          u"500|b|Artikel\\Allg"_s, u"ab1|a|Artikel\\Allg"_s, u"ab1|b|Artikel\\Allg"_s}));
}

TEST_F(Zuordnen, OnePictureInTwoFoldersGivesOneRow) {
  fuege_Bilder_ein(1);
  lege_Bild(u"A.jpg"_s, QSize(120, 80), Qt::blue, u"Belege/2"_s);
  fuege_ein({.name = u"A"_s, .pfad = u"Belege\\2"_s});
  ordne_zu({u"4711"_s, u"500"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a|Artikel\\Mayer"_s, u"500|a|Artikel\\Allg"_s}));
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Zuordnen, TwoPicturesOfOneNameBothArriveTheSecondUnderANumber) {
  const QByteArray blaues = lege_Bild(u"a.jpg"_s);
  fuege_ein({.beschreibung = u"blau"_s});
  const QByteArray rotes = lege_Bild(u"a.jpg"_s, QSize(120, 80), Qt::red, u"Belege/2"_s);
  fuege_ein({.pfad = u"Belege\\2"_s, .beschreibung = u"rot"_s, .druck = u"1010"_s});
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "blauer Text");
  wurzel.schreibe(u"Belege/2/ajpg.txt"_s, "roter Text");
  ordne_zu({u"4711"_s, u"4712"_s, u"4711"_s});
  EXPECT_EQ(zugeordnet(),
      (QStringList{u"4711|a|Artikel\\Mayer"_s, u"4711|a_2|Artikel\\Mayer"_s, u"4712|a|Artikel\\Mayer"_s,
          u"4712|a_2|Artikel\\Mayer"_s}));
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), (QStringList{u"a.jpg"_s, u"a_2.jpg"_s, u"a_2jpg.txt"_s, u"ajpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a.jpg"_s), blaues);
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a_2.jpg"_s), rotes);
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/ajpg.txt"_s), "blauer Text");
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a_2jpg.txt"_s), "roter Text");
  EXPECT_EQ(db.zeilen(u"select Beschreibung, Druckkennzeichen from Bild_Zuordnungen where Bildname = 'a_2'"_s).at(0),
      (QStringList{u"rot"_s, u"1010"_s + QString(46, u' ')}));
  // The same again finds all of it.
  db.mitschrift().hole();
  zeige([&] { speichere(); });
  EXPECT_EQ(eingefuegt(), QStringList());
}

TEST_F(Zuordnen, APictureThatLiesWhereAnotherOfItsNameGoesKeepsItsFileAndItsName) {
  const QByteArray blaues = lege_Bild(u"a.jpg"_s);
  fuege_ein({});
  const QByteArray rotes = lege_Bild(u"a.jpg"_s, QSize(120, 80), Qt::red, u"Artikel/Mayer"_s);
  fuege_ein({.pfad = u"Artikel\\Mayer"_s});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a_2|Artikel\\Mayer"_s, u"4711|a|Artikel\\Mayer"_s}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a.jpg"_s), rotes);
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a_2.jpg"_s), blaues);
}

TEST_F(Zuordnen, APictureThatGotItsNumberEarlierIsNotAssignedAgain) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({});
  lege_Bild(u"a.jpg"_s, QSize(120, 80), Qt::blue, u"Belege/2"_s);
  fuege_ein({.pfad = u"Belege\\2"_s});
  wurzel.schreibe(u"Artikel/Mayer/a.jpg"_s, "fremdes Bild");
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|a_2|Artikel\\Mayer"_s});
  db.mitschrift().hole();
  zeige([&] { speichere(); });
  EXPECT_EQ(eingefuegt(), QStringList());
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), (QStringList{u"a.jpg"_s, u"a_2.jpg"_s}));
}

TEST_F(Zuordnen, ANumberedNameTakesNothingFromAnotherPictureOrText) {
  const QString name(50, u'n');
  const auto gekuerzt = [&](int nummer) { return name.left(48) + u'_' + QString::number(nummer); };
  lege_Bild(name + u".jpg"_s);
  fuege_ein({.name = name});
  const QByteArray rotes = lege_Bild(name + u".jpg"_s, QSize(120, 80), Qt::red, u"Belege/2"_s);
  fuege_ein({.name = name, .pfad = u"Belege\\2"_s});
  wurzel.schreibe(u"Artikel/Mayer/"_s + gekuerzt(2) + u".jpg"_s, "fremdes Bild");
  wurzel.schreibe(u"Artikel/Mayer/"_s + gekuerzt(3) + u"jpg.txt"_s, "fremder Text");
  fuege_ein({.typ1 = u"Art"_s, .key1 = u"4711"_s, .key2 = u"-"_s, .name = gekuerzt(4), .pfad = u"von Hand"_s});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(),
      (QStringList{u"4711|%1|von Hand"_s.arg(gekuerzt(4)), u"4711|%1|Artikel\\Mayer"_s.arg(name),
          u"4711|%1|Artikel\\Mayer"_s.arg(gekuerzt(5))}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/"_s + gekuerzt(2) + u".jpg"_s), "fremdes Bild");
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/"_s + gekuerzt(3) + u"jpg.txt"_s), "fremder Text");
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/"_s + gekuerzt(5) + u".jpg"_s), rotes);
}

TEST_F(Zuordnen, ASecondPictureOfANameWhoseFileIsMissingIsNoOther) {
  fuege_Bilder_ein(1);
  fuege_ein({.pfad = u"Belege\\weg"_s});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|a|Artikel\\Mayer"_s});
}

TEST_F(Zuordnen, APictureBehindAMissingOneOfItsNameArrivesUnderANumber) {
  fuege_ein({.pfad = u"Belege\\weg"_s});
  const QByteArray da = lege_Bild(u"a.jpg"_s);
  fuege_ein({});
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a|Artikel\\Mayer"_s, u"4711|a_2|Artikel\\Mayer"_s}));
  EXPECT_EQ(wurzel.lies(u"Artikel/Mayer/a_2.jpg"_s), da);
}

TEST_F(Zuordnen, AnUnknownNumberGetsAssignments) {
  fuege_Bilder_ein(1);
  ordne_zu({u"0815"_s});
  EXPECT_EQ(zugeordnet(), QStringList{u"0815|a|Artikel\\Allg"_s});
}

TEST_F(Zuordnen, APartOfANumberIsAssignedAsItWasTyped) {
  fuege_Bilder_ein(1);
  ordne_zu({u"47"_s});
  EXPECT_EQ(zugeordnet(), QStringList{u"47|a|Artikel\\Mayer"_s});
}

TEST_F(Zuordnen, ARowWithoutANumberIsNotSkipped) {
  fuege_Bilder_ein(1);
  ordne_zu({u"4711"_s, u"500"_s}, [&] {
    klicke(artikel(), 0, artikel::Nummer);
    eingaben::taste(form(), Qt::Key_F2);
    eingaben::taste(form(), Qt::Key_Delete);
    eingaben::taste(form(), Qt::Key_Return);
    EXPECT_EQ(artikelzeilen().value(0), u"|||Mayer"_s);
  });
  EXPECT_EQ(zugeordnet(), (QStringList{u"-|a|Artikel\\Mayer"_s, u"500|a|Artikel\\Allg"_s}));
}

TEST_F(Zuordnen, TheRootOfTheRowsIsTheFormsFromThenOn) {
  fuege_Bilder_ein(1);
  form().pRootpath = u"P:\\Neu"_s;
  wurzel.schreibe(u"Neu/Belege/1/a.jpg"_s, "neu");
  ordne_zu({u"500"_s, u"4711"_s});
  EXPECT_EQ(form().pRootpath, u"P:"_s);
  EXPECT_EQ(wurzel.lies(u"Neu/Artikel/Allg/a.jpg"_s), "neu");
  EXPECT_TRUE(wurzel.vorhanden(u"Artikel/Mayer/a.jpg"_s));
}

TEST_F(Zuordnen, ACopyThatFailsGoesUnnoticedAndTheRowIsWritten) {
  fuege_Bilder_ein(2);
  form();
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"Belege/1/a.jpg"_s)));
  ordne_zu({u"4711"_s});
  EXPECT_EQ(zugeordnet(), (QStringList{u"4711|a|Artikel\\Mayer"_s, u"4711|b|Artikel\\Mayer"_s}));
  EXPECT_EQ(dateien(u"Artikel/Mayer"_s), QStringList{u"b.jpg"_s});
}

TEST_F(Zuordnen, AFailureInTheMiddleWritesNoRowAndKeepsTheDialogOpen) {
  fuege_Bilder_ein(2);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    gib_Artikel_ein(1, u"500"_s);
    form().pZuordnungArray()->Value(1, uebersicht::Drucken, u"vielleicht"_s);
    db.mitschrift().hole();
    speichere();
    erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"SSC_ZuordnungSpeichern_Click"_s, fehlernummer::TypenUnvertraeglich);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(eingefuegt(), QStringList());
    EXPECT_EQ(zugeordnet(), QStringList());
    // Folders and files made so far stay.
    EXPECT_EQ(dateien(u"Artikel/Mayer"_s), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
    EXPECT_FALSE(wurzel.vorhanden(u"Artikel/Allg"_s));
  });
}

TEST_F(Zuordnen, AStatementThatFailsIsToldAndTheOthersAreWritten) {
  fuege_Bilder_ein(2);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    // Two questions, then the first row.
    db.mitschrift().scheitere_am(3);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  erwarte_Bericht(u"basZuordnungen"_s, u"CmdSql"_s, fehlernummer::Anweisung);
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|b|Artikel\\Mayer"_s});
}

TEST_F(Zuordnen, AnExistingAssignmentThatCannotBeAskedForIsMadeAgain) {
  fuege_Bilder_ein(1);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    db.mitschrift().scheitere_am_naechsten();
    speichere();
  });
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_BilderVorhanden"_s, fehlernummer::Anweisung);
  EXPECT_EQ(zugeordnet(), QStringList{u"4711|a|Artikel\\Mayer"_s});
}

TEST_F(Zuordnen, AHostThatHidesTheFormWhileItAsksStillSaves) {
  fuege_Bilder_ein(1);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    speichere([&] { form().Hide(); });
  });
  EXPECT_EQ(zugeordnet().size(), 1);
}

TEST_F(Zuordnen, AFormUnloadedWhileItAsksSavesNothing) {
  fuege_Bilder_ein(1);
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    speichere([&] { form().Unload(); });
  });
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"SSC_ZuordnungSpeichern_Click"_s, fehlernummer::ObjektNichtGesetzt);
  EXPECT_EQ(zugeordnet(), QStringList());
}

TEST_F(Zuordnen, TheCallersCollectionAndItsRowsStayAsTheyWere) {
  fuege_Bilder_ein(2);
  const QStringList vorher = gespeichert();
  ordne_zu({u"4711"_s});
  EXPECT_EQ(gespeichert().mid(0, 2), vorher);
  for (int i = 0; i < 2; ++i) {
    store->AktInd(i);
    EXPECT_FALSE(store->Bild_Changeflag());
    EXPECT_EQ(store->Bild_Key1(), u"RE"_s);
  }
}

TEST_F(Zuordnen, SeveralPicturesTimesSeveralArticlesTakeOneQuestionAndOneStatementEach) {
  fuege_Bilder_ein(10);
  zeige([&] {
    for (int j = 0; j < 6; ++j) gib_Artikel_ein(j, QString::number(1000 + j));
    db.mitschrift().hole();
    speichere();
  });
  EXPECT_EQ(db.mitschrift().hole().size(), 2 * 10 * 6);
  const QStringList alle = zugeordnet();
  ASSERT_EQ(alle.size(), 60);
  for (int i = 0; i < 60; ++i)
    EXPECT_EQ(alle[i], u"%1|%2|Artikel\\Allg"_s.arg(1000 + i / 10).arg(QChar(u'a' + i % 10)));
  EXPECT_EQ(dateien(u"Artikel/Allg"_s).size(), 10);
}
