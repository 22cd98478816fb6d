#include <gtest/gtest.h>

#include "host/betrieb/befehl/Dialogantwort.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Verbleib = Zuordnungsweg::Verbleib;

Zuordnungsweg::Ergebnis ergebnis(
    int geschrieben, int nicht_geschrieben, int ungewiss, const std::vector<Verbleib>& bilder) {
  Zuordnungsweg::Ergebnis e;
  e.geoeffnet = true;
  e.geaendert = geschrieben;
  e.nicht_geschrieben = nicht_geschrieben;
  e.ungewiss = ungewiss;
  for (const Verbleib verbleib : bilder) e.bilder.push_back({u"a.jpg"_s, verbleib, {}});
  return e;
}

Ausgang ausgang(const Zuordnungsweg::Ergebnis& e) {
  return dialogantwort::aus_Weg(e).ausgang;
}

}  // namespace

TEST(Dialogantwort, TheExitCodeTellsWhatBecameOfTheSave) {
  EXPECT_EQ(ausgang(ergebnis(0, 0, 0, {})), Ausgang::Erledigt);
  EXPECT_EQ(ausgang(ergebnis(2, 0, 0, {Verbleib::Geaendert, Verbleib::Geaendert})), Ausgang::Erledigt);
  EXPECT_EQ(ausgang(ergebnis(1, 1, 0, {Verbleib::Geaendert, Verbleib::Nicht_geschrieben})), Ausgang::Teilweise);
  EXPECT_EQ(ausgang(ergebnis(1, 0, 1, {Verbleib::Geaendert, Verbleib::Ungewiss})), Ausgang::Teilweise);
  EXPECT_EQ(ausgang(ergebnis(0, 1, 0, {Verbleib::Nicht_geschrieben})), Ausgang::Datenbank);
  EXPECT_EQ(ausgang(ergebnis(0, 0, 1, {Verbleib::Ungewiss})), Ausgang::Datenbank);
  EXPECT_EQ(ausgang(ergebnis(0, 1, 0, {Verbleib::Nicht_kopiert})), Ausgang::Datei);
  EXPECT_EQ(ausgang(ergebnis(0, 1, 0, {Verbleib::Nicht_gespeichert})), Ausgang::Teilweise);
}

TEST(Dialogantwort, ASaveThatNobodyCheckedAndADialogThatFailedAreNoSuccess) {
  Zuordnungsweg::Ergebnis ungeprueft = ergebnis(1, 0, 0, {Verbleib::Neu});
  ungeprueft.geprueft = false;
  EXPECT_EQ(ausgang(ungeprueft), Ausgang::Teilweise);
  Zuordnungsweg::Ergebnis gescheitert = ergebnis(0, 0, 0, {});
  gescheitert.dialog_gescheitert = true;
  EXPECT_EQ(ausgang(gescheitert), Ausgang::Teilweise);
}

TEST(Dialogantwort, EveryFateHasAWordOfItsOwn) {
  QStringList worte;
  for (int i = 0; i <= static_cast<int>(Verbleib::Ungewiss); ++i)
    worte.append(dialogantwort::wort(static_cast<Verbleib>(i)));
  EXPECT_EQ(worte,
      (QStringList{u"neu"_s, u"geaendert"_s, u"entfernt"_s, u"nachgefuehrt"_s, u"unveraendert"_s,
          u"nicht_geschrieben"_s, u"nicht_kopiert"_s, u"nicht_gespeichert"_s, u"ungewiss"_s}));
}
