#include "platform/gdiplus/jpeg/Exifmarke.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include "platform/basic/Bytesicht.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"

namespace exifmarke {
namespace {

constexpr std::uint8_t App1 = 0xe1;
constexpr QByteArrayView Exif("Exif\0\0", 6);
constexpr QByteArrayView Xmp("http://ns.adobe.com/xap/1.0/\0", 29);
constexpr qsizetype Groesstes_Segment = 0xffff + 2;  ///< with marker and length

enum Tag : std::uint16_t {
  Ausrichtung = 274,
  Vorschau_Ort = 513,
  Vorschau_Laenge = 514,
  Exif_Verzeichnis = 34665,
  Breite = 40962,
  Hoehe = 40963
};
enum Typ : std::uint16_t { Short = 3, Long = 4 };

/// A number in a directory: where its bytes stand in the file, and how many there are.
struct Zahl {
  qsizetype ort = 0;
  unsigned breite = 0;
};

/// One directory: its entries, and where the position of the next one stands; 0 where it is not in the block.
struct Verzeichnis {
  std::vector<std::pair<std::uint16_t, Zahl>> zahlen;
  qsizetype naechstes = 0;

  std::optional<Zahl> zahl(std::uint16_t tag) const {
    for (const auto& [name, wert] : zahlen)
      if (name == tag) return wert;
    return std::nullopt;
  }
};

/// The TIFF structure of one Exif block, read and changed in the bytes of the whole JPEG.
class Block {
 public:
  Block(QByteArray& jpeg, const Jpegmarken::Segment& segment)
      : jpeg_(jpeg), segment_(segment), anfang_(segment.inhalt + Exif.size()) {
    gross_ = sicht().beginnt("MM", anfang_);
  }

  bool lesbar() const {
    const bool folge = gross_ || sicht().beginnt("II", anfang_);
    return folge && hat(0, 8) && zahl({anfang_ + 2, 2}) == 42;
  }
  Verzeichnis haupt() const { return verzeichnis(zahl({anfang_ + 4, 4})); }
  /// The directory that a pointer names; an empty one where it leads out of the block.
  Verzeichnis verzeichnis(std::uint32_t stelle) const {
    Verzeichnis neu;
    if (!hat(stelle, 2)) return neu;
    const qsizetype ort = anfang_ + stelle;
    const std::uint32_t anzahl = zahl({ort, 2});
    if (!hat(stelle, 2 + 12 * std::uint64_t{anzahl})) return neu;
    for (qsizetype i = 0; i < anzahl; ++i) {
      const qsizetype feld = ort + 2 + 12 * i;
      const std::uint32_t typ = zahl({feld + 2, 2});
      if ((typ != Short && typ != Long) || zahl({feld + 4, 4}) != 1) continue;
      neu.zahlen.emplace_back(zahl({feld, 2}), Zahl{feld + 8, typ == Short ? 2U : 4U});
    }
    if (hat(stelle, 2 + 12 * std::uint64_t{anzahl} + 4)) neu.naechstes = ort + 2 + 12 * anzahl;
    return neu;
  }
  Verzeichnis exif() const {
    const auto zeiger = haupt().zahl(Exif_Verzeichnis);
    return zeiger ? verzeichnis(zahl(*zeiger)) : Verzeichnis();
  }
  /// That of the thumbnail.
  Verzeichnis vorschau() const {
    const qsizetype zeiger = haupt().naechstes;
    const std::uint32_t stelle = zeiger > 0 ? zahl({zeiger, 4}) : 0;
    return stelle > 0 ? verzeichnis(stelle) : Verzeichnis();
  }

  std::uint32_t zahl(Zahl z) const {
    return static_cast<std::uint32_t>(sicht().zahl(static_cast<std::uint64_t>(z.ort), z.breite, gross_));
  }
  void setze(Zahl z, std::uint32_t wert) {
    for (unsigned i = 0; i < z.breite; ++i)
      jpeg_[z.ort + i] = static_cast<char>(wert >> 8 * (gross_ ? z.breite - 1 - i : i));
  }

  /// So many bytes from a position of the block on lie in it.
  bool hat(std::uint64_t stelle, std::uint64_t anzahl) const {
    const auto alle = static_cast<std::uint64_t>(std::max<qsizetype>(0, segment_.ende - anfang_));
    return stelle <= alle && anzahl <= alle - stelle;
  }
  QByteArray bytes(std::uint32_t stelle, std::uint32_t anzahl) const { return jpeg_.mid(anfang_ + stelle, anzahl); }
  void schreibe(std::uint32_t stelle, const QByteArray& bytes) { jpeg_.replace(anfang_ + stelle, bytes.size(), bytes); }
  /// Appends bytes to the segment and gives their position in the block, or none where the segment has no room.
  std::optional<std::uint32_t> haenge_an(const QByteArray& bytes) {
    const qsizetype laenge = segment_.ende - segment_.anfang + bytes.size();
    if (laenge > Groesstes_Segment || segment_.inhalt - segment_.anfang != 4) return std::nullopt;
    const auto stelle = static_cast<std::uint32_t>(segment_.ende - anfang_);
    jpeg_.insert(segment_.ende, bytes);
    segment_.ende += bytes.size();
    jpeg_[segment_.anfang + 2] = static_cast<char>((laenge - 2) >> 8);
    jpeg_[segment_.anfang + 3] = static_cast<char>(laenge - 2);
    return stelle;
  }

 private:
  Bytesicht sicht() const { return Bytesicht(jpeg_); }

  QByteArray& jpeg_;
  Jpegmarken::Segment segment_;
  qsizetype anfang_;
  bool gross_ = false;
};

std::vector<Jpegmarken::Segment> segmente(QByteArrayView jpeg, QByteArrayView kennung) {
  std::vector<Jpegmarken::Segment> liste;
  Jpegmarken marken(jpeg);
  for (auto s = marken.naechstes(); s && s->marke != Jpegmarken::SOS; s = marken.naechstes())
    if (s->marke == App1 && Bytesicht(jpeg).beginnt(kennung, s->inhalt) && s->ende - s->inhalt >= kennung.size())
      liste.push_back(*s);
  return liste;
}

/// From the last one on, so that what grows moves none that is still to come.
void fuer_jeden_Block(QByteArray& jpeg, const std::function<void(Block&)>& tun) {
  std::vector<Jpegmarken::Segment> alle = segmente(jpeg, Exif);
  std::reverse(alle.begin(), alle.end());
  for (const Jpegmarken::Segment& segment : alle) {
    Block block(jpeg, segment);
    if (block.lesbar()) tun(block);
  }
}

/// The first block's answer that is one.
template <class Frage>
auto frage_Bloecke(QByteArrayView jpeg, Frage&& frage) -> decltype(frage(std::declval<const Block&>())) {
  for (const Jpegmarken::Segment& s : segmente(jpeg, Exif)) {
    // Only read, so nothing is copied.
    QByteArray bytes = QByteArray::fromRawData(jpeg.data(), jpeg.size());
    const Block block(bytes, s);
    if (!block.lesbar()) continue;
    if (auto antwort = frage(block)) return antwort;
  }
  return {};
}

/// Attribute or element, as programs write it.
void setze_in_Xmp(QByteArray& jpeg, const Jpegmarken::Segment& segment) {
  for (const QByteArrayView davor : {"tiff:Orientation=\"", "tiff:Orientation='", "<tiff:Orientation>"}) {
    const qsizetype ort = QByteArrayView(jpeg).first(segment.ende).indexOf(davor, segment.inhalt);
    if (ort < 0) continue;
    const qsizetype ziffer = ort + davor.size();
    if (ziffer + 1 >= segment.ende || jpeg[ziffer] < '2' || jpeg[ziffer] > '8') continue;
    const char danach = jpeg[ziffer + 1];
    if (danach == '"' || danach == '\'' || danach == '<') jpeg[ziffer] = '1';
  }
}

/// The thumbnail turned, or nothing where that can't be.
QByteArray gedreht(QByteArray vorschau, const Drehung& drehung) {
  const bildbefund::Befund befund = bildbefund::urteile(vorschau);
  QByteArray neu;
  if (befund.status != gdiplus::Ok || befund.kopf.format != Bildformat::Jpeg) return {};
  return jpegdrehung::drehe(vorschau, drehung, neu) == gdiplus::Ok ? neu : QByteArray();
}

bool drehe_Vorschau(Block& block, const Verzeichnis& verzeichnis, const Drehung& drehung) {
  const auto ort = verzeichnis.zahl(Vorschau_Ort);
  const auto laenge = verzeichnis.zahl(Vorschau_Laenge);
  if (!ort || !laenge || ort->breite != 4 || laenge->breite != 4) return false;
  const std::uint32_t stelle = block.zahl(*ort);
  const std::uint32_t bisher = block.zahl(*laenge);
  if (!block.hat(stelle, bisher)) return false;
  const QByteArray neu = gedreht(block.bytes(stelle, bisher), drehung);
  if (neu.isEmpty()) return false;
  if (neu.size() <= static_cast<qsizetype>(bisher)) {
    block.schreibe(stelle, neu);
  } else {
    const auto dahinter = block.haenge_an(neu);
    if (!dahinter) return false;
    block.setze(*ort, *dahinter);
  }
  block.setze(*laenge, static_cast<std::uint32_t>(neu.size()));
  return true;
}

}  // namespace

int lies(QByteArrayView jpeg) {
  const auto marke = frage_Bloecke(jpeg, [](const Block& block) -> std::optional<int> {
    const auto zahl = block.haupt().zahl(Ausrichtung);
    return zahl ? std::optional(static_cast<int>(block.zahl(*zahl))) : std::nullopt;
  });
  return marke && *marke >= 1 && *marke <= 8 ? *marke : 1;
}

std::optional<Drehung> drehung(int marke) {
  using namespace gdiplus;
  switch (marke) {
    case 2:
      return Drehung::von(Waagerecht);
    case 3:
      return Drehung::von(Um180);
    case 4:
      return Drehung::von(Senkrecht);
    // The two mirrorings at a diagonal are no kinds of turning of GDI+'s.
    case 5:
      return Drehung{{}, {}, true, false, false};
    case 6:
      return Drehung::von(Um90);
    case 7:
      return Drehung{{}, {}, true, true, true};
    case 8:
      return Drehung::von(Um270);
    default:
      return std::nullopt;
  }
}

QSize notierte_Groesse(QByteArrayView jpeg) {
  const auto groesse = frage_Bloecke(jpeg, [](const Block& block) -> std::optional<QSize> {
    const Verzeichnis exif = block.exif();
    const auto breite = exif.zahl(Breite);
    const auto hoehe = exif.zahl(Hoehe);
    if (!breite || !hoehe) return std::nullopt;
    return QSize(static_cast<int>(block.zahl(*breite)), static_cast<int>(block.zahl(*hoehe)));
  });
  return groesse && !groesse->isEmpty() ? *groesse : QSize();
}

void setze_aufrecht(QByteArray& jpeg) {
  fuer_jeden_Block(jpeg, [](Block& block) {
    for (const Verzeichnis& verzeichnis : {block.haupt(), block.vorschau()})
      for (const auto& [tag, zahl] : verzeichnis.zahlen)
        if (tag == Ausrichtung) block.setze(zahl, 1);
  });
  for (const Jpegmarken::Segment& segment : segmente(jpeg, Xmp)) setze_in_Xmp(jpeg, segment);
}

void drehe_Vorschau(QByteArray& jpeg, const Drehung& drehung) {
  fuer_jeden_Block(jpeg, [&](Block& block) {
    const qsizetype zeiger = block.haupt().naechstes;
    if (zeiger == 0 || block.zahl({zeiger, 4}) == 0) return;
    if (!drehe_Vorschau(block, block.vorschau(), drehung)) block.setze({zeiger, 4}, 0);
  });
}

void tausche_notierte_Groesse(QByteArray& jpeg) {
  fuer_jeden_Block(jpeg, [](Block& block) {
    const Verzeichnis exif = block.exif();
    const auto breite = exif.zahl(Breite);
    const auto hoehe = exif.zahl(Hoehe);
    if (!breite || !hoehe || breite->breite != hoehe->breite) return;
    const std::uint32_t alte_Breite = block.zahl(*breite);
    block.setze(*breite, block.zahl(*hoehe));
    block.setze(*hoehe, alte_Breite);
  });
}

}  // namespace exifmarke
