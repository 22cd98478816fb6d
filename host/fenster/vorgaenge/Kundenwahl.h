#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "host/betrieb/vorgaenge/Vorgangstabelle.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QStandardItemModel;

/// Chooses a record's customer by number, name or place, or takes the name and place of a new one.
class Kundenwahl final : public QWidget {
 public:
  explicit Kundenwahl(adodb::Connection& verbindung, QWidget* ueber = nullptr);

  void waehle(const QString& nummer);
  /// Empty where the record has no customer.
  QString nummer() const;
  /// The customer that the database does not have yet, or none.
  std::optional<Kunde> neuer() const;
  /// Why the choice can't stand, without a full stop; empty where it can.
  QString pruefe() const;

  std::function<void()> bei_Aenderung;
  QComboBox* cbo_Kunde;

 private:
  void baue_auf();
  /// Puts the customers that fit what was typed into the list that drops down below it.
  void schlage_vor(const QString& eingabe);
  void sieh_nach();

  adodb::Connection& verbindung_;
  QStandardItemModel* vorschlaege_;
  QLabel* lbl_Kunde;
  QWidget* neu_;
  QLineEdit* txt_Kundenname;
  QLineEdit* txt_Ort;
  std::optional<Kunde> gefunden_;
  /// Why the database can't be asked.
  QString ausfall_;
};
