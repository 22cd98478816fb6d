#include <QDate>
#include <QFile>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgang/Zuordnungslauf.h"
#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

class WirtLauf : public Wirt {
 protected:
  static constexpr const char* Ordner = "/bilder/Belege/24-1001/";
  void TearDown() override { QFile::remove(datenordner() + QLatin1StringView(Ordner) + u"Neu.jpg"_s); }
  Laufergebnis gehe(const Vorgang& vorgang, bool nur_Anzeige = false) { return gehe(vorgang, nur_Anzeige, optionen()); }
  Laufergebnis gehe(const Vorgang& vorgang, bool nur_Anzeige, const Wirtsoptionen& mit) {
    Arbeitsplatz platz(mit);
    platz.oeffne();
    return Zuordnungslauf(platz, dialog()).gehe(vorgang, nur_Anzeige);
  }
  static Vorgang auftrag() {
    Vorgang v = vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24-1001"_s);
    v.betreff = u"Bäckerei Huber"_s;
    return v;
  }
  static Vorgang montage() { return vorgang::aus_Schluesseln(u"MON"_s, u"AB"_s, u"24-1001"_s, u"1"_s); }
  /// What the dialog leaves of a new picture: its file, and a row with blank keys.
  static void neues_Bild(clsBildZuordnungen& store, const QString& name, const QString& typ1, const QString& typ2) {
    store.FKT_NeuesBild({}, {}, {}, {}, name, u"jpg"_s, typ1, typ2);
    store.Bild_Pfad(u"Belege\\24-1001"_s);
    store.Bild_SortIndex(store.AnzahlPos() - 1);
    QFile datei(datenordner() + QLatin1StringView(Ordner) + name + u".jpg"_s);
    EXPECT_TRUE(datei.open(QIODevice::WriteOnly) && datei.write("bild") == 4);
  }
  static void aendere(clsBildZuordnungen& store, std::int32_t zeile, const QString& text) {
    store.AktInd(zeile);
    store.Bild_Beschreibung(text);
    store.Bild_SortIndex(zeile);
    store.Bild_Changeflag(true);
  }
  static QStringList reihenfolge(const QString& key3 = u"-"_s) {
    return werte(
        u"Select Bildname from Bild_Zuordnungen where Key1 = 'AB' and Key2 = '24-1001' and Key3 = '%1' "
        "order by SortIndex, Bildname"_s.arg(key3));
  }
};

TEST_F(WirtLauf, TheDialogGetsTheRecordWithItsPictures) {
  gehe(auftrag());
  ASSERT_EQ(aufrufe_.size(), 1);
  const Dialogaufruf& aufruf = aufrufe_.first();
  EXPECT_EQ(aufruf.wurzel, u"P:"_s);
  EXPECT_EQ(aufruf.ordner, u"Belege\\24-1001"_s);
  EXPECT_EQ(aufruf.typ1, u"BEL"_s);
  EXPECT_EQ(aufruf.info, u"Beleg AB 24-1001 – Bäckerei Huber"_s);
  EXPECT_EQ(aufruf.datum, QDate::currentDate().toString(u"yyyyMMdd"_s));
  EXPECT_EQ(aufruf.bilder, 4);
  EXPECT_FALSE(aufruf.nur_Anzeige);
  EXPECT_FALSE(aufruf.nur_Anhang);
  EXPECT_TRUE(aufruf.mit_Anwendung);
}

TEST_F(WirtLauf, EveryKindHasItsPictureFolder) {
  EXPECT_EQ(vorgang::bildordner(auftrag()), u"Belege\\24-1001"_s);
  EXPECT_EQ(vorgang::bildordner(montage()), u"Montage\\24-1001"_s);
  EXPECT_EQ(vorgang::bildordner(vorgang::aus_Schluesseln(u"ART"_s, u"WP/9"_s)), u"Artikel\\Allg"_s);
  EXPECT_EQ(vorgang::bildordner(vorgang::aus_Schluesseln(u"ANL"_s, u"10002"_s, u"Solar"_s)), u"Anlagen\\10002"_s);
  EXPECT_EQ(vorgang::bildordner(vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24/10:01. "_s)), u"Belege\\24_10_01"_s);
  EXPECT_EQ(vorgang::bildordner(vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s)), u"Belege\\Allg"_s);
}

TEST_F(WirtLauf, NewRowsGetAllFourKeysOfTheRecord) {
  im_Dialog_ = [](clsBildZuordnungen& store) { neues_Bild(store, u"Neu"_s, u"MON"_s, u"-"_s); };
  const Laufergebnis ergebnis = gehe(montage());
  EXPECT_EQ(ergebnis.neu, 1);
  EXPECT_EQ(werte(u"Select Key1 || '|' || Key2 || '|' || Key3 || '|' || key4 || '|' || Typ1 || '|' || Typ2 "
                  "from Bild_Zuordnungen where Bildname = 'Neu'"_s),
      QStringList{u"AB|24-1001|1|-|MON|-"_s});
}

TEST_F(WirtLauf, NewIsWhatItsFlagSaysWhereverItStands) {
  im_Dialog_ = [](clsBildZuordnungen& store) {
    // A row that stood there before changes places with the new one.
    neues_Bild(store, u"Neu"_s, u"BEL"_s, u"-"_s);
    const auto neuer = store.AktBildObj;
    store.AktInd(0);
    std::swap(*neuer, *store.AktBildObj);
    store.Bild_Neu(true);
    store.Bild_Changeflag(true);
    store.Bild_SortIndex(0);
    store.AktInd(store.AnzahlPos() - 1);
    store.Bild_Neu(false);
    store.Bild_SortIndex(4);
  };
  const Laufergebnis ergebnis = gehe(auftrag());
  EXPECT_EQ(ergebnis.neu, 1);
  EXPECT_EQ(werte(u"Select Key1 || '|' || Key2 || '|' || Key3 from Bild_Zuordnungen where Bildname = 'Neu'"_s),
      QStringList{u"AB|24-1001|-"_s});
  EXPECT_EQ(reihenfolge().size(), 5);
}

TEST_F(WirtLauf, APartWithoutAValueBecomesADash) {
  im_Dialog_ = [](clsBildZuordnungen& store) { neues_Bild(store, u"Neu"_s, u"ART"_s, u"-"_s); };
  gehe(vorgang::aus_Schluesseln(u"ART"_s, u"TH-0110"_s));
  EXPECT_EQ(werte(u"Select Key1 || '|' || Key2 || '|' || Key3 || '|' || key4 from Bild_Zuordnungen "
                  "where Bildname = 'Neu'"_s),
      QStringList{u"TH-0110|-|-|-"_s});
}

TEST_F(WirtLauf, NewChangedAndRemovedRowsAreWrittenAndCounted) {
  im_Dialog_ = [](clsBildZuordnungen& store) {
    aendere(store, 1, u"Kessel im Heizraum"_s);
    store.AktInd(2);
    store.Bild_Delete(true);
    store.Bild_Changeflag(true);
    neues_Bild(store, u"Neu"_s, u"BEL"_s, u"-"_s);
  };
  const Laufergebnis ergebnis = gehe(auftrag());
  EXPECT_EQ(ergebnis.text(), u"3 Zeilen geschrieben: 1 neu, 1 geändert, 1 entfernt."_s);
  EXPECT_EQ(reihenfolge(),
      (QStringList{u"Heizkessel_0120240305_081500"_s, u"Heizkessel_0220240305_083000"_s,
          u"Typenschild_0420240305_090000"_s, u"Neu"_s}));
  EXPECT_EQ(werte(u"Select Beschreibung from Bild_Zuordnungen where Bildname = 'Heizkessel_0220240305_083000'"_s),
      QStringList{u"Kessel im Heizraum"_s});
  EXPECT_EQ(werte(u"Select Count(*) from Bild_Zuordnungen where Typ1 = 'MON'"_s), QStringList{u"5"_s});
}

TEST_F(WirtLauf, WithoutAChangeNothingIsWritten) {
  const QStringList vorher = werte(u"Select Bildname || SortIndex || Beschreibung from Bild_Zuordnungen"_s);
  EXPECT_EQ(gehe(auftrag()).text(), u"Nichts geändert."_s);
  EXPECT_EQ(werte(u"Select Bildname || SortIndex || Beschreibung from Bild_Zuordnungen"_s), vorher);
}

TEST_F(WirtLauf, DisplayOnlyWritesNothing) {
  im_Dialog_ = [](clsBildZuordnungen& store) { aendere(store, 0, u"verboten"_s); };
  EXPECT_EQ(gehe(auftrag(), true).text(), u"Nur angezeigt; nichts ist geschrieben."_s);
  EXPECT_TRUE(aufrufe_.first().nur_Anzeige);
  EXPECT_EQ(werte(u"Select Count(*) from Bild_Zuordnungen where Beschreibung = 'verboten'"_s), QStringList{u"0"_s});
}

TEST_F(WirtLauf, ANewPictureThatIsRemovedAtOnceDoesNotCount) {
  im_Dialog_ = [](clsBildZuordnungen& store) {
    neues_Bild(store, u"Neu"_s, u"BEL"_s, u"-"_s);
    store.Bild_Delete(true);
  };
  EXPECT_EQ(gehe(auftrag()).text(), u"Nichts geändert."_s);
}

TEST_F(WirtLauf, GapsInTheOrderSwapNothing) {
  // As it is after a removal: the places are 0, 2, 3 and the dialog numbers the row that it saves by its row.
  sql(u"DELETE FROM Bild_Zuordnungen WHERE Bildname LIKE 'Heizkessel_02%'"_s);
  im_Dialog_ = [](clsBildZuordnungen& store) { aendere(store, 2, u"Schild"_s); };
  const QStringList vorher = reihenfolge();
  const Laufergebnis ergebnis = gehe(auftrag());
  EXPECT_EQ(reihenfolge(), vorher);
  EXPECT_EQ(
      werte(u"Select SortIndex from Bild_Zuordnungen where Key2 = '24-1001' and Typ1 = 'BEL' order by SortIndex"_s),
      (QStringList{u"0"_s, u"1"_s, u"2"_s}));
  EXPECT_EQ(ergebnis.text(), u"2 Zeilen geschrieben: 1 geändert, 1 nur in der Reihenfolge."_s);
}

TEST_F(WirtLauf, ADialogThatFailsDoesNotLoseWhatIsSaved) {
  dialogergebnis_ = false;
  im_Dialog_ = [](clsBildZuordnungen& store) { aendere(store, 0, u"doch noch"_s); };
  EXPECT_EQ(gehe(auftrag()).text(), u"1 Zeile geschrieben: 1 geändert. Der Dialog endete mit einem Fehler."_s);
  EXPECT_EQ(werte(u"Select Count(*) from Bild_Zuordnungen where Beschreibung = 'doch noch'"_s), QStringList{u"1"_s});
}

namespace {

Meldung nicht_geschrieben() {
  return {
      u"1 von 1 Bildern sind nicht gespeichert:\r\n\r\n„Heizkessel_0120240305_081500.jpg“: Die Anweisung ist "
      "fehlgeschlagen: no such table: Bild_Zuordnungen\r\n\r\nNoch einmal versuchen?"_s,
      u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::JaNein};
}

}  // namespace

TEST_F(WirtLauf, WhatTheDatabaseDoesNotTakeIsTold) {
  im_Dialog_ = [](clsBildZuordnungen& store) {
    aendere(store, 0, u"geht nicht"_s);
    nimm_Tabelle_weg();
  };
  meldungen_.erwarte(nicht_geschrieben(), Antwort::Nein);
  const Laufergebnis ergebnis = gehe(auftrag());
  gib_Tabelle_zurueck();
  EXPECT_EQ(ergebnis.text(), u"UNGEWISS: 1 Bild; die Datenbank ist nicht zu fragen."_s);
  EXPECT_EQ(ergebnis.ungewiss, 1);
}

TEST_F(WirtLauf, ASecondTryWritesTheTextAsTheUserWroteIt) {
  im_Dialog_ = [](clsBildZuordnungen& store) {
    aendere(store, 0, u"Huber's Kessel"_s);
    nimm_Tabelle_weg();
  };
  meldungen_.erwarte(nicht_geschrieben(), Antwort::Ja, [] { gib_Tabelle_zurueck(); });
  EXPECT_EQ(gehe(auftrag()).text(), u"1 Zeile geschrieben: 1 geändert."_s);
  EXPECT_EQ(werte(u"Select Beschreibung from Bild_Zuordnungen where Bildname like 'Heizkessel_01%'"_s),
      QStringList{u"Huber's Kessel"_s});
}

TEST_F(WirtLauf, AnUnreachablePictureRootIsToldBeforeADialogOpens) {
  Wirtsoptionen ohne = optionen();
  ohne.bilder = u"/gibt/es/nicht"_s;
  for (const bool nur_Anzeige : {false, true}) {
    meldungen_.erwarte(
        {u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen.\r\n\r\nDer Dialog wird nicht "
         "geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s,
            u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
    EXPECT_EQ(gehe(auftrag(), nur_Anzeige, ohne).text(), u"Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s);
  }
  EXPECT_TRUE(aufrufe_.isEmpty());
}

TEST_F(WirtLauf, AnEmptyPictureRootCountsAsNotConnected) {
  const Testordner leer;
  Wirtsoptionen mit = optionen();
  mit.bilder = leer.pfad();
  meldungen_.erwarte(
      {u"Die Bildablage ist leer, obwohl dem Vorgang Bilder zugeordnet sind. Ist das Laufwerk "
       "verbunden?\r\n\r\nDer Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken "
       "würde."_s,
          u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  gehe(auftrag(), false, mit);
  EXPECT_TRUE(aufrufe_.isEmpty());
}

TEST_F(WirtLauf, WhereAllPicturesOfARecordAreMissingTheUserDecides) {
  const Testordner andere;
  andere.schreibe(u"Belege/anderes.jpg"_s, "x");
  Wirtsoptionen mit = optionen();
  mit.bilder = andere.pfad();
  const Meldung frage{
      u"Keine der 4 Bilddateien dieses Vorgangs liegt in der Bildablage. Der Dialog merkt sie alle zum "
      "Entfernen vor.\r\n\r\nTrotzdem öffnen?"_s,
      u"Bildzuordnung"_s, Symbol::Frage, Knoepfe::JaNein};
  meldungen_.erwarte(frage, Antwort::Nein);
  gehe(auftrag(), false, mit);
  EXPECT_TRUE(aufrufe_.isEmpty());
  meldungen_.erwarte(frage, Antwort::Ja);
  gehe(auftrag(), false, mit);
  EXPECT_EQ(aufrufe_.size(), 1);
}

TEST_F(WirtLauf, AForeignDatabaseNeverGetsThePicturesOfTheSamples) {
  Wirtsoptionen fremd = optionen();
  fremd.verbindung = u"Provider=SQLite;Data Source="_s + datenbank();
  meldungen_.erwarte(
      {u"Zu dieser Datenbank ist keine Bildablage genannt; „--bilder“ beim Aufruf nennt sie.\r\n\r\nDer "
       "Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s,
          u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  gehe(auftrag(), false, fremd);
  EXPECT_TRUE(aufrufe_.isEmpty());
}

TEST_F(WirtLauf, AnApostropheInTheNumberIsTold) {
  meldungen_.erwarte({u"Die Nummer „AB 24'1“ enthält ein Hochkomma; solchen Vorgängen sind keine Bilder zuzuordnen."_s,
      u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  gehe(vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24'1"_s));
  EXPECT_TRUE(aufrufe_.isEmpty());
}
