// What the desktop's cache keeps of a picture is gone once its file is written anew.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>

#include "imaging/Dateiaufrichtung.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Sitzungsdauer.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Kleinbilder.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Miniaturen : public ::testing::Test {
 protected:
  /// A file with an entry that would fit it.
  QString mit_Eintrag(const QString& name, const QByteArray& inhalt) const {
    const QString pfad = ordner.schreibe(name, inhalt);
    const dateien::Kennung k = dateien::kennung(pfad);
    QImage pixel({256, 192}, QImage::Format_RGB32);
    pixel.fill(Qt::red);
    EXPECT_TRUE(Miniaturablage::aktuell().merke({QFile::encodeName(pfad), k.laenge, k.geaendert_ns, 0},
        {Bildformat::Jpeg, Kopfbefund::Ok, {1024, 768}}, pixel, 256, false));
    EXPECT_EQ(eintraege(), 1);
    return pfad;
  }
  int eintraege() const {
    int anzahl = 0;
    for (QDirIterator i(ordner.pfad(u"cache"_s), {u"*.png"_s}, QDir::Files, QDirIterator::Subdirectories); i.hasNext();
         i.next())
      ++anzahl;
    return anzahl;
  }

  const Testordner ordner;
  const Eigene_Ablage ablage{ordner.pfad(u"cache"_s)};
  const gdiplus::Sitzungsdauer sitzung;
};

}  // namespace

TEST_F(Miniaturen, ATurnInPlaceEndsTheEntry) {
  const QString pfad = mit_Eintrag(u"a.jpg"_s, handyfoto::foto({64, 48}, 1));
  EXPECT_TRUE(mod_GrafikKonvert::Fkt_Bild_Drehen(pfad, 13));
  EXPECT_EQ(eintraege(), 0);
}

TEST_F(Miniaturen, ATurnOverAnotherFileEndsThatOnesEntry) {
  const QString quelle = ordner.schreibe(u"quelle.jpg"_s, handyfoto::foto({64, 48}, 1));
  const QString ziel = mit_Eintrag(u"ziel.jpg"_s, handyfoto::foto({64, 48}, 1));
  EXPECT_TRUE(mod_GrafikKonvert::Fkt_JpgTransform(quelle, ziel, 13));
  EXPECT_EQ(eintraege(), 0);
}

// The file keeps its time, and where only the mark changes its length too: nothing else would tell the two states
// apart.
TEST_F(Miniaturen, SettingUprightEndsTheEntryThoughTheFileKeepsItsTime) {
  const QString pfad = mit_Eintrag(u"a.jpg"_s, handyfoto::foto({64, 48}, 6));
  const dateien::Kennung vorher = dateien::kennung(pfad);
  EXPECT_EQ(aufrichtung::richte_Datei_auf(pfad, {}).befund, aufrichtung::Befund::Gedreht);
  EXPECT_EQ(dateien::kennung(pfad).geaendert_ns, vorher.geaendert_ns);
  EXPECT_EQ(eintraege(), 0);
}

TEST_F(Miniaturen, ATurnThatFailsLeavesTheEntry) {
  const QString pfad = mit_Eintrag(u"a.jpg"_s, "no picture");
  EXPECT_EQ(aufrichtung::richte_Datei_auf(pfad, {}).befund, aufrichtung::Befund::Unveraendert);
  EXPECT_EQ(eintraege(), 1);
}
