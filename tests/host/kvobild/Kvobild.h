#pragma once

#include <gtest/gtest.h>

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include "tests/support/Umgebung.h"

/// What a run of kvobild left behind.
struct Lauf {
  int code = -1;
  QString ausgabe;
  QString meldungen;

  QStringList zeilen() const { return ausgabe.split(u'\n', Qt::SkipEmptyParts); }
  /// The lines as JSON objects; fails the test where one is none.
  QList<QJsonObject> objekte() const;
};

/// What "datenbank pruefen --json" found: the names of its findings, or of its notes with `art` "hinweis", and the one
/// of a name.
QStringList kennungen(const Lauf& lauf, const QString& art = QStringLiteral("befund"));
QJsonObject befund(const Lauf& lauf, const QString& kennung);

/// Runs the program to its end, in surroundings without any of its variables.
/// `eingabe` names the file that it reads as its standard input; without one there is nothing to read. `dazu` are
/// variables that it does get.
Lauf kvobild(const QStringList& argumente, const QString& ausgabedatei = {}, const QString& eingabe = {},
    const QMap<QString, QString>& dazu = {});

/// A firm with an empty table, an empty picture tree and a folder of pictures that wait.
class Betrieb : public ::testing::Test {
 protected:
  Betrieb();

  /// A picture in the waiting folder; its bytes are its name. Gives its path.
  QString bild(const QString& name, const QString& text = {}) const;
  QString datenbank() const { return ordner_.pfad(QStringLiteral("betrieb.db")); }
  QString wurzel() const { return ordner_.pfad(QStringLiteral("bild.ablage")); }

  /// Runs a command with the database, the picture root and the record added.
  Lauf fuehre(const QString& befehl, const QStringList& argumente) const;
  Lauf zuordnen(const QStringList& argumente) const;
  Lauf aendern(const QStringList& argumente) const { return fuehre(QStringLiteral("aendern"), argumente); }
  Lauf entfernen(const QStringList& argumente) const { return fuehre(QStringLiteral("entfernen"), argumente); }
  /// Renames in the record's folder.
  Lauf umbenennen(const QStringList& argumente) const;
  /// The record's rows.
  QList<QJsonObject> zeilen() const { return zeilen(satz_); }
  QList<QJsonObject> zeilen(const QStringList& satz) const;
  /// All rows and all files of the tree, to compare before and after.
  QString stand() const;
  /// Names of the files in the record's folder, sorted.
  QStringList dateien() const;
  /// Runs a statement on the database.
  void sql(const QString& anweisung) const;

  Testordner ordner_;
  QStringList satz_{QStringLiteral("--typ1"), QStringLiteral("BEL"), QStringLiteral("--key1"), QStringLiteral("AB"),
      QStringLiteral("--key2"), QStringLiteral("1")};
};

/// Name and extension of a row as the commands take them.
QString name_von(const QJsonObject& zeile);
