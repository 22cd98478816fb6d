#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/shell/Dateityp.h"
#include "store/clsBildZuordnungen.h"
#include "store/mod_BilderSuchen.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

Meldung frage(const QString& datei) {
  return {u"Datei:  "_s + datei + u"  bereits vorhanden! Überschreiben?"_s, u"Datei kopieren"_s, Symbol::Ausrufezeichen,
      Knoepfe::JaNein};
}

/// The file operations through the collection, which only forwards; every box must have been announced.
class Dateioperationen : public ::testing::Test {
 protected:
  void schreibgeschuetzt(const QString& name) {
    ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(name)).constData(), 0444), 0);
  }
  QStringList inhalt(const QString& ordner = u"."_s) {
    return QDir(wurzel.pfad(ordner)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  Bildwurzel wurzel;
  MeldungsDoppel boxen;
  CoreDoppel core;
  clsBildZuordnungen store;
};

}  // namespace

TEST_F(Dateioperationen, APathIsSplitAtItsLastDotAndItsLastBackslash) {
  const struct {
    QString pfad;
    QStringList teile;
  } faelle[] = {
      {u"C:\\Bilder\\foto.jpg"_s, {u"C:\\Bilder\\"_s, u"foto"_s, u"jpg"_s, u"C:\\Bilder\\foto"_s}},
      {u"foto.jpg"_s, {u"foto"_s, u""_s, u"jpg"_s, u"foto"_s}},
      {u"a.b.jpg"_s, {u"a.b"_s, u""_s, u"jpg"_s, u"a.b"_s}},
      {u"C:\\x\\y"_s, {u"C:\\x\\"_s, u"y"_s, u""_s, u"C:\\x\\y"_s}},
      {u"C:\\a.b\\c"_s, {u"C:\\"_s, u"a"_s, u"b\\c"_s, u"C:\\a"_s}},
      {u" C:\\x\\y .jpg"_s, {u" C:\\x\\"_s, u"y "_s, u"jpg"_s, u"C:\\x\\y"_s}},
      {u""_s, {u""_s, u""_s, u""_s, u""_s}},
  };
  for (const auto& fall : faelle)
    for (std::int16_t typ = 1; typ <= 4; ++typ)
      EXPECT_EQ(store.Fkt_SplitFileName(fall.pfad, typ), fall.teile[typ - 1]) << fall.pfad.toStdString() << " " << typ;
  EXPECT_EQ(store.Fkt_SplitFileName(u"C:\\x\\y.z"_s, 0), QString());
  EXPECT_EQ(store.Fkt_SplitFileName(u"C:\\x\\y.z"_s, 5), QString());
}

TEST_F(Dateioperationen, AFolderIsMadeWithAllItsParentsAndAgainIsSuccess) {
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\a"_s));
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\a\\b\\c"_s));
  EXPECT_TRUE(QFileInfo(wurzel.pfad(u"a/b/c"_s)).isDir());
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\a\\b\\c"_s));
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\a\\d\\"_s));
  EXPECT_TRUE(QFileInfo(wurzel.pfad(u"a/d"_s)).isDir());
  EXPECT_TRUE(store.Fkt_MakePath(QString()));
}

TEST_F(Dateioperationen, AnImpossiblePathFailsOnlyWithoutAMessageAndNoneEverComes) {
  EXPECT_FALSE(store.Fkt_MakePath(u"P:\\a*b\\c"_s));
  EXPECT_FALSE(store.Fkt_MakePath(u"P:\\a*b\\c"_s, false));
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\a*b\\c"_s, true));
  EXPECT_TRUE(inhalt().isEmpty());
}

TEST_F(Dateioperationen, AMissingDriveOrAFileInTheWayCountsAsSuccess) {
  wurzel.schreibe(u"datei"_s, "x");
  EXPECT_TRUE(store.Fkt_MakePath(u"Q:\\a\\b"_s));
  EXPECT_TRUE(store.Fkt_MakePath(u"\\\\server\\freigabe\\a"_s));
  EXPECT_TRUE(store.Fkt_MakePath(u"P:\\datei\\a"_s));
  EXPECT_EQ(wurzel.lies(u"datei"_s), "x");
}

TEST_F(Dateioperationen, ReadingAMissingFileGivesNothingAndCreatesNothing) {
  EXPECT_EQ(store.Fkt_ReadFile(u"P:\\fehlt.txt"_s), QString());
  EXPECT_TRUE(inhalt().isEmpty());
  EXPECT_EQ(store.Fkt_ReadFile(u"P:\\"_s), QString());
}

TEST_F(Dateioperationen, TextIsHeldInTheEightBitCodePage) {
  EXPECT_TRUE(store.Fkt_WriteFile(u"P:\\t.txt"_s, u"Größe 5 €\r\nЖ"_s));
  EXPECT_EQ(wurzel.lies(u"t.txt"_s),
      QByteArray("Gr\xF6\xDF"
                 "e 5 \x80\r\n?"));
  EXPECT_EQ(store.Fkt_ReadFile(u"P:\\t.txt"_s), u"Größe 5 €\r\n?"_s);
}

TEST_F(Dateioperationen, AReadFailureReachesTheCaller) {
  wurzel.schreibe(u"geheim.txt"_s, "x");
  ASSERT_EQ(::chmod(QFile::encodeName(wurzel.pfad(u"geheim.txt"_s)).constData(), 0222), 0);
  EXPECT_EQ(Fehlernummer_von([&] { store.Fkt_ReadFile(u"P:\\geheim.txt"_s); }), 70);
}

TEST_F(Dateioperationen, WritingTheSameTextAgainLeavesTheFileUntouched) {
  ASSERT_TRUE(store.Fkt_WriteFile(u"P:\\t.txt"_s, u"gleich"_s));
  QFile datei(wurzel.pfad(u"t.txt"_s));
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
  const QDateTime alt(QDate(2002, 2, 2), QTime(2, 2));
  ASSERT_TRUE(datei.setFileTime(alt, QFileDevice::FileModificationTime));
  datei.close();
  EXPECT_TRUE(store.Fkt_WriteFile(u"P:\\t.txt"_s, u"gleich"_s));
  EXPECT_EQ(QFileInfo(wurzel.pfad(u"t.txt"_s)).lastModified(), alt);
  EXPECT_TRUE(store.Fkt_WriteFile(u"P:\\t.txt"_s, u"anders"_s));
  EXPECT_NE(QFileInfo(wurzel.pfad(u"t.txt"_s)).lastModified(), alt);
  EXPECT_EQ(wurzel.lies(u"t.txt"_s), "anders");
}

TEST_F(Dateioperationen, WritingFailsOnAReadOnlyFileAFolderAndAMissingFolder) {
  wurzel.schreibe(u"o/t.txt"_s, "alt");
  schreibgeschuetzt(u"o/t.txt"_s);
  EXPECT_FALSE(store.Fkt_WriteFile(u"P:\\o\\t.txt"_s, u"neu"_s));
  EXPECT_EQ(wurzel.lies(u"o/t.txt"_s), "alt");
  EXPECT_FALSE(store.Fkt_WriteFile(u"P:\\o"_s, u"neu"_s));
  EXPECT_FALSE(store.Fkt_WriteFile(u"P:\\fehlt\\t.txt"_s, u"neu"_s));
}

TEST_F(Dateioperationen, AFolderTestAnswersFalseOnAnyFailure) {
  wurzel.schreibe(u"o/t.txt"_s, "x");
  EXPECT_TRUE(store.Fkt_DirExists(u"P:\\o"_s));
  EXPECT_FALSE(store.Fkt_DirExists(u"P:\\o\\t.txt"_s));
  EXPECT_FALSE(store.Fkt_DirExists(u"Q:\\o"_s));
  EXPECT_FALSE(store.Fkt_DirExists(QString()));
  EXPECT_TRUE(store.Fkt_FileExists(u"P:\\o\\t.txt"_s));
  EXPECT_FALSE(store.Fkt_FileExists(u"P:\\o"_s));
}

TEST_F(Dateioperationen, AMissingPathIsToldOnlyToWhoWantsIt) {
  EXPECT_FALSE(mod_BilderSuchen::Fkt_PfadVorhanden(u"P:\\fehlt"_s, true));
  EXPECT_FALSE(mod_BilderSuchen::Fkt_PfadVorhanden(u"  "_s, false));
  boxen.erwarte({u"Pfad nicht gefunden!"_s, {}, Symbol::Keins, Knoepfe::OK});
  EXPECT_FALSE(mod_BilderSuchen::Fkt_PfadVorhanden(u"P:\\fehlt"_s, false));
  EXPECT_TRUE(mod_BilderSuchen::Fkt_PfadVorhanden(u"P:\\"_s, false));
}

TEST_F(Dateioperationen, RenamingOntoAnExistingNameIsFalse) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"b.jpg"_s, "2");
  EXPECT_FALSE(store.Fkt_FileReName(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s));
  EXPECT_TRUE(store.Fkt_FileReName(u"P:\\a.jpg"_s, u"P:\\c.jpg"_s));
  EXPECT_EQ(inhalt(), (QStringList{u"b.jpg"_s, u"c.jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "2");
}

TEST_F(Dateioperationen, AReadOnlyFileIsNotDeleted) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  schreibgeschuetzt(u"a.jpg"_s);
  EXPECT_FALSE(store.Fkt_FileDelete(u"P:\\a.jpg"_s));
  EXPECT_FALSE(store.Fkt_FileDelete(u"P:\\fehlt.jpg"_s));
  EXPECT_EQ(inhalt(), QStringList{u"a.jpg"_s});
  wurzel.schreibe(u"b.jpg"_s, "1");
  EXPECT_TRUE(store.Fkt_FileDelete(u"P:\\b.jpg"_s));
}

TEST_F(Dateioperationen, ACopyMakesTheFolderAndAddsTheBackslashForTheCaller) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  QString ziel = u"P:\\neu\\tief"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel));
  EXPECT_EQ(ziel, u"P:\\neu\\tief\\"_s);
  EXPECT_EQ(wurzel.lies(u"neu/tief/a.jpg"_s), "1");
}

TEST_F(Dateioperationen, ACopyIfNotThereLeavesAnExistingTargetAndIsSuccess) {
  wurzel.schreibe(u"a.jpg"_s, "neu");
  wurzel.schreibe(u"o/a.jpg"_s, "alt");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, true, true));
  EXPECT_EQ(ziel, u"P:\\o"_s);
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "alt");
}

TEST_F(Dateioperationen, WithoutAMessageACopyOverwrites) {
  wurzel.schreibe(u"a.jpg"_s, "neu");
  wurzel.schreibe(u"o/a.jpg"_s, "alt");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel));
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "neu");
}

TEST_F(Dateioperationen, WithAMessageNoKeepsAndYesOverwrites) {
  wurzel.schreibe(u"a.jpg"_s, "neu");
  wurzel.schreibe(u"o/a.jpg"_s, "alt");
  QString ziel = u"P:\\o"_s;
  boxen.erwarte(frage(u"a.jpg"_s), Antwort::Nein);
  EXPECT_FALSE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, true));
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "alt");
  EXPECT_EQ(ziel, u"P:\\o"_s);
  boxen.erwarte(frage(u"a.jpg"_s), Antwort::Ja);
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, true));
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "neu");
}

TEST_F(Dateioperationen, ANewNameIsOverwrittenUnaskedWhileTheSourcesNameAsks) {
  wurzel.schreibe(u"a.jpg"_s, "quelle");
  wurzel.schreibe(u"o/neu.jpg"_s, "alt");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, true, false, u"neu.jpg"_s));
  EXPECT_EQ(wurzel.lies(u"o/neu.jpg"_s), "quelle");
  wurzel.schreibe(u"o/a.jpg"_s, "bleibt");
  boxen.erwarte(frage(u"a.jpg"_s), Antwort::Ja);
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, true, false, u"neu.jpg"_s));
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "bleibt");
}

TEST_F(Dateioperationen, ABlankOrEqualNewNameMeansTheSourcesName) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, false, false, u"   "_s));
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, false, false, u" a.jpg "_s));
  EXPECT_EQ(inhalt(u"o"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Dateioperationen, AFailedCopyIsFalseWithoutAWord) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"o/a.jpg"_s, "alt");
  schreibgeschuetzt(u"o/a.jpg"_s);
  QString ziel = u"P:\\o"_s;
  EXPECT_FALSE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel));
  EXPECT_FALSE(store.Fkt_FileCopy(u"P:\\fehlt.jpg"_s, ziel));
  QString dort = u"P:"_s;
  EXPECT_FALSE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, dort));
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "alt");
  EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "1");
}

TEST_F(Dateioperationen, TheTextFileGoesWithThePictureUnderTheNewName) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"ajpg.txt"_s, "Text");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, false, false, u"neu.jpg"_s, true));
  EXPECT_EQ(inhalt(u"o"_s), (QStringList{u"neu.jpg"_s, u"neujpg.txt"_s}));
  EXPECT_EQ(wurzel.lies(u"o/neujpg.txt"_s), "Text");
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, false, false, std::nullopt, true));
  EXPECT_EQ(wurzel.lies(u"o/ajpg.txt"_s), "Text");
}

TEST_F(Dateioperationen, AFailureOfTheTextFileDoesNotChangeTheCopysResult) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopy(u"P:\\a.jpg"_s, ziel, false, false, std::nullopt, true));
  EXPECT_EQ(inhalt(u"o"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Dateioperationen, APictureWithoutTextFileCopiesNothingAndSaysSo) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  QString ziel = u"P:\\o"_s;
  QString neuer_Name;
  bool anlegen = false;
  EXPECT_FALSE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, false, false, neuer_Name, anlegen));
  EXPECT_TRUE(anlegen);
  EXPECT_EQ(ziel, u"P:\\o\\"_s);
  EXPECT_TRUE(inhalt(u"o"_s).isEmpty());
}

TEST_F(Dateioperationen, AnInfoTextBecomesTheTextFileOfTheNewName) {
  QString ziel = u"P:\\o"_s;
  QString neuer_Name = u"neu.jpg"_s;
  bool anlegen = false;
  EXPECT_TRUE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, false, false, neuer_Name, anlegen, u"Info"_s));
  EXPECT_EQ(neuer_Name, u"neujpg.txt"_s);
  EXPECT_EQ(wurzel.lies(u"o/neujpg.txt"_s), "Info");
  QString ohne;
  EXPECT_TRUE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, false, false, ohne, anlegen, u"Info"_s));
  EXPECT_EQ(wurzel.lies(u"o/ajpg.txt"_s), "Info");
}

TEST_F(Dateioperationen, WithoutAnyNameTheTextCopyEndsAtOnce) {
  QString ziel = u"P:\\o"_s;
  QString neuer_Name = u"  "_s;
  bool anlegen = false;
  EXPECT_FALSE(store.Fkt_File_Txt_Copy(u" "_s, ziel, false, false, neuer_Name, anlegen, u"Info"_s));
  EXPECT_FALSE(anlegen);
  EXPECT_EQ(ziel, u"P:\\o"_s);
}

TEST_F(Dateioperationen, TheTextCopyAsksLikeThePictureCopy) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"ajpg.txt"_s, "neu");
  wurzel.schreibe(u"o/ajpg.txt"_s, "alt");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, true, true));
  boxen.erwarte(frage(u"ajpg.txt"_s), Antwort::Nein);
  EXPECT_FALSE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, true));
  EXPECT_EQ(wurzel.lies(u"o/ajpg.txt"_s), "alt");
  boxen.erwarte(frage(u"ajpg.txt"_s), Antwort::Ja);
  EXPECT_TRUE(store.Fkt_File_Txt_Copy(u"P:\\a.jpg"_s, ziel, true));
  EXPECT_EQ(wurzel.lies(u"o/ajpg.txt"_s), "neu");
}

TEST_F(Dateioperationen, ADotInAFolderNameMakesTheTextFileMissing) {
  wurzel.schreibe(u"v1.0/a.jpg"_s, "1");
  wurzel.schreibe(u"v1.0/ajpg.txt"_s, "Text");
  QString ziel = u"P:\\o"_s;
  EXPECT_FALSE(store.Fkt_File_Txt_Copy(u"P:\\v1.0\\a.jpg"_s, ziel));
  EXPECT_TRUE(inhalt(u"o"_s).isEmpty());
}

TEST_F(Dateioperationen, AllFilesOfAFolderAreCopiedAndTheBackslashIsCutAgain) {
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  wurzel.schreibe(u"q/b.JPG"_s, "2");
  wurzel.schreibe(u"q/c.txt"_s, "3");
  for (const QString& start : {u"P:\\o"_s, u"P:\\o2\\"_s}) {
    QString ziel = start;
    EXPECT_TRUE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel, u"*.jpg"_s));
    EXPECT_FALSE(ziel.endsWith(u'\\'));
    EXPECT_EQ(inhalt(ziel.mid(3)), (QStringList{u"a.jpg"_s, u"b.JPG"_s}));
  }
  EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
  EXPECT_EQ(inhalt(u"q"_s).size(), 3);
}

TEST_F(Dateioperationen, TheDefaultPatternMatchesNothing) {
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel));
  EXPECT_FALSE(wurzel.vorhanden(u"o"_s));
}

TEST_F(Dateioperationen, TheHourglassShowsWhileTheQuestionIsAskedAndStaysAfterNo) {
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  wurzel.schreibe(u"q/b.jpg"_s, "2");
  wurzel.schreibe(u"o/b.jpg"_s, "alt");
  QString ziel = u"P:\\o"_s;
  boxen.erwarte(frage(u"b.jpg"_s), Antwort::Nein, [] { EXPECT_EQ(mauszeiger().form(), Zeigerform::Sanduhr); });
  EXPECT_FALSE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel, u"*.*"_s, true));
  EXPECT_EQ(mauszeiger().form(), Zeigerform::Sanduhr);
  EXPECT_EQ(ziel, u"P:\\o\\"_s);
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "1");
  EXPECT_EQ(wurzel.lies(u"o/b.jpg"_s), "alt");
  EXPECT_EQ(inhalt(u"q"_s).size(), 2);
  mauszeiger().form(Zeigerform::Standard);
}

TEST_F(Dateioperationen, AFailureInCopyingAllResetsThePointer) {
  QString ziel = u"P:\\o"_s;
  EXPECT_FALSE(store.Fkt_FileCopyAll(u"P:\\fehlt"_s, ziel, u"*.*"_s));
  EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
}

TEST_F(Dateioperationen, SourcesThatCannotBeDeletedAreTold) {
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  wurzel.schreibe(u"q/b.jpg"_s, "2");
  schreibgeschuetzt(u"q/a.jpg"_s);
  QString ziel = u"P:\\o"_s;
  boxen.erwarte(
      {u"Die Dokumente wurden kopiert, es konnten jedoch nicht alle Dokumente\r\n"
       "an ihrem ursprünglichen Ort gelöscht werden."_s,
          {}, Symbol::Keins, Knoepfe::OK});
  EXPECT_TRUE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel, u"*.*"_s, true));
  EXPECT_EQ(inhalt(u"q"_s), QStringList{u"a.jpg"_s});
  EXPECT_EQ(inhalt(u"o"_s).size(), 2);
}

TEST_F(Dateioperationen, PendingEventsRunOnceBetweenListingAndCopying) {
  class Zaehler : public Ereignispumpe {
   public:
    void verarbeite_anstehende() override { ++anzahl; }
    int anzahl = 0;
  };
  const auto pumpe = std::make_shared<Zaehler>();
  const auto vorher = setze(std::shared_ptr<Ereignispumpe>(pumpe));
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  wurzel.schreibe(u"q/b.jpg"_s, "1");
  QString ziel = u"P:\\o"_s;
  EXPECT_TRUE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel, u"*.*"_s));
  EXPECT_EQ(pumpe->anzahl, 1);
  setze(vorher);
}

TEST(DateiTypIcon, TheTypeIsAskedForByItsExtensionAloneWithOneDot) {
  class Merker : public shell::DateitypIcons {
   public:
    QImage icon(const QString& endung, int seite) override {
      gefragt = endung;
      return QImage(seite, seite, QImage::Format_RGB32);
    }
    QString gefragt;
  };
  const auto merker = std::make_shared<Merker>();
  const auto vorher = shell::setze(merker);
  for (const QString& ext : {u"pdf"_s, u".pdf"_s}) {
    const auto bild = mod_BilderSuchen::Fkt_DateiTypIcon(ext, 256);
    ASSERT_NE(bild, nullptr);
    EXPECT_EQ(bild->groesse(), QSize(32, 32));
    EXPECT_EQ(merker->gefragt, u"pdf"_s);
  }
  EXPECT_EQ(mod_BilderSuchen::Fkt_DateiTypIcon(u"pdf"_s, 0), nullptr);
  shell::setze(vorher);
}

TEST_F(Dateioperationen, AFailureInTheMiddleOfCopyingAllKeepsWhatWasCopiedAndLeavesTheBackslash) {
  wurzel.schreibe(u"q/a.jpg"_s, "1");
  wurzel.schreibe(u"q/b.jpg"_s, "2");
  wurzel.schreibe(u"o/b.jpg"_s, "alt");
  schreibgeschuetzt(u"o/b.jpg"_s);
  QString ziel = u"P:\\o"_s;
  boxen.erwarte(frage(u"b.jpg"_s), Antwort::Ja);
  EXPECT_FALSE(store.Fkt_FileCopyAll(u"P:\\q"_s, ziel, u"*.*"_s, true));
  EXPECT_EQ(ziel, u"P:\\o\\"_s);
  EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
  EXPECT_EQ(wurzel.lies(u"o/a.jpg"_s), "1");
  EXPECT_EQ(wurzel.lies(u"o/b.jpg"_s), "alt");
  EXPECT_EQ(inhalt(u"q"_s).size(), 2);
}
