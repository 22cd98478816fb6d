#pragma once

#include <QDir>
#include <memory>

#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "tests/dialogs/overview/Uebersichtstest.h"

/// "Weitere Zuordnungen" over the pictures of the document RE 1, with an article stock and a look-up.
class WeitereTest : public Uebersichtstest {
 protected:
  WeitereTest() {
    stamm.artikel[QStringLiteral("4711")] = {QStringLiteral("Schraube"), QStringLiteral("M8"), QStringLiteral("Mayer")};
    stamm.artikel[QStringLiteral("4712")] = {QStringLiteral("Mutter"), QStringLiteral("M8"), QStringLiteral("Mayer")};
    stamm.artikel[QStringLiteral("500")] = {QStringLiteral("Leim"), Null(), Null()};
    stamm.teile[QStringLiteral("47")] = QStringLiteral("4711");
  }
  ~WeitereTest() override {
    if (form_) form_->Unload();
  }

  /// Pictures a, b, c … of the record, each with its file.
  void fuege_Bilder_ein(int anzahl) {
    for (int i = 0; i < anzahl; ++i) {
      const QString name(QChar(u'a' + i));
      lege_Bild(name + QStringLiteral(".jpg"));
      fuege_ein({.name = name});
    }
  }
  void lies() {
    EXPECT_TRUE(store->Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
    store->FKT_LeseBilder(QStringLiteral("RE"), QStringLiteral("1"), {}, {}, {}, {}, typ1, {}, {});
  }
  /// The form as the entry point makes it: loaded, members set, list read. Reads the record first.
  frm_AnzeigeZuordnung& form() {
    if (form_) return *form_;
    lies();
    form_ = std::make_unique<frm_AnzeigeZuordnung>();
    form_->Load();
    form_->pAppObj = wirt;
    form_->pRootpath = QStringLiteral("P:");
    form_->pBildObj = store;
    form_->pInfoZeile = QStringLiteral("Rechnung 1");
    form_->Lade_Zuordnungen();
    return *form_;
  }
  TDBGrid& bilder() { return form().TDBG_Zuordnungen; }
  TDBGrid& artikel() { return form().TDBG_WeitereZuordnungen; }
  void zeige(const std::function<void()>& waehrend) { Uebersichtstest::zeige(form(), waehrend); }

  /// Types a number into a line of the lower grid and leaves the cell by Enter.
  void gib_Artikel_ein(int zeile, const QString& nummer) {
    klicke(artikel(), zeile, artikel::Nummer);
    tippe(form(), nummer);
    eingaben::taste(form(), Qt::Key_Return);
  }
  void klicke_Marke(int zeile) { klicke(bilder(), zeile, uebersicht::Marke); }
  /// Columns 0 to 3 of the rows of the article array.
  QStringList artikelzeilen() {
    QStringList alle;
    const XArrayDBObject& tabelle = *form().pArtikelArray();
    for (std::int32_t i = 0; i <= tabelle.UpperBound(Zeilen); ++i) {
      QStringList zeile;
      for (std::int32_t s = 0; s <= artikel::Lieferant; ++s) zeile += mit_Leertext(tabelle.Value(i, s));
      alle += zeile.join(u'|');
    }
    return alle;
  }
  static oberflaeche::Meldung frage() {
    return {QStringLiteral("Die oben gekennzeichneten Dateien werden den unten aufgeführten Artikeln zugeordnet! "
                           "Möchten Sie den Vorgang starten?"),
        QStringLiteral("Dateien zuordnen"), oberflaeche::Symbol::Frage, oberflaeche::Knoepfe::JaNein};
  }
  void speichere(std::function<void()> dabei = {}) {
    meldungen.erwarte(frage(), oberflaeche::Antwort::Ja, std::move(dabei));
    eingaben::klicke(form().SSC_ZuordnungSpeichern);
  }
  QStringList dateien(const QString& ordner) {
    return QDir(wurzel.pfad(ordner)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  QString typ1 = QStringLiteral("BEL");
  Artikelstamm stamm;
  Auskunftsverlauf auskunft;
  QStringList auskuenfte;
  std::shared_ptr<clsBildZuordnungen> store = std::make_shared<clsBildZuordnungen>();

 private:
  static komponenten::Fabrik manager(const char16_t* name, Artikelstamm& stamm) {
    return [name, &stamm] { return std::make_shared<Artikelmanager>(QString::fromUtf16(name), stamm); };
  }
  Registrierung sql_{QStringLiteral("KVOArtik.clsArtikelManagerSQL"), manager(u"SQL", stamm)};
  Registrierung zf_{QStringLiteral("KVOArtikelZF.clsArtikelManagerSQLZF"), manager(u"ZF", stamm)};
  Registrierung auskunft_{QStringLiteral("KVOListAuskunft.clsAuskunft"),
      [this] { return std::make_shared<Auskunftsdoppel>(auskunft, auskuenfte); }};
  std::unique_ptr<frm_AnzeigeZuordnung> form_;
};
