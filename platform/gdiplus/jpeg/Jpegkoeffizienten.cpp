#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

#include <algorithm>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/gdiplus/Status.h"

namespace jpegkoeffizienten {

bool Blockspeicher::reserviere(std::size_t zeilen, std::size_t spalten) noexcept {
  // NOLINTBEGIN(cppcoreguidelines-no-malloc): only calloc hands out zeros that cost nothing
  bloecke_.reset(static_cast<JBLOCK*>(std::calloc(zeilen * spalten, sizeof(JBLOCK))));
  zeilen_.reset(static_cast<JBLOCKROW*>(std::calloc(zeilen, sizeof(JBLOCKROW))));
  // NOLINTEND(cppcoreguidelines-no-malloc)
  if (!bloecke_ || !zeilen_) return false;
  for (std::size_t i = 0; i < zeilen; ++i) zeilen_.get()[i] = bloecke_.get() + i * spalten;
  return true;
}

namespace {

// NOLINTBEGIN(cert-err52-cpp): libjpeg leaves by a jump
// The library's own coefficient arrays are zeroed by hand before they are filled. Here it gets arrays of ours instead:
// its memory manager is a table of functions, and the three for block arrays are replaced.
class Leser {
 public:
  Leser(QByteArrayView bytes, Inhalt& bild) : bytes_(bytes), bild_(bild) {
    cinfo_.err = jpegfehler::richte_ein(fehler_);
  }
  ~Leser() { jpeg_destroy_decompress(&cinfo_); }
  Q_DISABLE_COPY_MOVE(Leser)

  bool lies() {
    if (setjmp(fehler_.rueckkehr)) return false;
    jpeg_create_decompress(&cinfo_);
    cinfo_.client_data = this;
    verbinde();
    for (int i = 0; i < 16; ++i) jpeg_save_markers(&cinfo_, JPEG_APP0 + i, 0xffff);
    jpeg_save_markers(&cinfo_, JPEG_COM, 0xffff);
    if (jpeg_read_header(&cinfo_, TRUE) != JPEG_HEADER_OK) return false;
    if (!fehler::Weiter()([&] { bild_.komponenten.resize(static_cast<std::size_t>(cinfo_.num_components)); }))
      jpegfehler::brich_ab(reinterpret_cast<j_common_ptr>(&cinfo_), JERR_OUT_OF_MEMORY);
    return jpeg_read_coefficients(&cinfo_) != nullptr;
  }

  /// Everything but the coefficients, which are in place already.
  void entnimm() {
    bild_.groesse = {static_cast<int>(cinfo_.image_width), static_cast<int>(cinfo_.image_height)};
    bild_.raum = cinfo_.jpeg_color_space;
    bild_.waagrecht = cinfo_.max_h_samp_factor;
    bild_.senkrecht = cinfo_.max_v_samp_factor;
    bild_.progressiv = cinfo_.progressive_mode;
    bild_.arithmetisch = cinfo_.arith_code;
    bild_.neustart = cinfo_.restart_interval;
    for (std::size_t i = 0; i < bild_.komponenten.size(); ++i) entnimm(cinfo_.comp_info[i], bild_.komponenten[i]);
    for (auto* m = cinfo_.marker_list; m != nullptr; m = m->next)
      bild_.marken.push_back({m->marker, QByteArray(reinterpret_cast<const char*>(m->data), m->data_length)});
    if (!zu_Ende_) bild_.dahinter = bytes_.last(static_cast<qsizetype>(quelle_.bytes_in_buffer));
  }

  /// After a failure, as a gdiplus::Status.
  std::int32_t status() const noexcept { return jpegfehler::status(fehler_); }

 private:
  static Leser& von(void* cinfo) { return *static_cast<Leser*>(static_cast<j_common_ptr>(cinfo)->client_data); }

  void verbinde() {
    quelle_.next_input_byte = reinterpret_cast<const JOCTET*>(bytes_.data());
    quelle_.bytes_in_buffer = static_cast<std::size_t>(bytes_.size());
    quelle_.init_source = [](j_decompress_ptr) {};
    quelle_.term_source = [](j_decompress_ptr) {};
    quelle_.resync_to_restart = jpeg_resync_to_restart;
    // An end for ever behind the bytes of a truncated stream.
    quelle_.fill_input_buffer = [](j_decompress_ptr c) -> boolean {
      static constexpr JOCTET Ende[2] = {0xff, JPEG_EOI};
      von(c).zu_Ende_ = true;
      c->src->next_input_byte = Ende;
      c->src->bytes_in_buffer = sizeof Ende;
      return TRUE;
    };
    quelle_.skip_input_data = [](j_decompress_ptr c, long anzahl) {
      if (anzahl <= 0) return;
      const auto sprung = std::min(static_cast<std::size_t>(anzahl), c->src->bytes_in_buffer);
      c->src->next_input_byte += sprung;
      c->src->bytes_in_buffer -= sprung;
    };
    cinfo_.src = &quelle_;
    jpeg_memory_mgr& speicher = *cinfo_.mem;
    speicher.request_virt_barray = [](j_common_ptr c, int, boolean, JDIMENSION spalten, JDIMENSION zeilen, JDIMENSION) {
      return von(c).naechstes_Feld(zeilen, spalten);
    };
    speicher.realize_virt_arrays = [](j_common_ptr) {};
    speicher.access_virt_barray = [](j_common_ptr, jvirt_barray_ptr feld, JDIMENSION anfang, JDIMENSION, boolean) {
      return reinterpret_cast<Komponente*>(feld)->speicher.zeilen(anfang);
    };
    wache_.progress_monitor = [](j_common_ptr c) {
      if (von(c).cinfo_.input_scan_number > Hoechstens_Scans) jpegfehler::brich_ab(c, JERR_BAD_PROGRESSION);
    };
    cinfo_.progress = &wache_;
  }

  // The library asks once for each component, in their order.
  jvirt_barray_ptr naechstes_Feld(JDIMENSION zeilen, JDIMENSION spalten) {
    if (feld_ == bild_.komponenten.size() || !bild_.komponenten[feld_].speicher.reserviere(zeilen, spalten))
      jpegfehler::brich_ab(reinterpret_cast<j_common_ptr>(&cinfo_), JERR_OUT_OF_MEMORY);
    return reinterpret_cast<jvirt_barray_ptr>(&bild_.komponenten[feld_++]);
  }

  void entnimm(const jpeg_component_info& von, Komponente& nach) const {
    nach.kennung = von.component_id;
    nach.waagrecht = von.h_samp_factor;
    nach.senkrecht = von.v_samp_factor;
    nach.bloecke = {static_cast<int>(von.width_in_blocks), static_cast<int>(von.height_in_blocks)};
    nach.proben = {static_cast<int>(von.downsampled_width), static_cast<int>(von.downsampled_height)};
    nach.quantisierung.fill(1);
    // A component that no scan ever named has no tables; its coefficients are all 0.
    if (von.quant_table == nullptr) return;
    nach.tabelle = von.quant_tbl_no;
    std::copy_n(von.quant_table->quantval, DCTSIZE2, nach.quantisierung.begin());
    nimm_Tabelle(cinfo_.dc_huff_tbl_ptrs, von.dc_tbl_no, nach.gleichstrom);
    nimm_Tabelle(cinfo_.ac_huff_tbl_ptrs, von.ac_tbl_no, nach.wechselstrom);
  }

  // A scan may name any number for a table that it does not use.
  static void nimm_Tabelle(JHUFF_TBL* const (&tabellen)[NUM_HUFF_TBLS], int nummer, JHUFF_TBL& nach) {
    if (nummer >= 0 && nummer < NUM_HUFF_TBLS && tabellen[nummer] != nullptr) nach = *tabellen[nummer];
  }

  QByteArrayView bytes_;
  Inhalt& bild_;
  jpeg_decompress_struct cinfo_{};
  jpegfehler::Fehlerziel fehler_{};
  jpeg_source_mgr quelle_{};
  jpeg_progress_mgr wache_{};
  std::size_t feld_ = 0;
  bool zu_Ende_ = false;
};
// NOLINTEND(cert-err52-cpp)

}  // namespace

std::int32_t lies(QByteArrayView bytes, Inhalt& bild) {
  Leser leser(bytes, bild);
  if (!leser.lies()) return leser.status();
  leser.entnimm();
  return gdiplus::Ok;
}

}  // namespace jpegkoeffizienten
