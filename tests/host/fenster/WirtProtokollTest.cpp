// What the program with windows writes to the journal, and what it asks before assignments go.
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "host/betrieb/vorgang/Zuordnungslauf.h"
#include "host/fenster/dialog/Entfernungsfrage.h"
#include "platform/files/Pfadkarte.h"
#include "tests/host/fenster/Wirt.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtProtokoll : public Wirt {
 protected:
  void SetUp() override {
    Wirt::SetUp();
    QFile::remove(datenordner() + u"/protokoll.jsonl"_s);
    sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        u"SELECT 'WP-0900', Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, 7 FROM Bild_Zuordnungen "
        u"WHERE Key1 = 'TH-0100'"_s);
    im_Dialog_ = [](clsBildZuordnungen& store) {
      store.AktInd(0);
      store.Bild_Delete(true);
    };
  }
  static QStringList taten() {
    QStringList liste;
    QFile datei(datenordner() + u"/protokoll.jsonl"_s);
    if (!datei.open(QIODevice::ReadOnly)) return liste;
    while (!datei.atEnd()) {
      const QJsonObject zeile = QJsonDocument::fromJson(datei.readLine()).object();
      liste.append(zeile[u"tat"_s].toString() + u' ' + zeile[u"bild"_s].toString() + u' ' +
          zeile[u"vorgang"_s].toObject()[u"key1"_s].toString());
    }
    return liste;
  }
  /// The dialog, with the question behind it, for the article whose picture two have.
  Laufergebnis gehe() {
    Arbeitsplatz platz(optionen());
    platz.oeffne();
    return Zuordnungslauf(platz, entfernungsfrage::hinter(dialog()))
        .gehe(vorgang::aus_Schluesseln(u"ART"_s, u"TH-0100"_s), false);
  }
  static QString bild() {
    return werte(u"SELECT Bildname || '.' || BildExt FROM Bild_Zuordnungen WHERE Key1 = 'WP-0900' and SortIndex = 7"_s)
        .value(0);
  }
  void frage(Antwort antwort) {
    meldungen_.erwarte(
        {u"Das Bild „%1“ wird noch in einem anderen Vorgang verwendet.\r\n\r\n"
         "Entfernt wird nur die Zuordnung zu diesem Vorgang; die anderen behalten ihre. Entfernen?"_s.arg(bild()),
            u"Bildzuordnung"_s, Symbol::Frage, Knoepfe::JaNein},
        antwort);
  }
  static QStringList artikel() {
    return werte(u"SELECT Key1 FROM Bild_Zuordnungen WHERE Bildname LIKE 'Thermostat%' ORDER BY Key1"_s);
  }
};

}  // namespace

TEST_F(WirtProtokoll, WhatTheDialogRemovesIsAskedForWithItsOtherUsersAndStandsInTheJournal) {
  frage(Antwort::Ja);
  EXPECT_EQ(gehe().entfernt, 1);
  EXPECT_EQ(artikel(), QStringList{u"WP-0900"_s});
  EXPECT_EQ(taten(), QStringList{u"entfernen Artikel\\Allg\\"_s + bild() + u" TH-0100"_s});
}

TEST_F(WirtProtokoll, AfterANoTheAssignmentStaysAndNothingIsWritten) {
  frage(Antwort::Nein);
  EXPECT_EQ(gehe().geschrieben(), 0);
  EXPECT_EQ(artikel(), (QStringList{u"TH-0100"_s, u"WP-0900"_s}));
  EXPECT_EQ(taten(), QStringList());
}

TEST_F(WirtProtokoll, APictureThatNobodyElseUsesGoesWithoutAQuestion) {
  sql(u"DELETE FROM Bild_Zuordnungen WHERE Key1 = 'WP-0900'"_s);
  EXPECT_EQ(gehe().entfernt, 1);
}

TEST_F(WirtProtokoll, WithoutAnOpenJournalNothingIsWrittenAndTheLastOpenedOneGetsTheLines) {
  const Testordner ordner;
  const auto pfad = [&](const QString& name) { return u"C:"_s + ordner.pfad(name).replace(u'/', u'\\'); };
  const Protokolleintrag eintrag{Protokolleintrag::Tat::Drehen, true, u"a.jpg"_s};
  Protokoll::schreibe(eintrag);
  auto erstes = std::make_unique<Protokoll>(pfad(u"eins"_s), u"P:"_s);
  Protokoll::schreibe(eintrag);
  const Protokoll zweites(pfad(u"zwei"_s), u"P:"_s);
  Protokoll::schreibe(eintrag);
  erstes.reset();
  Protokoll::schreibe(eintrag);
  EXPECT_EQ(ordner.lies(u"eins/protokoll.jsonl"_s).count('\n'), 1) << "the folder was made";
  EXPECT_EQ(ordner.lies(u"zwei/protokoll.jsonl"_s).count('\n'), 2);
}

TEST_F(WirtProtokoll, ADataFolderThatHoldsNothingButAJournalIsSetUpAndKeepsIt) {
  const Testordner ordner;
  ordner.schreibe(u"daten/protokoll.jsonl"_s, "{}\n");
  const QString pfad = u"C:"_s + ordner.pfad(u"daten"_s).replace(u'/', u'\\');
  ASSERT_TRUE(datenordner::ist_frei(pfad));
  datenordner::richte_ein(pfad, datenordner::Inhalt::Leer);
  EXPECT_TRUE(datenordner::eingerichtet(pfad));
  EXPECT_EQ(ordner.lies(u"daten/protokoll.jsonl"_s), "{}\n");
  ordner.schreibe(u"anderes/protokoll.jsonl.bak"_s, "x");
  EXPECT_FALSE(datenordner::ist_frei(u"C:"_s + ordner.pfad(u"anderes"_s).replace(u'/', u'\\')));
}
