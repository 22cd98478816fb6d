// The report's window: what its choices do to the pages, what it tells, what it remembers, its keys.
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "host/bericht/Berichtskopf.h"
#include "host/fenster/bericht/Berichtseinstellung.h"
#include "tests/host/fenster/bericht/Berichtsaufbau.h"
#include "tests/support/Bilddatei.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fensterdoppel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Berichtsfenstertest : public Berichtsaufbau {
 protected:
  void waehle_ohne_Warten(const QString& feld, int eintrag) const {
    auto& auswahl = kind<QComboBox>(feld);
    auswahl.setFocus();
    taste(Qt::Key_Home);
    for (int i = 0; i < eintrag; ++i) taste(Qt::Key_Down);
  }
};

}  // namespace

TEST_F(Berichtsfenstertest, TheNumberOfPicturesOnAPageChangesThePagesAtOnce) {
  nimm_viele(12);
  oeffne();
  EXPECT_EQ(fenster_->windowTitle(), u"Bericht – Beleg AB 24-1001 – Bäckerei Huber, Freiburg"_s);
  EXPECT_EQ(stand(), u"Seite 1 von 6"_s);
  EXPECT_EQ(hinweis(), QString());
  for (const auto& [je_Seite, seiten] :
      {std::pair{u"1"_s, 12}, std::pair{u"4"_s, 3}, std::pair{u"6"_s, 2}, std::pair{u"2"_s, 6}}) {
    waehle(u"cbo_JeSeite"_s, je_Seite);
    EXPECT_EQ(ansicht().seiten(), seiten) << je_Seite.toStdString();
    EXPECT_TRUE(stand().endsWith(u" von %1"_s.arg(seiten))) << stand().toStdString();
  }
}

TEST_F(Berichtsfenstertest, ThePictureInSightStaysInSightWhenThePagesChange) {
  nimm_viele(12);
  oeffne();
  ansicht().setFocus();
  taste(Qt::Key_End);
  warte();
  EXPECT_EQ(stand(), u"Seite 6 von 6"_s);
  waehle(u"cbo_JeSeite"_s, u"1"_s);
  EXPECT_EQ(stand(), u"Seite 11 von 12"_s);
  waehle(u"cbo_JeSeite"_s, u"4"_s);
  EXPECT_EQ(stand(), u"Seite 3 von 3"_s);
}

TEST_F(Berichtsfenstertest, TheMarkedPicturesAloneAreShownUntilAllAreWanted) {
  nimm(u"eins"_s, u"gedruckt"_s);
  nimm(u"zwei"_s, u"nicht gedruckt"_s, foto(), u"0000"_s);
  oeffne();
  EXPECT_TRUE(texte().contains(u"gedruckt"_s));
  EXPECT_FALSE(texte().contains(u"nicht gedruckt"_s));
  kreuze(u"chk_Alle"_s);
  EXPECT_TRUE(texte().contains(u"nicht gedruckt"_s));
  kreuze(u"chk_Alle"_s);
  EXPECT_FALSE(texte().contains(u"nicht gedruckt"_s));
}

TEST_F(Berichtsfenstertest, InfoAndFileNameAndDateStandBelowThePicturesOnlyOnDemand) {
  nimm(u"kessel"_s, u"Kessel"_s);
  ablage_.schreibe(u"Belege/1/kesseljpg.txt"_s, "Baujahr 1987");
  oeffne();
  for (const auto& [haken, wort] :
      {std::pair{u"chk_Info"_s, u"Baujahr 1987"_s}, std::pair{u"chk_Dateiname"_s, u"kessel.jpg"_s}}) {
    EXPECT_FALSE(texte().contains(wort));
    kreuze(haken);
    EXPECT_TRUE(texte().contains(wort)) << texte().join(u'|').toStdString();
    kreuze(haken);
    EXPECT_FALSE(texte().contains(wort));
  }
}

TEST_F(Berichtsfenstertest, WhatIsTypedIntoTheHeadStandsOnTheFirstPage) {
  nimm(u"kessel"_s);
  oeffne();
  eingaben::tippe(kind(u"txt_Zeile1"_s), u"Müller Haustechnik"_s);
  EXPECT_FALSE(texte().contains(u"Müller Haustechnik"_s)) << "not with every letter";
  EXPECT_TRUE(QTest::qWaitFor([&] { return texte().contains(u"Müller Haustechnik"_s); }));
  eingaben::tippe(kind(u"txt_Zeile2"_s), u"Talstraße 12"_s);
  taste(Qt::Key_Tab);
  EXPECT_TRUE(texte().contains(u"Talstraße 12"_s)) << "leaving the line need not be waited for";
}

TEST_F(Berichtsfenstertest, TheMarkIsChosenShownAndTakenAwayAgain) {
  nimm(u"kessel"_s);
  const QString zeichen = ordner_.schreibe(u"zeichen.png"_s, bilddatei({200, 100}, Qt::green, "PNG"));
  Berichtsfragen fragen;
  QString bisher = u"?"_s;
  QString antwort = zeichen;
  fragen.zeichen = [&](QWidget*, const QString& alt) {
    bisher = alt;
    return antwort;
  };
  oeffne(fragen);
  EXPECT_FALSE(ansicht().plan().front().zeichen);
  EXPECT_FALSE(kind(u"cmd_OhneZeichen"_s).isEnabled());
  druecke(u"cmd_Zeichen"_s);
  warte();
  EXPECT_EQ(bisher, QString());
  ASSERT_TRUE(ansicht().plan().front().zeichen);
  EXPECT_EQ(ansicht().bericht().kopf.zeichen, zeichen);
  antwort.clear();
  druecke(u"cmd_Zeichen"_s);
  EXPECT_EQ(bisher, zeichen);
  EXPECT_TRUE(ansicht().plan().front().zeichen) << "giving up changes nothing";
  druecke(u"cmd_OhneZeichen"_s);
  EXPECT_FALSE(ansicht().plan().front().zeichen);
}

TEST_F(Berichtsfenstertest, APlaceIsGivenAwayOnlyWithOriginals) {
  nimm(u"kessel"_s);
  oeffne();
  EXPECT_FALSE(kind(u"chk_Ort"_s).isEnabled());
  waehle(u"cbo_Dichte"_s, u"Originale"_s);
  EXPECT_TRUE(kind(u"chk_Ort"_s).isEnabled());
  waehle(u"cbo_Dichte"_s, u"E-Mail (150 dpi)"_s);
  EXPECT_FALSE(kind(u"chk_Ort"_s).isEnabled());
}

// ── What is wrong is told ───────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Berichtsfenstertest, MissingPicturesAreNamedWithTheirReasonAboveThePages) {
  nimm(u"kessel"_s, {}, {});
  nimm(u"bad"_s, {}, "kein Bild");
  nimm(u"dach"_s);
  oeffne();
  EXPECT_EQ(hinweis(), u"2 Bilder fehlen: kessel.jpg: Die Datei fehlt. bad.jpg: Die Datei ist kein lesbares Bild."_s);
  EXPECT_TRUE(kind(u"cmd_Speichern"_s).isEnabled()) << "the report is made all the same";
  for (int i = 0; i < 4; ++i) nimm(u"weg%1"_s.arg(i), {}, {});
  oeffne();
  EXPECT_TRUE(hinweis().endsWith(u"weg0.jpg: Die Datei fehlt. … und 3 weitere"_s)) << hinweis().toStdString();
}

TEST_F(Berichtsfenstertest, ARecordWithoutMarkedPicturesSaysSo) {
  nimm(u"kessel"_s, {}, foto(), u"0000"_s);
  oeffne();
  EXPECT_EQ(ansicht().seiten(), 1);
  EXPECT_EQ(hinweis(),
      u"Zu diesem Vorgang ist kein Bild zum Drucken gekennzeichnet. „Alle Bilder statt der gekennzeichneten“ nimmt sie trotzdem auf."_s);
  kreuze(u"chk_Alle"_s);
  EXPECT_EQ(hinweis(), QString());
}

TEST_F(Berichtsfenstertest, ARecordWithoutPicturesSaysSo) {
  oeffne();
  EXPECT_EQ(stand(), u"Seite 1 von 1"_s);
  EXPECT_EQ(hinweis(), u"Zu diesem Vorgang gibt es keine Bilder."_s);
}

TEST_F(Berichtsfenstertest, AnUnreachablePictureRootIsToldBeforeThePictures) {
  nimm(u"kessel"_s);
  optionen_.bilder = u"/gibt/es/nicht"_s;
  oeffne();
  EXPECT_EQ(hinweis(),
      u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen. 1 Bild fehlt: kessel.jpg: Die Datei fehlt."_s);
}

TEST_F(Berichtsfenstertest, ADatabaseThatDoesNotAnswerIsToldAndAskedAgainWithTheNextChoice) {
  nimm(u"kessel"_s);
  platz_ = std::make_unique<Arbeitsplatz>(optionen_);
  nimm_Tabelle_weg();
  oeffne();
  EXPECT_TRUE(hinweis().contains(u"no such table"_s)) << hinweis().toStdString();
  EXPECT_EQ(ansicht().seiten(), 0);
  EXPECT_EQ(stand(), QString());
  for (const QString& knopf : {u"cmd_Speichern"_s, u"cmd_Drucken"_s, u"cmd_Senden"_s})
    EXPECT_FALSE(kind(knopf).isEnabled()) << knopf.toStdString();
  gib_Tabelle_zurueck();
  kreuze(u"chk_Alle"_s);
  EXPECT_EQ(hinweis(), QString());
  EXPECT_EQ(stand(), u"Seite 1 von 1"_s);
  EXPECT_TRUE(kind(u"cmd_Speichern"_s).isEnabled());
}

// ── What is remembered ──────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Berichtsfenstertest, ChoicesAndHeadAreRememberedWhereTheProgramRemembers) {
  nimm(u"kessel"_s);
  optionen_.merken = true;
  oeffne();
  waehle(u"cbo_JeSeite"_s, u"4"_s);
  waehle(u"cbo_Dichte"_s, u"Originale"_s);
  for (const QString& haken : {u"chk_Alle"_s, u"chk_Info"_s, u"chk_Dateiname"_s, u"chk_Aufnahmedatum"_s, u"chk_Ort"_s})
    kreuze(haken);
  eingaben::tippe(kind(u"txt_Zeile1"_s), u"Müller, Bad & Wärme"_s);
  taste(Qt::Key_Escape);
  EXPECT_FALSE(fenster_->isVisible());
  EXPECT_EQ(berichtseinstellung::wahl(), (Berichtswahl{4, Dichte::Original, true, true, true, true, true}));
  EXPECT_EQ(Berichtskopf::gemerkter().zeilen, QStringList{u"Müller, Bad & Wärme"_s});
  oeffne();
  EXPECT_EQ(kind<QComboBox>(u"cbo_JeSeite"_s).currentText(), u"4"_s);
  EXPECT_EQ(kind<QComboBox>(u"cbo_Dichte"_s).currentText(), u"Originale"_s);
  EXPECT_TRUE(kind<QCheckBox>(u"chk_Ort"_s).isChecked());
  EXPECT_TRUE(texte().contains(u"Müller, Bad & Wärme"_s));
  EXPECT_TRUE(texte().contains(u"kessel.jpg"_s));
}

TEST_F(Berichtsfenstertest, WhereTheProgramRemembersNothingNothingIsWritten) {
  nimm(u"kessel"_s);
  oeffne();
  waehle(u"cbo_JeSeite"_s, u"6"_s);
  taste(Qt::Key_Escape);
  EXPECT_FALSE(ordner_.vorhanden(u"einstellungen"_s));
  EXPECT_EQ(berichtseinstellung::wahl(), Berichtswahl());
}

TEST_F(Berichtsfenstertest, AChoiceThatThereIsNotIsTheUsualOne) {
  ordner_.schreibe(u"einstellungen/bildzuordnung/Berichtswahl.ini"_s, "[General]\nje_Seite=3\ndpi=77\nalle=ja\n");
  EXPECT_EQ(berichtseinstellung::wahl().je_Seite, 2);
  EXPECT_EQ(berichtseinstellung::wahl().dichte, Dichte::Druck);
}

TEST_F(Berichtsfenstertest, ItStandsWhereItStoodLast) {
  nimm(u"kessel"_s);
  Fensterdoppel doppel;
  doppel.lage = Fensterlage{QRect(20, 30, 900, 700), false};
  oeffne();
  EXPECT_EQ(doppel.wiederhergestellt, u"bildzuordnung/Berichtsfenster"_s);
  EXPECT_EQ(fenster_->size(), QSize(900, 700));
  fenster_->resize(950, 720);
  taste(Qt::Key_Escape);
  EXPECT_EQ(doppel.gespeichert, u"bildzuordnung/Berichtsfenster"_s);
  EXPECT_EQ(doppel.gespeicherte_Lage->Rechteck.size(), QSize(950, 720));
}

// ── Keys ────────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Berichtsfenstertest, TheTabulatorGoesFromThePagesThroughTheChoicesToTheButtons) {
  nimm(u"kessel"_s);
  oeffne();
  QStringList weg;
  for (int i = 0; i < 40 && fenster_->focusWidget() && (weg.isEmpty() || fenster_->focusWidget() != &ansicht()); ++i) {
    weg.append(fenster_->focusWidget()->objectName());
    taste(Qt::Key_Tab);
  }
  QStringList soll{u"Seitenansicht"_s, u"cmd_Seitenbreite"_s, u"cmd_GanzeSeite"_s, u"cmd_Kleiner"_s, u"cmd_Groesser"_s,
      u"cbo_JeSeite"_s, u"cbo_Dichte"_s, u"chk_Alle"_s, u"chk_Info"_s, u"chk_Dateiname"_s, u"chk_Aufnahmedatum"_s,
      u"txt_Zeile1"_s, u"txt_Zeile2"_s, u"txt_Zeile3"_s, u"cmd_Zeichen"_s, u"cmd_Speichern"_s, u"cmd_Drucken"_s};
  if (kind(u"cmd_Senden"_s).isEnabled()) soll.append(u"cmd_Senden"_s);
  EXPECT_EQ(weg, soll + QStringList{u"cmd_Schliessen"_s});
}

TEST_F(Berichtsfenstertest, KeysLeafThroughThePagesAndMakeThemLargerAndSmaller) {
  nimm_viele(6);
  oeffne();
  for (const auto& [eine, soll] : {std::pair{Qt::Key_PageDown, u"Seite 2 von 3"_s},
           {Qt::Key_PageDown, u"Seite 3 von 3"_s}, {Qt::Key_PageUp, u"Seite 2 von 3"_s},
           {Qt::Key_End, u"Seite 3 von 3"_s}, {Qt::Key_Home, u"Seite 1 von 3"_s}}) {
    taste(eine);
    EXPECT_EQ(stand(), soll);
  }
  const double ganze = ansicht().massstab();
  EXPECT_TRUE(kind<QPushButton>(u"cmd_GanzeSeite"_s).isChecked());
  taste(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(ansicht().massstab(), ganze);
  EXPECT_FALSE(kind<QPushButton>(u"cmd_GanzeSeite"_s).isChecked());
  taste(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_NEAR(ansicht().massstab(), ganze, ganze / 1000);
  druecke(u"cmd_Seitenbreite"_s);
  EXPECT_GT(ansicht().massstab(), ganze);
  EXPECT_TRUE(kind<QPushButton>(u"cmd_Seitenbreite"_s).isChecked());
  druecke(u"cmd_GanzeSeite"_s);
  EXPECT_NEAR(ansicht().massstab(), ganze, ganze / 1000);
}

TEST_F(Berichtsfenstertest, AChoiceWhileItReadsHoldsForAllPictures) {
  nimm_viele(60);
  beim_Lesen_ = [this] {
    EXPECT_TRUE(kind(u"bar_Fortschritt"_s).isVisible());
    EXPECT_FALSE(kind(u"cmd_Speichern"_s).isEnabled());
    eingaben::klicke(kind(u"chk_Dateiname"_s), QPoint(8, 8));
    eingaben::klicke(kind(u"chk_Info"_s), QPoint(8, 8));
    waehle_ohne_Warten(u"cbo_JeSeite"_s, 0);
  };
  oeffne();
  EXPECT_FALSE(beim_Lesen_);
  EXPECT_EQ(ansicht().seiten(), 60);
  EXPECT_EQ(texte().count(u"bild001.jpg"_s), 1);
  EXPECT_EQ(texte().count(u"bild060.jpg"_s), 1);
  EXPECT_FALSE(kind(u"bar_Fortschritt"_s).isVisible());
  EXPECT_TRUE(kind(u"cmd_Speichern"_s).isEnabled());
}

TEST_F(Berichtsfenstertest, ClosedWhileItReadsItCloses) {
  nimm_viele(60);
  beim_Lesen_ = [this] { taste(Qt::Key_Escape); };
  oeffne();
  EXPECT_FALSE(beim_Lesen_);
  EXPECT_FALSE(fenster_->isVisible());
  EXPECT_FALSE(fenster_->arbeitet());
  EXPECT_EQ(ansicht().seiten(), 0);
}

TEST_F(Berichtsfenstertest, ClosedWhilePicturesAreStillToBeLoadedItCloses) {
  nimm_viele(30);
  oeffne();
  waehle(u"cbo_JeSeite"_s, u"6"_s);
  ansicht().mass(Seitenansicht::Mass::Seitenbreite);
  ansicht().gehe_zu(4);
  ansicht().viewport()->repaint();
  EXPECT_TRUE(ansicht().laedt());
  kind<QComboBox>(u"cbo_JeSeite"_s).setFocus();
  taste(Qt::Key_Up);
  EXPECT_EQ(ansicht().seiten(), 8) << "the pages change while pictures are loading";
  fenster_->close();
  EXPECT_FALSE(fenster_->isVisible());
  fenster_.reset();
  QCoreApplication::processEvents();
}
