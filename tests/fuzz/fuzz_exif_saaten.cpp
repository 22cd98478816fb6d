#include <QDir>
#include <QFile>
#include <cstdio>

#include "tests/exif/ExifBauer.h"

// Writes the files from which fuzz_exif starts: fuzz_exif_saaten ORDNER

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray werte(Folge folge) {
  ExifBauer b(folge);
  b.verzeichnis().zeiger();
  for (int format = 0; format <= 13; ++format) b.feld(700 + format, format, 1, "\1\2\3"_ba);
  b.verzeichnis();
  b.unterverzeichnis();
  for (int format = 0; format <= 13; ++format) b.daten(800 + format, format, 9, "123456789abcdefg"_ba);
  return b.jpeg();
}

QByteArray ring(Folge folge) {
  ExifBauer b(folge);
  b.verzeichnis().feld(34665, 1, 1, QByteArray(4, '\0')).kette(8);
  return b.jpeg();
}

bool schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile datei(pfad);
  return datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !QDir().mkpath(QFile::decodeName(argv[1]))) {
    std::fputs("fuzz_exif_saaten ORDNER\n", stderr);
    return 2;
  }
  const QString ordner = QFile::decodeName(argv[1]) + u'/';
  bool gut = schreibe(ordner + u"ohne"_s, "\xFF\xD8\xFF\xDB\xFF\xD9"_ba);
  for (const Folge folge : {Folge::Intel, Folge::Motorola}) {
    const QString ende = folge == Folge::Intel ? u"_intel"_s : u"_motorola"_s;
    gut &= schreibe(ordner + u"kamera"_s + ende, kamerabild(folge, 16));
    gut &= schreibe(ordner + u"werte"_s + ende, werte(folge));
    gut &= schreibe(ordner + u"ring"_s + ende, ring(folge));
  }
  return gut ? 0 : 1;
}
