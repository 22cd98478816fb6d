#include <csignal>

#include "tests/host/dialog/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void schicke(const QProcess& prozess, int signal) {
  // Without a process it would go to our own group.
  ASSERT_GT(prozess.processId(), 0);
  ASSERT_EQ(::kill(static_cast<pid_t>(prozess.processId()), signal), 0);
}

}  // namespace

using Dialogsignal = Dialogtest;

TEST_F(Dialogsignal, ToldToEndTheDialogClosesWithoutSavingAndSaysSo) {
  const QStringList vorher = zeilen();
  const QString getippt = u"fenster frm_BildZuordnung|klicke txt_BildText|tippe ungespeichert|sage"_s;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    const auto prozess = beginne(QStringList{u"zuordnung"_s, u"--json"_s} + beleg(), getippt, u"Fenster: frm_Bild"_s);
    schicke(*prozess, signal);
    const Dialogende ende = beende(*prozess);
    EXPECT_EQ(ende.code, 1) << signal << ende.fehlerausgabe.toStdString();
    EXPECT_TRUE(ende.json()[u"abgebrochen"_s].toBool());
    EXPECT_FALSE(ende.json()[u"gespeichert"_s].toBool());
    EXPECT_TRUE(ende.json()[u"text"_s].toString().startsWith(u"Von außen beendet. "_s));
    EXPECT_EQ(zeilen(), vorher);
  }
}

TEST_F(Dialogsignal, EveryWindowAboveTheDialogClosesToo) {
  const auto prozess = beginne(QStringList{u"zuordnung"_s, u"--json"_s} + beleg(),
      u"fenster frm_BildZuordnung|klicke SSC_BilderLaden|fenster frm_BilderSuchen|sage"_s, u"Fenster: frm_BilderS"_s);
  schicke(*prozess, SIGTERM);
  EXPECT_EQ(beende(*prozess).code, 1);
}

TEST_F(Dialogsignal, AQuestionCountsAsAnsweredWithNo) {
  sql(u"update Bild_Zuordnungen set BildPfad = 'Fehlt' where Key2 = '24-1001' and Typ1 = 'BEL'"_s);
  const auto prozess =
      beginne(QStringList{u"zuordnung"_s, u"--json"_s} + beleg(), u"fenster Meldung|sage"_s, u"Trotzdem öffnen?"_s);
  schicke(*prozess, SIGTERM);
  const Dialogende ende = beende(*prozess);
  EXPECT_EQ(ende.code, 1);
  EXPECT_FALSE(ende.json()[u"geoeffnet"_s].toBool());
  EXPECT_EQ(zeilen().size(), 4);
}

TEST_F(Dialogsignal, WhatTheCallerHasSwitchedOffStaysOff) {
  QProcess huelle;
  QProcessEnvironment umgebung = this->umgebung();
  umgebung.insert(u"KVO_FUEHRUNG"_s, u"fenster frm_BildZuordnung|sage"_s);
  huelle.setProcessEnvironment(umgebung);
  QStringList worte{u"-c"_s, u"trap '' HUP; exec \"$@\""_s, u"sh"_s, QStringLiteral(DIALOG_PROGRAMM), u"dialog"_s,
      u"zuordnung"_s, u"--json"_s};
  huelle.start(u"sh"_s, worte + beleg());
  huelle.setReadChannel(QProcess::StandardError);
  while (!huelle.canReadLine()) ASSERT_TRUE(huelle.waitForReadyRead(60'000));
  schicke(huelle, SIGHUP);
  EXPECT_FALSE(huelle.waitForFinished(300));
  schicke(huelle, SIGTERM);
  EXPECT_EQ(beende(huelle).code, 1);
}
