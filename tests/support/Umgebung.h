#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QTemporaryDir>

/// A folder of the test's own, gone at its end.
class Testordner {
 public:
  Testordner();
  /// The folder's own path on this machine.
  QString pfad() const { return ordner_.path(); }
  /// Path of a name in it, on this machine.
  QString pfad(const QString& name) const { return ordner_.filePath(name); }
  /// Writes a file (folders in between are made) and gives its path on this machine.
  QString schreibe(const QString& name, const QByteArray& inhalt) const;
  /// Content of a file in the folder; fails the test when it can't be read.
  QByteArray lies(const QString& name) const;
  bool vorhanden(const QString& name) const;

 private:
  QTemporaryDir ordner_;
};

/// Path of an outside test picture, or empty where they are missing. They are found through the environment variable
/// KVO_TESTDATEN; without it in `shared/testdata` beside the project.
QString testdaten(const QString& name);

/// Skips the test with a message when the outside test pictures are missing.
#define BRAUCHT_TESTDATEN()                                                                   \
  do {                                                                                        \
    if (testdaten(QStringLiteral("bilder")).isEmpty())                                        \
      GTEST_SKIP() << "outside test pictures are missing: set KVO_TESTDATEN to their folder"; \
  } while (false)

/// gtest prints a QString as its text.
void PrintTo(const QString& text, std::ostream* os);
