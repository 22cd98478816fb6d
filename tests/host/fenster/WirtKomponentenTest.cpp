#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/Datenbank.h"
#include "host/fenster/Artikelauskunft.h"
#include "host/fenster/Wirtskomponenten.h"
#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

class WirtKomponenten : public Wirt {
 protected:
  void SetUp() override {
    Wirt::SetUp();
    platz_.oeffne();
  }
  std::shared_ptr<clsArtikelManagerSQL> manager(const QString& name = u"KVOArtik.clsArtikelManagerSQL"_s) {
    auto neu = komponenten::erzeuge<clsArtikelManagerSQL>(name);
    neu->Init(0, platz_.verbindungszeichenfolge(), platz_.verbindung());
    return neu;
  }
  static bool finde(clsArtikelManagerSQL& manager, const QString& nummer) {
    return manager.fktLeseArtikel(nummer, true, false, false, false, false, true);
  }

  Wirtskomponenten komponenten_;
  Arbeitsplatz platz_{optionen()};
};

TEST_F(WirtKomponenten, AnArticleIsKnownByItsWholeNumberInAnyCase) {
  const auto artikel = manager();
  EXPECT_TRUE(finde(*artikel, u" th-0100 "_s));
  EXPECT_EQ(artikel->Artikelnummer(), u"TH-0100"_s);
  EXPECT_EQ(CStr(artikel->Bez()), u"Thermostatkopf"_s);
  EXPECT_EQ(CStr(artikel->bez3()), u"Auslauf"_s);
  EXPECT_EQ(CStr(artikel->Hauptlieferant()), u"70300"_s);
  EXPECT_FALSE(finde(*artikel, u"TH-01"_s));
  EXPECT_EQ(artikel->Artikelnummer(), u"TH-0100"_s);
}

TEST_F(WirtKomponenten, APartOfANumberFindsTheFirstThatContainsIt) {
  const auto artikel = manager();
  EXPECT_TRUE(artikel->fktLeseArtikel_TeilArtikel(u"TH-01"_s));
  EXPECT_EQ(artikel->Artikelnummer(), u"TH-0100"_s);
  EXPECT_TRUE(artikel->fktLeseArtikel_TeilArtikel(u"0025"_s));
  EXPECT_EQ(artikel->Artikelnummer(), u"MI-0025"_s);
  for (const QString& kein_Teil : {u""_s, u"  "_s, u"%"_s, u"_"_s, u"[A-Z]"_s, u"\\"_s, u"'"_s, u"XY"_s})
    EXPECT_FALSE(artikel->fktLeseArtikel_TeilArtikel(kein_Teil)) << kein_Teil.toStdString();
  EXPECT_FALSE(finde(*artikel, u"' or 1 = 1 --"_s));
}

TEST_F(WirtKomponenten, TheSecondArticleMasterHasItsOwnArticles) {
  const auto zweiter = manager(u"KVOArtikelZF.clsArtikelManagerSQLZF"_s);
  EXPECT_TRUE(finde(*zweiter, u"ZF-9001"_s));
  EXPECT_FALSE(finde(*zweiter, u"TH-0100"_s));
  EXPECT_FALSE(finde(*manager(), u"ZF-9001"_s));
}

TEST_F(WirtKomponenten, ASettingComesFromTheTableAndOtherwiseTheDefault) {
  const auto einstellungen = platz_.anwendungsobjekt()->Settings();
  const auto lies = [&](const QString& schluessel, const QString& vorgabe) {
    QString wert = u"alt"_s;
    einstellungen->GetSetting(u"Firmendaten"_s, schluessel, wert, u"Standard"_s, u"Standard"_s, vorgabe);
    return wert;
  };
  EXPECT_EQ(lies(u"MitArtikelstammZF"_s, u"x"_s), u"0"_s);
  EXPECT_EQ(lies(u"Gibt's nicht"_s, u"x"_s), u"x"_s);
  sql(u"Update Einstellungen set Wert = '1'"_s);
  EXPECT_EQ(lies(u"MitArtikelstammZF"_s, u"0"_s), u"1"_s);
  sql(u"Update Einstellungen set Wert = '0'"_s);
  sql(u"ALTER TABLE Einstellungen RENAME TO Einstellungen_Weg"_s);
  EXPECT_THROW(lies(u"MitArtikelstammZF"_s, u"0"_s), Laufzeitfehler);
  sql(u"ALTER TABLE Einstellungen_Weg RENAME TO Einstellungen"_s);
}

TEST_F(WirtKomponenten, AtTheEndOfTheProgramTheNamesAreKnownNoMore) {
  const Testordner ordner;
  const auto vorher = komponenten::registriere(u"KVOArtik.clsArtikelManagerSQL"_s, {});
  {
    const Wirtskomponenten eigene;
    EXPECT_NE(manager(), nullptr);
  }
  EXPECT_EQ(Fehlernummer_von([] { komponenten::CreateObject(u"KVOArtik.clsArtikelManagerSQL"_s); }),
      fehlernummer::ObjektNichtErstellbar);
  komponenten::registriere(u"KVOArtik.clsArtikelManagerSQL"_s, vorher);
}

namespace {

class Empfaenger final : public Auskunftsempfaenger {
 public:
  void LA_Doppelclick(const QString& pWert) override { werte.append(pWert); }
  QStringList werte;
};

}  // namespace

class WirtAuskunft : public WirtKomponenten {
 protected:
  /// Opens the look-up and does that in it.
  void oeffne(const std::function<void(QDialog&)>& tun) {
    bool gesehen = false;
    QTimer::singleShot(0, [&] {
      auto* fenster = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(fenster, nullptr);
      gesehen = true;
      tun(*fenster);
      if (fenster->isVisible()) fenster->reject();
    });
    const auto app = platz_.anwendungsobjekt();
    komponenten::erzeuge<clsAuskunft>(u"KVOListAuskunft.clsAuskunft"_s)
        ->Anzeige_Auskunft(u"Artikel"_s, {}, app->Name(), app->User(), app->ExeDir(), app->ConnectStringDB(),
            app->ConnectionDB(), empfaenger_, app->ReportDBTemplateDir(), app->DBName());
    EXPECT_TRUE(gesehen);
  }
  static QStringList gezeigte(const QDialog& fenster) {
    const QAbstractItemModel& modell = *fenster.findChild<QTreeView*>()->model();
    QStringList nummern;
    for (int i = 0; i < modell.rowCount(); ++i) nummern.append(modell.index(i, 0).data().toString());
    return nummern;
  }
  Empfaenger empfaenger_;
};

TEST_F(WirtAuskunft, WhileTypingThoseArticlesRemainThatContainTheTextAnywhere) {
  oeffne([&](QDialog& fenster) {
    EXPECT_EQ(gezeigte(fenster),
        (QStringList{u"AR-0010"_s, u"MI-0025"_s, u"TH-0100"_s, u"TH-0110"_s, u"WP-0900"_s, u"WT-0600"_s}));
    auto* filter = fenster.findChild<QLineEdit*>(u"txt_Artikelfilter"_s);
    EXPECT_EQ(fenster.focusWidget(), filter);
    QTest::keyClicks(filter, u"THERMO"_s);
    EXPECT_EQ(gezeigte(fenster), (QStringList{u"TH-0100"_s, u"TH-0110"_s}));
    filter->clear();
    QTest::keyClicks(filter, u"70120"_s);
    EXPECT_EQ(gezeigte(fenster), (QStringList{u"MI-0025"_s, u"WP-0900"_s}));
    filter->setText(u"(.*"_s);
    EXPECT_TRUE(gezeigte(fenster).isEmpty());
    EXPECT_FALSE(fenster.findChild<QPushButton*>(u"cmd_Uebernehmen"_s)->isEnabled());
    EXPECT_EQ(fenster.findChild<QLabel*>(u"lbl_Leer"_s)->text(), u"Kein Artikel enthält das."_s);
  });
  EXPECT_TRUE(empfaenger_.werte.isEmpty());
}

TEST_F(WirtAuskunft, ArrowAndEnterTakeAnArticleWithoutTheMouse) {
  oeffne([](QDialog& fenster) {
    auto* filter = fenster.findChild<QLineEdit*>(u"txt_Artikelfilter"_s);
    QTest::keyClicks(filter, u"TH"_s);
    QTest::keyClick(filter, Qt::Key_Down);
    QTest::keyClick(filter, Qt::Key_Return);
  });
  EXPECT_EQ(empfaenger_.werte, QStringList{u"TH-0110|Thermostatkopf, neue Ausführung|weiß|70300"_s});
}

TEST_F(WirtAuskunft, ADoubleClickTakesTheRowAndEscapeNone) {
  oeffne([](QDialog& fenster) {
    auto* liste = fenster.findChild<QTreeView*>();
    const QPoint stelle = liste->visualRect(liste->model()->index(1, 1)).center();
    QTest::mouseClick(liste->viewport(), Qt::LeftButton, {}, stelle);
    QTest::mouseDClick(liste->viewport(), Qt::LeftButton, {}, stelle);
  });
  EXPECT_EQ(empfaenger_.werte, QStringList{u"MI-0025|Dreiwegemischer DN 25||70120"_s});
  oeffne([](QDialog& fenster) { QTest::keyClick(&fenster, Qt::Key_Escape); });
  EXPECT_EQ(empfaenger_.werte.size(), 1);
}

TEST_F(WirtAuskunft, TheProgramKnowsNoOtherList) {
  Artikelauskunft auskunft;
  EXPECT_EQ(Fehlernummer_von([&] {
    auskunft.Anzeige_Auskunft(u"Kunden"_s, {}, {}, {}, {}, {}, platz_.verbindung(), empfaenger_, {}, {});
  }),
      5);
}
