#include "tests/support/Freigabe.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Hoechstens_ms = 20'000;
constexpr int Takt_ms = 20;

void verlange(bool erfuellt, const char* was) {
  if (!erfuellt) throw std::runtime_error(std::string("share: ") + was);
}

/// Where administrators' programs lie is not on everybody's path.
QString programm(const QString& name) {
  const QString gefunden = QStandardPaths::findExecutable(name);
  return gefunden.isEmpty() ? QStandardPaths::findExecutable(name, {u"/usr/sbin"_s, u"/usr/local/sbin"_s}) : gefunden;
}

sockaddr_in adresse(int port) {
  sockaddr_in ort{};
  ort.sin_family = AF_INET;
  ort.sin_port = htons(static_cast<std::uint16_t>(port));
  ort.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return ort;
}

int freier_Port() {
  const int anschluss = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in ort = adresse(0);
  socklen_t laenge = sizeof ort;
  auto* const allgemein = reinterpret_cast<sockaddr*>(&ort);
  verlange(
      anschluss >= 0 && ::bind(anschluss, allgemein, laenge) == 0 && ::getsockname(anschluss, allgemein, &laenge) == 0,
      "free port");
  ::close(anschluss);
  return ntohs(ort.sin_port);
}

bool antwortet(int port) {
  const int anschluss = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in ort = adresse(port);
  const bool verbunden = ::connect(anschluss, reinterpret_cast<const sockaddr*>(&ort), sizeof ort) == 0;
  ::close(anschluss);
  return verbunden;
}

void schreibe(const QString& pfad, const QString& text) {
  QFile datei(pfad);
  verlange(datei.open(QIODevice::WriteOnly) && datei.write(text.toUtf8()) >= 0, "settings of the server");
  datei.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

}  // namespace

Dienst::Dienst(const QString& programm, const QStringList& argumente, const QString& heim) {
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert(u"HOME"_s, heim);
  prozess_.setProcessEnvironment(umgebung);
  prozess_.setProcessChannelMode(QProcess::MergedChannels);
  prozess_.setStandardOutputFile(heim + u'/' + QFileInfo(programm).fileName() + u".log"_s);
  // A group of its own: an interrupt at the keyboard is for the benchmark, which ends what it has started in order.
  prozess_.setChildProcessModifier([] {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  });
  prozess_.start(programm, argumente);
  verlange(prozess_.waitForStarted(), qPrintable(programm));
}

Dienst::~Dienst() {
  prozess_.terminate();
  if (prozess_.waitForFinished(Hoechstens_ms / 4)) return;
  prozess_.kill();
  prozess_.waitForFinished();
}

void Dienst::warte_bis(const char* was, const std::function<bool()>& bereit) {
  for (int vergangen = 0; !bereit(); vergangen += Takt_ms) {
    verlange(!unterbrochen || !unterbrochen(), "interrupted");
    verlange(vergangen < Hoechstens_ms && laeuft(), was);
    ::usleep(Takt_ms * 1000);
  }
}

void Dienst::sende(int signal) {
  // A server has made processes of its own, one for each who asks; they are of its group.
  ::kill(-static_cast<pid_t>(prozess_.processId()), signal);
}

void Dienst::erschlage() {
  sende(SIGKILL);
  prozess_.waitForFinished(Hoechstens_ms);
}

bool Einhaengepunkt::ist_eingehaengt(const QString& ordner) {
  struct stat selbst {};
  struct stat darueber {};
  if (::stat(QFile::encodeName(ordner).constData(), &selbst) != 0) return errno == ENOTCONN;
  return ::stat(QFile::encodeName(ordner + u"/.."_s).constData(), &darueber) == 0 && selbst.st_dev != darueber.st_dev;
}

Einhaengepunkt::~Einhaengepunkt() {
  for (const QString& art : {u"-u"_s, u"-uz"_s})
    if (ist_eingehaengt(ordner_)) QProcess::execute(u"fusermount3"_s, {art, ordner_});
}

QString Freigabe::was_fehlt() {
  if (::geteuid() != 0) return u"root"_s;
  if (::access("/dev/fuse", R_OK | W_OK) != 0) return u"/dev/fuse"_s;
  for (const QString& name : {u"smbd"_s, u"smbnetfs"_s, u"fusermount3"_s})
    if (programm(name).isEmpty()) return name;
  return {};
}

Freigabe::Freigabe(QString ordner, Art art) : ordner_(std::move(ordner)), port_(freier_Port()) {
  schreibe_Einstellungen(art);
  starte();
}

void Freigabe::starte() {
  server_.emplace(programm(u"smbd"_s),
      QStringList{u"--foreground"_s, u"--no-process-group"_s, u"--configfile="_s + heim_.filePath(u"smbd.conf"_s)},
      heim_.path());
  server_->warte_bis("smbd does not answer", [this] { return antwortet(port_); });
}

void Freigabe::erschlage() {
  server_->erschlage();
  server_.reset();
}

void Freigabe::schreibe_Einstellungen(Art art) const {
  QString ordner_des_Servers;
  for (const QString& name : {u"private"_s, u"lock"_s, u"state"_s, u"cache"_s, u"pid"_s, u"ncalrpc"_s}) {
    verlange(QDir(heim_.path()).mkdir(name), "folder of the server");
    ordner_des_Servers += name + (name == "ncalrpc"_L1 || name == "private"_L1 ? u" dir = "_s : u" directory = "_s) +
        heim_.filePath(name) + u'\n';
  }
  QFile::setPermissions(
      heim_.filePath(u"private"_s), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  const passwd* const benutzer = ::getpwuid(::geteuid());
  verlange(benutzer != nullptr, "user");
  schreibe(heim_.filePath(u"smbd.conf"_s),
      u"[global]\nserver role = standalone server\ninterfaces = 127.0.0.1\nbind interfaces only = yes\n"
      "smb ports = %1\n%2log file = %3\nmap to guest = Bad User\nguest account = %4\ndisable spoolss = yes\n"
      "load printers = no\ndisable netbios = yes\n[bilder]\npath = %5\nread only = %6\nguest ok = yes\n"_s.arg(port_)
          .arg(ordner_des_Servers, heim_.filePath(u"smbd.log"_s), QString::fromLocal8Bit(benutzer->pw_name),
              QFileInfo(ordner_).absoluteFilePath(), art == Art::NurLesen ? u"yes"_s : u"no"_s));
}

Einhaengung::Einhaengung(const Freigabe& freigabe, bool nur_lesen)
    : port_(freigabe.port()), eingehaengt_(heim_.filePath(u"netz"_s)) {
  verlange(QDir(heim_.path()).mkdir(u"netz"_s) && QDir(heim_.path()).mkdir(u".smb"_s), "folder of the mount");
  schreibe(heim_.filePath(u".smb/smb.conf"_s), u"[global]\nclient min protocol = SMB2\n"_s);
  schreibe(heim_.filePath(u".smb/smbnetfs.conf"_s), {});
  netz_.emplace(programm(u"smbnetfs"_s),
      QStringList{eingehaengt_.ordner(), u"-f"_s, u"-o"_s,
          (nur_lesen ? u"ro,"_s : QString()) + u"smb_query_browsers=false,config="_s +
              heim_.filePath(u".smb/smbnetfs.conf"_s)},
      heim_.path());
  netz_->warte_bis(
      "smbnetfs does not mount", [this] { return Einhaengepunkt::ist_eingehaengt(eingehaengt_.ordner()); });
  netz_->warte_bis("the share cannot be listed", [this] { return QDir(ordner()).exists(); });
}

QString Einhaengung::ordner() const {
  return eingehaengt_.ordner() + u"/127.0.0.1:%1/bilder"_s.arg(port_);
}
