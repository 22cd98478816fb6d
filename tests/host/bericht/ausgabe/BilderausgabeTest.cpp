// The pictures of a record handed out: names, order, texts, and that nothing is replaced or left half.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <memory>

#include "host/bericht/ausgabe/Ausgabeeinstellung.h"
#include "host/bericht/ausgabe/Bilderausgabe.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "tests/host/bericht/ausgabe/Ortsbild.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// No file of this process grows beyond that, as on a disk without room.
class VollePlatte {
 public:
  explicit VollePlatte(rlim_t groesste) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &vorher_);
    const rlimit neu{groesste, vorher_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &neu);
  }
  ~VollePlatte() { ::setrlimit(RLIMIT_FSIZE, &vorher_); }
  VollePlatte(const VollePlatte&) = delete;
  VollePlatte& operator=(const VollePlatte&) = delete;

 private:
  rlimit vorher_{};
};

struct Eintrag {
  QString name;
  QByteArray inhalt;
  bool gespeichert = false;
  QDateTime zeit;
};

QList<Eintrag> lies_Zip(const QString& datei) {
  QList<Eintrag> alle;
  const std::unique_ptr<zip_t, int (*)(zip_t*)> zip(
      ::zip_open(datei.toUtf8().constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr), ::zip_close);
  EXPECT_NE(zip, nullptr) << datei.toStdString();
  for (zip_int64_t i = 0; zip && i < ::zip_get_num_entries(zip.get(), 0); ++i) {
    zip_stat_t stat;
    EXPECT_EQ(::zip_stat_index(zip.get(), static_cast<zip_uint64_t>(i), 0, &stat), 0);
    QByteArray bytes(static_cast<qsizetype>(stat.size), '\0');
    zip_file_t* inhalt = ::zip_fopen_index(zip.get(), static_cast<zip_uint64_t>(i), 0);
    EXPECT_EQ(::zip_fread(inhalt, bytes.data(), stat.size), static_cast<zip_int64_t>(stat.size));
    EXPECT_EQ(::zip_fclose(inhalt), 0);
    alle.append({QString::fromUtf8(stat.name), bytes, stat.comp_method == ZIP_CM_STORE,
        QDateTime::fromSecsSinceEpoch(stat.mtime)});
  }
  return alle;
}

/// Pictures of one record below P:, without a database: the store's rows are what counts.
class Ausgeben : public ::testing::Test {
 protected:
  Ausgeben() { store_.FKT_Neu(); }

  void zeile(const QString& name, const QString& ext, const QString& ordner, const QString& drucktext = {}) {
    ASSERT_TRUE(store_.FKT_NeuesBild(u"AB"_s, u"1"_s, u"-"_s, u"-"_s, name, ext, u"BEL"_s, u"-"_s));
    store_.Bild_Pfad(ordner);
    store_.Bild_Beschreibung(drucktext);
  }
  /// A row and its file.
  void bild(const QString& name, const QByteArray& inhalt, const QString& ordner = u"Belege"_s,
      const QString& drucktext = {}) {
    zeile(name, u"jpg"_s, ordner, drucktext);
    ablage_.schreibe(QString(ordner).replace(u'\\', u'/') + u'/' + name + u".jpg"_s, inhalt);
  }
  Ausgabeergebnis gib_aus(const QString& ziel, const Ausgabewahl& wahl = {}, const Bildleser::Fortschritt& f = {}) {
    return Bilderausgabe(store_, u"P:"_s, wahl).gib_aus(namen::tabellenpfad(ziel_.pfad(ziel)), f);
  }
  /// The words with which it ends.
  QString scheitert(const QString& ziel, const Ausgabewahl& wahl = {}) {
    try {
      gib_aus(ziel, wahl);
    } catch (const Abbruch& abbruch) {
      return abbruch.text();
    }
    ADD_FAILURE() << "it did not fail";
    return {};
  }
  QStringList inhalt(const QString& ordner = {}) const {
    return QDir(ziel_.pfad(ordner)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
  }
  static QStringList namen_in(const QList<Eintrag>& eintraege) {
    QStringList namen;
    for (const Eintrag& eintrag : eintraege) namen.append(eintrag.name);
    return namen;
  }

  Bildwurzel ablage_;
  Testordner ziel_;
  clsBildZuordnungen store_;
  CoreDoppel berichte_;
  MeldungsDoppel meldungen_;
};

const QByteArray Gross = QByteArray(300'000, 'g');

}  // namespace

TEST_F(Ausgeben, TheOriginalsStandInTheOrderOfTheStripNumbered) {
  bild(u"Keller"_s, "k");
  bild(u"Bad"_s, "b");
  bild(u"Bad"_s, "anderes", u"Anlagen\\2"_s);
  const QDateTime damals(QDate(2019, 3, 4), QTime(5, 6, 7));
  QFile datei(ablage_.pfad(u"Belege/Keller.jpg"_s));
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite) && datei.setFileTime(damals, QFileDevice::FileModificationTime));
  datei.close();
  const Ausgabeergebnis ergebnis = gib_aus(u"neu/fuer Müller"_s);
  EXPECT_EQ(ergebnis.bilder, 3);
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_EQ(ergebnis.text(), u"3 Bilder ausgegeben nach „%1“."_s.arg(ziel_.pfad(u"neu/fuer Müller"_s)));
  EXPECT_EQ(inhalt(u"neu/fuer Müller"_s), (QStringList{u"01_Keller.jpg"_s, u"02_Bad.jpg"_s, u"03_Bad.jpg"_s}));
  EXPECT_EQ(ziel_.lies(u"neu/fuer Müller/02_Bad.jpg"_s), "b");
  EXPECT_EQ(ziel_.lies(u"neu/fuer Müller/03_Bad.jpg"_s), "anderes");
  EXPECT_EQ(QFileInfo(ziel_.pfad(u"neu/fuer Müller/01_Keller.jpg"_s)).lastModified(), damals);
}

TEST_F(Ausgeben, AHundredPicturesHaveThreeDigits) {
  for (int i = 1; i <= 100; ++i) bild(u"B%1"_s.arg(i), "x");
  EXPECT_EQ(gib_aus(u"ziel"_s).bilder, 100);
  EXPECT_EQ(inhalt(u"ziel"_s).first(), u"001_B1.jpg"_s);
  EXPECT_EQ(inhalt(u"ziel"_s).last(), u"100_B100.jpg"_s);
}

TEST_F(Ausgeben, OnlyTheMarkedOnesOnDemand) {
  bild(u"a"_s, "1");
  store_.Bild_Drucken(false);
  bild(u"b"_s, "2");
  EXPECT_EQ(gib_aus(u"ziel"_s, {false, true, false}).bilder, 1);
  EXPECT_EQ(inhalt(u"ziel"_s), QStringList{u"01_b.jpg"_s});
  store_.Bild_Drucken(false);
  EXPECT_EQ(scheitert(u"zweites"_s, {false, true, false}), u"Kein Bild des Vorgangs ist zum Drucken gekennzeichnet."_s);
  store_.FKT_Neu();
  EXPECT_EQ(scheitert(u"zweites"_s), u"Der Vorgang hat keine Bilder."_s);
}

TEST_F(Ausgeben, TheTextsLieBesideInUtf8WithTheDrucktextInFront) {
  bild(u"a"_s, "1", u"Belege"_s, u"Übergabe\r\nan Müller"_s);
  bild(u"b"_s, "2", u"Belege"_s, u"nur Druck"_s);
  bild(u"c"_s, "3");
  bild(u"d"_s, "4", u"Belege"_s, u"  "_s);
  ablage_.schreibe(u"Belege/ajpg.txt"_s, "Kessel \x80 5\r\nzweite");
  ablage_.schreibe(u"Belege/djpg.txt"_s, "nur Information\n");
  ASSERT_TRUE(gib_aus(u"ziel"_s, {true, false, false}).vollstaendig());
  EXPECT_EQ(inhalt(u"ziel"_s),
      (QStringList{
          u"01_a.jpg"_s, u"01_a.txt"_s, u"02_b.jpg"_s, u"02_b.txt"_s, u"03_c.jpg"_s, u"04_d.jpg"_s, u"04_d.txt"_s}));
  EXPECT_EQ(
      QString::fromUtf8(ziel_.lies(u"ziel/01_a.txt"_s)), u"Übergabe\r\nan Müller\r\n\r\nKessel € 5\r\nzweite\r\n"_s);
  EXPECT_EQ(ziel_.lies(u"ziel/02_b.txt"_s), "nur Druck\r\n");
  EXPECT_EQ(ziel_.lies(u"ziel/04_d.txt"_s), "nur Information\r\n");
  gib_aus(u"ohne"_s);
  EXPECT_EQ(inhalt(u"ohne"_s).filter(u".txt"_s), QStringList());
}

TEST_F(Ausgeben, NoNameLeavesTheTargetOrIsImpossibleElsewhere) {
  zeile(u"..\\..\\fort"_s, u"jpg"_s, u"Belege"_s);
  ablage_.schreibe(u"fort.jpg"_s, "1");
  zeile(u"a\"b"_s, u"jpg"_s, u"Belege"_s);
  ablage_.schreibe(u"Belege/a\"b.jpg"_s, "2");
  zeile(u"Liste"_s, u"TXT"_s, u"Belege"_s, u"Druck"_s);
  ablage_.schreibe(u"Belege/Liste.TXT"_s, "3");
  gib_aus(u"ziel"_s, {true, false, false});
  EXPECT_EQ(inhalt(), QStringList{u"ziel"_s});
  const QStringList namen = inhalt(u"ziel"_s);
  EXPECT_TRUE(namen.contains(u"03_Liste.TXT"_s) && namen.contains(u"03_Liste.TXT.txt"_s))
      << namen.join(u' ').toStdString();
  for (const QString& name : namen) EXPECT_FALSE(name.contains(u'"') || name.contains(u'\\')) << name.toStdString();
}

TEST_F(Ausgeben, WhereANameIsTakenNothingAtAllIsWritten) {
  bild(u"a"_s, "1", u"Belege"_s, u"Text"_s);
  bild(u"b"_s, "2");
  // On the customer's share the case of letters does not count.
  ziel_.schreibe(u"ziel/02_B.JPG"_s, "alt");
  EXPECT_EQ(scheitert(u"ziel"_s),
      u"„02_b.jpg“ gibt es im Ordner „%1“ schon; es ist nichts ausgegeben."_s.arg(ziel_.pfad(u"ziel"_s)));
  EXPECT_EQ(inhalt(u"ziel"_s), QStringList{u"02_B.JPG"_s});
  EXPECT_EQ(ziel_.lies(u"ziel/02_B.JPG"_s), "alt");
  ziel_.schreibe(u"mit Text/01_a.txt/x"_s, "Ordner");
  EXPECT_TRUE(scheitert(u"mit Text"_s, {true, false, false}).startsWith(u"„01_a.txt“ gibt es"_s));
  EXPECT_EQ(inhalt(u"mit Text"_s), QStringList{u"01_a.txt"_s});
  ziel_.schreibe(u"datei"_s, "alt");
  EXPECT_TRUE(scheitert(u"datei"_s).contains(u"ist eine Datei"_s));
  ziel_.schreibe(u"liste.ZIP"_s, "alt");
  EXPECT_EQ(
      scheitert(u"liste.ZIP"_s), u"„%1“ gibt es schon; es ist nichts ausgegeben."_s.arg(ziel_.pfad(u"liste.ZIP"_s)));
  EXPECT_EQ(ziel_.lies(u"liste.ZIP"_s), "alt");
  EXPECT_EQ(scheitert(u"fehlt/liste.zip"_s), u"Den Ordner „%1“ gibt es nicht."_s.arg(ziel_.pfad(u"fehlt"_s)));
}

TEST_F(Ausgeben, AMissingPictureIsNamedAndTheOthersKeepTheirNumbers) {
  bild(u"a"_s, "1");
  zeile(u"weg"_s, u"jpg"_s, u"Belege"_s, u"Text"_s);
  QDir(ablage_.pfad()).mkpath(u"Belege/ordner.jpg"_s);
  zeile(u"ordner"_s, u"jpg"_s, u"Belege"_s);
  bild(u"z"_s, "2");
  for (const QString& ziel : {u"ziel"_s, u"ziel.zip"_s}) {
    const Ausgabeergebnis ergebnis = gib_aus(ziel, {true, false, false});
    EXPECT_EQ(ergebnis.bilder, 2);
    EXPECT_FALSE(ergebnis.vollstaendig());
    ASSERT_EQ(ergebnis.ausgelassene.size(), 2U);
    EXPECT_EQ(ergebnis.ausgelassene[0].name, u"Belege\\weg.jpg"_s);
    EXPECT_EQ(ergebnis.ausgelassene[0].grund, u"Die Datei fehlt in der Bildablage."_s);
    EXPECT_EQ(ergebnis.ausgelassene[1].name, u"Belege\\ordner.jpg"_s);
    EXPECT_TRUE(ergebnis.text().endsWith(u" NICHT ausgegeben: 2."_s));
  }
  EXPECT_EQ(inhalt(u"ziel"_s), (QStringList{u"01_a.jpg"_s, u"04_z.jpg"_s}));
  const auto gepackt = lies_Zip(ziel_.pfad(u"ziel.zip"_s));
  EXPECT_EQ(namen_in(gepackt), (QStringList{u"01_a.jpg"_s, u"04_z.jpg"_s}));
  EXPECT_EQ(gepackt[1].inhalt, "2");
  EXPECT_EQ(inhalt(), (QStringList{u"ziel"_s, u"ziel.zip"_s}));
}

TEST_F(Ausgeben, WithoutAnyPictureThereIsNoTarget) {
  zeile(u"weg"_s, u"jpg"_s, u"Belege"_s);
  for (const QString& ziel : {u"neu/ziel"_s, u"ziel.zip"_s}) {
    const Ausgabeergebnis ergebnis = gib_aus(ziel);
    EXPECT_EQ(ergebnis.bilder, 0);
    EXPECT_EQ(ergebnis.ausgelassene.size(), 1U);
    EXPECT_EQ(ergebnis.text(), u"Es ist nichts ausgegeben."_s);
    EXPECT_EQ(inhalt(), QStringList());
  }
}

TEST_F(Ausgeben, AZipHoldsNamesInUtf8PicturesAsTheyAreAndTheirTimes) {
  bild(u"Gästebad €"_s, "1", u"Belege"_s, u"Maß"_s);
  zeile(u"Plan"_s, u"bmp"_s, u"Belege"_s);
  ablage_.schreibe(u"Belege/Plan.bmp"_s, Gross);
  const QDateTime damals(QDate(2019, 3, 4), QTime(5, 6, 8));
  QFile datei(ablage_.pfad(u"Belege/Gästebad €.jpg"_s));
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite) && datei.setFileTime(damals, QFileDevice::FileModificationTime));
  datei.close();
  const Ausgabeergebnis ergebnis = gib_aus(u"für Öztürk.Zip"_s, {true, false, false});
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_EQ(inhalt(), QStringList{u"für Öztürk.Zip"_s});
  const auto gepackt = lies_Zip(ziel_.pfad(u"für Öztürk.Zip"_s));
  EXPECT_EQ(namen_in(gepackt), (QStringList{u"01_Gästebad €.jpg"_s, u"01_Gästebad €.txt"_s, u"02_Plan.bmp"_s}));
  EXPECT_EQ(gepackt[0].inhalt, "1");
  EXPECT_TRUE(gepackt[0].gespeichert);
  EXPECT_EQ(gepackt[0].zeit, damals);
  EXPECT_EQ(gepackt[1].inhalt, u"Maß\r\n"_s.toUtf8());
  EXPECT_EQ(gepackt[2].inhalt, Gross);
  EXPECT_FALSE(gepackt[2].gespeichert);
  EXPECT_LT(QFileInfo(ziel_.pfad(u"für Öztürk.Zip"_s)).size(), 10'000);
  // The bit that tells other programs so: bit 11 of the flags of the first local header.
  EXPECT_TRUE(ziel_.lies(u"für Öztürk.Zip"_s).at(7) & 8);
}

TEST_F(Ausgeben, AFileBesideThatHasTheNameOfTheUnfinishedOneStays) {
  bild(u"a"_s, "1");
  ziel_.schreibe(u"_x.zip"_s, "fremd");
  EXPECT_TRUE(gib_aus(u"x.zip"_s).vollstaendig());
  EXPECT_EQ(inhalt(), (QStringList{u"_x.zip"_s, u"x.zip"_s}));
  EXPECT_EQ(ziel_.lies(u"_x.zip"_s), "fremd");
}

TEST_F(Ausgeben, WhatIsNotWholeYetStandsUnderHiddenNamesOnly) {
  bild(u"a"_s, Gross);
  bild(u"b"_s, Gross);
  QStringList gesehen;
  EXPECT_TRUE(gib_aus(u"x.zip"_s, {}, [&](int, int) {
    gesehen += inhalt();
    return true;
  }).vollstaendig());
  EXPECT_FALSE(gesehen.isEmpty());
  for (const QString& name : std::as_const(gesehen)) EXPECT_TRUE(name.startsWith(u".kvo-"_s)) << name.toStdString();
  EXPECT_EQ(inhalt(), QStringList{u"x.zip"_s});
}

TEST_F(Ausgeben, PlaceDataStaysBehindUnlessItIsWanted) {
  const QByteArray foto = ortsbild::mit(
      handyfoto::jpeg(handyfoto::motiv({32, 24})), ortsbild::exif_Segment(ortsbild::tiff(ortsbild::Folge::Klein)));
  bild(u"a"_s, foto);
  gib_aus(u"ohne"_s);
  gib_aus(u"ohne.zip"_s);
  gib_aus(u"mit"_s, {false, false, true});
  EXPECT_FALSE(ortsbild::nennt_Ort(ziel_.lies(u"ohne/01_a.jpg"_s)));
  EXPECT_TRUE(ziel_.lies(u"ohne/01_a.jpg"_s).contains("Fernsprech"));
  EXPECT_EQ(lies_Zip(ziel_.pfad(u"ohne.zip"_s)).first().inhalt, ziel_.lies(u"ohne/01_a.jpg"_s));
  EXPECT_EQ(ziel_.lies(u"mit/01_a.jpg"_s), foto);
  EXPECT_EQ(ablage_.lies(u"Belege/a.jpg"_s), foto);
}

TEST_F(Ausgeben, APictureWhosePlaceCannotBeTakenOutIsLeftOut) {
  bild(u"a"_s, QByteArray("II+\0\x08\0\0\0\x25\x88\x0d\0\1\0\0\0\0\0\0\0", 20));
  bild(u"b"_s, "2");
  const Ausgabeergebnis ergebnis = gib_aus(u"ziel"_s);
  ASSERT_EQ(ergebnis.ausgelassene.size(), 1U);
  EXPECT_EQ(ergebnis.ausgelassene[0].grund, u"Ihre Ortsangaben sind nicht zu entfernen."_s);
  EXPECT_EQ(inhalt(u"ziel"_s), QStringList{u"02_b.jpg"_s});
  EXPECT_TRUE(gib_aus(u"mit"_s, {false, false, true}).vollstaendig());
}

TEST_F(Ausgeben, StoppedItTakesAllBack) {
  for (int i = 0; i < 5; ++i) bild(u"b%1"_s.arg(i), "x", u"Belege"_s, u"Text"_s);
  ziel_.schreibe(u"da/fremd.jpg"_s, "fremd");
  for (const QString& ziel : {u"neu/ziel"_s, u"da"_s, u"ziel.zip"_s}) {
    QList<QPair<int, int>> gefragt;
    const Ausgabeergebnis ergebnis = gib_aus(ziel, {true, false, false}, [&](int fertige, int alle) {
      gefragt.append({fertige, alle});
      return fertige < 3;
    });
    EXPECT_TRUE(ergebnis.angehalten);
    EXPECT_EQ(ergebnis.bilder, 0);
    EXPECT_EQ(ergebnis.text(), u"Abgebrochen; es ist nichts ausgegeben."_s);
    EXPECT_EQ(gefragt, (QList<QPair<int, int>>{{0, 5}, {1, 5}, {2, 5}, {3, 5}})) << ziel.toStdString();
    EXPECT_EQ(inhalt(), QStringList{u"da"_s}) << ziel.toStdString();
    EXPECT_EQ(inhalt(u"da"_s), QStringList{u"fremd.jpg"_s});
  }
}

TEST_F(Ausgeben, AFullDiskTakesAllBack) {
  bild(u"a"_s, "1");
  bild(u"b"_s, Gross);
  for (const QString& ziel : {u"neu/ziel"_s, u"ziel.zip"_s}) {
    QString worte;
    {
      const VollePlatte voll(100'000);
      worte = scheitert(ziel);
    }
    EXPECT_TRUE(worte.contains(u"ist nicht zu schreiben: "_s) && worte.endsWith(u" Es ist nichts ausgegeben."_s))
        << worte.toStdString();
    EXPECT_EQ(inhalt(), QStringList()) << ziel.toStdString();
  }
}

TEST_F(Ausgeben, AZipThatSomebodyMakesMeanwhileIsNotReplaced) {
  bild(u"a"_s, "1");
  QString worte;
  try {
    gib_aus(u"x.zip"_s, {}, [&](int, int) {
      ziel_.schreibe(u"x.zip"_s, "fremd");
      return true;
    });
  } catch (const Abbruch& abbruch) {
    worte = abbruch.text();
  }
  EXPECT_TRUE(worte.contains(u"Datei existiert bereits. Es ist nichts ausgegeben."_s)) << worte.toStdString();
  EXPECT_EQ(ziel_.lies(u"x.zip"_s), "fremd");
  EXPECT_EQ(inhalt(), QStringList{u"x.zip"_s});
}

TEST_F(Ausgeben, AFileThatSomebodyMakesMeanwhileIsNotReplaced) {
  bild(u"a"_s, "1");
  bild(u"b"_s, "2");
  QString worte;
  try {
    gib_aus(u"ziel"_s, {}, [&](int fertige, int) {
      if (fertige == 1) ziel_.schreibe(u"ziel/02_b.jpg"_s, "fremd");
      return true;
    });
  } catch (const Abbruch& abbruch) {
    worte = abbruch.text();
  }
  EXPECT_TRUE(worte.contains(u"02_b.jpg“ ist nicht zu schreiben: Datei existiert bereits."_s)) << worte.toStdString();
  EXPECT_EQ(inhalt(u"ziel"_s), QStringList{u"02_b.jpg"_s});
  EXPECT_EQ(ziel_.lies(u"ziel/02_b.jpg"_s), "fremd");
}

TEST_F(Ausgeben, AReadOnlyPictureIsHandedOutAndTakenBackToo) {
  bild(u"a"_s, "1");
  bild(u"b"_s, "2");
  ASSERT_EQ(::chmod(ablage_.pfad(u"Belege/a.jpg"_s).toUtf8().constData(), 0444), 0);
  gib_aus(u"ziel"_s, {}, [](int fertige, int) { return fertige < 1; });
  EXPECT_EQ(inhalt(), QStringList());
  EXPECT_TRUE(gib_aus(u"ziel"_s).vollstaendig());
}
