#include "host/betrieb/vorgaenge/Zeilenquelle.h"

#include <array>
#include <iterator>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgaenge/Listenleser.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array Utf8_Marke{0xEF, 0xBB, 0xBF};

/// Counts the characters of several bytes of a text in UTF-8, and the bytes that are none.
class Utf8zaehler {
 public:
  void nimm(int byte) {
    if (offen_ > 0 && (byte & 0xC0) == 0x80) {
      if (--offen_ == 0) ++zeichen_;
      return;
    }
    if (offen_ > 0) ++falsche_;
    // A surrogate in three bytes counts as UTF-8 here: nobody writes that by chance, and its line is refused later.
    offen_ = byte < 0xC2 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : byte < 0xF5 ? 3 : 0;
    if (byte >= 0x80 && offen_ == 0) ++falsche_;
  }
  bool ist_Utf8() const { return falsche_ + (offen_ > 0 ? 1 : 0) == 0 || zeichen_ > falsche_; }

 private:
  int offen_ = 0;
  qint64 zeichen_ = 0;
  qint64 falsche_ = 0;
};

void haenge_an(Rohzeile& zeile, int byte) {
  if (zeile.bytes.size() < Groesste_Zeile)
    zeile.bytes.append(static_cast<char>(byte));
  else
    zeile.zu_lang = true;
}

}  // namespace

Zeilenquelle::Zeilenquelle(const QString& datei) : strom_(datei) {
  von_vorn();
}

void Zeilenquelle::von_vorn() {
  strom_.von_vorn();
  zurueckgegebene_.clear();
  nummer_ = 0;
  // No other text begins with the first byte of the mark, so the other two need not be put back.
  for (const int byte : Utf8_Marke)
    if (strom_.sieh() == byte) strom_.nimm();
}

bool Zeilenquelle::naechste(Rohzeile& zeile) {
  if (!zurueckgegebene_.empty()) {
    zeile = std::move(zurueckgegebene_.front());
    zurueckgegebene_.pop_front();
    return true;
  }
  if (strom_.sieh() < 0) return false;
  zeile = {++nummer_, {}, false};
  for (int byte = strom_.nimm(); byte >= 0; byte = strom_.nimm()) {
    haenge_an(zeile, byte);
    if (byte == '\r' && strom_.sieh() == '\n') haenge_an(zeile, strom_.nimm());
    if (byte == '\n' || byte == '\r') break;
  }
  return true;
}

void Zeilenquelle::gib_zurueck(const std::deque<Rohzeile>& zeilen) {
  zurueckgegebene_.insert(zurueckgegebene_.begin(), zeilen.begin(), zeilen.end());
}

Zeichensatz erkenne_Zeichensatz(const QString& datei) {
  Bytestrom strom(datei);
  Utf8zaehler zaehler;
  const int erstes = strom.nimm();
  const int zweites = strom.sieh();
  if ((erstes == 0xFF && zweites == 0xFE) || (erstes == 0xFE && zweites == 0xFF))
    throw Abbruch(
        Ausgang::Datei, u"Die Datei „%1“ ist in UTF-16 geschrieben; speichern Sie sie als CSV in UTF-8."_s.arg(datei));
  for (int byte = erstes; byte >= 0; byte = strom.nimm()) zaehler.nimm(byte);
  return zaehler.ist_Utf8() ? Zeichensatz::Utf8 : Zeichensatz::Windows1252;
}
