// bench_freigabe [ORDNER [RUNDEN]]: the picture search and the assignment dialog over a hundred photos on a share.
//
// ORDNER holds the photos of grosse_fotos.sh; the copies are made in ORDNER/streifen. A Samba server on 127.0.0.1
// shares them, smbnetfs mounts the share, and a pass-through above it counts what is read: once it answers at once,
// once each request 5 ms later. Each first look is that of a new process without any cache of ours, after each restart
// of the program the pass-through is mounted anew. The time is that from the call until all is painted. Skipped where
// this machine has no /dev/fuse or lacks a program.
#include <QApplication>
#include <QDir>
#include <csignal>
#include <cstdio>
#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Neustart.h"
#include "bench/Schalter.h"
#include "bench/Suchliste.h"
#include "bench/Zuordnungsdialog.h"
#include "bench/freigabe/Durchgang.h"
#include "bench/freigabe/Zaehlerstand.h"
#include "platform/files/Pfadkarte.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/host/KVOCore.h"
#include "tests/support/Freigabe.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

/// What one look cost: seconds, bytes and the requests of each kind. These are the numbers of one line, too.
constexpr int Sekunden = 0;
constexpr int Bytes = 1;
constexpr int Anfragen = 2;
constexpr int Zahlen = Anfragen + Zaehlerstand::Arten;
using Aufwand = QList<double>;

/// What it cost in each round.
using Reihe = std::vector<Aufwand>;

std::vector<double> spalte(const Reihe& reihe, int welche) {
  std::vector<double> werte;
  werte.reserve(reihe.size());
  for (const Aufwand& a : reihe) werte.push_back(a[welche]);
  return werte;
}

// In the new process

Aufwand stand(const Zaehlerstand& zaehler) {
  Aufwand alles{0, static_cast<double>(zaehler.bytes)};
  for (const auto& anfragen : zaehler.anfragen) alles.append(static_cast<double>(anfragen));
  return alles;
}

/// Does the work and says its cost on the standard output.
void miss(const Zaehlerstand& zaehler, const std::function<void()>& arbeit) {
  const Aufwand vorher = stand(zaehler);
  std::printf("%.9f", messung::sekunden(arbeit));
  const Aufwand nachher = stand(zaehler);
  for (int i = Bytes; i < Zahlen; ++i) std::printf(" %.0f", nachher[i] - vorher[i]);
  std::printf("\n");
}

void miss_Liste(const Zaehlerstand& zaehler, int male) {
  suchliste::zeige(u"Artikel"_s, [&](frm_BilderSuchen& form) {
    for (int i = 0; i < male; ++i) {
      miss(zaehler, [&] { suchliste::lies(form, fotovorgang::Unterordner, fotovorgang::Anzahl); });
      schalter::warte_auf_Miniaturen();
    }
  });
}

void miss_Dialog(const Zaehlerstand& zaehler) {
  const QTemporaryDir datenordner;
  const auto vorgang = zuordnungsdialog::lies_Vorgang(datenordner);
  miss(zaehler, [&] { zuordnungsdialog::zeige(vorgang, [](frm_BildZuordnung&) {}); });
  schalter::warte_auf_Miniaturen();
}

/// --lauf liste|dialog ORDNER ZAEHLERDATEI MALE
int im_neuen_Prozess(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  verlange(argc == 6, "arguments of the new process");
  fensterdienste::richte_ein();
  KVOCore::setze(nullptr);
  schalter::richte_ein();
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  Pfadkarte::aktuell().setze(u"P:"_s, QString::fromLocal8Bit(argv[3]));
  const Zaehlerstand* const zaehler = zaehlerstand::bilde_ab(argv[4]);
  verlange(zaehler != nullptr, "counters");
  if (QByteArray(argv[2]) == "liste")
    miss_Liste(*zaehler, std::atoi(argv[5]));
  else
    miss_Dialog(*zaehler);
  return 0;
}

// In the process that has the share

std::optional<QTemporaryDir> ziel;
std::optional<Freigabe> freigabe;
std::optional<Einhaengung> eingehaengt;
std::optional<Durchgang> durchgang;

/// The mount above goes before the one below.
void beende_alles() {
  durchgang.reset();
  eingehaengt.reset();
  freigabe.reset();
  ziel.reset();
}

const QStringList Wie_bisher{u"KVO_VORLAUF=aus"_s, u"KVO_ABLAGE=aus"_s};

/// The looks of one new process of the program; the mount is new to it as well.
Reihe lauf(const QString& was, int mikrosekunden, int male, const QStringList& umgebung = {}) {
  durchgang.emplace(ziel->path());
  durchgang->starte(eingehaengt->ordner(), mikrosekunden);
  const QList<double> zahlen =
      neustart::starte({was, ziel->path(), durchgang->zaehlerdatei(), QString::number(male)}, umgebung);
  durchgang.reset();
  verlange(zahlen.size() == Zahlen * male, "numbers of the new process");
  Reihe alle;
  for (int i = 0; i < male; ++i) alle.push_back(zahlen.mid(i * Zahlen, Zahlen));
  return alle;
}

struct Messreihen {
  Reihe Liste_bisher, erste_Liste, zweite_Liste, Liste_nach_Neustart;
  Reihe Dialog_bisher, erster_Dialog, Dialog_nach_Neustart;
};

Messreihen miss_Runden(int mikrosekunden, int runden) {
  Messreihen r;
  for (int i = 0; i < runden; ++i) {
    r.Liste_bisher.push_back(lauf(u"liste"_s, mikrosekunden, 1, Wie_bisher)[0]);
    schalter::leere_Miniaturen();
    const Reihe zwei = lauf(u"liste"_s, mikrosekunden, 2);
    r.erste_Liste.push_back(zwei[0]);
    r.zweite_Liste.push_back(zwei[1]);
    r.Liste_nach_Neustart.push_back(lauf(u"liste"_s, mikrosekunden, 1)[0]);
    r.Dialog_bisher.push_back(lauf(u"dialog"_s, mikrosekunden, 1, Wie_bisher)[0]);
    schalter::leere_Miniaturen();
    r.erster_Dialog.push_back(lauf(u"dialog"_s, mikrosekunden, 1)[0]);
    r.Dialog_nach_Neustart.push_back(lauf(u"dialog"_s, mikrosekunden, 1)[0]);
  }
  return r;
}

/// Prints one line; `ziel_Prozent` of the files' bytes may have been read.
void schreibe(const char* was, const Reihe& reihe, double bytes_der_Fotos, double ziel_Prozent = messung::Ohne_Ziel) {
  const double bytes = messung::median(spalte(reihe, Bytes));
  const double prozent = 100 * bytes / bytes_der_Fotos;
  const auto anfragen = [&](Zaehlerstand::Art art) {
    return messung::median(spalte(reihe, Anfragen + static_cast<int>(art)));
  };
  std::printf("%-58s %10.3f ms %8.2f MB %6.2f %%  %4.0f stats %4.0f opens %4.0f reads %2.0f lists", was,
      messung::median(spalte(reihe, Sekunden)) * 1e3, bytes / 1e6, prozent, anfragen(Zaehlerstand::Attribute),
      anfragen(Zaehlerstand::Oeffnen), anfragen(Zaehlerstand::Lesen), anfragen(Zaehlerstand::Auflisten));
  if (ziel_Prozent != messung::Ohne_Ziel)
    std::printf("  (aim <= %.0f %%)%s", ziel_Prozent, prozent <= ziel_Prozent ? "" : " NO");
  std::printf("\n");
  std::fflush(stdout);
  messung::erwarte(ziel_Prozent == messung::Ohne_Ziel || prozent <= ziel_Prozent);
}

void miss_mit(int mikrosekunden, int runden, double bytes) {
  constexpr double Vom_Hundert_zweite = 1;
  constexpr double Erste_verzoegert = 0.6;
  std::printf("each request %.1f ms later\n", mikrosekunden / 1e3);
  const Messreihen r = miss_Runden(mikrosekunden, runden);
  schreibe("  list, nothing ahead and nothing kept", r.Liste_bisher, bytes);
  schreibe("  first list", r.erste_Liste, bytes);
  schreibe("  second list", r.zweite_Liste, bytes, Vom_Hundert_zweite);
  schreibe("  second list after a restart", r.Liste_nach_Neustart, bytes,
      schalter::Mit_Ablage ? Vom_Hundert_zweite : messung::Ohne_Ziel);
  schreibe("  dialog, nothing ahead and nothing kept", r.Dialog_bisher, bytes);
  schreibe("  first dialog", r.erster_Dialog, bytes);
  schreibe("  dialog after a restart", r.Dialog_nach_Neustart, bytes);
  const auto vergleiche = [](const char* was, const Reihe& unser, const Reihe& bisher, double hoechstens) {
    messung::zeile(was, spalte(unser, Sekunden), spalte(bisher, Sekunden), hoechstens);
  };
  vergleiche("  first list, against nothing ahead and nothing kept", r.erste_Liste, r.Liste_bisher,
      schalter::Mit_Vorlauf && mikrosekunden > 0 ? Erste_verzoegert : messung::Ohne_Ziel);
  vergleiche("  list after a restart, against the same", r.Liste_nach_Neustart, r.Liste_bisher, messung::Ohne_Ziel);
  vergleiche("  first dialog, against the same", r.erster_Dialog, r.Dialog_bisher, messung::Ohne_Ziel);
  vergleiche("  dialog after a restart, against the same", r.Dialog_nach_Neustart, r.Dialog_bisher, messung::Ohne_Ziel);
}

double bytes_der_Fotos(const QString& fotos) {
  double summe = 0;
  for (int i = 0; i < fotovorgang::Anzahl; ++i)
    summe += static_cast<double>(QFileInfo(fotovorgang::datei(fotos, i)).size());
  return summe;
}

void merke_Unterbrechung(int) {
  neustart::unterbrochen = 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && QByteArray(argv[1]) == neustart::Zeichen) return im_neuen_Prozess(argc, argv);
  const QCoreApplication app(argc, argv);
  if (const QString fehlt = Freigabe::was_fehlt(); !fehlt.isEmpty()) {
    std::printf("skipped: this machine has no %s, so no share can be mounted\n", qPrintable(fehlt));
    return 0;
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, merke_Unterbrechung);
  const QString fotos = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 3;
  fotovorgang::mache(fotos);
  messung::vor_dem_Ende = beende_alles;
  Dienst::unterbrochen = [] { return neustart::unterbrochen != 0; };
  try {
    ziel.emplace();
    freigabe.emplace(fotos + u"/streifen"_s, Freigabe::Art::NurLesen);
    eingehaengt.emplace(*freigabe, true);
    for (const int mikrosekunden : {0, 5'000}) miss_mit(mikrosekunden, runden, bytes_der_Fotos(fotos));
  } catch (const std::runtime_error& grund) {
    verlange(false, grund.what());
  }
  beende_alles();
  return messung::urteil();
}
