#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

// Edits on their way into the array.

using namespace Qt::Literals::StringLiterals;

bool TDBGrid::schaltbar(const Zelle& zelle) const {
  if (zelle.zeile < 0 || zelle.spalte < 0) return false;
  const Gitterspalte& spalte = Column(zelle.spalte);
  return spalte.CheckBox && !spalte.Locked && AllowUpdate();
}

void TDBGrid::schalte_um(const Zelle& zelle) {
  Ereigniswache::melde(*this, [&] {
    modell_.setze_Eingabe(
        Gittermodell::Eingabe{zelle.zeile, zelle.spalte, !modell_.angehakt(zelle.zeile, zelle.spalte)});
    Update();
  });
}

QRect TDBGrid::Knopf_in(const QRect& zelle, int spalte) const {
  if (!Column(spalte).Button) return {};
  QRect knopf = zelle;
  knopf.setLeft(std::max(zelle.left(), zelle.right() - zelle.height()));
  return knopf;
}

void TDBGrid::klicke_Knopf() {
  beende_Editor();
  if (ButtonClick) Ereigniswache::melde(*this, [this] { ButtonClick(spalte_); });
}

void TDBGrid::merke_Editor(QLineEdit& editor) {
  editor_ = &editor;
  editorzelle_ = aktuelle();
}

/// Takes what was typed as the open edit. False where nothing new was.
bool TDBGrid::lies_Editor() {
  if (!editor_ || !editor_->isModified()) return false;
  editor_->setModified(false);
  const auto [zeile, spalte] = editorzelle_;
  if (editor_->text() == modell_.text(zeile, spalte)) return false;
  modell_.setze_Eingabe(Gittermodell::Eingabe{zeile, spalte, editor_->text()});
  return true;
}

/// The editor is being left.
void TDBGrid::nimm_Editor() {
  if (lies_Editor()) Ereigniswache::melde_im_Signal(*this, [this] { vollziehe(); });
}

/// Closes the editor; what was typed is lost unless it was taken before.
void TDBGrid::entwerte_Editor() {
  if (!editor_) return;
  editor_->setModified(false);
  closeEditor(editor_, QAbstractItemDelegate::NoHint);
}

// The widget itself goes later; what it holds counts no longer.
void TDBGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint wink) {
  if (editor == editor_) editor_ = nullptr;
  QTableView::closeEditor(editor, wink);
}

void TDBGrid::beende_Editor() {
  if (!editor_) return;
  nimm_Editor();
  entwerte_Editor();
}

/// True for the keys that the grid itself answers: the end of the edit, and the button.
bool TDBGrid::Taste_im_Editor(const QKeyEvent& taste) {
  const bool fertig = taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter;
  const bool weiter = taste.key() == Qt::Key_Tab || taste.key() == Qt::Key_Backtab;
  const bool zeilenweise = taste.key() == Qt::Key_Up || taste.key() == Qt::Key_Down;
  const bool knopf = taste.key() == Qt::Key_F4 || (zeilenweise && taste.modifiers().testFlag(Qt::AltModifier));
  if (!fertig && !weiter && !zeilenweise && !knopf) return false;
  beende_Editor();
  if (knopf) {
    if (Column(spalte_).Button) klicke_Knopf();
  } else if (weiter) {
    focusNextPrevChild(taste.key() == Qt::Key_Tab);
  } else {
    const int ziel = currentIndex().row() + (taste.key() == Qt::Key_Up ? -1 : 1);
    if (ziel >= 0 && ziel < modell_.rowCount()) gehe_zu(ziel, currentIndex().column());
  }
  return true;
}

QString TDBGrid::Text() const {
  if (editor_ && editor_->isModified()) return editor_->text();
  if (zeile_ < 0 || spalte_ < 0) return {};
  if (Column(spalte_).CheckBox) return modell_.angehakt(zeile_, spalte_) ? u"True"_s : u"False"_s;
  return modell_.text(zeile_, spalte_);
}

void TDBGrid::Text(const QString& wert) {
  if (zeile_ < 0 || spalte_ < 0) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  const bool kaestchen = Column(spalte_).CheckBox;
  Variant neu = kaestchen ? Variant(ist_True(wert)) : Variant(wert);
  entwerte_Editor();
  modell_.setze_Eingabe(Gittermodell::Eingabe{zeile_, spalte_, std::move(neu), meldet_Eingabe_});
}

void TDBGrid::Update() {
  lies_Editor();
  entwerte_Editor();
  vollziehe();
}

/// Takes an edit through all its steps. A handler may have finished them itself, by Update.
void TDBGrid::vollziehe() {
  if (!modell_.eingabe()) return;
  auto verwirf = qScopeGuard([this] { modell_.setze_Eingabe({}); });
  lege_Zeile_an();
  if (!modell_.eingabe()->gemeldet) {
    modell_.merke_gemeldet();
    const QScopedValueRollback meldet(meldet_Eingabe_, true);
    if (AfterColEdit) AfterColEdit(modell_.eingabe()->spalte);
  }
  if (modell_.eingabe()) schreibe();
  verwirf.dismiss();
}

/// Appends the row to the array that an edit in the line for a new row is meant for.
void TDBGrid::lege_Zeile_an() {
  if (!modell_.ist_neue_Zeile(modell_.eingabe()->zeile)) return;
  if (!array_ || array_->UpperBound(XArrayDBObject::Dimension::Zeilen) + 1 != modell_.arrayzeile(modell_.zeilen()))
    throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  array_->AppendRows();
  modell_.haenge_Zeile_an();
}

void TDBGrid::schreibe() {
  const Gittermodell::Eingabe eingabe = *modell_.eingabe();
  if (!array_) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  array_->Value(modell_.arrayzeile(eingabe.zeile), modell_.arrayspalte(eingabe.spalte), eingabe.wert);
  modell_.setze_Eingabe({});
  modell_.setze_Zelle(eingabe.zeile, eingabe.spalte, eingabe.wert);
  if (AfterUpdate) AfterUpdate();
}
