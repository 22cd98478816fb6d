#pragma once

#include "host/betrieb/vorgaenge/Listenleser.h"
#include "host/betrieb/vorgaenge/Zeilenquelle.h"

/// Reads text separated by semicolon, comma or tab (RFC 4180): values in quotes may hold the separator, line breaks and
/// quotes, which stand doubled. A value without quotes loses the blanks around it, and is NULL where nothing is left;
/// "" is the empty text. Where quotes do not match, the line on which they begin is wrong and the next one is read
/// anew.
class Csvleser final : public Listenleser {
 public:
  /// Finds separator and code page in the file.
  explicit Csvleser(const QString& datei);

  bool naechste(Listenzeile& zeile) override;
  void von_vorn() override { quelle_.von_vorn(); }
  QStringList feste_Namen() const override { return {}; }
  QString form() const override;
  qint64 gelesen() const override { return quelle_.gelesen(); }
  qint64 groesse() const override { return quelle_.groesse(); }

 private:
  QChar erkenne_Trenner();
  QString entziffert(const Rohzeile& roh, QString& fehler) const;
  void lies_Satz(const Rohzeile& erste, Listenzeile& zeile);

  Zeichensatz zeichensatz_;
  Zeilenquelle quelle_;
  QChar trenner_;
};
