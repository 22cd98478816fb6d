#pragma once

#include <QString>
#include <array>

#include "host/betrieb/vorgang/Datensatz.h"

/// The kinds of business records that pictures are assigned to, in the order in which the list shows them.
enum class Vorgangsart { Beleg, Montageauftrag, Artikel, Anlage };
inline constexpr std::array Vorgangsarten{
    Vorgangsart::Beleg, Vorgangsart::Montageauftrag, Vorgangsart::Artikel, Vorgangsart::Anlage};

/// A business record as the list shows it.
struct Vorgang {
  Vorgangsart art = Vorgangsart::Beleg;
  /// All six parts are set; "-" stands for a part that this kind does not have.
  Datensatz satz;
  /// As the user says it: "AB 24-1001".
  QString nummer;
  /// Customer or subject; may be empty.
  QString betreff;
  /// Number of its rows in the table.
  int bilder = 0;
};

namespace vorgang {

/// How a kind is called, as "Beleg", "Belege", and "BEL" in the table.
struct Artwoerter {
  QString einzahl;
  QString mehrzahl;
  QString typ1;
};
const Artwoerter& woerter(Vorgangsart art);
/// A record of that kind with its keys as the host has them; blank ones become "-".
Vorgang aus_Schluesseln(Vorgangsart art, const QString& key1, const QString& key2 = {}, const QString& key3 = {});
/// The two records are the same to the database, which looks neither at the case of letters nor at trailing blanks.
QString kennung(const Vorgang& vorgang);
/// "Beleg AB 24-1001 – Bäckerei Huber, Freiburg".
QString infozeile(const Vorgang& vorgang);
/// Folder below the picture root that takes the record's new pictures, as "Belege\24-1001". Characters that no share
/// takes become "_".
QString bildordner(const Vorgang& vorgang);
/// "kein Bild", "1 Bild", "2 Bilder".
QString anzahl_Bilder(int anzahl);

}  // namespace vorgang
