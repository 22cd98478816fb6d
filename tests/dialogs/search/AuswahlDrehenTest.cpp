// Turning the chosen files: what fails, what stays, and what happens in the middle of it.
#include <QFile>
#include <QImage>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "store/Bildereignis.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke;
using eingaben::klicke_Zeile;
using gdiplus::bildersitzung::laeuft;

namespace {

class AuswahlDrehen : public Suchtest {
 protected:
  AuswahlDrehen() {
    lege_Bild(u"Bilder/a.jpg"_s, QSize(64, 32));
    lege_Bild(u"Bilder/b.jpg"_s, QSize(64, 32));
    lege_Bild(u"Bilder/c.jpg"_s, QSize(64, 32));
  }
  QSize groesse(const QString& name) { return QImage(ordner.pfad(u"p/Bilder/"_s + name)).size(); }
  QByteArray inhalt(const QString& name) { return ordner.lies(u"p/Bilder/"_s + name); }
  void drehe(const QList<int>& zeilen) {
    for (const int zeile : zeilen) klicke_Zeile(form().lvwContent, zeile, Qt::ControlModifier);
    klicke(form().SSC_Drehen);
  }
  void erwarte_Misslingen() { meldungen.erwarte({u"Das rotieren der JPG ist fehlgeschlagen."_s, u"Error"_s}); }
};

}  // namespace

TEST_F(AuswahlDrehen, TheUpperLeftCornerGoesToTheRight) {
  QImage blatt(64, 32, QImage::Format_RGB32);
  blatt.fill(Qt::white);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 32; ++x) blatt.setPixelColor(x, y, Qt::red);
  ASSERT_TRUE(blatt.save(ordner.pfad(u"p/Bilder/a.jpg"_s), "JPEG", 95));
  zeige([&] {
    drehe({0});
    const QImage gedreht(ordner.pfad(u"p/Bilder/a.jpg"_s));
    ASSERT_EQ(gedreht.size(), QSize(32, 64));
    EXPECT_LT(gedreht.pixelColor(28, 4).blue(), 60);
    EXPECT_GT(gedreht.pixelColor(4, 4).blue(), 200);
    EXPECT_GT(gedreht.pixelColor(28, 60).blue(), 200);
  });
}

TEST_F(AuswahlDrehen, ContentOfNoKnownFormatIsToldTwiceAndTheOthersAreTurned) {
  ordner.schreibe(u"p/Bilder/b.jpg"_s, "kein Bild");
  QStringList gehoert;
  bildereignis::setze(
      [&](const Bildereignis& e) { gehoert.append(e.Bild.section(u'\\', -1) + (e.gelungen ? u" ja"_s : u" nein"_s)); });
  zeige([&] {
    meldungen.erwarte({u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s});
    erwarte_Misslingen();
    drehe({0, 1, 2});
    EXPECT_EQ(inhalt(u"b.jpg"_s), "kein Bild");
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(32, 64));
    EXPECT_EQ(groesse(u"c.jpg"_s), QSize(32, 64));
  });
  bildereignis::setze({});
  EXPECT_EQ(gehoert, (QStringList{u"a.jpg ja"_s, u"b.jpg nein"_s, u"c.jpg ja"_s})) << "a host hears of each";
}

TEST_F(AuswahlDrehen, AReadOnlyFileEndsTheTurningAndNothingIsReadAgain) {
  const QByteArray vorher = inhalt(u"b.jpg"_s);
  const QByteArray naechstes = inhalt(u"c.jpg"_s);
  ASSERT_TRUE(QFile::setPermissions(ordner.pfad(u"p/Bilder/b.jpg"_s), QFile::ReadOwner));
  zeige([&] {
    lege_Bild(u"Bilder/neu.jpg"_s);
    meldungen.erwarte({u"Bild konnte nicht bearbeitet werden!"_s, u"Achtung"_s}, oberflaeche::Antwort::OK, [] {
      // Told before the sessions end.
      EXPECT_TRUE(laeuft());
    });
    drehe({0, 1, 2});
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(32, 64)) << "the one before is turned";
    EXPECT_EQ(inhalt(u"b.jpg"_s), vorher);
    EXPECT_EQ(inhalt(u"c.jpg"_s), naechstes) << "the one behind is not";
    EXPECT_FALSE(ordner.vorhanden(u"p/Bilder/_b.jpg"_s));
    EXPECT_EQ(eintraege().size(), 3) << "the folder is not read again";
    EXPECT_FALSE(mod_GrafikKonvert::m_GdiAktiv);
    EXPECT_FALSE(laeuft());
  });
}

TEST_F(AuswahlDrehen, AFileThatHasGoneIsToldAndIsNotMadeAgain) {
  zeige([&] {
    ASSERT_TRUE(QFile::remove(ordner.pfad(u"p/Bilder/b.jpg"_s)));
    meldungen.erwarte({u"File Not Found. GDI+ Error:10"_s, u"GDI Error"_s});
    erwarte_Misslingen();
    drehe({1, 2});
    EXPECT_EQ(eintraege(), (QStringList{u"a.jpg"_s, u"c.jpg"_s}));
    EXPECT_EQ(groesse(u"c.jpg"_s), QSize(32, 64));
  });
}

TEST_F(AuswahlDrehen, FilesOfTheUsersThatBeginWithAnUnderscoreStay) {
  ordner.schreibe(u"p/Bilder/_a.jpg"_s, bild(QSize(10, 20)));
  ordner.schreibe(u"p/Bilder/__a.jpg"_s, "meins");
  const QByteArray meins = inhalt(u"_a.jpg"_s);
  zeige([&] {
    ASSERT_EQ(eintraege().indexOf(u"a.jpg"_s), 2);
    drehe({2});
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(32, 64));
    EXPECT_EQ(inhalt(u"_a.jpg"_s), meins);
    EXPECT_EQ(inhalt(u"__a.jpg"_s), "meins");
    EXPECT_EQ(eintraege().size(), 5);
  });
}

TEST_F(AuswahlDrehen, LeavingInTheMiddleOfTheReadBehindItTakesNobodyElsesSession) {
  using Weg = std::function<void(frm_BilderSuchen&)>;
  const QList<Weg> wege{[](frm_BilderSuchen& f) { klicke(f.cmd_Abbruch); },
      [](frm_BilderSuchen& f) { eingaben::taste(f, Qt::Key_Escape); },
      [](frm_BilderSuchen& f) { eingaben::schliesse_Rahmen(f); }, [](frm_BilderSuchen& f) { f.Hide(); }};
  mod_GrafikKonvert::Fkt_GdiStartup(1);
  for (qsizetype i = 0; i < wege.size(); ++i) {
    mod_BilderSuchen::pLetzterOrdner.clear();
    zeige([&] {
      beim_Pumpen([&](int mal) {
        if (mal == 2) wege[i](form());
      });
      drehe({0});
      EXPECT_FALSE(form().isVisible());
    });
    beim_Pumpen({});
    entlade();
    EXPECT_TRUE(laeuft()) << i;
  }
  mod_GrafikKonvert::Fkt_GdiShutdown();
  EXPECT_FALSE(laeuft()) << "and leaves none of its own";
}

TEST_F(AuswahlDrehen, TurningInTheMiddleOfTheReadBehindATurnTakesItsPlace) {
  mod_GrafikKonvert::Fkt_GdiStartup(1);
  zeige([&] {
    beim_Pumpen([&](int mal) {
      if (mal != 3) return;
      // Nothing of the running read can be chosen by the user: its list is out of sight.
      form().lvwContent.Selected(1, true);
      klicke(form().SSC_Drehen);
    });
    drehe({1});
    beim_Pumpen({});
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(32, 64));
    EXPECT_EQ(groesse(u"b.jpg"_s), QSize(32, 64));
    EXPECT_EQ(eintraege(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"c.jpg"_s}));
    EXPECT_EQ(form().ilsImages.Count(), 3);
    EXPECT_TRUE(laeuft());
  });
  entlade();
  EXPECT_TRUE(laeuft());
  mod_GrafikKonvert::Fkt_GdiShutdown();
  EXPECT_FALSE(laeuft());
}
