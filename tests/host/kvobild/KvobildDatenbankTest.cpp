// The commands around the database itself, on SQLite.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>

#include "platform/adodb/Connection.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildDatenbank : public Betrieb {
 protected:
  KvobildDatenbank() {
    EXPECT_EQ(kvobild({u"anlegen"_s, u"--beispieltabellen"_s, u"--verbindung"_s, datenbank()}).code, 0);
  }
  Lauf pruefe(const QStringList& argumente = {}) const {
    return kvobild(QStringList{u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, datenbank()} + argumente);
  }
  Lauf pruefe_Json(const QStringList& argumente = {}) const { return pruefe(argumente + QStringList{u"--json"_s}); }
  void zeile(const QString& werte) const {
    sql(u"insert into Bild_Zuordnungen (Typ1, Typ2, Key1, Key2, Key3, key4, Bildname, BildExt, BildPfad) values "_s +
        werte);
  }
  QStringList inhalt(const QString& abfrage) const {
    adodb::Connection verbindung;
    verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank());
    QStringList liste;
    for (const auto satz = verbindung.Execute(abfrage); !satz->Eof(); satz->MoveNext()) {
      QStringList eine;
      for (int i = 0; i < satz->Spalten().size(); ++i) eine.append(satz->Text(i));
      liste.append(eine.join(u'|'));
    }
    return liste;
  }
};

TEST_F(KvobildDatenbank, AGoodDatabaseHasNoFinding) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  const Lauf lauf = pruefe({u"--bilder"_s, wurzel()});
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString() << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"Erreicht:         "_s + datenbank()));
  EXPECT_TRUE(lauf.ausgabe.contains(u"SQLite 3."_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"14 von 14 Spalten; SELECT ja, INSERT ja, UPDATE ja, DELETE ja"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Zeilen:           1\n"_s));
  EXPECT_TRUE(lauf.ausgabe.endsWith(u"Ergebnis:         kein Befund\n"_s));
  EXPECT_TRUE(lauf.meldungen.isEmpty()) << lauf.meldungen.toStdString();
}

TEST_F(KvobildDatenbank, ARowWithoutItsPictureIsFoundHoweverItIsWritten) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  const QString name = dateien().value(0).section(u'.', 0, 0);
  zeile(u"('BEL', '-', 'AB', '2', '-', '-', '%1', 'JPG', 'BELEGE\\1')"_s.arg(name.toUpper()));
  zeile(u"('BEL', '-', 'AB', '3', '-', '-', 'weg', 'jpg', 'Belege\\1')"_s);
  zeile(u"('BEL', '-', 'AB', '4', '-', '-', 'auch', 'jpg', 'Kein\\Ordner')"_s);
  EXPECT_EQ(kennungen(pruefe_Json()), QStringList());
  const Lauf lauf = pruefe_Json({u"--bilder"_s, wurzel()});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(kennungen(lauf), QStringList{u"bild_fehlt"_s});
  const QJsonObject einer = befund(lauf, u"bild_fehlt"_s);
  EXPECT_EQ(einer[u"anzahl"_s].toInt(), 2);
  EXPECT_EQ(einer[u"zeilen"_s].toArray().at(0).toObject()[u"bildname"_s].toString(), u"weg"_s);
  EXPECT_EQ(einer[u"zeilen"_s].toArray().at(1).toObject()[u"bildpfad"_s].toString(), u"Kein\\Ordner"_s);
  EXPECT_TRUE(pruefe({u"--bilder"_s, wurzel()}).ausgabe.contains(u"  BEL - AB 3 - -: Belege\\1\\weg.jpg\n"_s));
}

TEST_F(KvobildDatenbank, AnEmptyPartOfTheKeyIsFoundAndNullDistinguishedFromEmpty) {
  for (int i = 0; i < 25; ++i)
    zeile(u"('BEL', '-', 'AB', '%1', NULL, '', 'b', 'jpg', 'x')"_s.arg(i, 2, 10, QChar(u'0')));
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(kennungen(lauf), QStringList{u"leerer_schluessel"_s});
  const QJsonObject einer = befund(lauf, u"leerer_schluessel"_s);
  EXPECT_EQ(einer[u"anzahl"_s].toInt(), 25);
  ASSERT_EQ(einer[u"zeilen"_s].toArray().size(), 20);
  const QJsonObject erste = einer[u"zeilen"_s].toArray().at(0).toObject();
  EXPECT_EQ(erste[u"key2"_s].toString(), u"00"_s);
  EXPECT_TRUE(erste[u"key3"_s].isNull());
  EXPECT_TRUE(erste[u"key4"_s].isString());
  const QString text = pruefe().ausgabe;
  EXPECT_TRUE(text.contains(u"  BEL - AB 00 NULL '': x\\b.jpg\n"_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"  … und weitere\n"_s));
}

TEST_F(KvobildDatenbank, EachOfTheEightPartsCountsAsEmpty) {
  const QStringList werte{u"'BEL'"_s, u"'-'"_s, u"'AB'"_s, u"'1'"_s, u"'-'"_s, u"'-'"_s, u"'b'"_s, u"'jpg'"_s};
  for (const QString& leer : {u"NULL"_s, u"''"_s}) {
    for (qsizetype i = 0; i < werte.size(); ++i) {
      QStringList zeilenwerte = werte;
      zeilenwerte[i] = leer;
      sql(u"delete from Bild_Zuordnungen"_s);
      zeile(u'(' + zeilenwerte.join(u", "_s) + u", 'x')"_s);
      EXPECT_EQ(kennungen(pruefe_Json()), QStringList{u"leerer_schluessel"_s}) << i << leer.toStdString();
    }
  }
}

TEST_F(KvobildDatenbank, RepeatedRowsAreNamedWithTheirNumber) {
  for (int i = 0; i < 3; ++i) zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  // The table takes both for the same.
  zeile(u"('bel', '-', 'ab ', '1', '-', '-', 'B', 'JPG', 'y')"_s);
  zeile(u"('BEL', '-', 'AB', '2', '-', '-', 'b', 'jpg', 'x')"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(kennungen(lauf), QStringList{u"doppelt"_s});
  EXPECT_EQ(befund(lauf, u"doppelt"_s)[u"anzahl"_s].toInt(), 1);
  EXPECT_EQ(befund(lauf, u"doppelt"_s)[u"zeilen"_s].toArray().at(0).toObject()[u"zeilen"_s].toString(), u"4"_s);
  EXPECT_TRUE(pruefe().ausgabe.contains(u" (4-mal)\n"_s));
}

TEST_F(KvobildDatenbank, AHundredThousandRowsAreCheckedQuickly) {
  sql(u"with recursive n(i) as (select 0 union all select i + 1 from n where i < 99999) insert into Bild_Zuordnungen "
      "(Typ1, Typ2, Key1, Key2, Key3, key4, Bildname, BildExt, BildPfad) "
      "select 'BEL', '-', 'AB', i / 10, '-', '-', 'bild' || i, 'jpg', 'Belege\\' || (i / 1000) from n"_s);
  ordner_.schreibe(u"bild.ablage/Belege/0/bild7.jpg"_s, "7");
  QElapsedTimer uhr;
  uhr.start();
  const Lauf lauf = pruefe_Json({u"--bilder"_s, wurzel()});
  // About a second; work that grows with the square of the rows takes hours.
  EXPECT_LT(uhr.elapsed(), 60'000);
  EXPECT_EQ(kennungen(lauf), QStringList{u"bild_fehlt"_s});
  EXPECT_EQ(befund(lauf, u"bild_fehlt"_s)[u"anzahl"_s].toInt(), 99'999);
}

TEST_F(KvobildDatenbank, AMissingTableIsExitCode3AndNamesTheCommand) {
  sql(u"drop table Bild_Zuordnungen"_s);
  const Lauf lauf = pruefe();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.contains(u"„kvobild datenbank anlegen“ legt sie an."_s)) << lauf.ausgabe.toStdString();
  sql(u"drop table BelegKopfZunft"_s);
  EXPECT_EQ(kennungen(pruefe_Json()), (QStringList{u"tabelle_fehlt"_s, u"tabelle_fehlt"_s}));
}

TEST_F(KvobildDatenbank, AMissingDatabaseIsNotCreated) {
  const QString fehlt = ordner_.pfad(u"fehlt.db"_s);
  EXPECT_EQ(kvobild({u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, fehlt}).code, 3);
  EXPECT_FALSE(QFile::exists(fehlt));
}

TEST_F(KvobildDatenbank, WhatDoesNotFitInTheColumnsIsNamedOneByOne) {
  sql(u"drop table Bild_Zuordnungen"_s);
  sql(u"create table Bild_Zuordnungen (Key1 TEXT COLLATE SERVERTEXT CHECK (LEN(Key1) <= 30), Key2 TEXT, "
      "Key3 INTEGER, key4 TEXT COLLATE SERVERTEXT, Bildname TEXT COLLATE SERVERTEXT, BildExt TEXT COLLATE SERVERTEXT, "
      "Typ1 TEXT COLLATE SERVERTEXT, Typ2 TEXT COLLATE SERVERTEXT, BildPfad TEXT COLLATE SERVERTEXT NOT NULL, "
      "Beschreibung TEXT COLLATE SERVERTEXT, Druckkennzeichen TEXT COLLATE SERVERTEXT NOT NULL, "
      "Grafik_Ursprung TEXT COLLATE SERVERTEXT, GrafikAnbNr TEXT COLLATE SERVERTEXT)"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_EQ(kennungen(lauf),
      (QStringList{u"spalte_kurz"_s, u"spalte_sortierung"_s, u"spalte_typ"_s, u"spalte_pflicht"_s, u"spalte_fehlt"_s}));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Key1 fasst 30 Zeichen, nötig sind 50"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Key2 unterscheidet"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Key3 ist „integer“; erwartet ist nvarchar(50)"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"BildPfad nimmt kein NULL"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"SortIndex fehlt; erwartet ist smallint"_s));
}

TEST_F(KvobildDatenbank, AForeignColumnIsAFindingOnlyWhereItPreventsNewRows) {
  sql(u"drop table Bild_Zuordnungen"_s);
  ASSERT_EQ(kvobild({u"anlegen"_s, u"--verbindung"_s, datenbank()}).code, 0);
  sql(u"alter table Bild_Zuordnungen add column Frei text"_s);
  sql(u"alter table Bild_Zuordnungen add column Vorgabe text not null default 'x'"_s);
  EXPECT_EQ(pruefe().code, 0);
  sql(u"create table Neu (Pflicht text not null)"_s);
  for (const QString& spalte : inhalt(u"select name || ' ' || type from pragma_table_info('Bild_Zuordnungen')"_s))
    sql(u"alter table Neu add column "_s + spalte +
        (spalte.endsWith(u"TEXT"_s) ? u" COLLATE SERVERTEXT"_s : QString()));
  sql(u"drop table Bild_Zuordnungen"_s);
  sql(u"alter table Neu rename to Bild_Zuordnungen"_s);
  const Lauf lauf = pruefe_Json();
  EXPECT_EQ(lauf.code, 3);
  EXPECT_EQ(kennungen(lauf), QStringList{u"spalte_fremd"_s}) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"Bild_Zuordnungen.Pflicht kennt das System nicht"_s));
}

TEST_F(KvobildDatenbank, AMissingRightIsExitCode3AndIsNamed) {
  const Lauf lauf = kvobild(
      {u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s, u"Provider=SQLite;Mode=ReadOnly;Data Source="_s + datenbank()});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.contains(u"SELECT ja, INSERT NEIN, UPDATE NEIN, DELETE NEIN"_s))
      << lauf.ausgabe.toStdString();
}

TEST_F(KvobildDatenbank, CheckingLeavesNoTrace) {
  sql(u"create table Spur (was text)"_s);
  for (const QString& was : {u"insert"_s, u"update"_s, u"delete"_s})
    sql(u"create trigger T%1 after %1 on Bild_Zuordnungen begin insert into Spur values ('%1'); end"_s.arg(was));
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  sql(u"delete from Spur"_s);
  const QStringList abfragen{u"select rowid, * from Bild_Zuordnungen"_s, u"select * from Spur"_s,
      u"select name, rootpage, sql from sqlite_master"_s};
  QList<QStringList> vorher;
  for (const QString& abfrage : abfragen) vorher.append(inhalt(abfrage));
  ASSERT_EQ(pruefe().code, 0);
  for (qsizetype i = 0; i < abfragen.size(); ++i) EXPECT_EQ(inhalt(abfragen[i]), vorher[i]);
}

TEST_F(KvobildDatenbank, APictureRootThatIsMissingOrEmptyIsExitCode4) {
  EXPECT_EQ(pruefe({u"--bilder"_s, ordner_.pfad(u"nicht.da"_s)}).code, 4);
  EXPECT_EQ(pruefe({u"--bilder"_s, wurzel()}).code, 0);
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  const Lauf lauf = pruefe({u"--bilder"_s, wurzel()});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"eingehängt"_s));
}

TEST_F(KvobildDatenbank, CreatingSaysWhatItMade) {
  const QString neu = ordner_.pfad(u"neu.db"_s);
  const QStringList aufruf{u"datenbank"_s, u"anlegen"_s, u"--verbindung"_s, neu};
  const Lauf erster = kvobild(aufruf);
  EXPECT_EQ(erster.code, 0);
  EXPECT_EQ(erster.zeilen(),
      (QStringList{u"Tabelle angelegt: Bild_Zuordnungen"_s, u"Tabelle angelegt: Bild_Vorgaenge"_s,
          u"Index angelegt: Bild_Zuordnungen_Schluessel"_s, u"Index angelegt: Bild_Zuordnungen_Typ"_s,
          u"Index angelegt: Bild_Zuordnungen_Datei"_s}));
  const Lauf zweiter = kvobild(aufruf);
  EXPECT_EQ(zweiter.code, 0);
  EXPECT_TRUE(zweiter.ausgabe.isEmpty());
  EXPECT_TRUE(zweiter.meldungen.contains(u"besteht schon"_s));
}

TEST_F(KvobildDatenbank, CreatingAddsWhatAnOldTableLacksAndLeavesItsRows) {
  sql(u"drop table Bild_Zuordnungen"_s);
  sql(u"create table Bild_Zuordnungen (Key1 TEXT COLLATE SERVERTEXT, Key2 TEXT COLLATE SERVERTEXT, "
      "Key3 TEXT COLLATE SERVERTEXT, key4 TEXT COLLATE SERVERTEXT, Bildname TEXT COLLATE SERVERTEXT, "
      "BildExt TEXT COLLATE SERVERTEXT, Typ1 TEXT COLLATE SERVERTEXT, Typ2 TEXT COLLATE SERVERTEXT, "
      "BildPfad TEXT COLLATE SERVERTEXT, Beschreibung TEXT COLLATE SERVERTEXT, "
      "Druckkennzeichen TEXT COLLATE SERVERTEXT, Grafik_Ursprung TEXT COLLATE SERVERTEXT)"_s);
  zeile(u"('BEL', '-', 'AB', '1', '-', '-', 'b', 'jpg', 'x')"_s);
  const Lauf lauf = kvobild({u"datenbank"_s, u"anlegen"_s, u"--verbindung"_s, datenbank()});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen().mid(0, 2),
      (QStringList{
          u"Spalte ergänzt: Bild_Zuordnungen.GrafikAnbNr"_s, u"Spalte ergänzt: Bild_Zuordnungen.SortIndex"_s}));
  EXPECT_EQ(inhalt(u"select Key2, GrafikAnbNr, SortIndex from Bild_Zuordnungen"_s), QStringList{u"1||"_s});
  EXPECT_EQ(pruefe().code, 0) << pruefe().ausgabe.toStdString();
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank());
  EXPECT_THROW(verbindung.Execute(u"update Bild_Zuordnungen set SortIndex = 40000"_s), Laufzeitfehler);
}

TEST_F(KvobildDatenbank, HalfACommandNamesTheSecondWords) {
  const Lauf ohne = kvobild({u"datenbank"_s});
  EXPECT_EQ(ohne.code, 2);
  EXPECT_TRUE(ohne.meldungen.contains(u"Hinter „datenbank“ fehlt „anlegen“ oder „pruefen“."_s));
  EXPECT_TRUE(kvobild({u"datenbank"_s, u"--json"_s}).meldungen.contains(u"fehlt „anlegen“ oder „pruefen“"_s));
  const Lauf falsch = kvobild({u"datenbank"_s, u"loeschen"_s});
  EXPECT_EQ(falsch.code, 2);
  EXPECT_TRUE(falsch.meldungen.contains(u"Den Befehl „datenbank loeschen“ gibt es nicht."_s));
  const Lauf hilfe = kvobild({u"datenbank"_s, u"--hilfe"_s});
  EXPECT_EQ(hilfe.code, 0);
  EXPECT_EQ(hilfe.zeilen().size(), 2);
  for (const QString& wort : {u"anlegen"_s, u"pruefen"_s})
    EXPECT_TRUE(kvobild({u"datenbank"_s, wort, u"--hilfe"_s})
                    .ausgabe.startsWith(u"Aufruf: kvobild datenbank "_s + wort + u" [Optionen]\n"_s));
}
