#include <QDir>
#include <QFile>
#include <QJsonArray>

#include "tests/host/dialog/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Zurueck = u"fenster frm_BildZuordnung|klicke cmd_Abbruch"_s;

QStringList mit(const QString& dialog, const QStringList& argumente) {
  return QStringList{dialog, u"--json"_s} + argumente;
}

}  // namespace

using Dialoglauf = Dialogtest;

TEST_F(Dialoglauf, LeavingTheDialogWritesNothingAndIsDone) {
  const QStringList vorher = zeilen();
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg()), Zurueck);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.fehlerausgabe, QString());
  const QJsonObject json = ende.json();
  EXPECT_EQ(json[u"dialog"_s].toString(), u"zuordnung"_s);
  EXPECT_TRUE(json[u"geoeffnet"_s].toBool());
  EXPECT_TRUE(json[u"vollstaendig"_s].toBool());
  EXPECT_FALSE(json[u"gespeichert"_s].toBool());
  for (const QString& zahl :
      {u"neu"_s, u"geaendert"_s, u"entfernt"_s, u"nachgefuehrt"_s, u"nicht_geschrieben"_s, u"ungewiss"_s})
    EXPECT_EQ(json[zahl].toInt(-1), 0) << zahl.toStdString();
  EXPECT_TRUE(json[u"bilder"_s].toArray().isEmpty());
  EXPECT_EQ(json[u"text"_s].toString(), u"Nichts geändert."_s);
  EXPECT_EQ(zeilen(), vorher);
}

TEST_F(Dialoglauf, WithoutJsonALineTellsThePersonAtTheTerminal) {
  const Dialogende ende = rufe(QStringList{u"zuordnung"_s} + beleg(), Zurueck);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.ausgabe, u"Nichts geändert.\n"_s);
}

TEST_F(Dialoglauf, ASavedTextIsToldByPicture) {
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg()),
      u"fenster frm_BildZuordnung|klicke txt_BildText|taste Ctrl+A|tippe Kessel neu|klicke SSC_ZuordnungSpeichern"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  const QJsonObject json = ende.json();
  EXPECT_TRUE(json[u"gespeichert"_s].toBool());
  EXPECT_EQ(json[u"geaendert"_s].toInt(), 1);
  ASSERT_EQ(json[u"bilder"_s].toArray().size(), 1);
  const QJsonObject bild = json[u"bilder"_s].toArray().at(0).toObject();
  EXPECT_EQ(bild[u"name"_s].toString(), u"Heizkessel_0120240305_081500.jpg"_s);
  EXPECT_EQ(bild[u"verbleib"_s].toString(), u"geaendert"_s);
  EXPECT_EQ(bild[u"hinweis"_s].toString(), QString());
  EXPECT_EQ(zeilen().first(), u"Heizkessel_0120240305_081500.jpg|Kessel neu"_s);
}

TEST_F(Dialoglauf, AnAttachedPictureGoesIntoTheFolderOfTheCall) {
  ASSERT_TRUE(QFile::copy(datenordner() + u"/eingang/Fahrzeug_30.jpg"_s, bilder() + u"/kessel.jpg"_s));
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--ordner"_s, u"Eigene/Belege"_s}),
      u"fenster frm_BildZuordnung|klicke SSC_BilderLaden|fenster frm_BilderSuchen|zeilen lvwContent 1|"
      "zelle lvwContent 0 0|klicke cmd_Uebernehmen|fenster frm_BildZuordnung|text SSP_Anzahl(3)=5|"
      "klicke SSC_ZuordnungSpeichern"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_EQ(ende.json()[u"neu"_s].toInt(), 1);
  QString name;
  for (const QJsonValue bild : ende.json()[u"bilder"_s].toArray())
    if (bild[u"verbleib"_s].toString() == "neu"_L1) name = bild[u"name"_s].toString();
  EXPECT_TRUE(name.startsWith(u"kessel"_s)) << ende.ausgabe.toStdString();
  EXPECT_TRUE(QFile::exists(bilder() + u"/Eigene/Belege/"_s + name)) << name.toStdString();
  EXPECT_EQ(zeilen().size(), 5);
}

TEST_F(Dialoglauf, OnlyShownNothingCanBeSaved) {
  const QStringList vorher = zeilen();
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--nur-anzeigen"_s}),
      u"fenster frm_BildZuordnung|klicke Pic_Thumb(2)|tippe x|klicke cmd_Abbruch"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_TRUE(ende.json()[u"nur_anzeige"_s].toBool());
  EXPECT_EQ(ende.json()[u"text"_s].toString(), u"Nur angezeigt; nichts ist geschrieben."_s);
  EXPECT_EQ(zeilen(), vorher);
}

TEST_F(Dialoglauf, AsAttachmentsEveryPictureShownBecomesOne) {
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--nur-anhang"_s}),
      u"fenster frm_BildZuordnung|klicke Pic_Thumb(2)|klicke txt_BildText|tippe x|klicke SSC_ZuordnungSpeichern"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_GT(ende.json()[u"geaendert"_s].toInt(), 0) << ende.ausgabe.toStdString();
}

TEST_F(Dialoglauf, TheTitleStandsInTheFrameAndInTheDialog) {
  const QStringList eigener = beleg() + QStringList{u"--titel"_s, u"Beleg AB 24-1001 für O'Neill"_s};
  const QString sage = u"fenster frm_BildZuordnung|sage|klicke cmd_Abbruch"_s;
  const QString genannt = rufe(mit(u"zuordnung"_s, eigener), sage).fehlerausgabe;
  EXPECT_TRUE(genannt.startsWith(u"Fenster: frm_BildZuordnung · Beleg AB 24-1001 für O'Neill – Bildzuordnung · "_s))
      << genannt.toStdString();
  EXPECT_EQ(genannt.count(u"O'Neill"_s), 2) << genannt.toStdString();
  const QString von_selbst = rufe(mit(u"zuordnung"_s, beleg()), sage).fehlerausgabe;
  EXPECT_TRUE(von_selbst.startsWith(u"Fenster: frm_BildZuordnung · Beleg AB 24-1001 – "_s)) << von_selbst.toStdString();
}

TEST_F(Dialoglauf, AKindThatNobodyKnowsOpensUnderItsName) {
  const QStringList projekt{
      u"--typ1=PRJ"_s, u"--key1=7"_s, u"--ordner=Projekte/7"_s, u"--datenordner"_s, datenordner()};
  const Dialogende ende = rufe(mit(u"zuordnung"_s, projekt), u"fenster frm_BildZuordnung|sage|klicke cmd_Abbruch"_s);
  EXPECT_EQ(ende.code, 0);
  EXPECT_TRUE(ende.fehlerausgabe.contains(u" · PRJ 7 – Bildzuordnung"_s)) << ende.fehlerausgabe.toStdString();
}

TEST_F(Dialoglauf, WithoutThePictureRootNothingOpensForWriting) {
  const QStringList vorher = zeilen();
  for (const QString& dialog : {u"zuordnung"_s, u"weitere"_s}) {
    const Dialogende ende = rufe(mit(dialog, beleg() + QStringList{u"--bilder=/gibt/es/nicht"_s}));
    EXPECT_EQ(ende.code, 4) << dialog.toStdString();
    EXPECT_FALSE(ende.json()[u"geoeffnet"_s].toBool(true));
    EXPECT_TRUE(
        ende.json()[u"text"_s].toString().startsWith(u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen."_s));
    EXPECT_EQ(ende.fehlerausgabe, u"bildzuordnung: "_s + ende.json()[u"text"_s].toString() + u'\n');
  }
  EXPECT_EQ(zeilen(), vorher);
}

TEST_F(Dialoglauf, AnEmptyRootIsToldAndNothingOpens) {
  QDir().mkpath(ordner_.pfad(u"leer"_s));
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--bilder"_s, ordner_.pfad(u"leer"_s)}),
      u"fenster Meldung|knopf OK"_s);
  EXPECT_EQ(ende.code, 4);
  EXPECT_FALSE(ende.json()[u"geoeffnet"_s].toBool(true));
  EXPECT_TRUE(ende.json()[u"text"_s].toString().startsWith(u"Die Bildablage ist leer"_s)) << ende.ausgabe.toStdString();
  EXPECT_EQ(zeilen().size(), 4);
}

TEST_F(Dialoglauf, WhoeverDoesNotWantToOpenWithoutAnyFileIsDone) {
  sql(u"update Bild_Zuordnungen set BildPfad = 'Fehlt' where Key2 = '24-1001' and Typ1 = 'BEL'"_s);
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg()), u"fenster Meldung|knopf Nein"_s);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.json()[u"text"_s].toString(), u"Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s);
  EXPECT_EQ(zeilen().size(), 4);
}

TEST_F(Dialoglauf, ADatabaseThatIsNotThereAndOneWithoutTheTableEndWith3) {
  const Dialogende keine =
      rufe(mit(u"zuordnung"_s, {u"--typ1=BEL"_s, u"--key1=AB"_s, u"--verbindung"_s, ordner_.pfad(u"keine.db"_s)}));
  EXPECT_EQ(keine.code, 3);
  EXPECT_TRUE(keine.fehlerausgabe.endsWith(u"keine.db“ gibt es nicht.\n"_s)) << keine.fehlerausgabe.toStdString();
  EXPECT_EQ(keine.json()[u"neu"_s].toInt(-1), 0) << "all names are there";
  EXPECT_FALSE(ordner_.vorhanden(u"keine.db"_s));
  sql(u"drop table Bild_Zuordnungen"_s);
  for (const QString& dialog : {u"zuordnung"_s, u"weitere"_s}) {
    const Dialogende ohne = rufe(mit(dialog, beleg()));
    EXPECT_EQ(ohne.code, 3);
    EXPECT_TRUE(ohne.json()[u"text"_s].toString().startsWith(u"Die Zuordnungen sind nicht zu lesen: "_s));
  }
  // The road itself tells the user.
  const Dialogende gezeigt =
      rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--nur-anzeigen"_s}), u"fenster Meldung|knopf OK"_s);
  EXPECT_EQ(gezeigt.code, 3);
  EXPECT_TRUE(gezeigt.json()[u"text"_s].toString().startsWith(u"Die Zuordnungen sind nicht zu lesen: "_s));
}

TEST_F(Dialoglauf, ARowWithAnApostropheKeepsTheDialogFromOpeningForWriting) {
  sql(u"update Bild_Zuordnungen set Grafik_Ursprung = 'O''Neill' where Bildname like 'Abgas%'"_s);
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg()));
  EXPECT_EQ(ende.code, 3);
  EXPECT_TRUE(ende.json()[u"text"_s].toString().contains(u"enthält ein Hochkomma"_s)) << ende.ausgabe.toStdString();
  EXPECT_EQ(rufe(mit(u"zuordnung"_s, beleg() + QStringList{u"--nur-anzeigen"_s}), Zurueck).code, 0);
}

TEST_F(Dialoglauf, ARowThatLeadsOutOfTheRootIsNotOpenedAndStays) {
  sql(u"update Bild_Zuordnungen set BildPfad = '..\\draussen' where Key2 = '24-1001' and SortIndex = 0"_s);
  const QStringList vorher = zeilen();
  const Dialogende ende = rufe(mit(u"zuordnung"_s, beleg()), Zurueck);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_TRUE(ende.json()[u"text"_s].toString().endsWith(u"darum nicht geöffnet: 1 Bild."_s));
  ASSERT_EQ(ende.json()[u"bilder"_s].toArray().size(), 1);
  EXPECT_TRUE(ende.json()[u"bilder"_s].toArray().at(0)[u"hinweis"_s].toString().contains(u"„..\\draussen“"_s));
  EXPECT_EQ(zeilen(), vorher);
  const QStringList bild{u"Heizkessel_0120240305_081500.jpg"_s};
  for (const Dialogende& eines : {rufe(mit(u"alle-zuordnungen"_s, beleg() + bild)), rufe(mit(u"weitere"_s, beleg()))}) {
    EXPECT_EQ(eines.code, 4) << eines.fehlerausgabe.toStdString();
    EXPECT_TRUE((eines.ausgabe + eines.fehlerausgabe).contains(u"nicht unter der Bildablage"_s))
        << eines.ausgabe.toStdString();
  }
}

TEST_F(Dialoglauf, TheSearchGivesThePathsThatWereChosen) {
  const QString eingang = datenordner() + u"/eingang"_s;
  const QStringList aufruf = mit(u"suche"_s, {u"--ordner"_s, eingang, u"--titel=Bild für AB 1"_s});
  const Dialogende gewaehlt =
      rufe(aufruf, u"fenster frm_BilderSuchen|zeilen lvwContent 8|sage|zelle lvwContent 2 0|klicke cmd_Uebernehmen"_s);
  EXPECT_EQ(gewaehlt.code, 0) << gewaehlt.fehlerausgabe.toStdString();
  EXPECT_TRUE(gewaehlt.fehlerausgabe.contains(u"Bild für AB 1 – "_s)) << gewaehlt.fehlerausgabe.toStdString();
  ASSERT_EQ(gewaehlt.json()[u"gewaehlt"_s].toArray().size(), 1);
  const QString pfad = gewaehlt.json()[u"gewaehlt"_s].toArray().at(0).toString();
  EXPECT_TRUE(QFile::exists(pfad)) << pfad.toStdString();
  EXPECT_TRUE(pfad.startsWith(eingang + u'/')) << pfad.toStdString();
  const Dialogende nichts = rufe(aufruf, u"fenster frm_BilderSuchen|klicke cmd_Abbruch"_s);
  EXPECT_EQ(nichts.code, 0);
  EXPECT_TRUE(nichts.json()[u"gewaehlt"_s].toArray().isEmpty());
  EXPECT_EQ(nichts.json()[u"text"_s].toString(), u"Bilder suchen: nichts gewählt."_s);
  EXPECT_EQ(rufe(mit(u"suche"_s, {u"--ordner=/gibt/es/nicht"_s})).code, 4);
}

TEST_F(Dialoglauf, AllAssignmentsTellWhetherTheOwnOneIsGone) {
  const QStringList bild{u"Heizkessel_0120240305_081500.jpg"_s};
  const Dialogende gezeigt =
      rufe(mit(u"alle-zuordnungen"_s, beleg() + bild), u"fenster frm_AlleZuordnungen|klicke cmd_Abbrechen"_s);
  EXPECT_EQ(gezeigt.code, 0) << gezeigt.fehlerausgabe.toStdString();
  EXPECT_FALSE(gezeigt.json()[u"eigene_entfernen"_s].toBool(true));
  EXPECT_EQ(zeilen().size(), 4);
  const Dialogende entfernt =
      rufe(mit(u"alle-zuordnungen"_s, beleg() + QStringList{u"Belege/24-1001/"_s + bild.first()}),
          u"fenster frm_AlleZuordnungen|zelle TDBG_Zuordnungen 0 25|klicke cmd_Loeschen|fenster Meldung|knopf Ja|"
          "fenster frm_AlleZuordnungen|klicke cmd_Abbrechen"_s);
  EXPECT_EQ(entfernt.code, 0) << entfernt.fehlerausgabe.toStdString();
  EXPECT_TRUE(entfernt.json()[u"eigene_entfernen"_s].toBool());
  EXPECT_TRUE(entfernt.json()[u"eigene_entfernt"_s].toBool());
  EXPECT_EQ(zeilen().size(), 3);
  const Dialogende weg = rufe(mit(u"alle-zuordnungen"_s, beleg() + bild));
  EXPECT_EQ(weg.code, 1);
  EXPECT_TRUE(weg.json()[u"text"_s].toString().endsWith(u"ist dem Vorgang nicht zugeordnet."_s));
}

TEST_F(Dialoglauf, FurtherAssignmentsAreWrittenInTheDialogItself) {
  const Dialogende ende = rufe(mit(u"weitere"_s, beleg()),
      u"fenster frm_AnzeigeZuordnung|zelle TDBG_WeitereZuordnungen 0 0|tippe TH-0110|taste Return|"
      "klicke SSC_ZuordnungSpeichern|fenster Meldung|knopf Ja"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_TRUE(ende.json()[u"geoeffnet"_s].toBool());
  EXPECT_EQ(zeilen().size(), 4);
}

TEST_F(Dialoglauf, ThePropertiesOfAFileAreShownAndAMissingOneIsNotMade) {
  const Dialogende ende =
      rufe(mit(u"eigenschaften"_s, {u"daten/eingang/Fahrzeug_30.jpg"_s}), u"fenster frm_BildInfo|klicke cmd_OK"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_EQ(ende.json()[u"bild"_s].toString(), datenordner() + u"/eingang/Fahrzeug_30.jpg"_s);
  EXPECT_EQ(rufe(mit(u"eigenschaften"_s, {u"daten/eingang/keines.jpg"_s})).code, 4);
  EXPECT_FALSE(ordner_.vorhanden(u"daten/eingang/keines.jpg"_s));
}

TEST_F(Dialoglauf, AResultThatCannotBeWrittenIsNoSuccess) {
  QProcess huelle;
  QProcessEnvironment umgebung = this->umgebung();
  umgebung.insert(u"KVO_FUEHRUNG"_s, Zurueck);
  huelle.setProcessEnvironment(umgebung);
  huelle.start(u"sh"_s,
      QStringList{u"-c"_s, u"exec \"$@\" >/dev/full"_s, u"sh"_s, QStringLiteral(DIALOG_PROGRAMM), u"dialog"_s} +
          mit(u"zuordnung"_s, beleg()));
  const Dialogende ende = beende(huelle);
  EXPECT_EQ(ende.code, 4);
  EXPECT_EQ(ende.fehlerausgabe, u"bildzuordnung: Die Ausgabe ist nicht vollständig zu schreiben.\n"_s);
}
