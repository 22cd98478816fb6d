#include "tests/dialogs/overview/AlleTest.h"

using namespace Qt::Literals::StringLiterals;
using uebersicht::Spalte;

class AlleLaden : public AlleTest {};

TEST_F(AlleLaden, TheGridHasTheColumnsOfTheRecordAndShowsOnlyTheReference) {
  fuege_Zuordnungen_ein(0);
  const QStringList soll{u"ZuO 400"_s, u"Datei 1500"_s, u"Root 1500"_s, u"Pfad 1500"_s, u"Dateiname 2000"_s,
      u"Ext 900"_s, u"Beschreibung 2500"_s, u"Druck 500"_s, u"GSeite 1500"_s, u"NSeite 1500"_s, u"Anhang 1500"_s,
      u"Referenz 1 1500"_s, u"Referenz 2 1500"_s, u"Referenz 3 1500"_s, u"Referenz 4 1500"_s, u"Art 1 800"_s,
      u"Art 2 800"_s, u"AktBild 1500"_s, u"Info 1500"_s, u"Changed 1500"_s, u"NotFound 1500"_s, u"Delete 1500"_s,
      u"DblName 1500"_s, u"Exif 1500"_s, u"ExifText 1500"_s, u"Dieses Bild ist Zugeordnet zu: 4000"_s};
  ASSERT_EQ(gitter().ColumnCount(), soll.size());
  for (int i = 0; i < soll.size(); ++i) {
    const Gitterspalte& spalte = gitter().Column(i);
    EXPECT_EQ(spalte.Caption + u' ' + QString::number(spalte.Width), soll[i]);
    EXPECT_TRUE(spalte.Locked) << i;
    EXPECT_EQ(spalte.Visible, i == uebersicht::Zuordnung) << i;
    EXPECT_EQ(spalte.HeadAlignment, Ausrichtung::Zentriert) << i;
    EXPECT_EQ(spalte.Alignment, i == 0 ? Ausrichtung::Zentriert : Ausrichtung::Links) << i;
    EXPECT_EQ(spalte.BackColor, farben::Klassisch[15]) << i;
    EXPECT_FALSE(spalte.HeadBackColor) << i;
  }
}

TEST_F(AlleLaden, ARowCarriesTheWholeRecord) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({.key3 = u"k3"_s, .key4 = u"k4"_s, .typ2 = u"t2"_s, .beschreibung = u"Ansicht"_s, .druck = u"1010"_s});
  const QStringList soll{u"True"_s, u"P:\\Belege\\1\\a.jpg"_s, u"P:"_s, u"Belege\\1"_s, u"a"_s, u"jpg"_s, u"Ansicht"_s,
      u"False"_s, u"True"_s, u"True"_s, u"False"_s, u"RE"_s, u"1"_s, u"k3"_s, u"k4"_s, u"BEL"_s, u"t2"_s, {}, {},
      u"False"_s, u"False"_s, u"False"_s, u"False"_s, u"False"_s, {}, u"Beleg: RE / 1"_s};
  const XArrayDBObject& tabelle = *form().pZuordnungArray();
  ASSERT_EQ(tabelle.Count(Zeilen), 1);
  ASSERT_EQ(tabelle.Count(XArrayDBObject::Dimension::Spalten), soll.size());
  for (int i = 0; i < soll.size(); ++i) EXPECT_EQ(CStr(tabelle.Value(0, i)), soll[i]) << i;
  for (const Spalte s : {uebersicht::AktBild, uebersicht::Info})
    EXPECT_TRUE(std::holds_alternative<Empty>(tabelle.Value(0, s)));
  EXPECT_TRUE(std::holds_alternative<bool>(tabelle.Value(0, uebersicht::Marke)));
  EXPECT_TRUE(std::holds_alternative<QString>(tabelle.Value(0, uebersicht::Drucken)));
}

TEST_F(AlleLaden, EachKindOfRecordHasItsOwnWords) {
  struct Fall {
    const char16_t* typ;
    const char16_t* text;
  };
  // The last two are no kind that has words of its own: the type itself, blanks and all, then the keys.
  const Fall faelle[]{{u"BEL", u"Beleg: A / B"}, {u"bel", u"Beleg: A / B"}, {u"Mon", u"Montageauftrag: A / B / C"},
      {u"Art", u"Artikelnummer: A"}, {u"ANL", u"Anlage: A/B/C"}, {u"Anl", u"Anlage: A/B/C"},
      {u"Projekt", u"ProjektA/B/C"}, {u"", u"A/B/C"}, {u"BEL ", u"BEL A/B/C"}};
  frm_AlleZuordnungen form;
  form.Init_ThumbNailArray();
  for (const auto& [spalte, wert] : {std::pair{uebersicht::Key1, u" A "_s}, {uebersicht::Key2, u"B "_s},
           {uebersicht::Key3, u" C"_s}, {uebersicht::Key4, u"D"_s}})
    form.pZuordnungArray()->Value(0, spalte, wert);
  for (const Fall& fall : faelle) {
    form.pZuordnungArray()->Value(0, uebersicht::Typ1, QString::fromUtf16(fall.typ));
    EXPECT_EQ(form.Baue_ZuordnungsText(0), QString::fromUtf16(fall.text));
  }
}

TEST_F(AlleLaden, AnUnknownTypeShowsItselfDirectlyFollowedByTheFirstKey) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({.typ1 = u"Wartung"_s, .key1 = u"W7"_s});
  form();
  EXPECT_EQ(liste(), QStringList{u"WartungW7/1/-"_s});
}

TEST_F(AlleLaden, TheListIncludesTheAssignmentItWasOpenedFrom) {
  fuege_Zuordnungen_ein(2);
  fuege_ein({.name = u"b"_s});
  fuege_ein({.ext = u"png"_s});
  db.mitschrift().hole();
  form();
  EXPECT_EQ(db.mitschrift().hole(),
      QStringList{u"Select * from Bild_Zuordnungen  where Bildname = 'a' and BildExt = 'jpg'order by SortIndex"_s});
  EXPECT_EQ(liste(), (QStringList{u"Beleg: RE / 1"_s, u"Artikelnummer: A1"_s, u"Artikelnummer: A2"_s}));
}

TEST_F(AlleLaden, APictureAssignedOnlyToTheOpeningRecordYieldsOneRow) {
  fuege_Zuordnungen_ein(0);
  form();
  EXPECT_EQ(liste(), QStringList{u"Beleg: RE / 1"_s});
}

TEST_F(AlleLaden, TheNameEndsUpAsTheLastRowHasIt) {
  fuege_Zuordnungen_ein(0);
  fuege_ein({.key1 = u"AN"_s, .name = u"A"_s});
  form().pBildname = u"a"_s;
  form().Lade_AlleZuordnungen();
  EXPECT_EQ(form().pBildname, u"A"_s);
  EXPECT_EQ(form().SSP_Info(0).Caption(), u"Für Datei: "_s);
  // Shown before it was read.
  EXPECT_EQ(form().SSP_Info(1).Caption(), u"a"_s);
  form().Lade_AlleZuordnungen();
  EXPECT_EQ(form().SSP_Info(1).Caption(), u"A"_s);
}

TEST_F(AlleLaden, ARowWhoseFileIsMissingIsListedAndMarkedUntilTheSelectionChanges) {
  fuege_Zuordnungen_ein(1, false);
  zeige([&] {
    EXPECT_EQ(liste().size(), 2);
    EXPECT_TRUE(ist_True(form().pZuordnungArray()->Value(0, uebersicht::Fehlt)));
    EXPECT_EQ(marken(), (QStringList{u"10"_s, u"10"_s}));
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
    klicke_Zeile(1);
    EXPECT_EQ(marken(), (QStringList{u"00"_s, u"11"_s}));
    loesche(false);
  });
  EXPECT_EQ(gespeichert(), QStringList{u"BEL|RE|1|a"_s});
}

TEST_F(AlleLaden, AMissingFileIsMarkedByTheButtonLikeAllOthers) {
  fuege_Zuordnungen_ein(1, false);
  zeige([&] {
    eingaben::klicke(form().cmd_AlleLoeschen);
    EXPECT_EQ(marken(), (QStringList{u"11"_s, u"11"_s}));
  });
}

TEST_F(AlleLaden, WithoutAnyRowTheGridIsNotBuilt) {
  form();
  EXPECT_EQ(gitter().ColumnCount(), 0);
  EXPECT_EQ(form().pZuordnungArray()->Count(Zeilen), 1);
  EXPECT_EQ(form().pZuordnungArray()->Count(XArrayDBObject::Dimension::Spalten), 26);
}

TEST_F(AlleLaden, AReadThatFailsLeavesTheGridAlone) {
  fuege_Zuordnungen_ein(1);
  form();
  db.mitschrift().scheitere_am_naechsten();
  form().Lade_AlleZuordnungen();
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_LeseBilder"_s, fehlernummer::Anweisung);
  EXPECT_EQ(liste().size(), 2);
  EXPECT_EQ(form().pZuordnungArray()->Count(Zeilen), 1);
}

TEST_F(AlleLaden, AFailureIsReportedUnderItsName) {
  fuege_Zuordnungen_ein(1);
  form();
  wirt->fehler = fehlernummer::ObjektGeschlossen;
  form().Lade_AlleZuordnungen();
  erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Lade_AlleZuordnungen"_s, fehlernummer::ObjektGeschlossen);
  EXPECT_EQ(liste().size(), 2);
  form().pAppObj = nullptr;
  form().Lade_AlleZuordnungen();
  erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Lade_AlleZuordnungen"_s, fehlernummer::ObjektNichtGesetzt);
}

TEST_F(AlleLaden, TheHostsDateIsHandedOn) {
  fuege_Zuordnungen_ein(0);
  form().pGL_jmtVerarbeitungsdatum = u"2026-03-04"_s;
  form().Lade_AlleZuordnungen();
  EXPECT_EQ(form().pBildObj->cGL_jmtVerarbeitungsdatum, u"2026-03-04"_s);
}
