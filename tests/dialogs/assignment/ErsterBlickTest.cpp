#include <QTest>

#include "tests/dialogs/assignment/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

using ErsterBlick = Dialogtest;

TEST_F(ErsterBlick, TheFirstLayoutBuildsTheStripAndSelectsTheFirstPicture) {
  fuege_Bilder_ein(3);
  zeige([&] {
    EXPECT_EQ(form().Pic_Thumb.Count(), 4);
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"1"_s);
    EXPECT_EQ(form().SSP_Anzahl(3).Caption(), u"3"_s);
    EXPECT_TRUE(form().Shp_Thump.Visible());
    EXPECT_FALSE(form().DatenGeaendert);
    klicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
  });
}
