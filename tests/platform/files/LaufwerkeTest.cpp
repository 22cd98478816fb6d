#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>

#include "platform/files/Laufwerke.h"
#include "platform/files/Pfadkarte.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The machine's provider over a table of mounts and a folder of labels of the test's own.
class MaschinenLaufwerke : public ::testing::Test {
 protected:
  MaschinenLaufwerke() : anfangs_(QDir::currentPath()), namen_vorher_(Pfadkarte::aktuell().namen()) {
    haenge_ein({"/dev/sda1 / ext4 rw 0 0", "proc /proc proc rw 0 0", "/dev/sda2 /home ext4 rw 0 0"});
  }
  ~MaschinenLaufwerke() override {
    QDir::setCurrent(anfangs_);
    for (const QString& name : Pfadkarte::aktuell().namen())
      if (!namen_vorher_.contains(name)) Pfadkarte::aktuell().entferne(name);
  }
  void haenge_ein(const QList<QByteArray>& zeilen) {
    ordner.schreibe(u"mounts"_s, zeilen.join('\n') + '\n');
    anbieter->sieh_nach();
  }
  /// Letters that are drives, each with its type.
  QMap<QChar, std::int32_t> laufwerke() {
    QMap<QChar, std::int32_t> alle;
    for (char16_t b = u'A'; b <= u'Z'; ++b)
      if (const auto typ = anbieter->GetDriveType(QString(QChar(b)) + u":\\"_s); typ != laufwerke::OhneWurzel)
        alle.insert(b, typ);
    return alle;
  }
  QString netz(const QString& laufwerk) {
    QString ziel;
    return anbieter->WNetGetConnection(laufwerk, ziel) == 0 ? ziel : u"<nicht verbunden>"_s;
  }
  QString marke(const QString& wurzel) {
    QString bezeichnung;
    return anbieter->GetVolumeInformation(wurzel, bezeichnung) ? bezeichnung : u"<keine>"_s;
  }
  /// A device with a label that links to it.
  QByteArray lege_Geraet(const QString& name, const QString& marke) {
    const QString geraet = ordner.schreibe(u"dev/"_s + name, {});
    QDir().mkpath(ordner.pfad(u"marken"_s));
    EXPECT_TRUE(QFile::link(u"../dev/"_s + name, ordner.pfad(u"marken/"_s + marke)));
    return geraet.toUtf8();
  }
  using Karte = QMap<QChar, std::int32_t>;

  Testordner ordner;
  std::shared_ptr<laufwerke::Anbieter> anbieter =
      laufwerke::dieser_Maschine(ordner.pfad(u"mounts"_s), ordner.pfad(u"marken"_s));

 private:
  const QString anfangs_;
  const QStringList namen_vorher_;
};

}  // namespace

using namespace laufwerke;

TEST_F(MaschinenLaufwerke, TheRootFileSystemIsCAndOrdinaryMountsGetNoLetter) {
  EXPECT_EQ(laufwerke(), (Karte{{u'C', Fest}}));
}

TEST_F(MaschinenLaufwerke, MediaSharesAndOpticalDrivesFollowFromDByTheirMountPoints) {
  haenge_ein({"/dev/sda1 / ext4 rw 0 0", "//nas/bilder /mnt/nas cifs rw 0 0", "/dev/sr0 /media/cd iso9660 ro 0 0",
      "/dev/sdb1 /media/anna/STICK vfat rw 0 0", "/dev/sdc1 /run/media/anna/B exfat rw 0 0",
      "server:/export/fotos /srv/fotos nfs4 rw 0 0", "tmpfs /media/speicher tmpfs rw 0 0"});
  EXPECT_EQ(
      laufwerke(), (Karte{{u'C', Fest}, {u'D', Wechsel}, {u'E', CdRom}, {u'F', Netz}, {u'G', Wechsel}, {u'H', Netz}}));
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"D:"_s), u"/media/anna/STICK"_s);
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"H:"_s), u"/srv/fotos"_s);
}

TEST_F(MaschinenLaufwerke, ANetworkMountAnswersWithItsShare) {
  haenge_ein({"//nas/bilder /mnt/a cifs rw 0 0", "//nas/alle/unten /mnt/b smb3 rw 0 0",
      "server:/export/fotos /mnt/c nfs rw 0 0", "/dev/sdb1 /media/d vfat rw 0 0", "//nas/ende/ /mnt/e cifs rw 0 0",
      "alles:/ /mnt/f nfs4 rw 0 0"});
  EXPECT_EQ(netz(u"E:"_s), u"\\\\nas\\bilder"_s);
  EXPECT_EQ(netz(u"F:"_s), u"\\\\nas\\alle\\unten"_s);
  EXPECT_EQ(netz(u"G:"_s), u"\\\\server\\export\\fotos"_s);
  EXPECT_EQ(netz(u"H:"_s), u"\\\\nas\\ende"_s);
  EXPECT_EQ(netz(u"I:"_s), u"\\\\alles"_s);
  EXPECT_EQ(netz(u"D:"_s), u"<nicht verbunden>"_s);
  EXPECT_EQ(netz(u"X:"_s), u"<nicht verbunden>"_s);
}

TEST_F(MaschinenLaufwerke, ALabelIsFoundByItsDeviceAndItsEscapesAreRead) {
  const QByteArray a = lege_Geraet(u"sda1"_s, u"System"_s);
  const QByteArray b = lege_Geraet(u"sdb1"_s, u"MEINE\\x20FOTOS\\x2f\\xc3\\xa4"_s);
  haenge_ein({a + " / ext4 rw 0 0", "/dev/nichts /media/x vfat rw 0 0", b + " /media/y vfat rw 0 0"});
  EXPECT_EQ(marke(u"C:\\"_s), u"System"_s);
  EXPECT_EQ(marke(u"D:\\"_s), u"<keine>"_s);
  Pfadkarte::aktuell().setze(u"Y:"_s, u"/media/y"_s);
  EXPECT_EQ(marke(u"Y:\\"_s), u"MEINE FOTOS/ä"_s);
  EXPECT_EQ(marke(u"Q:\\"_s), u"<keine>"_s);
}

TEST_F(MaschinenLaufwerke, AMountPointMayHoldBlanks) {
  haenge_ein({"/dev/sdb1 /media/anna/MEINE\\040FOTOS vfat rw 0 0"});
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"D:"_s), u"/media/anna/MEINE FOTOS"_s);
}

TEST_F(MaschinenLaufwerke, VanishedMountsGiveTheirLettersBackAndTheOthersKeepTheirs) {
  haenge_ein({"/dev/sdb1 /media/a vfat rw 0 0", "/dev/sdc1 /media/b vfat rw 0 0"});
  haenge_ein({"/dev/sdc1 /media/b vfat rw 0 0"});
  EXPECT_EQ(laufwerke(), (Karte{{u'C', Fest}, {u'E', Wechsel}}));
  EXPECT_FALSE(Pfadkarte::aktuell().ordner(u"D:"_s).has_value());
  haenge_ein({"/dev/sdc1 /media/b vfat rw 0 0", "/dev/sdd1 /media/z vfat rw 0 0"});
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"D:"_s), u"/media/z"_s);
}

TEST_F(MaschinenLaufwerke, LettersThatTheHostMappedStayAndAreDrivesOfTheirFolders) {
  Pfadkarte::aktuell().setze(u"D:"_s, ordner.pfad());
  Pfadkarte::aktuell().setze(u"N:"_s, u"/mnt/nas/firma"_s);
  haenge_ein({"/dev/sda1 / ext4 rw 0 0", "//nas/alle /mnt/nas cifs rw 0 0"});
  EXPECT_EQ(laufwerke(), (Karte{{u'C', Fest}, {u'D', Fest}, {u'E', Netz}, {u'N', Netz}}));
  EXPECT_EQ(netz(u"N:"_s), u"\\\\nas\\alle"_s);
  haenge_ein({"/dev/sda1 / ext4 rw 0 0"});
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"D:"_s), ordner.pfad());
  EXPECT_EQ(laufwerke(), (Karte{{u'C', Fest}, {u'D', Fest}, {u'N', Fest}}));
}

TEST_F(MaschinenLaufwerke, AMountThatTheHostMappedGetsNoSecondLetter) {
  Pfadkarte::aktuell().setze(u"K:"_s, u"/media/a"_s);
  haenge_ein({"/dev/sdb1 /media/a vfat rw 0 0"});
  EXPECT_EQ(laufwerke(), (Karte{{u'C', Fest}, {u'K', Wechsel}}));
}

TEST_F(MaschinenLaufwerke, ALetterThatTheHostTookOverIsNotTakenBack) {
  haenge_ein({"/dev/sdb1 /media/a vfat rw 0 0"});
  Pfadkarte::aktuell().setze(u"D:"_s, ordner.pfad());
  haenge_ein({});
  EXPECT_EQ(Pfadkarte::aktuell().ordner(u"D:"_s), ordner.pfad());
}

TEST_F(MaschinenLaufwerke, MoreMountsThanLettersLeaveTheLastOnesOut) {
  QList<QByteArray> zeilen;
  for (int i = 0; i < 30; ++i)
    zeilen.append(QByteArrayLiteral("/dev/sdb1 /media/") + QByteArray::number(100 + i) + " vfat rw 0 0");
  haenge_ein(zeilen);
  EXPECT_EQ(laufwerke().size(), 24);
}

TEST_F(MaschinenLaufwerke, ATableThatIsMissingLeavesC) {
  const auto ohne = laufwerke::dieser_Maschine(ordner.pfad(u"fehlt"_s), ordner.pfad(u"fehlt auch"_s));
  ohne->sieh_nach();
  EXPECT_EQ(ohne->GetDriveType(u"C:\\"_s), Fest);
  QString bezeichnung;
  EXPECT_FALSE(ohne->GetVolumeInformation(u"C:\\"_s, bezeichnung));
}

TEST_F(MaschinenLaufwerke, TheCurrentDirectoryLiesOnAListedDrive) {
  const QString hier = ordner.pfad(u"a/b"_s);
  ASSERT_TRUE(QDir().mkpath(hier));
  ASSERT_TRUE(QDir::setCurrent(hier));
  QString maschine = QDir::currentPath();
  maschine.replace(u'/', u'\\');
  EXPECT_EQ(anbieter->aktuelles_Verzeichnis(), u"C:"_s + maschine);
  Pfadkarte::aktuell().setze(u"\\\\server\\share"_s, QDir::currentPath());
  EXPECT_EQ(anbieter->aktuelles_Verzeichnis(), u"C:"_s + maschine) << "a share has no letter";
  Pfadkarte::aktuell().setze(u"k:"_s, ordner.pfad(u"a"_s));
  EXPECT_EQ(anbieter->aktuelles_Verzeichnis(), u"K:\\b"_s);
  ASSERT_TRUE(QDir::setCurrent(ordner.pfad(u"a"_s)));
  EXPECT_EQ(anbieter->aktuelles_Verzeichnis(), u"K:\\"_s);
}

TEST_F(MaschinenLaufwerke, ACurrentDirectoryOnAMediumLiesThereFromTheFirstQuestionOn) {
  ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"nas/x"_s)));
  ASSERT_TRUE(QDir::setCurrent(ordner.pfad(u"nas/x"_s)));
  ordner.schreibe(u"mounts"_s, "//nas/alle " + ordner.pfad(u"nas"_s).toUtf8() + " cifs rw 0 0\n");
  const auto frisch = laufwerke::dieser_Maschine(ordner.pfad(u"mounts"_s), ordner.pfad(u"marken"_s));
  EXPECT_EQ(frisch->aktuelles_Verzeichnis(), u"D:\\x"_s);
}

TEST(LaufwerkeInKraft, AnotherProviderCanTakeTheMachinesPlace) {
  class Keins final : public Anbieter {
    std::int32_t GetDriveType(const QString&) override { return OhneWurzel; }
    bool GetVolumeInformation(const QString&, QString&) override { return false; }
    std::int32_t WNetGetConnection(const QString&, QString&) override { return 1; }
    QString aktuelles_Verzeichnis() override { return u"C:\\"_s; }
  };
  const auto keins = std::make_shared<Keins>();
  laufwerke::setze(keins);
  EXPECT_EQ(aktuell().GetDriveType(u"C:\\"_s), OhneWurzel);
  EXPECT_EQ(laufwerke::setze(nullptr), keins);
  EXPECT_EQ(aktuell().GetDriveType(u"C:\\"_s), Fest);
}
