#include "tests/support/Heifbild.h"

#include <gtest/gtest.h>
#include <libheif/heif.h>

#include <cstring>
#include <memory>

namespace {

void erwarte(const heif_error& fehler) {
  EXPECT_EQ(fehler.code, heif_error_Ok) << fehler.message;
}

template <class Ding, class Freigabe>
auto gehalten(Ding* ding, Freigabe freigabe) {
  return std::unique_ptr<Ding, Freigabe>(ding, freigabe);
}

heif_error haenge_an(heif_context*, const void* daten, std::size_t laenge, void* ziel) {
  static_cast<QByteArray*>(ziel)->append(static_cast<const char*>(daten), static_cast<qsizetype>(laenge));
  return {heif_error_Ok, heif_suberror_Unspecified, "ok"};
}

}  // namespace

QByteArray heifbild::schreibe(const QImage& pixel, Art art, int ausrichtung, const QByteArray& exif) {
  const auto kontext = gehalten(heif_context_alloc(), heif_context_free);
  heif_encoder* roher_Kodierer = nullptr;
  const auto format = art == Art::Heic ? heif_compression_HEVC : heif_compression_AV1;
  if (heif_context_get_encoder_for_format(kontext.get(), format, &roher_Kodierer).code != heif_error_Ok) return {};
  const auto kodierer = gehalten(roher_Kodierer, heif_encoder_release);
  erwarte(heif_encoder_set_lossy_quality(kodierer.get(), 95));

  heif_image* rohes_Bild = nullptr;
  erwarte(
      heif_image_create(pixel.width(), pixel.height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &rohes_Bild));
  const auto bild = gehalten(rohes_Bild, heif_image_release);
  erwarte(heif_image_add_plane(bild.get(), heif_channel_interleaved, pixel.width(), pixel.height(), 8));
  int schritt = 0;
  std::uint8_t* const zeilen = heif_image_get_plane(bild.get(), heif_channel_interleaved, &schritt);
  const QImage rgb = pixel.convertToFormat(QImage::Format_RGB888);
  for (int y = 0; y < rgb.height(); ++y)
    std::memcpy(zeilen + std::ptrdiff_t{y} * schritt, rgb.constScanLine(y), 3 * static_cast<std::size_t>(rgb.width()));

  const auto angaben = gehalten(heif_encoding_options_alloc(), heif_encoding_options_free);
  angaben->image_orientation = static_cast<heif_orientation>(ausrichtung);
  heif_image_handle* roher_Griff = nullptr;
  erwarte(heif_context_encode_image(kontext.get(), bild.get(), kodierer.get(), angaben.get(), &roher_Griff));
  const auto griff = gehalten(roher_Griff, heif_image_handle_release);
  if (!exif.isEmpty())
    erwarte(
        heif_context_add_exif_metadata(kontext.get(), griff.get(), exif.constData(), static_cast<int>(exif.size())));
  QByteArray bytes;
  heif_writer schreiber{1, haenge_an};
  erwarte(heif_context_write(kontext.get(), &schreiber, &bytes));
  return bytes;
}
