#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QString>
#include <memory>

#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/aufnahme/Aufnahmeergebnis.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "host/betrieb/vorgang/Vorgangsdienst.h"
#include "host/betrieb/vorgang/Vorschaulader.h"
#include "host/betrieb/vorgang/Zuletzt.h"
#include "host/betrieb/vorgang/Zuordnungslauf.h"
#include "host/fenster/Hochkommawache.h"
#include "host/fenster/Vorgangsliste.h"
#include "host/fenster/Wirtskomponenten.h"
#include "host/fenster/aufnahme/Abwurf.h"
#include "host/fenster/ausgabe/Zielwahl.h"
#include "host/fenster/bericht/Berichtsfragen.h"
#include "host/fenster/vorgaenge/Einlesefenster.h"

class QLabel;
class QPushButton;
class Vorgangsansicht;

/// The program's window: the records on the left, the chosen one with its pictures on the right.
class Hauptfenster final : public QMainWindow {
 public:
  /// Opens nothing yet.
  Hauptfenster(Wirtsoptionen optionen, Zuordnungsdialog dialog);

  /// Prepares the database and asks for records; where that takes long only once the window has been painted. A failure
  /// is told in the window, which stays usable.
  void beginne();
  /// Asks for the records anew, in the database opened anew.
  void lies_neu();
  /// What is shown does not belong to the last question yet.
  bool fragt() const { return dienst_.fragt(); }
  /// Nothing is asked any more: answer and number are shown, or the failure.
  bool ruht() const { return dienst_.ruht() && !dienst_.fragt() && !wartet_aufs_Malen_; }
  /// Chooses the record with that number; false when it is not shown.
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
  void zeige_Papierkorb();
  /// Makes a business record and chooses it. This and the next three only where the database keeps the records itself.
  void mache_Vorgang();
  void aendere_Vorgang();
  /// Deletes the chosen record after a question; one that has pictures is kept, and they are shown on demand.
  void loesche_Vorgang();
  /// Takes records in from a list that `wahl` asks for.
  void lies_Liste_ein(const Listenwahl& wahl = waehle_Liste);
  /// Shows the chosen record's picture report, from where it goes on; without a record nothing happens.
  void zeige_Bericht(const Berichtsfragen& fragen = {});
  /// Attaches the files or the picture of the clipboard to the chosen record; without one nothing happens.
  void fuege_ein();
  /// Takes the pictures that were attached last back out, as long as nothing else was done.
  void nimm_zurueck();

  /// Lets the user hand out the pictures of the chosen record; without one nothing happens.
  void gib_Bilder_aus(const Zielwahl& zielwahl);

  Vorgangsliste* liste() const noexcept { return liste_; }
  Vorgangsansicht* ansicht() const noexcept { return ansicht_; }

 protected:
  bool event(QEvent* ereignis) override;
  void closeEvent(QCloseEvent* ereignis) override;

 private:
  /// What can be taken back.
  struct Zurueck {
    Vorgang vorgang;
    Aufnahmeergebnis ergebnis;
  };
  void baue_auf();
  void baue_Aktionen();
  /// An action of that object name with its key, for the window and its menus.
  template <class Tat>
  QAction* aktion(const QString& name, const QString& text, const QKeySequence& taste, Tat tun) {
    auto* neu = new QAction(text, this);
    neu->setObjectName(name);
    neu->setShortcut(taste);
    addAction(neu);
    connect(neu, &QAction::triggered, this, tun);
    return neu;
  }
  QAction* baue_Berichtsaktion();
  /// The actions that make and change records.
  QList<QAction*> baue_Vorgangsaktionen();
  void erlaube_Vorgangsaktionen();
  QAction* baue_Ausgabe();
  /// The database keeps the records itself.
  bool hat_eigene_Vorgaenge() const;
  void zeige_Vorgang(const Vorgangsschluessel& schluessel, const QString& tat);
  /// Asks at the first start with what to begin; ends with Abbruch where the user gives up.
  void frage_Anfang();
  void frage();
  void nimm_Antwort(const Vorgangsdienst::Antwort& antwort);
  void nimm_Ausfall(const Datenbankausfall& ausfall);
  void nimm_Zahl(std::int64_t zahl);
  void waehle_Anfang(bool vielleicht_mehr);
  void melde(const QString& text);
  void zeige_gewaehlten();
  void zeige_Ausfall(const QString& grund);
  /// Shows the chosen record anew and asks for the list again.
  void aktualisiere();
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
  Vorgangsdienst dienst_;
  Zuletzt zuletzt_;
  Vorgangsliste* liste_;
  Vorgangsansicht* ansicht_;
  QLabel* lbl_Status;
  QAction* act_Zuordnen = nullptr;
  QAction* act_Anzeigen = nullptr;
  QAction* act_Bericht = nullptr;
  QAction* act_Neu = nullptr;
  QAction* act_Aendern = nullptr;
  QAction* act_Loeschen = nullptr;
  QAction* act_Liste = nullptr;
  QAction* act_Einfuegen = nullptr;
  QAction* act_Ausgeben = nullptr;
  QAction* act_Aufrecht = nullptr;
  QPushButton* cmd_Rueckgaengig;
  std::unique_ptr<Zurueck> zurueck_;
  QString anfang_;
  /// The next answer is the first one of a database that was opened anew.
  bool frisch_ = false;
  QString vorige_Meldung_;
  /// Why the server has refused the last login, in words, or empty.
  QString abgelehnt_;
  bool wartet_aufs_Malen_ = false;
  bool gemalt_ = false;
  bool dialog_offen_ = false;
};
