#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "host/fenster/Arbeitsplatz.h"
#include "host/fenster/Bildsammlung.h"
#include "host/fenster/Vorgang.h"

/// clsDialoge::Fkt_Aufruf_Dialog_Zuordnung or what stands in for it, with the same arguments and result.
using Zuordnungsdialog = std::function<bool(
    const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath, const QString& pStandardBildPfad,
    const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1, const QString& pTyp2,
    const QString& pInfoZeile, bool pNurAnzeige, bool pNurAnhang)>;

/// What became of one walk.
struct Laufergebnis {
  /// The dialog was open.
  bool geoeffnet = false;
  /// It came back with a failure, which was reported.
  bool dialog_gescheitert = false;
  bool nur_Anzeige = false;
  /// Rows that were written.
  int neu = 0;
  int geaendert = 0;
  int entfernt = 0;
  /// Rows that were written for their place alone.
  int nachgefuehrt = 0;
  /// Rows that the table did not take.
  int nicht_geschrieben = 0;

  int geschrieben() const noexcept { return neu + geaendert + entfernt + nachgefuehrt; }
  /// All of it in one line for the status bar.
  QString text() const;
};

/// The road of an assignment: reads a record's pictures, lets the user work on them in the dialog, gives the new rows
/// their keys and writes what the user saved. Shows no window of its own but message boxes.
class Zuordnungslauf {
 public:
  Zuordnungslauf(Arbeitsplatz& platz, Zuordnungsdialog dialog) : platz_(platz), dialog_(std::move(dialog)) {}

  /// Walks the whole road. With `nur_Anzeige` nothing is written. Every failure has been told when it returns.
  Laufergebnis gehe(const Vorgang& vorgang, bool nur_Anzeige);

 private:
  bool pruefe_Bilder(clsBildZuordnungen& store, bool nur_Anzeige) const;
  void speichere(const Bildsammlung& sammlung, const Vorgang& vorgang, Laufergebnis& ergebnis) const;

  Arbeitsplatz& platz_;
  Zuordnungsdialog dialog_;
};
