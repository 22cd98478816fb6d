#pragma once

#include <QList>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

/// What GDI+ tells of its encoders and takes as their parameters (learn.microsoft.com, "gdiplusimaging.h header"), with
/// its names.
namespace gdiplus {

/// A class id or GUID in the order of its text's bytes.
using CLSID = std::array<std::uint8_t, 16>;

struct ImageCodecInfo {
  CLSID Clsid{};
  QString MimeType;
};
/// Bytes of a record of the encoder list, as callers reckon with it; the texts stand behind the records.
inline constexpr std::uint32_t Kodierersatz = 76;

enum EncoderParameterValueType : std::uint32_t { EncoderParameterValueTypeLong = 4 };

struct EncoderParameter {
  CLSID Guid{};
  std::uint32_t NumberOfValues = 0;
  std::uint32_t Type = 0;
  std::int32_t Value = 0;
};
struct EncoderParameters {
  std::uint32_t Count = 0;
  EncoderParameter Parameter;
};

/// The category of a transformation, {8D0EB2D1-A58E-4EA8-AA14-108074B7B6F9}.
inline constexpr CLSID EncoderTransformation{
    0x8d, 0x0e, 0xb2, 0xd1, 0xa5, 0x8e, 0x4e, 0xa8, 0xaa, 0x14, 0x10, 0x80, 0x74, 0xb7, 0xb6, 0xf9};
/// The parameters that ask for a transformation, mostly a Drehart.
EncoderParameters transformation(std::int32_t nummer);
/// The encoder of JPEG files, {557CF401-1A04-11D3-9A73-0000F81EF32E}.
inline constexpr CLSID JpegEncoder{
    0x55, 0x7c, 0xf4, 0x01, 0x1a, 0x04, 0x11, 0xd3, 0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e};

/// Reads "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", hexadecimal digits of any case. 0, or -2147221005
/// (CO_E_CLASSSTRING) for any other text, which leaves `clsid` zero.
std::int32_t CLSIDFromString(const QString& text, CLSID& clsid);

/// Number of the encoders, and the bytes that their list takes. 18 without a session; both are 0 then.
std::int32_t GdipGetImageEncodersSize(std::uint32_t& anzahl, std::uint32_t& groesse);
/// The list, which holds the JPEG encoder alone. `puffer` has room for at least `anzahl` records (2 otherwise), and
/// `groesse` is the number told before (2 otherwise). 18 without a session.
std::int32_t GdipGetImageEncoders(std::uint32_t anzahl, std::uint32_t groesse, std::span<ImageCodecInfo> puffer);

namespace kodierer {
/// Another list of encoders; none restores the real one. For tests only.
void liste(std::optional<QList<ImageCodecInfo>> andere);
}  // namespace kodierer

}  // namespace gdiplus
