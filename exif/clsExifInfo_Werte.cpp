#include <QScopeGuard>
#include <algorithm>

#include "exif/Ganzzahl32.h"
#include "exif/clsExifInfo.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Windows1252.h"

// The value of an entry by its format code. The rules are fixed and on purpose not those of TIFF 6.0.

namespace {

constexpr std::int64_t Max_Text_Length = 256LL * 1024 * 1024 / static_cast<std::int64_t>(sizeof(QChar));

enum class Kind { None, Byte, Character, Short, Long, Rational };

Kind kind_of(std::int32_t format) {
  if (format < 1 || format > 10) return Kind::None;
  // 6 to 10 are read as 1 to 5: what is signed there, and bytes without a type.
  return static_cast<Kind>((format - 1) % 5 + 1);
}

std::int64_t component_size(Kind kind) {
  return kind == Kind::Short ? 2 : kind == Kind::Long ? 4 : 1;
}

std::int32_t as_long(const std::array<std::uint8_t, 4>& field) {
  std::int64_t number = 0;
  for (const std::uint8_t byte : field) number = number * 256 + byte;
  return ganzzahl32::pruefe(number);
}

qsizetype write_decimal(QChar* target, unsigned byte) {
  qsizetype length = 0;
  if (byte >= 100) target[length++] = QChar(static_cast<char16_t>(u'0' + byte / 100));
  if (byte >= 10) target[length++] = QChar(static_cast<char16_t>(u'0' + byte / 10 % 10));
  target[length++] = QChar(static_cast<char16_t>(u'0' + byte % 10));
  return length;
}

}  // namespace

void clsExifInfo::Read_Entry(std::int64_t position, Exif_Entry& entry) {
  // Each member is kept as soon as it is read: a failure leaves the ones before it.
  entry.Tag_Id = Read_Word(position);
  entry.Format_Code = Read_Word(position + 2);
  entry.Item_Count = Read_Long(position + 4);
  Decode_Value(position + 8, entry);
}

std::int32_t clsExifInfo::Read_Word(std::int64_t position) {
  const int first = File_Bytes[position];
  const int second = File_Bytes[position + 1];
  return Is_Little_Endian() ? second * 256 + first : first * 256 + second;
}

std::int32_t clsExifInfo::Read_Long(std::int64_t position) {
  return as_long(Read_Field(position));
}

// The four bytes of a field, the one of the highest weight in the file's byte order first.
std::array<std::uint8_t, 4> clsExifInfo::Read_Field(std::int64_t position) {
  std::array<std::uint8_t, 4> field{};
  for (std::size_t i = 0; i < field.size(); ++i) field[i] = File_Bytes[position + static_cast<std::int64_t>(i)];
  if (Is_Little_Endian()) std::ranges::reverse(field);
  return field;
}

void clsExifInfo::Decode_Value(std::int64_t field, Exif_Entry& entry) {
  const Kind kind = kind_of(entry.Format_Code);
  if (kind == Kind::None) return;
  if (kind == Kind::Rational) {
    // Of several rationals only the first is read, always from outside the entry.
    entry.Data_Offset = Read_Long(field);
    entry.Value = Read_Rational(std::int64_t{Offset_Tiff} + entry.Data_Offset);
    return;
  }
  if (ganzzahl32::pruefe(entry.Item_Count * component_size(kind)) <= 4) {
    entry.Value = Inline_Value(field, entry.Format_Code);
    return;
  }
  entry.Data_Offset = Read_Long(field);
  Read_Text(entry);
}

// All four bytes of the field count, whatever the number of components.
Variant clsExifInfo::Inline_Value(std::int64_t field, std::int32_t format) {
  const std::array<std::uint8_t, 4> bytes = Read_Field(field);
  switch (kind_of(format)) {
    case Kind::Short:
      return bytes[0] * 256 + bytes[1] + bytes[2] * 256 + bytes[3];
    case Kind::Long:
      return as_long(bytes);
    default:
      break;
  }
  const bool characters = kind_of(format) == Kind::Character;
  QString text;
  for (const std::uint8_t byte : bytes) {
    if (characters)
      text += QChar(windows1252::Zeichen[byte]);
    else
      text += Pad_Left(QString::number(byte, 16).toUpper(), 2, u'0');
  }
  Free_Text(text, 0);
  Text_Length += text.size();
  return text;
}

QString clsExifInfo::Pad_Left(const QString& text, qsizetype length, QChar fill) {
  return text.rightJustified(length, fill);
}

QString clsExifInfo::Read_Rational(std::int64_t position) {
  const std::int32_t numerator = Read_Long(position);
  const std::int32_t denominator = Read_Long(position + 4);
  QString text = QString::number(numerator) + u'/' + QString::number(denominator);
  Free_Text(text, 0);
  Text_Length += text.size();
  return text;
}

// A text that stands outside of its entry. Where it runs past the file, the entry keeps what was read until then.
void clsExifInfo::Read_Text(Exif_Entry& entry) {
  QString text;
  const auto keep = qScopeGuard([&] {
    if (text.isEmpty()) return;
    Text_Length += text.size();
    entry.Value = std::move(text);
  });
  const std::int64_t from = std::int64_t{Offset_Tiff} + entry.Data_Offset;
  const std::int64_t to = from + entry.Item_Count;
  const bool little = Is_Little_Endian();
  switch (kind_of(entry.Format_Code)) {
    case Kind::Character:
      Append_Characters(text, from, little ? to - 1 : to);
      break;
    // The bytes of a big-endian file's shorts run backwards.
    case Kind::Short:
      Append_Numbers(text, little ? from : to - 1, entry.Item_Count, little ? 1 : -1);
      break;
    default:
      Append_Numbers(text, from, entry.Item_Count, 1);
      break;
  }
}

void clsExifInfo::Append_Characters(QString& text, std::int64_t from, std::int64_t to) {
  // The count may ask for far more than the file holds.
  const std::int64_t held = std::clamp<std::int64_t>(std::int64_t{File_Bytes.Obergrenze()} + 1 - from, 0, to - from);
  text.reserve(std::min(held, Free_Text(text, 0)));
  while (from < to) {
    const auto piece = File_Bytes.ab(from);
    const auto length = std::min({std::ssize(piece), to - from, Free_Text(text, 1)});
    const qsizetype former = text.size();
    text.resize(former + length);
    std::transform(piece.begin(), piece.begin() + length, text.begin() + former,
        [](std::uint8_t byte) { return QChar(windows1252::Zeichen[byte]); });
    from += length;
  }
}

void clsExifInfo::Append_Numbers(QString& text, std::int64_t from, std::int32_t count, int step) {
  constexpr qsizetype Longest = 3;
  const auto shrink = qScopeGuard([&text] { text.squeeze(); });
  for (std::int32_t i = 0; i < count; ++i) {
    const std::uint8_t byte = File_Bytes[from + std::int64_t{i} * step];
    Free_Text(text, Longest);
    std::array<QChar, Longest> digits;
    text.append(digits.data(), write_decimal(digits.data(), byte));
  }
}

// Characters that the entries' texts may still grow by, `text` counted as one of them. Raises 7 when it is less than
// what is needed.
std::int64_t clsExifInfo::Free_Text(const QString& text, std::int64_t needed) const {
  const std::int64_t free = Max_Text_Length - Text_Length - text.size();
  if (free < needed) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return free;
}
