#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "platform/gdiplus/miniatur/Eintragsort.h"
#include "platform/gdiplus/miniatur/Miniaturablage.h"

// Any bytes as the file of an entry: nothing crashes, and what is served has the size that it should have.

namespace {

[[noreturn]] void scheitere(const char* grund) {
  std::fprintf(stderr, "%s\n", grund);
  std::abort();
}

struct Platz {
  Platz() : ablage(QFile::encodeName(ordner.path())) {
    if (!ablage.ist_an()) scheitere("no cache folder");
    for (const QByteArray& unter : {gemeinsam + "/large", miniatur::ordner_in(heim).fehlschlaege})
      miniatur::mache_Ordner(unter);
  }
  const QTemporaryDir ordner;
  const QByteArray heim = QFile::encodeName(ordner.path());
  const QByteArray gemeinsam = miniatur::ordner_in(heim).gemeinsam;
  Miniaturablage ablage;
};

void lege_ab(const QByteArray& pfad, const std::uint8_t* daten, std::size_t laenge) {
  QFile datei(QFile::decodeName(pfad));
  const auto anzahl = static_cast<qint64>(laenge);
  if (!datei.open(QIODevice::WriteOnly) || datei.write(reinterpret_cast<const char*>(daten), anzahl) != anzahl)
    scheitere("cannot write the entry");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  static Platz platz;
  // As fuzz_miniatur_saaten has them.
  const Miniaturablage::Datei gesucht{"/srv/bild.jpg", 123456, std::int64_t{1'700'000'000} * 1'000'000'000 + 5, 0};
  const QByteArray name = '/' + miniatur::eintragsname(miniatur::adresse(gesucht.ort));
  // No clock: a slow moment of the machine must not end the cache.
  platz.ablage.stoppuhr([] { return std::int64_t{0}; });
  lege_ab(platz.gemeinsam + "/large" + name, daten, laenge);
  lege_ab(miniatur::ordner_in(platz.heim).fehlschlaege + name, daten, laenge);
  const QImage bild = platz.ablage.suche(gesucht, {92, 92});
  const auto auskunft = platz.ablage.kopf(gesucht);
  if (!platz.ablage.ist_an()) scheitere("the cache switched itself off");
  if (auskunft && auskunft->kopf.befund == Kopfbefund::Ok && !ist_haltbar(auskunft->kopf.groesse))
    scheitere("a header that nobody can hold");
  if (bild.isNull()) return 0;
  if (!auskunft || auskunft->kopf.befund != Kopfbefund::Ok) scheitere("pixels without a header");
  if (bild.format() != QImage::Format_RGB32 || bild.width() < 138 || bild.height() < 138 || bild.width() > 256 ||
      bild.height() > 256)
    scheitere("pixels of another size");
  return 0;
}
