#include "host/betrieb/vorgaenge/Bytestrom.h"

#include <QFileInfo>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 Stueck = 256 * 1024;

}  // namespace

Bytestrom::Bytestrom(const QString& datei) : name_(datei), datei_(datei) {
  const QFileInfo angabe(datei);
  if (!angabe.exists()) throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es nicht."_s.arg(datei));
  if (!angabe.isFile()) throw Abbruch(Ausgang::Datei, u"„%1“ ist keine Datei."_s.arg(datei));
  if (!datei_.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ ist nicht zu lesen: %2"_s.arg(datei, datei_.errorString()));
}

void Bytestrom::von_vorn() {
  if (!datei_.seek(0)) throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ ist nicht noch einmal zu lesen."_s.arg(name_));
  puffer_.clear();
  ort_ = 0;
  davor_ = 0;
}

bool Bytestrom::fuelle() {
  davor_ += puffer_.size();
  ort_ = 0;
  puffer_.resize(Stueck);
  const qint64 gelesen = datei_.read(puffer_.data(), Stueck);
  puffer_.resize(std::max<qint64>(gelesen, 0));
  if (gelesen < 0)
    throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ ist nicht zu lesen: %2"_s.arg(name_, datei_.errorString()));
  return gelesen > 0;
}
