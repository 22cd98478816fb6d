#include "host/fenster/Vorgangsansicht.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The only large size: each further size of letters makes the start of the program longer.
constexpr qreal Gross = 1.5;

QLabel* beschriftung(const QString& name, qreal groesse = 1, bool fett = false) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  QFont schrift = label->font();
  schrift.setPointSizeF(schrift.pointSizeF() * groesse);
  schrift.setBold(fett);
  label->setFont(schrift);
  return label;
}

QPushButton* knopf(const QString& name, const QString& text, const QString& hilfe) {
  auto* neu = new QPushButton(text);
  neu->setObjectName(name);
  neu->setToolTip(hilfe);
  neu->setMinimumSize(neu->sizeHint() + QSize(24, 6));
  return neu;
}

QString zahl_der_Bilder(const QList<Vorschaubild>& bilder) {
  const auto fehlende = std::count_if(bilder.begin(), bilder.end(), [](const Vorschaubild& b) { return b.fehlt; });
  const QString anzahl = vorgang::anzahl_Bilder(static_cast<int>(bilder.size()));
  if (fehlende == 0) return anzahl;
  return anzahl + (fehlende == 1 ? u", 1 Datei fehlt"_s : u", %1 Dateien fehlen"_s.arg(fehlende));
}

}  // namespace

Vorgangsansicht::Vorgangsansicht(QWidget* oberhalb)
    : QWidget(oberhalb),
      cmd_Zuordnen(knopf(u"cmd_Zuordnen"_s, u"Bilder &zuordnen …"_s,
          u"Öffnet die Bilder des Vorgangs zum Bearbeiten (Eingabetaste oder Doppelklick in der Liste)"_s)),
      cmd_Anzeigen(knopf(u"cmd_Anzeigen"_s, u"Nur &anzeigen …"_s,
          u"Zeigt die Bilder des Vorgangs, ohne dass sich etwas ändern lässt"_s)),
      cmd_Bericht(knopf(u"cmd_Bericht"_s, u"Ber&icht …"_s,
          u"Zeigt die Bilder, die zum Drucken gekennzeichnet sind, als Bericht: für Drucker, PDF und Mail (Strg+P)"_s)),
      cmd_Ausgeben(knopf(u"cmd_Ausgeben"_s, u"Bilder aus&geben …"_s,
          u"Gibt die Bilder des Vorgangs in einen Ordner oder eine ZIP-Datei aus (Strg+Umschalt+S)"_s)),
      cmd_Exif(knopf(u"cmd_Exif"_s, u"E&xif …"_s, u"Zeigt die Eigenschaften des gewählten Bildes (Strg+E)"_s)),
      cmd_AlleZuordnungen(knopf(u"cmd_AlleZuordnungen"_s, u"A&lle Zuordnungen …"_s,
          u"Zeigt, welchen Vorgängen das gewählte Bild noch zugeordnet ist"_s)),
      cmd_WeitereZuordnungen(knopf(
          u"cmd_WeitereZuordnungen"_s, u"&Weitere Zuordnungen …"_s, u"Ordnet Bilder des Vorgangs auch Artikeln zu"_s)),
      cmd_NochEinmal(
          knopf(u"cmd_NochEinmal"_s, u"Neu &einlesen"_s, u"Liest die Vorgänge noch einmal aus der Datenbank (F5)"_s)),
      lst_Bilder(new Vorschaustreifen),
      seiten_(new QStackedWidget(this)),
      bildseiten_(new QStackedWidget),
      lbl_Art(beschriftung(u"lbl_Art"_s)),
      lbl_Nummer(beschriftung(u"lbl_Nummer"_s, Gross, true)),
      lbl_Betreff(beschriftung(u"lbl_Betreff"_s)),
      lbl_Anzahl(beschriftung(u"lbl_Anzahl"_s)),
      lbl_KeineBilder(beschriftung(u"lbl_KeineBilder"_s)),
      lbl_Ueberschrift(beschriftung(u"lbl_Ueberschrift"_s, Gross, true)),
      lbl_Hinweis(beschriftung(u"lbl_Hinweis"_s)) {
  lst_Bilder->setObjectName(u"lst_Bilder"_s);
  lst_Bilder->setAccessibleName(u"Bilder des Vorgangs"_s);
  seiten_->addWidget(baue_Hinweisseite());
  seiten_->addWidget(baue_Vorgangsseite());
  auto* lage = new QVBoxLayout(this);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(seiten_);
}

QWidget* Vorgangsansicht::baue_Vorgangsseite() {
  lbl_KeineBilder->setAlignment(Qt::AlignCenter);
  lbl_KeineBilder->setText(
      u"Diesem Vorgang sind noch keine Bilder zugeordnet.\n\n„Bilder zuordnen …“ öffnet den Dialog, in dem Sie Bilder suchen und zuordnen."_s);
  bildseiten_->addWidget(lst_Bilder);
  bildseiten_->addWidget(lbl_KeineBilder);
  auto* kopf = new QHBoxLayout;
  kopf->addWidget(lbl_Nummer, 1);
  kopf->addWidget(lbl_Anzahl, 0, Qt::AlignBottom);
  lbl_Anzahl->setWordWrap(false);
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(cmd_Zuordnen);
  knoepfe->addWidget(cmd_Anzeigen);
  knoepfe->addWidget(cmd_Bericht);
  knoepfe->addWidget(cmd_Ausgeben);
  knoepfe->addStretch(1);
  auto* bildknoepfe = new QHBoxLayout;
  for (QPushButton* eines : {cmd_AlleZuordnungen, cmd_WeitereZuordnungen, cmd_Exif}) {
    bildknoepfe->addWidget(eines);
    eines->setEnabled(false);
  }
  bildknoepfe->addStretch(1);
  lst_Bilder->bei_Wahl = [this] {
    for (QPushButton* eines : {cmd_Exif, cmd_AlleZuordnungen}) eines->setEnabled(lst_Bilder->gewaehltes() != nullptr);
  };
  auto* seite = new QWidget;
  auto* lage = new QVBoxLayout(seite);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addWidget(lbl_Art);
  lage->addLayout(kopf);
  lage->addWidget(lbl_Betreff);
  lage->addWidget(bildseiten_, 1);
  lage->addLayout(knoepfe);
  lage->addLayout(bildknoepfe);
  return seite;
}

QWidget* Vorgangsansicht::baue_Hinweisseite() {
  lbl_Ueberschrift->setAlignment(Qt::AlignCenter);
  lbl_Hinweis->setAlignment(Qt::AlignCenter);
  auto* seite = new QWidget;
  auto* lage = new QVBoxLayout(seite);
  lage->addStretch(2);
  lage->addWidget(lbl_Ueberschrift);
  lage->addWidget(lbl_Hinweis);
  lage->addSpacing(8);
  lage->addWidget(cmd_NochEinmal, 0, Qt::AlignHCenter);
  lage->addStretch(3);
  return seite;
}

void Vorgangsansicht::zeige(const Vorgang& vorgang, const QList<Vorschaubild>& bilder) {
  lbl_Art->setText(vorgang::art_von(vorgang.satz.typ1).einzahl);
  lbl_Nummer->setText(vorgang.nummer);
  lbl_Betreff->setText(vorgang.betreff);
  lbl_Betreff->setVisible(!vorgang.betreff.isEmpty());
  lbl_Anzahl->setText(zahl_der_Bilder(bilder));
  lst_Bilder->setze(bilder);
  for (QPushButton* eines : {cmd_WeitereZuordnungen, cmd_Ausgeben}) eines->setEnabled(!bilder.isEmpty());
  bildseiten_->setCurrentIndex(bilder.isEmpty() ? 1 : 0);
  seiten_->setCurrentIndex(1);
}

QRect Vorgangsansicht::bildflaeche() const {
  if (seiten_->currentIndex() == 0) return {};
  return {bildseiten_->mapTo(this, QPoint()), bildseiten_->size()};
}

void Vorgangsansicht::zeige_Hinweis(const QString& ueberschrift, const QString& text, bool mit_Versuch) {
  lbl_Ueberschrift->setText(ueberschrift);
  lbl_Hinweis->setText(text);
  cmd_NochEinmal->setVisible(mit_Versuch);
  lst_Bilder->setze({});
  seiten_->setCurrentIndex(0);
}
