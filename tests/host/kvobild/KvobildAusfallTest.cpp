// The command line against a server that goes away, refuses or hangs. The program runs over TDS.
#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>

#include "tests/host/kvobild/Kvobild.h"
#include "tests/support/Pruefziel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildAusfall : public ::testing::Test {
 protected:
  void SetUp() override {
    if (pruefziel() == Pruefziel::Sqlite) GTEST_SKIP() << "there is no server: KVO_PRUEFDATENBANK is not set";
    auftrag(u"weiter"_s);
    auftrag(u"leere"_s);
    ASSERT_TRUE(QDir().mkpath(wurzel()));
  }
  void TearDown() override {
    if (!IsSkipped()) auftrag(u"heile"_s);
  }

  static void auftrag(const QString& zeile) { pruefserver().steuere(zeile); }
  static void sql(const QString& anweisung) { auftrag(u"sql "_s + anweisung); }
  static QStringList tabelle() {
    QStringList zeilen;
    const QString antwort = pruefserver().steuere(u"sql SELECT Bildname FROM Bild_Zuordnungen ORDER BY Bildname"_s);
    for (const auto zeile : QJsonDocument::fromJson(antwort.toUtf8()).array())
      zeilen.append(zeile.toArray()[0].toString());
    return zeilen;
  }
  QString wurzel() const { return ordner_.pfad(u"ablage"_s); }
  QString bild(const QString& name) const { return ordner_.schreibe(u"eingang/"_s + name, "x"); }
  QStringList dateien() const {
    QStringList namen;
    QDirIterator lauf(wurzel(), QDir::Files, QDirIterator::Subdirectories);
    while (lauf.hasNext()) namen.append(QDir(wurzel()).relativeFilePath(lauf.next()));
    namen.sort();
    return namen;
  }

  /// Runs a command on the server. Nothing that it says may hold the password.
  static Lauf fuehre(const QStringList& argumente, const QString& weiteres = {}) {
    const Lauf lauf =
        kvobild(argumente + QStringList{u"--verbindung"_s, u"Provider=SQLOLEDB;"_s + pruefserver_Angaben() + weiteres});
    EXPECT_FALSE((lauf.ausgabe + lauf.meldungen).contains(pruefserver_Kennwort()));
    return lauf;
  }
  Lauf lesen(const QString& weiteres = {}) const {
    return fuehre({u"lesen"_s, u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s}, weiteres);
  }
  Lauf zuordnen(const QStringList& bilder, const QString& weiteres = {}) const {
    return fuehre(QStringList{u"zuordnen"_s, u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--bilder"_s, wurzel(),
                      u"--ordner"_s, u"Belege/1"_s} +
            bilder,
        weiteres);
  }
  static void erwarte_Datenbankfehler(const Lauf& lauf, const QString& worte) {
    EXPECT_EQ(lauf.code, 3) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(worte)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.ausgabe.isEmpty()) << lauf.ausgabe.toStdString();
  }

  Testordner ordner_;
};

}  // namespace

TEST_F(KvobildAusfall, WithoutAServerReadingAndAssigningEndWithWords) {
  auftrag(u"halt"_s);
  erwarte_Datenbankfehler(lesen(), u"ist nicht zu erreichen oder nimmt die Verbindung nicht an"_s);
  erwarte_Datenbankfehler(zuordnen({bild(u"a.jpg"_s)}), u"ist nicht zu erreichen oder nimmt die Verbindung nicht an"_s);
  EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(KvobildAusfall, ARefusedLoginAndAHangingOneAreTold) {
  auftrag(u"anmeldung * verweigere"_s);
  erwarte_Datenbankfehler(lesen(), u"hat die Anmeldung abgelehnt"_s);
  erwarte_Datenbankfehler(zuordnen({bild(u"a.jpg"_s)}), u"hat die Anmeldung abgelehnt"_s);
  auftrag(u"heile"_s);
  auftrag(u"anmeldung * stumm"_s);
  erwarte_Datenbankfehler(lesen(u";Connect Timeout=1"_s), u"in 1 Sekunden nicht geantwortet"_s);
  erwarte_Datenbankfehler(zuordnen({bild(u"a.jpg"_s)}, u";Connect Timeout=1"_s), u"in 1 Sekunden nicht geantwortet"_s);
  EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(KvobildAusfall, ABreakWhileReadingShowsNothingHalf) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s), bild(u"c.jpg"_s)}).code, 0);
  for (const QString& ort : {u"vor"_s, u"halb"_s, u"zeile:2"_s}) {
    SCOPED_TRACE(ort.toStdString());
    auftrag(u"trenne 1/select "_s + ort);
    erwarte_Datenbankfehler(lesen(), u"abgerissen"_s);
    auftrag(u"heile"_s);
  }
  EXPECT_EQ(lesen().code, 0);
}

TEST_F(KvobildAusfall, ABreakBeforeWritingLeavesNoRowAndNoCopy) {
  auftrag(u"trenne 1/insert vor"_s);
  erwarte_Datenbankfehler(zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s)}), u"2 von 2 Bildern sind nicht zugeordnet"_s);
  EXPECT_TRUE(tabelle().isEmpty());
  EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(KvobildAusfall, ABreakInTheMiddleOfWritingKeepsWhatIsWritten) {
  auftrag(u"trenne 2/insert vor"_s);
  const Lauf lauf = zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s), bild(u"c.jpg"_s)});
  EXPECT_EQ(lauf.code, 1) << "a part is done";
  ASSERT_EQ(lauf.zeilen().size(), 1);
  EXPECT_EQ(dateien(), QStringList{u"Belege/1/"_s + lauf.zeilen()[0]});
  EXPECT_EQ(tabelle().size(), 1);
}

TEST_F(KvobildAusfall, WhereOnlyTheAnswerIsLostThePictureIsAssignedAndStays) {
  for (const QString& ort : {u"nach"_s, u"halb"_s}) {
    SCOPED_TRACE(ort.toStdString());
    auftrag(u"leere"_s);
    ASSERT_TRUE(QDir(wurzel() + u"/Belege"_s).removeRecursively());
    auftrag(u"trenne 1/insert "_s + ort);
    const Lauf lauf = zuordnen({bild(u"a.jpg"_s)});
    EXPECT_EQ(lauf.code, 0);
    EXPECT_TRUE(lauf.meldungen.contains(u"abgerissen"_s)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(u"ist trotz des Fehlers zugeordnet"_s)) << lauf.meldungen.toStdString();
    ASSERT_EQ(lauf.zeilen().size(), 1);
    EXPECT_EQ(dateien(), QStringList{u"Belege/1/"_s + lauf.zeilen()[0]});
    EXPECT_EQ(tabelle(), QStringList{lauf.zeilen()[0].chopped(4)});
  }
}

TEST_F(KvobildAusfall, WhereTheQuestionAfterwardsBreaksTooANewConnectionAsks) {
  auftrag(u"trenne 1/insert nach"_s);
  auftrag(u"trenne 2/select vor"_s);
  const Lauf lauf = zuordnen({bild(u"a.jpg"_s)});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  ASSERT_EQ(lauf.zeilen().size(), 1);
  EXPECT_EQ(tabelle(), QStringList{lauf.zeilen()[0].chopped(4)});
}

TEST_F(KvobildAusfall, WhereTheResultCannotBeLearnedTheCopyStays) {
  auftrag(u"trenne 1/insert nach"_s);
  // The second select is the question behind the save, the third the same over a new connection.
  auftrag(u"trenne 2,3/select vor"_s);
  const Lauf lauf = zuordnen({bild(u"a.jpg"_s)});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"ist ungewiss; die Kopie in der Ablage bleibt"_s))
      << lauf.meldungen.toStdString();
  EXPECT_EQ(tabelle().size(), 1);
  EXPECT_EQ(dateien().size(), 1);
}

namespace {

class KvobildAusfallAufraeumen : public KvobildAusfall {
 protected:
  void SetUp() override {
    KvobildAusfall::SetUp();
    if (IsSkipped()) return;
    for (const QString& name : {u"1/a"_s, u"1/b"_s, u"1/frei"_s, u"2/c"_s, u"2/frei"_s}) {
      ordner_.schreibe(u"ablage/Belege/"_s + name + u".jpg"_s, "x");
      if (name.endsWith(u"frei"_s)) continue;
      sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
          "Values ('AB','1','-','-','%1','jpg','BEL','-','Belege\\%2',0)"_s.arg(
              name.section(u'/', 1), name.section(u'/', 0, 0)));
    }
  }
  Lauf aufraeumen() const {
    return fuehre({u"aufraeumen"_s, u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--bilder"_s, wurzel()});
  }
};

}  // namespace

TEST_F(KvobildAusfallAufraeumen, WhicheverStatementItBreaksAtNothingIsDeleted) {
  const QStringList alle = dateien();
  // Asked twice, for the list and before the deletion: five pictures and two looks at the table each.
  constexpr int Anweisungen = 14;
  for (const QString& ort : {u"vor"_s, u"halb"_s})
    for (int nummer = 1; nummer <= Anweisungen; ++nummer) {
      SCOPED_TRACE((QString::number(nummer) + u' ' + ort).toStdString());
      auftrag(u"trenne %1/select "_s.arg(nummer) + ort);
      const Lauf lauf = aufraeumen();
      EXPECT_EQ(lauf.code, 3) << lauf.meldungen.toStdString();
      EXPECT_TRUE(lauf.meldungen.contains(u"ist nicht zu lesen"_s)) << lauf.meldungen.toStdString();
      EXPECT_EQ(dateien(), alle);
      auftrag(u"heile"_s);
    }
  EXPECT_EQ(aufraeumen().code, 0);
  EXPECT_EQ(dateien(), (QStringList{u"Belege/1/a.jpg"_s, u"Belege/1/b.jpg"_s, u"Belege/2/c.jpg"_s}));
}

TEST_F(KvobildAusfallAufraeumen, WhereTheTableRefusesSingleAnswersNothingIsDeleted) {
  const QStringList alle = dateien();
  // Once for a single file, and for all of them in both rounds, as a missing right on one column would do.
  for (const QString& auswahl : {u"2"_s, u"5"_s, u"2,3,4,5,6,9,10,11,12,13"_s}) {
    SCOPED_TRACE(auswahl.toStdString());
    auftrag(u"fehler "_s + auswahl + u"/select 229 14 Kein Recht auf die Spalte Bildpfad"_s);
    const Lauf lauf = aufraeumen();
    EXPECT_NE(lauf.code, 0);
    EXPECT_EQ(dateien(), alle) << lauf.meldungen.toStdString();
    auftrag(u"heile"_s);
  }
}
