#include "host/betrieb/vorgaenge/Listenleser.h"

#include "host/betrieb/vorgaenge/Csvleser.h"
#include "host/betrieb/vorgaenge/Jsonleser.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool beginnt_wie_Json(const QString& datei) {
  Bytestrom strom(datei);
  for (int byte = strom.nimm(); byte >= 0; byte = strom.nimm()) {
    const bool vorlauf =
        byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n' || byte == 0xEF || byte == 0xBB || byte == 0xBF;
    if (!vorlauf) return byte == '{' || byte == '[';
  }
  return false;
}

}  // namespace

Listenleser::~Listenleser() = default;

std::unique_ptr<Listenleser> oeffne_Liste(const QString& datei) {
  const bool csv = datei.endsWith(".csv"_L1, Qt::CaseInsensitive) || datei.endsWith(".txt"_L1, Qt::CaseInsensitive);
  const bool json = !csv && (datei.endsWith(".json"_L1, Qt::CaseInsensitive) || beginnt_wie_Json(datei));
  if (json) return std::make_unique<Jsonleser>(datei);
  return std::make_unique<Csvleser>(datei);
}
