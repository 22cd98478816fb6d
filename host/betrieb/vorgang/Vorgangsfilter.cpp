#include "host/betrieb/vorgang/Vorgangsfilter.h"

#include "platform/basic/Suchworte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype Hoechstens = 12;

/// A statement's marker takes up to 4000 characters on a server.
constexpr qsizetype LaengstesWort = 100;

const QStringList Trenner{u"/"_s, u"·"_s, u"-"_s, u"–"_s};

QString nur_Zeichen(const QString& wort) {
  QString zeichen;
  for (const char32_t eines : wort.toUcs4())
    if (QChar::isLetterOrNumber(eines)) zeichen += QString::fromUcs4(&eines, 1);
  return zeichen;
}

void nimm(QStringList& worte, const QString& wort) {
  if (!worte.contains(wort)) worte.append(wort);
}

}  // namespace

Vorgangsfilter Vorgangsfilter::lies(const QString& text) {
  Vorgangsfilter filter;
  QStringList alle;
  const QStringList worte = suchworte::gefaltet(QString(text).replace(QChar(u'\0'), u' ')).split(u' ');
  for (const QString& wort : worte) {
    if (wort.isEmpty() || Trenner.contains(wort) || alle.size() == Hoechstens) continue;
    const QString zeichen = nur_Zeichen(wort);
    if (wort.toUcs4().size() > 2)
      nimm(filter.lange, wort.left(LaengstesWort));
    else if (zeichen.isEmpty())
      nimm(filter.zeichen, wort);
    else
      nimm(filter.kurze, zeichen);
    alle.append(wort.left(LaengstesWort));
  }
  filter.ganz = alle.join(u' ');
  return filter;
}
