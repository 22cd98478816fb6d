#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QTemporaryDir>
#include <memory>

/// An X server of its own with a German keyboard and a window manager, for as long as it lives; and the hand at its
/// mouse and keys. What the hand does goes to the server, which passes it on to whatever window is there.
class Xsitzung {
 public:
  Xsitzung();
  ~Xsitzung();
  Xsitzung(const Xsitzung&) = delete;
  Xsitzung& operator=(const Xsitzung&) = delete;

  /// Starts all of it. Why there is none to be had, or empty when it is up.
  QString beginne();
  /// The display's name, as ":5".
  const QString& bildschirm() const noexcept { return nummer_; }

  /// Where the server has a window's inner rectangle, and the widths that its frame adds. Empty for a window that is
  /// gone.
  QRect ort(unsigned long fenster) const;
  QMargins rahmen(unsigned long fenster) const;
  /// The window that has the keys, or one above it, is this one.
  bool hat_Tasten(unsigned long fenster) const;

  void zeige_auf(QPoint stelle);
  void druecke();
  void lasse_los();
  /// Moves the pressed mouse in small steps to a place.
  void ziehe_nach(QPoint stelle);
  void klicke(QPoint stelle);
  void doppelklicke(QPoint stelle);
  /// Clicks with Control held down.
  void klicke_dazu(QPoint stelle);
  /// Turns the wheel by one notch, towards the user.
  void rolle(QPoint stelle);
  /// Clicks the closing button in the frame that the window manager draws.
  void schliesse_am_Rahmen(unsigned long fenster);
  /// Double-clicks the title bar, so that the window takes the whole screen.
  void maximiere_am_Rahmen(unsigned long fenster);

  /// Types a text; raises std::runtime_error for a letter that the keyboard does not have.
  void tippe(const QString& text);
  /// A key by its name in X ("Return", "Escape", "End"), with Control or Alt when they are named before it
  /// ("Control+a").
  void taste(const QString& name);

  /// What the screen shows.
  QImage aufnahme() const;

 private:
  class Tastatur;
  QString starte_Server();
  QString starte_Verwalter();
  QString belege_Tastatur() const;

  QProcess server_;
  QProcess verwalter_;
  QTemporaryDir ordner_;
  QString nummer_;
  void* anzeige_ = nullptr;
  std::unique_ptr<Tastatur> tastatur_;
};
