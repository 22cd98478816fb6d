#include "host/betrieb/vorgaenge/Vorgangsausgabe.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"
#include "tests/host/betrieb/vorgaenge/Vorgangsdatenbank.h"

using namespace Qt::Literals::StringLiterals;
using Schritt = Vorgangseinlesung::Schritt;

namespace {

class Einlesung : public Vorgangsdatenbank {
 protected:
  void lies(const QByteArray& inhalt, const QString& name = u"liste.csv"_s, const QString& typ1 = {}) {
    liste_ = oeffne_Liste(ordner_.schreibe(name, inhalt));
    Spaltenwahl wahl = spaltenwahl::vorschlag(*liste_);
    wahl.typ1 = typ1;
    einlesung_.lies(*liste_, wahl);
  }
  Einlesebefund vergleiche(const QByteArray& inhalt, const QString& name = u"liste.csv"_s, const QString& typ1 = {}) {
    lies(inhalt, name, typ1);
    return einlesung_.vergleiche();
  }
  Einlesebefund uebernimm(const QByteArray& inhalt, bool auslassen = false, const QString& name = u"liste.csv"_s) {
    vergleiche(inhalt, name);
    return einlesung_.uebernimm(auslassen);
  }
  /// "2: reason" for each wrong line.
  QStringList falsche() {
    QStringList liste;
    for (const Zeilenbefund& zeile : einlesung_.zeilen(Zeilenart::Falsch, 0, 1'000))
      liste.append(u"%1: %2"_s.arg(zeile.zeile).arg(zeile.grund));
    return liste;
  }
  QByteArray ausgabe(vorgangsausgabe::Form form) {
    QByteArray alles;
    vorgangsausgabe::gib_aus(db_, form, [&](const QByteArray& bytes) {
      alles += bytes;
      return true;
    });
    return alles;
  }
  QString alles() { return (vorgaenge() + kunden()).join(u'\n'); }

  std::unique_ptr<Listenleser> liste_;
  std::function<bool(Schritt, qint64, qint64)> fortschritt_;
  Vorgangseinlesung einlesung_{db_, [this](Schritt schritt, qint64 getan, qint64 ganz) {
                                 return !fortschritt_ || fortschritt_(schritt, getan, ganz);
                               }};
};

const QByteArray Kopf = "Typ1;Key1;Key2;Key3;Kundennummer;Kundenname;Ort;Projektnummer;Text;Ordner;Stand\n";
const QByteArray Zwei = Kopf +
    "BEL;AB;24-1;;10001;Bäckerei Huber;Freiburg;P-1;Kessel;;2026-11-22 09:15:00\n"
    "ART;WP;;;;;;;Wärmepumpe;;\n";

}  // namespace

TEST_F(Einlesung, NewLinesBecomeRecordsWithTheirCustomersAndTheIndex) {
  EXPECT_EQ(uebernimm(Zwei), (Einlesebefund{2, 0, 0, 0, 1, 0}));
  EXPECT_EQ(vorgaenge(),
      (QStringList{u"BEL|AB|24-1||10001|P-1|Kessel|~|2026-11-22 09:15:00"_s, u"ART|WP|||~|~|Wärmepumpe|~|~"_s}));
  EXPECT_EQ(kunden(), QStringList{u"10001|Bäckerei Huber|Freiburg"_s});
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"bäckerei\"'"_s), QStringList{u"1"_s});
  pruefe_Index();
}

TEST_F(Einlesung, APreviewChangesNothing) {
  EXPECT_EQ(vergleiche(Zwei), (Einlesebefund{2, 0, 0, 0, 1, 0}));
  EXPECT_EQ(alles(), QString());
  EXPECT_EQ(einlesung_.zeilen(std::nullopt, 0, 1).first().nummer, u"AB 24-1"_s);
}

TEST_F(Einlesung, TheSameListOnceMoreIsTheSame) {
  uebernimm(Zwei);
  const QString vorher = alles();
  EXPECT_EQ(uebernimm(Zwei), (Einlesebefund{0, 0, 2, 0, 0, 0}));
  EXPECT_EQ(alles(), vorher);
}

TEST_F(Einlesung, AChangedLineChangesItsRecordAndTheIndex) {
  uebernimm(Zwei);
  EXPECT_EQ(uebernimm(Kopf + "bel;ab;24-1;;10001;;;P-2;Brenner;Projekte\\1;22.11.2026 10:00\n"),
      (Einlesebefund{0, 1, 0, 0, 0, 0}));
  // The number keeps its spelling: pictures are assigned to it.
  EXPECT_EQ(vorgaenge().first(), u"BEL|AB|24-1||10001|P-2|Brenner|Projekte\\1|2026-11-22 10:00:00"_s);
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"kessel\"'"_s), QStringList{u"0"_s});
  pruefe_Index();
}

TEST_F(Einlesung, WhatTheListDoesNotNameStays) {
  uebernimm(Zwei);
  uebernimm("Typ1;Key1;Key2;Text\nBEL;AB;24-1;Brenner\n");
  EXPECT_TRUE(vorgaenge().first().startsWith(u"BEL|AB|24-1||10001|P-1|Brenner|~|20"_s))
      << vorgaenge().first().toStdString();
  EXPECT_NE(vorgaenge().first(), u"BEL|AB|24-1||10001|P-1|Brenner|~|2026-11-22 09:15:00"_s);
  uebernimm(R"({"typ1":"BEL","key1":"AB","key2":"24-1","projektnummer":null})", false, u"a.json"_s);
  EXPECT_TRUE(vorgaenge().first().startsWith(u"BEL|AB|24-1||10001|~|Brenner|~|20"_s))
      << vorgaenge().first().toStdString();
  pruefe_Index();
}

TEST_F(Einlesung, ACustomersNewNameIsFoundWithAllHisRecords) {
  uebernimm(Zwei + "MON;AB;24-1;1;10001;;;;Montage;;\n");
  EXPECT_EQ(uebernimm(Kopf + "BEL;AB;24-1;;10001;Konditorei Huber;;P-1;Kessel;;2026-11-22 09:15:00\n"),
      (Einlesebefund{0, 1, 0, 0, 0, 1}));
  EXPECT_EQ(kunden(), QStringList{u"10001|Konditorei Huber|Freiburg"_s});
  EXPECT_EQ(
      zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"konditorei\"'"_s), QStringList{u"2"_s});
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"bäckerei\"'"_s), QStringList{u"0"_s});
  pruefe_Index();
}

TEST_F(Einlesung, OneWrongLineKeepsAllOut) {
  const QByteArray liste = Zwei + "BEL;AB;;;;;;;ohne Nummer;;\n";
  EXPECT_EQ(uebernimm(liste).falsch, 1);
  EXPECT_EQ(falsche(), QStringList{u"4: Belegnummer fehlt"_s});
  EXPECT_EQ(alles(), QString());
  EXPECT_EQ(uebernimm(liste, true), (Einlesebefund{2, 0, 0, 1, 1, 0}));
  EXPECT_EQ(vorgaenge().size(), 2);
  pruefe_Index();
}

TEST_F(Einlesung, EachWrongLineHasItsReason) {
  vergleiche(Kopf + ";AB;1;;;;;;;;\nBEL;;1;;;;;;;;\nBEL;A'B;1;;;;;;;;\nBEL;AB;1/2;;;;;;;;\nBEL;AB;" +
      QByteArray(51, 'x') + ";;;;;;;;\nBEL;AB;5;;;;;;" + QByteArray(251, 'x') + ";;\nBEL;AB;6;;;Huber;;;;;\n" +
      "BEL;AB;7;;;;;;;..\\x;\nBEL;AB;8;;;;;;;;morgen\nBEL;AB;9;;;;;;;;;zuviel\nBEL;AB;10;-;;;;;;;\n" +
      "BEL;AB;\"offen;;;;;;;;\nBEL;AB;11;;;;;;\"ein \x1Bzeichen\";;\n");
  EXPECT_EQ(falsche(),
      (QStringList{u"2: Die Art fehlt"_s, u"3: Key1 fehlt"_s,
          u"4: Belegart enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich"_s,
          u"5: Belegnummer enthält „/“, das kein Ordner im Namen haben kann"_s, u"6: Key2 ist länger als 50 Zeichen"_s,
          u"7: Text ist länger als 250 Zeichen"_s, u"8: Kundenname oder Ort steht ohne Kundennummer"_s,
          u"9: Ordner ist „..\\x“; er muss unter der Bildablage bleiben und Namen haben, die jede Freigabe nimmt"_s,
          u"10: Stand ist „morgen“ und kein Datum"_s, u"11: die Zeile hat mehr Werte als Spalten (12 statt 11)"_s,
          u"12: Key3 ist „-“; ein Teil, den es nicht gibt, bleibt leer"_s,
          u"13: die Anführungszeichen gehen nicht auf"_s, u"14: Text enthält ein Steuerzeichen"_s}));
}

TEST_F(Einlesung, AHalfSurrogateOfJsonIsAWrongLine) {
  EXPECT_EQ(uebernimm("{\"typ1\":\"ART\",\"key1\":\"1\",\"text\":\"a\\ud800b\"}\n{\"typ1\":\"ART\",\"key1\":\"2\","
                      "\"text\":\"a\\u0000b\"}\n{\"typ1\":\"ART\",\"key1\":\"3\",\"text\":\"\\ud83c\\udfe0\"}\n",
                false, u"a.json"_s)
                .falsch,
      2);
  EXPECT_EQ(falsche(),
      (QStringList{u"1: Text enthält ein halbes Zeichen (ein Surrogat ohne das andere)"_s,
          u"2: Text enthält ein Nullzeichen"_s}));
  EXPECT_EQ(alles(), QString());
}

TEST_F(Einlesung, ANumberCountsOnceInAList) {
  EXPECT_EQ(vergleiche(Kopf + "BEL;AB;1;;;;;;a;;\nbel;ab ;1;;;;;;b;;\nBEL;Ab;1 ;;;;;;c;;\nBEL;AB;2;;;;;;d;;\n"),
      (Einlesebefund{2, 0, 0, 2, 0, 0}));
  EXPECT_EQ(falsche(),
      (QStringList{u"3: dieselbe Nummer steht schon in Zeile 2"_s, u"4: dieselbe Nummer steht schon in Zeile 2"_s}));
}

TEST_F(Einlesung, ACustomerHasOneNameInAList) {
  EXPECT_EQ(
      uebernimm(
          Kopf + "ART;1;;;10;Huber;Ulm;;;;\nART;2;;;10;Hubert;;;;;\nART;3;;;10;;;;;;\nART;4;;;10;;Bonn;;;;\n", true),
      (Einlesebefund{2, 0, 0, 2, 1, 0}));
  EXPECT_EQ(falsche(),
      (QStringList{u"3: der Kunde 10 heißt in Zeile 2 anders"_s, u"5: der Kunde 10 heißt in Zeile 2 anders"_s}));
  EXPECT_EQ(kunden(), QStringList{u"10|Huber|Ulm"_s});
}

TEST_F(Einlesung, AListOfOneKindNeedsNoColumnForIt) {
  EXPECT_EQ(
      vergleiche("Artikelnummer;Bezeichnung\nWP;Pumpe\n", u"a.csv"_s, u"ART"_s), (Einlesebefund{1, 0, 0, 0, 0, 0}));
  einlesung_.uebernimm(false);
  EXPECT_TRUE(vorgaenge().first().startsWith(u"ART|WP|||~|~|Pumpe|~|20"_s));
}

TEST_F(Einlesung, WhatGoesOutComesInUnchanged) {
  db_.Execute(u"INSERT INTO Kunden VALUES ('1', 'Müller \"Gut & Söhne\"', ''), ('2', '', 'Köln')"_s);
  // What our own checks would not let in may be there, from other programs.
  db_.Execute(
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand) VALUES "
      "('BEL', 'AB', '24-1', '', '1', NULL, 'Zeile 1' || char(13, 10) || 'Zeile; 2, \"x\"', NULL, '2026-11-22 "
      "09:15:00'), "
      "('BEL', 'A''B', '24/2', '', '2', '', '  Leerzeichen  ', 'Belege\\24-1', NULL), "
      "('ANL', '10', '', '', NULL, 'P;1', char(9) || 'Tab', '', NULL), "
      "('bel', 'AB ', '-', 'x', '', NULL, '\U0001F3E0 Haus', '..\\weg', 'gestern'), "
      "('WARTUNG', 'ß', 'é', '', '99', NULL, '', NULL, NULL)"_s);
  const QString vorher = alles();
  for (const auto& [form, name] :
      {std::pair(vorgangsausgabe::Form::Csv, u"aus.csv"_s), std::pair(vorgangsausgabe::Form::Json, u"aus.json"_s)}) {
    const QByteArray liste = ausgabe(form);
    EXPECT_EQ(uebernimm(liste, false, name), (Einlesebefund{0, 0, 5, 0, 0, 0})) << liste.toStdString();
    EXPECT_EQ(falsche(), QStringList());
    EXPECT_EQ(alles(), vorher);
  }
}

TEST_F(Einlesung, WhatGoesOutFillsAnEmptyDatabaseTheSame) {
  uebernimm(Kopf +
      "BEL;AB;1;;10;\"Müller; \"\"Söhne\"\"\";;;\"zwei\nZeilen\";;2026-11-22 09:15:00\nART;2;;;;;;\"\";;\"\";\n"
      "ANL;10;Solar;1;11;\"\";Ulm;P;x;Ordner\\y;\n");
  const QString vorher = alles();
  ASSERT_EQ(vorgaenge().size(), 3);
  for (const auto& [form, name] :
      {std::pair(vorgangsausgabe::Form::Csv, u"aus.csv"_s), std::pair(vorgangsausgabe::Form::Json, u"aus.json"_s)}) {
    const QByteArray liste = ausgabe(form);
    db_.Execute(u"DELETE FROM Vorgaenge"_s);
    db_.Execute(u"DELETE FROM Kunden"_s);
    EXPECT_EQ(uebernimm(liste, false, name).neu, 3);
    EXPECT_EQ(alles(), vorher);
    pruefe_Index();
  }
}

TEST_F(Einlesung, GivingUpTakesAllBack) {
  QByteArray liste = Kopf;
  for (int i = 0; i < 30'000; ++i) liste += "BEL;AB;" + QByteArray::number(i) + ";;1;Huber;;;x;;\n";
  for (const Schritt schritt : {Schritt::Lesen, Schritt::Vergleichen, Schritt::Schreiben}) {
    int mal = 0;
    fortschritt_ = [&](Schritt jetzt, qint64, qint64) { return jetzt != schritt || ++mal < 3; };
    EXPECT_EQ(abbruch_von([&] { uebernimm(liste); }, Ausgang::Teilweise), u"Abgebrochen; es ist nichts übernommen."_s);
    EXPECT_EQ(alles(), QString());
    pruefe_Index();
    // Nobody else waits for what was given up.
    anderer_.Execute(u"DELETE FROM Kunden"_s);
  }
  fortschritt_ = {};
  EXPECT_EQ(uebernimm(liste).neu, 30'000);
}

TEST_F(Einlesung, ProgressGoesOnAndEnds) {
  QByteArray liste = Kopf;
  for (int i = 0; i < 25'000; ++i) liste += "BEL;AB;" + QByteArray::number(i) + ";;;;;;x;;\n";
  uebernimm(liste);
  QMap<Schritt, qint64> bisher;
  fortschritt_ = [&](Schritt schritt, qint64 getan, qint64 ganz) {
    EXPECT_GE(getan, bisher.value(schritt));
    EXPECT_LE(getan, ganz);
    bisher[schritt] = getan == ganz ? -1 : getan;
    return true;
  };
  uebernimm(liste.replace(";x;;", ";y;;"));
  EXPECT_EQ(
      bisher, (QMap<Schritt, qint64>{{Schritt::Lesen, -1}, {Schritt::Vergleichen, -1}, {Schritt::Schreiben, -1}}));
}

TEST_F(Einlesung, AnotherDesksChangeSinceThePreviewCounts) {
  vergleiche(Zwei);
  anderer_.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Text) VALUES ('BEL', 'AB', '24-1', 'vom anderen')"_s);
  EXPECT_EQ(einlesung_.uebernimm(false), (Einlesebefund{1, 1, 0, 0, 1, 0}));
  EXPECT_EQ(vorgaenge().size(), 2);
  EXPECT_EQ(vorgaenge().first(), u"BEL|AB|24-1||10001|P-1|Kessel|~|2026-11-22 09:15:00"_s);
  pruefe_Index();
}

TEST_F(Einlesung, AFailureInTheMiddleTakesAllBack) {
  db_.Execute(
      u"CREATE TRIGGER Nein BEFORE INSERT ON Vorgaenge WHEN new.Key1 = 'WP' BEGIN SELECT RAISE(ABORT, 'nein'); END"_s);
  vergleiche(Zwei);
  EXPECT_TRUE(abbruch_von([&] { einlesung_.uebernimm(false); }).startsWith(u"Die Vorgänge sind nicht einzulesen: "_s));
  EXPECT_EQ(alles(), QString());
  pruefe_Index();
}

TEST_F(Einlesung, AnEmptyListTakesNothingIn) {
  EXPECT_EQ(uebernimm(Kopf), Einlesebefund{});
  EXPECT_EQ(uebernimm(""), Einlesebefund{});
}
