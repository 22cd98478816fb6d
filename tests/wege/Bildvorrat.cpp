#include "tests/wege/Bildvorrat.h"

#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QTransform>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace bildvorrat {
namespace {

// Whole blocks of 8, so that a turn loses nothing. Wide, so that a window shows only a few of them in its strip.
constexpr QSize Groesse(32, 16);

QByteArray kommentar(int bild) {
  const QByteArray text = "Bild " + QByteArray::number(bild);
  QByteArray segment("\xff\xfe", 2);
  segment += '\0';
  segment += static_cast<char>(text.size() + 2);
  return segment + text;
}

int nummer(const QByteArray& bytes) {
  const qsizetype ort = bytes.indexOf("Bild ");
  if (ort < 4) return 0;
  const int laenge = static_cast<unsigned char>(bytes[ort - 1]);
  return bytes.mid(ort + 5, laenge - 7).toInt();
}

/// The white corner goes round with the turns.
int viertel(const QImage& bild) {
  const std::array<QPoint, 4> ecken{QPoint(2, 2), QPoint(bild.width() - 3, 2),
      QPoint(bild.width() - 3, bild.height() - 3), QPoint(2, bild.height() - 3)};
  for (int i = 0; i < 4; ++i)
    if (qGray(bild.pixel(ecken[static_cast<std::size_t>(i)])) > 128) return i;
  return -1;
}

}  // namespace

QByteArray bytes(const Bildinhalt& inhalt) {
  QImage bild(Groesse, QImage::Format_Grayscale8);
  bild.fill(0);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) bild.setPixelColor(x, y, Qt::white);
  if (inhalt.viertel != 0) bild = bild.transformed(QTransform().rotate(90 * inhalt.viertel));
  QByteArray bytes;
  QBuffer puffer(&bytes);
  bild.convertToFormat(QImage::Format_Grayscale8).save(&puffer, "JPEG");
  return bytes.insert(2, kommentar(inhalt.bild));
}

Bildinhalt inhalt(const QByteArray& bytes) {
  static QHash<QByteArray, Bildinhalt> bekannte;
  const auto bekannt = bekannte.constFind(bytes);
  if (bekannt != bekannte.constEnd()) return *bekannt;
  const QImage bild = QImage::fromData(bytes, "JPEG");
  const Bildinhalt neu = bild.isNull() ? Bildinhalt{} : Bildinhalt{nummer(bytes), viertel(bild)};
  bekannte.insert(bytes, neu);
  return neu;
}

}  // namespace bildvorrat
