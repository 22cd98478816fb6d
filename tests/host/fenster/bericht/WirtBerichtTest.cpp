// The way from the program's window to the report.
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "host/fenster/bericht/Berichtsfenster.h"
#include "host/fenster/bericht/Seitenansicht.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class WirtBericht : public WirtBilder {
 protected:
  QAction& aktion() const { return *fenster_->findChild<QAction*>(u"act_Bericht"_s); }
  /// Runs in the report's window once it shows its pages; the window is closed afterwards.
  void im_Bericht(std::function<void(Berichtsfenster&)> darin) {
    QObject::connect(&takt_, &QTimer::timeout, &takt_, [this, darin = std::move(darin)] {
      auto* vorn = dynamic_cast<Berichtsfenster*>(QApplication::activeModalWidget());
      if (!vorn || vorn->arbeitet() || vorn->ansicht()->seiten() == 0) return;
      if (!vorn->isActiveWindow()) return vorn->activateWindow();
      takt_.stop();
      war_offen_ = true;
      darin(*vorn);
      if (vorn->isVisible()) vorn->close();
    });
    takt_.start(0);
  }
  QTimer takt_;
  bool war_offen_ = false;
};

}  // namespace

TEST_F(WirtBericht, WithoutARecordThereIsNoReport) {
  oeffne();
  EXPECT_FALSE(aktion().isEnabled());
  im_Bericht([](Berichtsfenster&) {});
  eingaben::taste(*fenster_, Qt::Key_P, Qt::ControlModifier);
  EXPECT_FALSE(war_offen_);
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(aktion().isEnabled());
  EXPECT_TRUE(kind<QPushButton>(u"cmd_Bericht"_s)->isEnabled());
}

TEST_F(WirtBericht, TheKeyOpensTheChosenRecordsReportAndEscapeClosesIt) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  const QString vorher = text(u"lbl_Status"_s);
  im_Bericht([](Berichtsfenster& fenster) {
    EXPECT_TRUE(fenster.windowTitle().startsWith(u"Bericht – Beleg AB 24-1001 – "_s));
    EXPECT_EQ(fenster.findChild<QLabel*>(u"lbl_Seite"_s)->text(), u"Seite 1 von 2"_s);
    eingaben::taste(fenster, Qt::Key_Escape);
    EXPECT_FALSE(fenster.isVisible());
  });
  eingaben::taste(*fenster_, Qt::Key_P, Qt::ControlModifier);
  EXPECT_TRUE(war_offen_);
  EXPECT_EQ(text(u"lbl_Status"_s), vorher) << "looking at it is nothing to be told";
}

TEST_F(WirtBericht, WhatBecameOfItStandsInTheStatusBar) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  const Testordner ordner;
  const QString ziel = ordner.pfad(u"x.pdf"_s);
  im_Bericht([](Berichtsfenster& fenster) { druecke(fenster, u"cmd_Speichern"_s); });
  Berichtsfragen fragen;
  fragen.ziel = [&](QWidget*, const QString&) { return ziel; };
  fenster_->zeige_Bericht(fragen);
  EXPECT_TRUE(war_offen_);
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u": Gespeichert: "_s + ziel)) << text(u"lbl_Status"_s).toStdString();
}

TEST_F(WirtBericht, TheButtonOpensItToo) {
  oeffne();
  klicke(u"RE 24-2003"_s);
  im_Bericht([](Berichtsfenster& fenster) {
    EXPECT_TRUE(fenster.findChild<QLabel*>(u"lbl_Hinweis"_s)->text().startsWith(u"1 Bild fehlt: "_s));
  });
  QTest::mouseClick(kind<QPushButton>(u"cmd_Bericht"_s), Qt::LeftButton);
  EXPECT_TRUE(war_offen_);
}
