#include <algorithm>

#include "tests/wege/Modell.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString in_Kuerze(const Zuordnung& z) {
  QString kennzeichen;
  for (const bool marke : z.marken) kennzeichen += marke ? u'1' : u'0';
  return QStringList{z.name, z.endung, z.ordner, z.drucktext, kennzeichen, z.anbnr, z.ursprung}.join(u'|');
}

}  // namespace

// Pictures of every kind that the dialog treats apart: with texts and without, shared with another record, in a folder
// of their own, of one name, waiting in the record's own folder.
Welt Welt::am_Anfang(int bilder) {
  Welt welt;
  int nummer = 0;
  const auto lege = [&](const QString& pfad) { welt.bilder[pfad] = {++nummer, 0}; };
  for (int i = 0; i < bilder; ++i) {
    const QString name(QChar(u'a' + i));
    const QString ordner = i == 3 ? u"Allg"_s : u"Belege\\1"_s;
    lege(QString(ordner).replace(u'\\', u'/') + u'/' + name + u".jpg"_s);
    Zuordnung zeile{u"1"_s, name, u"jpg"_s, ordner, u"Text "_s + name, {i % 2 == 0, false, i == 2, true}, {}, {}, i};
    zeile.anbnr = u"Nr "_s + name;
    zeile.ursprung = i == 1 ? u"Scanner"_s : u"-"_s;
    welt.tabelle.push_back(zeile);
    if (i == 0) welt.texte[u"Belege/1/ajpg.txt"_s] = u"Info a"_s;
    if (i == 3) welt.texte[u"Allg/djpg.txt"_s] = u"Info d"_s;
    if (i != 1 && i != 3) continue;
    zeile.re = u"2"_s;
    zeile.drucktext = u"anderswo"_s;
    welt.tabelle.push_back(zeile);
  }
  for (const QString& pfad : {u"Neu/foto.jpg"_s, u"Neu/haus.jpg"_s, u"Neu/a.jpg"_s, u"Anders/foto.jpg"_s,
           u"Anders/Müller's ß.jpg"_s, u"Belege/1/lager.jpg"_s})
    lege(pfad);
  lege(u"Anders/"_s + QString(45, u'n') + u".jpg"_s);
  welt.texte[u"Neu/fotojpg.txt"_s] = u"Info foto"_s;
  return welt;
}

Bestand Welt::bestand() const {
  Bestand b{{}, bilder, texte};
  std::vector<Zuordnung> geordnet = tabelle;
  std::stable_sort(geordnet.begin(), geordnet.end(), [](const auto& x, const auto& y) { return x.sort < y.sort; });
  for (const Zuordnung& zeile : geordnet) b.zeilen[zeile.re].append(in_Kuerze(zeile));
  return b;
}

QString Welt::finde(const QString& pfad) const {
  if (bilder.contains(pfad)) return pfad;
  for (auto i = bilder.begin(); i != bilder.end(); ++i)
    if (i.key().compare(pfad, Qt::CaseInsensitive) == 0) return i.key();
  return {};
}

QString Welt::finde_Text(const QString& pfad) const {
  if (texte.contains(pfad)) return pfad;
  for (auto i = texte.begin(); i != texte.end(); ++i)
    if (i.key().compare(pfad, Qt::CaseInsensitive) == 0) return i.key();
  return pfad;
}
