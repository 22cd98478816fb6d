// bench_drehen ORDNER: turning photos of 12 megapixels by 90 degrees, beside jpegtran as a process; and what the turned
// picture is worth where the size forbids to move its blocks.
//
// ORDNER holds what grosse_fotos.sh makes. All ways go from file to file, and the result is on the disk before the
// clock stops: ours flushes by itself, jpegtran's file is flushed by the benchmark. kvobild runs as a process of its
// own like jpegtran; the call that the dialogs make runs in this process.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTransform>
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench/Messung.h"
#include "bench/Turbojpeg.h"
#include "imaging/Bilddrehung.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

constexpr int Laeufe = 21;

void starte(const QList<QByteArray>& argumente) {
  std::vector<char*> worte;
  for (const QByteArray& a : argumente) worte.push_back(const_cast<char*>(a.constData()));
  worte.push_back(nullptr);
  pid_t kind = 0;
  int ende = 0;
  verlange(::posix_spawnp(&kind, worte[0], nullptr, nullptr, worte.data(), environ) == 0, "program does not start");
  verlange(::waitpid(kind, &ende, 0) == kind && ende == 0, "program failed");
}

void flushe(const QString& pfad) {
  const int datei = ::open(QFile::encodeName(pfad).constData(), O_RDONLY | O_CLOEXEC);
  verlange(datei >= 0 && ::fdatasync(datei) == 0 && ::close(datei) == 0, "flush");
}

void jpegtran(const QString& quelle, const QString& ziel) {
  starte({"jpegtran", "-copy", "all", "-rotate", "90", "-outfile", QFile::encodeName(ziel), QFile::encodeName(quelle)});
  flushe(ziel);
}

void kvobild(const QString& quelle, const QString& ziel) {
  starte({KVOBILD_PROGRAMM, "drehen", "--um", "90", QFile::encodeName(quelle), QFile::encodeName(ziel)});
}

void drehe(const QString& quelle, const QString& ziel, int transform = 13) {
  verlange(bilddrehung::drehe(quelle, ziel, transform) == 0, "turn");
}

QByteArray lies(const QString& pfad) {
  QFile datei(pfad);
  verlange(datei.open(QIODevice::ReadOnly), "file missing: run grosse_fotos.sh first");
  return datei.readAll();
}

void miss_Zeit(const QString& ordner, const QString& foto) {
  const QString quelle = ordner + u'/' + foto;
  const QString unser = ordner + u"/gedreht.jpg"_s;
  const QString fremd = ordner + u"/jpegtran.jpg"_s;
  const QByteArray name = foto.toLocal8Bit();
  messung::vergleiche((name + ", kvobild : jpegtran").constData(), Laeufe, 1.05, [&] { kvobild(quelle, unser); },
      [&] { jpegtran(quelle, fremd); });
  messung::vergleiche((name + ", call : jpegtran").constData(), Laeufe, 1.05, [&] { drehe(quelle, unser); },
      [&] { jpegtran(quelle, fremd); });
  std::printf("  bytes: source %lld, ours %lld, jpegtran %lld, equal: %s\n",
      static_cast<long long>(QFile(quelle).size()), static_cast<long long>(QFile(unser).size()),
      static_cast<long long>(QFile(fremd).size()), lies(unser) == lies(fremd) ? "yes" : "no");
}

QImage gedreht(const QImage& bild, int transform) {
  if (transform == 14) return bild.mirrored(true, true);
  return bild.transformed(QTransform().rotate(transform == 13 ? 90 : 270));
}

double psnr(const QImage& a, const QImage& b) {
  verlange(a.size() == b.size() && !a.isNull(), "sides of the turned picture");
  double summe = 0;
  for (int y = 0; y < a.height(); ++y) {
    const uchar* const x1 = a.constScanLine(y);
    const uchar* const x2 = b.constScanLine(y);
    for (int i = 0; i < 3 * a.width(); ++i) summe += (x1[i] - x2[i]) * (x1[i] - x2[i]);
  }
  return summe == 0 ? 99 : 10 * std::log10(255.0 * 255 * 3 * a.width() * a.height() / summe);
}

QImage dekodiert(const QString& pfad) {
  return QImage::fromData(lies(pfad), "jpg").convertToFormat(QImage::Format_RGB888);
}

void miss_Guete(const QString& ordner, const QString& quelle, double ziel) {
  const QString ergebnis = ordner + u"/gedreht.jpg"_s;
  const QImage vorher = dekodiert(quelle);
  for (const int transform : {13, 14, 15}) {
    const double zeit = messung::sekunden([&] { drehe(quelle, ergebnis, transform); });
    const double guete = psnr(dekodiert(ergebnis), gedreht(vorher, transform));
    const double groesse = static_cast<double>(QFile(ergebnis).size()) / static_cast<double>(QFile(quelle).size());
    const bool gut = guete >= ziel && groesse <= 1.1;
    messung::erwarte(gut);
    std::printf("  %4d x %4d, %3d degrees: %6.2f dB (aim >= %.1f), %.3f x the size (aim <= 1.1), %.0f ms: %s\n",
        vorher.width(), vorher.height(), (transform - 12) * 90, guete, ziel, groesse, zeit * 1e3, gut ? "yes" : "NO");
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication app(argc, argv);
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  miss_Zeit(ordner, u"foto1_4032x3024_420.jpg"_s);
  miss_Zeit(ordner, u"foto1_4032x3024_444.jpg"_s);
  const QString halb = ordner + u"/foto1_4000x3000_420.jpg"_s;
  starte({"jpegtran", "-copy", "all", "-crop", "4000x3000+0+0", "-outfile", QFile::encodeName(halb),
      QFile::encodeName(ordner + u"/foto1_4032x3024_420.jpg"_s)});
  std::printf("coded again where blocks can't be moved:\n");
  miss_Guete(ordner, halb, 48);
  miss_Guete(ordner, ordner + u"/foto1_4031x3021_420.jpg"_s, 38.5);
  for (const QString& name : {u"/gedreht.jpg"_s, u"/jpegtran.jpg"_s}) QFile::remove(ordner + name);
  return messung::urteil();
}
