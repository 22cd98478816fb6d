// Which engine a connect string means, and what is known of both.
#include <gtest/gtest.h>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Namen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const Datenbankart& art(const QString& verbindung) {
  return Datenbankart::von(gelesene_Verbindung(verbindung));
}

}  // namespace

TEST(Datenbankart, OnlyTheProviderSqliteIsAFile) {
  for (const QString& datei : {u"Provider=SQLite;Data Source=/x.db"_s, u"provider = sqlite"_s})
    EXPECT_EQ(&art(datei), &Datenbankart::SQLite) << datei.toStdString();
  for (const QString& server : {u"Provider=SQLOLEDB;Data Source=s"_s, u"Server=sqlite"_s, u"kein Paar"_s, QString()})
    EXPECT_EQ(&art(server), &Datenbankart::Server) << server.toStdString();
}

TEST(Datenbankart, BothEnginesAnswerEachQuestion) {
  for (const Datenbankart* eine : {&Datenbankart::SQLite, &Datenbankart::Server}) {
    for (const QString& text : {eine->Skript, eine->Wirtsskript, eine->Spaltennamen, eine->Indexnamen, eine->Spalten,
             eine->Pflichtspalten, eine->Ruecknahme})
      EXPECT_FALSE(text.isEmpty());
    for (const QString& text : {eine->Spaltennamen, eine->Indexnamen}) EXPECT_TRUE(text.contains(u"%2"_s));
    EXPECT_TRUE(eine->Spalten.contains(u"%1"_s));
    EXPECT_TRUE(eine->spalte && eine->gegenstelle);
  }
  EXPECT_TRUE(Datenbankart::SQLite.ist_Datei && !Datenbankart::Server.ist_Datei);
}

TEST(Datenbankart, AFileIsNamedInItsConnectString) {
  const QString verbindung = verbindung_zur_Datei(u"/neben an/x;y.db"_s);
  EXPECT_EQ(&art(verbindung), &Datenbankart::SQLite);
  EXPECT_EQ(datenbankdatei(verbindung), namen::tabellenpfad(u"/neben an/x;y.db"_s));
  EXPECT_EQ(datenbankdatei(u"Server=s"_s), std::nullopt);
  EXPECT_EQ(verbindung_aus_Angabe(u"/neben an/x;y.db"_s), verbindung);
}
