#include "platform/gdiplus/miniatur/Miniaturen.h"

#include "platform/gdiplus/miniatur/Miniaturablage.h"

namespace miniaturen {

void an(bool wert) {
  Miniaturablage::aktuell().an(wert);
}

bool ist_an() {
  return Miniaturablage::aktuell().ist_an();
}

}  // namespace miniaturen
