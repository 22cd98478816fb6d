#include "host/betrieb/aufnahme/Inhaltsvergleich.h"

#include <QCryptographicHash>

#include "host/betrieb/Ausgang.h"
#include "platform/files/Dateien.h"
#include "store/Bilddatei.h"

Inhaltsvergleich::Inhaltsvergleich(clsBildZuordnungen& store, const QString& wurzel) {
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (!Bilddatei::liegt_unter_Wurzel(*store.AktBildObj)) continue;
    const QString pfad = Bilddatei::von(*store.AktBildObj, wurzel).pfad();
    gelingt([&] { ungelesene_[dateien::kennung(pfad).laenge].append(pfad); });
  }
}

bool Inhaltsvergleich::kennt(const QByteArray& bytes) {
  // What can't be read is not known to be the same.
  for (const QString& pfad : ungelesene_.take(bytes.size()))
    gelingt([&] { gelesene_[bytes.size()].insert(summe(dateien::lies_alles(pfad))); });
  const auto gleich_lange = gelesene_.constFind(bytes.size());
  return gleich_lange != gelesene_.constEnd() && gleich_lange->contains(summe(bytes));
}

void Inhaltsvergleich::merke(const QByteArray& bytes) {
  gelesene_[bytes.size()].insert(summe(bytes));
}

QByteArray Inhaltsvergleich::summe(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}
