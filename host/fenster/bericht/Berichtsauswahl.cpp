#include "host/fenster/bericht/Berichtsauswahl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "host/bericht/Firmenzeichen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Milliseconds without another letter.
constexpr int Tippause = 300;
/// Pixels of the mark beside its buttons.
constexpr QSize Kleines_Zeichen(72, 40);

QComboBox* auswahl(const QString& name, const QList<std::pair<QString, int>>& eintraege, int gewaehlt) {
  auto* neue = new QComboBox;
  neue->setObjectName(name);
  for (const auto& [text, wert] : eintraege) neue->addItem(text, wert);
  neue->setCurrentIndex(neue->findData(gewaehlt));
  return neue;
}

void ruf(const std::function<void()>& wen) {
  if (wen) wen();
}

}  // namespace

Berichtsauswahl::Berichtsauswahl(const Berichtswahl& wahl, const Berichtskopf& kopf, QWidget* oberhalb)
    : QWidget(oberhalb) {
  setObjectName(u"Berichtsauswahl"_s);
  setMinimumWidth(300);
  auto* lage = new QVBoxLayout(this);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(baue_Seiten(wahl));
  lage->addWidget(baue_Angaben(wahl));
  lage->addWidget(baue_Kopf(kopf));
  getippt_.setSingleShot(true);
  getippt_.setInterval(Tippause);
  verbinde();
  erlaube();
}

QWidget* Berichtsauswahl::baue_Seiten(const Berichtswahl& wahl) {
  QList<std::pair<QString, int>> anzahlen;
  for (const int anzahl : Berichtswahl::Moegliche_je_Seite) anzahlen.emplace_back(QString::number(anzahl), anzahl);
  cbo_JeSeite = auswahl(u"cbo_JeSeite"_s, anzahlen, wahl.je_Seite);
  cbo_Dichte = auswahl(u"cbo_Dichte"_s,
      {{u"Druck (300 dpi)"_s, static_cast<int>(Dichte::Druck)}, {u"E-Mail (150 dpi)"_s, static_cast<int>(Dichte::Mail)},
          {u"Originale"_s, static_cast<int>(Dichte::Original)}},
      static_cast<int>(wahl.dichte));
  cbo_Dichte->setToolTip(u"Wie fein die Bilder in der PDF-Datei sind; für eine Mail wird die Datei so kleiner"_s);
  auto* seiten = new QWidget;
  auto* lage = new QFormLayout(seiten);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addRow(u"Bilder je &Seite:"_s, cbo_JeSeite);
  lage->addRow(u"Dich&te der Bilder:"_s, cbo_Dichte);
  return seiten;
}

QCheckBox* Berichtsauswahl::haken(const QString& name, const QString& text, bool an) {
  auto* neuer = new QCheckBox(text);
  neuer->setObjectName(name);
  neuer->setChecked(an);
  return neuer;
}

QWidget* Berichtsauswahl::baue_Angaben(const Berichtswahl& wahl) {
  chk_Alle = haken(u"chk_Alle"_s, u"&Alle Bilder statt der gekennzeichneten"_s, wahl.alle);
  chk_Info = haken(u"chk_Info"_s, u"Bild-&Info mitdrucken"_s, wahl.mit_Info);
  chk_Dateiname = haken(u"chk_Dateiname"_s, u"Datei&namen mitdrucken"_s, wahl.mit_Dateiname);
  chk_Aufnahmedatum = haken(u"chk_Aufnahmedatum"_s, u"Aufnahme&datum mitdrucken"_s, wahl.mit_Aufnahmedatum);
  chk_Ort = haken(u"chk_Ort"_s, u"&Ortsangaben in Originalen mitgeben"_s, wahl.mit_Ort);
  chk_Alle->setToolTip(u"Auch Bilder, bei denen „Drucken“ nicht angekreuzt ist"_s);
  chk_Ort->setToolTip(u"Ohne Kreuz verrät die PDF-Datei nicht, wo und womit die Bilder aufgenommen sind"_s);
  auto* angaben = new QWidget;
  auto* lage = new QVBoxLayout(angaben);
  lage->setContentsMargins(0, 6, 0, 6);
  for (QCheckBox* eines : {chk_Alle, chk_Info, chk_Dateiname, chk_Aufnahmedatum, chk_Ort}) lage->addWidget(eines);
  return angaben;
}

QWidget* Berichtsauswahl::baue_Kopf(const Berichtskopf& kopf) {
  auto* gruppe = new QGroupBox(u"Briefkopf"_s);
  auto* lage = new QFormLayout(gruppe);
  for (qsizetype i = 0; i < Berichtskopf::Zeilenzahl; ++i) {
    auto* zeile = new QLineEdit(kopf.zeilen.value(i));
    zeile->setObjectName(u"txt_Zeile%1"_s.arg(i + 1));
    if (i == 0) zeile->setPlaceholderText(u"Name der Firma"_s);
    lage->addRow(u"Zeile &%1:"_s.arg(i + 1), zeile);
    txt_Zeilen.append(zeile);
  }
  lbl_Zeichen = new QLabel;
  lbl_Zeichen->setObjectName(u"lbl_Zeichen"_s);
  lbl_Zeichen->setAlignment(Qt::AlignCenter);
  lbl_Zeichen->setFixedHeight(Kleines_Zeichen.height());
  cmd_Zeichen = new QPushButton(u"&Zeichen …"_s);
  cmd_Zeichen->setObjectName(u"cmd_Zeichen"_s);
  cmd_Zeichen->setToolTip(u"Wählt ein Bild, das rechts im Briefkopf steht"_s);
  cmd_OhneZeichen = new QPushButton(u"O&hne Zeichen"_s);
  cmd_OhneZeichen->setObjectName(u"cmd_OhneZeichen"_s);
  auto* knoepfe = new QHBoxLayout;
  for (QPushButton* einer : {cmd_Zeichen, cmd_OhneZeichen}) {
    einer->setAutoDefault(false);
    knoepfe->addWidget(einer);
  }
  lage->addRow(lbl_Zeichen);
  lage->addRow(knoepfe);
  zeichen(kopf.zeichen);
  if (Berichtskopf::ist_gesperrt()) {
    gruppe->setEnabled(false);
    gruppe->setToolTip(u"Den Briefkopf hat der Betrieb vorgegeben."_s);
  }
  return gruppe;
}

void Berichtsauswahl::verbinde() {
  connect(cbo_JeSeite, &QComboBox::currentIndexChanged, this, [this] { ruf(bei_Satz); });
  connect(cbo_Dichte, &QComboBox::currentIndexChanged, this, [this] {
    erlaube();
    ruf(bei_Wahl);
  });
  connect(chk_Ort, &QCheckBox::toggled, this, [this] { ruf(bei_Wahl); });
  for (const QCheckBox* eines : {chk_Alle, chk_Info, chk_Dateiname, chk_Aufnahmedatum})
    connect(eines, &QCheckBox::toggled, this, [this] { ruf(bei_Inhalt); });
  for (const QLineEdit* zeile : std::as_const(txt_Zeilen)) {
    connect(zeile, &QLineEdit::textChanged, this, [this] { getippt_.start(); });
    connect(zeile, &QLineEdit::editingFinished, this, &Berichtsauswahl::schliesse_Tippen);
  }
  connect(&getippt_, &QTimer::timeout, this, [this] { ruf(bei_Satz); });
  connect(cmd_Zeichen, &QPushButton::clicked, this, [this] {
    const QString datei = frage_Zeichen ? frage_Zeichen(zeichen_) : QString();
    if (datei.isEmpty()) return;
    zeichen(datei);
    ruf(bei_Satz);
  });
  connect(cmd_OhneZeichen, &QPushButton::clicked, this, [this] {
    zeichen({});
    ruf(bei_Satz);
  });
}

void Berichtsauswahl::schliesse_Tippen() {
  if (!getippt_.isActive()) return;
  getippt_.stop();
  ruf(bei_Satz);
}

void Berichtsauswahl::zeichen(const QString& datei) {
  zeichen_ = datei;
  const QImage pixel = datei.isEmpty() ? QImage() : firmenzeichen::pixel(datei, Kleines_Zeichen);
  lbl_Zeichen->setToolTip(datei);
  if (!pixel.isNull())
    lbl_Zeichen->setPixmap(QPixmap::fromImage(pixel));
  else
    lbl_Zeichen->setText(
        datei.isEmpty() ? u"(kein Zeichen)"_s : QFileInfo(datei).fileName() + u" ist nicht zu lesen"_s);
  cmd_OhneZeichen->setEnabled(!datei.isEmpty());
}

/// Only originals tell where they were taken.
void Berichtsauswahl::erlaube() {
  chk_Ort->setEnabled(cbo_Dichte->currentData().toInt() == static_cast<int>(Dichte::Original));
}

Berichtswahl Berichtsauswahl::wahl() const {
  Berichtswahl wert;
  wert.je_Seite = cbo_JeSeite->currentData().toInt();
  wert.dichte = static_cast<Dichte>(cbo_Dichte->currentData().toInt());
  wert.alle = chk_Alle->isChecked();
  wert.mit_Info = chk_Info->isChecked();
  wert.mit_Dateiname = chk_Dateiname->isChecked();
  wert.mit_Aufnahmedatum = chk_Aufnahmedatum->isChecked();
  wert.mit_Ort = chk_Ort->isChecked();
  return wert;
}

Berichtskopf Berichtsauswahl::kopf() const {
  QStringList zeilen;
  for (const QLineEdit* zeile : txt_Zeilen) zeilen.append(zeile->text());
  return Berichtskopf::aus(zeilen, zeichen_);
}
