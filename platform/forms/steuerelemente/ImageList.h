#pragma once

#include <QHash>
#include <QIcon>
#include <QString>
#include <vector>

/// Images with a key each, numbered from 1. A key may be empty; several images may bear the same one. An index outside
/// raises 9.
class ImageList {
 public:
  int Count() const noexcept { return static_cast<int>(bilder_.size()); }
  void Add(const QString& schluessel, const QIcon& bild);
  void Remove(int index);
  void Clear() noexcept { *this = {}; }
  const QString& Key(int index) const { return bilder_[platz(index)].schluessel; }
  const QIcon& Image(int index) const { return bilder_[platz(index)].bild; }
  /// Index of the first image with exactly that key, or 0.
  int Suche(const QString& schluessel) const { return erste_.value(schluessel); }

 private:
  struct Eintrag {
    QString schluessel;
    QIcon bild;
  };
  std::size_t platz(int index) const;

  std::vector<Eintrag> bilder_;
  QHash<QString, int> erste_;
};
