#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

#include "platform/files/Dateien.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildAufraeumen : public Betrieb {
 protected:
  KvobildAufraeumen() {
    for (const QString& name :
        {u"Belege/1/a.jpg"_s, u"Belege/1/ajpg.txt"_s, u"Belege/1/b.jpg"_s, u"Belege/1/bjpg.txt"_s, u"Belege/2/c.jpg"_s})
      ordner_.schreibe(u"bild.ablage/"_s + name, "x");
    ordne_zu(u"Belege\\1"_s, u"a"_s);
  }
  void ordne_zu(const QString& pfad, const QString& name) const {
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        u"Values ('AB','1','-','-','%1','jpg','BEL','-','%2',0)"_s.arg(name, pfad));
  }
  Lauf aufraeumen(const QStringList& argumente, const QString& eingabe = {}) const {
    return kvobild(QStringList{u"aufraeumen"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(),
                       u"--bilder"_s, wurzel()} +
            argumente,
        {}, eingabe);
  }
  /// A hidden name that a process gave to something it wrote, and which has ended.
  static QString name_eines_Toten(const QString& ziel) {
    int rohr[2];
    EXPECT_EQ(::pipe(rohr), 0);
    const pid_t kind = ::fork();
    if (kind == 0) {
      const QByteArray pfad = dateien::verborgener_Name(u"C:\\"_s + ziel).toUtf8();
      ::_exit(::write(rohr[1], pfad.constData(), static_cast<std::size_t>(pfad.size())) == pfad.size() ? 0 : 1);
    }
    EXPECT_EQ(::waitpid(kind, nullptr, 0), kind);
    QByteArray pfad(1000, '\0');
    pfad.truncate(::read(rohr[0], pfad.data(), 1000));
    ::close(rohr[0]);
    ::close(rohr[1]);
    return QString::fromUtf8(pfad).section(u'\\', -1);
  }
  Lauf antworte(const QString& antwort) const {
    return aufraeumen({}, ordner_.schreibe(u"antwort"_s, antwort.toUtf8()));
  }
  /// Everything below the root as the command names it.
  QStringList baum() const {
    QStringList pfade;
    QDirIterator lauf(wurzel(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (lauf.hasNext()) {
      const QString pfad = lauf.next().mid(wurzel().size() + 1).replace(u'/', u'\\');
      pfade.append(pfad + (lauf.fileInfo().isDir() ? u"\\"_s : QString()));
    }
    pfade.sort();
    return pfade;
  }
  const QStringList alles{u"Belege\\1\\b.jpg"_s, u"Belege\\1\\bjpg.txt"_s, u"Belege\\2\\c.jpg"_s, u"Belege\\2\\"_s};
};

TEST_F(KvobildAufraeumen, TheTrialOnlyShowsAndTheClearingDeletesExactlyThat) {
  const QString vorher = stand();
  const Lauf probe = aufraeumen({u"--probe"_s});
  EXPECT_EQ(probe.code, 0) << probe.meldungen.toStdString();
  EXPECT_EQ(probe.zeilen(), alles);
  EXPECT_EQ(stand(), vorher);
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen(), alles);
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s}));
  EXPECT_FALSE(QDir(wurzel() + u"/Belege/2"_s).exists());
  const Lauf noch_einmal = aufraeumen({u"--ja"_s});
  EXPECT_EQ(noch_einmal.code, 0);
  EXPECT_TRUE(noch_einmal.zeilen().isEmpty());
  EXPECT_TRUE(noch_einmal.meldungen.contains(u"nichts aufzuräumen"_s));
}

TEST_F(KvobildAufraeumen, WithoutAYesNothingHappens) {
  const QString vorher = stand();
  for (const QString& antwort : {u"\n"_s, u"nein\n"_s, u"jawohl\n"_s}) {
    const Lauf lauf = antworte(antwort);
    EXPECT_EQ(lauf.code, 1);
    EXPECT_EQ(lauf.zeilen(), alles) << "the list comes before the question";
    EXPECT_TRUE(lauf.meldungen.contains(u"(Dateien: 3, Ordner: 1, 3 Bytes)"_s)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(u"Nichts ist gelöscht"_s));
  }
  EXPECT_EQ(aufraeumen({}).code, 1) << "nobody there to answer";
  QFile::remove(ordner_.pfad(u"antwort"_s));
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAufraeumen, AYesToTheQuestionDeletes) {
  const Lauf lauf = antworte(u"Ja\n"_s);
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(dateien(), (QStringList{u"a.jpg"_s, u"ajpg.txt"_s}));
}

TEST_F(KvobildAufraeumen, TheListAndTheClearingAgreeFileByFile) {
  for (const char* name : {"oben.jpg", "Belege/1/A.JPG", "Belege/1/a.jpg.bak", "Belege/1/plan.v2.jpg",
           "Belege/1/ab.txt", "Belege/1/notes.txt", "Belege/1/fotojpeg.txt", "Belege/1/ohne_Punkt", "Belege/1/b\\x.jpg",
           "Belege/3/Tief/x.jpg", "Belege/3/Tief/xjpg.txt", "Belege/4/.jpg", "Belege/4/jpg.txt", "Belege/5/c.jpg",
           "Belege/5/C.jpg"})
    ordner_.schreibe(u"bild.ablage/"_s + QString::fromUtf8(name), "x");
  ASSERT_TRUE(QFile::link(ordner_.pfad(), wurzel() + u"/Belege/4/Verweis"_s));
  ordne_zu(u"Belege\\4"_s, {});
  const QStringList vorher = baum();
  const QStringList liste = aufraeumen({u"--probe"_s}).zeilen();
  EXPECT_EQ(baum(), vorher);
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen(), liste);
  QStringList weg = vorher;
  const QStringList nachher = baum();
  weg.removeIf([&](const QString& pfad) { return nachher.contains(pfad); });
  QStringList gelistet = liste;
  gelistet.sort();
  EXPECT_EQ(weg, gelistet);
  EXPECT_EQ(weg.size(), 16) << weg.join(u'\n').toStdString();
}

TEST_F(KvobildAufraeumen, WhereThePictureRootChangedDuringTheQuestionNothingHappens) {
  QProcess prozess;
  prozess.start(QStringLiteral(KVOBILD_PROGRAMM),
      {u"aufraeumen"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()});
  QByteArray frage;
  while (!frage.contains("ja") && prozess.waitForReadyRead(60'000)) {
    prozess.setReadChannel(QProcess::StandardError);
    frage += prozess.readAllStandardError();
  }
  ASSERT_TRUE(frage.contains("ja"));
  ordner_.schreibe(u"bild.ablage/Belege/1/neu.jpg"_s, "x");
  const QString vorher = stand();
  prozess.write("ja\n");
  prozess.closeWriteChannel();
  ASSERT_TRUE(prozess.waitForFinished(60'000));
  EXPECT_EQ(prozess.exitCode(), 1);
  EXPECT_TRUE(prozess.readAllStandardError().contains("inzwischen"));
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAufraeumen, AsJsonTheReasonIsThereToo) {
  const Lauf lauf = aufraeumen({u"--probe"_s, u"--json"_s});
  const QList<QJsonObject> posten = lauf.objekte();
  ASSERT_EQ(posten.size(), 4);
  const auto soll = [](const QString& pfad, const QString& art, const QString& grund) {
    return QJsonObject{{u"pfad"_s, pfad}, {u"art"_s, art}, {u"grund"_s, grund}};
  };
  EXPECT_EQ(posten[0], soll(u"Belege\\1\\b.jpg"_s, u"datei"_s, u"ohne_zuordnung"_s));
  EXPECT_EQ(posten[1], soll(u"Belege\\1\\bjpg.txt"_s, u"datei"_s, u"text_ohne_bild"_s));
  EXPECT_EQ(posten[3], soll(u"Belege\\2\\"_s, u"ordner"_s, u"leerer_ordner"_s));
}

TEST_F(KvobildAufraeumen, ASeparatorAtTheEndOfTheFolderMakesNoPictureFree) {
  for (const QString& ordner : {u"Belege"_s, u"Belege\\"_s, u"Belege/"_s, u"Belege\\\\"_s, u"\\Belege\\1\\..\\"_s}) {
    const Lauf lauf = aufraeumen({u"--probe"_s, u"--ordner"_s, ordner});
    if (ordner.contains(u".."_s))
      EXPECT_EQ(lauf.code, 2);
    else
      EXPECT_EQ(lauf.zeilen(), alles) << ordner.toStdString();
  }
  // A root with one is the same root.
  EXPECT_EQ(kvobild({u"aufraeumen"_s, u"--probe"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(),
                        u"--bilder"_s, wurzel() + u'/'})
                .zeilen(),
      alles);
}

TEST_F(KvobildAufraeumen, APictureInTheRootStaysWhereARowNamesItThere) {
  for (const char* name : {"oben.jpg", "frei.jpg"}) ordner_.schreibe(u"bild.ablage/"_s + QString::fromUtf8(name), "x");
  ordne_zu({}, u"oben"_s);
  EXPECT_EQ(aufraeumen({u"--probe"_s, u"--ordner"_s, u"Belege"_s}).zeilen(), alles);
  const Lauf ganz = aufraeumen({u"--ja"_s});
  EXPECT_EQ(ganz.zeilen(), alles + QStringList{u"frei.jpg"_s});
  EXPECT_TRUE(ganz.meldungen.contains(u"„oben.jpg“ bleibt: eine Zuordnung nennt den ganzen Namen.\n"_s))
      << ganz.meldungen.toStdString();
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/oben.jpg"_s));
}

TEST_F(KvobildAufraeumen, WhereTheWholePictureRootEmptiesTheRootItselfStays) {
  sql(u"delete from Bild_Zuordnungen"_s);
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen().last(), u"Belege\\"_s);
  EXPECT_TRUE(QDir(wurzel()).exists());
  EXPECT_TRUE(baum().isEmpty());
}

TEST_F(KvobildAufraeumen, APictureWithSeveralDotsStaysWhereARowNamesItInFull) {
  for (const char* name : {"IMG 2024-03-01 08.15.00.jpg", "IMG 2024-03-01 08.15.00jpg.txt", "IMG 08.16.00.jpg",
           "x.y.z.jpg", "o.n.a'me.jpg"})
    ordner_.schreibe(u"bild.ablage/Belege/1/"_s + QString::fromUtf8(name), "x");
  ordne_zu(u"Belege\\1"_s, u"IMG 2024-03-01 08.15.00"_s);
  ordne_zu(u"Belege\\2"_s, u"IMG 08.16.00"_s);
  ordne_zu(u"Belege\\1"_s, u"o.n.a''me"_s);
  sql(u"update Bild_Zuordnungen set Bildname = 'x.y', BildExt = 'z.jpg' where Bildname = 'IMG 08.16.00'"_s);
  sql(u"update Bild_Zuordnungen set BildPfad = 'Belege\\1' where Bildname = 'x.y'"_s);
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  QStringList weg = alles;
  weg.insert(0, u"Belege\\1\\IMG 08.16.00.jpg"_s);
  QStringList gegangen = lauf.zeilen();
  gegangen.sort();
  weg.sort();
  EXPECT_EQ(gegangen, weg);
  EXPECT_TRUE(lauf.meldungen.contains(
      u"„Belege\\1\\IMG 2024-03-01 08.15.00.jpg“ bleibt: eine Zuordnung nennt den ganzen Namen.\n"_s));
  EXPECT_TRUE(lauf.meldungen.contains(
      u"„Belege\\1\\IMG 2024-03-01 08.15.00jpg.txt“ bleibt: gehört zu einem Bild, das bleibt.\n"_s));
  EXPECT_EQ(dateien(),
      (QStringList{u"IMG 2024-03-01 08.15.00.jpg"_s, u"IMG 2024-03-01 08.15.00jpg.txt"_s, u"a.jpg"_s, u"ajpg.txt"_s,
          u"o.n.a'me.jpg"_s, u"x.y.z.jpg"_s}));
}

TEST_F(KvobildAufraeumen, TheTextOfAPictureWithAnExtensionOfFourLettersGoesAndStaysWithIt) {
  for (const char* name : {"Belege/1/foto.jpeg", "Belege/1/FotoJPEG.txt", "Belege/2/frei.heic", "Belege/2/freiheic.txt",
           "Belege/1/fehltjpeg.txt"})
    ordner_.schreibe(u"bild.ablage/"_s + QString::fromUtf8(name), "x");
  ordne_zu(u"Belege\\1"_s, u"foto"_s);
  sql(u"update Bild_Zuordnungen set BildExt = 'jpeg' where Bildname = 'foto'"_s);
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_TRUE(lauf.meldungen.contains(u"„Belege\\1\\FotoJPEG.txt“ bleibt: gehört zu einem Bild, das bleibt.\n"_s));
  EXPECT_EQ(dateien(), (QStringList{u"FotoJPEG.txt"_s, u"a.jpg"_s, u"ajpg.txt"_s, u"foto.jpeg"_s}));
  EXPECT_TRUE(lauf.zeilen().contains(u"Belege\\2\\freiheic.txt"_s)) << "its picture goes";
}

TEST_F(KvobildAufraeumen, WhatCameLessThanAnHourAgoStaysWithItsFoldersWhateverItsTimeStampSays) {
  QFile alt(ordner_.pfad(u"bild.ablage/Belege/2/c.jpg"_s));
  ASSERT_TRUE(alt.open(QIODevice::ReadWrite));
  ASSERT_TRUE(alt.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(8, 0)), QFile::FileModificationTime));
  alt.close();
  ASSERT_TRUE(QDir().mkpath(wurzel() + u"/Belege/eben"_s));
  const QStringList vorher = baum();
  for (const QStringList& mehr : {QStringList{}, {u"--schonfrist"_s, u"5"_s}}) {
    const Lauf lauf = kvobild(
        QStringList{u"aufraeumen"_s, u"--ja"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()} + mehr);
    EXPECT_EQ(lauf.code, 0);
    EXPECT_TRUE(lauf.zeilen().isEmpty()) << lauf.ausgabe.toStdString();
    for (const QString& pfad : {u"Belege\\2\\c.jpg"_s, u"Belege\\eben\\"_s})
      EXPECT_TRUE(lauf.meldungen.contains(u"„%1“ bleibt: eben erst dazugekommen.\n"_s.arg(pfad)))
          << lauf.meldungen.toStdString();
    EXPECT_EQ(baum(), vorher);
  }
  EXPECT_EQ(aufraeumen({u"--schonfrist"_s, u"-1"_s}).code, 2);
}

TEST_F(KvobildAufraeumen, WithoutAPictureRootOrADatabaseItRefuses) {
  const QString vorher = stand();
  const auto lauf = [&](const QString& db, const QString& bilder, const QStringList& mehr = {}) {
    return kvobild(QStringList{u"aufraeumen"_s, u"--ja"_s, u"--verbindung"_s, db, u"--bilder"_s, bilder} + mehr);
  };
  EXPECT_EQ(lauf(datenbank(), ordner_.pfad(u"fehlt"_s)).code, 4);
  EXPECT_EQ(lauf(datenbank(), wurzel(), {u"--ordner"_s, u"fehlt"_s}).code, 4);
  EXPECT_EQ(lauf(ordner_.pfad(u"fehlt.db"_s), wurzel()).code, 3);
  EXPECT_EQ(aufraeumen({u"--ja"_s, u"--probe"_s}).code, 2);
  EXPECT_EQ(stand(), vorher);
  sql(u"alter table Bild_Zuordnungen rename to Anderswo"_s);
  const Lauf ohne_Tabelle = lauf(datenbank(), wurzel());
  EXPECT_EQ(ohne_Tabelle.code, 3);
  EXPECT_TRUE(ohne_Tabelle.ausgabe.isEmpty());
  sql(u"alter table Anderswo rename to Bild_Zuordnungen"_s);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAufraeumen, AnEmptyPictureRootCountsAsNotMounted) {
  const QString leer = ordner_.pfad(u"leer"_s);
  ASSERT_TRUE(QDir().mkpath(leer));
  const Lauf lauf = kvobild({u"aufraeumen"_s, u"--ja"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, leer});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"eingehängt"_s)) << lauf.meldungen.toStdString();
  EXPECT_TRUE(QDir(leer).exists());
}

TEST_F(KvobildAufraeumen, WhatDeadProcessesLeftGoesSilentlyAndAContentWithoutItsFileComesBack) {
  const QString tot = u"bild.ablage/Belege/2/"_s + name_eines_Toten(u"neu.jpg"_s);
  const QString einzig =
      u"bild.ablage/Belege/1/"_s + name_eines_Toten(u"einzig.jpg"_s).replace(u"-e-einzig"_s, u"-f-einzig"_s);
  for (const QString& name : {tot, einzig}) ordner_.schreibe(name, "x");
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen().filter(u"kvo-"_s), QStringList());
  EXPECT_FALSE(lauf.meldungen.contains(u"kvo-"_s)) << lauf.meldungen.toStdString();
  EXPECT_FALSE(ordner_.vorhanden(tot));
  EXPECT_FALSE(ordner_.vorhanden(einzig));
  EXPECT_TRUE(lauf.zeilen().contains(u"Belege\\1\\einzig.jpg"_s)) << "it is a picture again, and has no row";
}

TEST_F(KvobildAufraeumen, ThePapierkorbOfAnotherRootInsideThisOneIsLeftAlone) {
  ordner_.schreibe(u"bild.ablage/Belege.papierkorb/2024-01-01_000000/1/alt.jpg"_s, "x");
  const Lauf lauf = aufraeumen({u"--ja"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen(), alles);
  EXPECT_TRUE(lauf.meldungen.contains(
      u"„Belege.papierkorb\\2024-01-01_000000\\1\\alt.jpg“ bleibt: liegt in einem Papierkorb.\n"_s))
      << lauf.meldungen.toStdString();
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege.papierkorb/2024-01-01_000000/1/alt.jpg"_s));
}
