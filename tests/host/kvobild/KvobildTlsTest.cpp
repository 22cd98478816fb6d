// What the check of a database says about the encryption, with a server that grants or refuses it.
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/host/kvobild/Kvobild.h"
#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kennwort = u"Ge;heim'ä€"_s;

class KvobildTls : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    if (const QString grund = Tdsserver::mache_Zertifikate(ordner_.pfad()); !grund.isEmpty())
      GTEST_SKIP() << grund.toStdString();
    server_ = std::make_unique<Tdsserver>(
        u"pruefer"_s, Kennwort, Tdsserver::Maschine::Sqlite, QStringList{u"--mitschnitt"_s});
    ASSERT_TRUE(server_->laeuft());
  }
  void stelle(const QString& stufe, const QString& zertifikat = u"richtig"_s) const {
    server_->steuere(u"tls %1 %2.pem"_s.arg(stufe, ordner_.pfad(zertifikat)));
  }
  Lauf pruefe(const QString& verbindung) const {
    const Lauf lauf = kvobild(
        {u"datenbank"_s, u"pruefen"_s, u"--verbindung"_s,
            verbindung + u";Driver=FreeTDS;UID=pruefer;PWD="_s + adodb::Verbindungszeichenfolge::als_wert(Kennwort)},
        {}, {}, {{u"FREETDSCONF"_s, ordner_.pfad(u"freetds.conf"_s)}});
    EXPECT_FALSE((lauf.ausgabe + lauf.meldungen).contains(Kennwort));
    return lauf;
  }
  Lauf am_Server(const QString& weiteres) const {
    return pruefe(u"Server=127.0.0.1,%1;Database=b;%2"_s.arg(server_->port()).arg(weiteres));
  }
  Lauf im_Abschnitt(const QString& zeilen, const QString& weiteres) const {
    ordner_.schreibe(
        u"freetds.conf"_s, u"[kvo]\nhost = 127.0.0.1\nport = %1\n%2\n"_s.arg(server_->port()).arg(zeilen).toUtf8());
    return pruefe(u"Servername=kvo;Database=b;"_s + weiteres);
  }
  static QString zeile(const Lauf& lauf) {
    for (const QString& eine : lauf.zeilen())
      if (eine.startsWith(u"Verschlüsselung:"_s)) return eine.mid(18);
    ADD_FAILURE() << lauf.ausgabe.toStdString() << lauf.meldungen.toStdString();
    return {};
  }

  Testordner ordner_;
  std::unique_ptr<Tdsserver> server_;
};

}  // namespace

TEST_F(KvobildTls, WhatWasDemandedIsToldWithoutTheRightToAskTheServer) {
  stelle(u"moeglich"_s);
  EXPECT_EQ(zeile(am_Server(u"Encrypt=yes;TrustServerCertificate=yes"_s)), u"ja, Zertifikat nicht geprüft"_s);
  const QString stellen = u"ca file = "_s + ordner_.pfad(u"stelle.pem"_s);
  EXPECT_EQ(zeile(im_Abschnitt(stellen, u"Encrypt=yes"_s)), u"ja, Zertifikat geprüft"_s);
  EXPECT_EQ(zeile(im_Abschnitt(stellen + u"\ncheck certificate hostname = no"_s, u"Encryption=require"_s)),
      u"ja, Zertifikat geprüft bis auf den Namen"_s);
  EXPECT_EQ(zeile(am_Server(u"Encryption=off"_s)), u"nein"_s);
  EXPECT_TRUE(server_->stapel().filter(u"encrypt_option"_s).isEmpty()) << "the server was not asked";
  server_->steuere(u"fehler 2/SELECT 300 14 VIEW SERVER STATE permission was denied"_s);
  EXPECT_EQ(zeile(am_Server({})), u"nicht festzustellen (dem Benutzer fehlt das Recht VIEW SERVER STATE)"_s);
}

TEST_F(KvobildTls, WhereNothingWasDemandedTheServerTells) {
  stelle(u"immer"_s);
  EXPECT_EQ(zeile(am_Server({})), u"ja, Zertifikat nicht geprüft"_s);
  stelle(u"moeglich"_s);
  EXPECT_EQ(zeile(am_Server({})), u"nein"_s) << "the login alone";
}

TEST_F(KvobildTls, ACertificateThatNobodyWouldCheckIsRefusedWithWords) {
  stelle(u"immer"_s, u"unbekannt"_s);
  for (const QString& wunsch : {u"Encrypt=Yes;TrustServerCertificate=No"_s, u"Use Encryption for Data=True"_s}) {
    const Lauf lauf = am_Server(u"Provider=MSOLEDBSQL;"_s + wunsch);
    EXPECT_EQ(lauf.code, 3);
    EXPECT_TRUE(lauf.meldungen.contains(u"FreeTDS prüft das Zertifikat des Servers nur nach einem Abschnitt"_s))
        << lauf.meldungen.toStdString();
  }
  EXPECT_EQ(server_->mitschnitt().ein, QByteArray());
  const Lauf lauf = im_Abschnitt(u"ca file = "_s + ordner_.pfad(u"stelle.pem"_s), u"Encrypt=yes"_s);
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"zeigt ein Zertifikat, das der Prüfung nicht standhält"_s))
      << lauf.meldungen.toStdString();
}

TEST_F(KvobildTls, AWholeRunLeavesNothingReadableOnTheWire) {
  stelle(u"immer"_s);
  const Lauf lauf = am_Server(u"Encrypt=yes;TrustServerCertificate=yes"_s);
  EXPECT_EQ(lauf.code, 0) << lauf.ausgabe.toStdString() << lauf.meldungen.toStdString();
  const Tdsserver::Mitschnitt roh = server_->mitschnitt();
  EXPECT_GT(roh.ein.size(), 5000);
  EXPECT_GT(server_->stapel().size(), 10);
  for (const QString& text : {u"Bild_Zuordnungen"_s, u"SELECT"_s, u"select"_s, Kennwort, u"pruefer"_s, u"kvobild"_s})
    EXPECT_FALSE(roh.enthaelt(text)) << text.toStdString();
}
