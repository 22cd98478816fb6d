// The columns that the system knows are those that the scripts give the table.
#include <gtest/gtest.h>

#include <QFile>
#include <QHash>
#include <QRegularExpression>

#include "store/Felder.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Spalte {
  QString name;
  qsizetype laenge = 0;
};

/// The columns of the server's script, numbers with the length 0.
QList<Spalte> spalten_des_Skripts() {
  QFile datei(QStringLiteral(KVO_QUELLORDNER "/sql/mssql/Bild_Zuordnungen.sql"));
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
  static const QRegularExpression Eine(u"^  (\\w+) \\w+(?:\\((\\d+)\\))? NULL"_s, QRegularExpression::MultilineOption);
  QList<Spalte> liste;
  for (auto lauf = Eine.globalMatch(QString::fromUtf8(datei.readAll())); lauf.hasNext();) {
    const QRegularExpressionMatch treffer = lauf.next();
    liste.append({treffer.captured(1), treffer.captured(2).toLongLong()});
  }
  return liste;
}

}  // namespace

TEST(Felder, TheScriptHasEachColumnOnceAndNoOther) {
  QStringList gewollte{felder::SortIndex.toString()};
  for (const felder::Feld& feld : felder::Texte) gewollte.append(feld.Spalte.toString());
  QStringList vorhandene;
  for (const Spalte& spalte : spalten_des_Skripts()) vorhandene.append(spalte.name);
  gewollte.sort();
  vorhandene.sort();
  EXPECT_EQ(gewollte, vorhandene);
}

TEST(Felder, AColumnHoldsWhatAStatementCuts) {
  QHash<QString, qsizetype> laengen;
  for (const Spalte& spalte : spalten_des_Skripts()) laengen.insert(spalte.name, spalte.laenge);
  for (const felder::Feld& feld : felder::Texte) {
    if (feld.Laenge == felder::Ganz) continue;
    EXPECT_EQ(feld.Laenge, laengen.value(feld.Spalte.toString())) << feld.Spalte.toString().toStdString();
  }
}

TEST(Felder, EachColumnHasAFieldOfItsOwnAndIsFoundByEitherSpelling) {
  for (std::size_t i = 0; i < felder::Texte.size(); ++i) {
    const felder::Feld& feld = felder::Texte[i];
    EXPECT_EQ(feld.Name.compare(feld.Spalte, Qt::CaseInsensitive), 0) << feld.Name.toString().toStdString();
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_NE(feld.Wert, felder::Texte[j].Wert) << i << " and " << j;
      EXPECT_NE(feld.Name, felder::Texte[j].Name) << i << " and " << j;
    }
  }
}

TEST(Felder, TheFirstEightTellARow) {
  QStringList namen;
  for (const felder::Feld& feld : felder::Kennung) namen.append(feld.Name.toString());
  EXPECT_EQ(namen.join(u' '), u"Key1 Key2 Key3 Key4 Bildname BildExt Typ1 Typ2"_s);
}

TEST(Felder, AValueIsCutWhereItsColumnEndsAndWholeElsewhere) {
  clsBilderSpeicher satz;
  for (const felder::Feld& feld : felder::Texte) satz.*feld.Wert = QString(300, u'x');
  for (const felder::Feld& feld : felder::Texte)
    EXPECT_EQ(feld.gekuerzt(satz).size(), feld.Laenge == felder::Ganz ? 300 : feld.Laenge);
}

TEST(Felder, TheTableComparesWithoutCaseAndBlanksAtTheEnd) {
  EXPECT_EQ(felder::vergleichsform(u"Foto ä  "), u"FOTO Ä"_s);
  EXPECT_EQ(felder::vergleichsform(u" Foto"), u" FOTO"_s);
  EXPECT_EQ(felder::oder_Strich({}), u"-"_s);
  EXPECT_EQ(felder::oder_Strich(u" "_s), u" "_s);
}
