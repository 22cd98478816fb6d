#include "platform/gdiplus/Kodierer.h"

#include <QUuid>
#include <algorithm>
#include <utility>

#include "platform/gdiplus/gdiplus.h"

using namespace Qt::Literals::StringLiterals;

namespace gdiplus {
namespace {

std::optional<QList<ImageCodecInfo>> andere_Liste;

QList<ImageCodecInfo> alle() {
  return andere_Liste.value_or(QList<ImageCodecInfo>{{JpegEncoder, u"image/jpeg"_s}});
}

/// The records, and behind them the texts with their closing zeros.
std::uint32_t bytes_von(const QList<ImageCodecInfo>& liste) {
  qsizetype texte = 0;
  for (const ImageCodecInfo& k : liste) texte += (k.MimeType.size() + 1) * 2;
  return static_cast<std::uint32_t>(liste.size()) * Kodierersatz + static_cast<std::uint32_t>(texte);
}

}  // namespace

std::int32_t CLSIDFromString(const QString& text, CLSID& clsid) {
  constexpr std::int32_t Keine_Kennung = -2147221005;
  clsid.fill(0);
  const QUuid kennung = QUuid::fromString(text);
  if (kennung.toString().compare(text, Qt::CaseInsensitive) != 0) return Keine_Kennung;
  const QByteArray bytes = kennung.toRfc4122();
  std::copy(bytes.begin(), bytes.end(), clsid.begin());
  return Ok;
}

EncoderParameters transformation(std::int32_t nummer) {
  EncoderParameters parameter{1, {{}, 1, EncoderParameterValueTypeLong, nummer}};
  CLSIDFromString(u"{8D0EB2D1-A58E-4EA8-AA14-108074B7B6F9}"_s, parameter.Parameter.Guid);
  return parameter;
}

std::int32_t GdipGetImageEncodersSize(std::uint32_t& anzahl, std::uint32_t& groesse) {
  anzahl = groesse = 0;
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  anzahl = static_cast<std::uint32_t>(alle().size());
  groesse = bytes_von(alle());
  return Ok;
}

std::int32_t GdipGetImageEncoders(std::uint32_t anzahl, std::uint32_t groesse, std::span<ImageCodecInfo> puffer) {
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  const QList<ImageCodecInfo> liste = alle();
  if (anzahl != static_cast<std::uint32_t>(liste.size()) || groesse != bytes_von(liste) || puffer.size() < anzahl)
    return InvalidParameter;
  std::copy(liste.begin(), liste.end(), puffer.begin());
  return Ok;
}

void kodierer::liste(std::optional<QList<ImageCodecInfo>> andere) {
  andere_Liste = std::move(andere);
}

}  // namespace gdiplus
