#include <QDir>
#include <QFile>
#include <cstdio>

#include "tests/platform/gdiplus/jpeg/Drehvorlagen.h"

// Writes the files from which fuzz_drehen starts, each with its transform in front and without SOI:
// fuzz_drehen_saaten ORDNER

using namespace drehvorlagen;
using namespace Qt::Literals::StringLiterals;

namespace {

bool schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile datei(pfad);
  return datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !QDir().mkpath(QFile::decodeName(argv[1]))) {
    std::fputs("fuzz_drehen_saaten ORDNER\n", stderr);
    return 2;
  }
  const QString ordner = QFile::decodeName(argv[1]) + u'/';
  const std::vector<Machart> arten{
      {},
      {.progressiv = true},
      {.arithmetisch = true},
      {.progressiv = true, .arithmetisch = true},
      {.neustart = 2},
      {.abtastung = {{1, 4}, {1, 1}, {1, 1}}, .optimiert = true},
      {.abtastung = {{1, 1}, {2, 2}, {2, 2}}},
      {.abtastung = {{4, 4}, {2, 1}, {1, 1}}},
      {.raum = JCS_GRAYSCALE, .abtastung = {{2, 2}}},
      {.raum = JCS_YCCK, .abtastung = {{2, 2}, {1, 1}, {1, 1}, {2, 2}}},
      {.qualitaet = 3},
  };
  bool gut = true;
  int nummer = 0;
  for (const Machart& art : arten)
    for (const QSize groesse : {QSize(32, 32), QSize(41, 27)}) {
      const QByteArray bild =
          mit_Marken(jpeg(groesse, art), {segment(0xe1, "Exif"), segment(0xfe, "Text")}, "dahinter");
      gut &= schreibe(ordner + QString::number(nummer), QByteArray(1, static_cast<char>(nummer % 5)) + bild.sliced(2));
      ++nummer;
    }
  return gut ? 0 : 1;
}
