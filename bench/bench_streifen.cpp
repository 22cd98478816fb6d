// bench_streifen [ORDNER [RUNDEN]]: what loading costs a strip of thumbnails, of which only a few are visible.
//
// ORDNER holds the photos of grosse_fotos.sh; a record of a hundred of 12 megapixels is made of them in
// ORDNER/streifen. First showing: all headers, and the pixels of the visible ones, with an empty cache but the files in
// the system's memory; beside it TurboJPEG's plain decode at 1/8 of the visible ones alone, from memory. Scrolling:
// every row is loaded twice, nothing has changed.
#include <QGuiApplication>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Schalter.h"
#include "bench/Turbojpeg.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

constexpr int Anzahl = fotovorgang::Anzahl;
constexpr int Sichtbare = 5;
constexpr QSize Feldgroesse(190, 126);
const QString Bildordner = u"P:\\Artikel\\Allg"_s;

std::vector<std::shared_ptr<const Bild>> lade_alle(clsBildZuordnungen& store, const QString& ordner = Bildordner) {
  const bildlader::NurKopf nur_Kopf;
  std::vector<std::shared_ptr<const Bild>> bilder;
  for (int i = 0; i < Anzahl; ++i) {
    verlange(store.FKT_LoadPicture(fotovorgang::name(i), ordner, false) && store.AktLoadPicture_Picture,
        "picture does not load");
    bilder.push_back(store.AktLoadPicture_Picture);
  }
  return bilder;
}

void zeige_zum_ersten_Mal(clsBildZuordnungen& store) {
  Bildspeicher::aktuell().leere();
  const auto bilder = lade_alle(store);
  for (int i = 0; i < Sichtbare; ++i) {
    const Bild& bild = *bilder[static_cast<std::size_t>(i)];
    const QSize ziel = bild.groesse().scaled(Feldgroesse, Qt::KeepAspectRatio);
    verlange(bild.bild(ziel).size() == ziel, "picture of another size");
  }
}

bool miss(clsBildZuordnungen& store, const QList<QByteArray>& sichtbare, int runden) {
  const auto mass = [&] {
    for (const QByteArray& bytes : sichtbare) messung::turbojpeg_Achtel(bytes);
  };
  const auto rolle = [&] {
    lade_alle(store);
    lade_alle(store);
  };
  bool gut = messung::vergleiche(
                 "100 rows, 5 painted: first time", runden, 1.15, [&] { zeige_zum_ersten_Mal(store); }, mass) <= 1.15;
  gut = messung::vergleiche("200 loads, files unchanged", runden, 0.05, rolle, mass) <= 0.05 && gut;
  std::vector<double> koepfe;
  std::vector<double> wieder;
  for (int i = 0; i < runden; ++i) {
    Bildspeicher::aktuell().leere();
    koepfe.push_back(messung::sekunden([&] { lade_alle(store); }));
    wieder.push_back(messung::sekunden(rolle));
  }
  std::printf("%-58s %10.2f us\n", "FKT_LoadPicture, header not yet known", messung::median(koepfe) * 1e6 / Anzahl);
  std::printf("%-58s %10.2f us\n", "FKT_LoadPicture, file unchanged", messung::median(wieder) * 1e6 / (2 * Anzahl));
  std::vector<double> andere;
  for (int i = 0; i < runden; ++i)
    andere.push_back(messung::sekunden([&] { lade_alle(store, u"P:\\ARTIKEL\\ALLG"_s); }));
  std::printf("%-58s %10.2f us\n", "the same, folders in another case", messung::median(andere) * 1e6 / Anzahl);
  return gut;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  schalter::stelle_Ablage(false);  // what counts is the decoding
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 15;
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  fotovorgang::mache(ordner);
  clsBildZuordnungen store;
  zeige_zum_ersten_Mal(store);
  std::printf("%-58s %10.0f MB\n", "peak of memory after the first showing", messung::groesster_Speicher());
  QList<QByteArray> sichtbare;
  for (int i = 0; i < Sichtbare; ++i) sichtbare.append(fotovorgang::lies(fotovorgang::datei(ordner, i)));
  return miss(store, sichtbare, runden) ? 0 : 1;
}
