#pragma once

#include <QDialog>
#include <QString>
#include <functional>

#include "host/fenster/vorgaenge/Einlesearbeit.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTableWidget;

/// Asks for the list that is to be taken in; empty where the user gives up.
using Listenwahl = std::function<QString(QWidget* ueber)>;
QString waehle_Liste(QWidget* ueber);

/// Takes a list of records in: shows its first lines with the meaning of their columns to choose, what is new, changed,
/// the same and wrong, and writes it all or nothing. It stays alive meanwhile, and can be given up.
class Einlesefenster final : public QDialog {
 public:
  /// The connect string of the embedded database, and a path of this machine.
  Einlesefenster(const QString& verbindung, const QString& datei, QWidget* ueber);

  /// What was written, in words, once the window was accepted.
  const QString& ergebnis() const noexcept { return ergebnis_; }

 protected:
  void reject() override;

 private:
  void baue_auf();
  void baue_Auswahl(class QVBoxLayout& lage);
  void baue_Fuss(class QVBoxLayout& lage);
  void zeige_Ansicht(const Einlesearbeit::Ansicht& ansicht);
  void zeige_Werte();
  void waehle_Kopfzeile(bool kopfzeile);
  /// Reads the choices of the window and compares anew; gives up what runs first.
  void pruefe_neu();
  void zeige_Vorschau(const Einlesearbeit::Vorschau& vorschau);
  void uebernimm();
  void zeige_Fortschritt(Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz);
  void sage(const QString& worte);
  void erlaube();
  Spaltenwahl gewaehlte() const;

  Einlesearbeit arbeit_;
  QString datei_;
  QString ergebnis_;
  Einlesearbeit::Ansicht ansicht_;
  Einlesebefund befund_;
  bool verglichen_ = false;
  bool noch_einmal_ = false;
  bool schreibt_ = false;
  QLabel* lbl_Datei;
  QCheckBox* chk_Kopfzeile;
  QComboBox* cbo_Art;
  QTableWidget* tbl_Spalten;
  QLabel* lbl_Befund;
  QListWidget* lst_Zeilen;
  QCheckBox* chk_Auslassen;
  QProgressBar* bar_Fortschritt;
  QPushButton* cmd_Einlesen;
  QPushButton* cmd_Abbrechen;
};
