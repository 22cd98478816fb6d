#include "tests/host/dialog/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Fall {
  QStringList argumente;
  /// What standard error says of it.
  QString worte;
};

QList<Fall> falsche_Aufrufe() {
  const QString hilfe = u" Hilfe gibt „bildzuordnung dialog --hilfe“."_s;
  const QStringList beleg{u"zuordnung"_s, u"--typ1=BEL"_s, u"--key1=AB"_s, u"--key2=24-1001"_s};
  return {{{}, u"Es fehlt der Befehl."_s + hilfe},
      {{u"zuordnungen"_s}, u"Den Befehl „zuordnungen“ gibt es nicht."_s + hilfe},
      {{u"zuordnung"_s, u"--key1=AB"_s}, u"Es fehlt „--typ1“."_s + hilfe},
      {{u"zuordnung"_s, u"--typ1=BEL"_s}, u"Es fehlt „--key1“."_s + hilfe},
      {{u"weitere"_s}, u"Es fehlt „--key1“."_s + hilfe},
      {{u"alle-zuordnungen"_s, u"--typ1=BEL"_s, u"--key1=AB"_s}, u"Bei „alle-zuordnungen“ fehlt: BILD."_s + hilfe},
      {{u"eigenschaften"_s}, u"Bei „eigenschaften“ fehlt: BILD."_s + hilfe},
      {beleg + QStringList{u"x.jpg"_s}, u"„x.jpg“ ist bei „zuordnung“ zu viel."_s + hilfe},
      {beleg + QStringList{u"--tittel=x"_s}, u"Die Option „tittel“ gibt es bei „zuordnung“ nicht."_s + hilfe},
      {beleg + QStringList{u"--vorgang=x"_s}, u"Die Option „vorgang“ gibt es bei „zuordnung“ nicht."_s + hilfe},
      {beleg + QStringList{u"--titel"_s}, u"Hinter „--titel“ fehlt TEXT."_s + hilfe},
      {beleg + QStringList{u"--json=ja"_s}, u"„--json“ steht für sich und nimmt keinen Wert."_s + hilfe},
      {beleg + QStringList{u"--ueber=oben"_s}, u"„--ueber“ nimmt die Nummer eines Fensters, nicht „oben“."_s},
      {beleg + QStringList{u"--ueber=0"_s}, u"„--ueber“ nimmt die Nummer eines Fensters, nicht „0“."_s},
      {beleg + QStringList{u"--ueber=0x"_s}, u"„--ueber“ nimmt die Nummer eines Fensters, nicht „0x“."_s},
      {beleg + QStringList{u"--ueber=0x100000000"_s},
          u"„--ueber“ nimmt die Nummer eines Fensters, nicht „0x100000000“."_s},
      {beleg + QStringList{u"--ordner=..\\geheim"_s},
          u"Der Ordner „..“ beginnt oder endet mit einem Punkt oder Leerzeichen."_s},
      {beleg + QStringList{u"--key3=O'Neill"_s},
          u"Der Wert von „--key3“ enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich."_s},
      {beleg + QStringList{u"--key3="_s + QString(51, u'x')}, u"Der Wert von „--key3“ ist länger als 50 Zeichen."_s},
      {beleg + QStringList{u"--eingebettet"_s, u"--verbindung=x.db"_s},
          u"„--eingebettet“ und „--verbindung“ schließen sich aus. Hilfe gibt „bildzuordnung --hilfe“."_s},
      {beleg + QStringList{u"--bilder="_s}, u"„--bilder“ ist leer. Hilfe gibt „bildzuordnung --hilfe“."_s},
      {beleg + QStringList{u"--kennwort-von-stdin"_s}, u"Auf der Standardeingabe steht kein Kennwort."_s},
      {beleg,
          u"Es ist keine Datenbank genannt und keine gemerkt; „--verbindung“ nennt sie, oder ein Start von "
          u"„bildzuordnung“ "
          "richtet den Datenordner ein."_s}};
}

}  // namespace

using Dialogaufruf = Dialogtest;

TEST_F(Dialogaufruf, AWrongCallEndsWith2AndWordsAndPrintsNoResult) {
  for (const Fall& fall : falsche_Aufrufe()) {
    SCOPED_TRACE(fall.argumente.join(u' ').toStdString());
    const Dialogende ende = rufe(fall.argumente);
    EXPECT_EQ(ende.code, 2);
    EXPECT_EQ(ende.ausgabe, QString());
    EXPECT_EQ(ende.fehlerausgabe, u"bildzuordnung: "_s + fall.worte + u'\n');
  }
  EXPECT_FALSE(ordner_.vorhanden(u"heim/.local/share/kvobildzuordnung"_s)) << "no samples for a caller";
}

TEST_F(Dialogaufruf, EveryHelpComesWithoutAScreen) {
  QProcessEnvironment ohne = umgebung();
  ohne.remove(u"QT_QPA_PLATFORM"_s);
  const Dialogende alle = rufe({u"--hilfe"_s}, ohne);
  EXPECT_EQ(alle.code, 0);
  EXPECT_EQ(alle.fehlerausgabe, QString());
  for (const QString& name : {u"zuordnung"_s, u"suche"_s, u"alle-zuordnungen"_s, u"weitere"_s, u"eigenschaften"_s}) {
    EXPECT_TRUE(alle.ausgabe.contains(u"\n  "_s + name + u' ')) << name.toStdString();
    const Dialogende eine = rufe({name, u"--hilfe"_s}, ohne);
    EXPECT_EQ(eine.code, 0);
    EXPECT_TRUE(eine.ausgabe.startsWith(u"Aufruf: bildzuordnung dialog "_s + name)) << eine.ausgabe.toStdString();
    for (const QString& option : {u"--json"_s, u"--ueber KENNUNG"_s, u"--titel TEXT"_s, u"Ausgang: 0"_s})
      EXPECT_TRUE(eine.ausgabe.contains(option)) << name.toStdString() << ' ' << option.toStdString();
    EXPECT_EQ(eine.ausgabe.contains(u"--kennwort-von-stdin"_s), name != "eigenschaften"_L1);
  }
}

TEST_F(Dialogaufruf, WithoutAScreenNobodyWaitsForAWindowThatNobodySees) {
  QProcessEnvironment ohne = umgebung();
  ohne.remove(u"QT_QPA_PLATFORM"_s);
  const QStringList aufruf = QStringList{u"zuordnung"_s, u"--json"_s} + beleg();
  const Dialogende keiner = rufe(aufruf, ohne);
  EXPECT_EQ(keiner.code, 2);
  EXPECT_EQ(keiner.ausgabe, QString());
  EXPECT_EQ(keiner.fehlerausgabe,
      u"bildzuordnung: Hier ist kein Bildschirm, auf dem ein Dialog zu sehen wäre (DISPLAY fehlt).\n"_s);
  ohne.insert(u"DISPLAY"_s, u":4711"_s);
  const Dialogende toter = rufe(aufruf, ohne);
  EXPECT_EQ(toter.code, 2);
  EXPECT_EQ(
      toter.fehlerausgabe, u"bildzuordnung: Der Bildschirm „:4711“ antwortet nicht; kein Dialog wäre zu sehen.\n"_s);
}

TEST_F(Dialogaufruf, AboveAWindowStandsNothingWithoutX11AndTheDialogOpensAllTheSame) {
  const Dialogende ende = rufe(QStringList{u"zuordnung"_s, u"--json"_s, u"--ueber=0x2c00007"_s} + beleg(),
      u"fenster frm_BildZuordnung|klicke cmd_Abbruch"_s);
  EXPECT_EQ(ende.code, 0);
  EXPECT_TRUE(ende.json()[u"geoeffnet"_s].toBool());
  EXPECT_EQ(ende.fehlerausgabe,
      u"bildzuordnung: Über einem fremden Fenster steht ein Dialog nur unter X11; er öffnet sich für sich.\n"_s);
}

TEST_F(Dialogaufruf, TheConnectionThatTheWindowRememberedServesAndNoCallChangesIt) {
  const QByteArray gemerkt = "[General]\nVerbindung=\"Provider=SQLite;Data Source=" + datenordner().toUtf8() +
      "/betrieb.db\"\nBilder=" + bilder().toUtf8() + "\n";
  const QString datei = u"heim/.config/bildzuordnung/Verbindung.ini"_s;
  const QStringList ohne{u"zuordnung"_s, u"--json"_s, u"--typ1=BEL"_s, u"--key1=AB"_s, u"--key2=24-1001"_s};
  ordner_.schreibe(datei, gemerkt);
  const Dialogende erster = rufe(ohne, u"fenster frm_BildZuordnung|sage|klicke cmd_Abbruch"_s);
  EXPECT_EQ(erster.code, 0);
  EXPECT_TRUE(erster.fehlerausgabe.contains(u"Heizkessel_01"_s)) << erster.fehlerausgabe.toStdString();
  const QStringList eingebettet{u"--eingebettet"_s, u"--datenordner"_s, datenordner()};
  EXPECT_EQ(rufe(ohne + eingebettet, u"fenster frm_BildZuordnung|klicke cmd_Abbruch"_s).code, 0);
  const QStringList andere{
      u"--verbindung"_s, datenordner() + u"/betrieb.db"_s, u"--bilder"_s, datenordner() + u"/eingang"_s};
  EXPECT_EQ(rufe(ohne + andere, u"fenster Meldung|knopf Nein"_s).code, 0);
  EXPECT_EQ(ordner_.lies(datei), gemerkt);
}
