// Encryption over unixODBC and FreeTDS, seen on the wire: the server keeps every byte that came and went.
#include <QFile>

#include "tests/platform/adodb/odbc/OdbcTdsFall.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Anweisung = u"Select Key1 from Bild_Zuordnungen where Key1 = 'Zwetschge'"_s;
const QString Vertraut = u"Encrypt=yes;TrustServerCertificate=yes"_s;

class OdbcTls : public OdbcTds {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    if (const QString grund = Tdsserver::mache_Zertifikate(ordner_.pfad()); !grund.isEmpty())
      GTEST_SKIP() << grund.toStdString();
    if (!gemeinsamer())
      gemeinsamer() = std::make_unique<Tdsserver>(
          u"pruefer"_s, Kennwort, Tdsserver::Maschine::Sqlite, QStringList{u"--mitschnitt"_s});
    ASSERT_TRUE(server().laeuft());
    server().steuere(u"leere"_s);
    qputenv("FREETDSCONF", QFile::encodeName(ordner_.pfad(u"freetds.conf"_s)));
  }
  void TearDown() override { qunsetenv("FREETDSCONF"); }

  void stelle(const QString& stufe, const QString& zertifikat = u"richtig"_s) {
    server().steuere(u"tls %1 %2.pem"_s.arg(stufe, ordner_.pfad(zertifikat)));
    server().steuere(u"mitschnitt-leeren"_s);
    server().steuere(u"protokoll-leeren"_s);
  }
  /// Opens and asks something; the failure's words, or nothing.
  QString versuche(const QString& zeichenfolge) {
    adodb::Connection verbindung;
    try {
      verbindung.Open(zeichenfolge);
      verbindung.Execute(Anweisung);
      schutz_ = verbindung.Schutz();
    } catch (const Laufzeitfehler& gefangener) {
      EXPECT_FALSE(gefangener.Beschreibung().contains(Kennwort));
      return gefangener.Beschreibung();
    }
    return {};
  }
  QString am_Server(const QString& weiteres) { return versuche(zeichenfolge(Kennwort, weiteres)); }
  /// With a section of freetds.conf.
  QString im_Abschnitt(const QString& zeilen, const QString& weiteres) {
    ordner_.schreibe(
        u"freetds.conf"_s, u"[kvo]\nhost = 127.0.0.1\nport = %1\n%2\n"_s.arg(server().port()).arg(zeilen).toUtf8());
    return versuche(u"Driver=FreeTDS;Servername=kvo;UID=pruefer;%1;PWD="_s.arg(weiteres) +
        adodb::Verbindungszeichenfolge::als_wert(Kennwort));
  }
  QString stellen(const QString& name = u"stelle"_s) const { return u"ca file = "_s + ordner_.pfad(name + u".pem"_s); }

  void erwarte_nichts_Lesbares() {
    const Tdsserver::Mitschnitt roh = server().mitschnitt();
    EXPECT_GT(roh.ein.size(), 0);
    for (const QString& text : {Anweisung, u"Zwetschge"_s, Kennwort, u"pruefer"_s, u"SELECT 1"_s})
      EXPECT_FALSE(roh.enthaelt(text)) << text.toStdString();
  }
  /// A connection that ended with the words that open it; no login, no statement.
  void erwarte_nur_die_Voranmeldung() {
    const QByteArray ein = server().mitschnitt().ein;
    ASSERT_GE(ein.size(), 4);
    EXPECT_EQ(ein[0], '\x12');
    EXPECT_EQ(ein.size(), static_cast<unsigned char>(ein[2]) * 256 + static_cast<unsigned char>(ein[3]));
  }

  Testordner ordner_;
  adodb::Leitungsschutz schutz_;
};

using Umfang = adodb::Leitungsschutz::Umfang;
using Pruefung = adodb::Leitungsschutz::Pruefung;

}  // namespace

TEST_F(OdbcTls, DemandedByUsNothingCanBeReadOffTheWire) {
  for (const QString& stufe : {u"moeglich"_s, u"immer"_s})
    for (const QString& wunsch :
        {Vertraut, u"Encryption=require"_s, u"Use Encryption for Data=True;Trust Server Certificate=True"_s}) {
      SCOPED_TRACE((stufe + u' ' + wunsch).toStdString());
      stelle(stufe);
      EXPECT_EQ(am_Server(wunsch), QString());
      EXPECT_EQ(schutz_, (adodb::Leitungsschutz{Umfang::Ganz, Pruefung::Keine}));
      erwarte_nichts_Lesbares();
      EXPECT_EQ(server().stapel(), (QStringList{u"SELECT 1"_s, Anweisung})) << "the server itself can read it";
    }
}

TEST_F(OdbcTls, TheWireShowsWhatIsNotEncrypted) {
  stelle(u"nie"_s);
  EXPECT_EQ(am_Server({}), QString());
  const Tdsserver::Mitschnitt roh = server().mitschnitt();
  for (const QString& text : {Anweisung, Kennwort, u"pruefer"_s}) EXPECT_TRUE(roh.enthaelt(text)) << text.toStdString();
  EXPECT_EQ(schutz_.umfang, Umfang::Offen);
  EXPECT_EQ(server().stapel(), QStringList(Anweisung));
}

TEST_F(OdbcTls, DemandedByTheServerAllIsEncryptedToo) {
  stelle(u"immer"_s);
  EXPECT_EQ(am_Server({}), QString());
  erwarte_nichts_Lesbares();
  EXPECT_FALSE(am_Server(u"Encryption=off"_s).isEmpty());
  erwarte_nichts_Lesbares();
}

TEST_F(OdbcTls, DemandedByNobodyTheLoginAloneIsEncrypted) {
  for (const QString& wunsch : {QString(), u"Encrypt=no"_s}) {
    stelle(u"moeglich"_s);
    EXPECT_EQ(am_Server(wunsch), QString());
    const Tdsserver::Mitschnitt roh = server().mitschnitt();
    EXPECT_TRUE(roh.enthaelt(Anweisung));
    EXPECT_FALSE(roh.enthaelt(Kennwort));
    EXPECT_EQ(schutz_.umfang, Umfang::Offen);
  }
}

TEST_F(OdbcTls, AServerThatRefusesGetsNothingBehindThePreLogin) {
  stelle(u"nie"_s);
  const QString worte = am_Server(Vertraut);
  EXPECT_TRUE(worte.contains(u"verschlüsselt die Verbindung nicht"_s)) << worte.toStdString();
  erwarte_nur_die_Voranmeldung();
}

TEST_F(OdbcTls, AServerThatGoesAwayIsNotTriedInAnOlderProtocol) {
  // The section leaves FreeTDS free to try them all.
  for (const QString& zeilen : {u"encryption = require"_s, u"encryption = require\ntds version = 7.0"_s}) {
    stelle(u"fort"_s);
    EXPECT_FALSE(im_Abschnitt(zeilen, {}).isEmpty());
    erwarte_nur_die_Voranmeldung();
  }
  stelle(u"moeglich"_s);
  EXPECT_EQ(im_Abschnitt(u"encryption = require\ntds version = 7.0"_s, {}), QString());
  erwarte_nichts_Lesbares();
}

TEST_F(OdbcTls, AServerThatTalksTheDriverOutOfItGetsNoStatement) {
  for (const QString& wunsch : {Vertraut, u"Encryption=require"_s}) {
    stelle(u"ausweichend"_s);
    const QString worte = am_Server(wunsch);
    EXPECT_TRUE(worte.contains(u"die Verbindung ist nicht verschlüsselt, obwohl es verlangt ist"_s))
        << worte.toStdString();
    const Tdsserver::Mitschnitt roh = server().mitschnitt();
    for (const QString& text : {Anweisung, Kennwort, u"pruefer"_s})
      EXPECT_FALSE(roh.enthaelt(text)) << text.toStdString();
    EXPECT_EQ(server().stapel(), QStringList(u"SELECT 1"_s)) << "a text that says nothing";
  }
}

TEST_F(OdbcTls, ACheckedCertificateIsRefusedBeforeAnythingIsSentWhereNobodyChecksIt) {
  stelle(u"immer"_s, u"unbekannt"_s);
  for (const QString& wunsch : {u"Encrypt=yes"_s, u"Encrypt=yes;TrustServerCertificate=No"_s,
           u"Use Encryption for Data=True"_s, u"Encryption=require;TrustServerCertificate=no"_s}) {
    const QString worte = am_Server(wunsch);
    EXPECT_TRUE(worte.contains(u"FreeTDS prüft das Zertifikat des Servers nur nach einem Abschnitt"_s))
        << worte.toStdString();
  }
  EXPECT_TRUE(im_Abschnitt(u"encryption = require"_s, u"Encrypt=yes"_s).contains(u"fehlt „ca file“"_s));
  EXPECT_TRUE(im_Abschnitt(stellen() + u"\ncheck certificate hostname = no"_s, u"Encrypt=yes"_s)
                  .contains(u"lässt jeden Namen gelten"_s));
  EXPECT_EQ(server().mitschnitt().ein, QByteArray());
}

TEST_F(OdbcTls, WithASectionTheAuthorityTheDatesAndTheNameCount) {
  constexpr adodb::Leitungsschutz Geprueft{Umfang::Ganz, Pruefung::Ganz};
  for (const auto& [zertifikat, gilt] : QList<QPair<QString, bool>>{
           {u"richtig"_s, true}, {u"unbekannt"_s, false}, {u"anderer"_s, false}, {u"abgelaufen"_s, false}}) {
    SCOPED_TRACE(zertifikat.toStdString());
    schutz_ = {};
    stelle(u"immer"_s, zertifikat);
    const QString worte = im_Abschnitt(stellen(), u"Encrypt=yes"_s);
    EXPECT_EQ(worte.isEmpty(), gilt) << worte.toStdString();
    EXPECT_EQ(schutz_, gilt ? Geprueft : adodb::Leitungsschutz());
    EXPECT_EQ(worte.contains(u"ein Zertifikat, das der Prüfung nicht standhält"_s), !gilt) << worte.toStdString();
    EXPECT_EQ(server().stapel().size(), gilt ? 2 : 0);
    erwarte_nichts_Lesbares();
  }
  stelle(u"immer"_s, u"anderer"_s);
  EXPECT_EQ(im_Abschnitt(stellen() + u"\ncheck certificate hostname = no"_s, Vertraut), QString());
  EXPECT_EQ(schutz_.pruefung, Pruefung::Ohne_Namen);
  stelle(u"immer"_s, u"unbekannt"_s);
  EXPECT_EQ(im_Abschnitt(stellen(u"fremd"_s), u"Encrypt=yes"_s), QString()) << "the other authority's own";
}

TEST_F(OdbcTls, TheEnvironmentsProtocolIsRefusedWhereItWouldSendThePassword) {
  stelle(u"moeglich"_s);
  qputenv("TDSVER", "7.0");
  const QString worte = am_Server(Vertraut);
  qunsetenv("TDSVER");
  EXPECT_TRUE(worte.contains(u"TDSVER"_s)) << worte.toStdString();
  EXPECT_EQ(server().mitschnitt().ein, QByteArray());
}
