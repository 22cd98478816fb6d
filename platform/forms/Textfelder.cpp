#include "platform/forms/Textfelder.h"

#include <QSignalBlocker>
#include <QTextBlock>

#include "platform/forms/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

TextBox::TextBox(QWidget* behaelter, const QString& name)
    : QLineEdit(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  connect(this, &QLineEdit::textEdited, this, [this] { Ereigniswache::melde(*this, Change); });
}

void TextBox::Text(const QString& wert) {
  if (wert == text()) return;
  setText(wert);
  if (Change) Change();
}

Textblock::Textblock(QWidget* behaelter, const QString& name)
    : QPlainTextEdit(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setTabChangesFocus(true);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { uebernimm_Eingabe(); });
}

void Textblock::Text(const QString& wert) {
  if (wert == text_) return;
  {
    const QSignalBlocker still(this);
    QString anzeige = wert;
    setPlainText(anzeige.replace(u"\r\n"_s, u"\n"_s));
  }
  text_ = wert;
  angezeigt_ = angezeigter_Text();
  if (Change) Change();
}

// Read block by block: the document's plain text would turn hard blanks into plain ones.
QString Textblock::angezeigter_Text() const {
  QString text;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block != document()->begin()) text += u"\r\n"_s;
    text += block.text();
  }
  // Shift and Enter break the line inside a block.
  return text.replace(QChar(QChar::LineSeparator), u"\r\n"_s);
}

void Textblock::uebernimm_Eingabe() {
  const QString neu = angezeigter_Text();
  // The document also tells changes of its form alone.
  if (neu == angezeigt_) return;
  angezeigt_ = neu;
  text_ = neu;
  Ereigniswache::melde(*this, Change);
}
