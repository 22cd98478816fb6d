#include "host/betrieb/vorgang/Vorschaulader.h"

#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Stille.h"

std::shared_ptr<const Bild> Vorschaulader::oeffne(const QString& ordner, const QString& datei) {
  const Stille stille;
  // The store takes a picture of the same name in another folder for the one that it has.
  store_.AktLoadPicture.clear();
  store_.AktLoadPicture_Picture.reset();
  if (!store_.FKT_LoadPicture(datei, ordner, false)) return nullptr;
  return std::exchange(store_.AktLoadPicture_Picture, nullptr);
}

QImage Vorschaulader::lade(const QString& ordner, const QString& datei, QSize hoechstens) {
  const std::shared_ptr<const Bild> bild = oeffne(ordner, datei);
  if (!bild || bild->groesse().isEmpty()) return {};
  const Stille stille;
  QImage pixel;
  gelingt([&] { pixel = bild->bild(ziel(bild->groesse(), hoechstens)); });
  return pixel;
}

QSize Vorschaulader::ziel(QSize groesse, QSize hoechstens) {
  if (groesse.width() <= hoechstens.width() && groesse.height() <= hoechstens.height()) return groesse;
  return groesse.scaled(hoechstens, Qt::KeepAspectRatio).expandedTo({1, 1});
}
