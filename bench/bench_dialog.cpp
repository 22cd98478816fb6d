// bench_dialog [ORDNER [RUNDEN]]: the assignment dialog over a record of a hundred photos of 12 megapixels.
//
// ORDNER holds the photos of grosse_fotos.sh; the record's copies are made in ORDNER/streifen. Showing: from the call
// until every visible thumbnail and the large picture have their pixels, with an empty cache but the files in the
// system's memory; beside it TurboJPEG's plain decode at 1/8 of the visible ones alone, from memory. Scrolling: a click
// on the right button until all is painted, nothing has changed.
#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <memory>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "bench/Turbojpeg.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/files/Pfadkarte.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/gdiplus/bild/Bildspeicher.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

/// A database with the record RE 1 of all the photos.
std::shared_ptr<clsBildZuordnungen> lies_Vorgang(const QTemporaryDir& ordner) {
  QFile leer(ordner.filePath(u"bench.db"_s));
  verlange(leer.open(QIODevice::WriteOnly), "database");
  const QString zeichenfolge =
      u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(leer.fileName());
  auto verbindung = std::make_shared<adodb::Connection>();
  verbindung->Open(zeichenfolge);
  QFile schema(QStringLiteral(KVO_QUELLORDNER "/sql/sqlite/Bild_Zuordnungen.sql"));
  verlange(schema.open(QIODevice::ReadOnly), "schema");
  for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(schema.readAll())))
    verbindung->Execute(anweisung);
  auto store = std::make_shared<clsBildZuordnungen>();
  verlange(store->Init(zeichenfolge, verbindung, {}), "store");
  for (int i = 0; i < fotovorgang::Anzahl; ++i) {
    store->FKT_NeuesBild(u"RE"_s, u"1"_s, {}, {}, fotovorgang::name(i).chopped(4), u"jpg"_s, u"BEL"_s, {});
    store->Bild_Pfad(fotovorgang::Unterordner);
    store->Bild_SortIndex(i);
  }
  verlange(store->FKT_SpeichernBilder(), "rows");
  verlange(store->FKT_LeseBilder(u"RE"_s, u"1"_s, {}, {}, {}, {}, u"BEL"_s, {}, {}), "record");
  return store;
}

bool ist_sichtbar(const QWidget& thumbnail) {
  return thumbnail.isVisible() && !thumbnail.visibleRegion().isEmpty();
}

/// Pumps until what can be seen has its pixels; the number of visible thumbnails.
int male_fertig(const frm_BildZuordnung& form) {
  for (;;) {
    QCoreApplication::processEvents();
    int sichtbare = 0;
    bool fertig = form.Pic_Bearbeitung.ist_gezeichnet();
    for (const auto& [i, thumbnail] : form.Pic_Thumb) {
      if (!ist_sichtbar(*thumbnail)) continue;
      ++sichtbare;
      fertig = fertig && thumbnail->ist_gezeichnet();
    }
    if (fertig && sichtbare > 0) return sichtbare;
  }
}

/// Shows the dialog; `danach` runs once all is painted.
int zeige(const std::shared_ptr<clsBildZuordnungen>& store, const std::function<void(frm_BildZuordnung&)>& danach) {
  frm_BildZuordnung form;
  form.Load();
  form.pBildObj = store;
  form.pRootpath = u"P:"_s;
  form.pStandardBildPfad = fotovorgang::Unterordner;
  form.PTyp1 = u"BEL"_s;
  form.Lade_Zuordnung();
  form.AnzeigeSteuern();
  int sichtbare = 0;
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, &form, [&] {
    // The first layout lets events in before the strip is there.
    if (form.ThumbZaehler == 0) return;
    takt.stop();
    sichtbare = male_fertig(form);
    danach(form);
    form.Hide();
  });
  takt.start(0);
  form.Show();
  form.pBildObj->AktLoadPicture.clear();
  return sichtbare;
}

bool miss(const std::shared_ptr<clsBildZuordnungen>& store, const QString& ordner, int runden) {
  int sichtbare = zeige(store, [](frm_BildZuordnung&) {});
  std::printf("%-58s %10d\n", "visible thumbnails", sichtbare);
  std::printf("%-58s %10.0f MB\n", "peak of memory after the first showing", messung::groesster_Speicher());
  QList<QByteArray> bytes;
  for (int i = 0; i < sichtbare; ++i) bytes.append(fotovorgang::lies(fotovorgang::datei(ordner, i)));
  const auto mass = [&] {
    for (const QByteArray& b : bytes) messung::turbojpeg_Achtel(b);
  };
  const auto erstmals = [&] {
    Bildspeicher::aktuell().leere();
    zeige(store, [](frm_BildZuordnung&) {});
  };
  bool gut = messung::vergleiche("100 photos: call to all visible ones painted", runden, 1.15, erstmals, mass) <= 1.15;
  std::vector<double> schritte;
  std::vector<double> masse;
  zeige(store, [&](frm_BildZuordnung& form) {
    for (int i = 0; i <= runden; ++i) {
      // There and back: what comes into view on the way there has its pixels on the next.
      for (SSCommand* knopf : {&form.SSC_Scroll_Right, &form.SSC_Scroll_Left}) {
        const double zeit = messung::sekunden([&] {
          knopf->click();
          male_fertig(form);
        });
        if (i > 0) schritte.push_back(zeit);
      }
      masse.push_back(messung::sekunden(mass));
    }
  });
  return messung::zeile("scroll step, pictures unchanged", schritte, masse, 0.03) <= 0.03 && gut;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  fensterdienste::richte_ein();
  KVOCore::setze(nullptr);  // the placement of the user's own window stays out of it
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"fotos"_s;
  const int runden = argc > 2 ? std::atoi(argv[2]) : 15;
  Bildspeicher::aktuell().uhr(fotovorgang::in_einer_Stunde);
  fotovorgang::mache(ordner);
  const QTemporaryDir datenordner;
  return miss(lies_Vorgang(datenordner), ordner, runden) ? 0 : 1;
}
