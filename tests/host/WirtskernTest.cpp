#include <gtest/gtest.h>

#include "host/fenster/Wirtskern.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class Platz final : public Fensterplatz {
 public:
  QString Fenstername() const override { return u"frm_Probe"_s; }
  Fensterlage Lage() const override { return lage; }
  void Lage(const Fensterlage& wert) override { lage = wert; }
  Fensterlage lage;
};

}  // namespace

TEST(Wirtskern, Ein_Bericht_mit_Meldung_kommt_in_ein_Fenster) {
  MeldungsDoppel meldungen;
  meldungen.erwarte(
      {u"Kein Platz\r\n\r\nFehler 61 in clsX.Fkt_Y"_s, u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  Wirtskern kern;
  kern.FehlerMelden(u"clsX"_s, u"Fkt_Y"_s, 61, u"Kein Platz"_s, true);
  kern.FehlerMelden(u"clsX"_s, u"Fkt_Y"_s, 61, u"Kein Platz"_s, false);
}

TEST(Wirtskern, Ein_Fenster_kommt_dahin_wo_es_zuletzt_stand) {
  const Testordner ordner;
  Platz platz;
  platz.lage = {QRect(40, 50, 600, 400), true};
  Wirtskern(ordner.pfad(u"fenster.ini"_s)).FensterSpeichern(u"KVZunft_Gesamt 2000"_s, platz);
  Platz neuer;
  Wirtskern kern(ordner.pfad(u"fenster.ini"_s));
  kern.FensterWiederherstellen(u"anderes"_s, neuer);
  EXPECT_EQ(neuer.lage, Fensterlage());
  kern.FensterWiederherstellen(u"KVZunft_Gesamt 2000"_s, neuer);
  EXPECT_EQ(neuer.lage, platz.lage);
}

TEST(Wirtskern, Ein_Platz_auf_einem_Bildschirm_den_es_nicht_mehr_gibt_zaehlt_nicht) {
  const Testordner ordner;
  Platz platz;
  platz.lage = {QRect(-5000, -5000, 600, 400), false};
  Wirtskern kern(ordner.pfad(u"fenster.ini"_s));
  kern.FensterSpeichern(u"a"_s, platz);
  Platz neuer;
  kern.FensterWiederherstellen(u"a"_s, neuer);
  EXPECT_EQ(neuer.lage, Fensterlage());
}
