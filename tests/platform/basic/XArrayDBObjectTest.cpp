#include <gtest/gtest.h>

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
