// bench_durchgang QUELLE ZIEL ZAEHLER MIKROSEKUNDEN: shows the folder QUELLE at ZIEL, read-only, answers each request
// later by MIKROSEKUNDEN and counts requests and bytes in the file ZAEHLER. Ends, and unmounts, on SIGTERM.
//
// Requests wait side by side, each on a thread of its own, as at a server. What is read is not kept by the system
// (direct_io), so the bytes are those that the program asked for, in pieces of at most 1 MB; names and attributes hold
// for a second, as with the clients of a share, and a listing brings the attributes along, as a server's does.
#define FUSE_USE_VERSION 35

#include <dirent.h>
#include <fuse3/fuse.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include "bench/freigabe/Zaehlerstand.h"

namespace {

int quelle = -1;
Zaehlerstand* zaehler = nullptr;
std::chrono::microseconds verzoegerung{0};

void warte_und_zaehle(Zaehlerstand::Art art) {
  zaehler->anfragen[art].fetch_add(1, std::memory_order_relaxed);
  if (verzoegerung.count() > 0) std::this_thread::sleep_for(verzoegerung);
}

/// The folder itself comes as "/".
const char* name_in_Quelle(const char* pfad) {
  return pfad[1] == '\0' ? "." : pfad + 1;
}

int als_Antwort(int ergebnis) {
  return ergebnis < 0 ? -errno : ergebnis;
}

void* beginne(fuse_conn_info*, fuse_config* art) {
  art->use_ino = 1;
  art->direct_io = 1;
  art->attr_timeout = 1;
  art->entry_timeout = 1;
  art->negative_timeout = 0;
  return nullptr;
}

int lies_Attribute(const char* pfad, struct stat* info, fuse_file_info*) {
  warte_und_zaehle(Zaehlerstand::Attribute);
  return als_Antwort(::fstatat(quelle, name_in_Quelle(pfad), info, AT_SYMLINK_NOFOLLOW));
}

int oeffne(const char* pfad, fuse_file_info* datei) {
  warte_und_zaehle(Zaehlerstand::Oeffnen);
  if ((datei->flags & O_ACCMODE) != O_RDONLY) return -EROFS;
  const int deskriptor = ::openat(quelle, name_in_Quelle(pfad), O_RDONLY | O_CLOEXEC);
  if (deskriptor < 0) return -errno;
  datei->fh = static_cast<std::uint64_t>(deskriptor);
  return 0;
}

int lies(const char*, char* ziel, std::size_t anzahl, off_t stelle, fuse_file_info* datei) {
  warte_und_zaehle(Zaehlerstand::Lesen);
  std::size_t gelesen = 0;
  while (gelesen < anzahl) {
    const ssize_t n =
        ::pread(static_cast<int>(datei->fh), ziel + gelesen, anzahl - gelesen, stelle + static_cast<off_t>(gelesen));
    if (n < 0) return -errno;
    if (n == 0) break;
    gelesen += static_cast<std::size_t>(n);
  }
  zaehler->bytes.fetch_add(gelesen, std::memory_order_relaxed);
  return static_cast<int>(gelesen);
}

int schliesse(const char*, fuse_file_info* datei) {
  ::close(static_cast<int>(datei->fh));
  return 0;
}

int liste_auf(const char* pfad, void* puffer, fuse_fill_dir_t nimm, off_t, fuse_file_info*, fuse_readdir_flags) {
  warte_und_zaehle(Zaehlerstand::Auflisten);
  const int deskriptor = ::openat(quelle, name_in_Quelle(pfad), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (deskriptor < 0) return -errno;
  const std::unique_ptr<DIR, int (*)(DIR*)> ordner(::fdopendir(deskriptor), ::closedir);
  if (!ordner) return -EIO;
  while (const dirent* eintrag = ::readdir(ordner.get())) {
    struct stat info {};
    const bool bekannt =
        ::fstatat(::dirfd(ordner.get()), static_cast<const char*>(eintrag->d_name), &info, AT_SYMLINK_NOFOLLOW) == 0;
    if (bekannt) nimm(puffer, static_cast<const char*>(eintrag->d_name), &info, 0, FUSE_FILL_DIR_PLUS);
  }
  return 0;
}

int lies_Platz(const char* pfad, struct statvfs* info) {
  warte_und_zaehle(Zaehlerstand::Attribute);
  const int deskriptor = ::openat(quelle, name_in_Quelle(pfad), O_PATH | O_CLOEXEC);
  const int ergebnis = als_Antwort(deskriptor < 0 ? -1 : ::fstatvfs(deskriptor, info));
  if (deskriptor >= 0) ::close(deskriptor);
  return ergebnis;
}

fuse_operations antworten() {
  fuse_operations alle{};
  alle.init = beginne;
  alle.getattr = lies_Attribute;
  alle.open = oeffne;
  alle.read = lies;
  alle.release = schliesse;
  alle.readdir = liste_auf;
  alle.statfs = lies_Platz;
  return alle;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fprintf(stderr, "usage: bench_durchgang QUELLE ZIEL ZAEHLER MIKROSEKUNDEN\n");
    return 2;
  }
  quelle = ::open(argv[1], O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  zaehler = zaehlerstand::bilde_ab(argv[3]);
  verzoegerung = std::chrono::microseconds(std::atol(argv[4]));
  if (quelle < 0 || zaehler == nullptr) {
    std::perror("bench_durchgang");
    return 2;
  }
  std::string name = argv[0];
  std::string ziel = argv[2];
  std::string vordergrund = "-f";
  std::string angaben = "-oro,max_threads=64,max_idle_threads=64,fsname=bench_durchgang";
  char* aufruf[] = {name.data(), ziel.data(), vordergrund.data(), angaben.data(), nullptr};
  const fuse_operations alle = antworten();
  return fuse_main(4, aufruf, &alle, nullptr);
}
