#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "host/betrieb/vorgang/Datensatz.h"

/// A business record as the list shows it.
struct Vorgang {
  /// All six parts are set; "-" stands for a part that this record does not have. `typ1` is its kind.
  Datensatz satz;
  /// As the user says it: "AB 24-1001".
  QString nummer;
  /// Customer or subject; may be empty.
  QString betreff;
  /// Folder below the picture root that the firm's view names, or empty: ours by rule.
  QString ordner;
  /// When it was last touched, where the firm's view tells.
  QDateTime stand;
  /// Number of its rows in the table.
  int bilder = 0;
};

namespace vorgang {

/// A kind of business records: "BEL" in the table, and how it is called, as "Beleg" and "Belege".
struct Art {
  QString typ1;
  QString einzahl;
  QString mehrzahl;
};
/// The kinds that have words of their own, in the order in which the list shows them.
const QList<Art>& bekannte_Arten();
/// The kind of that name, in any case of letters. One that nobody knows is called by its name.
Art art_von(const QString& typ1);
/// Place of a kind in `bekannte_Arten`; behind them all for one that nobody knows.
qsizetype rang(const QString& typ1);

/// A record of that kind with its keys as the host has them; blank ones become "-".
Vorgang aus_Schluesseln(const QString& typ1, const QString& key1, const QString& key2 = {}, const QString& key3 = {});
/// The two records are the same to the database, which looks neither at the case of letters nor at trailing blanks.
QString kennung(const Vorgang& vorgang);
/// "Beleg AB 24-1001 – Bäckerei Huber, Freiburg".
QString infozeile(const Vorgang& vorgang);
/// Folder below the picture root that takes the record's new pictures, as "Belege\24-1001": the one that the view
/// names, unless it leaves the root, else one by rule, in which characters that no share takes become "_".
QString bildordner(const Vorgang& vorgang);
/// A folder of the view lies below the picture root: no drive, no server, no step upwards, no character that no share
/// takes.
bool ordner_bleibt_unten(const QString& ordner);
/// "kein Bild", "1 Bild", "2 Bilder".
QString anzahl_Bilder(int anzahl);

}  // namespace vorgang
