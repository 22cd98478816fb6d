#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/XArrayDBObject.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using D = XArrayDBObject::Dimension;

TEST(XArrayDBObject, BoundsAreInclusiveAndCellsStartEmpty) {
  XArrayDBObject tabelle;
  tabelle.ReDim(0, 2, 1, 4);
  EXPECT_EQ(tabelle.Count(D::Zeilen), 3);
  EXPECT_EQ(tabelle.Count(D::Spalten), 4);
  EXPECT_EQ(tabelle.UpperBound(D::Zeilen), 2);
  EXPECT_EQ(tabelle.LowerBound(D::Spalten), 1);
  EXPECT_EQ(tabelle.Value(2, 4), Variant(Empty{}));
  tabelle.Value(2, 4, u"x"_s);
  EXPECT_EQ(tabelle.Value(2, 4), Variant(u"x"_s));
}

TEST(XArrayDBObject, AnIndexOutsideRaises9) {
  XArrayDBObject tabelle;
  EXPECT_THROW(tabelle.Value(0, 0), Laufzeitfehler);
  tabelle.ReDim(0, 0, 0, 1);
  EXPECT_THROW(tabelle.Value(1, 0), Laufzeitfehler);
  EXPECT_THROW(tabelle.Value(-1, 0), Laufzeitfehler);
  EXPECT_THROW(tabelle.Value(0, 2), Laufzeitfehler);
  EXPECT_THROW(tabelle.Value(0, 2, true), Laufzeitfehler);
  EXPECT_THROW(tabelle.ReDim(0, -2, 0, 0), Laufzeitfehler);
}

TEST(XArrayDBObject, RowsAreAppendedInsertedAndDeleted) {
  XArrayDBObject tabelle;
  tabelle.ReDim(0, 0, 0, 0);
  tabelle.Value(0, 0, std::int32_t{1});
  tabelle.AppendRows();
  tabelle.Value(1, 0, std::int32_t{3});
  tabelle.InsertRows(1);
  EXPECT_EQ(tabelle.Value(1, 0), Variant(Empty{}));
  EXPECT_EQ(tabelle.Value(2, 0), Variant(std::int32_t{3}));
  tabelle.DeleteRows(0);
  EXPECT_EQ(tabelle.Value(1, 0), Variant(std::int32_t{3}));
  tabelle.DeleteRows(1);
  tabelle.DeleteRows(0);
  EXPECT_EQ(tabelle.Count(D::Zeilen), 0);
  EXPECT_EQ(tabelle.UpperBound(D::Zeilen), -1);
  EXPECT_THROW(tabelle.DeleteRows(0), Laufzeitfehler);
}

TEST(XArrayDBObject, RedimEmptiesEveryCell) {
  XArrayDBObject tabelle;
  tabelle.ReDim(0, 1, 0, 1);
  tabelle.Value(0, 0, true);
  tabelle.ReDim(0, 1, 0, 1);
  EXPECT_EQ(tabelle.Value(0, 0), Variant(Empty{}));
}

TEST(XArrayDBObject, ACopyAndItsSourceChangeEachForItself) {
  XArrayDBObject tabelle;
  tabelle.ReDim(0, 2, 0, 1);
  for (std::int32_t i = 0; i < 3; ++i) {
    tabelle.Value(i, 0, true);
    tabelle.Value(i, 1, i);
  }
  const XArrayDBObject kopie = tabelle;
  XArrayDBObject andere = kopie;
  tabelle.Value(1, 0, false);
  tabelle.Value(1, 1, u"x"_s);
  andere.DeleteRows(0);
  EXPECT_EQ(kopie.Value(1, 0), Variant(true));
  EXPECT_EQ(kopie.Value(1, 1), Variant(std::int32_t{1}));
  EXPECT_EQ(andere.Value(0, 1), Variant(std::int32_t{1}));
  EXPECT_EQ(tabelle.Value(0, 1), Variant(std::int32_t{0}));
  EXPECT_EQ(tabelle.Value(1, 1), Variant(u"x"_s));
  EXPECT_EQ(tabelle.Value(0, 0), Variant(true));
  EXPECT_EQ(tabelle.Value(1, 0), Variant(false));
  EXPECT_EQ(tabelle.Value(2, 0), Variant(true));
}

TEST(XArrayDBObject, ValuesThatOnlyLookAlikeStayApart) {
  XArrayDBObject tabelle;
  tabelle.ReDim(0, 2, 0, 2);
  tabelle.Value(0, 0, 0.0);
  tabelle.Value(1, 0, -0.0);
  tabelle.Value(0, 1, QString());
  tabelle.Value(1, 1, u""_s);
  const Objekt a = std::make_shared<int>(1);
  tabelle.Value(0, 2, a);
  tabelle.Value(1, 2, Objekt(std::make_shared<int>(1)));
  EXPECT_TRUE(std::signbit(std::get<double>(tabelle.Value(1, 0))));
  EXPECT_FALSE(std::signbit(std::get<double>(tabelle.Value(0, 0))));
  EXPECT_TRUE(std::get<QString>(tabelle.Value(0, 1)).isNull());
  EXPECT_FALSE(std::get<QString>(tabelle.Value(1, 1)).isNull());
  EXPECT_NE(std::get<Objekt>(tabelle.Value(1, 2)), a);
}

namespace {

/// A table as plain as can be, beside which the other one must tell the same.
class Vergleichstabelle {
 public:
  static constexpr std::int32_t Spalten = 2;

  Vergleichstabelle() { tabelle_.ReDim(0, 0, 0, Spalten - 1); }

  void tu(int was, std::int32_t zeile, std::int32_t spalte, std::int32_t wert) {
    const auto zeilen = static_cast<std::int32_t>(soll_.size());
    const auto stelle = soll_.begin() + (zeile % (zeilen + 1));
    if (was == 0) {
      tabelle_.InsertRows(zeile % (zeilen + 1));
      soll_.insert(stelle, std::vector<Variant>(Spalten));
    } else if (was == 1 && stelle != soll_.end()) {
      tabelle_.DeleteRows(zeile % (zeilen + 1));
      soll_.erase(stelle);
    } else if (was == 2) {
      tabelle_.AppendRows(zeile % 3);
      soll_.resize(soll_.size() + static_cast<std::size_t>(zeile % 3), std::vector<Variant>(Spalten));
    } else if (was == 3) {
      kopie_ = tabelle_;
      kopierte_ = soll_;
    } else if (stelle != soll_.end()) {
      tabelle_.Value(zeile % (zeilen + 1), spalte, wert);
      (*stelle)[static_cast<std::size_t>(spalte)] = wert;
    }
  }
  void pruefe() const {
    vergleiche(tabelle_, soll_);
    vergleiche(kopie_, kopierte_);
  }

 private:
  using Zeilen = std::vector<std::vector<Variant>>;
  static void vergleiche(const XArrayDBObject& ist, const Zeilen& soll) {
    RC_ASSERT(ist.Count(D::Zeilen) == static_cast<std::int32_t>(soll.size()));
    for (std::size_t z = 0; z < soll.size(); ++z)
      for (std::int32_t s = 0; s < Spalten; ++s)
        RC_ASSERT(ist.Value(static_cast<std::int32_t>(z), s) == soll[z][static_cast<std::size_t>(s)]);
  }

  XArrayDBObject tabelle_;
  XArrayDBObject kopie_;
  Zeilen soll_{std::vector<Variant>(Spalten)};
  Zeilen kopierte_;
};

}  // namespace

RC_GTEST_PROP(XArrayDBObject, HoldsWhatWasSetAndSoDoesACopy, ()) {
  Vergleichstabelle tabelle;
  // Filled from the top, the cells of a column that are the same are kept as one.
  const auto gleiche = *rc::gen::inRange(0, 12);
  for (std::int32_t i = 0; i < gleiche; ++i) {
    tabelle.tu(2, 1, 0, 0);
    tabelle.tu(4, i, 0, 1);
    tabelle.tu(4, i, 1, i / 6);
  }
  const auto schritte = *rc::gen::inRange(1, 60);
  for (int i = 0; i < schritte; ++i) {
    const int was = *rc::gen::inRange(0, 30);
    tabelle.tu(
        was, *rc::gen::inRange(0, 40), *rc::gen::inRange(0, Vergleichstabelle::Spalten), *rc::gen::inRange(0, 2));
  }
  tabelle.pruefe();
}
