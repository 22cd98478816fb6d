#include "platform/host/KVOCore.h"

#include <QByteArray>
#include <cstdio>

#include "platform/basic/Dienstplatz.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KonsolenCore final : public KVOCore {
 public:
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override {
    if (!mitMeldung) return;
    const QByteArray zeile =
        u"Fehler %1 in %2.%3: %4\n"_s.arg(QString::number(nummer), modul, prozedur, beschreibung).toUtf8();
    std::fwrite(zeile.constData(), 1, static_cast<std::size_t>(zeile.size()), stderr);
  }
};

using Platz = Dienstplatz<KVOCore, KonsolenCore>;

}  // namespace

Fensterplatz::~Fensterplatz() = default;

KeyHandler::~KeyHandler() = default;

void KeyHandler::KeyDown(std::int16_t KeyCode, std::int16_t Shift) {
  if (eingeschaltet_ && bei_KeyDown) bei_KeyDown(KeyCode, Shift);
}

void KeyHandler::KeyPress(std::int16_t KeyAscii) {
  if (eingeschaltet_ && bei_KeyPress) bei_KeyPress(KeyAscii);
}

void KeyHandler::KeyUp(std::int16_t KeyCode, std::int16_t Shift) {
  if (eingeschaltet_ && bei_KeyUp) bei_KeyUp(KeyCode, Shift);
}

KVOCore::~KVOCore() = default;

void KVOCore::FensterWiederherstellen(const QString& /*anwendung*/, Fensterplatz& /*fenster*/) {}

void KVOCore::FensterSpeichern(const QString& /*anwendung*/, const Fensterplatz& /*fenster*/) {}

std::shared_ptr<KeyHandler> KVOCore::NeuerKeyHandler() {
  return std::make_shared<KeyHandler>();
}

KVOCore& KVOCore::aktuell() {
  return *Platz::in_Kraft();
}

std::shared_ptr<KVOCore> KVOCore::setze(std::shared_ptr<KVOCore> core) {
  return Platz::setze(std::move(core));
}
