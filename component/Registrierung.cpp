#include "component/Registrierung.h"

#include <QString>
#include <array>
#include <memory>
#include <utility>

#include "dialogs/assignment/clsDialoge.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/host/Komponenten.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBilderSpeicher.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class T>
std::shared_ptr<komponenten::Komponente> mache() {
  return std::make_shared<komponenten::Traeger<T>>();
}

/// A type of its own, so that an entry can be told from what a host registered under the same name.
struct Macher {
  std::shared_ptr<komponenten::Komponente> (*mache)();
  std::shared_ptr<komponenten::Komponente> operator()() const { return mache(); }
};

struct Klasse {
  QString name;
  Macher macher;
};

std::array<Klasse, 3> klassen() {
  return {{{u"KVOBildZuordnung.clsBildZuordnungen"_s, {&mache<clsBildZuordnungen>}},
      {u"KVOBildZuordnung.clsBilderSpeicher"_s, {&mache<clsBilderSpeicher>}},
      {u"KVOBildZuordnung.clsDialoge"_s, {&mache<clsDialoge>}}}};
}

void nimm_zurueck(const Klasse& klasse) {
  komponenten::Fabrik vorige = komponenten::registriere(klasse.name, {});
  if (!vorige.target<Macher>()) komponenten::registriere(klasse.name, vorige);
}

template <class Anweisung>
std::int32_t je_Klasse(Anweisung&& anweisung) noexcept {
  fehler::Weiter weiter;
  const bool erledigt = weiter([&] {
    for (const Klasse& klasse : klassen()) anweisung(klasse);
  });
  return erledigt ? registrierung::S_OK : registrierung::SELFREG_E_CLASS;
}

}  // namespace

std::int32_t DllRegisterServer() noexcept {
  return je_Klasse([](const Klasse& klasse) { komponenten::registriere(klasse.name, klasse.macher); });
}

std::int32_t DllUnregisterServer() noexcept {
  return je_Klasse(nimm_zurueck);
}

std::int32_t DllGetClassObject(const void*, const void*, void** ppv) noexcept {
  if (!ppv) return registrierung::E_POINTER;
  *ppv = nullptr;
  return registrierung::CLASS_E_CLASSNOTAVAILABLE;
}

std::int32_t DllCanUnloadNow() noexcept {
  return registrierung::S_FALSE;
}
