#include "host/bericht/Bildladung.h"

#include "platform/files/FileSystemObject.h"
#include "platform/gdiplus/bild/NurKopf.h"

using namespace Qt::Literals::StringLiterals;

std::shared_ptr<const Bild> Bildladung::lade(const Berichtsbild& bild) {
  return lader_.oeffne(bild.ordner, bild.datei);
}

void Bildladung::miss(Berichtsbild& bild) {
  const bildlader::NurKopf nur_Kopf;
  const std::shared_ptr<const Bild> geladen = lade(bild);
  bild.groesse = geladen ? QSizeF(geladen->groesse()) : QSizeF();
  if (!bild.groesse.isEmpty()) return;
  bild.grund = FileSystemObject().FileExists(bild.ordner + u'\\' + bild.datei) ? u"Die Datei ist kein lesbares Bild."_s
                                                                               : u"Die Datei fehlt."_s;
}

QImage Bildladung::pixel(const Berichtsbild& bild, QSize hoechstens) {
  return lader_.lade(bild.ordner, bild.datei, hoechstens);
}
