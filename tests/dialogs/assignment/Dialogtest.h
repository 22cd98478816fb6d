#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPoint>
#include <functional>
#include <memory>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "tests/dialogs/Bildertest.h"
#include "tests/support/Doppel.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fensterdoppel.h"
#include "tests/support/Pruefdatenbank.h"

using eingaben::doppelklicke;
using eingaben::klicke;
using eingaben::tippe;

/// The assignment dialog over a record of its own: database, picture tree and collection, all made by the test.
///
/// The record is the document RE 1 with the folder "Belege\1" below the root "P:". Boxes and reports that the test did
/// not announce fail it.
class Dialogtest : public Bildertest {
 protected:
  Dialogtest();
  ~Dialogtest() override;

  /// Stores a row of the record, with or without its file. `werte` changes the record before it is stored.
  void fuege_Bild_ein(const QString& name, const QString& ext = QStringLiteral("jpg"), bool mit_Datei = true,
      const std::function<void(clsBildZuordnungen&)>& werte = {});
  /// Stores rows a, b, c … with a file each.
  void fuege_Bilder_ein(int anzahl);
  /// Reads the record into the collection.
  void lies();
  /// The form as the entry point makes it: loaded, members set, table filled. Reads the record first.
  frm_BildZuordnung& form();
  /// Unloads the form; the next one opens over the same collection, without reading it again.
  void schliesse();
  /// Shows the form modally; `waehrend` runs once it is up and has laid itself out. A form that it leaves open is
  /// hidden.
  void zeige(const std::function<void()>& waehrend);
  /// Appends a row to the table as the search does, for a file that lies at `pfad`.
  void haenge_neue_Zeile_an(const QString& ordner, const QString& name, const QString& ext = QStringLiteral("jpg"));
  /// Real events on the window: they take the toolkit's own way from the window to the control.
  static void taste(QWidget& fenster, int taste) { eingaben::taste(fenster, static_cast<Qt::Key>(taste)); }
  static void druecke_Maus(QWidget& ziel, QPoint wo = QPoint(-1, -1));
  static void bewege_Maus(QWidget& ziel, QPoint wo = QPoint(-1, -1));
  static void lasse_Maus_los(QWidget& ziel, QPoint wo = QPoint(-1, -1));
  /// Rows of the table as the database holds them: "Bildname|SortIndex|Beschreibung", in their order.
  QStringList gespeichert();
  /// Column of all rows as texts.
  template <class Wert>
  QStringList spalte_von(Wert Arbeitszeile::*feld) {
    QStringList alle;
    for (std::int32_t i = 0; i <= form().LetzteZeile(); ++i) alle.append(als_Text(i, feld));
    return alle;
  }

  CoreDoppel core;
  Pruefdatenbank db;
  MeldungsDoppel meldungen;
  Fensterdoppel fenster;  ///< above the core double: placement and reports
  std::shared_ptr<clsBildZuordnungen> store = std::make_shared<clsBildZuordnungen>();
  bool nur_Anzeige = false;
  bool nur_Anhang = false;
  QString typ1 = QStringLiteral("BEL");

 private:
  template <class Wert>
  QString als_Text(std::int32_t zeile, Wert Arbeitszeile::*feld) {
    if constexpr (std::is_same_v<Wert, std::optional<bool>>)
      return CStr((form().mit_Exif(zeile).*feld).value_or(false));
    if constexpr (std::is_same_v<Wert, QString>)
      if (feld == &Arbeitszeile::ExifKennung) return form().mit_Exif(zeile).ExifKennung;
    if constexpr (!std::is_same_v<Wert, std::optional<bool>>) return CStr(form().Zeile(zeile).*feld);
  }

  std::unique_ptr<frm_BildZuordnung> form_;
  bool liest_vorher_ = true;
};
