// A row of another program whose folder leads out of the picture root: the window shows its picture as missing, and
// nothing that takes a row's folder goes there.
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>

#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtAusserhalb : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    // Also where a path ends that can't lead above its drive.
    for (const QString& ordner : {u"/draussen"_s, u"/bilder/draussen"_s}) {
      QDir().mkpath(datenordner() + ordner);
      QFile::copy(datenordner() + u"/eingang/Fahrzeug_30.jpg"_s, datenordner() + ordner + u"/fremd.jpg"_s);
      ASSERT_TRUE(QFile::exists(datenordner() + ordner + u"/fremd.jpg"_s));
    }
    setze(u"..\\draussen"_s);
  }
  void TearDown() override {
    for (const QString& ordner : {u"/draussen"_s, u"/bilder/draussen"_s})
      QDir(datenordner() + ordner).removeRecursively();
  }
  static void setze(const QString& ordner) {
    sql(u"UPDATE Bild_Zuordnungen SET BildPfad = '%1', Bildname = 'fremd', BildExt = 'jpg' WHERE Key1 = 'TH-0100'"_s
            .arg(ordner));
  }
  static QStringList tabelle() {
    return werte(
        u"SELECT Key1 || '|' || Key2 || '|' || Bildname || '|' || BildPfad FROM Bild_Zuordnungen ORDER BY 1"_s);
  }
  void oeffne_Vorgang() {
    oeffne();
    klicke(u"TH-0100"_s);
  }
};

}  // namespace

TEST_F(WirtAusserhalb, ThePictureIsShownAsMissingWhereverTheFolderLeads) {
  for (const QString& ordner : {u"..\\draussen"_s, u"\\draussen"_s, u"C:\\draussen"_s, u"\\\\server\\freigabe"_s}) {
    SCOPED_TRACE(ordner.toStdString());
    setze(ordner);
    oeffne_Vorgang();
    EXPECT_EQ(text(u"lbl_Anzahl"_s), u"1 Bild, 1 Datei fehlt"_s);
    fenster_.reset();
  }
}

TEST_F(WirtAusserhalb, TheDialogDoesNotGetTheRowAndTheRowStays) {
  const QStringList vorher = tabelle();
  oeffne_Vorgang();
  for (const QString& knopf : {u"cmd_Zuordnen"_s, u"cmd_Anzeigen"_s}) {
    QTest::mouseClick(kind<QPushButton>(knopf), Qt::LeftButton);
    ASSERT_FALSE(aufrufe_.isEmpty());
    EXPECT_EQ(aufrufe_.last().bilder, 0);
    EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u"Außerhalb der Bildablage und darum nicht geöffnet: 1 Bild."_s))
        << text(u"lbl_Status"_s).toStdString();
    EXPECT_EQ(tabelle(), vorher);
  }
  EXPECT_EQ(aufrufe_.size(), 2);
}

TEST_F(WirtAusserhalb, NoWindowOpensWhatStandsThere) {
  const QStringList vorher = tabelle();
  oeffne_Vorgang();
  klicke_Bild(0);
  meldungen_.erwarte({u"Die Datei „..\\draussen\\fremd.jpg“ fehlt in der Bildablage."_s, u"Bildzuordnung"_s,
      Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_FALSE(klicke_und(u"cmd_Exif"_s, u"frm_BildInfo"_s, [](QWidget&) {}));
  const Meldung draussen{
      u"Die Zuordnung von „fremd.jpg“ nennt den Ordner „..\\draussen“, der nicht unter der Bildablage liegt; dort wird "
      "nichts geöffnet."_s,
      u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK};
  klicke_Bild(0);
  meldungen_.erwarte(draussen);
  EXPECT_FALSE(klicke_und(u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s, [](QWidget&) {}));
  meldungen_.erwarte(draussen);
  EXPECT_FALSE(klicke_und(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, [](QWidget&) {}));
  EXPECT_EQ(tabelle(), vorher);
}

TEST_F(WirtAusserhalb, APictureOfTheSameNameElsewhereKeepsAllItsAssignmentsClosed) {
  // The record's own row lies below the root; that of another record does not.
  sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
      u"SELECT 'WP-0900', Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, '..\\draussen', 7 FROM Bild_Zuordnungen "
      u"WHERE Key1 = 'TH-0100'"_s);
  setze(u"Artikel"_s);
  oeffne_Vorgang();
  klicke_Bild(0);
  meldungen_.erwarte(
      {u"Die Zuordnung von „fremd.jpg“ nennt den Ordner „..\\draussen“, der nicht unter der Bildablage liegt; dort "
       u"wird "
       "nichts geöffnet."_s,
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_FALSE(klicke_und(u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s, [](QWidget&) {}));
}
