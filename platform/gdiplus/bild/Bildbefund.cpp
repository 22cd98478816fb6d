#include "platform/gdiplus/bild/Bildbefund.h"

#include <algorithm>
#include <optional>
#include <span>

#include "platform/basic/Nachschlagen.h"
#include "platform/files/Binaerdatei.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"

namespace bildbefund {
namespace {

constexpr qsizetype kErstesStueck = qsizetype{64} * 1024;

std::int32_t status_von(Kopfbefund befund) noexcept {
  constexpr std::pair<Kopfbefund, gdiplus::Status> Status[] = {{Kopfbefund::Unbekannt, gdiplus::UnknownImageFormat},
      {Kopfbefund::Defekt, gdiplus::InvalidParameter}, {Kopfbefund::ZuGross, gdiplus::OutOfMemory}};
  return nachgeschlagen(Status, befund, gdiplus::Ok);
}

// The finding of a beginning that is sure to be the whole file's too; none where more bytes could still change it. What
// was sound in the beginning stays so, except that an icon may have a larger picture further behind.
std::optional<Befund> sicheres_Urteil(QByteArray& anfang) {
  const Bildformat format = erkenne_Bildformat(anfang);
  if (format == Bildformat::Ico) return std::nullopt;
  if (format == Bildformat::Jpeg) trage_Hoehe_ein(anfang);
  const Bildkopf kopf = lies_Bildkopf(anfang);
  if (kopf.befund == Kopfbefund::Defekt) return std::nullopt;
  if (kopf.befund == Kopfbefund::Ok && format == Bildformat::Jpeg && !jpegdekoder::ist_Kopf_lesbar(anfang))
    return std::nullopt;
  return Befund{status_von(kopf.befund), kopf};
}

QByteArray lies_Stelle(const Binaerdatei& datei, std::int64_t stelle, qsizetype anzahl) {
  QByteArray bytes(anzahl, Qt::Uninitialized);
  const std::size_t gelesen = datei.lies(stelle, std::as_writable_bytes(std::span(bytes.begin(), bytes.end())));
  bytes.truncate(static_cast<qsizetype>(gelesen));
  return bytes;
}

// Looks only at the directory, wherever it stands.
Befund urteile_Tiff(const Binaerdatei& datei) {
  const QByteArray anfang = lies_Anfang(datei, kSignaturlaenge);
  const auto stelle = bildkopf::tiff_Verzeichnis(anfang);
  Bildkopf kopf = bildkopf::defekt(Bildformat::Tiff);
  if (stelle && *stelle < static_cast<std::uint64_t>(datei.laenge()))
    for (const qsizetype anzahl : {kErstesStueck, bildkopf::kLaengstes_Verzeichnis}) {
      const QByteArray verzeichnis = lies_Stelle(datei, static_cast<std::int64_t>(*stelle), anzahl);
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
  for (qsizetype anzahl = kErstesStueck; anzahl < ganz; anzahl *= 4) {
    QByteArray anfang = lies_Anfang(datei, anzahl);
    if (const auto befund = sicheres_Urteil(anfang)) return *befund;
    if (erkenne_Bildformat(anfang) == Bildformat::Tiff) return urteile_Tiff(datei);
  }
  QByteArray alle = lies_Anfang(datei, ganz);
  return urteile(alle);
}

QByteArray lies_Anfang(const Binaerdatei& datei, qsizetype anzahl) {
  return lies_Stelle(datei, 0, anzahl);
}

}  // namespace bildbefund
