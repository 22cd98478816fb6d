#include <gtest/gtest.h>

#include <functional>

#include "tests/ende/Bestand.h"
#include "tests/ende/Programm.h"
#include "tests/ende/Xsitzung.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

/// Dialogs that are opened and left again, over a record with pictures.
class Schliessen : public testing::Test {
 protected:
  void SetUp() override {
    if (const QString grund = Programm::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    if (const QString grund = x.beginne(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    programm.starte();
    programm.warte("the records", [](const Anblick& a) {
      return a.name == "Hauptfenster"_L1 && a.zeile(u"tree_Vorgaenge"_s, u"AB 24-1001"_s) != nullptr;
    });
    vorher = programm.bestand();
    x.klicke(programm.zeile(u"tree_Vorgaenge"_s, u"AB 24-1001"_s));
    programm.warte("its pictures", [](const Anblick& a) { return a[u"lbl_Anzahl"_s].text == "4 Bilder"_L1; });
  }

  /// Chooses the record's first picture and clicks a button of the window in front.
  void oeffne(const QString& knopf, const QString& fenster, bool mit_Bild) {
    if (mit_Bild) x.klicke(programm.zelle(u"lst_Bilder"_s, 0, 0).center());
    programm.klicke(knopf);
    warte_auf(fenster);
  }
  Anblick warte_auf(const QString& fenster) {
    const std::string worauf = fenster.toStdString();
    return programm.warte(
        worauf.c_str(), [&](const Anblick& a) { return a.name == fenster && x.hat_Tasten(a.kennung); });
  }
  void pruefe(const QString& wann) {
    EXPECT_EQ(unterschied(programm.bestand(), vorher), QStringList()) << wann.toStdString();
  }
  void beende() {
    x.taste(u"Control+q"_s);
    EXPECT_EQ(programm.warte_auf_Ende(), 0);
    EXPECT_EQ(programm.fehlerausgabe(), QString());
  }

  Testordner ordner;
  Xsitzung x;
  Programm programm{x, ordner};
  Bestand vorher;
};

TEST_F(Schliessen, EveryDialogIsLeftByEscapeAndByItsFrameWithoutAnythingChanging) {
  const QList<std::pair<QString, QString>> dialoge{{u"cmd_Zuordnen"_s, u"frm_BildZuordnung"_s},
      {u"cmd_AlleZuordnungen"_s, u"frm_AlleZuordnungen"_s}, {u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s},
      {u"cmd_Exif"_s, u"frm_BildInfo"_s}, {u"cmd_Suchen"_s, u"frm_BilderSuchen"_s},
      {u"cmd_Aufraeumen"_s, u"Meldung"_s}};
  for (const auto& [knopf, fenster] : dialoge) {
    oeffne(knopf, fenster, true);
    x.taste(u"Escape"_s);
    warte_auf(u"Hauptfenster"_s);
    pruefe(fenster + u", Escape"_s);
    oeffne(knopf, fenster, true);
    x.schliesse_am_Rahmen(warte_auf(fenster).kennung);
    warte_auf(u"Hauptfenster"_s);
    pruefe(fenster + u", frame"_s);
  }
  beende();
}

TEST_F(Schliessen, ADialogAboveADialogGivesTheLowerOneFree) {
  oeffne(u"cmd_WeitereZuordnungen"_s, u"frm_AnzeigeZuordnung"_s, false);
  const QRect zelle = programm.zelle(u"TDBG_WeitereZuordnungen"_s, 0, 0);
  for (const bool am_Rahmen : {true, false}) {
    x.klicke({zelle.right() - zelle.height() / 2, zelle.center().y()});
    const Anblick auskunft = warte_auf(u"Artikelauskunft"_s);
    if (am_Rahmen)
      x.schliesse_am_Rahmen(auskunft.kennung);
    else
      x.taste(u"Escape"_s);
    warte_auf(u"frm_AnzeigeZuordnung"_s);
  }
  x.schliesse_am_Rahmen(warte_auf(u"frm_AnzeigeZuordnung"_s).kennung);
  warte_auf(u"Hauptfenster"_s);
  oeffne(u"cmd_Zuordnen"_s, u"frm_BildZuordnung"_s, false);
  oeffne(u"SSC_BilderLaden"_s, u"frm_BilderSuchen"_s, false);
  x.schliesse_am_Rahmen(warte_auf(u"frm_BilderSuchen"_s).kennung);
  warte_auf(u"frm_BildZuordnung"_s);
  x.taste(u"Escape"_s);
  warte_auf(u"Hauptfenster"_s);
  pruefe(u"all are closed"_s);
  beende();
}
