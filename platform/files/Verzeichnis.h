#pragma once

#include <dirent.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <optional>

/// Listings of folders of this machine, for the files of this folder only.
namespace verzeichnis {

/// Calls `nimm` with each entry but "." and ".."; false when the folder can't be opened.
bool gehe_durch(const QByteArray& ordner, const std::function<void(int verzeichnis, const dirent& eintrag)>& nimm);

enum class Art { Dateien, Ordner };

/// Names of the regular files (links to such count), or of the folders (links do not count), in the order of their
/// names without regard to case. Names that hold a backslash or are no UTF-8 are left out: no path of the table can
/// mean them. So are the hidden names of contents that do not have theirs yet. A folder that can't be read raises 76
/// or 70.
QStringList liste(const QByteArray& ordner, Art art);

/// Number of all entries of a folder but "." and "..", and but what a dead process left (see reste). A folder that
/// can't be read raises 76 or 70.
std::int64_t anzahl(const QByteArray& ordner);

/// The entry of a folder that is the name without regard to case, as the folder spells it. The names of the
/// last few folders are kept until the folder changes, so that many questions about them cost one listing each.
std::optional<QByteArray> suche_ohne_Schreibung(const QByteArray& ordner, const QString& name);

/// One line of the system's table of mounts.
struct Einhaengung {
  QString quelle;    ///< device or remote place, as the table spells it
  QString ordner;    ///< where it is mounted
  QString art;       ///< of the file system
  QString freigabe;  ///< "\\server\share" of a network mount, otherwise empty
};

/// The mounts in the order of the table; none where it can't be read.
QList<Einhaengung> einhaengungen(const QString& tabelle = QStringLiteral("/proc/self/mounts"));

/// The folder where a network share is mounted. The table of mounts is kept until it changes.
std::optional<QString> einhaengepunkt(const QString& freigabe);

}  // namespace verzeichnis
