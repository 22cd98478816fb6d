#include <zlib.h>

#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "platform/basic/Bytesicht.h"
#include "platform/gdiplus/miniatur/Eintragsort.h"
#include "platform/gdiplus/miniatur/Miniaturablage.h"

// Any bytes as the file of an entry, as they are and with right check sums: nothing crashes, and what is served has the
// size that it should have.

namespace {

[[noreturn]] void scheitere(const char* grund) {
  std::fprintf(stderr, "%s\n", grund);
  std::abort();
}

struct Platz {
  Platz() : ablage(heim) {
    // No clock: a slow moment of the machine must not end the cache.
    ablage.stoppuhr([] { return std::int64_t{0}; });
    if (!ablage.ist_an()) scheitere("no cache folder");
    for (const QByteArray& unter : {klein, fehlschlaege}) miniatur::mache_Ordner(unter);
  }
  const QTemporaryDir ordner;
  const QByteArray heim = QFile::encodeName(ordner.path());
  const QByteArray klein = miniatur::ordner_in(heim).gemeinsam + "/normal";
  const QByteArray fehlschlaege = miniatur::ordner_in(heim).fehlschlaege;
  Miniaturablage ablage;
};

void lege_ab(const QByteArray& pfad, const QByteArray& bytes) {
  QFile datei(QFile::decodeName(pfad));
  if (!datei.open(QIODevice::WriteOnly) || datei.write(bytes) != bytes.size()) scheitere("cannot write the entry");
}

// Otherwise hardly a change would get past the check sums.
QByteArray mit_Pruefsummen(QByteArray bytes) {
  for (qsizetype p = 8; p + 12 <= bytes.size();) {
    const auto laenge = static_cast<qsizetype>(Bytesicht(bytes).u32_hoch(static_cast<std::uint64_t>(p)));
    if (laenge > bytes.size() - p - 12) break;
    const auto summe =
        crc32(0, reinterpret_cast<const Bytef*>(bytes.constData() + p + 4), static_cast<uInt>(laenge + 4));
    for (qsizetype i = 0; i < 4; ++i) bytes[p + 8 + laenge + i] = static_cast<char>(summe >> (24 - 8 * i) & 0xff);
    p += 12 + laenge;
  }
  return bytes;
}

void pruefe(const QByteArray& bytes) {
  static Platz platz;
  // As fuzz_miniatur_saaten has them.
  const Miniaturablage::Datei gesucht{"/srv/bild.jpg", 123456, std::int64_t{1'700'000'000} * 1'000'000'000 + 5, 0};
  const QByteArray name = '/' + miniatur::eintragsname(miniatur::adresse(gesucht.ort));
  lege_ab(platz.klein + name, bytes);
  lege_ab(platz.fehlschlaege + name, bytes);
  const QImage bild = platz.ablage.suche(gesucht, {4, 4});
  const auto auskunft = platz.ablage.kopf(gesucht);
  if (!platz.ablage.ist_an()) scheitere("the cache switched itself off");
  if (auskunft && auskunft->kopf.befund == Kopfbefund::Ok && !ist_haltbar(auskunft->kopf.groesse))
    scheitere("a header that nobody can hold");
  if (bild.isNull()) return;
  if (!auskunft || auskunft->kopf.befund != Kopfbefund::Ok) scheitere("pixels without a header");
  const bool passt = bild.width() >= 4 && bild.height() >= 4 && bild.width() <= 128 && bild.height() <= 128;
  if (!passt || bild.format() != QImage::Format_RGB32) scheitere("pixels of another size");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t laenge) {
  const QByteArray bytes(reinterpret_cast<const char*>(daten), static_cast<qsizetype>(laenge));
  pruefe(bytes);
  pruefe(mit_Pruefsummen(bytes));
  return 0;
}
