#pragma once

#include <QHash>
#include <QList>
#include <functional>
#include <memory>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Uhr.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fensterdoppel.h"
#include "tests/support/Pruefdatenbank.h"
#include "tests/wege/Modell.h"

/// Database, picture tree, clock, boxes and reports of all roads of the program. What each road needs is put back at
/// its beginning; connections and the database's file stay.
class Schauplatz {
 public:
  Schauplatz();
  ~Schauplatz();
  Schauplatz(const Schauplatz&) = delete;
  Schauplatz& operator=(const Schauplatz&) = delete;

  /// Table and tree as the model has them at the beginning of a road.
  void richte_ein(const Welt& welt);
  /// What table and tree hold, pictures told by their content. A table that has no order by its index is told.
  Bestand bestand(QStringList& maengel);

  /// What was told since the last question; reports of failures stand among the faults.
  QList<Kasten> hole_Kaesten(QStringList& maengel);
  /// What the host's road told the user since the last question.
  QStringList hole_Gesagtes();
  void beantworte(schritt::Antwort sichern, schritt::Antwort namen);

  void stelle_Uhr(const QDateTime& zeit);
  /// The road of a host: reads the record, opens the dialog, writes. `waehrend` runs once the dialog is up.
  void gehe(const std::function<void(frm_BildZuordnung&)>& waehrend);
  /// Clicks "Bilder suchen" and chooses files of a folder.
  void suche(frm_BildZuordnung& form, const QString& ordner, const QStringList& namen);

  void lege_Bild(const QString& pfad, const Bildinhalt& inhalt);
  /// A file that goes stays aside until `hole_zurueck`.
  void verschwinde(const QString& pfad);
  void stoere(const QString& pfad);
  /// The record's folder goes with all that is in it.
  void trenne();
  /// Those of them that come back.
  void hole_zurueck(const QStringList& pfade);

 private:
  class Fenster;
  class Anwendung;
  class Core;
  void lies_Tabelle(Bestand& bestand, QStringList& maengel);

  Bildwurzel wurzel_;
  Testordner beiseite_;
  Pruefdatenbank db_;
  std::shared_ptr<Anwendung> anwendung_;
  std::shared_ptr<Fenster> kasten_;
  std::shared_ptr<oberflaeche::Meldungsfenster> kasten_vorher_;
  std::shared_ptr<Core> core_;
  std::shared_ptr<KVOCore> core_vorher_;
  Fensterdoppel fenster_;  ///< above the core double
  uhr::Zeitgeber uhr_vorher_;
};
