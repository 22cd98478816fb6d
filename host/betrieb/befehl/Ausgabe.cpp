#include "host/betrieb/befehl/Ausgabe.h"

#include <QByteArray>
#include <QJsonDocument>
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

}  // namespace

namespace ausgabe {

void programm(const QString& name) {
  name_des_Programms() = name;
}

void zeile(const QString& text) {
  schreibe(stdout, (text + u'\n').toUtf8());
}

void json(const QJsonObject& objekt) {
  schreibe(stdout, QJsonDocument(objekt).toJson(QJsonDocument::Compact) + '\n');
}

void meldung(const QString& text) {
  // What was said so far stands in front of the message, also where both streams end in one file.
  static_cast<void>(std::fflush(stdout));
  schreibe(stderr, (name_des_Programms() + u": "_s + text + u'\n').toUtf8());
}

bool abgeschlossen() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace ausgabe
