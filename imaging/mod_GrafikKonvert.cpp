#include "imaging/mod_GrafikKonvert.h"

#include <array>
#include <vector>

#include "imaging/Drehspur.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/Ersatzdatei.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"
#include "platform/gdiplus/gdiplus.h"
#include "platform/host/Oberflaeche.h"
#include "platform/shell/Programme.h"

using namespace Qt::Literals::StringLiterals;

namespace mod_GrafikKonvert {

std::int32_t m_GdiToken = 0;
bool m_GdiAktiv = false;
std::int32_t m_GdiStatus = 0;
QString m_OpenWithProgramm;

std::int32_t Fkt_GdiStartup(std::int32_t version) {
  return gdiplus::GdiplusStartup(m_GdiToken, version);
}

std::int32_t Fkt_GdiShutdown() {
  return gdiplus::GdiplusShutdown(m_GdiToken);
}

std::int32_t Fkt_GdiPruefen(std::int32_t status) {
  // An invalid parameter is not told on purpose.
  if (status != gdiplus::Ok && status != gdiplus::InvalidParameter)
    oberflaeche::MsgBox(Fkt_GdiFehlerText(status) + u" GDI+ Error:"_s + QString::number(status),
        oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Keins, u"GDI Error"_s);
  return status;
}

QString Fkt_GdiFehlerText(std::int32_t status) {
  static constexpr std::array Texte{
      u"Generic Error.",
      u"Invalid Parameter.",
      u"Out Of Memory.",
      u"Object Busy.",
      u"Insufficient Buffer.",
      u"Not Implemented.",
      u"Win32 Error.",
      u"Wrong State.",
      u"Aborted.",
      u"File Not Found.",
      u"Value Overflow.",
      u"Access Denied.",
      u"Unknown Image Format.",
      u"FontFamily Not Found.",
      u"FontStyle Not Found.",
      u"Not TrueType Font.",
      u"Unsupported Gdiplus Version.",
      u"Gdiplus Not Initialized.",
      u"Property Not Found.",
      u"Property Not Supported.",
  };
  if (status < 1 || status > static_cast<std::int32_t>(Texte.size())) return u"Unknown GDI+ Error."_s;
  return QString::fromUtf16(Texte[static_cast<std::size_t>(status - 1)]);
}

std::shared_ptr<const Bild> Fkt_LoadPictureGdi(const QString& dateiname) {
  gdiplus::Bitmap bitmap;
  if (Fkt_GdiPruefen(gdiplus::GdipCreateBitmapFromFile(dateiname, bitmap)) != gdiplus::Ok) return nullptr;
  std::shared_ptr<const Bild> ergebnis;
  gdiplus::Bitmap handle;
  if (Fkt_GdiPruefen(gdiplus::GdipCreateHBITMAPFromBitmap(bitmap, handle, 0)) == gdiplus::Ok)
    ergebnis = Fkt_HandleToPicture(handle, 1, 0);
  Fkt_GdiPruefen(gdiplus::GdipDisposeImage(bitmap));
  return ergebnis;
}

// A handle is a picture object already: type and palette have nothing left to say.
std::shared_ptr<const Bild> Fkt_HandleToPicture(
    const std::shared_ptr<const Bild>& handle, std::int32_t /*bildtyp*/, std::int32_t /*palette*/) {
  return handle;
}

QString Fkt_OpenWith(QString& datei) {
  m_OpenWithProgramm.clear();
  if (text::Trim(datei).isEmpty()) {
    oberflaeche::MsgBox(u"Bitte wählen Sie zuerst ein Bild aus!"_s);
    return {};
  }
  m_OpenWithProgramm = shell::OpenAs(datei);
  return m_OpenWithProgramm;
}

bool Fkt_GetEncoderClsid(const QString& mime_type, gdiplus::CLSID& clsid) {
  std::uint32_t anzahl = 0;
  std::uint32_t groesse = 0;
  gdiplus::GdipGetImageEncodersSize(anzahl, groesse);
  if (groesse == 0) return false;
  std::vector<gdiplus::ImageCodecInfo> saetze(groesse / gdiplus::Kodierersatz);
  gdiplus::GdipGetImageEncoders(anzahl, groesse, saetze);
  for (std::uint32_t i = 0; i < anzahl; ++i) {
    if (saetze[i].MimeType.compare(mime_type, Qt::CaseInsensitive) != 0) continue;
    clsid = saetze[i].Clsid;
    return true;
  }
  return false;
}

namespace {

/// Finds the encoder and saves the image with `speichere`, which gives a status; the image is disposed of in any case.
template <class Speichern>
bool transformiere(gdiplus::Image& image, std::int32_t transform, Speichern&& speichere) {
  bool ergebnis = false;
  gdiplus::CLSID clsid{};
  if (Fkt_GetEncoderClsid(u"image/jpeg"_s, clsid))
    ergebnis = Fkt_GdiPruefen(speichere(clsid, gdiplus::transformation(transform))) == gdiplus::Ok;
  else
    oberflaeche::MsgBox(u"Konnte keinen passenden Encoder ermitteln."_s, oberflaeche::Knoepfe::OK,
        oberflaeche::Symbol::Keins, u"Encoder Error"_s);
  Fkt_GdiPruefen(gdiplus::GdipDisposeImage(image));
  return ergebnis;
}

std::int32_t schreibe(Ersatzdatei& neu, const QByteArray& strom) {
  std::int32_t status = gdiplus::Ok;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { status = gdiplus::status_beim_Schreiben(f.Nummer()); },
      [&] { neu.schreibe(strom); });
  return status;
}

}  // namespace

bool Fkt_JpgTransform(const QString& quelle, const QString& ziel, std::int32_t transform) {
  gdiplus::Image image;
  if (Fkt_GdiPruefen(gdiplus::GdipLoadImageFromFile(quelle, image)) != gdiplus::Ok) return false;
  return transformiere(image, transform, [&](const auto& clsid, const auto& parameter) {
    return gdiplus::GdipSaveImageToFile(image, ziel, clsid, parameter);
  });
}

bool Fkt_Bild_Drehen(const QString& datei, std::int32_t transform) {
  gdiplus::Image image;
  if (Fkt_GdiPruefen(gdiplus::GdipLoadImageFromFile(datei, image)) != gdiplus::Ok) return false;
  if (gdiplus::format_von(image) != Bildformat::Jpeg) {
    Fkt_GdiPruefen(gdiplus::GdipDisposeImage(image));
    return false;
  }
  Ersatzdatei neu(datei);
  const bool gelungen = transformiere(image, transform, [&](const auto& clsid, const auto& parameter) {
    QByteArray strom;
    const std::int32_t status = gdiplus::GdipSaveImageToStream(image, strom, clsid, parameter);
    return status == gdiplus::Ok ? schreibe(neu, strom) : status;
  });
  if (!gelungen) return false;
  neu.tausche();
  dauerspeicher::vergiss(datei);
  drehspur::merke(datei);
  return true;
}

}  // namespace mod_GrafikKonvert
