#pragma once

#include <QString>
#include <QStringList>

/// The sentences in lines of a message box, no more than fit one.
inline QString meldungszeilen(const QStringList& saetze) {
  constexpr qsizetype Hoechstens = 15;
  QString text = saetze.mid(0, Hoechstens).join(QStringLiteral("\r\n"));
  if (saetze.size() > Hoechstens) text += QStringLiteral("\r\n… und %1 weitere").arg(saetze.size() - Hoechstens);
  return text;
}
