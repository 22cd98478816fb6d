#include "platform/forms/steuerelemente/Textfelder.h"

#include <QTextBlock>
#include <QValidator>
#include <algorithm>

#include "platform/forms/steuerelemente/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

/// Takes forbidden characters out of what the user types or pastes.
class TextBox::Filter final : public QValidator {
 public:
  Filter(TextBox& feld, bool (*ist_verboten)(QChar), qsizetype hoechstens)
      : QValidator(&feld), feld_(feld), ist_verboten_(ist_verboten), hoechstens_(hoechstens) {}

  State validate(QString& eingabe, int& stelle) const override {
    if (!feld_.gilt_als_Eingabe_ || eingabe == feld_.letzter_) return Acceptable;
    for (qsizetype i = eingabe.size() - 1; i >= 0; --i) {
      if (!ist_verboten_(eingabe[i])) continue;
      eingabe.remove(i, 1);
      if (i < stelle) --stelle;
    }
    const qsizetype grenze = std::max(hoechstens_, feld_.letzter_.size());
    if (eingabe.size() > grenze) {
      eingabe.truncate(eingabe[grenze - 1].isHighSurrogate() ? grenze - 1 : grenze);
      stelle = static_cast<int>(std::min<qsizetype>(stelle, eingabe.size()));
    }
    return Acceptable;
  }

 private:
  TextBox& feld_;
  bool (*ist_verboten_)(QChar);
  qsizetype hoechstens_;
};

TextBox::TextBox(QWidget* behaelter, const QString& name)
    : QLineEdit(behaelter), Steuerelement(*this, name, Farbrollen::Feld) {
  connect(this, &QLineEdit::textEdited, this, [this] { uebernimm_Eingabe(); });
}

void TextBox::verbiete(bool (*ist_verboten)(QChar), qsizetype hoechstens) {
  setValidator(new Filter(*this, ist_verboten, hoechstens));
}

// A key whose character was refused is told as an edit too.
void TextBox::uebernimm_Eingabe() {
  if (text() == letzter_) return;
  letzter_ = text();
  Ereigniswache::melde(*this, Change);
}

void TextBox::Text(const QString& wert) {
  if (wert == text()) return;
  gilt_als_Eingabe_ = false;
  setText(wert);
  gilt_als_Eingabe_ = true;
  letzter_ = text();
  if (Change) Change();
}

Textblock::Textblock(QWidget* behaelter, const QString& name) : QPlainTextEdit(behaelter), Steuerelement(*this, name) {
  setTabChangesFocus(true);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { uebernimm_Eingabe(); });
}

void Textblock::Text(const QString& wert) {
  if (wert == text_) return;
  ohne_Signale([&] { setPlainText(QString(wert).replace(u"\r\n"_s, u"\n"_s)); });
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
