// bench_bilder [ORDNER [RUNDEN]]: small pictures of large photos, beside TurboJPEG's plain decode at 1/8.
//
// ORDNER holds what grosse_fotos.sh makes. Each round runs all candidates once, one after the other, so that a busy
// moment of the machine hits them alike. The figures are medians over the rounds: milliseconds, and the ratio to
// TurboJPEG's decode of the same file in the same round, whose bytes are in memory already. The last column is the
// ratio of the time spent on a processor, which other programs on the machine disturb less.
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QLibraryInfo>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "bench/Messung.h"
#include "bench/Schalter.h"
#include "bench/Turbojpeg.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/gdiplus.h"

using namespace Qt::Literals::StringLiterals;

using messung::median;
using messung::turbojpeg_Achtel;
using messung::verlange;

namespace {

constexpr QSize Klein(100, 75);

struct Teilnehmer {
  const char* name;
  std::function<void()> lauf;
  double ziel = 0;  ///< highest ratio wanted; 0: for information
  std::vector<double> zeiten{};
  std::vector<double> rechenzeiten{};
};

void eigenes(const QString& pfad) {
  gdiplus::Bitmap bild;
  verlange(gdiplus::GdipCreateBitmapFromFile(pfad, bild) == gdiplus::Ok, "picture does not open");
  verlange(bild->bild(Klein).size() == Klein, "picture of another size");
}

void qt_ganz(const QString& pfad) {
  const QImage bild = QImageReader(pfad).read();
  verlange(!bild.scaled(Klein, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).isNull(), "Qt decode");
}

void qt_skaliert(const QString& pfad) {
  QImageReader leser(pfad);
  leser.setScaledSize(Klein);
  verlange(!leser.read().isNull(), "Qt scaled decode");
}

double rechenzeit() {
  timespec zeit{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &zeit);
  return static_cast<double>(zeit.tv_sec) * 1e3 + static_cast<double>(zeit.tv_nsec) / 1e6;
}

void miss(Teilnehmer& t, bool zaehlt) {
  const auto anfang = std::chrono::steady_clock::now();
  const double gerechnet = rechenzeit();
  t.lauf();
  if (!zaehlt) return;
  t.rechenzeiten.push_back(rechenzeit() - gerechnet);
  t.zeiten.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - anfang).count());
}

double verhaeltnis_je_Runde(std::vector<double> zeiten, const std::vector<double>& mass) {
  for (std::size_t i = 0; i < zeiten.size(); ++i) zeiten[i] /= mass[i];
  return median(std::move(zeiten));
}

bool vergleiche(const QString& pfad, int runden) {
  QFile datei(pfad);
  verlange(datei.open(QIODevice::ReadOnly), "file missing: run grosse_fotos.sh first");
  const QByteArray bytes = datei.readAll();
  const bool progressiv = pfad.contains(u"prog"_s);
  std::vector<Teilnehmer> alle{
      {"TurboJPEG 1/8 from memory", [&] { turbojpeg_Achtel(bytes); }},
      {"100 pixels, first time",
          [&] {
    Bildspeicher::aktuell().leere();
    eigenes(pfad);
       },
          progressiv ? 0.40 : 1.10},
      {"100 pixels, file unchanged", [&] { eigenes(pfad); }, 0.05},
      {"Qt, scaled decode", [&] { qt_skaliert(pfad); }},
      {"Qt, full decode and scaling", [&] { qt_ganz(pfad); }},
      };
  for (int i = 0; i <= runden; ++i)
    for (Teilnehmer& t : alle) miss(t, i > 0);  // the first round warms up
  std::printf("%s\n", qPrintable(pfad));
  const Teilnehmer& mass = alle.front();
  bool gut = true;
  for (const Teilnehmer& t : alle) {
    const double verhaeltnis = verhaeltnis_je_Runde(t.zeiten, mass.zeiten);
    std::printf("  %-28s %9.3f ms %8.4f x %8.4f x cpu", t.name, median(t.zeiten), verhaeltnis,
        verhaeltnis_je_Runde(t.rechenzeiten, mass.rechenzeiten));
    if (t.ziel > 0) std::printf("   at most %.2f: %s", t.ziel, verhaeltnis <= t.ziel ? "yes" : "NO");
    std::printf("\n");
    gut = gut && (t.ziel <= 0 || verhaeltnis <= t.ziel);
  }
  return gut;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  schalter::stelle_Ablage(false);  // what counts is the decoding
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 15;
  std::int32_t marke = 0;
  gdiplus::GdiplusStartup(marke, 1);
  bool gut = true;
  for (const QString& name : {u"foto1_4032x3024_420.jpg"_s, u"foto1_4031x3021_420.jpg"_s, u"foto1_4032x3024_444.jpg"_s,
           u"foto1_4032x3024_420_prog.jpg"_s, u"foto1_6000x4000_420_prog.jpg"_s})
    gut = vergleiche(ordner + u'/' + name, runden) && gut;
  gdiplus::GdiplusShutdown(marke);
  return gut ? 0 : 1;
}
