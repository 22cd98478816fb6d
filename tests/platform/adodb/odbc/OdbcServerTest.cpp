#include <gtest/gtest.h>

#include "platform/adodb/odbc/OdbcServer.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Fall {
  QString text;
  QString rechner;
  QString instanz;
  int port;
};

}  // namespace

TEST(Serverangabe, IsReadInEveryFormOverTcp) {
  const Fall faelle[] = {{u"SRV"_s, u"SRV"_s, u""_s, 0}, {u" srv.firma.de "_s, u"srv.firma.de"_s, u""_s, 0},
      {u"SRV\\KVO"_s, u"SRV"_s, u"KVO"_s, 0}, {u"SRV\\MSSQLSERVER"_s, u"SRV"_s, u""_s, 0},
      {u"SRV,1444"_s, u"SRV"_s, u""_s, 1444}, {u"SRV , 1444"_s, u"SRV"_s, u""_s, 1444},
      {u"SRV\\KVO,1444"_s, u"SRV"_s, u""_s, 1444}, {u"TCP:SRV,65535"_s, u"SRV"_s, u""_s, 65535},
      {u"192.168.1.7\\KVO"_s, u"192.168.1.7"_s, u"KVO"_s, 0}, {u"."_s, u"localhost"_s, u""_s, 0},
      {u"(Local)\\KVO"_s, u"localhost"_s, u"KVO"_s, 0}, {u".\\KVO"_s, u"localhost"_s, u"KVO"_s, 0}};
  for (const Fall& fall : faelle) {
    SCOPED_TRACE(fall.text.toStdString());
    const adodb::Serverangabe angabe = adodb::lies_Serverangabe(fall.text);
    EXPECT_EQ(angabe.rechner, fall.rechner);
    EXPECT_EQ(angabe.instanz, fall.instanz);
    EXPECT_EQ(angabe.port, fall.port);
  }
}

TEST(Serverangabe, OtherWaysThanTcpAndPortsThatAreNoneAreRefused) {
  for (const QString& text : {u"np:SRV"_s, u"\\\\SRV\\pipe\\sql\\query"_s, u"(localdb)\\MSSQLLocalDB"_s, u"lpc:SRV"_s,
           u"admin:SRV"_s, u"SRV,"_s, u"SRV,0"_s, u"SRV,65536"_s, u"SRV,-1"_s, u"SRV,abc"_s}) {
    SCOPED_TRACE(text.toStdString());
    EXPECT_EQ(Fehlernummer_von([&] { adodb::lies_Serverangabe(text); }), fehlernummer::Verbindung);
  }
}
