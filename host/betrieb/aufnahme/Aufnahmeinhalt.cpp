#include "host/betrieb/aufnahme/Aufnahmeinhalt.h"

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufnahme/Umwandlung.h"
#include "imaging/Aufrichtung.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Lesen>
QByteArray gelesen(const Aufnahmequelle& quelle, Lesen&& lesen) {
  QByteArray bytes;
  if (const auto grund = versuche([&] { bytes = lesen(); }))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist nicht zu lesen: %2"_s.arg(quelle.angabe, grund->Beschreibung()));
  return bytes;
}

void richte_auf(const Aufnahmequelle& quelle, Aufnahmeinhalt& inhalt) {
  const aufrichtung::Ergebnis gerichtet = aufrichtung::richte_auf(inhalt.bytes, quelle.pfad);
  if (gerichtet.befund == aufrichtung::Befund::Gescheitert)
    inhalt.hinweis = u"„%1“ steht nicht aufrecht, weil das Drehen scheiterte: %2"_s.arg(quelle.angabe, gerichtet.grund);
  if (gerichtet.bytes.isEmpty()) return;
  inhalt.wie_Quelle = false;
  inhalt.bytes = gerichtet.bytes;
}

void wandle_um(const Aufnahmequelle& quelle, umwandlung::Format format, Aufnahmeinhalt& inhalt) {
  try {
    const umwandlung::Ergebnis ergebnis = umwandlung::in_Jpeg(inhalt.bytes, format);
    inhalt.wie_Quelle = false;
    inhalt.bytes = ergebnis.jpeg;
    inhalt.ext = u"jpg"_s;
    if (!ergebnis.hinweis.isEmpty()) inhalt.hinweis = u"„%1“: "_s.arg(quelle.angabe) + ergebnis.hinweis;
  } catch (const Abbruch& abbruch) {
    throw Abbruch(abbruch.ausgang(), u"„%1“: "_s.arg(quelle.angabe) + abbruch.text());
  }
}

}  // namespace

Aufnahmeinhalt aufnahmeinhalt::bereite(const Aufnahmequelle& quelle, bool aufrecht, bool ganz) {
  const QByteArray anfang =
      gelesen(quelle, [&] { return dateien::lies_Anfang(quelle.pfad, umwandlung::Signaturlaenge); });
  const umwandlung::Format format = umwandlung::erkenne(anfang);
  const bool umzuwandeln = format != umwandlung::Format::Keines;
  const bool aufzurichten = aufrecht && (umzuwandeln || anfang.startsWith("\xFF\xD8"));
  Aufnahmeinhalt inhalt{true, {}, quelle.name.ext, {}};
  if (!ganz && !umzuwandeln && !aufzurichten) return inhalt;
  inhalt.bytes = gelesen(quelle, [&] { return dateien::lies_alles(quelle.pfad); });
  if (umzuwandeln) wandle_um(quelle, format, inhalt);
  if (aufzurichten) richte_auf(quelle, inhalt);
  return inhalt;
}
