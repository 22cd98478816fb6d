#include "dialogs/search/Vorschaubild.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "imaging/Ersatzbild.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Twips.h"
#include "platform/gdiplus/Sitzungsdauer.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/gdiplus.h"
#include "platform/shell/Dateityp.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;

namespace vorschaubild {
namespace {

constexpr double Rand = 8;
constexpr double Zugabe = 10;

// Nothing may ask the user in the middle of a read: what the loader would refuse with a message is not handed to it.
std::shared_ptr<const Bild> lade(const QString& datei, bool mit_Sitzung) {
  const bildlader::NurKopf nur_Kopf;
  if (!mit_Sitzung) return gdiplus::LoadPicture(datei);
  gdiplus::Bitmap probe;
  if (gdiplus::GdipCreateBitmapFromFile(datei, probe) != gdiplus::Ok) return nullptr;
  return mod_GrafikKonvert::Fkt_LoadPictureGdi(datei);
}

int punkte(double twips, double dichte) {
  return static_cast<int>(std::nearbyint(twips / twips::JePixel * dichte));
}

QImage leeres_Blatt(double breite, double hoehe, double dichte) {
  QImage blatt(
      std::max(1, punkte(breite + Zugabe, dichte)), std::max(1, punkte(hoehe + Zugabe, dichte)), QImage::Format_RGB32);
  blatt.setDevicePixelRatio(dichte);
  blatt.fill(Qt::white);
  return blatt;
}

bool ist_gestreckt(QSize groesse, double breite, double hoehe, bool nur_mittig) {
  const QSizeF twips = QSizeF(groesse) * twips::JePixel;
  return !nur_mittig && (twips.width() > breite || twips.height() > hoehe);
}

/// False where the picture's file gives no pixels: the sheet then stays as it is.
bool male(QImage& blatt, const Bild& bild, double breite, double hoehe, bool nur_mittig) {
  const double dichte = blatt.devicePixelRatio();
  const QSize ziel = ziel_auf_Blatt(bild.groesse(), breite, hoehe, nur_mittig, dichte);
  const QPoint ort = ist_gestreckt(bild.groesse(), breite, hoehe, nur_mittig)
      ? QPoint(punkte(Rand, dichte), punkte(Rand, dichte))
      : QPoint((blatt.width() - ziel.width()) / 2, (blatt.height() - ziel.height()) / 2);
  if (ziel.isEmpty()) return true;
  QImage pixel = bildlader::eigene_Pixel(bild, ziel);
  if (pixel.isNull()) return false;
  pixel.setDevicePixelRatio(dichte);
  QPainter(&blatt).drawImage(QPointF(ort) / dichte, pixel);
  return true;
}

}  // namespace

bool ist_Bildtyp(const QString& endung) {
  static const std::array<QString, 4> Typen{u"bmp"_s, u"jpg"_s, u"gif"_s, u"tif"_s};
  return std::find(Typen.begin(), Typen.end(), text::LCase(endung)) != Typen.end();
}

QSize ziel_auf_Blatt(QSize groesse, double breite, double hoehe, bool nur_mittig, double dichte) {
  if (ist_gestreckt(groesse, breite, hoehe, nur_mittig))
    return {punkte(breite - Rand, dichte), punkte(hoehe - Rand, dichte)};
  const QSizeF eigene = QSizeF(groesse) * twips::JePixel;
  return {punkte(eigene.width(), dichte), punkte(eigene.height(), dichte)};
}

QImage zeichne(const std::shared_ptr<const Bild>& bild, double breite, double hoehe, bool nur_mittig, double dichte) {
  QImage blatt = leeres_Blatt(breite, hoehe, dichte);
  if (bild) fehler::still_enden([&] { male(blatt, *bild, breite, hoehe, nur_mittig); });
  return blatt;
}

const std::shared_ptr<const Bild>& ersatzbild() {
  return ::ersatzbild();
}

QImage zeichne_Datei(const QString& datei, double breite, double hoehe, const std::shared_ptr<const Bild>& unlesbar,
    bool mit_Sitzung, double dichte) {
  const QString name = datei.mid(datei.lastIndexOf(u'\\') + 1);
  const QString endung = text::LCase(name.mid(name.lastIndexOf(u'.') + 1));
  const bool ist_Bild = ist_Bildtyp(endung);
  std::shared_ptr<const Bild> bild;
  fehler::Weiter weiter;
  weiter([&] {
    bild = ist_Bild ? lade(datei, mit_Sitzung) : mod_BilderSuchen::Fkt_DateiTypIcon(endung, shell::SHGFI_ICON);
  });
  QImage blatt = leeres_Blatt(breite, hoehe, dichte);
  bool gemalt = false;
  if (bild) weiter([&] { gemalt = male(blatt, *bild, breite, hoehe, !ist_Bild); });
  return gemalt || !ist_Bild ? blatt : zeichne(unlesbar, breite, hoehe, false, dichte);
}

QImage wie_in_der_Liste(const QString& datei, double breite, double hoehe) {
  const gdiplus::Sitzungsdauer sitzung;
  return zeichne_Datei(datei, breite, hoehe, ersatzbild(), sitzung.begonnen());
}

}  // namespace vorschaubild
