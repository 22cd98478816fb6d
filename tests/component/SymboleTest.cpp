// What the built library publishes, compared with the list beside this file.
#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

#include "tests/component/Prozess.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The name that a demangled symbol is about, without its arguments and what the compiler made of it.
QString gemeinter_Name(QString symbol) {
  static const QRegularExpression Vorsatz(
      u"^(typeinfo name for|typeinfo for|vtable for|VTT for|construction vtable for|guard variable for|"
      "non-virtual thunk to|virtual thunk to|covariant return thunk to) "_s);
  while (symbol.contains(Vorsatz)) symbol.remove(Vorsatz);
  int tiefe = 0;
  for (qsizetype i = 0; i < symbol.size(); ++i) {
    if (symbol[i] == u'<') ++tiefe;
    if (symbol[i] == u'>') --tiefe;
    if (tiefe == 0 && symbol[i] == u'(') return symbol.left(i);
  }
  return symbol;
}

/// A member from Qt's headers: where the compiler does not put it in its place, each library that uses it has one.
bool ist_von_Qt(const QString& symbol, const QString& art) {
  static const QRegularExpression Mitglied(u"^Q[A-Z]\\w*(<.*>)?::"_s);
  return art == "W"_L1 && symbol.contains(Mitglied);
}

QSet<QString> symbole(const QString& nm, const QStringList& worte) {
  const Prozess lauf = starte(nm, QStringList{u"-C"_s, u"--defined-only"_s} + worte);
  EXPECT_EQ(lauf.code, 0) << ende(lauf);
  QSet<QString> namen;
  for (const QString& zeile : lauf.ausgabe.split(u'\n', Qt::SkipEmptyParts)) {
    const QString symbol = zeile.section(u' ', 2);
    if (!symbol.isEmpty() && !ist_von_Qt(symbol, zeile.section(u' ', 1, 1))) namen.insert(gemeinter_Name(symbol));
  }
  return namen;
}

/// What the library defines because its runs are counted; nothing in any other build.
QSet<QString> zaehlwerk(const QString& nm) {
#ifdef KVO_ZAEHLWERK
  return symbole(nm, {u"-g"_s, QStringLiteral(KVO_ZAEHLWERK)});
#else
  Q_UNUSED(nm)
  return {};
#endif
}

QSet<QString> liste() {
  QFile datei(QStringLiteral(KVO_QUELLORDNER "/tests/component/veroeffentlicht.txt"));
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
  QSet<QString> namen;
  for (const QString& zeile : QString::fromUtf8(datei.readAll()).split(u'\n'))
    if (!zeile.isEmpty() && !zeile.startsWith(u'#')) namen.insert(zeile);
  return namen;
}

/// A name of the list stands for itself and, as a class, for its members.
QString eintrag_von(const QString& name, const QSet<QString>& namen) {
  QString kopf = name;
  kopf.remove(QRegularExpression(u"<.*>"_s));
  for (; !kopf.isEmpty(); kopf = kopf.contains(u"::"_s) ? kopf.left(kopf.lastIndexOf(u"::"_s)) : QString())
    if (namen.contains(kopf)) return kopf;
  return {};
}

std::string zeilen(const QSet<QString>& namen) {
  QStringList sortiert = namen.values();
  sortiert.sort();
  return ("\n  "_L1 + sortiert.join("\n  "_L1)).toStdString();
}

}  // namespace

TEST(Symbole, TheLibraryPublishesWhatTheListNamesAndNothingElse) {
  const QString nm = QStandardPaths::findExecutable(u"nm"_s);
  if (nm.isEmpty()) GTEST_SKIP() << "nm (binutils) is missing";
  const QSet<QString> soll = liste();
  QSet<QString> ueberzaehlig;
  QSet<QString> gesehen;
  for (const QString& name : symbole(nm, {u"-D"_s, QStringLiteral(BIBLIOTHEK)}) - zaehlwerk(nm)) {
    const QString eintrag = eintrag_von(name, soll);
    (eintrag.isEmpty() ? ueberzaehlig : gesehen).insert(eintrag.isEmpty() ? name : eintrag);
  }
  EXPECT_TRUE(ueberzaehlig.isEmpty()) << "published, but not in veroeffentlicht.txt:" << zeilen(ueberzaehlig);
  const QSet<QString> fehlend = soll - gesehen;
  EXPECT_TRUE(fehlend.isEmpty()) << "in veroeffentlicht.txt, but not published:" << zeilen(fehlend);
}

TEST(Symbole, NoPublishedNameIsGoneAndNoneIsNewWithoutItsVersion) {
  const QString python = QStandardPaths::findExecutable(u"python3"_s);
  if (python.isEmpty()) GTEST_SKIP() << "python3 is missing";
  const Prozess lauf = starte(
      python, {QStringLiteral(KVO_QUELLORDNER "/packaging/symbole.py"), u"--pruefe"_s, QStringLiteral(BIBLIOTHEK)});
  EXPECT_EQ(lauf.code, 0) << ende(lauf) << "\npackaging/symbole.py writes debian/libkvobildzuordnung1.symbols anew";
}
