#include "tests/platform/gdiplus/jpeg/Drehbauer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace drehvorlagen {
namespace {

// Soft shades with an edge and some grain; each component its own.
JSAMPLE probe(int komponente, int x, int y) {
  const auto u = [](int zahl) { return static_cast<std::uint32_t>(zahl); };
  const std::uint32_t korn = (u(x) * 73856093U ^ u(y) * 19349663U ^ u(komponente) * 83492791U) * 2654435761U;
  const double wert = 128 + 60 * std::sin(x / (9.0 + komponente)) + 40 * std::cos(y / (7.0 + 2 * komponente)) +
      ((x / 11 + y / 13) % 4 == 0 ? 30 : 0) + static_cast<int>(korn >> 28) - 8;
  return static_cast<JSAMPLE>(std::clamp(wert, 0.0, 255.0));
}

void waehle_Scans(jpeg_compress_struct& c, const Machart& art, jpeg_scan_info (&scans)[4]) {
  int bloecke = 0;
  for (const Abtastung& a : art.abtastung) bloecke += a.waagrecht * a.senkrecht;
  if (art.progressiv) return jpeg_simple_progression(&c);
  if (art.abtastung.size() == 1 || bloecke <= C_MAX_BLOCKS_IN_MCU) return;
  for (int i = 0; i < c.num_components; ++i) scans[i] = {1, {i, 0, 0, 0}, 0, DCTSIZE2 - 1, 0, 0};
  c.scan_info = scans;
  c.num_scans = c.num_components;
}

void schreibe_Proben(jpeg_compress_struct& c) {
  const auto anzahl = static_cast<std::size_t>(c.num_components);
  const int hoechste = c.max_v_samp_factor * DCTSIZE;
  std::vector<std::vector<JSAMPLE>> ebenen(anzahl);
  std::vector<std::vector<JSAMPROW>> zeilen(anzahl);
  std::vector<JSAMPARRAY> alle(anzahl);
  while (c.next_scanline < c.image_height) {
    for (std::size_t i = 0; i < anzahl; ++i) {
      const jpeg_component_info& k = c.comp_info[i];
      const int hoehe = k.v_samp_factor * DCTSIZE;
      const int breite = static_cast<int>(k.width_in_blocks + 4) * DCTSIZE;
      const int oben = static_cast<int>(c.next_scanline) / hoechste * hoehe;
      ebenen[i].resize(static_cast<std::size_t>(hoehe) * static_cast<std::size_t>(breite));
      zeilen[i].resize(static_cast<std::size_t>(hoehe));
      for (int y = 0; y < hoehe; ++y) {
        JSAMPROW zeile = zeilen[i][static_cast<std::size_t>(y)] =
            ebenen[i].data() + static_cast<std::ptrdiff_t>(y) * breite;
        for (int x = 0; x < breite; ++x) zeile[x] = probe(static_cast<int>(i), x, oben + y);
      }
      alle[i] = zeilen[i].data();
    }
    jpeg_write_raw_data(&c, alle.data(), static_cast<JDIMENSION>(hoechste));
  }
}

}  // namespace

QByteArray jpeg(QSize groesse, const Machart& art) {
  jpeg_compress_struct c{};
  jpeg_error_mgr fehler{};
  c.err = jpeg_std_error(&fehler);
  jpeg_create_compress(&c);
  unsigned char* speicher = nullptr;
  unsigned long laenge = 0;
  jpeg_mem_dest(&c, &speicher, &laenge);
  c.image_width = static_cast<JDIMENSION>(groesse.width());
  c.image_height = static_cast<JDIMENSION>(groesse.height());
  c.input_components = static_cast<int>(art.abtastung.size());
  c.in_color_space = art.raum;
  jpeg_set_defaults(&c);
  jpeg_set_colorspace(&c, art.raum);
  jpeg_set_quality(&c, art.qualitaet, TRUE);
  for (std::size_t i = 0; i < art.abtastung.size(); ++i) {
    c.comp_info[i].h_samp_factor = art.abtastung[i].waagrecht;
    c.comp_info[i].v_samp_factor = art.abtastung[i].senkrecht;
  }
  if (!art.mit_Jfif) c.write_JFIF_header = FALSE;
  c.raw_data_in = TRUE;
  c.arith_code = art.arithmetisch ? TRUE : FALSE;
  c.optimize_coding = art.optimiert ? TRUE : FALSE;
  c.restart_interval = art.neustart;
  jpeg_scan_info scans[4] = {};
  waehle_Scans(c, art, scans);
  jpeg_start_compress(&c, TRUE);
  schreibe_Proben(c);
  jpeg_finish_compress(&c);
  jpeg_destroy_compress(&c);
  const QByteArray ergebnis(reinterpret_cast<const char*>(speicher), static_cast<qsizetype>(laenge));
  std::free(speicher);
  return ergebnis;
}

QByteArray segment(int marke, const QByteArray& inhalt) {
  QByteArray s("\xff");
  const auto laenge = static_cast<std::uint16_t>(inhalt.size() + 2);
  s.append(static_cast<char>(marke)).append(static_cast<char>(laenge >> 8)).append(static_cast<char>(laenge & 0xff));
  return s + inhalt;
}

QByteArray mit_Marken(const QByteArray& jpeg, const QList<QByteArray>& segmente, const QByteArray& dahinter) {
  return jpeg.first(2) + segmente.join() + jpeg.sliced(2) + dahinter;
}

}  // namespace drehvorlagen
