#include "tests/platform/gdiplus/Vorlagen.h"

#include <chrono>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/miniatur/Miniaturablage.h"

using namespace Qt::Literals::StringLiterals;

namespace {

std::int64_t in_einer_Stunde() {
  const auto spaeter = std::chrono::system_clock::now() + std::chrono::hours(1);
  return std::chrono::duration_cast<std::chrono::nanoseconds>(spaeter.time_since_epoch()).count();
}

}  // namespace

Bilder::Bilder() {
  Bildspeicher::aktuell().leere();
  Bildspeicher::aktuell().uhr(in_einer_Stunde);
  // What an earlier test left there would be shown instead.
  Miniaturablage::aktuell().an(false);
  EXPECT_EQ(gdiplus::GdiplusStartup(marke_, 1), gdiplus::Ok);
}

Bilder::~Bilder() {
  gdiplus::GdiplusShutdown(marke_);
  Miniaturablage::aktuell().an(true);
  Bildspeicher::aktuell().uhr(nullptr);
  Bildspeicher::aktuell().leere();
}

gdiplus::Bitmap Bilder::oeffne(const QString& pfad) {
  gdiplus::Bitmap bild;
  EXPECT_EQ(gdiplus::GdipCreateBitmapFromFile(pfad, bild), gdiplus::Ok) << qPrintable(pfad);
  return bild;
}

gdiplus::Bitmap Bilder::lade(const QString& name, const QByteArray& inhalt) const {
  return oeffne(ordner.schreibe(name, inhalt));
}

std::int32_t Bilder::status(const QByteArray& inhalt) const {
  return status_von(ordner.schreibe(u"pruefling"_s, inhalt));
}

std::int32_t Bilder::status_von(const QString& pfad) {
  gdiplus::Bitmap bild;
  const std::int32_t status = gdiplus::GdipCreateBitmapFromFile(pfad, bild);
  EXPECT_EQ(status == gdiplus::Ok, bild != nullptr);
  return status;
}
