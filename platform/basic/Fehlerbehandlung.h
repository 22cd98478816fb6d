#pragma once

#include <type_traits>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"

/// The three ways in which a procedure treats a failure. No other `try` stands in a procedure.
namespace fehler {

/// The exception that is being handled, as a failure: running out of memory becomes 7, anything foreign 51 with its
/// words. Only to be called inside a catch block.
Laufzeitfehler aktueller_Fehler() noexcept;

/// Report and end: runs `prozedur` and hands its result on. On a failure `melden` gets it and the result is `T{}`.
/// A failure of `melden` itself reaches the caller.
template <class Melden, class Prozedur>
auto melden_und_enden(Melden&& melden, Prozedur&& prozedur) -> std::invoke_result_t<Prozedur> {
  try {
    return std::forward<Prozedur>(prozedur)();
  } catch (...) {
    const Laufzeitfehler fehler = aktueller_Fehler();
    std::forward<Melden>(melden)(fehler);
  }
  return std::invoke_result_t<Prozedur>();
}

/// End silently: like melden_und_enden, but nobody is told.
template <class Prozedur>
auto still_enden(Prozedur&& prozedur) noexcept -> std::invoke_result_t<Prozedur> {
  try {
    return std::forward<Prozedur>(prozedur)();
  } catch (...) {
    (void)aktueller_Fehler();
  }
  return std::invoke_result_t<Prozedur>();
}

/// Pass over and go on: each call runs one statement; a failure in it is dropped and the next call goes on.
/// @code
///   fehler::Weiter weiter;
///   weiter([&] { AktInd(i); });
///   if (!weiter([&] { /* … */ })) …   // tells whether this statement failed
/// @endcode
class Weiter {
 public:
  /// True when the statement ran to its end.
  template <class Anweisung>
  bool operator()(Anweisung&& anweisung) noexcept {
    try {
      std::forward<Anweisung>(anweisung)();
      letzte_Nummer_ = 0;
    } catch (...) {
      letzte_Nummer_ = aktueller_Fehler().Nummer();
    }
    return letzte_Nummer_ == 0;
  }

  /// The last statement failed.
  bool fehlgeschlagen() const noexcept { return letzte_Nummer_ != 0; }
  /// Number of the last statement's failure, 0 when it ran to its end.
  std::int32_t Nummer() const noexcept { return letzte_Nummer_; }

 private:
  std::int32_t letzte_Nummer_ = 0;
};

}  // namespace fehler
