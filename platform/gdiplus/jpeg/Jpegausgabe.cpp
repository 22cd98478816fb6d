#include "platform/gdiplus/jpeg/Jpegausgabe.h"

#include <QtEndian>
#include <algorithm>
#include <numeric>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/gdiplus/Status.h"

namespace jpegausgabe {
namespace {

// NOLINTBEGIN(cert-err52-cpp): libjpeg leaves by a jump
class Schreiber {
 public:
  explicit Schreiber(qsizetype geschaetzt) : bytes_(std::max<qsizetype>(geschaetzt, 1 << 16), Qt::Uninitialized) {
    cinfo_.err = jpegfehler::richte_ein(fehler_);
  }
  ~Schreiber() { jpeg_destroy_compress(&cinfo_); }
  Q_DISABLE_COPY_MOVE(Schreiber)

  bool schreibe(const Auftrag& auftrag) {
    if (setjmp(fehler_.rueckkehr)) return false;
    beginne(auftrag.groesse, static_cast<int>(auftrag.komponenten.size()), auftrag.raum);
    richte_ein(auftrag);
    cinfo_.mem->realize_virt_arrays = [](j_common_ptr) {};
    cinfo_.mem->access_virt_barray = [](j_common_ptr, jvirt_barray_ptr feld, JDIMENSION anfang, JDIMENSION, boolean) {
      return reinterpret_cast<blockdrehung::Zeilen*>(feld)->zeilen(anfang);
    };
    for (std::size_t i = 0; i < auftrag.komponenten.size(); ++i)
      felder_[i] = reinterpret_cast<jvirt_barray_ptr>(auftrag.komponenten[i].zeilen.get());
    jpeg_write_coefficients(&cinfo_, felder_);
    for (const jpegkoeffizienten::Marke& m : *auftrag.marken)
      jpeg_write_marker(&cinfo_, m.art, reinterpret_cast<const JOCTET*>(m.inhalt.constData()),
          static_cast<unsigned>(m.inhalt.size()));
    jpeg_finish_compress(&cinfo_);
    return true;
  }

  bool kodiere(const QImage& bild) {
    if (setjmp(fehler_.rueckkehr)) return false;
    beginne(bild.size(), 4, Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRX : JCS_EXT_XRGB);
    jpeg_start_compress(&cinfo_, TRUE);
    while (cinfo_.next_scanline < cinfo_.image_height) {
      auto* zeile = const_cast<JSAMPLE*>(bild.constScanLine(static_cast<int>(cinfo_.next_scanline)));
      jpeg_write_scanlines(&cinfo_, &zeile, 1);
    }
    jpeg_finish_compress(&cinfo_);
    return true;
  }

  /// Hands out the stream that was written, and what goes behind it. The result is a gdiplus::Status.
  std::int32_t entnimm(bool gelungen, QByteArrayView dahinter, QByteArray& strom) {
    if (!gelungen) return jpegfehler::status(fehler_);
    bytes_.truncate(bytes_.size() - static_cast<qsizetype>(ziel_.free_in_buffer));
    strom = std::move(bytes_.append(dahinter));
    return gdiplus::Ok;
  }

 private:
  void beginne(QSize groesse, int komponenten, J_COLOR_SPACE raum) {
    jpeg_create_compress(&cinfo_);
    cinfo_.client_data = this;
    ziel_.init_destination = [](j_compress_ptr c) { von(c).zeige_auf(0); };
    ziel_.empty_output_buffer = [](j_compress_ptr c) { return von(c).vergroessere(); };
    ziel_.term_destination = [](j_compress_ptr) {};
    cinfo_.dest = &ziel_;
    cinfo_.image_width = static_cast<JDIMENSION>(groesse.width());
    cinfo_.image_height = static_cast<JDIMENSION>(groesse.height());
    cinfo_.input_components = komponenten;
    cinfo_.in_color_space = raum;
    jpeg_set_defaults(&cinfo_);
  }
  static Schreiber& von(j_compress_ptr cinfo) { return *static_cast<Schreiber*>(cinfo->client_data); }

  void zeige_auf(qsizetype stelle) {
    ziel_.next_output_byte = reinterpret_cast<JOCTET*>(bytes_.data()) + stelle;
    ziel_.free_in_buffer = static_cast<std::size_t>(bytes_.size() - stelle);
  }

  boolean vergroessere() {
    const qsizetype voll = bytes_.size();
    if (!fehler::Weiter()([&] { bytes_.resize(2 * voll); }))
      jpegfehler::brich_ab(reinterpret_cast<j_common_ptr>(&cinfo_), JERR_OUT_OF_MEMORY);
    zeige_auf(voll);
    return TRUE;
  }

  void richte_ein(const Auftrag& auftrag) {
    jpeg_set_colorspace(&cinfo_, auftrag.raum);
    cinfo_.write_JFIF_header = FALSE;
    cinfo_.write_Adobe_marker = FALSE;
    cinfo_.restart_interval = auftrag.neustart;
    for (std::size_t i = 0; i < auftrag.komponenten.size(); ++i)
      richte_ein(cinfo_.comp_info[i], auftrag.komponenten[i]);
    cinfo_.optimize_coding = auftrag.optimiert || !hat_Normtabellen(auftrag);
    waehle_Scans(auftrag);
  }

  void richte_ein(jpeg_component_info& nach, const Komponente& von) {
    nach.component_id = von.kennung;
    nach.h_samp_factor = von.waagrecht;
    nach.v_samp_factor = von.senkrecht;
    nach.quant_tbl_no = von.tabelle;
    JQUANT_TBL*& tabelle = cinfo_.quant_tbl_ptrs[von.tabelle];
    if (tabelle == nullptr) tabelle = jpeg_alloc_quant_table(reinterpret_cast<j_common_ptr>(&cinfo_));
    std::copy(von.quantisierung.begin(), von.quantisierung.end(), tabelle->quantval);
  }

  static bool gleich(const JHUFF_TBL* norm, const JHUFF_TBL* quelle) {
    const int anzahl = std::accumulate(std::begin(norm->bits) + 1, std::end(norm->bits), 0);
    return std::equal(std::begin(norm->bits) + 1, std::end(norm->bits), quelle->bits + 1) &&
        std::equal(norm->huffval, norm->huffval + anzahl, quelle->huffval);
  }

  bool hat_Normtabellen(const Auftrag& auftrag) const {
    for (std::size_t i = 0; i < auftrag.komponenten.size(); ++i) {
      const jpeg_component_info& c = cinfo_.comp_info[i];
      const Komponente& k = auftrag.komponenten[i];
      if (!gleich(cinfo_.dc_huff_tbl_ptrs[c.dc_tbl_no], k.gleichstrom)) return false;
      if (!gleich(cinfo_.ac_huff_tbl_ptrs[c.ac_tbl_no], k.wechselstrom)) return false;
    }
    return true;
  }

  // More than ten blocks don't go into one MCU (ITU T.81 B.2.3); each component then has a scan of its own.
  void waehle_Scans(const Auftrag& auftrag) {
    int bloecke = 0;
    for (const Komponente& k : auftrag.komponenten) bloecke += k.waagrecht * k.senkrecht;
    if (auftrag.komponenten.size() == 1 || bloecke <= C_MAX_BLOCKS_IN_MCU) {
      if (auftrag.progressiv) jpeg_simple_progression(&cinfo_);
      return;
    }
    for (int i = 0; i < cinfo_.num_components; ++i) scans_[i] = {1, {i, 0, 0, 0}, 0, DCTSIZE2 - 1, 0, 0};
    cinfo_.scan_info = scans_;
    cinfo_.num_scans = cinfo_.num_components;
  }

  QByteArray bytes_;
  jpeg_compress_struct cinfo_{};
  jpegfehler::Fehlerziel fehler_{};
  jpeg_destination_mgr ziel_{};
  jvirt_barray_ptr felder_[MAX_COMPONENTS] = {};
  jpeg_scan_info scans_[4] = {};
};
// NOLINTEND(cert-err52-cpp)

}  // namespace

std::int32_t schreibe(const Auftrag& auftrag, QByteArray& bytes) {
  Schreiber schreiber(auftrag.geschaetzt + auftrag.dahinter.size());
  return schreiber.entnimm(schreiber.schreibe(auftrag), auftrag.dahinter, bytes);
}

bool fasst(QSize groesse) noexcept {
  return std::max(groesse.width(), groesse.height()) <= static_cast<int>(JPEG_MAX_DIMENSION);
}

std::int32_t kodiere(const QImage& bild, QByteArray& bytes) {
  Schreiber schreiber(bild.sizeInBytes() / 16);
  return schreiber.entnimm(schreiber.kodiere(bild), {}, bytes);
}

}  // namespace jpegausgabe
