#pragma once

#include <QWidget>

#include "platform/host/KVOCore.h"

/// A window's place on the screen for the core component that keeps it, under the window's object name.
class Gemerkterplatz final : public Fensterplatz {
 public:
  explicit Gemerkterplatz(QWidget& fenster) : fenster_(fenster) {}
  QString Fenstername() const override { return fenster_.objectName(); }
  Fensterlage Lage() const override {
    return {fenster_.isMaximized() ? fenster_.normalGeometry() : fenster_.geometry(), fenster_.isMaximized()};
  }
  void Lage(const Fensterlage& wert) override {
    fenster_.setGeometry(wert.Rechteck);
    if (wert.Maximiert) fenster_.setWindowState(Qt::WindowMaximized);
  }

 private:
  QWidget& fenster_;
};
