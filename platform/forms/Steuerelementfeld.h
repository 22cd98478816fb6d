#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"

/// A control array: controls of one name, told apart by their index. Those of design time stay; others are loaded as
/// copies of the template, which has index 0, and unloaded again. `T` needs `uebernimm(const T&)` to be loaded.
template <class T>
class Steuerelementfeld {
 public:
  /// Makes the control of an index, empty, in its container and with its handlers.
  using Macher = std::function<std::unique_ptr<T>(int index)>;

  explicit Steuerelementfeld(Macher macher = {}) : macher_(std::move(macher)) {}

  /// Raises 340 when there is no such control.
  T& operator()(int index) const {
    const auto fund = elemente_.find(index);
    if (fund == elemente_.end()) throw Laufzeitfehler(fehlernummer::ElementFehlt);
    return *fund->second;
  }
  bool vorhanden(int index) const { return elemente_.count(index) > 0; }

  /// Makes a control of design time. Raises 360 when the index is taken.
  T& entwirf(int index) {
    if (vorhanden(index)) throw Laufzeitfehler(fehlernummer::BereitsGeladen);
    return *elemente_.emplace(index, macher_(index)).first->second;
  }

  /// Makes a control as a copy of the template; it is hidden. Raises 360 when the index is taken, 340 without a
  /// template.
  T& Load(int index) {
    const T& vorlage = (*this)(0);
    T& neu = entwirf(index);
    neu.uebernimm(vorlage);
    return neu;
  }

  /// Frees the index at once. The control itself goes when the events that are running have ended: it may be the one
  /// whose handler unloads it. Raises 340 when there is none, 362 for the template.
  void Unload(int index) {
    T& element = (*this)(index);
    if (index == 0) throw Laufzeitfehler(fehlernummer::NichtEntladbar);
    element.Visible(false);
    static_cast<void>(elemente_.find(index)->second.release());
    elemente_.erase(index);
    element.deleteLater();
  }

  int UBound() const { return elemente_.empty() ? -1 : elemente_.rbegin()->first; }
  int Count() const { return static_cast<int>(elemente_.size()); }

  auto begin() const { return elemente_.begin(); }
  auto end() const { return elemente_.end(); }

 private:
  Macher macher_;
  std::map<int, std::unique_ptr<T>> elemente_;
};
