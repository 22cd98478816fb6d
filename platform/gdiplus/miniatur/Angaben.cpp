#include "platform/gdiplus/miniatur/Angaben.h"

#include <QByteArrayView>
#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "platform/basic/Nachschlagen.h"
#include "platform/gdiplus/Status.h"

using namespace Qt::Literals::StringLiterals;

namespace miniatur {
namespace {

// The standard's keys, and beside them ours, which begin with "X-" as it wants.
constexpr const char* Programm = "KVOBildZuordnung";
constexpr const char* Software = "Software";
constexpr const char* Adresse = "Thumb::URI";
constexpr const char* Geaendert = "Thumb::MTime";
constexpr const char* Laenge = "Thumb::Size";
constexpr const char* Medienart = "Thumb::Mimetype";
constexpr const char* Breite = "Thumb::Image::Width";
constexpr const char* Hoehe = "Thumb::Image::Height";
/// The whole time stamp: where the clock of a share is behind, whole seconds would not tell two states apart.
constexpr const char* Geaendert_genau = "X-KVO::MTimeNs";
constexpr const char* Gesehen = "X-KVO::SeenNs";
constexpr const char* Nummer = "X-KVO::Index";
constexpr const char* Status = "X-KVO::Status";
constexpr const char* Befund = "X-KVO::Header";

constexpr std::pair<Bildformat, const char*> Medienarten[] = {{Bildformat::Jpeg, "image/jpeg"},
    {Bildformat::Png, "image/png"}, {Bildformat::Gif, "image/gif"}, {Bildformat::Bmp, "image/bmp"},
    {Bildformat::Tiff, "image/tiff"}, {Bildformat::Ico, "image/vnd.microsoft.icon"},
    {Bildformat::Unbekannt, "application/octet-stream"}};

// Whole seconds, downwards before 1970 too.
std::int64_t sekunden(std::int64_t ns) noexcept {
  constexpr std::int64_t Sekunde = 1'000'000'000;
  return ns / Sekunde - (ns % Sekunde < 0 ? 1 : 0);
}

const QByteArray* text(const Texte& texte, const char* schluessel) {
  const auto b = std::find_if(texte.begin(), texte.end(), [&](const auto& t) { return t.first == schluessel; });
  return b == texte.end() ? nullptr : &b->second;
}

// Digits alone, perhaps behind a minus; nothing in front, between or behind.
template <class Zahl>
std::optional<Zahl> zahl(const Texte& texte, const char* schluessel) {
  const QByteArray* const t = text(texte, schluessel);
  if (t == nullptr) return std::nullopt;
  Zahl wert{};
  const auto [ende, fehler] = std::from_chars(t->begin(), t->end(), wert);
  if (fehler != std::errc() || ende != t->end()) return std::nullopt;
  return wert;
}

std::optional<Bildformat> format(const QByteArray& medienart) {
  for (const auto& [f, name] : Medienarten)
    if (medienart == name) return f;
  return std::nullopt;
}

bool hat_Groesse(Kopfbefund befund) noexcept {
  return befund == Kopfbefund::Ok || befund == Kopfbefund::ZuGross;
}

std::optional<Bildkopf> kopf_aus(const Texte& texte) {
  const QByteArray* const medienart = text(texte, Medienart);
  const auto f = medienart != nullptr ? format(*medienart) : std::nullopt;
  const auto befund = zahl<int>(texte, Befund);
  const auto nummer = zahl<int>(texte, Nummer);
  if (!f || !befund || *befund < 0 || *befund > static_cast<int>(Kopfbefund::ZuGross)) return std::nullopt;
  // The directory of an icon file counts with 16 bits; no other format has more than one picture.
  if (!nummer || *nummer < 0 || *nummer > (*f == Bildformat::Ico ? 0xffff : 0)) return std::nullopt;
  Bildkopf kopf{*f, static_cast<Kopfbefund>(*befund), {}, *nummer};
  if (!hat_Groesse(kopf.befund)) return kopf;
  const auto breite = zahl<int>(texte, Breite);
  const auto hoehe = zahl<int>(texte, Hoehe);
  if (!breite || !hoehe) return std::nullopt;
  kopf.groesse = {*breite, *hoehe};
  return kopf;
}

}  // namespace

bool ist_vom_Inhalt(const Bildkopf& kopf, std::int32_t status) noexcept {
  const bool unbekannt = kopf.format == Bildformat::Unbekannt;
  if (unbekannt != (kopf.befund == Kopfbefund::Unbekannt)) return false;
  switch (kopf.befund) {
    case Kopfbefund::Ok:
      // A sound header, and pixels or tables that no decoder takes.
      return ist_haltbar(kopf.groesse) && !kopf.groesse.isEmpty() &&
          (status == gdiplus::Ok || status == gdiplus::InvalidParameter);
    case Kopfbefund::Unbekannt:
      return status == gdiplus::UnknownImageFormat;
    case Kopfbefund::Defekt:
      return status == gdiplus::InvalidParameter;
    case Kopfbefund::ZuGross:
      return !kopf.groesse.isEmpty() && status == gdiplus::OutOfMemory;
  }
  return false;
}

bool ist_unserer(const Texte& texte) {
  const QByteArray* const programm = text(texte, Software);
  return programm != nullptr && *programm == Programm;
}

Texte als_Texte(const Angaben& a) {
  const auto zahl_als_Text = [](auto wert) { return QByteArray::number(wert); };
  Texte texte{{Adresse, a.adresse}, {Geaendert, zahl_als_Text(sekunden(a.geaendert_ns))},
      {Laenge, zahl_als_Text(a.laenge)},
      {Medienart, nachgeschlagen<Bildformat, const char*>(Medienarten, a.kopf.format, "")}, {Software, Programm},
      {Geaendert_genau, zahl_als_Text(a.geaendert_ns)}, {Gesehen, zahl_als_Text(a.gesehen_ns)},
      {Befund, zahl_als_Text(static_cast<int>(a.kopf.befund))}, {Nummer, zahl_als_Text(a.kopf.nummer)},
      {Status, zahl_als_Text(a.status)}};
  if (hat_Groesse(a.kopf.befund)) {
    texte.append({Breite, zahl_als_Text(a.kopf.groesse.width())});
    texte.append({Hoehe, zahl_als_Text(a.kopf.groesse.height())});
  }
  return texte;
}

std::optional<Angaben> aus_Texten(const Texte& texte) {
  const QByteArray* const adresse = text(texte, Adresse);
  const auto geaendert = zahl<std::int64_t>(texte, Geaendert);
  const auto genau = zahl<std::int64_t>(texte, Geaendert_genau);
  const auto gesehen = zahl<std::int64_t>(texte, Gesehen);
  const auto laenge = zahl<std::int64_t>(texte, Laenge);
  const auto status = zahl<std::int32_t>(texte, Status);
  const auto kopf = kopf_aus(texte);
  if (!ist_unserer(texte) || adresse == nullptr || !geaendert || !genau || !gesehen || !laenge || !status || !kopf)
    return std::nullopt;
  if (sekunden(*genau) != *geaendert || *gesehen < 0 || !ist_vom_Inhalt(*kopf, *status)) return std::nullopt;
  return Angaben{*adresse, *laenge, *genau, *gesehen, *kopf, *status};
}

}  // namespace miniatur
