#include "platform/forms/steuerelemente/Auswahlfelder.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"

namespace {

/// A key that is taken, and one that does not exist.
constexpr std::int32_t SchluesselVergeben = 457;
constexpr std::int32_t ElementNichtGefunden = 35601;

}  // namespace

ComboBox::ComboBox(QWidget* behaelter, const QString& name) : QComboBox(behaelter), Steuerelement(*this, name) {
  // The first entry added must not choose itself.
  setPlaceholderText(QStringLiteral(" "));
  connect(this, &QComboBox::currentIndexChanged, this, [this] { Ereigniswache::melde(*this, Click); });
}

void ComboBox::ListIndex(int wert) {
  if (wert < -1 || wert >= count()) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  if (wert == currentIndex()) return;
  ohne_Signale([&] { setCurrentIndex(wert); });
  if (Click) Click();
}

ImageCombo::ImageCombo(QWidget* behaelter, const QString& name) : QComboBox(behaelter), Steuerelement(*this, name) {
  setPlaceholderText(QStringLiteral(" "));
  connect(this, &QComboBox::activated, this, [this] { Ereigniswache::melde(*this, Click); });
}

void ImageCombo::Add(const QString& schluessel, const QString& text, int bild, const QIcon& icon) {
  if (findData(schluessel, SchluesselRolle) >= 0) throw Laufzeitfehler(SchluesselVergeben);
  addItem(icon, text);
  setItemData(count() - 1, schluessel, SchluesselRolle);
  setItemData(count() - 1, bild, BildRolle);
}

QVariant ImageCombo::angabe(int index, int rolle) const {
  if (index < 1 || index > count()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return itemData(index - 1, rolle);
}

void ImageCombo::waehle(const QString& schluessel) {
  const int index = findData(schluessel, SchluesselRolle, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (index < 0) throw Laufzeitfehler(ElementNichtGefunden, QStringLiteral("Das Element wurde nicht gefunden"));
  setCurrentIndex(index);
}

QString ImageCombo::gewaehlter_Text() const {
  if (currentIndex() < 0) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return currentText();
}
