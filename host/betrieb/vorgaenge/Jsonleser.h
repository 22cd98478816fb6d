#pragma once

#include <QByteArray>

#include "host/betrieb/vorgaenge/Bytestrom.h"
#include "host/betrieb/vorgaenge/Listenleser.h"

/// Reads JSON (RFC 8259): one array of objects, or one object after the other, as `kvobild vorgaenge liste --json`
/// gives them out. Keys are the names of the columns in any case; others are passed over. A column that an object
/// leaves out stays as it is, null empties it. An object that is broken is wrong, and the reading goes on behind it,
/// or, where its end can't be told, in the next line.
class Jsonleser final : public Listenleser {
 public:
  explicit Jsonleser(const QString& datei);

  bool naechste(Listenzeile& zeile) override;
  void von_vorn() override;
  QStringList feste_Namen() const override;
  QString form() const override { return QStringLiteral("JSON"); }
  qint64 gelesen() const override { return strom_.gelesen(); }
  qint64 groesse() const override { return strom_.groesse(); }

 private:
  int nimm();
  void ueberspringe_Zwischenraum();
  void ueberspringe_Zeile();
  QByteArray nimm_Objekt(QString& fehler);
  bool nimm_Liste(Listenzeile& zeile);
  bool am_Ende(Listenzeile& zeile);

  Bytestrom strom_;
  qint64 nummer_ = 1;
  enum class Liste { Keine, Offen, Zu } liste_ = Liste::Keine;
  bool angefangen_ = false;
};
