#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "host/bericht/Textsatz.h"
#include "tests/host/bericht/Berichtsbauer.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace berichtsbauer;
using seitenplan::plane;

namespace {

constexpr double Toleranz = 1e-6;
constexpr double Rand_Seite = 20 * seitenplan::Millimeter;
constexpr double Rand_oben = 15 * seitenplan::Millimeter;

QRectF innen(const seitenplan::Seite& seite) {
  return QRectF(QPointF(), seite.groesse())
      .adjusted(Rand_Seite - Toleranz, Rand_oben - Toleranz, Toleranz - Rand_Seite, Toleranz - Rand_oben);
}

/// Whatever the report: nothing leaves the margins, no two boxes meet, no text lies in a picture but for the reason of
/// an empty frame, and the pages are counted.
void pruefe_Grundregeln(const Seitenplan& plan) {
  for (std::size_t s = 0; s < plan.size(); ++s) {
    const seitenplan::Seite& seite = plan[s];
    SCOPED_TRACE("page " + std::to_string(s + 1));
    for (std::size_t i = 0; i < seite.bilder.size(); ++i) {
      EXPECT_TRUE(innen(seite).contains(seite.bilder[i].ort));
      for (std::size_t j = i + 1; j < seite.bilder.size(); ++j)
        EXPECT_FALSE(seite.bilder[i].ort.intersects(seite.bilder[j].ort));
    }
    for (const seitenplan::Textzeile& zeile : seite.texte) {
      EXPECT_TRUE(innen(seite).contains(zeile.ort)) << zeile.text.toStdString();
      EXPECT_LE(zeile.ort.x() + textsatz::breite(zeile.text, zeile.schrift), innen(seite).right() + 20)
          << zeile.text.toStdString();
      for (const seitenplan::Bildkasten& kasten : seite.bilder)
        EXPECT_TRUE(kasten.leer || !kasten.ort.contains(zeile.ort)) << zeile.text.toStdString();
    }
    EXPECT_EQ(texte(seite, Schrift::Klein).last(), u"Seite %1 von %2"_s.arg(s + 1).arg(plan.size()));
    EXPECT_EQ(texte(seite, Schrift::Klein).at(texte(seite, Schrift::Klein).size() - 2), u"05.03.2024"_s);
  }
}

Seitenplan geprueft(const Bericht& bericht, int je_Seite = 2, QSizeF zeichen = {}) {
  Seitenplan plan = plane(bericht, je_Seite, zeichen);
  pruefe_Grundregeln(plan);
  return plan;
}

TEST(Seitenplan, PicturesFillThePagesInTheirOrder) {
  EXPECT_EQ(folge(geprueft(bericht(1))), u"0"_s);
  EXPECT_EQ(folge(geprueft(bericht(2))), u"0 1"_s);
  EXPECT_EQ(folge(geprueft(bericht(3))), u"0 1 | 2"_s);
  EXPECT_EQ(geprueft(bericht(100)).size(), 50U);
  EXPECT_EQ(folge(geprueft(bericht(3), 1)), u"0 | 1 | 2"_s);
  EXPECT_EQ(folge(geprueft(bericht(5), 4)), u"0 1 2 3 | 4"_s);
  EXPECT_EQ(folge(geprueft(bericht(7), 6)), u"0 1 2 3 4 5 | 6"_s);
}

TEST(Seitenplan, WithoutPicturesAPageSaysSo) {
  const Seitenplan plan = geprueft(bericht(std::vector<Berichtsbild>{}));
  ASSERT_EQ(plan.size(), 1U);
  EXPECT_EQ(texte(plan[0], Schrift::Text), QStringList(u"Kein Bild."_s));
}

TEST(Seitenplan, FourAndSixStandInTwoColumnsRowByRow) {
  for (const int je_Seite : {4, 6}) {
    const Seitenplan plan = geprueft(bericht(static_cast<std::size_t>(je_Seite)), je_Seite);
    const auto& bilder = plan[0].bilder;
    EXPECT_EQ(bilder[0].ort.top(), bilder[1].ort.top());
    EXPECT_LT(bilder[0].ort.right(), bilder[1].ort.left());
    EXPECT_LT(bilder[0].ort.bottom(), bilder[2].ort.top());
    EXPECT_EQ(bilder[0].ort.left(), bilder[2].ort.left());
  }
}

TEST(Seitenplan, APictureKeepsItsProportionsAndItsTextStandsBelow) {
  for (const QSizeF groesse : {Liegend, Stehend, QSizeF(10000, 1000), QSizeF(1000, 10000)}) {
    const Seitenplan plan = geprueft(bericht({bild(u"Unter dem Bild"_s, groesse)}));
    const QRectF ort = plan[0].bilder[0].ort;
    EXPECT_NEAR(ort.width() / ort.height(), groesse.width() / groesse.height(), 1e-9);
    const auto text = std::find_if(plan[0].texte.begin(), plan[0].texte.end(),
        [](const seitenplan::Textzeile& zeile) { return zeile.text == u"Unter dem Bild"; });
    ASSERT_NE(text, plan[0].texte.end());
    EXPECT_GT(text->ort.y(), ort.bottom());
    EXPECT_LT(text->ort.y(), ort.bottom() + 600);
  }
}

TEST(Seitenplan, ALargePictureFillsItsPlaceOnOneSide) {
  const double breite = seitenplan::A4.width() - 2 * Rand_Seite;
  EXPECT_NEAR(geprueft(bericht({bild({}, {10000, 1000})}))[0].bilder[0].ort.width(), breite, Toleranz);
  const Seitenplan zwei = geprueft(bericht({bild({}, Stehend), bild({}, Stehend)}));
  EXPECT_GT(zwei[0].bilder[0].ort.height(), 6000);
  EXPECT_NEAR(zwei[0].bilder[0].ort.height(), zwei[0].bilder[1].ort.height(), Toleranz);
}

TEST(Seitenplan, ASmallPictureIsNotBlownUpBeyond150Dpi) {
  const Seitenplan plan = geprueft(bericht({bild({}, {300, 150})}));
  EXPECT_NEAR(plan[0].bilder[0].ort.width(), 2 * 1440, Toleranz);
  EXPECT_NEAR(plan[0].bilder[0].ort.height(), 1440, Toleranz);
}

TEST(Seitenplan, AWholePageBelongsToOnePictureAndTurnsForALandscape) {
  Bericht einer = bericht(4);
  einer.bilder[1].ganze_Seite = true;
  einer.bilder[2].ganze_Seite = true;
  einer.bilder[2].groesse = Stehend;
  const Seitenplan plan = geprueft(einer);
  EXPECT_EQ(folge(plan), u"0 | 1 | 2 | 3"_s);
  EXPECT_FALSE(plan[0].quer);
  EXPECT_TRUE(plan[1].quer);
  EXPECT_FALSE(plan[2].quer);
  EXPECT_FALSE(plan[3].quer);
  EXPECT_GT(plan[1].bilder[0].ort.height(), 0.7 * plan[1].groesse().height());
  EXPECT_GT(plan[2].bilder[0].ort.width(), 0.95 * (plan[2].groesse().width() - 2 * Rand_Seite));
}

TEST(Seitenplan, AnEmptyFrameOnAWholePageStaysUpright) {
  Bericht einer = bericht(1);
  einer.bilder[0].ganze_Seite = true;
  einer.bilder[0].groesse = {};
  einer.bilder[0].grund = u"Die Datei fehlt."_s;
  const Seitenplan plan = geprueft(einer);
  EXPECT_FALSE(plan[0].quer);
  EXPECT_TRUE(plan[0].bilder[0].leer);
}

TEST(Seitenplan, ANewPageBeginsWithThePictureAndNeverLeavesAnEmptyOne) {
  Bericht einer = bericht(4);
  einer.bilder[0].neue_Seite = true;
  einer.bilder[1].neue_Seite = true;
  einer.bilder[3].neue_Seite = true;
  EXPECT_EQ(folge(geprueft(einer)), u"0 | 1 2 | 3"_s);
  einer.bilder[2].ganze_Seite = true;
  EXPECT_EQ(folge(geprueft(einer)), u"0 | 1 | 2 | 3"_s);
}

TEST(Seitenplan, AttachmentsComeLastUnderTheirHeadingAndCountByThemselves) {
  Bericht einer = bericht(5);
  einer.bilder[0].anhang = true;
  einer.bilder[3].anhang = true;
  const Seitenplan plan = geprueft(einer);
  EXPECT_EQ(folge(plan), u"1 2 | 4 0 | 3"_s);
  EXPECT_EQ(texte(plan[1], Schrift::Nummer), (QStringList{u"Bild 3"_s, u"Anlage 1"_s}));
  EXPECT_EQ(texte(plan[1], Schrift::Ueberschrift), QStringList(u"Anlagen"_s));
  EXPECT_EQ(texte(plan[2], Schrift::Nummer), QStringList(u"Anlage 2"_s));
  EXPECT_TRUE(texte(plan[2], Schrift::Ueberschrift).isEmpty());
}

TEST(Seitenplan, AttachmentsBeginAPageWhereALaterOneDoes) {
  Bericht einer = bericht(3);
  einer.bilder[1].anhang = true;
  einer.bilder[2].anhang = true;
  EXPECT_EQ(folge(geprueft(einer)), u"0 1 | 2"_s);
  einer.anlagen_auf_neuer_Seite = true;
  einer.bilder[2].neue_Seite = true;
  EXPECT_EQ(folge(geprueft(einer)), u"0 | 1 | 2"_s);
}

TEST(Seitenplan, TheHeadingOfTheAttachmentsStandsAtTheBeginningOfARow) {
  Bericht einer = bericht(3);
  einer.bilder[1].anhang = true;
  einer.bilder[2].anhang = true;
  const Seitenplan plan = geprueft(einer, 4);
  EXPECT_EQ(folge(plan), u"0 1 2"_s);
  EXPECT_EQ(plan[0].bilder[1].ort.left(), plan[0].bilder[0].ort.left());
  EXPECT_EQ(plan[0].bilder[1].ort.top(), plan[0].bilder[2].ort.top());
  einer.bilder.insert(einer.bilder.begin(), 2, bild());
  EXPECT_EQ(folge(geprueft(einer, 4)), u"0 1 2 | 3 4"_s);
}

TEST(Seitenplan, OnlyAttachmentsBeginBelowTheHead) {
  Bericht einer = bericht(2);
  einer.bilder[0].anhang = true;
  einer.bilder[1].anhang = true;
  einer.bilder[0].neue_Seite = true;
  EXPECT_EQ(folge(geprueft(einer)), u"0 1"_s);
  einer.bilder[0].ganze_Seite = true;
  const Seitenplan plan = geprueft(einer);
  EXPECT_EQ(folge(plan), u"0 | 1"_s);
  EXPECT_EQ(texte(plan[0], Schrift::Ueberschrift), QStringList(u"Anlagen"_s));
  EXPECT_TRUE(plan[0].quer);
}

/// Each pair of marks on two pictures, and what becomes of three pictures with the pair on the second.
using Markenpaar = std::tuple<bool, bool, bool, const char*>;
class Markenpaare : public ::testing::TestWithParam<Markenpaar> {};

TEST_P(Markenpaare, HaveTheirPages) {
  const auto [ganze, neue, anhang, erwartet] = GetParam();
  Bericht einer = bericht(3);
  einer.bilder[1].ganze_Seite = ganze;
  einer.bilder[1].neue_Seite = neue;
  einer.bilder[1].anhang = anhang;
  // As the store's look-ahead says it.
  einer.anlagen_auf_neuer_Seite = neue && anhang;
  EXPECT_EQ(folge(geprueft(einer)), QString::fromLatin1(erwartet));
}

INSTANTIATE_TEST_SUITE_P(Seitenplan, Markenpaare,
    ::testing::Values(Markenpaar{false, false, false, "0 1 | 2"}, Markenpaar{true, false, false, "0 | 1 | 2"},
        Markenpaar{false, true, false, "0 | 1 2"}, Markenpaar{false, false, true, "0 2 | 1"},
        Markenpaar{true, true, false, "0 | 1 | 2"}, Markenpaar{true, false, true, "0 2 | 1"},
        Markenpaar{false, true, true, "0 2 | 1"}, Markenpaar{true, true, true, "0 2 | 1"}));

/// Two neighbours with a mark each, and a third picture without.
using Nachbarn = std::tuple<bool Berichtsbild::*, bool Berichtsbild::*, const char*>;
class Markennachbarn : public ::testing::TestWithParam<Nachbarn> {};

TEST_P(Markennachbarn, HaveTheirPages) {
  const auto [erste, zweite, erwartet] = GetParam();
  Bericht einer = bericht(3);
  einer.bilder[0].*erste = true;
  einer.bilder[1].*zweite = true;
  EXPECT_EQ(folge(geprueft(einer)), QString::fromLatin1(erwartet));
}

constexpr auto Ganze = &Berichtsbild::ganze_Seite;
constexpr auto Neue = &Berichtsbild::neue_Seite;
constexpr auto Anhang = &Berichtsbild::anhang;

INSTANTIATE_TEST_SUITE_P(Seitenplan, Markennachbarn,
    ::testing::Values(Nachbarn{Ganze, Ganze, "0 | 1 | 2"}, Nachbarn{Ganze, Neue, "0 | 1 2"},
        Nachbarn{Ganze, Anhang, "0 | 2 1"}, Nachbarn{Neue, Ganze, "0 | 1 | 2"}, Nachbarn{Neue, Neue, "0 | 1 2"},
        Nachbarn{Neue, Anhang, "0 2 | 1"}, Nachbarn{Anhang, Ganze, "1 | 2 0"}, Nachbarn{Anhang, Neue, "1 2 | 0"},
        Nachbarn{Anhang, Anhang, "2 0 | 1"}));

TEST(Seitenplan, ALongTextWrapsBesideItsNumber) {
  const Seitenplan plan = geprueft(bericht({bild(u"Wort "_s.repeated(50))}));
  const QStringList zeilen = texte(plan[0], Schrift::Text);
  EXPECT_GT(zeilen.size(), 2);
  EXPECT_EQ(zeilen.join(u' '), u"Wort "_s.repeated(50).trimmed());
  double nummer = 0;
  for (const seitenplan::Textzeile& zeile : plan[0].texte) {
    if (zeile.schrift == Schrift::Nummer) nummer = zeile.ort.x();
    if (zeile.schrift == Schrift::Text) {
      EXPECT_GT(zeile.ort.x(), nummer);
    }
  }
}

TEST(Seitenplan, TwoHundredAndFiftyLettersWithoutABlankAreBroken) {
  const QString wort = QString(250, u'W');
  for (const int je_Seite : {1, 2, 4, 6}) {
    const Seitenplan plan = geprueft(bericht({bild(wort)}), je_Seite);
    QStringList zeilen;
    for (const seitenplan::Seite& seite : plan) zeilen += texte(seite, Schrift::Text);
    EXPECT_EQ(zeilen.join(QString()), wort);
  }
}

TEST(Seitenplan, WhatExceedsItsBoxGoesOnOnAPageOfItsOwn) {
  Bericht einer = bericht(3);
  QStringList worte;
  for (int i = 0; i < 600; ++i) worte.append(u"Wort%1"_s.arg(i));
  einer.bilder[0].info = worte.join(u' ');
  const Seitenplan plan = geprueft(einer);
  EXPECT_EQ(folge(plan), u"0 1 |  | 2"_s);
  QStringList infos = texte(plan[0], Schrift::Info);
  EXPECT_TRUE(texte(plan[0], Schrift::Klein).contains(u"Fortsetzung auf der nächsten Seite"_s));
  EXPECT_EQ(texte(plan[1], Schrift::Nummer), QStringList(u"Bild 1"_s));
  infos += texte(plan[1], Schrift::Info);
  EXPECT_TRUE(infos.join(u' ') == worte.join(u' ')) << infos.last().toStdString();
  // The picture stays with its text.
  EXPECT_EQ(texte(plan[0], Schrift::Nummer), (QStringList{u"Bild 1"_s, u"Bild 2"_s}));
}

TEST(Seitenplan, AVeryLongTextGoesOnOverManyPages) {
  Bericht einer = bericht(1);
  QStringList zeilen;
  for (int i = 0; i < 300; ++i) zeilen.append(u"Zeile %1"_s.arg(i));
  einer.bilder[0].info = zeilen.join(u"\r\n"_s);
  QStringList gefunden;
  const Seitenplan plan = geprueft(einer);
  EXPECT_GT(plan.size(), 3U);
  for (const seitenplan::Seite& seite : plan) gefunden += texte(seite, Schrift::Info);
  EXPECT_EQ(gefunden, zeilen);
}

TEST(Seitenplan, AMissingPictureKeepsItsPlaceWithNameAndReason) {
  Bericht einer = bericht(2);
  einer.bilder[0].groesse = {};
  einer.bilder[0].grund = u"Die Datei fehlt."_s;
  const Seitenplan plan = geprueft(einer);
  EXPECT_EQ(folge(plan), u"0 1"_s);
  EXPECT_TRUE(plan[0].bilder[0].leer);
  EXPECT_FALSE(plan[0].bilder[1].leer);
  EXPECT_TRUE(texte(plan[0], Schrift::Nummer).contains(u"foto.jpg"_s));
  EXPECT_TRUE(texte(plan[0], Schrift::Text).contains(u"Die Datei fehlt."_s));
  Bericht keins = einer;
  keins.bilder[1] = keins.bilder[0];
  EXPECT_EQ(folge(geprueft(keins)), u"0 1"_s);
}

TEST(Seitenplan, TheHeadStandsWholeOnTheFirstPageAlone) {
  Bericht einer = bericht(3);
  einer.kopf.zeilen = {u"Müller GmbH"_s, u"Hauptstraße 1"_s, u"79098 Freiburg"_s};
  const Seitenplan plan = geprueft(einer, 2, {200, 100});
  EXPECT_EQ(texte(plan[0], Schrift::Firma), QStringList(u"Müller GmbH"_s));
  EXPECT_EQ(texte(plan[0], Schrift::Anschrift), einer.kopf.zeilen.mid(1));
  EXPECT_EQ(texte(plan[0], Schrift::Vorgang), QStringList(einer.vorgang));
  ASSERT_TRUE(plan[0].zeichen);
  EXPECT_NEAR(plan[0].zeichen->width() / plan[0].zeichen->height(), 2, 1e-9);
  EXPECT_FALSE(plan[1].zeichen);
  EXPECT_TRUE(texte(plan[1], Schrift::Firma).isEmpty());
  EXPECT_TRUE(texte(plan[1], Schrift::Klein).contains(u"Müller GmbH"_s));
  EXPECT_TRUE(texte(plan[1], Schrift::Klein).contains(einer.vorgang));
}

TEST(Seitenplan, ControlCharactersBecomeBlanksAndLineEndsStay) {
  const Seitenplan plan = geprueft(bericht({bild(u"eins\tzwei\u0007drei\r\nvier\n\n"_s)}));
  EXPECT_EQ(texte(plan[0], Schrift::Text), (QStringList{u"eins zwei drei"_s, u"vier"_s}));
}

TEST(Seitenplan, FileNameAndDateStandInSmallPrint) {
  Bericht einer = bericht(1);
  einer.bilder[0].kleingedrucktes = u"foto.jpg · Aufgenommen am 05.03.2024 um 14:22 Uhr"_s;
  EXPECT_TRUE(texte(geprueft(einer)[0], Schrift::Klein).contains(einer.bilder[0].kleingedrucktes));
}

}  // namespace
