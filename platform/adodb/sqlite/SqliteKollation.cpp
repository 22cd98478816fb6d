#include "platform/adodb/sqlite/SqliteKollation.h"

#include <sqlite3.h>

#include <QChar>
#include <array>
#include <cstddef>

namespace adodb {
namespace {

using Byte = unsigned char;

/// Bytes that begin no valid sequence stand behind the last character of Unicode.
constexpr char32_t KeinUtf8 = 0x110000;

constexpr std::array<Byte, 128> kleine_Ascii() {
  std::array<Byte, 128> tabelle{};
  for (std::size_t i = 0; i < tabelle.size(); ++i)
    tabelle[i] = static_cast<Byte>(i >= 'A' && i <= 'Z' ? i + ('a' - 'A') : i);
  return tabelle;
}
constexpr std::array<Byte, 128> Klein = kleine_Ascii();

Byte byte(std::string_view text, std::size_t i) {
  return static_cast<Byte>(text[i]);
}

/// Length in bytes that a sequence's first byte announces; 0 for a byte that begins none.
std::size_t angekuendigt(Byte erstes) {
  if (erstes < 0x80) return 1;
  if (erstes >= 0xC2 && erstes <= 0xDF) return 2;
  if (erstes >= 0xE0 && erstes <= 0xEF) return 3;
  if (erstes >= 0xF0 && erstes <= 0xF4) return 4;
  return 0;
}

/// Reads the character at `i` and goes behind it. A broken sequence gives its first byte alone, so that an ASCII byte
/// is never swallowed and both texts are cut the same way wherever they agree.
char32_t naechstes_Zeichen(std::string_view text, std::size_t& i) {
  const Byte erstes = byte(text, i);
  const std::size_t laenge = angekuendigt(erstes);
  if (laenge == 1) return text[i++] & 0x7F;
  if (laenge == 0 || i + laenge > text.size()) return KeinUtf8 + byte(text, i++);
  char32_t zeichen = erstes & (0x7FU >> laenge);
  for (std::size_t k = 1; k < laenge; ++k) {
    const Byte folge = byte(text, i + k);
    if ((folge & 0xC0) != 0x80) return KeinUtf8 + byte(text, i++);
    zeichen = (zeichen << 6) | (folge & 0x3F);
  }
  // Overlong forms and numbers behind Unicode are no characters.
  if ((laenge == 3 && zeichen < 0x800) || (laenge == 4 && (zeichen < 0x10000 || zeichen >= KeinUtf8)))
    return KeinUtf8 + byte(text, i++);
  i += laenge;
  return zeichen;
}

char32_t gefaltet(char32_t zeichen) {
  if (zeichen < 0x80) return Klein[zeichen];
  return zeichen < KeinUtf8 ? QChar::toCaseFolded(zeichen) : zeichen;
}

std::string_view ohne_Blanks_am_Ende(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

/// Compares what the longer text has over the shorter with the blanks that fill the shorter up.
int rest_gegen_Blanks(std::string_view rest, std::size_t i) {
  while (i < rest.size()) {
    const char32_t zeichen = gefaltet(naechstes_Zeichen(rest, i));
    if (zeichen != U' ') return zeichen < U' ' ? -1 : 1;
  }
  return 0;
}

int vergleiche(void*, int laenge_a, const void* a, int laenge_b, const void* b) {
  return vergleiche_Servertext({static_cast<const char*>(a), static_cast<std::size_t>(laenge_a)},
      {static_cast<const char*>(b), static_cast<std::size_t>(laenge_b)});
}

void len(sqlite3_context* kontext, int, sqlite3_value** werte) {
  if (sqlite3_value_type(werte[0]) == SQLITE_NULL) return;
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(werte[0]));
  if (!bytes) return sqlite3_result_error_nomem(kontext);
  const auto laenge = static_cast<std::size_t>(sqlite3_value_bytes(werte[0]));
  const std::string_view text = ohne_Blanks_am_Ende({bytes, laenge});
  sqlite3_int64 zeichen = 0;
  for (const char c : text) {
    // Every byte but a continuation begins a character; four-byte sequences are two 16-bit characters.
    const auto b = static_cast<Byte>(c);
    zeichen += ((b & 0xC0) != 0x80 ? 1 : 0) + (b >= 0xF0 ? 1 : 0);
  }
  sqlite3_result_int64(kontext, zeichen);
}

}  // namespace

int vergleiche_Servertext(std::string_view a, std::string_view b) noexcept {
  std::size_t i = 0;
  std::size_t k = 0;
  while (i < a.size() && k < b.size()) {
    char32_t links = byte(a, i);
    char32_t rechts = byte(b, k);
    if ((links | rechts) < 0x80) {
      ++i;
      ++k;
      if (links == rechts) continue;
      links = Klein[links];
      rechts = Klein[rechts];
    } else {
      links = gefaltet(naechstes_Zeichen(a, i));
      rechts = gefaltet(naechstes_Zeichen(b, k));
    }
    if (links != rechts) return links < rechts ? -1 : 1;
  }
  if (i < a.size()) return rest_gegen_Blanks(a, i);
  return -rest_gegen_Blanks(b, k);
}

int richte_Servertext_ein(sqlite3* datenbank) noexcept {
  const int ergebnis = sqlite3_create_collation_v2(datenbank, "SERVERTEXT", SQLITE_UTF8, nullptr, vergleiche, nullptr);
  if (ergebnis != SQLITE_OK) return ergebnis;
  return sqlite3_create_function_v2(datenbank, "LEN", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
      len, nullptr, nullptr, nullptr);
}

}  // namespace adodb
