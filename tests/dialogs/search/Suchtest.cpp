#include "tests/dialogs/search/Suchtest.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QTimer>
#include <utility>

#include "dialogs/assignment/clsDialoge.h"
#include "dialogs/search/Vorschaubild.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Pfadkarte.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;

std::int32_t Laufwerksdoppel::GetDriveType(const QString& wurzel) {
  const auto laufwerk = laufwerke.constFind(wurzel[0]);
  return laufwerk == laufwerke.constEnd() ? laufwerke::OhneWurzel : laufwerk->typ;
}

bool Laufwerksdoppel::GetVolumeInformation(const QString& wurzel, QString& bezeichnung) {
  nach_Marke_gefragt.append(wurzel);
  const auto laufwerk = laufwerke.constFind(wurzel[0]);
  if (laufwerk == laufwerke.constEnd() || !laufwerk->marke) return false;
  bezeichnung = *laufwerk->marke;
  return true;
}

std::int32_t Laufwerksdoppel::WNetGetConnection(const QString& laufwerk, QString& ziel) {
  if (netz_wirft) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  const Laufwerk& l = laufwerke[laufwerk[0]];
  if (l.netzfehler == 0) ziel = l.netz;
  return l.netzfehler;
}

class Suchtest::Pumpe final : public oberflaeche::Ereignispumpe {
 public:
  void verarbeite_anstehende() override {
    const QScopedValueRollback tiefer(tiefe, tiefe + 1);
    ++male;
    if (dabei) dabei(male);
    QCoreApplication::processEvents();
  }
  std::function<void(int)> dabei;
  int male = 0;
  int tiefe = 0;
};

Suchtest::Suchtest()
    : feld(std::make_shared<XArrayDBObject>()),
      pumpe_(std::make_shared<Pumpe>()),
      pumpe_vorher_(oberflaeche::setze(pumpe_)),
      anbieter_vorher_(laufwerke::setze(laufwerke_)) {
  ordner.schreibe(u"c/Heim/leer.dat"_s, {});
  ordner.schreibe(u"p/sonstiges.dat"_s, {});
  Pfadkarte::aktuell().setze(u"C:"_s, ordner.pfad(u"c"_s));
  Pfadkarte::aktuell().setze(u"P:"_s, ordner.pfad(u"p"_s));
  laufwerke_->laufwerke[u'C'] = {};
  laufwerke_->laufwerke[u'P'] = {};
  mod_BilderSuchen::pLetzterOrdner.clear();
  feld->ReDim(0, 0, 0, 4);
}

Suchtest::~Suchtest() {
  entlade();
  mod_BilderSuchen::pLetzterOrdner.clear();
  mod_GrafikKonvert::m_GdiAktiv = false;
  laufwerke::setze(anbieter_vorher_);
  oberflaeche::setze(pumpe_vorher_);
  Pfadkarte::aktuell().entferne(u"C:"_s);
  Pfadkarte::aktuell().entferne(u"P:"_s);
}

void Suchtest::lege_Bild(const QString& name, QSize groesse, const QColor& farbe) {
  ordner.schreibe(u"p/"_s + name, bilddatei(groesse, farbe));
}

void Suchtest::lege_Bilder(int anzahl, const QString& unter) {
  const QByteArray inhalt = bilddatei(QSize(8, 8));
  for (int i = 0; i < anzahl; ++i) ordner.schreibe(u"p/%1/b%2.jpg"_s.arg(unter).arg(i, 5, 10, QChar(u'0')), inhalt);
}

frm_BilderSuchen& Suchtest::form() {
  if (form_) return *form_;
  form_ = std::make_unique<frm_BilderSuchen>();
  form_->MultiSelect = mehrfach;
  form_->pRootpath = rootpath;
  form_->Load();
  form_->pFindArray = feld;
  return *form_;
}

void Suchtest::entlade() {
  if (!form_) return;
  form_->raeume_auf();
  form_->Unload();
  form_.reset();
}

void Suchtest::nach_dem_Lesen(QTimer& takt, const std::function<void()>& tu) {
  QObject::connect(&takt, &QTimer::timeout, qApp, [this, &takt, tu] {
    if (pumpe_->tiefe > 0) return;
    takt.stop();
    tu();
  });
  takt.start(0);
}

void Suchtest::zeige(const std::function<void()>& waehrend) {
  frm_BilderSuchen& f = form();
  QTimer takt;
  nach_dem_Lesen(takt, [&] {
    waehrend();
    f.Hide();
  });
  f.Show();
}

bool Suchtest::rufe_auf(
    const std::function<void(frm_BilderSuchen&)>& waehrend, const QString& root, std::optional<bool> mit_mehreren) {
  QTimer takt;
  nach_dem_Lesen(takt, [&] {
    auto* const f = dynamic_cast<frm_BilderSuchen*>(QApplication::activeModalWidget());
    ASSERT_NE(f, nullptr);
    waehrend(*f);
    f->Hide();
  });
  if (mit_mehreren) return clsDialoge().Fkt_Aufruf_Dialog_BilderSuchen(nullptr, root, feld, *mit_mehreren);
  return clsDialoge().Fkt_Aufruf_Dialog_BilderSuchen(nullptr, root, feld);
}

void Suchtest::beim_Pumpen(std::function<void(int)> tu) {
  pumpe_->male = 0;
  pumpe_->dabei = std::move(tu);
}

QStringList Suchtest::eintraege(const frm_BilderSuchen& f) {
  QStringList alle;
  for (int i = 1; i <= f.lvwContent.Count(); ++i) alle.append(f.lvwContent.Text(i));
  return alle;
}

QImage Suchtest::bild_von(int eintrag) {
  const int bild = form().lvwContent.Icon(eintrag);
  return form().ilsImages.Image(bild).pixmap(QSize(101, 101)).toImage().convertToFormat(QImage::Format_RGB32);
}

QImage Suchtest::ersatz() {
  return vorschaubild::zeichne(form().Pic_Blank.Picture(), 1500, 1500).convertToFormat(QImage::Format_RGB32);
}

void Suchtest::waehle_Filter(frm_BilderSuchen& f, int index) {
  f.cbo_BildTypen.setFocus();
  eingaben::taste(f, Qt::Key_Home);
  for (int i = 0; i < index; ++i) eingaben::taste(f, Qt::Key_Down);
}
