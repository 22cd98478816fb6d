// The program with windows on the server of tests/tds. The database behind the server is the one that
// KVO_PRUEFDATENBANK names, since the store's writing connection stays with its first server to the end of the process.
#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "host/betrieb/Artikelstamm.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Einstellungstabelle.h"
#include "host/fenster/Anmeldefenster.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Pruefziel.h"
#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Benutzer = u"pruefer"_s;
const QString Kennwort = u"#Ge;he}im\"'ä€#"_s;

Tdsserver::Maschine maschine() {
  return pruefziel() == Pruefziel::TdsH2 ? Tdsserver::Maschine::H2 : Tdsserver::Maschine::Sqlite;
}

std::unique_ptr<Tdsserver> neuer_Server() {
  return std::make_unique<Tdsserver>(Benutzer, Kennwort, maschine());
}

QString ohne_Kennwort(const Tdsserver& server) {
  return u"Driver=FreeTDS;Server=127.0.0.1,%1;Database=betrieb;UID=%2"_s.arg(QString::number(server.port()), Benutzer);
}

QString mit_Kennwort(const Tdsserver& server, const QString& kennwort = Kennwort) {
  return ohne_Kennwort(server) + u"; pwd = "_s + adodb::Verbindungszeichenfolge::als_wert(kennwort);
}

/// A table of the embedded database under another name on the server, where it need not be there yet.
void uebertrage(adodb::Connection& quelle, const QString& aus, adodb::Connection& ziel, const QString& nach) {
  const auto satz = quelle.Execute(u"select * from "_s + aus);
  const QString spalten = satz->Spalten().join(u", "_s);
  if (nach != "Bild_Zuordnungen"_L1)
    ziel.Execute(
        u"create table %1 (%2 nvarchar(250) NULL)"_s.arg(nach, satz->Spalten().join(u" nvarchar(250) NULL, "_s)));
  for (; !satz->Eof(); satz->MoveNext()) {
    QStringList werte;
    for (int i = 0; i < satz->Spalten().size(); ++i)
      werte.append(std::holds_alternative<Null>(satz->Value(i)) ? u"NULL"_s : literal(satz->Text(i)));
    ziel.Execute(u"insert into %1 (%2) values (%3)"_s.arg(nach, spalten, werte.join(u", "_s)));
  }
}

/// What the firm's server has of the sample firm: its view as a table, and what the component reads of a host.
void fuelle(const Tdsserver& server, const QString& embedded) {
  adodb::Connection ziel;
  ziel.Open(mit_Kennwort(server));
  adodb::Connection quelle;
  quelle.Open(u"Provider=SQLite;Data Source="_s + embedded);
  for (const QString& tabelle : {u"Bild_Vorgaenge"_s, u"Artikelstamm"_s, u"Einstellungen"_s})
    uebertrage(quelle, tabelle, ziel, tabelle);
  uebertrage(quelle, u"Anfang"_s, ziel, u"Bild_Zuordnungen"_s);
}

class WirtServer : public WirtBilder {
 protected:
  static std::unique_ptr<Tdsserver>& gemeinsamer() {
    static std::unique_ptr<Tdsserver> einer;
    return einer;
  }
  static void TearDownTestSuite() { gemeinsamer().reset(); }
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(maschine()); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    Wirt::SetUp();
    if (gemeinsamer()) return;
    gemeinsamer() = neuer_Server();
    ASSERT_TRUE(gemeinsamer()->laeuft());
    fuelle(*gemeinsamer(), datenbank());
  }

  static Wirtsoptionen auf(const QString& verbindung) {
    Wirtsoptionen optionen = Wirt::optionen();
    optionen.verbindung = verbindung;
    optionen.bilder = Wirt::datenordner() + u"/bilder"_s;
    return optionen;
  }
  /// Opens the window and waits until it has said something of the database.
  void oeffne_und_warte(const QString& verbindung) {
    oeffne(auf(verbindung));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !text(u"lbl_Status"_s).isEmpty(); }, 60'000));
  }
  /// All that a user could read in any window, and its tool tips.
  static QString alle_Texte() {
    QStringList texte;
    for (QWidget* einer : QApplication::allWidgets()) {
      texte += {einer->windowTitle(), einer->toolTip(), einer->statusTip(), einer->whatsThis(), einer->accessibleName(),
          einer->accessibleDescription(), einer->objectName()};
      for (const char* eigenschaft : {"text", "placeholderText", "displayText"})
        texte.append(einer->property(eigenschaft).toString());
    }
    return texte.join(u'\n');
  }
  /// Runs `darin` in each login window that opens until `fertig`.
  void beantworte(const std::function<void(Anmeldefenster&)>& darin, const std::function<bool()>& fertig) {
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      auto* vorn = dynamic_cast<Anmeldefenster*>(QApplication::activeModalWidget());
      if (vorn && vorn->isVisible()) darin(*vorn);
    });
    takt.start(0);
    EXPECT_TRUE(QTest::qWaitFor(fertig, 60'000));
  }
  /// The window that was below another is the active one again first.
  void druecke_F5() const {
    fenster_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
    QTest::keyClick(fenster_.get(), Qt::Key_F5);
    warte();
  }
  static void melde_an(Anmeldefenster& fenster, const QString& kennwort) {
    fenster.findChild<QLineEdit*>(u"txt_Kennwort"_s)->setText(kennwort);
    QTest::mouseClick(fenster.findChild<QPushButton*>(u"cmd_Anmelden"_s), Qt::LeftButton);
  }
};

}  // namespace

TEST_F(WirtServer, TheListIsTheSameAsOnTheEmbeddedDatabase) {
  oeffne();
  const QStringList embedded = gezeigte();
  fenster_.reset();
  oeffne_und_warte(mit_Kennwort(*gemeinsamer()));
  EXPECT_EQ(gezeigte(), embedded);
  EXPECT_EQ(text(u"lbl_Status"_s), u"13 Vorgänge · Datenbank betrieb auf 127.0.0.1,%1"_s.arg(gemeinsamer()->port()));
  EXPECT_EQ(spalte(u"AB 24-1001"_s, Vorgangsmodell::Bilder), u"4"_s);
  EXPECT_EQ(spalte(u"RE 24-2003"_s, Vorgangsmodell::Betreff), u"Familie Öztürk, Kirchzarten · Projekt P-24-11"_s);
  EXPECT_FALSE(alle_Texte().contains(Kennwort));
}

TEST_F(WirtServer, ARecordShowsItsPicturesAndTheDialogWritesToTheServer) {
  oeffne_und_warte(mit_Kennwort(*gemeinsamer()));
  klicke(u"RE 24-2003"_s);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"4 Bilder, 1 Datei fehlt"_s);
  im_Dialog_ = [](clsBildZuordnungen& store) {
    store.AktInd(0);
    store.Bild_Beschreibung(u"über den Server geschrieben"_s);
    store.Bild_Changeflag(true);
    EXPECT_TRUE(store.FKT_SpeichernBilder());
  };
  klicke(u"RE 24-2003"_s, true);
  ASSERT_EQ(aufrufe_.size(), 1);
  EXPECT_EQ(aufrufe_.first().bilder, 4);
  EXPECT_EQ(gemeinsamer()->steuere(
                u"sql select count(*) from Bild_Zuordnungen where Beschreibung = 'über den Server geschrieben'"_s),
      u"[[1]]"_s);
}

TEST_F(WirtServer, ArticlesAndSettingsAreRead) {
  const auto verbindung = ::oeffne(mit_Kennwort(*gemeinsamer()));
  Artikelstamm stamm(u"Artikelstamm"_s);
  stamm.Init(1, {}, verbindung);
  EXPECT_TRUE(stamm.fktLeseArtikel(u"wp-0900"_s, false, false, false, false, false, false));
  EXPECT_EQ(stamm.Artikelnummer(), u"WP-0900"_s);
  EXPECT_TRUE(stamm.fktLeseArtikel_TeilArtikel(u"H-01"_s));
  EXPECT_EQ(stamm.Artikelnummer(), u"TH-0100"_s);
  for (const QString& muster : {u"%"_s, u"_"_s, u"[A-Z]"_s, u"\\"_s})
    EXPECT_FALSE(stamm.fktLeseArtikel_TeilArtikel(muster)) << muster.toStdString();
  Einstellungstabelle einstellungen(verbindung);
  QString wert;
  einstellungen.GetSetting(u"Firmendaten"_s, u"MitArtikelstammZF"_s, wert, u"Standard"_s, u"Standard"_s, u"x"_s);
  EXPECT_EQ(wert, u"0"_s);
  einstellungen.GetSetting(u"Firmendaten"_s, u"Gibtsnicht"_s, wert, u"Standard"_s, u"Standard"_s, u"Vorgabe"_s);
  EXPECT_EQ(wert, u"Vorgabe"_s);
}

TEST_F(WirtServer, WithoutAPasswordTheLoginAsksUntilItIsRight) {
  oeffne(auf(ohne_Kennwort(*gemeinsamer())));
  int gefragt = 0;
  beantworte(
      [&](Anmeldefenster& fenster) {
    EXPECT_EQ(fenster.findChild<QLineEdit*>(u"txt_Kennwort"_s)->echoMode(), QLineEdit::Password);
    EXPECT_EQ(fenster.findChild<QLabel*>(u"lbl_Datenbank"_s)->text(), u"betrieb"_s);
    EXPECT_EQ(fenster.findChild<QLabel*>(u"lbl_Benutzer"_s)->text(), Benutzer);
    const QString hinweis = fenster.findChild<QLabel*>(u"lbl_Hinweis"_s)->text();
    if (gefragt++ == 0) {
      EXPECT_EQ(hinweis, u"Die Datenbank verlangt ein Kennwort."_s);
      melde_an(fenster, u"#falsch#"_s);
    } else {
      EXPECT_EQ(hinweis, u"Der Server hat die Anmeldung abgelehnt. Bitte geben Sie das Kennwort noch einmal ein."_s);
      EXPECT_TRUE(fenster.findChild<QLineEdit*>(u"txt_Kennwort"_s)->text().isEmpty());
      melde_an(fenster, Kennwort);
    }
      },
      [&] { return text(u"lbl_Status"_s).startsWith(u"13 Vorgänge"_s); });
  EXPECT_EQ(gefragt, 2);
  EXPECT_FALSE(alle_Texte().contains(u'#')) << alle_Texte().toStdString();
  // What is given once serves to the end of the program, the writing connection too.
  gemeinsamer()->steuere(u"protokoll-leeren"_s);
  druecke_F5();
  EXPECT_TRUE(text(u"lbl_Status"_s).startsWith(u"13 Vorgänge"_s));
  EXPECT_FALSE(gemeinsamer()->stapel().isEmpty());
  EXPECT_EQ(gefragt, 2);
}

TEST_F(WirtServer, WhoeverCancelsTheLoginGetsItAgainByReadingAnew) {
  oeffne(auf(ohne_Kennwort(*gemeinsamer())));
  beantworte([](Anmeldefenster& fenster) { QTest::keyClick(&fenster, Qt::Key_Escape); },
      [&] { return !text(u"lbl_Status"_s).isEmpty(); });
  EXPECT_EQ(text(u"lbl_Status"_s), u"Die Anmeldung ist abgebrochen."_s);
  EXPECT_TRUE(gezeigte().isEmpty());
  QTimer::singleShot(
      0, fenster_.get(), [&] { QTest::mouseClick(kind<QPushButton>(u"cmd_NochEinmal"_s), Qt::LeftButton); });
  beantworte([](Anmeldefenster& fenster) { melde_an(fenster, Kennwort); },
      [&] { return text(u"lbl_Status"_s).startsWith(u"13 Vorgänge"_s); });
}

TEST_F(WirtServer, AWrongPasswordInTheCallIsToldAndNotShown) {
  oeffne_und_warte(mit_Kennwort(*gemeinsamer(), u"#fal;sch\"#"_s));
  EXPECT_TRUE(text(u"lbl_Hinweis"_s).contains(u"hat die Anmeldung abgelehnt"_s))
      << text(u"lbl_Hinweis"_s).toStdString();
  EXPECT_FALSE(alle_Texte().contains(u'#')) << alle_Texte().toStdString();
}

TEST_F(WirtServer, AServerThatIsGoneIsToldAndComesBackWithF5) {
  const auto eigener = neuer_Server();
  ASSERT_TRUE(eigener->laeuft());
  fuelle(*eigener, datenbank());
  eigener->steuere(u"halt"_s);
  oeffne(auf(ohne_Kennwort(*eigener)));
  int gefragt = 0;
  beantworte(
      [&](Anmeldefenster& fenster) {
    ++gefragt;
    melde_an(fenster, Kennwort);
      },
      [&] { return !text(u"lbl_Status"_s).isEmpty(); });
  EXPECT_TRUE(text(u"lbl_Status"_s).contains(u"ist nicht zu erreichen"_s)) << text(u"lbl_Status"_s).toStdString();
  eigener->steuere(u"weiter"_s);
  druecke_F5();
  EXPECT_TRUE(text(u"lbl_Status"_s).startsWith(u"13 Vorgänge"_s)) << text(u"lbl_Status"_s).toStdString();
  // A server that was away is no reason to ask again.
  EXPECT_EQ(gefragt, 1);
  eigener->steuere(u"trenne-alle"_s);
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(text(u"lbl_Status"_s).contains(u"abgerissen"_s)) << text(u"lbl_Status"_s).toStdString();
  druecke_F5();
  EXPECT_TRUE(text(u"lbl_Status"_s).startsWith(u"13 Vorgänge"_s));
}

TEST_F(WirtServer, ASlowAnswerIsToldTheWindowLivesMeanwhileAndADeadServerLeavesWhatIsShown) {
  const auto eigener = neuer_Server();
  ASSERT_TRUE(eigener->laeuft());
  fuelle(*eigener, datenbank());
  oeffne_und_warte(mit_Kennwort(*eigener));
  const QStringList alle = gezeigte();
  auto* umfang = kind<QLabel>(u"lbl_Umfang"_s);
  auto* filter = kind<QLineEdit>(u"txt_Filter"_s);
  eigener->steuere(u"stumm 1/SELECT"_s);
  int takte = 0;
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, &takt, [&] { ++takte; });
  takt.start(10);
  QTest::keyClick(filter, Qt::Key_K);
  EXPECT_TRUE(QTest::qWaitFor([&] { return umfang->text() == u"Die Datenbank wird gefragt …"_s; }, 20'000));
  EXPECT_GT(takte, 10);
  EXPECT_TRUE(fenster_->fragt());
  // The next letter gives the question up, which would never be answered.
  QTest::keyClick(filter, Qt::Key_E);
  EXPECT_EQ(gezeigte(), QStringList{u"AB 24-1001 / 1"_s});
  QTest::keyClick(filter, Qt::Key_Escape);
  EXPECT_EQ(gezeigte(), alle);
  eigener->steuere(u"halt"_s);
  QTest::keyClick(filter, Qt::Key_K);
  EXPECT_EQ(gezeigte(), alle);
  EXPECT_EQ(umfang->text(), u"Keine Antwort der Datenbank"_s);
  EXPECT_FALSE(text(u"lbl_Status"_s).isEmpty());
  eigener->steuere(u"weiter"_s);
  QTest::keyClick(filter, Qt::Key_Escape);
  EXPECT_EQ(gezeigte(), alle);
}

TEST_F(WirtServer, StatementsAndRowsSentDoNotGrowWithTheTable) {
  const auto eigener = neuer_Server();
  ASSERT_TRUE(eigener->laeuft());
  fuelle(*eigener, datenbank());
  const auto frage = [&] {
    eigener->steuere(u"protokoll-leeren"_s);
    druecke_F5();
    return eigener->angekommen().size();
  };
  const auto gesandt = [&] {
    return eigener->steuere(u"pakete"_s).section(u"aus="_s, 1).section(u' ', 0, 0).toLongLong();
  };
  oeffne_und_warte(mit_Kennwort(*eigener));
  const qsizetype wenige = frage();
  for (int n = 0; n < 40; ++n) {
    QStringList zeilen;
    for (int i = 0; i < 50; ++i)
      zeilen.append(u"('BEL','AB','26-%1','','Firma %1 GmbH',NULL,NULL)"_s.arg(50 * n + i, 4, 10, QChar(u'0')));
    eigener->steuere(
        u"sql insert into Bild_Vorgaenge (Typ1,Key1,Key2,Key3,Bezeichnung,Ordner,Stand) values "_s + zeilen.join(u','));
  }
  const qsizetype viele = frage();
  EXPECT_EQ(text(u"lbl_Umfang"_s), u"200 von 2.013 Vorgängen"_s);
  EXPECT_EQ(fenster_->liste()->anzahl(), 200);
  // Where there are more than are shown, their number is asked for.
  EXPECT_EQ(viele, wenige + 1);
  const auto vorher = gesandt();
  EXPECT_EQ(frage(), viele);
  const auto je_Frage = gesandt() - vorher;
  EXPECT_LT(je_Frage, 200 * 250);
}

TEST_F(WirtServer, AMissingTableAndAMissingRightAreToldWithAdvice) {
  const auto eigener = neuer_Server();
  ASSERT_TRUE(eigener->laeuft());
  eigener->steuere(u"fehler 1/Select 229 14 The SELECT permission was denied on the object 'Bild_Zuordnungen'."_s);
  oeffne_und_warte(mit_Kennwort(*eigener));
  EXPECT_TRUE(text(u"lbl_Hinweis"_s).contains(u"fehlt ein Recht; „kvobild datenbank pruefen“"_s))
      << text(u"lbl_Hinweis"_s).toStdString();
  eigener->steuere(u"heile"_s);
  eigener->steuere(u"sql drop table Bild_Zuordnungen"_s);
  druecke_F5();
  EXPECT_TRUE(text(u"lbl_Hinweis"_s).contains(u"legt „kvobild datenbank anlegen“ sie an."_s))
      << text(u"lbl_Hinweis"_s).toStdString();
}

/// The program as a process, in a home of its own; ends with the object.
class Programm {
 public:
  Programm(const Testordner& heim, const QStringList& argumente, const QString& kennwort = {}) {
    QProcessEnvironment umgebung;
    umgebung.insert(u"HOME"_s, heim.pfad());
    umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
    if (!kennwort.isEmpty()) umgebung.insert(u"KVOBILD_KENNWORT"_s, kennwort);
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS"})
      if (qEnvironmentVariableIsSet(name)) umgebung.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
    prozess_.setProcessEnvironment(umgebung);
    prozess_.setProcessChannelMode(QProcess::MergedChannels);
    prozess_.start(QStringLiteral(BILDZUORDNUNG_PROGRAMM), argumente);
    EXPECT_TRUE(prozess_.waitForStarted());
  }
  ~Programm() { beende(); }
  Programm(const Programm&) = delete;
  Programm& operator=(const Programm&) = delete;

  /// Everything that it said.
  QString beende() {
    prozess_.kill();
    prozess_.waitForFinished();
    return QString::fromUtf8(prozess_.readAll());
  }

 private:
  QProcess prozess_;
};

/// Contents of all files below a folder.
QString alle_Dateien(const QString& ordner) {
  QString alles;
  QDirIterator lauf(ordner, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (lauf.hasNext()) {
    QFile datei(lauf.next());
    if (datei.open(QIODevice::ReadOnly)) alles += datei.fileName() + u'\n' + QString::fromUtf8(datei.readAll());
  }
  return alles;
}

TEST_F(WirtServer, TheNextStartKnowsTheConnectionAndNothingKnowsThePassword) {
  const QString klammern = u";PWD={"_s + QString(Kennwort).replace(u"}"_s, u"}}"_s) + u'}';
  const QString gaense = u";Password="_s + adodb::Verbindungszeichenfolge::als_wert(Kennwort);
  const QString ole = u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=betrieb;User ID=%2"_s.arg(
      QString::number(gemeinsamer()->port()), Benutzer);
  const QString datei = u".config/bildzuordnung/Verbindung.ini"_s;
  for (const QString& verbindung :
      {ohne_Kennwort(*gemeinsamer()) + klammern, ole + gaense, mit_Kennwort(*gemeinsamer())}) {
    const Testordner heim;
    Programm erstes(heim, {u"--verbindung"_s, verbindung, u"--bilder"_s, heim.pfad()});
    EXPECT_TRUE(QTest::qWaitFor([&] { return heim.vorhanden(datei); }, 60'000)) << erstes.beende().toStdString();
    EXPECT_EQ(erstes.beende(), QString());
    EXPECT_TRUE(QString::fromUtf8(heim.lies(datei)).contains(u"betrieb"_s));
    EXPECT_FALSE(alle_Dateien(heim.pfad()).contains(u'#')) << alle_Dateien(heim.pfad()).toStdString();
    gemeinsamer()->steuere(u"protokoll-leeren"_s);
    Programm zweites(heim, {}, Kennwort);
    EXPECT_TRUE(QTest::qWaitFor([&] { return gemeinsamer()->angekommen().size() >= 2; }, 60'000));
    EXPECT_EQ(zweites.beende(), QString());
    EXPECT_FALSE(alle_Dateien(heim.pfad()).contains(u'#'));
    EXPECT_FALSE(heim.vorhanden(u".local/share/kvobildzuordnung"_s));
  }
}
