#include "platform/forms/steuerelemente/ImageList.h"

#include "platform/basic/Laufzeitfehler.h"

std::size_t ImageList::platz(int index) const {
  if (index < 1 || index > Count()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return static_cast<std::size_t>(index - 1);
}

void ImageList::Add(const QString& schluessel, const QIcon& bild) {
  bilder_.push_back({schluessel, bild});
  if (!erste_.contains(schluessel)) erste_.insert(schluessel, Count());
}

void ImageList::Remove(int index) {
  const bool letzter = index == Count();
  const QString schluessel = Key(index);
  bilder_.erase(bilder_.begin() + static_cast<std::ptrdiff_t>(platz(index)));
  if (erste_.value(schluessel) == index) erste_.remove(schluessel);
  // Behind the last image there is none that moves up.
  if (letzter) return;
  erste_.clear();
  for (int i = Count(); i > 0; --i) erste_.insert(Key(i), i);
}
