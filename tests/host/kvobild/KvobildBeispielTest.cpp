#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QSet>

#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"
#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

/// The sample data, made once for all tests: drawing them takes its time.
class KvobildBeispiel : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ordner_ = std::make_unique<Testordner>();
    const Lauf lauf = kvobild({u"beispieldaten"_s, pfad()});
    ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  }
  static void TearDownTestSuite() { ordner_.reset(); }
  static QString pfad(const QString& name = {}) { return ordner_->pfad(u"beispiel/"_s + name); }
  static QStringList bilder() {
    QStringList liste;
    QDirIterator lauf(pfad(), {u"*.jpg"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (lauf.hasNext()) liste.append(lauf.next());
    liste.sort();
    return liste;
  }
  static QList<QJsonObject> zeilen() {
    return kvobild(
        {u"lesen"_s, u"--json"_s, u"--verbindung"_s, pfad(u"betrieb.db"_s), u"--bilder"_s, pfad(u"bilder"_s)})
        .objekte();
  }
  static std::unique_ptr<Testordner> ordner_;
};

std::unique_ptr<Testordner> KvobildBeispiel::ordner_;

TEST_F(KvobildBeispiel, ThirtyPicturesThatDifferInColour) {
  QSet<QRgb> farben;
  int grosse = 0;
  for (const QString& datei : bilder()) {
    const QImage bild(datei);
    ASSERT_FALSE(bild.isNull()) << datei.toStdString();
    farben.insert(bild.pixel(bild.width() / 50, bild.height() / 2));
    if (bild.width() * bild.height() == 12'000'000) ++grosse;
  }
  EXPECT_EQ(bilder().size(), 30);
  EXPECT_EQ(farben.size(), 30);
  EXPECT_EQ(grosse, 3);
}

TEST_F(KvobildBeispiel, EveryAssignmentHasItsFileAndSomeHaveAText) {
  int mit_Text = 0;
  QSet<QString> arten;
  for (const QJsonObject& zeile : zeilen()) {
    EXPECT_TRUE(zeile[u"vorhanden"_s].toBool()) << name_von(zeile).toStdString();
    if (zeile[u"text"_s].isString()) ++mit_Text;
    arten.insert(zeile[u"typ1"_s].toString());
  }
  EXPECT_EQ(zeilen().size(), 22);
  EXPECT_EQ(arten, (QSet<QString>{u"BEL"_s, u"MON"_s, u"ART"_s, u"ANL"_s}));
  EXPECT_GE(mit_Text, 5);
}

TEST_F(KvobildBeispiel, ExifIsThereInBothByteOrdersAndNamesTheSize) {
  QSet<QByteArray> folgen;
  for (const QString& datei : bilder()) {
    QFile roh(datei);
    ASSERT_TRUE(roh.open(QIODevice::ReadOnly));
    const QByteArray anfang = roh.read(14);
    const bool mit_Exif = anfang.mid(6, 4) == "Exif";
    folgen.insert(mit_Exif ? anfang.mid(12, 2) : QByteArray());
    const QJsonObject befund = kvobild({u"exif"_s, u"--json"_s, datei}).objekte().value(0);
    EXPECT_EQ(befund[u"load"_s].toBool(), mit_Exif) << datei.toStdString();
    EXPECT_EQ(befund[u"eintraege"_s].toInt(-1), mit_Exif ? 17 : -1) << datei.toStdString();
  }
  EXPECT_EQ(folgen, (QSet<QByteArray>{QByteArray(), "II", "MM"}));
}

TEST_F(KvobildBeispiel, TextsAreInWindows1252) {
  QFile datei(pfad(u"eingang/Übergabe_25jpg.txt"_s));
  ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
  EXPECT_EQ(datei.readAll(),
      "Schl\xFCssel \xFC"
      "bergeben an Frau \xD6zt\xFCrk.");
}

TEST_F(KvobildBeispiel, AHostFindsTheRecordsOfACustomerAndOfAProject) {
  const QString verbindung = u"Provider=SQLite;Data Source="_s + pfad(u"betrieb.db"_s);
  auto offene = std::make_shared<adodb::Connection>();
  offene->Open(verbindung);
  clsBildZuordnungen store;
  ASSERT_TRUE(store.Init(verbindung, offene, {}));
  EXPECT_TRUE(store.FKT_LeseBilder_FuerKunde_Projekt(u"10001"_s, false));
  EXPECT_EQ(store.AnzahlPos(), 3);
  EXPECT_TRUE(store.FKT_LeseBilder_FuerKunde_Projekt(u"P-24-11"_s, true));
  EXPECT_EQ(store.AnzahlPos(), 1);
  EXPECT_EQ(store.Bild_Key2(), u"24-2003"_s);
}

TEST_F(KvobildBeispiel, AFolderWithContentIsNotTouched) {
  const QStringList vorher = bilder();
  const Lauf lauf = kvobild({u"beispieldaten"_s, pfad()});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"nicht leer"_s));
  EXPECT_EQ(bilder(), vorher);
}
