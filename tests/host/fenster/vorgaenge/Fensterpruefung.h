#pragma once

#include <QTest>
#include <memory>

#include "tests/host/betrieb/vorgaenge/Vorgangsdatenbank.h"

/// A window over a database of records, which is driven by keys and mouse.
template <class Fenster>
class Fensterpruefung : public Vorgangsdatenbank {
 protected:
  void zeige(std::unique_ptr<Fenster> fenster) {
    fenster_ = std::move(fenster);
    fenster_->show();
    fenster_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
  }
  template <class Widget = QWidget>
  Widget& kind(const QString& name) const {
    auto* gefunden = fenster_->template findChild<Widget*>(name);
    EXPECT_NE(gefunden, nullptr) << name.toStdString();
    return *gefunden;
  }

  std::unique_ptr<Fenster> fenster_;
};
