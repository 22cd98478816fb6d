// What may be kept and shown of a connect string, and what the program remembers of its last start.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDir>
#include <QSettings>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Gedaechtnis.h"
#include "host/betrieb/vorgang/Zuletzt.h"
#include "platform/adodb/Verbindungsworte.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The same password in every way to write it.
QStringList schreibweisen(const QString& kennwort) {
  const auto verdoppelt = [&](QChar marke) { return QString(kennwort).replace(marke, QString(2, marke)); };
  const QString in_Gaense = u'"' + verdoppelt(u'"') + u'"';
  const QString in_Klammern = u'{' + verdoppelt(u'}') + u'}';
  const QString in_Strichen = u'\'' + verdoppelt(u'\'') + u'\'';
  return {u"Provider=SQLOLEDB;Data Source=SRV01;Initial Catalog=Betrieb;User ID=kvo;Password="_s + in_Gaense,
      u"Driver={FreeTDS};Server=SRV01;Database=Betrieb;UID=kvo;PWD="_s + in_Klammern,
      u"Server=SRV01;Database=Betrieb; uid = kvo ; pwd = "_s + in_Gaense + u" ;Encrypt=no"_s,
      u"P_A S S word="_s + in_Strichen + u";Server=SRV01;Database=Betrieb;User_ID=kvo"_s,
      u"Server=SRV01;PWD=falsch;Database=Betrieb;UID=kvo;Password="_s + in_Klammern + u";;"_s};
}

/// The program's settings in a folder of the test.
class WirtGedaechtnis : public ::testing::Test {
 protected:
  WirtGedaechtnis() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ordner_.pfad()); }
  ~WirtGedaechtnis() override {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QDir::homePath() + u"/.config"_s);
  }
  static Wirtsoptionen start(const QString& verbindung = {}, const QString& bilder = {}) {
    Wirtsoptionen optionen;
    optionen.merken = true;
    optionen.verbindung = verbindung;
    optionen.bilder = bilder;
    return optionen;
  }
  QString datei() const { return QString::fromUtf8(ordner_.lies(u"bildzuordnung/Verbindung.ini"_s)); }
  Testordner ordner_;
};

const QString Server = u"Server=SRV01;Database=Betrieb;UID=kvo"_s;

}  // namespace

RC_GTEST_PROP(Anmeldung, APasswordInAnySpellingStaysOutOfWhatIsRememberedAndTheRestStays, ()) {
  const QString geheim = QString::fromStdString(
      *rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::elementOf(std::string("aZ9;}{\"'= ?\\")))));
  for (const QString& form : schreibweisen(u"#"_s + geheim + u"#"_s)) {
    const QString gemerkt = anmeldung::zum_Merken(form);
    RC_ASSERT(!gemerkt.isEmpty());
    RC_ASSERT(!gemerkt.contains(u'#'));
    RC_ASSERT(!gemerkt.contains(u"falsch"_s));
    RC_ASSERT(anmeldung::fehlt_Kennwort(gemerkt));
    RC_ASSERT(!anmeldung::fehlt_Kennwort(form));
    const anmeldung::Worte worte = anmeldung::worte(gemerkt);
    RC_ASSERT(worte.server == u"SRV01"_s && worte.datenbank == u"Betrieb"_s && worte.benutzer == u"kvo"_s);
    const adodb::Verbindungszeichenfolge wieder(anmeldung::mit_Kennwort(gemerkt, geheim));
    RC_ASSERT(wieder.wert(u"Password"_s) == geheim);
  }
}

TEST(Anmeldung, KnowsEveryKeywordOfTheDriverForPasswordUserServerAndDatabase) {
  using adodb::Wortsinn;
  for (const adodb::Verbindungswort& zeile : adodb::Verbindungsworte) {
    for (const QStringView name : zeile.namen.split(u'|')) {
      const QString angabe = name.toString() + u"=Wert"_s;
      SCOPED_TRACE(angabe.toStdString());
      const anmeldung::Worte worte = anmeldung::worte(angabe);
      const bool Server =
          zeile.sinn == Wortsinn::Server || zeile.sinn == Wortsinn::Abschnitt || zeile.sinn == Wortsinn::Datenquelle;
      EXPECT_EQ(worte.server == u"Wert"_s, Server);
      EXPECT_EQ(worte.datenbank == u"Wert"_s, zeile.sinn == Wortsinn::Datenbank);
      EXPECT_EQ(worte.benutzer == u"Wert"_s, zeile.sinn == Wortsinn::Benutzer);
      EXPECT_EQ(anmeldung::zum_Merken(angabe).isEmpty(), zeile.sinn == Wortsinn::Kennwort);
      EXPECT_EQ(anmeldung::fehlt_Kennwort(u"Server=a;UID=b;"_s + angabe), zeile.sinn != Wortsinn::Kennwort);
    }
  }
}

TEST(Anmeldung, OnlyAUserWithoutAPasswordIsAskedForOne) {
  const QList<std::pair<QString, bool>> faelle{{Server, true}, {Server + u";PWD=x"_s, false},
      {Server + u";PWD="_s, false}, {u"Server=SRV01;Database=Betrieb;Trusted_Connection=yes"_s, false},
      {u"Provider=MSOLEDBSQL;Data Source=SRV01;Integrated Security=SSPI"_s, false}, {u"DSN=Betrieb"_s, false},
      {u"DSN=Betrieb;UID=kvo"_s, true}, {u"Provider=SQLite;Data Source=/x.db"_s, false},
      {u"provider = sqlite;Data Source=/x.db;User ID=kvo"_s, false}, {u"kein Paar"_s, false}, {QString(), false}};
  for (const auto& [verbindung, fehlt] : faelle)
    EXPECT_EQ(anmeldung::fehlt_Kennwort(verbindung), fehlt) << verbindung.toStdString();
}

TEST(Anmeldung, AnEmptyPasswordStaysAndAForgottenSemicolonRemembersNothing) {
  EXPECT_EQ(anmeldung::zum_Merken(u"Server=s;UID=kvo;PWD="_s), u"Server=\"s\";UID=\"kvo\";PWD=\"\""_s);
  EXPECT_EQ(anmeldung::zum_Merken(u"Server=s;UID=kvo P W D = geheim"_s), QString());
  EXPECT_EQ(anmeldung::worte(u"Server=s PWD=geheim;UID=kvo"_s).server, QString());
}

TEST(Anmeldung, ThePasswordOfTheEnvironmentCountsOnlyWhereNoneIsGiven) {
  qputenv("KVOBILD_KENNWORT", "a;\"b");
  EXPECT_EQ(anmeldung::mit_Kennwort_der_Umgebung(Server), Server + u";Password=\"a;\"\"b\""_s);
  for (const QString& ohne : {Server + u";PWD=x"_s, u"Provider=SQLite;Data Source=/x.db"_s})
    EXPECT_EQ(anmeldung::mit_Kennwort_der_Umgebung(ohne), ohne);
  qunsetenv("KVOBILD_KENNWORT");
  EXPECT_EQ(anmeldung::mit_Kennwort_der_Umgebung(Server), Server);
}

TEST(Anmeldung, ATextForAMessageEndsBeforeThePassword) {
  EXPECT_EQ(anmeldung::ohne_Geheimnis(u"Server=s;Pass word = x"_s), u"Server=s;…"_s);
  EXPECT_EQ(anmeldung::ohne_Geheimnis(u"/daten/a=b.db"_s), u"/daten/a=b.db"_s);
}

TEST_F(WirtGedaechtnis, TheNextStartHasConnectionAndPictureRootWithoutThePassword) {
  for (const QString& form : schreibweisen(u"#ge;he}im\"'ä€#"_s)) {
    gedaechtnis::merke(start(form, u"/daten/bilder"_s));
    EXPECT_FALSE(datei().contains(u'#')) << datei().toStdString();
    const Wirtsoptionen naechster = gedaechtnis::ergaenzt(start());
    EXPECT_TRUE(anmeldung::fehlt_Kennwort(naechster.verbindung));
    EXPECT_EQ(anmeldung::worte(naechster.verbindung).server, u"SRV01"_s);
    EXPECT_EQ(naechster.bilder, u"/daten/bilder"_s);
  }
}

TEST_F(WirtGedaechtnis, WhatTheCallNamesGoesFirst) {
  gedaechtnis::merke(start(Server, u"/daten/bilder"_s));
  EXPECT_EQ(gedaechtnis::ergaenzt(start(u"DSN=Andere"_s)).verbindung, u"DSN=Andere"_s);
  EXPECT_EQ(gedaechtnis::ergaenzt(start(u"DSN=Andere"_s)).bilder, QString());
  EXPECT_EQ(gedaechtnis::ergaenzt(start({}, u"/hier"_s)).bilder, u"/hier"_s);
  EXPECT_EQ(gedaechtnis::ergaenzt(start(Server + u";PWD=x"_s)).bilder, u"/daten/bilder"_s);
  Wirtsoptionen genannt = start();
  genannt.datenordner_genannt = true;
  EXPECT_EQ(gedaechtnis::ergaenzt(genannt).verbindung, QString());
  EXPECT_NE(gedaechtnis::ergaenzt(start()).verbindung, QString());
}

TEST_F(WirtGedaechtnis, AskingForTheEmbeddedDatabaseForgetsTheServer) {
  gedaechtnis::merke(start(Server, u"/daten/bilder"_s));
  Wirtsoptionen zurueck = start();
  zurueck.eingebettet = true;
  EXPECT_EQ(gedaechtnis::ergaenzt(zurueck).verbindung, QString());
  EXPECT_EQ(gedaechtnis::ergaenzt(start()).verbindung, QString());
  EXPECT_FALSE(datei().contains(u"SRV01"_s));
}

TEST_F(WirtGedaechtnis, AFileIsRememberedWithItsWholePath) {
  gedaechtnis::merke(start(u"Provider=SQLite;Data Source=\"neben an/x;y.db\""_s, u"bilder"_s));
  const Wirtsoptionen naechster = gedaechtnis::ergaenzt(start());
  EXPECT_EQ(anmeldung::worte(naechster.verbindung).server, QDir::current().absoluteFilePath(u"neben an/x;y.db"_s));
  EXPECT_EQ(naechster.bilder, QDir::current().absoluteFilePath(u"bilder"_s));
}

TEST_F(WirtGedaechtnis, WithoutTheOrderToDoSoNothingIsRememberedAndNothingRead) {
  Wirtsoptionen optionen = start(Server);
  optionen.merken = false;
  gedaechtnis::merke(optionen);
  EXPECT_FALSE(ordner_.vorhanden(u"bildzuordnung/Verbindung.ini"_s));
  gedaechtnis::merke(start(Server));
  optionen.verbindung.clear();
  EXPECT_EQ(gedaechtnis::ergaenzt(optionen).verbindung, QString());
}

TEST_F(WirtGedaechtnis, TheEnvironmentNamesTheDatabaseWhereTheCallDoesNot) {
  qputenv("KVOBILD_VERBINDUNG", "/d/a.db");
  qputenv("KVOBILD_BILDER", "/d/bilder");
  EXPECT_EQ(wirtsoptionen::lies({}).verbindung, u"Provider=SQLite;Data Source=\"/d/a.db\""_s);
  EXPECT_EQ(wirtsoptionen::lies({}).bilder, u"/d/bilder"_s);
  EXPECT_EQ(
      wirtsoptionen::lies({u"--verbindung"_s, u"/d/b.db"_s}).verbindung, u"Provider=SQLite;Data Source=\"/d/b.db\""_s);
  for (const QStringList& eigene : {QStringList{u"--eingebettet"_s}, QStringList{u"--datenordner"_s, u"/o"_s},
           QStringList{u"--rundgang"_s, u"/o"_s}}) {
    EXPECT_EQ(wirtsoptionen::lies(eigene).verbindung, QString()) << eigene.first().toStdString();
    EXPECT_EQ(wirtsoptionen::lies(eigene).bilder, QString());
  }
  qunsetenv("KVOBILD_VERBINDUNG");
  qunsetenv("KVOBILD_BILDER");
}

TEST_F(WirtGedaechtnis, ACallWithAPasswordInTheWrongPlaceDoesNotNameIt) {
  try {
    wirtsoptionen::lies({u"Server=s;UID=kvo;PWD=geheim99"_s});
    ADD_FAILURE();
  } catch (const Abbruch& abbruch) {
    EXPECT_FALSE(abbruch.text().contains(u"geheim99"_s)) << abbruch.text().toStdString();
  }
  EXPECT_THROW(wirtsoptionen::lies({u"--eingebettet"_s, u"--verbindung"_s, u"x.db"_s}), Abbruch);
}

TEST_F(WirtGedaechtnis, TheLastRecordsOfADeskAreKeptForEachDatabaseAndNoWordOfItsConnection) {
  const auto satz = [](int n) { return Datensatz{u"AB"_s, QString::number(n), u"-"_s, u"-"_s, u"BEL"_s, u"-"_s}; };
  const Wirtsoptionen eine = start(Server + u";PWD=#geheim#"_s);
  {
    Zuletzt zuletzt(eine);
    for (int n = 1; n <= 25; ++n) zuletzt.merke(satz(n));
    zuletzt.merke(satz(24));
  }
  const Zuletzt wieder(eine);
  ASSERT_EQ(wieder.saetze().size(), Zuletzt::Hoechstens);
  EXPECT_EQ(wieder.saetze()[0].key2, u"24"_s);
  EXPECT_EQ(wieder.saetze()[1].key2, u"25"_s);
  EXPECT_EQ(wieder.saetze().last().key2, u"6"_s);
  EXPECT_EQ(wieder.saetze().last().key4, u"-"_s);
  EXPECT_TRUE(Zuletzt(start(Server + u"2"_s)).saetze().isEmpty());
  const QByteArray datei = ordner_.lies(u"bildzuordnung/Vorgaenge.ini"_s);
  EXPECT_FALSE(datei.isEmpty());
  EXPECT_FALSE(datei.contains("SRV01") || datei.contains('#'));
}
