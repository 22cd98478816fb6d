#include <gtest/gtest.h>

#include "dialogs/assignment/Arbeitstabelle.h"
#include "platform/basic/Fehlerbehandlung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int32_t Keine = -1000;

/// Stored pictures of these names, each with a record.
void fuelle(Arbeitstabelle& tabelle, const QStringList& namen) {
  for (const QString& name : namen) {
    auto satz = std::make_shared<clsBilderSpeicher>();
    satz->Bild_Bildname = name;
    satz->Bild_BildExt = u"jpg"_s;
    satz->Bild_Pfad = u"Belege\\1"_s;
    Arbeitszeile& zeile = tabelle.haenge_an();
    zeile.lies(*satz, u"P:"_s);
    zeile.Spur.satz = std::move(satz);
  }
}

QString namen(const Arbeitstabelle& tabelle) {
  QStringList alle;
  for (const Arbeitszeile& zeile : tabelle) alle.append(zeile.Bildname);
  return alle.join(u' ');
}

/// The number of the failure that a procedure raises, or 0.
template <class Prozedur>
std::int32_t nummer(Prozedur&& prozedur) {
  std::int32_t nummer = 0;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { nummer = f.Nummer(); }, prozedur);
  return nummer;
}

/// The table with no form around it.
class Tabelle : public ::testing::Test {
 protected:
  explicit Tabelle(const QStringList& bilder = {u"a"_s, u"b"_s, u"c"_s}) { fuelle(tabelle, bilder); }
  Arbeitszeile& neue(const QString& name) {
    Arbeitszeile& zeile = tabelle.haenge_an();
    zeile.VollerPfad = u"P:\\Neu\\"_s + name + u".jpg"_s;
    zeile.Bildname = name;
    zeile.BildExt = u"jpg"_s;
    zeile.ZeileGeaendert = zeile.NeuAusSuche = true;
    return zeile;
  }

  Arbeitstabelle tabelle;
};

class LeereTabelle : public Tabelle {
 protected:
  LeereTabelle() : Tabelle({}) {}
};

}  // namespace

// ── Rows ────────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(LeereTabelle, NoRowAndThePlaceholderAreBothNoPicture) {
  EXPECT_EQ(tabelle.LetzteZeile(), -1);
  EXPECT_TRUE(tabelle.KeineBilder());
  tabelle.leere();
  EXPECT_EQ(tabelle.LetzteZeile(), 0);
  EXPECT_TRUE(tabelle.KeineBilder());
  tabelle.haenge_an();
  EXPECT_FALSE(tabelle.KeineBilder());
}

TEST_F(Tabelle, ARowThatIsNotThereReadsAsBlankAndKeepsNothing) {
  for (const std::int32_t i : {-1, 3, Keine}) {
    tabelle.Zeile(i).Bildname = u"x"_s;
    EXPECT_EQ(tabelle.Zeile(i).Bildname, QString()) << i;
  }
  EXPECT_EQ(namen(tabelle), u"a b c"_s);
}

TEST_F(Tabelle, EmptyingLeavesThePlaceholderOnly) {
  tabelle.leere();
  EXPECT_EQ(tabelle.LetzteZeile(), 0);
  EXPECT_TRUE(tabelle.Zeile(0) == Arbeitszeile());
}

TEST_F(LeereTabelle, AFreeRowIsTheBlankOneAtTheEndOrANewOne) {
  tabelle.leere();
  tabelle.freie_Zeile().Pfad = u"P:\\Neu"_s;
  EXPECT_EQ(tabelle.LetzteZeile(), 0);
  tabelle.freie_Zeile().VollerPfad = u" x "_s;
  EXPECT_EQ(tabelle.LetzteZeile(), 1);
  tabelle.freie_Zeile();
  EXPECT_EQ(tabelle.LetzteZeile(), 2);
}

TEST_F(Tabelle, ARowGoesAwayAndOneThatIsNotThereRaisesNine) {
  tabelle.entferne(1);
  EXPECT_EQ(namen(tabelle), u"a c"_s);
  EXPECT_EQ(nummer([&] { tabelle.entferne(2); }), fehlernummer::IndexAusserhalb);
}

// ── Order ───────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Tabelle, AMovedRowTakesItsRecordAlongAndAllRowsAreNumberedAndToBeSaved) {
  const auto satz = tabelle.Zeile(2).Spur.satz;
  tabelle.verschiebe(2, 0);
  EXPECT_EQ(namen(tabelle), u"c a b"_s);
  EXPECT_EQ(tabelle.Zeile(0).Spur.satz, satz);
  for (std::int32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(tabelle.Zeile(i).SortIndex, i);
    EXPECT_TRUE(tabelle.Zeile(i).ist_zu_speichern());
  }
  tabelle.verschiebe(0, 2);
  EXPECT_EQ(namen(tabelle), u"a b c"_s);
}

TEST_F(Tabelle, AMoveFromOrToNowhereRaisesNineAndMovesNothing) {
  for (const auto& [quelle, ziel] : {std::pair{0, 3}, std::pair{3, 0}, std::pair{-1, 1}, std::pair{1, -1}})
    EXPECT_EQ(nummer([&, q = quelle, z = ziel] { tabelle.verschiebe(q, z); }), fehlernummer::IndexAusserhalb);
  EXPECT_EQ(namen(tabelle), u"a b c"_s);
  EXPECT_FALSE(tabelle.Zeile(0).ZeileGeaendert);
}

TEST_F(Tabelle, NumberingMarksNothing) {
  tabelle.nummeriere();
  EXPECT_EQ(tabelle.Zeile(2).SortIndex, 2);
  EXPECT_FALSE(tabelle.Zeile(2).ZeileGeaendert);
}

// ── Names ───────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Tabelle, ANameCollidesInAnyCaseAndWithBlanksAroundIt) {
  EXPECT_TRUE(tabelle.ist_vergeben(u" B "_s, u" JPG"_s, 0));
  EXPECT_FALSE(tabelle.ist_vergeben(u"d"_s, u"jpg"_s, 0));
  EXPECT_FALSE(tabelle.ist_vergeben(u"b"_s, u"gif"_s, 0));
}

TEST_F(Tabelle, TheRowThatIsBeingEditedCollidesOnlyAsTheVeryText) {
  EXPECT_TRUE(tabelle.ist_vergeben(u"b"_s, u"jpg"_s, 1));
  EXPECT_FALSE(tabelle.ist_vergeben(u"B"_s, u"jpg"_s, 1));
  EXPECT_TRUE(tabelle.ist_vergeben(u"B"_s, u"jpg"_s, Keine));
}

TEST_F(Tabelle, TheFirstRowOfANameDecidesWhateverItsExtension) {
  neue(u"A"_s).BildExt = u"gif"_s;
  EXPECT_FALSE(tabelle.ist_vergeben(u"a"_s, u"gif"_s, 1));
  EXPECT_TRUE(tabelle.ist_vergeben(u"a"_s, u"jpg"_s, 1));
}

TEST_F(Tabelle, TheFirstCollisionThatStaysIsFound) {
  EXPECT_EQ(tabelle.erste_Doppelte(), -1);
  tabelle.Zeile(1).NameDoppelt = tabelle.Zeile(2).NameDoppelt = true;
  EXPECT_EQ(tabelle.erste_Doppelte(), 1);
  tabelle.Zeile(1).Entfernen = true;
  EXPECT_EQ(tabelle.erste_Doppelte(), 2);
}

TEST_F(Tabelle, ANameBackAtItsOriginalInAnyCaseTakesTheRenamingBack) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  zeile.OriginalName = u"Haus"_s;
  zeile.NameGeaendert = true;
  EXPECT_FALSE(zeile.nenne(u"Hof"_s));
  EXPECT_EQ(zeile.Bildname, u"Hof"_s);
  EXPECT_TRUE(zeile.NameGeaendert);
  EXPECT_TRUE(zeile.nenne(u" hAUS "_s));
  EXPECT_EQ(zeile.Bildname, u"Haus"_s);
  EXPECT_FALSE(zeile.NameGeaendert);
}

TEST_F(Tabelle, TheFirstRenamedRowIsFoundOrNone) {
  EXPECT_EQ(tabelle.erste_Umbenannte(), 3);
  tabelle.Zeile(1).NameGeaendert = true;
  EXPECT_EQ(tabelle.erste_Umbenannte(), 1);
}

TEST_F(Tabelle, OnlyStoredRowsKeepTheirNameWhenItWasEmptied) {
  for (std::int32_t i = 0; i < 3; ++i) {
    tabelle.Zeile(i).OriginalName = tabelle.Zeile(i).Bildname;
    tabelle.Zeile(i).NameGeaendert = true;
  }
  tabelle.Zeile(0).Bildname = u"  "_s;
  tabelle.Zeile(1).Bildname.clear();
  tabelle.Zeile(1).Gespeichert = false;
  tabelle.Zeile(2).Bildname = u"x"_s;
  tabelle.halte_leere_Namen();
  EXPECT_EQ(namen(tabelle), u"a  x"_s);
  EXPECT_FALSE(tabelle.Zeile(0).NameGeaendert);
  EXPECT_TRUE(tabelle.Zeile(1).NameGeaendert);
  EXPECT_TRUE(tabelle.Zeile(2).NameGeaendert);
}

TEST_F(Tabelle, ARefusedNameGoesBackAndIsRemembered) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  zeile.OriginalName = u"a"_s;
  zeile.Bildname = u" neu "_s;
  zeile.lehne_Namen_ab(u"gesperrt"_s);
  EXPECT_EQ(zeile.Bildname, u"a"_s);
  EXPECT_EQ(zeile.Spur.abgelehnter_Name, u"neu"_s);
  EXPECT_TRUE(zeile.Spur.umbenennung.gescheitert());
  EXPECT_EQ(zeile.Spur.umbenennung.grund, u"gesperrt"_s);
}

TEST_F(Tabelle, ANewNameReachesTheRecordAtOnceAndTheOldOneIsRemembered) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  zeile.Spur.abgelehnter_Name = u"x"_s;
  zeile.merke_Namen(u"neu"_s, u"Belege\\2"_s);
  EXPECT_EQ(zeile.Spur.satz->Bild_Bildname, u"neu"_s);
  EXPECT_EQ(zeile.Spur.satz->Bild_Pfad, u"Belege\\2"_s);
  ASSERT_EQ(zeile.Spur.fruehere.size(), 1U);
  EXPECT_EQ(zeile.Spur.fruehere[0], (Fruehere{u"a"_s, u"Belege\\1"_s}));
  EXPECT_EQ(zeile.Spur.dateiname, u"neu"_s);
  EXPECT_EQ(zeile.Spur.abgelehnter_Name, QString());
  EXPECT_EQ(zeile.Spur.umbenennung.stand, Dateischritt::Stand::Getan);
}

// ── Stamping ────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Tabelle, AStampedNameIsTheFirstThatNoOtherRowHasAndThatIsTaken) {
  tabelle.Zeile(0).Bildname = u"FOTO_S"_s;
  QStringList gefragt;
  const QString name = tabelle.gestempelter_Name(neue(u"foto"_s), u"jpg"_s, u"_S"_s, [&](const QString& n) {
    gefragt.append(n);
    return gefragt.size() == 2;
  });
  EXPECT_EQ(name, u"foto_3_S"_s);
  EXPECT_EQ(gefragt, (QStringList{u"foto_2_S"_s, u"foto_3_S"_s}));
}

TEST_F(Tabelle, AStampedNameSharesNoTextFileWithAnotherRowAndItsOwnRowIsNone) {
  const auto jeder = [](const QString&) { return true; };
  tabelle.Zeile(0).Bildname = u"foto_Sj"_s;
  tabelle.Zeile(0).BildExt = u"pg"_s;
  EXPECT_EQ(tabelle.gestempelter_Name(neue(u"foto"_s), u"jpg"_s, u"_S"_s, jeder), u"foto_2_S"_s);
  EXPECT_EQ(tabelle.gestempelter_Name(neue(u"x"_s), u"jpg"_s, {}, jeder), u"x"_s);
  EXPECT_EQ(tabelle.gestempelter_Name(neue(u"a/b"_s), u"jpg"_s, u"_S"_s, jeder), u"a_b_S"_s);
}

// ── What is to be saved ─────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Tabelle, AChangedRowIsToBeSavedUnlessItIsBlank) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  EXPECT_FALSE(zeile.ist_zu_speichern());
  zeile.ZeileGeaendert = true;
  EXPECT_TRUE(zeile.ist_zu_speichern());
  zeile.VollerPfad = u"  "_s;
  EXPECT_FALSE(zeile.ist_zu_speichern());
}

TEST_F(Tabelle, OnlyStoredPicturesThatStayCountAsRenamed) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  EXPECT_FALSE(zeile.ist_umbenannt());
  zeile.NameGeaendert = true;
  EXPECT_TRUE(zeile.ist_umbenannt());
  EXPECT_FALSE(zeile.ist_umzubenennen()) << "not changed";
  zeile.ZeileGeaendert = true;
  EXPECT_TRUE(zeile.ist_umzubenennen());
  zeile.Gespeichert = false;
  EXPECT_FALSE(zeile.ist_umzubenennen());
  zeile.Gespeichert = zeile.NeuAusSuche = true;
  EXPECT_FALSE(zeile.ist_umbenannt());
  EXPECT_TRUE(zeile.ist_umzubenennen()) << "saved since it was found";
  zeile.NeuAusSuche = false;
  zeile.Entfernen = true;
  EXPECT_FALSE(zeile.ist_umbenannt() || zeile.ist_umzubenennen());
}

TEST_F(Tabelle, ARowAndItsRecordHoldTheSameAndEachEditedValueTellsThemApart) {
  clsBilderSpeicher satz;
  satz.Bild_Bildname = u"a"_s;
  satz.Bild_Beschreibung = u"Text"_s;
  satz.Bild_Drucken = satz.Bild_NeueSeite = true;
  Arbeitszeile gelesene;
  gelesene.lies(satz, u"P:"_s);
  EXPECT_TRUE(gelesene.gleicht(satz));
  const auto anders = [&](auto&& aendere) {
    Arbeitszeile zeile = gelesene;
    aendere(zeile);
    return !zeile.gleicht(satz);
  };
  for (const auto feld : {&Arbeitszeile::Drucken, &Arbeitszeile::DruckGesamteSeite, &Arbeitszeile::NeueSeite,
           &Arbeitszeile::AlsAnhang, &Arbeitszeile::Entfernen})
    EXPECT_TRUE(anders([&](Arbeitszeile& z) { z.*feld = !(z.*feld); }));
  for (const auto feld :
      {&Arbeitszeile::Bildname, &Arbeitszeile::Pfad, &Arbeitszeile::Beschreibung, &Arbeitszeile::BildInfo})
    EXPECT_TRUE(anders([&](Arbeitszeile& z) { z.*feld += u'x'; }));
  EXPECT_FALSE(anders([](Arbeitszeile& z) { z.ZeileGeaendert = true; }));
}

TEST_F(Tabelle, ATextThatIsTooLongIsKeptBesideTheRowUntilTheUserShortensIt) {
  Arbeitszeile& zeile = tabelle.Zeile(0);
  clsBilderSpeicher& satz = *zeile.Spur.satz;
  const QString lang(300, u'n');
  zeile.Beschreibung = lang;
  zeile.uebernimm_in(satz);
  EXPECT_EQ(satz.Bild_Beschreibung, lang.left(250));
  EXPECT_EQ(zeile.Spur.ungekuerzter_Drucktext, lang);
  zeile.Beschreibung = lang.left(250);
  zeile.uebernimm_in(satz);
  EXPECT_EQ(zeile.Spur.ungekuerzter_Drucktext, lang);
  zeile.Beschreibung = u"kurz"_s;
  zeile.uebernimm_in(satz);
  EXPECT_EQ(zeile.Spur.ungekuerzter_Drucktext, QString());
}

TEST_F(Tabelle, TheRecordsComeInTheOrderOfTheStripWithoutNewPictures) {
  const auto* a = tabelle.Zeile(0).Spur.satz.get();
  const auto* c = tabelle.Zeile(2).Spur.satz.get();
  tabelle.entferne(1);
  neue(u"x"_s);
  tabelle.verschiebe(1, 0);
  EXPECT_EQ(tabelle.Folge(), (std::vector<const clsBilderSpeicher*>{c, a}));
  EXPECT_EQ(tabelle.Spuren().size(), 3U);
  tabelle.leere();
  EXPECT_TRUE(tabelle.Spuren().empty()) << "the placeholder is no picture";
}

TEST_F(Tabelle, UnsavedPicturesGoBackToTheirPlacesAmongTheRowsThatStay) {
  neue(u"weg"_s).Entfernen = true;
  neue(u"x"_s);
  neue(u"y"_s);
  tabelle.haenge_an();
  tabelle.verschiebe(4, 1);
  const auto behalten = tabelle.ungespeicherte();
  ASSERT_EQ(behalten.size(), 2U);
  Arbeitstabelle gelesene;
  fuelle(gelesene, {u"a"_s, u"b"_s, u"c"_s});
  gelesene.stelle_zurueck(behalten);
  EXPECT_EQ(namen(gelesene), u"a x b c y"_s);
  EXPECT_TRUE(gelesene.Zeile(1) == tabelle.Zeile(1));
}

TEST_F(Tabelle, UnsavedPicturesTakeThePlaceholdersPlaceAndNoneIsLostWhereRecordsAreGone) {
  neue(u"x"_s);
  neue(u"y"_s);
  const auto behalten = tabelle.ungespeicherte();
  tabelle.leere();
  tabelle.stelle_zurueck({});
  EXPECT_EQ(tabelle.LetzteZeile(), 0);
  tabelle.stelle_zurueck(behalten);
  EXPECT_EQ(namen(tabelle), u"x y"_s);
}
