#include "platform/forms/steuerelemente/Knoepfe.h"

#include <QSignalBlocker>
#include <QStringList>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The caption as it is shown: two blanks and more part the lines.
QString angezeigt(const QString& beschriftung) {
  QStringList zeilen;
  for (const QString& teil : beschriftung.split(u"  "_s, Qt::SkipEmptyParts))
    if (const QString zeile = teil.trimmed(); !zeile.isEmpty()) zeilen.append(zeile);
  return zeilen.join(u'\n');
}

}  // namespace

SSCommand::SSCommand(QWidget* behaelter, const QString& name)
    : QPushButton(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] { Ereigniswache::melde(*this, Click); });
}

void SSCommand::Caption(const QString& wert) {
  beschriftung_ = wert;
  setText(angezeigt(wert));
}

void SSCommand::klicke() {
  if (Steuerelement::Enabled() && Click) Click();
}

SSRibbon::SSRibbon(QWidget* behaelter, const QString& name)
    : QPushButton(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setAutoDefault(false);
  setCheckable(true);
  connect(this, &QPushButton::toggled, this, [this](bool wert) {
    if (Click) Ereigniswache::melde(*this, [this, wert] { Click(wert); });
  });
}

void SSRibbon::Caption(const QString& wert) {
  beschriftung_ = wert;
  setText(angezeigt(wert));
}

void SSRibbon::Value(bool wert) {
  if (wert == isChecked()) return;
  {
    const QSignalBlocker still(this);
    setChecked(wert);
  }
  if (Click) Click(wert);
}

CheckBox::CheckBox(QWidget* behaelter, const QString& name)
    : QCheckBox(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  connect(this, &QCheckBox::toggled, this, [this] { Ereigniswache::melde(*this, Click); });
}

void CheckBox::Value(int wert) {
  if (wert != 0 && wert != 1) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  if (wert == Value()) return;
  {
    const QSignalBlocker still(this);
    setChecked(wert == 1);
  }
  if (Click) Click();
}
