#include <utility>

#include "imaging/mod_GrafikKonvert.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Laufwerke : public Suchtest {
 protected:
  /// Text and image of the item that the drives' list shows for a letter; empty for none.
  std::pair<QString, int> eintrag(QChar buchstabe, const Laufwerksdoppel::Laufwerk& laufwerk) {
    laufwerke_->laufwerke[buchstabe] = laufwerk;
    frm_BilderSuchen& f = form();
    std::pair<QString, int> gefunden;
    for (int i = 1; i <= f.ImageCombo1.Count(); ++i)
      if (f.ImageCombo1.Key(i) == QString(buchstabe) + u":\\"_s)
        gefunden = {f.ImageCombo1.Text(i), f.ImageCombo1.Image(i)};
    entlade();
    return gefunden;
  }
  QString netzname(const QString& ziel) { return eintrag(u'Z', {laufwerke::Netz, {}, ziel}).first; }
  QString volume(const QString& marke) { return eintrag(u'E', {laufwerke::Fest, marke}).first; }
  using Eintrag = std::pair<QString, int>;
};

}  // namespace

TEST_F(Laufwerke, EachTypeHasItsPictureByItsLetter) {
  const struct {
    std::int32_t typ;
    int vorn, hinten;
  } faelle[] = {
      {laufwerke::Wechsel, 12, 16}, {laufwerke::Fest, 14, 19}, {laufwerke::Netz, 17, 17}, {laufwerke::CdRom, 15, 15}};
  for (const auto& fall : faelle) {
    for (const char16_t buchstabe : {u'A', u'B', u'C'})
      EXPECT_EQ(eintrag(buchstabe, {fall.typ}).second, fall.vorn) << fall.typ;
    for (const char16_t buchstabe : {u'D', u'Q', u'Z'})
      EXPECT_EQ(eintrag(buchstabe, {fall.typ}).second, fall.hinten) << fall.typ;
  }
}

TEST_F(Laufwerke, EveryPictureIndexHasAPicture) {
  for (const int bild : {12, 14, 15, 16, 17, 19}) {
    const int stelle = form().ImageList1.Suche(QString::number(bild));
    ASSERT_GT(stelle, 0) << bild;
    EXPECT_FALSE(form().ImageList1.Image(stelle).pixmap(16).isNull()) << bild;
  }
}

TEST_F(Laufwerke, TheOnlyFixedDriveBeingDShowsTheLaterDisksPicture) {
  laufwerke_->laufwerke.clear();
  laufwerke_->verzeichnis = u"D:\\"_s;
  EXPECT_EQ(eintrag(u'D', {}), Eintrag(u"(D:)"_s, 19));
}

TEST_F(Laufwerke, ARemovableDriveBeforeDIsAFloppyWhoseLabelNobodyLooksAt) {
  EXPECT_EQ(eintrag(u'C', {laufwerke::Wechsel, u"DATEN"_s}), Eintrag(u"3,5-Diskette (C:)"_s, 12));
  EXPECT_EQ(eintrag(u'A', {laufwerke::Wechsel}), Eintrag(u"3,5-Diskette (A:)"_s, 12));
  EXPECT_FALSE(laufwerke_->nach_Marke_gefragt.contains(u"C:\\"_s));
  EXPECT_FALSE(laufwerke_->nach_Marke_gefragt.contains(u"A:\\"_s));
}

TEST_F(Laufwerke, ARemovableDriveWithoutMediumSaysWhatItIs) {
  EXPECT_EQ(eintrag(u'E', {laufwerke::Wechsel}), Eintrag(u"Wechseldatenträger (E:)"_s, 16));
  EXPECT_EQ(eintrag(u'E', {laufwerke::Wechsel, u"  "_s}), Eintrag(u"Wechseldatenträger (E:)"_s, 16));
  EXPECT_EQ(eintrag(u'E', {laufwerke::Wechsel, u"FOTOS"_s}), Eintrag(u"Fotos (E:)"_s, 16));
}

TEST_F(Laufwerke, ACdDriveWithoutMediumShowsOnlyItsLetter) {
  EXPECT_EQ(eintrag(u'R', {laufwerke::CdRom}), Eintrag(u"(R:)"_s, 15));
  EXPECT_EQ(eintrag(u'R', {laufwerke::CdRom, u"URLAUB"_s}), Eintrag(u"Urlaub (R:)"_s, 15));
}

TEST_F(Laufwerke, AFixedDriveWithoutLabelShowsOnlyItsLetter) {
  EXPECT_EQ(eintrag(u'C', {}), Eintrag(u"(C:)"_s, 14));
  EXPECT_EQ(eintrag(u'C', {laufwerke::Fest, QString()}), Eintrag(u"(C:)"_s, 14));
}

TEST_F(Laufwerke, ARamDiskAndUnknownTypesAreNotListed) {
  for (const std::int32_t typ : {laufwerke::Unbekannt, laufwerke::OhneWurzel, laufwerke::Ramdisk})
    EXPECT_EQ(eintrag(u'R', {typ, u"SPEICHER"_s}), Eintrag()) << typ;
}

TEST_F(Laufwerke, ALabelKeepsOnlyItsFirstLetterInUpperCase) {
  EXPECT_EQ(volume(u"DATEN SICHERUNG"_s), u"Daten sicherung (E:)"_s);
  EXPECT_EQ(volume(u"ÄRGER MIT STRASSE"_s), u"Ärger mit strasse (E:)"_s);
  EXPECT_EQ(volume(u"übung"_s), u"Übung (E:)"_s);
  EXPECT_EQ(volume(u"ßTEST"_s), u"ßtest (E:)"_s) << "one character stays one";
}

TEST_F(Laufwerke, ALabelIsCutAtItsFirstZeroAndTrimmed) {
  EXPECT_EQ(volume(u"FOTOS"_s + QChar(0) + u"REST"_s), u"Fotos (E:)"_s);
  EXPECT_EQ(volume(u" FOTOS "_s), u"fotos (E:)"_s) << "the blank was the first character";
  EXPECT_EQ(volume(QString(QChar(0)) + u"REST"_s), u"(E:)"_s);
}

TEST_F(Laufwerke, ANetworkDriveShowsItsShareOnItsServer) {
  EXPECT_EQ(netzname(u"\\\\SERVER\\Bilder"_s), u"Bilder auf \"Server\" (Z:)"_s);
  EXPECT_EQ(netzname(u"\\\\nas01\\ALLE\\fotos"_s), u"ALLE\\fotos auf \"Nas01\" (Z:)"_s);
  EXPECT_EQ(netzname(u"\\\\srv\\x"_s + QChar(0) + u"alt"_s), u"x auf \"Srv\" (Z:)"_s);
}

TEST_F(Laufwerke, AConnectionOfAnotherFormShowsAsItStands) {
  EXPECT_EQ(netzname(u"\\\\allein"_s), u"\\\\allein (Z:)"_s);
  EXPECT_EQ(netzname(u"WEB\\Freigabe"_s), u"WEB\\Freigabe (Z:)"_s);
}

TEST_F(Laufwerke, ANetworkDriveThatIsNotConnectedShowsOnlyItsLetter) {
  EXPECT_EQ(eintrag(u'Z', {laufwerke::Netz, u"MARKE"_s, u"\\\\a\\b"_s, 2250}), Eintrag(u"(Z:)"_s, 17));
  EXPECT_FALSE(laufwerke_->nach_Marke_gefragt.contains(u"Z:\\"_s));
  laufwerke_->netz_wirft = true;
  EXPECT_EQ(netzname(u"\\\\a\\b"_s), u"(Z:)"_s);
}

TEST_F(Laufwerke, NamesAreGivenAsTheProceduresTellThem) {
  laufwerke_->laufwerke[u'Z'] = {laufwerke::Netz, {}, {}, 2250};
  EXPECT_EQ(form().Hole_Netzname(u"Z:\\"_s), QString(256, u' '));
  EXPECT_EQ(form().Hole_Volumename(u"Z:\\"_s), QString());
}

TEST_F(Laufwerke, TheListStandsInTheOrderOfTheLettersWithRootsAsKeys) {
  laufwerke_->laufwerke[u'Z'] = {laufwerke::Netz};
  laufwerke_->laufwerke[u'A'] = {laufwerke::Wechsel};
  QStringList schluessel;
  for (int i = 1; i <= form().ImageCombo1.Count(); ++i) schluessel.append(form().ImageCombo1.Key(i));
  EXPECT_EQ(schluessel, (QStringList{u"A:\\"_s, u"C:\\"_s, u"P:\\"_s, u"Z:\\"_s}));
  form().Lade_Laufwerke();
  EXPECT_EQ(form().ImageCombo1.Count(), 4) << "filled anew, not twice";
}

TEST_F(Laufwerke, TheDriveOfTheCurrentDirectoryIsSelected) {
  laufwerke_->verzeichnis = u"p:\\"_s;
  EXPECT_EQ(form().ImageCombo1.gewaehlter_Text(), u"(P:)"_s);
}

TEST_F(Laufwerke, ACurrentDirectoryOnNoListedDriveIsReported) {
  laufwerke_->verzeichnis = u"\\\\server\\share"_s;
  const auto vorher = feld;
  EXPECT_FALSE(rufe_auf([](frm_BilderSuchen&) { ADD_FAILURE() << "the dialog came up"; }));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, u"clsDialoge"_s);
  EXPECT_EQ(berichte[0].Prozedur, u"Fkt_Aufruf_Dialog_BilderSuchen"_s);
  EXPECT_EQ(berichte[0].Nummer, 35601);
  EXPECT_TRUE(berichte[0].MitMeldung);
  EXPECT_EQ(feld, vorher);
  // The form was not unloaded: the session of its loading is still there.
  mod_GrafikKonvert::Fkt_GdiShutdown();
}
