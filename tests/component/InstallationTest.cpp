// The tree that cmake --install makes, used by a project that knows nothing else.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>

#include "tests/component/Prozess.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Cmake = QStringLiteral(CMAKE);
const QString Quellen = QStringLiteral(KVO_QUELLORDNER "/");

QSet<QString> dateien_unter(const QString& ordner) {
  QSet<QString> liste;
  QDirIterator lauf(ordner, QDir::Files | QDir::System, QDirIterator::Subdirectories);
  while (lauf.hasNext()) liste.insert(QDir(ordner).relativeFilePath(lauf.next()));
  return liste;
}

/// The headers that the build publishes.
QSet<QString> veroeffentlichte_Koepfe() {
  QFile datei(Quellen + u"component/CMakeLists.txt"_s);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
  QSet<QString> koepfe;
  static const QRegularExpression Ausdruck(u"PROJECT_SOURCE_DIR\\}/([^\"]+\\.h)\""_s);
  for (auto lauf = Ausdruck.globalMatch(QString::fromUtf8(datei.readAll())); lauf.hasNext();)
    koepfe.insert(lauf.next().captured(1));
  return koepfe;
}

/// Installed once, and then moved: the tree must not know where it was put.
class Installation : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ordner_ = std::make_unique<Testordner>();
    const Prozess lauf = starte(Cmake, {u"--install"_s, QStringLiteral(BAUORDNER), u"--prefix"_s, pfad(u"zuerst"_s)});
    ASSERT_EQ(lauf.code, 0) << ende(lauf);
    ASSERT_TRUE(QDir().rename(pfad(u"zuerst"_s), baum()));
  }
  static void TearDownTestSuite() { ordner_.reset(); }

  static QString pfad(const QString& name) { return ordner_->pfad(name); }
  static QString baum(const QString& name = {}) { return pfad(u"kvo baum"_s) + (name.isEmpty() ? name : u'/' + name); }

  /// Configures and builds a project against the tree, with this build's compiler and settings.
  static Prozess baue(const QString& projekt, const QStringList& dazu) {
    const QString ziel = pfad(projekt);
    const QStringList angaben{u"-S"_s, Quellen + u"tests/component/"_s + projekt, u"-B"_s, ziel, u"-G"_s,
        QStringLiteral(GENERATOR), u"-DCMAKE_CXX_COMPILER="_s + QStringLiteral(COMPILER),
        u"-DCMAKE_CXX_COMPILER_LAUNCHER="_s + QStringLiteral(LAUNCHER),
        u"-DCMAKE_CXX_FLAGS="_s + QStringLiteral(COMPILER_FLAGS), u"-DCMAKE_BUILD_TYPE="_s + QStringLiteral(BAUART),
        u"-DCMAKE_PREFIX_PATH="_s + baum()};
    const Prozess vorher = starte(Cmake, angaben + dazu);
    return vorher.code == 0 ? starte(Cmake, {u"--build"_s, ziel}) : vorher;
  }

 private:
  static std::unique_ptr<Testordner> ordner_;
};

std::unique_ptr<Testordner> Installation::ordner_;

}  // namespace

TEST_F(Installation, AProjectOutsideFindsThePackageBuildsAndRuns) {
  const Prozess bau = baue(u"aussen"_s, {u"-DBEISPIEL="_s + Quellen + u"docs/beispiele/minimaler_wirt.cpp"_s});
  ASSERT_EQ(bau.code, 0) << ende(bau);
  const Prozess lauf = starte(pfad(u"aussen/aussen"_s), {pfad(u"aussen.db"_s)});
  EXPECT_EQ(lauf.code, 0) << ende(lauf);
  EXPECT_EQ(lauf.ausgabe, u"1 Zeile: kessel, Dialoge: ja\n"_s);
  EXPECT_EQ(lauf.fehlerausgabe, QString());
}

TEST_F(Installation, EveryInstalledHeaderCompilesAlone) {
  const Prozess bau = baue(u"koepfe"_s, {u"-DKOEPFE="_s + baum(u"include/KVOBildZuordnung"_s)});
  EXPECT_EQ(bau.code, 0) << ende(bau);
}

TEST_F(Installation, TheHeadersKeepTheirFoldersAndNoOthersAreInstalled) {
  ASSERT_FALSE(veroeffentlichte_Koepfe().isEmpty());
  EXPECT_EQ(dateien_unter(baum(u"include/KVOBildZuordnung"_s)), veroeffentlichte_Koepfe());
}

TEST_F(Installation, TheScriptsOfEveryDatabaseAreThere) {
  const QSet<QString> skripte = dateien_unter(baum(u"share/KVOBildZuordnung/sql"_s));
  EXPECT_TRUE(skripte.contains(u"sqlite/Bild_Zuordnungen.sql"_s));
  EXPECT_EQ(skripte, dateien_unter(Quellen + u"sql"_s));
}

TEST_F(Installation, ADesktopFindsTheEntryItsDescriptionAndTheIcon) {
  const QSet<QString> dateien = dateien_unter(baum(u"share"_s));
  for (const QString& datei :
      {u"applications/bildzuordnung.desktop"_s, u"icons/hicolor/scalable/apps/bildzuordnung.svg"_s,
          u"metainfo/example.kvobildzuordnung.bildzuordnung.metainfo.xml"_s})
    EXPECT_TRUE(dateien.contains(datei)) << datei.toStdString();
}

TEST_F(Installation, BothProgramsFindTheLibraryBesideThem) {
  for (const QString& name : {u"kvobild"_s, u"bildzuordnung"_s}) {
    const Prozess lauf = starte(baum(u"bin/"_s + name), {u"--hilfe"_s});
    EXPECT_EQ(lauf.code, 0) << name.toStdString() << ": " << ende(lauf);
    EXPECT_TRUE(lauf.ausgabe.contains(name)) << ende(lauf);
    EXPECT_EQ(lauf.fehlerausgabe, QString()) << name.toStdString();
  }
}
