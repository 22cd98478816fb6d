#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

using Aenderungen = Dialogtest;

TEST_F(Aenderungen, LookingAtARowMarksItAndNotTheDialog) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(spalte_von(spalte::ZeileGeaendert), (QStringList{u"True"_s, u"True"_s, u"False"_s}));
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
    for (auto [schalter, spalte] : {std::pair{&form().chk_Drucken, spalte::Drucken},
             std::pair{&form().chk_GesamteSeite, spalte::DruckGesamteSeite},
             std::pair{&form().chk_NeueSeite, spalte::NeueSeite}, std::pair{&form().chk_AlsAnhang, spalte::AlsAnhang},
             std::pair{&form().chk_Delete, spalte::Entfernen}}) {
      const bool vorher = form().Ja(1, spalte);
      const bool andere = form().Ja(0, spalte);
      form().SetzeDatenGeaendert(false);
      form().SetzeZeileGeaendert(false);
      klicke(*schalter, QPoint(8, 8));
      EXPECT_EQ(form().Ja(1, spalte), !vorher) << spalte;
      EXPECT_EQ(form().Ja(0, spalte), andere) << spalte;
      EXPECT_TRUE(form().Ja(1, spalte::ZeileGeaendert)) << spalte;
      EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled()) << spalte;
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
    EXPECT_EQ(form().Text(0, spalte::Beschreibung), u"Haus\r\nvorn"_s);
    EXPECT_EQ(form().Text(0, spalte::BildInfo), u"Info"_s);
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
    EXPECT_EQ(form().Text(0, spalte::Beschreibung), u"eins\nzwei\rdrei\r\nvier\u00A0fünf\t"_s);
    EXPECT_EQ(form().Text(0, spalte::BildInfo), u"x\ny\r\nz\u00A0ü"_s);
  });
}
