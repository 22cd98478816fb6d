// bench_suche [ORDNER [RUNDEN]]: the picture search reading folders into its list.
//
// ORDNER holds the photos of grosse_fotos.sh; the folders are made in ORDNER/suche. Photos: from the call until the
// list has all its pictures and is painted, with empty caches but the files in the system's memory; beside it
// TurboJPEG's plain decode at 1/8 of the same files, from memory. After a restart: the same in a new process, which has
// the thumbnails that the one before left. Other files: beside it two sorted listings of the folder, the least that
// counting and reading need.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Neustart.h"
#include "bench/Schalter.h"
#include "bench/Suchliste.h"
#include "bench/Turbojpeg.h"
#include "platform/files/Dateien.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/host/KVOCore.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;
using suchliste::lies;

namespace {

QString fotos;

QString ordner_von(const QString& name) {
  return fotos + u"/suche/"_s + name;
}

/// Copies that are each a file of its own: what lies behind the end of a picture does not count.
void lege_Fotos(const QString& name, const QStringList& vorlagen, int anzahl) {
  verlange(QDir().mkpath(ordner_von(name)), "folder for the photos");
  QList<QByteArray> inhalte;
  for (const QString& vorlage : vorlagen) inhalte.append(fotovorgang::lies(fotos + u'/' + vorlage));
  for (int i = 0; i < anzahl; ++i) {
    const QByteArray inhalt = inhalte[i % inhalte.size()] + QByteArray::number(i);
    QFile kopie(ordner_von(name) + u"/bild%1.jpg"_s.arg(i));
    if (kopie.size() == inhalt.size()) continue;
    verlange(kopie.open(QIODevice::WriteOnly) && kopie.write(inhalt) == inhalt.size(), "copy of a photo");
  }
}

/// Empty files of a handful of types.
void lege_Dateien(const QString& name, int anzahl) {
  static const QStringList Typen{u"dat"_s, u"docx"_s, u"001"_s, u"PDF"_s, u"txt"_s};
  verlange(QDir().mkpath(ordner_von(name)), "folder for the files");
  for (int i = 0; i < anzahl; ++i) {
    QFile datei(ordner_von(name) + u"/Angebot %1.%2"_s.arg(i).arg(Typen[i % Typen.size()]));
    verlange(datei.exists() || datei.open(QIODevice::WriteOnly), "file");
  }
}

QList<QByteArray> inhalte(const QString& name) {
  QList<QByteArray> bytes;
  for (const QString& datei : QDir(ordner_von(name)).entryList(QDir::Files))
    bytes.append(fotovorgang::lies(ordner_von(name) + u'/' + datei));
  return bytes;
}

void decodiere(const QList<QByteArray>& bytes) {
  for (const QByteArray& b : bytes) messung::turbojpeg_Achtel(b);
}

/// The first round is not counted. The thumbnails of the last one are there afterwards.
void miss_Fotos(frm_BilderSuchen& form, const char* was, const QString& name, int anzahl, int runden, double aim) {
  const QList<QByteArray> bytes = inhalte(name);
  std::vector<double> erste;
  std::vector<double> masse;
  for (int i = 0; i <= runden; ++i) {
    Bildspeicher::aktuell().leere();
    schalter::leere_Miniaturen();
    const double zeit = messung::sekunden([&] { lies(form, name, anzahl); });
    schalter::warte_auf_Miniaturen();
    const double mass = messung::sekunden([&] { decodiere(bytes); });
    if (i == 0) continue;
    erste.push_back(zeit);
    masse.push_back(mass);
  }
  messung::zeile(was, erste, masse, aim);
}

void miss_nach_Neustart(const QString& name, int anzahl, int runden) {
  const QList<QByteArray> bytes = inhalte(name);
  std::vector<double> neue;
  std::vector<double> masse;
  for (int i = 0; i < runden; ++i) {
    neue.push_back(neustart::starte({fotos, name, QString::number(anzahl)}).at(0));
    masse.push_back(messung::sekunden([&] { decodiere(bytes); }));
  }
  messung::zeile("200 photos: after a restart of the program", neue, masse, 0.05);
}

/// Peak of memory of a new process that reads the folder with empty caches, against one that decodes nothing ahead and
/// keeps no thumbnails.
void miss_Speicher(const QString& name, int anzahl) {
  constexpr double Hoechstens_mehr_MB = 64;
  schalter::leere_Miniaturen();
  const double unser = neustart::starte({fotos, name, QString::number(anzahl)}).at(1);
  const double peer =
      neustart::starte({fotos, name, QString::number(anzahl)}, {u"KVO_VORLAUF=aus"_s, u"KVO_ABLAGE=aus"_s}).at(1);
  const bool gut = unser <= peer + Hoechstens_mehr_MB;
  std::printf("%-58s %10.0f MB %10.0f MB            (aim <= %.0f MB more)%s\n", "200 photos: peak of memory", unser,
      peer, Hoechstens_mehr_MB, gut ? "" : " NO");
  messung::erwarte(gut);
}

void miss_zweites_Lesen(frm_BilderSuchen& form, const QString& name, int anzahl, int runden) {
  const QList<QByteArray> bytes = inhalte(name);
  Bildspeicher::aktuell().leere();
  messung::vergleiche(
      "200 photos: a second read of the unchanged folder", runden, 0.05, [&] { lies(form, name, anzahl); },
      [&] { decodiere(bytes); });
}

void miss_Dateien(frm_BilderSuchen& form, int runden) {
  const auto zwei_Listen = [](const QString& name) {
    for (int i = 0; i < 2; ++i) dateien::Dir(u"P:\\"_s + name + u"\\*.*"_s);
  };
  std::vector<double> kurz;
  std::vector<double> lang;
  messung::vergleiche(
      "10,000 files of other types: read", runden, 4, [&] { lies(form, u"dateien10"_s, 10'000); },
      [&] { zwei_Listen(u"dateien10"_s); });
  messung::vergleiche(
      "40,000 files of other types: read", runden, 4, [&] { lies(form, u"dateien40"_s, 40'000); },
      [&] { zwei_Listen(u"dateien40"_s); });
  for (int i = 0; i < runden; ++i) {
    lang.push_back(messung::sekunden([&] { lies(form, u"dateien40"_s, 40'000); }));
    kurz.push_back(messung::sekunden([&] { lies(form, u"dateien10"_s, 10'000); }));
  }
  // Four times as many may cost four times as much, and what sorting and the caches take.
  messung::zeile("40,000 beside 10,000 files", lang, kurz, 5);
}

void miss(frm_BilderSuchen& form, int runden) {
  miss_Dateien(form, 3 * runden);
  miss_Fotos(form, "200 photos of 12 megapixels: first read", u"fotos"_s, 200, runden, 0.58);
  miss_nach_Neustart(u"fotos"_s, 200, runden);
  miss_Speicher(u"fotos"_s, 200);
  miss_zweites_Lesen(form, u"fotos"_s, 200, runden);
  miss_Fotos(form, "40 progressive photos: first read", u"progressiv"_s, 40, runden, 0.4);
}

/// --lauf ORDNER NAME ANZAHL: says the seconds of the read and the peak of memory after it.
void lies_einmal(frm_BilderSuchen& form, const QString& name, int anzahl) {
  const double zeit = messung::sekunden([&] { lies(form, name, anzahl); });
  schalter::warte_auf_Miniaturen();
  std::printf("%.9f %.0f\n", zeit, messung::groesster_Speicher());
}

void lege_Ordner() {
  lege_Fotos(u"fotos"_s, {u"foto1_4032x3024_420.jpg"_s, u"foto1_4031x3021_420.jpg"_s}, 200);
  lege_Fotos(u"progressiv"_s, {u"foto1_4032x3024_420_prog.jpg"_s, u"foto1_4031x3021_420_prog.jpg"_s}, 40);
  lege_Dateien(u"dateien10"_s, 10'000);
  lege_Dateien(u"dateien40"_s, 40'000);
  verlange(QDir().mkpath(ordner_von(u"leer"_s)), "empty folder");
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  fensterdienste::richte_ein();
  KVOCore::setze(nullptr);
  schalter::richte_ein();
  const bool neu_gestartet = argc == 5 && QByteArray(argv[1]) == neustart::Zeichen;
  fotos = argc > 1 ? QString::fromLocal8Bit(argv[neu_gestartet ? 2 : 1]) : u"fotos"_s;
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  Pfadkarte::aktuell().setze(u"P:"_s, fotos + u"/suche"_s);
  if (!neu_gestartet) lege_Ordner();
  suchliste::zeige(u"leer"_s, [&](frm_BilderSuchen& form) {
    if (neu_gestartet)
      lies_einmal(form, QString::fromLocal8Bit(argv[3]), std::atoi(argv[4]));
    else
      miss(form, argc > 2 ? std::atoi(argv[2]) : 5);
  });
  return messung::urteil();
}
