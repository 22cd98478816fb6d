// The window that takes a list in, driven by keys and mouse.
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "host/fenster/vorgaenge/Einlesefenster.h"
#include "tests/host/fenster/vorgaenge/Fensterpruefung.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Einlesefenstertest : public Fensterpruefung<Einlesefenster> {
 protected:
  void oeffne(const QByteArray& inhalt, const QString& name = u"liste.csv"_s) {
    zeige(std::make_unique<Einlesefenster>(zeichenfolge(), ordner_.schreibe(name, inhalt), nullptr));
  }
  QString befund() const { return kind<QLabel>(u"lbl_Befund"_s).text(); }
  void erwarte_Befund(const QString& worte) const {
    EXPECT_TRUE(QTest::qWaitFor([&] { return befund() == worte; }, 60'000)) << befund().toStdString();
  }
  QStringList gezeigte() const {
    QStringList liste;
    const auto& feld = kind<QListWidget>(u"lst_Zeilen"_s);
    for (int i = 0; i < feld.count(); ++i) liste.append(feld.item(i)->text());
    return liste;
  }
  /// Chooses an entry of a combo box with the keys of a user.
  void waehle(const QString& feld, const QString& eintrag) const {
    auto& auswahl = kind<QComboBox>(feld);
    auswahl.setFocus();
    QTest::keyClick(&auswahl, Qt::Key_Home);
    for (int i = 0; i < auswahl.count() && auswahl.currentText() != eintrag; ++i)
      QTest::keyClick(&auswahl, Qt::Key_Down);
    EXPECT_EQ(auswahl.currentText(), eintrag);
  }
  bool darf_einlesen() const { return kind(u"cmd_Einlesen"_s).isEnabled(); }
};

const QByteArray Zwei = "Typ1;Key1;Key2;Text\nBEL;AB;1;Kessel\nART;WP;;Pumpe\n";

QByteArray viele(int anzahl) {
  QByteArray liste = "Typ1;Key1;Key2;Text\n";
  for (int i = 0; i < anzahl; ++i) liste += "BEL;AB;" + QByteArray::number(i) + ";Kessel und Verteiler im Keller\n";
  return liste;
}

}  // namespace

TEST_F(Einlesefenstertest, TheListIsShownComparedAndTakenIn) {
  oeffne(Zwei);
  erwarte_Befund(u"Neu: 2 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  EXPECT_EQ(kind<QLabel>(u"lbl_Datei"_s).text(), u"liste.csv – CSV mit Semikolon, UTF-8"_s);
  EXPECT_TRUE(kind<QCheckBox>(u"chk_Kopfzeile"_s).isChecked());
  EXPECT_EQ(gezeigte(), (QStringList{u"Zeile 2 – neu: Beleg AB 1 – Kessel"_s, u"Zeile 3 – neu: Artikel WP – Pumpe"_s}));
  EXPECT_EQ(kind<QTableWidget>(u"tbl_Spalten"_s).item(2, 3)->text(), u"Kessel"_s);
  EXPECT_EQ(vorgaenge(), QStringList());
  eingaben::klicke(kind(u"cmd_Einlesen"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !fenster_->isVisible(); }, 60'000));
  EXPECT_EQ(fenster_->result(), QDialog::Accepted);
  EXPECT_EQ(fenster_->ergebnis(), u"Vorgänge eingelesen – Neu: 2 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  EXPECT_EQ(vorgaenge().size(), 2);
  pruefe_Index();
}

TEST_F(Einlesefenstertest, WrongLinesStandFirstAndKeepAllOutUntilTheyAreLeftOut) {
  oeffne(Zwei + "BEL;AB;;ohne\n");
  erwarte_Befund(u"Neu: 2 · geändert: 0 · gleich: 0 · falsch: 1"_s);
  EXPECT_EQ(gezeigte().first(), u"Zeile 4 – falsch: Belegnummer fehlt"_s);
  EXPECT_FALSE(darf_einlesen());
  eingaben::klicke(kind(u"chk_Auslassen"_s), QPoint(8, kind(u"chk_Auslassen"_s).height() / 2));
  EXPECT_TRUE(darf_einlesen());
  eingaben::klicke(kind(u"cmd_Einlesen"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !fenster_->isVisible(); }, 60'000));
  EXPECT_EQ(vorgaenge().size(), 2);
}

TEST_F(Einlesefenstertest, ColumnsAndKindAreChosenByHand) {
  oeffne("Nr;Was\nWP-1;Pumpe\n");
  // By place, any word is a kind and any other a number.
  erwarte_Befund(u"Neu: 2 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  eingaben::klicke(kind(u"chk_Kopfzeile"_s), QPoint(8, kind(u"chk_Kopfzeile"_s).height() / 2));
  erwarte_Befund(u"Es fehlt die Spalte Key1, der erste Teil der Nummer"_s);
  EXPECT_FALSE(darf_einlesen());
  waehle(u"cbo_Spalte1"_s, u"Key1"_s);
  erwarte_Befund(u"Es fehlt die Spalte Typ1, die Art der Vorgänge"_s);
  waehle(u"cbo_Art"_s, u"Artikel"_s);
  waehle(u"cbo_Spalte2"_s, u"Text"_s);
  erwarte_Befund(u"Neu: 1 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  EXPECT_EQ(gezeigte(), QStringList{u"Zeile 2 – neu: Artikel WP-1 – Pumpe"_s});
}

TEST_F(Einlesefenstertest, NothingNewIsNothingToTakeIn) {
  db_.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Text) VALUES ('BEL', 'AB', '1', 'Kessel')"_s);
  oeffne("Typ1;Key1;Key2;Text\nBEL;AB;1;Kessel\n");
  erwarte_Befund(u"Neu: 0 · geändert: 0 · gleich: 1 · falsch: 0"_s);
  EXPECT_FALSE(darf_einlesen());
}

TEST_F(Einlesefenstertest, AFileThatIsNoListSaysSo) {
  oeffne(
      QByteArray("\xFF\xFE"
                 "a\0",
          4));
  erwarte_Befund(u"Die Datei „%1“ ist in UTF-16 geschrieben; speichern Sie sie als CSV in UTF-8."_s.arg(
      ordner_.pfad(u"liste.csv"_s)));
  EXPECT_FALSE(darf_einlesen());
  oeffne("");
  erwarte_Befund(u"Die Liste enthält keine Vorgänge."_s);
}

TEST_F(Einlesefenstertest, TheWindowLivesWhileItWorksAndCanBeGivenUp) {
  oeffne(viele(60'000));
  erwarte_Befund(u"Neu: 60.000 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  qint64 laengste = 0;
  QElapsedTimer uhr;
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, [&] { laengste = std::max(laengste, uhr.restart()); });
  uhr.start();
  takt.start(0);
  eingaben::klicke(kind(u"cmd_Einlesen"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return kind<QProgressBar>(u"bar_Fortschritt"_s).value() > 0; }, 60'000));
  eingaben::klicke(kind(u"cmd_Abbrechen"_s));
  erwarte_Befund(u"Abgebrochen; es ist nichts übernommen."_s);
  EXPECT_TRUE(fenster_->isVisible());
  EXPECT_EQ(vorgaenge(), QStringList());
  pruefe_Index();
  EXPECT_LT(laengste, 500);
  // The window is there to try again or to close.
  eingaben::klicke(kind(u"cmd_Abbrechen"_s));
  EXPECT_FALSE(fenster_->isVisible());
}

TEST_F(Einlesefenstertest, ClosingWhileItReadsEndsTheWork) {
  oeffne(viele(60'000));
  fenster_.reset();
  EXPECT_EQ(vorgaenge(), QStringList());
}

TEST_F(Einlesefenstertest, WaitingForAnotherDeskCanBeGivenUp) {
  oeffne(Zwei);
  erwarte_Befund(u"Neu: 2 · geändert: 0 · gleich: 0 · falsch: 0"_s);
  anderer_.Execute(u"BEGIN IMMEDIATE"_s);
  eingaben::klicke(kind(u"cmd_Einlesen"_s));
  EXPECT_EQ(befund(), u"Die Vorgänge werden übernommen …"_s);
  fenster_.reset();
  anderer_.Execute(u"COMMIT"_s);
  EXPECT_EQ(vorgaenge(), QStringList());
}
