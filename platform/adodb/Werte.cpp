#include "platform/adodb/Werte.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

#include "platform/basic/Laufzeitfehler.h"

namespace adodb {
namespace {

/// How many values, and how many characters, a large result gets room for at once.
constexpr std::size_t Grosse = 256 * 1024;

using Paar = std::array<char16_t, 2>;

constexpr auto EinzelneZeichen = [] {
  std::array<Paar, 128> paare{};
  for (std::size_t i = 0; i < paare.size(); ++i) paare[i] = {static_cast<char16_t>(i), u'\0'};
  return paare;
}();

/// Texts that differ at all mostly differ at an end, so the ends are looked at first.
bool ist_gleich(const char16_t* zeichen, std::uint32_t laenge, QStringView text) {
  if (static_cast<qsizetype>(laenge) != text.size()) return false;
  if (laenge == 0) return true;
  const char16_t* andere = text.utf16();
  if (zeichen[0] != andere[0] || zeichen[laenge - 1] != andere[laenge - 1]) return false;
  return laenge <= 2 || std::memcmp(zeichen, andere, laenge * sizeof(char16_t)) == 0;
}

/// The bytes are ASCII, and the characters are the same.
bool ist_gleich_Ascii(const char16_t* zeichen, const char* bytes, std::size_t laenge) {
  unsigned unterschied = 0;
  for (std::size_t i = 0; i < laenge; ++i) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    unterschied |= static_cast<unsigned>(b ^ zeichen[i]) | (b & 0x80U);
  }
  return unterschied == 0;
}

}  // namespace

QString als_Text(QStringView zeichen) {
  const auto* erstes = reinterpret_cast<const QChar*>(zeichen.utf16());
  if (zeichen.size() == 1 && erstes->unicode() < EinzelneZeichen.size())
    return QString::fromRawData(reinterpret_cast<const QChar*>(EinzelneZeichen[erstes->unicode()].data()), 1);
  return zeichen.isEmpty() ? QString(QLatin1StringView("")) : QString(erstes, zeichen.size());
}

Werte::Werte(std::initializer_list<Wert> werte) {
  for (const Wert& wert : werte) push_back(wert);
}

void Werte::push_back(const Wert& wert) {
  if (const auto* text = std::get_if<QString>(&wert))
    haenge_text_an(*text);
  else if (const auto* ganze = std::get_if<std::int64_t>(&wert))
    haenge_zahl_an(*ganze);
  else if (const auto* zahl = std::get_if<double>(&wert))
    haenge_zahl_an(*zahl);
  else
    haenge_null_an();
}

Wert Werte::at(std::size_t nummer) const {
  if (nummer >= zellen_.size()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  const Zelle& zelle = zellen_[nummer];
  switch (zelle.art) {
    case Art::Ganzzahl:
      return zelle.inhalt;
    case Art::Zahl:
      return std::bit_cast<double>(zelle.inhalt);
    case Art::Text:
      return als_Text(zeichen(nummer));
    default:
      return {};
  }
}

void Werte::haenge_zahl_an(std::int64_t zahl) {
  zellen_.push_back({.inhalt = zahl, .art = Art::Ganzzahl});
}

void Werte::haenge_zahl_an(double zahl) {
  zellen_.push_back({.inhalt = std::bit_cast<std::int64_t>(zahl), .art = Art::Zahl});
}

QStringView Werte::zeichen(std::size_t nummer) const noexcept {
  const Zelle& zelle = zellen_[nummer];
  return {zeichen_.data() + zelle.inhalt, static_cast<qsizetype>(zelle.laenge)};
}

/// The text in the row above, or none.
const Werte::Zelle* Werte::text_ueber(std::size_t nummer, std::size_t breite) const noexcept {
  if (breite == 0 || nummer < breite) return nullptr;
  const Zelle& zelle = zellen_[nummer - breite];
  return zelle.art == Art::Text ? &zelle : nullptr;
}

/// A text that begins behind all others.
Werte::Zelle Werte::neuer_Text(qsizetype laenge) const {
  if (laenge > std::numeric_limits<std::uint32_t>::max()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return {.inhalt = static_cast<std::int64_t>(zeichen_.size()),
      .laenge = static_cast<std::uint32_t>(laenge),
      .art = Art::Text};
}

std::size_t Werte::haenge_zeilen_an(std::size_t zeilen, std::size_t breite) {
  const std::size_t erster = zellen_.size();
  // Rows behind rows are a large result. Room for many at once costs nothing until it is used; growing step by step
  // moves everything each time.
  if (erster > 0 && zeilen > 1 && zellen_.capacity() < erster + zeilen * breite && erster < Grosse / 4) {
    zellen_.reserve(Grosse);
    zeichen_.reserve(Grosse);
  }
  zellen_.resize(erster + zeilen * breite);
  return erster;
}

void Werte::setze_zahl(std::size_t nummer, std::int64_t zahl) noexcept {
  zellen_[nummer] = {.inhalt = zahl, .art = Art::Ganzzahl};
}

void Werte::setze_zahl(std::size_t nummer, double zahl) noexcept {
  zellen_[nummer] = {.inhalt = std::bit_cast<std::int64_t>(zahl), .art = Art::Zahl};
}

void Werte::setze_text(std::size_t nummer, QStringView text, std::size_t breite) {
  const Zelle* oben = text_ueber(nummer, breite);
  if (oben && ist_gleich(zeichen_.data() + oben->inhalt, oben->laenge, text)) {
    zellen_[nummer] = *oben;
    return;
  }
  zellen_[nummer] = neuer_Text(text.size());
  zeichen_.insert(zeichen_.end(), text.utf16(), text.utf16() + text.size());
}

void Werte::haenge_text_an(QStringView text, std::size_t breite) {
  zellen_.emplace_back();
  setze_text(zellen_.size() - 1, text, breite);
}

void Werte::haenge_utf8_an(const char* bytes, std::size_t laenge, std::size_t breite) {
  const Zelle* oben = text_ueber(zellen_.size(), breite);
  if (oben && oben->laenge == laenge && ist_gleich_Ascii(zeichen_.data() + oben->inhalt, bytes, laenge)) {
    const Zelle gleiche = *oben;
    zellen_.push_back(gleiche);
    return;
  }
  if (std::any_of(bytes, bytes + laenge, [](char b) { return (b & '\x80') != 0; })) {
    // QString::fromUtf8 would take a first U+FEFF for a mark of the byte order.
    using Wunsch = QStringDecoder::Flag;
    QStringDecoder leser(QStringDecoder::Utf8, Wunsch::Stateless | Wunsch::ConvertInitialBom);
    haenge_text_an(QString(leser(QByteArrayView(bytes, static_cast<qsizetype>(laenge)))), breite);
    return;
  }
  zellen_.push_back(neuer_Text(static_cast<qsizetype>(laenge)));
  zeichen_.insert(zeichen_.end(), bytes, bytes + laenge);
}

}  // namespace adodb
