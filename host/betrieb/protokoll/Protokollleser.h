#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

/// Reads the journal of a data folder, the former file first.
namespace protokollleser {

struct Auswahl {
  /// What was done before is left out.
  std::optional<QDateTime> seit;
  /// Name, folder and name, or whole path of a picture, in any case; empty for all. The name after a rename counts too.
  QString bild;
};

struct Inhalt {
  QList<QJsonObject> zeilen;
  /// Lines that are none: a process ended while it wrote them, or somebody has changed the file.
  int beschaedigte = 0;
};

/// `ordner` is a path of the table. Files that are missing hold nothing. Raises what reading does.
Inhalt lies(const QString& ordner, const Auswahl& auswahl);

/// A line for people.
QString worte(const QJsonObject& zeile);

}  // namespace protokollleser
