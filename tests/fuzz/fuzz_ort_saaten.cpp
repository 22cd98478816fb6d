#include <QDir>
#include <QFile>
#include <cstdio>

#include "tests/host/bericht/ausgabe/Ortsbild.h"

// Writes the files from which fuzz_ort starts: fuzz_ort_saaten ORDNER

using namespace ortsbild;
using namespace Qt::Literals::StringLiterals;

namespace {

bool schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile datei(pfad);
  return datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size();
}

QByteArray chunk(const QByteArray& art, const QByteArray& daten) {
  return zahl(static_cast<quint32>(daten.size()), 4, Folge::Gross) + art + daten + QByteArray(4, '\0');
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !QDir().mkpath(QFile::decodeName(argv[1]))) {
    std::fputs("fuzz_ort_saaten ORDNER\n", stderr);
    return 2;
  }
  const QByteArray leer("\xff\xd8\xff\xd9", 4);
  const QByteArray xmp_Kopf("http://ns.adobe.com/xap/1.0/\0", 29);
  const QByteArray erweitert = QByteArray("http://ns.adobe.com/xmp/extension/\0", 35) + QByteArray(40, '\0');
  const QByteArray paket = xmp(Ortseigenschaft);
  const QByteArray png("\x89PNG\r\n\x1a\n", 8);
  const QList<QByteArray> alle{tiff(Folge::Klein), tiff(Folge::Gross), mit(leer, exif_Segment(tiff(Folge::Klein))),
      mit(leer, exif_Segment(tiff(Folge::Gross))), mit(leer, segment('\xe1', xmp_Kopf + paket)),
      mit(leer, segment('\xe1', erweitert + paket)), png + chunk("eXIf", tiff(Folge::Klein)),
      png + chunk("iTXt", QByteArray("XML:com.adobe.xmp\0\1\0\0\0", 22) + qCompress(paket).mid(4)),
      png + chunk("tEXt", QByteArray("Raw profile type exif\0\nexif\n4\n", 31) + tiff(Folge::Gross).toHex()),
      "RIFF1234WEBPEXIF" + zahl(200, 4, Folge::Klein) + tiff(Folge::Klein),
      leer + "1234ftypmp42\xa9xyz1234+48.1374+011.5755/"};
  for (qsizetype i = 0; i < alle.size(); ++i)
    if (!schreibe(QFile::decodeName(argv[1]) + u"/%1"_s.arg(i), alle.at(i))) return 1;
  return 0;
}
