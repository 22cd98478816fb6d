#pragma once

#include <QStringList>

#include "tests/wege/Modell.h"
#include "tests/wege/Schauplatz.h"
#include "tests/wege/Schritte.h"

class QWidget;

/// Walks a road twice at the same time, through the real form and class and through the model, and tells where they
/// part.
class Fahrt {
 public:
  Fahrt(Schauplatz& schauplatz, const Weg& weg);
  /// What went wrong, a line each; empty where all is as the model says.
  QStringList fahre();

 private:
  void sitzung();
  void fuehre_aus(const Schritt& schritt);
  void schliesse_ab();
  void vergleiche_Strip();
  void vergleiche_Kaesten();
  void vergleiche_Bestand();
  void pruefe_Verluste(const Bestand& ist);
  void mangel(const QString& text);

  void tu(const schritt::Haenge_an& s);
  void tu(const schritt::Ziehe& s);
  void tu(const schritt::Rolle& s);
  void tu(const schritt::Waehle& s);
  void tu(const schritt::Drehe& s);
  void tu(const schritt::Benenne& s);
  void tu(const schritt::Schreibe& s);
  void tu(const schritt::Schalte& s);
  void tu(const schritt::Merke_vor& s);
  void tu(const schritt::Aktualisiere& s);
  void tu(const schritt::Speichere& s);
  void tu(const schritt::Verlasse& s);
  void tu(const schritt::Verschwinde& s);
  void tu(const schritt::Trenne& s);
  void tu(const schritt::Kehre_zurueck& s);
  void tu(const schritt::Stoere& s);
  void tu(const schritt::Belege& s);
  void tu(const schritt::Warte& s);

  bool waehle(int zeile);
  void ende_Sortierung();
  /// Selects a row; false where its fields are locked, as the model has it.
  bool waehle_zum_Aendern(int zeile);
  bool bringe_ins_Bild(int zeile);
  bool ist_im_Bild(int zeile) const;
  QString datei(int nummer) const;
  void nach_Kollision();
  frm_BildZuordnung& form() const { return *form_; }

  Schauplatz& schauplatz_;
  Weg weg_;
  Modell modell_;
  std::size_t naechster_ = 0;
  frm_BildZuordnung* form_ = nullptr;
  QString gerade_;
  /// Numbers of all pictures that a clerk has.
  QSet<int> bilder_;
  QStringList maengel_;
};
