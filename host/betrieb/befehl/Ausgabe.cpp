#include "host/betrieb/befehl/Ausgabe.h"

#include <unistd.h>

#include <QByteArray>
#include <QJsonDocument>
#include <algorithm>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

void schreibe(std::FILE* strom, const QByteArray& bytes) {
  static_cast<void>(std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), strom));
}

QString& name_des_Programms() {
  static QString name = u"kvobild"_s;
  return name;
}

/// A bar stands on the terminal.
bool balken = false;

void loesche_Balken() {
  if (!balken) return;
  balken = false;
  schreibe(stderr, "\r\033[K");
}

}  // namespace

namespace ausgabe {

void programm(const QString& name) {
  name_des_Programms() = name;
}

void zeile(const QString& text) {
  loesche_Balken();
  schreibe(stdout, (text + u'\n').toUtf8());
}

void json(const QJsonObject& objekt) {
  loesche_Balken();
  schreibe(stdout, QJsonDocument(objekt).toJson(QJsonDocument::Compact) + '\n');
}

void meldung(const QString& text) {
  loesche_Balken();
  // What was said so far stands in front of the message, also where both streams end in one file.
  static_cast<void>(std::fflush(stdout));
  schreibe(stderr, (name_des_Programms() + u": "_s + text + u'\n').toUtf8());
}

Fortschritt::Fortschritt(QString was) : was_(std::move(was)) {}

Fortschritt::~Fortschritt() {
  loesche_Balken();
}

bool Fortschritt::zeige(std::size_t getan, std::size_t von) {
  constexpr std::size_t Breite = 30;
  constexpr qint64 Millisekunden = 100;
  static const bool Terminal = ::isatty(STDERR_FILENO) == 1;
  if (!Terminal || von == 0 || (zuletzt_.isValid() && zuletzt_.elapsed() < Millisekunden)) return true;
  zuletzt_.start();
  const auto voll = static_cast<qsizetype>(std::min(getan, von) * Breite / von);
  const QString strich = QString(voll, u'#') + QString(static_cast<qsizetype>(Breite) - voll, u'.');
  schreibe(stderr, u"\r\033[K%1 [%2] %3 von %4"_s.arg(was_, strich).arg(getan).arg(von).toUtf8());
  balken = true;
  return true;
}

bool abgeschlossen() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace ausgabe
