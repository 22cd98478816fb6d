#include "tests/platform/gdiplus/Drehvorlagen.h"

#include <gtest/gtest.h>

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdlib>

namespace drehvorlagen {
namespace {

struct Fehler {
  jpeg_error_mgr verwaltung;
  std::jmp_buf rueckkehr;
};

jpeg_error_mgr* still(Fehler& fehler) {
  jpeg_error_mgr* const e = jpeg_std_error(&fehler.verwaltung);
  e->error_exit = [](j_common_ptr c) { std::longjmp(reinterpret_cast<Fehler*>(c->err)->rueckkehr, 1); };
  e->output_message = [](j_common_ptr) {};
  e->emit_message = [](j_common_ptr, int) {};
  return e;
}

// Soft shades with an edge and some grain; each component its own.
JSAMPLE probe(int komponente, int x, int y) {
  const std::uint32_t korn = (static_cast<std::uint32_t>(x * 73856093) ^ static_cast<std::uint32_t>(y * 19349663) ^
                              static_cast<std::uint32_t>(komponente * 83492791)) *
                             2654435761U;
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
      ebenen[i].resize(static_cast<std::size_t>(hoehe * breite));
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

bool operator==(const Komponente& a, const Komponente& b) {
  return a.kennung == b.kennung && a.abtastung.waagrecht == b.abtastung.waagrecht &&
         a.abtastung.senkrecht == b.abtastung.senkrecht && a.breite == b.breite && a.hoehe == b.hoehe &&
         a.tabelle == b.tabelle && a.bloecke == b.bloecke;
}

namespace {

Komponente komponente(jpeg_decompress_struct& d, int nummer, jvirt_barray_ptr feld) {
  const jpeg_component_info& c = d.comp_info[nummer];
  Komponente k{c.component_id,
               {c.h_samp_factor, c.v_samp_factor},
               static_cast<int>(c.width_in_blocks),
               static_cast<int>(c.height_in_blocks),
               {},
               {}};
  if (c.quant_table != nullptr) std::copy_n(c.quant_table->quantval, DCTSIZE2, k.tabelle.begin());
  for (JDIMENSION y = 0; y < c.height_in_blocks; ++y) {
    JBLOCKARRAY zeile = d.mem->access_virt_barray(reinterpret_cast<j_common_ptr>(&d), feld, y, 1, FALSE);
    for (JDIMENSION x = 0; x < c.width_in_blocks; ++x) {
      Block b;
      std::copy_n(zeile[0][x], DCTSIZE2, b.begin());
      k.bloecke.push_back(b);
    }
  }
  return k;
}

struct Leser {
  jpeg_decompress_struct d{};
  Fehler fehler{};
  jvirt_barray_ptr* felder = nullptr;
  ~Leser() { jpeg_destroy_decompress(&d); }

  bool lies(const QByteArray& jpeg) {
    d.err = still(fehler);
    if (setjmp(fehler.rueckkehr)) return false;
    jpeg_create_decompress(&d);
    jpeg_mem_src(&d, reinterpret_cast<const unsigned char*>(jpeg.constData()), static_cast<unsigned long>(jpeg.size()));
    for (int i = 0; i < 16; ++i) jpeg_save_markers(&d, JPEG_APP0 + i, 0xffff);
    jpeg_save_markers(&d, JPEG_COM, 0xffff);
    jpeg_read_header(&d, TRUE);
    felder = jpeg_read_coefficients(&d);
    return felder != nullptr;
  }
};

}  // namespace

bool ist_lesbar(const QByteArray& jpeg) {
  return Leser().lies(jpeg);
}

Inhalt lies(const QByteArray& jpeg) {
  Leser leser;
  if (!leser.lies(jpeg)) {
    ADD_FAILURE() << "libjpeg can't read the file";
    return {};
  }
  jpeg_decompress_struct& d = leser.d;
  Inhalt inhalt;
  inhalt.groesse = {static_cast<int>(d.image_width), static_cast<int>(d.image_height)};
  inhalt.raum = d.jpeg_color_space;
  inhalt.progressiv = d.progressive_mode;
  inhalt.arithmetisch = d.arith_code;
  inhalt.neustart = d.restart_interval;
  for (int i = 0; i < d.num_components; ++i) inhalt.komponenten.push_back(komponente(d, i, leser.felder[i]));
  for (auto* m = d.marker_list; m != nullptr; m = m->next)
    inhalt.marken.append(QByteArray(1, static_cast<char>(m->marker))
                             .append(reinterpret_cast<const char*>(m->data), static_cast<qsizetype>(m->data_length)));
  inhalt.ende = jpeg.size() - static_cast<qsizetype>(d.src->bytes_in_buffer);
  return inhalt;
}

// A turn clockwise by 90 degrees brings the sample at (x, y) of a picture of height h to (h - 1 - y, x), and so on. In
// the frequencies exchanging the axes exchanges the indices, and mirroring an axis changes the sign of its odd ones.
Komponente gedreht(const Komponente& k, int transform) {
  const bool tausche = transform == 13 || transform == 15;
  const bool x_rueckwaerts = transform == 13 || transform == 14 || transform == 16;
  const bool y_rueckwaerts = transform == 14 || transform == 15 || transform == 17;
  Komponente neu = k;
  if (tausche) {
    std::swap(neu.breite, neu.hoehe);
    std::swap(neu.abtastung.waagrecht, neu.abtastung.senkrecht);
  }
  const auto n = [](int zahl) { return static_cast<std::size_t>(zahl); };
  for (int i = 0; i < DCTSIZE2; ++i) neu.tabelle[n(i)] = k.tabelle[n(tausche ? i % 8 * 8 + i / 8 : i)];
  for (int y = 0; y < neu.hoehe; ++y)
    for (int x = 0; x < neu.breite; ++x) {
      const int a = x_rueckwaerts ? neu.breite - 1 - x : x;
      const int b = y_rueckwaerts ? neu.hoehe - 1 - y : y;
      const Block& alt = k.bloecke[n(tausche ? a * k.breite + b : b * k.breite + a)];
      Block& ziel = neu.bloecke[n(y * neu.breite + x)];
      for (int v = 0; v < 8; ++v)
        for (int u = 0; u < 8; ++u) {
          const int wert = alt[n(tausche ? u * 8 + v : v * 8 + u)];
          const bool minus = (x_rueckwaerts && u % 2 == 1) != (y_rueckwaerts && v % 2 == 1);
          ziel[n(v * 8 + u)] = static_cast<JCOEF>(minus ? -wert : wert);
        }
    }
  return neu;
}

bool bleibt_ganz(const Inhalt& inhalt, const Komponente& k, int transform) {
  int waagrecht = 1;
  int senkrecht = 1;
  for (const Komponente& alle : inhalt.komponenten) {
    waagrecht = std::max(waagrecht, alle.abtastung.waagrecht);
    senkrecht = std::max(senkrecht, alle.abtastung.senkrecht);
  }
  const bool x = inhalt.groesse.width() * k.abtastung.waagrecht % (8 * waagrecht) == 0;
  const bool y = inhalt.groesse.height() * k.abtastung.senkrecht % (8 * senkrecht) == 0;
  switch (transform) {
    case 13:
    case 17:
      return y;
    case 15:
    case 16:
      return x;
    default:
      return x && y;
  }
}

}  // namespace drehvorlagen
