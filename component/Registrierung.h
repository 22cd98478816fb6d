#pragma once

#include <cstdint>

#include "platform/basic/kvo_export.h"

/// The entries of the component as a library that is loaded by its file name; their names and results are those of COM
/// (learn.microsoft.com, "DllRegisterServer function" and its neighbours). They are plain C functions, so that a
/// program may look them up by name, and none of them raises. Used on the GUI thread.
namespace registrierung {
inline constexpr std::int32_t S_OK = 0;
inline constexpr std::int32_t S_FALSE = 1;
inline constexpr std::int32_t E_POINTER = static_cast<std::int32_t>(0x80004003U);
inline constexpr std::int32_t CLASS_E_CLASSNOTAVAILABLE = static_cast<std::int32_t>(0x80040111U);
inline constexpr std::int32_t SELFREG_E_CLASS = static_cast<std::int32_t>(0x80040201U);
}  // namespace registrierung

extern "C" {

/// Enters the published classes into the component registry (platform/host/Komponenten.h), under the names
/// "KVOBildZuordnung.clsBildZuordnungen", "KVOBildZuordnung.clsBilderSpeicher" and "KVOBildZuordnung.clsDialoge".
/// From then on komponenten::erzeuge<clsDialoge>(u"KVOBildZuordnung.clsDialoge") gives a new object at each call. What
/// was registered under these names is replaced. S_OK, also when repeated; SELFREG_E_CLASS without memory.
KVO_EXPORT std::int32_t DllRegisterServer() noexcept;

/// Takes these entries back, and nothing else: what a host has put in their place since stays. Objects that were made
/// stay too. S_OK, also when nothing was registered; SELFREG_E_CLASS without memory.
KVO_EXPORT std::int32_t DllUnregisterServer() noexcept;

/// The classes are known by name and not by class identifiers, so there is no factory for any `rclsid`: `*ppv` becomes
/// null, the result is CLASS_E_CLASSNOTAVAILABLE. Without a `ppv` it is E_POINTER. The first two arguments are not
/// looked at and may be null.
KVO_EXPORT std::int32_t DllGetClassObject(const void* rclsid, const void* riid, void** ppv) noexcept;

/// Always S_FALSE: the connection that a thread writes with is kept to the end of the process, and so is the library,
/// whoever closes it.
KVO_EXPORT std::int32_t DllCanUnloadNow() noexcept;

}  // extern "C"
