#include <fcntl.h>
#include <libexif/exif-data.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

#include "bench/Messung.h"
#include "exif/clsExifInfo.h"
#include "tests/exif/ExifBauer.h"

// Measures clsExifInfo::Load beside libexif on photos of several MB with Exif in front, and beside plain reading on the
// same photos without it. Warm page cache, both sides in turn, medians; ends with 1 when a bound is not kept.

using namespace Qt::Literals::StringLiterals;

using messung::median;

namespace {

constexpr int Runden = 401;
constexpr double Grenze_libexif = 1.0;
constexpr double Grenze_lesen = 1.3;

/// A photo-like picture: soft shapes under the noise of a sensor.
QByteArray foto(QSize groesse, double rauschen, unsigned saat) {
  std::mt19937 zufall(saat);
  std::normal_distribution<double> korn(0.0, rauschen);
  QImage bild(groesse, QImage::Format_RGB888);
  for (int y = 0; y < groesse.height(); ++y) {
    uchar* zeile = bild.scanLine(y);
    for (int x = 0; x < 3 * groesse.width(); ++x)
      zeile[x] = static_cast<uchar>(
          std::clamp(128 + 90 * std::sin(x * 0.0011) * std::cos(y * 0.0017) + korn(zufall), 0.0, 255.0));
  }
  QTemporaryDir ordner;
  const QString pfad = ordner.filePath(u"foto.jpg"_s);
  if (!bild.save(pfad, "JPEG", 92)) qFatal("no JPEG encoder");
  QFile datei(pfad);
  if (!datei.open(QIODevice::ReadOnly)) qFatal("cannot read the photo");
  return datei.readAll();
}

QByteArray mit_Exif(const QByteArray& foto, Folge folge) {
  const QByteArray kamera = kamerabild(folge, 20 * 1024);
  return kamera.chopped(2) + foto.mid(2);
}

QString schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile datei(pfad);
  if (!datei.open(QIODevice::WriteOnly) || datei.write(bytes) != bytes.size()) qFatal("cannot write the picture");
  return pfad;
}

double mikrosekunden(const std::function<void()>& arbeit) {
  const auto von = std::chrono::steady_clock::now();
  arbeit();
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - von).count();
}

/// Runs both in turn, prints the medians and tells whether the ratio keeps the bound.
bool vergleiche(
    const char* was, double grenze, const std::function<void()>& eigen, const std::function<void()>& fremd) {
  std::vector<double> eigene;
  std::vector<double> fremde;
  eigen();
  fremd();
  for (int i = 0; i < Runden; ++i) {
    eigene.push_back(mikrosekunden(eigen));
    fremde.push_back(mikrosekunden(fremd));
  }
  const double verhaeltnis = median(eigene) / median(fremde);
  std::printf("%-48s Load %8.1f us   peer %8.1f us   ratio %.3f (bound %.2f)\n", was, median(eigene), median(fremde),
      verhaeltnis, grenze);
  return verhaeltnis <= grenze;
}

void lade(const QString& pfad, bool erwartet) {
  clsExifInfo info;
  if (info.Load(pfad) != erwartet) qFatal("Load gave the wrong result");
}

void lade_libexif(const QByteArray& pfad) {
  ExifData* daten = exif_data_new_from_file(pfad.constData());
  if (daten == nullptr || daten->ifd[EXIF_IFD_EXIF]->count == 0) qFatal("libexif found nothing");
  exif_data_unref(daten);
}

void lies_ganz(const QByteArray& pfad, std::vector<char>& puffer) {
  const int deskriptor = ::open(pfad.constData(), O_RDONLY | O_CLOEXEC);
  struct stat info {};
  if (deskriptor < 0 || ::fstat(deskriptor, &info) != 0) qFatal("cannot open the picture");
  puffer.resize(static_cast<std::size_t>(info.st_size));
  std::size_t gelesen = 0;
  while (gelesen < puffer.size()) {
    const ssize_t n = ::read(deskriptor, puffer.data() + gelesen, puffer.size() - gelesen);
    if (n <= 0) qFatal("cannot read the picture");
    gelesen += static_cast<std::size_t>(n);
  }
  ::close(deskriptor);
}

bool vergleiche_Foto(const QString& ordner, const QByteArray& bytes, const char* name) {
  bool gut = true;
  std::printf("%s: %.1f MB\n", name, static_cast<double>(bytes.size()) / 1e6);
  for (const Folge folge : {Folge::Intel, Folge::Motorola}) {
    const QString pfad = schreibe(ordner + u"/mit.jpg"_s, mit_Exif(bytes, folge));
    const QByteArray ort = QFile::encodeName(pfad);
    const QByteArray was = name + (folge == Folge::Intel ? ", little-endian, libexif"_ba : ", big-endian, libexif"_ba);
    gut &= vergleiche(
        was.constData(), Grenze_libexif, [&] { lade(pfad, true); }, [&] { lade_libexif(ort); });
  }
  const QString pfad = schreibe(ordner + u"/ohne.jpg"_s, bytes);
  const QByteArray ort = QFile::encodeName(pfad);
  std::vector<char> bereit;
  const QByteArray was = name + ", no marker, read into a ready buffer"_ba;
  gut &= vergleiche(
      was.constData(), Grenze_lesen, [&] { lade(pfad, false); }, [&] { lies_ganz(ort, bereit); });
  const QByteArray neu = name + ", no marker, read into a new buffer"_ba;
  gut &= vergleiche(
      neu.constData(), Grenze_lesen, [&] { lade(pfad, false); },
      [&] {
    std::vector<char> puffer;
    lies_ganz(ort, puffer);
      });
  return gut;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  const QTemporaryDir ordner;
  bool gut = vergleiche_Foto(ordner.path(), foto({3000, 2000}, 12, 1), "6 MP");
  gut &= vergleiche_Foto(ordner.path(), foto({4032, 3024}, 10, 2), "12 MP");
  gut &= vergleiche_Foto(ordner.path(), foto({6000, 4000}, 8, 3), "24 MP");
  return gut ? 0 : 1;
}
