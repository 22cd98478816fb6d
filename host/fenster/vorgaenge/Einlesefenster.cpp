#include "host/fenster/vorgaenge/Einlesefenster.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "host/betrieb/vorgang/Vorgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Promille = 1'000;

QString wort(Zeilenart art) {
  switch (art) {
    case Zeilenart::Neu:
      return u"neu"_s;
    case Zeilenart::Geaendert:
      return u"geändert"_s;
    case Zeilenart::Gleich:
      return u"gleich"_s;
    case Zeilenart::Falsch:
      return u"falsch"_s;
  }
  return {};
}

QString in_Worten(const Zeilenbefund& zeile) {
  const QString anfang = u"Zeile %1 – %2: "_s.arg(QString::number(zeile.zeile), wort(zeile.art));
  if (zeile.art == Zeilenart::Falsch) return anfang + zeile.grund;
  const QString text = zeile.text.simplified();
  return anfang + vorgang::art_von(zeile.typ1).einzahl + u' ' + zeile.nummer +
      (text.isEmpty() ? QString() : u" – "_s + text);
}

QString in_Worten(const Einlesebefund& befund) {
  const QLocale deutsch(QLocale::German);
  const auto zahl = [&](qint64 wert) { return deutsch.toString(wert); };
  QString worte = u"Neu: %1 · geändert: %2 · gleich: %3 · falsch: %4"_s.arg(
      zahl(befund.neu), zahl(befund.geaendert), zahl(befund.gleich), zahl(befund.falsch));
  if (befund.neue_Kunden + befund.geaenderte_Kunden > 0)
    worte += u" · Kunden neu: %1, geändert: %2"_s.arg(zahl(befund.neue_Kunden), zahl(befund.geaenderte_Kunden));
  return worte;
}

QComboBox* spaltenauswahl(int nummer, const std::optional<Vorgangsspalte>& gewaehlt) {
  auto* auswahl = new QComboBox;
  auswahl->setObjectName(u"cbo_Spalte%1"_s.arg(nummer));
  auswahl->setAccessibleName(u"Bedeutung der Spalte %1"_s.arg(nummer));
  auswahl->addItem(u"(übergehen)"_s, -1);
  for (const Vorgangsspalte spalte : vorgangsspalten::alle())
    auswahl->addItem(vorgangsspalten::eigenschaft(spalte).name, static_cast<int>(spalte));
  auswahl->setCurrentIndex(gewaehlt ? auswahl->findData(static_cast<int>(*gewaehlt)) : 0);
  return auswahl;
}

}  // namespace

QString waehle_Liste(QWidget* ueber) {
  return QFileDialog::getOpenFileName(
      ueber, u"Vorgänge einlesen"_s, {}, u"Listen (*.csv *.txt *.json *.jsonl);;Alle Dateien (*)"_s);
}

Einlesefenster::Einlesefenster(const QString& verbindung, const QString& datei, QWidget* ueber)
    : QDialog(ueber),
      arbeit_(verbindung),
      datei_(datei),
      lbl_Datei(new QLabel(this)),
      chk_Kopfzeile(new QCheckBox(u"Die &erste Zeile nennt die Spalten"_s, this)),
      cbo_Art(new QComboBox(this)),
      tbl_Spalten(new QTableWidget(this)),
      lbl_Befund(new QLabel(this)),
      lst_Zeilen(new QListWidget(this)),
      chk_Auslassen(new QCheckBox(u"&Fehlerhafte Zeilen auslassen"_s, this)),
      bar_Fortschritt(new QProgressBar(this)),
      cmd_Einlesen(new QPushButton(u"Ein&lesen"_s, this)),
      cmd_Abbrechen(new QPushButton(u"A&bbrechen"_s, this)) {
  setObjectName(u"Einlesefenster"_s);
  setWindowTitle(u"Vorgänge einlesen"_s);
  baue_auf();
  arbeit_.bei_Fortschritt = [this](
                                auto schritt, qint64 getan, qint64 ganz) { zeige_Fortschritt(schritt, getan, ganz); };
  arbeit_.bei_Ausfall = [this](const QString& worte) {
    if (std::exchange(noch_einmal_, false)) return pruefe_neu();
    schreibt_ = false;
    sage(worte);
  };
  erlaube();
  sage(u"Die Liste wird gelesen …"_s);
  arbeit_.oeffne(datei, [this](const Einlesearbeit::Ansicht& ansicht) { zeige_Ansicht(ansicht); });
}

void Einlesefenster::baue_auf() {
  auto* lage = new QVBoxLayout(this);
  baue_Auswahl(*lage);
  lbl_Befund->setObjectName(u"lbl_Befund"_s);
  lbl_Befund->setTextFormat(Qt::PlainText);
  lbl_Befund->setWordWrap(true);
  lage->addWidget(lbl_Befund);
  lst_Zeilen->setObjectName(u"lst_Zeilen"_s);
  lst_Zeilen->setAccessibleName(u"Was die Zeilen der Liste tun"_s);
  lage->addWidget(lst_Zeilen, 1);
  chk_Auslassen->setObjectName(u"chk_Auslassen"_s);
  lage->addWidget(chk_Auslassen);
  baue_Fuss(*lage);
  resize(820, 620);
  connect(chk_Kopfzeile, &QCheckBox::clicked, this, &Einlesefenster::waehle_Kopfzeile);
  connect(cbo_Art, &QComboBox::activated, this, &Einlesefenster::pruefe_neu);
  connect(chk_Auslassen, &QCheckBox::clicked, this, &Einlesefenster::erlaube);
  connect(cmd_Einlesen, &QPushButton::clicked, this, &Einlesefenster::uebernimm);
  connect(cmd_Abbrechen, &QPushButton::clicked, this, &Einlesefenster::reject);
}

void Einlesefenster::baue_Auswahl(QVBoxLayout& lage) {
  lbl_Datei->setObjectName(u"lbl_Datei"_s);
  lbl_Datei->setTextFormat(Qt::PlainText);
  lbl_Datei->setText(QFileInfo(datei_).fileName());
  lbl_Datei->setToolTip(datei_);
  lage.addWidget(lbl_Datei);
  auto* zeile = new QHBoxLayout;
  chk_Kopfzeile->setObjectName(u"chk_Kopfzeile"_s);
  zeile->addWidget(chk_Kopfzeile);
  zeile->addStretch(1);
  auto* art = new QLabel(u"&Art, wo die Liste keine nennt:"_s);
  art->setBuddy(cbo_Art);
  zeile->addWidget(art);
  cbo_Art->setObjectName(u"cbo_Art"_s);
  cbo_Art->addItem(u"(keine)"_s, QString());
  for (const vorgang::Art& eine : vorgang::bekannte_Arten()) cbo_Art->addItem(eine.einzahl, eine.typ1);
  zeile->addWidget(cbo_Art);
  lage.addLayout(zeile);
  tbl_Spalten->setObjectName(u"tbl_Spalten"_s);
  tbl_Spalten->setAccessibleName(u"Die ersten Zeilen der Liste"_s);
  tbl_Spalten->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tbl_Spalten->verticalHeader()->hide();
  tbl_Spalten->setTabKeyNavigation(false);
  lage.addWidget(tbl_Spalten, 1);
}

void Einlesefenster::baue_Fuss(QVBoxLayout& lage) {
  bar_Fortschritt->setObjectName(u"bar_Fortschritt"_s);
  bar_Fortschritt->setAccessibleName(u"Fortschritt"_s);
  bar_Fortschritt->setRange(0, Promille);
  cmd_Einlesen->setObjectName(u"cmd_Einlesen"_s);
  cmd_Einlesen->setDefault(true);
  cmd_Abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  cmd_Abbrechen->setAutoDefault(false);
  auto* fuss = new QHBoxLayout;
  fuss->addWidget(bar_Fortschritt, 1);
  fuss->addWidget(cmd_Einlesen);
  fuss->addWidget(cmd_Abbrechen);
  lage.addLayout(fuss);
}

void Einlesefenster::zeige_Ansicht(const Einlesearbeit::Ansicht& ansicht) {
  ansicht_ = ansicht;
  lbl_Datei->setText(QFileInfo(datei_).fileName() + u" – "_s + ansicht.form);
  chk_Kopfzeile->setChecked(ansicht.wahl.kopfzeile);
  chk_Kopfzeile->setEnabled(!ansicht.fest);
  zeige_Werte();
  pruefe_neu();
}

/// The first lines, below the choice of what each column means.
void Einlesefenster::zeige_Werte() {
  qsizetype breite = 0;
  for (const Listenzeile& zeile : ansicht_.zeilen) breite = std::max(breite, zeile.werte.size());
  if (ansicht_.fest || breite == 0) breite = ansicht_.wahl.spalten.size();
  tbl_Spalten->clear();
  tbl_Spalten->setColumnCount(static_cast<int>(breite));
  tbl_Spalten->setRowCount(static_cast<int>(ansicht_.zeilen.size()) + 1);
  QStringList titel;
  for (int spalte = 0; spalte < tbl_Spalten->columnCount(); ++spalte) {
    titel.append(u"Spalte %1"_s.arg(spalte + 1));
    auto* auswahl = spaltenauswahl(spalte + 1, ansicht_.wahl.spalten.value(spalte));
    auswahl->setEnabled(!ansicht_.fest);
    connect(auswahl, &QComboBox::activated, this, &Einlesefenster::pruefe_neu);
    tbl_Spalten->setCellWidget(0, spalte, auswahl);
    for (int zeile = 0; zeile < ansicht_.zeilen.size(); ++zeile)
      tbl_Spalten->setItem(
          zeile + 1, spalte, new QTableWidgetItem(ansicht_.zeilen.at(zeile).werte.value(spalte).text.simplified()));
  }
  tbl_Spalten->setHorizontalHeaderLabels(titel);
  tbl_Spalten->resizeColumnsToContents();
}

void Einlesefenster::waehle_Kopfzeile(bool kopfzeile) {
  ansicht_.wahl = kopfzeile && !ansicht_.zeilen.isEmpty() ? spaltenwahl::nach_Kopfzeile(ansicht_.zeilen.first().werte)
                                                          : spaltenwahl::nach_Platz();
  zeige_Werte();
  pruefe_neu();
}

Spaltenwahl Einlesefenster::gewaehlte() const {
  Spaltenwahl wahl{{}, chk_Kopfzeile->isChecked(), cbo_Art->currentData().toString()};
  if (ansicht_.fest) wahl.spalten = ansicht_.wahl.spalten;
  for (int spalte = 0; !ansicht_.fest && spalte < tbl_Spalten->columnCount(); ++spalte) {
    const int nummer = qobject_cast<QComboBox*>(tbl_Spalten->cellWidget(0, spalte))->currentData().toInt();
    wahl.spalten.append(nummer < 0 ? std::nullopt : std::optional(static_cast<Vorgangsspalte>(nummer)));
  }
  return wahl;
}

void Einlesefenster::pruefe_neu() {
  verglichen_ = false;
  erlaube();
  if (arbeit_.laeuft()) {
    noch_einmal_ = true;
    return arbeit_.gib_auf();
  }
  const Spaltenwahl wahl = gewaehlte();
  lst_Zeilen->clear();
  if (const QString grund = spaltenwahl::pruefe(wahl); !grund.isEmpty()) return sage(grund);
  sage(u"Die Liste wird gelesen …"_s);
  arbeit_.pruefe(wahl, [this](const Einlesearbeit::Vorschau& vorschau) { zeige_Vorschau(vorschau); });
}

void Einlesefenster::zeige_Vorschau(const Einlesearbeit::Vorschau& vorschau) {
  if (std::exchange(noch_einmal_, false)) return pruefe_neu();
  befund_ = vorschau.befund;
  verglichen_ = true;
  sage(befund_.zeilen() == 0 ? u"Die Liste enthält keine Vorgänge."_s : in_Worten(befund_));
  lst_Zeilen->clear();
  for (const Zeilenbefund& zeile : vorschau.falsche) lst_Zeilen->addItem(in_Worten(zeile));
  for (const Zeilenbefund& zeile : vorschau.erste)
    if (zeile.art != Zeilenart::Falsch) lst_Zeilen->addItem(in_Worten(zeile));
}

void Einlesefenster::sage(const QString& worte) {
  lbl_Befund->setText(worte);
  bar_Fortschritt->setValue(0);
  erlaube();
}

void Einlesefenster::erlaube() {
  const bool falsche = verglichen_ && befund_.falsch > 0;
  const bool etwas = befund_.neu + befund_.geaendert > 0;
  chk_Auslassen->setEnabled(falsche && !schreibt_);
  cmd_Einlesen->setEnabled(verglichen_ && etwas && !schreibt_ && (!falsche || chk_Auslassen->isChecked()));
  for (QWidget* feld : std::initializer_list<QWidget*>{cbo_Art, tbl_Spalten}) feld->setEnabled(!schreibt_);
  chk_Kopfzeile->setEnabled(!schreibt_ && !ansicht_.fest);
}

void Einlesefenster::uebernimm() {
  schreibt_ = true;
  verglichen_ = false;
  const bool auslassen = chk_Auslassen->isChecked();
  sage(u"Die Vorgänge werden übernommen …"_s);
  arbeit_.uebernimm(auslassen, [this, auslassen](const Einlesebefund& befund) {
    schreibt_ = false;
    if (befund.falsch > 0 && !auslassen) {
      // Another desk has changed the table since the lines were compared.
      return pruefe_neu();
    }
    ergebnis_ = u"Vorgänge eingelesen – "_s + in_Worten(befund);
    accept();
  });
}

void Einlesefenster::zeige_Fortschritt(Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz) {
  using Schritt = Vorgangseinlesung::Schritt;
  if (schritt == Schritt::Vergleichen) lbl_Befund->setText(u"Die Liste wird mit der Datenbank verglichen …"_s);
  bar_Fortschritt->setValue(ganz == 0 ? 0 : static_cast<int>(getan * Promille / ganz));
}

/// While it writes, the first click takes that back and leaves the window open.
void Einlesefenster::reject() {
  if (schreibt_) return arbeit_.gib_auf();
  QDialog::reject();
}
