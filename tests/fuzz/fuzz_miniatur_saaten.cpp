#include <QDir>
#include <QFile>
#include <cstdio>

#include "platform/gdiplus/miniatur/Pngeintrag.h"

// Writes the files from which fuzz_miniatur starts: fuzz_miniatur_saaten ORDNER

using namespace Qt::Literals::StringLiterals;

namespace {

miniatur::Angaben angaben(const Bildkopf& kopf, std::int32_t status) {
  const std::int64_t geaendert = std::int64_t{1'700'000'000} * 1'000'000'000 + 5;
  return {"file:///srv/bild.jpg", 123456, geaendert, geaendert + 3'600'000'000'000, kopf, status};
}

QImage verlauf(QSize groesse) {
  QImage bild(groesse, QImage::Format_RGB32);
  for (int y = 0; y < bild.height(); ++y)
    for (int x = 0; x < bild.width(); ++x) bild.setPixel(x, y, qRgb(x & 0xff, y & 0xff, (x * y) & 0xff));
  return bild;
}

bool schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile datei(pfad);
  return !bytes.isEmpty() && datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !QDir().mkpath(QFile::decodeName(argv[1]))) {
    std::fputs("fuzz_miniatur_saaten ORDNER\n", stderr);
    return 2;
  }
  const QString ordner = QFile::decodeName(argv[1]) + u'/';
  // Narrow ones are short files.
  const Bildkopf foto{Bildformat::Jpeg, Kopfbefund::Ok, {4000, 250}, 0};
  const Bildkopf hoch{Bildformat::Ico, Kopfbefund::Ok, {20, 160}, 2};
  const QByteArray gut = miniatur::als_Png(verlauf({128, 8}), als_Texte(angaben(foto, 0)));
  bool geschrieben = schreibe(ordner + u"foto"_s, gut) && schreibe(ordner + u"halb"_s, gut.first(gut.size() / 2));
  geschrieben &= schreibe(ordner + u"hoch"_s, miniatur::als_Png(verlauf({16, 128}), als_Texte(angaben(hoch, 0))));
  geschrieben &= schreibe(ordner + u"fehlschlag"_s, miniatur::als_Png(verlauf({1, 1}), als_Texte(angaben({}, 13))));
  return geschrieben ? 0 : 1;
}
