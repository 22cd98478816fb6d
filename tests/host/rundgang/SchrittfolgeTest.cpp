#include <gtest/gtest.h>

#include <QDialog>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <stdexcept>

#include "host/rundgang/Hand.h"
#include "host/rundgang/Schrittfolge.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The pump of a program with windows.
class Fensterpumpe final : public oberflaeche::Ereignispumpe {
 public:
  void verarbeite_anstehende() override { QCoreApplication::processEvents(); }
};

/// Runs the steps to their end.
void laufe(Schrittfolge& folge) {
  QEventLoop schleife;
  folge.beginne([&] { schleife.quit(); });
  schleife.exec();
}

}  // namespace

TEST(Schrittfolge, AStepComesOnlyAfterThePreviousOneTookEffect) {
  Schrittfolge folge;
  QStringList gesehen;
  int blicke = 0;
  folge.plane({u"eins"_s, [&] { gesehen.append(u"tun 1"_s); }, [&] { return ++blicke > 3; },
      [&] { gesehen.append(u"danach 1"_s); }});
  folge.plane({u"zwei"_s, [&] { gesehen.append(u"tun 2"_s); }, {}, {}});
  laufe(folge);
  EXPECT_EQ(gesehen, (QStringList{u"tun 1"_s, u"danach 1"_s, u"tun 2"_s}));
  EXPECT_TRUE(folge.durchlaufen());
  EXPECT_EQ(folge.fehlerzahl(), 0);
}

TEST(Schrittfolge, AnEffectThatFailsToComeEndsAsAFailure) {
  Schrittfolge folge(20);
  bool weiter = false;
  folge.plane({u"eins"_s, {}, [] { return false; }, {}});
  folge.plane({u"zwei"_s, [&] { weiter = true; }, {}, {}});
  laufe(folge);
  EXPECT_FALSE(weiter);
  EXPECT_FALSE(folge.durchlaufen());
  EXPECT_EQ(folge.fehlerzahl(), 1);
}

TEST(Schrittfolge, AControlThatIsStillMissingIsNoFailureYet) {
  Schrittfolge folge;
  int blicke = 0;
  folge.plane({u"eins"_s, {},
      [&] {
    if (++blicke < 3) throw std::runtime_error("fehlt noch");
    return true;
               },
      {}});
  laufe(folge);
  EXPECT_TRUE(folge.durchlaufen());
  EXPECT_EQ(folge.fehlerzahl(), 0);
}

TEST(Schrittfolge, WhatCannotBeDoneEndsAsAFailure) {
  Schrittfolge folge;
  folge.plane({u"eins"_s, [] { throw std::runtime_error("geht nicht"); }, {}, {}});
  laufe(folge);
  EXPECT_FALSE(folge.durchlaufen());
  EXPECT_EQ(folge.fehlerzahl(), 1);
}

TEST(Schrittfolge, DeviationsAreCountedAndTheWalkGoesOn) {
  Schrittfolge folge;
  folge.plane({u"eins"_s, {}, {}, [&] {
                 folge.erwarte(u"Name"_s, u"a"_s, u"b"_s);
                 folge.erwarte(u"Name"_s, u"a"_s, u"a"_s);
                 folge.erwarte(u"frei"_s, false);
               }});
  laufe(folge);
  EXPECT_TRUE(folge.durchlaufen());
  EXPECT_EQ(folge.pruefungen(), 3);
  EXPECT_EQ(folge.fehlerzahl(), 2);
}

TEST(Schrittfolge, NoLookIsTakenInTheMiddleOfAWindowsWork) {
  const auto vorige = oberflaeche::setze(std::make_shared<Fensterpumpe>());
  const auto zurueck = qScopeGuard([&] { oberflaeche::setze(std::shared_ptr(vorige)); });
  Schrittfolge folge;
  bool bei_der_Arbeit = false;
  bool zu_frueh = false;
  folge.plane({u"eins"_s,
      [&] {
    bei_der_Arbeit = true;
    QElapsedTimer uhr;
    for (uhr.start(); uhr.elapsed() < 200;) oberflaeche::ereignispumpe().verarbeite_anstehende();
    bei_der_Arbeit = false;
               },
      [] { return true; }, [&] { zu_frueh = bei_der_Arbeit; }});
  laufe(folge);
  EXPECT_TRUE(folge.durchlaufen());
  EXPECT_FALSE(zu_frueh);
}

TEST(Hand, ItTypesAndClicksLikeAUser) {
  QWidget fenster;
  fenster.resize(300, 200);
  QLineEdit feld(&fenster);
  feld.setGeometry(10, 10, 200, 30);
  QPushButton knopf(u"Los"_s, &fenster);
  knopf.setGeometry(10, 60, 100, 30);
  int klicke = 0;
  QObject::connect(&knopf, &QPushButton::clicked, [&] { ++klicke; });
  fenster.show();
  fenster.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&fenster));
  Hand hand;
  hand.klicke(feld);
  hand.tippe(u"Öl 3 m²"_s);
  hand.klicke(knopf);
  EXPECT_EQ(feld.text(), u"Öl 3 m²"_s);
  EXPECT_EQ(klicke, 1);
  // Let go beside it, the press was no click.
  hand.druecke(knopf, QPoint(5, 5));
  hand.ziehe(QPoint(150, 0));
  hand.lasse_los();
  EXPECT_EQ(klicke, 1);
}

TEST(Hand, ItDoesNotReachWhatIsCoveredDisabledOrHidden) {
  QWidget fenster;
  fenster.resize(300, 200);
  QPushButton knopf(u"Los"_s, &fenster);
  knopf.setGeometry(10, 10, 100, 30);
  QWidget decke(&fenster);
  decke.setGeometry(0, 0, 300, 100);
  fenster.show();
  Hand hand;
  EXPECT_THROW(hand.klicke(knopf), std::runtime_error);
  decke.hide();
  EXPECT_NO_THROW(hand.klicke(knopf));
  knopf.setEnabled(false);
  EXPECT_THROW(hand.klicke(knopf), std::runtime_error);
  knopf.hide();
  EXPECT_THROW(hand.klicke(knopf), std::runtime_error);
}

TEST(Hand, BehindAModalWindowItHasNoEffect) {
  QWidget fenster;
  fenster.resize(300, 200);
  QPushButton knopf(u"Los"_s, &fenster);
  int klicke = 0;
  QObject::connect(&knopf, &QPushButton::clicked, [&] { ++klicke; });
  fenster.show();
  QDialog davor(&fenster);
  davor.setModal(true);
  davor.show();
  Hand().klicke(knopf);
  EXPECT_EQ(klicke, 0);
  davor.hide();
  Hand().klicke(knopf);
  EXPECT_EQ(klicke, 1);
}
