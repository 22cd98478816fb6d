#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/kvo_export.h"

/// Components of the host that are asked for by name and made when they are needed. Used on the GUI thread.
namespace komponenten {

/// What every such component is.
class KVO_EXPORT Komponente {
 public:
  virtual ~Komponente();
};

using Fabrik = std::function<std::shared_ptr<Komponente>()>;

/// Makes a component known under its name, without regard to case; an empty `fabrik` takes it back. Hands back the one
/// before.
KVO_EXPORT Fabrik registriere(const QString& name, Fabrik fabrik);

/// A new object of the component. Raises 429 when nobody registered the name or its maker gives nothing.
KVO_EXPORT std::shared_ptr<Komponente> CreateObject(const QString& name);

/// The same as an object of the type that its user works with. An object of another type raises 13.
template <class T>
std::shared_ptr<T> erzeuge(const QString& name) {
  auto neu = std::dynamic_pointer_cast<T>(CreateObject(name));
  if (!neu) throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
  return neu;
}

}  // namespace komponenten

/// "KVOCore.KVFileFunctions".
class KVO_EXPORT KVFileFunctions : public komponenten::Komponente {
 public:
  ~KVFileFunctions() override;
  /// Lets the user choose a folder under that window title; its path as the table writes it, or "" for none.
  virtual QString SelectFolder(const QString& Titel) = 0;
};
