#include "host/fenster/Wirtskomponenten.h"

#include "host/betrieb/Artikelstamm.h"
#include "host/fenster/Artikelauskunft.h"

using namespace Qt::Literals::StringLiterals;

Wirtskomponenten::Wirtskomponenten() {
  const auto mache = [this](const QString& name, const komponenten::Fabrik& fabrik) {
    vorige_.insert(name, komponenten::registriere(name, fabrik));
  };
  mache(u"KVOListAuskunft.clsAuskunft"_s, [] { return std::make_shared<Artikelauskunft>(); });
  mache(u"KVOArtik.clsArtikelManagerSQL"_s, [] { return std::make_shared<Artikelstamm>(u"Artikelstamm"_s); });
  mache(u"KVOArtikelZF.clsArtikelManagerSQLZF"_s, [] { return std::make_shared<Artikelstamm>(u"ArtikelstammZF"_s); });
}

Wirtskomponenten::~Wirtskomponenten() {
  for (auto i = vorige_.cbegin(); i != vorige_.cend(); ++i) komponenten::registriere(i.key(), i.value());
}
