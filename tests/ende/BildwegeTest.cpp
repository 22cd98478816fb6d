// Roads of a picture through the dialog on which one could be lost: attached and sorted, turned and read again, renamed
// and left.
#include <QDir>
#include <QFile>

#include "tests/ende/Dialogsitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Auftrag = u"AB 24-1001"_s;
const QString Anzeige = u"Beleg AB 24-1001"_s;
const QString Ablage = u"bilder/Belege/24-1001/"_s;

}  // namespace

class Bildwege : public Dialogsitzung {
 protected:
  /// The record's four pictures, as the samples have them.
  std::vector<Zuordnungszeile> Vier() const {
    const auto zeile = [](const QString& name, const QString& text, int platz) {
      return Zuordnungszeile{u"AB|24-1001|-|-"_s, u"BEL"_s, u"Belege\\24-1001"_s, name, text, u"0001"_s, platz};
    };
    return {zeile(u"Heizkessel_0120240305_081500"_s, u"Alter Kessel vor dem Ausbau"_s, 0),
        zeile(u"Heizkessel_0220240305_083000"_s, u"Neuer Kessel nach dem Einbau"_s, 1),
        zeile(u"Abgasrohr_0320240305_084500"_s, u"Wanddurchführung"_s, 2),
        zeile(u"Typenschild_0420240305_090000"_s, u"<NULL>"_s, 3)};
  }
  static Zuordnungszeile neue(const QString& name, const QString& text = u"<NULL>"_s) {
    return {u"AB|24-1001|-|-"_s, u"BEL"_s, u"Belege\\24-1001"_s, name, text};
  }
  /// The record has these rows from now on, in this order.
  void verlange(std::vector<Zuordnungszeile> zeilen) {
    soll.zuordnungen.removeIf([](const QString& z) { return z.startsWith(u"AB|24-1001|-|-|"_s); });
    int platz = 0;
    for (Zuordnungszeile& zeile : zeilen) {
      zeile.platz = platz++;
      soll.zuordnungen.append(zeile.als_Text());
    }
  }
  void verlange_Datei(const QString& datei, const QByteArray& inhalt) { soll.dateien.insert(datei, inhalt); }
  /// A file that the program did not put there.
  void lege_hin(const QString& quelle, const QString& ziel) {
    const QString daten = programm.datenordner() + u'/';
    ASSERT_TRUE(QDir().mkpath(QFileInfo(daten + ziel).path()));
    ASSERT_TRUE(QFile::copy(daten + quelle, daten + ziel)) << ziel.toStdString();
    verlange_Datei(ziel, soll.dateien[quelle]);
  }
  void erwarte(const QString& feld, const QString& text) {
    const std::string worauf = feld.toStdString() + " shows " + text.toStdString();
    programm.warte(worauf.c_str(), [&](const Anblick& a) { return a[feld].text == text; });
  }
  void speichere() { programm.klicke(u"SSC_ZuordnungSpeichern"_s); }
  void beantworte_Umbenennung(const QString& knopf) {
    beantworte(u"Dateinamen wurden verändert"_s,
        u"Der Dateiname eines oder mehrere schon zugeordneten Bilder wurde verändert.\n\n"
        "Wollen Sie diese Änderung jetzt durchführen?"_s,
        knopf);
  }
  void gehe_zurueck(const QString& antwort) {
    programm.klicke(u"cmd_Abbruch"_s);
    beantworte(u"Achtung"_s, u"Daten wurden verändert! Wollen Sie die Zuordnung speichern?"_s, antwort);
  }
  void benenne_um(const QString& neuer) { programm.ueberschreibe(u"txt_BildName"_s, neuer); }
};

// ── A new picture in front of stored ones ───────────────────────────────────────────────────────────────────────────

TEST_F(Bildwege, ANewPictureThatIsDraggedInFrontOfStoredOnesIsSavedThere) {
  starte();
  oeffne_Dialog(Auftrag, 4);
  vergroessere();
  haenge_an(u"eingang"_s, 8, {u"Dachrinne_26"_s}, 5);
  sortieren(true);
  fasse_und_ziehe(5, 1);
  lasse_fallen();
  erwarte(u"txt_BildName"_s, u"Dachrinne_26"_s);
  pruefe("nothing is saved yet");
  const QDateTime von = QDateTime::currentDateTime().addMSecs(-1000);
  speichere();
  EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"5 Zeilen geschrieben: 1 neu, 4 geändert."_s);
  const QString name = gestempelt(Ablage, u"Dachrinne_26"_s, programm.bestand(), von);
  std::vector<Zuordnungszeile> zeilen = Vier();
  zeilen.insert(zeilen.begin(), neue(name));
  verlange(zeilen);
  verlange_Datei(Ablage + name + u".jpg"_s, soll.dateien[u"eingang/Dachrinne_26.jpg"_s]);
  pruefe("the new picture is the first, and every row is there once");
  beende();
}

// ── Turned, marked, read again, sorted ──────────────────────────────────────────────────────────────────────────────

class Bildweg_mit_zwei_neuen : public Bildwege {
 public:
  /// Two pictures of one name, the second of which gets another.
  void haenge_Gleichnamige_an() {
    lege_hin(u"eingang/Küche_28.jpg"_s, u"zweiter/Baustelle_23.jpg"_s);
    haenge_an(u"eingang"_s, 8, {u"Baustelle_23"_s}, 5);
    haenge_an(u"zweiter"_s, 1, {u"Baustelle_23"_s}, 6);
    speichere();
    beantworte(u"Doppelte Datei"_s, u"Datei mit gleichem Namen schon vohanden!"_s, u"OK"_s);
    programm.warte("the second one's name", [](const Anblick& a) {
      return a[u"SSP_Anzahl(1)"_s].text == "6"_L1 && a[u"txt_BildName"_s].fokus && a[u"SSP_WarnungName"_s].sichtbar;
    });
    benenne_um(u"Baustelle_hinten"_s);
    programm.warte("the warning is gone", [](const Anblick& a) { return !a[u"SSP_WarnungName"_s].sichtbar; });
    pruefe("nothing is saved yet");
  }
  /// Saves both new pictures under their names.
  void drehe_das_erste_neue() {
    x.taste(u"F7"_s);
    erwarte(u"txt_BildName"_s, u"Baustelle_23"_s);
    const QString quelle = u"eingang/Baustelle_23.jpg"_s;
    const QSize vorher = bild(quelle).size();
    const QDateTime von = QDateTime::currentDateTime().addMSecs(-1000);
    programm.klicke(u"SSC_Drehen90"_s);
    programm.warte("all are saved", [](const Anblick& a) {
      return dialog_zeigt(a, 6) && a[u"txt_BildName"_s].text.startsWith(u"Baustelle_232"_s) &&
          !a[u"SSC_ZuordnungSpeichern"_s].frei;
    });
    const Bestand ist = programm.bestand();
    EXPECT_EQ(bild(quelle).size(), vorher.transposed());
    EXPECT_NE(ist.dateien[quelle], soll.dateien[quelle]);
    verlange_Datei(quelle, ist.dateien[quelle]);
    erstes_ = gestempelt(Ablage, u"Baustelle_23"_s, ist, von);
    zweites_ = gestempelt(Ablage, u"Baustelle_hinten"_s, ist, von);
    verlange_Datei(Ablage + erstes_ + u".jpg"_s, ist.dateien[quelle]);
    verlange_Datei(Ablage + zweites_ + u".jpg"_s, soll.dateien[u"zweiter/Baustelle_23.jpg"_s]);
    verlange_Datei(Ablage + erstes_ + u"jpg.txt"_s, soll.dateien[u"eingang/Baustelle_23jpg.txt"_s]);
    pruefe("the files of both are in place");
  }
  void schreibe_und_lies_neu() {
    programm.ueberschreibe(u"txt_BildText"_s, u"Straße, von Norden"_s);
    programm.ueberschreibe(u"txt_BildInfo"_s, u"Maß: 80 cm"_s);
    waehle_Bild(2);
    schalte(u"chk_Delete"_s, true);
    programm.klicke(u"SSC_Aktualisieren"_s);
    programm.warte("the text is written, and the mark stands", [this](const Anblick& a) {
      return a[u"chk_Delete"_s].an && a[u"SSP_Anzahl(1)"_s].text == "2"_L1 &&
          programm.bestand().dateien[Ablage + erstes_ + u"jpg.txt"_s] == "Ma\xDF: 80 cm";
    });
    verlange_Datei(Ablage + erstes_ + u"jpg.txt"_s, "Ma\xDF: 80 cm");
    schalte(u"chk_Delete"_s, false);
    pruefe("the texts are in place, and no row is");
  }
  /// In a strip that is too narrow for all six.
  void ziehe_das_erste_ans_Ende() {
    sortieren(true);
    const Anblick a = programm.warte("the strip", [](const Anblick& b) { return dialog_zeigt(b, 6); });
    const QRect knopf = a[u"SSC_Scroll_Right"_s].ort;
    x.zeige_auf(a[u"Pic_Thumb(1)"_s].ort.center());
    x.druecke();
    for (int i = 1; i <= 2; ++i) {
      x.zeige_auf(knopf.center() + QPoint(i, 0));
      programm.warte(
          "the strip was scrolled", [&](const Anblick& b) { return b.anzahl_sichtbarer(u"Pic_Thumb("_s) == 6 - i; });
    }
    x.ziehe_nach(
        programm.warte("the last picture", [](const Anblick&) { return true; })[u"Pic_Thumb(4)"_s].ort.center());
    programm.warte("the mark of the place", [](const Anblick& b) { return b[u"Shp_Sort"_s].sichtbar; });
    lasse_fallen();
    sortieren(false);
  }

  QString erstes_;
  QString zweites_;
};

TEST_F(Bildweg_mit_zwei_neuen, WhatWasAttachedTurnedMarkedReadAgainAndDraggedFarIsSavedAsItStood) {
  starte();
  oeffne_Dialog(Auftrag, 4);
  for (const auto schritt :
      {&Bildweg_mit_zwei_neuen::haenge_Gleichnamige_an, &Bildweg_mit_zwei_neuen::drehe_das_erste_neue,
          &Bildweg_mit_zwei_neuen::schreibe_und_lies_neu, &Bildweg_mit_zwei_neuen::ziehe_das_erste_ans_Ende}) {
    (this->*schritt)();
    // A step that went wrong makes all that come after it meaningless.
    if (HasFailure()) return;
  }
  speichere();
  EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"6 Zeilen geschrieben: 2 neu, 4 geändert."_s);
  const std::vector<Zuordnungszeile> alte = Vier();
  verlange({alte[1], alte[2], alte[3], neue(erstes_, u"Straße, von Norden"_s), neue(zweites_), alte[0]});
  pruefe("saved");
  beende();
}

// ── Renamed and left ────────────────────────────────────────────────────────────────────────────────────────────────

class Bildweg_umbenannter : public Bildwege {
 public:
  void benenne_auf_vergebenen_Namen() {
    lege_hin(u"eingang/Küche_28.jpg"_s, Ablage + u"Kessel.jpg"_s);
    benenne_um(u"Kessel"_s);
    speichere();
    beantworte_Umbenennung(u"Ja"_s);
    beantworte(u"Bildzuordnung"_s,
        u"Nicht alles ist so gespeichert, wie es im Dialog stand:\n\n"
        "„Heizkessel_0120240305_081500.jpg“: Das Bild behält seinen Namen, „Kessel“ bekommt es nicht: "
        "Datei existiert bereits. Alles andere daran ist davon unberührt; wählen Sie einen anderen Namen."_s,
        u"OK"_s);
    EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"1 Zeile geschrieben: 1 geändert."_s);
    pruefe("the picture keeps its name, and the other file is what it was");
  }
  void benenne_richtig() {
    oeffne_Dialog(Auftrag, 4);
    erwarte(u"txt_BildName"_s, zeilen_[0].name);
    benenne_um(u"Kessel neu"_s);
    speichere();
    beantworte_Umbenennung(u"Ja"_s);
    EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"1 Zeile geschrieben: 1 geändert."_s);
    for (const QString& endung : {u".jpg"_s, u"jpg.txt"_s})
      verlange_Datei(Ablage + u"Kessel neu"_s + endung, soll.dateien.take(Ablage + zeilen_[0].name + endung));
    zeilen_[0].name = u"Kessel neu"_s;
    verlange(zeilen_);
    pruefe("file, text and row have the new name");
  }
  void verlasse_ohne_zu_speichern() {
    oeffne_Dialog(Auftrag, 4);
    waehle_Bild(2);
    programm.ueberschreibe(u"txt_BildText"_s, u"Entwurf"_s);
    benenne_um(u"Entwurf"_s);
    gehe_zurueck(u"Abbrechen"_s);
    erwarte(u"txt_BildText"_s, u"Entwurf"_s);
    pruefe("the dialog is still open");
    gehe_zurueck(u"Nein"_s);
    EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"Nichts geändert."_s);
    pruefe("nothing is saved");
  }
  void verlasse_und_speichere() {
    oeffne_Dialog(Auftrag, 4);
    waehle_Bild(2);
    erwarte(u"txt_BildText"_s, zeilen_[1].text);
    programm.ueberschreibe(u"txt_BildText"_s, u"Nach dem Einbau"_s);
    benenne_um(u"Einbau"_s);
    gehe_zurueck(u"Ja"_s);
    beantworte_Umbenennung(u"Ja"_s);
    EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"2 Zeilen geschrieben: 2 geändert."_s);
    verlange_Datei(Ablage + u"Einbau.jpg"_s, soll.dateien.take(Ablage + zeilen_[1].name + u".jpg"_s));
    zeilen_[1].name = u"Einbau"_s;
    zeilen_[1].text = u"Nach dem Einbau"_s;
    verlange(zeilen_);
    pruefe("saved on leaving");
  }
  void sieh_noch_einmal_nach() {
    oeffne_Dialog(Auftrag, 4);
    for (int i = 1; i <= 4; ++i) {
      waehle_Bild(i);
      erwarte(u"txt_BildName"_s, zeilen_[static_cast<std::size_t>(i) - 1].name);
    }
    waehle_Bild(1);
    erwarte(u"txt_BildInfo"_s, u"Kessel Baujahr 1987, Typenschild kaum noch lesbar."_s);
    x.taste(u"Escape"_s);
    EXPECT_EQ(warte_auf_Ergebnis(Anzeige), u"Nichts geändert."_s);
    pruefe("looked at");
  }

  std::vector<Zuordnungszeile> zeilen_ = Vier();
};

TEST_F(Bildweg_umbenannter, ATakenNameIsRefusedAndAnotherGoesWithFileAndTextHoweverTheDialogIsLeft) {
  starte();
  oeffne_Dialog(Auftrag, 4);
  for (const auto schritt : {&Bildweg_umbenannter::benenne_auf_vergebenen_Namen, &Bildweg_umbenannter::benenne_richtig,
           &Bildweg_umbenannter::verlasse_ohne_zu_speichern, &Bildweg_umbenannter::verlasse_und_speichere,
           &Bildweg_umbenannter::sieh_noch_einmal_nach}) {
    (this->*schritt)();
    if (HasFailure()) return;
  }
  beende();
}
