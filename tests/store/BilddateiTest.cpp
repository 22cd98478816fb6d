#include <gtest/gtest.h>

#include "store/Bilddatei.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Stempel = u"20240501_120000"_s;
const QString Emoji = u"\U0001F4F7"_s;

QString gestempelter_Name(const QString& name, int nummer = 1) {
  return Bilddatei{name, u"jpg"_s}.gestempelt(Stempel, nummer).name;
}

}  // namespace

TEST(Bilddatei, TheTextFileHasNoDotBetweenNameAndExtension) {
  const Bilddatei bild{u"foto"_s, u"jpg"_s, u"P:\\bilder"_s};
  EXPECT_EQ(bild.datei(), u"foto.jpg"_s);
  EXPECT_EQ(bild.textdatei(), u"fotojpg.txt"_s);
  EXPECT_EQ(bild.pfad(), u"P:\\bilder\\foto.jpg"_s);
  EXPECT_EQ(bild.textpfad(), u"P:\\bilder\\fotojpg.txt"_s);
}

TEST(Bilddatei, ARecordsFileLiesInItsFolderBelowTheRoot) {
  clsBilderSpeicher satz;
  satz.Bild_Bildname = u"foto"_s;
  satz.Bild_BildExt = u"JPG"_s;
  satz.Bild_Pfad = u"Belege\\1"_s;
  EXPECT_EQ(Bilddatei::von(satz, u"P:"_s).pfad(), u"P:\\Belege\\1\\foto.JPG"_s);
  EXPECT_EQ(Bilddatei::von(satz).datei(), u"foto.JPG"_s);
}

TEST(Bilddatei, FilesAreOneWhereTheTableSeesNoDifference) {
  const Bilddatei bild{u"Foto ä"_s, u"jpg"_s, u"A"_s};
  EXPECT_TRUE(bild.gleich({u"foto Ä "_s, u"JPG"_s, u"B"_s}));
  EXPECT_FALSE(bild.gleich({u" Foto ä"_s, u"jpg"_s}));
  EXPECT_FALSE(bild.gleich({u"Foto ä"_s, u"jpeg"_s}));
}

TEST(Bilddatei, AStampStandsBehindTheNameAndBlanksAtItsEndsGo) {
  EXPECT_EQ(gestempelter_Name(u"foto"_s), u"foto"_s + Stempel);
  EXPECT_EQ(gestempelter_Name(u"foto"_s, 2), u"foto_2"_s + Stempel);
  EXPECT_EQ(gestempelter_Name(u"  foto "_s), u"foto "_s + Stempel);
  EXPECT_EQ((Bilddatei{u" foto "_s, u"jpg"_s}.gestempelt({}, 1).name), u"foto"_s);
  const Bilddatei neu = Bilddatei{u"foto"_s, u"jpg"_s, u"A"_s}.gestempelt(Stempel);
  EXPECT_EQ(neu.pfad(), u"A\\foto"_s + Stempel + u".jpg"_s);
}

TEST(Bilddatei, AStampedNameIsCutBeforeItsEndAndNeverInsideAPair) {
  EXPECT_EQ(gestempelter_Name(QString(60, u'x')), QString(35, u'x') + Stempel);
  EXPECT_EQ(gestempelter_Name(QString(60, u'x'), 10), QString(32, u'x') + u"_10"_s + Stempel);
  EXPECT_EQ(gestempelter_Name(u"  "_s + QString(60, u'x')), QString(35, u'x') + Stempel);
  EXPECT_EQ(gestempelter_Name(QString(34, u'x') + Emoji), QString(34, u'x') + Stempel);
  EXPECT_EQ(gestempelter_Name(QString(33, u'x') + Emoji), QString(33, u'x') + Emoji + Stempel);
}

TEST(Bilddatei, TheStampIsTheTimeToTheSecond) {
  EXPECT_EQ(Bilddatei::Stempel(QDateTime(QDate(2024, 5, 1), QTime(7, 8, 9))), u"20240501_070809"_s);
}

TEST(Bilddatei, OnlyTheEndingTellsATextFile) {
  EXPECT_TRUE(Bilddatei::ist_Textdatei(u"fotojpg.TxT"_s));
  EXPECT_FALSE(Bilddatei::ist_Textdatei(u"txt"_s));
  EXPECT_FALSE(Bilddatei::ist_Textdatei(u"foto.txt.jpg"_s));
}

TEST(Bilddatei, EachForbiddenCharacterIsReplacedByOne) {
  EXPECT_EQ(
      Bilddatei::ersetze_verbotene(u"a\\b/c:d*e?f\"g<h>i|j'k\tl\u007Fm\u0085n"_s), u"a_b_c_d_e_f_g_h_i_j’k_l_m_n"_s);
  EXPECT_EQ(Bilddatei::ersetze_verbotene(u"Größe (1) #2 \u00A0"_s), u"Größe (1) #2 \u00A0"_s);
}

TEST(Bilddatei, AShareRefusesLessThanTheTable) {
  for (const QChar zeichen : u"<>\"|?*:\n"_s)
    EXPECT_TRUE(Bilddatei::verbietet_Freigabe(zeichen)) << int{zeichen.unicode()};
  for (const QChar zeichen : u"\\/'\u007F"_s) {
    EXPECT_FALSE(Bilddatei::verbietet_Freigabe(zeichen)) << int{zeichen.unicode()};
    EXPECT_TRUE(Bilddatei::ist_verboten(zeichen)) << int{zeichen.unicode()};
  }
}

TEST(Bilddatei, ADrucktextIsCutSoThatItFitsWithItsQuotesDoubled) {
  const QString lang(250, u'x');
  EXPECT_EQ(Bilddatei::passender_Drucktext(lang), lang);
  EXPECT_EQ(Bilddatei::passender_Drucktext(lang + u'y'), lang);
  EXPECT_EQ(Bilddatei::passender_Drucktext(QString(126, u'\'')), QString(125, u'\''));
  EXPECT_EQ(Bilddatei::passender_Drucktext(QString(249, u'x') + u'\''), QString(249, u'x'));
  EXPECT_EQ(Bilddatei::passender_Drucktext(QString(249, u'x') + Emoji), QString(249, u'x'));
}

TEST(Bilddatei, ARowThatLeadsOutOfTheRootIsKnownByItsFolderAndItsName) {
  const auto unten = [](const QString& ordner, const QString& name = u"foto"_s, const QString& ext = u"jpg"_s) {
    clsBilderSpeicher satz;
    satz.Bild_Pfad = ordner;
    satz.Bild_Bildname = name;
    satz.Bild_BildExt = ext;
    return Bilddatei::liegt_unter_Wurzel(satz);
  };
  for (const QString& ordner : {u""_s, u"Belege"_s, u"Belege\\24-1001"_s, u"Belege/24"_s, u"a\\..\\b"_s, u"a\\.\\b"_s,
           u"a\\\\b"_s, u"..a"_s, u"a.."_s, u"Straße 3. OG\\1"_s})
    EXPECT_TRUE(unten(ordner)) << ordner.toStdString();
  for (const QString& ordner : {u".."_s, u"..\\.."_s, u"../.."_s, u"a\\..\\.."_s, u"a/../..\\b"_s, u".. \\b"_s,
           u"..."_s, u"\\Belege"_s, u"/Belege"_s, u"\\\\server\\freigabe"_s, u"C:\\Belege"_s, u"P:"_s, u"c:Belege"_s})
    EXPECT_FALSE(unten(ordner)) << ordner.toStdString();
  EXPECT_FALSE(unten(u"Belege"_s, u"..\\..\\foto"_s));
  EXPECT_FALSE(unten(u"Belege"_s, u"../foto"_s));
  EXPECT_FALSE(unten(u"Belege"_s, u"foto"_s, u"jpg\\..\\..\\x"_s));
}
