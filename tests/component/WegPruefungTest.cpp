// The comparison of what was wanted with what the table holds, without any database.
#include <gtest/gtest.h>

#include "component/weg/Pruefung.h"

using namespace Qt::Literals::StringLiterals;
using weg::Befund;
using weg::Stand;
using weg::Wunsch;
using Art = Wunsch::Art;
using Lage = Befund::Lage;

namespace {

Stand stand(const QString& name, int platz = 0, const QString& text = {}, const QString& pfad = u"P"_s) {
  Stand einer;
  einer.satz.Bild_Key1 = u"A"_s;
  einer.satz.Bild_Bildname = name;
  einer.satz.Bild_BildExt = u"jpg"_s;
  einer.satz.Bild_Beschreibung = text;
  einer.satz.Bild_Pfad = pfad;
  einer.platz = platz;
  return einer;
}

std::vector<Lage> lagen(const std::vector<Wunsch>& wuensche, const std::vector<Stand>& gefunden) {
  std::vector<Lage> liste;
  for (const Befund& befund : weg::pruefe(wuensche, gefunden)) liste.push_back(befund.lage);
  return liste;
}

}  // namespace

TEST(Wegpruefung, WhatIsThereAsWantedIsFulfilledAndWhatIsGoneToo) {
  EXPECT_EQ(lagen({{Art::Einfuegen, stand(u"a"_s)}, {Art::Aendern, stand(u"b"_s, 1)}, {Art::Entfernen, stand(u"c"_s)}},
                {stand(u"a"_s), stand(u"b"_s, 1), stand(u"d"_s)}),
      (std::vector<Lage>{Lage::Erfuellt, Lage::Erfuellt, Lage::Erfuellt}));
}

TEST(Wegpruefung, TheIdentityIsComparedAsTheTableDoes) {
  Stand gefunden = stand(u"KESSEL  "_s);
  gefunden.satz.Bild_Key2 = u"-"_s;
  EXPECT_EQ(weg::kennung(stand(u"kessel"_s).satz), weg::kennung(gefunden.satz));
  EXPECT_NE(weg::kennung(stand(u"kessel"_s).satz), weg::kennung(stand(u"kesse"_s).satz));
}

TEST(Wegpruefung, EachColumnThatDiffersIsNamed) {
  Stand anderer = stand(u"A"_s, 2, u"x"_s, u"Q"_s);
  anderer.satz.Bild_Drucken = true;
  const auto befunde = weg::pruefe({{Art::Aendern, stand(u"a"_s)}}, {anderer});
  EXPECT_EQ(befunde[0].lage, Lage::Anders);
  EXPECT_EQ(befunde[0].abweichungen,
      (QStringList{u"Name"_s, u"Ordner"_s, u"Drucktext"_s, u"Druckangaben"_s, u"Reihenfolge"_s}));
}

TEST(Wegpruefung, AMissingRowAndOneThatShouldBeGoneAreFound) {
  EXPECT_EQ(lagen({{Art::Aendern, stand(u"a"_s)}, {Art::Entfernen, stand(u"b"_s)}}, {stand(u"b"_s)}),
      (std::vector<Lage>{Lage::Fehlt, Lage::Steht_noch}));
}

TEST(Wegpruefung, RowsOfOneIdentityAreCountedEachOnce) {
  const std::vector<Wunsch> zwei{{Art::Aendern, stand(u"a"_s, 0)}, {Art::Aendern, stand(u"a"_s, 1)}};
  EXPECT_EQ(lagen(zwei, {stand(u"a"_s, 1), stand(u"a"_s, 0)}), (std::vector<Lage>{Lage::Erfuellt, Lage::Erfuellt}));
  EXPECT_EQ(lagen(zwei, {stand(u"a"_s, 0), stand(u"a"_s, 0)}), (std::vector<Lage>{Lage::Erfuellt, Lage::Anders}));
  EXPECT_EQ(lagen(zwei, {stand(u"a"_s, 1)}), (std::vector<Lage>{Lage::Fehlt, Lage::Erfuellt}));
}

TEST(Wegpruefung, OnlyARowThatThisRunWroteCountsAsDouble) {
  const Stand a = stand(u"a"_s);
  EXPECT_EQ(lagen({{Art::Einfuegen, a}}, {a, a}), std::vector<Lage>{Lage::Doppelt});
  EXPECT_EQ(lagen({{Art::Aendern, a}}, {a, a}), std::vector<Lage>{Lage::Erfuellt}) << "a clone stands twice by design";
  EXPECT_EQ(lagen({{Art::Einfuegen, a}}, {a, a, a}), std::vector<Lage>{Lage::Erfuellt}) << "nobody knows whose";
  EXPECT_EQ(lagen({{Art::Einfuegen, a}}, {a, stand(u"a"_s, 7)}), std::vector<Lage>{Lage::Erfuellt});
  EXPECT_EQ(
      lagen({{Art::Aendern, a}, {Art::Einfuegen, a}}, {a, a, a}), (std::vector<Lage>{Lage::Erfuellt, Lage::Doppelt}));
}
