#include "platform/basic/Suchworte.h"

#include <QList>
#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace suchworte {

QString gefaltet(QStringView text) {
  // Qt folds one character to one; "STRASSE" is how "Straße" is written in capitals.
  return text.toString().toCaseFolded().replace(u'ß', u"ss"_s).simplified();
}

QString anfaenge(QStringView text) {
  const QString klein = gefaltet(text);
  // One letter, or two of them; a large firm's records are taken in by hundreds of thousands, so no text for each.
  std::vector<std::array<char32_t, 2>> alle;
  int zeichen = 0;
  char32_t erstes = 0;
  for (const char32_t eines : klein.toUcs4()) {
    zeichen = QChar::isLetterOrNumber(eines) ? zeichen + 1 : 0;
    if (zeichen == 1) alle.push_back({erstes = eines, 0});
    if (zeichen == 2) alle.push_back({erstes, eines});
  }
  if (alle.empty()) return {};
  std::sort(alle.begin(), alle.end());
  alle.erase(std::unique(alle.begin(), alle.end()), alle.end());
  QString worte(u' ');
  for (const auto& [eins, zwei] : alle) {
    worte += QChar::fromUcs4(eins);
    if (zwei != 0) worte += QChar::fromUcs4(zwei);
    worte += u' ';
  }
  return worte;
}

}  // namespace suchworte
