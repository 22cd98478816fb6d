// Where the report goes from its window: into a file, to the printer, into a mail.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QPrinter>
#include <QProgressBar>
#include <QScopedValueRollback>

#include "host/bericht/Berichtsdatei.h"
#include "host/betrieb/Ausgang.h"
#include "host/fenster/Meldungszeilen.h"
#include "host/fenster/Zielordner.h"
#include "host/fenster/bericht/Berichtsauswahl.h"
#include "host/fenster/bericht/Berichtsdruck.h"
#include "host/fenster/bericht/Berichtsfenster.h"
#include "host/fenster/bericht/Berichtspost.h"
#include "host/fenster/bericht/Seitenansicht.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bericht"_s;
const QString Bilder_geschrieben = u"%v von %m Bildern geschrieben"_s;

}  // namespace

Berichtsfenster::Fortgang Berichtsfenster::fortgang(const QString& worte, int geduld) {
  QElapsedTimer uhr;
  uhr.start();
  return [=, this](std::size_t getan, std::size_t von) {
    if (uhr.elapsed() < geduld) return true;
    bar_Fortschritt->setVisible(true);
    bar_Fortschritt->setFormat(worte);
    bar_Fortschritt->setRange(0, static_cast<int>(von));
    bar_Fortschritt->setValue(static_cast<int>(getan));
    QCoreApplication::processEvents();
    return !halt_;
  };
}

QString Berichtsfenster::name() const {
  return u"Bildbericht "_s + Bilddatei::ersetze_verbotene(vorgang_.nummer);
}

bool Berichtsfenster::gib_aus(const std::function<void()>& tat) {
  const QPointer<QWidget> vorher = focusWidget();
  QString grund;
  {
    const QScopedValueRollback arbeit(arbeit_, Arbeit::Ausgabe);
    halt_ = false;
    sage({});
    erlaube();
    try {
      if (const auto fehler = versuche(tat)) grund = fehler->Beschreibung();
    } catch (const Abbruch& abbruch) {
      grund = abbruch.text();
    }
  }
  erlaube();
  if (vorher) vorher->setFocus();
  if (grund.isEmpty()) return true;
  sage(grund);
  MsgBox(grund, Knoepfe::OK, Symbol::Kritisch, Titel);
  return false;
}

void Berichtsfenster::melde(const QString& worte, const QStringList& fehlende) {
  ergebnis_ = worte;
  sage(worte);
  if (fehlende.isEmpty()) return;
  MsgBox(u"Diese Bilder fehlen im Bericht:\r\n\r\n"_s + meldungszeilen(fehlende), Knoepfe::OK, Symbol::Ausrufezeichen,
      Titel);
}

void Berichtsfenster::speichere() {
  auswahl_->schliesse_Tippen();
  const QString ziel = fragen_.ziel(this, zielordner() + u'/' + name() + u".pdf"_s);
  if (ziel.isEmpty()) return;
  berichtsdatei::Ergebnis ergebnis;
  const auto schreibe = [&] {
    ergebnis = berichtsdatei::schreibe(ziel, bericht_, auswahl_->wahl(), fortgang(Bilder_geschrieben, 0));
  };
  if (!gib_aus(schreibe)) return;
  if (!ergebnis.geschrieben) return sage(u"Abgebrochen; es ist nichts gespeichert."_s);
  melde(u"Gespeichert: "_s + ziel, ergebnis.fehlende);
}

void Berichtsfenster::drucke() {
  auswahl_->schliesse_Tippen();
  QPrinter drucker(QPrinter::HighResolution);
  drucker.setDocName(name());
  drucker.setCreator(u"Bildzuordnung"_s);
  drucker.setPageSize(QPageSize(QPageSize::A4));
  const Seitenplan& plan = ansicht_->plan();
  if (!fragen_.drucker(this, drucker, ansicht_->seiten())) return;
  const std::vector<std::size_t> seiten = berichtsdruck::folge(drucker, plan.size(), ansicht_->seite());
  berichtsdruck::Ergebnis ergebnis;
  const auto druck = [&] {
    ergebnis = berichtsdruck::drucke(drucker, bericht_, plan, seiten, fortgang(u"%v von %m Seiten gedruckt"_s, 0));
  };
  if (!gib_aus(druck)) return;
  const std::size_t gedruckte = ergebnis.seiten;
  if (gedruckte == 0) return sage(u"Abgebrochen; es ist nichts gedruckt."_s);
  if (gedruckte < seiten.size())
    return sage(u"Angehalten: %1 von %2 Seiten sind beim Drucker."_s.arg(gedruckte).arg(seiten.size()));
  melde(gedruckte == 1 ? u"1 Seite ist gedruckt."_s : u"%1 Seiten sind gedruckt."_s.arg(gedruckte),
      berichtsdatei::fehlende(bericht_) + ergebnis.verlorene);
}

void Berichtsfenster::sende() {
  auswahl_->schliesse_Tippen();
  QString ordner;
  berichtsdatei::Ergebnis ergebnis;
  const bool gelungen = gib_aus([&] {
    ordner = berichtspost::ordner();
    const QString datei = ordner + u'/' + name() + u".pdf"_s;
    ergebnis = berichtsdatei::schreibe(datei, bericht_, auswahl_->wahl(), fortgang(Bilder_geschrieben, 0));
    if (ergebnis.geschrieben) berichtspost::sende(u"Bildbericht: "_s + bericht_.vorgang, datei);
  });
  if (!ordner.isEmpty() && (!gelungen || !ergebnis.geschrieben)) berichtspost::raeume_weg(ordner);
  if (!gelungen) return;
  if (!ergebnis.geschrieben) return sage(u"Abgebrochen; es ist nichts verschickt."_s);
  melde(u"Der Bericht ist an das Mailprogramm übergeben."_s, ergebnis.fehlende);
}
