#include "platform/basic/Text.h"

#include <algorithm>

#include "platform/basic/Laufzeitfehler.h"

namespace text {

QString Trim(QStringView s) {
  constexpr QChar Leerzeichen(u' ');
  while (!s.isEmpty() && s.front() == Leerzeichen) s = s.mid(1);
  while (!s.isEmpty() && s.back() == Leerzeichen) s.chop(1);
  return s.toString();
}

QString UCase(QStringView s) {
  QString ergebnis(s.size(), Qt::Uninitialized);
  std::transform(s.begin(), s.end(), ergebnis.begin(), [](QChar c) { return c.toUpper(); });
  return ergebnis;
}

QString LCase(QStringView s) {
  QString ergebnis(s.size(), Qt::Uninitialized);
  std::transform(s.begin(), s.end(), ergebnis.begin(), [](QChar c) { return c.toLower(); });
  return ergebnis;
}

QString Left(const QString& s, qsizetype anzahl) {
  if (anzahl < 0) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  return s.left(anzahl);
}

}  // namespace text
