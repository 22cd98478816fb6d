#include "platform/basic/Windows1252.h"

#include <algorithm>

namespace windows1252 {
namespace {

constexpr std::array<char16_t, 32> Obere_Steuerzeichen = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020,
    0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D,
    0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::array<char16_t, 256> baue_Tabelle() {
  std::array<char16_t, 256> tabelle{};
  for (std::size_t i = 0; i < tabelle.size(); ++i) tabelle[i] = static_cast<char16_t>(i);
  for (std::size_t i = 0; i < Obere_Steuerzeichen.size(); ++i) tabelle[0x80 + i] = Obere_Steuerzeichen[i];
  return tabelle;
}

char byte_von(char16_t zeichen) {
  if (zeichen < 0x80 || (zeichen >= 0xA0 && zeichen <= 0xFF)) return static_cast<char>(zeichen);
  const auto* treffer = std::find(Obere_Steuerzeichen.begin(), Obere_Steuerzeichen.end(), zeichen);
  if (treffer == Obere_Steuerzeichen.end()) return '?';
  return static_cast<char>(0x80 + (treffer - Obere_Steuerzeichen.begin()));
}

}  // namespace

constinit const std::array<char16_t, 256> Zeichen = baue_Tabelle();

QString decode(QByteArrayView bytes) {
  QString ergebnis(bytes.size(), Qt::Uninitialized);
  std::transform(bytes.begin(), bytes.end(), ergebnis.begin(),
      [](char b) { return QChar(Zeichen[static_cast<unsigned char>(b)]); });
  return ergebnis;
}

QByteArray encode(QStringView text) {
  QByteArray ergebnis(text.size(), Qt::Uninitialized);
  std::transform(text.begin(), text.end(), ergebnis.begin(), [](QChar c) { return byte_von(c.unicode()); });
  return ergebnis;
}

}  // namespace windows1252
