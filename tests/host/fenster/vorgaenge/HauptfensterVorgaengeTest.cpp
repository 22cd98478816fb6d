// Making, changing and taking in records from the program's window, and its first start.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// Runs in the next modal window of that name, which is closed afterwards if it is still there.
class Im_Fenster {
 public:
  Im_Fenster(const QString& name, std::function<void(QWidget&)> darin) {
    QObject::connect(&takt_, &QTimer::timeout, &takt_, [this, name, darin = std::move(darin)] {
      QWidget* vorn = QApplication::activeModalWidget();
      if (!vorn || vorn->objectName() != name || !vorn->isVisible()) return;
      // A window without a window manager gets its keys only once it is told to.
      if (!vorn->isActiveWindow()) return vorn->activateWindow();
      takt_.stop();
      war_offen = true;
      darin(*vorn);
      if (vorn->isVisible()) vorn->close();
    });
    takt_.start(0);
  }
  bool war_offen = false;

 private:
  QTimer takt_;
};

class WirtVorgaenge : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"DELETE FROM Kunden WHERE Kundennummer NOT IN ('10001', '10002', '10003')"_s);
  }
  void taste(Qt::Key eine, Qt::KeyboardModifiers dazu = {}) const { eingaben::taste(*fenster_, eine, dazu); }
  QString gewaehlter() const {
    const Vorgang* vorgang = fenster_->liste()->gewaehlt();
    return vorgang ? vorgang->nummer : QString();
  }
};

void tippe(QWidget& fenster, const QString& feld, const QString& text) {
  auto* ziel = fenster.findChild<QWidget*>(feld);
  ASSERT_NE(ziel, nullptr) << feld.toStdString();
  eingaben::tippe(*ziel, text);
}

}  // namespace

TEST_F(WirtVorgaenge, ANewRecordIsMadeWithKeysAndChosen) {
  oeffne();
  Im_Fenster neu(u"Vorgangsfenster"_s, [](QWidget& fenster) {
    tippe(fenster, u"txt_Key1"_s, u"LS"_s);
    tippe(fenster, u"txt_Key2"_s, u"26-9"_s);
    tippe(fenster, u"txt_Text"_s, u"Lieferung"_s);
    druecke(fenster, u"cmd_Speichern"_s);
  });
  taste(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(neu.war_offen);
  warte();
  EXPECT_EQ(gewaehlter(), u"LS 26-9"_s);
  EXPECT_EQ(spalte(u"LS 26-9"_s, 1), u"Lieferung"_s);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Beleg LS 26-9 ist angelegt"_s);
}

TEST_F(WirtVorgaenge, AnotherDeskFindsItAtItsNextQuestion) {
  oeffne();
  Hauptfenster anderes(optionen(), dialog());
  anderes.beginne();
  anderes.show();
  ASSERT_TRUE(QTest::qWaitFor([&] { return anderes.ruht(); }, 60'000));
  fenster_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
  Im_Fenster neu(u"Vorgangsfenster"_s, [](QWidget& fenster) {
    tippe(fenster, u"txt_Key1"_s, u"LS"_s);
    tippe(fenster, u"txt_Key2"_s, u"26-10"_s);
    druecke(fenster, u"cmd_Speichern"_s);
  });
  taste(Qt::Key_N, Qt::ControlModifier);
  EXPECT_FALSE(anderes.waehle(u"LS 26-10"_s));
  anderes.lies_neu();
  ASSERT_TRUE(QTest::qWaitFor([&] { return anderes.ruht(); }, 60'000));
  EXPECT_TRUE(anderes.waehle(u"LS 26-10"_s));
}

TEST_F(WirtVorgaenge, ARecordWithPicturesIsChangedButKeepsItsNumber) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  QString worte;
  Im_Fenster offen(u"Vorgangsfenster"_s, [&](QWidget& fenster) {
    worte = fenster.findChild<QLabel*>(u"lbl_Pruefung"_s)->text();
    EXPECT_FALSE(fenster.findChild<QWidget*>(u"txt_Key2"_s)->isEnabled());
    tippe(fenster, u"txt_Text"_s, u"Eilig"_s);
    druecke(fenster, u"cmd_Speichern"_s);
  });
  taste(Qt::Key_F2);
  EXPECT_TRUE(offen.war_offen);
  EXPECT_EQ(worte, u"Der Vorgang hat 4 Bilder; Art und Nummer bleiben."_s);
  EXPECT_EQ(spalte(u"AB 24-1001"_s, 1), u"Eilig · Bäckerei Huber, Freiburg · Projekt P-24-07"_s);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Beleg AB 24-1001 ist gespeichert"_s);
  sql(u"UPDATE Vorgaenge SET Text = '', Stand = NULL WHERE Nr = 1"_s);
}

TEST_F(WirtVorgaenge, DeletingFromTheListAsksAndTheFilterKeepsItsKey) {
  sql(u"INSERT INTO Vorgaenge (Typ1, Key1, Stand) VALUES ('ART', 'WEG-1', '2026-01-01 00:00:00')"_s);
  oeffne();
  klicke(u"WEG-1"_s);
  meldungen_.erwarte({u"Soll dieser Vorgang gelöscht werden?\r\n\r\nArtikel WEG-1"_s, u"Vorgang löschen"_s,
                         Symbol::Frage, Knoepfe::JaNein},
      Antwort::Ja);
  baum()->setFocus();
  taste(Qt::Key_Delete);
  EXPECT_FALSE(index(u"WEG-1"_s).isValid());
  EXPECT_EQ(text(u"lbl_Status"_s), u"Artikel WEG-1 ist gelöscht"_s);
  // Within the filter the key asks nothing.
  kind<QLineEdit>(u"txt_Filter"_s)->setFocus();
  taste(Qt::Key_Delete);
}

TEST_F(WirtVorgaenge, PicturesOfARecordThatIsKeptAreShown) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  meldungen_.erwarte({u"Beleg AB 24-1001 hat 4 Bilder und wird nicht gelöscht.\r\n\r\nBilder anzeigen?"_s,
                         u"Vorgang löschen"_s, Symbol::Frage, Knoepfe::JaNein},
      Antwort::Ja);
  baum()->setFocus();
  taste(Qt::Key_Delete);
  ASSERT_EQ(aufrufe_.size(), 1);
  EXPECT_TRUE(aufrufe_.first().nur_Anzeige);
}

TEST_F(WirtVorgaenge, AListIsTakenInFromTheWindow) {
  const Testordner ordner;
  const QString datei = ordner.schreibe(u"liste.csv"_s, "Typ1;Key1;Key2;Text\nBEL;LS;26-77;aus der Liste\n");
  oeffne();
  Im_Fenster offen(u"Einlesefenster"_s, [](QWidget& fenster) {
    auto* knopf = fenster.findChild<QPushButton*>(u"cmd_Einlesen"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return knopf->isEnabled(); }, 60'000));
    druecke(fenster, u"cmd_Einlesen"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fenster.isVisible(); }, 60'000));
  });
  fenster_->lies_Liste_ein([&](QWidget*) { return datei; });
  EXPECT_TRUE(offen.war_offen);
  EXPECT_EQ(spalte(u"LS 26-77"_s, 1), u"aus der Liste"_s);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Vorgänge eingelesen – Neu: 1 · geändert: 0 · gleich: 0 · falsch: 0"_s);
}

TEST_F(WirtVorgaenge, WhereRecordsComeFromElsewhereNothingIsMadeHere) {
  const Testordner ordner;
  adodb::Connection fremde;
  const QString datei = ordner.pfad(u"fremde.db"_s);
  fremde.Open(u"Provider=SQLite;Mode=ReadWriteCreate;Data Source="_s + datei);
  fremde.Execute(u"CREATE TABLE Bild_Zuordnungen (Key1, Key2, Key3, key4, Typ1, Typ2, Bildname, BildExt, BildPfad)"_s);
  Wirtsoptionen optionen = Wirt::optionen();
  optionen.verbindung = u"Provider=SQLite;Data Source="_s + datei;
  oeffne(optionen);
  warte();
  EXPECT_FALSE(sichtbar(u"cmd_NeuerVorgang"_s));
  EXPECT_FALSE(fenster_->findChild<QAction*>(u"act_Neu"_s)->isEnabled());
  taste(Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

class WirtAnfang : public WirtFenster {
 protected:
  void SetUp() override {}
  void beginne(const std::function<void(QWidget&)>& darin) {
    Wirtsoptionen optionen;
    optionen.datenordner = ordner_.pfad(u"neu"_s);
    optionen.anfang = Anfangsbestand::Fragen;
    Im_Fenster frage(u"Anfangsfenster"_s, darin);
    oeffne(optionen);
    EXPECT_TRUE(frage.war_offen);
  }
  Testordner ordner_;
};

TEST_F(WirtAnfang, TheFirstStartAsksAndBeginsEmpty) {
  beginne([](QWidget& fenster) {
    eingaben::taste(fenster, Qt::Key_Down);
    EXPECT_TRUE(fenster.findChild<QRadioButton*>(u"opt_Leer"_s)->isChecked());
    eingaben::taste(fenster, Qt::Key_Return);
  });
  EXPECT_EQ(gezeigte(), QStringList());
  EXPECT_TRUE(QFile::exists(ordner_.pfad(u"neu/betrieb.db"_s)));
  EXPECT_TRUE(QFile::exists(ordner_.pfad(u"neu/bilder"_s)));
  EXPECT_FALSE(QFile::exists(ordner_.pfad(u"neu/eingang"_s)));
  EXPECT_TRUE(sichtbar(u"cmd_NeuerVorgang"_s));
  EXPECT_EQ(text(u"lbl_Status"_s), u"0 Vorgänge"_s);
}

TEST_F(WirtAnfang, TheFirstStartBeginsWithSamplesOnDemand) {
  beginne([](QWidget& fenster) { eingaben::taste(fenster, Qt::Key_Return); });
  EXPECT_EQ(gezeigte().size(), 13);
}

TEST_F(WirtAnfang, GivingUpLeavesNothingAndAsksAgain) {
  beginne([](QWidget& fenster) { eingaben::taste(fenster, Qt::Key_Escape); });
  EXPECT_EQ(text(u"lbl_Status"_s), u"Es ist noch nichts angelegt."_s);
  EXPECT_FALSE(QFile::exists(ordner_.pfad(u"neu"_s)));
  Im_Fenster frage(u"Anfangsfenster"_s, [](QWidget& fenster) { eingaben::taste(fenster, Qt::Key_Return); });
  fenster_->lies_neu();
  EXPECT_TRUE(frage.war_offen);
  EXPECT_EQ(gezeigte().size(), 13);
}

TEST_F(WirtAnfang, AnEmptyPictureTreeHasNothingToClear) {
  beginne([](QWidget& fenster) {
    eingaben::taste(fenster, Qt::Key_Down);
    eingaben::taste(fenster, Qt::Key_Return);
  });
  EXPECT_EQ(gezeigte(), QStringList());
  meldungen_.erwarte({u"Es gibt nichts aufzuräumen."_s, u"Bildzuordnung"_s, Symbol::Information, Knoepfe::OK});
  fenster_->raeume_auf();
}

TEST(WirtOptionenAnfang, TheCallSaysWithWhatToBegin) {
  EXPECT_EQ(wirtsoptionen::lies({}).anfang, Anfangsbestand::Fragen);
  EXPECT_EQ(wirtsoptionen::lies({u"--leer"_s}).anfang, Anfangsbestand::Leer);
  EXPECT_EQ(wirtsoptionen::lies({u"--beispiele"_s}).anfang, Anfangsbestand::Beispiele);
  EXPECT_TRUE(wirtsoptionen::hilfetext().contains(u"--leer"_s));
  EXPECT_TRUE(wirtsoptionen::hilfetext().contains(u"--beispiele"_s));
}
