#include "host/kvobild/Druckangaben.h"

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Angabe {
  QStringView option;
  QStringView hilfe;
  QStringView wort;
  void (clsBildZuordnungen::*setze)(bool);
  bool (clsBildZuordnungen::*lies)() const;

  QString name() const { return option.toString(); }
};

constexpr Angabe Angaben[]{
    {u"drucken", u"das Bild wird gedruckt (ohne Angabe: ja)", u"Druck", &clsBildZuordnungen::Bild_Drucken,
        &clsBildZuordnungen::Bild_Drucken},
    {u"neue-seite", u"es beginnt eine neue Seite", u"neue Seite", &clsBildZuordnungen::Bild_NeueSeite,
        &clsBildZuordnungen::Bild_NeueSeite},
    {u"anhang", u"es steht im Anhang", u"Anhang", &clsBildZuordnungen::Bild_AlsAnhang,
        &clsBildZuordnungen::Bild_AlsAnhang},
    {u"ganze-seite", u"es nimmt die ganze Seite ein", u"ganze Seite", &clsBildZuordnungen::Bild_DruckGesamteSeite,
        &clsBildZuordnungen::Bild_DruckGesamteSeite},
};

}  // namespace

namespace druckangaben {

QList<Option> optionen() {
  QList<Option> liste;
  for (const Angabe& a : Angaben) liste.append({a.name(), u"ja|nein"_s, a.hilfe.toString(), {u"ja"_s, u"nein"_s}});
  return liste;
}

bool genannt(const Aufruf& aufruf) {
  return std::any_of(std::begin(Angaben), std::end(Angaben), [&](const Angabe& a) { return aufruf.gesetzt(a.name()); });
}

void pruefe(const Aufruf& aufruf) {
  for (const Angabe& a : Angaben) aufruf.ja_nein(a.name());
}

void uebernimm(const Aufruf& aufruf, clsBildZuordnungen& store) {
  for (const Angabe& a : Angaben)
    if (const std::optional<bool> wert = aufruf.ja_nein(a.name())) (store.*a.setze)(*wert);
}

QString text(const clsBildZuordnungen& store) {
  QStringList worte;
  for (const Angabe& a : Angaben)
    if ((store.*a.lies)()) worte.append(a.wort.toString());
  return worte.join(u", "_s);
}

}  // namespace druckangaben
