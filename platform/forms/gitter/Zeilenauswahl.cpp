#include "platform/forms/gitter/Zeilenauswahl.h"

#include "platform/basic/Laufzeitfehler.h"

void Zeilenauswahl::pruefe(std::int32_t stelle) const {
  if (stelle < 0 || stelle >= Count()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
}

std::int32_t Zeilenauswahl::Item(std::int32_t stelle) const {
  pruefe(stelle);
  return folge_[static_cast<std::size_t>(stelle)];
}

void Zeilenauswahl::Add(std::int32_t zeile) {
  if (!menge_.insert(zeile).second) return;
  folge_.push_back(zeile);
  melde();
}

void Zeilenauswahl::Remove(std::int32_t stelle) {
  pruefe(stelle);
  const auto weg = folge_.begin() + stelle;
  menge_.erase(*weg);
  folge_.erase(weg);
  melde();
}

void Zeilenauswahl::Clear() {
  folge_.clear();
  menge_.clear();
  melde();
}
