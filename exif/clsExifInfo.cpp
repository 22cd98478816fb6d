#include "exif/clsExifInfo.h"

#include <QScopeGuard>
#include <unordered_set>

#include "exif/Ganzzahl32.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Laufzeitfehler.h"

namespace {

constexpr std::int32_t Tag_ExifIfd = 34665;
constexpr std::int32_t Tag_MakerNote = 37500;
constexpr std::int64_t Entry_Length = 12;

// Beyond these limits memory counts as used up: a file can ask for far more than it holds, by a chain that points back
// or by many entries that share one value.
constexpr std::size_t Max_Entries = 1'000'000;
constexpr std::size_t Max_Directories = 1'000'000;

std::int64_t entry_position(std::int32_t directory, std::int32_t index) {
  return std::int64_t{directory} + 2 + index * Entry_Length;
}

}  // namespace

clsExifInfo::clsExifInfo() = default;

clsExifInfo::~clsExifInfo() = default;

bool clsExifInfo::Load(const QString& picFile) {
  // A name that was set before wins over the argument; callers rely on it.
  if (Pic_File.isEmpty()) Pic_File = picFile;
  if (Pic_File.isEmpty()) return false;

  Read_File_Bytes(Pic_File);
  const auto close = qScopeGuard([this, entries = Entries_.size(), loaded = Is_Loaded_] {
    if (File_Bytes.Lesefehler()) {
      Entries_.resize(entries);
      Is_Loaded_ = loaded;
    }
    File_Bytes.schliesse();
  });
  const bool found = Find_Exif_Segment();
  if (File_Bytes.Lesefehler()) throw Laufzeitfehler(*File_Bytes.Lesefehler());
  if (!found) {
    Is_Loaded_ = false;
    return false;
  }
  Offset_Ifd0 = Read_Long(std::int64_t{Offset_App1} + 14);
  Is_Loaded_ = true;
  std::int32_t position = ganzzahl32::pruefe(std::int64_t{Offset_Tiff} + Offset_Ifd0);
  Walk_Ifd_Chain(position);
  if (File_Bytes.Lesefehler()) throw Laufzeitfehler(*File_Bytes.Lesefehler());
  return true;
}

std::optional<std::int32_t> clsExifInfo::Anzahl_Entries() const noexcept {
  if (Entries_.empty()) return std::nullopt;
  return static_cast<std::int32_t>(Entries_.size());
}

void clsExifInfo::Read_File_Bytes(const QString& name) {
  Little_Endian.reset();
  File_Bytes.oeffne(name);
}

bool clsExifInfo::Find_Exif_Segment() {
  fehler::Weiter next;
  bool other_format = true;
  // One right byte of the two is enough.
  next([&] { other_format = File_Bytes[0] != 0xFF && File_Bytes[1] != 0xD8; });
  if (other_format) return false;
  next([&] { Offset_App1 = File_Bytes.finde_Paar(0xFF, 0xE1, 2).value_or(Offset_App1); });
  // Without a marker the next steps run with 0: a file whose bytes 4 to 7 spell "Exif" passes all the same.
  next([&] { Offset_Tiff = ganzzahl32::pruefe(std::int64_t{Offset_App1} + 10); });
  const std::int64_t start = Offset_App1;
  next([&] { App1_Length = File_Bytes[start + 2] * 256 + File_Bytes[start + 3]; });
  bool is_exif = false;
  next([&] {
    is_exif = File_Bytes[start + 4] == 'E' && File_Bytes[start + 5] == 'x' && File_Bytes[start + 6] == 'i' &&
        File_Bytes[start + 7] == 'f';
  });
  return is_exif;
}

bool clsExifInfo::Is_Little_Endian() {
  if (!Little_Endian) Little_Endian = File_Bytes[Offset_Tiff] == 0x49;
  return *Little_Endian;
}

void clsExifInfo::Walk_Ifd_Chain(std::int32_t& position) {
  // Only a failure of this one reading reaches the caller.
  std::int32_t count = Read_Word(position);
  fehler::still_enden([&] {
    std::unordered_set<std::int32_t> walked;
    bool in_exif_ifd = false;
    for (;;) {
      if (!walked.insert(position).second || walked.size() > Max_Directories)
        throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
      Read_Directory(position, count);
      Offset_Next_Ifd = in_exif_ifd ? 0 : Read_Long(entry_position(position, count));
      if (Offset_Next_Ifd == 0 && !in_exif_ifd) {
        Offset_Next_Ifd = Offset_Exif_Ifd;
        in_exif_ifd = true;
      }
      position = ganzzahl32::pruefe(std::int64_t{Offset_Tiff} + Offset_Next_Ifd);
      if (Offset_Next_Ifd == 0) return;
      count = Read_Word(position);
    }
  });
}

void clsExifInfo::Read_Directory(std::int32_t position, std::int32_t count) {
  const std::size_t first = Grow_Entries(count);
  for (std::int32_t i = 0; i < count; ++i) {
    Exif_Entry& entry = Entries_[first + static_cast<std::size_t>(i)];
    Read_Entry(entry_position(position, i), entry);
    Note_Pointer(entry);
  }
}

void clsExifInfo::Note_Pointer(const Exif_Entry& entry) {
  if (entry.Tag_Id == Tag_MakerNote) Offset_MakerNote = entry.Data_Offset;
  if (entry.Tag_Id == Tag_ExifIfd) Offset_Exif_Ifd = ganzzahl32::aus_Wert(entry.Value);
}

void clsExifInfo::Read_MakerNote_Ifd(std::int32_t position) {
  const std::int32_t count = Read_Word(position);
  const std::size_t first = Grow_Entries(count);
  for (std::int32_t i = 0; i < count; ++i) {
    Exif_Entry& entry = Entries_[first + static_cast<std::size_t>(i)];
    entry.Is_MakerNote = true;
    Read_Entry(entry_position(position, i), entry);
  }
}

std::size_t clsExifInfo::Grow_Entries(std::int32_t count) {
  const std::size_t former = Entries_.size();
  const std::size_t wanted = former + static_cast<std::size_t>(count);
  // A list from 1 to 0 can't be sized.
  if (wanted == 0) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  if (wanted > Max_Entries) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  Entries_.resize(wanted);
  return former;
}
