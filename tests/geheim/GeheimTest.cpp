// A password goes to the driver and nowhere else: not to what the programs print, show, or leave behind them.
#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QStringEncoder>
#include <optional>

#include "platform/adodb/Verbindungszeichenfolge.h"
#include "tests/support/Tdsserver.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Geduld = 60'000;

/// Each sign that parts a connect string or an error text leaves a piece that could be found.
const QString Kennwort = u"Zwetschge;Spargel'Rettich\"Petersil=Koriander"_s;
const QString Unmoegliches = u"Zwetschge;Spargel}Rettich=Petersil};Koriander"_s;
const QStringList Stuecke{u"Zwetschge"_s, u"Spargel"_s, u"Rettich"_s, u"Petersil"_s, u"Koriander"_s};

/// The pieces that these bytes hold, as 8-bit or 16-bit characters.
QStringList gefundene(const QByteArray& bytes) {
  QStringList liste;
  for (const QString& stueck : Stuecke)
    if (bytes.toLower().contains(stueck.toLower().toUtf8()) ||
        bytes.contains(QByteArray(QStringEncoder(QStringEncoder::Utf16LE)(stueck))))
      liste.append(stueck);
  return liste;
}

struct Fall {
  const char* name;
  /// Line to the server's control channel beforehand.
  QString steuerung;
  /// The connect string behind "Data Source=…".
  QString anmeldung;
  /// A piece of what the user is told.
  QString worte;
  bool server_da = true;
};

QString zitiert(const QString& kennwort) {
  return adodb::Verbindungszeichenfolge::als_wert(kennwort);
}

QList<Fall> faelle() {
  const QString benannt = u"User ID=geheim;Connect Timeout=2;Password="_s;
  return {
      {"refused login", {}, benannt + zitiert(Kennwort), u"hat die Anmeldung abgelehnt"_s},
      {"the server repeats the password",
          u"anmeldung * verweigere 18456 14 Login failed for PWD=%1 today"_s.arg(Kennwort), benannt + zitiert(Kennwort),
          u"Login failed for PWD=***"_s},
      {"silent server", u"anmeldung * stumm"_s, benannt + zitiert(Kennwort), u"Sekunden nicht geantwortet"_s},
      {"cut login", u"anmeldung * trenne"_s, benannt + zitiert(Kennwort), u"nicht zu erreichen"_s},
      {"dead server", {}, benannt + zitiert(Kennwort), u"nicht zu erreichen"_s, false},
      {"a password that the driver cannot take", {}, benannt + zitiert(Unmoegliches), u"FreeTDS kann einen Wert"_s},
      {"a forgotten quote", {}, benannt + Kennwort, u"Schlüsselwort"_s},
      {"a forgotten semicolon", {}, u"User ID=geheim Password="_s + Kennwort, u"Schlüsselwort"_s},
  };
}

class Geheim : public testing::Test {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    server_.emplace(u"geheim"_s, u"ein anderes"_s);
    ASSERT_TRUE(server_->laeuft());
  }

  QString verbindung(const Fall& fall) {
    server_->steuere(u"heile"_s);
    if (!fall.steuerung.isEmpty()) server_->steuere(fall.steuerung);
    return u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=b;Driver=FreeTDS;%2"_s
        .arg(fall.server_da ? server_->port() : 1)
        .arg(fall.anmeldung);
  }
  QProcessEnvironment umgebung(const QString& heim) {
    QDir().mkpath(heim);
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert(u"HOME"_s, heim);
    umgebung.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    for (const QString& name : {u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s}) umgebung.remove(name);
    return umgebung;
  }
  static void pruefe(const QByteArray& bytes, const QString& was) {
    EXPECT_EQ(gefundene(bytes), QStringList()) << was.toStdString() << ": " << bytes.left(3000).toStdString();
  }
  /// Names and contents of all files below a folder.
  static void pruefe_Dateien(const QString& ordner) {
    for (QDirIterator dateien(ordner, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
         dateien.hasNext();) {
      QFile datei(dateien.next());
      ASSERT_TRUE(datei.open(QIODevice::ReadOnly)) << datei.fileName().toStdString();
      pruefe(datei.fileName().toUtf8() + '\n' + datei.readAll(), datei.fileName());
    }
  }
  static void pruefe_Ausgaben(QProcess& prozess) {
    pruefe(prozess.readAllStandardOutput(), u"standard output"_s);
    pruefe(prozess.readAllStandardError(), u"standard error"_s);
  }

  Testordner ordner_;
  std::optional<Tdsserver> server_;
};

/// What stands in the program's front window, as one line of JSON, as soon as it holds these words.
QByteArray anblick_mit(const QString& adresse, const QString& worte, QProcess& prozess) {
  QLocalSocket auskunft;
  QByteArray letzter;
  for (const QDeadlineTimer frist(Geduld); !frist.hasExpired() && prozess.state() == QProcess::Running;) {
    if (auskunft.state() != QLocalSocket::ConnectedState) {
      auskunft.connectToServer(adresse);
      if (!auskunft.waitForConnected(100)) prozess.waitForFinished(50);
      continue;
    }
    auskunft.write("?\n");
    while (!auskunft.canReadLine() && auskunft.waitForReadyRead(5000)) continue;
    letzter = auskunft.readLine();
    if (letzter.contains(worte.toUtf8())) return letzter;
    prozess.waitForFinished(50);
  }
  ADD_FAILURE() << "not to be seen: " << worte.toStdString() << " in " << letzter.left(4000).toStdString();
  return letzter;
}

}  // namespace

TEST(Geheimnis, APieceIsFoundInEitherWidthOfCharacters) {
  EXPECT_EQ(gefundene("xx ZWETSCHGE"), QStringList(u"Zwetschge"_s));
  EXPECT_EQ(gefundene(QByteArray("S\0p\0a\0r\0g\0e\0l\0", 14)), QStringList(u"Spargel"_s));
}

TEST_F(Geheim, KvobildTellsWhatFailedAndNeverThePassword) {
  for (const Fall& fall : faelle()) {
    SCOPED_TRACE(fall.name);
    const QString heim = ordner_.pfad(QString::fromLatin1(fall.name));
    QProcess prozess;
    prozess.setProcessEnvironment(umgebung(heim));
    prozess.setWorkingDirectory(heim);
    prozess.start(QStringLiteral(KVOBILD_PROGRAMM),
        {u"lesen"_s, u"--verbindung"_s, verbindung(fall), u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s});
    ASSERT_TRUE(prozess.waitForFinished(Geduld));
    EXPECT_EQ(prozess.exitCode(), 3);
    const QByteArray meldung = prozess.readAllStandardError();
    EXPECT_TRUE(meldung.contains(fall.worte.toUtf8())) << meldung.toStdString();
    pruefe(meldung, u"standard error"_s);
    pruefe_Ausgaben(prozess);
    pruefe_Dateien(heim);
  }
}

TEST_F(Geheim, TheWindowTellsWhatFailedAndNeverThePassword) {
  for (const Fall& fall : faelle()) {
    SCOPED_TRACE(fall.name);
    const QString heim = ordner_.pfad(QString::fromLatin1(fall.name));
    QProcessEnvironment umgebung = this->umgebung(heim);
    // A socket's name has little room.
    const QString adresse = ordner_.pfad(u"a"_s);
    QFile::remove(adresse);
    umgebung.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    umgebung.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(AUSKUNFT_PLUGINS));
    umgebung.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"kvo_auskunft"_s);
    umgebung.insert(u"KVO_AUSKUNFT"_s, adresse);
    QProcess prozess;
    prozess.setProcessEnvironment(umgebung);
    prozess.setWorkingDirectory(heim);
    prozess.start(QStringLiteral(BILDZUORDNUNG_PROGRAMM), {u"--verbindung"_s, verbindung(fall)});
    ASSERT_TRUE(prozess.waitForStarted(Geduld));
    pruefe(anblick_mit(adresse, fall.worte, prozess), u"the window"_s);
    prozess.terminate();
    prozess.waitForFinished(Geduld);
    pruefe_Ausgaben(prozess);
    pruefe_Dateien(heim);
  }
}
