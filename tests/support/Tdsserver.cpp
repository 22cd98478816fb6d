#include "tests/support/Tdsserver.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

int verbinde(int port) {
  const int leitung = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in ziel{};
  ziel.sin_family = AF_INET;
  ziel.sin_port = htons(static_cast<std::uint16_t>(port));
  ziel.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(leitung, reinterpret_cast<const sockaddr*>(&ziel), sizeof ziel) == 0) return leitung;
  close(leitung);
  return -1;
}

int lies_Zahl(QProcess& prozess) {
  while (!prozess.canReadLine())
    if (!prozess.waitForReadyRead(30000)) return 0;
  return prozess.readLine().trimmed().toInt();
}

}  // namespace

QString Tdsserver::hindernis(Maschine maschine) {
  for (const QString& programm : {u"python3"_s, u"odbcinst"_s})
    if (QStandardPaths::findExecutable(programm).isEmpty()) return programm + u" is missing"_s;
  if (maschine == Maschine::H2 && QStandardPaths::findExecutable(u"java"_s).isEmpty()) return u"java is missing"_s;
  if (maschine == Maschine::H2 && !QFileInfo::exists(u"/usr/share/java/h2.jar"_s))
    return u"H2 is missing (libh2-java)"_s;
  QProcess frage;
  frage.start(u"odbcinst"_s, {u"-q"_s, u"-d"_s});
  frage.waitForFinished();
  return frage.readAllStandardOutput().contains("[FreeTDS]") ? QString()
                                                             : u"unixODBC has no driver FreeTDS (package tdsodbc)"_s;
}

Tdsserver::Tdsserver(const QString& benutzer, const QString& kennwort, Maschine maschine, const QStringList& schalter) {
  prozess_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  prozess_.start(u"python3"_s,
      QStringList{QStringLiteral(KVO_QUELLORDNER "/tests/tds/starte.py"), u"--benutzer"_s, benutzer, u"--kennwort"_s,
          kennwort, u"--maschine"_s, maschine == Maschine::H2 ? u"h2"_s : u"sqlite"_s} +
          schalter);
  // Not before the process has begun.
  port_ = lies_Zahl(prozess_);  // NOLINT(cppcoreguidelines-prefer-member-initializer)
  if (port_ > 0) leitung_ = verbinde(lies_Zahl(prozess_));
  if (leitung_ < 0) port_ = 0;
}

Tdsserver::~Tdsserver() {
  if (leitung_ >= 0) close(leitung_);
  prozess_.closeWriteChannel();
  if (!prozess_.waitForFinished(20000)) prozess_.kill();
}

QString Tdsserver::steuere(const QString& zeile) {
  const QByteArray frage = zeile.toUtf8() + '\n';
  EXPECT_EQ(write(leitung_, frage.constData(), static_cast<std::size_t>(frage.size())), frage.size());
  QByteArray antwort;
  char zeichen = 0;
  while (read(leitung_, &zeichen, 1) == 1 && zeichen != '\n') antwort += zeichen;
  EXPECT_TRUE(antwort.startsWith("ok")) << antwort.toStdString();
  return QString::fromUtf8(antwort.sliced(qMin<qsizetype>(3, antwort.size())));
}

QJsonArray Tdsserver::protokoll() {
  return QJsonDocument::fromJson(steuere(u"protokoll"_s).toUtf8()).array();
}

QStringList Tdsserver::stapel() {
  QStringList texte;
  for (const auto eintrag : protokoll())
    if (eintrag["art"_L1] == "stapel"_L1) texte.append(eintrag["text"_L1].toString());
  return texte;
}

QStringList Tdsserver::angekommen() {
  QStringList texte;
  for (const auto eintrag : protokoll()) {
    const QString art = eintrag["art"_L1].toString();
    if (art == "anmeldung"_L1 || art == "ende"_L1) continue;
    if (!eintrag["gebunden"_L1].isUndefined()) {
      texte.append(eintrag["anweisung"_L1].toString());
      continue;
    }
    const QString text = eintrag["text"_L1].toString();
    texte.append(art == "stapel"_L1 ? text : u"<%1 %2%3>"_s.arg(art, eintrag["name"_L1].toString(), text));
  }
  return texte;
}

QList<QJsonArray> Tdsserver::gebundene() {
  QList<QJsonArray> werte;
  for (const auto eintrag : protokoll())
    if (eintrag["gebunden"_L1].isArray()) werte.append(eintrag["gebunden"_L1].toArray());
  return werte;
}

QString Tdsserver::mache_Zertifikate(const QString& ordner) {
  if (QStandardPaths::findExecutable(u"openssl"_s).isEmpty()) return u"openssl is missing"_s;
  QProcess macher;
  macher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  macher.start(u"python3"_s, {QStringLiteral(KVO_QUELLORDNER "/tests/tds/zertifikate.py"), ordner});
  macher.waitForFinished();
  return macher.exitCode() == 0 ? QString() : u"openssl made no certificates"_s;
}

Tdsserver::Mitschnitt Tdsserver::mitschnitt() {
  Mitschnitt alle;
  for (const auto leitung : QJsonDocument::fromJson(steuere(u"mitschnitt"_s).toUtf8()).array()) {
    alle.ein += QByteArray::fromHex(leitung["ein"_L1].toString().toLatin1());
    alle.aus += QByteArray::fromHex(leitung["aus"_L1].toString().toLatin1());
  }
  return alle;
}

/// As 8-bit or 16-bit characters, or as the protocol writes a password: the halves of each byte swapped, then changed
/// by A5.
bool Tdsserver::Mitschnitt::enthaelt(const QString& text) const {
  const QByteArray weit(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  QByteArray verwirrt = weit;
  for (char& zeichen : verwirrt) {
    const auto byte = static_cast<unsigned char>(zeichen);
    zeichen = static_cast<char>(((byte << 4 | byte >> 4) & 0xFF) ^ 0xA5);
  }
  const QByteArray formen[] = {weit, verwirrt, text.toUtf8(), text.toLatin1()};
  return std::any_of(std::begin(formen), std::end(formen),
      [&](const QByteArray& form) { return ein.contains(form) || aus.contains(form); });
}
