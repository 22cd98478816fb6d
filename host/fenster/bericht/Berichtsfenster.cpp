#include "host/fenster/bericht/Berichtsfenster.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "host/bericht/Berichtsdatei.h"
#include "host/bericht/Berichtsinhalt.h"
#include "host/bericht/Firmenzeichen.h"
#include "host/bericht/Seitenplaner.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgang/Bildsammlung.h"
#include "host/fenster/Gemerkterplatz.h"
#include "host/fenster/bericht/Berichtsauswahl.h"
#include "host/fenster/bericht/Berichtseinstellung.h"
#include "host/fenster/bericht/Berichtspost.h"
#include "host/fenster/bericht/Seitenansicht.h"
#include "platform/host/KVOCore.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Anwendungsname = u"bildzuordnung"_s;
/// More do not fit above the pages.
constexpr qsizetype Genannte = 3;

QPushButton* knopf(const QString& name, const QString& text, const QString& hilfe = {}) {
  auto* neuer = new QPushButton(text);
  neuer->setObjectName(name);
  neuer->setToolTip(hilfe);
  neuer->setAutoDefault(false);
  return neuer;
}

QString genannt(const QStringList& fehlende) {
  const QString anzahl = fehlende.size() == 1 ? u"1 Bild fehlt: "_s : u"%1 Bilder fehlen: "_s.arg(fehlende.size());
  const QString rest = fehlende.size() > Genannte ? u" … und %1 weitere"_s.arg(fehlende.size() - Genannte) : QString();
  return anzahl + fehlende.mid(0, Genannte).join(u' ') + rest;
}

}  // namespace

Berichtsfenster::Berichtsfenster(Arbeitsplatz& platz, Vorgang vorgang, Berichtsfragen fragen, QWidget* ueber)
    : QDialog(ueber), platz_(platz), vorgang_(std::move(vorgang)), fragen_(std::move(fragen)) {
  setObjectName(u"Berichtsfenster"_s);
  setWindowTitle(u"Bericht – "_s + vorgang::infozeile(vorgang_));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  baue_auf();
  verbinde();
  resize(1100, 760);
  Gemerkterplatz ort(*this);
  KVOCore::aktuell().FensterWiederherstellen(Anwendungsname, ort);
  ansicht_->setFocus();
  erlaube();
}

Berichtsfenster::~Berichtsfenster() = default;

void Berichtsfenster::baue_auf() {
  auto* oben = new QHBoxLayout;
  auto* lage = new QVBoxLayout(this);
  lage->addLayout(oben, 1);
  oben->addWidget(baue_Vorschau(), 1);
  oben->addWidget(baue_Seite());
  lbl_Status = new QLabel;
  lbl_Status->setObjectName(u"lbl_Status"_s);
  lbl_Status->setTextFormat(Qt::PlainText);
  // A long path must not widen the window; the tool tip has all of it.
  lbl_Status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  cmd_Schliessen = knopf(u"cmd_Schliessen"_s, u"S&chließen"_s);
  auto* unten = new QHBoxLayout;
  unten->addWidget(lbl_Status, 1);
  unten->addWidget(cmd_Schliessen);
  lage->addLayout(unten);
}

QWidget* Berichtsfenster::baue_Vorschau() {
  lbl_Hinweis = new QLabel;
  lbl_Hinweis->setObjectName(u"lbl_Hinweis"_s);
  lbl_Hinweis->setTextFormat(Qt::PlainText);
  lbl_Hinweis->setWordWrap(true);
  lbl_Hinweis->hide();
  ansicht_ = new Seitenansicht;
  ansicht_->setObjectName(u"Seitenansicht"_s);
  ansicht_->Ladewege(
      [this](const Berichtsbild& bild, QSize groesse) { return ladung_.pixel(bild, groesse); }, firmenzeichen::pixel);
  ansicht_->bei_Plan = [this](const auto& naechste) {
    ladung_.widerrufe();
    for (const auto& [bild, groesse] : naechste) ladung_.kuendige_an(*bild, groesse);
  };
  lbl_Seite = new QLabel;
  lbl_Seite->setObjectName(u"lbl_Seite"_s);
  cmd_Seitenbreite = knopf(u"cmd_Seitenbreite"_s, u"Seiten&breite"_s);
  cmd_GanzeSeite = knopf(u"cmd_GanzeSeite"_s, u"&Ganze Seite"_s);
  cmd_Kleiner = knopf(u"cmd_Kleiner"_s, u"−"_s, u"Kleiner (Strg+-)"_s);
  cmd_Groesser = knopf(u"cmd_Groesser"_s, u"+"_s, u"Größer (Strg++)"_s);
  cmd_Kleiner->setAccessibleName(u"Kleiner"_s);
  cmd_Groesser->setAccessibleName(u"Größer"_s);
  for (QPushButton* einer : {cmd_Kleiner, cmd_Groesser}) einer->setFixedWidth(einer->sizeHint().height() + 6);
  for (QPushButton* einer : {cmd_Seitenbreite, cmd_GanzeSeite}) einer->setCheckable(true);
  auto* vorschau = new QWidget;
  auto* lage = new QVBoxLayout(vorschau);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(lbl_Hinweis);
  lage->addWidget(ansicht_, 1);
  auto* zeile = new QHBoxLayout;
  lage->addLayout(zeile);
  zeile->addWidget(lbl_Seite, 1);
  for (QPushButton* einer : {cmd_Seitenbreite, cmd_GanzeSeite, cmd_Kleiner, cmd_Groesser}) zeile->addWidget(einer);
  return vorschau;
}

QWidget* Berichtsfenster::baue_Seite() {
  const bool merkt = platz_.optionen().merken;
  auswahl_ = new Berichtsauswahl(
      merkt ? berichtseinstellung::wahl() : Berichtswahl(), merkt ? Berichtskopf::gemerkter() : Berichtskopf());
  bar_Fortschritt = new QProgressBar;
  bar_Fortschritt->setObjectName(u"bar_Fortschritt"_s);
  bar_Fortschritt->setAccessibleName(u"Fortschritt"_s);
  cmd_Abbrechen = knopf(u"cmd_Abbrechen"_s, u"Abbr&echen"_s);
  cmd_Speichern = knopf(u"cmd_Speichern"_s, u"Als &PDF speichern …"_s);
  cmd_Drucken = knopf(u"cmd_Drucken"_s, u"D&rucken …"_s);
  cmd_Senden = knopf(u"cmd_Senden"_s, u"Per &Mail senden …"_s,
      berichtspost::moeglich() ? u"Öffnet eine Mail mit dem Bericht als Anhang"_s
                               : u"Auf diesem Rechner fehlt das Programm xdg-email (Paket xdg-utils)"_s);
  cmd_Speichern->setDefault(true);
  auto* seite = new QWidget;
  auto* lage = new QVBoxLayout(seite);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(auswahl_);
  lage->addStretch(1);
  for (QWidget* eines : std::initializer_list<QWidget*>{bar_Fortschritt, cmd_Abbrechen}) {
    // Nothing moves when it appears.
    QSizePolicy platz = eines->sizePolicy();
    platz.setRetainSizeWhenHidden(true);
    eines->setSizePolicy(platz);
    eines->hide();
    lage->addWidget(eines);
  }
  for (QPushButton* einer : {cmd_Speichern, cmd_Drucken, cmd_Senden}) lage->addWidget(einer);
  return seite;
}

void Berichtsfenster::verbinde() {
  const auto vergroessere = [this](int stufen) { return [this, stufen] { ansicht_->vergroessere(stufen); }; };
  connect(new QShortcut(QKeySequence::ZoomIn, this), &QShortcut::activated, this, vergroessere(1));
  connect(new QShortcut(QKeySequence::ZoomOut, this), &QShortcut::activated, this, vergroessere(-1));
  connect(cmd_Groesser, &QPushButton::clicked, this, vergroessere(1));
  connect(cmd_Kleiner, &QPushButton::clicked, this, vergroessere(-1));
  connect(cmd_Seitenbreite, &QPushButton::clicked, this, [this] { ansicht_->mass(Seitenansicht::Mass::Seitenbreite); });
  connect(cmd_GanzeSeite, &QPushButton::clicked, this, [this] { ansicht_->mass(Seitenansicht::Mass::Ganze_Seite); });
  connect(cmd_Speichern, &QPushButton::clicked, this, &Berichtsfenster::speichere);
  connect(cmd_Drucken, &QPushButton::clicked, this, &Berichtsfenster::drucke);
  connect(cmd_Senden, &QPushButton::clicked, this, &Berichtsfenster::sende);
  connect(cmd_Abbrechen, &QPushButton::clicked, this, &Berichtsfenster::reject);
  connect(cmd_Schliessen, &QPushButton::clicked, this, &Berichtsfenster::reject);
  ansicht_->bei_Blick = [this] { zeige_Blick(); };
  auswahl_->bei_Inhalt = [this] { lies(); };
  auswahl_->bei_Satz = [this] { setze(); };
  auswahl_->frage_Zeichen = [this](const QString& bisher) { return fragen_.zeichen(this, bisher); };
}

void Berichtsfenster::showEvent(QShowEvent* ereignis) {
  QDialog::showEvent(ereignis);
  if (!gelesen_) QTimer::singleShot(0, this, &Berichtsfenster::lies);
}

void Berichtsfenster::lies() {
  halt_ = noch_einmal_ = arbeit_ == Arbeit::Lesen;
  if (noch_einmal_) return;
  {
    const QScopedValueRollback arbeit(arbeit_, Arbeit::Lesen);
    erlaube();
    do {
      halt_ = noch_einmal_ = false;
      lies_einmal();
    } while (noch_einmal_ && isVisible());
  }
  erlaube();
  if (isVisible()) setze();
}

void Berichtsfenster::lies_einmal() {
  grund_.clear();
  gelesen_ = false;
  try {
    // Makes the drive known; what is wrong with it stands above the pages.
    static_cast<void>(platz_.wurzel_fehlt());
    if (!sammlung_) sammlung_ = lies_Bildsammlung(platz_, vorgang_);
    bericht_ = berichtsinhalt::lies(*sammlung_, platz_.wurzel(), vorgang::infozeile(vorgang_), auswahl_->wahl(),
        fortgang(u"%v von %m Bildern gelesen"_s, geduld_));
    gelesen_ = true;
  } catch (const Abbruch& abbruch) {
    grund_ = abbruch.text();
  } catch (const Laufzeitfehler& fehler) {
    grund_ = fehler.Beschreibung();
  }
}

void Berichtsfenster::setze() {
  // What is being read is laid out when it is there.
  if (arbeit_ == Arbeit::Lesen) return;
  bericht_.kopf = auswahl_->kopf();
  if (gelesen_)
    ansicht_->zeige(bericht_,
        seitenplan::plane(bericht_, auswahl_->wahl().je_Seite, firmenzeichen::groesse(bericht_.kopf.zeichen)));
  else
    ansicht_->zeige({}, {});
  zeige_Hinweis();
}

void Berichtsfenster::zeige_Hinweis() {
  QStringList saetze{grund_};
  if (gelesen_) {
    const QStringList ohne = berichtsdatei::fehlende(bericht_);
    if (!ohne.isEmpty()) saetze.append(platz_.wurzel_fehlt().value_or(QString()));
    if (bericht_.bilder.empty()) saetze.append(bericht_.ohne_Bilder);
    if (bericht_.bilder.empty() && sammlung_->AnzahlPos() > 0)
      saetze.append(u"„Alle Bilder statt der gekennzeichneten“ nimmt sie trotzdem auf."_s);
    if (!ohne.isEmpty()) saetze.append(genannt(ohne));
    lbl_Hinweis->setToolTip(ohne.join(u'\n'));
  }
  saetze.removeAll(QString());
  lbl_Hinweis->setText(saetze.join(u' '));
  lbl_Hinweis->setVisible(!saetze.isEmpty());
}

void Berichtsfenster::zeige_Blick() {
  const QString stand =
      ansicht_->seiten() == 0 ? QString() : u"Seite %1 von %2"_s.arg(ansicht_->seite()).arg(ansicht_->seiten());
  lbl_Seite->setText(stand);
  ansicht_->setAccessibleDescription(stand);
  cmd_Seitenbreite->setChecked(ansicht_->mass() == Seitenansicht::Mass::Seitenbreite);
  cmd_GanzeSeite->setChecked(ansicht_->mass() == Seitenansicht::Mass::Ganze_Seite);
}

void Berichtsfenster::sage(const QString& worte) {
  lbl_Status->setText(worte);
  lbl_Status->setToolTip(worte);
}

void Berichtsfenster::erlaube() {
  const bool gibt_aus = arbeit_ == Arbeit::Ausgabe;
  const bool bereit = arbeit_ == Arbeit::Keine && gelesen_;
  auswahl_->setEnabled(!gibt_aus);
  cmd_Speichern->setEnabled(bereit);
  cmd_Drucken->setEnabled(bereit);
  cmd_Senden->setEnabled(bereit && berichtspost::moeglich());
  cmd_Schliessen->setEnabled(!gibt_aus);
  cmd_Abbrechen->setEnabled(gibt_aus);
  cmd_Abbrechen->setVisible(gibt_aus);
  bar_Fortschritt->setVisible(gibt_aus);
  bar_Fortschritt->reset();
}

void Berichtsfenster::done(int ergebnis) {
  auswahl_->schliesse_Tippen();
  if (platz_.optionen().merken) {
    berichtseinstellung::wahl(auswahl_->wahl());
    auswahl_->kopf().merke();
  }
  KVOCore::aktuell().FensterSpeichern(Anwendungsname, Gemerkterplatz(*this));
  QDialog::done(ergebnis);
}

void Berichtsfenster::reject() {
  halt_ = true;
  cmd_Abbrechen->setEnabled(false);
  if (arbeit_ != Arbeit::Ausgabe) QDialog::reject();
}
