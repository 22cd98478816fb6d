// Pictures that are taken into a record: what is copied, what is refused and in which words, and that nothing stays
// half done.
#include "tests/host/aufnahme/Aufnahmetest.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <csignal>

using namespace Qt::Literals::StringLiterals;

namespace {

class Aufnehmen : public Aufnahmetest {};

}  // namespace

TEST_F(Aufnehmen, PicturesAreCopiedUnderTheirStampAndGetRowsInTheirOrder) {
  const QString b = eingang(u"Übergabe b.jpg"_s, bild(1));
  eingang(u"Übergabe bjpg.txt"_s, "Text");
  const QDateTime zeit(QDate(2023, 3, 4), QTime(5, 6, 7));
  {
    QFile offen(b);
    ASSERT_TRUE(offen.open(QIODevice::ReadWrite));
    ASSERT_TRUE(offen.setFileTime(zeit, QFileDevice::FileModificationTime));
  }
  QByteArray png;
  QBuffer puffer(&png);
  ASSERT_TRUE(handyfoto::motiv({8, 8}).save(&puffer, "png"));
  const Aufnahmeergebnis ergebnis = nimm_auf({b, eingang(u"a.PNG"_s, png)});
  EXPECT_EQ(ergebnis.text(), u"2 Bilder zugeordnet."_s);
  const QStringList neue = zeilen();
  ASSERT_EQ(neue.size(), 2);
  EXPECT_TRUE(QRegularExpression(u"^Übergabe b\\d{8}_\\d{6}\\.jpg$"_s).match(neue[0]).hasMatch())
      << neue[0].toStdString();
  EXPECT_TRUE(neue[1].startsWith(u'a') && neue[1].endsWith(u".PNG"_s)) << neue[1].toStdString();
  EXPECT_EQ(datei(neue[0]), bild(1));
  EXPECT_EQ(datei(neue[1]), png);
  EXPECT_EQ(QFileInfo(ablage_.pfad(u"Belege/1/"_s + neue[0])).lastModified(), zeit);
  EXPECT_EQ(datei(QString(neue[0]).replace(u".jpg"_s, u"jpg.txt"_s)), "Text");
  EXPECT_EQ(dateien().size(), 3);
  EXPECT_EQ(eingang_.lies(u"Übergabe b.jpg"_s), bild(1)) << "the source stays";
}

TEST_F(Aufnehmen, NewPicturesStandBehindTheOldOnes) {
  ASSERT_EQ(nimm_auf({eingang(u"a.jpg"_s, bild(1))}).bilder.size(), 1U);
  ASSERT_EQ(nimm_auf({eingang(u"b.jpg"_s, bild(2))}).bilder.size(), 1U);
  const QStringList alle = zeilen();
  ASSERT_EQ(alle.size(), 2);
  EXPECT_TRUE(alle[0].startsWith(u'a') && alle[1].startsWith(u'b'));
}

TEST_F(Aufnehmen, TwoPicturesOfOneNameStayTwoAndALongNameIsCut) {
  const QString lang = QString(60, u'x') + u".jpg"_s;
  const Aufnahmeergebnis ergebnis =
      nimm_auf({eingang(u"1/foto.jpg"_s, bild(1)), eingang(u"2/foto.jpg"_s, bild(2)), eingang(lang, bild(3))});
  EXPECT_EQ(ergebnis.bilder.size(), 3U);
  EXPECT_EQ(QStringList(dateien()).removeDuplicates(), 0);
  const QStringList alle = zeilen();
  ASSERT_EQ(alle.size(), 3);
  EXPECT_EQ(datei(alle[0]), bild(1));
  EXPECT_EQ(datei(alle[1]), bild(2));
  EXPECT_EQ(alle[2].size(), 54);
}

TEST_F(Aufnehmen, WhatIsNoPictureIsNamedWithItsReasonAndTheRestIsAttached) {
  const QString leitung = eingang_.pfad(u"leitung.jpg"_s);
  ASSERT_EQ(::mkfifo(QFile::encodeName(leitung).constData(), 0600), 0);
  const QString verweis = eingang_.pfad(u"verweis.jpg"_s);
  ASSERT_TRUE(QFile::link(eingang_.pfad(u"weg.jpg"_s), verweis));
  const QString heiler_Verweis = eingang_.pfad(u"heil.jpg"_s);
  ASSERT_TRUE(QFile::link(eingang(u"ziel.jpg"_s, bild(1)), heiler_Verweis));
  eingang(u"ordner.jpg/innen.jpg"_s, bild(2));
  eingang(u"a/b.jpg"_s, bild(4));
  const QList<QPair<QString, QString>> faelle{{eingang_.pfad(u"ordner.jpg"_s), u"ist ein Ordner"_s},
      {verweis, u"ist eine Verknüpfung, die ins Leere führt"_s}, {eingang_.pfad(u"fehlt.jpg"_s), u"gibt es nicht"_s},
      {leitung, u"ist keine Datei, sondern ein Gerät oder eine Leitung"_s},
      {eingang(u"notiz.txt"_s, "x"), u"ist eine Textdatei und kein Bild"_s},
      {eingang(u"brief.pdf"_s, "%PDF-1.4"), u"kein Bild eines bekannten Formats"_s},
      {eingang(u"leer.jpg"_s, {}), u"kein Bild eines bekannten Formats"_s},
      {eingang(u"halb.jpg"_s, bild().left(60)), u"Der Kopf des Bildes ist beschädigt"_s},
      {eingang(u"ohne"_s, bild()), u"keinen Namen mit einer Endung"_s},
      {eingang(u"o'neil.jpg"_s, bild()), u"Hochkomma"_s}, {eingang(u"a:b.jpg"_s, bild()), u"nicht erlaubt"_s},
      {eingang(u"a\\b.jpg"_s, bild(3)), u"ist kein bloßer Dateiname"_s},
      {eingang(u"film.mp4"_s,
           QByteArray("\0\0\0\x18"
                      "ftypisom\0\0\2\0isommp42",
               24)),
          u"kein Bild"_s}};
  QStringList namen{heiler_Verweis};
  for (const auto& [name, grund] : faelle) namen.append(name);
  const Aufnahmeergebnis ergebnis = nimm_auf(namen);
  ASSERT_EQ(ergebnis.probleme.size(), faelle.size());
  for (qsizetype i = 0; i < faelle.size(); ++i)
    EXPECT_TRUE(ergebnis.probleme[i].contains(faelle[i].second)) << ergebnis.probleme[i].toStdString();
  EXPECT_EQ(ergebnis.bilder.size(), 1U);
  EXPECT_EQ(zeilen().size(), 1);
  EXPECT_EQ(dateien(), zeilen());
  EXPECT_TRUE(ergebnis.text().startsWith(u"1 Bild zugeordnet. NICHT zugeordnet: 13 – „"_s))
      << ergebnis.text().toStdString();
}

TEST_F(Aufnehmen, AFileWithoutTheRightToReadIsNamed) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
  const QString geheim = eingang(u"geheim.jpg"_s, bild());
  ASSERT_TRUE(QFile::setPermissions(geheim, {}));
  const Aufnahmeergebnis ergebnis = nimm_auf({geheim});
  ASSERT_EQ(ergebnis.probleme.size(), 1);
  EXPECT_FALSE(hat_Ordner());
}

TEST_F(Aufnehmen, WhereNothingIsTakenInNoFolderStays) {
  const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"notiz.txt"_s, "x")});
  EXPECT_TRUE(ergebnis.text().startsWith(u"Nichts zugeordnet. "_s)) << ergebnis.text().toStdString();
  EXPECT_FALSE(hat_Ordner());
  // One that was there is not ours to delete.
  ASSERT_TRUE(QDir(ablage_.pfad()).mkpath(u"Belege/1"_s));
  nimm_auf({eingang(u"notiz.txt"_s, "x")});
  EXPECT_TRUE(hat_Ordner());
}

TEST_F(Aufnehmen, PhonePicturesStandUprightWhateverTheirMark) {
  for (int marke = 1; marke <= 8; ++marke) {
    const QByteArray quelle = handyfoto::foto({61, 45}, marke, exifschreiber::Bytefolge::Gross);
    const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"foto.jpg"_s, quelle)});
    ASSERT_EQ(ergebnis.bilder.size(), 1U) << marke;
    const QByteArray kopie = datei(ergebnis.bilder[0].bild.datei());
    EXPECT_TRUE(handyfoto::steht_aufrecht(kopie, quelle)) << marke;
    EXPECT_EQ(kopie == quelle, marke == 1);
    EXPECT_EQ(eingang_.lies(u"foto.jpg"_s), quelle) << "the source lies as it lay";
  }
}

TEST_F(Aufnehmen, AsTheyCameWhenTheUserWantsThatSo) {
  const QByteArray quelle = handyfoto::foto({64, 48}, 6);
  const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"foto.jpg"_s, quelle)}, {false, {}, {}});
  ASSERT_EQ(ergebnis.bilder.size(), 1U);
  EXPECT_EQ(datei(ergebnis.bilder[0].bild.datei()), quelle);
}

TEST_F(Aufnehmen, ATurnedCopyKeepsTheTimeOfItsSourceAndAReadOnlyOneIsNoObstacle) {
  const QString quelle = eingang(u"foto.jpg"_s, handyfoto::foto({64, 48}, 6));
  ASSERT_EQ(::chmod(QFile::encodeName(quelle).constData(), 0444), 0);
  const Aufnahmeergebnis ergebnis = nimm_auf({quelle});
  ASSERT_EQ(ergebnis.bilder.size(), 1U);
  const QFileInfo kopie(ablage_.pfad(u"Belege/1/"_s + ergebnis.bilder[0].bild.datei()));
  EXPECT_EQ(kopie.lastModified(), QFileInfo(quelle).lastModified());
}

TEST_F(Aufnehmen, WhatTheRecordHasAlreadyIsAskedAboutOnce) {
  QStringList gefragt;
  bool antwort = false;
  const auto frage = [&](const QString& name) {
    gefragt.append(name);
    return antwort;
  };
  const Aufnahme::Regeln regeln{true, {}, frage};
  const QString a = eingang(u"a.jpg"_s, handyfoto::foto({64, 48}, 6));
  const QString b = eingang(u"b.jpg"_s, bild(2));
  ASSERT_EQ(nimm_auf({a, b}, regeln).bilder.size(), 2U);
  EXPECT_TRUE(gefragt.isEmpty());
  // A turned copy is known again by its source, under whatever name.
  const QString c = eingang(u"c.jpg"_s, handyfoto::foto({64, 48}, 6));
  const Aufnahmeergebnis nein =
      nimm_auf({c, b, eingang(u"neu.jpg"_s, bild(3)), eingang(u"neu2.jpg"_s, bild(3))}, regeln);
  EXPECT_EQ(gefragt, QStringList{c});
  EXPECT_EQ(nein.uebersprungene, 3) << "two of one content that come together are the same too";
  EXPECT_EQ(nein.text(), u"1 Bild zugeordnet. Schon da und übersprungen: 3."_s);
  EXPECT_EQ(zeilen().size(), 3);
  antwort = true;
  gefragt.clear();
  EXPECT_EQ(nimm_auf({c, b}, regeln).bilder.size(), 2U);
  EXPECT_EQ(gefragt.size(), 1);
  EXPECT_EQ(zeilen().size(), 5);
}

TEST_F(Aufnehmen, AFileThatVanishesIsNamedAndLeavesNothing) {
  const QString a = eingang(u"a.jpg"_s, bild(1));
  const QString b = eingang(u"b.jpg"_s, bild(2));
  ASSERT_EQ(nimm_auf({a}).bilder.size(), 1U);
  const QStringList vorher = dateien();
  // Between its reading and its copying, and before either.
  const Aufnahme::Regeln regeln{true, [&](int fertige, int) { return fertige == 0 || QFile::remove(b); },
      [&](const QString&) { return QFile::remove(a); }};
  const Aufnahmeergebnis ergebnis = nimm_auf({a, b}, regeln);
  ASSERT_EQ(ergebnis.probleme.size(), 2);
  EXPECT_TRUE(ergebnis.probleme[0].contains(u"ist nicht nach „P:\\Belege\\1\\a"_s))
      << ergebnis.probleme[0].toStdString();
  EXPECT_TRUE(ergebnis.probleme[1].contains(u"gibt es nicht"_s)) << ergebnis.probleme[1].toStdString();
  EXPECT_EQ(dateien(), vorher);
  EXPECT_EQ(zeilen().size(), 1);
}

TEST_F(Aufnehmen, StoppedItAttachesWhatIsCopiedAndNothingElse) {
  QStringList viele;
  for (int i = 0; i < 130; ++i) viele.append(eingang(u"b%1.jpg"_s.arg(i, 3, 10, QChar(u'0')), bild(i)));
  const Aufnahmeergebnis ergebnis =
      nimm_auf(viele, {true, [](int fertige, int alle) { return alle == 130 && fertige < 70; }, {}});
  EXPECT_TRUE(ergebnis.angehalten);
  EXPECT_EQ(ergebnis.text(), u"Angehalten: 70 von 130 Bildern zugeordnet."_s);
  EXPECT_EQ(zeilen().size(), 70);
  QStringList namen = zeilen();
  namen.sort();
  EXPECT_EQ(dateien(), namen);
  EXPECT_EQ(nimm_auf(viele, {true, [](int, int) { return false; }, {}}).bilder.size(), 0U);
}

TEST_F(Aufnehmen, WhereTheTableTakesNothingNoCopyStays) {
  sql(u"CREATE TRIGGER voll BEFORE INSERT ON Bild_Zuordnungen BEGIN SELECT RAISE(ABORT, 'voll'); END"_s);
  QStringList viele;
  for (int i = 0; i < 120; ++i) viele.append(eingang(u"b%1.jpg"_s.arg(i), bild(i)));
  const Aufnahmeergebnis ergebnis = nimm_auf(viele);
  sql(u"DROP TRIGGER voll"_s);
  EXPECT_EQ(ergebnis.bilder.size(), 0U);
  EXPECT_EQ(ergebnis.probleme.size(), static_cast<qsizetype>(Aufnahme::Portion)) << "the rest is not tried";
  EXPECT_TRUE(ergebnis.probleme[0].contains(u"voll"_s)) << ergebnis.probleme[0].toStdString();
  EXPECT_FALSE(hat_Ordner());
  EXPECT_FALSE(berichte_.hole().isEmpty());
}

TEST_F(Aufnehmen, WhereTheTableTakesAPartTheFilesOfThatPartStay) {
  sql(u"CREATE TRIGGER halb BEFORE INSERT ON Bild_Zuordnungen WHEN NEW.Bildname LIKE 'b%' "
      u"BEGIN SELECT RAISE(ABORT, 'kein b'); END"_s);
  const Aufnahmeergebnis ergebnis =
      nimm_auf({eingang(u"a.jpg"_s, bild(1)), eingang(u"b.jpg"_s, bild(2)), eingang(u"c.jpg"_s, bild(3))});
  sql(u"DROP TRIGGER halb"_s);
  EXPECT_EQ(ergebnis.bilder.size(), 2U);
  EXPECT_EQ(dateien(), zeilen());
  ASSERT_EQ(ergebnis.probleme.size(), 1);
  EXPECT_TRUE(ergebnis.probleme[0].startsWith(u"„b.jpg“ ist nicht gespeichert: "_s))
      << ergebnis.probleme[0].toStdString();
  berichte_.hole();
}

TEST_F(Aufnehmen, ADatabaseThatCanNotBeReadIsToldAndNothingIsCopied) {
  nimm_Tabelle_weg();
  const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"a.jpg"_s, bild())});
  gib_Tabelle_zurueck();
  ASSERT_EQ(ergebnis.probleme.size(), 1);
  EXPECT_TRUE(ergebnis.probleme[0].contains(u"sind nicht zu lesen"_s));
  EXPECT_FALSE(hat_Ordner());
}

TEST_F(Aufnehmen, ARecordWithAnApostropheIsRefusedAsForEditing) {
  sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
      u"VALUES ('XY','1','-','-','o''neil','jpg','BEL','-','Belege\\1',0)"_s);
  const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"a.jpg"_s, bild())});
  ASSERT_EQ(ergebnis.probleme.size(), 1);
  EXPECT_TRUE(ergebnis.probleme[0].contains(u"Hochkomma"_s));
  EXPECT_EQ(zeilen().size(), 1);
  EXPECT_FALSE(hat_Ordner());
}

TEST_F(Aufnehmen, AFileInTheFoldersPlaceIsTold) {
  ablage_.schreibe(u"Belege/1"_s, "im Weg");
  const Aufnahmeergebnis ergebnis = nimm_auf({eingang(u"a.jpg"_s, bild())});
  ASSERT_EQ(ergebnis.probleme.size(), 1);
  EXPECT_TRUE(ergebnis.probleme[0].contains(u"nicht anzulegen"_s));
  EXPECT_TRUE(zeilen().isEmpty());
}

TEST_F(Aufnehmen, ADiskThatTakesNoMoreLeavesNoHalfCopy) {
  QImage rauschen(600, 400, QImage::Format_RGB32);
  for (int y = 0; y < 400; ++y)
    for (int x = 0; x < 600; ++x) rauschen.setPixel(x, y, qRgb(x * y % 251, x * 7 % 253, y * x * 3 % 241));
  const QByteArray grosses = handyfoto::jpeg(rauschen, 100);
  const QByteArray liegend =
      exifschreiber::mit_Exif(grosses, handyfoto::aufnahme({600, 400}, 6), exifschreiber::Bytefolge::Klein);
  const QStringList namen{eingang(u"gross.jpg"_s, grosses), eingang(u"liegend.jpg"_s, liegend),
      eingang(u"mit Text.jpg"_s, bild(1)), eingang(u"klein.jpg"_s, bild())};
  eingang(u"mit Textjpg.txt"_s, QByteArray(70'000, 'x'));
  struct rlimit vorher {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &vorher), 0);
  const auto alter = std::signal(SIGXFSZ, SIG_IGN);
  // The database's own files are larger than this only when something is written to them.
  struct rlimit enge = vorher;
  enge.rlim_cur = 60'000;
  Aufnahmeergebnis ergebnis;
  const auto wechsle = [&](int fertige, int) {
    enge.rlim_cur = fertige < 3 ? 60'000 : vorher.rlim_cur;
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &enge), 0);
    return true;
  };
  const Aufnahme::Regeln regeln{true, wechsle, {}};
  ergebnis = nimm_auf(namen, regeln);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &vorher), 0);
  std::signal(SIGXFSZ, alter);
  EXPECT_EQ(ergebnis.probleme.size(), 3) << ergebnis.probleme.join(u'\n').toStdString();
  EXPECT_EQ(ergebnis.bilder.size(), 1U);
  EXPECT_EQ(dateien(), zeilen());
  EXPECT_EQ(QDir(ablage_.pfad(u"Belege/1"_s)).entryList(QDir::Files | QDir::Hidden).size(), 1)
      << "nothing is left beside";
}

TEST_F(Aufnehmen, PixelsBecomeAJpegOnWhite) {
  QImage pixel(40, 30, QImage::Format_ARGB32);
  pixel.fill(Qt::transparent);
  for (int x = 0; x < 20; ++x)
    for (int y = 0; y < 30; ++y) pixel.setPixelColor(x, y, Qt::red);
  const Aufnahmeergebnis ergebnis = nimm_Pixel_auf(pixel);
  ASSERT_EQ(ergebnis.bilder.size(), 1U);
  const QString name = ergebnis.bilder[0].bild.datei();
  EXPECT_TRUE(QRegularExpression(u"^Einfuegung_\\d{8}_\\d{6}\\.jpg$"_s).match(name).hasMatch()) << name.toStdString();
  const QImage bild = handyfoto::gelesen(datei(name), false);
  EXPECT_EQ(bild.size(), QSize(40, 30));
  EXPECT_GT(qBlue(bild.pixel(35, 15)), 240);
  EXPECT_LT(qBlue(bild.pixel(5, 15)), 40);
  struct stat info {};
  ASSERT_EQ(::stat(QFile::encodeName(ablage_.pfad(u"Belege/1/"_s + name)).constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0444, 0444U) << "the other desks read it too";
}

TEST_F(Aufnehmen, FiveThousandFilesAreAllAnswered) {
  QStringList viele;
  for (int i = 0; i < 5000; ++i)
    viele.append(eingang(u"b%1.jpg"_s.arg(i), i % 25 == 0 ? bild(i / 25) : QByteArray("kein Bild")));
  int gefragt = 0;
  const Aufnahmeergebnis ergebnis = nimm_auf(viele, {true, [&](int, int) { return ++gefragt > 0; }, {}});
  EXPECT_EQ(gefragt, 5000);
  EXPECT_EQ(ergebnis.bilder.size(), 200U);
  EXPECT_EQ(ergebnis.probleme.size(), 4800);
  EXPECT_TRUE(ergebnis.text().startsWith(u"200 Bilder zugeordnet. NICHT zugeordnet: 4.800 – „"_s))
      << ergebnis.text().toStdString();
  QStringList namen = zeilen();
  namen.sort();
  EXPECT_EQ(dateien(), namen);
}
