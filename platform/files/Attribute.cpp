#include "platform/files/Attribute.h"

#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QList>
#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"

namespace attribute {
namespace {

constexpr char Zugriffsliste[] = "system.posix_acl_access";
constexpr qsizetype Laengstes = 1 << 16;

/// The kind of the file system of a device, as the table of mounts spells it (proc(5), "mountinfo"); empty where it
/// does not name it.
std::string art_des_Dateisystems(dev_t geraet) {
  const std::string gesucht = std::to_string(major(geraet)) + ':' + std::to_string(minor(geraet));
  std::ifstream tabelle("/proc/self/mountinfo");
  for (std::string zeile; std::getline(tabelle, zeile);) {
    std::istringstream felder(zeile);
    std::string feld;
    for (int i = 0; i < 3; ++i) felder >> feld;
    if (feld != gesucht) continue;
    while (felder >> feld && feld != "-") {
    }
    felder >> feld;
    return feld;
  }
  return {};
}

/// This mount loses its connection, and every file that is open, when anybody lists the attributes of one.
bool vertraegt_die_Frage_nicht(dev_t geraet) {
  return art_des_Dateisystems(geraet) == "fuse.smbnetfs";
}

void uebernimm_erweiterte(const QByteArray& von, int nach) {
  QByteArray namen(Laengstes, '\0');
  const ssize_t laenge = ::listxattr(von.constData(), namen.data(), static_cast<std::size_t>(namen.size()));
  QList<QByteArray> alle;
  if (laenge > 0) alle = namen.left(laenge - 1).split('\0');
  // The folder may have given a list to the new file that the old one did not have.
  if (laenge >= 0 && !alle.contains(Zugriffsliste)) ::fremovexattr(nach, &Zugriffsliste[0]);
  QByteArray wert(Laengstes, '\0');
  for (const QByteArray& name : std::as_const(alle)) {
    const ssize_t n = ::getxattr(von.constData(), name.constData(), wert.data(), static_cast<std::size_t>(wert.size()));
    if (n >= 0) ::fsetxattr(nach, name.constData(), wert.constData(), static_cast<std::size_t>(n), 0);
  }
}

}  // namespace

void uebernimm(const QByteArray& von, const struct stat& stand, int nach) noexcept {
  // The owner goes first, since changing it takes rights away. Few may give a file away; the group may be given to any
  // that one is in.
  if (::fchown(nach, stand.st_uid, stand.st_gid) != 0) {
    constexpr auto Bleibt = static_cast<uid_t>(-1);
    static_cast<void>(::fchown(nach, Bleibt, stand.st_gid) == 0);
  }
  fehler::still_enden([&] {
    if (!vertraegt_die_Frage_nicht(stand.st_dev)) uebernimm_erweiterte(von, nach);
  });
  ::fchmod(nach, stand.st_mode & 07777);
}

void uebernimm_Zeit(const struct stat& stand, int nach) noexcept {
  const std::array<struct timespec, 2> zeiten{stand.st_atim, stand.st_mtim};
  ::futimens(nach, zeiten.data());
}

}  // namespace attribute
