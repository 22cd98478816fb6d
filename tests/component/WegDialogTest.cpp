// Before the dialog opens, and when it closes without having saved.
#include "tests/component/Wegtest.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WegDialog : public Wegtest {
 protected:
  /// The dialog closes with one changed picture that it did not save.
  static void schliesse_ungespeichert(clsBildZuordnungen& bilder) {
    Dialogspur& spur = lege_Spur(bilder);
    spur.ungespeichert = true;
    spur.stand = std::make_shared<Dialogstand>();
    spur.stand->betroffene = {u"b.jpg"_s};
  }
  static Meldung nicht_gespeichert() {
    return {
        u"Der Dialog ist geschlossen, aber nicht alles ist gespeichert: „b.jpg“.\r\n\r\nDen Dialog mit diesen "
        "Änderungen noch einmal öffnen?"_s,
        u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::JaNein};
  }
};

}  // namespace

TEST_F(WegDialog, UnsavedChangesOpenTheDialogAgainWithThem) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  meldungen.erwarte(nicht_gespeichert(), Antwort::Ja);
  bool mit_Stand = false;
  const Ergebnis ergebnis = gehe({schliesse_ungespeichert, [&](clsBildZuordnungen& bilder) {
                                    const auto spur = Sammlungszugriff::spur(bilder);
                                    mit_Stand = spur && spur->stand;
                                    aendere(bilder, 1, u"neu"_s);
                                    lege_Spur(bilder);
                                  }});
  EXPECT_EQ(geoeffnet, 2);
  EXPECT_TRUE(mit_Stand);
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|T|0"_s, u"b|Belege\\1|neu|1"_s}));
  EXPECT_TRUE(ergebnis.vollstaendig());
}

TEST_F(WegDialog, UnsavedChangesThatTheUserGivesUpAreInTheResult) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  meldungen.erwarte(nicht_gespeichert(), Antwort::Nein);
  const Ergebnis ergebnis = gehe([](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"doch"_s);
    schliesse_ungespeichert(bilder);
  });
  EXPECT_EQ(geoeffnet, 1);
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|doch|0"_s, u"b|Belege\\1|T|1"_s}))
      << "what was saved before is written";
  EXPECT_EQ(ergebnis.nicht_geschrieben, 1);
  EXPECT_EQ(ergebnis.bilder.back().name, u"b.jpg"_s);
  EXPECT_EQ(ergebnis.bilder.back().verbleib, Verbleib::Nicht_gespeichert);
}

TEST_F(WegDialog, AnOrderThatWasNotSavedIsToldWithoutNames) {
  gespeichert(u"a"_s, 0);
  meldungen.erwarte({u"Der Dialog ist geschlossen, aber Ihre Änderungen sind nicht gespeichert.\r\n\r\nDen Dialog mit "
                     "diesen Änderungen noch einmal öffnen?"_s,
                        u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::JaNein},
      Antwort::Nein);
  EXPECT_EQ(gehe([](clsBildZuordnungen& bilder) {
    schliesse_ungespeichert(bilder);
    Sammlungszugriff::spur(bilder)->stand->betroffene.clear();
  }).nicht_geschrieben,
      1);
}

TEST_F(WegDialog, AKeyWithAnApostropheOrTooLongIsRefusedBeforeAnythingIsSent) {
  db.mitschrift().hole();
  Zuordnungsweg weg(std::make_shared<Betrieb>(db), u"P:"_s, [](const auto&...) {
    ADD_FAILURE() << "the dialog opened";
    return true;
  });
  Zuordnungsweg::Vorgang mit_Hochkomma = vorgang();
  mit_Hochkomma.Key2 = u"24'1"_s;
  meldungen.erwarte({u"Die Nummer „AB 24'1“ enthält ein Hochkomma; solchen Vorgängen sind keine Bilder zuzuordnen."_s,
      u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_FALSE(weg.gehe(mit_Hochkomma).geoeffnet);
  Zuordnungsweg::Vorgang lang = vorgang();
  lang.Key2 = QString(51, u'7');
  meldungen.erwarte(
      {u"Ein Teil der Nummer „AB %1“ ist länger als 50 Zeichen; solchen Vorgängen sind keine Bilder "
       "zuzuordnen."_s.arg(lang.Key2),
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_FALSE(weg.gehe(lang).geoeffnet);
  EXPECT_TRUE(db.mitschrift().hole().isEmpty());
}

TEST_F(WegDialog, AMissingRootAndAReadThatFailsAreToldAndNothingOpens) {
  gespeichert(u"a"_s, 0);
  const auto nie = [](const auto&...) {
    ADD_FAILURE() << "the dialog opened";
    return true;
  };
  meldungen.erwarte(
      {u"Die Bildablage „P:\\fehlt“ ist nicht zu erreichen.\r\n\r\nDer Dialog wird nicht geöffnet, weil er "
       "alle Bilder zum Entfernen vormerken würde."_s,
          u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_EQ(Zuordnungsweg(std::make_shared<Betrieb>(db), u"P:\\fehlt"_s, nie).gehe(vorgang()).text(),
      u"Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s);
  db.mitschrift().scheitere_immer();
  meldungen.erwarte(
      {u"Die Zuordnungen sind nicht zu lesen: "_s + Verweigert, u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_FALSE(Zuordnungsweg(std::make_shared<Betrieb>(db), u"P:"_s, nie).gehe(vorgang()).geoeffnet);
}

TEST_F(WegDialog, RowsThatLeadOutOfTheRootAreNotGivenToTheDialogAndStay) {
  gespeichert(u"a"_s, 0);
  for (const QString& ordner : {u"..\\draussen"_s, u"\\Belege\\1"_s, u"C:\\Belege"_s, u"\\\\server\\freigabe"_s})
    db.fuehre_aus(
        u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
        u"Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) "
        u"Values ('AB','1','-','-','fremd','jpg','BEL','-','%1','T','0001',NULL,'-',9)"_s.arg(ordner));
  gespeichert(u"b"_s, 1);
  const QStringList vorher = zeilen();
  int gezeigte = 0;
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    gezeigte = bilder.AnzahlPos();
    aendere(bilder, 0, u"neu"_s);
    lege_Spur(bilder);
  });
  EXPECT_EQ(gezeigte, 2);
  EXPECT_EQ(ergebnis.ausserhalb, 4);
  EXPECT_EQ(ergebnis.geaendert, 1);
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_TRUE(ergebnis.text().endsWith(u"Außerhalb der Bildablage und darum nicht geöffnet: 4 Bilder."_s))
      << ergebnis.text().toStdString();
  QStringList nachher = vorher;
  nachher.replaceInStrings(u"a|Belege\\1|T|0"_s, u"a|Belege\\1|neu|0"_s);
  EXPECT_EQ(zeilen(), nachher);
}
