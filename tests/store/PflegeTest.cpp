#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "tests/store/Datenbanktest.h"

using namespace Qt::Literals::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// A picture tree on drive P: beside the table. Each clearing is listed first, and what goes must be what was listed.
class Aufraeumen : public Datenbanktest {
 protected:
  void TearDown() override {
    // A temporary folder can't remove names that it can't decode.
    std::error_code egal;
    for (const auto& e : fs::directory_iterator(ort(), egal)) fs::remove_all(e, egal);
    Datenbanktest::TearDown();
  }
  fs::path ort(const char* name = "") const { return fs::path(wurzel.pfad().toStdString()) / name; }
  void lege(std::initializer_list<const char*> dateien) const {
    for (const char* name : dateien) wurzel.schreibe(QString::fromUtf8(name), "x");
  }
  void ordne_zu(const QString& ordner, const QString& name, const QString& ext) {
    fuege_ein(u"'A','-','-','-','%1','%2','Bel','-','%3','T','0001',NULL,'-',0"_s.arg(name, ext, ordner));
  }

  /// Everything below the root, folders with a closing "/", by its bytes.
  QStringList baum() const {
    QStringList alle;
    if (!fs::exists(ort())) return alle;
    for (const auto& e : fs::recursive_directory_iterator(ort()))
      alle.append(QString::fromLatin1(QByteArray::fromStdString(e.path().lexically_relative(ort()).string())) +
          (fs::is_directory(e.symlink_status()) ? u"/"_s : QString()));
    alle.sort();
    return alle;
  }
  /// What a listing names, in the same form.
  static QStringList genannt(const Aufraeumliste& liste) {
    QStringList alle;
    for (const Aufraeumposten& p : liste.Posten)
      if (p.Pfad != "P:"_L1)
        alle.append(
            QString::fromLatin1(p.Pfad.mid(3).toUtf8()).replace(u'\\', u'/') + (p.ist_Ordner() ? u"/"_s : QString()));
    alle.sort();
    return alle;
  }

  /// Lists, then clears; gives what is left. `dazwischen` puts the connection into the same state before each of the
  /// two.
  QStringList raeume_auf(
      const QString& ab = u"P:"_s, const Variant& ergebnis = true, const std::function<void()>& davor = {}) {
    const QStringList vorher = baum();
    if (davor) davor();
    liste = store.FKT_Liste_Bild_Ohne_Zuordnung(ab, u"P:"_s);
    EXPECT_EQ(liste.Ergebnis, ergebnis);
    EXPECT_EQ(baum(), vorher) << "a listing deletes nothing";
    fragen_der_Liste = gelesen();
    if (davor) davor();
    EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(ab, u"P:"_s), ergebnis);
    EXPECT_EQ(gelesen(), fragen_der_Liste) << "the same questions";
    const QStringList nachher = baum();
    QStringList weg = vorher;
    weg.removeIf([&](const QString& name) { return nachher.contains(name); });
    EXPECT_EQ(genannt(liste), weg) << "the listing and the clearing agree";
    return nachher;
  }
  Aufraeumposten::Grund grund(const QString& pfad) const {
    const auto treffer =
        std::find_if(liste.Posten.begin(), liste.Posten.end(), [&](const auto& p) { return p.Pfad == pfad; });
    if (treffer == liste.Posten.end()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
    return treffer->Warum;
  }

  using Grund = Aufraeumposten::Grund;
  const Bildwurzel wurzel;
  Aufraeumliste liste;
  QStringList fragen_der_Liste;
};

}  // namespace

TEST_F(Aufraeumen, AssignedPicturesAndTheirTextsStayTheOthersGo) {
  lege({"Allg/a.jpg", "Allg/b.jpg", "Allg/ajpg.txt", "Allg/bjpg.txt"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/a.jpg"_s, u"Allg/ajpg.txt"_s}));
  EXPECT_EQ(fragen_der_Liste,
      (QStringList{u"select Top 1 Key1 from Bild_Zuordnungen where Bildname = 'a' and BildExt = 'jpg' and "
                   "Bildpfad = 'Allg'"_s,
          u"select Top 1 Key1 from Bild_Zuordnungen where Bildname = 'b' and BildExt = 'jpg' and "
          "Bildpfad = 'Allg'"_s}));
  EXPECT_EQ(grund(u"P:\\Allg\\b.jpg"_s), Grund::OhneZuordnung);
  EXPECT_EQ(grund(u"P:\\Allg\\bjpg.txt"_s), Grund::TextOhneBild);
}

TEST_F(Aufraeumen, APictureStaysWhicheverRecordPointsToIt) {
  lege({"Allg/a.jpg"});
  fuege_ein(u"'X','9','8','7','A','JPG','Irgendwas','2','allg','T','0001',NULL,'-',0"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/a.jpg"_s})) << "the table compares without case";
}

TEST_F(Aufraeumen, ARowOfAnotherFolderKeepsNothing) {
  lege({"Allg/a.jpg", "Andere/x.jpg"});
  ordne_zu(u"Andere"_s, u"a"_s, u"jpg"_s);
  ordne_zu(u"Andere"_s, u"x"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Andere/"_s, u"Andere/x.jpg"_s}));
}

TEST_F(Aufraeumen, PicturesDirectlyInTheRootGoEvenWhenTheyAreAssigned) {
  lege({"a.jpg", "Allg/b.jpg"});
  ordne_zu({}, u"a"_s, u"jpg"_s);
  ordne_zu(u"Allg"_s, u"b"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/b.jpg"_s}));
  EXPECT_TRUE(fragen_der_Liste.last().endsWith(u"and Bildpfad = 'P:'"_s));
}

TEST_F(Aufraeumen, AHostThatStartsOneLevelLowerKeepsTheRootsPictures) {
  lege({"a.jpg", "Allg/b.jpg", "Allg/Tief/c.jpg", "Andere/d.jpg"});
  ordne_zu(u"Allg\\Tief"_s, u"c"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(u"P:\\Allg"_s),
      (QStringList{u"Allg/"_s, u"Allg/Tief/"_s, u"Allg/Tief/c.jpg"_s, u"Andere/"_s, u"Andere/d.jpg"_s, u"a.jpg"_s}));
  EXPECT_TRUE(fragen_der_Liste.first().endsWith(u"and Bildpfad = 'Allg\\Tief'"_s));
}

// The folder is handed on as it was given, and no row has one that ends so. Hosts must cut it off.
TEST_F(Aufraeumen, AClosingBackslashAtTheStartMakesEveryPictureBelowAFreeOne) {
  lege({"Allg/a.jpg", "Allg/Tief/b.jpg"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  ordne_zu(u"Allg\\Tief"_s, u"b"_s, u"jpg"_s);
  const Aufraeumliste mit = store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:\\Allg\\"_s, u"P:"_s);
  EXPECT_EQ(gelesen(),
      (QStringList{u"select Top 1 Key1 from Bild_Zuordnungen where Bildname = 'b' and BildExt = 'jpg' "
                   "and Bildpfad = 'Allg\\\\Tief'"_s,
          u"select Top 1 Key1 from Bild_Zuordnungen where Bildname = 'a' and BildExt = 'jpg' "
          "and Bildpfad = 'Allg\\'"_s}));
  qsizetype bilder = 0;
  for (const Aufraeumposten& p : mit.Posten) bilder += p.ist_Ordner() ? 0 : 1;
  EXPECT_EQ(bilder, 2);
  EXPECT_TRUE(store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:\\Allg"_s, u"P:"_s).Posten.empty());
}

TEST_F(Aufraeumen, ATextWithoutItsPictureGoes) {
  lege({"Allg/bleibt", "Allg/cjpg.txt", "Allg/notes.txt"});
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, ATextIsReadAsNameAndThreeCharactersOfExtension) {
  lege({"Allg/no.tes", "Allg/notes.txt", "Allg/foto.jpeg", "Allg/fotojpeg.txt"});
  ordne_zu(u"Allg"_s, u"no"_s, u"tes"_s);
  ordne_zu(u"Allg"_s, u"foto"_s, u"jpeg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/foto.jpeg"_s, u"Allg/no.tes"_s, u"Allg/notes.txt"_s}));
}

TEST_F(Aufraeumen, ATextTooShortToNameAPictureGoes) {
  lege({"Allg/bleibt", "Allg/a.txt", "Allg/ab.txt", "Allg/.txt", "Allg/.jpg", "Allg/jpg.txt"});
  ordne_zu(u"Allg"_s, {}, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/.jpg"_s, u"Allg/bleibt"_s, u"Allg/jpg.txt"_s}))
      << "seven characters are enough";
}

TEST_F(Aufraeumen, TextsAreKnownInAnyCaseAndNeverAskedForInTheTable) {
  lege({"Allg/bleibt", "Allg/ajpg.TXT", "Allg/b.Txt"});
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
  EXPECT_TRUE(fragen_der_Liste.isEmpty());
}

TEST_F(Aufraeumen, AFileWithoutADotStaysAndSoDoesItsFolder) {
  lege({"Allg/Tief/bleibt", "Allg/Tief/a.jpg"});
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/Tief/"_s, u"Allg/Tief/bleibt"_s}));
}

TEST_F(Aufraeumen, ANameWithMoreDotsIsLookedForByItsFirstTwoPieces) {
  lege({"Allg/a.jpg.bak", "Allg/plan.v2.jpg"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  ordne_zu(u"Allg"_s, u"plan.v2"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/a.jpg.bak"_s}));
}

TEST_F(Aufraeumen, EmptiedFoldersGoFromTheBottomUpAndTheRootWithThem) {
  lege({"A/B/C/a.jpg", "A/D/b.jpg"});
  fs::create_directories(ort("A/leer"));
  EXPECT_EQ(raeume_auf(), QStringList());
  EXPECT_FALSE(fs::exists(ort()));
  ASSERT_FALSE(liste.Posten.empty());
  EXPECT_EQ(liste.Posten.back().Pfad, u"P:"_s);
  EXPECT_TRUE(liste.Posten.back().ist_Ordner());
}

TEST_F(Aufraeumen, TheListIsInTheOrderOfTheClearing) {
  lege({"b/z.jpg", "B2/y.jpg", "a/x.jpg", "a/Ajpg.txt", "a/Y.jpg", "a/k"});
  raeume_auf();
  QStringList folge;
  for (const Aufraeumposten& p : liste.Posten) folge.append(p.Pfad);
  EXPECT_EQ(folge,
      (QStringList{u"P:\\a\\x.jpg"_s, u"P:\\a\\Y.jpg"_s, u"P:\\a\\Ajpg.txt"_s, u"P:\\b\\z.jpg"_s, u"P:\\b"_s,
          u"P:\\B2\\y.jpg"_s, u"P:\\B2"_s}));
}

TEST_F(Aufraeumen, ReadOnlyFilesGoToo) {
  lege({"Allg/bleibt", "Allg/a.jpg", "Allg/cjpg.txt"});
  ASSERT_EQ(::chmod(ort("Allg/a.jpg").c_str(), 0444), 0);
  ASSERT_EQ(::chmod(ort("Allg/cjpg.txt").c_str(), 0444), 0);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, ATextWhosePictureGoesInTheSameRunGoesInWhateverCaseItIsWritten) {
  lege({"Allg/bleibt", "Allg/Foto.JPG", "Allg/fotojpg.txt", "Allg/zwei.jpg", "Allg/ZWEI.JPG", "Allg/Zweijpg.txt"});
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, ATextFindsItsPictureInAnotherCase) {
  lege({"Allg/Foto.JPG", "Allg/fotojpg.txt"});
  ordne_zu(u"Allg"_s, u"foto"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/Foto.JPG"_s, u"Allg/fotojpg.txt"_s}));
}

TEST_F(Aufraeumen, ATextCanBeTheMissingPictureOfAnother) {
  lege({"Allg/bleibt", "Allg/xyz.txt", "Allg/xyztxt.txt"});
  // "xyz.txt" is read as the text of ".xyz" and goes; "xyztxt.txt" belongs to it and follows.
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, ALinkedFolderIsNotEnteredAndCountsAsContent) {
  lege({"Allg/a.jpg"});
  const Testordner anderswo;
  anderswo.schreibe(u"fremd.jpg"_s, "x");
  fs::create_directory_symlink(anderswo.pfad().toStdString(), ort("Allg/Link"));
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/Link"_s}));
  EXPECT_TRUE(anderswo.vorhanden(u"fremd.jpg"_s));
}

TEST_F(Aufraeumen, ALinkedFileGoesAsALinkOnly) {
  lege({"Allg/bleibt"});
  const Testordner anderswo;
  fs::create_symlink(anderswo.schreibe(u"fremd.jpg"_s, "x").toStdString(), ort("Allg/a.jpg"));
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
  EXPECT_TRUE(anderswo.vorhanden(u"fremd.jpg"_s));
}

TEST_F(Aufraeumen, NamesWithABackslashOrUndecodableBytesStayAndCountAsContent) {
  lege({"Eins/a\\b.jpg", "Eins/gut.jpg", "Zwei/gut.jpg"});
  std::ofstream(ort("Zwei/\xFF.jpg")) << "x";
  for (const char* name : {"Drei/b\\x", "Vier/\xFF"}) fs::create_directories(ort(name));
  EXPECT_EQ(raeume_auf(),
      (QStringList{u"Drei/"_s, u"Drei/b\\x/"_s, u"Eins/"_s, u"Eins/a\\b.jpg"_s, u"Vier/"_s, u"Vier/\u00FF/"_s,
          u"Zwei/"_s, u"Zwei/\u00FF.jpg"_s}));
}

TEST_F(Aufraeumen, WhatIsNoFileStaysAndCountsAsContent) {
  lege({"Allg/a.jpg"});
  ASSERT_EQ(::mkfifo(ort("Allg/rohr.jpg").c_str(), 0600), 0);
  fs::create_symlink("nirgendwo", ort("Allg/ins_Leere.jpg"));
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/ins_Leere.jpg"_s, u"Allg/rohr.jpg"_s}));
}

TEST_F(Aufraeumen, AFailingQuestionLeavesTheAnswerOfTheFileBeforeInForce) {
  lege({"Eins/a.jpg", "Eins/b'.jpg", "Zwei/a.jpg", "Zwei/b'.jpg", "Zwei/bleibt"});
  ordne_zu(u"Eins"_s, u"a"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Eins/"_s, u"Eins/a.jpg"_s, u"Eins/b'.jpg"_s, u"Zwei/"_s, u"Zwei/bleibt"_s}));
  EXPECT_EQ(grund(u"P:\\Zwei\\b'.jpg"_s), Grund::AbfrageGescheitert);
}

TEST_F(Aufraeumen, AFailingQuestionWithNoAnswerBeforeItDeletesTheFile) {
  lege({"Allg/'.jpg", "Allg/a.jpg"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/a.jpg"_s}));
}

TEST_F(Aufraeumen, TheAnswerStartsEmptyInEachFolder) {
  lege({"Eins/a.jpg", "Zwei/'.jpg", "Zwei/b.jpg"});
  ordne_zu(u"Eins"_s, u"a"_s, u"jpg"_s);
  ordne_zu(u"Zwei"_s, u"b"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Eins/"_s, u"Eins/a.jpg"_s, u"Zwei/"_s, u"Zwei/b.jpg"_s}));
}

TEST_F(Aufraeumen, FilesComeInTheOrderOfTheirNamesSoThatTheAnswerBeforeIsTheSameOne) {
  lege({"Allg/B'.jpg", "Allg/a.jpg", "Allg/c.jpg"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/B'.jpg"_s, u"Allg/a.jpg"_s}));
}

TEST_F(Aufraeumen, ASingleFailureOfTheDatabaseIsTakenAsTheAnswerBefore) {
  lege({"Allg/a.jpg", "Allg/b.jpg", "Allg/c.jpg"});
  for (const QString& name : {u"a"_s, u"c"_s}) ordne_zu(u"Allg"_s, name, u"jpg"_s);
  EXPECT_EQ(raeume_auf(u"P:"_s, true, [&] { db.mitschrift().scheitere_am(2); }),
      (QStringList{u"Allg/"_s, u"Allg/a.jpg"_s, u"Allg/b.jpg"_s, u"Allg/c.jpg"_s}));
  EXPECT_EQ(
      raeume_auf(u"P:"_s, true, [&] { db.mitschrift().scheitere_am(1); }), (QStringList{u"Allg/"_s, u"Allg/c.jpg"_s}));
}

TEST_F(Aufraeumen, WithABrokenConnectionEveryPictureGoes) {
  lege({"Allg/a.jpg", "Allg/ajpg.txt", "Allg/bleibt"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  db.mitschrift().scheitere_immer();
  EXPECT_EQ(raeume_auf(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, WithoutAConnectionEveryPictureGoes) {
  lege({"Allg/a.jpg", "Allg/bleibt"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  clsBildZuordnungen ohne_Init;
  EXPECT_EQ(genannt(ohne_Init.FKT_Liste_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s)), QStringList{u"Allg/a.jpg"_s});
  EXPECT_EQ(ohne_Init.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s), Variant(true));
  EXPECT_EQ(baum(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

TEST_F(Aufraeumen, AMissingFolderGivesAnEmptyResultAndNoMessage) {
  lege({"Allg/a.jpg"});
  EXPECT_EQ(raeume_auf(u"P:\\fehlt"_s, Empty{}).size(), 2);
  EXPECT_EQ(raeume_auf(u"Q:\\Allg"_s, Empty{}).size(), 2);
}

TEST_F(Aufraeumen, TheCollectionAndItsCursorStayAsTheyAre) {
  lege({"Allg/a.jpg", "Allg/b.jpg"});
  ordne_zu(u"Allg"_s, u"a"_s, u"jpg"_s);
  ASSERT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  gelesen();
  raeume_auf();
  EXPECT_EQ(store.AnzahlPos(), 1);
  EXPECT_EQ(store.AktInd(), 0);
  EXPECT_EQ(store.Bild_Bildname(), u"a"_s);
}

TEST_F(Aufraeumen, AStartThatIsALinkIsClearedAndStaysAsALink) {
  const Testordner anderswo;
  anderswo.schreibe(u"a.jpg"_s, "x");
  fs::create_directory_symlink(anderswo.pfad().toStdString(), ort("Link"));
  const Aufraeumliste vorher = store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:\\Link"_s, u"P:"_s);
  EXPECT_EQ(genannt(vorher), QStringList{u"Link/a.jpg"_s});
  EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:\\Link"_s, u"P:"_s), Variant(true));
  EXPECT_FALSE(anderswo.vorhanden(u"a.jpg"_s));
  EXPECT_EQ(baum(), QStringList{u"Link"_s});
}

TEST_F(Aufraeumen, AListingIsAskedBeforeEachFileAndEndsWhenItIsToldTo) {
  lege({"B/1/a.jpg", "B/1/b.jpg", "B/2/c.jpg", "B/2/cjpg.txt", "d.jpg"});
  const QStringList vorher = baum();
  QList<std::size_t> gefragt;
  const auto bis = [&](std::size_t ende) {
    gefragt.clear();
    return store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s, [&, ende](std::size_t n) {
      gefragt.append(n);
      return n < ende;
    });
  };
  EXPECT_EQ(genannt(bis(99)), vorher);
  EXPECT_EQ(gefragt, QList<std::size_t>({0, 1, 2, 3, 4}));
  const Aufraeumliste teil = bis(1);
  EXPECT_EQ(gefragt, QList<std::size_t>({0, 1}));
  EXPECT_EQ(genannt(teil), QStringList(u"B/1/a.jpg"_s));
  EXPECT_EQ(teil.Ergebnis, Variant(false));
  EXPECT_EQ(baum(), vorher);
}

namespace {

class AufraeumenMitZwischenfall : public Aufraeumen {
 protected:
  /// Clears the root; `dabei` runs at each question to the table, before it is answered.
  void raeume_auf_waehrend(const std::function<void(const QString&)>& dabei) {
    db.mitschrift().bei_jedem(dabei);
    EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s), Variant(true));
  }
};

}  // namespace

TEST_F(AufraeumenMitZwischenfall, WhatAppearsMeanwhileStaysWithItsFolder) {
  lege({"Allg/a.jpg", "Allg/b.jpg"});
  raeume_auf_waehrend([&](const QString& frage) {
    if (frage.contains(u"'b'"_s)) lege({"Allg/neu.jpg"});
  });
  EXPECT_EQ(baum(), (QStringList{u"Allg/"_s, u"Allg/neu.jpg"_s}));
}

TEST_F(AufraeumenMitZwischenfall, EachPassTakesTheListOfFilesAnew) {
  lege({"Allg/a.jpg", "Allg/bleibt"});
  raeume_auf_waehrend([&](const QString&) { lege({"Allg/cjpg.txt"}); });
  EXPECT_EQ(baum(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s})) << "the text came after the first pass's list";
}

TEST_F(AufraeumenMitZwischenfall, AFileThatGoesMeanwhileDoesNotEndThePass) {
  lege({"Allg/a.jpg", "Allg/b.jpg", "Allg/c.jpg", "Allg/bleibt"});
  raeume_auf_waehrend([&](const QString& frage) {
    if (frage.contains(u"'a'"_s)) fs::remove(ort("Allg/a.jpg"));
  });
  EXPECT_EQ(baum(), (QStringList{u"Allg/"_s, u"Allg/bleibt"_s}));
}

namespace {

/// Rights only bind somebody else than root: the test goes on as "nobody" for as long as this lives.
class AlsNiemand {
 public:
  explicit AlsNiemand(const fs::path& wurzel) {
    fs::permissions(wurzel, fs::perms::all);
    if (::geteuid() == 0) gewechselt_ = ::seteuid(65534) == 0;
  }
  ~AlsNiemand() {
    if (gewechselt_ && ::seteuid(0) != 0) std::abort();
  }
  AlsNiemand(const AlsNiemand&) = delete;
  AlsNiemand& operator=(const AlsNiemand&) = delete;
  static bool moeglich() { return ::geteuid() != 0 || (::seteuid(65534) == 0 && ::seteuid(0) == 0); }

 private:
  bool gewechselt_ = false;
};

}  // namespace

class AufraeumenOhneRechte : public Aufraeumen {
 protected:
  void SetUp() override {
    Aufraeumen::SetUp();
    if (!AlsNiemand::moeglich()) GTEST_SKIP() << "this user can't become another one";
  }
  void TearDown() override {
    for (const char* ordner : {"A", "B"})
      if (fs::exists(ort(ordner))) fs::permissions(ort(ordner), fs::perms::owner_all);
    Aufraeumen::TearDown();
  }
  static constexpr auto Nur_lesen = fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
      fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;
};

TEST_F(AufraeumenOhneRechte, AFileThatCanNotBeDeletedStaysWithItsTextAndItsFolder) {
  lege({"A/a.jpg", "A/ajpg.txt", "B/b.jpg"});
  for (const char* ordner : {"B"}) fs::permissions(ort(ordner), fs::perms::all);
  fs::permissions(ort("A"), Nur_lesen);
  const AlsNiemand niemand(ort());
  EXPECT_EQ(raeume_auf(), (QStringList{u"A/"_s, u"A/a.jpg"_s, u"A/ajpg.txt"_s}));
}

TEST_F(AufraeumenOhneRechte, InAFolderWithTheStickyBitTheFilesOfOthersStay) {
  if (::geteuid() != 0) GTEST_SKIP() << "files of another user are needed";
  lege({"A/a.jpg", "A/b.jpg"});
  fs::permissions(ort("A"), fs::perms::all | fs::perms::sticky_bit);
  ASSERT_EQ(::chown(ort("A/b.jpg").c_str(), 65534, 65534), 0);
  const AlsNiemand niemand(ort());
  EXPECT_EQ(raeume_auf(), (QStringList{u"A/"_s, u"A/a.jpg"_s}));
}

TEST_F(AufraeumenOhneRechte, AFolderThatCanNotBeReadEndsTheClearingAndIsNoEmptyFolder) {
  lege({"A/a.jpg", "B/b.jpg", "C/c.jpg", "d.jpg"});
  for (const char* ordner : {"A", "C"}) fs::permissions(ort(ordner), fs::perms::all);
  fs::permissions(ort("B"), fs::perms::none);
  QStringList uebrig;
  {
    const AlsNiemand niemand(ort());
    const Aufraeumliste vorher = store.FKT_Liste_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s);
    EXPECT_EQ(vorher.Ergebnis, Variant(false));
    EXPECT_EQ(genannt(vorher), (QStringList{u"A/"_s, u"A/a.jpg"_s}));
    EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:"_s, u"P:"_s), Variant(false));
    EXPECT_EQ(store.FKT_Loesche_Bild_Ohne_Zuordnung(u"P:\\B"_s, u"P:"_s), Variant(Empty{}));
  }
  EXPECT_EQ(baum(), (QStringList{u"B/"_s, u"B/b.jpg"_s, u"C/"_s, u"C/c.jpg"_s, u"d.jpg"_s}));
}

TEST_F(Aufraeumen, TheListingAndTheClearingAgreeOnAnyTree) {
  const std::vector<std::string> namen{"a.jpg", "A.JPG", "b.jpg", "'.jpg", "ajpg.txt", "AJPG.TXT", "b", "bjpg.txt",
      "x.txt", "xyz.txt", "xyztxt.txt", "a.b.jpg", ".jpg", "jpg.txt", "a.jpg ", "a.jpg.", "ajpg .txt", "no.tes",
      "notes.txt", "ä.jpg", "Äjpg.txt"};
  const std::vector<std::string> ordner{"", "A/", "A/B/", "A/B/C/", "D/"};
  EXPECT_TRUE(rc::check([&] {
    for (const auto& e : fs::directory_iterator(ort())) fs::remove_all(e);
    leere();
    const int anzahl = *rc::gen::inRange(0, 25);
    for (int i = 0; i < anzahl; ++i)
      wurzel.schreibe(QString::fromStdString(*rc::gen::elementOf(ordner) + *rc::gen::elementOf(namen)), "x");
    for (const QString& pfad : {u"A"_s, u"A\\B"_s, u"D"_s})
      for (const QString& name : {u"a"_s, u"b"_s, u"no"_s, QString()})
        if (*rc::gen::arbitrary<bool>()) ordne_zu(pfad, name, name == "no"_L1 ? u"tes"_s : u"jpg"_s);
    fs::create_directories(ort("E"));
    wurzel.schreibe(u"bleibt"_s, "x");
    raeume_auf();
    RC_ASSERT(!HasFailure());
  }));
}
