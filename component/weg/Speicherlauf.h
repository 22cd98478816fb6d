#pragma once

#include <QString>
#include <vector>

#include "component/weg/Posten.h"
#include "component/weg/Verbindungen.h"

namespace weg {

/// One save of a collection: writes, checks against the table, mends, and asks the user whether to try again for as
/// long as something waits. What waits stays flagged in the collection.
class Speicherlauf {
 public:
  Speicherlauf(clsBildZuordnungen& bilder, Verbindungen& verbindungen, Auftrag auftrag)
      : bilder_(bilder), verbindungen_(verbindungen), auftrag_(std::move(auftrag)) {}

  void laufe();
  /// Adds what became of each picture.
  void trage_ein(Zuordnungsweg::Ergebnis& ergebnis) const;

 private:
  void frage_Benutzer();
  void schreibe_und_pruefe();
  void versuche_noch_einmal();
  void schreibe();
  void schreibe_Gruppen();
  /// False when the table could not be read.
  bool pruefe();
  std::optional<std::vector<Stand>> lies(QString& grund);
  void uebernimm(Posten& eines, const Befund& befund);
  void uebernimm_Fehlende(Posten& eines);
  void nimm_Doppelte_heraus(Posten& eines);
  void merke_Ungewisse();
  bool ist_gekennzeichnet(const Posten& eines);
  void kennzeichne(Posten& eines, bool offen);
  void kennzeichne_Wartende_der_Gruppe(const Posten& eines);
  void kopiere_Wartende();
  void kopiere(Posten& eines);
  void schreibe_Texte();
  bool fuehre_Namen_nach();
  bool fuehre_Namen_nach(Posten& eines);
  bool Tabelle_folgt(Posten& eines, const clsBilderSpeicher& alt, const clsBilderSpeicher& neu, bool alle_Vorgaenge);
  bool wartet() const;
  bool wartet_auf_Tabelle() const;

  clsBildZuordnungen& bilder_;
  Verbindungen& verbindungen_;
  Auftrag auftrag_;
  std::vector<Posten> posten_;
  QString grund_;
  bool geprueft_ = true;
};

}  // namespace weg
