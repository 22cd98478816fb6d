// bench_streifen [ORDNER [RUNDEN]]: what loading costs a strip of thumbnails, of which only a few are visible.
//
// ORDNER holds the photos of grosse_fotos.sh; a record of a hundred of 12 megapixels is made of them in
// ORDNER/streifen. First showing: all headers, and the pixels of the visible ones, with an empty cache but the files in
// the system's memory; beside it TurboJPEG's plain decode at 1/8 of the visible ones alone, from memory. Scrolling:
// every row is loaded twice, nothing has changed.
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/Messung.h"
#include "bench/Turbojpeg.h"
#include "platform/files/Pfadkarte.h"
#include "platform/gdiplus/Bildspeicher.h"
#include "platform/gdiplus/NurKopf.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

constexpr int kAnzahl = 100;
constexpr int kSichtbare = 5;
constexpr QSize kFeld(190, 126);
const QString kOrdner = u"P:\\Artikel\\Allg"_s;

// The copies are minutes old in real life; a cache that waits for a file to rest must not wait here.
std::int64_t in_einer_Stunde() {
  const auto spaeter = std::chrono::system_clock::now() + std::chrono::hours(1);
  return std::chrono::duration_cast<std::chrono::nanoseconds>(spaeter.time_since_epoch()).count();
}

QString name(int nummer) {
  return u"bild%1.jpg"_s.arg(nummer);
}

QByteArray lies(const QString& pfad) {
  QFile datei(pfad);
  verlange(datei.open(QIODevice::ReadOnly), "photo missing: run grosse_fotos.sh first");
  return datei.readAll();
}

// A file for each row. What lies behind the end of a picture does not count, but makes each content its own.
void mache_Vorgang(const QString& fotos, const QString& ordner) {
  const QList<QByteArray> vorlagen{lies(fotos + u"/foto1_4032x3024_420.jpg"_s),
                                   lies(fotos + u"/foto1_4031x3021_420.jpg"_s)};
  verlange(QDir().mkpath(ordner), "folder for the copies");
  for (int i = 0; i < kAnzahl; ++i) {
    const QByteArray inhalt = vorlagen[i % vorlagen.size()] + QByteArray::number(i);
    QFile datei(ordner + u'/' + name(i));
    if (datei.size() == inhalt.size()) continue;
    verlange(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size(), "copy of a photo");
  }
}

std::vector<std::shared_ptr<const Bild>> lade_alle(clsBildZuordnungen& store, const QString& ordner = kOrdner) {
  const bildlader::NurKopf nur_Kopf;
  std::vector<std::shared_ptr<const Bild>> bilder;
  for (int i = 0; i < kAnzahl; ++i) {
    verlange(store.FKT_LoadPicture(name(i), ordner, false) && store.AktLoadPicture_Picture, "picture does not load");
    bilder.push_back(store.AktLoadPicture_Picture);
  }
  return bilder;
}

void zeige_zum_ersten_Mal(clsBildZuordnungen& store) {
  Bildspeicher::aktuell().leere();
  const auto bilder = lade_alle(store);
  for (int i = 0; i < kSichtbare; ++i) {
    const Bild& bild = *bilder[static_cast<std::size_t>(i)];
    const QSize ziel = bild.groesse().scaled(kFeld, Qt::KeepAspectRatio);
    verlange(bild.bild(ziel).size() == ziel, "picture of another size");
  }
}

// Peak of the process's memory in MB.
double groesster_Speicher() {
  QFile datei(u"/proc/self/status"_s);
  verlange(datei.open(QIODevice::ReadOnly), "/proc/self/status");
  for (const QByteArray& zeile : datei.readAll().split('\n'))
    if (zeile.startsWith("VmHWM:")) return zeile.mid(6).trimmed().split(' ').first().toDouble() / 1024;
  return 0;
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
  std::printf("%-58s %10.2f us\n", "FKT_LoadPicture, header not yet known", messung::median(koepfe) * 1e6 / kAnzahl);
  std::printf("%-58s %10.2f us\n", "FKT_LoadPicture, file unchanged", messung::median(wieder) * 1e6 / (2 * kAnzahl));
  std::vector<double> andere;
  for (int i = 0; i < runden; ++i)
    andere.push_back(messung::sekunden([&] { lade_alle(store, u"P:\\ARTIKEL\\ALLG"_s); }));
  std::printf("%-58s %10.2f us\n", "the same, folders in another case", messung::median(andere) * 1e6 / kAnzahl);
  return gut;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 15;
  Bildspeicher::aktuell().uhr(in_einer_Stunde);
  mache_Vorgang(ordner, ordner + u"/streifen/Artikel/Allg"_s);
  Pfadkarte::aktuell().setze(u"P:"_s, ordner + u"/streifen"_s);
  clsBildZuordnungen store;
  zeige_zum_ersten_Mal(store);
  std::printf("%-58s %10.0f MB\n", "peak of memory after the first showing", groesster_Speicher());
  QList<QByteArray> sichtbare;
  for (int i = 0; i < kSichtbare; ++i) sichtbare.append(lies(ordner + u"/streifen/Artikel/Allg/"_s + name(i)));
  return miss(store, sichtbare, runden) ? 0 : 1;
}
