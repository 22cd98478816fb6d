// The list with and without pictures made ahead by other threads.
#include <QDir>
#include <QFile>
#include <limits>
#include <tuple>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "tests/dialogs/search/Suchtest.h"
#include "tests/support/Kleinbilder.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke;

namespace {

class Vorauslese : public Suchtest {
 protected:
  const Alte_Dateien alt_;

  /// Photos, and between them what is broken, missing its body or no picture at all.
  void lege_Gemischtes() {
    const QByteArray foto = bild({900, 700}, Qt::darkCyan);
    for (int i = 0; i < 40; ++i) {
      QByteArray inhalt = i % 3 == 0 ? bild({200 + 7 * i, 150}, QColor::fromHsv(9 * i, 255, 200)) : foto;
      if (i % 10 == 4) inhalt.truncate(150);
      if (i % 10 == 7) inhalt.truncate(inhalt.size() / 2);
      if (i % 10 == 9) inhalt = "no picture";
      schreibe(u"bild%1.jpg"_s.arg(i, 2, 10, QChar(u'0')), inhalt);
    }
    schreibe(u"notiz.txt"_s);
    schreibe(u"GROSS.JPG"_s, foto);
  }
  void schreibe(const QString& name, const QByteArray& inhalt = "x") { ordner.schreibe(u"p/Bilder/"_s + name, inhalt); }
  void lies() { form().Show_Folder_Content(form().Dir1.Path(), u"*.*"_s); }
  QList<QImage> alle_Bilder() {
    QList<QImage> bilder;
    for (int i = 1; i <= form().lvwContent.Count(); ++i) bilder.append(bild_von(i));
    return bilder;
  }
  /// What the list shows, what it says and how often it let events in.
  std::tuple<QList<QImage>, QStringList, QList<double>> gelesen(bool voraus) {
    bildvorlauf::an(voraus);
    Bildspeicher::aktuell().leere();
    QList<double> staende;
    beim_Pumpen([&](int) { staende.append(form().SSP_Fortschritt.FloodPercent()); });
    lies();
    beim_Pumpen({});
    return {alle_Bilder(), eintraege(), staende};
  }
};

}  // namespace

TEST_F(Vorauslese, TheListIsPixelForPixelTheOneThatIsReadWithoutIt) {
  lege_Gemischtes();
  zeige([&] {
    const auto ohne = gelesen(false);
    const auto mit = gelesen(true);
    EXPECT_EQ(std::get<1>(mit), std::get<1>(ohne));
    EXPECT_EQ(std::get<2>(mit), std::get<2>(ohne));
    const auto& soll = std::get<0>(ohne);
    ASSERT_EQ(std::get<0>(mit).size(), soll.size());
    for (qsizetype i = 0; i < soll.size(); ++i) EXPECT_EQ(std::get<0>(mit)[i], soll[i]) << i;
    EXPECT_EQ(std::get<1>(mit).size(), 41);
  });
}

TEST_F(Vorauslese, AfterARestartTheListShowsTheSameFromTheDesktopsCacheAndReadsNoPhotoAnew) {
  for (int i = 0; i < 6; ++i)
    schreibe(u"foto%1.jpg"_s.arg(i), koerniges_Foto(i % 2 == 0 ? QSize(1200, 900) : QSize(1600, 700), i + 1));
  lege_Gemischtes();
  const Eigene_Ablage ablage(ordner.pfad(u"cache"_s));
  zeige([&] {
    Miniaturablage::aktuell().an(false);
    const auto ohne = gelesen(true);
    Miniaturablage::aktuell().an(true);
    gelesen(true);
    Rechenwerk::aktuell().warte();
    // What is kept small now is all that there is of them.
    for (int i = 0; i < 6; ++i) leere_aus(ordner.pfad(u"p/Bilder/foto%1.jpg"_s.arg(i)));
    const auto mit = gelesen(true);
    EXPECT_EQ(std::get<1>(mit), std::get<1>(ohne));
    EXPECT_EQ(std::get<2>(mit), std::get<2>(ohne));
    const auto& soll = std::get<0>(ohne);
    ASSERT_EQ(std::get<0>(mit).size(), soll.size());
    for (qsizetype i = 0; i < soll.size(); ++i) EXPECT_GE(psnr(std::get<0>(mit)[i], soll[i]), 35) << i;
  });
}

TEST_F(Vorauslese, ItsReadCanBeStoppedAtEachMoment) {
  lege_Gemischtes();
  zeige([&] {
    for (int wann = 1; wann <= 43; wann += 3) {
      Bildspeicher::aktuell().leere();
      beim_Pumpen([&](int mal) {
        if (mal == wann) klicke(form().cmd_EinlesenAbrrechen);
      });
      lies();
      EXPECT_EQ(form().lvwContent.Count(), std::max(0, wann - 2)) << wann;
      EXPECT_FALSE(form().SSP_Fortschritt.Visible());
      EXPECT_TRUE(form().lvwContent.Visible());
    }
  });
}

TEST_F(Vorauslese, ItCanBeLeftAtEachMomentAThousandTimes) {
  lege_Gemischtes();
  for (int runde = 0; runde < 1000; ++runde) {
    Bildspeicher::aktuell().leere();
    beim_Pumpen([&](int mal) {
      if (form_da() && mal == runde % 40 + 1) eingaben::schliesse_Rahmen(form());
    });
    form().Show();
    beim_Pumpen({});
    entlade();
  }
  Rechenwerk::aktuell().warte();
  for (const QString& offen : QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System))
    EXPECT_FALSE(QFile::symLinkTarget(u"/proc/self/fd/"_s + offen).contains(u"/Bilder/"_s));
}
