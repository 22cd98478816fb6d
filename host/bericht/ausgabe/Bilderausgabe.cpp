#include "host/bericht/ausgabe/Bilderausgabe.h"

#include "host/bericht/ausgabe/Ordnerziel.h"
#include "host/bericht/ausgabe/Zipziel.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgang/Vorgang.h"

using namespace Qt::Literals::StringLiterals;

QString Ausgabeergebnis::text() const {
  if (angehalten) return u"Abgebrochen; es ist nichts ausgegeben."_s;
  if (bilder == 0) return u"Es ist nichts ausgegeben."_s;
  const QString anzahl = vorgang::anzahl_Bilder(bilder);
  const QString alle = u"%1 ausgegeben nach „%2“."_s.arg(anzahl, ziel);
  return ausgelassene.empty() ? alle : alle + u" NICHT ausgegeben: %1."_s.arg(ausgelassene.size());
}

namespace {

/// A folder is meant with a closing separator and without.
QString ohne_Trenner(QString ziel) {
  while (ziel.size() > 1 && ziel.endsWith(u'\\')) ziel.chop(1);
  return ziel;
}

}  // namespace

template <class Ziel>
void Bilderausgabe::schreibe(Ziel& ziel, const std::vector<Ausgabebild>& bilder, Bildleser& leser) {
  ziel.schreibe(bilder, leser);
  if (!leser.angehalten() && leser.gelesene() > 0) ziel.behalte();
}

Ausgabeergebnis Bilderausgabe::gib_aus(const QString& angabe, const Bildleser::Fortschritt& fortschritt) {
  const QString ziel = ohne_Trenner(angabe);
  const std::vector<Ausgabebild> bilder = ausgabebilder::waehle(store_, wurzel_, wahl_);
  if (bilder.empty())
    throw Abbruch(Ausgang::Teilweise,
        wahl_.nur_gekennzeichnete ? u"Kein Bild des Vorgangs ist zum Drucken gekennzeichnet."_s
                                  : u"Der Vorgang hat keine Bilder."_s);
  Bildleser leser(wahl_.ort, fortschritt, static_cast<int>(bilder.size()));
  if (Zipziel::ist_gemeint(ziel)) {
    Zipziel zip(ziel);
    zip.pruefe();
    schreibe(zip, bilder, leser);
  } else {
    Ordnerziel ordner(store_, ziel);
    ordner.pruefe(bilder);
    schreibe(ordner, bilder, leser);
  }
  Ausgabeergebnis ergebnis{namen::angezeigt(ziel), leser.gelesene(), leser.ausgelassene(), leser.angehalten()};
  if (ergebnis.angehalten) ergebnis.bilder = 0;
  return ergebnis;
}
