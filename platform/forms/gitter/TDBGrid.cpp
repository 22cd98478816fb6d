#include "platform/forms/gitter/TDBGrid.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Twips.h"
#include "platform/forms/gitter/Gitterdelegat.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

using Dimension = XArrayDBObject::Dimension;

TDBGrid::TDBGrid(QWidget* behaelter, const QString& name)
    : QTableView(behaelter), Steuerelement(*this, name, Farbrollen::Feld) {
  setItemDelegate(new Gitterdelegat(*this));
  setModel(&modell_);
  // The toolkit's own selection stays empty: filled row by row, its cost grows with the square of the rows.
  setSelectionMode(QAbstractItemView::NoSelection);
  setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  richte_Koepfe_ein();
  auswahl_.geaendert_ = [this] {
    anker_ = -1;
    viewport()->update();
  };
}

// What the model tells while it goes must not count as something that the user did.
TDBGrid::~TDBGrid() {
  durch_Code_ = true;
  entwerte_Editor();
  setModel(nullptr);
}

void TDBGrid::richte_Koepfe_ein() {
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setStretchLastSection(true);
  QHeaderView& waehler = *verticalHeader();
  constexpr int Luft = 6;
  constexpr int Breite = 22;
  waehler.setHighlightSections(false);
  waehler.setSectionResizeMode(QHeaderView::Fixed);
  waehler.setMinimumSectionSize(fontMetrics().height());
  waehler.setDefaultSectionSize(fontMetrics().height() + Luft);
  waehler.setFixedWidth(Breite);
  connect(&waehler, &QHeaderView::sectionPressed, this, [this](int zeile) {
    setFocus(Qt::MouseFocusReason);
    druecke_Zeile(zeile, QGuiApplication::keyboardModifiers(), zeile_);
  });
  connect(&waehler, &QHeaderView::sectionEntered, this, [this](int zeile) { waehle_bis(zeile); });
  connect(&waehler, &QHeaderView::sectionClicked, this, [this] { Ereigniswache::melde_im_Signal(*this, Click); });
}

std::int32_t TDBGrid::geprueft(std::int32_t spalte) const {
  if (spalte < 0 || spalte >= ColumnCount()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return spalte;
}

std::int32_t TDBGrid::AddColumn(const Gitterspalte& spalte) {
  if (spalte.Width < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  const QScopedValueRollback still(durch_Code_, true);
  modell_.haenge_Spalte_an(spalte);
  wende_an(ColumnCount() - 1);
  return ColumnCount() - 1;
}

void TDBGrid::RemoveColumns() {
  const QScopedValueRollback still(durch_Code_, true);
  entwerte_Editor();
  modell_.entferne_Spalten();
  nimm_Standort();
}

void TDBGrid::Column(std::int32_t spalte, const Gitterspalte& wert) {
  geprueft(spalte);
  if (wert.Width < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  modell_.setze_Spalte(spalte, wert);
  wende_an(spalte);
}

void TDBGrid::wende_an(std::int32_t spalte) {
  const Gitterspalte& s = Column(spalte);
  setColumnHidden(spalte, !s.Visible);
  setColumnWidth(spalte, twips::pixel(s.Width));
}

void TDBGrid::ReBind() {
  {
    const QScopedValueRollback still(durch_Code_, true);
    entwerte_Editor();
    modell_.binde(array_ ? *array_ : XArrayDBObject());
    modell_.setze_neue_Zeile(neue_Zeile_ && array_);
    auswahl_.Clear();
    grundlage_.clear();
    gehe_zu(0, erste_sichtbare_Spalte());
    nimm_Standort();
  }
  melde_Standort({});
}

void TDBGrid::Refresh() {
  if (!array_) return;
  const Zelle vorher{zeile_, spalte_};
  {
    const QScopedValueRollback still(durch_Code_, true);
    if (editorzelle_.zeile >= array_->Count(Dimension::Zeilen) && !modell_.ist_neue_Zeile(editorzelle_.zeile))
      entwerte_Editor();
    modell_.uebernimm(*array_);
    Zeilenauswahl bleibt;
    for (const std::int32_t zeile : auswahl_.folge_)
      if (zeile < modell_.arrayzeile(modell_.zeilen())) bleibt.Add(zeile);
    if (!(bleibt == auswahl_)) uebernimm_Auswahl(std::move(bleibt));
    nimm_Standort();
  }
  if (vorher != Zelle{zeile_, spalte_}) melde_Standort(vorher);
}

void TDBGrid::AllowAddNew(bool wert) {
  neue_Zeile_ = wert;
  const QScopedValueRollback still(durch_Code_, true);
  modell_.setze_neue_Zeile(wert && array_);
  nimm_Standort();
}

int TDBGrid::erste_sichtbare_Spalte() const {
  for (int s = 0; s < ColumnCount(); ++s)
    if (!isColumnHidden(s)) return s;
  return 0;
}

void TDBGrid::Row(std::int32_t wert) {
  const int linie = wert - modell_.arrayzeile(0);
  if (linie < 0 || linie >= modell_.rowCount()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  versetze({linie, spalte_ < 0 ? erste_sichtbare_Spalte() : spalte_});
}

void TDBGrid::versetze(const Zelle& ziel) {
  Update();
  const Zelle vorher{zeile_, spalte_};
  {
    const QScopedValueRollback still(durch_Code_, true);
    gehe_zu(ziel.zeile, ziel.spalte);
    nimm_Standort();
  }
  if (vorher != Zelle{zeile_, spalte_}) melde_Standort(vorher);
}

/// The current cell is what the toolkit says now.
void TDBGrid::nimm_Standort() {
  zeile_ = currentIndex().row();
  spalte_ = currentIndex().column();
  modell_.setze_aktuelle_Zeile(zeile_);
}

// An edit is committed while Row still tells the row that it belongs to.
void TDBGrid::currentChanged(const QModelIndex& jetzt, const QModelIndex& vorher) {
  QTableView::currentChanged(jetzt, vorher);
  if (durch_Code_) return;
  if (modell_.eingabe()) Ereigniswache::melde_im_Signal(*this, [this] { Update(); });
  const Zelle letzte{zeile_, spalte_};
  nimm_Standort();
  if (letzte != Zelle{zeile_, spalte_})
    Ereigniswache::melde_im_Signal(*this, [this, letzte] { melde_Standort(letzte); });
}
