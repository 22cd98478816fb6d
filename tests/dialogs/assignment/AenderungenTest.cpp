#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

using Aenderungen = Dialogtest;

TEST_F(Aenderungen, LookingAtARowMarksItAndNotTheDialog) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), (QStringList{u"True"_s, u"True"_s, u"False"_s}));
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
  });
}

TEST_F(Aenderungen, WhileARowIsCopiedIntoTheControlsTheDialogIsNotMarked) {
  fuege_Bilder_ein(1);
  form().AnzeigeAufbau = true;
  form().SetzeDatenGeaendert(true);
  EXPECT_FALSE(form().DatenGeaendert);
  form().AnzeigeAufbau = false;
  form().SetzeDatenGeaendert(true);
  EXPECT_TRUE(form().DatenGeaendert);
  EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
  form().SetzeDatenGeaendert(false);
  EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
}

TEST_F(Aenderungen, EachCheckBoxStoresItsColumnAndOffersSaving) {
  fuege_Bilder_ein(2);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    for (auto [schalter, feld] : {std::pair{&form().chk_Drucken, &Arbeitszeile::Drucken},
             std::pair{&form().chk_GesamteSeite, &Arbeitszeile::DruckGesamteSeite},
             std::pair{&form().chk_NeueSeite, &Arbeitszeile::NeueSeite},
             std::pair{&form().chk_AlsAnhang, &Arbeitszeile::AlsAnhang},
             std::pair{&form().chk_Delete, &Arbeitszeile::Entfernen}}) {
      const bool vorher = form().Zeile(1).*feld;
      const bool andere = form().Zeile(0).*feld;
      form().SetzeDatenGeaendert(false);
      form().SetzeZeileGeaendert(false);
      klicke(*schalter, QPoint(8, 8));
      EXPECT_EQ(form().Zeile(1).*feld, !vorher) << schalter->objectName().toStdString();
      EXPECT_EQ(form().Zeile(0).*feld, andere) << schalter->objectName().toStdString();
      EXPECT_TRUE(form().Zeile(1).ZeileGeaendert) << schalter->objectName().toStdString();
      EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled()) << schalter->objectName().toStdString();
    }
  });
}

TEST_F(Aenderungen, TypedTextsAreStoredAsTyped) {
  fuege_Bilder_ein(1);
  zeige([&] {
    tippe(form().txt_BildText, u"Haus"_s);
    EXPECT_TRUE(form().DatenGeaendert);
    taste(form(), Qt::Key_Return);
    tippe(form().txt_BildText, u"vorn"_s);
    tippe(form().txt_BildInfo, u"Info"_s);
    EXPECT_EQ(form().Zeile(0).Beschreibung, u"Haus\r\nvorn"_s);
    EXPECT_EQ(form().Zeile(0).BildInfo, u"Info"_s);
  });
}

TEST_F(Aenderungen, TextsThatAreOnlyShownStayByteForByte) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true,
      [](clsBildZuordnungen& b) { b.Bild_Beschreibung(u"eins\nzwei\rdrei\r\nvier\u00A0fünf\t"_s); });
  fuege_Bild_ein(u"b"_s);
  wurzel.schreibe(u"Belege/1/ajpg.txt"_s, "x\ny\r\nz\xA0\xFC");
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    klicke(form().Pic_Thumb(1));
    EXPECT_EQ(form().Zeile(0).Beschreibung, u"eins\nzwei\rdrei\r\nvier\u00A0fünf\t"_s);
    EXPECT_EQ(form().Zeile(0).BildInfo, u"x\ny\r\nz\u00A0ü"_s);
  });
}
