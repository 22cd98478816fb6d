#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

// Buttons. A handler runs when the user clicks, and at once when code changes a value; what code sets to the value it
// has already raises nothing.

/// A button with a caption. "&" in it marks the access key; blanks around it and runs of them inside are room for the
/// picture and for line breaks, and show as such.
class Knopf : public QPushButton, public Steuerelement {
 public:
  const QString& Caption() const noexcept { return beschriftung_; }
  void Caption(const QString& wert);

 protected:
  explicit Knopf(QWidget* behaelter, const QString& name);

 private:
  QString beschriftung_;
};

/// A command button.
class SSCommand : public Knopf {
 public:
  explicit SSCommand(QWidget* behaelter, const QString& name);

  /// Runs the handler as a click of the user would, if the button can be used.
  void klicke();

  std::function<void()> Click;
};

/// A toggle that stays down.
class SSRibbon : public Knopf {
 public:
  explicit SSRibbon(QWidget* behaelter, const QString& name);

  bool Value() const { return isChecked(); }
  void Value(bool wert);

  /// Gets the new value.
  std::function<void(bool)> Click;
};

/// A check box with the values 0 (not checked) and 1 (checked).
class CheckBox : public QCheckBox, public Steuerelement {
 public:
  explicit CheckBox(QWidget* behaelter, const QString& name);

  QString Caption() const { return text(); }
  void Caption(const QString& wert) { setText(wert); }
  int Value() const { return isChecked() ? 1 : 0; }
  /// Any other number than 0 and 1 raises 380.
  void Value(int wert);

  std::function<void()> Click;
};
