#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "platform/adodb/Connection.h"
#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// Types a text; QTest::keyClicks knows ASCII alone.
void tippe(QWidget* feld, const QString& text) {
  for (const QChar c : text)
    QTest::sendKeyEvent(QTest::Click, feld, static_cast<Qt::Key>(c.toUpper().unicode()), QString(c), Qt::NoModifier);
}

}  // namespace

TEST_F(WirtFenster, TheListShowsTheRecordsByKindWithTheNumberOfTheirPictures) {
  oeffne();
  EXPECT_EQ(gezeigte(),
      (QStringList{u"AB 24-1001"_s, u"AN 24-3005"_s, u"RE 24-2003"_s, u"AB 24-1001 / 1"_s, u"AB 24-1001 / 2"_s,
          u"AR-0010"_s, u"MI-0025"_s, u"TH-0100"_s, u"TH-0110"_s, u"WP-0900"_s, u"WT-0600"_s, u"10002 Heizung 1"_s,
          u"10002 Solar 1"_s}));
  const QList<std::pair<QString, QString>> anzahlen{{u"AB 24-1001"_s, u"4"_s}, {u"AN 24-3005"_s, u"0"_s},
      {u"AB 24-1001 / 1"_s, u"3"_s}, {u"AB 24-1001 / 2"_s, u"2"_s}, {u"TH-0110"_s, u"0"_s},
      {u"10002 Solar 1"_s, u"3"_s}};
  for (const auto& [nummer, anzahl] : anzahlen)
    EXPECT_EQ(spalte(nummer, Vorgangsmodell::Bilder), anzahl) << nummer.toStdString();
  EXPECT_EQ(spalte(u"RE 24-2003"_s, Vorgangsmodell::Betreff), u"Familie Öztürk, Kirchzarten · Projekt P-24-11"_s);
  EXPECT_EQ(text(u"lbl_Status"_s), u"13 Vorgänge"_s);
}

TEST_F(WirtFenster, ARecordKnownOnlyByItsAssignmentsIsListedToo) {
  sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2) "
      "SELECT Key1, '23-0001', Key3, key4, Bildname, BildExt, Typ1, Typ2 FROM Anfang WHERE Key1 = 'RE'"_s);
  sql(u"DELETE FROM Bild_Zuordnungen WHERE Key2 = '24-2003'"_s);
  oeffne();
  EXPECT_EQ(spalte(u"RE 23-0001"_s, Vorgangsmodell::Bilder), u"4"_s);
  EXPECT_EQ(spalte(u"RE 24-2003"_s, Vorgangsmodell::Bilder), u"0"_s);
}

TEST_F(WirtFenster, KeysAreComparedAsTheDatabaseDoes) {
  sql(u"UPDATE Bild_Zuordnungen SET Key1 = 'wp-0900 ' WHERE Key1 = 'WP-0900'"_s);
  oeffne();
  EXPECT_EQ(spalte(u"WP-0900"_s, Vorgangsmodell::Bilder), u"1"_s);
  EXPECT_EQ(gezeigte().size(), 13);
}

TEST_F(WirtFenster, NoRecordIsSelectedInTheBeginning) {
  oeffne();
  EXPECT_EQ(text(u"lbl_Ueberschrift"_s), u"Kein Vorgang gewählt"_s);
  EXPECT_TRUE(sichtbar(u"lbl_Hinweis"_s));
  EXPECT_FALSE(kind<QAction>(u"act_Zuordnen"_s)->isEnabled());
}

TEST_F(WirtFenster, AClickShowsTheRecordWithItsPictures) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Art"_s), u"Beleg"_s);
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Betreff"_s), u"Bäckerei Huber, Freiburg · Projekt P-24-07"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"4 Bilder"_s);
  EXPECT_EQ(fenster_->ansicht()->lst_Bilder->anzahl(), 4);
  EXPECT_TRUE(kind<QPushButton>(u"cmd_Zuordnen"_s)->isEnabled());
}

TEST_F(WirtFenster, ThePreviewPaintsThePicturesAndAPlaceholderForTheMissingFile) {
  oeffne();
  klicke(u"RE 24-2003"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"4 Bilder, 1 Datei fehlt"_s);
  auto* streifen = fenster_->ansicht()->lst_Bilder;
  streifen->lade_Sichtbare();
  EXPECT_EQ(streifen->geladene(), 3);
  const QImage gemalt = streifen->viewport()->grab().toImage();
  const auto farbe_in = [&](int zeile, QPoint versatz) {
    return gemalt.pixelColor(streifen->visualRect(streifen->model()->index(zeile, 0)).topLeft() + versatz);
  };
  // A corner of the sample pictures: number 5 and number 6 differ in their hue by 137 degrees.
  const QPoint ecke(8 + 84, 8 + 10);
  EXPECT_NEAR(farbe_in(0, ecke).hsvHue(), 5 * 137 % 360, 6);
  EXPECT_NEAR(farbe_in(1, ecke).hsvHue(), 6 * 137 % 360, 6);
  EXPECT_LT(farbe_in(3, ecke).hsvSaturation(), 20);
  EXPECT_TRUE(streifen->model()->index(3, 0).data(Qt::ToolTipRole).toString().contains(u"Die Datei fehlt"_s));
}

TEST_F(WirtFenster, APictureFileThatIsNoneBringsNoMessage) {
  Testordner ablage;
  ablage.schreibe(u"Belege/24-1001/Heizkessel_0120240305_081500.jpg"_s, "kein Bild");
  Wirtsoptionen mit = optionen();
  mit.bilder = ablage.pfad();
  oeffne(mit);
  klicke(u"AB 24-1001"_s);
  fenster_->ansicht()->lst_Bilder->lade_Sichtbare();
  EXPECT_EQ(fenster_->ansicht()->lst_Bilder->geladene(), 1);
}

TEST_F(WirtFenster, ARecordWithoutPicturesSaysSo) {
  oeffne();
  klicke(u"AN 24-3005"_s);
  EXPECT_TRUE(sichtbar(u"lbl_KeineBilder"_s));
  EXPECT_FALSE(sichtbar(u"lst_Bilder"_s));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"kein Bild"_s);
  EXPECT_TRUE(kind<QPushButton>(u"cmd_Zuordnen"_s)->isEnabled());
}

TEST_F(WirtFenster, TheFilterFindsInNumberAndTextWithoutRegardToCase) {
  oeffne();
  const QList<std::pair<QString, QStringList>> faelle{{u"24-2003"_s, {u"RE 24-2003"_s}},
      {u"ÖZTÜRK"_s, {u"RE 24-2003"_s, u"10002 Heizung 1"_s, u"10002 Solar 1"_s}},
      {u"öztürk solar"_s, {u"10002 Solar 1"_s}}, {u"elek 24-1001 / 2"_s, {u"AB 24-1001 / 2"_s}}, {u"kl kü"_s, {}},
      {u"fü"_s, {u"AB 24-1001 / 2"_s}}};
  auto* filter = kind<QLineEdit>(u"txt_Filter"_s);
  for (const auto& [worte, nummern] : faelle) {
    QTest::keyClick(filter, Qt::Key_Escape);
    tippe(filter, worte);
    EXPECT_EQ(gezeigte(), nummern) << worte.toStdString();
  }
}

TEST_F(WirtFenster, AFilterWithoutAMatchSaysSoAndCanBeEmptied) {
  oeffne();
  tippe(kind<QLineEdit>(u"txt_Filter"_s), u"xyz"_s);
  EXPECT_FALSE(baum()->isVisible());
  EXPECT_EQ(text(u"lbl_Leer"_s), u"Kein Vorgang enthält „xyz“."_s);
  QTest::mouseClick(kind<QPushButton>(u"cmd_FilterLeeren"_s), Qt::LeftButton);
  EXPECT_TRUE(baum()->isVisible());
  EXPECT_EQ(gezeigte().size(), 13);
}

TEST_F(WirtFenster, TheFilterLeavesTheSelectedRecordSelectedOrSelectsNone) {
  oeffne();
  klicke(u"RE 24-2003"_s);
  auto* filter = kind<QLineEdit>(u"txt_Filter"_s);
  tippe(filter, u"RE"_s);
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"RE 24-2003"_s);
  EXPECT_EQ(fenster_->liste()->gewaehlt()->nummer, u"RE 24-2003"_s);
  QTest::keyClick(filter, Qt::Key_Escape);
  tippe(filter, u"Solar"_s);
  warte();
  EXPECT_EQ(fenster_->liste()->gewaehlt(), nullptr);
  EXPECT_TRUE(sichtbar(u"lbl_Ueberschrift"_s));
}

TEST_F(WirtFenster, FromTheFilterTheKeyboardLeadsIntoTheDialog) {
  oeffne();
  QTest::keyClick(fenster_.get(), Qt::Key_F, Qt::AltModifier);
  auto* filter = kind<QLineEdit>(u"txt_Filter"_s);
  ASSERT_TRUE(filter->hasFocus());
  tippe(filter, u"Solar"_s);
  QTest::keyClick(filter, Qt::Key_Down);
  ASSERT_TRUE(baum()->hasFocus());
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"10002 Solar 1"_s);
  QTest::keyClick(baum(), Qt::Key_Return);
  ASSERT_EQ(aufrufe_.size(), 1);
  EXPECT_EQ(aufrufe_.first().ordner, u"Anlagen\\10002"_s);
  EXPECT_FALSE(aufrufe_.first().nur_Anzeige);
}

TEST_F(WirtFenster, ADoubleClickOpensTheDialogOnce) {
  oeffne();
  klicke(u"RE 24-2003"_s, true);
  ASSERT_EQ(aufrufe_.size(), 1);
  EXPECT_EQ(aufrufe_.first().bilder, 4);
}

TEST_F(WirtFenster, NothingOpensOnAKindOfRecord) {
  oeffne();
  const QModelIndex kopf = baum()->model()->index(0, 0);
  const QPoint stelle = baum()->visualRect(kopf).center();
  QTest::mouseClick(baum()->viewport(), Qt::LeftButton, {}, stelle);
  QTest::keyClick(baum(), Qt::Key_Return);
  EXPECT_TRUE(aufrufe_.isEmpty());
}

TEST_F(WirtFenster, BothButtonsOpenInTheirOwnWay) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  QTest::mouseClick(kind<QPushButton>(u"cmd_Zuordnen"_s), Qt::LeftButton);
  QTest::mouseClick(kind<QPushButton>(u"cmd_Anzeigen"_s), Qt::LeftButton);
  QTest::keyClick(fenster_.get(), Qt::Key_A, Qt::AltModifier);
  // An access key lets the button be seen pressed first.
  ASSERT_TRUE(QTest::qWaitFor([&] { return aufrufe_.size() == 3; }));
  EXPECT_FALSE(aufrufe_[0].nur_Anzeige);
  EXPECT_TRUE(aufrufe_[1].nur_Anzeige);
  EXPECT_TRUE(aufrufe_[2].nur_Anzeige);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Beleg AB 24-1001: Nur angezeigt; nichts ist geschrieben."_s);
}

TEST_F(WirtFenster, AfterTheDialogCountPicturesAndResultAreShown) {
  oeffne();
  im_Dialog_ = [](clsBildZuordnungen& store) {
    store.FKT_NeuesBild({}, {}, {}, {}, u"Neu"_s, u"jpg"_s, u"BEL"_s, u"-"_s);
    store.Bild_Pfad(u"Belege\\24-3005"_s);
  };
  const QString ordner = datenordner() + u"/bilder/Belege/24-3005"_s;
  ASSERT_TRUE(QDir().mkpath(ordner) && QFile(datenordner() + u"/Bild"_s).open(QIODevice::WriteOnly) &&
      QFile::rename(datenordner() + u"/Bild"_s, ordner + u"/Neu.jpg"_s));
  const auto raeume_auf = qScopeGuard([&] { QDir(ordner).removeRecursively(); });
  klicke(u"AN 24-3005"_s);
  QTest::mouseClick(kind<QPushButton>(u"cmd_Zuordnen"_s), Qt::LeftButton);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Beleg AN 24-3005: 1 Zeile geschrieben: 1 neu."_s);
  EXPECT_EQ(spalte(u"AN 24-3005"_s, Vorgangsmodell::Bilder), u"1"_s);
  EXPECT_EQ(fenster_->liste()->gewaehlt()->nummer, u"AN 24-3005"_s);
  EXPECT_EQ(fenster_->ansicht()->lst_Bilder->anzahl(), 1);
}

TEST_F(WirtFenster, AnUnreachablePictureRootLeavesTheWindowUsable) {
  Wirtsoptionen ohne = optionen();
  ohne.bilder = u"/gibt/es/nicht"_s;
  oeffne(ohne);
  klicke(u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"4 Bilder, 4 Dateien fehlen"_s);
  meldungen_.erwarte(
      {u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen.\r\n\r\nDer Dialog wird nicht geöffnet, "
       "weil er alle Bilder zum Entfernen vormerken würde."_s,
          u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  QTest::mouseClick(kind<QPushButton>(u"cmd_Zuordnen"_s), Qt::LeftButton);
  EXPECT_TRUE(aufrufe_.isEmpty());
  EXPECT_EQ(text(u"lbl_Status"_s), u"Beleg AB 24-1001: Der Dialog wurde nicht geöffnet; nichts ist geschrieben."_s);
}

TEST_F(WirtFenster, ADeadDatabaseIsToldAndF5ReadsItAgain) {
  nimm_Tabelle_weg();
  oeffne();
  EXPECT_EQ(text(u"lbl_Ueberschrift"_s), u"Die Vorgänge sind nicht zu lesen"_s);
  EXPECT_TRUE(sichtbar(u"cmd_NochEinmal"_s));
  EXPECT_TRUE(text(u"lbl_Hinweis"_s).contains(u"Bild_Zuordnungen"_s));
  gib_Tabelle_zurueck();
  QTest::keyClick(fenster_.get(), Qt::Key_F5);
  EXPECT_EQ(gezeigte().size(), 13);
  EXPECT_EQ(text(u"lbl_Ueberschrift"_s), u"Kein Vorgang gewählt"_s);
  EXPECT_FALSE(sichtbar(u"cmd_NochEinmal"_s));
}

TEST_F(WirtFenster, ADatabaseThatDoesNotExistIsNamedAndNotCreated) {
  Testordner ordner;
  Wirtsoptionen fremd = optionen();
  fremd.verbindung = u"Provider=SQLite;Data Source="_s + ordner.pfad(u"weg.db"_s);
  oeffne(fremd);
  EXPECT_TRUE(text(u"lbl_Hinweis"_s).contains(u"weg.db“ gibt es nicht."_s));
  EXPECT_FALSE(ordner.vorhanden(u"weg.db"_s));
}

TEST_F(WirtFenster, WhenTheDatabaseDiesBeforeTheDialogItDoesNotOpen) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  nimm_Tabelle_weg();
  meldungen_.erwarte(
      {u"Die Zuordnungen sind nicht zu lesen: Die Anweisung ist fehlgeschlagen: no such table: Bild_Zuordnungen"_s,
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  QTest::mouseClick(kind<QPushButton>(u"cmd_Zuordnen"_s), Qt::LeftButton);
  gib_Tabelle_zurueck();
  EXPECT_TRUE(aufrufe_.isEmpty());
  EXPECT_EQ(gezeigte().size(), 13);
}

TEST_F(WirtFenster, WithoutAViewTheRecordsThatHavePicturesAreShownAndTheWayToMoreIsTold) {
  Testordner ordner;
  adodb::Connection fremde;
  fremde.Open(u"Provider=SQLite;Mode=ReadWriteCreate;Data Source="_s + ordner.pfad(u"fremd.db"_s));
  fremde.Execute(
      u"CREATE TABLE Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
      "Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, SortIndex)"_s);
  fremde.Execute(
      u"INSERT INTO Bild_Zuordnungen (Typ1, Key1, Key2, Key3, key4, Typ2) VALUES "
      "('BEL', 'AB', '1', '-', '-', '-'), ('BEL', 'AB', '1', '-', '-', '-'), "
      "('Auftrag', 'Ü 7', '-', '-', '-', '-')"_s);
  Wirtsoptionen fremd = optionen();
  fremd.verbindung = u"Provider=SQLite;Data Source="_s + ordner.pfad(u"fremd.db"_s);
  fremd.bilder = datenordner() + u"/bilder"_s;
  oeffne(fremd);
  EXPECT_EQ(gezeigte(), (QStringList{u"AB 1"_s, u"Ü 7"_s})) << text(u"lbl_Status"_s).toStdString();
  EXPECT_EQ(spalte(u"AB 1"_s, Vorgangsmodell::Bilder), u"2"_s);
  EXPECT_EQ(baum()->model()->index(1, 0).data().toString(), u"AUFTRAG (1)"_s);
  EXPECT_TRUE(sichtbar(u"lbl_Listenhinweis"_s));
  EXPECT_TRUE(text(u"lbl_Listenhinweis"_s).contains(u"„Bild_Vorgaenge“"_s));
  tippe(kind<QLineEdit>(u"txt_Filter"_s), u"ü"_s);
  EXPECT_EQ(gezeigte(), QStringList{u"Ü 7"_s});
}

TEST_F(WirtFenster, TheRecordsThatWereWorkedOnLastAreShownOnDemand) {
  oeffne();
  auto* zuletzt = kind<QPushButton>(u"cmd_Zuletzt"_s);
  QTest::mouseClick(zuletzt, Qt::LeftButton);
  EXPECT_TRUE(gezeigte().isEmpty());
  EXPECT_EQ(text(u"lbl_Leer"_s), u"An diesem Platz ist noch kein Vorgang bearbeitet worden."_s);
  QTest::mouseClick(zuletzt, Qt::LeftButton);
  EXPECT_EQ(gezeigte().size(), 13);
  for (const QString& nummer : {u"RE 24-2003"_s, u"AB 24-1001"_s, u"AR-0010"_s, u"RE 24-2003"_s}) {
    klicke(nummer);
    fenster_->oeffne_Dialog(nummer == "AR-0010"_L1);
  }
  QTest::mouseClick(zuletzt, Qt::LeftButton);
  // The last one first; looking at pictures is no work on them.
  EXPECT_EQ(gezeigte(), (QStringList{u"RE 24-2003"_s, u"AB 24-1001"_s}));
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"2 Vorgänge"_s);
}

TEST_F(WirtFenster, MoreRecordsAreShownTwoHundredAtATime) {
  sql(u"WITH RECURSIVE z(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM z WHERE n < 437) INSERT INTO Vorgaenge (Typ1, "
      "Key1, Key2) SELECT 'BEL', 'ZZ', printf('%04d', n) FROM z"_s);
  oeffne();
  auto* mehr = kind<QPushButton>(u"cmd_Mehr"_s);
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"200 von 450 Vorgängen"_s);
  QTest::mouseClick(mehr, Qt::LeftButton);
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"400 von 450 Vorgängen"_s);
  QTest::mouseClick(mehr, Qt::LeftButton);
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"450 Vorgänge"_s);
  EXPECT_EQ(gezeigte().size(), 450);
  EXPECT_FALSE(mehr->isEnabled());
  // Other words begin anew.
  tippe(kind<QLineEdit>(u"txt_Filter"_s), u"zz"_s);
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"200 von 437 Vorgängen"_s);
}

TEST_F(WirtFenster, ARecordNamedInTheCallIsSelectedInTheBeginning) {
  Wirtsoptionen mit = optionen();
  mit.vorgang = u"re 24-2003"_s;
  oeffne(mit);
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"RE 24-2003"_s);
}

TEST_F(WirtFenster, TheTabulatorGoesFromTheFilterOverTheListToTheButtons) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  kind<QLineEdit>(u"txt_Filter"_s)->setFocus();
  QStringList folge;
  for (int i = 0; i < 6; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    folge.append(QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(folge,
      (QStringList{u"cmd_Einlesen"_s, u"tree_Vorgaenge"_s, u"cmd_Zuletzt"_s, u"lst_Bilder"_s, u"cmd_Zuordnen"_s,
          u"cmd_Anzeigen"_s}));
}

TEST_F(WirtFenster, TheFirstStartPaintsTheWindowAndThenCreatesTheData) {
  Testordner heim;
  Wirtsoptionen neu;
  neu.datenordner = heim.pfad(u"neu"_s);
  oeffne(neu);
  EXPECT_TRUE(QTest::qWaitFor([&] { return gezeigte().size() == 13; }, 20'000));
  EXPECT_TRUE(heim.vorhanden(u"neu/betrieb.db"_s));
}
