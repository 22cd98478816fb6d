// The list of what the component consists of, and the code, tell the same.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>

#include "tests/docs/Quelltext.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Eintrag {
  QString abschnitt;
  QStringList namen;
  QString datei;
  QStringList beweise;
};

/// What stands between backquotes.
QStringList in_Hochkommas(const QString& zelle) {
  static const QRegularExpression Stueck(u"`([^`]+)`"_s);
  QStringList liste;
  for (auto lauf = Stueck.globalMatch(zelle); lauf.hasNext();) liste.append(lauf.next().captured(1));
  return liste;
}

const QList<Eintrag>& eintraege() {
  static const QList<Eintrag> Liste = [] {
    QList<Eintrag> liste;
    QString abschnitt;
    for (const QString& zeile : projekt::lies(u"docs/ABDECKUNG.md"_s).split(u'\n')) {
      if (zeile.startsWith(u"## "_s)) abschnitt = zeile.mid(3).remove(u'`');
      const QStringList zellen = zeile.split(u'|');
      if (zellen.size() != 5 || !zellen[1].contains(u'`')) continue;
      liste.append({abschnitt, in_Hochkommas(zellen[1]), in_Hochkommas(zellen[2]).value(0), in_Hochkommas(zellen[3])});
    }
    return liste;
  }();
  return Liste;
}

/// Names listed for a class; its controls may have a section of their own.
QSet<QString> gelistet(const QString& klasse) {
  QSet<QString> namen;
  for (const Eintrag& e : eintraege())
    if (e.abschnitt == klasse || e.abschnitt.startsWith(klasse + u':'))
      namen.unite(QSet<QString>(e.namen.begin(), e.namen.end()));
  return namen;
}

/// All tests, as "program: Suite.Name"; a program's sources are those that its CMakeLists.txt names.
const QSet<QString>& tests() {
  static const QSet<QString> Menge = [] {
    static const QRegularExpression Programm(u"\\bkvo_test\\((\\w+)([^)]*)\\)"_s);
    static const QRegularExpression Quelle(u"[\\w/]+\\.cpp"_s);
    static const QRegularExpression Test(
        u"\\b(?:TEST|TEST_F|TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP)\\(\\s*(\\w+)\\s*,\\s*(\\w+)"_s);
    QSet<QString> menge;
    for (const QString& liste : projekt::dateien(u"tests"_s, {u"CMakeLists.txt"_s})) {
      const QString ordner = QFileInfo(liste).path() + u'/';
      for (auto p = Programm.globalMatch(projekt::lies(liste)); p.hasNext();) {
        const QRegularExpressionMatch programm = p.next();
        for (auto q = Quelle.globalMatch(programm.captured(2)); q.hasNext();) {
          const QString datei = ordner + q.next().captured();
          if (!QFileInfo::exists(QStringLiteral(KVO_QUELLORDNER "/") + datei)) continue;
          const Quelltext quelle(projekt::lies(datei));
          for (auto t = Test.globalMatch(quelle.code()); t.hasNext();) {
            const QRegularExpressionMatch test = t.next();
            menge.insert(programm.captured(1) + u": "_s + test.captured(1) + u'.' + test.captured(2));
          }
        }
      }
    }
    return menge;
  }();
  return Menge;
}

QString fehlende(const QSet<QString>& namen, const QSet<QString>& davon) {
  QStringList liste = (namen - davon).values();
  liste.sort();
  return liste.join(u' ');
}

}  // namespace

TEST(Abdeckung, EveryNameStandsInItsFile) {
  ASSERT_GT(eintraege().size(), 150);
  QHash<QString, QString> dateien;
  for (const Eintrag& e : eintraege()) {
    if (!dateien.contains(e.datei)) dateien.insert(e.datei, projekt::lies(e.datei));
    for (const QString& name : e.namen) {
      const QRegularExpression wort(u"\\b"_s + name + u"\\b"_s, QRegularExpression::UseUnicodePropertiesOption);
      EXPECT_TRUE(dateien[e.datei].contains(wort)) << e.datei.toStdString() << ": " << name.toStdString();
    }
  }
}

TEST(Abdeckung, EveryTestExistsInItsProgram) {
  ASSERT_GT(tests().size(), 1000);
  for (const Eintrag& e : eintraege())
    for (const QString& beweis : e.beweise) EXPECT_TRUE(tests().contains(beweis)) << beweis.toStdString();
}

TEST(Abdeckung, ListAndDrawingsAreWhatTheirScriptsMake) {
  for (const QString& skript : {u"abdeckung.py"_s, u"haus.py"_s, u"leistungsbild.py"_s}) {
    QProcess lauf;
    lauf.start(u"python3"_s, {QStringLiteral(KVO_QUELLORDNER "/packaging/") + skript, u"--pruefe"_s});
    ASSERT_TRUE(lauf.waitForFinished()) << skript.toStdString() << ": " << lauf.errorString().toStdString();
    EXPECT_EQ(lauf.exitCode(), 0) << lauf.readAllStandardError().toStdString();
  }
}

TEST(Abdeckung, EveryPublicMemberOfAClassIsListed) {
  for (const auto& [kopf, klasse] : {std::pair{u"store/clsBildZuordnungen.h"_s, u"clsBildZuordnungen"_s},
           std::pair{u"store/clsBilderSpeicher.h"_s, u"clsBilderSpeicher"_s},
           std::pair{u"dialogs/assignment/clsDialoge.h"_s, u"clsDialoge"_s},
           std::pair{u"exif/clsExifInfo.h"_s, u"clsExifInfo"_s}, std::pair{u"imaging/frmPic.h"_s, u"frmPic"_s}}) {
    const QSet<QString> namen = Quelltext(projekt::lies(kopf)).oeffentliche_Namen(klasse);
    EXPECT_FALSE(namen.isEmpty()) << kopf.toStdString();
    EXPECT_EQ(fehlende(namen, gelistet(klasse)), QString()) << klasse.toStdString();
  }
}

TEST(Abdeckung, EveryPublicMemberOfAFormIsListed) {
  int formulare = 0;
  for (const QString& ordner : {u"dialogs"_s, u"exif"_s})
    for (const QString& kopf : projekt::dateien(ordner, {u"frm_*.h"_s})) {
      const QString klasse = QFileInfo(kopf).baseName();
      const QSet<QString> namen = Quelltext(projekt::lies(kopf)).oeffentliche_Namen(klasse);
      EXPECT_GT(namen.size(), 5) << kopf.toStdString();
      EXPECT_EQ(fehlende(namen, gelistet(klasse)), QString()) << klasse.toStdString();
      ++formulare;
    }
  EXPECT_EQ(formulare, 5);
}

TEST(Abdeckung, EveryFunctionOfAModuleIsListed) {
  for (const QString& kopf :
      {u"store/BasZuordnungen.h"_s, u"store/mod_BilderSuchen.h"_s, u"imaging/mod_GrafikKonvert.h"_s}) {
    const QString modul = QFileInfo(kopf).baseName();
    const QSet<QString> namen = Quelltext(projekt::lies(kopf)).freie_Funktionen();
    EXPECT_GT(namen.size(), 3) << kopf.toStdString();
    EXPECT_EQ(fehlende(namen, gelistet(modul)), QString()) << modul.toStdString();
  }
}

TEST(Abdeckung, EveryCommandIsListed) {
  static const QRegularExpression Befehl(u"^Befehl (\\w+)\\(\\);"_s, QRegularExpression::MultilineOption);
  const QString programm = projekt::lies(u"host/kvobild/Befehle.h"_s);
  QSet<QString> namen;
  for (auto lauf = Befehl.globalMatch(programm); lauf.hasNext();) namen.insert(lauf.next().captured(1));
  EXPECT_GT(namen.size(), 9);
  EXPECT_EQ(fehlende(namen, gelistet(u"Befehle von kvobild"_s)), QString());
}

TEST(Abdeckung, AClassIsReadWithAllItsMembers) {
  const Quelltext quelle(
      u"class KVO_EXPORT clsProbe : public Form {\n"
      " public:\n"
      "  clsProbe();\n"
      "  ~clsProbe() override;\n"
      "  clsProbe& operator=(const clsProbe&) = delete;\n"
      "  // nur ein_Kommentar();\n"
      "  QString eins, zwei;\n"
      "  std::shared_ptr<const Bild> drei;\n"
      "  static constexpr int vier = -1;\n"
      "  bool fuenf(const QString& a = u\"x();\"_s,\n"
      "             int b) const;\n"
      "  void sechs() {}\n"
      " protected:\n"
      "  void sieben();\n"
      " private:\n"
      "  int acht = 0;\n"
      "};\n"
      "class Danach {\n"_s);
  EXPECT_EQ(quelle.oeffentliche_Namen(u"clsProbe"_s),
      (QSet<QString>{u"eins"_s, u"zwei"_s, u"drei"_s, u"vier"_s, u"fuenf"_s, u"sechs"_s}));
}
