// bench_dialog [ORDNER [RUNDEN]]: the assignment dialog over a record of a hundred photos of 12 megapixels.
//
// ORDNER holds the photos of grosse_fotos.sh; the record's copies are made in ORDNER/streifen. Showing: from the call
// until every visible thumbnail and the large picture have their pixels, with an empty cache but the files in the
// system's memory; beside it TurboJPEG's plain decode at 1/8 of the visible ones alone, from memory. After a restart:
// the same in a new process, which has the thumbnails that the first one left. Scrolling: a click on the right button
// until all is painted, nothing has changed.
#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Neustart.h"
#include "bench/Schalter.h"
#include "bench/Turbojpeg.h"
#include "bench/Zuordnungsdialog.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/host/KVOCore.h"

using namespace Qt::Literals::StringLiterals;
using zuordnungsdialog::male_fertig;
using zuordnungsdialog::zeige;

namespace {

using Store = std::shared_ptr<clsBildZuordnungen>;
using Arbeit = std::function<void()>;

void zeige_nur(const Store& store) {
  zeige(store, [](frm_BildZuordnung&) {});
}

void miss_erstes_Zeigen(const Store& store, int runden, const Arbeit& mass) {
  std::vector<double> erste;
  std::vector<double> masse;
  for (int i = 0; i <= runden; ++i) {
    Bildspeicher::aktuell().leere();
    schalter::leere_Miniaturen();
    const double zeit = messung::sekunden([&] { zeige_nur(store); });
    schalter::warte_auf_Miniaturen();
    const double plan = messung::sekunden(mass);
    if (i == 0) continue;
    erste.push_back(zeit);
    masse.push_back(plan);
  }
  messung::zeile("100 photos: call to all visible ones painted", erste, masse, 0.75);
}

/// The thumbnails of the first showing are there.
void miss_nach_Neustart(const QString& ordner, int runden, const Arbeit& mass) {
  std::vector<double> neue;
  std::vector<double> masse;
  for (int i = 0; i < runden; ++i) {
    neue.push_back(neustart::starte({ordner}).at(0));
    masse.push_back(messung::sekunden(mass));
  }
  messung::zeile("the same after a restart of the program", neue, masse, 0.3);
}

void miss_Schritte(const Store& store, int runden, const Arbeit& mass) {
  std::vector<double> schritte;
  std::vector<double> masse;
  zeige(store, [&](frm_BildZuordnung& form) {
    for (int i = 0; i <= runden; ++i) {
      // There and back: what comes into view on the way there has its pixels on the next.
      for (SSCommand* knopf : {&form.SSC_Scroll_Right, &form.SSC_Scroll_Left}) {
        const double zeit = messung::sekunden([&] {
          knopf->click();
          male_fertig(form);
        });
        if (i > 0) schritte.push_back(zeit);
      }
      masse.push_back(messung::sekunden(mass));
    }
  });
  messung::zeile("scroll step, pictures unchanged", schritte, masse, 0.03);
}

void miss(const Store& store, const QString& ordner, int runden) {
  const int sichtbare = zeige(store, [](frm_BildZuordnung&) {});
  std::printf("%-58s %10d\n", "visible thumbnails", sichtbare);
  std::printf("%-58s %10.0f MB\n", "peak of memory after the first showing", messung::groesster_Speicher());
  QList<QByteArray> bytes;
  for (int i = 0; i < sichtbare; ++i) bytes.append(fotovorgang::lies(fotovorgang::datei(ordner, i)));
  const auto mass = [&] {
    for (const QByteArray& b : bytes) messung::turbojpeg_Achtel(b);
  };
  miss_erstes_Zeigen(store, runden, mass);
  messung::vergleiche(
      "the same again, pictures unchanged", runden, messung::Ohne_Ziel, [&] { zeige_nur(store); }, mass);
  miss_nach_Neustart(ordner, runden, mass);
  miss_Schritte(store, runden, mass);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  fensterdienste::richte_ein();
  KVOCore::setze(nullptr);  // the placement of the user's own window stays out of it
  schalter::richte_ein();
  const bool neu_gestartet = argc == 3 && QByteArray(argv[1]) == neustart::Zeichen;
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[neu_gestartet ? 2 : 1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 15;
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  fotovorgang::mache(ordner);
  const QTemporaryDir datenordner;
  const Store store = zuordnungsdialog::lies_Vorgang(datenordner);
  if (neu_gestartet)
    std::printf("%.9f\n", messung::sekunden([&] { zeige_nur(store); }));
  else
    miss(store, ordner, runden);
  return messung::urteil();
}
