#include "host/fenster/vorgaenge/Kundenwahl.h"

#include <QComboBox>
#include <QCompleter>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgaenge/Vorgangspruefung.h"
#include "host/betrieb/vorgaenge/Vorgangsspalten.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Vorschlaege = 50;

QString worte(const Kunde& kunde) {
  return kunde.ort.isEmpty() ? kunde.name : kunde.name + u", "_s + kunde.ort;
}

QString pruefe_Spalte(Vorgangsspalte spalte, const QString& was, const QString& wert) {
  return vorgangspruefung::pruefe_Text(was, wert, vorgangsspalten::eigenschaft(spalte).laenge);
}

}  // namespace

Kundenwahl::Kundenwahl(adodb::Connection& verbindung, QWidget* ueber)
    : QWidget(ueber),
      cbo_Kunde(new QComboBox),
      verbindung_(verbindung),
      vorschlaege_(new QStandardItemModel(this)),
      lbl_Kunde(new QLabel),
      neu_(new QWidget),
      txt_Kundenname(new QLineEdit),
      txt_Ort(new QLineEdit) {
  baue_auf();
  schlage_vor({});
  sieh_nach();
}

void Kundenwahl::baue_auf() {
  cbo_Kunde->setObjectName(u"cbo_Kunde"_s);
  cbo_Kunde->setAccessibleName(u"Kunde: Nummer oder Name"_s);
  cbo_Kunde->setEditable(true);
  cbo_Kunde->setInsertPolicy(QComboBox::NoInsert);
  cbo_Kunde->setModel(vorschlaege_);
  cbo_Kunde->setMinimumContentsLength(24);
  // What fits is found by the database, and what is chosen stands in the field as a number.
  auto* ergaenzung = new QCompleter(vorschlaege_, this);
  ergaenzung->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  ergaenzung->setCompletionRole(Qt::UserRole);
  cbo_Kunde->setCompleter(ergaenzung);
  lbl_Kunde->setObjectName(u"lbl_Kunde"_s);
  lbl_Kunde->setTextFormat(Qt::PlainText);
  lbl_Kunde->setWordWrap(true);
  txt_Kundenname->setObjectName(u"txt_Kundenname"_s);
  txt_Ort->setObjectName(u"txt_Ort"_s);
  auto* felder = new QFormLayout(neu_);
  felder->setContentsMargins(0, 0, 0, 0);
  felder->addRow(u"Na&me:"_s, txt_Kundenname);
  felder->addRow(u"&Ort:"_s, txt_Ort);
  auto* lage = new QVBoxLayout(this);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(cbo_Kunde);
  lage->addWidget(lbl_Kunde);
  lage->addWidget(neu_);
  setFocusProxy(cbo_Kunde);
  connect(cbo_Kunde->lineEdit(), &QLineEdit::textEdited, this, &Kundenwahl::schlage_vor);
  connect(cbo_Kunde, &QComboBox::activated, this,
      [this](int zeile) { cbo_Kunde->setEditText(cbo_Kunde->itemData(zeile).toString()); });
  connect(cbo_Kunde, &QComboBox::editTextChanged, this, &Kundenwahl::sieh_nach);
  for (const QLineEdit* feld : {txt_Kundenname, txt_Ort})
    connect(feld, &QLineEdit::textChanged, this, [this] {
      if (bei_Aenderung) bei_Aenderung();
    });
}

void Kundenwahl::schlage_vor(const QString& eingabe) {
  QList<Kunde> kunden;
  const auto ausfall = versuche_Datenbank([&] { kunden = vorgangstabelle::kunden(verbindung_, eingabe, Vorschlaege); });
  ausfall_ = ausfall ? ausfall->worte : QString();
  // A new list must not choose an entry in place of what was typed.
  const QSignalBlocker stille(cbo_Kunde);
  const int stelle = cbo_Kunde->lineEdit()->cursorPosition();
  vorschlaege_->clear();
  for (const Kunde& kunde : kunden) {
    auto* eintrag = new QStandardItem(kunde.nummer + u" – "_s + worte(kunde));
    eintrag->setData(kunde.nummer, Qt::UserRole);
    vorschlaege_->appendRow(eintrag);
  }
  cbo_Kunde->setCurrentIndex(-1);
  cbo_Kunde->setEditText(eingabe);
  cbo_Kunde->lineEdit()->setCursorPosition(stelle);
}

void Kundenwahl::waehle(const QString& nummer) {
  cbo_Kunde->setEditText(nummer);
}

QString Kundenwahl::nummer() const {
  return text::Trim(cbo_Kunde->currentText());
}

/// Shows who the number means, or asks for the name of a new customer.
void Kundenwahl::sieh_nach() {
  gefunden_.reset();
  const auto ausfall = versuche_Datenbank([&] {
    if (!nummer().isEmpty()) gefunden_ = vorgangstabelle::kunde(verbindung_, nummer());
  });
  ausfall_ = ausfall ? ausfall->worte : QString();
  const bool neu = !gefunden_ && !nummer().isEmpty();
  lbl_Kunde->setText(gefunden_ ? worte(*gefunden_) : neu ? u"Neuer Kunde:"_s : u"Kein Kunde"_s);
  neu_->setVisible(neu);
  if (bei_Aenderung) bei_Aenderung();
}

std::optional<Kunde> Kundenwahl::neuer() const {
  if (gefunden_ || nummer().isEmpty()) return std::nullopt;
  return Kunde{nummer(), text::Trim(txt_Kundenname->text()), text::Trim(txt_Ort->text())};
}

QString Kundenwahl::pruefe() const {
  if (!ausfall_.isEmpty()) return ausfall_;
  if (const QString grund = pruefe_Spalte(Vorgangsspalte::Kundennummer, u"Die Kundennummer"_s, nummer());
      !grund.isEmpty())
    return grund;
  const auto kunde = neuer();
  if (!kunde) return {};
  if (kunde->name.isEmpty()) return u"Der Name des neuen Kunden fehlt"_s;
  if (const QString grund = pruefe_Spalte(Vorgangsspalte::Kundenname, u"Der Name des Kunden"_s, kunde->name);
      !grund.isEmpty())
    return grund;
  return pruefe_Spalte(Vorgangsspalte::Ort, u"Der Ort des Kunden"_s, kunde->ort);
}
