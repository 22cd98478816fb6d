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
  /// Appends an image.
  void Add(const QString& schluessel, const QIcon& bild);
  void Remove(int index);
  void Clear() noexcept;
  const QString& Key(int index) const;
  const QIcon& Image(int index) const;
  /// Index of the first image with exactly that key, or 0.
  int Suche(const QString& schluessel) const;

 private:
  struct Eintrag {
    QString schluessel;
    QIcon bild;
  };
  std::size_t platz(int index) const;
  void zaehle_neu();

  std::vector<Eintrag> bilder_;
  QHash<QString, int> erste_;
};
