// The clearing of a large picture tree: how far it is, and its end on the user's wish.
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Meldungszeilen.h"
#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtGrossesAufraeumen : public WirtBilder {
 protected:
  static constexpr int Viele = 3000;

  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"DELETE FROM Bild_Zuordnungen"_s);
    for (int i = 0; i < Viele; ++i) ordner_.schreibe(u"Ablage/Belege/"_s + name(i), "x");
    Wirtsoptionen mit = optionen();
    mit.bilder = ordner_.pfad(u"Ablage"_s);
    mit.schonfrist = 0;
    oeffne(mit);
  }
  static QString name(int i) { return u"b%1.jpg"_s.arg(i, 4, 10, QChar(u'0')); }
  int uebrige() const { return static_cast<int>(QDir(ordner_.pfad(u"Ablage/Belege"_s)).entryList(QDir::Files).size()); }
  /// Clears; `darin` gets the window that is up, again and again.
  void raeume_auf(const std::function<void(QWidget&)>& darin) {
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      QWidget* vorn = QApplication::activeModalWidget();
      if (vorn && vorn->isVisible()) darin(*vorn);
    });
    takt.start(0);
    QTest::mouseClick(kind<QPushButton>(u"cmd_Aufraeumen"_s), Qt::LeftButton);
  }
  static bool ist_Fortschritt(const QWidget& fenster) { return fenster.objectName() == "Aufraeumfortschritt"_L1; }
  static QString worte(const QWidget& fenster) { return fenster.findChild<QLabel*>(u"lbl_Fortschritt"_s)->text(); }

  Testordner ordner_;
};

TEST_F(WirtGrossesAufraeumen, EscapeWhileItLooksLeavesEverythingAndAsksNothing) {
  int gezeigt = 0;
  raeume_auf([&](QWidget& fenster) {
    ASSERT_TRUE(ist_Fortschritt(fenster));
    if (gezeigt++ > 0) return;
    EXPECT_TRUE(worte(fenster).endsWith(u"von 3.000 Dateien sind geprüft."_s)) << worte(fenster).toStdString();
    EXPECT_EQ(fenster.findChild<QProgressBar*>()->maximum(), Viele);
    QTest::keyClick(&fenster, Qt::Key_Escape);
    EXPECT_EQ(worte(fenster), u"Wird abgebrochen …"_s);
    EXPECT_FALSE(fenster.findChild<QPushButton*>()->isEnabled());
  });
  EXPECT_GT(gezeigt, 0);
  EXPECT_EQ(uebrige(), Viele);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Bilderbaum: Abgebrochen; nichts ist gelöscht."_s);
}

TEST_F(WirtGrossesAufraeumen, TheButtonStopsItBehindAFileAndTheUserIsToldWhatWentAndWhatDidNot) {
  int weg = 0;
  raeume_auf([&](QWidget& fenster) {
    if (weg > 0) return;
    if (!ist_Fortschritt(fenster)) return druecke(fenster, u"cmd_Loeschen"_s);
    if (!worte(fenster).endsWith(u"aufgeräumt."_s) || uebrige() == Viele) return;
    weg = Viele - uebrige();
    QStringList geloeschte;
    QStringList andere;
    for (int i = 0; i < Viele; ++i) (i < weg ? geloeschte : andere).append(u"Belege\\"_s + name(i));
    andere.append(u"Belege\\"_s);
    meldungen_.erwarte({u"Das Aufräumen ist angehalten.\r\n\r\nIn den Papierkorb verschoben:\r\n"_s +
            meldungszeilen(geloeschte) + u"\r\n\r\nNoch da:\r\n"_s + meldungszeilen(andere),
        u"Bildzuordnung"_s, Symbol::Information, Knoepfe::OK});
    druecke(fenster, u"cmd_Abbrechen"_s);
  });
  ASSERT_GT(weg, 0);
  EXPECT_EQ(uebrige(), Viele - weg);
  EXPECT_EQ(text(u"lbl_Status"_s),
      u"Bilderbaum: Angehalten: %1 von 3001 sind in den Papierkorb verschoben; von „Belege\\%2“ an steht alles noch da."_s
          .arg(QString::number(weg), name(weg)));
}

}  // namespace
