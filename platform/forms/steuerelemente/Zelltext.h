#pragma once

#include <QString>

namespace zelltext {

/// What a cell shows of a text: one line that a reader can take in, with blanks for control characters and only the
/// beginning of a text longer than anybody reads there.
inline QString angezeigt(const QString& text) {
  constexpr qsizetype Hoechstens = 500;
  QString zeile = text.left(Hoechstens);
  for (QChar& zeichen : zeile)
    if (zeichen.category() == QChar::Other_Control || zeichen == QChar::LineSeparator ||
        zeichen == QChar::ParagraphSeparator)
      zeichen = u' ';
  return text.size() > Hoechstens ? zeile + u'…' : zeile;
}

}  // namespace zelltext
