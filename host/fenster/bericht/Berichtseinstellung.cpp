#include "host/fenster/bericht/Berichtseinstellung.h"

#include <utility>

#include "host/betrieb/Einstellungsdatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Berichtswahl"_s) {}
};

const QString Je_Seite = u"je_Seite"_s;
const QString Dpi = u"dpi"_s;
const std::pair<QString, bool Berichtswahl::*> Schalter[] = {{u"alle"_s, &Berichtswahl::alle},
    {u"mit_Info"_s, &Berichtswahl::mit_Info}, {u"mit_Dateiname"_s, &Berichtswahl::mit_Dateiname},
    {u"mit_Aufnahmedatum"_s, &Berichtswahl::mit_Aufnahmedatum}, {u"mit_Ort"_s, &Berichtswahl::mit_Ort}};

}  // namespace

Berichtswahl berichtseinstellung::wahl() {
  const Datei datei;
  Berichtswahl wert;
  const int je_Seite = datei.value(Je_Seite, wert.je_Seite).toInt();
  for (const int moegliche : Berichtswahl::Moegliche_je_Seite)
    if (je_Seite == moegliche) wert.je_Seite = moegliche;
  const int dpi = datei.value(Dpi, static_cast<int>(wert.dichte)).toInt();
  for (const Dichte moegliche : {Dichte::Original, Dichte::Mail, Dichte::Druck})
    if (dpi == static_cast<int>(moegliche)) wert.dichte = moegliche;
  for (const auto& [name, schalter] : Schalter) wert.*schalter = datei.value(name, wert.*schalter).toBool();
  return wert;
}

void berichtseinstellung::wahl(const Berichtswahl& wert) {
  Datei datei;
  datei.setValue(Je_Seite, wert.je_Seite);
  datei.setValue(Dpi, static_cast<int>(wert.dichte));
  for (const auto& [name, schalter] : Schalter) datei.setValue(name, wert.*schalter);
}
