// The strip and the large picture with and without pictures made ahead by other threads.
#include <QDir>
#include <QFile>
#include <limits>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "tests/dialogs/assignment/Streifentest.h"
#include "tests/support/Kleinbilder.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class StreifenVoraus : public Streifen {
 protected:
  const Alte_Dateien alt_;

  void lege_Vorgang(int anzahl) {
    for (int i = 0; i < anzahl; ++i) {
      const QString name = u"foto%1"_s.arg(i, 2, 10, QChar(u'0'));
      fuege_Bild_ein(name, u"jpg"_s, false);
      QByteArray inhalt = koerniges_Foto(i % 4 == 1 ? QSize(700, 1000) : QSize(1200, 900), i + 1);
      if (i % 5 == 3) inhalt.truncate(inhalt.size() / 2);
      if (i % 7 == 5) inhalt.truncate(100);
      wurzel.schreibe(u"Belege/1/"_s + name + u".jpg"_s, inhalt);
    }
  }
  /// All that is painted: the large picture and the thumbnails in sight, first and after a step of the strip.
  QList<QImage> gemalt(bool voraus) {
    bildvorlauf::an(voraus);
    Bildspeicher::aktuell().leere();
    QList<QImage> bilder;
    zeige([&] {
      const auto nimm = [&] {
        QCoreApplication::processEvents();
        bilder.append(form().Pic_Bearbeitung.Image());
        for (int i = 1; i <= std::min(8, form().Pic_Thumb.UBound()); ++i) bilder.append(form().Pic_Thumb(i).Image());
      };
      nimm();
      klicke(form().SSC_Scroll_Right);
      nimm();
      form().Pic_Thumb_Click(3);
      nimm();
    });
    schliesse();
    return bilder;
  }
};

}  // namespace

TEST_F(StreifenVoraus, StripAndLargePictureArePixelForPixelThoseMadeWithoutIt) {
  lege_Vorgang(12);
  const QList<QImage> ohne = gemalt(false);
  for (int runde = 0; runde < 5; ++runde) {
    const QList<QImage> mit = gemalt(true);
    ASSERT_EQ(mit.size(), ohne.size());
    for (qsizetype i = 0; i < ohne.size(); ++i) EXPECT_EQ(mit[i], ohne[i]) << i << ", round " << runde;
  }
}

TEST_F(StreifenVoraus, AfterARestartTheyAreShownFromTheDesktopsCache) {
  lege_Vorgang(7);
  const Testordner cache;
  const Eigene_Ablage ablage(cache.pfad(QString()));
  Miniaturablage::aktuell().an(false);
  const QList<QImage> ohne = gemalt(true);
  Miniaturablage::aktuell().an(true);
  gemalt(true);
  Rechenwerk::aktuell().warte();
  const QList<QImage> mit = gemalt(true);
  ASSERT_EQ(mit.size(), ohne.size());
  for (qsizetype i = 0; i < ohne.size(); ++i) EXPECT_GE(psnr(mit[i], ohne[i]), 35) << i;
}

TEST_F(StreifenVoraus, OnlyWhatIsInSightIsMadeAhead) {
  lege_Vorgang(40);
  bildvorlauf::an(true);
  zeige([&] {
    Rechenwerk::aktuell().warte();
    const auto schluessel = Bildspeicher::aktuell().schluessel(u"P:\\Belege\\1\\foto38.jpg"_s);
    ASSERT_TRUE(schluessel);
    const auto eintrag = Bildspeicher::aktuell().suche(*schluessel);
    EXPECT_TRUE(!eintrag || eintrag->reduzierte.isEmpty());
  });
}

TEST_F(StreifenVoraus, TheDialogCanBeClosedAgainAndAgainWhilePicturesAreMade) {
  lege_Vorgang(6);
  lies();
  for (int runde = 0; runde < 200; ++runde) {
    Bildspeicher::aktuell().leere();
    zeige([&] {
      Bildspeicher::aktuell().leere();
      if (runde % 4 != 0) klicke(form().SSC_Scroll_Right);
    });
    schliesse();
  }
  Rechenwerk::aktuell().warte();
  for (const QString& offen : QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System))
    EXPECT_FALSE(QFile::symLinkTarget(u"/proc/self/fd/"_s + offen).contains(u"/Belege/"_s));
}
