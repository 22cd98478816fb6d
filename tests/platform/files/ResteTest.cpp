// What processes that ended in the middle leave in a folder, and who takes it away.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "platform/files/Beiname.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;
using beiname::Stufe;

namespace {

class Reste : public ::testing::Test {
 protected:
  QStringList inhalt() const {
    return QDir(wurzel.pfad()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
  }
  /// A name that a process gave which has ended.
  static QString name_eines_Toten(const QByteArray& ziel, Stufe stufe) {
    int rohr[2];
    EXPECT_EQ(::pipe(rohr), 0);
    const pid_t kind = ::fork();
    if (kind == 0) {
      const QByteArray name = beiname::bilde(ziel, stufe);
      ::_exit(::write(rohr[1], name.constData(), static_cast<std::size_t>(name.size())) == name.size() ? 0 : 1);
    }
    int ende = 0;
    EXPECT_EQ(::waitpid(kind, &ende, 0), kind);
    QByteArray name(1000, '\0');
    name.truncate(::read(rohr[0], name.data(), 1000));
    ::close(rohr[0]);
    ::close(rohr[1]);
    return QString::fromUtf8(name);
  }
  static QString name_eines_anderen_Platzes(const QString& ziel, const QString& stufe = u"e"_s) {
    return u".kvo-empfang-0123abcd-17-89abcdef4711-3-"_s + stufe + u'-' + ziel;
  }
  void altere(const QString& name, time_t sekunden) const {
    // The change of the entry can't be set back, so the file is old in both only when its clock is asked alone.
    const struct timeval zeiten[2] = {{::time(nullptr) - sekunden, 0}, {::time(nullptr) - sekunden, 0}};
    ASSERT_EQ(::utimes(QFile::encodeName(wurzel.pfad(name)).constData(), zeiten), 0);
  }

  Bildwurzel wurzel;
};

TEST_F(Reste, ANameTellsDeskProcessStartStageAndTarget) {
  const QByteArray name = beiname::bilde("Küche-1.jpg", Stufe::Fertig);
  EXPECT_TRUE(name.startsWith(".kvo-")) << name.toStdString();
  const auto angaben = beiname::lies(name);
  ASSERT_TRUE(angaben);
  EXPECT_TRUE(angaben->eigener_Platz);
  EXPECT_EQ(angaben->prozess, ::getpid());
  EXPECT_FALSE(angaben->beginn.isEmpty());
  EXPECT_EQ(angaben->stufe, Stufe::Fertig);
  EXPECT_EQ(angaben->ziel, "Küche-1.jpg");
  EXPECT_FALSE(angaben->gekuerzt);
  EXPECT_NE(beiname::bilde("Küche-1.jpg", Stufe::Fertig), name) << "no two are alike";
}

TEST_F(Reste, ALongTargetIsShortenedBetweenTwoCharacters) {
  for (int fuell = 0; fuell < 4; ++fuell) {
    const QByteArray ziel = QByteArray(fuell, 'x') + QString(120, QChar(u'ü')).toUtf8() + ".jpg";
    const QByteArray name = beiname::bilde(ziel, Stufe::Fertig);
    EXPECT_LE(name.size(), 240);
    const auto angaben = beiname::lies(name);
    ASSERT_TRUE(angaben);
    EXPECT_TRUE(angaben->gekuerzt);
    EXPECT_TRUE(ziel.startsWith(angaben->ziel));
    EXPECT_FALSE(QString::fromUtf8(angaben->ziel).contains(QChar::ReplacementCharacter));
  }
}

TEST_F(Reste, OtherNamesAreNone) {
  for (const char* name : {"a.jpg", ".kvo-", ".kvo-aaaaaa", ".kvo-a-b-0-c-1-e-x", ".kvo-a-b-x-c-1-e-x",
           ".kvo-a-b-1-c-1-q-x", ".kvo-a-b-1-c-1--x", "x.kvo-a-b-1-c-1-e-x"})
    EXPECT_FALSE(beiname::ist_einer(name)) << name;
}

TEST_F(Reste, NoListShowsThem) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(QString::fromUtf8(beiname::bilde("a.jpg", Stufe::Entsteht)), "2");
  wurzel.schreibe(name_eines_anderen_Platzes(u"a.jpg"_s), "3");
  EXPECT_EQ(FileSystemObject().GetFolder(u"P:\\"_s).Files(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(dateien::Dir(u"P:\\*.jpg"_s), QStringList{u"a.jpg"_s});
  EXPECT_EQ(FileSystemObject().GetFolder(u"P:\\"_s).Anzahl_Eintraege(), 3) << "somebody still works with them";
}

TEST_F(Reste, WhatADeadProcessLeftGoesWithTheNextWrite) {
  wurzel.schreibe(name_eines_Toten("a.jpg", Stufe::Entsteht), "halb");
  wurzel.schreibe(name_eines_Toten("a.jpg", Stufe::Entsteht) + u".x1Y2z3"_s, "halb");
  dateien::schreibe_neu(u"P:\\b.jpg"_s, "1");
  EXPECT_EQ(inhalt(), QStringList{u"b.jpg"_s});
}

TEST_F(Reste, ARenameIsAWriteToo) {
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(name_eines_Toten("x.jpg", Stufe::Entsteht), "halb");
  FileSystemObject().MoveFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s);
  EXPECT_EQ(inhalt(), QStringList{u"b.jpg"_s});
}

TEST_F(Reste, WhatALivingProcessWritesStays) {
  const QString eigener = QString::fromUtf8(beiname::bilde("a.jpg", Stufe::Entsteht));
  wurzel.schreibe(eigener, "wird noch");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), QStringList{eigener});
}

TEST_F(Reste, AProcessThatBearsTheNumberOfADeadOneIsNotTakenForIt) {
  const QString eigener = QString::fromUtf8(beiname::bilde("a.jpg", Stufe::Entsteht));
  const QByteArray beginn = beiname::lies(eigener.toUtf8())->beginn;
  QString frueherer = eigener;
  frueherer.replace(QString::fromLatin1(beginn), QString::fromLatin1(beginn) + u'0');
  wurzel.schreibe(frueherer, "halb");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_TRUE(inhalt().isEmpty());
}

TEST_F(Reste, AnotherDesksGoesAfterADayByTheClockThatNobodySetsBack) {
  const QString name = name_eines_anderen_Platzes(u"a.jpg"_s);
  wurzel.schreibe(name, "halb");
  altere(name, 48 * 3600);
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), QStringList{name}) << "a copy bears its source's time stamp from early on";
  const int ordner = ::open(QFile::encodeName(wurzel.pfad()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  EXPECT_FALSE(beiname::ist_verlassen(*beiname::lies(name.toUtf8()), ordner, name.toUtf8().constData()));
  ::close(ordner);
}

TEST_F(Reste, AWholeContentGoesWhenItsTargetIsThereAndIsTheTargetWhenThatIsGone) {
  wurzel.schreibe(u"a.jpg"_s, "alt");
  wurzel.schreibe(name_eines_Toten("a.jpg", Stufe::Fertig), "neu");
  wurzel.schreibe(name_eines_Toten("b.jpg", Stufe::Fertig), "einziges");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(wurzel.lies(u"a.jpg"_s), "alt");
  EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "einziges");
}

TEST_F(Reste, AWholeContentWhoseNameIsNotKnownToTheEndStaysUntilItsTargetIsThere) {
  const QString ziel = QString(240, u'x') + u".jpg"_s;
  const QString rest = name_eines_Toten(ziel.toUtf8(), Stufe::Fertig);
  wurzel.schreibe(rest, "einziges");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), QStringList{rest});
  wurzel.schreibe(ziel, "da");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), QStringList{ziel});
}

TEST_F(Reste, AnEmptyFileThatKeptANameFreeGoesAndNoOtherOne) {
  wurzel.schreibe(u"meine.jpg"_s, "");
  altere(u"meine.jpg"_s, 60);
  wurzel.schreibe(u"voll.jpg"_s, "1");
  for (const char* ziel : {"meine.jpg", "voll.jpg", "platz.jpg", "keiner.jpg"})
    wurzel.schreibe(name_eines_Toten(ziel, Stufe::Platzhalter), "");
  wurzel.schreibe(u"platz.jpg"_s, "");
  dateien::raeume_Reste(u"P:\\"_s);
  EXPECT_EQ(inhalt(), (QStringList{u"meine.jpg"_s, u"voll.jpg"_s}));
}

TEST_F(Reste, AnEmptyFileThatOnlyKeptANameFreeIsInNoList) {
  wurzel.schreibe(name_eines_Toten("platz.jpg", Stufe::Platzhalter), "");
  wurzel.schreibe(u"platz.jpg"_s, "");
  wurzel.schreibe(u"a.jpg"_s, "1");
  EXPECT_EQ(dateien::Dir(u"P:\\*.jpg"_s), QStringList{u"a.jpg"_s});
}

TEST_F(Reste, AFolderThatHoldsNothingElseIsEmptyAndGoes) {
  wurzel.schreibe(u"o/"_s + name_eines_Toten("a.jpg", Stufe::Entsteht), "halb");
  EXPECT_EQ(FileSystemObject().GetFolder(u"P:\\o"_s).Anzahl_Eintraege(), 0);
  FileSystemObject().DeleteFolder(u"P:\\o"_s, true);
  EXPECT_TRUE(inhalt().isEmpty());
}

TEST_F(Reste, AHiddenNameForAnotherProgramIsOne) {
  const QString name = dateien::verborgener_Name(u"P:\\o\\Für Müller.zip"_s);
  ASSERT_TRUE(name.startsWith(u"P:\\o\\.kvo-"_s)) << name.toStdString();
  const auto angaben = beiname::lies(name.mid(5).toUtf8());
  ASSERT_TRUE(angaben);
  EXPECT_EQ(angaben->ziel, u"Für Müller.zip"_s.toUtf8());
  EXPECT_EQ(angaben->stufe, Stufe::Entsteht);
}

}  // namespace
