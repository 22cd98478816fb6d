#include "host/betrieb/vorgang/Vorgang.h"

#include <QStringList>
#include <algorithm>

#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView Unerlaubte = u"<>\"|?*:/\\'";

QString oder_Strich(const QString& wert) {
  return text::Trim(wert).isEmpty() ? u"-"_s : wert;
}

bool ist_unerlaubt(QChar zeichen) {
  return zeichen < u' ' || Unerlaubte.contains(zeichen);
}

/// A key as the name of a folder.
QString ordnername(const QString& schluessel) {
  QString name;
  for (const QChar c : schluessel) name += ist_unerlaubt(c) ? u'_' : c;
  while (name.endsWith(u'.') || name.endsWith(u' ')) name.chop(1);
  name = text::Trim(name);
  return name.isEmpty() || name == "-"_L1 ? u"Allg"_s : name;
}

bool ist(const QString& typ1, QLatin1StringView name) {
  return text::Trim(typ1).compare(name, Qt::CaseInsensitive) == 0;
}

QString nummer_von(const Datensatz& satz) {
  const bool montage = ist(satz.typ1, "MON"_L1);
  QStringList teile{satz.key1, satz.key2};
  if (!montage) teile.append(satz.key3);
  teile.removeAll(u"-"_s);
  return teile.join(u' ') + (montage && satz.key3 != "-"_L1 ? u" / "_s + satz.key3 : QString());
}

QString ordner_nach_Regel(const Vorgang& vorgang) {
  const Datensatz& satz = vorgang.satz;
  if (ist(satz.typ1, "ART"_L1)) return u"Artikel\\Allg"_s;
  if (ist(satz.typ1, "ANL"_L1)) return u"Anlagen\\"_s + ordnername(satz.key1);
  if (ist(satz.typ1, "BEL"_L1)) return u"Belege\\"_s + ordnername(satz.key2);
  if (ist(satz.typ1, "MON"_L1)) return u"Montage\\"_s + ordnername(satz.key2);
  return ordnername(satz.typ1) + u'\\' + ordnername(vorgang.nummer);
}

}  // namespace

namespace vorgang {

const QList<Art>& bekannte_Arten() {
  static const QList<Art> Alle{{u"BEL"_s, u"Beleg"_s, u"Belege"_s},
      {u"MON"_s, u"Montageauftrag"_s, u"Montageaufträge"_s}, {u"ART"_s, u"Artikel"_s, u"Artikel"_s},
      {u"ANL"_s, u"Anlage"_s, u"Anlagen"_s}};
  return Alle;
}

qsizetype rang(const QString& typ1) {
  const QList<Art>& alle = bekannte_Arten();
  return std::find_if(alle.begin(), alle.end(), [&](const Art& art) {
    return art.typ1.compare(text::Trim(typ1), Qt::CaseInsensitive) == 0;
  }) - alle.begin();
}

Art art_von(const QString& typ1) {
  const qsizetype stelle = rang(typ1);
  if (stelle < bekannte_Arten().size()) return bekannte_Arten().at(stelle);
  const QString name = text::UCase(text::Trim(typ1));
  return {name, name, name};
}

Vorgang aus_Schluesseln(const QString& typ1, const QString& key1, const QString& key2, const QString& key3) {
  const bool bekannt = rang(typ1) < bekannte_Arten().size();
  Vorgang neu;
  neu.satz = {oder_Strich(key1), oder_Strich(key2), oder_Strich(key3), u"-"_s,
      bekannt ? art_von(typ1).typ1 : text::Trim(typ1), u"-"_s};
  neu.nummer = nummer_von(neu.satz);
  return neu;
}

QString kennung(const Vorgang& vorgang) {
  QStringList teile{vorgang.satz.typ1, vorgang.satz.key1, vorgang.satz.key2, vorgang.satz.key3};
  for (QString& teil : teile) {
    while (teil.endsWith(u' ')) teil.chop(1);
    teil = text::UCase(teil);
  }
  return teile.join(u'\x1f');
}

QString infozeile(const Vorgang& vorgang) {
  const QString anfang = art_von(vorgang.satz.typ1).einzahl + u' ' + vorgang.nummer;
  return vorgang.betreff.isEmpty() ? anfang : anfang + u" – "_s + vorgang.betreff;
}

bool ordner_bleibt_unten(const QString& ordner) {
  const QStringList teile = ordner.split(u'\\');
  return std::all_of(teile.begin(), teile.end(), [](const QString& teil) {
    const bool nur_Punkte = !teil.isEmpty() && teil.count(u'.') == teil.size();
    return !teil.isEmpty() && !nur_Punkte && std::none_of(teil.begin(), teil.end(), ist_unerlaubt);
  });
}

QString bildordner(const Vorgang& vorgang) {
  return ordner_bleibt_unten(vorgang.ordner) ? vorgang.ordner : ordner_nach_Regel(vorgang);
}

QString anzahl_Bilder(int anzahl) {
  if (anzahl == 0) return u"kein Bild"_s;
  return anzahl == 1 ? u"1 Bild"_s : u"%1 Bilder"_s.arg(anzahl);
}

}  // namespace vorgang
