// From the marks in the dialog to the report that the customer gets: what is marked, sorted and written stands in it
// so.
#include <QProcess>

#include "tests/ende/Dialogsitzung.h"

using namespace Qt::Literals::StringLiterals;

class Berichtsweg : public Dialogsitzung {
 public:
  /// The upright one comes first on a page of its own, the second is left out, the last becomes an attachment on
  /// another page.
  void kennzeichne() {
    oeffne_Dialog(u"AB 24-1001"_s, 4);
    vergroessere();
    waehle_Bild(2);
    schalte(u"chk_Drucken"_s, false);
    waehle_Bild(3);
    schalte(u"chk_GesamteSeite"_s, true);
    waehle_Bild(4);
    schalte(u"chk_AlsAnhang"_s, true);
    schalte(u"chk_NeueSeite"_s, true);
    programm.ueberschreibe(u"txt_BildText"_s, u"Größe geprüft: 80 cm"_s);
    sortieren(true);
    fasse_und_ziehe(3, 1);
    lasse_fallen();
    sortieren(false);
    programm.klicke(u"SSC_ZuordnungSpeichern"_s);
    EXPECT_EQ(warte_auf_Ergebnis(u"Beleg AB 24-1001"_s), u"4 Zeilen geschrieben: 4 geändert."_s);
  }
  void sieh_Streifen() {
    const Anblick a = programm.warte("the record's strip", [](const Anblick& b) {
      return b[u"lst_Bilder"_s].zeilentexte().value(0) == "Abgasrohr_0320240305_084500.jpg"_L1;
    });
    EXPECT_EQ(a[u"lst_Bilder"_s].zeilentexte(),
        (QStringList{u"Abgasrohr_0320240305_084500.jpg"_s, u"Heizkessel_0120240305_081500.jpg"_s,
            u"Heizkessel_0220240305_083000.jpg"_s, u"Typenschild_0420240305_090000.jpg"_s}));
  }
  void oeffne_Bericht() {
    x.taste(u"Control+p"_s);
    const Anblick a = programm.warte("the report's first page", [](const Anblick& b) {
      return b.name == "Berichtsfenster"_L1 && b[u"lbl_Seite"_s].text == "Seite 1 von 3"_L1;
    });
    EXPECT_EQ(a.titel, u"Bericht – Beleg AB 24-1001 – Bäckerei Huber, Freiburg · Projekt P-24-07"_s);
    EXPECT_TRUE(a.modal);
    EXPECT_TRUE(a[u"Seitenansicht"_s].fokus);
    programm.klicke_Haken(u"chk_Dateiname"_s);
    programm.ueberschreibe(u"txt_Zeile1"_s, u"Müller & Söhne"_s);
    for (const QString& stand : {u"Seite 2 von 3"_s, u"Seite 3 von 3"_s}) blaettere(stand);
  }
  void speichere() {
    programm.klicke(u"cmd_Speichern"_s);
    programm.warte("the question for the file", [this](const Anblick& a) {
      return a.name == "Berichtsziel"_L1 && a[u"fileNameEdit"_s].text == "Bildbericht AB 24-1001.pdf"_L1 &&
          a[u"fileNameEdit"_s].fokus && x.hat_Tasten(a.kennung);
    });
    x.taste(u"Return"_s);
    programm.warte("the report is saved", [this](const Anblick& a) {
      return a.name == "Berichtsfenster"_L1 && a[u"lbl_Status"_s].text == u"Gespeichert: "_s + bericht();
    });
  }
  /// The pictures of the strip that are marked, with their texts, page by page.
  void vergleiche() {
    ASSERT_EQ(seiten().size(), 3);
    const QStringList erwartet{u"Bild 1 Wanddurchführung Abgasrohr_0320240305_084500.jpg"_s,
        u"Bild 2 Alter Kessel vor dem Ausbau Heizkessel_0120240305_081500.jpg"_s,
        u"Anlagen Anlage 1 Größe geprüft: 80 cm Typenschild_0420240305_090000.jpg"_s};
    for (qsizetype i = 0; i < erwartet.size(); ++i) {
      EXPECT_TRUE(seiten()[i].contains(erwartet[i])) << i + 1 << ": " << seiten()[i].toStdString();
      EXPECT_TRUE(seiten()[i].contains(u"Seite %1 von 3"_s.arg(i + 1))) << seiten()[i].toStdString();
    }
    EXPECT_TRUE(seiten().first().contains(u"Müller & Söhne Beleg AB 24-1001 – Bäckerei Huber"_s));
    EXPECT_FALSE(seiten().join(u' ').contains(u"Neuer Kessel"_s)) << "it is not marked any more";
    EXPECT_EQ(ausgabe({u"pdfimages"_s, u"-list"_s, bericht()}).trimmed().split(u'\n').size(), 2 + 3);
  }
  void schliesse() {
    x.taste(u"Escape"_s);
    programm.warte("the window tells where the report is", [this](const Anblick& a) {
      return a.name == "Hauptfenster"_L1 && a[u"lbl_Status"_s].text.endsWith(u": Gespeichert: "_s + bericht());
    });
    beende();
  }

 private:
  QString bericht() const { return ordner.pfad(u"heim/Bildbericht AB 24-1001.pdf"_s); }
  void blaettere(const QString& stand) {
    const Anblick a = programm.warte("the pages", [](const Anblick& b) { return b.name == "Berichtsfenster"_L1; });
    x.klicke(a[u"Seitenansicht"_s].ort.center());
    x.taste(u"Next"_s);
    programm.warte("the next page", [&](const Anblick& b) { return b[u"lbl_Seite"_s].text == stand; });
  }
  static QString ausgabe(QStringList aufruf) {
    QProcess prozess;
    const QString programm = aufruf.takeFirst();
    prozess.start(programm, aufruf);
    EXPECT_TRUE(prozess.waitForFinished(60'000)) << programm.toStdString() << " is missing: package poppler-utils";
    return QString::fromUtf8(prozess.readAllStandardOutput());
  }
  /// The words of each page, one blank between them.
  QStringList seiten() const {
    QStringList liste;
    for (const QString& seite : ausgabe({u"pdftotext"_s, bericht(), u"-"_s}).split(u'\f', Qt::SkipEmptyParts))
      liste.append(seite.simplified());
    return liste;
  }
};

TEST_F(Berichtsweg, WhatIsMarkedSortedAndWrittenStandsSoInTheSavedReport) {
  starte();
  for (const auto schritt : {&Berichtsweg::kennzeichne, &Berichtsweg::sieh_Streifen, &Berichtsweg::oeffne_Bericht,
           &Berichtsweg::speichere, &Berichtsweg::vergleiche, &Berichtsweg::schliesse}) {
    (this->*schritt)();
    // A step that went wrong makes all that come after it meaningless.
    if (HasFailure()) return;
  }
}
