// What a host hears of the pictures and their assignments.
#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "store/Bildereignis.h"
#include "store/Sammlungszugriff.h"
#include "tests/store/Datenbanktest.h"
#include "tests/support/Bildwurzel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Tat = Bildereignis::Tat;

class Ereignisse : public Datenbanktest {
 protected:
  Ereignisse() {
    bildereignis::setze([this](const Bildereignis& e) { gehoert.append(e); });
  }
  ~Ereignisse() override { bildereignis::setze({}); }
  void hefte_an(const QString& name) {
    ASSERT_TRUE(store.FKT_NeuesBild(u"AB"_s, u"1"_s, {}, {}, name, u"jpg"_s, u"BEL"_s, {}));
    store.Bild_Pfad(u"Belege\\1"_s);
    store.Bild_Beschreibung(u"geheimer Text"_s);
  }

  QList<Bildereignis> gehoert;
};

}  // namespace

TEST_F(Ereignisse, EachRowThatIsWrittenAnewOrRemovedIsToldOnceAndAChangedOneIsNot) {
  hefte_an(u"a"_s);
  hefte_an(u"b"_s);
  ASSERT_TRUE(store.FKT_SpeichernBilder());
  ASSERT_EQ(gehoert.size(), 2);
  EXPECT_EQ(gehoert[0].tat, Tat::Zuordnen);
  EXPECT_TRUE(gehoert[0].gelungen);
  EXPECT_EQ(gehoert[0].Bild, u"Belege\\1\\a.jpg"_s);
  EXPECT_EQ(gehoert[1].Bild, u"Belege\\1\\b.jpg"_s);
  EXPECT_EQ(gehoert[1].Key1 + gehoert[1].Key2 + gehoert[1].Key3 + gehoert[1].Typ1, u"AB1-BEL"_s);
  gehoert.clear();
  store.AktInd(0);
  store.Bild_Changeflag(true);
  store.AktInd(1);
  store.Bild_Delete(true);
  ASSERT_TRUE(store.FKT_SpeichernBilder());
  ASSERT_EQ(gehoert.size(), 1);
  EXPECT_EQ(gehoert[0].tat, Tat::Entfernen);
  EXPECT_EQ(gehoert[0].Bild, u"Belege\\1\\b.jpg"_s);
}

TEST_F(Ereignisse, WhatFailedIsToldAsFailed) {
  hefte_an(u"o'neil"_s);
  store.FKT_SpeichernBilder();
  EXPECT_EQ(berichte_von(u"CmdSql"_s), 1);
  ASSERT_EQ(gehoert.size(), 1);
  EXPECT_FALSE(gehoert[0].gelungen);
}

TEST_F(Ereignisse, ARenameIsToldWithBothNames) {
  const Bildwurzel wurzel;
  wurzel.schreibe(u"Belege/1/a.jpg"_s, "a");
  const QString ort = u"P:"_s;
  Sammlungszugriff::benenne_um(store, ort, u"Belege\\1"_s, u"a"_s, u"jpg"_s, u"neu"_s);
  Sammlungszugriff::benenne_um(store, ort, u"Belege\\1"_s, u"fehlt"_s, u"jpg"_s, u"x"_s);
  ASSERT_EQ(gehoert.size(), 2);
  EXPECT_EQ(gehoert[0].tat, Tat::Umbenennen);
  EXPECT_TRUE(gehoert[0].gelungen);
  EXPECT_EQ(gehoert[0].Bild + u'>' + gehoert[0].neues_Bild, u"Belege\\1\\a.jpg>Belege\\1\\neu.jpg"_s);
  EXPECT_FALSE(gehoert[1].gelungen);
}

TEST_F(Ereignisse, AListenerThatFailsHindersNothingAndOneInPeaceHearsNothing) {
  bildereignis::setze([](const Bildereignis&) { throw std::runtime_error("no disk"); });
  hefte_an(u"a"_s);
  EXPECT_TRUE(store.FKT_SpeichernBilder());
  EXPECT_FALSE(store.Bild_Changeflag());
  bildereignis::setze([this](const Bildereignis& e) { gehoert.append(e); });
  {
    const bildereignis::Ruhe ruhe;
    hefte_an(u"b"_s);
    EXPECT_TRUE(store.FKT_SpeichernBilder());
  }
  EXPECT_TRUE(gehoert.isEmpty());
  hefte_an(u"c"_s);
  EXPECT_TRUE(store.FKT_SpeichernBilder());
  EXPECT_EQ(gehoert.size(), 1);
}
