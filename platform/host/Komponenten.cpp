#include "platform/host/Komponenten.h"

#include <QHash>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"

namespace {

QHash<QString, komponenten::Fabrik>& fabriken() {
  static QHash<QString, komponenten::Fabrik> alle;
  return alle;
}

}  // namespace

namespace komponenten {

Komponente::~Komponente() = default;

Fabrik registriere(const QString& name, const Fabrik& fabrik) {
  Fabrik vorher = fabriken().take(text::UCase(name));
  if (fabrik) fabriken().insert(text::UCase(name), fabrik);
  return vorher;
}

std::shared_ptr<Komponente> CreateObject(const QString& name) {
  const Fabrik fabrik = fabriken().value(text::UCase(name));
  std::shared_ptr<Komponente> neu = fabrik ? fabrik() : nullptr;
  if (!neu) throw Laufzeitfehler(fehlernummer::ObjektNichtErstellbar);
  return neu;
}

}  // namespace komponenten

KVFileFunctions::~KVFileFunctions() = default;

Auskunftsempfaenger::~Auskunftsempfaenger() = default;

clsAuskunft::~clsAuskunft() = default;

clsArtikelManagerSQL::~clsArtikelManagerSQL() = default;
