#include "platform/gdiplus/jpeg/Jpegfehler.h"

#include <algorithm>

#include "platform/gdiplus/Status.h"

namespace jpegfehler {
namespace {

[[noreturn]] void springe(j_common_ptr cinfo) {
  // NOLINTNEXTLINE(cert-err52-cpp)
  std::longjmp(reinterpret_cast<Fehlerziel*>(cinfo->err)->rueckkehr, 1);
}

bool ist_Schaden(int art) noexcept {
  return art == JWRN_HIT_MARKER || art == JWRN_HUFF_BAD_CODE || art == JWRN_MUST_RESYNC;
}

// Later scans only refine the first.
void merke_Schaden(const jpeg_decompress_struct& cinfo, Fehlerziel& ziel) {
  const unsigned reihe = cinfo.input_iMCU_row;
  if (cinfo.input_scan_number != 1 || reihe < ziel.naechste_Reihe) return;
  // Where the data end, or nothing marks a place to begin again, the rest is missing.
  const bool Ende =
      ziel.verwaltung.msg_code == JWRN_HIT_MARKER && (cinfo.restart_interval == 0 || cinfo.unread_marker == JPEG_EOI);
  const unsigned naechste = Ende ? std::max(reihe + 1, cinfo.total_iMCU_rows) : reihe + 1;
  ziel.defekte_Reihen += naechste - reihe;
  ziel.naechste_Reihe = naechste;
}

void zaehle_Warnung(j_common_ptr cinfo, int stufe) {
  if (stufe >= 0) return;
  ++cinfo->err->num_warnings;
  if (cinfo->is_decompressor && ist_Schaden(cinfo->err->msg_code))
    merke_Schaden(*reinterpret_cast<j_decompress_ptr>(cinfo), *reinterpret_cast<Fehlerziel*>(cinfo->err));
}

}  // namespace

jpeg_error_mgr* richte_ein(Fehlerziel& ziel) noexcept {
  jpeg_error_mgr* const verwaltung = jpeg_std_error(&ziel.verwaltung);
  verwaltung->error_exit = springe;
  verwaltung->emit_message = zaehle_Warnung;
  verwaltung->output_message = [](j_common_ptr) {};
  return verwaltung;
}

std::int32_t status(const Fehlerziel& ziel) noexcept {
  const int art = ziel.verwaltung.msg_code;
  return art == JERR_OUT_OF_MEMORY || art == JERR_NO_BACKING_STORE ? gdiplus::OutOfMemory : gdiplus::GenericError;
}

void brich_ab(j_common_ptr cinfo, int art) {
  cinfo->err->msg_code = art;
  springe(cinfo);
}

}  // namespace jpegfehler
