#include <gtest/gtest.h>

#include "platform/host/KVOCore.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class StummerCore final : public KVOCore {
 public:
  void FehlerMelden(const QString& /*modul*/, const QString& /*prozedur*/, std::int32_t /*nummer*/,
      const QString& /*beschreibung*/, bool /*mitMeldung*/) override {
    ++Berichte;
  }
  int Berichte = 0;
};

struct StarresFenster final : public Fensterplatz {
  QString Fenstername() const override { return u"frm_Fest"_s; }
  Fensterlage Lage() const override { return {QRect(1, 2, 3, 4), false}; }
  void Lage(const Fensterlage& /*wert*/) override { ++Gesetzt; }
  int Gesetzt = 0;
};

}  // namespace

TEST(KVOCoreTest, WithoutAHostAReportThatIsToBeToldIsOneLineOnStandardError) {
  KVOCore::setze(nullptr);
  ::testing::internal::CaptureStderr();
  KVOCore::aktuell().FehlerMelden(u"frm_A"_s, u"Lade"_s, 53, u"Datei nicht gefunden: %1"_s, true);
  KVOCore::aktuell().FehlerMelden(u"frm_A"_s, u"Lade"_s, 5, u"ungesagt"_s, false);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Fehler 53 in frm_A.Lade: Datei nicht gefunden: %1\n");
}

TEST(KVOCoreTest, AHostsOwnInstanceIsInForceUntilItIsTakenBack) {
  const auto eigener = std::make_shared<StummerCore>();
  const auto vorher = KVOCore::setze(eigener);
  KVOCore::aktuell().FehlerMelden(u"m"_s, u"p"_s, 1, u"b"_s, true);
  EXPECT_EQ(eigener->Berichte, 1);
  EXPECT_EQ(KVOCore::setze(vorher), eigener);
  EXPECT_EQ(&KVOCore::aktuell(), vorher.get());
}

TEST(KVOCoreTest, WithoutWindowsPlacementsAreNeitherStoredNorRestored) {
  StummerCore core;
  StarresFenster fenster;
  core.FensterSpeichern(u"Prüfung"_s, fenster);
  core.FensterWiederherstellen(u"Prüfung"_s, fenster);
  EXPECT_EQ(fenster.Gesetzt, 0);
}
