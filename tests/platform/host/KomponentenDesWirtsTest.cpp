#include <gtest/gtest.h>

#include <QHash>
#include <QStringList>

#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A look-up whose user picks one row after the other and then closes it.
class Auskunft final : public clsAuskunft {
 public:
  explicit Auskunft(QStringList gewaehlt) : gewaehlt_(std::move(gewaehlt)) {}
  std::int32_t Anzeige_Auskunft(const QString& pName, const QString& pZusatz, const QString& pAppName,
      const QString& pUser, const QString& pExeDir, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection, Auskunftsempfaenger& pEmpfaenger,
      const QString& pReportDBTemplateDir, const QString& pDBName) override {
    erhalten = QStringList{pName, pZusatz, pAppName, pUser, pExeDir, pConnectString, pReportDBTemplateDir, pDBName};
    EXPECT_FALSE(pConnection);
    for (const QString& wert : gewaehlt_) pEmpfaenger.LA_Doppelclick(wert);
    return 1;
  }
  QStringList erhalten;

 private:
  QStringList gewaehlt_;
};

struct Empfaenger final : Auskunftsempfaenger {
  void LA_Doppelclick(const QString& pWert) override { werte += pWert; }
  QStringList werte;
};

/// An article stock of two, whose second has no supplier.
class Artikel final : public clsArtikelManagerSQL {
 public:
  void Init(std::int32_t pArt, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& /*pConnection*/) override {
    bereit_ = pArt == 0 && !pConnectString.isEmpty();
  }
  bool fktLeseArtikel(const QString& pArtikelnummer, bool, bool, bool, bool, bool, bool) override {
    if (!bereit_ || !stamm_.contains(pArtikelnummer)) return false;
    nummer_ = pArtikelnummer;
    return true;
  }
  bool fktLeseArtikel_TeilArtikel(const QString& pTeil) override {
    for (const QString& nummer : stamm_.keys())
      if (nummer.contains(pTeil)) return fktLeseArtikel(nummer, true, false, false, false, false, true);
    return false;
  }
  QString Artikelnummer() const override { return nummer_; }
  Variant Bez() const override { return nummer_.isEmpty() ? Variant() : Variant(u"Kessel"_s); }
  Variant bez3() const override { return Variant(); }
  Variant Hauptlieferant() const override { return stamm_.value(nummer_); }

 private:
  const QHash<QString, Variant> stamm_{{u"4711"_s, u"Müller"_s}, {u"0815"_s, Null()}};
  QString nummer_;
  bool bereit_ = false;
};

class KomponentenDesWirts : public ::testing::Test {
 protected:
  void TearDown() override {
    for (const QString& name : {LookUp, Stamm, ZweiterStamm}) komponenten::registriere(name, {});
  }
  const QString LookUp = u"KVOListAuskunft.clsAuskunft"_s;
  const QString Stamm = u"KVOArtik.clsArtikelManagerSQL"_s;
  const QString ZweiterStamm = u"KVOArtikelZF.clsArtikelManagerSQLZF"_s;
};

}  // namespace

TEST_F(KomponentenDesWirts, ANameThatNobodyRegisteredRaises429) {
  EXPECT_EQ(Fehlernummer_von([&] { komponenten::erzeuge<clsAuskunft>(LookUp); }), 429);
  EXPECT_EQ(Fehlernummer_von([&] { komponenten::erzeuge<clsArtikelManagerSQL>(ZweiterStamm); }), 429);
}

TEST_F(KomponentenDesWirts, AnObjectOfAnotherTypeRaises13) {
  komponenten::registriere(LookUp, [] { return std::make_shared<Artikel>(); });
  EXPECT_EQ(Fehlernummer_von([&] { komponenten::erzeuge<clsAuskunft>(LookUp); }), 13);
}

TEST_F(KomponentenDesWirts, AFailureOfTheMakerReachesWhoeverAsks) {
  komponenten::registriere(LookUp,
      []() -> std::shared_ptr<komponenten::Komponente> { throw Laufzeitfehler(fehlernummer::ZugriffVerweigert); });
  EXPECT_EQ(Fehlernummer_von([&] { komponenten::erzeuge<clsAuskunft>(LookUp); }), 70);
}

TEST_F(KomponentenDesWirts, TheLookUpGetsItsTenArgumentsAndTellsEachPickToTheCaller) {
  const auto eigene = std::make_shared<Auskunft>(QStringList{u"4711|Kessel"_s, u""_s});
  komponenten::registriere(LookUp, [&] { return eigene; });
  Empfaenger empfaenger;
  komponenten::erzeuge<clsAuskunft>(LookUp)->Anzeige_Auskunft(u"Artikel"_s, {}, u"App"_s, u"Meier"_s, u"C:\\App"_s,
      u"Provider=SQLite"_s, nullptr, empfaenger, u"C:\\R"_s, u"Firma"_s);
  EXPECT_EQ(eigene->erhalten,
      (QStringList{
          u"Artikel"_s, u""_s, u"App"_s, u"Meier"_s, u"C:\\App"_s, u"Provider=SQLite"_s, u"C:\\R"_s, u"Firma"_s}));
  EXPECT_EQ(empfaenger.werte, (QStringList{u"4711|Kessel"_s, u""_s}));
}

TEST_F(KomponentenDesWirts, BothArticleStocksAreAskedInTheSameWay) {
  for (const QString& name : {Stamm, ZweiterStamm}) {
    komponenten::registriere(name, [] { return std::make_shared<Artikel>(); });
    const auto artikel = komponenten::erzeuge<clsArtikelManagerSQL>(name);
    artikel->Init(0, u"Provider=SQLite"_s, nullptr);
    EXPECT_FALSE(artikel->fktLeseArtikel(u"471"_s, true, false, false, false, false, true));
    EXPECT_EQ(artikel->Artikelnummer(), QString());
    EXPECT_TRUE(artikel->fktLeseArtikel_TeilArtikel(u"471"_s));
    EXPECT_EQ(artikel->Artikelnummer(), u"4711"_s);
    EXPECT_EQ(artikel->Hauptlieferant(), Variant(u"Müller"_s));
    EXPECT_EQ(artikel->Bez(), Variant(u"Kessel"_s));
    EXPECT_EQ(artikel->bez3(), Variant());
  }
}
