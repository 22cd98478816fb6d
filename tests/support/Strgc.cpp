// Loaded in front of a program: presses Ctrl+C in the middle of its work, where no other process could be sure to meet
// it. KVO_STRGC_LOESCHEN and KVO_STRGC_FRAGEN say behind how many deletions or moves, and behind how many questions
// whether something may be deleted. What comes before the program has made itself ready for the key does not count.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace {

void zaehle(const char* variable, int& bisher) {
  struct sigaction jetzige = {};
  const char* const soll = std::getenv(variable);
  if (!soll || ::sigaction(SIGINT, nullptr, &jetzige) != 0 || jetzige.sa_handler == SIG_DFL) return;
  if (++bisher == std::strtol(soll, nullptr, 10)) static_cast<void>(std::raise(SIGINT));
}

}  // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" __attribute__((visibility("default"))) int unlink(const char* pfad) noexcept {
  static const auto Echtes = reinterpret_cast<int (*)(const char*)>(::dlsym(RTLD_NEXT, "unlink"));
  static int bisher = 0;
  const int ergebnis = Echtes(pfad);
  zaehle("KVO_STRGC_LOESCHEN", bisher);
  return ergebnis;
}

// What goes is put away, not deleted. The list of it gets its name in the same way, from beside it.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" __attribute__((visibility("default"))) int renameat2(
    int von, const char* quelle, int nach, const char* ziel, unsigned schalter) noexcept {
  static const auto Echtes =
      reinterpret_cast<int (*)(int, const char*, int, const char*, unsigned)>(::dlsym(RTLD_NEXT, "renameat2"));
  static int bisher = 0;
  const int ergebnis = Echtes(von, quelle, nach, ziel, schalter);
  const auto im_Korb = [](const char* pfad) { return std::strstr(pfad, ".papierkorb/") != nullptr; };
  if (im_Korb(ziel) && !im_Korb(quelle)) zaehle("KVO_STRGC_LOESCHEN", bisher);
  return ergebnis;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" __attribute__((visibility("default"))) int faccessat(
    int ordner, const char* pfad, int rechte, int schalter) noexcept {
  static const auto Echtes = reinterpret_cast<int (*)(int, const char*, int, int)>(::dlsym(RTLD_NEXT, "faccessat"));
  static int bisher = 0;
  const int ergebnis = Echtes(ordner, pfad, rechte, schalter);
  zaehle("KVO_STRGC_FRAGEN", bisher);
  return ergebnis;
}
