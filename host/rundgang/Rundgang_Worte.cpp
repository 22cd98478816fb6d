// The words of which the tour's steps are made: what a user does, and what he then sees.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTreeView>
#include <algorithm>

#include "host/rundgang/Rundgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Streifen = u"SSP_Panel(3)"_s;

QModelIndex eintrag(const QListView& liste, const QString& text) {
  const QAbstractItemModel& modell = *liste.model();
  // The list of folders may have a folder of the same name above; the lower one is meant.
  for (int zeile = modell.rowCount() - 1; zeile >= 0; --zeile)
    if (const QModelIndex stelle = modell.index(zeile, 0); stelle.data().toString() == text) return stelle;
  throw std::runtime_error("Die Liste zeigt nicht " + text.toStdString());
}

}  // namespace

QString Rundgang::text(const QString& name) const {
  auto& gefunden = element(name);
  if (const auto* feld = qobject_cast<QLineEdit*>(&gefunden)) return feld->text();
  if (const auto* feld = qobject_cast<QPlainTextEdit*>(&gefunden)) return feld->toPlainText();
  if (const auto* feld = qobject_cast<QLabel*>(&gefunden)) return feld->text();
  if (const auto* knopf = qobject_cast<QAbstractButton*>(&gefunden)) return knopf->text();
  throw std::runtime_error(name.toStdString() + " hat keinen Text");
}

int Rundgang::zeilenzahl(const QString& liste) const {
  return element<QAbstractItemView>(liste).model()->rowCount();
}

QString Rundgang::zelle(const QString& gitter, int zeile, int spalte) const {
  return element<QTableView>(gitter).model()->index(zeile, spalte).data().toString();
}

void Rundgang::klicke_Stelle(
    QAbstractItemView& liste, const QModelIndex& stelle, bool doppelt, Qt::KeyboardModifiers dazu) {
  const QPoint ort = liste.visualRect(stelle).center();
  if (doppelt)
    hand_.doppelklicke(*liste.viewport(), ort);
  else
    hand_.klicke(*liste.viewport(), ort, dazu);
}

Rundgang::Tat Rundgang::ueberschreibe(const QString& feld, const QString& neuer_Text) {
  return [=, this] {
    hand_.klicke(element(feld));
    hand_.taste(Qt::Key_A, Qt::ControlModifier);
    hand_.tippe(neuer_Text);
  };
}

Rundgang::Tat Rundgang::antworte(const QString& knopf) {
  return [=, this] {
    for (auto* antwort : Hand::fenster_vorn()->findChildren<QAbstractButton*>())
      if (antwort->text() == knopf) return hand_.klicke(*antwort);
    throw std::runtime_error("Die Frage hat keinen Knopf " + knopf.toStdString());
  };
}

Rundgang::Tat Rundgang::klick_Vorgang(const QString& nummer, bool doppelt) {
  return [=, this] {
    auto& baum = element<QTreeView>(u"tree_Vorgaenge"_s);
    const QAbstractItemModel& modell = *baum.model();
    const QModelIndexList treffer =
        modell.match(modell.index(0, 0), Qt::DisplayRole, nummer, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (treffer.isEmpty()) throw std::runtime_error("Die Liste zeigt nicht " + nummer.toStdString());
    klicke_Stelle(baum, treffer.first(), doppelt);
  };
}

Rundgang::Tat Rundgang::klick_Eintrag(
    const QString& liste, const QString& name, bool doppelt, Qt::KeyboardModifiers dazu) {
  return [=, this] {
    auto& feld = element<QListView>(liste);
    const QModelIndex stelle = eintrag(feld, name);
    feld.scrollTo(stelle);
    klicke_Stelle(feld, stelle, doppelt, dazu);
  };
}

Rundgang::Tat Rundgang::klick_erste_Vorschau() {
  return [this] { hand_.klicke(*element<QListView>(u"lst_Bilder"_s).viewport(), QPoint(60, 60)); };
}

Rundgang::Tat Rundgang::klick_Zelle(const QString& gitter, int zeile, int spalte, bool auf_Knopf) {
  return [=, this] {
    auto& tabelle = element<QTableView>(gitter);
    const QRect ort = tabelle.visualRect(tabelle.model()->index(zeile, spalte));
    hand_.klicke(
        *tabelle.viewport(), auf_Knopf ? QPoint(ort.right() - ort.height() / 2, ort.center().y()) : ort.center());
  };
}

Rundgang::Sicht Rundgang::im_Streifen(int anzahl) const {
  return [=, this] {
    const auto teile = element(Streifen).findChildren<QWidget*>();
    return anzahl == std::count_if(teile.begin(), teile.end(), [](const QWidget* teil) {
      return teil->isVisible() && teil->objectName().startsWith("Pic_Thumb("_L1);
    });
  };
}

Rundgang::Sicht Rundgang::angekreuzt(const QString& name) const {
  return [=, this] { return element<QAbstractButton>(name).isChecked(); };
}

Rundgang::Sicht Rundgang::fenster_offen(const QString& name) {
  return [=] {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal->objectName() == name && modal->isVisible();
  };
}

// The header gets its line last of all when the dialog opens.
Rundgang::Sicht Rundgang::dialog_bereit(const QString& kopf, int bilder) const {
  return beide(beide(dialog_offen(), zeigt(u"SSP_Panel(0)"_s, u"   "_s + kopf)),
      beide(beide(sichtbar(Streifen), im_Streifen(bilder)), zeigt(u"SSP_Anzahl(3)"_s, QString::number(bilder))));
}

Rundgang::Sicht Rundgang::suche_zeigt(int dateien) const {
  return beide(fenster_offen(u"frm_BilderSuchen"_s),
      beide(sichtbar(u"lvwContent"_s), zeigt(u"SSP_Anzahl"_s, u"%1 Objekt(e)"_s.arg(dateien))));
}

Rundgang::Sicht Rundgang::zurueck_mit(const QString& status) const {
  return beide(zurueck(), [=, this] { return fenster_->findChild<QLabel*>(u"lbl_Status"_s)->text() == status; });
}
