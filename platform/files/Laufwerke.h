#pragma once

#include <QString>
#include <cstdint>
#include <memory>

/// What the list of drives asks the platform (learn.microsoft.com, "GetDriveTypeA", "GetVolumeInformationA",
/// "WNetGetConnectionA"). Paths are those of the table.
namespace laufwerke {

enum Typ : std::int32_t { Unbekannt = 0, OhneWurzel = 1, Wechsel = 2, Fest = 3, Netz = 4, CdRom = 5, Ramdisk = 6 };

class Anbieter {
 public:
  virtual ~Anbieter();
  /// Looks what drives there are at the moment; to be called before they are walked through.
  virtual void sieh_nach() {}
  /// Type of the drive with the root "X:\"; OhneWurzel for a letter that stands for nothing.
  virtual std::int32_t GetDriveType(const QString& wurzel) = 0;
  /// Label of the medium in it; False where there is none or it can't be asked.
  virtual bool GetVolumeInformation(const QString& wurzel, QString& bezeichnung) = 0;
  /// Place behind a network drive "X:", as "\\server\share"; 0 for success.
  virtual std::int32_t WNetGetConnection(const QString& laufwerk, QString& ziel) = 0;
  /// Current directory of the process, beginning with the letter of a drive where the platform has one for it.
  virtual QString aktuelles_Verzeichnis() = 0;
};

/// The provider in force; by default that of this machine.
Anbieter& aktuell();
/// Puts another one in force and hands back the one before; none puts the machine's back.
std::shared_ptr<Anbieter> setze(std::shared_ptr<Anbieter> anbieter);

/// The provider of a machine without drive letters. "C:" is the root file system; letters that a host put into the path
/// map are drives too. Removable media, network mounts (CIFS, NFS) and optical drives get the free letters from D: on
/// by their mount points, in the path map, and lose them when they are gone. `mounts` is the table of mounts, `marken`
/// the folder with the links from volume labels to devices.
std::shared_ptr<Anbieter> dieser_Maschine(const QString& mounts, const QString& marken);

}  // namespace laufwerke
