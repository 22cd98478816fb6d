#include "host/bericht/Bildladung.h"

#include "platform/files/FileSystemObject.h"
#include "platform/gdiplus/bild/NurKopf.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString pfad(const Berichtsbild& bild) {
  return bild.ordner + u'\\' + bild.datei;
}

}  // namespace

std::shared_ptr<const Bild> Bildladung::lade(const Berichtsbild& bild) {
  return lader_.oeffne(bild.ordner, bild.datei);
}

void Bildladung::miss(Berichtsbild& bild) {
  const bildlader::NurKopf nur_Kopf;
  const std::shared_ptr<const Bild> geladen = lade(bild);
  bild.groesse = geladen ? QSizeF(geladen->groesse()) : QSizeF();
  if (!bild.groesse.isEmpty()) return;
  bild.grund =
      FileSystemObject().FileExists(pfad(bild)) ? u"Die Datei ist kein lesbares Bild."_s : u"Die Datei fehlt."_s;
}

QImage Bildladung::pixel(const Berichtsbild& bild, QSize hoechstens) {
  return lader_.lade(bild.ordner, bild.datei, hoechstens);
}

void Bildladung::kuendige_an(const Berichtsbild& bild, QSize hoechstens) {
  vorlauf_.datei(pfad(bild), [hoechstens](QSize groesse) { return Vorschaulader::ziel(groesse, hoechstens); });
}

void Bildladung::kuendige_genau_an(const Berichtsbild& bild, QSize groesse) {
  vorlauf_.datei(pfad(bild), [groesse](QSize) { return groesse; });
}
