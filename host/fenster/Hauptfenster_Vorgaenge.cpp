// What the window does with the records themselves, where the database keeps them: new, changed, deleted, from a list.
#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/vorgaenge/Anfangsfenster.h"
#include "host/fenster/vorgaenge/Einlesefenster.h"
#include "host/fenster/vorgaenge/Vorgangsfenster.h"
#include "host/fenster/vorgaenge/Vorgangsloeschung.h"

using namespace Qt::Literals::StringLiterals;

void Hauptfenster::frage_Anfang() {
  if (!platz_.fragt_Anfang()) return;
  Anfangsfenster fenster(this);
  const QScopedValueRollback offen(dialog_offen_, true);
  if (fenster.exec() != QDialog::Accepted) throw Abbruch(Ausgang::Datei, u"Es ist noch nichts angelegt."_s);
  platz_.anfang(fenster.leer() ? Anfangsbestand::Leer : Anfangsbestand::Beispiele);
}

QList<QAction*> Hauptfenster::baue_Vorgangsaktionen() {
  act_Neu = aktion(u"act_Neu"_s, u"Neuer Vorgang …"_s, Qt::CTRL | Qt::Key_N, &Hauptfenster::mache_Vorgang);
  act_Aendern = aktion(u"act_Aendern"_s, u"Ändern …"_s, Qt::Key_F2, &Hauptfenster::aendere_Vorgang);
  act_Loeschen = aktion(u"act_Loeschen"_s, u"Löschen …"_s, Qt::Key_Delete, &Hauptfenster::loesche_Vorgang);
  // In the filter the key deletes a letter.
  liste_->Listentaste(act_Loeschen);
  act_Liste = aktion(u"act_Liste"_s, u"Vorgänge einlesen …"_s, {}, [this] { lies_Liste_ein(); });
  connect(liste_->cmd_NeuerVorgang, &QPushButton::clicked, act_Neu, &QAction::trigger);
  connect(liste_->cmd_ListeEinlesen, &QPushButton::clicked, act_Liste, &QAction::trigger);
  return {act_Neu, act_Aendern, act_Loeschen, act_Liste};
}

bool Hauptfenster::hat_eigene_Vorgaenge() const {
  bool eigene = false;
  if (platz_.verbindung())
    static_cast<void>(versuche_Datenbank([&] { eigene = schema::hat_eigene_Vorgaenge(*platz_.verbindung()); }));
  return eigene;
}

void Hauptfenster::erlaube_Vorgangsaktionen() {
  const bool eigene = hat_eigene_Vorgaenge();
  for (QAction* aktion : {act_Neu, act_Aendern, act_Loeschen, act_Liste}) {
    aktion->setVisible(eigene);
    aktion->setEnabled(eigene);
  }
  for (QAction* aktion : {act_Aendern, act_Loeschen}) aktion->setEnabled(eigene && liste_->gewaehlt());
  for (QPushButton* knopf : {liste_->cmd_NeuerVorgang, liste_->cmd_ListeEinlesen}) knopf->setVisible(eigene);
}

void Hauptfenster::mache_Vorgang() {
  if (dialog_offen_ || !platz_.verbindung()) return;
  const QScopedValueRollback offen(dialog_offen_, true);
  const Vorgang* gewaehlt = liste_->gewaehlt();
  Vorgangsfenster fenster(*platz_.verbindung(), gewaehlt ? gewaehlt->satz.typ1 : QString(), this);
  if (fenster.exec() != QDialog::Accepted) return;
  zeige_Vorgang(fenster.gespeicherter(), u"angelegt"_s);
}

void Hauptfenster::aendere_Vorgang() {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_ || !platz_.verbindung()) return;
  const QScopedValueRollback offen(dialog_offen_, true);
  const Vorgangsschluessel schluessel = vorgangstabelle::schluessel_von(*gewaehlt);
  std::optional<Vorgangssatz> satz;
  int bilder = 0;
  const auto ausfall = versuche_Datenbank([&] {
    satz = vorgangstabelle::lies(*platz_.verbindung(), schluessel);
    bilder = vorgangstabelle::anzahl_Bilder(*platz_.verbindung(), schluessel);
  });
  if (ausfall) return melde(ausfall->worte);
  if (!satz) {
    melde(u"%1 gibt es nicht mehr."_s.arg(vorgangstabelle::genannt(schluessel)));
    return frage();
  }
  Vorgangsfenster fenster(*platz_.verbindung(), *satz, bilder, this);
  if (fenster.exec() != QDialog::Accepted) return;
  zeige_Vorgang(fenster.gespeicherter(), u"gespeichert"_s);
}

/// Chooses a record that was just written: it is the newest one, so the whole list begins with it.
void Hauptfenster::zeige_Vorgang(const Vorgangsschluessel& schluessel, const QString& tat) {
  const auto& [eins, zwei, drei] = schluessel.keys;
  anfang_ = vorgang::aus_Schluesseln(schluessel.typ1, eins, zwei, drei).nummer;
  frisch_ = true;
  if (!liste_->filter().isEmpty())
    liste_->filter({});
  else
    frage();
  melde(vorgangstabelle::genannt(schluessel) + u" ist "_s + tat);
}

void Hauptfenster::loesche_Vorgang() {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_ || !platz_.verbindung()) return;
  const Vorgang vorgang = *gewaehlt;
  Loeschergebnis ergebnis = Loeschergebnis::Behalten;
  {
    const QScopedValueRollback offen(dialog_offen_, true);
    ergebnis = ::loesche_Vorgang(*platz_.verbindung(), vorgang);
  }
  if (ergebnis == Loeschergebnis::Bilder_zeigen) return oeffne_Dialog(true);
  if (ergebnis != Loeschergebnis::Geloescht) return;
  melde(vorgangstabelle::genannt(vorgangstabelle::schluessel_von(vorgang)) + u" ist gelöscht"_s);
  frage();
}

void Hauptfenster::lies_Liste_ein(const Listenwahl& wahl) {
  if (dialog_offen_ || !platz_.verbindung()) return;
  const QScopedValueRollback offen(dialog_offen_, true);
  const QString datei = wahl(this);
  if (datei.isEmpty()) return;
  Einlesefenster fenster(platz_.verbindungszeichenfolge(), datei, this);
  if (fenster.exec() != QDialog::Accepted) return;
  melde(fenster.ergebnis());
  frage();
}
