// Pictures and their text files on the road of a host: copies that failed, names that could not be given.
#include <QDir>

#include "tests/component/Wegtest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

class WegDateien : public Wegtest {
 protected:
  static Dateischritt gescheitert(const QString& grund) { return {Dateischritt::Stand::Gescheitert, grund}; }
  /// The row `zeile` was renamed in the dialog from `alt`; its file and record have the new name.
  static Bildspur& benenne_um(clsBildZuordnungen& bilder, std::int32_t zeile, const QString& neu) {
    bilder.AktInd(zeile);
    const QString alt = bilder.Bild_Bildname();
    bilder.Bild_Bildname(neu);
    bilder.Bild_SortIndex(zeile);
    bilder.Bild_Changeflag(true);
    Bildspur& spur = lege_Spur(bilder).bilder[static_cast<std::size_t>(zeile)];
    spur.fruehere.push_back({alt, u"Belege\\1"_s});
    spur.umbenennung.stand = Dateischritt::Stand::Getan;
    return spur;
  }
  void benenne_Datei_um(const QString& alt, const QString& neu) {
    EXPECT_TRUE(QFile::rename(wurzel.pfad(datei(alt)), wurzel.pfad(datei(neu))));
  }
};

const QString Nicht_kopiert = u"Die Datei ist nicht kopiert: "_s;

}  // namespace

TEST_F(WegDateien, ACopyThatFailedIsMadeAgainWithItsTextAndItsRow) {
  gespeichert(u"a"_s, 0);
  erwarte_Frage(u"1 von 1"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Der Datenträger ist voll"_s, Antwort::Ja,
      [&] { EXPECT_EQ(zeilen().size(), 1) << "no row without its file"; });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    Bildspur& spur = lege_Spur_ohne_Datei(lege_Spur(bilder), u"foto20240101_000000"_s, u"P:\\Eingang\\foto.jpg"_s);
    spur.ohne_Datei->Bild_Beschreibung = u"Bob's"_s;
    spur.bildinfo = u"Kessel"_s;
    wurzel.schreibe(u"Eingang/foto.jpg"_s, "inhalt");
    spur.groesse = 6;
  });
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|T|0"_s, u"foto20240101_000000|Belege\\1|Bob's|1"_s}));
  EXPECT_EQ(wurzel.lies(datei(u"foto20240101_000000"_s)), "inhalt");
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto20240101_000000jpg.txt"_s), "Kessel");
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_EQ(ergebnis.neu, 1);
}

TEST_F(WegDateien, ACopyThatFailsAgainSaysWhyAndIsNeverCalledSaved) {
  erwarte_Frage(u"1 von 1"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Der Datenträger ist voll"_s, Antwort::Ja);
  erwarte_Frage(u"1 von 1"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Datei nicht gefunden"_s, Antwort::Nein);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    lege_Spur_ohne_Datei(lege_Spur(bilder), u"foto20240101_000000"_s, u"P:\\Eingang\\foto.jpg"_s);
  });
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_EQ(ergebnis.text(), u"NICHT gespeichert: 1 Bild; diese Änderungen sind verloren."_s);
  EXPECT_EQ(ergebnis.bilder[0].verbleib, Verbleib::Nicht_kopiert);
  EXPECT_EQ(ergebnis.bilder[0].name, u"foto.jpg"_s);
}

TEST_F(WegDateien, PicturesBehindOneThatWasNotCopiedKeepTheirPlaces) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  erwarte_Frage(u"1 von 2"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Der Datenträger ist voll"_s, Antwort::Ja);
  gehe([&](clsBildZuordnungen& bilder) {
    // Dragged between the two.
    Dialogspur& spur = lege_Spur(bilder);
    lege_Spur_ohne_Datei(spur, u"foto"_s, u"P:\\Eingang\\foto.jpg"_s).ohne_Datei->Bild_SortIndex = 1;
    std::swap(spur.bilder[1], spur.bilder[2]);
    wurzel.schreibe(u"Eingang/foto.jpg"_s, "inhalt");
  });
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|T|0"_s, u"foto|Belege\\1|<NULL>|1"_s, u"b|Belege\\1|T|2"_s}));
}

TEST_F(WegDateien, ANewRowWhoseFileIsNotThereIsNotWrittenUntilItIs) {
  const QString zeile = u"„neu.jpg“: Die Datei ist nicht in der Bildablage angekommen."_s;
  erwarte_Frage(u"1 von 1"_s, zeile, Antwort::Ja);
  erwarte_Frage(u"1 von 1"_s, zeile, Antwort::Ja, [&] {
    EXPECT_TRUE(zeilen().isEmpty());
    wurzel.schreibe(datei(u"neu"_s), "bild");
  });
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) { neues(bilder, u"neu"_s, false); }).neu, 1);
  EXPECT_EQ(zeilen().size(), 1);
}

TEST_F(WegDateien, ACopyOfAnotherSizeThanItsSourceIsTold) {
  erwarte_Hinweis(
      u"„neu.jpg“: Die Datei in der Bildablage hat 4 statt 9 Bytes. Sehen Sie das Bild an; stimmt es nicht, entfernen "
      "Sie es und hängen Sie es neu an."_s);
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    neues(bilder, u"neu"_s);
    Bildspur& spur = lege_Spur(bilder).bilder[0];
    spur.quelle = u"P:\\Eingang\\neu.jpg"_s;
    spur.groesse = 9;
  }).neu,
      1);
}

TEST_F(WegDateien, ANameThatIsTakenIsToldAndTheOtherEditsOfTheRowAreKept) {
  gespeichert(u"a"_s, 0);
  erwarte_Hinweis(
      u"„a.jpg“: Das Bild behält seinen Namen, „b“ bekommt es nicht: Datei existiert bereits. Alles andere daran ist "
      "davon unberührt; wählen Sie einen anderen Namen."_s);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    Bildspur& spur = lege_Spur(bilder).bilder[0];
    spur.abgelehnter_Name = u"b"_s;
    spur.umbenennung = gescheitert(u"Datei existiert bereits"_s);
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s});
}

TEST_F(WegDateien, ANameThatTheDialogHasRefusedWithItsOwnBoxIsNotToldTwice) {
  gespeichert(u"a"_s, 0);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    Bildspur& spur = lege_Spur(bilder).bilder[0];
    spur.abgelehnter_Name = u"b"_s;
    spur.umbenennung = gescheitert({});
  });
  EXPECT_TRUE(ergebnis.bilder[0].hinweis.startsWith(u"Das Bild behält seinen Namen, „b“ bekommt es nicht."_s));
}

TEST_F(WegDateien, ARenameThatTheTableMissedIsCarriedAfterInEveryRecord) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0, u"Belege\\1"_s, u"RE"_s);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    benenne_um(bilder, 0, u"neu"_s).umbenennung = gescheitert(Verweigert);
    bilder.Bild_Beschreibung(u"anders"_s);
    benenne_Datei_um(u"a"_s, u"neu"_s);
  });
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|anders|0"_s});
  EXPECT_EQ(zeilen(u"Key1 = 'RE'"_s), QStringList{u"neu|Belege\\1|T|0"_s});
  EXPECT_EQ(ergebnis.geaendert, 1);
  EXPECT_EQ(ergebnis.bilder[0].hinweis, u"Der neue Name fehlte in der Tabelle und ist nachgetragen."_s);
}

TEST_F(WegDateien, ARenameThatNobodyReportedIsFoundByTheMissingRow) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0, u"Belege\\1"_s, u"RE"_s);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    benenne_um(bilder, 0, u"neu"_s);
    bilder.Bild_Beschreibung(u"anders"_s);
    benenne_Datei_um(u"a"_s, u"neu"_s);
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|anders|0"_s});
  EXPECT_EQ(zeilen(u"Key1 = 'RE'"_s), QStringList{u"neu|Belege\\1|T|0"_s});
}

TEST_F(WegDateien, WhereTheFileKeptItsNameTheTableFollowsIt) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0, u"Belege\\1"_s, u"RE"_s);
  erwarte_Hinweis(
      u"„a.jpg“: Das Bild heißt weiter so, weil seine Datei nicht „neu.jpg“ heißt; die Tabelle hat wieder "
      "diesen Namen."_s);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    benenne_um(bilder, 0, u"neu"_s).umbenennung = gescheitert(Verweigert);
    bilder.Bild_Beschreibung(u"anders"_s);
    db.fuehre_aus(u"update Bild_Zuordnungen set Bildname = 'neu'"_s);
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|anders|0"_s});
  EXPECT_EQ(zeilen(u"Key1 = 'RE'"_s), QStringList{u"a|Belege\\1|T|0"_s});
}

TEST_F(WegDateien, APictureThatHasTheOldNameByNowKeepsItInTheOtherRecords) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0, u"Belege\\1"_s, u"RE"_s);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    benenne_um(bilder, 0, u"neu"_s).umbenennung = gescheitert(Verweigert);
    wurzel.schreibe(datei(u"neu"_s), "bild");
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|T|0"_s});
  EXPECT_EQ(zeilen(u"Key1 = 'RE'"_s), QStringList{u"a|Belege\\1|T|0"_s});
}

TEST_F(WegDateien, ATextFileThatFailedIsWrittenAgain) {
  gespeichert(u"a"_s, 0);
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: Der Infotext ist nicht geschrieben: Zugriff verweigert"_s, Antwort::Ja);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    Bildspur& spur = lege_Spur(bilder).bilder[0];
    spur.bildinfo = u"Kessel"_s;
    spur.text = gescheitert(u"Zugriff verweigert"_s);
  }).vollstaendig());
  EXPECT_EQ(wurzel.lies(u"Belege/1/ajpg.txt"_s), "Kessel");
}

TEST_F(WegDateien, ATextFileThatCanNotBeWrittenIsNotCalledSaved) {
  gespeichert(u"a"_s, 0);
  wurzel.schreibe(u"Belege/1/ajpg.txt/ordner"_s, "x");
  const QString ende = u"„P:\\Belege\\1\\ajpg.txt“ ist nicht zu schreiben"_s;
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: Der Infotext ist nicht geschrieben: Zugriff verweigert"_s, Antwort::Ja);
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: Der Infotext ist nicht geschrieben: "_s + ende, Antwort::Nein);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    Bildspur& spur = lege_Spur(bilder).bilder[0];
    spur.bildinfo = u"Kessel"_s;
    spur.text = gescheitert(u"Zugriff verweigert"_s);
  });
  EXPECT_EQ(ergebnis.nicht_geschrieben, 1);
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s}) << "the row is written all the same";
}

TEST_F(WegDateien, AForeignFileUnderTheNameIsNotTakenForTheCopy) {
  erwarte_Frage(u"1 von 1"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Der Datenträger ist voll"_s, Antwort::Ja);
  erwarte_Frage(u"1 von 1"_s, u"„foto.jpg“: "_s + Nicht_kopiert + u"Datei existiert bereits"_s, Antwort::Nein);
  gehe([&](clsBildZuordnungen& bilder) {
    lege_Spur_ohne_Datei(lege_Spur(bilder), u"foto1"_s, u"P:\\Eingang\\foto.jpg"_s).groesse = 6;
    wurzel.schreibe(u"Eingang/foto.jpg"_s, "inhalt");
    wurzel.schreibe(datei(u"foto1"_s), "fremd");
  });
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_EQ(wurzel.lies(datei(u"foto1"_s)), "fremd");
}

TEST_F(WegDateien, AFileThatWentMeanwhileIsToldAndOneThatWasMissingBeforeIsNot) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  gespeichert(u"c"_s, 2);
  EXPECT_TRUE(QFile::remove(wurzel.pfad(datei(u"b"_s))));
  erwarte_Hinweis(
      u"„a.jpg“: Die Datei ist nicht mehr in der Bildablage. Legen Sie sie zurück, oder entfernen Sie das Bild aus dem "
      "Vorgang."_s);
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    aendere(bilder, 1, u"neu"_s);
    EXPECT_TRUE(QFile::remove(wurzel.pfad(datei(u"a"_s))));
  }).geaendert,
      2);
}
