#include "platform/adodb/Command.h"
#include "tests/support/Fehler.h"
#include "tests/support/Pruefdatenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(Pruefdatenbank, RecordsBothSidesInOrderAsSent) {
  Pruefdatenbank datenbank;
  adodb::Connection eigene;
  eigene.Open(datenbank.verbindungszeichenfolge());
  eigene.Execute(u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('A', 0)"_s);
  const auto satz = datenbank.verbindung()->Execute(u"Select Top 1 Key1 from Bild_Zuordnungen "_s);
  EXPECT_FALSE(satz->Eof());
  ASSERT_EQ(datenbank.mitschrift().eintraege().size(), 2U);
  EXPECT_EQ(datenbank.mitschrift().eintraege()[0].seite, Mitschrift::Seite::System);
  EXPECT_EQ(datenbank.mitschrift().eintraege()[1].seite, Mitschrift::Seite::Wirt);
  EXPECT_EQ(datenbank.mitschrift().hole(),
      QStringList({u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('A', 0)"_s,
          u"Select Top 1 Key1 from Bild_Zuordnungen "_s}));
  EXPECT_TRUE(datenbank.mitschrift().hole().isEmpty());
  EXPECT_EQ(datenbank.anzahl(), 1);
  EXPECT_EQ(datenbank.anzahl(u"Key1 = 'b'"_s), 0);
}

TEST(Pruefdatenbank, RecordsAStatementWithItsValues) {
  Pruefdatenbank datenbank;
  const QString text = u"insert into Bild_Zuordnungen (Key1, SortIndex) Values (?, ?)"_s;
  const std::vector<adodb::Wert> werte = {u"O'Neil"_s, std::int64_t{3}};
  datenbank.verbindung()->Execute(text, werte);
  ASSERT_EQ(datenbank.mitschrift().eintraege().size(), 1U);
  EXPECT_EQ(datenbank.mitschrift().eintraege()[0].text, text);
  EXPECT_EQ(datenbank.mitschrift().eintraege()[0].werte, werte);
  EXPECT_EQ(datenbank.angekommen(), QStringList(text));
  datenbank.pruefe_Ankunft();
  EXPECT_EQ(datenbank.anzahl(u"Key1 = 'o''neil' and SortIndex = 3"_s), 1);
}

TEST(Pruefdatenbank, FailsWhereTheTestWantsIt) {
  Pruefdatenbank datenbank;
  const auto lies = [&] {
    return datenbank.verbindung()->Execute(u"Select * from Bild_Zuordnungen order by SortIndex"_s);
  };
  datenbank.mitschrift().scheitere_am(2, fehlernummer::Verbindung);
  EXPECT_NO_THROW(lies());
  EXPECT_EQ(Fehlernummer_von([&] { lies(); }), fehlernummer::Verbindung);
  EXPECT_NO_THROW(lies());
  datenbank.mitschrift().scheitere_bei_Beginn(u"SELECT *"_s);
  EXPECT_EQ(Fehlernummer_von([&] { lies(); }), fehlernummer::Anweisung);
  EXPECT_NO_THROW(datenbank.verbindung()->Execute(u"Select Key1 from Bild_Zuordnungen"_s));
  datenbank.mitschrift().scheitere_immer();
  EXPECT_EQ(Fehlernummer_von([&] { datenbank.verbindung()->Execute(u"Select 1"_s); }), fehlernummer::Anweisung);
  datenbank.mitschrift().heile();
  EXPECT_NO_THROW(lies());
  EXPECT_EQ(datenbank.mitschrift().eintraege().size(), 7U);
  EXPECT_TRUE(datenbank.mitschrift().eintraege()[3].gescheitert);
}

TEST(Pruefdatenbank, OpeningFailsWhereTheTestWantsIt) {
  Pruefdatenbank datenbank;
  datenbank.mitschrift().scheitere_beim_Oeffnen();
  adodb::Connection eigene;
  EXPECT_EQ(Fehlernummer_von([&] { eigene.Open(datenbank.verbindungszeichenfolge()); }), fehlernummer::Verbindung);
  EXPECT_EQ(eigene.State(), adodb::adStateClosed);
}

}  // namespace
