#pragma once

#include <QDialog>
#include <array>
#include <optional>

#include "host/betrieb/vorgaenge/Vorgangstabelle.h"

class Kundenwahl;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// Makes a business record, or changes one. What is typed is checked at once; what can't stand can't be saved, and a
/// line below says why.
class Vorgangsfenster final : public QDialog {
 public:
  /// For a new record of that kind.
  Vorgangsfenster(adodb::Connection& verbindung, const QString& typ1, QWidget* ueber);
  /// For a record as it was read. One that has pictures keeps its kind and number.
  Vorgangsfenster(adodb::Connection& verbindung, const Vorgangssatz& gelesen, int bilder, QWidget* ueber);

  /// The record that stands in the table since, once the window was accepted.
  const Vorgangsschluessel& gespeicherter() const noexcept { return gespeicherter_; }

 private:
  explicit Vorgangsfenster(adodb::Connection& verbindung, QWidget* ueber);
  void baue_auf();
  void baue_Felder(QFormLayout& felder);
  void baue_Fuss();
  /// The record that is changed, with so many pictures.
  void fuelle(const Vorgangssatz& satz, int bilder);
  void waehle_Art(const QString& typ1);
  /// Names the parts of the number as the kind does, and hides those that it does not have.
  void benenne_Teile();
  QString typ1() const;
  Vorgangssatz eingegeben() const;
  QString pruefe() const;
  void zeige_Pruefung();
  void speichere();

  adodb::Connection& verbindung_;
  std::optional<Vorgangssatz> gelesen_;
  int bilder_ = 0;
  Vorgangsschluessel gespeicherter_;
  QComboBox* cbo_Art;
  QLineEdit* txt_Typ1;
  std::array<QLabel*, 3> lbl_Key;
  std::array<QLineEdit*, 3> txt_Key;
  Kundenwahl* kunde_;
  QLineEdit* txt_Projekt;
  QPlainTextEdit* txt_Text;
  QLabel* lbl_Pruefung;
  QPushButton* cmd_Speichern;
};
