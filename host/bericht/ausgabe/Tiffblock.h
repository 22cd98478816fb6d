#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

/// The directories of a TIFF structure (TIFF 6.0), as an Exif block is one, inside the bytes of a whole file. Every
/// byte is distrusted: what leads out of the block is not there.
class Tiffblock {
 public:
  /// How sure it is that nothing but this structure lies between begin and end. In a block whose end is a guess only a
  /// directory that can be nothing else is overwritten.
  enum class Rand { Bekannt, Geraten };

  /// From `anfang`, where the header stands, to `ende`, which is behind the block.
  Tiffblock(QByteArray& bytes, qsizetype anfang, qsizetype ende, Rand rand);

  /// Header and first directory are there.
  bool lesbar() const;
  /// Takes the directories of place data (tag 0x8825, Exif 2.32) out of all directories that point to one, and
  /// overwrites them and their values with zeros. No length changes. True where there was any.
  bool entferne_Ort();

 private:
  struct Eintrag {
    std::uint16_t tag = 0;
    std::uint16_t typ = 0;
    std::uint32_t anzahl = 0;
    std::uint32_t wert = 0;

    std::uint64_t laenge() const;
  };
  /// The entry of a directory that points to place data.
  struct Zeiger {
    std::uint32_t verzeichnis = 0;
    std::uint32_t nummer = 0;
    std::uint32_t ziel = 0;
  };

  bool hat(std::uint64_t stelle, std::uint64_t anzahl) const;
  std::uint32_t zahl(std::uint64_t stelle, unsigned breite) const;
  void setze(std::uint64_t stelle, unsigned breite, std::uint32_t wert);
  std::vector<Eintrag> eintraege(std::uint32_t stelle) const;
  bool zeigt_auf_Ort(const Eintrag& eintrag) const;
  void folge(std::uint32_t stelle, const std::vector<Eintrag>& alle, std::vector<std::uint32_t>& offene) const;
  std::vector<Zeiger> sammle(std::vector<std::uint32_t>& verzeichnisse) const;
  bool ist_Ortsverzeichnis(const std::vector<Eintrag>& alle) const;
  void nulle(std::uint64_t stelle, std::uint64_t anzahl);
  void nulle_Verzeichnis(std::uint32_t stelle);
  void streiche(const Zeiger& zeiger);

  QByteArray& bytes_;
  qsizetype anfang_;
  std::uint64_t laenge_;
  bool geraten_;
  bool gross_;
};
