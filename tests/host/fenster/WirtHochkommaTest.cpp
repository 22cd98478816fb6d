// The statements carry values as they are: whatever the program reads from its tables or is typed into the component's
// overviews, none with an apostrophe gets into one.
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// A value that would make every condition true.
const QString Weit = u"x' or '1'='1"_s;

QString literal_von(QString wert) {
  return u'\'' + wert.replace(u'\'', u"''"_s) + u'\'';
}

class WirtHochkomma : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    // The picture of one article belongs to a second one too.
    sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        u"SELECT 'WP-0900', Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, 7 FROM Bild_Zuordnungen "
        u"WHERE Key1 = 'TH-0100'"_s);
  }
  static QStringList tabelle() {
    return werte(
        u"SELECT Key1 || '|' || Key2 || '|' || Key3 || '|' || Bildname || '|' || BildExt || '|' || Typ1 || '|' || "
        u"coalesce(BildPfad, '') FROM Bild_Zuordnungen ORDER BY 1"_s);
  }
  static void setze_Zeile(const QString& spalte, const QString& wert) {
    sql(u"UPDATE Bild_Zuordnungen SET %1 = %2 WHERE Key1 = 'TH-0100'"_s.arg(spalte, literal_von(wert)));
  }
  void erwarte_Meldung(const QString& text, Symbol symbol) {
    meldungen_.erwarte({text, u"Bildzuordnung"_s, symbol, Knoepfe::OK});
  }
  static QTableView& gitter(const QWidget& fenster, const QString& name) {
    return *fenster.findChild<QTableView*>(name);
  }
  /// Types an article number into the given line of the lower grid.
  static void tippe_Artikel(QWidget& fenster, int zeile, const QString& nummer) {
    QTableView& artikel = gitter(fenster, u"TDBG_WeitereZuordnungen"_s);
    eingaben::klicke(*artikel.viewport(), artikel.visualRect(artikel.model()->index(zeile, 0)).center());
    for (const char zeichen : nummer.toLatin1() + '\r') QTest::keyClick(fenster.windowHandle(), zeichen);
  }
  const Meldung Frage_Zuordnen{
      u"Die oben gekennzeichneten Dateien werden den unten aufgeführten Artikeln zugeordnet! Möchten Sie den Vorgang "
      "starten?"_s,
      u"Dateien zuordnen"_s, Symbol::Frage, Knoepfe::JaNein};
};

}  // namespace

TEST_F(WirtHochkomma, ARecordWithAnApostropheShowsNoPictureAndOpensNoDialog) {
  for (int key = 1; key <= 3; ++key) {
    SCOPED_TRACE(key);
    sql(u"UPDATE Bild_Zuordnungen SET Key1 = 'A1', Key2 = 'A2', Key3 = 'A3', Typ1 = 'ANL' WHERE Typ1 = 'ART' AND "
        u"Key1 = 'TH-0100'"_s);
    sql(u"UPDATE Bild_Zuordnungen SET Key%1 = %2 WHERE Typ1 = 'ANL' AND Key1 = 'A1' AND Key2 = 'A2'"_s.arg(
        QString::number(key), literal_von(Weit)));
    const QStringList vorher = tabelle();
    const QString nummer =
        QStringList{key == 1 ? Weit : u"A1"_s, key == 2 ? Weit : u"A2"_s, key == 3 ? Weit : u"A3"_s}.join(u' ');
    const QString grund =
        u"Die Nummer „%1“ enthält ein Hochkomma; solchen Vorgängen sind keine Bilder zuzuordnen."_s.arg(nummer);
    oeffne();
    ASSERT_TRUE(fenster_->waehle(nummer));
    EXPECT_EQ(text(u"lbl_Status"_s), grund);
    EXPECT_EQ(fenster_->ansicht()->lst_Bilder->model()->rowCount(), 0);
    for (const bool nur_Anzeige : {false, true}) {
      erwarte_Meldung(grund, Symbol::Kritisch);
      fenster_->oeffne_Dialog(nur_Anzeige);
    }
    erwarte_Meldung(grund, Symbol::Kritisch);
    fenster_->zeige_WeitereZuordnungen();
    fenster_->zeige_AlleZuordnungen();
    EXPECT_TRUE(aufrufe_.isEmpty());
    EXPECT_EQ(tabelle(), vorher);
    fenster_.reset();
    SetUp();
  }
}

TEST_F(WirtHochkomma, ARecordWithSuchARowOpensForDisplayOnly) {
  for (const QString& spalte : {u"Bildname"_s, u"BildExt"_s, u"BildPfad"_s, u"Grafik_Ursprung"_s, u"GrafikAnbNr"_s}) {
    SCOPED_TRACE(spalte.toStdString());
    setze_Zeile(spalte, Weit);
    const QString datei =
        werte(u"SELECT Bildname || '.' || BildExt FROM Bild_Zuordnungen WHERE Key1 = 'TH-0100'"_s).value(0);
    const QString grund =
        u"Die Zuordnung von „%1“ enthält ein Hochkomma (%2: „%3“); damit ist keine Anweisung an die Datenbank möglich."_s
            .arg(datei, spalte, Weit);
    const QStringList vorher = tabelle();
    oeffne();
    klicke(u"TH-0100"_s);
    erwarte_Meldung(grund, Symbol::Kritisch);
    QTest::mouseClick(kind<QPushButton>(u"cmd_Zuordnen"_s), Qt::LeftButton);
    EXPECT_TRUE(aufrufe_.isEmpty());
    EXPECT_EQ(text(u"lbl_Status"_s), grund);
    QTest::mouseClick(kind<QPushButton>(u"cmd_Anzeigen"_s), Qt::LeftButton);
    EXPECT_EQ(aufrufe_.size(), 1);
    erwarte_Meldung(grund, Symbol::Kritisch);
    EXPECT_FALSE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [](QWidget&) {}));
    klicke_Bild(0);
    erwarte_Meldung(grund, Symbol::Kritisch);
    EXPECT_FALSE(klicke_und(u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s, [](QWidget&) {}));
    EXPECT_EQ(tabelle(), vorher);
    fenster_.reset();
    aufrufe_.clear();
    SetUp();
  }
}

TEST_F(WirtHochkomma, WhereThePictureHasSuchAnAssignmentNoneIsDeleted) {
  for (const QString& spalte : {u"Key1"_s, u"Key2"_s, u"Key3"_s, u"key4"_s, u"Typ1"_s, u"Typ2"_s}) {
    SCOPED_TRACE(spalte.toStdString());
    sql(u"UPDATE Bild_Zuordnungen SET %1 = %2 WHERE Key1 = 'WP-0900' AND SortIndex = 7"_s.arg(
        spalte, literal_von(Weit)));
    const QStringList vorher = tabelle();
    oeffne();
    klicke(u"TH-0100"_s);
    klicke_Bild(0);
    EXPECT_TRUE(klicke_und(u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s, [&](QWidget& fenster) {
      druecke(fenster, u"cmd_AlleLoeschen"_s);
      erwarte_Meldung(
          u"„%1“ enthält ein Hochkomma; solange die Liste eine solche Zuordnung hat, ist keine zu löschen. "
          "Nichts ist gelöscht."_s.arg(Weit),
          Symbol::Ausrufezeichen);
      druecke(fenster, u"cmd_Loeschen"_s);
      EXPECT_TRUE(fenster.isVisible());
    }));
    EXPECT_EQ(tabelle(), vorher);
    fenster_.reset();
    SetUp();
  }
}

TEST_F(WirtHochkomma, ATypedArticleNumberIsNotAssignedUntilItIsCorrected) {
  const QStringList vorher = tabelle();
  oeffne();
  klicke(u"TH-0100"_s);
  EXPECT_TRUE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [&](QWidget& fenster) {
    for (const QString& nummer : {u"TH'1"_s, Weit}) {
      tippe_Artikel(fenster, 0, nummer);
      erwarte_Meldung(
          u"„%1“ enthält ein Hochkomma; solchen Artikeln sind keine Bilder zuzuordnen. Nichts ist zugeordnet."_s.arg(
              nummer),
          Symbol::Ausrufezeichen);
      druecke(fenster, u"SSC_ZuordnungSpeichern"_s);
      EXPECT_TRUE(fenster.isVisible());
      EXPECT_EQ(tabelle(), vorher);
    }
    tippe_Artikel(fenster, 0, u"TH-0110"_s);
    meldungen_.erwarte(Frage_Zuordnen, Antwort::Ja);
    druecke(fenster, u"SSC_ZuordnungSpeichern"_s);
    EXPECT_FALSE(fenster.isVisible());
  }));
  EXPECT_EQ(tabelle().size(), vorher.size() + 1);
}

TEST_F(WirtHochkomma, ASupplierWithAnApostropheBecomesNoFolder) {
  const QString lieferant =
      werte(u"SELECT Hauptlieferant FROM Artikelzusatz WHERE Artikelnummer = 'TH-0110'"_s).value(0);
  sql(u"UPDATE Artikelzusatz SET Hauptlieferant = 'O''Neil' WHERE Artikelnummer = 'TH-0110'"_s);
  const QStringList vorher = tabelle();
  oeffne();
  klicke(u"TH-0100"_s);
  EXPECT_TRUE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [&](QWidget& fenster) {
    tippe_Artikel(fenster, 0, u"TH-0110"_s);
    erwarte_Meldung(
        u"„O'Neil“ enthält ein Hochkomma; solchen Artikeln sind keine Bilder zuzuordnen. Nichts ist zugeordnet."_s,
        Symbol::Ausrufezeichen);
    druecke(fenster, u"SSC_ZuordnungSpeichern"_s);
  }));
  EXPECT_EQ(tabelle(), vorher);
  sql(u"UPDATE Artikelzusatz SET Hauptlieferant = %1 WHERE Artikelnummer = 'TH-0110'"_s.arg(literal_von(lieferant)));
}

TEST_F(WirtHochkomma, OtherQuestionsAndNoticesComeAsTheyAre) {
  oeffne();
  meldungen_.erwarte({u"Wirklich?"_s, u"Titel"_s, Symbol::Frage, Knoepfe::JaNein}, Antwort::Ja);
  EXPECT_EQ(MsgBox(u"Wirklich?"_s, Knoepfe::JaNein, Symbol::Frage, u"Titel"_s), Antwort::Ja);
  meldungen_.erwarte({u"Fertig"_s, u"Titel"_s, Symbol::Information, Knoepfe::OK});
  EXPECT_EQ(MsgBox(u"Fertig"_s, Knoepfe::OK, Symbol::Information, u"Titel"_s), Antwort::OK);
}

TEST_F(WirtHochkomma, TextsOfTheRecordsGetIntoNoStatement) {
  sql(u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Kundennummer, Projektnummer) "
      u"VALUES ('BEL', 'AB', 'H-1', 'O''Neil', 'x'' or ''1''=''1')"_s);
  oeffne();
  EXPECT_EQ(spalte(u"AB H-1"_s, 1), u"O'Neil · Projekt x' or '1'='1"_s);
  klicke(u"AB H-1"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"kein Bild"_s);
}

TEST_F(WirtHochkomma, ThePictureFolderOfARecordHasNone) {
  for (const auto& [art, ordner] : {std::pair(u"BEL"_s, u"Belege\\O_N"_s), std::pair(u"MON"_s, u"Montage\\O_N"_s),
           std::pair(u"ART"_s, u"Artikel\\Allg"_s), std::pair(u"ANL"_s, u"Anlagen\\O_N"_s)})
    EXPECT_EQ(vorgang::bildordner(vorgang::aus_Schluesseln(art, u"O'N"_s, u"O'N"_s, u"O'N"_s)), ordner);
}
