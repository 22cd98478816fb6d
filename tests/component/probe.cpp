// probe FILE: loads the library by its file name, calls its four entries and tells their results. It is linked to
// neither the library nor Qt.
#include <dlfcn.h>

#include <cstdint>
#include <cstdio>

namespace {

using Einfach = std::int32_t (*)();
using Klassenobjekt = std::int32_t (*)(const void*, const void*, void**);

template <class Funktion>
Funktion suche(void* bibliothek, const char* name) {
  return reinterpret_cast<Funktion>(::dlsym(bibliothek, name));
}

void sage(const char* name, std::int32_t ergebnis) {
  std::printf("%s %08x\n", name, static_cast<std::uint32_t>(ergebnis));
}

bool rufe(void* bibliothek, const char* name) {
  const auto funktion = suche<Einfach>(bibliothek, name);
  if (!funktion) return false;
  sage(name, funktion());
  return true;
}

bool rufe_Klassenobjekt(void* bibliothek) {
  const auto funktion = suche<Klassenobjekt>(bibliothek, "DllGetClassObject");
  if (!funktion) return false;
  int irgendwas = 0;
  void* objekt = &irgendwas;
  sage("DllGetClassObject", funktion(nullptr, nullptr, &objekt));
  std::printf("ppv %s\n", objekt ? "set" : "null");
  sage("DllGetClassObject without ppv", funktion(nullptr, nullptr, nullptr));
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  void* bibliothek = argc == 2 ? ::dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
  if (!bibliothek) {
    std::fprintf(stderr, "%s\n", argc == 2 ? ::dlerror() : "probe FILE");
    return 2;
  }
  // Each entry may be called twice.
  const auto zweimal = [&](const char* name) {
    for (int i = 0; i < 2; ++i)
      if (!rufe(bibliothek, name)) return false;
    return true;
  };
  const bool alle = zweimal("DllRegisterServer") && rufe_Klassenobjekt(bibliothek) &&
      rufe(bibliothek, "DllCanUnloadNow") && zweimal("DllUnregisterServer");
  ::dlclose(bibliothek);
  std::printf("closed, %s\n", ::dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) ? "still there" : "gone");
  return alle ? 0 : 1;
}
