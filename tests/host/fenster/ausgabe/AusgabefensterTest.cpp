// The window that hands pictures out, over the program's window, driven by keys and mouse.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "host/betrieb/Einstellungsdatei.h"
#include "host/fenster/ausgabe/Ausgabefenster.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtAusgabe : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    mit_ = optionen();
    oeffne(mit_);
  }
  /// Opens the window for the chosen record with the keys and runs `darin` in it. True when one opened.
  bool oeffne_und(const std::function<void(QWidget&)>& darin) {
    bool offen = false;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      QWidget* vorn = QApplication::activeModalWidget();
      if (!vorn || vorn->objectName() != u"Ausgabefenster"_s || !vorn->isVisible()) return;
      takt.stop();
      offen = true;
      fenster_offen_ = vorn;
      vorn->activateWindow();
      EXPECT_TRUE(QTest::qWaitForWindowActive(vorn));
      darin(*vorn);
      if (vorn->isVisible()) vorn->close();
    });
    takt.start(0);
    fenster_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
    QTest::keyClick(fenster_->windowHandle(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    return offen;
  }
  template <class Widget = QWidget>
  Widget& darin(const QString& name) const {
    auto* gefunden = fenster_offen_->findChild<Widget*>(name);
    EXPECT_NE(gefunden, nullptr) << name.toStdString();
    return *gefunden;
  }
  QString meldung() const { return darin<QLabel>(u"lbl_Meldung"_s).text(); }
  void schreibe_Ziel(const QString& ziel) const {
    auto& feld = darin<QLineEdit>(u"txt_Ziel"_s);
    feld.setFocus();
    eingaben::taste(feld, Qt::Key_A, Qt::ControlModifier);
    eingaben::taste(feld, Qt::Key_Delete);
    eingaben::tippe(feld, ziel);
    EXPECT_EQ(feld.text(), ziel);
  }
  void kreuze_an(const QString& name) const {
    auto& feld = darin<QCheckBox>(name);
    eingaben::klicke(feld, QPoint(8, feld.height() / 2));
  }
  QString ziel(const QString& name) const { return ziel_.pfad(name); }
  QStringList inhalt(const QString& name) const {
    return QDir(ziel(name)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  Wirtsoptionen mit_;
  Testordner ziel_;
  QWidget* fenster_offen_ = nullptr;
};

}  // namespace

TEST_F(WirtAusgabe, ItIsOfferedForARecordThatHasPicturesOnly) {
  const auto erlaubt = [this] {
    EXPECT_EQ(kind<QAction>(u"act_Ausgeben"_s)->isEnabled(), kind<QPushButton>(u"cmd_Ausgeben"_s)->isEnabled());
    return kind<QAction>(u"act_Ausgeben"_s)->isEnabled();
  };
  EXPECT_FALSE(erlaubt());
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(erlaubt());
  klicke(u"AN 24-3005"_s);
  EXPECT_FALSE(erlaubt());
  EXPECT_FALSE(oeffne_und([](QWidget&) {}));
}

TEST_F(WirtAusgabe, TheFolderIsWrittenAndToldInTheStatusBar) {
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget&) {
    EXPECT_EQ(meldung(), u"4 Bilder im Ordner"_s);
    EXPECT_TRUE(darin<QLineEdit>(u"txt_Ziel"_s).text().endsWith(u"/AB 24-1001"_s));
    EXPECT_FALSE(darin<QCheckBox>(u"chk_Ort"_s).isChecked());
    schreibe_Ziel(ziel(u"aus"_s));
    kreuze_an(u"chk_Texte"_s);
    eingaben::taste(*fenster_offen_, Qt::Key_Return);
    EXPECT_FALSE(fenster_offen_->isVisible());
  }));
  EXPECT_EQ(inhalt(u"aus"_s).filter(u".jpg"_s).size(), 4);
  EXPECT_FALSE(inhalt(u"aus"_s).filter(u".txt"_s).isEmpty());
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u": 4 Bilder ausgegeben nach „%1“."_s.arg(ziel(u"aus"_s))))
      << text(u"lbl_Status"_s).toStdString();
  EXPECT_TRUE(text(u"lbl_Status"_s).startsWith(u"Beleg AB 24-1001"_s));
}

TEST_F(WirtAusgabe, AMissingPictureIsNamedInABox) {
  klicke(u"RE 24-2003"_s);
  meldungen_.erwarte(
      {u"Nicht ausgegeben:\r\n„Belege\\24-2003\\Fliesen_0820240305_100000.jpg“: Die Datei fehlt in der "
       "Bildablage."_s,
          u"Bilder ausgeben"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_TRUE(oeffne_und([&](QWidget&) {
    schreibe_Ziel(ziel(u"aus.zip"_s));
    EXPECT_EQ(meldung(), u"4 Bilder in einer ZIP-Datei"_s);
    eingaben::klicke(darin(u"cmd_Ausgeben"_s));
  }));
  EXPECT_TRUE(ziel_.vorhanden(u"aus.zip"_s));
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u" NICHT ausgegeben: 1."_s));
}

TEST_F(WirtAusgabe, WhatIsInTheWayIsToldAndTheWindowStays) {
  ziel_.schreibe(u"aus.zip"_s, "alt");
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget& fenster) {
    schreibe_Ziel(ziel(u"aus.zip"_s));
    eingaben::klicke(darin(u"cmd_Ausgeben"_s));
    EXPECT_TRUE(fenster.isVisible());
    EXPECT_EQ(meldung(), u"„%1“ gibt es schon; es ist nichts ausgegeben."_s.arg(ziel(u"aus.zip"_s)));
    EXPECT_TRUE(darin(u"cmd_Ausgeben"_s).isEnabled());
    schreibe_Ziel({});
    EXPECT_FALSE(darin(u"cmd_Ausgeben"_s).isEnabled());
    eingaben::taste(fenster, Qt::Key_Escape);
    EXPECT_FALSE(fenster.isVisible());
  }));
  EXPECT_EQ(ziel_.lies(u"aus.zip"_s), "alt");
}

TEST_F(WirtAusgabe, OnlyMarkedPicturesCountWhereThatIsChosen) {
  sql(u"UPDATE Bild_Zuordnungen SET Druckkennzeichen = '0000000000' WHERE Key2 = '24-1001'"_s);
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget&) {
    EXPECT_TRUE(darin(u"cmd_Ausgeben"_s).isEnabled());
    kreuze_an(u"chk_Gekennzeichnete"_s);
    EXPECT_EQ(meldung(), u"Kein Bild des Vorgangs ist zum Drucken gekennzeichnet."_s);
    EXPECT_FALSE(darin(u"cmd_Ausgeben"_s).isEnabled());
    kreuze_an(u"chk_Gekennzeichnete"_s);
    EXPECT_TRUE(darin(u"cmd_Ausgeben"_s).isEnabled());
  }));
}

TEST_F(WirtAusgabe, StoppedItLeavesNothingAndTheWindowStays) {
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget& fenster) {
    schreibe_Ziel(ziel(u"neu/aus"_s));
    // Runs while it writes, as soon as it lets events in.
    QTimer::singleShot(0, &fenster, [&] {
      EXPECT_FALSE(darin(u"txt_Ziel"_s).isEnabled());
      EXPECT_FALSE(darin(u"cmd_Ausgeben"_s).isEnabled());
      eingaben::klicke(darin(u"cmd_Abbrechen"_s));
    });
    darin<QPushButton>(u"cmd_Ausgeben"_s).click();
    EXPECT_TRUE(fenster.isVisible());
    EXPECT_EQ(meldung(), u"Abgebrochen; es ist nichts ausgegeben."_s);
    EXPECT_FALSE(ziel_.vorhanden(u"neu"_s));
    // Once more, to its end.
    eingaben::klicke(darin(u"cmd_Ausgeben"_s));
    EXPECT_FALSE(fenster.isVisible());
  }));
  EXPECT_EQ(inhalt(u"neu/aus"_s).size(), 4);
}

TEST_F(WirtAusgabe, TheTargetIsAskedForByTheButtons) {
  QStringList gefragt;
  const Zielwahl wahl{[&](QWidget*, const QString& anfang) {
    gefragt.append(anfang);
    return ziel(u"stick"_s);
                      },
      [&](QWidget*, const QString& anfang) {
    gefragt.append(anfang);
    return ziel(u"paket"_s);
  }};
  klicke(u"AB 24-1001"_s);
  QTimer::singleShot(0, fenster_.get(), [&] {
    fenster_offen_ = QApplication::activeModalWidget();
    ASSERT_NE(fenster_offen_, nullptr);
    schreibe_Ziel(u"/x/y"_s);
    eingaben::klicke(darin(u"cmd_Ordner"_s));
    EXPECT_EQ(darin<QLineEdit>(u"txt_Ziel"_s).text(), ziel(u"stick/AB 24-1001"_s));
    eingaben::klicke(darin(u"cmd_Zip"_s));
    EXPECT_EQ(darin<QLineEdit>(u"txt_Ziel"_s).text(), ziel(u"paket.zip"_s));
    fenster_offen_->close();
  });
  fenster_->gib_Bilder_aus(wahl);
  EXPECT_EQ(gefragt, (QStringList{u"/x"_s, ziel(u"stick/AB 24-1001.zip"_s)}));
}

TEST_F(WirtAusgabe, ChoicesAreKeptButNeverThatAPlaceGoesWithThem) {
  mit_.merken = true;
  Einstellungsdatei(u"Ausgabe"_s).clear();
  oeffne(mit_);
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget&) {
    schreibe_Ziel(ziel(u"aus.zip"_s));
    for (const QString& name : {u"chk_Texte"_s, u"chk_Ort"_s}) kreuze_an(name);
    eingaben::klicke(darin(u"cmd_Ausgeben"_s));
  }));
  ASSERT_TRUE(ziel_.vorhanden(u"aus.zip"_s));
  EXPECT_TRUE(oeffne_und([&](QWidget&) {
    EXPECT_EQ(darin<QLineEdit>(u"txt_Ziel"_s).text(), ziel(u"AB 24-1001.zip"_s));
    EXPECT_TRUE(darin<QCheckBox>(u"chk_Texte"_s).isChecked());
    EXPECT_FALSE(darin<QCheckBox>(u"chk_Gekennzeichnete"_s).isChecked());
    EXPECT_FALSE(darin<QCheckBox>(u"chk_Ort"_s).isChecked());
  }));
}

TEST_F(WirtAusgabe, TheTabulatorWalksFromTheTargetToTheButtonsAndEachHasItsKey) {
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(oeffne_und([&](QWidget& fenster) {
    QStringList weg;
    for (int i = 0; i < 8; ++i) {
      weg.append(fenster.focusWidget()->objectName());
      eingaben::taste(fenster, Qt::Key_Tab);
    }
    EXPECT_EQ(weg,
        (QStringList{u"txt_Ziel"_s, u"cmd_Ordner"_s, u"cmd_Zip"_s, u"chk_Texte"_s, u"chk_Gekennzeichnete"_s,
            u"chk_Ort"_s, u"cmd_Ausgeben"_s, u"cmd_Abbrechen"_s}));
    for (const auto& [taste, name] : {std::pair{Qt::Key_T, u"chk_Texte"_s},
             std::pair{Qt::Key_D, u"chk_Gekennzeichnete"_s}, std::pair{Qt::Key_G, u"chk_Ort"_s}}) {
      const auto& feld = darin<QCheckBox>(name);
      eingaben::taste(fenster, taste, Qt::AltModifier);
      // The box is seen to go down first.
      EXPECT_TRUE(QTest::qWaitFor([&feld] { return feld.isChecked(); })) << name.toStdString();
    }
    EXPECT_EQ(darin(u"txt_Ziel"_s).accessibleName(), u"Ordner oder ZIP-Datei"_s);
    EXPECT_EQ(darin(u"bar_Fortschritt"_s).accessibleName(), u"Fortschritt"_s);
  }));
}

TEST_F(WirtAusgabe, WithoutThePictureRootItDoesNotOpen) {
  mit_.bilder = u"/gibt/es/nicht"_s;
  oeffne(mit_);
  klicke(u"AB 24-1001"_s);
  meldungen_.erwarte({u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen."_s, u"Bilder ausgeben"_s,
      Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_FALSE(oeffne_und([](QWidget&) {}));
}
