#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

#include "store/clsBildZuordnungen.h"

/// The contents of a record's picture files, to tell a picture that it has already. A file is read only when another
/// one of its length comes.
class Inhaltsvergleich {
 public:
  /// The pictures of a record below the picture root; those that are missing have no content.
  Inhaltsvergleich(clsBildZuordnungen& store, const QString& wurzel);

  /// One of them holds these very bytes.
  bool kennt(const QByteArray& bytes);
  /// These bytes are among them from now on.
  void merke(const QByteArray& bytes);

  /// What stands for a content.
  static QByteArray summe(const QByteArray& bytes);

 private:
  QHash<qint64, QStringList> ungelesene_;
  QHash<qint64, QSet<QByteArray>> gelesene_;
};
