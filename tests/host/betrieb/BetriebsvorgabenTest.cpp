// What a firm gives all of its desks.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSettings>

#include "host/bericht/Berichtskopf.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Gedaechtnis.h"
#include "host/betrieb/vorgaben/Betriebsvorgaben.h"
#include "platform/files/Pfadkarte.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray Server = "Provider=MSOLEDBSQL;Data Source=SRV01\\KVO;Initial Catalog=Betrieb;User ID=kvo";

/// The user's settings and the firm's in folders of the test.
class Vorgaben : public ::testing::Test {
 protected:
  Vorgaben() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ordner_.pfad(u"benutzer"_s));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(ordner_.pfad(u"leer"_s) + u':' + ordner_.pfad(u"xdg"_s)));
  }
  ~Vorgaben() override {
    qunsetenv("XDG_CONFIG_DIRS");
    Pfadkarte::aktuell().entferne(u"Q:"_s);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QDir::homePath() + u"/.config"_s);
  }
  void gibt_vor(const QByteArray& inhalt) const { ordner_.schreibe(u"xdg/bildzuordnung/betrieb.ini"_s, inhalt); }
  static Wirtsoptionen start(const QString& verbindung = {}, const QString& bilder = {}) {
    Wirtsoptionen optionen;
    optionen.merken = true;
    optionen.verbindung = verbindung;
    optionen.bilder = bilder;
    return optionen;
  }
  /// The words with which it ends; empty where it does not.
  template <class Tat>
  static QString abgebrochen(Tat tat) {
    try {
      tat();
    } catch (const Abbruch& abbruch) {
      return abbruch.text();
    }
    return {};
  }

  Testordner ordner_;
};

TEST_F(Vorgaben, AreTakenWhereNeitherTheCallNorTheUserSaysMore) {
  gibt_vor("; Betrieb Muster\n[Verbindung]\nVerbindung = " + Server + "\r\nBilder=/srv/bilder\n");
  const Wirtsoptionen erste = gedaechtnis::ergaenzt(start());
  EXPECT_EQ(erste.verbindung.toUtf8(), Server);
  EXPECT_EQ(erste.bilder, u"/srv/bilder"_s);
  const Wirtsoptionen genannte = gedaechtnis::ergaenzt(start(u"Data Source=SRV02;Provider=SQLOLEDB"_s));
  EXPECT_EQ(genannte.verbindung, u"Data Source=SRV02;Provider=SQLOLEDB"_s);
  EXPECT_EQ(genannte.bilder, QString());
  gedaechtnis::merke(start(u"Data Source=SRV03;Provider=SQLOLEDB"_s, u"/srv/andere"_s));
  const Wirtsoptionen gemerkte = gedaechtnis::ergaenzt(start());
  EXPECT_EQ(gemerkte.verbindung, u"Data Source=\"SRV03\";Provider=\"SQLOLEDB\""_s);
  EXPECT_EQ(gemerkte.bilder, u"/srv/andere"_s);
}

TEST_F(Vorgaben, WhatIsLockedStaysWhateverTheUserHasOrSays) {
  gedaechtnis::merke(start(u"Data Source=SRV03;Provider=SQLOLEDB"_s, u"/srv/andere"_s));
  gibt_vor("[Verbindung]\nVerbindung=" + Server + "\nBilder=/srv/bilder\n[Betrieb]\ngesperrt=Verbindung, bilder\n");
  const Wirtsoptionen optionen = gedaechtnis::ergaenzt(start());
  EXPECT_EQ(optionen.verbindung.toUtf8(), Server);
  EXPECT_EQ(optionen.bilder, u"/srv/bilder"_s);
  EXPECT_TRUE(abgebrochen([] {
    gedaechtnis::ergaenzt(start(u"Data Source=SRV02;Provider=SQLOLEDB"_s));
  }).startsWith(u"„--verbindung“ geht hier nicht"_s));
  EXPECT_TRUE(abgebrochen([] { gedaechtnis::ergaenzt(start({}, u"/tmp"_s)); }).startsWith(u"„--bilder“ geht"_s));
  Wirtsoptionen eingebettet = start();
  eingebettet.eingebettet = true;
  EXPECT_TRUE(abgebrochen([&] { gedaechtnis::ergaenzt(eingebettet); }).startsWith(u"„--eingebettet“ geht"_s));
  Wirtsoptionen daneben = start();
  daneben.datenordner_genannt = true;
  EXPECT_TRUE(abgebrochen([&] { gedaechtnis::ergaenzt(daneben); }).startsWith(u"„--datenordner“ geht"_s));
  // The same one with the user's password is no other.
  EXPECT_EQ(
      abgebrochen([] { gedaechtnis::ergaenzt(start(QString::fromUtf8(Server) + u";Password=geheim"_s)); }), QString());
}

TEST_F(Vorgaben, APasswordIsRefused) {
  for (const char* geheimes : {"Password=geheim", "PWD = geheim", "Pwd=", "Data Source=SRV01 PWD=geheim"}) {
    gibt_vor("[Verbindung]\nVerbindung=Provider=SQLOLEDB;" + QByteArray(geheimes) + "\n");
    const QString worte = abgebrochen([] { gedaechtnis::ergaenzt(start()); });
    EXPECT_TRUE(worte.contains(u"Die Verbindung nennt ein Kennwort"_s)) << geheimes << worte.toStdString();
    EXPECT_FALSE(worte.contains(u"geheim"_s));
  }
}

TEST_F(Vorgaben, ASlipOfThePenIsToldWithItsPlace) {
  gibt_vor("[Verbindung]\nVerbindung\n");
  EXPECT_TRUE(abgebrochen([] { Betriebsvorgaben::lies(); }).endsWith(u"Zeile 2 ist nicht zu verstehen."_s));
  gibt_vor("[Verbindung]\nBild=/srv\n");
  EXPECT_TRUE(abgebrochen([] { Betriebsvorgaben::lies(); }).endsWith(u"„Bild“ unter „[Verbindung]“ gibt es nicht."_s));
  gibt_vor("[Betrieb]\ngesperrt=Laufwerke\n");
  EXPECT_TRUE(abgebrochen([] { Betriebsvorgaben::lies(); }).endsWith(u"„Laufwerke“ lässt sich nicht sperren."_s));
  gibt_vor("[Laufwerke]\nBilder=/srv\n");
  EXPECT_TRUE(abgebrochen([] { gedaechtnis::ergaenzt(start()); }).contains(u"„Bilder“ ist kein Laufwerk"_s));
}

TEST_F(Vorgaben, DrivesAreMapped) {
  gibt_vor("[Laufwerke]\nQ:=" + QFile::encodeName(ordner_.pfad()) + "\n");
  gedaechtnis::ergaenzt(start());
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"Q:"_s), ordner_.pfad());
}

TEST_F(Vorgaben, TheReportsHeadIsTheFirmsUntilTheUserHasOne) {
  EXPECT_EQ(Berichtskopf::gemerkter(), Berichtskopf());
  gibt_vor("[Berichtskopf]\nZeile1=Muster & Söhne, Freiburg\nZeichen=/srv/zeichen.png\n");
  const Berichtskopf kopf = Berichtskopf::gemerkter();
  EXPECT_EQ(kopf.zeilen, QStringList{u"Muster & Söhne, Freiburg"_s});
  EXPECT_EQ(kopf.zeichen, u"/srv/zeichen.png"_s);
  kopf.merke();
  gibt_vor("[Berichtskopf]\nZeile1=Muster GmbH\n");
  EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Muster GmbH"_s}) << "looked at is not changed";
  Berichtskopf::aus({u"Eigener"_s}, {}).merke();
  EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Eigener"_s});
  EXPECT_FALSE(Berichtskopf::ist_gesperrt());
  gibt_vor("[Berichtskopf]\nZeile1=Muster GmbH\n[Betrieb]\ngesperrt=Berichtskopf\n");
  EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Muster GmbH"_s});
  EXPECT_TRUE(Berichtskopf::ist_gesperrt());
}

TEST_F(Vorgaben, ASlipThatComesLaterNeitherEndsTheWorkNorUnlocksAnything) {
  gibt_vor("[Berichtskopf]\nZeile1=Muster GmbH\n[Betrieb]\ngesperrt=Berichtskopf\n");
  Betriebsvorgaben::lies();
  Berichtskopf::aus({u"Eigener"_s}, {}).merke();
  gibt_vor("[Berichtskopf]\nZeile1=Anders\n[Verbindung]\nVerbindung\n");
  EXPECT_EQ(abgebrochen([] {
    EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Muster GmbH"_s});
    EXPECT_TRUE(Berichtskopf::ist_gesperrt());
  }),
      QString());
  ASSERT_TRUE(QFile::remove(ordner_.pfad(u"xdg/bildzuordnung/betrieb.ini"_s)));
  EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Eigener"_s}) << "a firm without a file gives nothing";
}

TEST_F(Vorgaben, TheUsersOwnSettingsFileIsNoneOfTheFirms) {
  ordner_.schreibe(u"benutzer/bildzuordnung/betrieb.ini"_s, "[Betrieb]\ngesperrt=Verbindung\n");
  EXPECT_EQ(Betriebsvorgaben::lies().datei, QString());
}

}  // namespace
