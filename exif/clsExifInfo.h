#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "exif/Dateibytes.h"
#include "platform/basic/Variant.h"
#include "platform/basic/XArrayDBObject.h"
#include "platform/basic/kvo_export.h"

/// One directory entry as it was read.
struct Exif_Entry {
  std::int32_t Tag_Id = 0;
  bool Is_MakerNote = false;
  std::int32_t Format_Code = 0;
  std::int32_t Item_Count = 0;
  /// Relative to the TIFF header; 0 where the value stood in the entry itself.
  std::int32_t Data_Offset = 0;
  /// Empty, a 32-bit number or a text.
  Variant Value;
};

/// Reads the Exif block of a JPEG file (Exif 2.32, directories as in TIFF 6.0) into one flat list of entries: the
/// first directory, those chained behind it, then the Exif sub-directory. One object reads one picture.
///
/// The reader is simple on purpose, and what the dialogs show depends on it. The first 0xFF 0xE1 of the file decides,
/// wherever it stands; values become text or numbers at once, by one rule for each format code, and not as the
/// standards have it: several shorts become the decimal numbers of their bytes, a short text in a little-endian file
/// stands reversed, a number with its highest bit set ends the walk.
class KVO_EXPORT clsExifInfo {
 public:
  clsExifInfo();
  ~clsExifInfo();
  Q_DISABLE_COPY_MOVE(clsExifInfo)

  /// The name of the file that Load reads. Resets nothing: Is_Loaded and Entries of an earlier file stay.
  void picFile(const QString& name) { Pic_File = name; }

  /// Reads the file of property picFile or, only where that is still empty, of the argument. True: an Exif block was
  /// found and walked, even if the walk stopped early at something that can't be read; the entries read until then
  /// stay, with empty ones behind them up to the size of the directory. False: no name, or no Exif block.
  ///
  /// A file that is missing is created empty. The failures of Binaerdatei::oeffne_Binaer and of reading (57) reach the
  /// caller; so do 6 for a file of 2 GB or more, and 6 or 9 when the offset of the first directory or its number of
  /// entries lies outside the file or the 32-bit range.
  ///
  /// A second call clears nothing: its entries stand behind the first ones.
  ///
  /// A directory whose position was walked before, more than 1,000,000 entries or directories, and more than 256 MB of
  /// text end the walk like any other thing that can't be read.
  bool Load(const QString& picFile);

  /// Load has found an Exif block.
  bool Is_Loaded() const noexcept { return Is_Loaded_; }

  /// All entries of all directories in the order of reading; entry number i, counted from 1, is element i-1. Empty
  /// while the list was never sized.
  const std::vector<Exif_Entry>& Entries() const noexcept { return Entries_; }

  /// Number of entries, those included that were not reached; none while the list was never sized.
  std::optional<std::int32_t> Anzahl_Entries() const noexcept;

  /// The value of the first entry with that tag number (TIFF 6.0, Exif 2.32), whichever directory it stands in, as text
  /// with a blank for each "~"; an entry without a value gives "". Empty when there is no such entry. Tag number 0
  /// gives the number of entries as Anzahl_Entries, Empty for none.
  ///
  /// Loads the file of property picFile first where none is loaded, with the failures of Load; without a file name the
  /// result is Empty. Raises 9 while the list of entries was never sized, so after a Load that was false.
  Variant Tag(std::int32_t ExifTag);

  /// The value, as it was read, of the first maker note's entry with that number; Empty when there is none or no file
  /// is loaded. The walk enters no maker note, so there never is one. Raises 9 while the list was never sized.
  Variant MakerNoteTag(std::int32_t MakerTag) const;

  /// Columns of the table that Get_ExifInfo gives.
  enum class Spalte : std::int32_t {
    Zeigen = 0,        ///< True, or "" for a row that lists leave out
    Tag = 1,           ///< tag number, 32 bits
    Name = 2,          ///< fixed English name
    Beschriftung = 3,  ///< German label, or the name
    Wert = 4           ///< text of Tag, "" when the file does not have it
  };

  /// A new table of all tags that the properties know: rows 0 to 150, of which 112 and later are empty with "" for
  /// label and value. Loads as Tag does. None when a value could not be asked for; nobody is told.
  std::shared_ptr<XArrayDBObject> Get_ExifInfo();

 private:
  friend class ExifInfoPruefer;

  void Read_File_Bytes(const QString& name);
  bool Find_Exif_Segment();
  bool Is_Little_Endian();
  static QString Pad_Left(const QString& text, qsizetype length, QChar fill);
  void Walk_Ifd_Chain(std::int32_t& position);
  void Read_MakerNote_Ifd(std::int32_t position);

  std::size_t Grow_Entries(std::int32_t count);
  void Read_Directory(std::int32_t position, std::int32_t count);
  void Note_Pointer(const Exif_Entry& entry);
  const Exif_Entry* Find_Entry(std::int32_t tag, bool only_maker_note) const;
  void Read_Entry(std::int64_t position, Exif_Entry& entry);

  std::int32_t Read_Word(std::int64_t position);
  std::int32_t Read_Long(std::int64_t position);
  std::array<std::uint8_t, 4> Read_Field(std::int64_t position);
  void Decode_Value(std::int64_t field, Exif_Entry& entry);
  Variant Inline_Value(std::int64_t field, std::int32_t format);
  void Read_Text(Exif_Entry& entry);
  QString Read_Rational(std::int64_t position);
  void Append_Characters(QString& text, std::int64_t from, std::int64_t to);
  void Append_Numbers(QString& text, std::int64_t from, std::int32_t count, int step);
  std::int64_t Free_Text(const QString& text, std::int64_t needed) const;

  Dateibytes File_Bytes;
  std::int32_t Offset_Ifd0 = 0;
  std::int32_t Offset_App1 = 0;
  std::int32_t Offset_Tiff = 0;
  std::int32_t App1_Length = 0;
  std::int32_t Offset_Next_Ifd = 0;
  std::vector<Exif_Entry> Entries_;
  std::int32_t Offset_Exif_Ifd = 0;
  std::int32_t Offset_MakerNote = 0;
  QString Pic_File;
  bool Is_Loaded_ = false;
  // The byte order of the open file once it was asked for: it can't change.
  std::optional<bool> Little_Endian;
  // 16-bit characters in the values of all entries.
  std::int64_t Text_Length = 0;
};
