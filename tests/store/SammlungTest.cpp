#include <gtest/gtest.h>

#include "store/clsBildZuordnungen.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void neues_Bild(clsBildZuordnungen& sammlung, const QString& name, const QString& key3 = {}) {
  ASSERT_TRUE(sammlung.FKT_NeuesBild(u"R"_s, u"4711"_s, key3, {}, name, u"jpg"_s, u"Bel"_s, {}));
}

class Sammlung : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(sammlung.FKT_Neu()); }
  CoreDoppel core;
  clsBildZuordnungen sammlung;
};

}  // namespace

TEST(SammlungOhneInit, ConstructionGivesAnEmptyRecordAndNoTable) {
  clsBildZuordnungen sammlung;
  ASSERT_NE(sammlung.AktBildObj, nullptr);
  EXPECT_EQ(sammlung.Bild_Bildname(), QString());
  EXPECT_FALSE(sammlung.ohneMeldungen);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.AnzahlPos(); }), 91);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Changeflag(); }), 91);
  sammlung.Bild_Changeflag(true);
}

TEST(SammlungOhneInit, AFailureIsReportedUnlessTheHostSilencedTheStore) {
  CoreDoppel core;
  clsBildZuordnungen sammlung;
  EXPECT_FALSE(sammlung.FKT_NeuesBild({}, {}, {}, {}, u"a"_s, u"jpg"_s, {}, {}));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"clsBildZuordnungen"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"FKT_NeuesBild"_s);
  EXPECT_EQ(berichte[0].Nummer, 91);
  EXPECT_TRUE(berichte[0].MitMeldung);
  sammlung.ohneMeldungen = true;
  EXPECT_FALSE(sammlung.FKT_NeuesBild({}, {}, {}, {}, u"a"_s, u"jpg"_s, {}, {}));
  EXPECT_TRUE(core.hole().isEmpty());
}

TEST_F(Sammlung, AnEmptyCollectionTakesItsFirstPictureIntoTheBlankRow) {
  EXPECT_EQ(sammlung.AnzahlPos(), 0);
  EXPECT_EQ(sammlung.AktInd(), -1);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
  neues_Bild(sammlung, u"a"_s);
  EXPECT_EQ(sammlung.AnzahlPos(), 1);
  EXPECT_EQ(sammlung.AktInd(), 0);
}

TEST_F(Sammlung, ASecondPictureGetsARowOfItsOwn) {
  neues_Bild(sammlung, u"a"_s);
  neues_Bild(sammlung, u"b"_s);
  EXPECT_EQ(sammlung.AnzahlPos(), 2);
  EXPECT_EQ(sammlung.AktInd(), 1);
  EXPECT_EQ(sammlung.Bild_Bildname(), u"b"_s);
  sammlung.AktInd(0);
  EXPECT_EQ(sammlung.Bild_Bildname(), u"a"_s);
}

TEST_F(Sammlung, ANewPictureIsNewChangedAndPrints) {
  ASSERT_TRUE(sammlung.FKT_NeuesBild(u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"n"_s, u"e"_s, u"t"_s, u"u"_s));
  EXPECT_TRUE(sammlung.Bild_Changeflag());
  EXPECT_TRUE(sammlung.Bild_Neu());
  EXPECT_FALSE(sammlung.Bild_Delete());
  EXPECT_TRUE(sammlung.Bild_Drucken());
  EXPECT_FALSE(sammlung.Bild_NeueSeite());
  EXPECT_FALSE(sammlung.Bild_AlsAnhang());
  EXPECT_FALSE(sammlung.Bild_DruckGesamteSeite());
  EXPECT_EQ(sammlung.Bild_Grafik_Ursprung(), u"-"_s);
  EXPECT_EQ(sammlung.Bild_GrafikAnbNr(), QString());
  EXPECT_EQ(sammlung.Bild_Pfad(), QString());
  EXPECT_EQ(sammlung.Bild_Beschreibung(), QString());
  EXPECT_EQ(sammlung.Bild_Key1() + sammlung.Bild_Key2() + sammlung.Bild_Key3() + sammlung.Bild_Key4(), u"1234"_s);
  EXPECT_EQ(
      sammlung.Bild_Bildname() + sammlung.Bild_BildExt() + sammlung.Bild_Typ1() + sammlung.Bild_Typ2(), u"netu"_s);
}

TEST_F(Sammlung, WithoutACurrentRecordReadingGivesEmptyValuesAndFlagsRaise) {
  EXPECT_EQ(sammlung.Bild_Bildname(), QString());
  EXPECT_FALSE(sammlung.Bild_Drucken());
  EXPECT_EQ(sammlung.Bild_SortIndex(), 0);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Changeflag(); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Neu(); }), 9);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Delete(); }), 9);
  sammlung.Bild_Changeflag(true);
  sammlung.Bild_Neu(true);
  sammlung.Bild_Delete(true);
  sammlung.AktInd(0);
  EXPECT_FALSE(sammlung.Bild_Changeflag());
}

TEST_F(Sammlung, SettingAFieldWithoutACurrentRecordRaises) {
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Key1(u"x"_s); }), 91);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Drucken(true); }), 91);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_SortIndex(3); }), 91);
}

TEST_F(Sammlung, EveryForwardedFieldReachesItsOwnFieldAndNoFlag) {
  neues_Bild(sammlung, u"a"_s);
  sammlung.Bild_Changeflag(false);
  using Setzen = void (clsBildZuordnungen::*)(const QString&);
  using Holen = QString (clsBildZuordnungen::*)() const;
  using K = clsBildZuordnungen;
  const struct {
    Setzen setzen;
    Holen holen;
    QString clsBilderSpeicher::*feld;
  } felder[] = {
      {&K::Bild_Key1, &K::Bild_Key1, &clsBilderSpeicher::Bild_Key1},
      {&K::Bild_Key2, &K::Bild_Key2, &clsBilderSpeicher::Bild_Key2},
      {&K::Bild_Key3, &K::Bild_Key3, &clsBilderSpeicher::Bild_Key3},
      {&K::Bild_Key4, &K::Bild_Key4, &clsBilderSpeicher::Bild_Key4},
      {&K::Bild_Bildname, &K::Bild_Bildname, &clsBilderSpeicher::Bild_Bildname},
      {&K::Bild_BildExt, &K::Bild_BildExt, &clsBilderSpeicher::Bild_BildExt},
      {&K::Bild_Typ1, &K::Bild_Typ1, &clsBilderSpeicher::Bild_Typ1},
      {&K::Bild_Typ2, &K::Bild_Typ2, &clsBilderSpeicher::Bild_Typ2},
      {&K::Bild_Pfad, &K::Bild_Pfad, &clsBilderSpeicher::Bild_Pfad},
      {&K::Bild_Beschreibung, &K::Bild_Beschreibung, &clsBilderSpeicher::Bild_Beschreibung},
      {&K::Bild_GrafikAnbNr, &K::Bild_GrafikAnbNr, &clsBilderSpeicher::Bild_GrafikAnbNr},
      {&K::Bild_Grafik_Ursprung, &K::Bild_Grafik_Ursprung, &clsBilderSpeicher::Bild_Grafik_Ursprung},
  };
  int nummer = 0;
  for (const auto& feld : felder) (sammlung.*feld.setzen)(QString::number(++nummer));
  nummer = 0;
  for (const auto& feld : felder) {
    const QString wert = QString::number(++nummer);
    EXPECT_EQ((sammlung.*feld.holen)(), wert);
    EXPECT_EQ((*sammlung.AktBildObj).*feld.feld, wert);
  }
  sammlung.Bild_NeueSeite(true);
  EXPECT_TRUE(sammlung.AktBildObj->Bild_NeueSeite && sammlung.Bild_NeueSeite());
  sammlung.Bild_AlsAnhang(true);
  EXPECT_TRUE(sammlung.AktBildObj->Bild_AlsAnhang && sammlung.Bild_AlsAnhang());
  sammlung.Bild_DruckGesamteSeite(true);
  EXPECT_TRUE(sammlung.AktBildObj->Bild_DruckGesamteSeite && sammlung.Bild_DruckGesamteSeite());
  sammlung.Bild_Drucken(false);
  EXPECT_FALSE(sammlung.AktBildObj->Bild_Drucken || sammlung.Bild_Drucken());
  EXPECT_FALSE(sammlung.Bild_Changeflag());
}

TEST_F(Sammlung, ASortIndexOutside16BitsOverflows) {
  neues_Bild(sammlung, u"a"_s);
  sammlung.Bild_SortIndex(32767);
  EXPECT_EQ(sammlung.Bild_SortIndex(), 32767);
  sammlung.Bild_SortIndex(-32768);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_SortIndex(32768); }), 6);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_SortIndex(-32769); }), 6);
  EXPECT_EQ(sammlung.Bild_SortIndex(), -32768);
}

TEST_F(Sammlung, ACursorOutsideTheTableIsKeptWithoutARecord) {
  neues_Bild(sammlung, u"a"_s);
  neues_Bild(sammlung, u"b"_s);
  sammlung.AktInd(99);
  EXPECT_EQ(sammlung.AktInd(), 99);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.Bild_Changeflag(); }), 9);
  sammlung.AktInd(-7);
  EXPECT_EQ(sammlung.AktInd(), -7);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
}

TEST_F(Sammlung, TheCurrentRecordIsTheRowsOwnObject) {
  neues_Bild(sammlung, u"a"_s);
  const auto satz = sammlung.AktBildObj;
  satz->Bild_Beschreibung = u"Text"_s;
  sammlung.AktInd(-1);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
  sammlung.AktInd(0);
  EXPECT_EQ(sammlung.AktBildObj, satz);
  EXPECT_EQ(sammlung.Bild_Beschreibung(), u"Text"_s);
}

TEST_F(Sammlung, EmptyingDropsAllRows) {
  neues_Bild(sammlung, u"a"_s);
  neues_Bild(sammlung, u"b"_s);
  EXPECT_TRUE(sammlung.FKT_Neu());
  EXPECT_EQ(sammlung.AnzahlPos(), 0);
  EXPECT_EQ(sammlung.AktInd(), -1);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
}

TEST(Satz, ACloneTakesTheWorksOrdersNumberAndLeavesFlagsTextAndOrderOut) {
  clsBilderSpeicher alt;
  alt.Bild_Key1 = u"R"_s;
  alt.Bild_Key3 = u"9"_s;
  alt.Bild_Bildname = u"foto"_s;
  alt.Bild_Druckkennzeichen = u"1111"_s;
  alt.Bild_SortIndex = 5;
  alt.Bild_AlsAnhang = true;
  alt.Bild_Grafik_Ursprung = u"x"_s;
  clsBilderSpeicher neu;
  EXPECT_TRUE(neu.Fkt_Clone(alt, 7));
  EXPECT_EQ(neu.Bild_Key1, u"R"_s);
  EXPECT_EQ(neu.Bild_Key3, u"7"_s);
  EXPECT_EQ(neu.Bild_Bildname, u"foto"_s);
  EXPECT_EQ(neu.Bild_Grafik_Ursprung, u"x"_s);
  EXPECT_TRUE(neu.Bild_AlsAnhang);
  EXPECT_EQ(neu.Bild_Druckkennzeichen, QString());
  EXPECT_EQ(neu.Bild_SortIndex, 0);
  EXPECT_TRUE(neu.Fkt_Clone(alt, -1));
  EXPECT_EQ(neu.Bild_Key3, u"9"_s);
  EXPECT_TRUE(neu.Fkt_Clone(alt, -5));
  EXPECT_EQ(neu.Bild_Key3, u"-5"_s);
}

TEST(Satz, ACloneTakesEachOfItsSixteenFieldsFromTheSameFieldOfTheOther) {
  using K = clsBilderSpeicher;
  const QList<QString K::*> texte{&K::Bild_Key1, &K::Bild_Key2, &K::Bild_Key3, &K::Bild_Key4, &K::Bild_Bildname,
      &K::Bild_BildExt, &K::Bild_Typ1, &K::Bild_Typ2, &K::Bild_Pfad, &K::Bild_Beschreibung, &K::Bild_GrafikAnbNr,
      &K::Bild_Grafik_Ursprung};
  const QList<bool K::*> flags{&K::Bild_NeueSeite, &K::Bild_AlsAnhang, &K::Bild_DruckGesamteSeite, &K::Bild_Drucken};
  ASSERT_EQ(texte.size() + flags.size(), 16);
  for (const auto gesetzt : flags) {
    K alt;
    for (qsizetype i = 0; i < texte.size(); ++i) alt.*texte[i] = u"Wert %1"_s.arg(i);
    alt.*gesetzt = true;
    K neu;
    // What the copy held before must go, whatever the other holds.
    for (const auto text : texte) neu.*text = u"vorher"_s;
    for (const auto flag : flags) neu.*flag = !(alt.*flag);
    EXPECT_TRUE(neu.Fkt_Clone(alt, -1));
    for (qsizetype i = 0; i < texte.size(); ++i) EXPECT_EQ(neu.*texte[i], u"Wert %1"_s.arg(i));
    for (const auto flag : flags) EXPECT_EQ(neu.*flag, flag == gesetzt);
  }
  // Empty values are taken as well, and a number for the third key changes no other field.
  K neu;
  for (const auto text : texte) neu.*text = u"vorher"_s;
  EXPECT_TRUE(neu.Fkt_Clone(K(), 32767));
  for (const auto text : texte) EXPECT_EQ(neu.*text, text == &K::Bild_Key3 ? u"32767"_s : QString());
}

TEST(Satz, ACloneKeepsItsOwnPrintFlagsTextAndItsOwnPlace) {
  clsBilderSpeicher alt;
  alt.Bild_Druckkennzeichen = u"1111"_s;
  alt.Bild_SortIndex = 5;
  clsBilderSpeicher neu;
  neu.Bild_Druckkennzeichen = u"0101"_s;
  neu.Bild_SortIndex = 8;
  EXPECT_TRUE(neu.Fkt_Clone(alt, -1));
  EXPECT_EQ(neu.Bild_Druckkennzeichen, u"0101"_s);
  EXPECT_EQ(neu.Bild_SortIndex, 8);
}

TEST_F(Sammlung, ACloneHasAllRowsNewAndChangedAndItsResultIsFalse) {
  clsBildZuordnungen alt;
  ASSERT_TRUE(alt.FKT_Neu());
  neues_Bild(alt, u"a"_s, u"1"_s);
  alt.Bild_Changeflag(false);
  alt.Bild_Neu(false);
  neues_Bild(alt, u"b"_s, u"1"_s);
  alt.Bild_Delete(true);
  alt.Bild_SortIndex(3);
  alt.AktInd(0);
  neues_Bild(sammlung, u"weg"_s);

  EXPECT_FALSE(sammlung.Fkt_Clone(alt, 7, true));

  ASSERT_EQ(sammlung.AnzahlPos(), 2);
  EXPECT_EQ(sammlung.AktInd(), 0);
  EXPECT_EQ(alt.AktInd(), 1);
  for (int i = 0; i < 2; ++i) {
    sammlung.AktInd(i);
    alt.AktInd(i);
    EXPECT_TRUE(sammlung.Bild_Changeflag());
    EXPECT_TRUE(sammlung.Bild_Neu());
    EXPECT_FALSE(sammlung.Bild_Delete());
    EXPECT_EQ(sammlung.Bild_Bildname(), alt.Bild_Bildname());
    EXPECT_EQ(sammlung.Bild_Key3(), u"7"_s);
    EXPECT_EQ(sammlung.Bild_SortIndex(), 0);
    EXPECT_NE(sammlung.AktBildObj, alt.AktBildObj);
  }
}

TEST_F(Sammlung, CloningAnEmptyCollectionLeavesAnEmptyOne) {
  clsBildZuordnungen alt;
  ASSERT_TRUE(alt.FKT_Neu());
  neues_Bild(sammlung, u"weg"_s);
  EXPECT_FALSE(sammlung.Fkt_Clone(alt, -1));
  EXPECT_EQ(sammlung.AnzahlPos(), 0);
  EXPECT_EQ(sammlung.AktInd(), -1);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
}

TEST_F(Sammlung, CloningACollectionWithoutATableIsPassedOver) {
  clsBildZuordnungen alt;
  EXPECT_FALSE(sammlung.Fkt_Clone(alt, -1));
  EXPECT_EQ(sammlung.AnzahlPos(), 0);
  EXPECT_EQ(sammlung.AktBildObj, nullptr);
}

TEST_F(Sammlung, PrintFlagsAreSetByPositionAndNothingOutsideIt) {
  QString feld = u"    "_s;
  sammlung.SetzeString_TrueFalse(true, feld, 1);
  sammlung.SetzeString_TrueFalse(false, feld, 4);
  EXPECT_EQ(feld, u"1  0"_s);
  sammlung.SetzeString_TrueFalse(true, feld, 0);
  sammlung.SetzeString_TrueFalse(true, feld, 5);
  sammlung.SetzeString_TrueFalse(true, feld, -2147483647);
  EXPECT_EQ(feld, u"1  0"_s);
}

TEST_F(Sammlung, StatementPiecesAreBuiltAsTheHostKnowsThem) {
  EXPECT_EQ(sammlung.UPrN(QString()), u" = NULL,"_s);
  EXPECT_EQ(sammlung.UPrN(u"A"_s), u" = 'A',"_s);
  EXPECT_EQ(sammlung.UPrN(u"O'B"_s), u" = 'O'B',"_s);
  EXPECT_EQ(sammlung.UPSTR(u"1,5"_s), u" = '1.5',"_s);
  EXPECT_EQ(sammlung.UPSTR(1.5), u" = '1.5',"_s);
  EXPECT_EQ(sammlung.UPSTR(Empty{}), u" = '',"_s);
  EXPECT_EQ(Fehlernummer_von([&] { sammlung.UPSTR(Null{}); }), 94);
  EXPECT_EQ(sammlung.UChkB(true), u" = 1,"_s);
  EXPECT_EQ(sammlung.UChkB(std::int32_t{-1}), u" = 1,"_s);
  EXPECT_EQ(sammlung.UChkB(std::int32_t{1}), u" = 0,"_s);
  EXPECT_EQ(sammlung.UChkB(false), u" = 0,"_s);
  EXPECT_EQ(sammlung.UChkB(Null{}), u" = 0,"_s);
}
