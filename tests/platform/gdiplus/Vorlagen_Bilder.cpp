#include <jpeglib.h>

#include <QBuffer>
#include <QImageWriter>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tests/platform/gdiplus/Vorlagen.h"

using namespace Qt::Literals::StringLiterals;

namespace vorlagen {
namespace {

// Runs a compressor over rows of `farben` samples each.
template <class Einrichten, class Zeile>
QByteArray komprimiere(QSize groesse, int farben, J_COLOR_SPACE raum, Einrichten&& einrichten, Zeile&& zeile) {
  jpeg_compress_struct c{};
  jpeg_error_mgr fehler{};
  c.err = jpeg_std_error(&fehler);
  jpeg_create_compress(&c);
  unsigned char* speicher = nullptr;
  unsigned long laenge = 0;
  jpeg_mem_dest(&c, &speicher, &laenge);
  c.image_width = static_cast<JDIMENSION>(groesse.width());
  c.image_height = static_cast<JDIMENSION>(groesse.height());
  c.input_components = farben;
  c.in_color_space = raum;
  jpeg_set_defaults(&c);
  einrichten(c);
  jpeg_start_compress(&c, TRUE);
  std::vector<JSAMPLE> proben(static_cast<std::size_t>(groesse.width() * farben));
  JSAMPROW reihe = proben.data();
  for (int y = 0; y < groesse.height(); ++y) {
    zeile(y, proben);
    jpeg_write_scanlines(&c, &reihe, 1);
  }
  jpeg_finish_compress(&c);
  jpeg_destroy_compress(&c);
  const QByteArray ergebnis(reinterpret_cast<const char*>(speicher), static_cast<qsizetype>(laenge));
  std::free(speicher);
  return ergebnis;
}

}  // namespace

QImage foto(QSize groesse) {
  QImage bild(groesse, QImage::Format_RGB32);
  std::uint32_t zufall = 12345;
  for (int y = 0; y < groesse.height(); ++y) {
    auto* const zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
    for (int x = 0; x < groesse.width(); ++x) {
      zufall = zufall * 1664525U + 1013904223U;
      const int korn = static_cast<int>(zufall >> 29) - 4;
      const int kante = (x / 37 + y / 29) % 5 == 0 ? 40 : 0;
      const auto stufe = [&](double wert) { return std::clamp(static_cast<int>(wert) + korn + kante, 0, 255); };
      zeile[x] = qRgb(stufe(100 + 80 * std::sin(x / 43.0)), stufe(90 + 70 * std::cos(y / 31.0)),
          stufe(120 + 60 * std::sin((x + y) / 57.0)));
    }
  }
  return bild;
}

QByteArray kodiert(const QImage& bild, const char* format) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  if (!QImageWriter(&puffer, format).write(bild)) qFatal("cannot write %s", format);
  return bytes;
}

QByteArray jpeg(const QImage& bild, const Jpegart& art) {
  return komprimiere(
      bild.size(), 3, JCS_RGB,
      [&](jpeg_compress_struct& c) {
    jpeg_set_quality(&c, art.qualitaet, TRUE);
    c.comp_info[0].h_samp_factor = art.waagrecht;
    c.comp_info[0].v_samp_factor = art.senkrecht;
    c.arith_code = art.arithmetisch ? TRUE : FALSE;
    if (art.progressiv) jpeg_simple_progression(&c);
      },
      [&](int y, std::vector<JSAMPLE>& proben) {
    for (int x = 0; x < bild.width(); ++x) {
      const QRgb farbe = bild.pixel(x, y);
      const std::size_t p = 3 * static_cast<std::size_t>(x);
      proben[p] = static_cast<JSAMPLE>(qRed(farbe));
      proben[p + 1] = static_cast<JSAMPLE>(qGreen(farbe));
      proben[p + 2] = static_cast<JSAMPLE>(qBlue(farbe));
    }
  });
}

QByteArray jpeg_einfarbig(QSize groesse, QRgb farbe, bool progressiv) {
  return komprimiere(
      groesse, 3, JCS_RGB,
      [&](jpeg_compress_struct& c) {
    if (progressiv) jpeg_simple_progression(&c);
      },
      [&](int, std::vector<JSAMPLE>& proben) {
    for (std::size_t i = 0; i < proben.size(); ++i)
      proben[i] = static_cast<JSAMPLE>(farbe >> (16 - 8 * (i % 3)) & 0xff);
  });
}

QByteArray jpeg_Cmyk(QSize groesse, QRgb tinten, bool adobe) {
  return komprimiere(
      groesse, 4, JCS_CMYK, [&](jpeg_compress_struct& c) { c.write_Adobe_marker = adobe ? TRUE : FALSE; },
      [&](int, std::vector<JSAMPLE>& proben) {
    for (std::size_t i = 0; i < proben.size(); ++i)
      proben[i] = static_cast<JSAMPLE>(tinten >> (24 - 8 * (i % 4)) & 0xff);
      });
}

QByteArray gif(QSize groesse, int grau, bool durchsichtig) {
  QByteArray b("GIF89a");
  const auto u16 = [&](int wert) { b.append(static_cast<char>(wert & 0xff)).append(static_cast<char>(wert >> 8)); };
  u16(groesse.width());
  u16(groesse.height());
  b.append("\xf6\0\0", 3);  // a palette of 128 colours
  for (int i = 0; i < 128; ++i) b.append(3, static_cast<char>(2 * i));
  if (durchsichtig) b.append("\x21\xf9\x04\x01\0\0", 6).append(static_cast<char>(grau)).append('\0');
  b.append(',');
  u16(0);
  u16(0);
  u16(groesse.width());
  u16(groesse.height());
  b.append("\0\x07", 2);
  // A clear code before every 100 pixels keeps all codes at 8 bits.
  QByteArray codes;
  for (int i = 0; i < groesse.width() * groesse.height(); ++i) {
    if (i % 100 == 0) codes.append('\x80');
    codes.append(static_cast<char>(grau));
  }
  codes.append('\x81');
  for (qsizetype i = 0; i < codes.size(); i += 255) {
    const QByteArray stueck = codes.mid(i, 255);
    b.append(static_cast<char>(stueck.size())).append(stueck);
  }
  return b.append("\0;", 2);
}

QImage libjpeg_Massstab(const QByteArray& bytes, int num) {
  jpeg_decompress_struct d{};
  jpeg_error_mgr fehler{};
  d.err = jpeg_std_error(&fehler);
  jpeg_create_decompress(&d);
  jpeg_mem_src(&d, reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<unsigned long>(bytes.size()));
  jpeg_read_header(&d, TRUE);
  d.scale_num = static_cast<unsigned>(num);
  d.scale_denom = 8;
  d.out_color_space = JCS_EXT_BGRX;
  jpeg_start_decompress(&d);
  QImage bild(static_cast<int>(d.output_width), static_cast<int>(d.output_height), QImage::Format_RGB32);
  while (d.output_scanline < d.output_height) {
    JSAMPROW zeile = bild.scanLine(static_cast<int>(d.output_scanline));
    jpeg_read_scanlines(&d, &zeile, 1);
  }
  jpeg_finish_decompress(&d);
  jpeg_destroy_decompress(&d);
  return bild;
}

double psnr(const QImage& a, const QImage& b) {
  if (a.size() != b.size() || a.isNull()) return 0;
  double summe = 0;
  const QImage x = a.convertToFormat(QImage::Format_RGB888);
  const QImage y = b.convertToFormat(QImage::Format_RGB888);
  for (int z = 0; z < x.height(); ++z)
    for (int i = 0; i < 3 * x.width(); ++i) {
      const int abstand = int{x.constScanLine(z)[i]} - int{y.constScanLine(z)[i]};
      summe += abstand * abstand;
    }
  return summe == 0 ? 99 : 10 * std::log10(255.0 * 255 * 3 * x.width() * x.height() / summe);
}

}  // namespace vorlagen
