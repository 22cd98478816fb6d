#include "tests/dauer/Schaden.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

using Zufall = std::mt19937_64;

/// From 0 up to, not with, `grenze`; not by a distribution of the library, which may be another one elsewhere.
qsizetype unter(qsizetype grenze, Zufall& zufall) {
  return grenze <= 0 ? 0 : static_cast<qsizetype>(zufall() % static_cast<std::uint64_t>(grenze));
}

/// Half of the places lie in the header, where damage does more.
qsizetype stelle(const QByteArray& bytes, Zufall& zufall) {
  constexpr qsizetype Kopf = 200;
  return unter(zufall() % 2 == 0 ? std::min(bytes.size(), Kopf) : bytes.size(), zufall);
}

void aendere_Bytes(QByteArray& bytes, Zufall& zufall) {
  for (auto rest = 1 + unter(12, zufall); rest > 0; --rest)
    bytes[stelle(bytes, zufall)] = static_cast<char>(zufall() & 0xff);
}

void kippe_Bits(QByteArray& bytes, Zufall& zufall) {
  for (auto rest = 1 + unter(4, zufall); rest > 0; --rest) {
    const qsizetype ort = stelle(bytes, zufall);
    bytes[ort] = static_cast<char>(bytes[ort] ^ 1 << zufall() % 8);
  }
}

/// Of 1, 2 or 4 bytes, in either order.
void setze_Randwert(QByteArray& bytes, Zufall& zufall) {
  constexpr std::array<std::uint32_t, 12> Werte{
      0, 1, 0x7f, 0x80, 0xff, 0x7fff, 0x8000, 0xffff, 0x10000, 0x7fffffff, 0x80000000, 0xffffffff};
  const std::uint32_t wert = Werte.at(zufall() % Werte.size());
  const int laenge = 1 << zufall() % 3;
  const bool hoch = zufall() % 2 == 0;
  const qsizetype ort = stelle(bytes, zufall);
  for (int i = 0; i < laenge && ort + i < bytes.size(); ++i)
    bytes[ort + i] = static_cast<char>(wert >> 8 * (hoch ? laenge - 1 - i : i) & 0xff);
}

void schneide_ab(QByteArray& bytes, Zufall& zufall) {
  bytes.truncate(unter(bytes.size(), zufall));
}

void entferne_Stueck(QByteArray& bytes, Zufall& zufall) {
  bytes.remove(stelle(bytes, zufall), 1 + unter(300, zufall));
}

void verdopple_Stueck(QByteArray& bytes, Zufall& zufall) {
  const QByteArray stueck = bytes.mid(stelle(bytes, zufall), 1 + unter(300, zufall));
  bytes.insert(stelle(bytes, zufall), stueck);
}

void ersetze_durch_Fremdes(QByteArray& bytes, const std::vector<Urbild>& andere, Zufall& zufall) {
  const QByteArray& quelle = andere[zufall() % andere.size()].bytes;
  const QByteArray stueck = quelle.mid(unter(quelle.size(), zufall), 1 + unter(300, zufall));
  bytes.replace(stelle(bytes, zufall), zufall() % 2 == 0 ? stueck.size() : 0, stueck);
}

void beschaedige(QByteArray& bytes, const std::vector<Urbild>& andere, Zufall& zufall) {
  switch (zufall() % 10) {
    case 0:
    case 1:
    case 2:
      return aendere_Bytes(bytes, zufall);
    case 3:
      return kippe_Bits(bytes, zufall);
    case 4:
    case 5:
      return setze_Randwert(bytes, zufall);
    case 6:
      return schneide_ab(bytes, zufall);
    case 7:
      return entferne_Stueck(bytes, zufall);
    case 8:
      return verdopple_Stueck(bytes, zufall);
    default:
      return ersetze_durch_Fremdes(bytes, andere, zufall);
  }
}

}  // namespace

QByteArray beschaedigt(const QByteArray& bytes, const std::vector<Urbild>& andere, std::mt19937_64& zufall) {
  QByteArray neu = bytes;
  for (auto rest = 1 + unter(3, zufall); rest > 0 && !neu.isEmpty(); --rest) beschaedige(neu, andere, zufall);
  return neu;
}
