#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QString>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Arbeitsplatz.h"

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for the password of a connection. The password lives in the field and nowhere else; it goes with the window.
class Anmeldefenster final : public QDialog {
 public:
  /// `hinweis`: why it is asked once more, or empty.
  Anmeldefenster(const anmeldung::Worte& worte, const QString& hinweis, QWidget* ueber);

  QString kennwort() const { return txt_Kennwort->text(); }

 private:
  QLineEdit* txt_Kennwort;
  QPushButton* cmd_Anmelden;
};

/// Asks for the password where the server wants one that nobody has given, or has refused it; `grund` is why it is
/// asked once more, or empty. Ends with Abbruch where the user gives up.
void frage_Kennwort(Arbeitsplatz& platz, const QString& grund, QWidget* ueber);

/// Opens the database of a place and asks for the password as often as the server refuses it; ends with Abbruch where
/// the user gives up, or where it is not the password.
void oeffne_mit_Anmeldung(Arbeitsplatz& platz, QWidget* ueber);
