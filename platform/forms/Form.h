#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <exception>
#include <functional>
#include <utility>

#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"
#include "platform/forms/steuerelemente/Ziehvorgang.h"
#include "platform/host/KVOCore.h"

class QAbstractButton;

/// Key codes and shift states as the forms know them.
namespace tasten {
enum Shift : std::int16_t { Umschalt = 1, Strg = 2, Alt = 4 };
/// The virtual key code of a Qt key; 0 for one that has none here.
std::int16_t code(int qt_Taste) noexcept;
std::int16_t shift(Qt::KeyboardModifiers zustand) noexcept;
}  // namespace tasten

/// A window that lays itself out in code. Life: made, loaded (Form_Load, once), shown modally, ended by hiding itself,
/// unloaded (Form_Unload, once) by whoever made it. The object stays usable while hidden.
///
/// The first showing raises Form_Resize, then the first event of each control that has one, then Form_Activate; where a
/// window manager activates the window, that activation is the same one. Later activations raise Form_Activate again.
///
/// Failures: what a handler that the event loop entered could not do ends the modal show, and Show throws it again. A
/// handler that was called by a statement passes its failure on to that statement.
class Form : public QDialog, public Ereigniswache, public Ziehbuehne, public Fensterplatz {
 public:
  explicit Form(const QString& name);

  /// Runs Form_Load unless it has run.
  void Load() {
    if (!std::exchange(geladen_, true)) Form_Load();
  }
  /// Loads, shows the form modally and returns when it was hidden. Throws the failure that ended the show.
  void Show();
  /// Ends the modal show; the form keeps its state.
  void Hide() { hide(); }
  /// Runs Form_Unload unless it has run, and hides the form. Unloading twice is harmless.
  void Unload();

  const QString& Name() const noexcept { return name_; }
  QString Caption() const { return windowTitle(); }
  void Caption(const QString& text) { setWindowTitle(text); }
  /// Inner size in twips.
  double ScaleWidth() const { return twips::aus_Pixel(width()); }
  double ScaleHeight() const { return twips::aus_Pixel(height()); }
  void setze_Innengroesse(double breite, double hoehe) { resize(twips::pixel(breite), twips::pixel(hoehe)); }

  QString Fenstername() const override { return name_; }
  Fensterlage Lage() const override;
  void Lage(const Fensterlage& wert) override;

  /// The button that Escape clicks; none makes Escape do nothing.
  void setze_Abbruchknopf(QAbstractButton* knopf) noexcept { abbruchknopf_ = knopf; }

  /// Runs a handler. A failure of the outermost one, which the event loop entered, is kept and ends the modal show; a
  /// failure inside a running handler flies on.
  void bewacht(const std::function<void()>& handler) override;
  /// A failure that is kept ends the modal show, too.
  void abgeschirmt(const std::function<void()>& handler) noexcept override;

  void beginne_Ziehen(Steuerelement& quelle) override { ziehen_.beginne(quelle); }

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  virtual void Form_Activate() {}
  /// The frame asks to close; setting `Cancel` keeps the form open.
  virtual void Form_QueryUnload(bool& Cancel) { (void)Cancel; }
  virtual void Form_Unload() {}
  // Keys are seen here before the control that has the focus, which still gets them.
  virtual void Form_KeyDown(std::int16_t KeyCode, std::int16_t Shift) { (void)KeyCode, (void)Shift; }
  virtual void Form_KeyPress(std::int16_t KeyAscii) { (void)KeyAscii; }
  virtual void Form_KeyUp(std::int16_t KeyCode, std::int16_t Shift) { (void)KeyCode, (void)Shift; }
  /// A drag of one of the form's controls has ended, wherever and however.
  virtual void Form_DragEnde() {}

  void resizeEvent(QResizeEvent* ereignis) override;
  void hideEvent(QHideEvent* ereignis) override;
  void closeEvent(QCloseEvent* ereignis) override;
  bool event(QEvent* ereignis) override;
  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;
  void reject() override;

 private:
  void sieh_Taste(QKeyEvent& taste);
  void zeige_zum_ersten_Mal();

  QString name_;
  Ziehvorgang ziehen_{*this};
  QAbstractButton* abbruchknopf_ = nullptr;
  std::exception_ptr fehler_;
  int tiefe_ = 0;
  bool geladen_ = false;
  bool entladen_ = false;
  /// The first showing has raised its events.
  bool gezeigt_ = false;
  /// The form raised the first activation itself; the window's own is still to come.
  bool vorweg_aktiviert_ = false;
};
