#include <QTest>

#include "store/Sammlungszugriff.h"
#include "tests/dialogs/assignment/Speichertest.h"

using namespace Qt::Literals::StringLiterals;

using NeueBilder = Speichertest;

TEST_F(NeueBilder, ANewPictureIsCopiedUnderAStampedNameAndItsSourceStays) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    speichere();
    EXPECT_TRUE(form().Zeile(1).Gespeichert);
    EXPECT_EQ(form().Zeile(1).Pfad, u"Belege\\1"_s);
    EXPECT_EQ(form().Zeile(1).VollerPfad, u"P:\\Neu\\foto.jpg"_s);
  });
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(dateien(u"Neu"_s), QStringList{u"foto.jpg"_s});
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto"_s + Stempel + u".jpg"_s), wurzel.lies(u"Neu/foto.jpg"_s));
  EXPECT_EQ(sammlung().last(), u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s);
  store->AktInd(1);
  EXPECT_EQ(store->Bild_Key1() + store->Bild_Key2() + store->Bild_Key3() + store->Bild_Key4(), QString());
  EXPECT_EQ(store->Bild_Typ1(), u"BEL"_s);
  EXPECT_EQ(store->Bild_BildExt(), u"jpg"_s);
  EXPECT_FALSE(store->Bild_Drucken());
  EXPECT_EQ(store->Bild_SortIndex(), 1);
}

TEST_F(NeueBilder, TheStripeOfANewPictureTurnsGreen) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    const auto streifen = [&] {
      const QImage& bild = form().Pic_Thumb(2).Image();
      return bild.pixelColor(bild.width() / 2, bild.height() - 1).rgb();
    };
    EXPECT_EQ(streifen(), qRgb(255, 0xC0, 0xC0));
    form().Zuordnung_Speichern();
    EXPECT_EQ(streifen(), qRgb(0xC0, 255, 0xC0));
  });
}

// The file keeps its name and the record gets the stamped one, under which there must be a file too.
TEST_F(NeueBilder, ANewPictureOfTheStandardFolderKeepsItsFileAndGetsOneUnderTheStampedName) {
  lege_Bild(u"foto.jpg"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\Belege\\1"_s, u"foto"_s);
    zeige_Streifen();
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"foto.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto"_s + Stempel + u".jpg"_s), wurzel.lies(u"Belege/1/foto.jpg"_s));
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(NeueBilder, TheStandardFolderInOtherLettersIsAnotherFolder) {
  lege_Bild(u"foto.jpg"_s);
  zeige([&] {
    haenge_neue_Zeile_an(u"P:\\belege\\1"_s, u"foto"_s);
    zeige_Streifen();
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"foto.jpg"_s, u"foto"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(sammlung(), QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(NeueBilder, ANewPictureRenamedBeforeGetsTheStampBehindTheEditedName) {
  fuege_Bilder_ein(1);
  zeige([&] {
    nimm_auf(u"foto"_s);
    benenne(2, u"Haus"_s);
    ASSERT_TRUE(form().Zeile(1).NameGeaendert);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"Haus"_s + Stempel + u".jpg"_s, u"a.jpg"_s}));
  EXPECT_EQ(dateien(u"Neu"_s), QStringList{u"foto.jpg"_s});
}

TEST_F(NeueBilder, BlanksAroundANewNameAreCutForFileAndTable) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zeile(0).Bildname = u" Haus "_s;
    form().SetzeDatenGeaendert(true);
    speichere();
    EXPECT_EQ(form().Zeile(0).Bildname, u"Haus "_s + Stempel);
  });
  EXPECT_EQ(dateien(), QStringList{u"Haus "_s + Stempel + u".jpg"_s});
}

TEST_F(NeueBilder, AMissingStandardFolderIsMadeWithItsParents) {
  zeige([&] {
    form().pStandardBildPfad = u"Belege\\2026\\März"_s;
    nimm_auf(u"foto"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(u"Belege/2026/März"_s), QStringList{u"foto"_s + Stempel + u".jpg"_s});
}

TEST_F(NeueBilder, ACopyThatFailsIsNotToldHereAndGivesNoRow) {
  wurzel.schreibe(u"Belege/1"_s, "a file where the folder should be");
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zeile(0).BildInfo = u"Info"_s;
    form().SetzeDatenGeaendert(true);
    speichere();
    EXPECT_FALSE(form().isVisible());
    EXPECT_FALSE(form().DatenGeaendert);
  });
  EXPECT_EQ(wurzel.lies(u"Belege/1"_s), "a file where the folder should be");
  EXPECT_EQ(sammlung(), QStringList());
  const auto spur = Sammlungszugriff::spur(*store);
  ASSERT_TRUE(spur);
  ASSERT_EQ(spur->bilder.size(), 1U);
  const Bildspur& bild = spur->bilder.front();
  EXPECT_FALSE(bild.satz);
  ASSERT_TRUE(bild.ohne_Datei);
  EXPECT_EQ(bild.ohne_Datei->Bild_Bildname, u"foto"_s + Stempel);
  EXPECT_EQ(bild.ohne_Datei->Bild_Pfad, u"Belege\\1"_s);
  EXPECT_EQ(bild.quelle, u"P:\\Neu\\foto.jpg"_s);
  EXPECT_EQ(bild.groesse, wurzel.lies(u"Neu/foto.jpg"_s).size());
  EXPECT_EQ(bild.bildinfo, u"Info"_s);
  EXPECT_TRUE(bild.kopie.gescheitert());
  EXPECT_FALSE(bild.kopie.grund.isEmpty());
}

TEST_F(NeueBilder, AMissingDriveIsNoFailureOfTheSaving) {
  fuege_Bilder_ein(1);
  zeige([&] {
    form().Zeile(0).Root = u"Z:"_s;
    tippe(form().txt_BildInfo, u"Info"_s);
    speichere();
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_TRUE(sammlung().first().contains(u"|1|0|0"_s));
}

TEST_F(NeueBilder, ALongNameIsCutBeforeTheStampSoThatTheTableFindsTheFile) {
  const QString lang(60, u'n');
  zeige([&] {
    nimm_auf(lang);
    nimm_auf(lang + u"2"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  wirt_schreibt();
  ASSERT_EQ(store->AnzahlPos(), 2);
  QStringList namen;
  for (std::int32_t i = 0; i < 2; ++i) {
    store->AktInd(i);
    EXPECT_EQ(store->Bild_Bildname().size(), 50);
    EXPECT_TRUE(store->Bild_Bildname().endsWith(Stempel));
    EXPECT_TRUE(wurzel.vorhanden(u"Belege/1/"_s + store->Bild_Bildname() + u".jpg"_s));
    namen.append(store->Bild_Bildname());
  }
  EXPECT_NE(namen[0], namen[1]);
}

TEST_F(NeueBilder, ANameOfThirtyFiveLettersKeepsThemAll) {
  const QString name(35, u'n');
  zeige([&] {
    nimm_auf(name);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), QStringList{name + Stempel + u".jpg"_s});
}

TEST_F(NeueBilder, PicturesOfTheSameSecondAndNameNeverMeet) {
  lege_Bild(u"foto.jpg"_s, QSize(10, 10), Qt::red, u"Anders"_s);
  zeige([&] {
    nimm_auf(u"foto"_s);
    haenge_neue_Zeile_an(u"P:\\Anders"_s, u"foto"_s);
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{u"foto"_s + Stempel + u".jpg"_s, u"foto_2"_s + Stempel + u".jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto"_s + Stempel + u".jpg"_s), wurzel.lies(u"Neu/foto.jpg"_s));
  EXPECT_EQ(wurzel.lies(u"Belege/1/foto_2"_s + Stempel + u".jpg"_s), wurzel.lies(u"Anders/foto.jpg"_s));
  EXPECT_EQ(sammlung(),
      (QStringList{u"foto"_s + Stempel + u"|Belege\\1|1|1|0"_s, u"foto_2"_s + Stempel + u"|Belege\\1|1|1|0"_s}));
}

TEST_F(NeueBilder, UmlautsAndDotsSurviveInNamesAndApostrophesTurn) {
  const QString name = u"Müller’s ß v1.2"_s;
  zeige([&] {
    nimm_auf(u"Müller's ß v1.2"_s);
    form().Zeile(0).BildInfo = u"Info"_s;
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(dateien(), (QStringList{name + Stempel + u".jpg"_s, name + Stempel + u"jpg.txt"_s}));
  EXPECT_EQ(sammlung(), QStringList{name + Stempel + u"|Belege\\1|1|1|0"_s});
}

TEST_F(NeueBilder, ANewPictureRemovedAgainIsNeitherCopiedNorPutIntoTheCollection) {
  zeige([&] {
    nimm_auf(u"foto"_s);
    form().Zeile(0).Entfernen = true;
    form().SetzeDatenGeaendert(true);
    speichere();
  });
  EXPECT_EQ(sammlung(), QStringList());
  EXPECT_EQ(dateien(), QStringList());
  wirt_schreibt();
  EXPECT_EQ(db.anzahl(), 0);
}
