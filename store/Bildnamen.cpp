#include "store/Bildnamen.h"

#include <algorithm>

#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace bildnamen {
namespace {

/// The first `anzahl` characters, one fewer where the last would be half of a pair.
QString Anfang(const QString& text, qsizetype anzahl) {
  if (text.size() <= anzahl) return text;
  const bool halb = anzahl > 0 && text[anzahl - 1].isHighSurrogate();
  return text.left(std::max<qsizetype>(halb ? anzahl - 1 : anzahl, 0));
}

}  // namespace

bool ist_verboten(QChar zeichen) {
  return zeichen < u' ' || (zeichen >= QChar(0x7f) && zeichen < QChar(0xa0)) || u"\\/:*?\"<>|'"_s.contains(zeichen);
}

QString ersetze_verbotene(const QString& name) {
  QString ersetzt = name;
  for (QChar& zeichen : ersetzt)
    if (ist_verboten(zeichen)) zeichen = zeichen == u'\'' ? u'’' : u'_';
  return ersetzt;
}

QString gestempelt(const QString& name, const QString& stempel, int nummer) {
  const QString ende = (nummer > 1 ? u'_' + QString::number(nummer) : QString()) + stempel;
  qsizetype vorn = 0;
  while (vorn < name.size() && name[vorn] == u' ') ++vorn;
  return text::Trim(Anfang(name.mid(vorn), Namenslaenge - ende.size()) + ende);
}

QString textdatei(const QString& name, const QString& endung) {
  return name + endung + u".txt"_s;
}

QString passender_Drucktext(const QString& text) {
  qsizetype laenge = 0;
  qsizetype gedoppelt = 0;
  for (; laenge < text.size(); ++laenge) {
    gedoppelt += text[laenge] == u'\'' ? 2 : 1;
    if (gedoppelt > Textlaenge) return Anfang(text, laenge);
  }
  return text;
}

}  // namespace bildnamen
