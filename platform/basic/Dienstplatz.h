#pragma once

#include <memory>
#include <utility>

/// The place of a service that tests and programs may exchange; `Vorgabe` is in force until then.
template <class Dienst, class Vorgabe>
class Dienstplatz {
 public:
  static std::shared_ptr<Dienst>& in_Kraft() {
    static std::shared_ptr<Dienst> dienst = std::make_shared<Vorgabe>();
    return dienst;
  }
  /// Puts another service in force and hands back the one before; none puts the default back.
  static std::shared_ptr<Dienst> setze(std::shared_ptr<Dienst> dienst) {
    if (!dienst) dienst = std::make_shared<Vorgabe>();
    return std::exchange(in_Kraft(), std::move(dienst));
  }
};
