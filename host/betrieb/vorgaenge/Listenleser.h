#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

/// A value of a line. A line that says nothing of a column leaves it as it is; NULL empties it.
struct Listenwert {
  bool genannt = false;
  bool null = true;
  QString text;
};

/// A record of a list.
struct Listenzeile {
  /// The line of the file on which it begins, from 1.
  qint64 nummer = 0;
  QList<Listenwert> werte;
  /// Why the line can't be read; empty where it can. The values of one that can't are of no use.
  QString fehler;
};

/// Reads a list of records from a file, one after the other; the file is never held whole. What is wrong with a line is
/// the line's own failure, and the reading goes on behind it. A file that can't be read ends with Abbruch,
/// Ausgang::Datei.
class Listenleser {
 public:
  virtual ~Listenleser();

  /// The next record, or false behind the last one. Empty lines are passed over.
  virtual bool naechste(Listenzeile& zeile) = 0;
  /// Begins anew.
  virtual void von_vorn() = 0;
  /// Headings of the values where the form itself names them (JSON); empty where a line of the file may (CSV).
  virtual QStringList feste_Namen() const = 0;
  /// In words: "CSV mit Semikolon, UTF-8".
  virtual QString form() const = 0;
  /// In bytes.
  virtual qint64 gelesen() const = 0;
  virtual qint64 groesse() const = 0;
};

/// No line and no object of a list is longer, in bytes. A record's columns together take a small part of it.
inline constexpr qsizetype Groesste_Zeile = 64 * 1024;

/// Opens a list by a path of this machine: JSON where the name or the beginning says so, else CSV.
std::unique_ptr<Listenleser> oeffne_Liste(const QString& datei);
