#include "tests/dialogs/assignment/Dialogtest.h"

#include <QTest>
#include <QTimer>
#include <QWindow>

#include "store/BasZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

Dialogtest::Dialogtest() {
  BasZuordnungen::gConnection().reset();
  EXPECT_TRUE(store->Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
}

Dialogtest::~Dialogtest() {
  if (form_) form_->Unload();
  form_.reset();
  BasZuordnungen::gConnection().reset();
}

void Dialogtest::fuege_Bild_ein(
    const QString& name, const QString& ext, bool mit_Datei, const std::function<void(clsBildZuordnungen&)>& werte) {
  if (mit_Datei) lege_Bild(name + u'.' + ext);
  clsBildZuordnungen neu;
  ASSERT_TRUE(neu.Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
  ASSERT_TRUE(neu.FKT_NeuesBild(u"RE"_s, u"1"_s, {}, {}, name, ext, typ1, {}));
  neu.Bild_Pfad(u"Belege\\1"_s);
  neu.Bild_SortIndex(db.anzahl());
  if (werte) werte(neu);
  ASSERT_TRUE(neu.FKT_SpeichernBilder());
}

void Dialogtest::fuege_Bilder_ein(int anzahl) {
  for (int i = 0; i < anzahl; ++i) fuege_Bild_ein(QString(QChar(u'a' + i)));
}

void Dialogtest::lies() {
  store->FKT_LeseBilder(u"RE"_s, u"1"_s, {}, {}, {}, {}, typ1, {}, {});
}

frm_BildZuordnung& Dialogtest::form() {
  if (form_) return *form_;
  if (liest_vorher_) lies();
  form_ = std::make_unique<frm_BildZuordnung>();
  form_->Load();
  form_->pBildObj = store;
  form_->pRootpath = u"P:"_s;
  form_->pStandardBildPfad = u"Belege\\1"_s;
  form_->PTyp1 = typ1;
  form_->pInfoZeile = u"Rechnung 1"_s;
  form_->pNurAnzeige = nur_Anzeige;
  form_->pNurAnhang = nur_Anhang;
  form_->Lade_Zuordnung();
  form_->AnzeigeSteuern();
  return *form_;
}

void Dialogtest::schliesse() {
  form_->Unload();
  form_.reset();
  liest_vorher_ = false;
}

void Dialogtest::zeige(const std::function<void()>& waehrend) {
  frm_BildZuordnung& f = form();
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, &f, [&] {
    // Not in the middle of the first layout, which lets events in.
    if (fenster.pumpt) return;
    takt.stop();
    waehrend();
    f.Hide();
  });
  takt.start(0);
  f.Show();
}

void Dialogtest::haenge_neue_Zeile_an(const QString& ordner, const QString& name, const QString& ext) {
  frm_BildZuordnung& f = form();
  Arbeitszeile& zeile = f.KeineBilder() ? f.Zeile(0) : f.BildTabelle->haenge_an();
  zeile.VollerPfad = ordner + u'\\' + name + u'.' + ext;
  zeile.Root = f.pRootpath;
  zeile.Pfad = ordner;
  zeile.Bildname = name;
  zeile.BildExt = ext;
  zeile.ZeileGeaendert = zeile.NeuAusSuche = true;
  f.SetzeDatenGeaendert(true);
}

void Dialogtest::druecke_Maus(QWidget& ziel, QPoint wo) {
  QTest::mousePress(ziel.window()->windowHandle(), Qt::LeftButton, {}, eingaben::im_Fenster(ziel, wo));
}

void Dialogtest::bewege_Maus(QWidget& ziel, QPoint wo) {
  QTest::mouseMove(ziel.window()->windowHandle(), eingaben::im_Fenster(ziel, wo));
  QCoreApplication::processEvents();
}

void Dialogtest::lasse_Maus_los(QWidget& ziel, QPoint wo) {
  QTest::mouseRelease(ziel.window()->windowHandle(), Qt::LeftButton, {}, eingaben::im_Fenster(ziel, wo));
}

QStringList Dialogtest::gespeichert() {
  QStringList alle;
  for (const QStringList& zeile :
      db.zeilen(u"select Bildname, SortIndex, Beschreibung from Bild_Zuordnungen order by SortIndex, Bildname"_s))
    alle.append(zeile.join(u'|'));
  return alle;
}
