// A server that goes away while the dialog is open, and comes back. Over TDS, with connections of the product alone.
#include <QJsonArray>
#include <QJsonDocument>

#include "tests/component/Wegtest.h"
#include "tests/support/Pruefziel.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WegServerausfall : public ::testing::Test {
 protected:
  class Betrieb final : public Anwendungsobjekt {
   public:
    Betrieb() { verbindung_->Open(ConnectStringDB()); }
    QString ConnectStringDB() const override { return u"Provider=SQLOLEDB;"_s + pruefserver_Angaben(); }
    std::shared_ptr<adodb::Connection> ConnectionDB() const override { return verbindung_; }

   private:
    std::shared_ptr<adodb::Connection> verbindung_ = std::make_shared<adodb::Connection>();
  };

  void SetUp() override {
    if (pruefziel() == Pruefziel::Sqlite) GTEST_SKIP() << "there is no server: KVO_PRUEFDATENBANK is not set";
    auftrag(u"weiter"_s);
    auftrag(u"leere"_s);
    BasZuordnungen::verwirf_Verbindung();
    wurzel_.schreibe(u"Belege/1/a.jpg"_s, "bild");
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
        "Druckkennzeichen, SortIndex) Values ('AB','1','-','-','a','jpg','BEL','-','Belege\\1','T','0001',0)"_s);
  }
  void TearDown() override {
    if (IsSkipped()) return;
    auftrag(u"heile"_s);
    auftrag(u"weiter"_s);
    BasZuordnungen::verwirf_Verbindung();
  }

  static void auftrag(const QString& zeile) { pruefserver().steuere(zeile); }
  static QJsonArray sql(const QString& anweisung) {
    return QJsonDocument::fromJson(pruefserver().steuere(u"sql "_s + anweisung).toUtf8()).array();
  }
  static QStringList tabelle() {
    QStringList zeilen;
    for (const auto zeile : sql(u"select Bildname, Beschreibung from Bild_Zuordnungen order by Bildname"_s))
      zeilen.append(zeile.toArray()[0].toString() + u'|' + zeile.toArray()[1].toString());
    return zeilen;
  }

  /// Changes the picture's text and attaches another one; `danach` happens before the dialog closes.
  Zuordnungsweg::Ergebnis gehe(const std::function<void()>& danach) {
    const auto dialog = [&](const auto&, const QString&, const QString&, const auto& bilder, const auto&...) {
      bilder->AktInd(0);
      bilder->Bild_Beschreibung(u"Bob's"_s);
      bilder->Bild_Changeflag(true);
      wurzel_.schreibe(u"Belege/1/b.jpg"_s, "bild");
      bilder->FKT_NeuesBild({}, {}, {}, {}, u"b"_s, u"jpg"_s, u"BEL"_s, {});
      bilder->Bild_Pfad(u"Belege\\1"_s);
      bilder->Bild_SortIndex(1);
      danach();
      return true;
    };
    return Zuordnungsweg(std::make_shared<Betrieb>(), u"P:"_s, dialog)
        .gehe({u"AB"_s, u"1"_s, {}, {}, u"BEL"_s, {}, u"Belege\\1"_s, {}});
  }

  /// Answers every question with the next answer, whatever the words of the database in it; `dabei` runs with each.
  class Antworten final : public Meldungsfenster {
   public:
    Antworten(QList<Antwort> antworten, std::function<void(qsizetype)> dabei)
        : antworten_(std::move(antworten)), dabei_(std::move(dabei)) {}
    Antwort zeige(const Meldung& meldung) override {
      EXPECT_TRUE(meldung.Text.endsWith(u"Noch einmal versuchen?"_s)) << meldung.Text.toStdString();
      EXPECT_FALSE(meldung.Text.contains(pruefserver_Kennwort()));
      if (gefragt >= antworten_.size()) {
        ADD_FAILURE() << "one question too many: " << meldung.Text.toStdString();
        return Antwort::Nein;
      }
      dabei_(gefragt);
      return antworten_[gefragt++];
    }
    qsizetype gefragt = 0;

   private:
    QList<Antwort> antworten_;
    std::function<void(qsizetype)> dabei_;
  };
  /// The answers in force for a walk; all of them must be asked for.
  Zuordnungsweg::Ergebnis gehe(
      const std::function<void()>& danach, const QList<Antwort>& antworten, std::function<void(qsizetype)> dabei) {
    const auto fenster = std::make_shared<Antworten>(antworten, std::move(dabei));
    const auto vorher = oberflaeche::setze(fenster);
    const Zuordnungsweg::Ergebnis ergebnis = gehe(danach);
    oberflaeche::setze(vorher);
    EXPECT_EQ(fenster->gefragt, antworten.size());
    return ergebnis;
  }

  const QStringList Geschrieben{u"a|Bob's"_s, u"b|"_s};
  CoreDoppel core_;
  Bildwurzel wurzel_;
};

}  // namespace

TEST_F(WegServerausfall, AServerThatComesBackAfterSeveralTriesGetsEverything) {
  const auto ergebnis = gehe([] { auftrag(u"halt"_s); }, {Antwort::Ja, Antwort::Ja, Antwort::Ja},
      [](qsizetype nummer) {
    if (nummer == 2) auftrag(u"weiter"_s);
  });
  EXPECT_TRUE(ergebnis.vollstaendig()) << ergebnis.text().toStdString();
  EXPECT_EQ(tabelle(), Geschrieben);
}

TEST_F(WegServerausfall, CutConnectionsAreOpenedAnewAfterOneQuestion) {
  const auto ergebnis = gehe(
      [] {
    // Both are open, then both are cut.
    ASSERT_TRUE(BasZuordnungen::CmdSql(
        u"delete from Bild_Zuordnungen where Key1 = 'nie'"_s, u"Provider=SQLOLEDB;"_s + pruefserver_Angaben(), true));
    auftrag(u"trenne-alle"_s);
      },
      {Antwort::Ja}, [](qsizetype) {});
  EXPECT_TRUE(ergebnis.vollstaendig()) << ergebnis.text().toStdString();
  EXPECT_EQ(tabelle(), Geschrieben);
}

TEST_F(WegServerausfall, AnInsertWhoseAnswerIsLostStandsThereOnceWithoutAQuestion) {
  for (const QString& ort : {u"nach"_s, u"halb"_s}) {
    SCOPED_TRACE(ort.toStdString());
    sql(u"delete from Bild_Zuordnungen where Bildname = 'b'"_s);
    const auto ergebnis = gehe([&] { auftrag(u"trenne 1/insert "_s + ort); }, {}, [](qsizetype) {});
    EXPECT_TRUE(ergebnis.vollstaendig()) << ergebnis.text().toStdString();
    EXPECT_EQ(tabelle(), Geschrieben);
  }
}

TEST_F(WegServerausfall, AnUpdateThatWasCutOffIsWrittenAgainAndTheInsertBehindItOnce) {
  const auto ergebnis = gehe([] { auftrag(u"trenne 1/update vor"_s); }, {Antwort::Ja}, [](qsizetype) {});
  EXPECT_TRUE(ergebnis.vollstaendig()) << ergebnis.text().toStdString();
  EXPECT_EQ(tabelle(), Geschrieben);
}

TEST_F(WegServerausfall, AfterARefusalTheNextWalkWritesWithoutARestart) {
  const auto aufgegeben = gehe([] { auftrag(u"halt"_s); }, {Antwort::Nein}, [](qsizetype) {});
  EXPECT_FALSE(aufgegeben.vollstaendig());
  auftrag(u"weiter"_s);
  EXPECT_TRUE(gehe([] {}, {}, [](qsizetype) {}).vollstaendig());
  EXPECT_EQ(tabelle(), Geschrieben);
}
