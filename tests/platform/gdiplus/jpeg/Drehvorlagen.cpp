#include "tests/platform/gdiplus/jpeg/Drehvorlagen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csetjmp>

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

}  // namespace

bool operator==(const Komponente& a, const Komponente& b) {
  return a.kennung == b.kennung && a.abtastung.waagrecht == b.abtastung.waagrecht &&
      a.abtastung.senkrecht == b.abtastung.senkrecht && a.breite == b.breite && a.hoehe == b.hoehe &&
      a.tabelle == b.tabelle && a.bloecke == b.bloecke;
}

namespace {

Komponente komponente(jpeg_decompress_struct& d, int nummer, jvirt_barray_ptr feld) {
  const jpeg_component_info& c = d.comp_info[nummer];
  Komponente k{c.component_id, {c.h_samp_factor, c.v_samp_factor}, static_cast<int>(c.width_in_blocks),
      static_cast<int>(c.height_in_blocks), {}, {}};
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
