#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <thread>

#include "store/BasZuordnungen.h"
#include "store/clsBildZuordnungen.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Pruefdatenbank.h"

/// The database of a test as the store's tests speak of it.
class Testdatenbank : public Pruefdatenbank {
 public:
  /// All rows of a query, the values joined by "|".
  QStringList zeilen(const QString& abfrage) {
    QStringList ergebnis;
    for (const QStringList& zeile : Pruefdatenbank::zeilen(abfrage)) ergebnis.append(zeile.join(u'|'));
    return ergebnis;
  }
};

/// A store on a database of its own. Every report to the host's core component must be expected.
class Datenbanktest : public ::testing::Test {
 protected:
  void SetUp() override {
    // A program's tests share the thread's writing connection; each begins without one.
    BasZuordnungen::gConnection().reset();
    ASSERT_TRUE(store.Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
  }
  void TearDown() override {
    BasZuordnungen::gConnection().reset();
    db.pruefe_Ankunft();
  }

  /// Texts sent over the host's connection, and over the store's own, since the last question.
  QStringList gelesen() { return db.mitschrift().hole(Mitschrift::Seite::Wirt); }
  QStringList geschrieben() { return db.mitschrift().hole(Mitschrift::Seite::System); }

  /// One row of Bild_Zuordnungen, all columns in the order of the table.
  void fuege_ein(const QString& werte) {
    db.fuehre_aus(QStringLiteral("insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, "
                                 "BildPfad, Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) "
                                 "Values (") +
        werte + u')');
  }
  void leere() { db.fuehre_aus(QStringLiteral("delete from Bild_Zuordnungen")); }

  /// Two documents with headers, one of them with a works order, one document without a header, and an article.
  void lege_Belege_an() {
    db.fuehre_aus(
        QStringLiteral("insert into BelegKopfZunft (Belegart, Belegnummer, Kundennummer, Projektnummer) "
                       "Values ('RE','1','K1','P1'), ('RE','2','K2','P2')"));
    for (const QString& schluessel :
        {QStringLiteral("'RE','1','-','-','a','jpg','Bel'"), QStringLiteral("'RE','1','-','-','b','jpg','Bel'"),
            QStringLiteral("'RE','1','5','-','c','jpg','Mon'"), QStringLiteral("'RE','2','-','-','d','jpg','Bel'"),
            QStringLiteral("'XX','9','-','-','e','jpg','Bel'"), QStringLiteral("'RE','1','-','-','f','jpg','Art'")})
      fuege_ein(schluessel + QStringLiteral(",'-','P','T','0001',NULL,'-',0"));
  }
  /// The records of the collection as "Key1 Key2 Key3 Typ1".
  QStringList zeilen() {
    QStringList ergebnis;
    for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
      store.AktInd(i);
      ergebnis.append(
          QStringList{store.Bild_Key1(), store.Bild_Key2(), store.Bild_Key3(), store.Bild_Typ1()}.join(u' '));
    }
    return ergebnis;
  }

  /// Exactly one report came since the last question, from there and with that number.
  void erwarte_Bericht(const QString& modul, const QString& prozedur, std::int32_t nummer) {
    const auto berichte = core.hole();
    ASSERT_EQ(berichte.size(), 1);
    EXPECT_EQ(berichte[0].Modul, modul);
    EXPECT_EQ(berichte[0].Prozedur, prozedur);
    EXPECT_EQ(berichte[0].Nummer, nummer) << berichte[0].Beschreibung.toStdString();
    EXPECT_FALSE(berichte[0].Beschreibung.isEmpty());
    EXPECT_TRUE(berichte[0].MitMeldung);
  }
  /// Fetches all reports; how many came from that procedure.
  int berichte_von(const QString& prozedur) {
    int anzahl = 0;
    for (const auto& bericht : core.hole()) anzahl += bericht.Prozedur == prozedur ? 1 : 0;
    return anzahl;
  }
  void scheitere_beim_Schreiben(int n) { db.mitschrift().scheitere_am(n); }

  CoreDoppel core;
  Testdatenbank db;
  clsBildZuordnungen store;
};
