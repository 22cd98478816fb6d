#pragma once

#include <gtest/gtest.h>

#include <QMap>
#include <QStringList>
#include <functional>
#include <memory>

#include "platform/host/Anwendungsobjekt.h"
#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"
#include "platform/host/Komponenten.h"
#include "tests/support/Pruefdatenbank.h"

/// The host's settings: one value for whatever is asked, or none.
class Einstellungsdoppel final : public Einstellungen {
 public:
  void GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert, const QString& pProgramm,
      const QString& pBenutzer, const QString& pVorgabe) override {
    gefragt += QStringList{pAbschnitt, pSchluessel, pProgramm, pBenutzer, pVorgabe}.join(u'|');
    if (fehler != 0) throw Laufzeitfehler(fehler);
    pWert = wert.isNull() ? pVorgabe : wert;
  }
  QString wert;
  std::int32_t fehler = 0;
  QStringList gefragt;
};

/// The host's application object over a database of the test.
class Wirtsdoppel final : public Anwendungsobjekt {
 public:
  explicit Wirtsdoppel(const Pruefdatenbank& datenbank) : db_(datenbank) {}
  QString ConnectStringDB() const override {
    if (fehler != 0) throw Laufzeitfehler(fehler);
    return db_.verbindungszeichenfolge();
  }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return db_.verbindung(); }
  std::shared_ptr<Einstellungen> Settings() const override { return einstellungen; }
  QString Name() const override { return QStringLiteral("Wirt"); }
  QString User() const override { return QStringLiteral("meier"); }
  QString ExeDir() const override { return QStringLiteral("C:\\Wirt"); }
  QString ReportDBTemplateDir() const override { return QStringLiteral("C:\\Wirt\\Berichte"); }
  QString DBName() const override { return QStringLiteral("Zunft"); }

  std::shared_ptr<Einstellungsdoppel> einstellungen = std::make_shared<Einstellungsdoppel>();
  /// What asking for the connect string raises.
  std::int32_t fehler = 0;

 private:
  const Pruefdatenbank& db_;
};

/// What the article managers of a test know, and what was asked of them.
struct Artikelstamm {
  struct Satz {
    Variant Bez;
    Variant bez3;
    Variant Hauptlieferant;
  };
  QMap<QString, Satz> artikel;
  /// Parts of numbers, and the number that each finds.
  QMap<QString, QString> teile;
  /// "which component: call", in order.
  QStringList rufe;
  /// What the n-th search (from 1) raises; 0 for none.
  int scheitert_beim = 0;
  int gesucht = 0;
  /// Managers that live at the moment, and the most that ever did at once.
  int lebende = 0;
  int hoechstens = 0;
};

class Artikelmanager final : public clsArtikelManagerSQL {
 public:
  Artikelmanager(QString name, Artikelstamm& stamm) : name_(std::move(name)), stamm_(stamm) {
    stamm_.hoechstens = std::max(stamm_.hoechstens, ++stamm_.lebende);
  }
  ~Artikelmanager() override { --stamm_.lebende; }
  Artikelmanager(const Artikelmanager&) = delete;
  Artikelmanager& operator=(const Artikelmanager&) = delete;

  void Init(std::int32_t pArt, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection) override {
    stamm_.rufe += name_ +
        QStringLiteral(": Init %1 %2 %3")
            .arg(pArt)
            .arg(pConnectString.startsWith(QStringLiteral("Provider=Pruefling")))
            .arg(pConnection != nullptr);
  }
  bool fktLeseArtikel(const QString& pArtikelnummer, bool a, bool b, bool c, bool d, bool e, bool f) override {
    stamm_.rufe += name_ + QStringLiteral(": genau ") + pArtikelnummer +
        QStringLiteral(" %1%2%3%4%5%6").arg(a).arg(b).arg(c).arg(d).arg(e).arg(f);
    if (++stamm_.gesucht == stamm_.scheitert_beim) throw Laufzeitfehler(fehlernummer::Anweisung);
    if (!stamm_.artikel.contains(pArtikelnummer)) return false;
    nummer_ = pArtikelnummer;
    return true;
  }
  bool fktLeseArtikel_TeilArtikel(const QString& pTeil) override {
    stamm_.rufe += name_ + QStringLiteral(": Teil ") + pTeil;
    if (!stamm_.teile.contains(pTeil)) return false;
    nummer_ = stamm_.teile.value(pTeil);
    return true;
  }
  QString Artikelnummer() const override { return nummer_; }
  Variant Bez() const override { return stamm_.artikel.value(nummer_).Bez; }
  Variant bez3() const override { return stamm_.artikel.value(nummer_).bez3; }
  Variant Hauptlieferant() const override { return stamm_.artikel.value(nummer_).Hauptlieferant; }

 private:
  QString name_;
  QString nummer_;
  Artikelstamm& stamm_;
};

/// What a look-up does while it is open.
using Auskunftsverlauf = std::function<void(Auskunftsempfaenger&)>;

class Auskunftsdoppel final : public clsAuskunft {
 public:
  Auskunftsdoppel(Auskunftsverlauf verlauf, QStringList& gefragt) : verlauf_(std::move(verlauf)), gefragt_(gefragt) {}
  std::int32_t Anzeige_Auskunft(const QString& pName, const QString& pZusatz, const QString& pAppName,
      const QString& pUser, const QString& pExeDir, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection, Auskunftsempfaenger& pEmpfaenger,
      const QString& pReportDBTemplateDir, const QString& pDBName) override {
    EXPECT_TRUE(pConnectString.startsWith(QStringLiteral("Provider=Pruefling")));
    EXPECT_NE(pConnection, nullptr);
    gefragt_ += QStringList{pName, pZusatz, pAppName, pUser, pExeDir, pReportDBTemplateDir, pDBName}.join(u'|');
    if (verlauf_) verlauf_(pEmpfaenger);
    return 7;
  }

 private:
  Auskunftsverlauf verlauf_;
  QStringList& gefragt_;
};

/// Registers a component while it lives; what was registered before comes back.
class Registrierung {
 public:
  Registrierung(QString name, const komponenten::Fabrik& fabrik)
      : name_(std::move(name)), vorher_(komponenten::registriere(name_, fabrik)) {}
  ~Registrierung() { komponenten::registriere(name_, vorher_); }
  Registrierung(const Registrierung&) = delete;
  Registrierung& operator=(const Registrierung&) = delete;

 private:
  QString name_;
  komponenten::Fabrik vorher_;
};
