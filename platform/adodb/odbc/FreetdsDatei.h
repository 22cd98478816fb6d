#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace adodb {

/// What a section of freetds.conf says about the encryption; connect strings have no keyword for most of it.
struct FreetdsAbschnitt {
  bool gefunden = false;
  /// File of the authorities, or "system". FreeTDS checks nothing of a certificate where it is empty.
  QString stellen;
  /// Meant only together with authorities.
  bool prueft_Namen = true;
  /// "off", "request" or "require"; empty where nothing is said.
  QString verschluesselung;
};

/// The contents of FreeTDS's files, in the order in which it looks for a section.
QList<QByteArray> lies_Freetds_Dateien();

/// Reads a section as FreeTDS does: the first file that has it ends the search, and what stands under [global] in this
/// file and those before it counts where the section says nothing.
FreetdsAbschnitt freetds_Abschnitt(const QList<QByteArray>& dateien, const QString& name);

}  // namespace adodb
