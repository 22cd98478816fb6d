#include <gtest/gtest.h>

#include "platform/adodb/odbc/FreetdsDatei.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::freetds_Abschnitt;

namespace {

const QByteArray Kopf = "[kvo]\n  host = srv01\n";

QString stellen_in(const QByteArray& zeilen) {
  return freetds_Abschnitt({Kopf + zeilen}, u"kvo"_s).stellen;
}

}  // namespace

// The same lines stand in tests/tds/test_tls.py, where FreeTDS itself reads them.
TEST(FreetdsDatei, AuthoritiesAreReadAsFreeTdsReadsThem) {
  for (const char* zeilen : {"CA   File= /x.pem ; mit einem Kommentar", "\tca\tfile\t=\t/x.pem",
           "ca file = /x.pem # noch einer", "[kvo]\nca file = /x.pem", "[global]\nca file = /x.pem",
           "[KVO] nochmal\nca file = /x.pem", "ca file = /x.pem\r"})
    EXPECT_EQ(stellen_in(zeilen), u"/x.pem"_s) << zeilen;
  for (const char* zeilen : {"; ca file = /x.pem", "# ca file = /x.pem", "ca file = /x.pem\nca file =",
           "[ kvo ]\nca file = /x.pem", "[andere]\nca file = /x.pem", "cafile = /x.pem", ""})
    EXPECT_EQ(stellen_in(zeilen), QString()) << zeilen;
}

TEST(FreetdsDatei, ASectionGoesBeforeTheGlobalOne) {
  const QByteArray datei = "[global]\nca file = /a.pem\nencryption = require\n" + Kopf + "ca file =\n";
  const auto abschnitt = freetds_Abschnitt({datei}, u"KVO"_s);
  EXPECT_TRUE(abschnitt.gefunden);
  EXPECT_EQ(abschnitt.stellen, QString());
  EXPECT_EQ(abschnitt.verschluesselung, u"require"_s);
}

TEST(FreetdsDatei, TheFirstFileWithTheSectionEndsTheSearch) {
  const QByteArray ohne = "[global]\ncheck certificate hostname = no\n[andere]\nca file = /nie.pem\n";
  const auto abschnitt = freetds_Abschnitt({ohne, Kopf + "ca file = /a.pem\n", Kopf + "ca file = /b.pem\n"}, u"kvo"_s);
  EXPECT_EQ(abschnitt.stellen, u"/a.pem"_s);
  EXPECT_FALSE(abschnitt.prueft_Namen) << "what stood under [global] on the way there counts";
  EXPECT_FALSE(freetds_Abschnitt({ohne}, u"kvo"_s).gefunden);
}

TEST(FreetdsDatei, TheNameIsCheckedUnlessItIsSaidOtherwise) {
  for (const char* wert : {"yes", "On", "TRUE", "1"})
    EXPECT_TRUE(freetds_Abschnitt({Kopf + "check certificate hostname = " + wert}, u"kvo"_s).prueft_Namen);
  for (const char* wert : {"no", "off", "false", "0", "vielleicht", ""})
    EXPECT_FALSE(freetds_Abschnitt({Kopf + "check certificate hostname = " + wert}, u"kvo"_s).prueft_Namen);
  EXPECT_TRUE(freetds_Abschnitt({Kopf}, u"kvo"_s).prueft_Namen);
}

TEST(FreetdsDatei, TheFileOfTheEnvironmentComesFirst) {
  const Testordner ordner;
  const QString datei = ordner.schreibe(u"freetds.conf"_s, "[einzig-hier]\nca file = /y.pem\n");
  qputenv("FREETDSCONF", datei.toUtf8());
  const auto inhalte = adodb::lies_Freetds_Dateien();
  qunsetenv("FREETDSCONF");
  ASSERT_FALSE(inhalte.isEmpty());
  EXPECT_EQ(freetds_Abschnitt(inhalte, u"einzig-hier"_s).stellen, u"/y.pem"_s);
  EXPECT_FALSE(freetds_Abschnitt(adodb::lies_Freetds_Dateien(), u"einzig-hier"_s).gefunden);
}
