#pragma once

#include <gtest/gtest.h>

#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <memory>

#include "tests/support/Umgebung.h"

/// What a call of "bildzuordnung dialog" left behind.
struct Dialogende {
  int code = -1;
  QString ausgabe;
  QString fehlerausgabe;

  /// The one line of standard output as an object; fails the test where it is anything else.
  QJsonObject json() const;
};

/// The program as a process, on a copy of the sample data, in a home of its own, and a user who does what
/// `fuehrung` says (Fuehrung.cpp).
class Dialogtest : public testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  void SetUp() override;

  QString datenordner() const { return ordner_.pfad(QStringLiteral("daten")); }
  QString bilder() const { return datenordner() + QStringLiteral("/bilder"); }
  /// Options that name the record AB 24-1001, whose sample has four pictures, and the data folder.
  QStringList beleg() const;
  /// The environment of the calls: no screen, but the platform without one.
  QProcessEnvironment umgebung() const;
  /// Runs the call behind the word "dialog" to its end.
  Dialogende rufe(const QStringList& argumente, const QString& fuehrung = {}) const;
  Dialogende rufe(
      const QStringList& argumente, const QProcessEnvironment& umgebung, const QByteArray& eingabe = {}) const;
  /// Runs it until its standard error holds `worte`.
  std::unique_ptr<QProcess> beginne(const QStringList& argumente, const QString& fuehrung, const QString& worte) const;
  static Dialogende beende(QProcess& prozess);

  /// The rows of the record AB 24-1001 in their order: "name.ext|Beschreibung".
  QStringList zeilen() const;
  void sql(const QString& anweisung) const;

  Testordner ordner_;

 private:
  static std::unique_ptr<Testordner>& vorlage();
};
