#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

// How the user selects rows, and what else the mouse and the keys do in the grid.

bool TDBGrid::waehlt_in_Zellen() const {
  const auto& spalten = modell_.spalten();
  return !AllowUpdate() ||
      std::none_of(spalten.begin(), spalten.end(), [](const Gitterspalte& s) { return s.Visible && !s.Locked; });
}

void TDBGrid::uebernimm_Auswahl(Zeilenauswahl&& neu) {
  std::swap(auswahl_.folge_, neu.folge_);
  std::swap(auswahl_.menge_, neu.menge_);
  viewport()->update();
}

/// The row was pressed: alone it becomes the selection, Control adds it or takes it out, Shift selects from where the
/// last choice began.
void TDBGrid::druecke_Zeile(int zeile, Qt::KeyboardModifiers dazu, int vorherige) {
  if (zeile < 0 || zeile >= modell_.zeilen()) return;
  const bool dazunehmen = dazu.testFlag(Qt::ControlModifier);
  if (dazu.testFlag(Qt::ShiftModifier)) {
    if (anker_ < 0) anker_ = vorherige < 0 ? zeile : vorherige;
  } else {
    anker_ = zeile;
    waehlt_ab_ = dazunehmen && ist_gewaehlt(zeile);
    if (dazunehmen) grundlage_ = auswahl_.folge_;
  }
  if (!dazunehmen) {
    grundlage_.clear();
    waehlt_ab_ = false;
  }
  waehle_bis(zeile);
}

/// Sets the selection to the earlier one with, or without, the rows from where the choice began to this one.
void TDBGrid::waehle_bis(int zeile) {
  if (anker_ < 0 || zeile < 0 || modell_.zeilen() == 0) return;
  const int hoechste = modell_.zeilen() - 1;
  const auto [erste, letzte] = std::minmax({std::min(anker_, hoechste), std::min(zeile, hoechste)});
  const std::int32_t von = modell_.arrayzeile(erste);
  const std::int32_t bis = modell_.arrayzeile(letzte);
  Zeilenauswahl neu;
  for (const std::int32_t z : grundlage_)
    if (!waehlt_ab_ || z < von || z > bis) neu.Add(z);
  for (std::int32_t z = von; !waehlt_ab_ && z <= bis; ++z) neu.Add(z);
  if (neu == auswahl_) return;
  uebernimm_Auswahl(std::move(neu));
  Ereigniswache::melde_im_Signal(*this, SelChange);
}

void TDBGrid::hebe_auf() {
  anker_ = -1;
  if (auswahl_.Count() == 0) return;
  uebernimm_Auswahl(Zeilenauswahl());
  Ereigniswache::melde(*this, SelChange);
}

void TDBGrid::selectAll() {
  if (modell_.zeilen() == 0) return;
  grundlage_.clear();
  waehlt_ab_ = false;
  anker_ = 0;
  waehle_bis(modell_.zeilen() - 1);
}

void TDBGrid::mousePressEvent(QMouseEvent* ereignis) {
  const Zelle vorher = aktuelle();
  const QPoint wo = ereignis->position().toPoint();
  gedrueckt_ = {};
  knopf_gedrueckt_ = false;
  QTableView::mousePressEvent(ereignis);
  if (ereignis->button() != Qt::LeftButton) return;
  // Handlers have run: what lies under the mouse is asked for now.
  const QModelIndex getroffen = indexAt(wo);
  if (!getroffen.isValid()) return;
  gedrueckt_ = {getroffen.row(), getroffen.column()};
  war_aktuell_ = gedrueckt_ == vorher && !ereignis->modifiers();
  knopf_gedrueckt_ = auf_Knopf(gedrueckt_, wo);
  if (waehlt_in_Zellen())
    druecke_Zeile(gedrueckt_.zeile, ereignis->modifiers(), vorher.zeile);
  else
    hebe_auf();
}

void TDBGrid::mouseMoveEvent(QMouseEvent* ereignis) {
  const bool zieht = ereignis->buttons().testFlag(Qt::LeftButton);
  // Where cells are edited, a drag through them means nothing.
  if (zieht && !waehlt_in_Zellen()) return;
  QTableView::mouseMoveEvent(ereignis);
  if (!zieht || gedrueckt_.zeile < 0) return;
  const int y = std::clamp(ereignis->position().toPoint().y(), 0, viewport()->height() - 1);
  const int zeile = rowAt(y);
  waehle_bis(zeile < 0 ? modell_.zeilen() - 1 : zeile);
}

void TDBGrid::mouseReleaseEvent(QMouseEvent* ereignis) {
  QTableView::mouseReleaseEvent(ereignis);
  const Zelle unten = std::exchange(gedrueckt_, Zelle());
  if (ereignis->button() != Qt::LeftButton || unten.zeile < 0) return;
  const QPoint wo = ereignis->position().toPoint();
  const QModelIndex oben = indexAt(wo);
  const bool geklickt = unten == Zelle{oben.row(), oben.column()} && unten == aktuelle();
  if (geklickt && knopf_gedrueckt_) {
    if (auf_Knopf(unten, wo)) klicke_Knopf();
  } else if (geklickt && schaltbar(unten)) {
    schalte_um(unten);
  } else if (geklickt && war_aktuell_ && bearbeitbar(unten)) {
    edit(oben);
  }
  Ereigniswache::melde(*this, Click);
}

// In a list of whole rows Home and End mean its first and last row, not columns.
QModelIndex TDBGrid::moveCursor(CursorAction wohin, Qt::KeyboardModifiers dazu) {
  const bool ans_Ende = wohin == MoveHome || wohin == MoveEnd;
  return QTableView::moveCursor(wohin, ans_Ende && waehlt_in_Zellen() ? dazu | Qt::ControlModifier : dazu);
}

void TDBGrid::keyPressEvent(QKeyEvent* ereignis) {
  const bool knopf = ereignis->key() == Qt::Key_F4 ||
      (ereignis->key() == Qt::Key_Down && ereignis->modifiers().testFlag(Qt::AltModifier));
  if (knopf && spalte_ >= 0 && Column(spalte_).Button) return klicke_Knopf();
  if (ereignis->matches(QKeySequence::SelectAll)) return selectAll();
  if (ereignis->key() == Qt::Key_Space && schaltbar(aktuelle())) return schalte_um(aktuelle());
  if (ereignis->key() == Qt::Key_Space && waehlt_in_Zellen())
    return druecke_Zeile(zeile_, ereignis->modifiers(), zeile_);
  const int vorherige = zeile_;
  QTableView::keyPressEvent(ereignis);
  if (zeile_ != vorherige) waehle_mit_Taste(*ereignis, vorherige);
}

void TDBGrid::waehle_mit_Taste(const QKeyEvent& taste, int vorherige) {
  if (!waehlt_in_Zellen()) return hebe_auf();
  // Control alone moves without selecting.
  if (taste.modifiers().testFlag(Qt::ControlModifier) && !taste.modifiers().testFlag(Qt::ShiftModifier)) return;
  druecke_Zeile(zeile_, taste.modifiers(), vorherige);
}
