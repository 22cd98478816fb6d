#pragma once

#include <QStringList>
#include <memory>

#include "platform/shell/Programmstart.h"

/// Notes the files that were to be shown in their programs, for as long as it lives; starts none.
class Starterdoppel {
 public:
  Starterdoppel() : starter_(std::make_shared<Starter>()), vorher_(shell::setze(starter_)) {}
  ~Starterdoppel() { shell::setze(vorher_); }
  Starterdoppel(const Starterdoppel&) = delete;
  Starterdoppel& operator=(const Starterdoppel&) = delete;
  /// Paths of this machine, oldest first.
  const QStringList& geoeffnet() const { return starter_->geoeffnet; }

 private:
  struct Starter final : shell::Programmstarter {
    bool oeffne(const QString& maschinenpfad) override {
      geoeffnet.append(maschinenpfad);
      return true;
    }
    QStringList geoeffnet;
  };
  std::shared_ptr<Starter> starter_;
  std::shared_ptr<shell::Programmstarter> vorher_;
};
