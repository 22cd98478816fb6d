#pragma once

#include <memory>

#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "tests/dialogs/overview/Uebersichtstest.h"

/// The list of all assignments of the picture "a.jpg", opened from the document RE 1.
class AlleTest : public Uebersichtstest {
 protected:
  ~AlleTest() override {
    if (form_) form_->Unload();
  }

  /// The form as the entry point makes it: loaded, members set, list read.
  frm_AlleZuordnungen& form() {
    if (form_) return *form_;
    form_ = std::make_unique<frm_AlleZuordnungen>();
    form_->Load();
    form_->pAppObj = wirt;
    form_->pRootpath = QStringLiteral("P:");
    form_->pBildname = QStringLiteral("a");
    form_->pBildExt = QStringLiteral("jpg");
    form_->pKey1 = QStringLiteral("RE");
    form_->pKey2 = QStringLiteral("1");
    form_->pKey3 = QStringLiteral("-");
    form_->pKey4 = QStringLiteral("-");
    form_->PTyp1 = QStringLiteral("BEL");
    form_->pTyp2 = QStringLiteral("-");
    form_->Lade_AlleZuordnungen();
    return *form_;
  }
  TDBGrid& gitter() { return form().TDBG_Zuordnungen; }
  void zeige(const std::function<void()>& waehrend) { Uebersichtstest::zeige(form(), waehrend); }

  /// The document RE 1, then `weitere` articles A1, A2 …
  void fuege_Zuordnungen_ein(int weitere, bool mit_Datei = true) {
    if (mit_Datei) lege_Bild(QStringLiteral("a.jpg"));
    fuege_ein({});
    for (int i = 1; i <= weitere; ++i) fuege_Artikel_ein(i);
  }
  void fuege_Artikel_ein(int nummer) {
    fuege_ein({.typ1 = QStringLiteral("ART"), .key1 = QStringLiteral("A%1").arg(nummer), .key2 = QStringLiteral("-")});
  }
  void klicke_Zeile(int zeile, Qt::KeyboardModifiers dazu = {}) {
    klicke(gitter(), zeile, uebersicht::Zuordnung, dazu);
  }
  QStringList liste() {
    QStringList texte;
    for (int i = 0; i < gitter().model()->rowCount(); ++i) texte += gezeigt(gitter(), i, uebersicht::Zuordnung);
    return texte;
  }
  /// Columns 21 and 19 of all rows, "1" for True.
  QStringList marken() {
    QStringList alle;
    const XArrayDBObject& tabelle = *form().pZuordnungArray();
    for (std::int32_t i = 0; i <= tabelle.UpperBound(Zeilen); ++i)
      alle += QStringLiteral("%1%2")
                  .arg(ist_True(tabelle.Value(i, uebersicht::Loeschen)))
                  .arg(ist_True(tabelle.Value(i, uebersicht::Geaendert)));
    return alle;
  }
  static oberflaeche::Meldung frage(bool alle) {
    return {alle ? QStringLiteral("Sollen wirklich ALLE Zuordnungen gelöscht werden?")
                 : QStringLiteral("Sollen die ausgewählten Zuordnungen wirklich gelöscht werden?"),
        QStringLiteral("Achtung"), oberflaeche::Symbol::Frage, oberflaeche::Knoepfe::JaNein};
  }
  void loesche(bool alle, std::function<void()> dabei = {}) {
    meldungen.erwarte(frage(alle), oberflaeche::Antwort::Ja, std::move(dabei));
    eingaben::klicke(form().cmd_Loeschen);
  }

  std::unique_ptr<frm_AlleZuordnungen> form_;
};
