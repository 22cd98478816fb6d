#include <gtest/gtest.h>

#include <type_traits>

#include "component/Registrierung.h"
#include "dialogs/assignment/clsDialoge.h"
#include "platform/host/Komponenten.h"
#include "tests/component/Prozess.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;
using namespace registrierung;
using komponenten::erzeuge;

namespace {

const QString Sammlung = u"KVOBildZuordnung.clsBildZuordnungen"_s;
const QString Speicher = u"KVOBildZuordnung.clsBilderSpeicher"_s;
const QString Dialoge = u"KVOBildZuordnung.clsDialoge"_s;

class Registrierung : public ::testing::Test {
 protected:
  ~Registrierung() override {
    for (const QString& name : {Sammlung, Speicher, Dialoge}) komponenten::registriere(name, {});
  }
};

struct Eigenes final : public komponenten::Komponente {};

}  // namespace

TEST_F(Registrierung, AHostCreatesTheClassesByNameAndType) {
  ASSERT_EQ(DllRegisterServer(), S_OK);
  EXPECT_EQ(erzeuge<clsBilderSpeicher>(Speicher)->Bild_Grafik_Ursprung, clsBilderSpeicher().Bild_Grafik_Ursprung);
  EXPECT_TRUE(erzeuge<clsDialoge>(Dialoge));
  const auto sammlung = erzeuge<clsBildZuordnungen>(Sammlung);
  EXPECT_TRUE(sammlung->FKT_Neu());
  EXPECT_EQ(sammlung->AnzahlPos(), 0);
}

TEST_F(Registrierung, NamesCountWithoutRegardToCase) {
  DllRegisterServer();
  EXPECT_TRUE(erzeuge<clsDialoge>(u"kvobildzuordnung.CLSDIALOGE"_s));
}

TEST_F(Registrierung, EveryCallMakesAnObjectOfItsOwn) {
  DllRegisterServer();
  const auto eines = erzeuge<clsBilderSpeicher>(Speicher);
  eines->Bild_Key1 = u"AB"_s;
  EXPECT_EQ(erzeuge<clsBilderSpeicher>(Speicher)->Bild_Key1, QString());
}

TEST_F(Registrierung, AWrongTypeRaises13) {
  DllRegisterServer();
  EXPECT_EQ(Fehlernummer_von([] { erzeuge<clsDialoge>(Sammlung); }), 13);
  EXPECT_EQ(Fehlernummer_von([] { erzeuge<clsBildZuordnungen>(Speicher); }), 13);
  EXPECT_EQ(Fehlernummer_von([] { erzeuge<KVFileFunctions>(Dialoge); }), 13);
}

TEST_F(Registrierung, WithoutTheEntryAndAfterItWasTakenBackTheNamesRaise429) {
  for (const QString& name : {Sammlung, Speicher, Dialoge}) {
    EXPECT_EQ(Fehlernummer_von([&] { komponenten::CreateObject(name); }), 429) << name.toStdString();
    DllRegisterServer();
    EXPECT_EQ(Fehlernummer_von([&] { komponenten::CreateObject(name); }), 0) << name.toStdString();
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(Fehlernummer_von([&] { komponenten::CreateObject(name); }), 429) << name.toStdString();
  }
  EXPECT_EQ(Fehlernummer_von([] { erzeuge<clsDialoge>(u"KVOBildZuordnung.clsUnbekannt"_s); }), 429);
}

TEST_F(Registrierung, BothAreHarmlessWhenRepeated) {
  EXPECT_EQ(DllUnregisterServer(), S_OK);
  EXPECT_EQ(DllRegisterServer(), S_OK);
  EXPECT_EQ(DllRegisterServer(), S_OK);
  EXPECT_TRUE(erzeuge<clsDialoge>(Dialoge));
  EXPECT_EQ(DllUnregisterServer(), S_OK);
  EXPECT_EQ(DllUnregisterServer(), S_OK);
}

TEST_F(Registrierung, TakingBackLeavesWhatAHostPutThereAndAllOtherNames) {
  const QString anderer = u"KVOBildZuordnung.clsEigenes"_s;
  DllRegisterServer();
  for (const QString& name : {Dialoge, anderer})
    komponenten::registriere(name, [] { return std::make_shared<Eigenes>(); });
  EXPECT_EQ(DllUnregisterServer(), S_OK);
  EXPECT_TRUE(erzeuge<Eigenes>(Dialoge));
  EXPECT_TRUE(erzeuge<Eigenes>(anderer));
  EXPECT_EQ(Fehlernummer_von([] { komponenten::CreateObject(Sammlung); }), 429);
  komponenten::registriere(anderer, {});
}

TEST_F(Registrierung, ObjectsOutliveTheEntry) {
  DllRegisterServer();
  const auto sammlung = erzeuge<clsBildZuordnungen>(Sammlung);
  DllUnregisterServer();
  EXPECT_TRUE(sammlung->FKT_Neu());
}

TEST_F(Registrierung, TheRecordStaysAPlainValue) {
  static_assert(std::is_copy_assignable_v<clsBilderSpeicher> && !std::is_polymorphic_v<clsBilderSpeicher>);
  DllRegisterServer();
  clsBilderSpeicher kopie = *erzeuge<clsBilderSpeicher>(Speicher);
  kopie.Bild_Key1 = u"AB"_s;
  EXPECT_EQ(erzeuge<clsBilderSpeicher>(Speicher)->Bild_Key1, QString());
}

TEST_F(Registrierung, ThereIsNoClassByIdentifier) {
  int irgendwas = 0;
  void* objekt = &irgendwas;
  EXPECT_EQ(DllGetClassObject(&irgendwas, &irgendwas, &objekt), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(objekt, nullptr);
  EXPECT_EQ(DllGetClassObject(&irgendwas, &irgendwas, nullptr), E_POINTER);
}

TEST_F(Registrierung, TheLibraryNeverGoes) {
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  DllRegisterServer();
  DllUnregisterServer();
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
}

TEST(Probe, AProgramThatDoesNotLinkTheLibraryLoadsItAndCallsTheFourEntries) {
  const Prozess lauf = starte(QStringLiteral(PROBE), {QStringLiteral(BIBLIOTHEK)});
  EXPECT_EQ(lauf.code, 0) << ende(lauf);
  EXPECT_EQ(lauf.ausgabe,
      u"DllRegisterServer 00000000\n"
      "DllRegisterServer 00000000\n"
      "DllGetClassObject 80040111\n"
      "ppv null\n"
      "DllGetClassObject without ppv 80004003\n"
      "DllCanUnloadNow 00000001\n"
      "DllUnregisterServer 00000000\n"
      "DllUnregisterServer 00000000\n"
      "closed, still there\n"_s);
}
