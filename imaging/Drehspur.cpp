#include "imaging/Drehspur.h"

#include <algorithm>
#include <vector>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"

namespace drehspur {
namespace {

std::vector<dateien::Kennung>& gedrehte() {
  static std::vector<dateien::Kennung> liste;
  return liste;
}

/// A renamed file stays the one that was turned, so the time of its entry does not count.
bool dieselbe(const dateien::Kennung& a, const dateien::Kennung& b) {
  return a.geraet == b.geraet && a.inode == b.inode && a.laenge == b.laenge && a.geaendert_ns == b.geaendert_ns;
}

}  // namespace

void merke(const QString& datei) {
  fehler::still_enden([&] { gedrehte().push_back(dateien::kennung(datei)); });
}

bool hat(const QString& datei) {
  return fehler::still_enden([&] {
    if (gedrehte().empty()) return false;
    const dateien::Kennung diese = dateien::kennung(datei);
    return std::any_of(
        gedrehte().begin(), gedrehte().end(), [&](const auto& andere) { return dieselbe(andere, diese); });
  });
}

}  // namespace drehspur
