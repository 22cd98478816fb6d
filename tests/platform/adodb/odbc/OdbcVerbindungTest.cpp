#include <gtest/gtest.h>

#include "platform/adodb/odbc/OdbcVerbindung.h"
#include "platform/basic/Laufzeitfehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::OdbcArt;
using adodb::Verbindungszeichenfolge;

namespace {

const QString FreeTds = u"FreeTDS"_s;
const QString Hersteller = u"ODBC Driver 18 for SQL Server"_s;

adodb::OdbcUmgebung mit(const QString& treiber) {
  adodb::OdbcUmgebung umgebung;
  umgebung.treiber = {{treiber, adodb::odbc_Art(treiber, {})}};
  umgebung.datenquellen = {{u"Quelle"_s, treiber}, {u"Gepruefte"_s, treiber, u"kvo"_s}};
  umgebung.freetds = {
      "[kvo]\nca file = /x.pem\n[ohne]\nhost = S\nencryption = require\n[fremder]\nca file = /x.pem\n"
      "check certificate hostname = no\n"};
  return umgebung;
}

adodb::OdbcAufruf aufruf(const QString& text, const QString& treiber = FreeTds) {
  return adodb::uebersetze_Odbc(Verbindungszeichenfolge(text), mit(treiber));
}

/// What is said of a connect string that is refused; empty where it is taken.
QString grund(const QString& text, const QString& treiber = FreeTds) {
  try {
    aufruf(text, treiber);
  } catch (const Laufzeitfehler& fehler) {
    EXPECT_EQ(fehler.Nummer(), fehlernummer::Verbindung);
    return fehler.Beschreibung();
  }
  return {};
}

struct Fall {
  QString text;
  QString freetds;
  QString hersteller;
};

}  // namespace

TEST(OdbcVerbindung, EveryKeywordBecomesTheDriversOwn) {
  // What stands in front of and behind the part that differs.
  const QString f = u"DRIVER={FreeTDS};"_s;
  const QString h = u"DRIVER={ODBC Driver 18 for SQL Server};"_s;
  const QString srv = u"SERVER=S;"_s;
  const QString an = u"UID=u;PWD=k;"_s;
  const QString v = u"TDS_Version=7.4;"_s;
  const QString basis = u"Server=S;UID=u;PWD=k;"_s;
  const Fall faelle[] = {
      {u"Provider=SQLOLEDB;Data Source=S;Initial Catalog=D;User ID=u;Password=k"_s, f + srv + u"DATABASE=D;"_s + an + v,
          h + srv + u"DATABASE=D;"_s + an},
      {u" PROVIDER = sqloledb.1 ; DATA source= S ;Initial  Catalog =D; user_id=u; pwd= k ;"_s,
          f + srv + u"DATABASE=D;"_s + an + v, h + srv + u"DATABASE=D;"_s + an},
      {u"Server=S;Database=D;UID=u;PWD=k"_s, f + srv + u"DATABASE=D;"_s + an + v, h + srv + u"DATABASE=D;"_s + an},
      {u"Address=S;User=u;Password=k"_s, f + srv + an + v, h + srv + an},
      {u"Server=S\\KVO;User Name=u;Password=k"_s, f + u"SERVER=S\\KVO;"_s + an + v, h + u"SERVER=S\\KVO;"_s + an},
      {u"Server=tcp:S,1444;UID=u;PWD=k"_s, f + u"SERVER=S;PORT=1444;"_s + an + v, h + u"SERVER=S,1444;"_s + an},
      {u"Server=S;Port=1444;UID=u;PWD=k"_s, f + u"SERVER=S;PORT=1444;"_s + an + v, h + u"SERVER=S,1444;"_s + an},
      {u"Server=S;UID=u"_s, f + srv + u"UID=u;PWD=;"_s + v, h + srv + u"UID=u;PWD=;"_s},
      {u"Server=S;Integrated Security=SSPI;User ID=\"\""_s, f + srv + u"Trusted_Connection=yes;"_s + v,
          h + srv + u"Trusted_Connection=yes;"_s},
      {u"Server=S;Trusted_Connection=Yes"_s, f + srv + u"Trusted_Connection=yes;"_s + v,
          h + srv + u"Trusted_Connection=yes;"_s},
      {basis + u"Trusted_Connection=No;Integrated Security=false"_s, f + srv + an + v, h + srv + an},
      {basis + u"Encrypt=no"_s, f + srv + an + u"Encryption=request;"_s + v, h + srv + an + u"Encrypt=no;"_s},
      {basis + u"Use Encryption for Data=False"_s, f + srv + an + u"Encryption=request;"_s + v,
          h + srv + an + u"Encrypt=no;"_s},
      {basis + u"Encrypt=optional;TrustServerCertificate=no"_s, f + srv + an + u"Encryption=request;"_s + v,
          h + srv + an + u"Encrypt=no;TrustServerCertificate=no;"_s},
      {basis + u"Use Encryption for Data=Mandatory;Trust Server Certificate=True"_s,
          f + srv + an + u"Encryption=require;"_s + v, h + srv + an + u"Encrypt=yes;TrustServerCertificate=yes;"_s},
      {basis + u"Encryption=require"_s, f + srv + an + u"Encryption=require;"_s + v, h + srv + an + u"Encrypt=yes;"_s},
      {basis + u"Application Name=KVO;Workstation ID=PC1;Current Language=German"_s,
          f + srv + an + u"APP=KVO;WSID=PC1;Language=German;"_s + v,
          h + srv + an + u"APP=KVO;WSID=PC1;Language=German;"_s},
      {basis + u"APP=KVO;WSID=PC1;Language=German;Application Intent=ReadOnly;Server SPN=x/y"_s,
          f + srv + an + u"APP=KVO;WSID=PC1;Language=German;ApplicationIntent=ReadOnly;ServerSPN=x/y;"_s + v,
          h + srv + an + u"APP=KVO;WSID=PC1;Language=German;ApplicationIntent=ReadOnly;ServerSPN=x/y;"_s},
      {basis +
              u"Persist Security Info=True;Use Procedure for Prepare=1;Auto Translate=True;Tag with column collation "
              "when possible=False;MARS_Connection=yes;DataTypeCompatibility=80;Network Library=DBMSSOCN;Extended "
              "Properties=\"\";MultiSubnetFailover=No"_s,
          f + srv + an + v, h + srv + an},
  };
  for (const Fall& fall : faelle) {
    SCOPED_TRACE(fall.text.toStdString());
    EXPECT_EQ(aufruf(fall.text, FreeTds).zeichenfolge, fall.freetds);
    EXPECT_EQ(aufruf(fall.text, Hersteller).zeichenfolge, fall.hersteller);
  }
}

TEST(OdbcVerbindung, OneDriversOwnKeywordsReachThatDriver) {
  EXPECT_EQ(aufruf(u"Servername=kvo;UID=u;PWD=k;Encrypt=yes"_s).zeichenfolge,
      u"DRIVER={FreeTDS};SERVERNAME=kvo;UID=u;PWD=k;Encryption=require;TDS_Version=7.4;"_s);
  EXPECT_EQ(aufruf(u"Server=S;UID=u;PWD=k;TDS Version=7.3;Realm=R;UseNTLMv2=1;Encryption=OFF"_s).zeichenfolge,
      u"DRIVER={FreeTDS};SERVER=S;UID=u;PWD=k;Encryption=off;REALM=R;UseNTLMv2=yes;TDS_Version=7.3;"_s);
  EXPECT_EQ(aufruf(u"Server=S;UID=u;PWD=k;Encrypt=strict;HostNameInCertificate=x;Server Certificate=/c;"
                   "MultiSubnetFailover=yes"_s,
                Hersteller)
                .zeichenfolge,
      u"DRIVER={ODBC Driver 18 for SQL Server};SERVER=S;UID=u;PWD=k;Encrypt=strict;HostnameInCertificate=x;"
      "ServerCertificate=/c;MultiSubnetFailover=yes;"_s);
}

TEST(OdbcVerbindung, ADataSourceOrADriverThatIsNamedIsTaken) {
  EXPECT_EQ(aufruf(u"DSN=quelle;UID=u;PWD=k"_s).zeichenfolge, u"DSN=quelle;UID=u;PWD=k;"_s);
  EXPECT_EQ(aufruf(u"Provider=MSDASQL;Data Source=Quelle"_s).zeichenfolge, u"DSN=Quelle;"_s);
  EXPECT_EQ(aufruf(u"Driver={freetds};Server=S;UID=u;PWD=k"_s).zeichenfolge,
      u"DRIVER={FreeTDS};SERVER=S;UID=u;PWD=k;TDS_Version=7.4;"_s);
  EXPECT_EQ(aufruf(u"Driver=/opt/libtdsodbc.so;Server=S;UID=u;PWD=k"_s, Hersteller).art, OdbcArt::FreeTds);
}

TEST(OdbcVerbindung, TimesAndSizesGoBesideTheText) {
  const QString basis = u"Server=S;UID=u;PWD=k;"_s;
  EXPECT_EQ(aufruf(basis).anmeldezeit, 15U);
  EXPECT_FALSE(aufruf(basis).paketgroesse.has_value());
  for (const QString& wort : {u"Connect Timeout"_s, u"Connection Timeout"_s, u"Login Timeout"_s, u"Timeout"_s})
    EXPECT_EQ(aufruf(basis + wort + u"=0"_s).anmeldezeit, 0U);
  EXPECT_EQ(aufruf(basis + u"Packet Size=4096"_s).paketgroesse, 4096U);
  EXPECT_EQ(aufruf(basis + u"PacketSize=8192;Connect Timeout=3"_s).anmeldezeit, 3U);
  EXPECT_EQ(aufruf(u"Server=S\\I;UID=u;PWD=k"_s).ziel, u"S\\I"_s);
}

TEST(OdbcVerbindung, ValuesWithSpecialCharactersAreWrittenAsTheDriverReadsThem) {
  struct Kennwort {
    QString geschrieben;
    QString freetds;
    QString hersteller;
  };
  const Kennwort faelle[] = {{u"\"a;b\""_s, u"{a;b}"_s, u"{a;b}"_s}, {u"{a;b}"_s, u"{a;b}"_s, u"{a;b}"_s},
      {u"'a;}b'"_s, u"{a;}b}"_s, u"{a;}}b}"_s}, {u"\"a}b\""_s, u"a}b"_s, u"{a}}b}"_s},
      {u"{a}}b}"_s, u"a}b"_s, u"{a}}b}"_s}, {u"\"{a\""_s, u"{{a}"_s, u"{{a}"_s},
      {u"\"a;}\""_s, u"{a;}}"_s, u"{a;}}}"_s}, {u"\" a \""_s, u" a "_s, u"{ a }"_s},
      {u"\"a=b\""_s, u"a=b"_s, u"{a=b}"_s}, {u"\"a\"\"b\""_s, u"a\"b"_s, u"a\"b"_s},
      {u"Pässwört€"_s, u"Pässwört€"_s, u"Pässwört€"_s}};
  for (const Kennwort& fall : faelle) {
    SCOPED_TRACE(fall.geschrieben.toStdString());
    const QString text = u"Server=S;UID=u;Password="_s + fall.geschrieben;
    EXPECT_EQ(aufruf(text, FreeTds).zeichenfolge,
        u"DRIVER={FreeTDS};SERVER=S;UID=u;PWD="_s + fall.freetds + u";TDS_Version=7.4;"_s);
    EXPECT_EQ(aufruf(text, Hersteller).zeichenfolge,
        u"DRIVER={ODBC Driver 18 for SQL Server};SERVER=S;UID=u;PWD="_s + fall.hersteller + u";"_s);
  }
}

TEST(OdbcVerbindung, OfSeveralWordsForTheSameTheLastCounts) {
  EXPECT_EQ(aufruf(u"Server=A;UID=a;PWD=a;Data Source=S;User ID=\"u\";Password=\"k\""_s).zeichenfolge,
      u"DRIVER={FreeTDS};SERVER=S;UID=u;PWD=k;TDS_Version=7.4;"_s);
}

TEST(OdbcVerbindung, WhatCannotBeHonouredIsSaidAndNotIgnored) {
  struct Ablehnung {
    QString text;
    QString wort;
  };
  const QString b = u"Server=S;UID=u;PWD=k;"_s;
  const Ablehnung fuer_beide[] = {
      {u"UID=u;PWD=k;Database=D"_s, u"keinen Server"_s},
      {u"Server=S"_s, u"keine Anmeldung"_s},
      {b + u"Integrated Security=SSPI"_s, u"Anmeldung des Systems"_s},
      {u"Server=S;DSN=Quelle;UID=u"_s, u"mehrfach"_s},
      {u"DSN=Fremde;UID=u"_s, u"„Fremde“"_s},
      {u"Driver={SQL Server};Server=S;UID=u"_s, u"„SQL Server“"_s},
      {u"Driver={FreeTDS};DSN=Quelle"_s, u"Treiber und eine Datenquelle"_s},
      {u"Server=np:S;UID=u"_s, u"nur über TCP"_s},
      {u"Server=S,1;Port=2;UID=u"_s, u"zwei Ports"_s},
      {u"DSN=Quelle;Port=2;UID=u"_s, u"fehlt „Server“"_s},
      {b + u"Encrypt=vielleicht"_s, u"„Encrypt“"_s},
      {b + u"Encrypt=yes;Encryption=off"_s, u"nicht zusammen"_s},
      {b + u"Connect Timeout=bald"_s, u"„Connect Timeout“"_s},
      {b + u"Packet Size=100"_s, u"„Packet Size“"_s},
      {b + u"Network Library=dbnmpntw"_s, u"„Network Library“"_s},
      {b + u"Failover Partner=T"_s, u"„Failover Partner“"_s},
      {b + u"Auto Translate=False"_s, u"„Auto Translate“"_s},
      {b + u"DumpFile=/tmp/x"_s, u"Mitschrift"_s},
      {b + u"Farbe=blau"_s, u"das 4. Schlüsselwort"_s},
  };
  for (const Ablehnung& fall : fuer_beide)
    for (const QString& treiber : {FreeTds, Hersteller}) {
      if (fall.text.contains(u"{FreeTDS}"_s) && treiber == Hersteller) continue;
      EXPECT_TRUE(grund(fall.text, treiber).contains(fall.wort))
          << fall.text.toStdString() << ": " << grund(fall.text, treiber).toStdString();
    }
  for (const QString& wort : {u"Encrypt=strict"_s, u"Encrypt=yes"_s, u"Encrypt=yes;TrustServerCertificate=no"_s,
           u"HostNameInCertificate=x"_s, u"ServerCertificate=/c"_s, u"MultiSubnetFailover=yes"_s}) {
    EXPECT_TRUE(grund(b + wort, FreeTds).contains(u"FreeTDS"_s)) << wort.toStdString();
    EXPECT_EQ(grund(b + wort, Hersteller), QString()) << wort.toStdString();
  }
  for (const QString& wort : {u"TDS_Version=7.3"_s, u"Realm=R"_s, u"UseNTLMv2=yes"_s, u"Encryption=off"_s})
    EXPECT_TRUE(grund(b + wort, Hersteller).contains(u"kann „"_s)) << wort.toStdString();
  EXPECT_TRUE(grund(u"Servername=kvo;UID=u"_s, Hersteller).contains(u"„Servername“"_s));
  EXPECT_TRUE(grund(u"Server=S;UID=u;PWD=\"a;};b\""_s, FreeTds).contains(u"FreeTDS"_s));
  EXPECT_TRUE(grund(u"Server=S;UID=u;PWD=\"a;}DRIVER=b\""_s, FreeTds).contains(u"FreeTDS"_s));
}

TEST(OdbcVerbindung, FreeTdsIsAskedForACheckedCertificateOnlyWhereItChecksOne) {
  const QString an = u"UID=u;PWD=k;Encrypt=yes;"_s;
  EXPECT_EQ(grund(u"Servername=kvo;"_s + an), QString());
  EXPECT_EQ(grund(u"DSN=Gepruefte;"_s + an), QString());
  const QList<QPair<QString, QString>> faelle = {{u"Server=S;"_s, u"nur nach einem Abschnitt"_s},
      {u"Servername=ohne;"_s, u"fehlt „ca file“"_s}, {u"Servername=nirgends;"_s, u"gibt es den Abschnitt „nirgends“"_s},
      {u"Servername=fremder;"_s, u"lässt jeden Namen gelten"_s}, {u"DSN=Quelle;"_s, u"nur nach einem Abschnitt"_s}};
  for (const auto& [ort, wort] : faelle) {
    for (const QString& forderung : {an, QString(an).replace(u"Encrypt"_s, u"Use Encryption for Data"_s),
             u"UID=u;PWD=k;Encryption=require;TrustServerCertificate=no"_s}) {
      const QString worte = grund(ort + forderung);
      EXPECT_TRUE(worte.contains(wort)) << ort.toStdString() << worte.toStdString();
      EXPECT_TRUE(worte.contains(u"TrustServerCertificate=yes"_s)) << worte.toStdString();
    }
    EXPECT_EQ(grund(ort + an + u"TrustServerCertificate=yes"_s), QString()) << ort.toStdString();
  }
}

TEST(OdbcVerbindung, WhatIsDemandedIsNotGivenUpForAnOlderProtocol) {
  const QString b = u"Server=S;UID=u;PWD=k;Encryption=require;"_s;
  EXPECT_TRUE(grund(b + u"TDS_Version=auto"_s).contains(u"TDS_Version=auto"_s));
  EXPECT_EQ(grund(b + u"TDS_Version=7.1"_s), QString());
  EXPECT_EQ(grund(u"Server=S;UID=u;PWD=k;TDS_Version=auto"_s), QString()) << "nothing is demanded";
  EXPECT_EQ(aufruf(u"Servername=ohne;UID=u;PWD=k"_s).zeichenfolge,
      u"DRIVER={FreeTDS};SERVERNAME=ohne;UID=u;PWD=k;TDS_Version=7.4;"_s)
      << "the section demands it";
  for (const QString& version : {u"7.0"_s, u"5.0"_s, u"auto"_s, u"7.3"_s}) {
    adodb::OdbcUmgebung umgebung = mit(FreeTds);
    umgebung.tdsver = version;
    const auto uebersetze = [&](const QString& text) {
      try {
        uebersetze_Odbc(Verbindungszeichenfolge(text), umgebung);
      } catch (const Laufzeitfehler& fehler) {
        return fehler.Beschreibung();
      }
      return QString();
    };
    EXPECT_EQ(uebersetze(b).contains(u"TDSVER"_s), version != "7.3"_L1) << version.toStdString();
    EXPECT_EQ(uebersetze(u"Server=S;UID=u;PWD=k"_s), QString());
  }
}

TEST(OdbcVerbindung, WhatIsEncryptedAndCheckedIsKnownBeforeTheServerIsAsked) {
  using Schutz = adodb::Leitungsschutz;
  using Umfang = Schutz::Umfang;
  using Pruefung = Schutz::Pruefung;
  struct Fall {
    QString text;
    Schutz freetds;
    Schutz hersteller;
  };
  const QString b = u"Server=S;UID=u;PWD=k;"_s;
  const QString vertraut = u"TrustServerCertificate=yes;"_s;
  const Fall faelle[] = {
      {b, {Umfang::Offen, Pruefung::Keine}, {Umfang::Ganz, Pruefung::Ganz}},
      {b + vertraut, {Umfang::Offen, Pruefung::Keine}, {Umfang::Ganz, Pruefung::Keine}},
      {b + u"Encrypt=no"_s, {Umfang::Offen, Pruefung::Keine}, {Umfang::Offen, Pruefung::Unbekannt}},
      {b + u"Encrypt=yes;"_s + vertraut, {Umfang::Ganz, Pruefung::Keine}, {Umfang::Ganz, Pruefung::Keine}},
      {b + u"Encryption=require"_s, {Umfang::Ganz, Pruefung::Keine}, {Umfang::Ganz, Pruefung::Ganz}},
  };
  for (const Fall& fall : faelle) {
    SCOPED_TRACE(fall.text.toStdString());
    EXPECT_EQ(aufruf(fall.text, FreeTds).schutz, fall.freetds);
    EXPECT_EQ(aufruf(fall.text, Hersteller).schutz, fall.hersteller);
  }
  const QString u = u"UID=u;PWD=k;"_s;
  EXPECT_EQ(aufruf(b + u"Encryption=off"_s).schutz, (Schutz{Umfang::Keiner, Pruefung::Keine}));
  EXPECT_EQ(aufruf(u"Servername=kvo;"_s + u).schutz, (Schutz{Umfang::Offen, Pruefung::Ganz}));
  EXPECT_EQ(aufruf(u"Servername=ohne;"_s + u).schutz, (Schutz{Umfang::Ganz, Pruefung::Keine}));
  EXPECT_EQ(
      aufruf(u"Servername=fremder;Encryption=require;"_s + u).schutz, (Schutz{Umfang::Ganz, Pruefung::Ohne_Namen}));
  EXPECT_EQ(aufruf(u"DSN=Gepruefte;Encrypt=yes;"_s + u).schutz, (Schutz{Umfang::Ganz, Pruefung::Ganz}));
  EXPECT_EQ(aufruf(b, u"ODBC Driver 17 for SQL Server"_s).schutz, Schutz());
  EXPECT_EQ(aufruf(u"DSN=Quelle;"_s + u, Hersteller).schutz, Schutz()) << "odbc.ini may say otherwise";
  EXPECT_EQ(aufruf(b + u"Encrypt=strict;"_s + vertraut, Hersteller).schutz, (Schutz{Umfang::Ganz, Pruefung::Ganz}));
}

TEST(OdbcVerbindung, NoRefusalRepeatsAPassword) {
  for (const QString& text :
      {u"Server=S;UID=u;PWD=ab;geheim=cd"_s, u"Server=S;UID=u;PWD=geheim;Farbe=1"_s, u"Server=np:S PWD=geheim"_s,
          u"Driver=S PWD=geheim;Server=S;UID=u"_s, u"DSN=S PWD=geheim"_s, u"Server=S;UID=u;PWD=\"geheim;};\""_s,
          u"Server=S;UID=u;Encrypt=no PWD=geheim"_s, u"Server=S;UID=u;Packet Size=1 PWD=geheim"_s,
          u"Server=S,1 PWD=geheim;UID=u"_s, u"Server=S;UID=u;PWD=geheim;Integrated Security=SSPI"_s}) {
    const QString worte = grund(text);
    EXPECT_FALSE(worte.isEmpty()) << text.toStdString();
    EXPECT_FALSE(worte.contains(u"geheim"_s)) << worte.toStdString();
  }
}

TEST(OdbcVerbindung, KnowsTheOdbcFormByItsKeywords) {
  for (const QString& text : {u"Server=S"_s, u"DRIVER={x}"_s, u"dsn=x"_s, u"Data Source=S;Initial Catalog=D"_s})
    EXPECT_TRUE(adodb::ist_Odbc_Form(Verbindungszeichenfolge(text))) << text.toStdString();
  for (const QString& text : {u""_s, u"Data Source=S"_s, u"User ID=x"_s})
    EXPECT_FALSE(adodb::ist_Odbc_Form(Verbindungszeichenfolge(text))) << text.toStdString();
}
