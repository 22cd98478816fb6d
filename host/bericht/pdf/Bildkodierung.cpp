#include "host/bericht/pdf/Bildkodierung.h"

#include <QBuffer>
#include <QImageWriter>
#include <new>

#include "host/bericht/pdf/Jpegbytes.h"
#include "host/betrieb/Ausgang.h"
#include "platform/files/Dateien.h"

namespace bildkodierung {
namespace {

constexpr int Guete = 90;

QByteArray dateibytes(const Berichtsbild& bild) {
  QByteArray bytes;
  gelingt([&] { bytes = dateien::lies_alles(bild.ordner + u'\\' + bild.datei); });
  return bytes;
}

}  // namespace

Form form_von(const Berichtsbild& bild, QSize noetig, const Berichtswahl& wahl) {
  const QSize eigene = bild.groesse.toSize();
  if (wahl.dichte != Dichte::Original) return {Weg::Neu, noetig.boundedTo(eigene), 3};
  const QByteArray bytes = dateibytes(bild);
  if (const auto kopf = jpegbytes::lies_Kopf(bytes); kopf && kopf->groesse == eigene)
    return {Weg::Eigene, eigene, kopf->farben};
  const bool jpeg = bytes.startsWith("\xff\xd8");
  return {jpeg ? Weg::Neu : Weg::Verlustfrei, eigene, 3};
}

std::optional<QByteArray> jpeg(
    const Berichtsbild& bild, const Form& form, const Berichtswahl& wahl, Bildladung& ladung) {
  if (form.weg == Weg::Eigene) {
    const QByteArray bytes = dateibytes(bild);
    const auto kopf = jpegbytes::lies_Kopf(bytes);
    if (!kopf || kopf->groesse != form.groesse || kopf->farben != form.farben) return std::nullopt;
    return wahl.mit_Ort ? bytes : jpegbytes::ohne_Beiwerk(bytes);
  }
  const QImage bild_pixel = pixel(bild, form, ladung);
  if (bild_pixel.isNull()) return std::nullopt;
  return kodiere(bild_pixel);
}

QImage pixel(const Berichtsbild& bild, const Form& form, Bildladung& ladung) {
  const std::shared_ptr<const Bild> geladen = ladung.lade(bild);
  QImage pixel;
  if (geladen) gelingt([&] { pixel = geladen->bild(form.groesse); });
  return pixel;
}

QImage ersatz(const Form& form) {
  QImage flaeche(form.groesse, form.farben == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
  flaeche.fill(Qt::lightGray);
  return flaeche;
}

QByteArray kodiere(const QImage& pixel) {
  QBuffer puffer;
  QImageWriter schreiber(&puffer, "jpeg");
  schreiber.setQuality(Guete);
  // Into memory nothing else can go wrong.
  if (!schreiber.write(pixel)) throw std::bad_alloc();
  return puffer.data();
}

}  // namespace bildkodierung
