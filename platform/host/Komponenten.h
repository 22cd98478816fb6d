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
KVO_EXPORT Fabrik registriere(const QString& name, const Fabrik& fabrik);

/// A new object of the component. Raises 429 when nobody registered the name or its maker gives nothing.
KVO_EXPORT std::shared_ptr<Komponente> CreateObject(const QString& name);

/// Carries an object whose own class is no component through the registry. It is derived from, so that a compiler finds
/// it by its name and not by a table that each library may have of its own.
template <class T>
class KVO_EXPORT Traeger : public Komponente {
 public:
  /// The object, which outlives its carrier wherever somebody holds it.
  const std::shared_ptr<T> Objekt = std::make_shared<T>();
};

/// The same as an object of the type that its user works with, be it a component itself or carried by one. An object of
/// another type raises 13.
template <class T>
std::shared_ptr<T> erzeuge(const QString& name) {
  const std::shared_ptr<Komponente> neu = CreateObject(name);
  if (auto selbst = std::dynamic_pointer_cast<T>(neu)) return selbst;
  if (const auto traeger = std::dynamic_pointer_cast<Traeger<T>>(neu)) return traeger->Objekt;
  throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
}

}  // namespace komponenten

/// "KVOCore.KVFileFunctions".
class KVO_EXPORT KVFileFunctions : public komponenten::Komponente {
 public:
  ~KVFileFunctions() override;
  /// Lets the user choose a folder under that window title; its path as the table writes it, or "" for none.
  virtual QString SelectFolder(const QString& Titel) = 0;
};
