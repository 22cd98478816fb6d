// The road's option that sets new pictures upright: which files it touches, and which never.
#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Sitzungsdauer.h"
#include "platform/gdiplus/jpeg/Exifmarke.h"
#include "tests/component/Wegtest.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

class WegAufrecht : public Wegtest {
 protected:
  static inline const QString Quelle = u"P:\\Eingang\\neu.jpg"_s;

  /// Walks the road with the option on or off.
  Ergebnis gehe(const Handlung& handlung, bool aufrecht = true) {
    const auto dialog = [&](const auto&, const QString&, const QString&, const auto& bilder, const auto&...) {
      handlung(*bilder);
      return true;
    };
    Zuordnungsweg weg(std::make_shared<Betrieb>(db), u"P:"_s, dialog);
    EXPECT_FALSE(weg.aufrecht()) << "other hosts ask for it";
    weg.aufrecht(aufrecht);
    return weg.gehe(vorgang());
  }
  /// What the dialog leaves of a picture that it has copied.
  Bildspur& haenge_an(clsBildZuordnungen& bilder, const QByteArray& bytes) {
    wurzel.schreibe(u"Eingang/neu.jpg"_s, bytes);
    neues(bilder, u"neu"_s, false);
    wurzel.schreibe(datei(u"neu"_s), bytes);
    Bildspur& spur = lege_Spur(bilder).bilder.back();
    spur.quelle = Quelle;
    spur.groesse = bytes.size();
    spur.kopie.stand = Dateischritt::Stand::Getan;
    return spur;
  }
  QByteArray kopie() const { return wurzel.lies(datei(u"neu"_s)); }

  const QByteArray liegend = handyfoto::foto({64, 48}, 6);
};

}  // namespace

TEST_F(WegAufrecht, ANewPictureStandsUprightAndItsSourceStays) {
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) { haenge_an(bilder, liegend); });
  EXPECT_EQ(ergebnis.neu, 1);
  EXPECT_EQ(ergebnis.bilder.front().hinweis, QString());
  EXPECT_TRUE(handyfoto::steht_aufrecht(kopie(), liegend));
  EXPECT_EQ(wurzel.lies(u"Eingang/neu.jpg"_s), liegend);
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|<NULL>|0"_s});
}

TEST_F(WegAufrecht, WithoutTheOptionTheCopyIsTheSource) {
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) { haenge_an(bilder, liegend); }, false).neu, 1);
  EXPECT_EQ(kopie(), liegend);
}

TEST_F(WegAufrecht, StoredPicturesStayAsTheyAreWhateverIsEdited) {
  gespeichert(u"alt"_s, 0);
  wurzel.schreibe(datei(u"alt"_s), liegend);
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"anders"_s);
    lege_Spur(bilder);
  }).geaendert,
      1);
  EXPECT_EQ(wurzel.lies(datei(u"alt"_s)), liegend);
}

TEST_F(WegAufrecht, AFileThatTheSaveHasNotCopiedStays) {
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) { haenge_an(bilder, liegend).quelle.clear(); }).neu, 1);
  EXPECT_EQ(kopie(), liegend);
}

TEST_F(WegAufrecht, AFileThatIsTheSourceItselfStays) {
  EXPECT_EQ(
      gehe([&](clsBildZuordnungen& bilder) { haenge_an(bilder, liegend).quelle = u"P:\\Belege\\1\\neu.jpg"_s; }).neu,
      1);
  EXPECT_EQ(kopie(), liegend);
}

TEST_F(WegAufrecht, AFileThatAnotherRowNamesStays) {
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    gespeichert(u"neu"_s, 0, u"Belege\\1"_s, u"RE"_s);
    haenge_an(bilder, liegend);
  }).neu,
      1);
  EXPECT_EQ(kopie(), liegend);
}

TEST_F(WegAufrecht, APictureWhoseRowWasNotStoredStays) {
  erwarte_Frage(u"1 von 1"_s, u"„neu.jpg“: "_s + Verweigert, Antwort::Nein);
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    haenge_an(bilder, liegend);
    db.mitschrift().scheitere_bei_Beginn(u"Insert"_s);
  }).neu,
      0);
  EXPECT_EQ(kopie(), liegend);
}

TEST_F(WegAufrecht, ACopyThatSucceedsOnlyNowIsSetUprightToo) {
  erwarte_Frage(u"1 von 1"_s, u"„neu.jpg“: Die Datei ist nicht kopiert: Der Datenträger ist voll"_s, Antwort::Ja);
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    lege_Spur_ohne_Datei(lege_Spur(bilder), u"neu"_s, Quelle).groesse = liegend.size();
    wurzel.schreibe(u"Eingang/neu.jpg"_s, liegend);
  }).neu,
      1);
  EXPECT_TRUE(handyfoto::steht_aufrecht(kopie(), liegend));
}

TEST_F(WegAufrecht, WhatTheUserTurnedInTheDialogStandsAsHeSawIt) {
  const gdiplus::Sitzungsdauer sitzung;
  for (const bool an_der_Quelle : {false, true}) {
    db.fuehre_aus(u"delete from Bild_Zuordnungen"_s);
    QByteArray gesehen;
    EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
      // The dialog reads the record anew after a turn.
      haenge_an(bilder, handyfoto::foto({64, 48}, 3)).groesse = -1;
      EXPECT_TRUE(
          mod_GrafikKonvert::Fkt_Bild_Drehen(an_der_Quelle ? Quelle : u"P:\\Belege\\1\\neu.jpg"_s, gdiplus::Um180));
      if (an_der_Quelle) wurzel.schreibe(datei(u"neu"_s), wurzel.lies(u"Eingang/neu.jpg"_s));
      gesehen = kopie();
    }).neu,
        1);
    EXPECT_EQ(handyfoto::gelesen(kopie(), true), handyfoto::gelesen(gesehen, false)) << an_der_Quelle;
    EXPECT_EQ(exifmarke::lies(kopie()), 1);
  }
}

TEST_F(WegAufrecht, AFailureToTurnLosesNothingAndIsTold) {
  QByteArray kaputt = liegend;
  kaputt.truncate(kaputt.indexOf("\xFF\xC0") + 6);
  const QString grund = u"Das Bild ist nicht zu Ende zu lesen."_s;
  meldungen.erwarte(
      {u"Zugeordnet, aber nicht aufrecht gestellt, weil das Drehen scheiterte:\r\n\r\n„neu.jpg“: "_s + grund,
          u"Bildzuordnung"_s, oberflaeche::Symbol::Ausrufezeichen, oberflaeche::Knoepfe::OK});
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) { haenge_an(bilder, kaputt); });
  EXPECT_EQ(ergebnis.neu, 1);
  EXPECT_EQ(ergebnis.bilder.front().hinweis, u"Das Bild steht nicht aufrecht: "_s + grund);
  EXPECT_EQ(kopie(), kaputt);
  EXPECT_EQ(zeilen().size(), 1);
}
