// All assignments of a picture and further assignments of a record, from the program's window.
#include <QApplication>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtZuordnungen : public WirtBilder {
 protected:
  static constexpr int Letzte_Spalte = 25;

  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        u"SELECT 'WP-0900', Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, 7 FROM Bild_Zuordnungen "
        u"WHERE Key1 = 'TH-0100'"_s);
  }
  static QStringList artikel_des_Bildes() {
    return werte(u"SELECT Key1 FROM Bild_Zuordnungen WHERE Bildname LIKE 'Thermostat%' ORDER BY Key1"_s);
  }
  /// Asked before the picture's own assignment goes.
  static Meldung gebrauch() {
    const QString name = werte(u"SELECT Bildname FROM Bild_Zuordnungen WHERE Key1 = 'TH-0100'"_s).value(0);
    return {
        u"Das Bild „%1.jpg“ wird noch in einem anderen Vorgang verwendet.\r\n\r\n"
        "Entfernt wird nur die Zuordnung zu diesem Vorgang; die anderen behalten ihre. Entfernen?"_s.arg(name),
        u"Bildzuordnung"_s, Symbol::Frage, Knoepfe::JaNein};
  }
  void oeffne_Artikel() {
    oeffne();
    klicke(u"TH-0100"_s);
    klicke_Bild(0);
  }
  bool zeige_alle(const std::function<void(QWidget&)>& darin) {
    return klicke_und(u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s, darin);
  }
  static QTableView& gitter(const QWidget& fenster, const QString& name) {
    return *fenster.findChild<QTableView*>(name);
  }
  static QStringList gezeigte_Zuordnungen(const QWidget& fenster) {
    const QAbstractItemModel& modell = *gitter(fenster, u"TDBG_Zuordnungen"_s).model();
    QStringList texte;
    for (int i = 0; i < modell.rowCount(); ++i) texte.append(modell.index(i, Letzte_Spalte).data().toString());
    texte.sort();
    return texte;
  }
  static void waehle(const QWidget& fenster, const QString& text) {
    QTableView& tabelle = gitter(fenster, u"TDBG_Zuordnungen"_s);
    for (int i = 0; i < tabelle.model()->rowCount(); ++i) {
      const QModelIndex zelle = tabelle.model()->index(i, Letzte_Spalte);
      if (zelle.data().toString() == text)
        QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {}, tabelle.visualRect(zelle).center());
    }
  }
  void loesche(QWidget& fenster, const QString& text) {
    waehle(fenster, text);
    meldungen_.erwarte({u"Sollen die ausgewählten Zuordnungen wirklich gelöscht werden?"_s, u"Achtung"_s, Symbol::Frage,
                           Knoepfe::JaNein},
        Antwort::Ja);
    druecke(fenster, u"cmd_Loeschen"_s);
  }
};

}  // namespace

TEST_F(WirtZuordnungen, AlleZuordnungenShowsAllOfTheSelectedPictureAndDeletesAForeignOneAtOnce) {
  oeffne_Artikel();
  EXPECT_TRUE(zeige_alle([&](QWidget& fenster) {
    EXPECT_EQ(gezeigte_Zuordnungen(fenster), (QStringList{u"Artikelnummer: TH-0100"_s, u"Artikelnummer: WP-0900"_s}));
    loesche(fenster, u"Artikelnummer: WP-0900"_s);
    EXPECT_EQ(artikel_des_Bildes(), QStringList{u"TH-0100"_s});
  }));
  EXPECT_EQ(artikel_des_Bildes(), QStringList{u"TH-0100"_s});
  EXPECT_EQ(spalte(u"WP-0900"_s, 2), u"1"_s);
}

TEST_F(WirtZuordnungen, TheProgramItselfRemovesTheOwnAssignment) {
  oeffne_Artikel();
  EXPECT_TRUE(zeige_alle([&](QWidget& fenster) {
    loesche(fenster, u"Artikelnummer: TH-0100"_s);
    EXPECT_EQ(artikel_des_Bildes().size(), 2) << "the dialog leaves it to the caller";
    meldungen_.erwarte(gebrauch(), Antwort::Ja);
  }));
  EXPECT_EQ(artikel_des_Bildes(), QStringList{u"WP-0900"_s});
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u"zu diesem Vorgang ist entfernt."_s));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"kein Bild"_s);
}

TEST_F(WirtZuordnungen, TheOwnAssignmentStaysAfterANoToTheQuestionWhoElseUsesThePicture) {
  oeffne_Artikel();
  EXPECT_TRUE(zeige_alle([&](QWidget& fenster) {
    loesche(fenster, u"Artikelnummer: TH-0100"_s);
    meldungen_.erwarte(gebrauch(), Antwort::Nein);
  }));
  EXPECT_EQ(artikel_des_Bildes().size(), 2);
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u"zu diesem Vorgang bleibt."_s)) << text(u"lbl_Status"_s).toStdString();
}

TEST_F(WirtZuordnungen, WithoutASelectedPictureTheButtonsAreDisabled) {
  oeffne();
  klicke(u"TH-0100"_s);
  EXPECT_FALSE(kind<QPushButton>(u"cmd_AlleZuordnungen"_s)->isEnabled());
  EXPECT_TRUE(kind<QPushButton>(u"cmd_WeitereZuordnungen"_s)->isEnabled());
  klicke_Bild(0);
  EXPECT_TRUE(kind<QPushButton>(u"cmd_AlleZuordnungen"_s)->isEnabled());
  klicke(u"AN 24-3005"_s);
  EXPECT_FALSE(kind<QPushButton>(u"cmd_AlleZuordnungen"_s)->isEnabled());
  EXPECT_FALSE(kind<QPushButton>(u"cmd_WeitereZuordnungen"_s)->isEnabled()) << "a record without pictures";
}

TEST_F(WirtZuordnungen, APictureThatSomebodyElseJustRemovedIsTold) {
  oeffne_Artikel();
  sql(u"DELETE FROM Bild_Zuordnungen WHERE Key1 = 'TH-0100'"_s);
  meldungen_.erwarte(
      {u"Das Bild ist dem Vorgang nicht mehr zugeordnet."_s, u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_FALSE(zeige_alle([](QWidget&) {}));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"kein Bild"_s);
}

TEST_F(WirtZuordnungen, WeitereZuordnungenWritesAtOnceAndTheListCountsAnew) {
  oeffne_Artikel();
  EXPECT_EQ(spalte(u"TH-0110"_s, 2), u"0"_s);
  EXPECT_TRUE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [&](QWidget& fenster) {
    QTableView& artikel = gitter(fenster, u"TDBG_WeitereZuordnungen"_s);
    eingaben::klicke(*artikel.viewport(), artikel.visualRect(artikel.model()->index(0, 0)).center());
    for (const char zeichen : QByteArray("TH-0110\r")) QTest::keyClick(fenster.windowHandle(), zeichen);
    meldungen_.erwarte({u"Die oben gekennzeichneten Dateien werden den unten aufgeführten Artikeln zugeordnet! Möchten "
                        "Sie den Vorgang starten?"_s,
                           u"Dateien zuordnen"_s, Symbol::Frage, Knoepfe::JaNein},
        Antwort::Ja);
    druecke(fenster, u"SSC_ZuordnungSpeichern"_s);
  }));
  EXPECT_EQ(artikel_des_Bildes(), (QStringList{u"TH-0100"_s, u"TH-0110"_s, u"WP-0900"_s}));
  EXPECT_EQ(spalte(u"TH-0110"_s, 2), u"1"_s);
}

TEST_F(WirtZuordnungen, WithoutAPictureRootThereIsNothingMoreToAssign) {
  Wirtsoptionen ohne = optionen();
  ohne.bilder = u"/gibt/es/nicht"_s;
  oeffne(ohne);
  klicke(u"TH-0100"_s);
  meldungen_.erwarte(
      {u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen.\r\n\r\nOhne sie ist nichts zuzuordnen."_s,
          u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_FALSE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [](QWidget&) {}));
  EXPECT_EQ(artikel_des_Bildes().size(), 2);
}
