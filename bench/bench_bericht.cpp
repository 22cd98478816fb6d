// bench_bericht [ORDNER [RUNDEN]]: what the picture report costs.
//
// ORDNER holds the photos of grosse_fotos.sh; a record of a hundred of 12 megapixels is made of them. The report is
// held against the same pictures decoded by TurboJPEG at the nearest scale, resampled by Qt and coded by TurboJPEG,
// one after the other; against convert (pictures alone: Debian does not let it write PDF); the originals against
// img2pdf; the first page of the preview and the memory against fixed bounds. The memory is that of a process of its
// own (`bench_bericht --schreibe ORDNER ANZAHL DICHTE`).
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Turbojpeg.h"
#include "host/bericht/Berichtsdatei.h"
#include "host/bericht/Berichtsinhalt.h"
#include "host/bericht/Bildladung.h"
#include "host/bericht/Seitenmaler.h"
#include "host/bericht/Seitenplaner.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

constexpr int Guete = 90;
constexpr int Originale = 20;
constexpr int Fuer_convert = 20;
constexpr int Vorschaubilder = 300;
constexpr double Vorschau_Sekunden = 0.5;
constexpr double Groesster_Speicher_MB = 150;

/// So many pictures of the record, from its beginning again where there are not as many.
void fuelle(clsBildZuordnungen& store, int anzahl) {
  store.FKT_Neu();
  for (int i = 0; i < anzahl; ++i) {
    store.FKT_NeuesBild(
        u"AB"_s, QString::number(i), {}, {}, u"bild%1"_s.arg(i % fotovorgang::Anzahl), u"jpg"_s, u"BEL"_s, {});
    store.Bild_Pfad(fotovorgang::Unterordner);
    store.Bild_Beschreibung(u"Kessel Nummer %1, vor dem Ausbau"_s.arg(i));
  }
}

Bericht lies(int anzahl, const Berichtswahl& wahl) {
  clsBildZuordnungen store;
  fuelle(store, anzahl);
  return berichtsinhalt::lies(store, u"P:"_s, u"Beleg AB 1"_s, wahl);
}

void schreibe(const QString& ziel, int anzahl, Dichte dichte) {
  Berichtswahl wahl;
  wahl.dichte = dichte;
  verlange(berichtsdatei::schreibe(ziel, lies(anzahl, wahl), wahl).bilder == anzahl, "report without all pictures");
}

/// Decoded at the nearest scale that is large enough, resampled, coded.
QByteArray plain_Turbojpeg(const QByteArray& bytes, QSize ziel) {
  const tjhandle h = tjInitDecompress();
  const auto* const anfang = reinterpret_cast<const unsigned char*>(bytes.constData());
  const auto laenge = static_cast<unsigned long>(bytes.size());
  int breite = 0;
  int hoehe = 0;
  int abtastung = 0;
  int farben = 0;
  verlange(tjDecompressHeader3(h, anfang, laenge, &breite, &hoehe, &abtastung, &farben) == 0, "TurboJPEG header");
  int achtel = 1;
  while (achtel < 8 && TJSCALED(breite, (tjscalingfactor{achtel, 8})) < ziel.width()) ++achtel;
  const tjscalingfactor mass{achtel, 8};
  QImage bild(TJSCALED(breite, mass), TJSCALED(hoehe, mass), QImage::Format_RGB32);
  verlange(tjDecompress2(h, anfang, laenge, bild.bits(), bild.width(), static_cast<int>(bild.bytesPerLine()),
               bild.height(), TJPF_BGRX, 0) == 0,
      "TurboJPEG decode");
  tjDestroy(h);
  const QImage klein = bild.scaled(ziel, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const tjhandle k = tjInitCompress();
  unsigned char* strom = nullptr;
  unsigned long groesse = 0;
  verlange(tjCompress2(k, klein.constBits(), klein.width(), static_cast<int>(klein.bytesPerLine()), klein.height(),
               TJPF_BGRX, &strom, &groesse, TJSAMP_420, Guete, 0) == 0,
      "TurboJPEG encode");
  const QByteArray ergebnis(reinterpret_cast<const char*>(strom), static_cast<qsizetype>(groesse));
  tjFree(strom);
  tjDestroy(k);
  return ergebnis;
}

/// The sizes that the report's pictures have in their file.
std::vector<QSize> groessen(const Bericht& bericht) {
  std::vector<QSize> alle(bericht.bilder.size());
  for (const seitenplan::Seite& seite : seitenplan::plane(bericht, 2))
    for (const seitenplan::Bildkasten& kasten : seite.bilder)
      alle[kasten.bild] = seitenmaler::pixel(kasten.ort.size(), 300);
  return alle;
}

void laufe(const QString& programm, const QStringList& angaben) {
  verlange(QProcess::execute(programm, angaben) == 0, qPrintable(programm + u" failed or is missing"_s));
}

QStringList dateien(const QString& fotos, int anzahl) {
  QStringList alle;
  for (int i = 0; i < anzahl; ++i) alle.append(fotovorgang::datei(fotos, i));
  return alle;
}

void miss_Bericht(const QString& fotos, const QString& ziel, int runden) {
  const std::vector<QSize> ziele = groessen(lies(fotovorgang::Anzahl, {}));
  messung::vergleiche(
      "100 photos of 12 MP, 300 dpi; plain TurboJPEG", runden, 1.2,
      [&] { schreibe(ziel, fotovorgang::Anzahl, Dichte::Druck); },
      [&] {
    for (int i = 0; i < fotovorgang::Anzahl; ++i)
      verlange(!plain_Turbojpeg(fotovorgang::lies(fotovorgang::datei(fotos, i)), ziele[static_cast<std::size_t>(i)])
                    .isEmpty(),
          "picture without bytes");
      });
  const QString groesse = u"%1x%2"_s.arg(ziele.front().width()).arg(ziele.front().height());
  messung::vergleiche(
      "20 of them; convert", 1, 1, [&] { schreibe(ziel, Fuer_convert, Dichte::Druck); },
      [&] {
    for (const QString& datei : dateien(fotos, Fuer_convert))
      laufe(u"convert"_s,
          {u"-define"_s, u"jpeg:size="_s + groesse, datei, u"-resize"_s, groesse, u"-quality"_s, QString::number(Guete),
              ziel + u".jpg"_s});
      });
}

void miss_Originale(const QString& fotos, const QString& ziel, int runden) {
  const QString anderes = ziel + u".img2pdf.pdf"_s;
  messung::vergleiche(
      "20 originals; img2pdf", runden, 1.5, [&] { schreibe(ziel, Originale, Dichte::Original); },
      [&] {
    laufe(u"img2pdf"_s, dateien(fotos, Originale) + QStringList{u"-o"_s, anderes});
      });
  const double a = static_cast<double>(QFileInfo(ziel).size()) / 1e6;
  const double b = static_cast<double>(QFileInfo(anderes).size()) / 1e6;
  std::printf(
      "%-58s %10.1f MB %10.1f MB   %6.3f  (aim <= 1.05)%s\n", "their files", a, b, a / b, a / b <= 1.05 ? "" : " NO");
  messung::erwarte(a / b <= 1.05);
}

/// From the collection to the painted first page, as the preview does it.
void male_erste_Seite() {
  const Bericht bericht = lies(Vorschaubilder, {});
  const Seitenplan plan = seitenplan::plane(bericht, 2);
  QImage blatt(794, 1123, QImage::Format_RGB32);
  blatt.fill(Qt::white);
  QPainter maler(&blatt);
  maler.scale(1 / 15.0, 1 / 15.0);
  Bildladung ladung;
  seitenmaler::male(
      maler, plan.front(),
      [&](QPainter& m, const QRectF& ort, std::size_t bild) {
    m.drawImage(ort, ladung.pixel(bericht.bilder[bild], seitenmaler::pixel(ort.size(), 96)));
      },
      {});
}

void miss_Vorschau(int runden) {
  std::vector<double> zeiten;
  for (int i = 0; i < runden; ++i) zeiten.push_back(messung::sekunden(male_erste_Seite));
  const double dauer = messung::median(zeiten);
  std::printf("%-58s %10.3f ms  (aim <= 500)%s\n", "preview of 300 pictures until its first page", dauer * 1e3,
      dauer <= Vorschau_Sekunden ? "" : " NO");
  messung::erwarte(dauer <= Vorschau_Sekunden);
}

void miss_Speicher(const QString& fotos, const char* name, int anzahl, Dichte dichte) {
  QProcess prozess;
  prozess.start(QCoreApplication::applicationFilePath(),
      {u"--schreibe"_s, fotos, QString::number(anzahl), QString::number(static_cast<int>(dichte))});
  verlange(prozess.waitForFinished(-1) && prozess.exitCode() == 0, "process for the memory");
  const double speicher = prozess.readAllStandardOutput().trimmed().toDouble();
  std::printf("%-58s %10.1f MB  (aim <= 150)%s\n", name, speicher, speicher <= Groesster_Speicher_MB ? "" : " NO");
  messung::erwarte(speicher <= Groesster_Speicher_MB);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication programm(argc, argv);
  const QStringList angaben = QCoreApplication::arguments();
  const bool allein = angaben.value(1) == u"--schreibe";
  const QString fotos = angaben.value(allein ? 2 : 1, u"/tmp/fotos"_s);
  fotovorgang::mache(fotos);
  const QTemporaryDir ordner;
  const QString ziel = ordner.filePath(u"bericht.pdf"_s);
  if (allein) {
    schreibe(ziel, angaben.value(3).toInt(), static_cast<Dichte>(angaben.value(4).toInt()));
    std::printf("%.1f\n", messung::groesster_Speicher());
    return 0;
  }
  const int runden = angaben.size() > 2 ? angaben.at(2).toInt() : 3;
  miss_Bericht(fotos, ziel, runden);
  miss_Originale(fotos, ziel, runden);
  miss_Vorschau(runden);
  miss_Speicher(fotos, "memory, 100 photos, 300 dpi", 100, Dichte::Druck);
  miss_Speicher(fotos, "memory, 300 photos, 300 dpi", 300, Dichte::Druck);
  miss_Speicher(fotos, "memory, 300 originals", 300, Dichte::Original);
  return messung::urteil();
}
