#include "platform/basic/Suchworte.h"

#include <QList>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace suchworte {

QString gefaltet(QStringView text) {
  return text.toString().toCaseFolded().simplified();
}

QString anfaenge(QStringView text) {
  const QString klein = gefaltet(text);
  QStringList alle;
  const auto nimm = [&alle](const QString& anfang) {
    if (!alle.contains(anfang)) alle.append(anfang);
  };
  int zeichen = 0;
  QString anfang;
  for (const char32_t eines : klein.toUcs4()) {
    zeichen = QChar::isLetterOrNumber(eines) ? zeichen + 1 : 0;
    if (zeichen == 0 || zeichen > 2) continue;
    if (zeichen == 1) anfang.clear();
    anfang += QString::fromUcs4(&eines, 1);
    nimm(anfang);
  }
  if (alle.isEmpty()) return {};
  alle.sort();
  return u' ' + alle.join(u' ') + u' ';
}

}  // namespace suchworte
