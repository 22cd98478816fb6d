#include <QByteArray>
#include <cstdio>
#include <cstdlib>

#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/gdiplus.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

// The first byte chooses the transform, the rest is the file: it must not crash, and what was turned can be turned
// again and has the same markers and the sides that it should have.

namespace {

void verlange(bool erfuellt, const char* was) {
  if (erfuellt) return;
  std::fprintf(stderr, "%s\n", was);
  std::abort();
}

jpegkoeffizienten::Inhalt lies(const QByteArray& bytes) {
  jpegkoeffizienten::Inhalt inhalt;
  verlange(jpegkoeffizienten::lies(bytes, inhalt) == gdiplus::Ok, "the turned picture can't be read");
  return inhalt;
}

bool gleiche_Marken(const jpegkoeffizienten::Inhalt& a, const jpegkoeffizienten::Inhalt& b) {
  if (a.marken.size() != b.marken.size()) return false;
  for (std::size_t i = 0; i < a.marken.size(); ++i)
    if (a.marken[i].art != b.marken[i].art || a.marken[i].inhalt != b.marken[i].inhalt) return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  if (laenge < 2) return 0;
  const Drehung drehung = *Drehung::von(13 + daten[0] % 5);
  QByteArray bytes("\xff\xd8");
  bytes.append(reinterpret_cast<const char*>(daten) + 1, static_cast<qsizetype>(laenge) - 1);
  const bildbefund::Befund befund = bildbefund::urteile(bytes);
  if (befund.status != gdiplus::Ok) return 0;
  // A false claim of many megapixels is sound, but only takes long.
  if (qint64{befund.kopf.groesse.width()} * befund.kopf.groesse.height() > 100'000) return 0;
  QByteArray neu;
  const std::int32_t status = jpegdrehung::drehe(bytes, drehung, neu);
  verlange(status == gdiplus::Ok || status == gdiplus::GenericError || status == gdiplus::OutOfMemory, "status");
  if (status != gdiplus::Ok) return 0;
  const jpegkoeffizienten::Inhalt alt = lies(bytes);
  const jpegkoeffizienten::Inhalt gedreht = lies(neu);
  verlange(gedreht.groesse == drehung.auf(alt.groesse), "sides");
  verlange(gleiche_Marken(alt, gedreht), "markers");
  verlange(gedreht.dahinter == alt.dahinter, "bytes behind the end");
  QByteArray noch_einmal;
  verlange(jpegdrehung::drehe(neu, drehung, noch_einmal) == gdiplus::Ok, "turned again");
  return 0;
}
