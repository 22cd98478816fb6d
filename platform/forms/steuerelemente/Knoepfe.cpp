#include "platform/forms/steuerelemente/Knoepfe.h"

#include <QStringList>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

using namespace Qt::Literals::StringLiterals;

Knopf::Knopf(QWidget* behaelter, const QString& name) : QPushButton(behaelter), Steuerelement(*this, name) {
  setAutoDefault(false);
}

// Two blanks and more part the lines.
void Knopf::Caption(const QString& wert) {
  beschriftung_ = wert;
  QStringList zeilen;
  for (const QString& teil : wert.split(u"  "_s, Qt::SkipEmptyParts))
    if (const QString zeile = teil.trimmed(); !zeile.isEmpty()) zeilen.append(zeile);
  setText(zeilen.join(u'\n'));
}

SSCommand::SSCommand(QWidget* behaelter, const QString& name) : Knopf(behaelter, name) {
  connect(this, &QPushButton::clicked, this, [this] { Ereigniswache::melde(*this, Click); });
}

void SSCommand::klicke() {
  if (Steuerelement::Enabled() && Click) Click();
}

SSRibbon::SSRibbon(QWidget* behaelter, const QString& name) : Knopf(behaelter, name) {
  setCheckable(true);
  connect(this, &QPushButton::toggled, this, [this](bool wert) {
    if (Click) Ereigniswache::melde(*this, [this, wert] { Click(wert); });
  });
}

void SSRibbon::Value(bool wert) {
  if (wert == isChecked()) return;
  ohne_Signale([&] { setChecked(wert); });
  if (Click) Click(wert);
}

CheckBox::CheckBox(QWidget* behaelter, const QString& name) : QCheckBox(behaelter), Steuerelement(*this, name) {
  connect(this, &QCheckBox::toggled, this, [this] { Ereigniswache::melde(*this, Click); });
}

void CheckBox::Value(int wert) {
  if (wert != 0 && wert != 1) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  if (wert == Value()) return;
  ohne_Signale([&] { setChecked(wert == 1); });
  if (Click) Click();
}
