#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Wurzel = QStringLiteral(KVO_QUELLORDNER "/");

/// All first groups of a pattern in a file of the project.
QSet<QString> funde(const QString& datei, const QString& muster) {
  QFile quelle(Wurzel + datei);
  EXPECT_TRUE(quelle.open(QIODevice::ReadOnly)) << datei.toStdString();
  QSet<QString> liste;
  const QRegularExpression ausdruck(muster, QRegularExpression::MultilineOption);
  for (auto lauf = ausdruck.globalMatch(QString::fromUtf8(quelle.readAll())); lauf.hasNext();)
    liste.insert(lauf.next().captured(1));
  return liste;
}

QSet<QString> eingebunden(const QString& datei) {
  return funde(datei, u"^#include \"([^\"]+)\""_s);
}

QSet<QString> veroeffentlicht() {
  return funde(u"component/CMakeLists.txt"_s, u"PROJECT_SOURCE_DIR\\}/([^\"]+\\.h)\""_s);
}

}  // namespace

TEST(VeroeffentlichteKoepfe, IncludeOnlyPublishedOnes) {
  ASSERT_FALSE(veroeffentlicht().isEmpty());
  for (const QString& kopf : veroeffentlicht())
    EXPECT_EQ(eingebunden(kopf) - veroeffentlicht(), QSet<QString>()) << kopf.toStdString();
}

TEST(VeroeffentlichteKoepfe, SufficeForTheHost) {
  for (const QString& ordner : {u"host/"_s, u"docs/beispiele/"_s}) {
    QStringList dateien;
    for (QDirIterator lauf(Wurzel + ordner, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
         lauf.hasNext();)
      dateien.append(lauf.next().mid(Wurzel.size()));
    ASSERT_FALSE(dateien.isEmpty());
    for (const QString& datei : dateien) {
      QSet<QString> fremde = eingebunden(datei) - veroeffentlicht();
      fremde.removeIf([](const QString& kopf) { return kopf.startsWith(u"host/"_s) || !kopf.contains(u'/'); });
      EXPECT_EQ(fremde, QSet<QString>()) << datei.toStdString();
    }
  }
}
