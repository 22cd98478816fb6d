#include "platform/files/FileSystemObject.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Reste.h"
#include "platform/files/Schreiben.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Umbenennen.h"
#include "platform/files/Verzeichnis.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray ort_von(const QString& pfad) {
  return Pfadkarte::aktuell().maschinenpfad(pfad);
}

std::optional<struct stat> stand_am_Ort(const QByteArray& ort) {
  struct stat info {};
  if (::stat(ort.constData(), &info) != 0) return std::nullopt;
  return info;
}

/// State of a file that is to be copied, moved or deleted; anything that is no file counts as missing.
struct stat stand_der_Datei(const QByteArray& ort) {
  const auto info = stand_am_Ort(ort);
  if (!info && systemfehler::ist_Ausfall(errno)) systemfehler::wirf(errno);
  if (!info || S_ISDIR(info->st_mode)) throw Laufzeitfehler(fehlernummer::DateiNichtGefunden);
  return *info;
}

bool endet_mit_Trenner(const QString& pfad) {
  return pfad.endsWith(u'\\') || pfad.endsWith(u'/');
}

QString letzter_Name(const QString& pfad) {
  const qsizetype trenner = std::max(pfad.lastIndexOf(u'\\'), pfad.lastIndexOf(u'/'));
  return pfad.mid(trenner + 1);
}

/// The file that a copy or move makes. A target that ends in a separator is a folder, which gets the source's name.
QString zieldatei(const QString& quelle, const QString& ziel) {
  if (!endet_mit_Trenner(ziel)) return ziel;
  const auto info = stand_am_Ort(ort_von(ziel));
  if (!info || !S_ISDIR(info->st_mode)) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  return ziel + letzter_Name(quelle);
}

/// The root of a mount or a link to a folder: deleting a folder must not touch either.
bool ist_verankert(const QByteArray& ort, const struct stat& eintrag) {
  if (S_ISLNK(eintrag.st_mode)) {
    const auto dahinter = stand_am_Ort(ort);
    return dahinter && S_ISDIR(dahinter->st_mode);
  }
  struct statx mehr {};
  return S_ISDIR(eintrag.st_mode) && ::statx(AT_FDCWD, ort.constData(), AT_SYMLINK_NOFOLLOW, 0, &mehr) == 0 &&
      (mehr.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

void kopiere(const QByteArray& quelle, const struct stat& stand_der_Quelle, const QByteArray& ziel, bool ersetzen) {
  if (!S_ISREG(stand_der_Quelle.st_mode) || systemfehler::unlesbar(stand_der_Quelle.st_mode))
    throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  const systemfehler::Deskriptor lesend(
      systemfehler::pruefe(::open(quelle.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)));
  schreiben::Nebendatei kopie(ziel);
  kopie.kopiere_von(lesend.wert());
  kopie.setze_Zeit(stand_der_Quelle);
  kopie.vollende(ersetzen);
}

}  // namespace

QStringList Folder::Files() const {
  return verzeichnis::liste(ort_von(pfad_), verzeichnis::Art::Dateien);
}

QStringList Folder::SubFolders() const {
  return verzeichnis::liste(ort_von(pfad_), verzeichnis::Art::Ordner);
}

std::int64_t Folder::Anzahl_Eintraege() const {
  return verzeichnis::anzahl(ort_von(pfad_));
}

bool FileSystemObject::FileExists(const QString& pfad) const {
  return fehler::still_enden([&] { return stand::von(pfad).ist_Datei(); });
}

bool FileSystemObject::FolderExists(const QString& pfad) const {
  return fehler::still_enden([&] { return stand::von(pfad).ist_Ordner(); });
}

Folder FileSystemObject::GetFolder(const QString& pfad) const {
  if (!stand::von(pfad).ist_Ordner()) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  QString ohne_Trenner = pfad;
  while (ohne_Trenner.size() > 1 && endet_mit_Trenner(ohne_Trenner) && !ohne_Trenner.endsWith(":\\"_L1))
    ohne_Trenner.chop(1);
  return Folder(ohne_Trenner);
}

QString FileSystemObject::BuildPath(const QString& pfad, const QString& name) const {
  if (pfad.isEmpty() || name.isEmpty()) return pfad + name;
  const QString links = endet_mit_Trenner(pfad) ? pfad.chopped(1) : pfad;
  const bool mit_Trenner = name.startsWith(u'\\') || name.startsWith(u'/');
  return links + u'\\' + (mit_Trenner ? name.mid(1) : name);
}

void FileSystemObject::CopyFile(const QString& quelle, const QString& ziel, bool ueberschreiben) const {
  const QByteArray von = ort_von(quelle);
  const struct stat stand_der_Quelle = stand_der_Datei(von);
  const QByteArray nach = ort_von(zieldatei(quelle, ziel));
  if (const auto vorhanden = stand_am_Ort(nach)) {
    const bool dieselbe = vorhanden->st_dev == stand_der_Quelle.st_dev && vorhanden->st_ino == stand_der_Quelle.st_ino;
    if (dieselbe || S_ISDIR(vorhanden->st_mode)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
    if (!ueberschreiben) throw Laufzeitfehler(fehlernummer::DateiVorhanden);
    if (systemfehler::schreibgeschuetzt(vorhanden->st_mode)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  }
  kopiere(von, stand_der_Quelle, nach, ueberschreiben);
}

void FileSystemObject::MoveFile(const QString& quelle, const QString& ziel) const {
  const QByteArray von = ort_von(quelle);
  reste::raeume_gelegentlich(umbenennen::ordner_von(von));
  const struct stat stand_der_Quelle = stand_der_Datei(von);
  const QString neuer_Pfad = zieldatei(quelle, ziel);
  const QByteArray nach = Pfadkarte::aktuell().maschinenpfad_neu(neuer_Pfad);
  const QByteArray im_Weg = ort_von(neuer_Pfad);
  struct stat info {};
  const bool andere_Schreibung = (im_Weg == von && nach != von) || umbenennen::ist_andere_Schreibung(von, nach);
  reste::raeume_gelegentlich(umbenennen::ordner_von(nach));
  if (!andere_Schreibung && ::lstat(im_Weg.constData(), &info) == 0) throw Laufzeitfehler(fehlernummer::DateiVorhanden);
  if (umbenennen::benenne_um(von, nach)) return;
  kopiere(von, stand_der_Quelle, nach, false);
  if (::unlink(von.constData()) == 0) return;
  const int grund = errno;
  ::unlink(nach.constData());
  systemfehler::wirf(grund);
}

void FileSystemObject::MoveFolder(const QString& quelle, const QString& ziel) const {
  const QByteArray von = ort_von(quelle);
  const auto info = stand_am_Ort(von);
  if (!info || !S_ISDIR(info->st_mode)) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  const QByteArray nach = Pfadkarte::aktuell().maschinenpfad_neu(ziel);
  struct stat im_Weg {};
  if (::lstat(ort_von(ziel).constData(), &im_Weg) == 0) throw Laufzeitfehler(fehlernummer::DateiVorhanden);
  if (!umbenennen::benenne_um(von, nach)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
}

void FileSystemObject::DeleteFile(const QString& pfad, bool auch_schreibgeschuetzte) const {
  const QByteArray ort = ort_von(pfad);
  const struct stat info = stand_der_Datei(ort);
  if (!auch_schreibgeschuetzte && systemfehler::schreibgeschuetzt(info.st_mode))
    throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  systemfehler::pruefe(::unlink(ort.constData()));
}

void FileSystemObject::DeleteFolder(const QString& pfad, bool auch_schreibgeschuetzte) const {
  const QByteArray ort = ort_von(pfad);
  const auto info = stand_am_Ort(ort);
  if (!info || !S_ISDIR(info->st_mode)) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  if (!auch_schreibgeschuetzte && systemfehler::schreibgeschuetzt(info->st_mode))
    throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  reste::raeume(ort);
  systemfehler::pruefe(::rmdir(ort.constData()));
}

bool FileSystemObject::darf_loeschen(const QString& pfad) const {
  return fehler::still_enden([&] {
    const QByteArray ort = ort_von(pfad);
    const QByteArray ordner = ort.left(std::max(ort.lastIndexOf('/'), qsizetype{1}));
    struct stat eintrag {};
    const auto darueber = stand_am_Ort(ordner);
    if (!darueber || ::lstat(ort.constData(), &eintrag) != 0) return false;
    if (::faccessat(AT_FDCWD, ordner.constData(), W_OK | X_OK, AT_EACCESS) != 0) return false;
    if (ist_verankert(ort, eintrag)) return false;
    // In a folder with the sticky bit everybody deletes only what is his own.
    const uid_t wir = ::geteuid();
    return (darueber->st_mode & S_ISVTX) == 0 || wir == 0 || wir == darueber->st_uid || wir == eintrag.st_uid;
  });
}
