#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

// Buttons. A handler runs when the user clicks, and at once when code changes a value; what code sets to the value it
// has already raises nothing.

/// A command button. "&" in its caption marks the access key; blanks around it and runs of them inside are room for the
/// picture and for line breaks, and show as such.
class SSCommand : public QPushButton, public Steuerelement {
 public:
  explicit SSCommand(QWidget* behaelter, const QString& name);

  const QString& Caption() const noexcept { return beschriftung_; }
  void Caption(const QString& wert);
  /// Runs the handler as a click of the user would, if the button can be used.
  void klicke();

  std::function<void()> Click;

 private:
  QString beschriftung_;
};

/// A toggle that stays down.
class SSRibbon : public QPushButton, public Steuerelement {
 public:
  explicit SSRibbon(QWidget* behaelter, const QString& name);

  const QString& Caption() const noexcept { return beschriftung_; }
  void Caption(const QString& wert);
  bool Value() const { return isChecked(); }
  void Value(bool wert);

  /// Gets the new value.
  std::function<void(bool)> Click;

 private:
  QString beschriftung_;
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
