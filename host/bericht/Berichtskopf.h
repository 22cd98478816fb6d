#pragma once

#include <QString>
#include <QStringList>

/// How a firm heads its reports.
struct Berichtskopf {
  static constexpr qsizetype Zeilenzahl = 3;

  /// Up to three lines; the first is the firm's name. Empty ones at the end are left out.
  QStringList zeilen;
  /// Picture file of the firm's mark, a path of this machine; empty for none.
  QString zeichen;

  /// Of lines as they were typed.
  static Berichtskopf aus(const QStringList& zeilen, const QString& zeichen);
  /// From an INI file with `Zeile1` to `Zeile3` and `Zeichen` (relative to the file's folder). One that can't be read,
  /// or whose mark is missing, ends with Abbruch, Ausgang::Datei.
  static Berichtskopf aus_Datei(const QString& pfad);
  /// The one that the user has set in the program, kept with its other settings; without one, or where it is locked,
  /// the firm's (see Betriebsvorgaben).
  static Berichtskopf gemerkter();
  /// The user may not have one of his own.
  static bool ist_gesperrt();
  void merke() const;

  friend bool operator==(const Berichtskopf&, const Berichtskopf&) = default;
};
