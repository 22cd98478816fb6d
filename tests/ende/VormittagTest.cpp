#include <gtest/gtest.h>

#include <QDateTime>
#include <QImage>
#include <QRegularExpression>

#include "tests/ende/Dialogsitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kopf = u"   Beleg AN 24-3005 – Gemeinde Sankt Märgen, Sankt Märgen · Projekt P-24-12"_s;
const QString Ablage = u"bilder/Belege/24-3005/"_s;
const QString Artikelablage = u"bilder/Artikel/"_s;
const QStringList Gesuchte{u"Baustelle_23"_s, u"Dachrinne_26"_s, u"Küche_28"_s, u"Rohrbruch_24"_s, u"Übergabe_25"_s};

/// The picture upside its own: a white mark in the samples' upper left tells which way is up.
bool Marke_rechts_oben(const QImage& bild) {
  const int kante = std::min(bild.width(), bild.height());
  return bild.pixelColor(bild.width() - 1 - kante / 10, kante / 10).lightness() > 240 &&
      bild.pixelColor(kante / 10, kante / 10).lightness() < 240;
}

}  // namespace

/// A clerk's morning at the program, one step after the other. After each the whole data folder is compared with what
/// it must hold by then.
class Vormittag : public Dialogsitzung {
 public:
  void oeffne_Beleg();
  void suche_Bilder();
  void sortiere();
  void schreibe_Texte();
  void benenne_um();
  void drehe();
  void kreuze_an();
  void speichere();
  void ordne_Artikeln_zu();
  void loesche_eine_Zuordnung();
  void schliesse();

  /// Nothing else is in the data folder than what the test knows of, the order of the rows included.
  void pruefe(const char* wann) {
    SCOPED_TRACE(wann);
    EXPECT_EQ(unterschied(programm.bestand(), soll), QStringList());
  }
  /// Writes what the record's rows must be from now on.
  Zuordnungszeile zeile_des_Belegs(int platz) const;
  /// The names of the record's pictures in their order, as they were saved.
  QStringList namen;
};

void Vormittag::oeffne_Beleg() {
  x.klicke(programm.zeile(u"tree_Vorgaenge"_s, u"AN 24-3005"_s));
  programm.warte("a record without pictures",
      [](const Anblick& a) { return a[u"lbl_Nummer"_s].text == "AN 24-3005"_L1 && a[u"lbl_KeineBilder"_s].sichtbar; });
  programm.klicke(u"cmd_Zuordnen"_s);
  const Anblick a =
      programm.warte("the empty dialog", [](const Anblick& b) { return b.name == "frm_BildZuordnung"_L1; });
  EXPECT_EQ(a[u"SSP_Panel(0)"_s].text, Kopf);
  // Five pictures side by side need room.
  vergroessere();
  pruefe("the dialog is open");
}

void Vormittag::suche_Bilder() {
  haenge_an(u"eingang"_s, 8, Gesuchte, 5);
  pruefe("the pictures are attached, but not saved");
}

void Vormittag::sortiere() {
  sortieren(true);
  fasse_und_ziehe(5, 1);
  lasse_fallen();
  sortieren(false);
  const QStringList folge{u"Übergabe_25"_s, u"Baustelle_23"_s, u"Dachrinne_26"_s, u"Küche_28"_s, u"Rohrbruch_24"_s};
  for (int i = 5; i >= 1; --i) {
    waehle_Bild(i);
    programm.warte(
        "the last picture is the first", [&](const Anblick& b) { return b[u"txt_BildName"_s].text == folge[i - 1]; });
  }
  pruefe("the pictures are sorted");
}

void Vormittag::schreibe_Texte() {
  programm.ueberschreibe(u"txt_BildText"_s, u"Schlüssel an Frau „Öztürk“:\nschön geworden, 'süß'"_s);
  waehle_Bild(2);
  programm.ueberschreibe(u"txt_BildText"_s, u"Straße aufgerissen"_s);
  programm.ueberschreibe(u"txt_BildInfo"_s, u"Größe geprüft: 80 cm tief."_s);
  waehle_Bild(3);
  programm.ueberschreibe(u"txt_BildInfo"_s, u"Käufer wünscht Kupfer (50 € mehr)."_s);
  pruefe("texts are written, but not saved");
}

void Vormittag::benenne_um() {
  waehle_Bild(4);
  programm.ueberschreibe(u"txt_BildName"_s, u"Küchenanschluß"_s);
  programm.warte("the old name can be had back", [](const Anblick& a) { return a[u"cmd_OriginalName"_s].frei; });
  pruefe("a picture has another name, but is not saved");
}

// Turning changes the file where it lies, and the dialog puts what is pending into its folder at once.
void Vormittag::drehe() {
  const QString gedrehtes = u"eingang/Rohrbruch_24.jpg"_s;
  const QSize vorher = bild(gedrehtes).size();
  waehle_Bild(5);
  const QDateTime von = QDateTime::currentDateTime().addMSecs(-1000);
  programm.klicke(u"SSC_Drehen90"_s);
  programm.warte("all are saved", [](const Anblick& a) {
    return dialog_zeigt(a, 5) && a[u"txt_BildName"_s].text.startsWith(u"Rohrbruch_242"_s) &&
        !a[u"SSC_ZuordnungSpeichern"_s].frei;
  });
  const Bestand ist = programm.bestand();
  EXPECT_EQ(bild(gedrehtes).size(), vorher.transposed());
  EXPECT_TRUE(Marke_rechts_oben(bild(gedrehtes)));
  EXPECT_NE(ist.dateien[gedrehtes], soll.dateien[gedrehtes]);
  soll.dateien[gedrehtes] = ist.dateien[gedrehtes];
  const QList<std::pair<QString, QString>> herkunft{{u"Übergabe_25"_s, u"Übergabe_25"_s},
      {u"Baustelle_23"_s, u"Baustelle_23"_s}, {u"Dachrinne_26"_s, u"Dachrinne_26"_s},
      {u"Küchenanschluß"_s, u"Küche_28"_s}, {u"Rohrbruch_24"_s, u"Rohrbruch_24"_s}};
  for (const auto& [name, quelle] : herkunft) {
    namen.append(gestempelt(Ablage, name, ist, von));
    soll.dateien.insert(Ablage + namen.last() + u".jpg"_s, soll.dateien[u"eingang/"_s + quelle + u".jpg"_s]);
  }
  soll.dateien.insert(Ablage + namen[0] + u"jpg.txt"_s,
      "Schl\xFCssel \xFC"
      "bergeben an Frau \xD6zt\xFCrk.");
  soll.dateien.insert(Ablage + namen[1] + u"jpg.txt"_s,
      "Gr\xF6\xDF"
      "e gepr\xFC"
      "ft: 80 cm tief.");
  soll.dateien.insert(Ablage + namen[2] + u"jpg.txt"_s, "K\xE4ufer w\xFCnscht Kupfer (50 \x80 mehr).");
  pruefe("a picture is turned, and the files are in place");
}

void Vormittag::kreuze_an() {
  const auto kreuze = [this](const QString& haken) {
    programm.klicke_Haken(haken);
    programm.warte("the box is ticked", [&](const Anblick& a) { return a[haken].an; });
  };
  kreuze(u"chk_Drucken"_s);
  kreuze(u"chk_NeueSeite"_s);
  waehle_Bild(1);
  kreuze(u"chk_Drucken"_s);
  kreuze(u"chk_GesamteSeite"_s);
  kreuze(u"chk_AlsAnhang"_s);
  pruefe("print flags are set, but not saved");
}

Zuordnungszeile Vormittag::zeile_des_Belegs(int platz) const {
  const QStringList texte{u"Schlüssel an Frau „Öztürk“:\r\nschön geworden, 'süß'"_s, u"Straße aufgerissen"_s,
      u"<NULL>"_s, u"<NULL>"_s, u"<NULL>"_s};
  const QStringList druck{u"0111"_s, u"0000"_s, u"0000"_s, u"0000"_s, u"1001"_s};
  return {u"AN|24-3005|-|-"_s, u"BEL"_s, u"Belege\\24-3005"_s, namen[platz], texte[platz], druck[platz], platz};
}

void Vormittag::speichere() {
  programm.klicke(u"SSC_ZuordnungSpeichern"_s);
  const Anblick a = programm.warte("the window tells what was written", [](const Anblick& b) {
    return b.name == "Hauptfenster"_L1 && b[u"lbl_Status"_s].text.startsWith(u"Beleg AN 24-3005: "_s);
  });
  EXPECT_EQ(a[u"lbl_Status"_s].text, u"Beleg AN 24-3005: 5 Zeilen geschrieben: 5 neu."_s);
  for (int i = 0; i < 5; ++i) soll.zuordnungen.append(zeile_des_Belegs(i).als_Text());
  pruefe("the assignments are saved");
  // The clerk sees it in the table.
  const Anblickzeile* beleg = a.zeile(u"tree_Vorgaenge"_s, u"AN 24-3005"_s);
  ASSERT_NE(beleg, nullptr);
  EXPECT_EQ(beleg->texte.last(), u"5"_s);
  EXPECT_EQ(a[u"lbl_Anzahl"_s].text, u"5 Bilder"_s);
  QStringList dateien = namen;
  EXPECT_EQ(a[u"lst_Bilder"_s].zeilentexte(), dateien.replaceInStrings(QRegularExpression(u"$"_s), u".jpg"_s));
}

void Vormittag::ordne_Artikeln_zu() {
  programm.klicke(u"cmd_WeitereZuordnungen"_s);
  programm.warte("the pictures of the record", [](const Anblick& a) {
    return a.name == "frm_AnzeigeZuordnung"_L1 && a[u"TDBG_Zuordnungen"_s].zeilen.size() == 5;
  });
  for (const int abgewaehlt : {2, 4}) {
    x.klicke(programm.zelle(u"TDBG_Zuordnungen"_s, abgewaehlt, 0).center());
    programm.warte("the mark is gone",
        [&](const Anblick& a) { return a[u"TDBG_Zuordnungen"_s].zeilen[abgewaehlt].texte.first() == "[ ]"_L1; });
  }
  const QRect erste = programm.zelle(u"TDBG_WeitereZuordnungen"_s, 0, 0);
  x.klicke({erste.left() + 20, erste.center().y()});
  programm.warte("the keys go to the grid", [](const Anblick& a) {
    return a.fokus().sichtbar && a[u"TDBG_WeitereZuordnungen"_s].ort.contains(a.fokus().ort);
  });
  x.tippe(u"TH-0110\n"_s);
  programm.warte("the typed article", [](const Anblick& a) {
    return a[u"TDBG_WeitereZuordnungen"_s].zeilentexte().value(0) ==
        u"TH-0110 | Thermostatkopf, neue Ausführung | weiß"_s;
  });
  const QRect zweite = programm.zelle(u"TDBG_WeitereZuordnungen"_s, 1, 0);
  x.klicke({zweite.right() - zweite.height() / 2, zweite.center().y()});
  programm.warte("the look-up", [this](const Anblick& a) {
    return a.name == "Artikelauskunft"_L1 && a[u"txt_Artikelfilter"_s].fokus && x.hat_Tasten(a.kennung);
  });
  x.tippe(u"wt-06"_s);
  programm.warte("one article is left", [](const Anblick& a) { return a[u"tree_Artikel"_s].zeilen.size() == 1; });
  x.taste(u"Return"_s);
  programm.warte("the chosen article", [](const Anblick& a) {
    return a[u"TDBG_WeitereZuordnungen"_s].zeilentexte().value(1) ==
        u"WT-0600 | Waschtisch 60 cm | weiß, mit Überlauf"_s;
  });
  pruefe("articles are entered, but not saved");
  programm.klicke(u"SSC_ZuordnungSpeichern"_s);
  programm.warte("the question", [](const Anblick& a) { return a.titel == "Dateien zuordnen"_L1; });
  programm.klicke_Knopf(u"Ja"_s);
  programm.warte("the window", [](const Anblick& a) { return a.name == "Hauptfenster"_L1; });
  for (const auto& [artikel, lieferant] : {std::pair{u"TH-0110"_s, u"70300"_s}, std::pair{u"WT-0600"_s, u"Allg"_s}})
    for (const int bild : {0, 1, 3}) {
      Zuordnungszeile neue = zeile_des_Belegs(bild);
      neue.schluessel = artikel + u"|-|-|-"_s;
      neue.typ = u"Art"_s;
      neue.pfad = u"Artikel\\"_s + lieferant;
      neue.platz = 0;
      soll.zuordnungen.append(neue.als_Text());
      for (const QString& endung : {u".jpg"_s, u"jpg.txt"_s})
        if (const QString datei = namen[bild] + endung; soll.dateien.contains(Ablage + datei))
          soll.dateien.insert(Artikelablage + lieferant + u'/' + datei, soll.dateien[Ablage + datei]);
    }
  pruefe("three pictures are assigned to two articles");
}

void Vormittag::loesche_eine_Zuordnung() {
  x.klicke(programm.zeile(u"lst_Bilder"_s, namen[1] + u".jpg"_s));
  programm.klicke(u"cmd_AlleZuordnungen"_s);
  Anblick a = programm.warte("the assignments of the picture", [](const Anblick& b) {
    return b.name == "frm_AlleZuordnungen"_L1 && b[u"TDBG_Zuordnungen"_s].zeilen.size() == 3;
  });
  QStringList zeilen = a[u"TDBG_Zuordnungen"_s].zeilentexte();
  zeilen.sort();
  EXPECT_EQ(zeilen, (QStringList{u"Artikelnummer: TH-0110"_s, u"Artikelnummer: WT-0600"_s, u"Beleg: AN / 24-3005"_s}));
  EXPECT_FALSE(a[u"cmd_Loeschen"_s].frei);
  x.klicke(programm.zeile(u"TDBG_Zuordnungen"_s, u"Artikelnummer: TH-0110"_s));
  programm.klicke(u"cmd_Loeschen"_s);
  a = programm.warte("the question", [](const Anblick& b) { return b.titel == "Achtung"_L1; });
  EXPECT_EQ(a[u"qt_msgbox_label"_s].text, u"Sollen die ausgewählten Zuordnungen wirklich gelöscht werden?"_s);
  programm.klicke_Knopf(u"Ja"_s);
  a = programm.warte("two assignments are left", [](const Anblick& b) {
    return b.name == "frm_AlleZuordnungen"_L1 && b[u"TDBG_Zuordnungen"_s].zeilen.size() == 2;
  });
  EXPECT_EQ(a.zeile(u"TDBG_Zuordnungen"_s, u"Artikelnummer: TH-0110"_s), nullptr);
  // The files stay: clearing the tree is another matter.
  soll.zuordnungen.removeIf([&](const QString& z) { return z.startsWith(u"TH-0110|-|-|-|"_s + namen[1]); });
  pruefe("one assignment is deleted");
  programm.klicke(u"cmd_Abbrechen"_s);
  programm.warte("the window again", [&](const Anblick& b) {
    return b.name == "Hauptfenster"_L1 &&
        b[u"lbl_Status"_s].text == u"Die Zuordnungen von „%1.jpg“ sind gezeigt."_s.arg(namen[1]);
  });
}

void Vormittag::schliesse() {
  const Anblick a = programm.warte("the window", [](const Anblick& b) { return b.name == "Hauptfenster"_L1; });
  x.schliesse_am_Rahmen(a.kennung);
  EXPECT_EQ(programm.warte_auf_Ende(), 0);
  EXPECT_EQ(programm.fehlerausgabe(), QString());
  pruefe("the program has ended");
}

TEST_F(Vormittag, FromAnEmptyDocumentToTheDeletedAssignmentEveryStepLeavesExactlyWhatIsRight) {
  starte();
  for (const auto schritt :
      {&Vormittag::oeffne_Beleg, &Vormittag::suche_Bilder, &Vormittag::sortiere, &Vormittag::schreibe_Texte,
          &Vormittag::benenne_um, &Vormittag::drehe, &Vormittag::kreuze_an, &Vormittag::speichere,
          &Vormittag::ordne_Artikeln_zu, &Vormittag::loesche_eine_Zuordnung, &Vormittag::schliesse}) {
    (this->*schritt)();
    // A step that went wrong makes all that come after it meaningless.
    if (HasFailure()) return;
  }
}
