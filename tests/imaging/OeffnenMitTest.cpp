// Open With as the dialogs call it.

#include <gtest/gtest.h>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/shell/Programme.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Chooses what the test says, or fails.
class Wahl final : public shell::Programmwahl {
 public:
  QStringList waehle(const QString& datei, const QList<shell::Programm>&, QString&) override {
    ++gefragt;
    programm_vorher = m_OpenWithProgramm;
    if (scheitert) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
    return programm.isEmpty() ? QStringList() : QStringList{programm, datei};
  }
  QString programm;
  bool scheitert = false;
  int gefragt = 0;
  QString programm_vorher = u"nie gefragt"_s;
};

class OeffnenMit : public ::testing::Test {
 protected:
  OeffnenMit() : vorher_(shell::setze(wahl)) { wurzel.schreibe(u"a.jpg"_s, "x"); }
  ~OeffnenMit() override { shell::setze(vorher_); }
  QString oeffne(QString datei) { return Fkt_OpenWith(datei); }

  const std::shared_ptr<Wahl> wahl = std::make_shared<Wahl>();
  const Bildwurzel wurzel;
  MeldungsDoppel meldungen;

 private:
  std::shared_ptr<shell::Programmwahl> vorher_;
};

TEST_F(OeffnenMit, ANameOfBlanksIsReportedAndNobodyAsked) {
  for (const QString& name : {QString(), u"   "_s}) {
    m_OpenWithProgramm = u"altes"_s;
    meldungen.erwarte({u"Bitte wählen Sie zuerst ein Bild aus!"_s, {}});
    EXPECT_EQ(oeffne(name), QString());
    EXPECT_EQ(m_OpenWithProgramm, QString());
  }
  EXPECT_EQ(wahl->gefragt, 0);
}

TEST_F(OeffnenMit, TheNameOfTheStartedProgramComesBackAndIsRemembered) {
  wahl->programm = u"/bin/true"_s;
  EXPECT_EQ(oeffne(u"P:\\a.jpg"_s), u"/bin/true"_s);
  EXPECT_EQ(m_OpenWithProgramm, u"/bin/true"_s);
}

TEST_F(OeffnenMit, ASecondCallNeverGivesTheOldName) {
  wahl->programm = u"/bin/true"_s;
  oeffne(u"P:\\a.jpg"_s);
  wahl->programm.clear();
  EXPECT_EQ(oeffne(u"P:\\a.jpg"_s), QString()) << "the user cancelled";
  EXPECT_EQ(wahl->programm_vorher, QString()) << "emptied before anybody is asked";
  EXPECT_EQ(m_OpenWithProgramm, QString());
  m_OpenWithProgramm = u"altes"_s;
  wahl->scheitert = true;
  EXPECT_EQ(Fehlernummer_von([&] { oeffne(u"P:\\a.jpg"_s); }), 70);
  EXPECT_EQ(m_OpenWithProgramm, QString());
}

TEST_F(OeffnenMit, AMissingFileIsToldAndStartsNothing) {
  wahl->programm = u"/bin/true"_s;
  meldungen.erwarte({u"Die Datei „P:\\weg.jpg“ gibt es nicht."_s, u"Achtung"_s, oberflaeche::Symbol::Ausrufezeichen});
  EXPECT_EQ(oeffne(u"P:\\weg.jpg"_s), QString());
  EXPECT_EQ(wahl->gefragt, 0);
}

}  // namespace
