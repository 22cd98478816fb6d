#include <gtest/gtest.h>

#include "platform/host/Komponenten.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace komponenten;

namespace {

struct Pruefling final : public Komponente {
  explicit Pruefling(int nummer) : Nummer(nummer) {}
  int Nummer;
};

Fabrik fabrik(int nummer) {
  return [nummer] { return std::make_shared<Pruefling>(nummer); };
}

class Komponenten : public ::testing::Test {
 protected:
  void TearDown() override { registriere(Name, {}); }
  static int nummer(const QString& name) {
    const auto objekt = std::dynamic_pointer_cast<Pruefling>(CreateObject(name));
    return objekt ? objekt->Nummer : -1;
  }
  const QString Name = u"Prüfung.clsÄpfel"_s;
};

}  // namespace

TEST_F(Komponenten, ANameThatNobodyRegisteredRaises429) {
  EXPECT_EQ(Fehlernummer_von([&] { CreateObject(Name); }), 429);
}

TEST_F(Komponenten, AMakerThatGivesNothingRaises429) {
  registriere(Name, [] { return std::shared_ptr<Komponente>(); });
  EXPECT_EQ(Fehlernummer_von([&] { CreateObject(Name); }), 429);
}

TEST_F(Komponenten, NamesAreFoundWithoutRegardToCase) {
  registriere(Name, fabrik(7));
  EXPECT_EQ(nummer(u"PRÜFUNG.CLSÄPFEL"_s), 7);
  EXPECT_EQ(nummer(u"prüfung.clsäpfel"_s), 7);
  EXPECT_EQ(Fehlernummer_von([&] { CreateObject(Name + u'x'); }), 429);
}

TEST_F(Komponenten, EveryCallMakesANewObject) {
  registriere(Name, fabrik(1));
  EXPECT_NE(CreateObject(Name), CreateObject(Name));
}

TEST_F(Komponenten, ALaterMakerReplacesTheOneBeforeAndHandsItBack) {
  EXPECT_FALSE(registriere(Name, fabrik(1)));
  const Fabrik vorher = registriere(u"prüfung.CLSäpfel"_s, fabrik(2));
  EXPECT_EQ(nummer(Name), 2);
  ASSERT_TRUE(vorher);
  registriere(Name, vorher);
  EXPECT_EQ(nummer(Name), 1);
}

TEST_F(Komponenten, AnEmptyMakerTakesTheNameBack) {
  registriere(Name, fabrik(1));
  EXPECT_TRUE(registriere(Name, {}));
  EXPECT_EQ(Fehlernummer_von([&] { CreateObject(Name); }), 429);
}
