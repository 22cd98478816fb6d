// The window for one record, driven by keys and mouse.
#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "host/fenster/vorgaenge/Vorgangsfenster.h"
#include "host/fenster/vorgaenge/Vorgangsloeschung.h"
#include "tests/host/fenster/vorgaenge/Fensterpruefung.h"
#include "tests/support/Doppel.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const Vorgangsschluessel Beleg{u"BEL"_s, {u"AB"_s, u"24-1001"_s, {}}};
const Vorgangssatz Satz{Beleg, u"10001"_s, std::nullopt, u"Neuer\r\nKessel"_s, u"Ort\\x"_s, u"2024-01-01 00:00:00"_s};

class Vorgangsfenstertest : public Fensterpruefung<Vorgangsfenster> {
 protected:
  Vorgangsfenstertest() {
    db_.Execute(
        u"INSERT INTO Kunden VALUES ('10001', 'Bäckerei Huber', 'Freiburg'), ('10002', 'Familie Öztürk', '')"_s);
  }
  void oeffne_neu(const QString& typ1 = {}) { zeige(std::make_unique<Vorgangsfenster>(db_, typ1, nullptr)); }
  void oeffne(int bilder = 0) {
    vorgangstabelle::mache(db_, Satz, std::nullopt);
    zeige(std::make_unique<Vorgangsfenster>(db_, Satz, bilder, nullptr));
  }
  void tippe(const QString& feld, const QString& text) const { eingaben::tippe(kind(feld), text); }
  QString worte() const { return kind<QLabel>(u"lbl_Pruefung"_s).text(); }
  bool darf_speichern() const { return kind(u"cmd_Speichern"_s).isEnabled(); }
  void speichere() const { eingaben::klicke(kind(u"cmd_Speichern"_s)); }
  QLineEdit& kundenfeld() const { return *kind<QComboBox>(u"cbo_Kunde"_s).lineEdit(); }

  MeldungsDoppel meldungen_;
};

}  // namespace

TEST_F(Vorgangsfenstertest, WhatIsMissingIsSaidUntilTheRecordIsWhole) {
  oeffne_neu();
  EXPECT_EQ(worte(), u"Belegart fehlt"_s);
  EXPECT_FALSE(darf_speichern());
  tippe(u"txt_Key1"_s, u"AB"_s);
  EXPECT_EQ(worte(), u"Belegnummer fehlt"_s);
  tippe(u"txt_Key2"_s, u"24/1"_s);
  EXPECT_EQ(worte(), u"Belegnummer enthält „/“, das kein Ordner im Namen haben kann"_s);
  eingaben::taste(*fenster_, Qt::Key_Backspace);
  eingaben::taste(*fenster_, Qt::Key_Backspace);
  EXPECT_EQ(worte(), QString());
  EXPECT_TRUE(darf_speichern());
  tippe(u"txt_Text"_s, u"Kessel"_s);
  speichere();
  EXPECT_FALSE(fenster_->isVisible());
  EXPECT_EQ(
      zeilen(u"SELECT Typ1, Key1, Key2, Kundennummer, Text FROM Vorgaenge"_s), QStringList{u"BEL|AB|24|~|Kessel"_s});
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge WHERE Stand > '2026'"_s), QStringList{u"1"_s});
  EXPECT_EQ(fenster_->gespeicherter(), (Vorgangsschluessel{u"BEL"_s, {u"AB"_s, u"24"_s, {}}}));
}

TEST_F(Vorgangsfenstertest, TheKindNamesItsParts) {
  oeffne_neu(u"MON"_s);
  EXPECT_EQ(kind<QLabel>(u"lbl_Key3"_s).text(), u"Montagenummer:"_s);
  EXPECT_TRUE(kind(u"txt_Key3"_s).isVisible());
  auto& art = kind<QComboBox>(u"cbo_Art"_s);
  art.setFocus();
  eingaben::taste(*fenster_, Qt::Key_Down);
  EXPECT_EQ(art.currentText(), u"Artikel"_s);
  EXPECT_EQ(kind<QLabel>(u"lbl_Key1"_s).text(), u"Artikelnummer:"_s);
  EXPECT_EQ(kind(u"txt_Key1"_s).accessibleName(), u"Artikelnummer"_s);
  EXPECT_FALSE(kind(u"txt_Key2"_s).isVisible());
  eingaben::taste(*fenster_, Qt::Key_End);
  EXPECT_TRUE(kind(u"txt_Typ1"_s).isVisible());
  EXPECT_EQ(worte(), u"Die Art fehlt"_s);
  tippe(u"txt_Typ1"_s, u"WARTUNG"_s);
  tippe(u"txt_Key1"_s, u"7"_s);
  speichere();
  EXPECT_EQ(zeilen(u"SELECT Typ1, Key1 FROM Vorgaenge"_s), QStringList{u"WARTUNG|7"_s});
}

TEST_F(Vorgangsfenstertest, ANumberThatExistsCanNotBeSaved) {
  vorgangstabelle::mache(db_, Satz, std::nullopt);
  oeffne_neu();
  tippe(u"txt_Key1"_s, u"ab"_s);
  tippe(u"txt_Key2"_s, u"24-1001"_s);
  EXPECT_EQ(worte(), u"Beleg AB 24-1001 gibt es schon"_s);
  EXPECT_FALSE(darf_speichern());
  tippe(u"txt_Key2"_s, u"2"_s);
  EXPECT_TRUE(darf_speichern());
}

TEST_F(Vorgangsfenstertest, ANumberThatAnotherDeskTakesMeanwhileIsTold) {
  oeffne_neu();
  tippe(u"txt_Key1"_s, u"AB"_s);
  tippe(u"txt_Key2"_s, u"24-1001"_s);
  vorgangstabelle::mache(anderer_, Satz, std::nullopt);
  speichere();
  EXPECT_TRUE(fenster_->isVisible());
  EXPECT_EQ(worte(), u"Beleg AB 24-1001 gibt es schon; es ist nichts gespeichert."_s);
}

TEST_F(Vorgangsfenstertest, ACustomerIsFoundByHisNameAndChosenWithKeys) {
  oeffne_neu(u"ART"_s);
  tippe(u"txt_Key1"_s, u"WP"_s);
  tippe(u"cbo_Kunde"_s, u"öztü"_s);
  EXPECT_EQ(kind<QComboBox>(u"cbo_Kunde"_s).count(), 1);
  EXPECT_EQ(kind<QComboBox>(u"cbo_Kunde"_s).itemText(0), u"10002 – Familie Öztürk"_s);
  QWidget* auswahl = kind<QComboBox>(u"cbo_Kunde"_s).completer()->popup();
  ASSERT_TRUE(QTest::qWaitFor([&] { return auswahl->isVisible(); }));
  QTest::keyClick(auswahl, Qt::Key_Down);
  QTest::keyClick(auswahl, Qt::Key_Return);
  EXPECT_EQ(kundenfeld().text(), u"10002"_s);
  EXPECT_EQ(kind<QLabel>(u"lbl_Kunde"_s).text(), u"Familie Öztürk"_s);
  speichere();
  EXPECT_EQ(zeilen(u"SELECT Kundennummer FROM Vorgaenge"_s), QStringList{u"10002"_s});
}

TEST_F(Vorgangsfenstertest, ANewCustomerIsMadeWithTheRecord) {
  oeffne_neu(u"ART"_s);
  tippe(u"txt_Key1"_s, u"WP"_s);
  EXPECT_FALSE(kind(u"txt_Kundenname"_s).isVisible());
  tippe(u"cbo_Kunde"_s, u"20000"_s);
  EXPECT_TRUE(kind(u"txt_Kundenname"_s).isVisible());
  EXPECT_EQ(worte(), u"Der Name des neuen Kunden fehlt"_s);
  tippe(u"txt_Kundenname"_s, u"Gemeinde Aach"_s);
  tippe(u"txt_Ort"_s, u"Aach"_s);
  speichere();
  EXPECT_EQ(zeilen(u"SELECT Kundennummer, Name, Ort FROM Kunden WHERE Kundennummer = '20000'"_s),
      QStringList{u"20000|Gemeinde Aach|Aach"_s});
}

TEST_F(Vorgangsfenstertest, WhatNobodyTouchedStaysAsItIs) {
  oeffne();
  tippe(u"txt_Projekt"_s, u"P-9"_s);
  speichere();
  const auto satz = vorgangstabelle::lies(db_, Beleg);
  EXPECT_EQ(satz->text, Satz.text);
  EXPECT_EQ(satz->ordner, Satz.ordner);
  EXPECT_EQ(satz->projektnummer, u"P-9"_s);
  EXPECT_NE(satz->stand, Satz.stand);
}

TEST_F(Vorgangsfenstertest, SavingWithoutAChangeWritesNothing) {
  oeffne();
  speichere();
  EXPECT_FALSE(fenster_->isVisible());
  EXPECT_EQ(vorgangstabelle::lies(db_, Beleg), Satz);
}

TEST_F(Vorgangsfenstertest, WithPicturesKindAndNumberAreFixed) {
  oeffne(3);
  EXPECT_EQ(worte(), u"Der Vorgang hat 3 Bilder; Art und Nummer bleiben."_s);
  for (const QString& name : {u"cbo_Art"_s, u"txt_Key1"_s, u"txt_Key2"_s}) EXPECT_FALSE(kind(name).isEnabled());
  EXPECT_TRUE(kind(u"txt_Text"_s).isEnabled());
  EXPECT_TRUE(darf_speichern());
}

TEST_F(Vorgangsfenstertest, EscapeSavesNothing) {
  oeffne_neu();
  tippe(u"txt_Key1"_s, u"AB"_s);
  tippe(u"txt_Key2"_s, u"1"_s);
  eingaben::taste(*fenster_, Qt::Key_Escape);
  EXPECT_FALSE(fenster_->isVisible());
  EXPECT_EQ(vorgaenge(), QStringList());
}

TEST_F(Vorgangsfenstertest, TheTabulatorWalksFromKindToSaving) {
  oeffne_neu(u"MON"_s);
  tippe(u"txt_Key1"_s, u"AB"_s);
  tippe(u"txt_Key2"_s, u"1"_s);
  tippe(u"txt_Key3"_s, u"1"_s);
  kind(u"cbo_Art"_s).setFocus();
  QStringList weg;
  for (int i = 0; i < 9; ++i) {
    weg.append(fenster_->focusWidget()->objectName());
    eingaben::taste(*fenster_, Qt::Key_Tab);
  }
  EXPECT_EQ(weg,
      (QStringList{u"cbo_Art"_s, u"txt_Key1"_s, u"txt_Key2"_s, u"txt_Key3"_s, u"cbo_Kunde"_s, u"txt_Projekt"_s,
          u"txt_Text"_s, u"cmd_Speichern"_s, u"cmd_Abbrechen"_s}));
}

TEST_F(Vorgangsfenstertest, DeletingAsksFirst) {
  vorgangstabelle::mache(db_, Satz, std::nullopt);
  Vorgang vorgang = vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24-1001"_s);
  vorgang.betreff = u"Huber"_s;
  const Meldung frage{u"Soll dieser Vorgang gelöscht werden?\r\n\r\nBeleg AB 24-1001 – Huber"_s, u"Vorgang löschen"_s,
      Symbol::Frage, Knoepfe::JaNein};
  meldungen_.erwarte(frage, Antwort::Nein);
  EXPECT_EQ(loesche_Vorgang(db_, vorgang), Loeschergebnis::Behalten);
  EXPECT_TRUE(vorgangstabelle::gibt_es(db_, Beleg));
  meldungen_.erwarte(frage, Antwort::Ja);
  EXPECT_EQ(loesche_Vorgang(db_, vorgang), Loeschergebnis::Geloescht);
  EXPECT_FALSE(vorgangstabelle::gibt_es(db_, Beleg));
}

TEST_F(Vorgangsfenstertest, ARecordWithPicturesIsKeptAndTheyAreOffered) {
  vorgangstabelle::mache(db_, Satz, std::nullopt);
  gib_Bild(u"BEL"_s, u"AB"_s, u"24-1001"_s, u"-"_s);
  const Vorgang vorgang = vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24-1001"_s);
  const Meldung frage{u"Beleg AB 24-1001 hat 1 Bild und wird nicht gelöscht.\r\n\r\nBilder anzeigen?"_s,
      u"Vorgang löschen"_s, Symbol::Frage, Knoepfe::JaNein};
  meldungen_.erwarte(frage, Antwort::Ja);
  EXPECT_EQ(loesche_Vorgang(db_, vorgang), Loeschergebnis::Bilder_zeigen);
  meldungen_.erwarte(frage, Antwort::Nein);
  EXPECT_EQ(loesche_Vorgang(db_, vorgang), Loeschergebnis::Behalten);
  EXPECT_TRUE(vorgangstabelle::gibt_es(db_, Beleg));
}
