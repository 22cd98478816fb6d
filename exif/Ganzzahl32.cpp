#include "exif/Ganzzahl32.h"

#include <limits>

#include "platform/basic/Laufzeitfehler.h"

namespace ganzzahl32 {
namespace {

std::int32_t aus_Text(const QString& text) {
  if (text.isEmpty()) throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
  std::int64_t zahl = 0;
  bool zu_gross = false;
  for (const QChar zeichen : text) {
    if (zeichen < u'0' || zeichen > u'9') throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
    if (!zu_gross) zahl = zahl * 10 + (zeichen.unicode() - u'0');
    zu_gross = zahl > std::numeric_limits<std::int32_t>::max();
  }
  return pruefe(zahl);
}

}  // namespace

std::int32_t pruefe(std::int64_t zahl) {
  if (zahl < std::numeric_limits<std::int32_t>::min() || zahl > std::numeric_limits<std::int32_t>::max())
    throw Laufzeitfehler(fehlernummer::Ueberlauf);
  return static_cast<std::int32_t>(zahl);
}

std::int32_t aus_Wert(const Variant& wert) {
  if (std::holds_alternative<Empty>(wert)) return 0;
  if (const auto* zahl = std::get_if<std::int32_t>(&wert)) return *zahl;
  if (const auto* text = std::get_if<QString>(&wert)) return aus_Text(*text);
  throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
}

}  // namespace ganzzahl32
