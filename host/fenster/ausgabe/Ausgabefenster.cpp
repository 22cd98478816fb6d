#include "host/fenster/ausgabe/Ausgabefenster.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "host/bericht/ausgabe/Zipziel.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "host/fenster/Zielordner.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Breite = 620;
const QString Zip = u".zip"_s;

/// Where the last target lay, as long as it is there.
QString anfangsordner(const QString& gemerkter) {
  return !gemerkter.isEmpty() && QFileInfo(gemerkter).isDir() ? gemerkter : zielordner();
}

}  // namespace

Ausgabefenster::Ausgabefenster(const Auftrag& auftrag, Zielwahl zielwahl, QWidget* ueber)
    : QDialog(ueber),
      auftrag_(auftrag),
      zielwahl_(std::move(zielwahl)),
      txt_Ziel(new QLineEdit(this)),
      cmd_Ordner(new QPushButton(u"&Ordner wählen …"_s, this)),
      cmd_Zip(new QPushButton(u"&ZIP-Datei wählen …"_s, this)),
      chk_Texte(new QCheckBox(u"&Texte beilegen"_s, this)),
      chk_Gekennzeichnete(new QCheckBox(u"Nur zum &Drucken gekennzeichnete"_s, this)),
      chk_Ort(new QCheckBox(u"Ortsangaben (&GPS) mitgeben"_s, this)),
      lbl_Meldung(new QLabel(this)),
      bar_Fortschritt(new QProgressBar(this)),
      cmd_Ausgeben(new QPushButton(u"&Ausgeben"_s, this)),
      cmd_Abbrechen(new QPushButton(u"A&bbrechen"_s, this)) {
  setObjectName(u"Ausgabefenster"_s);
  setWindowTitle(u"Bilder ausgeben"_s);
  baue_auf();
  const Ausgabeeinstellung alte = auftrag.merken ? Ausgabeeinstellung::gemerkte() : Ausgabeeinstellung();
  chk_Texte->setChecked(alte.wahl.texte);
  chk_Gekennzeichnete->setChecked(alte.wahl.nur_gekennzeichnete);
  txt_Ziel->setText(
      QDir::toNativeSeparators(anfangsordner(alte.ordner) + u'/' + auftrag.name) + (alte.als_Zip ? Zip : QString()));
  zeige_Anzahl();
  txt_Ziel->setFocus();
  connect(txt_Ziel, &QLineEdit::textChanged, this, &Ausgabefenster::zeige_Anzahl);
  connect(chk_Gekennzeichnete, &QCheckBox::toggled, this, &Ausgabefenster::zeige_Anzahl);
  connect(cmd_Ordner, &QPushButton::clicked, this, &Ausgabefenster::waehle_Ordner);
  connect(cmd_Zip, &QPushButton::clicked, this, &Ausgabefenster::waehle_Zip);
  connect(cmd_Ausgeben, &QPushButton::clicked, this, &Ausgabefenster::gib_aus);
  connect(cmd_Abbrechen, &QPushButton::clicked, this, &Ausgabefenster::reject);
}

void Ausgabefenster::baue_auf() {
  auto* lage = new QVBoxLayout(this);
  baue_Ziel(*lage);
  baue_Wahl(*lage);
  lbl_Meldung->setObjectName(u"lbl_Meldung"_s);
  lbl_Meldung->setTextFormat(Qt::PlainText);
  lbl_Meldung->setWordWrap(true);
  // Three lines always, so that the window keeps its size while words come and go.
  lbl_Meldung->setMinimumHeight(3 * lbl_Meldung->fontMetrics().lineSpacing());
  lbl_Meldung->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lage->addWidget(lbl_Meldung, 1);
  baue_Fuss(*lage);
  setMinimumWidth(Breite);
}

void Ausgabefenster::baue_Ziel(QVBoxLayout& lage) {
  auto* beschriftung = new QLabel(u"&In den Ordner oder die ZIP-Datei:"_s, this);
  beschriftung->setBuddy(txt_Ziel);
  lage.addWidget(beschriftung);
  txt_Ziel->setObjectName(u"txt_Ziel"_s);
  txt_Ziel->setAccessibleName(u"Ordner oder ZIP-Datei"_s);
  lage.addWidget(txt_Ziel);
  auto* zeile = new QHBoxLayout;
  cmd_Ordner->setObjectName(u"cmd_Ordner"_s);
  cmd_Zip->setObjectName(u"cmd_Zip"_s);
  for (QPushButton* knopf : {cmd_Ordner, cmd_Zip}) {
    knopf->setAutoDefault(false);
    zeile->addWidget(knopf);
  }
  zeile->addStretch(1);
  lage.addLayout(zeile);
}

void Ausgabefenster::baue_Wahl(QVBoxLayout& lage) {
  chk_Texte->setObjectName(u"chk_Texte"_s);
  chk_Texte->setToolTip(u"Drucktext und Information jedes Bildes als Textdatei gleichen Namens"_s);
  chk_Gekennzeichnete->setObjectName(u"chk_Gekennzeichnete"_s);
  chk_Gekennzeichnete->setToolTip(u"Die Bilder mit „Drucken“"_s);
  chk_Ort->setObjectName(u"chk_Ort"_s);
  chk_Ort->setToolTip(u"Ohne Häkchen gehen die Bilder hinaus, wie sie sind, nur ohne den Ort der Aufnahme"_s);
  for (QCheckBox* feld : {chk_Texte, chk_Gekennzeichnete, chk_Ort}) lage.addWidget(feld);
}

void Ausgabefenster::baue_Fuss(QVBoxLayout& lage) {
  bar_Fortschritt->setObjectName(u"bar_Fortschritt"_s);
  bar_Fortschritt->setAccessibleName(u"Fortschritt"_s);
  bar_Fortschritt->setValue(0);
  cmd_Ausgeben->setObjectName(u"cmd_Ausgeben"_s);
  cmd_Ausgeben->setDefault(true);
  cmd_Abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  cmd_Abbrechen->setAutoDefault(false);
  auto* fuss = new QHBoxLayout;
  fuss->addWidget(bar_Fortschritt, 1);
  fuss->addWidget(cmd_Ausgeben);
  fuss->addWidget(cmd_Abbrechen);
  lage.addLayout(fuss);
}

Ausgabewahl Ausgabefenster::wahl() const {
  return {chk_Texte->isChecked(), chk_Gekennzeichnete->isChecked(), chk_Ort->isChecked()};
}

QString Ausgabefenster::ziel() const {
  return txt_Ziel->text().trimmed();
}

/// A folder of its own in the one that was chosen, so that the pictures lie together.
void Ausgabefenster::waehle_Ordner() {
  const QString gewaehlt = zielwahl_.ordner(this, QFileInfo(ziel()).path());
  if (!gewaehlt.isEmpty()) txt_Ziel->setText(QDir(gewaehlt).filePath(auftrag_.name));
}

void Ausgabefenster::waehle_Zip() {
  const QString bisher = ziel();
  const QString gewaehlt = zielwahl_.zip(this, Zipziel::ist_gemeint(bisher) ? bisher : bisher + Zip);
  if (!gewaehlt.isEmpty()) txt_Ziel->setText(Zipziel::ist_gemeint(gewaehlt) ? gewaehlt : gewaehlt + Zip);
}

void Ausgabefenster::zeige_Anzahl() {
  anzahl_ = ausgabebilder::anzahl(auftrag_.store, wahl());
  if (anzahl_ == 0)
    sage(u"Kein Bild des Vorgangs ist zum Drucken gekennzeichnet."_s);
  else
    sage(vorgang::anzahl_Bilder(anzahl_) + (Zipziel::ist_gemeint(ziel()) ? u" in einer ZIP-Datei"_s : u" im Ordner"_s));
}

void Ausgabefenster::sage(const QString& worte) {
  lbl_Meldung->setText(worte);
  erlaube();
}

void Ausgabefenster::erlaube() {
  for (QWidget* feld :
      std::initializer_list<QWidget*>{txt_Ziel, cmd_Ordner, cmd_Zip, chk_Texte, chk_Gekennzeichnete, chk_Ort})
    feld->setEnabled(!schreibt_);
  cmd_Ausgeben->setEnabled(!schreibt_ && anzahl_ > 0 && !ziel().isEmpty());
}

void Ausgabefenster::merke() const {
  if (!auftrag_.merken) return;
  Ausgabeeinstellung{wahl(), Zipziel::ist_gemeint(ziel()), QFileInfo(ergebnis_.ziel).path()}.merke();
}

bool Ausgabefenster::zeige_Fortschritt(int fertige, int alle) {
  bar_Fortschritt->setRange(0, alle);
  bar_Fortschritt->setValue(fertige);
  QCoreApplication::processEvents();
  return !angehalten_;
}

void Ausgabefenster::gib_aus() {
  angehalten_ = false;
  schreibt_ = true;
  sage(u"Die Bilder werden ausgegeben …"_s);
  QString gescheitert;
  try {
    const auto fehler = versuche([this] {
      ergebnis_ = Bilderausgabe(auftrag_.store, auftrag_.wurzel, wahl())
                      .gib_aus(namen::tabellenpfad(ziel()),
                          [this](int fertige, int alle) { return zeige_Fortschritt(fertige, alle); });
    });
    if (fehler) gescheitert = fehler->Beschreibung();
  } catch (const Abbruch& abbruch) {
    gescheitert = abbruch.text();
  }
  schreibt_ = false;
  bar_Fortschritt->setValue(0);
  if (!gescheitert.isEmpty() || ergebnis_.angehalten)
    return sage(gescheitert.isEmpty() ? ergebnis_.text() : gescheitert);
  merke();
  accept();
}

/// While it writes, the first click takes that back and leaves the window open.
void Ausgabefenster::reject() {
  angehalten_ = true;
  if (!schreibt_) QDialog::reject();
}
