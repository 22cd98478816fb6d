#pragma once

#include <QtGlobal>
#include <utility>

/// What the files of this folder share: the system's error numbers as failures, and descriptors that close themselves.
namespace systemfehler {

/// Raises the failure that stands for an errno value. A missing name raises 53, a missing or wrong level above it 76.
[[noreturn]] void wirf(int fehler);

/// The disk or the share fails (57): a look that ended so tells nothing about what is there.
bool ist_Ausfall(int fehler) noexcept;

/// Raises wirf(errno) when a system call said -1.
template <class Ergebnis>
Ergebnis pruefe(Ergebnis ergebnis);

/// An open descriptor, closed at the end of its life.
class Deskriptor {
 public:
  explicit Deskriptor(int wert = -1) noexcept : wert_(wert) {}
  ~Deskriptor();
  Q_DISABLE_COPY_MOVE(Deskriptor)
  int wert() const noexcept { return wert_; }
  /// Hands the descriptor over to the caller.
  int entnimm() noexcept { return std::exchange(wert_, -1); }
  /// Closes it and tells a failure of closing, where a share reports what it could not write.
  void schliesse();

 private:
  int wert_;
};

/// A read-only file by its mode: no write bit at all, whoever the user is.
bool schreibgeschuetzt(unsigned modus) noexcept;
/// Nobody may read the file.
bool unlesbar(unsigned modus) noexcept;

}  // namespace systemfehler
