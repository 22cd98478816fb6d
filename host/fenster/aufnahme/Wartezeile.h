#pragma once

#include <QFrame>
#include <QString>
#include <QStringList>

class QLabel;
class QPushButton;

/// The line above the records that offers to attach the files which the program was called with. Hidden while none
/// waits.
class Wartezeile final : public QFrame {
 public:
  Wartezeile();

  /// Shows what waits, and for the record of that number the way to attach it; without a number the user is told to
  /// choose one.
  void zeige(const QStringList& dateien, const QString& nummer);

  QPushButton* const cmd_Annehmen;
  QPushButton* const cmd_Verwerfen;

 private:
  QLabel* const lbl_Wartende;
};
