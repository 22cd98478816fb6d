#include "host/betrieb/aufnahme/Heifleser.h"

#include <libheif/heif.h>

#include <QColorSpace>
#include <QLibrary>
#include <QtEndian>
#include <memory>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace heifleser {
namespace {

/// As much as a JPEG takes, and 2 GB of pixels.
constexpr int Groesste_Seite = 65500;
constexpr qint64 Groesste_Flaeche = (qint64{1} << 31) / 4;

/// What is used of the library; `da` tells whether all of it was found.
struct Heif {
  QLibrary bibliothek{u"heif"_s, 1};
  bool da = true;

  template <class Funktion>
  Funktion* nimm(const char* name) {
    auto* const gefunden = reinterpret_cast<Funktion*>(bibliothek.resolve(name));
    da = da && gefunden != nullptr;
    return gefunden;
  }

  decltype(&heif_get_version) get_version = nimm<decltype(heif_get_version)>("heif_get_version");
  decltype(&heif_context_alloc) context_alloc = nimm<decltype(heif_context_alloc)>("heif_context_alloc");
  decltype(&heif_context_free) context_free = nimm<decltype(heif_context_free)>("heif_context_free");
  decltype(&heif_context_read_from_memory_without_copy) context_read_from_memory_without_copy =
      nimm<decltype(heif_context_read_from_memory_without_copy)>("heif_context_read_from_memory_without_copy");
  decltype(&heif_context_get_primary_image_handle) context_get_primary_image_handle =
      nimm<decltype(heif_context_get_primary_image_handle)>("heif_context_get_primary_image_handle");
  decltype(&heif_image_handle_release) image_handle_release =
      nimm<decltype(heif_image_handle_release)>("heif_image_handle_release");
  decltype(&heif_image_handle_get_width) image_handle_get_width =
      nimm<decltype(heif_image_handle_get_width)>("heif_image_handle_get_width");
  decltype(&heif_image_handle_get_height) image_handle_get_height =
      nimm<decltype(heif_image_handle_get_height)>("heif_image_handle_get_height");
  decltype(&heif_image_handle_has_alpha_channel) image_handle_has_alpha_channel =
      nimm<decltype(heif_image_handle_has_alpha_channel)>("heif_image_handle_has_alpha_channel");
  decltype(&heif_image_handle_is_premultiplied_alpha) image_handle_is_premultiplied_alpha =
      nimm<decltype(heif_image_handle_is_premultiplied_alpha)>("heif_image_handle_is_premultiplied_alpha");
  decltype(&heif_decode_image) decode_image = nimm<decltype(heif_decode_image)>("heif_decode_image");
  decltype(&heif_image_release) image_release = nimm<decltype(heif_image_release)>("heif_image_release");
  decltype(&heif_image_get_plane_readonly) image_get_plane_readonly =
      nimm<decltype(heif_image_get_plane_readonly)>("heif_image_get_plane_readonly");
  decltype(&heif_image_get_width) image_get_width = nimm<decltype(heif_image_get_width)>("heif_image_get_width");
  decltype(&heif_image_get_height) image_get_height = nimm<decltype(heif_image_get_height)>("heif_image_get_height");
  decltype(&heif_image_handle_get_raw_color_profile_size) image_handle_get_raw_color_profile_size =
      nimm<decltype(heif_image_handle_get_raw_color_profile_size)>("heif_image_handle_get_raw_color_profile_size");
  decltype(&heif_image_handle_get_raw_color_profile) image_handle_get_raw_color_profile =
      nimm<decltype(heif_image_handle_get_raw_color_profile)>("heif_image_handle_get_raw_color_profile");
  decltype(&heif_image_handle_get_nclx_color_profile) image_handle_get_nclx_color_profile =
      nimm<decltype(heif_image_handle_get_nclx_color_profile)>("heif_image_handle_get_nclx_color_profile");
  decltype(&heif_nclx_color_profile_free) nclx_color_profile_free =
      nimm<decltype(heif_nclx_color_profile_free)>("heif_nclx_color_profile_free");
  decltype(&heif_image_handle_get_list_of_metadata_block_IDs) image_handle_get_list_of_metadata_block_IDs =
      nimm<decltype(heif_image_handle_get_list_of_metadata_block_IDs)>(
          "heif_image_handle_get_list_of_metadata_block_IDs");
  decltype(&heif_image_handle_get_metadata_size) image_handle_get_metadata_size =
      nimm<decltype(heif_image_handle_get_metadata_size)>("heif_image_handle_get_metadata_size");
  decltype(&heif_image_handle_get_metadata) image_handle_get_metadata =
      nimm<decltype(heif_image_handle_get_metadata)>("heif_image_handle_get_metadata");
};

const Heif& heif() {
  static const Heif Geladen;
  return Geladen;
}

Abbruch unlesbar(const QString& grund) {
  return {Ausgang::Datei, grund};
}

void pruefe(const heif_error& fehler) {
  if (fehler.code == heif_error_Ok) return;
  const bool ohne_Entpacker = fehler.code == heif_error_Unsupported_feature ||
      fehler.code == heif_error_Unsupported_filetype || fehler.code == heif_error_Plugin_loading_error;
  if (ohne_Entpacker) throw unlesbar(u"Diese Art von HEIC oder AVIF kann die Bibliothek hier nicht lesen."_s);
  if (fehler.code == heif_error_Memory_allocation_error) throw unlesbar(u"Der Speicher reicht nicht."_s);
  throw unlesbar(u"Das Bild (HEIC oder AVIF) ist beschädigt."_s);
}

template <class Ding, class Freigabe>
auto gehalten(Ding* ding, Freigabe freigabe) {
  return std::unique_ptr<Ding, Freigabe>(ding, freigabe);
}

/// By the profile, or by the primaries of Display P3, which phones name by number.
QColorSpace farbraum(const heif_image_handle* bild) {
  const Heif& h = heif();
  const std::size_t laenge = h.image_handle_get_raw_color_profile_size(bild);
  if (laenge > 0) {
    QByteArray profil(static_cast<qsizetype>(laenge), '\0');
    if (h.image_handle_get_raw_color_profile(bild, profil.data()).code == heif_error_Ok)
      return QColorSpace::fromIccProfile(profil);
  }
  heif_color_profile_nclx* roh = nullptr;
  const bool gelesen = h.image_handle_get_nclx_color_profile(bild, &roh).code == heif_error_Ok;
  const auto nclx = gehalten(roh, h.nclx_color_profile_free);
  if (!gelesen || !nclx) return {};
  const bool p3 = nclx->color_primaries == heif_color_primaries_SMPTE_EG_432_1;
  return p3 ? QColorSpace(QColorSpace::DisplayP3) : QColorSpace();
}

QImage pixel(const heif_image_handle* griff) {
  const Heif& h = heif();
  const bool durchsichtig = h.image_handle_has_alpha_channel(griff) != 0;
  heif_image* roh = nullptr;
  pruefe(h.decode_image(griff, &roh, heif_colorspace_RGB,
      durchsichtig ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, nullptr));
  const auto bild = gehalten(roh, h.image_release);
  int schritt = 0;
  const std::uint8_t* const zeilen = h.image_get_plane_readonly(bild.get(), heif_channel_interleaved, &schritt);
  if (!zeilen) throw unlesbar(u"Das Bild (HEIC oder AVIF) ist beschädigt."_s);
  auto format = QImage::Format_RGB888;
  if (durchsichtig) format = QImage::Format_RGBA8888;
  if (durchsichtig && h.image_handle_is_premultiplied_alpha(griff) != 0) format = QImage::Format_RGBA8888_Premultiplied;
  QImage kopie = QImage(zeilen, h.image_get_width(bild.get(), heif_channel_interleaved),
      h.image_get_height(bild.get(), heif_channel_interleaved), schritt, format)
                     .copy();
  if (kopie.isNull()) throw unlesbar(u"Der Speicher reicht nicht."_s);
  kopie.setColorSpace(farbraum(griff));
  return kopie;
}

/// Four bytes in front of the block tell where its TIFF header begins behind them.
QByteArray exif(const heif_image_handle* griff) {
  const Heif& h = heif();
  heif_item_id nummer = 0;
  if (h.image_handle_get_list_of_metadata_block_IDs(griff, "Exif", &nummer, 1) != 1) return {};
  QByteArray block(static_cast<qsizetype>(h.image_handle_get_metadata_size(griff, nummer)), '\0');
  if (block.size() < 4 || h.image_handle_get_metadata(griff, nummer, block.data()).code != heif_error_Ok) return {};
  return block.mid(4 + static_cast<qsizetype>(qFromBigEndian<quint32>(block.constData())));
}

}  // namespace

Bild lies(const QByteArray& bytes) {
  const Heif& h = heif();
  if (!h.da) throw unlesbar(u"HEIC- und AVIF-Bilder sind hier nicht zu lesen; es fehlt das Paket „libheif1“."_s);
  const auto zusammenhang = gehalten(h.context_alloc(), h.context_free);
  if (!zusammenhang) throw unlesbar(u"Der Speicher reicht nicht."_s);
  pruefe(h.context_read_from_memory_without_copy(
      zusammenhang.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()), nullptr));
  heif_image_handle* roh = nullptr;
  pruefe(h.context_get_primary_image_handle(zusammenhang.get(), &roh));
  const auto griff = gehalten(roh, h.image_handle_release);
  const qint64 breite = h.image_handle_get_width(griff.get());
  const qint64 hoehe = h.image_handle_get_height(griff.get());
  if (breite > Groesste_Seite || hoehe > Groesste_Seite || breite * hoehe > Groesste_Flaeche)
    throw unlesbar(u"Das Bild ist größer, als ein JPEG sein kann."_s);
  return {pixel(griff.get()), exif(griff.get())};
}

QString fassung() {
  return heif().da ? QString::fromLatin1(heif().get_version()) : QString();
}

}  // namespace heifleser
