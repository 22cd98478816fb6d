#include "host/fenster/Wirtskomponenten.h"

#include "host/Datenbank.h"
#include "host/fenster/Artikelauskunft.h"
#include "host/fenster/Artikelstamm.h"
#include "platform/basic/Laufzeitfehler.h"

using namespace Qt::Literals::StringLiterals;

void Einstellungstabelle::GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert,
                                     const QString& pProgramm, const QString& pBenutzer, const QString& pVorgabe) {
  pWert = pVorgabe;
  if (!verbindung_) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  const auto satz = verbindung_->Execute(
      u"Select Wert from Einstellungen where Abschnitt = %1 and Schluessel = %2 and Programm = %3 and Benutzer = %4"_s
          .arg(literal(pAbschnitt), literal(pSchluessel), literal(pProgramm), literal(pBenutzer)));
  if (!satz->Eof()) pWert = satz->Text(0);
}

Wirtskomponenten::Wirtskomponenten() {
  const auto mache = [this](const QString& name, komponenten::Fabrik fabrik) {
    vorige_.insert(name, komponenten::registriere(name, std::move(fabrik)));
  };
  mache(u"KVOListAuskunft.clsAuskunft"_s, [] { return std::make_shared<Artikelauskunft>(); });
  mache(u"KVOArtik.clsArtikelManagerSQL"_s, [] { return std::make_shared<Artikelstamm>(u"Artikelstamm"_s); });
  mache(u"KVOArtikelZF.clsArtikelManagerSQLZF"_s, [] { return std::make_shared<Artikelstamm>(u"ArtikelstammZF"_s); });
}

Wirtskomponenten::~Wirtskomponenten() {
  for (auto i = vorige_.cbegin(); i != vorige_.cend(); ++i) komponenten::registriere(i.key(), i.value());
}
