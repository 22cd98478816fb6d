#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// A picture told by its content: which one it is, and by how many quarter turns it was turned to the right.
struct Bildinhalt {
  int bild = 0;
  int viertel = 0;
  friend bool operator==(const Bildinhalt&, const Bildinhalt&) = default;
};

/// What table, tree and text files hold; for the comparison of what should be with what is.
struct Bestand {
  /// Rows of each record in their order, every column but SortIndex.
  QMap<QString, QStringList> zeilen;
  /// By path below the root, with slashes.
  QMap<QString, Bildinhalt> bilder;
  QMap<QString, QString> texte;
};

/// What the second lacks of the first and the other way round, a line each; empty where they agree.
QStringList unterschiede(const Bestand& soll, const Bestand& ist);
