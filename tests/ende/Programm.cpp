#include "tests/ende/Programm.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTime>
#include <cstdio>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

/// How long an effect may take, and how long is waited between two looks, in milliseconds.
constexpr int Geduld = 30'000;
constexpr int Blick = 25;

const QString Kennwort = u"Werkstatt-7"_s;

bool ueber_Tds() {
  return qEnvironmentVariableIsSet("KVO_ENDE_TDS");
}

int faktor() {
  return std::max(1, qEnvironmentVariableIntValue("KVO_ENDE_FAKTOR"));
}

}  // namespace

Programm::Programm(Xsitzung& x, const Testordner& ordner) : x_(x), ordner_(ordner), geduld_(Geduld * faktor()) {}

Programm::~Programm() {
  if (prozess_.state() == QProcess::NotRunning) return;
  prozess_.kill();
  prozess_.waitForFinished();
}

QString Programm::hindernis() {
  return ueber_Tds() ? Tdsserver::hindernis() : QString();
}

/// The server's database begins as a copy of the samples' own.
void Programm::stelle_Server_bereit() {
  QProcess kvobild;
  kvobild.start(QStringLiteral(KVOBILD_PROGRAMM), {u"beispieldaten"_s, datenordner()});
  if (!kvobild.waitForFinished(geduld_) || kvobild.exitCode() != 0)
    throw std::runtime_error("no sample data: " + kvobild.readAllStandardError().toStdString());
  const QString datei = ordner_.pfad(u"server.db"_s);
  if (!QFile::copy(datenordner() + u"/betrieb.db"_s, datei)) throw std::runtime_error("the database can't be copied");
  server_ = std::make_unique<Tdsserver>(
      u"buero"_s, Kennwort, Tdsserver::Maschine::Sqlite, QStringList{u"--datei"_s, datei, u"--ohne-tabellen"_s});
  if (!server_->laeuft()) throw std::runtime_error("the TDS server does not start");
}

QStringList Programm::argumente() {
  if (!ueber_Tds()) return {u"--datenordner"_s, datenordner(), u"--beispiele"_s};
  stelle_Server_bereit();
  return {u"--verbindung"_s,
      u"Provider=SQLOLEDB;Data Source=127.0.0.1,%1;Initial Catalog=betrieb;User ID=buero;Password=%2"_s
          .arg(server_->port())
          .arg(Kennwort),
      u"--bilder"_s, datenordner() + u"/bilder"_s};
}

void Programm::starte() {
  QDir().mkpath(ordner_.pfad(u"heim"_s));
  QProcessEnvironment umgebung;
  umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
  umgebung.insert(u"HOME"_s, ordner_.pfad(u"heim"_s));
  umgebung.insert(u"DISPLAY"_s, x_.bildschirm());
  umgebung.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(AUSKUNFT_PLUGINS));
  umgebung.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"kvo_auskunft"_s);
  umgebung.insert(u"KVO_AUSKUNFT"_s, ordner_.pfad(u"auskunft"_s));
  for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "QT_ENABLE_REGEXP_JIT"})
    if (qEnvironmentVariableIsSet(name)) umgebung.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
  prozess_.setProcessEnvironment(umgebung);
  prozess_.setWorkingDirectory(ordner_.pfad(u"heim"_s));
  QStringList worte = qEnvironmentVariable("KVO_ENDE_VORSPANN").split(u' ', Qt::SkipEmptyParts);
  worte << QStringLiteral(BILDZUORDNUNG_PROGRAMM) << argumente();
  const QString programm = worte.takeFirst();
  prozess_.start(programm, worte);
  verbinde();
}

void Programm::verbinde() {
  for (const QDeadlineTimer frist(geduld_); !frist.hasExpired();) {
    auskunft_.connectToServer(ordner_.pfad(u"auskunft"_s));
    if (auskunft_.waitForConnected(Blick)) return;
    if (prozess_.waitForFinished(Blick)) break;
  }
  scheitere("the program does not start", prozess_.readAllStandardError());
}

QByteArray Programm::frage() {
  auskunft_.write("?\n");
  auskunft_.flush();
  for (const QDeadlineTimer frist(geduld_); !frist.hasExpired() && !auskunft_.canReadLine();)
    if (!auskunft_.waitForReadyRead(Blick) && prozess_.waitForFinished(0)) break;
  return auskunft_.readLine();
}

bool Programm::bereit(const Anblick& anblick) const {
  return anblick.kennung != 0 && anblick.aktiv && !anblick.sanduhr && x_.ort(anblick.kennung) == anblick.ort;
}

Anblick Programm::warte(const char* worauf, const Bedingung& bedingung) {
  // Slow runs are long, and somebody sits before them.
  if (geduld_ > Geduld) std::fprintf(stderr, "%s %s\n", qPrintable(QTime::currentTime().toString()), worauf);
  QByteArray zuletzt;
  bool schon = false;
  for (const QDeadlineTimer frist(geduld_); !frist.hasExpired();) {
    const QByteArray jetzt = frage();
    const Anblick anblick = Anblick::lies(jetzt);
    const bool gut = bereit(anblick) && bedingung(anblick);
    if (gut && schon && jetzt == zuletzt) return anblick;
    schon = gut;
    zuletzt = jetzt;
    if (prozess_.waitForFinished(Blick)) break;
  }
  scheitere(std::string("not to be seen: ") + worauf, zuletzt);
}

void Programm::scheitere(const std::string& grund, const QByteArray& zuletzt) {
  const QString datei = QDir::current().filePath(u"ende_fehler.png"_s);
  x_.aufnahme().save(datei);
  const bool lebt = prozess_.state() == QProcess::Running;
  throw std::runtime_error(grund + (lebt ? "" : " (the program has ended)") + "\nthe screen: " + datei.toStdString() +
      "\nstandard error: " + prozess_.readAllStandardError().toStdString() +
      "\nthe last sight: " + zuletzt.left(6000).toStdString());
}

Element Programm::greifbar(const char* worauf, const std::function<Element(const Anblick&)>& wahl) {
  Element gewaehltes;
  warte(worauf, [&](const Anblick& a) {
    gewaehltes = wahl(a);
    return gewaehltes.treffbar && gewaehltes.frei;
  });
  return gewaehltes;
}

void Programm::klicke(const QString& name) {
  const std::string worauf = name.toStdString() + " can be clicked";
  x_.klicke(greifbar(worauf.c_str(), [&](const Anblick& a) { return a[name]; }).ort.center());
}

void Programm::klicke_Haken(const QString& name) {
  const std::string worauf = name.toStdString() + " can be ticked";
  const QRect ort = greifbar(worauf.c_str(), [&](const Anblick& a) { return a[name]; }).ort;
  x_.klicke({ort.left() + 10, ort.center().y()});
}

void Programm::klicke_Knopf(const QString& text) {
  const std::string worauf = "a button \"" + text.toStdString() + '"';
  x_.klicke(greifbar(worauf.c_str(), [&](const Anblick& a) { return a.knopf(text); }).ort.center());
}

QPoint Programm::zeile(const QString& liste, const QString& text) {
  const std::string worauf = liste.toStdString() + " has a row " + text.toStdString();
  constexpr int Umdrehungen = 200;
  for (int i = 0; i < Umdrehungen; ++i) {
    const Anblick a = warte(worauf.c_str(), [&](const Anblick& b) { return b.zeile(liste, text) != nullptr; });
    const QRect flaeche = a[liste].flaeche;
    const QPoint stelle = a.zeile(liste, text)->orte.value(0).center();
    if (flaeche.contains(stelle)) return stelle;
    x_.rolle(flaeche.center());
  }
  scheitere(worauf + " that can be rolled into sight", {});
}

QRect Programm::zelle(const QString& liste, int zeile, int spalte) {
  const std::string worauf = liste.toStdString() + " has that cell";
  return warte(worauf.c_str(), [&](const Anblick& a) { return a[liste].zeilen.size() > zeile; })[liste]
      .zeilen[zeile]
      .orte.value(spalte);
}

void Programm::ueberschreibe(const QString& feld, const QString& text) {
  klicke(feld);
  warte("the field has the keys", [&](const Anblick& a) { return a[feld].fokus && x_.hat_Tasten(a.kennung); });
  x_.taste(u"Control+a"_s);
  x_.tippe(text);
  const std::string worauf = feld.toStdString() + " shows what was typed";
  warte(worauf.c_str(), [&](const Anblick& a) { return a[feld].text == text; });
}

int Programm::warte_auf_Ende() {
  if (!prozess_.waitForFinished(geduld_)) scheitere("the program does not end", {});
  fehlerausgabe_ = QString::fromUtf8(prozess_.readAllStandardError());
  return prozess_.exitStatus() == QProcess::NormalExit ? prozess_.exitCode() : -1;
}
