#include <optional>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"

namespace {

// Decoders here know sequential and progressive frames, with Huffman or arithmetic coding, of 8 bits; neither lossless
// nor hierarchical ones, nor 12 bits.
bool ist_dekodierbar(const Jpegrahmen& r) noexcept {
  const bool art = r.marke == 0xc0 || r.marke == 0xc1 || r.marke == 0xc2 || r.marke == 0xc9 || r.marke == 0xca;
  return art && r.bits == 8 && r.anzahl != 2;
}

}  // namespace

Bildkopf bildkopf::jpeg(QByteArrayView bytes) {
  Jpegmarken marken(bytes);
  std::optional<Jpegrahmen> rahmen;
  while (const auto segment = marken.naechstes()) {
    if (segment->marke == Jpegmarken::SOS)  // the header is complete where the first scan begins
      return rahmen ? gelesen(Bildformat::Jpeg, rahmen->breite, rahmen->hoehe, 65500) : defekt(Bildformat::Jpeg);
    if (!ist_SOF(segment->marke)) continue;
    if (!rahmen) rahmen = lies_Rahmen(bytes, *segment);
    if (!rahmen || !ist_dekodierbar(*rahmen)) break;
  }
  return defekt(Bildformat::Jpeg);
}
