#pragma once

#include <QString>
#include <QStringList>

/// What was typed to find records, made ready for the database. All of it is folded (suchworte::gefaltet).
struct Vorgangsfilter {
  /// Words of three and more characters; each must occur somewhere.
  QStringList lange;
  /// The letters and digits of words that are shorter; each must begin a word or a number.
  QStringList kurze;
  /// Short words without a letter or digit; each must occur somewhere.
  QStringList zeichen;
  /// All words with a blank between; a number that begins so comes first.
  QString ganz;

  /// The marks that only part the words where a record is shown ("AB 24-1001 / 2") are left out, and so is what is more
  /// than twelve words.
  static Vorgangsfilter lies(const QString& text);
  bool leer() const { return lange.isEmpty() && kurze.isEmpty() && zeichen.isEmpty(); }
};
