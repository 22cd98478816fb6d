// What the tour drops on a record and takes back.
#include <QBuffer>
#include <QMimeData>
#include <QPainter>
#include <QTransform>
#include <QTreeView>
#include <QUrl>

#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/ExifSchreiber.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A house under the sky, held upright by a phone whose sensor lies: the pixels lie on their side and the mark tells
/// so.
QByteArray telefonfoto(const QColor& haus) {
  QImage bild(480, 640, QImage::Format_RGB32);
  bild.fill(QColor(150, 190, 230));
  QPainter maler(&bild);
  maler.fillRect(0, 460, 480, 180, QColor(110, 150, 90));
  maler.fillRect(110, 260, 260, 240, haus);
  maler.setBrush(QColor(150, 60, 50));
  maler.drawPolygon(QPolygon({QPoint(80, 260), QPoint(240, 130), QPoint(400, 260)}));
  maler.fillRect(205, 380, 70, 120, QColor(90, 60, 40));
  maler.end();
  QByteArray jpeg;
  QBuffer puffer(&jpeg);
  bild.transformed(QTransform().rotate(-90)).save(&puffer, "jpg", 92);
  exifschreiber::Aufnahme aufnahme;
  aufnahme.hersteller = u"Telefon"_s;
  aufnahme.ausrichtung = 6;
  aufnahme.zeit = QDateTime(QDate(2024, 3, 6), QTime(8, 15));
  aufnahme.groesse = {640, 480};
  return exifschreiber::mit_Exif(jpeg, aufnahme, exifschreiber::Bytefolge::Gross);
}

/// Two photographs beside the sample data, as a file manager hands them over.
void lege_Fotos_bereit(const QString& ordner, QMimeData& angebot) {
  clsBildZuordnungen store;
  store.Fkt_MakePath(ordner);
  QList<QUrl> urls;
  const QList<QPair<QString, QColor>> fotos{
      {u"Vorderseite.jpg"_s, {230, 215, 180}}, {u"Rückseite.jpg"_s, {200, 200, 205}}};
  for (const auto& [name, haus] : fotos) {
    dateien::schreibe_alles(ordner + u'\\' + name, telefonfoto(haus));
    urls.append(QUrl::fromLocalFile(namen::angezeigt(ordner + u'\\' + name)));
  }
  angebot.setUrls(urls);
}

}  // namespace

void Rundgang::plane_Aufnehmen() {
  const auto angebot = std::make_shared<QMimeData>();
  const auto meldet = [this](const QString& ende) -> Sicht {
    return [=, this] { return text(u"lbl_Status"_s).endsWith(ende); };
  };
  const Tat ziehe = [=, this] {
    lege_Fotos_bereit(ordner_ + u"\\daten\\telefon"_s, *angebot);
    auto& baum = element<QTreeView>(u"tree_Vorgaenge"_s);
    hand_.ziehe_herein(*baum.viewport(), baum.visualRect(baum.currentIndex()).center(), *angebot);
  };
  schritt(u"Klick auf AB 24-1001: Rechts stehen seine Bilder."_s, {klick_Vorgang(u"AB 24-1001"_s)},
      zeigt(u"lbl_Anzahl"_s, u"4 Bilder"_s));
  schritt(u"Zwei Fotos vom Telefon in die Liste gezogen: Der Vorgang unter der Maus ist markiert."_s, {ziehe},
      sichtbar(u"Abwurfmarke"_s), {bild(u"fotos_gezogen"_s)});
  schritt(u"Losgelassen: Sie sind zugeordnet und stehen aufrecht."_s, {[=, this] { hand_.wirf_ab(*angebot); }},
      beide(meldet(u": 2 Bilder zugeordnet."_s), sichtbar(u"cmd_Rueckgaengig"_s)),
      {pruefe(u"Zahl der Bilder"_s, u"lbl_Anzahl"_s, u"6 Bilder"_s),
          pruefe(u"Zeilen zu AB 24-1001"_s, [this] { return zeilen(u"AB"_s, u"24-1001"_s).size() == 6; }),
          bild(u"fotos_zugeordnet"_s)});
  schritt(u"Klick auf „Rückgängig“: Der Vorgang hat wieder seine vier Bilder."_s, {klick(u"cmd_Rueckgaengig"_s)},
      beide(meldet(u": Rückgängig gemacht: 2 Bilder sind nicht mehr zugeordnet."_s),
          zeigt(u"lbl_Anzahl"_s, u"4 Bilder"_s)),
      {pruefe_anderen_Vorgang()});
}
