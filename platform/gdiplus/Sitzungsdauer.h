#pragma once

#include "platform/gdiplus/gdiplus.h"

namespace gdiplus {

/// A session of the picture operations for as long as the object lives, beside the others that run.
class Sitzungsdauer {
 public:
  Sitzungsdauer() : begonnen_(GdiplusStartup(marke_, 1) == Ok) {}
  ~Sitzungsdauer() {
    if (begonnen_) GdiplusShutdown(marke_);
  }
  Q_DISABLE_COPY_MOVE(Sitzungsdauer)

  bool begonnen() const noexcept { return begonnen_; }

 private:
  std::int32_t marke_ = 0;
  const bool begonnen_;
};

}  // namespace gdiplus
