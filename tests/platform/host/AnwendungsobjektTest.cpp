#include <gtest/gtest.h>

#include <QHash>

#include "platform/host/Anwendungsobjekt.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A host that has no more than the connection.
class Knapp final : public Anwendungsobjekt {
 public:
  QString ConnectStringDB() const override { return u"Provider=SQLite"_s; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return nullptr; }
};

/// Settings in memory, each told apart by its four names.
class Gemerkte final : public Einstellungen {
 public:
  void GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert, const QString& pProgramm,
      const QString& pBenutzer, const QString& pVorgabe) override {
    pWert = werte.value(QStringList{pAbschnitt, pSchluessel, pProgramm, pBenutzer}.join(u'/'), pVorgabe);
  }
  QHash<QString, QString> werte;
};

class Reich final : public Anwendungsobjekt {
 public:
  QString ConnectStringDB() const override { return {}; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return nullptr; }
  std::shared_ptr<Einstellungen> Settings() const override { return einstellungen; }
  QString User() const override { return u"Meier"_s; }
  std::shared_ptr<Gemerkte> einstellungen = std::make_shared<Gemerkte>();
};

QString mit_Artikelstamm(const Anwendungsobjekt& anwendung) {
  QString wert = u"alt"_s;
  anwendung.Settings()->GetSetting(
      u"Firmendaten"_s, u"MitArtikelstammZF"_s, wert, u"Standard"_s, u"Standard"_s, u"0"_s);
  return wert;
}

}  // namespace

TEST(AnwendungsobjektTest, AHostWithoutSettingsAnswersEveryQuestionWithTheDefault) {
  EXPECT_EQ(mit_Artikelstamm(Knapp()), u"0"_s);
}

TEST(AnwendungsobjektTest, WhatAHostDoesNotSayIsEmpty) {
  const Knapp knapp;
  EXPECT_EQ(knapp.Name() + knapp.User() + knapp.ExeDir() + knapp.ReportDBTemplateDir() + knapp.DBName(), QString());
}

TEST(AnwendungsobjektTest, TheSettingsOfTheHostAnswerThroughTheThirdArgument) {
  const Reich reich;
  EXPECT_EQ(mit_Artikelstamm(reich), u"0"_s);
  reich.einstellungen->werte[u"Firmendaten/MitArtikelstammZF/Standard/Standard"_s] = u"1"_s;
  EXPECT_EQ(mit_Artikelstamm(reich), u"1"_s);
  const Anwendungsobjekt& allgemein = reich;
  EXPECT_EQ(allgemein.User(), u"Meier"_s);
}
