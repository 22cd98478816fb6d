#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A text box of one line. Change runs when the text really changes, by the user or by code, at once.
class TextBox : public QLineEdit, public Steuerelement {
 public:
  explicit TextBox(QWidget* behaelter, const QString& name);

  QString Text() const { return text(); }
  void Text(const QString& wert);
  bool Locked() const { return isReadOnly(); }
  void Locked(bool wert) { setReadOnly(wert); }
  /// What the user types or pastes loses the characters that `ist_verboten` names and what exceeds `hoechstens` 16-bit
  /// characters; what code assigns is taken as it is, and the user may shorten it.
  void verbiete(bool (*ist_verboten)(QChar), qsizetype hoechstens);

  std::function<void()> Change;

 private:
  class Filter;
  void uebernimm_Eingabe();

  /// The text after the last assignment or input.
  QString letzter_;
  bool gilt_als_Eingabe_ = true;
};

/// A text box of several lines. What code assigned comes back character for character until the user edits it, whatever
/// the display makes of line ends and hard blanks; what the user edits has CR LF as line end.
class Textblock : public QPlainTextEdit, public Steuerelement {
 public:
  explicit Textblock(QWidget* behaelter, const QString& name);

  const QString& Text() const noexcept { return text_; }
  void Text(const QString& wert);
  bool Locked() const { return isReadOnly(); }
  void Locked(bool wert) { setReadOnly(wert); }

  std::function<void()> Change;

 private:
  void uebernimm_Eingabe();
  QString angezeigter_Text() const;

  QString text_;
  /// The text as the display holds it after the last assignment or input.
  QString angezeigt_;
};
