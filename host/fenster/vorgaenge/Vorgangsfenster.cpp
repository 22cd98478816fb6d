#include "host/fenster/vorgaenge/Vorgangsfenster.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgaenge/Vorgangspruefung.h"
#include "host/betrieb/vorgaenge/Vorgangsspalten.h"
#include "host/fenster/vorgaenge/Kundenwahl.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;
using vorgangspruefung::Umbruch;

namespace {

constexpr int Breite = 460;
constexpr int Textzeilen = 3;

/// NULL and the empty text look the same to a user; what he left empty stays what it was.
std::optional<QString> oder_bisher(const QString& neu, const std::optional<QString>& bisher) {
  return neu.isEmpty() && bisher.value_or(QString()).isEmpty() ? bisher : std::optional(neu);
}

/// A part that nobody touched stays as it is, blanks and all.
QString eingabe(const QLineEdit& feld) {
  return feld.isModified() ? text::Trim(feld.text()) : feld.text();
}

}  // namespace

Vorgangsfenster::Vorgangsfenster(adodb::Connection& verbindung, QWidget* ueber)
    : QDialog(ueber),
      verbindung_(verbindung),
      cbo_Art(new QComboBox(this)),
      txt_Typ1(new QLineEdit(this)),
      lbl_Key{new QLabel(this), new QLabel(this), new QLabel(this)},
      txt_Key{new QLineEdit(this), new QLineEdit(this), new QLineEdit(this)},
      kunde_(new Kundenwahl(verbindung, this)),
      txt_Projekt(new QLineEdit(this)),
      txt_Text(new QPlainTextEdit(this)),
      lbl_Pruefung(new QLabel(this)),
      cmd_Speichern(new QPushButton(u"&Speichern"_s, this)) {
  setObjectName(u"Vorgangsfenster"_s);
  baue_auf();
}

Vorgangsfenster::Vorgangsfenster(adodb::Connection& verbindung, const QString& typ1, QWidget* ueber)
    : Vorgangsfenster(verbindung, ueber) {
  setWindowTitle(u"Neuer Vorgang"_s);
  waehle_Art(typ1.isEmpty() ? vorgang::bekannte_Arten().first().typ1 : typ1);
  zeige_Pruefung();
  txt_Key[0]->setFocus();
}

Vorgangsfenster::Vorgangsfenster(adodb::Connection& verbindung, const Vorgangssatz& gelesen, int bilder, QWidget* ueber)
    : Vorgangsfenster(verbindung, ueber) {
  setWindowTitle(u"Vorgang ändern"_s);
  fuelle(gelesen, bilder);
  for (QWidget* feld : std::initializer_list<QWidget*>{cbo_Art, txt_Typ1, txt_Key[0], txt_Key[1], txt_Key[2]})
    feld->setEnabled(bilder == 0);
  zeige_Pruefung();
  txt_Text->setFocus();
}

void Vorgangsfenster::baue_auf() {
  auto* lage = new QVBoxLayout(this);
  auto* felder = new QFormLayout;
  baue_Felder(*felder);
  lage->addLayout(felder);
  lbl_Pruefung->setObjectName(u"lbl_Pruefung"_s);
  lbl_Pruefung->setAccessibleName(u"Prüfung"_s);
  lbl_Pruefung->setTextFormat(Qt::PlainText);
  lbl_Pruefung->setWordWrap(true);
  // Two lines always, so that the window keeps its size while words come and go.
  lbl_Pruefung->setMinimumHeight(2 * lbl_Pruefung->fontMetrics().lineSpacing());
  lage->addWidget(lbl_Pruefung);
  lage->addStretch(1);
  baue_Fuss();
  setMinimumWidth(Breite);
  for (const vorgang::Art& art : vorgang::bekannte_Arten()) cbo_Art->addItem(art.einzahl, art.typ1);
  cbo_Art->addItem(u"Andere Art …"_s, QString());
  connect(cbo_Art, &QComboBox::currentIndexChanged, this, [this] {
    benenne_Teile();
    zeige_Pruefung();
  });
  for (const QLineEdit* feld : {txt_Typ1, txt_Key[0], txt_Key[1], txt_Key[2], txt_Projekt})
    connect(feld, &QLineEdit::textChanged, this, &Vorgangsfenster::zeige_Pruefung);
  connect(txt_Text, &QPlainTextEdit::textChanged, this, &Vorgangsfenster::zeige_Pruefung);
  kunde_->bei_Aenderung = [this] { zeige_Pruefung(); };
  connect(cmd_Speichern, &QPushButton::clicked, this, &Vorgangsfenster::speichere);
}

void Vorgangsfenster::baue_Felder(QFormLayout& felder) {
  cbo_Art->setObjectName(u"cbo_Art"_s);
  txt_Typ1->setObjectName(u"txt_Typ1"_s);
  txt_Typ1->setAccessibleName(u"Kürzel der Art"_s);
  txt_Typ1->setPlaceholderText(u"Kürzel der Art"_s);
  felder.addRow(u"&Art:"_s, cbo_Art);
  felder.addRow(QString(), txt_Typ1);
  for (std::size_t i = 0; i < txt_Key.size(); ++i) {
    txt_Key.at(i)->setObjectName(u"txt_Key%1"_s.arg(i + 1));
    lbl_Key.at(i)->setObjectName(u"lbl_Key%1"_s.arg(i + 1));
    lbl_Key.at(i)->setBuddy(txt_Key.at(i));
    felder.addRow(lbl_Key.at(i), txt_Key.at(i));
  }
  felder.addRow(u"&Kunde:"_s, kunde_);
  txt_Projekt->setObjectName(u"txt_Projekt"_s);
  felder.addRow(u"&Projektnummer:"_s, txt_Projekt);
  txt_Text->setObjectName(u"txt_Text"_s);
  txt_Text->setAccessibleName(u"Text"_s);
  txt_Text->setTabChangesFocus(true);
  txt_Text->setFixedHeight(Textzeilen * txt_Text->fontMetrics().lineSpacing() + 12);
  felder.addRow(u"&Text:"_s, txt_Text);
}

void Vorgangsfenster::baue_Fuss() {
  cmd_Speichern->setObjectName(u"cmd_Speichern"_s);
  cmd_Speichern->setDefault(true);
  auto* abbrechen = new QPushButton(u"A&bbrechen"_s, this);
  abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  abbrechen->setAutoDefault(false);
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  auto* fuss = new QHBoxLayout;
  fuss->addStretch(1);
  fuss->addWidget(cmd_Speichern);
  fuss->addWidget(abbrechen);
  qobject_cast<QVBoxLayout*>(layout())->addLayout(fuss);
}

void Vorgangsfenster::fuelle(const Vorgangssatz& satz, int bilder) {
  gelesen_ = satz;
  bilder_ = bilder;
  waehle_Art(satz.schluessel.typ1);
  for (std::size_t i = 0; i < txt_Key.size(); ++i) txt_Key.at(i)->setText(satz.schluessel.keys.at(i));
  benenne_Teile();
  kunde_->waehle(satz.kundennummer.value_or(QString()));
  txt_Projekt->setText(satz.projektnummer.value_or(QString()));
  txt_Text->setPlainText(satz.text);
  txt_Text->document()->setModified(false);
}

void Vorgangsfenster::waehle_Art(const QString& typ1) {
  const int bekannte = cbo_Art->findData(vorgang::art_von(typ1).typ1);
  cbo_Art->setCurrentIndex(bekannte >= 0 ? bekannte : cbo_Art->count() - 1);
  if (bekannte < 0) txt_Typ1->setText(typ1);
  benenne_Teile();
}

void Vorgangsfenster::benenne_Teile() {
  const bool andere = cbo_Art->currentData().toString().isEmpty();
  txt_Typ1->setVisible(andere);
  const auto teile = vorgangspruefung::teile(typ1());
  for (std::size_t i = 0; i < teile.size(); ++i) {
    const QString& name = teile.at(i).name;
    lbl_Key.at(i)->setText((name.isEmpty() ? u"Key%1"_s.arg(i + 1) : name) + u':');
    txt_Key.at(i)->setAccessibleName(lbl_Key.at(i)->text().chopped(1));
    // A part that the kind does not have, but the record does, must not go unseen.
    const bool zeigen = !name.isEmpty() || !txt_Key.at(i)->text().isEmpty();
    lbl_Key.at(i)->setVisible(zeigen);
    txt_Key.at(i)->setVisible(zeigen);
  }
}

QString Vorgangsfenster::typ1() const {
  const QString bekannte = cbo_Art->currentData().toString();
  // A known kind keeps the spelling that the record has.
  if (gelesen_ && vorgang::art_von(gelesen_->schluessel.typ1).typ1 == bekannte) return gelesen_->schluessel.typ1;
  return bekannte.isEmpty() ? eingabe(*txt_Typ1) : bekannte;
}

Vorgangssatz Vorgangsfenster::eingegeben() const {
  const Vorgangssatz bisher = gelesen_.value_or(Vorgangssatz{});
  Vorgangssatz satz;
  satz.schluessel = {typ1(), {eingabe(*txt_Key[0]), eingabe(*txt_Key[1]), eingabe(*txt_Key[2])}};
  satz.kundennummer = oder_bisher(kunde_->nummer(), bisher.kundennummer);
  satz.projektnummer = oder_bisher(eingabe(*txt_Projekt), bisher.projektnummer);
  // The field knows one kind of line break.
  satz.text = txt_Text->document()->isModified() ? txt_Text->toPlainText() : bisher.text;
  satz.ordner = bisher.ordner;
  return satz;
}

QString Vorgangsfenster::pruefe() const {
  const Vorgangssatz satz = eingegeben();
  const bool neue_Nummer = !gelesen_ || satz.schluessel != gelesen_->schluessel;
  if (neue_Nummer) {
    const QString grund = vorgangspruefung::pruefe_Schluessel(satz.schluessel.typ1, satz.schluessel.keys);
    if (!grund.isEmpty()) return grund;
    std::optional<Vorgangssatz> treffer;
    const auto ausfall = versuche_Datenbank([&] { treffer = vorgangstabelle::lies(verbindung_, satz.schluessel); });
    if (ausfall) return ausfall->worte;
    if (treffer && !(gelesen_ && treffer->schluessel == gelesen_->schluessel))
      return u"%1 gibt es schon"_s.arg(vorgangstabelle::genannt(treffer->schluessel));
  }
  if (const QString grund = kunde_->pruefe(); !grund.isEmpty()) return grund;
  const auto laenge = [](Vorgangsspalte spalte) { return vorgangsspalten::eigenschaft(spalte).laenge; };
  if (const QString grund = vorgangspruefung::pruefe_Text(
          u"Die Projektnummer"_s, satz.projektnummer.value_or(QString()), laenge(Vorgangsspalte::Projektnummer));
      !grund.isEmpty())
    return grund;
  return vorgangspruefung::pruefe_Text(u"Der Text"_s, satz.text, laenge(Vorgangsspalte::Text), Umbruch::Erlaubt);
}

void Vorgangsfenster::zeige_Pruefung() {
  const QString grund = pruefe();
  const QString fest =
      bilder_ == 0 ? QString() : u"Der Vorgang hat %1; Art und Nummer bleiben."_s.arg(vorgang::anzahl_Bilder(bilder_));
  lbl_Pruefung->setText(grund.isEmpty() ? fest : grund);
  cmd_Speichern->setEnabled(grund.isEmpty());
}

void Vorgangsfenster::speichere() {
  Vorgangssatz satz = eingegeben();
  gespeicherter_ = satz.schluessel;
  try {
    if (!gelesen_) {
      vorgangstabelle::mache(verbindung_, satz, kunde_->neuer());
      return accept();
    }
    satz.stand = gelesen_->stand;
    if (satz == *gelesen_) return accept();
    // It was touched now.
    satz.stand.reset();
    vorgangstabelle::aendere(verbindung_, *gelesen_, satz, kunde_->neuer());
    accept();
  } catch (const Abbruch& abbruch) {
    lbl_Pruefung->setText(abbruch.text());
  }
}
