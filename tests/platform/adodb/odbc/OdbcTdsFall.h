#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/support/Tdsserver.h"

/// Connections over unixODBC and FreeTDS to a TDS server of the suite's own; each test begins with empty tables.
class OdbcTds : public testing::Test {
 protected:
  /// With all that a connect string must quote.
  static inline const QString Kennwort = QStringLiteral("Ge;he}im'ä€");

  static Tdsserver& server() { return *gemeinsamer(); }
  static std::unique_ptr<Tdsserver>& gemeinsamer() {
    static std::unique_ptr<Tdsserver> einer;
    return einer;
  }
  static void TearDownTestSuite() { gemeinsamer().reset(); }

  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    if (!gemeinsamer()) gemeinsamer() = std::make_unique<Tdsserver>(QStringLiteral("pruefer"), Kennwort);
    ASSERT_TRUE(server().laeuft());
    server().steuere(QStringLiteral("leere"));
  }

  static QString zeichenfolge(const QString& kennwort = Kennwort, const QString& weiteres = {}) {
    return QStringLiteral(
        "Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=bilder;User ID=pruefer;Driver=FreeTDS;"
        "Password=%2;%3")
        .arg(QString::number(server().port()), adodb::Verbindungszeichenfolge::als_wert(kennwort), weiteres);
  }
  static std::shared_ptr<adodb::Connection> offene() {
    auto verbindung = std::make_shared<adodb::Connection>();
    verbindung->Open(zeichenfolge());
    return verbindung;
  }

  template <class Anweisung>
  static adodb::Datenbankfehler fehler(Anweisung anweisung) {
    try {
      anweisung();
    } catch (const adodb::Datenbankfehler& gefangener) {
      EXPECT_FALSE(gefangener.Beschreibung().contains(Kennwort));
      return gefangener;
    }
    ADD_FAILURE() << "kein Fehler";
    return {0, {}, {}, 0};
  }
};
