// bench_suche [ORDNER [RUNDEN]]: the picture search reading folders into its list.
//
// ORDNER holds the photos of grosse_fotos.sh; the folders are made in ORDNER/suche. Photos: from the call until the
// list has all its pictures and is painted, with an empty cache but the files in the system's memory; beside it
// TurboJPEG's plain decode at 1/8 of the same files, from memory. Other files: beside it two sorted listings of the
// folder, the least that counting and reading need.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <cstdio>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Turbojpeg.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "platform/files/Dateien.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/host/KVOCore.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

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

/// The read, until all of it is painted.
void lies(frm_BilderSuchen& form, const QString& name, int anzahl) {
  form.Show_Folder_Content(u"P:\\"_s + name, u"*.*"_s);
  QCoreApplication::processEvents();
  verlange(form.lvwContent.Count() == anzahl, "the list is not whole");
}

bool miss_Fotos(frm_BilderSuchen& form, const char* was, const QString& name, int anzahl, int runden, double ziel) {
  const QList<QByteArray> bytes = inhalte(name);
  const auto mass = [&] {
    for (const QByteArray& b : bytes) messung::turbojpeg_Achtel(b);
  };
  const auto erstmals = [&] {
    Bildspeicher::aktuell().leere();
    lies(form, name, anzahl);
  };
  return messung::vergleiche(was, runden, ziel, erstmals, mass) <= ziel;
}

bool miss_zweites_Lesen(frm_BilderSuchen& form, const QString& name, int anzahl, int runden) {
  const QList<QByteArray> bytes = inhalte(name);
  Bildspeicher::aktuell().leere();
  const double verhaeltnis = messung::vergleiche(
      "200 photos: a second read of the unchanged folder", runden, 0.05, [&] { lies(form, name, anzahl); },
      [&] {
    for (const QByteArray& b : bytes) messung::turbojpeg_Achtel(b);
      });
  return verhaeltnis <= 0.05;
}

bool miss_Dateien(frm_BilderSuchen& form, int runden) {
  const auto zwei_Listen = [](const QString& name) {
    for (int i = 0; i < 2; ++i) dateien::Dir(u"P:\\"_s + name + u"\\*.*"_s);
  };
  bool gut = true;
  std::vector<double> kurz;
  std::vector<double> lang;
  gut = messung::vergleiche(
            "10,000 files of other types: read", runden, 4, [&] { lies(form, u"dateien10"_s, 10'000); },
            [&] { zwei_Listen(u"dateien10"_s); }) <= 4 &&
      gut;
  gut = messung::vergleiche(
            "40,000 files of other types: read", runden, 4, [&] { lies(form, u"dateien40"_s, 40'000); },
            [&] { zwei_Listen(u"dateien40"_s); }) <= 4 &&
      gut;
  for (int i = 0; i < runden; ++i) {
    lang.push_back(messung::sekunden([&] { lies(form, u"dateien40"_s, 40'000); }));
    kurz.push_back(messung::sekunden([&] { lies(form, u"dateien10"_s, 10'000); }));
  }
  // Four times as many may cost four times as much, and what sorting and the caches take.
  return messung::zeile("40,000 beside 10,000 files", lang, kurz, 5) <= 5 && gut;
}

bool miss(frm_BilderSuchen& form, int runden) {
  form.pDateifilter = u"*.*"_s;
  bool gut = miss_Dateien(form, 3 * runden);
  gut = miss_Fotos(form, "200 photos of 12 megapixels: first read", u"fotos"_s, 200, runden, 1.15) && gut;
  gut = miss_zweites_Lesen(form, u"fotos"_s, 200, runden) && gut;
  gut = miss_Fotos(form, "40 progressive photos: first read", u"progressiv"_s, 40, runden, 0.4) && gut;
  std::printf("%-58s %10.0f MB\n", "peak of memory", messung::groesster_Speicher());
  return gut;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  fensterdienste::richte_ein();
  KVOCore::setze(nullptr);
  fotos = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 5;
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  lege_Fotos(u"fotos"_s, {u"foto1_4032x3024_420.jpg"_s, u"foto1_4031x3021_420.jpg"_s}, 200);
  lege_Fotos(u"progressiv"_s, {u"foto1_4032x3024_420_prog.jpg"_s, u"foto1_4031x3021_420_prog.jpg"_s}, 40);
  lege_Dateien(u"dateien10"_s, 10'000);
  lege_Dateien(u"dateien40"_s, 40'000);
  verlange(QDir().mkpath(ordner_von(u"leer"_s)), "empty folder");
  Pfadkarte::aktuell().setze(u"P:"_s, fotos + u"/suche"_s);
  frm_BilderSuchen form;
  form.pRootpath = u"P:\\leer"_s;
  form.Load();
  bool gut = false;
  QTimer::singleShot(0, &form, [&] {
    gut = miss(form, runden);
    form.Hide();
  });
  form.Show();
  form.raeume_auf();
  return gut ? 0 : 1;
}
