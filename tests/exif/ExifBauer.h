#pragma once

#include <QByteArray>
#include <QList>
#include <cstdint>

/// Order of the bytes in a TIFF structure.
enum class Folge { Intel, Motorola };

/// Makes Exif files of any shape, valid or not: directories with entries whose fields are given byte by byte, the data
/// that stand outside of them, the offsets between them.
class ExifBauer {
 public:
  explicit ExifBauer(Folge folge) : folge_(folge) {}

  /// Begins a directory that is chained behind the one before it.
  ExifBauer& verzeichnis();
  /// Begins the Exif sub-directory; `zeiger` leads to it.
  ExifBauer& unterverzeichnis();
  /// An entry whose field holds these bytes as they stand in the file, filled up with zeros to four.
  ExifBauer& feld(int tag, int format, std::uint32_t anzahl, const QByteArray& bytes);
  /// An entry whose field is a number of 32 bits.
  ExifBauer& zahl(int tag, int format, std::uint32_t anzahl, std::uint32_t wert);
  /// An entry whose bytes stand outside of it.
  ExifBauer& daten(int tag, int format, std::uint32_t anzahl, const QByteArray& bytes);
  /// An entry 34665 whose field is the offset of the Exif sub-directory.
  ExifBauer& zeiger();
  /// The chain of the directory begun last goes on at this offset instead.
  ExifBauer& kette(std::uint32_t offset);

  /// 16 and 32 bits in the order of the file.
  QByteArray w16(std::uint32_t zahl) const;
  QByteArray w32(std::uint32_t zahl) const;
  /// Numerator and denominator.
  QByteArray bruch(std::uint32_t zaehler, std::uint32_t nenner) const { return w32(zaehler) + w32(nenner); }

  /// Offset of a directory, counted in the order in which they were begun, relative to the TIFF header.
  std::uint32_t offset(qsizetype verzeichnis) const;
  /// The TIFF structure: header, directories, data.
  QByteArray tiff() const;
  /// A file of start marker, `davor`, the APP1 segment, an end marker and `danach`.
  QByteArray jpeg(const QByteArray& davor = {}, const QByteArray& danach = {}) const;

  /// The APP1 segment of a given content behind "Exif" and two zero bytes.
  static QByteArray segment(const QByteArray& tiff);

 private:
  struct Eintrag {
    int tag = 0;
    int format = 0;
    std::uint32_t anzahl = 0;
    QByteArray feld;
    QByteArray daten;
    bool zeiger = false;
  };
  struct Verzeichnis {
    QList<Eintrag> eintraege;
    bool unter = false;
    std::int64_t kette = -1;
  };

  std::uint32_t naechstes(qsizetype verzeichnis) const;
  std::uint32_t offset_Unterverzeichnis() const;

  Folge folge_;
  QList<Verzeichnis> verzeichnisse_;
};

/// A file as a camera writes it: first directory, thumbnail directory with its picture, Exif sub-directory with a maker
/// note of the given length; about 40 entries.
QByteArray kamerabild(Folge folge, qsizetype makernote = 64, const QByteArray& danach = {});
