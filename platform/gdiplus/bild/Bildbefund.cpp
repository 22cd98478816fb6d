#include "platform/gdiplus/bild/Bildbefund.h"

#include <span>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Nachschlagen.h"
#include "platform/files/Binaerdatei.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"

namespace bildbefund {
namespace {

constexpr qsizetype ErstesStueck = qsizetype{64} * 1024;

std::int32_t status_von(Kopfbefund befund) noexcept {
  constexpr std::pair<Kopfbefund, gdiplus::Status> Status[] = {{Kopfbefund::Unbekannt, gdiplus::UnknownImageFormat},
      {Kopfbefund::Defekt, gdiplus::InvalidParameter}, {Kopfbefund::ZuGross, gdiplus::OutOfMemory}};
  return nachgeschlagen(Status, befund, gdiplus::Ok);
}

/// Fewer bytes only where the file ends.
void lies(const Binaerdatei& datei, qsizetype anzahl, std::int64_t stelle, QByteArray& bytes) {
  bytes.resize(anzahl);
  const std::size_t gelesen = datei.lies(stelle, std::as_writable_bytes(std::span(bytes.begin(), bytes.end())));
  bytes.truncate(static_cast<qsizetype>(gelesen));
}

QByteArray lies(const Binaerdatei& datei, qsizetype anzahl, std::int64_t stelle = 0) {
  QByteArray bytes;
  lies(datei, anzahl, stelle, bytes);
  return bytes;
}

// Looks only at the directory, wherever it stands.
Befund urteile_Tiff(const Binaerdatei& datei) {
  const QByteArray anfang = lies(datei, Signaturlaenge);
  const auto stelle = bildkopf::tiff_Verzeichnis(anfang);
  Bildkopf kopf = bildkopf::defekt(Bildformat::Tiff);
  if (stelle && *stelle < static_cast<std::uint64_t>(datei.laenge()))
    for (const qsizetype anzahl : {ErstesStueck, bildkopf::Laengstes_Verzeichnis}) {
      const QByteArray verzeichnis = lies(datei, anzahl, static_cast<std::int64_t>(*stelle));
      kopf = lies_Bildkopf(bildkopf::tiff_gekuerzt(anfang, verzeichnis));
      if (kopf.befund != Kopfbefund::Defekt) break;
    }
  return {status_von(kopf.befund), kopf};
}

}  // namespace

Befund urteile(QByteArray& alle) {
  const bool jpeg = erkenne_Bildformat(alle) == Bildformat::Jpeg;
  if (jpeg) trage_Hoehe_ein(alle);
  const Bildkopf kopf = lies_Bildkopf(alle);
  if (kopf.befund == Kopfbefund::Ok && jpeg && !jpegdekoder::ist_Kopf_lesbar(alle))
    return {gdiplus::InvalidParameter, kopf};
  return {status_von(kopf.befund), kopf};
}

Befund urteile_nach_Anfang(const Binaerdatei& datei) {
  const auto ganz = static_cast<qsizetype>(datei.laenge());
  for (qsizetype anzahl = ErstesStueck; anzahl < ganz; anzahl *= 4) {
    QByteArray anfang = lies(datei, anzahl);
    const Bildformat format = erkenne_Bildformat(anfang);
    // An icon may have a larger picture further behind.
    if (format == Bildformat::Ico) break;
    // More bytes can only mend what is broken.
    if (const Befund befund = urteile(anfang); befund.status != gdiplus::InvalidParameter) return befund;
    if (format == Bildformat::Tiff) return urteile_Tiff(datei);
  }
  QByteArray alle = lies(datei, ganz);
  return urteile(alle);
}

Befund lies_und_urteile(const Binaerdatei& datei, QByteArray& bytes) {
  if (erkenne_Bildformat(lies(datei, Signaturlaenge)) == Bildformat::Unbekannt)
    return {gdiplus::UnknownImageFormat, {}};
  lies(datei, static_cast<qsizetype>(datei.laenge()), 0, bytes);
  // A share that breaks off in the middle must not pass for a picture that ends there.
  if (bytes.size() < datei.laenge()) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  return urteile(bytes);
}

}  // namespace bildbefund
