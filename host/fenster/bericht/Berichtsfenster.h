#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "host/bericht/Bericht.h"
#include "host/bericht/Bildladung.h"
#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "host/fenster/bericht/Berichtsfragen.h"
#include "store/clsBildZuordnungen.h"

class Berichtsauswahl;
class QLabel;
class QProgressBar;
class QPushButton;
class Seitenansicht;

/// A record's picture report: its pages on the left, the choices beside them, and where it can go: into a PDF file, to
/// the printer, into a mail. The choices are remembered where the program is to remember anything.
class Berichtsfenster final : public QDialog {
 public:
  /// The record's pictures are read once the window is up.
  Berichtsfenster(Arbeitsplatz& platz, Vorgang vorgang, Berichtsfragen fragen, QWidget* ueber);
  ~Berichtsfenster() override;

  /// What became of the report, in words; empty where it was only looked at.
  const QString& ergebnis() const noexcept { return ergebnis_; }
  Seitenansicht* ansicht() const noexcept { return ansicht_; }
  /// Something is being read or written.
  bool arbeitet() const noexcept { return arbeit_ != Arbeit::Keine; }

  /// Milliseconds of reading after which it answers in between.
  void geduld(int wert) noexcept { geduld_ = wert; }

  /// While it writes this stops that and leaves the window open.
  void reject() override;

 protected:
  void showEvent(QShowEvent* ereignis) override;
  void done(int ergebnis) override;

 private:
  enum class Arbeit { Keine, Lesen, Ausgabe };
  /// So many of so many are done; false stops.
  using Fortgang = std::function<bool(std::size_t, std::size_t)>;

  void baue_auf();
  QWidget* baue_Vorschau();
  QWidget* baue_Seite();
  void verbinde();
  /// Reads the record's pictures; one that is being read begins again.
  void lies();
  void lies_einmal();
  /// Lays what was read out on pages.
  void setze();
  /// Says above the pages what is wrong with the report.
  void zeige_Hinweis();
  void zeige_Blick();
  void merke() const;
  void sage(const QString& worte);
  void erlaube();
  Fortgang fortgang(const QString& worte, int geduld);
  QString name() const;
  void speichere();
  void drucke();
  void sende();
  /// Runs what puts the report somewhere; false when it failed, which was told.
  bool gib_aus(const std::function<void()>& tat);
  /// Tells what became of it, and which pictures are missing there.
  void melde(const QString& worte, const QStringList& fehlende);

  Arbeitsplatz& platz_;
  const Vorgang vorgang_;
  const Berichtsfragen fragen_;
  std::shared_ptr<clsBildZuordnungen> sammlung_;
  Bildladung ladung_;
  Bericht bericht_;
  QString ergebnis_;
  Arbeit arbeit_ = Arbeit::Keine;
  int geduld_ = 300;
  bool gelesen_ = false;
  /// Why the record's pictures could not be read.
  QString grund_;
  bool noch_einmal_ = false;
  bool halt_ = false;
  Seitenansicht* ansicht_;
  Berichtsauswahl* auswahl_ = nullptr;
  QLabel* lbl_Hinweis;
  QLabel* lbl_Seite;
  QPushButton* cmd_Seitenbreite;
  QPushButton* cmd_GanzeSeite;
  QPushButton* cmd_Groesser;
  QPushButton* cmd_Kleiner;
  QProgressBar* bar_Fortschritt;
  QPushButton* cmd_Abbrechen;
  QPushButton* cmd_Speichern;
  QPushButton* cmd_Drucken;
  QPushButton* cmd_Senden;
  QPushButton* cmd_Schliessen;
  QLabel* lbl_Status;
};
