#include "platform/gdiplus/jpeg/Jpegdekoder.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/jpeg/Jpegfehler.h"

namespace jpegdekoder {
namespace {

// NOLINTBEGIN(cert-err52-cpp): libjpeg leaves by a jump
// Feeds the pieces one after the other and an EOI for ever behind them.
struct Quelle {
  jpeg_source_mgr verwaltung;
  std::span<const QByteArrayView> stuecke;
};

void nichts(j_decompress_ptr) {}

boolean fuelle_nach(j_decompress_ptr cinfo) {
  auto& [verwaltung, stuecke] = *reinterpret_cast<Quelle*>(cinfo->src);
  while (!stuecke.empty() && stuecke.front().isEmpty()) stuecke = stuecke.subspan(1);
  const QByteArrayView stueck = stuecke.empty() ? QByteArrayView("\xff\xd9") : stuecke.front();
  verwaltung.next_input_byte = reinterpret_cast<const JOCTET*>(stueck.data());
  verwaltung.bytes_in_buffer = static_cast<std::size_t>(stueck.size());
  if (!stuecke.empty()) stuecke = stuecke.subspan(1);
  return TRUE;
}

void ueberspringe(j_decompress_ptr cinfo, long anzahl) {
  if (anzahl <= 0) return;
  jpeg_source_mgr* const quelle = cinfo->src;
  auto rest = static_cast<std::size_t>(anzahl);
  while (rest > quelle->bytes_in_buffer) {
    rest -= quelle->bytes_in_buffer;
    fuelle_nach(cinfo);
  }
  quelle->next_input_byte += rest;
  quelle->bytes_in_buffer -= rest;
}

class Leser {
 public:
  explicit Leser(std::vector<QByteArrayView> stuecke) : stuecke_(std::move(stuecke)) {
    cinfo_.err = jpegfehler::richte_ein(fehler_);
  }
  ~Leser() { jpeg_destroy_decompress(&cinfo_); }
  Q_DISABLE_COPY_MOVE(Leser)

  bool kopf() {
    if (setjmp(fehler_.rueckkehr)) return false;
    jpeg_create_decompress(&cinfo_);
    cinfo_.src = &quelle_.verwaltung;
    return jpeg_read_header(&cinfo_, TRUE) == JPEG_HEADER_OK;
  }

  bool mehrere_Scans() { return jpeg_has_multiple_scans(&cinfo_) != 0; }
  QSize ganze_Groesse() const { return {static_cast<int>(cinfo_.image_width), static_cast<int>(cinfo_.image_height)}; }

  /// Fixes scale and colours, so that the size is known.
  bool richte_ein(int num, bool alle_Scans) {
    if (setjmp(fehler_.rueckkehr)) return false;
    cinfo_.scale_num = static_cast<unsigned>(num);
    cinfo_.scale_denom = 8;
    ist_Cmyk_ = cinfo_.num_components == 4;
    cinfo_.out_color_space = ist_Cmyk_ ? JCS_CMYK : (Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRX : JCS_EXT_XRGB);
    // Smoothing would take the scans that were left out on purpose for missing ones.
    if (!alle_Scans) cinfo_.do_block_smoothing = FALSE;
    jpeg_calc_output_dimensions(&cinfo_);
    return true;
  }
  QSize groesse() const { return {static_cast<int>(cinfo_.output_width), static_cast<int>(cinfo_.output_height)}; }

  /// Decodes into an image of `groesse()`. What a failure leaves out is black.
  void lies(QImage& bild) {
    lies_Zeilen(bild);
    zeile_gelesen_ = zeile_ > 0;
    for (; zeile_ < bild.height(); ++zeile_)
      std::fill_n(reinterpret_cast<QRgb*>(bild.scanLine(zeile_)), bild.width(), qRgb(0, 0, 0));
  }

  /// After `lies`: some row came through sound.
  bool gab_etwas_her() const { return zeile_gelesen_ && fehler_.defekte_Reihen < cinfo_.total_iMCU_rows; }
  bool Speicher_erschoepft() const { return jpegfehler::status(fehler_) == gdiplus::OutOfMemory; }

 private:
  void lies_Zeilen(QImage& bild) {
    anfang_ = bild.bits();
    zeilenlaenge_ = bild.bytesPerLine();
    if (ist_Cmyk_) cmyk_.resize(static_cast<std::size_t>(bild.width()) * 4);
    if (setjmp(fehler_.rueckkehr)) return;
    jpeg_start_decompress(&cinfo_);
    while (cinfo_.output_scanline < cinfo_.output_height) {
      lies_Stueck();
      zeile_ = static_cast<int>(cinfo_.output_scanline);
    }
  }

  void lies_Stueck() {
    JSAMPROW zeilen[8] = {};
    if (ist_Cmyk_) {
      zeilen[0] = cmyk_.data();
      if (jpeg_read_scanlines(&cinfo_, zeilen, 1) == 1)
        wandle_Cmyk(reinterpret_cast<QRgb*>(anfang_ + (cinfo_.output_scanline - 1) * zeilenlaenge_));
      return;
    }
    const unsigned anzahl = std::min(8U, cinfo_.output_height - cinfo_.output_scanline);
    for (unsigned i = 0; i < anzahl; ++i) zeilen[i] = anfang_ + (cinfo_.output_scanline + i) * zeilenlaenge_;
    jpeg_read_scanlines(&cinfo_, zeilen, anzahl);
  }

  // Programs that write the Adobe marker store the inks inverted (255 is no ink).
  void wandle_Cmyk(QRgb* ziel) const {
    const JSAMPLE* k = cmyk_.data();
    const int umkehr = cinfo_.saw_Adobe_marker ? 0 : 255;
    for (JDIMENSION x = 0; x < cinfo_.output_width; ++x, k += 4) {
      const auto farbe = [&](int i) { return ((k[i] ^ umkehr) * (k[3] ^ umkehr) + 127) / 255; };
      ziel[x] = qRgb(farbe(0), farbe(1), farbe(2));
    }
  }

  std::vector<QByteArrayView> stuecke_;
  jpeg_decompress_struct cinfo_{};
  jpegfehler::Fehlerziel fehler_{};
  Quelle quelle_{{nullptr, 0, nichts, fuelle_nach, ueberspringe, jpeg_resync_to_restart, nichts}, stuecke_};
  std::vector<JSAMPLE> cmyk_;
  uchar* anfang_ = nullptr;
  qsizetype zeilenlaenge_ = 0;
  int zeile_ = 0;
  bool zeile_gelesen_ = false;
  bool ist_Cmyk_ = false;
};

// NOLINTEND(cert-err52-cpp)

}  // namespace

bool ist_Kopf_lesbar(QByteArrayView bytes) {
  return Leser({bytes}).kopf();
}

QImage dekodiere(QByteArrayView bytes, QSize ziel) {
  auto leser = std::make_unique<Leser>(std::vector{bytes});
  if (!leser->kopf()) return {};
  const int num = massstab(leser->ganze_Groesse(), ziel);
  const bool mehrere = leser->mehrere_Scans();
  if (mehrere) {
    leser = std::make_unique<Leser>(noetige_Stuecke(bytes, ziel));
    if (!leser->kopf()) return {};
  }
  if (!leser->richte_ein(num, !mehrere || num == 8)) return {};
  QImage bild(leser->groesse(), QImage::Format_RGB32);
  if (bild.isNull()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  leser->lies(bild);
  if (leser->Speicher_erschoepft()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return leser->gab_etwas_her() ? bild : QImage();
}

}  // namespace jpegdekoder
