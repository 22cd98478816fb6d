#include "host/bericht/ausgabe/Bildleser.h"

#include <new>

#include "host/bericht/ausgabe/Ortsangaben.h"
#include "host/betrieb/Ausgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int32_t Datei_fehlt = 53;
constexpr std::int32_t Ordner_fehlt = 76;

}  // namespace

/// Why not, or nothing. A picture that tells a place against the user's will is rather left out than given away.
QString Bildleser::lies(const QString& quelle, QByteArray& bytes) const {
  try {
    if (const auto grund = versuche([&] { bytes = dateien::lies_alles(quelle); })) {
      const bool fehlt = grund->Nummer() == Datei_fehlt || grund->Nummer() == Ordner_fehlt;
      return fehlt ? u"Die Datei fehlt in der Bildablage."_s : grund->Beschreibung() + u'.';
    }
    if (mit_Ort_ || ortsangaben::entferne(bytes) != ortsangaben::Befund::Nicht_zu_entfernen) return {};
    return u"Ihre Ortsangaben sind nicht zu entfernen."_s;
  } catch (const std::bad_alloc&) {
    // Between a library and its call back nothing may fly.
    return u"Der Speicher reicht nicht."_s;
  }
}

std::optional<QByteArray> Bildleser::lies(const Ausgabebild& bild) {
  if (angehalten_ || (fortschritt_ && !fortschritt_(fertige_, alle_))) {
    angehalten_ = true;
    return std::nullopt;
  }
  ++fertige_;
  QByteArray bytes;
  const QString grund = lies(bild.quelle, bytes);
  if (grund.isEmpty()) return bytes;
  ausgelassene_.push_back({bild.genannt, grund});
  return std::nullopt;
}
