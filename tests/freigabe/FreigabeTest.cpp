// A desk's work on a share of a real server, mounted as a user mounts it: Samba on 127.0.0.1, smbnetfs.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <optional>
#include <random>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "tests/freigabe/Abbruch.h"
#include "tests/support/Doppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Freigabe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class AmNetz : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const QString fehlt = Freigabe::was_fehlt(); !fehlt.isEmpty())
      GTEST_SKIP() << "no share can be mounted here: " << fehlt.toStdString() << " is missing";
    freigabe_.emplace(ablage_.baum(), Freigabe::Art::Schreiben);
    netz_.emplace(*freigabe_);
    Pfadkarte::aktuell().setze(u"P:"_s, netz_->ordner());
  }
  void TearDown() override { Pfadkarte::aktuell().entferne(u"P:"_s); }

  QString baum() const { return netz_->ordner(); }
  void gelingt(const QString& befehl, const QStringList& argumente) const {
    EXPECT_EQ(ablage_.fuehre(baum(), befehl, argumente), 0) << ablage_.gesagt().toStdString();
  }
  static void berichte(const Abbruch& abbruch) {
    std::printf("killed: %d\n", abbruch.erschlagene());
    for (const auto& [befehl, reste] : abbruch.reste())
      std::printf("  hidden files left by %s: %d\n", qPrintable(befehl), static_cast<int>(reste.size()));
  }
  /// Names in the record's folder without the time that each gets when it is attached.
  QStringList namen() const {
    QStringList alle = ablage_.dateien();
    alle.replaceInStrings(QRegularExpression(u"\\d{8}_\\d{6}"_s), u"*"_s);
    return alle;
  }
  QString erste() const {
    const QJsonObject zeile = ablage_.zeilen().value(0);
    return zeile[u"bildname"_s].toString() + u'.' + zeile[u"bildext"_s].toString();
  }
  void schreibe(const QString& name, const QByteArray& bytes) const {
    QFile datei(ablage_.baum() + u'/' + name);
    ASSERT_TRUE(datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size());
  }

  Ablage ablage_;
  std::optional<Freigabe> freigabe_;
  std::optional<Einhaengung> netz_;
  MeldungsDoppel meldungen_;
};

TEST_F(AmNetz, AMorningOfAttachingRenamingRemovingAndClearing) {
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"Küche groß.jpg"_s), ablage_.wartendes(u"Bad.jpg"_s, true)});
  EXPECT_EQ(namen(),
      (QStringList{u"Belege/1/Bad*.jpg"_s, u"Belege/1/Bad*jpg.txt"_s, u"Belege/1/Küche groß*.jpg"_s,
          u"Belege/1/Küche groß*jpg.txt"_s}));
  const QString kueche = erste();
  gelingt(u"umbenennen"_s, {kueche, u"Heizöl-Tank"_s});
  gelingt(u"umbenennen"_s, {u"Heizöl-Tank.jpg"_s, u"HEIZÖL-Tank"_s});
  EXPECT_EQ(namen(),
      (QStringList{u"Belege/1/Bad*.jpg"_s, u"Belege/1/Bad*jpg.txt"_s, u"Belege/1/HEIZÖL-Tank.jpg"_s,
          u"Belege/1/HEIZÖL-Tankjpg.txt"_s}));
  EXPECT_EQ(ablage_.zeilen().value(0)[u"bildname"_s].toString(), u"HEIZÖL-Tank"_s);
  gelingt(u"entfernen"_s, {u"HEIZÖL-Tank.jpg"_s});
  // Beside a share there is no room for a folder.
  gelingt(u"aufraeumen"_s, {u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--ordner"_s, u"Belege"_s});
  EXPECT_EQ(namen(), (QStringList{u"Belege/1/Bad*.jpg"_s, u"Belege/1/Bad*jpg.txt"_s}));
  EXPECT_EQ(ablage_.schlechte(), QStringList());
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, AFileIsMadeReplacedRenamedAndNeverOverwritten) {
  const FileSystemObject fso;
  dateien::schreibe_neu(u"P:\\Größe.txt"_s, "eins");
  dateien::schreibe_alles(u"P:\\größe.TXT"_s, "zwei und mehr");
  EXPECT_EQ(dateien::lies_alles(u"P:\\Größe.txt"_s), "zwei und mehr");
  dateien::schreibe_neu(u"P:\\b.txt"_s, "b");
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\b.txt"_s, u"P:\\GRÖSSE.txt"_s); }), 0) << "no other case of ß";
  EXPECT_EQ(Fehlernummer_von([&] { fso.MoveFile(u"P:\\GRÖSSE.txt"_s, u"P:\\Größe.txt"_s); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { dateien::schreibe_neu(u"P:\\Größe.txt"_s, "drei"); }), 58);
  EXPECT_EQ(Fehlernummer_von([&] { fso.CopyFile(u"P:\\GRÖSSE.txt"_s, u"P:\\Größe.txt"_s, false); }), 58);
  fso.MoveFile(u"P:\\Größe.txt"_s, u"P:\\größe.txt"_s);
  EXPECT_EQ(ablage_.dateien(), (QStringList{u"GRÖSSE.txt"_s, u"größe.txt"_s}));
  EXPECT_EQ(ablage_.inhalt(u"größe.txt"_s), "zwei und mehr");
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, APictureIsTurnedInItsPlace) {
  const QString bild = ablage_.wartendes(u"a.jpg"_s);
  QFile::copy(bild, ablage_.baum() + u"/Fenster.jpg"_s);
  const QByteArray vorher = ablage_.inhalt(u"Fenster.jpg"_s);
  ASSERT_EQ(mod_GrafikKonvert::Fkt_GdiStartup(1), 0);
  EXPECT_TRUE(mod_GrafikKonvert::Fkt_Bild_Drehen(u"P:\\Fenster.jpg"_s, 13));
  EXPECT_NE(ablage_.inhalt(u"Fenster.jpg"_s), vorher);
  EXPECT_TRUE(mod_GrafikKonvert::Fkt_Bild_Drehen(u"P:\\Fenster.jpg"_s, 15));
  mod_GrafikKonvert::Fkt_GdiShutdown();
  EXPECT_EQ(ablage_.dateien(), QStringList{u"Fenster.jpg"_s});
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, AServerThatIsKilledAtAnyMomentLeavesNoRowWithoutItsWholeFile) {
  std::mt19937 zufall(abbruchsaat(4711));
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"erstes.jpg"_s)});
  for (int i = 0; i < 5; ++i) {
    QStringList bilder;
    for (int j = 0; j < 3; ++j) bilder.append(ablage_.wartendes(u"Bild%1.jpg"_s.arg(3 * i + j), j == 1));
    const auto prozess = ablage_.beginne(baum(), u"zuordnen"_s, bilder);
    prozess->waitForFinished(std::uniform_int_distribution<int>(20, 400)(zufall));
    freigabe_->erschlage();
    EXPECT_TRUE(Ablage::endet(*prozess)) << "it hangs";
    EXPECT_EQ(prozess->exitStatus(), QProcess::NormalExit);
    freigabe_->starte();
    EXPECT_EQ(ablage_.schlechte(), QStringList());
    // A new mount: the old one may go on for a while without the server.
    netz_.reset();
    netz_.emplace(*freigabe_);
  }
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"letztes.jpg"_s)});
  EXPECT_EQ(ablage_.reste(), QStringList());
  EXPECT_EQ(ablage_.schlechte(), QStringList());
}

TEST_F(AmNetz, AServerThatAnswersAgainAfterAWhileIsWaitedFor) {
  const auto prozess =
      ablage_.beginne(baum(), u"zuordnen"_s, {ablage_.wartendes(u"eins.jpg"_s), ablage_.wartendes(u"zwei.jpg"_s)});
  freigabe_->halte_an();
  EXPECT_FALSE(prozess->waitForFinished(3'000));
  freigabe_->lass_weiter();
  EXPECT_TRUE(Ablage::endet(*prozess)) << "it hangs";
  EXPECT_EQ(prozess->exitCode(), 0) << prozess->readAllStandardError().toStdString();
  EXPECT_EQ(ablage_.zeilen().size(), 2);
  EXPECT_EQ(ablage_.schlechte(), QStringList());
}

TEST_F(AmNetz, ASilenceThatTheMountDoesNotWaitForIsToldAndTheNextCommandWorks) {
  const QString bild = ablage_.wartendes(u"eins.jpg"_s);
  const auto prozess = ablage_.beginne(baum(), u"zuordnen"_s, {bild});
  freigabe_->halte_an();
  // The mount itself gives up after 20 seconds.
  const bool geendet = prozess->waitForFinished(30'000);
  freigabe_->lass_weiter();
  EXPECT_TRUE(geendet) << "it waits for longer than the system";
  EXPECT_TRUE(Ablage::endet(*prozess));
  EXPECT_EQ(prozess->exitCode(), 4);
  EXPECT_TRUE(QString::fromUtf8(prozess->readAllStandardError()).contains(u"Nichts ist zugeordnet."_s));
  EXPECT_TRUE(QFile::exists(bild));
  EXPECT_TRUE(ablage_.zeilen().isEmpty());
  // A new mount: the old one goes on for a while without the server.
  netz_.reset();
  netz_.emplace(*freigabe_);
  gelingt(u"zuordnen"_s, {bild});
  EXPECT_EQ(ablage_.zeilen().size(), 1);
  EXPECT_EQ(ablage_.schlechte(), QStringList());
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, WhenTheServerIsGoneTheUserReadsGermanWordsAndNothingIsSaved) {
  const QString bild = ablage_.wartendes(u"eins.jpg"_s);
  freigabe_->erschlage();
  EXPECT_NE(ablage_.fuehre(baum(), u"zuordnen"_s, {bild}), 0);
  EXPECT_FALSE(ablage_.gesagt().isEmpty());
  EXPECT_FALSE(ablage_.gesagt().contains(u"error"_s, Qt::CaseInsensitive)) << ablage_.gesagt().toStdString();
  freigabe_->starte();
  EXPECT_TRUE(ablage_.zeilen().isEmpty());
}

TEST_F(AmNetz, ACommandThatIsKilledLeavesWholeFilesAndRestsThatTheNextWriteTakes) {
  Abbruch abbruch(ablage_, baum(), abbruchsaat(815));
  const int anzahl = abbrueche(6);
  while (abbruch.erschlagene() < anzahl && !HasFailure()) abbruch.erschlage_einen();
  EXPECT_TRUE(abbruch.schlechte().isEmpty()) << abbruch.schlechte().join(u"\n"_s).toStdString();
  berichte(abbruch);
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"zuletzt.jpg"_s)});
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, WhoeverOfTwoDesksIsKilledTheOtherGetsThroughAndNothingIsHalf) {
  const Einhaengung zweite(*freigabe_);
  Abbruch abbruch(ablage_, baum(), abbruchsaat(4711), zweite.ordner());
  const int anzahl = abbrueche(6);
  while (abbruch.erschlagene() < anzahl && !HasFailure()) abbruch.erschlage_einen();
  EXPECT_TRUE(abbruch.schlechte().isEmpty()) << abbruch.schlechte().join(u"\n"_s).toStdString();
  berichte(abbruch);
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"zuletzt.jpg"_s)});
  EXPECT_EQ(ablage_.reste(), QStringList());
}

TEST_F(AmNetz, TwoDesksWithMountsOfTheirOwnDoNotDisturbEachOther) {
  const Einhaengung zweite(*freigabe_);
  gelingt(u"zuordnen"_s, {ablage_.wartendes(u"erstes.jpg"_s)});
  std::vector<std::unique_ptr<QProcess>> laufende;
  for (int i = 0; i < 8; ++i) {
    const QString& ort = i % 2 == 0 ? baum() : zweite.ordner();
    laufende.push_back(ablage_.beginne(ort, u"zuordnen"_s, {ablage_.wartendes(u"Bild%1.jpg"_s.arg(i), i == 3)}));
    if (i % 2 == 0) continue;
    for (auto& prozess : laufende) {
      EXPECT_TRUE(Ablage::endet(*prozess));
      EXPECT_EQ(prozess->exitCode(), 0) << prozess->readAllStandardError().toStdString();
    }
    laufende.clear();
  }
  EXPECT_EQ(ablage_.zeilen().size(), 9);
  EXPECT_EQ(ablage_.dateien().size(), 18);
  EXPECT_EQ(ablage_.schlechte(), QStringList());
  EXPECT_EQ(ablage_.reste(), QStringList());
}

}  // namespace
