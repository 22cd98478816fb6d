// What goes over the line to the server, counted there: the driver adds no round trip to a statement.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <optional>

#include "platform/adodb/Connection.h"
#include "tests/support/Tdsserver.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Packets from the client and whole messages, each of which is answered by one.
struct Verkehr {
  int ein = 0;
  int nachrichten = 0;
  friend Verkehr operator-(Verkehr a, Verkehr b) { return {a.ein - b.ein, a.nachrichten - b.nachrichten}; }
  friend bool operator==(Verkehr, Verkehr) = default;
  friend void PrintTo(Verkehr v, std::ostream* os) { *os << v.ein << " packets in " << v.nachrichten << " messages"; }
};

class OdbcPakete : public testing::Test {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    server_.emplace(u"zaehler"_s, u"Geheim-1"_s);
    ASSERT_TRUE(server_->laeuft());
  }
  std::shared_ptr<adodb::Connection> oeffne() {
    auto verbindung = std::make_shared<adodb::Connection>();
    verbindung->Open(
        u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=bilder;User ID=zaehler;Password=Geheim-1"_s.arg(
            server_->port()));
    return verbindung;
  }
  Verkehr bisher() {
    static const QRegularExpression Form(u"^ein=(\\d+) aus=\\d+ nachrichten=(\\d+)$"_s);
    const auto treffer = Form.match(server_->steuere(u"pakete"_s));
    EXPECT_TRUE(treffer.hasMatch());
    return {treffer.captured(1).toInt(), treffer.captured(2).toInt()};
  }
  template <class Arbeit>
  Verkehr verkehr(Arbeit arbeit) {
    const Verkehr vorher = bisher();
    arbeit();
    return bisher() - vorher;
  }

  std::optional<Tdsserver> server_;
};

}  // namespace

TEST_F(OdbcPakete, AStatementIsOneMessageWhateverItDoes) {
  const auto verbindung = oeffne();
  for (const QString& text : {u"insert into Bild_Zuordnungen (Key1, SortIndex) Values ('A', 1)"_s,
           u"UPDATE Bild_Zuordnungen SET SortIndex = 2 WHERE Key1 = 'A'"_s,
           u"UPDATE Bild_Zuordnungen SET SortIndex = 2 WHERE Key1 = 'nie'"_s,
           u"Select * from Bild_Zuordnungen  where Key1 = 'A'order by SortIndex"_s,
           u"Select * from Bild_Zuordnungen  where Key1 = 'nie'order by SortIndex"_s,
           u"Select Top 1 Key1 from Bild_Zuordnungen "_s, u"Delete from Bild_Zuordnungen  where Key1 = 'A'"_s}) {
    SCOPED_TRACE(text.toStdString());
    for (const int anzahl : {1, 20})
      EXPECT_EQ(verkehr([&] {
        for (int i = 0; i < anzahl; ++i) verbindung->Execute(text);
      }),
          (Verkehr{anzahl, anzahl}));
  }
}

TEST_F(OdbcPakete, AStatementWithValuesIsOneMessageToo) {
  const auto verbindung = oeffne();
  const QString einfuegen = u"insert into Bild_Zuordnungen (Key1, SortIndex) Values (?, ?)"_s;
  for (const int anzahl : {1, 20})
    EXPECT_EQ(verkehr([&] {
      for (int i = 0; i < anzahl; ++i) verbindung->Execute(einfuegen, {u"A"_s, std::int64_t{i}});
    }),
        (Verkehr{anzahl, anzahl}));
}

TEST_F(OdbcPakete, AFailedStatementIsOneMessageToo) {
  const auto verbindung = oeffne();
  EXPECT_EQ(verkehr([&] { EXPECT_ANY_THROW(verbindung->Execute(u"Select * from Gibt_Es_Nicht"_s)); }), (Verkehr{1, 1}));
}

TEST_F(OdbcPakete, TenThousandRowsAreReadWithOneMessage) {
  server_->steuere(
      u"sql WITH RECURSIVE b(j) AS (SELECT 0 UNION ALL SELECT j + 1 FROM b WHERE j < 9999) INSERT INTO "
      "Bild_Zuordnungen (Key1, Bildname, SortIndex) SELECT 'RE', 'Bild ' || j, j FROM b"_s);
  const auto verbindung = oeffne();
  std::shared_ptr<adodb::Recordset> satz;
  EXPECT_EQ(verkehr([&] { satz = verbindung->Execute(u"Select * from Bild_Zuordnungen order by SortIndex"_s); }),
      (Verkehr{1, 1}));
  // All of it is here by now: going through the rows sends nothing.
  EXPECT_EQ(verkehr([&] {
    for (int i = 0; !satz->Eof(); satz->MoveNext(), ++i)
      ASSERT_EQ(satz->Text(satz->Spalte(u"Bildname"_s)), u"Bild %1"_s.arg(i));
  }),
      (Verkehr{0, 0}));
  EXPECT_EQ(satz->RecordCount(), 10'000);
}

TEST_F(OdbcPakete, OpeningIsThePreLoginAndTheLoginAndClosingIsNothing) {
  std::shared_ptr<adodb::Connection> verbindung;
  EXPECT_EQ(verkehr([&] { verbindung = oeffne(); }), (Verkehr{2, 2}));
  EXPECT_EQ(verkehr([&] { verbindung->Close(); }), (Verkehr{0, 0}));
}
