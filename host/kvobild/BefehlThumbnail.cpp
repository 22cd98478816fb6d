#include <QBuffer>
#include <QImageWriter>

#include "dialogs/search/Vorschaubild.h"
#include "host/betrieb/Namen.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "platform/basic/Twips.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Groesste_Seite = 4096;

int seite(const Aufruf& aufruf, const QString& option) {
  bool zahl = false;
  const QString angabe = aufruf.noetig(option);
  const int punkte = angabe.toInt(&zahl);
  if (zahl && punkte >= 1 && punkte <= Groesste_Seite) return punkte;
  throw Abbruch(Ausgang::Aufruf,
      u"„--%1“ ist eine Zahl von 1 bis %2, nicht „%3“."_s.arg(option, QString::number(Groesste_Seite), angabe));
}

QByteArray als_Png(const QImage& blatt) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  QImageWriter schreiber(&puffer, "png");
  if (!schreiber.write(blatt))
    throw Abbruch(Ausgang::Datei, u"Das Vorschaubild ist nicht zu kodieren: %1"_s.arg(schreiber.errorString()));
  return bytes;
}

Ausgang zeichne(const Aufruf& aufruf) {
  const int breite = seite(aufruf, u"breite"_s);
  const int hoehe = seite(aufruf, u"hoehe"_s);
  const QString quelle = namen::tabellenpfad(aufruf.argumente().at(0));
  const FileSystemObject platte;
  if (!platte.FileExists(quelle))
    throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ fehlt."_s.arg(aufruf.argumente().at(0)));
  const QString ziel = zieldatei(aufruf.argumente().at(1));
  // The target replaces whatever stands there, so it must not be the picture itself.
  if (platte.FileExists(ziel) && dateien::kennung(quelle) == dateien::kennung(ziel))
    throw Abbruch(Ausgang::Datei, u"Quelle und Ziel sind dieselbe Datei."_s);
  const QImage blatt = vorschaubild::wie_in_der_Liste(quelle, twips::aus_Pixel(breite), twips::aus_Pixel(hoehe));
  if (blatt.isNull()) throw Abbruch(Ausgang::Datei, u"Der Speicher reicht nicht."_s);
  dateien::schreibe_alles(ziel, als_Png(blatt));
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::thumbnail() {
  return {u"thumbnail"_s, u"zeichnet eine Datei als Vorschaubild"_s, u"QUELLE ZIEL.png"_s,
      uR"(Zeichnet QUELLE auf ein weißes Blatt, wie es die Liste der Bildsuche tut: Ein größeres Bild wird ohne
Rücksicht auf sein Seitenverhältnis auf das Blatt gestreckt, ein kleineres steht in seiner Größe in der
Mitte; ein unlesbares hat ein Ersatzbild, eine Datei anderer Art das Symbol ihrer Endung. Die Liste nimmt
100 mal 100 Punkte. Das Blatt selbst ist nach rechts und unten um einen Punkt größer. ZIEL wird ersetzt.)"_s,
      {{u"breite"_s, u"N"_s, u"Breite in Punkten, 1 bis %1"_s.arg(Groesste_Seite)},
          {u"hoehe"_s, u"N"_s, u"Höhe in Punkten, 1 bis %1"_s.arg(Groesste_Seite)}},
      2, 2, zeichne};
}
