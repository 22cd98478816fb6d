#pragma once

#include <QString>
#include <QStringList>

/// What was typed to find records, made ready for the database. All of it is folded (suchworte::gefaltet).
struct Vorgangsfilter {
  /// Words of three and more characters; each must occur somewhere.
  QStringList lange;
  /// The letters and digits of words that are shorter; each must begin a word or a number.
  QStringList kurze;
  /// All words with a blank between; a number that begins so comes first.
  QString ganz;

  /// Words without a letter or digit say nothing and are left out, and so are more than twelve.
  static Vorgangsfilter lies(const QString& text);
  bool leer() const { return lange.isEmpty() && kurze.isEmpty(); }
};
