#include "store/Bilddatei.h"

#include <algorithm>

#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The first `anzahl` characters, one fewer where the last would be half of a pair.
QString Anfang(const QString& text, qsizetype anzahl) {
  if (text.size() <= anzahl) return text;
  const bool halb = anzahl > 0 && text[anzahl - 1].isHighSurrogate();
  return text.left(std::max<qsizetype>(halb ? anzahl - 1 : anzahl, 0));
}

bool ist_Trenner(QChar zeichen) {
  return zeichen == u'\\' || zeichen == u'/';
}

/// "..", also with what a share drops at a name's end.
bool fuehrt_hinauf(QStringView ebene) {
  const QStringView name = felder::ohne_Fuellung(ebene);
  return name.size() >= 2 && name.count(u'.') == name.size();
}

bool bleibt_unten(const QString& ordner) {
  if (ordner.startsWith(u'\\') || ordner.startsWith(u'/')) return false;
  if (ordner.size() > 1 && ordner[1] == u':') return false;
  int tiefe = 0;
  for (const QString& ebene : QString(ordner).replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts)) {
    if (ebene != "."_L1) tiefe += fuehrt_hinauf(ebene) ? -1 : 1;
    if (tiefe < 0) return false;
  }
  return true;
}

}  // namespace

bool Bilddatei::liegt_unter_Wurzel(const clsBilderSpeicher& satz) {
  const QString datei = von(satz).datei();
  return bleibt_unten(satz.Bild_Pfad) && std::none_of(datei.begin(), datei.end(), ist_Trenner);
}

Bilddatei Bilddatei::von(const clsBilderSpeicher& satz, const QString& wurzel) {
  return {satz.Bild_Bildname, satz.Bild_BildExt, wurzel + u'\\' + satz.Bild_Pfad};
}

bool Bilddatei::gleich(const Bilddatei& andere) const {
  using felder::vergleichsform;
  return vergleichsform(name) == vergleichsform(andere.name) && vergleichsform(ext) == vergleichsform(andere.ext);
}

Bilddatei Bilddatei::gestempelt(const QString& stempel, int nummer) const {
  const QString ende = (nummer > 1 ? u'_' + QString::number(nummer) : QString()) + stempel;
  qsizetype vorn = 0;
  while (vorn < name.size() && name[vorn] == u' ') ++vorn;
  return {text::Trim(Anfang(name.mid(vorn), Namenslaenge - ende.size()) + ende), ext, ordner};
}

QString Bilddatei::Stempel(const QDateTime& zeit) {
  return zeit.toString(u"yyyyMMdd_HHmmss"_s);
}

bool Bilddatei::ist_Textdatei(const QString& datei) {
  return text::UCase(datei).endsWith(".TXT"_L1);
}

bool Bilddatei::verbietet_Freigabe(QChar zeichen) {
  return zeichen < u' ' || u"<>\"|?*:"_s.contains(zeichen);
}

bool Bilddatei::ist_verboten(QChar zeichen) {
  return verbietet_Freigabe(zeichen) || (zeichen >= QChar(0x7f) && zeichen < QChar(0xa0)) ||
      u"\\/'"_s.contains(zeichen);
}

QString Bilddatei::ersetze_verbotene(const QString& name) {
  QString ersetzt = name;
  for (QChar& zeichen : ersetzt)
    if (ist_verboten(zeichen)) zeichen = zeichen == u'\'' ? u'’' : u'_';
  return ersetzt;
}

QString Bilddatei::passender_Drucktext(const QString& text) {
  qsizetype laenge = 0;
  qsizetype gedoppelt = 0;
  for (; laenge < text.size(); ++laenge) {
    gedoppelt += text[laenge] == u'\'' ? 2 : 1;
    if (gedoppelt > Textlaenge) return Anfang(text, laenge);
  }
  return text;
}
