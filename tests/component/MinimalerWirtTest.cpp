// The example of the guide for hosts, compiled as it stands and used as a clerk would.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>

#include "platform/adodb/Connection.h"
#include "tests/component/Prozess.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Skript = QStringLiteral(KVO_QUELLORDNER "/sql/sqlite/Bild_Zuordnungen.sql");

QString lies(const QString& name) {
  QFile datei(QStringLiteral(KVO_QUELLORDNER "/") + name);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << name.toStdString();
  return QString::fromUtf8(datei.readAll());
}

class MinimalerWirt : public ::testing::Test {
 protected:
  MinimalerWirt() {
    EXPECT_TRUE(QDir().mkpath(ablage()));
    QImage bild(60, 40, QImage::Format_RGB32);
    bild.fill(0x336699);
    EXPECT_TRUE(bild.save(ablage() + u"/kessel.jpg"_s));
  }

  QString ablage() const { return ordner_.pfad(u"ablage"_s); }
  QString datenbank() const { return ordner_.pfad(u"betrieb.db"_s); }

  Prozess laufe(const QString& fuehrung, const QStringList& angaben) const {
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
    umgebung.insert(u"HOME"_s, ordner_.pfad(u"heim"_s));
    umgebung.insert(u"XDG_CONFIG_HOME"_s, ordner_.pfad(u"heim"_s));
    return starte(QStringLiteral(PROGRAMM), angaben, umgebung);
  }
  Prozess laufe(const QString& fuehrung) const { return laufe(fuehrung, {datenbank(), ablage(), Skript}); }

  /// All rows, the keys and the file of each.
  QStringList zeilen() const {
    adodb::Connection verbindung;
    verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank());
    const auto saetze =
        verbindung.Execute(u"Select Key1, Key2, Key3, key4, Typ1, BildPfad, BildExt from Bild_Zuordnungen"_s);
    QStringList liste;
    for (; !saetze->Eof(); saetze->MoveNext()) {
      QStringList werte;
      for (std::int32_t i = 0; i < 7; ++i) werte.append(saetze->Text(i));
      liste.append(werte.join(u'|'));
    }
    return liste;
  }

  Testordner ordner_;
};

}  // namespace

TEST_F(MinimalerWirt, APictureThatTheUserAttachesIsStoredUnderTheRecord) {
  const Prozess lauf = laufe(u"anhaengen"_s);
  ASSERT_EQ(lauf.code, 0) << ende(lauf);
  EXPECT_EQ(zeilen(), QStringList{u"AB|24-1001|-|-|BEL|Belege\\24-1001|jpg"_s});
  EXPECT_EQ(QDir(ablage() + u"/Belege/24-1001"_s).entryList({u"kessel*.jpg"_s}).size(), 1);
}

TEST_F(MinimalerWirt, LeavingTheDialogStoresNothingAndASecondStartFindsItsTable) {
  for (int i = 0; i < 2; ++i) {
    const Prozess lauf = laufe(u"zurueck"_s);
    ASSERT_EQ(lauf.code, 0) << ende(lauf);
    EXPECT_EQ(zeilen(), QStringList());
  }
}

TEST_F(MinimalerWirt, FailuresAreTold) {
  const QString fehlt = ordner_.pfad(u"fehlt/"_s);
  const QList<QStringList> aufrufe{
      {}, {fehlt + u"betrieb.db"_s, ablage(), Skript}, {datenbank(), fehlt, Skript}, {datenbank(), ablage(), fehlt}};
  for (const QStringList& angaben : aufrufe) {
    const Prozess lauf = laufe(u"meldung"_s, angaben);
    EXPECT_EQ(lauf.code, 1) << ende(lauf);
    EXPECT_TRUE(lauf.ausgabe.contains(u"\nMeldung: "_s)) << ende(lauf);
  }
}

TEST(Einbetten, TheGuideShowsTheExampleAsItIsCompiled) {
  const QString beispiel = lies(u"docs/beispiele/minimaler_wirt.cpp"_s);
  EXPECT_LT(beispiel.count(u'\n'), 70);
  EXPECT_TRUE(lies(u"docs/EINBETTEN.md"_s).contains(u"\n```cpp\n"_s + beispiel + u"```\n"_s))
      << "docs/EINBETTEN.md shows another text than docs/beispiele/minimaler_wirt.cpp";
}
