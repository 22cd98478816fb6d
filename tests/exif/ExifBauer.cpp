#include "tests/exif/ExifBauer.h"

using namespace Qt::Literals::StringLiterals;

ExifBauer& ExifBauer::verzeichnis() {
  verzeichnisse_.append(Verzeichnis{});
  return *this;
}

ExifBauer& ExifBauer::unterverzeichnis() {
  verzeichnisse_.append(Verzeichnis{.eintraege = {}, .unter = true});
  return *this;
}

ExifBauer& ExifBauer::feld(int tag, int format, std::uint32_t anzahl, const QByteArray& bytes) {
  verzeichnisse_.last().eintraege.append(
      Eintrag{.tag = tag, .format = format, .anzahl = anzahl, .feld = bytes.leftJustified(4, '\0', true), .daten = {}});
  return *this;
}

ExifBauer& ExifBauer::zahl(int tag, int format, std::uint32_t anzahl, std::uint32_t wert) {
  return feld(tag, format, anzahl, w32(wert));
}

ExifBauer& ExifBauer::daten(int tag, int format, std::uint32_t anzahl, const QByteArray& bytes) {
  verzeichnisse_.last().eintraege.append(
      Eintrag{.tag = tag, .format = format, .anzahl = anzahl, .feld = {}, .daten = bytes});
  return *this;
}

ExifBauer& ExifBauer::zeiger() {
  verzeichnisse_.last().eintraege.append(
      Eintrag{.tag = 34665, .format = 4, .anzahl = 1, .feld = {}, .daten = {}, .zeiger = true});
  return *this;
}

ExifBauer& ExifBauer::kette(std::uint32_t offset) {
  verzeichnisse_.last().kette = offset;
  return *this;
}

QByteArray ExifBauer::w16(std::uint32_t zahl) const {
  const char hoch = static_cast<char>(zahl >> 8 & 0xFF);
  const char tief = static_cast<char>(zahl & 0xFF);
  return folge_ == Folge::Intel ? QByteArray() + tief + hoch : QByteArray() + hoch + tief;
}

QByteArray ExifBauer::w32(std::uint32_t zahl) const {
  return folge_ == Folge::Intel ? w16(zahl & 0xFFFF) + w16(zahl >> 16) : w16(zahl >> 16) + w16(zahl & 0xFFFF);
}

std::uint32_t ExifBauer::offset(qsizetype verzeichnis) const {
  qsizetype summe = 8;
  for (qsizetype i = 0; i < verzeichnis; ++i) summe += 2 + 12 * verzeichnisse_[i].eintraege.size() + 4;
  return static_cast<std::uint32_t>(summe);
}

std::uint32_t ExifBauer::naechstes(qsizetype verzeichnis) const {
  const Verzeichnis& dieses = verzeichnisse_[verzeichnis];
  if (dieses.kette >= 0) return static_cast<std::uint32_t>(dieses.kette);
  const bool noch_eines = verzeichnis + 1 < verzeichnisse_.size() && !verzeichnisse_[verzeichnis + 1].unter;
  return noch_eines && !dieses.unter ? offset(verzeichnis + 1) : 0;
}

std::uint32_t ExifBauer::offset_Unterverzeichnis() const {
  for (qsizetype i = 0; i < verzeichnisse_.size(); ++i)
    if (verzeichnisse_[i].unter) return offset(i);
  return 0;
}

QByteArray ExifBauer::tiff() const {
  QByteArray kopf = (folge_ == Folge::Intel ? "II"_ba : "MM"_ba) + w16(42) + w32(8);
  QByteArray daten;
  const std::uint32_t ende = offset(verzeichnisse_.size());
  for (qsizetype i = 0; i < verzeichnisse_.size(); ++i) {
    kopf += w16(static_cast<std::uint32_t>(verzeichnisse_[i].eintraege.size()));
    for (const Eintrag& e : verzeichnisse_[i].eintraege) {
      kopf += w16(static_cast<std::uint32_t>(e.tag)) + w16(static_cast<std::uint32_t>(e.format)) + w32(e.anzahl);
      if (e.zeiger)
        kopf += w32(offset_Unterverzeichnis());
      else if (!e.daten.isEmpty())
        kopf += w32(ende + static_cast<std::uint32_t>(daten.size()));
      else
        kopf += e.feld;
      daten += e.daten;
    }
    kopf += w32(naechstes(i));
  }
  return kopf + daten;
}

QByteArray ExifBauer::segment(const QByteArray& tiff) {
  const auto laenge = static_cast<std::uint32_t>(tiff.size() + 8);
  return "\xFF\xE1"_ba + ExifBauer(Folge::Motorola).w16(laenge & 0xFFFF) + QByteArray("Exif\0\0", 6) + tiff;
}

QByteArray ExifBauer::jpeg(const QByteArray& davor, const QByteArray& danach) const {
  return "\xFF\xD8"_ba + davor + segment(tiff()) + danach + "\xFF\xD9"_ba;
}

namespace {

void erstes_Verzeichnis(ExifBauer& b) {
  b.verzeichnis();
  b.daten(271, 2, 13, QByteArray("Kamerawerke A", 13)).daten(272, 2, 9, QByteArray("Modell 7\0", 9));
  b.feld(274, 3, 1, b.w16(1)).daten(282, 5, 1, b.bruch(72, 1)).daten(283, 5, 1, b.bruch(72, 1));
  b.feld(296, 3, 1, b.w16(2)).daten(305, 2, 12, QByteArray("Firmware 1.2", 12));
  b.daten(306, 2, 20, QByteArray("2024:05:17 08:30:00\0", 20)).feld(531, 3, 1, b.w16(1));
  b.daten(33432, 2, 8, QByteArray("Betrieb\0", 8)).zeiger().zahl(34853, 4, 1, 0);
}

void vorschau(ExifBauer& b) {
  b.verzeichnis().feld(259, 3, 1, b.w16(6)).daten(282, 5, 1, b.bruch(180, 1)).daten(283, 5, 1, b.bruch(180, 1));
  b.feld(296, 3, 1, b.w16(2)).zahl(513, 4, 1, 4000).zahl(514, 4, 1, 4096);
}

void aufnahme(ExifBauer& b, qsizetype makernote) {
  QByteArray notiz(makernote, '\0');
  for (qsizetype i = 0; i < makernote; ++i) notiz[i] = static_cast<char>(i * 37 % 251);
  b.unterverzeichnis().daten(33434, 5, 1, b.bruch(1, 250)).daten(33437, 5, 1, b.bruch(28, 10));
  b.feld(34850, 3, 1, b.w16(2)).feld(34855, 3, 1, b.w16(200)).feld(36864, 7, 4, "0220");
  b.daten(36867, 2, 20, QByteArray("2024:05:17 08:30:00\0", 20));
  b.daten(36868, 2, 20, QByteArray("2024:05:17 08:30:00\0", 20)).feld(37121, 7, 4, QByteArray("\1\2\3\0", 4));
  b.daten(37377, 10, 1, b.bruch(8, 1)).daten(37378, 5, 1, b.bruch(3, 1)).daten(37380, 10, 1, b.bruch(0, 3));
  b.daten(37381, 5, 1, b.bruch(3, 1)).feld(37383, 3, 1, b.w16(5)).feld(37384, 3, 1, b.w16(0));
  b.feld(37385, 3, 1, b.w16(16)).daten(37386, 5, 1, b.bruch(350, 10));
  b.daten(37500, 7, static_cast<std::uint32_t>(makernote), notiz).daten(37510, 7, 16, QByteArray(16, 'x'));
  b.feld(40960, 7, 4, "0100").feld(40961, 3, 1, b.w16(1)).zahl(40962, 4, 1, 4032).zahl(40963, 4, 1, 3024);
}

}  // namespace

QByteArray kamerabild(Folge folge, qsizetype makernote, const QByteArray& danach) {
  ExifBauer b(folge);
  erstes_Verzeichnis(b);
  vorschau(b);
  aufnahme(b, makernote);
  return b.jpeg({}, danach);
}
