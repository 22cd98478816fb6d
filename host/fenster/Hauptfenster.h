#pragma once

#include <QMainWindow>
#include <QString>
#include <memory>

#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/aufnahme/Aufnahmeergebnis.h"
#include "host/betrieb/vorgang/Vorschaulader.h"
#include "host/betrieb/vorgang/Zuordnungslauf.h"
#include "host/fenster/Hochkommawache.h"
#include "host/fenster/Vorgangsliste.h"
#include "host/fenster/Wirtskomponenten.h"
#include "host/fenster/aufnahme/Abwurf.h"

class QAction;
class QLabel;
class QPushButton;
class Vorgangsansicht;

/// The program's window: the records on the left, the chosen one with its pictures on the right.
class Hauptfenster final : public QMainWindow {
 public:
  /// Opens nothing yet.
  Hauptfenster(Wirtsoptionen optionen, Zuordnungsdialog dialog);

  /// Opens the database and reads the records; where that takes long only once the window has been painted. A failure
  /// is told in the window, which stays usable.
  void beginne();
  /// Reads all records anew, from the database opened anew.
  void lies_neu();
  /// Chooses the record with that number; false when there is none.
  bool waehle(const QString& nummer) { return liste_->waehle(nummer); }
  /// Walks the road for the chosen record, which must be there.
  void oeffne_Dialog(bool nur_Anzeige);
  /// Shows the Exif properties of the picture chosen in the preview; without one nothing happens.
  void zeige_Exif();
  /// Shows all assignments of the picture chosen in the preview; where the user removes that of the record itself, its
  /// row is deleted.
  void zeige_AlleZuordnungen();
  /// Lets the user assign pictures of the chosen record to articles.
  void zeige_WeitereZuordnungen();
  /// Opens the picture search; what was chosen is told in the status bar.
  void suche_Bilder();
  /// Shows what a clearing of the picture tree would delete, asks, and deletes that. Refuses where the root or the
  /// database can't be reached.
  void raeume_auf();
  /// Attaches the files or the picture of the clipboard to the chosen record; without one nothing happens.
  void fuege_ein();
  /// Takes the pictures that were attached last back out, as long as nothing else was done.
  void nimm_zurueck();

  Vorgangsliste* liste() const noexcept { return liste_; }
  Vorgangsansicht* ansicht() const noexcept { return ansicht_; }

 protected:
  bool event(QEvent* ereignis) override;
  void closeEvent(QCloseEvent* ereignis) override;

 private:
  class Platz;
  /// What can be taken back.
  struct Zurueck {
    Vorgang vorgang;
    Aufnahmeergebnis ergebnis;
  };
  void baue_auf();
  void baue_Aktionen();
  /// Opens the database and asks for the password as often as the server refuses it; ends with Abbruch where the user
  /// gives up.
  void oeffne_Datenbank();
  void melde(const QString& text);
  void zeige_gewaehlten();
  void zeige_Ausfall(const QString& grund);
  void aktualisiere_Anzahlen();
  /// None of the record's assignments holds an apostrophe, which the dialog would put into statements; one that does
  /// was told.
  bool erlaubt_Bearbeiten(const Vorgang& vorgang);
  void erlaube_Aktionen(bool erlaubt);
  void richte_Aufnahme_ein();
  /// Takes what another program handed over into a record and tells what became of it.
  void nimm_auf(const Vorgang& vorgang, const Abwurf& abwurf);
  /// Something else is done: what was attached last stays.
  void vergiss_Aufnahme();

  Wirtskomponenten komponenten_;
  Hochkommawache wache_;
  Arbeitsplatz platz_;
  Zuordnungslauf lauf_;
  Vorschaulader vorschau_;
  Vorgangsliste* liste_;
  Vorgangsansicht* ansicht_;
  QLabel* lbl_Status;
  QAction* act_Zuordnen = nullptr;
  QAction* act_Anzeigen = nullptr;
  QAction* act_Einfuegen = nullptr;
  QAction* act_Aufrecht = nullptr;
  QPushButton* cmd_Rueckgaengig;
  std::unique_ptr<Zurueck> zurueck_;
  QString anfang_;
  bool wartet_aufs_Malen_ = false;
  bool dialog_offen_ = false;
};
