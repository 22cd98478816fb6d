#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

/// Which files somebody is just making pixels of, so that nobody makes the same a second time beside: whoever wants
/// them too waits, and then finds them in the Bildspeicher. Works across threads.
namespace inarbeit {

/// As long as it lives its file counts as at work.
class Marke {
 public:
  explicit Marke(QByteArray ort) noexcept : ort_(std::move(ort)) {}
  Marke(Marke&& andere) noexcept : ort_(std::exchange(andere.ort_, {})) {}
  ~Marke();
  Marke(const Marke&) = delete;
  Marke& operator=(const Marke&) = delete;
  Marke& operator=(Marke&&) = delete;

 private:
  QByteArray ort_;  ///< of this machine; empty once it was moved on
};

/// Waits until nobody is at work on the file. A thread never holds two marks, so that no two wait for each other.
Marke warte(const QByteArray& ort);
/// None where somebody is at work on it.
std::optional<Marke> versuche(const QByteArray& ort);

}  // namespace inarbeit
