#include <gtest/gtest.h>

#include <QDateTime>
#include <QImage>
#include <QRegularExpression>

#include "tests/ende/Bestand.h"
#include "tests/ende/Programm.h"
#include "tests/ende/Xsitzung.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"   Beleg AN 24-3005 – Gemeinde Sankt Märgen, Sankt Märgen · Projekt P-24-12"_s;
const QString Ablage = u"bilder/Belege/24-3005/"_s;
const QStringList Gesuchte{u"Baustelle_23"_s, u"Dachrinne_26"_s, u"Küche_28"_s, u"Rohrbruch_24"_s, u"Übergabe_25"_s};

QByteArray latin1(const QString& text) {
  return text.toLatin1();
}

}  // namespace

/// A clerk's morning at the program, one step after the other. After each the whole data folder is compared with what it
/// must hold by then.
class Vormittag : public testing::Test {
 protected:
  void SetUp() override {
    if (const QString grund = x.beginne(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
  }

  void beginne();
  void oeffne_Beleg();
  void suche_Bilder();
  void sortiere();
  void schreibe_Texte();
  void benenne_um();
  void drehe();
  void kreuze_an();
  void speichere();
  void ordne_Artikeln_zu();
  void loesche_eine_Zuordnung();
  void schliesse();

  /// Nothing else is in the data folder than what the test knows of.
  void pruefe(const char* wann) {
    SCOPED_TRACE(wann);
    EXPECT_EQ(unterschied(Bestand::lies(programm.datenordner()), soll), QStringList());
  }
  /// Clicks a picture of the strip and waits until it is the one whose fields show.
  void waehle_Bild(int nummer) {
    programm.klicke(u"Pic_Thumb(%1)"_s.arg(nummer));
    programm.warte("the picture's number", [&](const Anblick& a) {
      return a[u"SSP_Anzahl(1)"_s].text == QString::number(nummer);
    });
  }
  /// The names in the strip's order, read from the fields.
  static bool dialog_zeigt(const Anblick& a, int bilder) {
    return a.name == "frm_BildZuordnung"_L1 && a[u"SSP_Panel(0)"_s].text == Kopf &&
           a.anzahl_sichtbarer(u"Pic_Thumb("_s) == bilder && a[u"SSP_Anzahl(3)"_s].text == QString::number(bilder);
  }
  static bool suche_zeigt(const Anblick& a, int dateien) {
    return a.name == "frm_BilderSuchen"_L1 && a[u"lvwContent"_s].sichtbar &&
           a[u"SSP_Anzahl"_s].text == u"%1 Objekt(e)"_s.arg(dateien);
  }
  QImage bild(const QString& datei) const { return QImage(programm.datenordner() + u'/' + datei); }

  Testordner ordner;
  Xsitzung x;
  Programm programm{x, ordner};
  Bestand soll;
};

void Vormittag::beginne() {
  programm.starte();
  programm.warte("the records", [](const Anblick& a) {
    return a.name == "Hauptfenster"_L1 && a.zeile(u"tree_Vorgaenge"_s, u"AN 24-3005"_s) != nullptr;
  });
  soll = Bestand::lies(programm.datenordner());
  EXPECT_EQ(soll.zuordnungen.size(), 22);
}

void Vormittag::oeffne_Beleg() {
  x.klicke(programm.zeile(u"tree_Vorgaenge"_s, u"AN 24-3005"_s));
  programm.warte("a record without pictures", [](const Anblick& a) {
    return a[u"lbl_Nummer"_s].text == "AN 24-3005"_L1 && a[u"lbl_KeineBilder"_s].sichtbar;
  });
  programm.klicke(u"cmd_Zuordnen"_s);
  programm.warte("the empty dialog", [](const Anblick& a) { return a.name == "frm_BildZuordnung"_L1; });
  pruefe("the dialog is open");
}

void Vormittag::suche_Bilder() {
  programm.klicke(u"SSC_BilderLaden"_s);
  programm.warte("the search", [](const Anblick& a) { return suche_zeigt(a, 0); });
  programm.klicke(u"ImageCombo1"_s);
  x.klicke(programm.zeile(QString(), u"(C:)"_s));
  programm.warte("the folder of the program", [](const Anblick& a) { return a.zeile(u"Dir1"_s, u"heim"_s) != nullptr; });
  x.doppelklicke(programm.zeile(u"Dir1"_s, ordner.pfad().section(u'/', -1)));
  x.doppelklicke(programm.zeile(u"Dir1"_s, u"daten"_s));
  x.doppelklicke(programm.zeile(u"Dir1"_s, u"eingang"_s));
  programm.warte("the pictures that wait", [](const Anblick& a) { return suche_zeigt(a, 8); });
  for (const QString& name : Gesuchte) {
    const QPoint stelle = programm.zeile(u"lvwContent"_s, name + u".jpg"_s);
    if (name == Gesuchte.first())
      x.klicke(stelle);
    else
      x.klicke_dazu(stelle);
    programm.warte("the picture is chosen",
                   [&](const Anblick& a) { return a.zeile(u"lvwContent"_s, name + u".jpg"_s)->gewaehlt; });
  }
  programm.klicke(u"cmd_Uebernehmen"_s);
  programm.warte("five pictures", [](const Anblick& a) { return dialog_zeigt(a, 5); });
  pruefe("the pictures are attached, but not saved");
}

TEST_F(Vormittag, Vom_leeren_Beleg_bis_zur_geloeschten_Zuordnung_steht_nach_jedem_Schritt_genau_das_Richtige_da) {
  beginne();
  oeffne_Beleg();
  suche_Bilder();
}
