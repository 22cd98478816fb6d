#include "host/bericht/pdf/Pdfgeruest.h"

#include <QBuffer>
#include <QImage>
#include <QMap>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include "host/bericht/Seitenmaler.h"

namespace pdfgeruest {
namespace {

constexpr int Markenbreite = 1000;
constexpr int Twips_je_Zoll = 1440;

/// One and the same image for one number: the writer stores it once.
class Marken {
 public:
  const QImage& bild(std::size_t nummer) {
    const auto bekannt = bilder_.constFind(nummer);
    if (bekannt != bilder_.constEnd()) return *bekannt;
    QImage bild(marke(nummer), QImage::Format_RGB32);
    bild.fill(Qt::red);
    return *bilder_.insert(nummer, bild);
  }

 private:
  QMap<std::size_t, QImage> bilder_;
};

void richte_ein(QPdfWriter& schreiber, const seitenplan::Seite& seite) {
  schreiber.setPageSize(QPageSize(QPageSize::A4));
  schreiber.setPageOrientation(seite.quer ? QPageLayout::Landscape : QPageLayout::Portrait);
  schreiber.setPageMargins(QMarginsF());
}

}  // namespace

QSize marke(std::size_t nummer) {
  return {static_cast<int>(nummer % Markenbreite) + 1, static_cast<int>(nummer / Markenbreite) + 2};
}

std::size_t nummer(QSize marke) {
  return static_cast<std::size_t>((marke.height() - 2) * Markenbreite + marke.width() - 1);
}

QByteArray schreibe(const Seitenplan& plan, const Bildnummer& bildnummer) {
  QBuffer puffer;
  puffer.open(QIODevice::WriteOnly);
  QPdfWriter schreiber(&puffer);
  schreiber.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
  schreiber.setResolution(Twips_je_Zoll);
  richte_ein(schreiber, plan.front());
  Marken marken;
  QPainter maler(&schreiber);
  for (std::size_t i = 0; i < plan.size(); ++i) {
    if (i > 0) {
      richte_ein(schreiber, plan[i]);
      schreiber.newPage();
    }
    seitenmaler::male(
        maler, plan[i],
        [&](QPainter& m, const QRectF& ort, std::size_t bild) { m.drawImage(ort, marken.bild(bildnummer(bild))); },
        [&](QPainter& m, const QRectF& ort) { m.drawImage(ort, marken.bild(0)); });
  }
  maler.end();
  return puffer.data();
}

}  // namespace pdfgeruest
