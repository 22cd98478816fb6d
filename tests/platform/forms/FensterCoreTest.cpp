#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <utility>

#include "platform/forms/FensterCore.h"
#include "platform/forms/Form.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Anwendung = u"KVZunft_Gesamt 2000"_s;

struct Fensterdoppel final : public Fensterplatz {
  explicit Fensterdoppel(QString name, const Fensterlage& lage = {{5, 6, 70, 80}, false})
      : Name(std::move(name)), AktLage(lage) {}
  QString Fenstername() const override { return Name; }
  Fensterlage Lage() const override { return AktLage; }
  void Lage(const Fensterlage& wert) override {
    AktLage = wert;
    ++Gesetzt;
  }
  QString Name;
  Fensterlage AktLage;
  int Gesetzt = 0;
};

/// A user's configuration of the test's own.
class FensterCoreTest : public ::testing::Test {
 protected:
  void SetUp() override { richte_auf(konfiguration.pfad()); }
  void TearDown() override { richte_auf(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)); }
  static void richte_auf(const QString& ordner) {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ordner);
  }
  void speichere(const QString& anwendung, const QString& fenster, const Fensterlage& lage) {
    core.FensterSpeichern(anwendung, Fensterdoppel(fenster, lage));
  }
  /// The placement that a new window gets; none when it is left alone.
  std::optional<Fensterlage> geholt(const QString& anwendung, const QString& fenster) {
    Fensterdoppel neues(fenster);
    core.FensterWiederherstellen(anwendung, neues);
    EXPECT_LE(neues.Gesetzt, 1);
    return neues.Gesetzt == 0 ? std::nullopt : std::optional(neues.AktLage);
  }

  Testordner konfiguration;
  FensterCore core;
};

constexpr Fensterlage Normal{{100, 120, 400, 300}, false};

QRect bildschirm() {
  return QGuiApplication::primaryScreen()->availableGeometry();
}

}  // namespace

TEST_F(FensterCoreTest, AWindowComesBackWhereItWasStored) {
  speichere(Anwendung, u"frm_BildZuordnung"_s, Normal);
  EXPECT_EQ(geholt(Anwendung, u"frm_BildZuordnung"_s), Normal);
}

TEST_F(FensterCoreTest, AWindowThatWasNeverStoredIsLeftAlone) {
  speichere(Anwendung, u"frm_BildZuordnung"_s, Normal);
  EXPECT_EQ(geholt(Anwendung, u"frm_BilderSuchen"_s), std::nullopt);
  EXPECT_EQ(geholt(u"Andere"_s, u"frm_BildZuordnung"_s), std::nullopt);
}

TEST_F(FensterCoreTest, TheLaterPlacementReplacesTheEarlierOne) {
  speichere(Anwendung, u"frm_A"_s, {{1, 40, 200, 100}, true});
  speichere(Anwendung, u"frm_A"_s, Normal);
  EXPECT_EQ(geholt(Anwendung, u"frm_A"_s), Normal);
}

TEST_F(FensterCoreTest, AMaximizedWindowComesBackMaximizedWithItsNormalRectangle) {
  const Fensterlage gross{Normal.Rechteck, true};
  speichere(Anwendung, u"frm_A"_s, gross);
  EXPECT_EQ(geholt(Anwendung, u"frm_A"_s), gross);
}

TEST_F(FensterCoreTest, AFormComesBackWithItsInnerSizeAlsoAfterItWasMaximized) {
  Form form(u"frm_A"_s);
  form.setGeometry(Normal.Rechteck);
  form.show();
  form.showMaximized();
  ASSERT_TRUE(QTest::qWaitFor([&] { return form.isMaximized() && form.width() > Normal.Rechteck.width(); }));
  core.FensterSpeichern(Anwendung, form);
  Form neue(u"frm_A"_s);
  core.FensterWiederherstellen(Anwendung, neue);
  EXPECT_TRUE(neue.isMaximized());
  neue.show();
  neue.showNormal();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !neue.isMaximized(); }));
  EXPECT_EQ(neue.geometry(), Normal.Rechteck);
}

TEST_F(FensterCoreTest, PlacementsLieInTheUsersConfigurationUnderApplicationAndWindow) {
  speichere(Anwendung, u"frm_BildZuordnung"_s, Normal);
  const QString inhalt = QString::fromUtf8(konfiguration.lies(u"KVZunft_Gesamt 2000/Fenster.ini"_s));
  EXPECT_TRUE(inhalt.contains(u"[frm_BildZuordnung]"_s)) << inhalt.toStdString();
  for (const QString& zeile : {u"Links=100"_s, u"Oben=120"_s, u"Breite=400"_s, u"Hoehe=300"_s, u"Maximiert=false"_s})
    EXPECT_TRUE(inhalt.split(u'\n').contains(zeile)) << zeile.toStdString();
}

TEST_F(FensterCoreTest, NamesOfAnyKindNeitherMeetNorLeaveTheConfiguration) {
  const QStringList namen{u""_s, u"a"_s, u"a/b"_s, u"a\\b"_s, u"a%2Fb"_s, u"."_s, u".."_s, u"../a"_s, u"%"_s, u"ä"_s,
      u"a b"_s, u"[a]"_s, u"a=b;c"_s, u"General"_s, u"A:B"_s};
  for (qsizetype i = 0; i < namen.size(); ++i) {
    const int n = static_cast<int>(i);
    speichere(Anwendung, namen[i], {{n, 100, 200, 200}, false});
    speichere(namen[i], u"frm_A"_s, {{n, 150, 200, 200}, false});
  }
  for (qsizetype i = 0; i < namen.size(); ++i) {
    const int n = static_cast<int>(i);
    EXPECT_EQ(geholt(Anwendung, namen[i]), (Fensterlage{{n, 100, 200, 200}, false})) << namen[i].toStdString();
    EXPECT_EQ(geholt(namen[i], u"frm_A"_s), (Fensterlage{{n, 150, 200, 200}, false})) << namen[i].toStdString();
  }
  // One folder for each application, and nothing beside them.
  EXPECT_EQ(QDir(konfiguration.pfad()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
      namen.size() + 1);
}

TEST_F(FensterCoreTest, APlacementThatLiesOnNoScreenAnyMoreComesBackWholeOntoTheScreen) {
  for (const QPoint ort : {QPoint(5000, 5000), QPoint(-3000, 200), QPoint(200, -900)}) {
    speichere(Anwendung, u"frm_A"_s, {QRect(ort, QSize(400, 300)), true});
    const auto lage = geholt(Anwendung, u"frm_A"_s);
    ASSERT_TRUE(lage);
    EXPECT_TRUE(bildschirm().contains(lage->Rechteck));
    EXPECT_EQ(lage->Rechteck.size(), QSize(400, 300));
    EXPECT_TRUE(lage->Maximiert);
  }
}

TEST_F(FensterCoreTest, APlacementLargerThanTheScreenIsMadeToFit) {
  speichere(Anwendung, u"frm_A"_s, {{100, 100, 9000, 300}, false});
  const auto lage = geholt(Anwendung, u"frm_A"_s);
  ASSERT_TRUE(lage);
  EXPECT_TRUE(bildschirm().contains(lage->Rechteck));
  EXPECT_EQ(lage->Rechteck.width(), bildschirm().width());
  EXPECT_EQ(lage->Rechteck.height(), 300);
}

TEST_F(FensterCoreTest, GarbageInTheFileRestoresNothingAndIsOvercomeByTheNextStore) {
  const QByteArray gut = "[frm_A]\nLinks=1\nOben=2\nBreite=300\nHoehe=200\nMaximiert=false\n";
  struct Fall {
    QByteArray aus, zu;
  };
  const std::vector<Fall> faelle{{"Links=1", "Links=x"}, {"Links=1", "Links="}, {"Oben=2", "Oben=1e3"},
      {"Oben=2\n", ""}, {"Breite=300", "Breite=0"}, {"Breite=300", "Breite=-5"}, {"Breite=300", "Breite=2147483647"},
      {"Hoehe=200", "Hoehe=99999999999999999999"}, {"Hoehe=200", "Hoehe=@Variant(\\0\\0\\0\\x7f)"},
      {"Links=1", "Links=-2147483648"}, {"Maximiert=false", "Maximiert=vielleicht"}, {"Maximiert=false\n", ""},
      {"Links=1", "Links=1, 2"}, {gut, QByteArray("\x00\xff[[[=\n=\x01]frm_A", 15)}, {gut, QByteArray(100'000, '[')},
      {gut, ""}};
  for (const Fall& fall : faelle) {
    const Testordner ordner;
    richte_auf(ordner.pfad());
    ASSERT_TRUE(gut.contains(fall.aus));
    ordner.schreibe(u"App/Fenster.ini"_s, QByteArray(gut).replace(fall.aus, fall.zu));
    EXPECT_EQ(geholt(u"App"_s, u"frm_A"_s), std::nullopt) << fall.zu.left(40).toStdString();
    speichere(u"App"_s, u"frm_A"_s, Normal);
    EXPECT_EQ(geholt(u"App"_s, u"frm_A"_s), Normal) << fall.zu.left(40).toStdString();
  }
}

TEST_F(FensterCoreTest, AConfigurationThatCannotBeWrittenLosesOnlyThePlacementAndTellsNobody) {
  const MeldungsDoppel niemand;
  konfiguration.schreibe(u"keinOrdner"_s, "x");
  richte_auf(konfiguration.pfad(u"keinOrdner"_s));
  ::testing::internal::CaptureStderr();
  EXPECT_NO_THROW(speichere(Anwendung, u"frm_A"_s, Normal));
  EXPECT_EQ(geholt(Anwendung, u"frm_A"_s), std::nullopt);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(konfiguration.lies(u"keinOrdner"_s), "x");
}

TEST_F(FensterCoreTest, AnEmptyPlacementDoesNotReplaceAStoredOne) {
  speichere(Anwendung, u"frm_A"_s, Normal);
  speichere(Anwendung, u"frm_A"_s, {});
  EXPECT_EQ(geholt(Anwendung, u"frm_A"_s), Normal);
}

TEST_F(FensterCoreTest, AReportIsABoxWithTheWordsAndThePlaceOfTheFailure) {
  MeldungsDoppel meldungen;
  meldungen.erwarte({u"Pfad %1 nicht gefunden\n\nFehler 76 in frm_BildZuordnung.Lade_Zuordnung"_s, u"Fehler"_s,
      oberflaeche::Symbol::Kritisch, oberflaeche::Knoepfe::OK});
  core.FehlerMelden(u"frm_BildZuordnung"_s, u"Lade_Zuordnung"_s, 76, u"Pfad %1 nicht gefunden"_s, true);
}

TEST_F(FensterCoreTest, AReportThatIsNotToBeToldIsOneLineOnStandardErrorAndNoBox) {
  const MeldungsDoppel niemand;
  ::testing::internal::CaptureStderr();
  core.FehlerMelden(u"clsX"_s, u"Tu"_s, -2147217900, u"Zeile 1\r\nZeile 2"_s, false);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Fehler -2147217900 in clsX.Tu: Zeile 1 Zeile 2\n");
}

namespace {

const QRect Links{0, 0, 1000, 800};
const QRect Rechts{1000, 100, 1600, 900};

}  // namespace

TEST(EingepasstTest, WhatCanBeGraspedStaysAsItIs) {
  for (const QRect& r : {QRect(100, 100, 300, 200), QRect(0, 0, 1000, 800), QRect(900, 200, 300, 200),
           QRect(-200, 300, 300, 200), QRect(500, 760, 300, 200), QRect(1200, 100, 1600, 900)})
    EXPECT_EQ(eingepasst(r, {Links, Rechts}), r) << r.x() << ' ' << r.y();
}

TEST(EingepasstTest, WhatIsOutOfReachComesOntoTheNearestScreen) {
  struct Fall {
    QRect vorher, nachher;
  };
  const std::vector<Fall> faelle{{{-2000, 300, 300, 200}, {0, 300, 300, 200}},
      {{5000, 300, 300, 200}, {2300, 300, 300, 200}}, {{1500, 5000, 300, 200}, {1500, 800, 300, 200}},
      {{100, -5000, 300, 200}, {100, 32, 300, 200}},  // room for the title bar
      {{-260, 300, 300, 200}, {0, 300, 300, 200}},    // 40 of its 300 pixels are too few
      {{300, -20, 300, 200}, {300, 32, 300, 200}},    // its title bar is above the screen
      {{0, 100, 1200, 600}, {0, 100, 1000, 600}},     // most of it is on the left one
      {{900, 100, 1700, 3000}, {1000, 132, 1600, 868}}};
  for (const Fall& fall : faelle)
    EXPECT_EQ(eingepasst(fall.vorher, {Links, Rechts}), fall.nachher)
        << fall.vorher.x() << ' ' << fall.vorher.y() << ' ' << fall.vorher.width();
}

TEST(EingepasstTest, WithoutAScreenNothingChanges) {
  EXPECT_EQ(eingepasst({7000, 1, 2, 3}, {}), QRect(7000, 1, 2, 3));
}

RC_GTEST_PROP(EingepasstTest, AnyPlacementIsInReachAfterwardsAndIsNotMovedAgain, ()) {
  const auto ort = [] { return *rc::gen::inRange(-100'000, 100'001); };
  const auto mass = [] { return *rc::gen::inRange(1, 100'001); };
  const QRect vorher(ort(), ort(), mass(), mass());
  const QRect nachher = eingepasst(vorher, {Links, Rechts});
  RC_ASSERT(nachher == vorher || Links.contains(nachher) || Rechts.contains(nachher));
  RC_ASSERT(nachher.intersects(Links) || nachher.intersects(Rechts) || vorher.height() < 32);
  RC_ASSERT(eingepasst(nachher, {Links, Rechts}) == nachher);
}
