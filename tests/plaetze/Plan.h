#pragma once

#include <QMap>
#include <QString>

/// What one desk does in its rounds, and what must stand in the table afterwards. Each round is one save: a new row,
/// a change of the row before, and in every second round the deletion of one that is three rounds old.
namespace plan {

inline const QString Belegart = QStringLiteral("RE");
inline const QString Belegnummer = QStringLiteral("4711");

/// Name of the row that a desk adds in a round, counted from 1.
inline QString name(const QString& platz, int runde) {
  return QStringLiteral("%1_%2").arg(platz).arg(runde);
}
inline bool wird_geloescht(int zeile) {
  return zeile % 2 == 0;
}
inline QString text_neu(int zeile) {
  return QStringLiteral("neu in %1").arg(zeile);
}
inline QString text_geaendert(int zeile) {
  return QStringLiteral("geändert in %1").arg(zeile + 1);
}

/// The rows of a desk after so many rounds, name to description.
inline QMap<QString, QString> zeilen(const QString& platz, int runden) {
  QMap<QString, QString> soll;
  for (int zeile = 1; zeile <= runden; ++zeile)
    if (!wird_geloescht(zeile) || zeile > runden - 3)
      soll.insert(name(platz, zeile), zeile == runden ? text_neu(zeile) : text_geaendert(zeile));
  return soll;
}

}  // namespace plan
