#include "host/betrieb/beispiel/Beispieldaten.h"

#include <QBuffer>
#include <QHash>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Beispieltabelle.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/betrieb/beispiel/ExifSchreiber.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace beispieldaten {
namespace {

/// Shots a quarter of an hour apart, from a morning on.
QDateTime zeit_von(int nummer) {
  return QDateTime(QDate(2024, 3, 5), QTime(8, 0)).addSecs(900LL * nummer);
}

QString text_von(const char16_t* text) {
  return text ? QString::fromUtf16(text) : QString();
}

QString grundname(const Beispielbild& bild) {
  return u"%1_%2"_s.arg(text_von(bild.motiv)).arg(bild.nummer, 2, 10, QChar(u'0'));
}

/// A picture of the tree bears its stamp, one that waits does not.
namen::Bilddatei name_von(const Beispielbild& bild) {
  const Bilddatei datei{grundname(bild), u"jpg"_s};
  return bild.vorgang ? datei.gestempelt(Bilddatei::Stempel(zeit_von(bild.nummer))) : datei;
}

exifschreiber::Aufnahme aufnahme_von(const Beispielbild& bild) {
  const auto nummer = static_cast<std::uint32_t>(bild.nummer);
  return {.hersteller = bild.exif == Exif::Gross ? u"Muster Foto"_s : u"Werkstatt Kamera"_s,
      .modell = bild.exif == Exif::Gross ? u"MF 12"_s : u"WK 300"_s,
      .beschreibung = text_von(bild.motiv),
      .ausrichtung = 1,
      .zeit = zeit_von(bild.nummer),
      .belichtung = {1, 30 + nummer * 10},
      .blende = {28 + nummer % 5 * 12, 10},
      .iso = static_cast<std::uint16_t>(100U << (nummer % 4U)),
      .brennweite = {240 + nummer * 5, 10},
      .groesse = bild.groesse};
}

QByteArray als_Jpeg(const Beispielbild& bild) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  QImageWriter schreiber(&puffer, "jpeg");
  schreiber.setQuality(85);
  if (!schreiber.write(zeichne(bild.nummer, text_von(bild.motiv), bild.groesse)))
    throw Abbruch(Ausgang::Datei, u"Die Beispielbilder sind nicht zu schreiben: "_s + schreiber.errorString());
  if (bild.exif == Exif::Ohne) return bytes;
  using exifschreiber::Bytefolge;
  return exifschreiber::mit_Exif(
      bytes, aufnahme_von(bild), bild.exif == Exif::Gross ? Bytefolge::Gross : Bytefolge::Klein);
}

void schreibe_Bild(const Beispielbild& bild, const QString& ordner, clsBildZuordnungen& store) {
  const namen::Bilddatei name = name_von(bild);
  const QString ziel =
      bild.vorgang ? ordner + u"\\bilder\\"_s + text_von(bild.vorgang->ordner) : ordner + u"\\eingang"_s;
  store.Fkt_MakePath(ziel);
  dateien::schreibe_alles(ziel + u'\\' + name.datei(), als_Jpeg(bild));
  if (bild.text && !store.Fkt_WriteFile(ziel + u'\\' + name.textdatei(), text_von(bild.text)))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist nicht zu schreiben."_s.arg(ziel + u'\\' + name.textdatei()));
}

/// One row as the store writes it. It is not written by the store: that keeps its connection to the end of the process,
/// and a program that goes on with another database, or moves this one, must not be tied to it.
QString einfuegen(const Beispielbild& bild, int platz) {
  const auto oder = [](const QString& wert, const QString& sonst) { return wert.isEmpty() ? sonst : literal(wert); };
  const QString strich = literal(u"-"_s);
  const namen::Bilddatei name = name_von(bild);
  const Beispielvorgang& zu = *bild.vorgang;
  const QStringList werte{oder(text_von(zu.key1), strich), oder(text_von(zu.key2), strich),
      oder(text_von(zu.key3), strich), strich, literal(name.name), literal(name.ext), literal(text_von(zu.typ1)),
      strich, literal(text_von(zu.ordner)), oder(text_von(bild.beschreibung), u"NULL"_s),
      literal(u"0001"_s.leftJustified(50)), strich, QString::number(platz)};
  return u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
         "Beschreibung, Druckkennzeichen, Grafik_Ursprung, SortIndex) VALUES ("_s +
      werte.join(u", "_s) + u')';
}

void pruefe_leer(const QString& ordner) {
  if (FileSystemObject().FileExists(ordner)) throw Abbruch(Ausgang::Datei, u"„%1“ ist eine Datei."_s.arg(ordner));
  if (!datenordner::ist_frei(ordner))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist nicht leer; Beispieldaten überschreiben nichts."_s.arg(ordner));
}

}  // namespace

QImage zeichne(int nummer, const QString& motiv, QSize groesse) {
  QImage bild(groesse, QImage::Format_RGB32);
  // Steps of the golden angle keep neighbours in number far apart in colour.
  const QColor farbe = QColor::fromHsv(nummer * 137 % 360, 150, 190);
  QLinearGradient verlauf(QPointF(0, 0), QPointF(groesse.width(), groesse.height()));
  verlauf.setColorAt(0, farbe.lighter(130));
  verlauf.setColorAt(1, farbe.darker(160));
  QPainter maler(&bild);
  maler.setRenderHint(QPainter::Antialiasing);
  maler.fillRect(bild.rect(), verlauf);
  const int kante = std::min(groesse.width(), groesse.height());
  // A mark at the upper left tells which way is up.
  maler.setPen(Qt::NoPen);
  maler.setBrush(Qt::white);
  maler.drawEllipse(QPoint(kante / 10, kante / 10), kante / 20, kante / 20);
  maler.setPen(Qt::white);
  QFont schrift(u"DejaVu Sans"_s);
  schrift.setBold(true);
  schrift.setPixelSize(kante / 2);
  maler.setFont(schrift);
  maler.drawText(bild.rect().adjusted(0, 0, 0, -kante / 6), Qt::AlignCenter, u"%1"_s.arg(nummer, 2, 10, QChar(u'0')));
  schrift.setPixelSize(kante / 10);
  maler.setFont(schrift);
  maler.drawText(bild.rect().adjusted(0, 0, 0, -kante / 12), Qt::AlignHCenter | Qt::AlignBottom, motiv);
  return bild;
}

void erzeuge(const QString& ordner) {
  pruefe_leer(ordner);
  clsBildZuordnungen store;
  if (!store.Fkt_MakePath(ordner + u"\\eingang"_s) || !store.Fkt_DirExists(ordner + u"\\eingang"_s))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen."_s.arg(ordner));
  for (const Beispielbild& bild : bilder()) schreibe_Bild(bild, ordner, store);

  const QString verbindung = datenordner::verbindung(ordner);
  schema::lege_an(verbindung);
  const auto offene = oeffne(verbindung);
  schema::richte_Betrieb_ein(*offene);
  for (const QString& anweisung : saetze_des_Betriebs()) offene->Execute(anweisung);
  QHash<const Beispielvorgang*, int> belegt;
  for (const Beispielbild& bild : bilder())
    if (bild.vorgang) offene->Execute(einfuegen(bild, belegt[bild.vorgang]++));
}

}  // namespace beispieldaten
