#include <QFile>
#include <QJsonArray>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A JPEG's start with an Exif block of one directory; the entries' bytes stand as they are.
QByteArray mit_Exif(const QByteArray& eintraege, char anzahl) {
  return QByteArray(
             "\xFF\xD8\xFF\xE1\x00\x80"
             "Exif\0\0"
             "II*\0"
             "\x08\0\0\0",
             20) +
      anzahl + '\0' + eintraege + QByteArray(40, '\0');
}

QJsonObject zeile(const QJsonObject& befund, int nummer) {
  return befund[u"tabelle"_s].toArray().at(nummer).toObject();
}

QJsonObject eintrag(const QJsonObject& befund, int nummer) {
  return befund[u"liste"_s].toArray().at(nummer).toObject();
}

}  // namespace

class KvobildExif : public ::testing::Test {
 protected:
  QJsonObject lies(const QString& datei, int code = 0) const {
    const Lauf lauf = kvobild({u"exif"_s, u"--json"_s, datei});
    EXPECT_EQ(lauf.code, code) << lauf.meldungen.toStdString();
    const QList<QJsonObject> objekte = lauf.objekte();
    EXPECT_EQ(objekte.size(), 1);
    EXPECT_EQ(objekte.value(0)[u"datei"_s].toString(), datei);
    return objekte.value(0);
  }
  Testordner ordner_;
};

TEST_F(KvobildExif, NumberTextAndEmptyValueRemainDistinguished) {
  const QByteArray eintraege(
      "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"  // Orientation, SHORT 6
      "\x31\x01\x02\0\x02\0\0\0"
      "A\0\0\0"                            // Software, four characters, reversed
      "\x0E\x01\x0C\0\x01\0\0\0\0\0\0\0",  // format 12 is not decoded
      36);
  const QJsonObject befund = lies(ordner_.schreibe(u"a.jpg"_s, mit_Exif(eintraege, 3)));
  EXPECT_TRUE(befund[u"load"_s].isBool());
  EXPECT_TRUE(befund[u"load"_s].toBool());
  EXPECT_EQ(befund[u"eintraege"_s].toInt(), 3);
  EXPECT_EQ(befund[u"liste"_s].toArray().size(), 3);
  EXPECT_EQ(eintrag(befund, 0), (QJsonObject{{u"tag"_s, 274}, {u"format"_s, 3}, {u"anzahl"_s, 1}, {u"wert"_s, 6}}));
  EXPECT_EQ(eintrag(befund, 1)[u"wert"_s].toString(), QString::fromLatin1("\0\0\0A", 4));
  EXPECT_TRUE(eintrag(befund, 2)[u"wert"_s].isNull());
}

TEST_F(KvobildExif, TheTableIsWhollyIncluded) {
  const QByteArray eintraege(
      "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"   // Orientation, SHORT 6
      "\x28\x01\x03\0\x01\0\0\0\x02\0\0\0",  // ResolutionUnit, SHORT 2
      24);
  const QString datei = ordner_.schreibe(u"a.jpg"_s, mit_Exif(eintraege, 2));
  const QJsonObject befund = lies(datei);
  ASSERT_EQ(befund[u"tabelle"_s].toArray().size(), 151);
  EXPECT_EQ(zeile(befund, 4),
      (QJsonObject{{u"zeile"_s, 4}, {u"zeigen"_s, true}, {u"tag"_s, 274}, {u"name"_s, u"Orientation"_s},
          {u"beschriftung"_s, u"Bildlage"_s}, {u"wert"_s, u"6"_s}}));
  EXPECT_EQ(zeile(befund, 7),
      (QJsonObject{{u"zeile"_s, 7}, {u"zeigen"_s, QString()}, {u"tag"_s, 296}, {u"name"_s, u"ResolutionUnit"_s},
          {u"beschriftung"_s, u"Auflösung"_s}, {u"wert"_s, u"2"_s}}));
  EXPECT_EQ(zeile(befund, 111)[u"wert"_s].toString(u"fehlt"_s), QString());
  EXPECT_EQ(zeile(befund, 150),
      (QJsonObject{{u"zeile"_s, 150}, {u"zeigen"_s, QJsonValue()}, {u"tag"_s, QJsonValue()}, {u"name"_s, QJsonValue()},
          {u"beschriftung"_s, QString()}, {u"wert"_s, QString()}}));
}

TEST_F(KvobildExif, AsTextTheRowsOfTheTableStandThatHaveAValue) {
  const QByteArray eintraege(
      "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"
      "\x28\x01\x03\0\x01\0\0\0\x02\0\0\0",
      24);
  const Lauf lauf = kvobild({u"exif"_s, ordner_.schreibe(u"a.jpg"_s, mit_Exif(eintraege, 2))});
  EXPECT_EQ(lauf.code, 0);
  QStringList tabelle;
  for (const QString& z : lauf.zeilen().mid(4)) tabelle.append(z.simplified());
  EXPECT_EQ(lauf.zeilen().value(3), u"  Tabelle:"_s);
  EXPECT_EQ(tabelle,
      (QStringList{u"4 zeigen 274 Orientation Bildlage 6"_s, u"7 - 296 ResolutionUnit Auflösung 2"_s,
          u"71 - 296 ResolutionUnit2 ResolutionUnit2 2"_s}));
}

TEST_F(KvobildExif, AFileWithoutExifIsLoadFalseAndNoFailure) {
  const QJsonObject befund = lies(ordner_.schreibe(u"a.jpg"_s, QByteArray("\xFF\xD8\xFF\xD9", 4)));
  EXPECT_TRUE(befund[u"load"_s].isBool());
  EXPECT_FALSE(befund[u"load"_s].toBool());
  EXPECT_TRUE(befund[u"eintraege"_s].isNull());
  EXPECT_TRUE(befund[u"liste"_s].toArray().isEmpty());
  EXPECT_TRUE(befund.contains(u"tabelle"_s));
  EXPECT_TRUE(befund[u"tabelle"_s].isNull());
}

TEST_F(KvobildExif, AFailureThatReachesTheCallerIsLoadFehler) {
  const QString datei = ordner_.schreibe(u"a.jpg"_s,
      QByteArray("\xFF\xD8\xFF\xE1\0\x10"
                 "Exif\0\0"
                 "II",
          14));
  EXPECT_EQ(lies(datei, 4)[u"load"_s].toString(), u"fehler"_s);
}

TEST_F(KvobildExif, ADirectoryWithoutEntriesHasTheCountZero) {
  const QJsonObject befund = lies(ordner_.schreibe(u"a.jpg"_s, mit_Exif({}, 0)));
  EXPECT_TRUE(befund[u"load"_s].toBool());
  EXPECT_TRUE(befund[u"eintraege"_s].isNull());
  EXPECT_TRUE(befund[u"tabelle"_s].isNull());
}

TEST_F(KvobildExif, AMissingFileIsReportedAndNotCreated) {
  const QString datei = ordner_.pfad(u"fehlt.jpg"_s);
  const QJsonObject befund = lies(datei, 4);
  EXPECT_FALSE(befund[u"load"_s].toBool());
  EXPECT_FALSE(QFile::exists(datei));
}

TEST_F(KvobildExif, AFolderIsLoadFehler) {
  EXPECT_EQ(lies(ordner_.pfad(), 4)[u"load"_s].toString(), u"fehler"_s);
}

TEST_F(KvobildExif, SeveralFilesStandEachInALineInTheirOrder) {
  const QString a = ordner_.schreibe(u"a.b'c ä.jpg"_s, "\xFF\xD8\xFF\xD9");
  const QString b = ordner_.pfad(u"fehlt.jpg"_s);
  const Lauf lauf = kvobild({u"exif"_s, u"--json"_s, a, b, a});
  EXPECT_EQ(lauf.code, 1);
  QStringList namen;
  for (const QJsonObject& objekt : lauf.objekte()) namen.append(objekt[u"datei"_s].toString());
  EXPECT_EQ(namen, (QStringList{a, b, a}));
}
