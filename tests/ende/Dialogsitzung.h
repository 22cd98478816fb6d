#pragma once

#include <gtest/gtest.h>

#include <QDateTime>
#include <QImage>
#include <QString>
#include <QStringList>
#include <utility>

#include "tests/ende/Bestand.h"
#include "tests/ende/Programm.h"
#include "tests/ende/Xsitzung.h"
#include "tests/support/Umgebung.h"

/// One row of Bild_Zuordnungen as the dialog writes it; the other columns are the same in all of them.
struct Zuordnungszeile {
  /// "Key1|Key2|Key3|key4".
  QString schluessel;
  QString typ;
  /// The folder below the root.
  QString pfad;
  QString name;
  /// The Drucktext, "<NULL>" for none.
  QString text = QStringLiteral("<NULL>");
  /// The four print flags.
  QString druck = QStringLiteral("0000");
  int platz = 0;
  /// As Bestand has it.
  QString als_Text() const;
};

/// The program and a clerk who assigns pictures in its dialog. `soll` is what table and data folder must hold.
class Dialogsitzung : public testing::Test {
 protected:
  void SetUp() override;
  /// Starts the program; what it has then is `soll`.
  void starte();
  /// Opens the dialog of a record that has so many pictures.
  void oeffne_Dialog(const QString& vorgang, int bilder);
  /// Lets the dialog take the whole screen.
  void vergroessere();
  /// Nothing else is in table and folder than what the test knows of, whatever the order in which rows were inserted.
  void pruefe(const char* wann);
  /// Clicks a picture of the strip, the first of which is 1, and waits until it is the row of that number.
  void waehle_Bild(int im_Streifen, int zeile);
  void waehle_Bild(int nummer) { waehle_Bild(nummer, nummer); }
  /// Ticks or unticks a check box.
  void schalte(const QString& haken, bool an);
  void sortieren(bool an);
  /// Takes a picture of the strip and holds it over another.
  void fasse_und_ziehe(int von, int nach);
  void lasse_fallen();
  /// "Bilder suchen" with these files of a folder below the data folder, which holds `dateien` of them.
  void haenge_an(const QString& ordner_dort, int dateien, const QStringList& namen, int bilder_danach);
  /// Waits until the dialog is closed; what the window says of that record then.
  QString warte_auf_Ergebnis(const QString& vorgang);
  /// Waits for a box, checks its text and clicks.
  void beantworte(const QString& titel, const QString& text, const QString& knopf);
  void beende();

  static bool dialog_zeigt(const Anblick& a, int bilder);
  static bool suche_zeigt(const Anblick& a, int dateien);
  /// The name of a saved picture in a folder of the data folder: its own with the moment of saving behind, which must
  /// not lie before `von`.
  QString gestempelt(const QString& ablage, const QString& name, const Bestand& ist, const QDateTime& von);
  QImage bild(const QString& datei) const { return QImage(programm.datenordner() + u'/' + datei); }

  Testordner ordner;
  Xsitzung x;
  Programm programm{x, ordner};
  Bestand soll;

 private:
  void gehe_in(const QString& ordner_dort);
  bool schon_gesucht_ = false;
};
