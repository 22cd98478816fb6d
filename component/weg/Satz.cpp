#include "component/weg/Satz.h"

#include <algorithm>
#include <array>

#include "platform/basic/Text.h"
#include "store/Bildnamen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar Trenner = u'\x1f';

/// The eight parts of a record's identity.
template <class Satz>
auto teile(Satz& satz) {
  return std::array{&satz.Bild_Key1, &satz.Bild_Key2, &satz.Bild_Key3, &satz.Bild_Key4, &satz.Bild_Bildname,
      &satz.Bild_BildExt, &satz.Bild_Typ1, &satz.Bild_Typ2};
}

QString ohne_Fuellung(QString text) {
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

QString vergleichsform(const QString& text) {
  return text::UCase(ohne_Fuellung(text));
}

QString oder_strich(const QString& text) {
  return text.isEmpty() ? u"-"_s : text;
}

bool gleiche_Druckangaben(const clsBilderSpeicher& a, const clsBilderSpeicher& b) {
  return a.Bild_NeueSeite == b.Bild_NeueSeite && a.Bild_AlsAnhang == b.Bild_AlsAnhang &&
      a.Bild_DruckGesamteSeite == b.Bild_DruckGesamteSeite && a.Bild_Drucken == b.Bild_Drucken;
}

}  // namespace

namespace weg {

Stand wie_gespeichert(const clsBilderSpeicher& satz) {
  Stand stand{satz, satz.Bild_SortIndex};
  clsBilderSpeicher& s = stand.satz;
  for (QString* teil : teile(s)) *teil = oder_strich(*teil);
  for (QString* teil : {&s.Bild_Key1, &s.Bild_Key2, &s.Bild_Key3, &s.Bild_Key4, &s.Bild_Bildname})
    *teil = text::Left(*teil, bildnamen::Namenslaenge);
  s.Bild_Pfad = text::Left(s.Bild_Pfad, bildnamen::Textlaenge);
  return stand;
}

QString kennung(const clsBilderSpeicher& satz) {
  QStringList texte;
  for (const QString* teil : teile(satz)) texte.append(vergleichsform(oder_strich(*teil)));
  return texte.join(Trenner);
}

bool hat_ganze_Kennung(const clsBilderSpeicher& satz) {
  const auto alle = teile(satz);
  return std::none_of(alle.begin(), alle.end(), [](const QString* teil) { return teil->isEmpty(); });
}

QStringList abweichungen(const Stand& soll, const Stand& ist) {
  QStringList worte;
  if (ohne_Fuellung(soll.satz.Bild_Bildname) != ohne_Fuellung(ist.satz.Bild_Bildname)) worte.append(u"Name"_s);
  if (vergleichsform(soll.satz.Bild_Pfad) != vergleichsform(ist.satz.Bild_Pfad)) worte.append(u"Ordner"_s);
  if (ohne_Fuellung(soll.satz.Bild_Beschreibung) != ohne_Fuellung(ist.satz.Bild_Beschreibung))
    worte.append(u"Drucktext"_s);
  if (!gleiche_Druckangaben(soll.satz, ist.satz)) worte.append(u"Druckangaben"_s);
  if (soll.platz != ist.platz) worte.append(u"Reihenfolge"_s);
  return worte;
}

QString dateiname(const clsBilderSpeicher& satz) {
  return satz.Bild_Bildname + u'.' + satz.Bild_BildExt;
}

QString dateipfad(const QString& wurzel, const clsBilderSpeicher& satz) {
  return wurzel + u'\\' + satz.Bild_Pfad + u'\\' + dateiname(satz);
}

Zuordnungsweg::Vorgang mit_Strichen(Zuordnungsweg::Vorgang vorgang) {
  for (QString* teil : {&vorgang.Key1, &vorgang.Key2, &vorgang.Key3, &vorgang.Key4, &vorgang.Typ1, &vorgang.Typ2})
    *teil = oder_strich(*teil);
  return vorgang;
}

}  // namespace weg
