// What the window does with pictures beside the assignment: clearing the picture tree, the search, Exif properties.
#include <QApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <chrono>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufraeumen/Aufraeumen.h"
#include "platform/adodb/Treiber.h"
#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// A picture tree of the test's own with one picture that is assigned.
class WirtAufraeumen : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"DELETE FROM Bild_Zuordnungen"_s);
    ordne_zu(u"Belege\\1"_s, u"a"_s);
    for (const QString& name :
        {u"Belege/1/a.jpg"_s, u"Belege/1/ajpg.txt"_s, u"Belege/1/b.jpg"_s, u"Belege/1/bjpg.txt"_s, u"Belege/2/c.jpg"_s})
      schreibe(name);
  }
  QString wurzel() const { return ordner_.pfad(u"Ablage"_s); }
  void schreibe(const QString& name) const { ordner_.schreibe(u"Ablage/"_s + name, "x"); }
  static void ordne_zu(const QString& pfad, const QString& name) {
    sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        u"VALUES ('AB','24-1001','-','-','%1','jpg','BEL','-','%2',0)"_s.arg(name, pfad));
  }
  void oeffne_Ablage() {
    Wirtsoptionen mit = optionen();
    mit.bilder = wurzel();
    mit.schonfrist = 0;
    oeffne(mit);
  }
  /// Everything below the root, folders with a closing "/".
  QStringList stand() const {
    QStringList alle;
    QDirIterator lauf(wurzel(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (lauf.hasNext()) {
      const QString pfad = lauf.next();
      alle.append(pfad.mid(wurzel().size() + 1) + (lauf.fileInfo().isDir() ? u"/"_s : QString()));
    }
    alle.sort();
    return alle;
  }
  bool raeume_auf(const std::function<void(QWidget&)>& darin) {
    return klicke_und(u"cmd_Aufraeumen"_s, u"Aufraeumfenster"_s, darin);
  }
  static QStringList gelistet(const QWidget& fenster) {
    const auto* liste = fenster.findChild<QTreeWidget*>(u"lst_Aufraeumen"_s);
    QStringList zeilen;
    for (int i = 0; liste && i < liste->topLevelItemCount(); ++i)
      zeilen.append(liste->topLevelItem(i)->text(0) + u" – "_s + liste->topLevelItem(i)->text(1));
    return zeilen;
  }
  void lehnt_ab(const Meldung& meldung) {
    const QStringList vorher = stand();
    meldungen_.erwarte(meldung);
    EXPECT_FALSE(raeume_auf([](QWidget&) {}));
    EXPECT_EQ(stand(), vorher);
  }

  /// The picture root is a folder in it: what goes comes beside that.
  Testordner ordner_;
};

}  // namespace

TEST_F(WirtAufraeumen, AfterTheYesExactlyWhatWasShownGoes) {
  oeffne_Ablage();
  EXPECT_TRUE(raeume_auf([&](QWidget& fenster) {
    EXPECT_EQ(gelistet(fenster),
        (QStringList{u"Belege\\1\\b.jpg – keine Zuordnung"_s, u"Belege\\1\\bjpg.txt – Text ohne Bild"_s,
            u"Belege\\2\\c.jpg – keine Zuordnung"_s, u"Belege\\2\\ – leerer Ordner"_s}));
    EXPECT_EQ(fenster.findChild<QLabel*>(u"lbl_Warnung"_s), nullptr);
    EXPECT_EQ(fenster.findChild<QPushButton*>(u"cmd_Loeschen"_s)->text(), u"4 in den &Papierkorb verschieben"_s);
    EXPECT_EQ(stand().size(), 8) << "nothing goes before the yes";
    druecke(fenster, u"cmd_Loeschen"_s);
  }));
  EXPECT_EQ(stand(), (QStringList{u"Belege/"_s, u"Belege/1/"_s, u"Belege/1/a.jpg"_s, u"Belege/1/ajpg.txt"_s}));
  EXPECT_EQ(text(u"lbl_Status"_s), u"Bilderbaum aufgeräumt: 4 in den Papierkorb verschoben."_s);
}

TEST_F(WirtAufraeumen, WithoutTheYesNothingGoesAndTheEnterKeyIsNone) {
  oeffne_Ablage();
  const QStringList vorher = stand();
  const QList<std::function<void(QWidget&)>> wege{[](QWidget& fenster) { druecke(fenster, u"cmd_Abbrechen"_s); },
      [](QWidget& fenster) { QTest::keyClick(&fenster, Qt::Key_Escape); },
      [](QWidget& fenster) { QTest::keyClick(&fenster, Qt::Key_Return); },
      [](QWidget& fenster) {
    ASSERT_NE(fenster.focusWidget(), nullptr);
    EXPECT_EQ(fenster.focusWidget()->objectName(), u"cmd_Abbrechen"_s);
    QTest::keyClick(fenster.focusWidget(), Qt::Key_Enter);
                                                  },
      [](QWidget& fenster) {
    auto* liste = fenster.findChild<QTreeWidget*>(u"lst_Aufraeumen"_s);
    QTest::mouseClick(liste->viewport(), Qt::LeftButton, {}, liste->visualItemRect(liste->topLevelItem(0)).center());
    QTest::keyClick(liste, Qt::Key_Return);
  },
      [](QWidget& fenster) { fenster.close(); }};
  for (const auto& weg : wege) {
    EXPECT_TRUE(raeume_auf([&](QWidget& fenster) {
      weg(fenster);
      EXPECT_FALSE(fenster.isVisible());
    }));
    EXPECT_EQ(stand(), vorher);
    EXPECT_EQ(text(u"lbl_Status"_s), u"Nichts ist gelöscht."_s);
  }
}

TEST_F(WirtAufraeumen, WhatTheUserTakesOffTheListStaysWithWhatHangsOnIt) {
  oeffne_Ablage();
  EXPECT_TRUE(raeume_auf([&](QWidget& fenster) {
    auto* liste = fenster.findChild<QTreeWidget*>(u"lst_Aufraeumen"_s);
    ASSERT_NE(liste, nullptr);
    EXPECT_EQ(liste->topLevelItem(0)->text(2), u"1 Bytes"_s);
    EXPECT_FALSE(liste->topLevelItem(0)->text(3).isEmpty());
    EXPECT_FALSE(liste->topLevelItem(3)->flags().testFlag(Qt::ItemIsUserCheckable)) << "a folder goes with its files";
    auto* knopf = fenster.findChild<QPushButton*>(u"cmd_Loeschen"_s);
    const auto* platz = fenster.findChild<QLabel*>(u"lbl_Platz"_s);
    EXPECT_EQ(platz->text(), u"Zusammen 3 Bytes; frei werden sie, wenn der Papierkorb geleert wird."_s);
    const auto schalte = [&](int zeile) {
      liste->setCurrentItem(liste->topLevelItem(zeile));
      QTest::keyClick(liste, Qt::Key_Space);
    };
    schalte(2);
    EXPECT_EQ(knopf->text(), u"2 in den &Papierkorb verschieben"_s) << "the picture and its folder stay";
    schalte(0);
    EXPECT_EQ(knopf->text(), u"0 in den &Papierkorb verschieben"_s) << "the text stays with its picture";
    EXPECT_FALSE(knopf->isEnabled());
    schalte(2);
    EXPECT_EQ(knopf->text(), u"2 in den &Papierkorb verschieben"_s);
    EXPECT_EQ(platz->text(), u"Zusammen 1 Bytes; frei werden sie, wenn der Papierkorb geleert wird."_s);
    druecke(fenster, u"cmd_Loeschen"_s);
  }));
  EXPECT_EQ(stand(),
      (QStringList{u"Belege/"_s, u"Belege/1/"_s, u"Belege/1/a.jpg"_s, u"Belege/1/ajpg.txt"_s, u"Belege/1/b.jpg"_s,
          u"Belege/1/bjpg.txt"_s}));
  EXPECT_EQ(text(u"lbl_Status"_s), u"Bilderbaum aufgeräumt: 2 in den Papierkorb verschoben."_s);
}

TEST_F(WirtAufraeumen, TheWindowShowsThePicturesAndNamesWhatStays) {
  QImage rot(200, 100, QImage::Format_RGB32);
  rot.fill(Qt::red);
  ASSERT_TRUE(rot.save(wurzel() + u"/Belege/1/b.jpg"_s));
  schreibe(u"Belege/1/IMG 08.15.00.jpg"_s);
  ordne_zu(u"Belege\\1"_s, u"IMG 08.15.00"_s);
  oeffne_Ablage();
  EXPECT_TRUE(raeume_auf([&](QWidget& fenster) {
    auto* liste = fenster.findChild<QTreeWidget*>(u"lst_Aufraeumen"_s);
    const auto farbe = [&] {
      return liste->topLevelItem(0)->icon(0).pixmap(liste->iconSize()).toImage().pixelColor(20, 10).red();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return farbe() > 200; }));
    EXPECT_EQ(
        gelistet(fenster).last(), u"Belege\\1\\IMG 08.15.00.jpg – bleibt: eine Zuordnung nennt den ganzen Namen"_s);
    EXPECT_EQ(fenster.findChild<QPushButton*>(u"cmd_Loeschen"_s)->text(), u"4 in den &Papierkorb verschieben"_s);
  }));
}

TEST_F(WirtAufraeumen, WhatWasClearedComesBackByThePapierkorb) {
  oeffne_Ablage();
  const QStringList vorher = stand();
  EXPECT_TRUE(raeume_auf([](QWidget& fenster) { druecke(fenster, u"cmd_Loeschen"_s); }));
  EXPECT_NE(stand(), vorher);
  const auto im_Papierkorb = [&](const std::function<void(QWidget&)>& darin) {
    return klicke_und(u"cmd_Papierkorb"_s, u"Papierkorbfenster"_s, darin);
  };
  EXPECT_TRUE(im_Papierkorb([&](QWidget& fenster) {
    const auto* liste = fenster.findChild<QTreeWidget*>(u"lst_Laeufe"_s);
    ASSERT_EQ(liste->topLevelItemCount(), 1);
    EXPECT_EQ(liste->topLevelItem(0)->text(1), u"3"_s);
    EXPECT_EQ(liste->topLevelItem(0)->text(2), u"3 Bytes"_s);
    const Meldung frage{
        u"Soll zurückkommen, was am %1 aufgeräumt wurde?\r\n\r\nDateien, die inzwischen da sind, bleiben, "
        "wie sie sind."_s.arg(liste->topLevelItem(0)->text(0)),
        u"Papierkorb"_s, Symbol::Frage, Knoepfe::JaNein};
    meldungen_.erwarte(frage, Antwort::Nein);
    druecke(fenster, u"cmd_Zurueckholen"_s);
    EXPECT_NE(stand(), vorher);
    meldungen_.erwarte(frage, Antwort::Ja);
    druecke(fenster, u"cmd_Zurueckholen"_s);
    EXPECT_EQ(liste->topLevelItemCount(), 0);
    EXPECT_FALSE(fenster.findChild<QPushButton*>(u"cmd_Zurueckholen"_s)->isEnabled());
  }));
  EXPECT_EQ(stand(), vorher);
}

TEST_F(WirtAufraeumen, ThePapierkorbIsEmptiedOfWhatIsOldEnough) {
  oeffne_Ablage();
  EXPECT_TRUE(raeume_auf([](QWidget& fenster) { druecke(fenster, u"cmd_Loeschen"_s); }));
  const QStringList danach = stand();
  EXPECT_TRUE(klicke_und(u"cmd_Papierkorb"_s, u"Papierkorbfenster"_s, [&](QWidget& fenster) {
    meldungen_.erwarte(
        {u"Nichts im Papierkorb ist älter als 30 Tage."_s, u"Papierkorb"_s, Symbol::Information, Knoepfe::OK});
    druecke(fenster, u"cmd_Endgueltig"_s);
    fenster.findChild<QSpinBox*>(u"spn_Tage"_s)->setValue(0);
    meldungen_.erwarte(
        {u"Soll endgültig gelöscht werden, was älter als 0 Tage ist?\r\n\r\nDateien: 3. Frei werden 3 Bytes."_s,
            u"Papierkorb"_s, Symbol::Ausrufezeichen, Knoepfe::JaNein},
        Antwort::Ja);
    druecke(fenster, u"cmd_Endgueltig"_s);
    EXPECT_EQ(fenster.findChild<QTreeWidget*>(u"lst_Laeufe"_s)->topLevelItemCount(), 0);
  }));
  EXPECT_EQ(stand(), danach);
  EXPECT_FALSE(QDir(wurzel() + u".papierkorb"_s).exists());
}

TEST_F(WirtAufraeumen, WhereNothingIsToBeClearedAwayThatIsSaid) {
  ordne_zu(u"Belege\\1"_s, u"b"_s);
  ordne_zu(u"Belege\\2"_s, u"c"_s);
  oeffne_Ablage();
  lehnt_ab({u"Es gibt nichts aufzuräumen."_s, u"Bildzuordnung"_s, Symbol::Information, Knoepfe::OK});
  EXPECT_EQ(text(u"lbl_Status"_s), u"Es gibt nichts aufzuräumen."_s);
}

TEST_F(WirtAufraeumen, AnUnreachablePictureRootIsRefused) {
  Wirtsoptionen ohne = optionen();
  ohne.bilder = u"/gibt/es/nicht"_s;
  oeffne(ohne);
  lehnt_ab({u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen.\r\n\r\nNichts ist gelöscht."_s,
      u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
}

TEST_F(WirtAufraeumen, AnEmptyPictureRootCountsAsNotMounted) {
  const Testordner leer;
  Wirtsoptionen mit = optionen();
  mit.bilder = leer.pfad();
  oeffne(mit);
  lehnt_ab(
      {u"Die Bildablage „%1“ ist leer, obwohl es Zuordnungen gibt. Ist sie eingehängt?\r\n\r\nNichts ist gelöscht."_s
              .arg(leer.pfad()),
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_TRUE(QDir(leer.pfad()).exists());
}

TEST_F(WirtAufraeumen, ADatabaseThatDoesNotAnswerIsRefusedInsteadOfCallingAllPicturesFree) {
  oeffne_Ablage();
  nimm_Tabelle_weg();
  lehnt_ab(
      {u"Die Tabelle Bild_Zuordnungen ist nicht zu lesen, und ohne sie gälte jedes Bild als frei: Die Anweisung "
       "ist fehlgeschlagen: no such table: Bild_Zuordnungen\r\n\r\nNichts ist gelöscht."_s,
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  gib_Tabelle_zurueck();
}

TEST_F(WirtAufraeumen, ADatabaseThatDoesNotExistIsRefused) {
  const Testordner ordner;
  Wirtsoptionen fremd = optionen();
  fremd.bilder = wurzel();
  fremd.verbindung = u"Provider=SQLite;Data Source="_s + ordner.pfad(u"weg.db"_s);
  oeffne(fremd);
  lehnt_ab({u"Die Datenbank „%1“ gibt es nicht.\r\n\r\nNichts ist gelöscht."_s.arg(ordner.pfad(u"weg.db"_s)),
      u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
}

TEST_F(WirtAufraeumen, WhereSomethingChangedMeanwhileNothingGoesInSpiteOfTheYes) {
  oeffne_Ablage();
  meldungen_.erwarte({u"Die Ablage oder die Tabelle hat sich inzwischen geändert; nichts ist gelöscht."_s,
      u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
  EXPECT_TRUE(raeume_auf([&](QWidget& fenster) {
    ordne_zu(u"Belege\\1"_s, u"b"_s);
    druecke(fenster, u"cmd_Loeschen"_s);
  }));
  EXPECT_EQ(stand().size(), 8);
}

namespace {

/// SQLite that lets something happen at each text.
class Beobachtet final : public adodb::Treiber {
 public:
  explicit Beobachtet(const std::function<void()>& dabei) : dabei_(dabei) {}
  void oeffne(const QString& zeichenfolge) override {
    eigentlicher_ = adodb::treiber_fuer(u"Provider=SQLite"_s);
    eigentlicher_->oeffne(zeichenfolge);
  }
  void schliesse() noexcept override { eigentlicher_.reset(); }
  bool ist_offen() const noexcept override { return eigentlicher_ != nullptr; }
  adodb::Ergebnis fuehre_aus(const QString& text) override { return fuehre_aus(text, {}); }
  adodb::Ergebnis fuehre_aus(const QString& text, const std::vector<adodb::Wert>& werte) override {
    if (dabei_) dabei_();
    return eigentlicher_->fuehre_aus(text, werte);
  }

 private:
  const std::function<void()>& dabei_;
  std::unique_ptr<adodb::Treiber> eigentlicher_;
};

/// The clearing behind the window, over a connection that the test can disturb.
class WirtAufraeumenGestoert : public WirtAufraeumen {
 protected:
  void SetUp() override {
    WirtAufraeumen::SetUp();
    adodb::registriere_treiber(u"Beobachtet"_s, [this] { return std::make_unique<Beobachtet>(bei_Text_); });
    oeffne_Ablage();
    klicke(u"AB 24-1001"_s);  // binds P: to the tree
    const QString zeichenfolge = u"Provider=Beobachtet;Data Source="_s + datenbank();
    const auto verbindung = std::make_shared<adodb::Connection>();
    verbindung->Open(zeichenfolge);
    ASSERT_TRUE(store_.Init(zeichenfolge, verbindung, {}));
    aufraeumen_ =
        std::make_unique<Aufraeumen>(store_, verbindung, u"P:"_s, u"P:"_s, Schonfrist{std::chrono::minutes(0)});
    bei_Text_ = [this] { ++texte_; };
    liste_ = aufraeumen_->liste();
    bei_Text_ = {};
    ASSERT_EQ(liste_.Posten.size(), 4U);
  }
  void TearDown() override {
    adodb::registriere_treiber(u"Beobachtet"_s, [] { return std::unique_ptr<adodb::Treiber>(); });
    WirtAufraeumen::TearDown();
  }
  /// Clears; `dabei` happens at the n-th text from then on, counted from 1.
  QStringList raeume_auf_und(int n, const std::function<void()>& dabei) {
    plane(n, dabei);
    return aufraeumen_->fuehre_aus(liste_).geblieben;
  }
  Aufraeumplan liste_und(int n, const std::function<void()>& dabei) {
    plane(n, dabei);
    return aufraeumen_->liste();
  }
  void plane(int n, const std::function<void()>& dabei) {
    bei_Text_ = [=, i = 0]() mutable {
      if (++i >= n) dabei();
    };
  }
  const QStringList geraeumt_{u"Belege/"_s, u"Belege/1/"_s, u"Belege/1/a.jpg"_s, u"Belege/1/ajpg.txt"_s};

  std::function<void()> bei_Text_;
  clsBildZuordnungen store_;
  std::unique_ptr<Aufraeumen> aufraeumen_;
  Aufraeumplan liste_;
  /// How many texts one listing sends.
  int texte_ = 0;
};

}  // namespace

TEST_F(WirtAufraeumenGestoert, WhenTheConnectionBreaksNoPictureGoesThatWasNotShown) {
  const QStringList vorher = stand();
  const auto abreissen = [] { throw Laufzeitfehler(fehlernummer::Verbindung); };
  for (int n = 1; n <= texte_; ++n) {
    EXPECT_THROW(raeume_auf_und(n, abreissen), Abbruch) << n;
    EXPECT_EQ(stand(), vorher);
    EXPECT_THROW(liste_und(n, abreissen), Abbruch) << "not even shown, " << n;
  }
  EXPECT_TRUE(raeume_auf_und(texte_ + 1, abreissen).isEmpty());
  EXPECT_EQ(stand(), geraeumt_);
}

TEST_F(WirtAufraeumenGestoert, WhenTheQuestionForAFullNameBreaksNothingIsListed) {
  schreibe(u"Belege/1/x.y.jpg"_s);
  texte_ = 0;
  bei_Text_ = [this] { ++texte_; };
  EXPECT_EQ(aufraeumen_->liste().Posten.size(), 5U);
  const auto abreissen = [] { throw Laufzeitfehler(fehlernummer::Verbindung); };
  for (int n = texte_; n >= 1; --n) EXPECT_THROW(liste_und(n, abreissen), Abbruch) << n;
}

TEST_F(WirtAufraeumenGestoert, WhatIsLeftStandingIsNamed) {
  const QStringList geblieben = raeume_auf_und(texte_, [&] { schreibe(u"Belege/2/im_letzten_Augenblick.jpg"_s); });
  EXPECT_EQ(geblieben, QStringList{u"Belege\\2\\"_s});
  EXPECT_EQ(stand(), geraeumt_ + QStringList({u"Belege/2/"_s, u"Belege/2/im_letzten_Augenblick.jpg"_s}));
}

TEST_F(WirtAufraeumenGestoert, WhatSomebodyElseAlreadyDeletedIsNotMissed) {
  EXPECT_TRUE(raeume_auf_und(texte_, [&] { QFile::remove(wurzel() + u"/Belege/1/b.jpg"_s); }).isEmpty());
  EXPECT_EQ(stand(), geraeumt_);
}

TEST_F(WirtAufraeumen, TheAgeCountsFromTheFilesArrivalAndNotFromItsTimeStamp) {
  Wirtsoptionen mit = optionen();
  mit.bilder = wurzel();
  Arbeitsplatz platz(mit);
  platz.oeffne();
  ASSERT_EQ(platz.wurzel_fehlt(), std::nullopt);
  clsBildZuordnungen store;
  ASSERT_TRUE(store.Init(platz.verbindungszeichenfolge(), platz.verbindung(), {}));
  const auto gehende_nach = [&](int minuten) {
    Schonfrist frist;
    frist.uhr = [=](const QString& ordner) {
      return umzug::jetzt_ns(ordner) + std::chrono::nanoseconds(std::chrono::minutes(minuten)).count();
    };
    return Aufraeumen(store, platz.verbindung(), u"P:"_s, u"P:"_s, frist).liste().Posten.size();
  };
  QFile datei(wurzel() + u"/Belege/2/c.jpg"_s);
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
  ASSERT_TRUE(datei.setFileTime(QDateTime::currentDateTime().addSecs(3600), QFile::FileModificationTime));
  datei.close();
  EXPECT_EQ(gehende_nach(59), 0U);
  EXPECT_EQ(gehende_nach(61), 4U) << "a time stamp of an hour ahead makes no file new";
}

TEST_F(WirtAufraeumen, WhatIsNewDoesNotGetOldWhileTheQuestionStands) {
  Wirtsoptionen mit = optionen();
  mit.bilder = wurzel();
  Arbeitsplatz platz(mit);
  platz.oeffne();
  ASSERT_EQ(platz.wurzel_fehlt(), std::nullopt);
  clsBildZuordnungen store;
  ASSERT_TRUE(store.Init(platz.verbindungszeichenfolge(), platz.verbindung(), {}));
  int minuten = 0;
  Schonfrist frist;
  frist.uhr = [&](const QString& ordner) {
    return umzug::jetzt_ns(ordner) + std::chrono::nanoseconds(std::chrono::minutes(minuten)).count();
  };
  Aufraeumen aufraeumen(store, platz.verbindung(), u"P:"_s, u"P:"_s, frist);
  const Aufraeumplan plan = aufraeumen.liste();
  EXPECT_EQ(plan.Bleibend.size(), 3U);
  minuten = 120;
  const QStringList vorher = stand();
  EXPECT_EQ(aufraeumen.fuehre_aus(plan).getan, 0U);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(WirtAufraeumen, PicturesWithAnApostropheAreNotAskedForAndNothingIsDeleted) {
  oeffne_Ablage();
  for (int i = 10; i < 22; ++i) schreibe(u"Belege/1/o'neil%1.jpg"_s.arg(i));
  QStringList genannte;
  for (int i = 10; i < 20; ++i) genannte.append(u"Belege\\1\\o'neil%1.jpg"_s.arg(i));
  lehnt_ab(
      {u"In der Ablage stehen Bilder mit einem Hochkomma in Name oder Ordner, nach denen sich die Tabelle nicht "
       "fragen lässt; benennen Sie sie vorher um (12): %1, …\r\n\r\nNichts ist gelöscht."_s.arg(genannte.join(u", "_s)),
          u"Bildzuordnung"_s, Symbol::Kritisch, Knoepfe::OK});
}

TEST_F(WirtAufraeumen, ABackslashAtTheEndOfTheFoldersMakesNoPictureFree) {
  Wirtsoptionen mit = optionen();
  mit.bilder = wurzel();
  mit.schonfrist = 0;
  Arbeitsplatz platz(mit);
  platz.oeffne();
  ASSERT_EQ(platz.wurzel_fehlt(), std::nullopt);
  clsBildZuordnungen store;
  ASSERT_TRUE(store.Init(platz.verbindungszeichenfolge(), platz.verbindung(), {}));
  const auto gelistete = [&](const QString& wurzel, const QString& start) {
    Aufraeumen aufraeumen(store, platz.verbindung(), wurzel, start, Schonfrist{std::chrono::minutes(0)});
    QStringList namen;
    for (const Aufraeumposten& p : aufraeumen.liste().Posten) namen.append(aufraeumen.angezeigt(p));
    return namen;
  };
  const QStringList erwartet{u"Belege\\1\\b.jpg"_s, u"Belege\\1\\bjpg.txt"_s, u"Belege\\2\\c.jpg"_s, u"Belege\\2\\"_s};
  for (const QString& wurzel : {u"P:"_s, u"P:\\"_s, u"P:\\\\"_s}) {
    EXPECT_EQ(gelistete(wurzel, wurzel), erwartet) << wurzel.toStdString();
    EXPECT_EQ(gelistete(wurzel, u"P:\\Belege"_s), erwartet);
    EXPECT_EQ(gelistete(wurzel, u"P:\\Belege\\"_s), erwartet) << wurzel.toStdString();
  }
  EXPECT_EQ(gelistete(u"P:"_s, u"P:\\Belege\\1\\\\"_s), erwartet.mid(0, 2));
}

TEST_F(WirtAufraeumen, TheSelectedRecordIsStillThereAfterwards) {
  oeffne_Ablage();
  klicke(u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"1 Bild"_s);
  EXPECT_TRUE(raeume_auf([](QWidget& fenster) { druecke(fenster, u"cmd_Loeschen"_s); }));
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"1 Bild"_s);
}

// The search

namespace {

class WirtSuche : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    for (const QString& name : {u"eins.jpg"_s, u"zwei.jpg"_s, u"drei.jpg"_s}) ablage_.schreibe(name, "x");
    Wirtsoptionen mit = optionen();
    mit.bilder = ablage_.pfad();
    oeffne(mit);
  }
  bool suche(const std::function<void(QWidget&)>& darin) {
    return klicke_und(u"cmd_Suchen"_s, u"frm_BilderSuchen"_s, darin);
  }
  static void waehle(QWidget& fenster, const QStringList& namen) {
    auto* liste = fenster.findChild<QListView*>(u"lvwContent"_s);
    ASSERT_NE(liste, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return liste->isVisible() && liste->model()->rowCount() == 3; }));
    for (const QString& name : namen) {
      const QModelIndexList treffer = liste->model()->match(liste->model()->index(0, 0), Qt::DisplayRole, name);
      ASSERT_EQ(treffer.size(), 1) << name.toStdString();
      liste->scrollTo(treffer.first());
      QTest::mouseClick(
          liste->viewport(), Qt::LeftButton, Qt::ControlModifier, liste->visualRect(treffer.first()).center());
    }
  }
  Testordner ablage_;
};

}  // namespace

TEST_F(WirtSuche, WhatWasChosenInThePictureSearchStandsWithItsFullNameInTheStatusBar) {
  EXPECT_TRUE(suche([](QWidget& fenster) {
    waehle(fenster, {u"eins.jpg"_s, u"zwei.jpg"_s});
    druecke(fenster, u"cmd_Uebernehmen"_s);
  }));
  EXPECT_EQ(text(u"lbl_Status"_s), u"Bilder suchen: 2 gewählt – P:\\eins.jpg, P:\\zwei.jpg"_s);
  EXPECT_EQ(kind<QLabel>(u"lbl_Status"_s)->toolTip(), text(u"lbl_Status"_s)) << "a long text is cut off in the bar";
}

TEST_F(WirtSuche, WhoeverLeavesThePictureSearchOrChoosesNothingHasChosenNothing) {
  for (const QString& knopf : {u"cmd_Abbruch"_s, u"cmd_Uebernehmen"_s}) {
    EXPECT_TRUE(suche([&](QWidget& fenster) {
      if (knopf == "cmd_Abbruch"_L1) waehle(fenster, {u"eins.jpg"_s});
      druecke(fenster, knopf);
    }));
    EXPECT_EQ(text(u"lbl_Status"_s), u"Bilder suchen: nichts gewählt."_s);
  }
}

TEST_F(WirtSuche, AfterThePictureSearchTheRecordsPicturesStandAsTheyAreNow) {
  sql(u"UPDATE Bild_Zuordnungen SET BildPfad = '', Bildname = 'eins' WHERE Key1 = 'WP-0900'"_s);
  klicke(u"WP-0900"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"1 Bild"_s);
  EXPECT_TRUE(suche([&](QWidget&) { QFile::remove(ablage_.pfad(u"eins.jpg"_s)); }));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"1 Bild, 1 Datei fehlt"_s);
}

// Exif properties

namespace {

class WirtExif : public WirtBilder {
 protected:
  bool zeige(const std::function<void(QWidget&)>& darin) { return klicke_und(u"cmd_Exif"_s, u"frm_BildInfo"_s, darin); }
};

}  // namespace

TEST_F(WirtExif, TheButtonShowsThePropertiesOfTheSelectedPicture) {
  oeffne();
  klicke(u"AB 24-1001"_s);
  klicke_Bild(0);
  EXPECT_TRUE(zeige([](QWidget& fenster) {
    EXPECT_EQ(fenster.windowTitle(), u"Eigenschaften"_s);
    const auto* liste = fenster.findChild<QTreeWidget*>(u"Sft_Eigenschaften"_s);
    ASSERT_NE(liste, nullptr);
    const QList<QTreeWidgetItem*> hersteller = liste->findItems(u"Hersteller"_s, Qt::MatchExactly);
    ASSERT_EQ(hersteller.size(), 1);
    EXPECT_FALSE(hersteller.first()->text(1).isEmpty());
    druecke(fenster, u"cmd_OK"_s);
    EXPECT_FALSE(fenster.isVisible());
  }));
}

TEST_F(WirtExif, WithoutASelectedPictureTheButtonIsDisabledAndTheKeySaysWhatIsMissing) {
  oeffne();
  QTest::keyClick(fenster_.get(), Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(text(u"lbl_Status"_s), u"Exif: Wählen Sie zuerst ein Bild des Vorgangs aus."_s) << "no record either";
  klicke(u"AB 24-1001"_s);
  EXPECT_FALSE(kind<QPushButton>(u"cmd_Exif"_s)->isEnabled());
  klicke_Bild(1);
  EXPECT_TRUE(kind<QPushButton>(u"cmd_Exif"_s)->isEnabled());
  klicke(u"WP-0900"_s);
  EXPECT_FALSE(kind<QPushButton>(u"cmd_Exif"_s)->isEnabled()) << "another record's picture is not chosen";
  EXPECT_FALSE(zeige([](QWidget&) {}));
}

TEST_F(WirtExif, AMissingFileIsToldAndNotCreated) {
  const Testordner ablage;
  ablage.schreibe(u"Belege/24-2003/anderes.jpg"_s, "x");
  Wirtsoptionen mit = optionen();
  mit.bilder = ablage.pfad();
  oeffne(mit);
  klicke(u"RE 24-2003"_s);
  klicke_Bild(0);
  const Vorschaubild* bild = fenster_->ansicht()->lst_Bilder->gewaehltes();
  ASSERT_NE(bild, nullptr);
  meldungen_.erwarte({u"Die Datei „%1\\%2“ fehlt in der Bildablage."_s.arg(bild->ordner, bild->datei),
      u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  EXPECT_FALSE(zeige([](QWidget&) {}));
  EXPECT_EQ(QDir(ablage.pfad(u"Belege/24-2003"_s)).entryList(QDir::Files), QStringList{u"anderes.jpg"_s});
}
