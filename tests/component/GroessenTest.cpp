// A host has the sizes of the published classes compiled in. They are compared with the list beside this file; with
// KVO_GROESSEN_SCHREIBEN=1 the list is written anew, as far as that does no host harm.
#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QStandardPaths>

#include "tests/component/Groessen.h"
#include "tests/component/Prozess.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Groessen = QMap<QString, qint64>;

const QString Listenpfad = QStringLiteral(KVO_QUELLORDNER "/tests/component/groessen.txt");
/// Stands in the list among the classes.
const QString Soversion = u"SOVERSION"_s;

QString lies(const QString& pfad) {
  QFile datei(pfad);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << pfad.toStdString();
  return QString::fromUtf8(datei.readAll());
}

Groessen liste() {
  Groessen groessen;
  for (const QString& zeile : lies(Listenpfad).split(u'\n'))
    if (!zeile.isEmpty() && !zeile.startsWith(u'#'))
      groessen.insert(zeile.section(u' ', 0, -2), zeile.section(u' ', -1).toLongLong());
  return groessen;
}

/// The tables of virtual functions, whose order a host has compiled in too.
Groessen tabellen() {
  const Prozess lauf = starte(u"nm"_s, {u"-DCS"_s, u"--defined-only"_s, QStringLiteral(BIBLIOTHEK)});
  EXPECT_EQ(lauf.code, 0) << ende(lauf);
  Groessen groessen;
  for (const QString& zeile : lauf.ausgabe.split(u'\n', Qt::SkipEmptyParts)) {
    const QString name = zeile.section(u' ', 3);
    if (name.startsWith("vtable for "_L1) && !name.contains(u'<'))
      groessen.insert(name, zeile.section(u' ', 1, 1).toLongLong(nullptr, 16));
  }
  return groessen;
}

Groessen gebaute() {
  Groessen groessen = tabellen();
  groessen.insert(klassengroessen());
  groessen.insert(Soversion, SOVERSION);
  return groessen;
}

/// What has another size than the list says, or is gone.
QStringList geaenderte(const Groessen& soll, const Groessen& ist) {
  QStringList namen;
  for (auto i = soll.begin(); i != soll.end(); ++i)
    if (ist.value(i.key(), -1) != i.value())
      namen.append(u"%1: %2, now %3"_s.arg(i.key()).arg(i.value()).arg(ist.value(i.key(), -1)));
  return namen;
}

void schreibe(const Groessen& groessen) {
  QFile datei(Listenpfad);
  ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
  datei.write(
      "# Sizes of the published classes and of their tables of virtual functions, in bytes, on 64-bit Intel\n"
      "# machines. GroessenTest compares them with what is built; a change needs a new SOVERSION.\n");
  for (auto i = groessen.begin(); i != groessen.end(); ++i)
    datei.write(u"%1 %2\n"_s.arg(i.key()).arg(i.value()).toUtf8());
}

/// The published headers, as the build lists them.
QStringList koepfe() {
  static const QRegularExpression Kopf(u"PROJECT_SOURCE_DIR\\}/([^\"]+\\.h)\""_s);
  QStringList namen;
  const QString bau = lies(QStringLiteral(KVO_QUELLORDNER "/component/CMakeLists.txt"));
  for (auto lauf = Kopf.globalMatch(bau); lauf.hasNext();) namen.append(lauf.next().captured(1));
  return namen;
}

/// The classes that a header lets others see, those within others by both names. Relies on the format of the sources.
QStringList klassen_in(const QString& kopf) {
  static const QRegularExpression Klasse(u"^( {0,2})(class|struct) (?:KVO_EXPORT )?(\\w+)(?: :[^:;]*|[^;]*) \\{"_s);
  QStringList namen;
  QString aussen;
  bool offen = false;
  for (const QString& zeile : kopf.split(u'\n')) {
    if (zeile == " public:"_L1 || zeile == " protected:"_L1) offen = true;
    if (zeile == " private:"_L1) offen = false;
    const QRegularExpressionMatch treffer = Klasse.match(zeile);
    if (!treffer.hasMatch()) continue;
    const QString name = treffer.captured(3);
    const bool innen = !treffer.captured(1).isEmpty();
    if (!innen) aussen = name;
    if (!innen) offen = treffer.captured(2) == "struct"_L1;
    if (!innen || offen) namen.append(innen ? aussen + u"::"_s + name : name);
  }
  return namen;
}

class Groessentest : public ::testing::Test {
 protected:
  void SetUp() override {
#if !defined(__x86_64__)
    GTEST_SKIP() << "the list holds the sizes of another kind of machine";
#endif
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer puts room around the tables";
#endif
    if (QStandardPaths::findExecutable(u"nm"_s).isEmpty()) GTEST_SKIP() << "nm (binutils) is missing";
  }
};

}  // namespace

TEST_F(Groessentest, NoPublishedClassChangesItsSizeWithoutANewSoversion) {
  const Groessen soll = liste();
  const Groessen ist = gebaute();
  const bool neue_Zahl = soll.value(Soversion) != SOVERSION;
  const QStringList anders = neue_Zahl ? QStringList() : geaenderte(soll, ist);
  EXPECT_TRUE(anders.isEmpty())
      << "hosts have these compiled in; count KVO_SOVERSION (component/CMakeLists.txt) up:\n  "
      << anders.join(u"\n  "_s).toStdString();
  if (anders.isEmpty() && qEnvironmentVariableIsSet("KVO_GROESSEN_SCHREIBEN")) schreibe(ist);
  EXPECT_GT(liste().size(), 50);
  EXPECT_EQ(liste(), ist) << "KVO_GROESSEN_SCHREIBEN=1 writes the list anew";
}

TEST_F(Groessentest, EveryPublishedClassIsMeasured) {
  QStringList gemessene;
  // Without their namespaces, which begin with a small letter as no class with others in it does.
  for (QString name : klassengroessen().keys())
    gemessene.append(name.remove(QRegularExpression(u"^[a-z0-9]+::|<.*>"_s)));
  int klassen = 0;
  for (const QString& kopf : koepfe())
    for (const QString& klasse : klassen_in(lies(QStringLiteral(KVO_QUELLORDNER "/") + kopf))) {
      ++klassen;
      EXPECT_TRUE(gemessene.contains(klasse))
          << kopf.toStdString() << ": " << klasse.toStdString() << " stands not in Groessen.cpp";
    }
  EXPECT_GT(klassen, 50);
}
