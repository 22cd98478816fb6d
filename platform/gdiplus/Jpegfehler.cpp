#include "platform/gdiplus/Jpegfehler.h"

namespace jpegfehler {
namespace {

[[noreturn]] void springe(j_common_ptr cinfo) {
  // NOLINTNEXTLINE(cert-err52-cpp)
  std::longjmp(reinterpret_cast<Fehlerziel*>(cinfo->err)->rueckkehr, 1);
}
void zaehle_Warnung(j_common_ptr cinfo, int stufe) {
  if (stufe < 0) ++cinfo->err->num_warnings;
}
void schweige(j_common_ptr) {}

}  // namespace

jpeg_error_mgr* richte_ein(Fehlerziel& ziel) noexcept {
  jpeg_error_mgr* const verwaltung = jpeg_std_error(&ziel.verwaltung);
  verwaltung->error_exit = springe;
  verwaltung->emit_message = zaehle_Warnung;
  verwaltung->output_message = schweige;
  return verwaltung;
}

bool Speicher_erschoepft(const Fehlerziel& ziel) noexcept {
  const int art = ziel.verwaltung.msg_code;
  return art == JERR_OUT_OF_MEMORY || art == JERR_NO_BACKING_STORE;
}

void brich_ab(j_common_ptr cinfo, int art) {
  cinfo->err->msg_code = art;
  springe(cinfo);
}

}  // namespace jpegfehler
