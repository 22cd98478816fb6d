#pragma once

#include <QByteArray>
#include <QString>
#include <deque>

#include "host/betrieb/vorgaenge/Bytestrom.h"

/// A line of a file with the characters that end it; "\n", "\r\n" or "\r".
struct Rohzeile {
  qint64 nummer = 0;
  QByteArray bytes;
  /// It is longer than Groesste_Zeile; what is more of it was passed over.
  bool zu_lang = false;
};

/// The lines of a file one after the other. A mark of UTF-8 at the beginning is left out.
class Zeilenquelle {
 public:
  explicit Zeilenquelle(const QString& datei);

  bool naechste(Rohzeile& zeile);
  /// Lines that were taken come once more; the first of them first.
  void gib_zurueck(const std::deque<Rohzeile>& zeilen);
  void von_vorn();
  qint64 gelesen() const noexcept { return strom_.gelesen(); }
  qint64 groesse() const { return strom_.groesse(); }

 private:
  Bytestrom strom_;
  std::deque<Rohzeile> zurueckgegebene_;
  qint64 nummer_ = 0;
};

enum class Zeichensatz { Utf8, Windows1252 };
/// Looks through a file and gives the more probable of the two. A text of Windows-1252 with an umlaut is hardly ever
/// right UTF-8. One that is UTF-8 but for a few bytes stays UTF-8, and its bad lines say so. A file in UTF-16 ends with
/// Abbruch, Ausgang::Datei.
Zeichensatz erkenne_Zeichensatz(const QString& datei);
