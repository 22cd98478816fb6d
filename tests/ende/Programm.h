#pragma once

#include <QLocalSocket>
#include <QProcess>
#include <functional>
#include <memory>

#include "tests/ende/Anblick.h"
#include "tests/ende/Bestand.h"
#include "tests/ende/Xsitzung.h"
#include "tests/support/Tdsserver.h"
#include "tests/support/Umgebung.h"

/// The program `bildzuordnung` as a process of its own in an X session, and the user in front of it: looks at the front
/// window until something is to be seen there, and moves the mouse and the keys of the session.
///
/// With the environment variable KVO_ENDE_TDS the sample data are made beforehand, and the program works on a copy of
/// their database behind the TDS server of tests/tds.
///
/// What does not come about in time raises std::runtime_error, and a picture of the screen is left in the file
/// ende_fehler.png of the current folder. The environment variable KVO_ENDE_FAKTOR multiplies the time;
/// KVO_ENDE_VORSPANN is what the program is started with, words parted by blanks, as "valgrind --leak-check=full".
class Programm {
 public:
  using Bedingung = std::function<bool(const Anblick&)>;

  /// `ordner` is for the socket, the program's home and its data folder "daten".
  Programm(Xsitzung& x, const Testordner& ordner);
  ~Programm();
  Programm(const Programm&) = delete;
  Programm& operator=(const Programm&) = delete;

  /// Why it cannot run here; empty where it can.
  static QString hindernis();
  QString datenordner() const { return ordner_.pfad(QStringLiteral("daten")); }
  /// What the data folder and the database that the program works on hold now.
  Bestand bestand() const { return Bestand::lies(datenordner(), server_.get()); }
  void starte();

  /// Waits until the front window is in its place, has the keys, is not at work and fulfils the condition, twice in a
  /// row with the same sight. `worauf` names the condition in the failure.
  Anblick warte(const char* worauf, const Bedingung& bedingung);
  /// Waits until a control of the front window can be clicked, and clicks its middle.
  void klicke(const QString& name);
  /// Clicks left in it, where check boxes have their mark.
  void klicke_Haken(const QString& name);
  void klicke_Knopf(const QString& text);
  /// The place of a row's first cell, rolled into sight.
  QPoint zeile(const QString& liste, const QString& text);
  /// The place of a cell by numbers.
  QRect zelle(const QString& liste, int zeile, int spalte);
  /// Clicks into a field, types over what it holds, and waits until it shows the new text.
  void ueberschreibe(const QString& feld, const QString& text);

  /// Waits for the end; the exit code, or -1 after a crash.
  int warte_auf_Ende();
  QString fehlerausgabe() const { return fehlerausgabe_; }

 private:
  QStringList argumente();
  void stelle_Server_bereit();
  void verbinde();
  QByteArray frage();
  bool bereit(const Anblick& anblick) const;
  Element greifbar(const char* worauf, const std::function<Element(const Anblick&)>& wahl);
  [[noreturn]] void scheitere(const std::string& grund, const QByteArray& zuletzt);

  Xsitzung& x_;
  const Testordner& ordner_;
  std::unique_ptr<Tdsserver> server_;
  QProcess prozess_;
  QLocalSocket auskunft_;
  QString fehlerausgabe_;
  int geduld_ = 0;
};
