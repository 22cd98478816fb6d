#pragma once

#include <QRect>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/basic/kvo_export.h"

/// Where a window stands on the screen.
struct Fensterlage {
  /// Inner size and place in logical pixels; of a maximized window the ones that it goes back to.
  QRect Rechteck;
  bool Maximiert = false;
  friend bool operator==(const Fensterlage&, const Fensterlage&) = default;
};

/// A window whose placement is kept from one run to the next.
class KVO_EXPORT Fensterplatz {
 public:
  virtual ~Fensterplatz();
  virtual QString Fenstername() const = 0;
  virtual Fensterlage Lage() const = 0;
  /// Takes the place at once: the resize that comes from it has been handled on return.
  virtual void Lage(const Fensterlage& wert) = 0;
};

/// A filter for the keys of a form: the form hands its key events in, and what passes comes out as events of the same
/// name. This one lets every key pass while it is switched on, and none while it is off.
class KVO_EXPORT KeyHandler {
 public:
  virtual ~KeyHandler();

  virtual void KeyDown(std::int16_t KeyCode, std::int16_t Shift);
  virtual void KeyPress(std::int16_t KeyAscii);
  virtual void KeyUp(std::int16_t KeyCode, std::int16_t Shift);

  /// Off at the start.
  bool Eingeschaltet() const noexcept { return eingeschaltet_; }
  void Eingeschaltet(bool wert) noexcept { eingeschaltet_ = wert; }

  std::function<void(std::int16_t KeyCode, std::int16_t Shift)> bei_KeyDown;
  std::function<void(std::int16_t KeyAscii)> bei_KeyPress;
  std::function<void(std::int16_t KeyCode, std::int16_t Shift)> bei_KeyUp;

 private:
  bool eingeschaltet_ = false;
};

/// The host's core component. One instance serves the whole process; a host sets its own and overrides what it has.
class KVO_EXPORT KVOCore {
 public:
  virtual ~KVOCore();

  /// The central error report: class or form name, procedure name, the failure's number and words, and whether the
  /// user is to be told.
  virtual void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer,
      const QString& beschreibung, bool mitMeldung) = 0;

  /// Puts a window where it stood when it was stored last under that application name; leaves it alone when nothing was
  /// stored. Both do nothing here.
  virtual void FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster);
  virtual void FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster);

  /// A new key handler, switched off.
  virtual std::shared_ptr<KeyHandler> NeuerKeyHandler();

  /// The instance in force. Until a host sets one, reports go to standard error, one line each.
  static KVOCore& aktuell();
  /// Puts another instance in force and hands back the one before; none puts the default back.
  static std::shared_ptr<KVOCore> setze(std::shared_ptr<KVOCore> core);
};
