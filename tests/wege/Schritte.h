#pragma once

#include <QString>
#include <QStringList>
#include <variant>
#include <vector>

/// What a clerk, the share and the clock do on a road through the assignment dialog.
///
/// A row is told by a number that is taken modulo the strip's length, -1 for the one that the fields show: a step
/// without a picture to work on does nothing. Where a box may come up, the step holds what is answered.
namespace schritt {

enum class Antwort { Ja, Nein, Abbrechen };
enum class Ausgang { Zurueck, Escape, Rahmen };
enum class Feld { Drucktext, Info };
enum class Marke { NeueSeite, AlsAnhang, GesamteSeite, Drucken };

/// Files of one folder are chosen in the search.
struct Haenge_an {
  QString ordner;
  QStringList namen;
};
/// A thumbnail is dragged to another place; before the drop the strip scrolls that many times. Sorting stays switched
/// on until a picture is selected.
struct Ziehe {
  int von = 0;
  int nach = 0;
  int rollen = 0;
};
struct Rolle {
  int schritte = 1;
};
struct Waehle {
  int zeile = 0;
};
struct Drehe {
  int zeile = 0;
  int viertel = 1;
  Antwort namen = Antwort::Ja;
};
struct Benenne {
  int zeile = 0;
  QString name;
};
struct Schreibe {
  int zeile = 0;
  Feld feld = Feld::Drucktext;
  QString text;
};
struct Schalte {
  int zeile = 0;
  Marke marke = Marke::Drucken;
};
/// Marks for removal, or takes the mark back.
struct Merke_vor {
  int zeile = 0;
};
struct Aktualisiere {
  Antwort namen = Antwort::Ja;
};
struct Speichere {
  Antwort namen = Antwort::Ja;
};
struct Verlasse {
  Ausgang wie = Ausgang::Zurueck;
  Antwort sichern = Antwort::Ja;
  Antwort namen = Antwort::Ja;
};
/// A picture's file goes.
struct Verschwinde {
  int datei = 0;
};
/// The record's folder can't be reached any more.
struct Trenne {};
/// What went comes back.
struct Kehre_zurueck {};
/// From now on a file can be looked at but not be read to its end: a copy of it fails. Ends with Kehre_zurueck.
struct Stoere {
  int datei = 0;
};
/// Another program puts a picture where the row's copy would go in this second.
struct Belege {
  int zeile = 0;
};
/// The clock goes on by a second; between other steps it stands.
struct Warte {};

}  // namespace schritt

using Schritt = std::variant<schritt::Haenge_an, schritt::Ziehe, schritt::Rolle, schritt::Waehle, schritt::Drehe,
    schritt::Benenne, schritt::Schreibe, schritt::Schalte, schritt::Merke_vor, schritt::Aktualisiere,
    schritt::Speichere, schritt::Verlasse, schritt::Verschwinde, schritt::Trenne, schritt::Kehre_zurueck,
    schritt::Stoere, schritt::Belege, schritt::Warte>;

/// A road: pictures that the record has at the beginning, and what happens. The dialog is open from the first step that
/// needs it, and whenever it was left it is opened again.
struct Weg {
  int bilder = 0;
  std::vector<Schritt> schritte;
};

/// The road as it can be put into the list of named roads.
QString als_Text(const Weg& weg);

/// gtest and RapidCheck print a road so.
std::ostream& operator<<(std::ostream& os, const Weg& weg);
