#pragma once

#include <QString>
#include <memory>

#include "platform/basic/kvo_export.h"

/// What the parts without windows need of a user interface. A program with windows fills it in; until then a default
/// for programs without windows is in force.
namespace oberflaeche {

enum class Symbol { Keins, Information, Frage, Ausrufezeichen, Kritisch };
enum class Knoepfe { OK, JaNein, JaNeinAbbrechen };
enum class Antwort { OK, Ja, Nein, Abbrechen };

/// A modal message box. An empty title means that the box has none of its own.
struct Meldung {
  QString Text;
  QString Titel;
  Symbol Bild = Symbol::Keins;
  Knoepfe Auswahl = Knoepfe::OK;
  friend bool operator==(const Meldung&, const Meldung&) = default;
};

class KVO_EXPORT Meldungsfenster {
 public:
  virtual ~Meldungsfenster();
  /// Shows the box and returns when it was answered.
  virtual Antwort zeige(const Meldung& meldung) = 0;
};

/// The mouse pointer of the program: one value, not a stack.
enum class Zeigerform { Standard = 0, Sanduhr = 11 };

class KVO_EXPORT Mauszeiger {
 public:
  virtual ~Mauszeiger();
  virtual Zeigerform form() const = 0;
  virtual void form(Zeigerform form) = 0;
};

/// Lets events that are pending run once.
class KVO_EXPORT Ereignispumpe {
 public:
  virtual ~Ereignispumpe();
  virtual void verarbeite_anstehende() = 0;
};

/// The services in force. Without windows a notice goes to standard error, a question is answered with No, which loses
/// nothing, the pointer only remembers its value, and the pump does nothing.
KVO_EXPORT Meldungsfenster& meldungsfenster();
KVO_EXPORT Mauszeiger& mauszeiger();
KVO_EXPORT Ereignispumpe& ereignispumpe();

/// Put another service in force and hand back the one before; none puts the default back.
KVO_EXPORT std::shared_ptr<Meldungsfenster> setze(std::shared_ptr<Meldungsfenster> dienst);
KVO_EXPORT std::shared_ptr<Mauszeiger> setze(std::shared_ptr<Mauszeiger> dienst);
KVO_EXPORT std::shared_ptr<Ereignispumpe> setze(std::shared_ptr<Ereignispumpe> dienst);

/// Shows a message box through the service in force.
KVO_EXPORT Antwort MsgBox(
    const QString& text, Knoepfe knoepfe = Knoepfe::OK, Symbol symbol = Symbol::Keins, const QString& titel = {});

}  // namespace oberflaeche
