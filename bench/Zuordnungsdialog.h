#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>

#include "bench/Fotovorgang.h"
#include "bench/Messung.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

/// The assignment dialog over the record of a hundred photos.
namespace zuordnungsdialog {

/// A database with the record RE 1 of all the photos.
inline std::shared_ptr<clsBildZuordnungen> lies_Vorgang(const QTemporaryDir& ordner) {
  QFile leer(ordner.filePath(QStringLiteral("bench.db")));
  messung::verlange(leer.open(QIODevice::WriteOnly), "database");
  const QString zeichenfolge =
      QStringLiteral("Provider=SQLite;Data Source=") + adodb::Verbindungszeichenfolge::als_wert(leer.fileName());
  auto verbindung = std::make_shared<adodb::Connection>();
  verbindung->Open(zeichenfolge);
  QFile schema(QStringLiteral(KVO_QUELLORDNER "/sql/sqlite/Bild_Zuordnungen.sql"));
  messung::verlange(schema.open(QIODevice::ReadOnly), "schema");
  for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(schema.readAll())))
    verbindung->Execute(anweisung);
  auto store = std::make_shared<clsBildZuordnungen>();
  messung::verlange(store->Init(zeichenfolge, verbindung, {}), "store");
  for (int i = 0; i < fotovorgang::Anzahl; ++i) {
    store->FKT_NeuesBild(QStringLiteral("RE"), QStringLiteral("1"), {}, {}, fotovorgang::name(i).chopped(4),
        QStringLiteral("jpg"), QStringLiteral("BEL"), {});
    store->Bild_Pfad(fotovorgang::Unterordner);
    store->Bild_SortIndex(i);
  }
  messung::verlange(store->FKT_SpeichernBilder(), "rows");
  messung::verlange(
      store->FKT_LeseBilder(QStringLiteral("RE"), QStringLiteral("1"), {}, {}, {}, {}, QStringLiteral("BEL"), {}, {}),
      "record");
  return store;
}

inline bool ist_sichtbar(const QWidget& thumbnail) {
  return thumbnail.isVisible() && !thumbnail.visibleRegion().isEmpty();
}

/// Pumps until what can be seen has its pixels; the number of visible thumbnails.
inline int male_fertig(const frm_BildZuordnung& form) {
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
inline int zeige(
    const std::shared_ptr<clsBildZuordnungen>& store, const std::function<void(frm_BildZuordnung&)>& danach) {
  frm_BildZuordnung form;
  form.Load();
  form.pBildObj = store;
  form.pRootpath = QStringLiteral("P:");
  form.pStandardBildPfad = fotovorgang::Unterordner;
  form.PTyp1 = QStringLiteral("BEL");
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

}  // namespace zuordnungsdialog
