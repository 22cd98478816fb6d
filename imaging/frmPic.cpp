#include "imaging/frmPic.h"

#include <utility>

#include "imaging/Ersatzbild.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Twips.h"
#include "platform/files/FileSystemObject.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/gdiplus.h"

using namespace mod_GrafikKonvert;

namespace {

std::unique_ptr<frmPic>& instanz() {
  thread_local std::unique_ptr<frmPic> form;
  return form;
}

double in_Einheit(int pixel, ScaleMode einheit) noexcept {
  return einheit == ScaleMode::Twips ? twips::aus_Pixel(pixel) : pixel;
}

}  // namespace

void PictureBox::Picture(std::shared_ptr<const Bild> bild) {
  bild_ = std::move(bild);
  if (bild_) pixel_ = bild_->groesse();
}

double PictureBox::ScaleWidth() const noexcept {
  return in_Einheit(pixel_.width(), einheit_);
}

double PictureBox::ScaleHeight() const noexcept {
  return in_Einheit(pixel_.height(), einheit_);
}

bool frmPic::FKT_LoadPicture(const QString& Pname) {
  const bool ergebnis = fehler::still_enden([&] {
    picPicture.Picture(nullptr);
    m_GdiAktiv = false;
    m_GdiStatus = Fkt_GdiPruefen(Fkt_GdiStartup(1));
    m_GdiAktiv = m_GdiStatus == gdiplus::Ok;
    if (!FileSystemObject().FileExists(Pname)) return false;
    // A picture of which only the header is sound is shown as unreadable, not as a black field.
    const auto bild = m_GdiAktiv ? Fkt_LoadPictureGdi(Pname) : gdiplus::LoadPicture(Pname);
    picPicture.Picture(bildlader::mit_Ersatz(bild, ersatzbild()));
    picBreite = picPicture.ScaleWidth();
    PicHoehe = picPicture.ScaleHeight();
    return true;
  });
  fehler::Weiter weiter;
  weiter([&] {
    if (m_GdiAktiv) m_GdiStatus = Fkt_GdiPruefen(Fkt_GdiShutdown());
  });
  return ergebnis;
}

frmPic& frmPic::Instanz() {
  if (!instanz()) instanz() = std::make_unique<frmPic>();
  return *instanz();
}

void frmPic::Entladen() noexcept {
  instanz().reset();
}
