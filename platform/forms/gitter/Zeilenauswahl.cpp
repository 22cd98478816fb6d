#include "platform/forms/gitter/Zeilenauswahl.h"

#include "platform/basic/Laufzeitfehler.h"

std::deque<std::int32_t>::const_iterator Zeilenauswahl::ort(std::int32_t stelle) const {
  if (stelle < 0 || stelle >= Count()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return folge_.begin() + stelle;
}

void Zeilenauswahl::Add(std::int32_t zeile) {
  if (!menge_.insert(zeile).second) return;
  folge_.push_back(zeile);
  melde();
}

void Zeilenauswahl::Remove(std::int32_t stelle) {
  const auto weg = ort(stelle);
  menge_.erase(*weg);
  folge_.erase(weg);
  melde();
}

void Zeilenauswahl::Clear() {
  folge_.clear();
  menge_.clear();
  melde();
}
