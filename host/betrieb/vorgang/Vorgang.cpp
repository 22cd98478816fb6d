#include "host/betrieb/vorgang/Vorgang.h"

#include <QStringList>

#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString oder_Strich(const QString& wert) {
  return text::Trim(wert).isEmpty() ? u"-"_s : wert;
}

/// A key as the name of a folder.
QString ordnername(const QString& schluessel) {
  QString name;
  for (const QChar c : schluessel) name += c < u' ' || u"<>\"|?*:/\\'"_s.contains(c) ? u'_' : c;
  while (name.endsWith(u'.') || name.endsWith(u' ')) name.chop(1);
  name = text::Trim(name);
  return name.isEmpty() || name == "-"_L1 ? u"Allg"_s : name;
}

QString nummer_von(const Datensatz& satz, Vorgangsart art) {
  QStringList teile{satz.key1, satz.key2};
  if (art != Vorgangsart::Montageauftrag) teile.append(satz.key3);
  teile.removeAll(u"-"_s);
  const QString zusatz = art == Vorgangsart::Montageauftrag && satz.key3 != "-"_L1 ? u" / "_s + satz.key3 : QString();
  return teile.join(u' ') + zusatz;
}

}  // namespace

namespace vorgang {

const Artwoerter& woerter(Vorgangsart art) {
  static const std::array<Artwoerter, Vorgangsarten.size()> Woerter{
      {{u"Beleg"_s, u"Belege"_s, u"BEL"_s}, {u"Montageauftrag"_s, u"Montageaufträge"_s, u"MON"_s},
          {u"Artikel"_s, u"Artikel"_s, u"ART"_s}, {u"Anlage"_s, u"Anlagen"_s, u"ANL"_s}}};
  return Woerter.at(static_cast<std::size_t>(art));
}

Vorgang aus_Schluesseln(Vorgangsart art, const QString& key1, const QString& key2, const QString& key3) {
  Vorgang neu;
  neu.art = art;
  neu.satz = {oder_Strich(key1), oder_Strich(key2), oder_Strich(key3), u"-"_s, woerter(art).typ1, u"-"_s};
  neu.nummer = nummer_von(neu.satz, art);
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
  const QString anfang = woerter(vorgang.art).einzahl + u' ' + vorgang.nummer;
  return vorgang.betreff.isEmpty() ? anfang : anfang + u" – "_s + vorgang.betreff;
}

QString bildordner(const Vorgang& vorgang) {
  if (vorgang.art == Vorgangsart::Artikel) return u"Artikel\\Allg"_s;
  if (vorgang.art == Vorgangsart::Anlage) return u"Anlagen\\"_s + ordnername(vorgang.satz.key1);
  return (vorgang.art == Vorgangsart::Beleg ? u"Belege\\"_s : u"Montage\\"_s) + ordnername(vorgang.satz.key2);
}

QString anzahl_Bilder(int anzahl) {
  if (anzahl == 0) return u"kein Bild"_s;
  return anzahl == 1 ? u"1 Bild"_s : u"%1 Bilder"_s.arg(anzahl);
}

}  // namespace vorgang
