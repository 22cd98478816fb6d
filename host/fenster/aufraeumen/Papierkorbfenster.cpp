#include "host/fenster/aufraeumen/Papierkorbfenster.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <ranges>

#include "host/betrieb/Ausgang.h"
#include "host/fenster/Meldungszeilen.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Papierkorb"_s;
constexpr int Lauf = Qt::UserRole;

QString groesse(std::int64_t bytes) {
  return QLocale(QLocale::German).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString zeitpunkt(const QString& lauf) {
  return Papierkorb::zeit(lauf).toString(u"dd.MM.yyyy HH:mm:ss"_s);
}

void nenne(const QList<Papierkorb::Gebliebenes>& geblieben) {
  if (geblieben.isEmpty()) return;
  QStringList saetze;
  saetze.reserve(geblieben.size());
  for (const auto& g : geblieben) saetze.append(u"„%1“: %2"_s.arg(g.pfad, g.grund));
  MsgBox(u"Im Papierkorb bleiben:\r\n\r\n%1"_s.arg(meldungszeilen(saetze)), Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
}

}  // namespace

Papierkorbfenster::Papierkorbfenster(const Papierkorb& korb, QWidget* ueber)
    : QDialog(ueber),
      korb_(korb),
      lst_Laeufe(new QTreeWidget),
      lbl_Leer(new QLabel(u"Der Papierkorb ist leer."_s)),
      spn_Tage(new QSpinBox),
      cmd_Zurueckholen(new QPushButton(u"&Zurückholen …"_s)),
      cmd_Endgueltig(new QPushButton(u"&Endgültig löschen …"_s)) {
  setObjectName(u"Papierkorbfenster"_s);
  setWindowTitle(Titel);
  baue_auf();
  fuelle();
  resize(560, 360);
}

void Papierkorbfenster::baue_auf() {
  constexpr int Ueblich = 30;
  constexpr int Hoechstens = 3650;
  auto* lage = new QVBoxLayout(this);
  lst_Laeufe->setObjectName(u"lst_Laeufe"_s);
  lst_Laeufe->setAccessibleName(u"Aufgeräumtes"_s);
  lst_Laeufe->setHeaderLabels({u"Aufgeräumt am"_s, u"Dateien"_s, u"Größe"_s});
  lst_Laeufe->setRootIsDecorated(false);
  lst_Laeufe->setUniformRowHeights(true);
  lage->addWidget(lst_Laeufe, 1);
  lbl_Leer->setObjectName(u"lbl_Leer"_s);
  lage->addWidget(lbl_Leer);
  auto* alter = new QHBoxLayout;
  auto* lbl_Tage = new QLabel(u"Endgültig gelöscht wird, was &älter ist als"_s);
  spn_Tage->setObjectName(u"spn_Tage"_s);
  spn_Tage->setRange(0, Hoechstens);
  spn_Tage->setValue(Ueblich);
  spn_Tage->setSuffix(u" Tage"_s);
  lbl_Tage->setBuddy(spn_Tage);
  alter->addWidget(lbl_Tage);
  alter->addWidget(spn_Tage);
  alter->addStretch(1);
  lage->addLayout(alter);
  auto* fuss = new QHBoxLayout;
  auto* schliessen = new QPushButton(u"Schließen"_s);
  cmd_Zurueckholen->setObjectName(u"cmd_Zurueckholen"_s);
  cmd_Endgueltig->setObjectName(u"cmd_Endgueltig"_s);
  schliessen->setObjectName(u"cmd_Schliessen"_s);
  for (QPushButton* knopf : {cmd_Zurueckholen, cmd_Endgueltig}) {
    knopf->setAutoDefault(false);
    fuss->addWidget(knopf);
  }
  fuss->addStretch(1);
  fuss->addWidget(schliessen);
  schliessen->setDefault(true);
  lage->addLayout(fuss);
  connect(cmd_Zurueckholen, &QPushButton::clicked, this, &Papierkorbfenster::hole_zurueck);
  connect(cmd_Endgueltig, &QPushButton::clicked, this, &Papierkorbfenster::leere);
  connect(schliessen, &QPushButton::clicked, this, &QDialog::reject);
}

// The last one stands on top and is chosen: it is the one that a user regrets.
void Papierkorbfenster::fuelle() {
  lst_Laeufe->clear();
  const QStringList laeufe = korb_.laeufe();
  for (const QString& lauf : std::views::reverse(laeufe)) {
    const Papierkorb::Bestand bestand = korb_.bestand(lauf);
    auto* zeile = new QTreeWidgetItem(
        lst_Laeufe, {zeitpunkt(lauf), QString::number(bestand.dateien.size()), groesse(bestand.bytes)});
    zeile->setData(0, Lauf, lauf);
    for (const int spalte : {1, 2}) zeile->setTextAlignment(spalte, Qt::AlignRight | Qt::AlignVCenter);
  }
  for (int spalte = 0; spalte < 2; ++spalte) lst_Laeufe->resizeColumnToContents(spalte);
  lst_Laeufe->setCurrentItem(lst_Laeufe->topLevelItem(0));
  lbl_Leer->setVisible(laeufe.isEmpty());
  cmd_Zurueckholen->setEnabled(!laeufe.isEmpty());
  cmd_Endgueltig->setEnabled(!laeufe.isEmpty());
}

void Papierkorbfenster::hole_zurueck() {
  const QTreeWidgetItem* zeile = lst_Laeufe->currentItem();
  if (!zeile) return;
  if (MsgBox(
          u"Soll zurückkommen, was am %1 aufgeräumt wurde?\r\n\r\nDateien, die inzwischen da sind, bleiben, wie sie sind."_s
              .arg(zeile->text(0)),
          Knoepfe::JaNein, Symbol::Frage, Titel) != Antwort::Ja)
    return;
  const auto geblieben = korb_.hole_zurueck(zeile->data(0, Lauf).toString());
  fuelle();
  nenne(geblieben);
}

void Papierkorbfenster::leere() {
  const QStringList laeufe = korb_.aeltere(spn_Tage->value());
  if (laeufe.isEmpty()) {
    MsgBox(u"Nichts im Papierkorb ist älter als %1 Tage."_s.arg(spn_Tage->value()), Knoepfe::OK, Symbol::Information,
        Titel);
    return;
  }
  qsizetype dateien = 0;
  std::int64_t bytes = 0;
  for (const QString& lauf : laeufe) {
    const Papierkorb::Bestand bestand = korb_.bestand(lauf);
    dateien += bestand.dateien.size();
    bytes += bestand.bytes;
  }
  if (MsgBox(u"Soll endgültig gelöscht werden, was älter als %1 Tage ist?\r\n\r\nDateien: %2. Frei werden %3."_s.arg(
                 QString::number(spn_Tage->value()), QString::number(dateien), groesse(bytes)),
          Knoepfe::JaNein, Symbol::Ausrufezeichen, Titel) != Antwort::Ja)
    return;
  QList<Papierkorb::Gebliebenes> geblieben;
  for (const QString& lauf : laeufe) geblieben += korb_.loesche(lauf);
  fuelle();
  nenne(geblieben);
}
