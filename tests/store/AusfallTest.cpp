// What a server that fails does to a save and to a read. The program runs over TDS with SQLite behind the server.
#include <gtest/gtest.h>

#include <thread>

#include "tests/store/Datenbanktest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A row's flags as the collection holds them.
struct Kennzeichen {
  bool geaendert = false;
  bool neu = false;
  bool geloescht = false;
  bool operator==(const Kennzeichen& andere) const = default;
};

constexpr Kennzeichen Sauber{};
constexpr Kennzeichen Neu{true, true, false};
constexpr Kennzeichen Geaendert{true, false, false};
constexpr Kennzeichen Geloescht{false, false, true};

void PrintTo(const Kennzeichen& k, std::ostream* os) {
  *os << (k.geaendert ? 'c' : '-') << (k.neu ? 'n' : '-') << (k.geloescht ? 'd' : '-');
}

class Ausfall : public Datenbanktest {
 protected:
  void SetUp() override {
    if (pruefziel() == Pruefziel::Sqlite) GTEST_SKIP() << "there is no server: KVO_PRUEFDATENBANK is not set";
    Datenbanktest::SetUp();
  }
  void TearDown() override {
    BasZuordnungen::gConnection().reset();
    core.hole();
    if (pruefziel() != Pruefziel::Sqlite) pruefserver().steuere(u"heile"_s);
  }

  static void auftrag(const QString& zeile) { pruefserver().steuere(zeile); }
  static void halt() { auftrag(u"halt"_s); }
  static void weiter() { auftrag(u"weiter"_s); }

  void neue_Bilder(const QString& namen) {
    for (const QChar name : namen)
      ASSERT_TRUE(store.FKT_NeuesBild(u"A"_s, {}, {}, {}, QString(name), u"jpg"_s, u"Bel"_s, {}));
  }
  /// Stored rows with these names, read into the collection.
  void gespeicherte_Bilder(const QString& namen) {
    for (qsizetype i = 0; i < namen.size(); ++i)
      fuege_ein(u"'A','-','-','-','%1','jpg','Bel','-','P','T','0001',NULL,'-',%2"_s.arg(namen[i]).arg(i));
    ASSERT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  }
  void aendere(std::int32_t zeile, const QString& beschreibung) {
    store.AktInd(zeile);
    store.Bild_Beschreibung(beschreibung);
    store.Bild_Changeflag(true);
  }
  void markiere(std::int32_t zeile) {
    store.AktInd(zeile);
    store.Bild_Delete(true);
  }
  /// The writing connection is there before the server fails.
  void oeffne_Schreibverbindung() { ASSERT_TRUE(store.FKT_DeleteBilder(u"nie"_s, {}, {}, {}, {}, {}, {}, {}, {})); }

  QList<Kennzeichen> kennzeichen() {
    QList<Kennzeichen> alle;
    for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
      store.AktInd(i);
      alle.append({store.Bild_Changeflag(), store.Bild_Neu(), store.Bild_Delete()});
    }
    return alle;
  }
  QStringList namen_der_Tabelle() { return db.zeilen(u"SELECT Bildname FROM Bild_Zuordnungen ORDER BY Bildname"_s); }

  /// Saves, which is True whatever single statements do. Exactly `fehler` of them must be reported, with that number
  /// and those words.
  void speichere(int fehler, std::int32_t nummer = fehlernummer::Anweisung, const QString& worte = u"abgerissen"_s) {
    EXPECT_TRUE(store.FKT_SpeichernBilder());
    const auto berichte = core.hole();
    EXPECT_EQ(berichte.size(), fehler);
    for (const auto& bericht : berichte) {
      EXPECT_EQ(bericht.Modul + u'.' + bericht.Prozedur, u"basZuordnungen.CmdSql"_s);
      EXPECT_EQ(bericht.Nummer, nummer);
      EXPECT_TRUE(bericht.Beschreibung.contains(worte)) << bericht.Beschreibung.toStdString();
      EXPECT_FALSE(bericht.Beschreibung.contains(pruefserver_Kennwort()));
    }
    EXPECT_EQ(store.AktInd(), 0);
  }
  /// What a host does when the server is back: the thread's next statement opens a connection anew.
  static void nimm_Schreibverbindung_weg() { BasZuordnungen::gConnection() = nullptr; }
  /// The first words of the batches that came since the last question.
  QStringList gekommen() {
    QStringList worte;
    for (const QString& text : db.angekommen()) worte.append(text.section(u' ', 0, 0).toLower());
    return worte;
  }
};

}  // namespace

TEST_F(Ausfall, AServerGoneBeforeTheFirstSaveLeavesEverythingFlaggedUntilTheConnectionIsTakenAway) {
  neue_Bilder(u"abc"_s);
  halt();
  speichere(3, 3709, u"geschlossen"_s);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Neu, Neu, Neu}));
  EXPECT_EQ(store.Bild_Key2(), u"-"_s) << "the identity parts keep their dash";
  weiter();
  speichere(3, 3709, u"geschlossen"_s);
  EXPECT_EQ(db.anzahl(), 0);
  EXPECT_TRUE(gekommen().isEmpty()) << "it is never opened anew";
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber, Sauber}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(Ausfall, AServerGoneBetweenTwoSavesLeavesInsertUpdateAndDeleteFlagged) {
  gespeicherte_Bilder(u"abc"_s);
  oeffne_Schreibverbindung();
  aendere(0, u"neu"_s);
  markiere(1);
  neue_Bilder(u"d"_s);
  halt();
  speichere(3);
  const QList<Kennzeichen> offen{Geaendert, Geloescht, Sauber, Neu};
  EXPECT_EQ(kennzeichen(), offen);
  weiter();
  speichere(3);
  EXPECT_EQ(kennzeichen(), offen);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
  db.angekommen();
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(gekommen(), (QStringList{u"update"_s, u"insert"_s, u"delete"_s}));
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber, Sauber}));
  EXPECT_EQ(db.zeilen(u"SELECT Bildname, Beschreibung FROM Bild_Zuordnungen ORDER BY Bildname"_s),
      (QStringList{u"a|neu"_s, u"c|T"_s, u"d|<NULL>"_s}));
}

TEST_F(Ausfall, TheNextSaveMayComeFromANewThreadInstead) {
  neue_Bilder(u"ab"_s);
  oeffne_Schreibverbindung();
  halt();
  speichere(2);
  weiter();
  std::thread([&] {
    speichere(0);
    BasZuordnungen::gConnection().reset();
  }).join();
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
  neue_Bilder(u"c"_s);
  speichere(1);
  EXPECT_EQ(db.anzahl(), 2) << "the first thread keeps its dead one";
}

TEST_F(Ausfall, ALinkCutBeforeAStatementWritesTheRestOnTheSecondSaveAndNothingTwice) {
  neue_Bilder(u"abcde"_s);
  auftrag(u"trenne 3/insert vor"_s);
  speichere(3);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber, Neu, Neu, Neu}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
  speichere(3);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber, Neu, Neu, Neu}));
  db.angekommen();
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(gekommen(), (QStringList{u"insert"_s, u"insert"_s, u"insert"_s}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}));
}

TEST_F(Ausfall, AnInsertWhoseAnswerIsLostHasRunAndStandsTwiceAfterTheSecondSave) {
  for (const QString& ort : {u"nach"_s, u"halb"_s}) {
    SCOPED_TRACE(ort.toStdString());
    leere();
    nimm_Schreibverbindung_weg();
    ASSERT_TRUE(store.FKT_Neu());
    neue_Bilder(u"abcd"_s);
    auftrag(u"trenne 2/insert "_s + ort);
    speichere(3);
    // Nobody can know that "b" was written: it counts as failed, which is the side on which nothing is lost.
    EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Neu, Neu, Neu}));
    EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
    nimm_Schreibverbindung_weg();
    speichere(0);
    EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber, Sauber, Sauber}));
    EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"b"_s, u"c"_s, u"d"_s}));
    auftrag(u"heile"_s);
  }
}

TEST_F(Ausfall, AfterALostAnswerAReadInsteadOfASecondSaveShowsWhatWasWritten) {
  neue_Bilder(u"ab"_s);
  auftrag(u"trenne 2/insert nach"_s);
  speichere(1);
  ASSERT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber}));
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(Ausfall, AnUpdateOrDeleteWhoseAnswerIsLostDoesNoHarmWhenItRunsAgain) {
  for (const QString& ort : {u"nach"_s, u"halb"_s}) {
    SCOPED_TRACE(ort.toStdString());
    leere();
    nimm_Schreibverbindung_weg();
    gespeicherte_Bilder(u"abc"_s);
    aendere(0, u"neu"_s);
    auftrag(u"trenne 1/update "_s + ort);
    speichere(1);
    EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Geaendert, Sauber, Sauber}));
    nimm_Schreibverbindung_weg();
    markiere(1);
    auftrag(u"trenne 1/delete "_s + ort);
    speichere(1);
    EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Geloescht, Sauber})) << "the row stays, still marked";
    EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"c"_s}));
    nimm_Schreibverbindung_weg();
    speichere(0);
    EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber}));
    EXPECT_EQ(db.zeilen(u"SELECT Bildname, Beschreibung FROM Bild_Zuordnungen ORDER BY Bildname"_s),
        (QStringList{u"a|neu"_s, u"c|T"_s}));
    auftrag(u"heile"_s);
  }
}

TEST_F(Ausfall, AServerGoneAfterASaveTakesNothingBack) {
  neue_Bilder(u"ab"_s);
  speichere(0);
  halt();
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber}));
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
  aendere(1, u"danach"_s);
  speichere(1);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Geaendert}));
  weiter();
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(db.zeilen(u"SELECT Bildname, Beschreibung FROM Bild_Zuordnungen ORDER BY Bildname"_s),
      (QStringList{u"a|<NULL>"_s, u"b|danach"_s}));
}

TEST_F(Ausfall, FiveOfTenInsertsFailAndTheSecondSaveWritesExactlyThose) {
  neue_Bilder(u"abcdefghij"_s);
  auftrag(u"fehler 2,4,6,8,10/insert 1205 13 Opfer einer Sperre"_s);
  speichere(5, fehlernummer::Anweisung, u"Opfer einer Sperre"_s);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Neu, Sauber, Neu, Sauber, Neu, Sauber, Neu, Sauber, Neu}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"c"_s, u"e"_s, u"g"_s, u"i"_s}));
  db.angekommen();
  // The link is whole: the same thread goes on at once.
  speichere(0);
  EXPECT_EQ(db.angekommen().size(), 5);
  EXPECT_EQ(kennzeichen(), QList<Kennzeichen>(10, Sauber));
  EXPECT_EQ(namen_der_Tabelle().join(QString()), u"abcdefghij"_s);
}

TEST_F(Ausfall, AnErrorThatEndsTheLinkFailsAllBehindIt) {
  neue_Bilder(u"abcd"_s);
  auftrag(u"fehler 2/insert 3624 20 Der Server gibt auf"_s);
  EXPECT_TRUE(store.FKT_SpeichernBilder());
  EXPECT_EQ(berichte_von(u"CmdSql"_s), 3);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Neu, Neu, Neu}));
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle().join(QString()), u"abcd"_s);
}

TEST_F(Ausfall, AFailedUpdateAndAFailedDeleteKeepTheirRowsAndFlags) {
  gespeicherte_Bilder(u"abcd"_s);
  aendere(0, u"neu"_s);
  aendere(1, u"neu"_s);
  markiere(2);
  markiere(3);
  auftrag(u"fehler 1/update 1222 16 gesperrt"_s);
  auftrag(u"fehler 1/delete 1222 16 gesperrt"_s);
  speichere(2, fehlernummer::Anweisung, u"gesperrt"_s);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Geaendert, Sauber, Geloescht}));
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"d"_s})) << "deleted from the last to the first";
  speichere(0);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Sauber, Sauber}));
  EXPECT_EQ(db.zeilen(u"SELECT Bildname, Beschreibung FROM Bild_Zuordnungen ORDER BY Bildname"_s),
      (QStringList{u"a|neu"_s, u"b|neu"_s}));
}

TEST_F(Ausfall, ARefusedLoginKeepsTheWritingConnectionClosed) {
  neue_Bilder(u"ab"_s);
  auftrag(u"anmeldung 1 verweigere"_s);
  speichere(2, 3709, u"geschlossen"_s);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Neu, Neu}));
  speichere(2, 3709, u"geschlossen"_s);
  EXPECT_TRUE(gekommen().isEmpty());
  EXPECT_TRUE(store.FKT_LeseBilder({}, {}, {}, {}, {}, {}, {}, {}, {}) == false && core.hole().isEmpty())
      << "the reading connection is another one";
  neue_Bilder(u"ab"_s);
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(Ausfall, AServerThatHangsAtTheLoginIsGivenUpOnceAndNotForEachStatement) {
  ASSERT_TRUE(store.Init(db.verbindungszeichenfolge() + u";Connect Timeout=1"_s, db.verbindung(), {}));
  neue_Bilder(u"abc"_s);
  auftrag(u"anmeldung * stumm"_s);
  const auto anmeldungen = [] { return pruefserver().steuere(u"protokoll"_s).count(u"\"anmeldung\""_s); };
  const auto vorher = anmeldungen();
  speichere(3, 3709, u"geschlossen"_s);
  EXPECT_EQ(anmeldungen() - vorher, 1);
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Neu, Neu, Neu}));
  auftrag(u"heile"_s);
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(Ausfall, TheHostIsToldInWordsThatALoginHangs) {
  auftrag(u"anmeldung 1 stumm"_s);
  adodb::Connection wirt;
  try {
    wirt.Open(db.verbindungszeichenfolge() + u";Connect Timeout=1"_s);
    FAIL() << "opened";
  } catch (const Laufzeitfehler& fehler) {
    EXPECT_EQ(fehler.Nummer(), fehlernummer::Verbindung);
    EXPECT_TRUE(fehler.Beschreibung().contains(u"in 1 Sekunden nicht geantwortet"_s))
        << fehler.Beschreibung().toStdString();
    EXPECT_FALSE(fehler.Beschreibung().contains(pruefserver_Kennwort()));
  }
}

TEST_F(Ausfall, AStatementThatIsNeverAnsweredEndsWhenTheLinkDoes) {
  neue_Bilder(u"ab"_s);
  auftrag(u"stumm 1/insert"_s);
  std::thread leitung([] {
    while (pruefserver().angekommen().filter(u"insert"_s).isEmpty()) std::this_thread::yield();
    pruefserver().steuere(u"trenne-alle"_s);
  });
  speichere(2);
  leitung.join();
  EXPECT_EQ(kennzeichen(), (QList<Kennzeichen>{Neu, Neu}));
  EXPECT_EQ(db.anzahl(), 0);
  nimm_Schreibverbindung_weg();
  speichere(0);
  EXPECT_EQ(namen_der_Tabelle(), (QStringList{u"a"_s, u"b"_s}));
}

class AusfallBeimLesen : public Ausfall {
 protected:
  void SetUp() override {
    Ausfall::SetUp();
    if (IsSkipped()) return;
    for (int i = 0; i < 50; ++i)
      fuege_ein(u"'A','%1','-','-','n','jpg','Bel','-','P','%2','0001',NULL,'-',0"_s.arg(
          QString::number(i), QString(200, u'ä')));
  }
  /// One report from that procedure, in words and without the password.
  void erwarte_Abriss(const QString& prozedur) {
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul + u'.' + berichte[0].Prozedur, u"clsBildZuordnungen."_s + prozedur);
    EXPECT_EQ(berichte[0].Nummer, fehlernummer::Anweisung);
    EXPECT_TRUE(berichte[0].Beschreibung.contains(u"abgerissen"_s)) << berichte[0].Beschreibung.toStdString();
    EXPECT_FALSE(berichte[0].Beschreibung.contains(pruefserver_Kennwort()));
  }
  bool lies() { return store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}); }
};

TEST_F(AusfallBeimLesen, AResultCutAnywhereIsNoHalfResult) {
  for (const QString& ort : {u"vor"_s, u"nach"_s, u"halb"_s, u"zeile:1"_s, u"zeile:2"_s, u"zeile:50"_s}) {
    SCOPED_TRACE(ort.toStdString());
    ASSERT_TRUE(lies());
    EXPECT_EQ(store.AnzahlPos(), 50);
    auftrag(u"trenne 1 "_s + ort);
    EXPECT_FALSE(lies());
    erwarte_Abriss(u"FKT_LeseBilder"_s);
    EXPECT_EQ(store.AnzahlPos(), 0);
    EXPECT_EQ(store.AktInd(), -1);
    EXPECT_EQ(store.AktBildObj, nullptr);
    auftrag(u"heile"_s);
    EXPECT_FALSE(lies()) << "the host's connection is not opened anew";
    erwarte_Abriss(u"FKT_LeseBilder"_s);
    db.verbindung()->Close();
    db.verbindung()->Open();
  }
  ASSERT_TRUE(store.Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
  EXPECT_TRUE(lies());
  EXPECT_EQ(store.AnzahlPos(), 50);
}

TEST_F(AusfallBeimLesen, TheOtherReadsFailInTheSameWay) {
  auftrag(u"trenne 1 halb"_s);
  EXPECT_FALSE(store.FKT_LeseBilder_FuerKunde_Projekt({}, false));
  erwarte_Abriss(u"FKT_LeseBilder_FuerKunde_Projekt"_s);
  EXPECT_EQ(store.AnzahlPos(), 0);
  EXPECT_FALSE(store.FKT_BilderVorhanden(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  erwarte_Abriss(u"FKT_BilderVorhanden"_s);
}

TEST_F(AusfallBeimLesen, TheWritingConnectionGoesOnWhereOnlyTheReadingOneIsCut) {
  oeffne_Schreibverbindung();
  auftrag(u"trenne 1/select vor"_s);
  EXPECT_FALSE(lies());
  erwarte_Abriss(u"FKT_LeseBilder"_s);
  neue_Bilder(u"x"_s);
  speichere(0);
  EXPECT_EQ(db.anzahl(u"Bildname = 'x'"_s), 1);
}

namespace {

class AusfallBeimAufraeumen : public Ausfall {
 protected:
  void SetUp() override {
    Ausfall::SetUp();
    if (IsSkipped()) return;
    for (const QString& datei : {u"Eins/a"_s, u"Eins/b"_s, u"Eins/c"_s, u"Zwei/d"_s, u"Zwei/e"_s}) {
      wurzel.schreibe(datei + u".jpg"_s, "x");
      fuege_ein(u"'A','-','-','-','%1','jpg','Bel','-','%2','T','0001',NULL,'-',0"_s.arg(
          datei.section(u'/', 1), datei.section(u'/', 0, 0)));
    }
    wurzel.schreibe(u"Eins/bleibt"_s, "x");
    wurzel.schreibe(u"Zwei/bleibt"_s, "x");
  }
  QString uebrig() const {
    QString namen;
    for (const QString& datei : {u"Eins/a"_s, u"Eins/b"_s, u"Eins/c"_s, u"Zwei/d"_s, u"Zwei/e"_s})
      if (wurzel.vorhanden(datei + u".jpg"_s)) namen += datei.back();
    return namen;
  }
  Bildwurzel wurzel;
};

}  // namespace

TEST_F(AusfallBeimAufraeumen, AConnectionThatIsGoneMakesEveryPictureAFreeOne) {
  halt();
  EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s), Variant(true));
  EXPECT_EQ(uebrig(), QString());
}

TEST_F(AusfallBeimAufraeumen, CutInTheMiddleTheAnswerBeforeHoldsInItsFolderAndTheFoldersBehindAreCleared) {
  auftrag(u"trenne 2/select halb"_s);
  EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s), Variant(true));
  EXPECT_EQ(uebrig(), u"abc"_s);
}

TEST_F(AusfallBeimAufraeumen, CutBehindAPictureThatGoesTheRestOfItsFolderGoesToo) {
  db.fuehre_aus(u"delete from Bild_Zuordnungen where Bildname = 'a'"_s);
  auftrag(u"trenne 2/select vor"_s);
  const Aufraeumliste liste = store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s);
  EXPECT_EQ(uebrig(), u"abcde"_s) << "a listing deletes nothing";
  QList<Aufraeumposten::Grund> gruende;
  for (const Aufraeumposten& posten : liste.Posten) gruende.append(posten.Warum);
  using Grund = Aufraeumposten::Grund;
  EXPECT_EQ(gruende,
      (QList<Grund>{Grund::OhneZuordnung, Grund::AbfrageGescheitert, Grund::AbfrageGescheitert,
          Grund::AbfrageGescheitert, Grund::AbfrageGescheitert}));
}
