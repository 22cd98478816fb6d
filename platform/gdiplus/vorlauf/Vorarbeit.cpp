#include "platform/gdiplus/vorlauf/Vorarbeit.h"

#include <algorithm>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Binaerdatei.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"
#include "platform/gdiplus/bild/Reduktion.h"
#include "platform/gdiplus/vorlauf/Inarbeit.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"

namespace vorarbeit {
namespace {

using Schluessel = Bildspeicher::Schluessel;

/// What was read of a file, and what may be in use for it until its pixels are there.
struct Gelesenes {
  Auftrag auftrag;
  Schluessel schluessel;
  Bildkopf kopf;
  QByteArray bytes;
  inarbeit::Marke marke;
  Speicherplatz::Anteil anteil;
};

QList<Auftrag::Groesse> gesuchte(const Auftrag& auftrag, const Bildkopf& kopf) {
  QList<Auftrag::Groesse> groessen = auftrag.masse ? auftrag.masse(kopf.groesse) : QList<Auftrag::Groesse>();
  groessen.removeIf([&](const auto& g) {
    return !reduktion::ist_verkleinert(kopf, g.ziel) || !Bildspeicher::aktuell().haelt(g.ziel);
  });
  return groessen;
}

// Each size on its own and in their order, as the asking pictures would do it.
void mache_Pixel(const Gelesenes& g) {
  for (const Auftrag::Groesse& groesse : gesuchte(g.auftrag, g.kopf)) {
    if (!reduktion::vorhanden(g.schluessel, g.kopf, groesse.ziel, groesse.auch_aus_Groesserem).isNull()) continue;
    const QImage entpackt = bilddekoder::entpacke(g.kopf, g.bytes, groesse.ziel, qRgb(0, 0, 0));
    const QImage neu = bilddekoder::auf_Groesse(entpackt, groesse.ziel);
    reduktion::merke(g.schluessel, g.kopf, g.bytes, entpackt, neu, true);
    if (neu.isNull()) return;
  }
}

void dekodiere(Gelesenes& g) {
  qint64 bedarf = 0;
  for (const Auftrag::Groesse& groesse : gesuchte(g.auftrag, g.kopf))
    bedarf = std::max(bedarf, bilddekoder::speicherbedarf(g.kopf, g.bytes, groesse.ziel));
  // Nobody waits for room with a mark on the file: whoever asks for the picture makes it himself meanwhile.
  const auto anteil = Rechenwerk::aktuell().gerechnetes.versuche(bedarf);
  if (anteil) mache_Pixel(g);
}

// What is wanted is there already, or nothing of it is wanted.
bool ist_fertig(const Auftrag& auftrag, const Schluessel& schluessel) {
  const auto bekannt = Bildspeicher::aktuell().suche(schluessel);
  if (!bekannt) return false;
  const QList<Auftrag::Groesse> groessen = gesuchte(auftrag, bekannt->kopf);
  return std::ranges::all_of(groessen, [&](const Auftrag::Groesse& g) {
    return !reduktion::vorhanden(schluessel, bekannt->kopf, g.ziel, g.auch_aus_Groesserem).isNull();
  });
}

bool ist_gemeint(const Auftrag& auftrag, const Schluessel& schluessel) {
  return !auftrag.schluessel || auftrag.schluessel->kennung == schluessel.kennung;
}

/// What earlier showings left serves: nothing is to be read. Entries are small, so they are unpacked here already.
bool kennt_schon(const Auftrag& auftrag, const Schluessel& schluessel) {
  const auto frueher = dauerspeicher::auskunft(schluessel);
  if (!frueher) return false;
  if (frueher->fehlschlag) return true;
  Bildspeicher::aktuell().merke_Kopf(schluessel, frueher->kopf);
  return std::ranges::all_of(gesuchte(auftrag, frueher->kopf), [&](const Auftrag::Groesse& g) {
    return !reduktion::vorhanden(schluessel, frueher->kopf, g.ziel, g.auch_aus_Groesserem).isNull() ||
        !dauerspeicher::suche(schluessel, frueher->kopf, g.ziel).isNull();
  });
}

/// Reads the content and its header, or the header alone; both are of the state of `schluessel`.
bool lies_Datei(Gelesenes& g) {
  Binaerdatei datei;
  datei.oeffne_Ort(g.auftrag.ort);
  if (datei.kennung() != g.schluessel.kennung) return false;
  if (g.auftrag.masse) g.bytes = Rechenwerk::aktuell().nimm_Puffer();
  const bildbefund::Befund befund =
      g.auftrag.masse ? bildbefund::lies_und_urteile(datei, g.bytes) : bildbefund::urteile_nach_Anfang(datei);
  if (befund.status != gdiplus::Ok || datei.kennung() != g.schluessel.kennung) return false;
  g.kopf = befund.kopf;
  Bildspeicher::aktuell().merke_Kopf(g.schluessel, g.kopf);
  return true;
}

void rechne(Gelesenes gelesenes) {
  // Shared, since a function object must be copyable.
  const auto g = std::make_shared<std::optional<Gelesenes>>(std::move(gelesenes));
  Rechenwerk::aktuell().rechne([g] {
    fehler::still_enden([&] {
      if (!*(*g)->auftrag.aufgegeben) dekodiere(**g);
      if ((*g)->auftrag.bytes.isNull()) Rechenwerk::aktuell().gib_Puffer(std::exchange((*g)->bytes, {}));
    });
    // Whoever waits for the file goes on now, not when this function object goes.
    g->reset();
  });
}

/// The state of the file, where it is the one that is meant and can be told from its next one.
std::optional<Schluessel> stand(const Auftrag& auftrag) {
  if (!auftrag.bytes.isNull()) return auftrag.schluessel;
  auto schluessel = Bildspeicher::aktuell().schluessel(auftrag.ort, dateien::kennung_an(auftrag.ort));
  if (schluessel && !ist_gemeint(auftrag, *schluessel)) schluessel.reset();
  return schluessel;
}

void lies(const Auftrag& auftrag) {
  if (*auftrag.aufgegeben) return;
  const std::optional<Schluessel> schluessel = stand(auftrag);
  if (!schluessel || ist_fertig(auftrag, *schluessel)) return;
  {
    const auto marke = inarbeit::versuche(auftrag.ort);
    if (!marke || kennt_schon(auftrag, *schluessel)) return;
  }
  // Without the mark while it waits for room: whoever needs the file now makes its pixels himself.
  const bool gehalten = !auftrag.bytes.isNull();
  auto anteil = Rechenwerk::aktuell().gelesenes.warte(
      gehalten || !auftrag.masse ? 0 : schluessel->kennung.laenge, *auftrag.aufgegeben);
  if (!anteil) return;
  auto marke = inarbeit::versuche(auftrag.ort);
  if (!marke) return;
  Gelesenes g{auftrag, *schluessel, auftrag.kopf, auftrag.bytes, std::move(*marke), std::move(*anteil)};
  if (!gehalten && !lies_Datei(g)) return;
  if (auftrag.masse) rechne(std::move(g));
}

}  // namespace

void beginne(Auftrag auftrag) {
  Rechenwerk::aktuell().lies([a = std::move(auftrag)] { fehler::still_enden([&] { lies(a); }); });
}

}  // namespace vorarbeit
